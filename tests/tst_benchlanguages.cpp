#include "benchfixture.h"
#include "cameraview.h"
#include "drawntexts.h"
#include "program.h"
#include "scenario/scenariowriter.h"
#include "statuscolumn.h"
#include "translator.h"

#include <QAction>
#include <QMenuBar>

/** The bench drives a unit in any of its languages, and stays in English itself. */
class tst_BenchLanguages : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void cleanup();

    void languageIsGiven_data();
    void languageIsGiven();
    void languageIsChosen_data();
    void languageIsChosen();
    void choiceIsAnAction();
    void nextDriveKeepsIt();
    void benchStaysInEnglish();
    void pictures_data();
    void pictures();

private:
    QStringList column() const { return drawnLines(screen()->statusColumn()); }
    QStringList checkedLanguages() const
    {
        QStringList names;
        for (const QAction *action : m_window->findChildren<QAction *>()) {
            if (action->objectName().startsWith("language-") && action->isChecked())
                names.append(action->objectName());
        }
        return names;
    }
};

void tst_BenchLanguages::cleanup()
{
    m_options = Options();
    removeBench();
    Translator::instance()->setLanguage("en");
}

static void addRows()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("recorded");
    QTest::newRow("English") << "en"
                             << "Recorded";
    QTest::newRow("German") << "de"
                            << "Aufnahme";
    QTest::newRow("French") << "fr"
                            << "Enregistré";
    QTest::newRow("Spanish") << "es"
                             << "Grabado";
}

void tst_BenchLanguages::languageIsGiven_data()
{
    addRows();
}

void tst_BenchLanguages::languageIsGiven()
{
    QFETCH(QString, language);
    QFETCH(QString, recorded);
    QString error;
    QVERIFY2(m_options.parse({"norda-bench", "--language", language}, &error), qPrintable(error));
    makeBench();
    QCOMPARE(Translator::instance()->language(), language);
    QVERIFY2(column().contains(recorded), qPrintable(column().join('|')));
    QCOMPARE(checkedLanguages(), QStringList("language-" + language));
}

void tst_BenchLanguages::languageIsChosen_data()
{
    addRows();
}

/** In the menu, while the screen is shown; chosen twice, it stays. */
void tst_BenchLanguages::languageIsChosen()
{
    QFETCH(QString, language);
    QFETCH(QString, recorded);
    m_options.setup.language = language == "en" ? "fr" : "en";
    makeBench();
    auto *choice = find<QAction>(qPrintable("language-" + language));
    for (int i = 0; i < 2; ++i) {
        choice->trigger();
        QTRY_VERIFY2(column().contains(recorded), qPrintable(column().join('|')));
        QCOMPARE(checkedLanguages(), QStringList("language-" + language));
    }
}

void tst_BenchLanguages::choiceIsAnAction()
{
    m_options.setup.language = "fr";
    makeBench();
    find<QAction>("language-de")->trigger();
    const QStringList lines =
        scenarioOf(session()->journal(), m_rig->setup(), "Languages").split('\n');
    QVERIFY2(lines.contains("language fr"), qPrintable(lines.join('\n'))); // as it began
    QCOMPARE(lines.filter(QRegularExpression("^\\d.* language de$")).size(), 1);
}

void tst_BenchLanguages::nextDriveKeepsIt()
{
    makeBench();
    find<QAction>("language-es")->trigger();
    QString error;
    QVERIFY2(m_rig->openDrive("simulator", &error), qPrintable(error));
    QCOMPARE(m_rig->setup().language, QStringLiteral("es"));
    QVERIFY(column().contains("Simulador"));
}

void tst_BenchLanguages::benchStaysInEnglish()
{
    makeBench();
    const auto titles = [this] {
        QStringList texts = {m_window->windowTitle()};
        for (const QAction *menu : m_window->menuBar()->actions())
            texts.append(menu->text());
        for (const QDockWidget *dock : m_window->findChildren<QDockWidget *>())
            texts.append(dock->windowTitle());
        return texts;
    };
    const QStringList english = titles();
    QVERIFY(english.contains("&File"));
    find<QAction>("language-de")->trigger();
    QTRY_VERIFY(column().contains("Aufnahme"));
    QCOMPARE(titles(), english);
}

void tst_BenchLanguages::pictures_data()
{
    QTest::addColumn<QString>("language");
    for (const char *language : {"de", "fr", "es"})
        QTest::newRow(language) << language;
}

/** The host's texts differ; those of the plugin and of the module are the same in all languages. */
void tst_BenchLanguages::pictures()
{
    QFETCH(QString, language);
    const QTemporaryDir folder;
    const auto pictures = [&folder](const QString &of) {
        const QString path = folder.filePath(of);
        const ProgramResult result =
            runProgram({testpaths::benchFile(), "--headless", "--source", "none", "--duration", "1",
                        "--language", of, "--gallery", path},
                       500);
        if (result.exitCode != 0)
            qWarning("%s", qPrintable(result.err));
        return path;
    };
    const QString english = pictures("en");
    const QString translated = pictures(language);
    QStringList changed;
    for (const QString &name : QDir(english).entryList({"*.png"}, QDir::Files, QDir::Name)) {
        const QImage after(translated + '/' + name);
        QVERIFY2(!after.isNull(), qPrintable(name));
        if (after != QImage(english + '/' + name))
            changed.append(name);
    }
    QCOMPARE(changed, (QStringList{"82-climate-cool.png", "82-climate-off.png",
                                   "82-climate-winter.png", "82-climate.png", "83-camera-wall.png",
                                   "83-camera.png", "83-split.png"}));
}

NORDA_TEST_MAIN(tst_BenchLanguages)
#include "tst_benchlanguages.moc"
