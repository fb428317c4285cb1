#include "cameraview.h"
#include "drawntexts.h"
#include "fullscreen.h"
#include "headunit.h"
#include "pages.h"
#include "paintcounter.h"
#include "statuscolumn.h"
#include "testmain.h"
#include "testpaths.h"
#include "translator.h"
#include "unitplace.h"

using Source = StatusColumn::Source;

/** The unit's own texts in each language, how long ones fit, and where the language comes from. */
class tst_Languages : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

    void showsText_data();
    void showsText();
    void textsFit_data();
    void textsFit();
    void changeIsPaintedOnce();
    void widthOfTheWarningStays();
    void pluginReadsItsTextsAgain();
    void zoneFitsItsLabel_data();
    void zoneFitsItsLabel();

    void whereItComesFrom_data();
    void whereItComesFrom();
    void choiceIsKept();
    void damagedChoice();

private:
    void loadPlugin();
    void show(const QString &what);
    QStringList shown(const QString &what);
    void setLanguage(const QString &language)
    {
        QVERIFY(Translator::instance()->setLanguage(language));
        QCoreApplication::processEvents(); // widgets learn of it by an event
    }
    QLabel *warning() { return m_unit->screen()->findChild<QLabel *>("cameraWarning"); }
    CameraView *camera() { return m_unit->screen()->camera(); }
    StatusColumn *column() { return m_unit->screen()->statusColumn(); }

    std::unique_ptr<HeadUnit> m_unit;
    std::unique_ptr<FullScreen> m_window;
};

static const QStringList languages = {"en", "de", "fr", "es"};

void tst_Languages::initTestCase()
{
    QCOMPARE(Translator::languages(), languages);
}

void tst_Languages::init()
{
    Translator::instance()->setLanguage("en");
    m_unit = std::make_unique<HeadUnit>();
    m_window = std::make_unique<FullScreen>(m_unit.get());
    m_window->resize(1280, 720);
}

void tst_Languages::cleanup()
{
    m_window.reset();
    m_unit.reset();
}

// ---- Texts --------------------------------------------------------------------------------------

struct Texts
{
    const char *what;
    QStringList inLanguages; // as in `languages`
};

// clang-format off
static const QList<Texts> allTexts = {
    {"title", {"Head unit", "Bordsystem", "Système de bord", "Sistema de a bordo"}},
    {"no module", {"No module", "Kein Modul", "Pas de module", "Sin módulo"}},
    {"simulator", {"Simulator", "Simulator", "Simulateur", "Simulador"}},
    {"recorded", {"Recorded", "Aufnahme", "Enregistré", "Grabado"}},
    {"live", {"Live", "Live", "En direct", "En vivo"}},
    {"camera", {"Rear camera", "Rückfahrkamera", "Caméra de recul", "Cámara trasera"}},
    {"distance", {"4.1 ft", "1,2 m", "1,2 m", "1,2 m"}},
    {"warning", {"Check the surroundings of the car yourself", "Prüfen Sie selbst die Umgebung des Fahrzeugs",
                 "Vérifiez vous-même les alentours du véhicule", "Compruebe usted mismo el entorno del vehículo"}},
    {"narrow warning", {"Check surroundings", "Umgebung prüfen", "Vérifiez les alentours", "Compruebe el entorno"}},
};
// clang-format on

void tst_Languages::loadPlugin()
{
    QString error;
    QVERIFY2(m_unit->load(testpaths::pluginFile(), &error), qPrintable(error));
}

void tst_Languages::show(const QString &what)
{
    const QHash<QString, Source> sources = {
        {"simulator", Source::Simulator}, {"recorded", Source::Recorded}, {"live", Source::Live}};
    column()->setModuleMissing(what == "no module");
    column()->setSource(sources.value(what));
    RearView view;
    view.wall = 1.24;
    camera()->setView(view);
    m_unit->screen()->setSplit(what == "narrow warning");
    m_unit->screen()->showCamera(true);
}

/** The text, with what else is drawn beside it. */
QStringList tst_Languages::shown(const QString &what)
{
    if (what == "title")
        return {m_window->windowTitle()};
    const bool isOfCamera = QStringList{"camera", "distance"}.contains(what);
    return what.endsWith("warning") ? QStringList(warning()->text())
           : isOfCamera             ? drawnLines(camera())
                                    : drawnLines(column());
}

void tst_Languages::showsText_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("text");
    for (const Texts &texts : allTexts) {
        for (int i = 0; i < languages.size(); ++i)
            QTest::addRow("%s, %s", texts.what, qPrintable(languages[i]))
                << QString(texts.what) << languages[i] << texts.inLanguages[i];
    }
}

/** Changed while it is shown, and changed back. */
void tst_Languages::showsText()
{
    QFETCH(QString, what);
    QFETCH(QString, language);
    QFETCH(QString, text);
    show(what);
    const QStringList before = shown(what);
    setLanguage(language);
    const QStringList after = shown(what);
    QVERIFY2(after.join(' ').simplified().contains(text), qPrintable(after.join('|')));
    setLanguage("en");
    QCOMPARE(shown(what), before);
}

void tst_Languages::textsFit_data()
{
    showsText_data();
}

void tst_Languages::textsFit()
{
    QFETCH(QString, what);
    QFETCH(QString, language);
    setLanguage(language);
    show(what);
    static constexpr int edge = 3;
    if (what.endsWith("warning"))
        QVERIFY(warning()->fontMetrics().horizontalAdvance(warning()->text()) <
                warning()->width() - 2 * edge);
    for (QWidget *widget : QList<QWidget *>{column(), camera()}) {
        QRectF last;
        const QRectF room = QRectF(widget->rect()).adjusted(edge, 0, -edge, 0);
        for (const DrawnText &drawn : drawnTexts(widget)) {
            QVERIFY2(drawn.place.left() >= room.left() && drawn.place.right() <= room.right(),
                     qPrintable(drawn.text));
            QVERIFY2(!drawn.place.intersects(last.adjusted(1, 1, -1, -1)), qPrintable(drawn.text));
            last = drawn.place;
        }
    }
}

/** A language that is chosen again changes nothing on the screen. */
void tst_Languages::changeIsPaintedOnce()
{
    show("simulator");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^display: expected at least "));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QTest::qWait(50);
    PaintCounter counter(column());
    setLanguage("fr");
    QTRY_COMPARE(counter.paints, 1);
    setLanguage("fr");
    QTest::qWait(50);
    QCOMPARE(counter.paints, 1);
}

/** The warning belongs to the video service, which alone lays it out. */
void tst_Languages::widthOfTheWarningStays()
{
    setLanguage("de");
    QCOMPARE(warning()->text(), QString());
    show("warning");
    m_unit->screen()->setSplit(true);
    setLanguage("fr");
    QCOMPARE(warning()->text(), QStringLiteral("Vérifiez vous-même les alentours du véhicule"));
    QCOMPARE(warning()->width(), 1280 - StatusColumn::Width);
}

/** A page reads the host's texts when it needs them: an open one keeps what it shows. */
void tst_Languages::pluginReadsItsTextsAgain()
{
    loadPlugin();
    m_unit->windows()->openWindow(ClimatePage);
    const auto zone = [this] {
        return m_unit->windows()->currentPage()->findChild<QLabel *>("Txt_rear")->text();
    };
    QCOMPARE(zone(), QStringLiteral("Rear"));
    setLanguage("de");
    QCOMPARE(zone(), QStringLiteral("Rear"));
    m_unit->windows()->recreateWindow();
    QCOMPARE(zone(), QStringLiteral("Hinten"));
}

void tst_Languages::zoneFitsItsLabel_data()
{
    QTest::addColumn<QString>("language");
    for (const QString &language : languages)
        QTest::newRow(qPrintable(language)) << language;
}

void tst_Languages::zoneFitsItsLabel()
{
    QFETCH(QString, language);
    setLanguage(language);
    loadPlugin();
    m_unit->windows()->openWindow(ClimatePage);
    auto *label = m_unit->windows()->currentPage()->findChild<QLabel *>("Txt_rear");
    QVERIFY(!label->text().isEmpty());
    for (const auto zone : {Translator::ZoneFront, Translator::ZoneRear})
        QVERIFY(label->fontMetrics().horizontalAdvance(Translator::instance()->text(zone)) <=
                label->contentsRect().width());
}

// ---- The program --------------------------------------------------------------------------------

/** What the plugin of the test printed, when the unit had started. */
static QStringList printed(const UnitPlace &place, const QString &options,
                           const QString &settings = {}, QString *warnings = nullptr)
{
    const auto unit =
        place.start("--plugin " + testpaths::languagePlugin() + ' ' + options,
                    QStringLiteral("QT_LOGGING_TO_CONSOLE=1 LC_ALL=C.UTF-8 ") + settings);
    place.manager().upTo("WATCHDOG=1");
    unit->end();
    place.manager().during(1);
    if (warnings)
        *warnings = messages(unit->err());
    return unit->out().split('\n', Qt::SkipEmptyParts);
}

void tst_Languages::whereItComesFrom_data()
{
    QTest::addColumn<QByteArray>("content"); // of the configuration file
    QTest::addColumn<QByteArray>("kept");    // of the settings
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("language");
    const auto row = [](const char *name, const char *content, const char *kept,
                        const char *options, const char *language) {
        QTest::newRow(name) << QByteArray(content) << QByteArray(kept) << options << language;
    };
    row("nowhere: the system's", "", "", "", "en");
    row("kept", "", "de", "", "de");
    row("file", "language = fr\n", "", "", "fr");
    row("file over kept", "language = fr\n", "de", "", "fr");
    row("option", "", "", "--language es", "es");
    row("option over file", "language=fr\n", "", "--language=es", "es");
    row("option over kept", "", "de", "--language en", "en");
}

static void keep(const UnitPlace &place, const QByteArray &language)
{
    const QString folder = place.path("data/media/flash/nvm");
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(!place
                 .write("data/media/flash/nvm/settings.ini",
                        "[General]\nUnitLanguage=" + language + '\n')
                 .isEmpty());
}

void tst_Languages::whereItComesFrom()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, kept);
    QFETCH(QString, options);
    QFETCH(QString, language);
    const UnitPlace place;
    place.write("unit.conf", "module = none\n" + content);
    if (!kept.isEmpty())
        keep(place, kept);
    QString warnings;
    QCOMPARE(printed(place, options, {}, &warnings), QStringList("created in " + language));
    QCOMPARE(warnings, QString());
}

/** Chosen by the plugin while the unit runs. A language in the file is not replaced by it. */
void tst_Languages::choiceIsKept()
{
    const UnitPlace place;
    const QString chooses = QStringLiteral("NORDA_TEST_CHOOSES=fr");
    QCOMPARE(printed(place, "--language de", chooses),
             (QStringList{"created in de", "changed to fr_FR"}));
    QCOMPARE(printed(place, {}), QStringList("created in en"));
    QCOMPARE(printed(place, {}, chooses), (QStringList{"created in en", "changed to fr_FR"}));
    QVERIFY2(place.settings().contains("UnitLanguage=fr\n"), qPrintable(place.settings()));
    QCOMPARE(printed(place, {}), QStringList("created in fr"));
}

void tst_Languages::damagedChoice()
{
    const UnitPlace place;
    keep(place, "../de");
    QString warnings;
    QCOMPARE(printed(place, {}, {}, &warnings), QStringList("created in en"));
    QCOMPARE(warnings,
             QStringLiteral("UnitLanguage: expected 'en', 'de', 'fr' or 'es', got '../de'"));
}

NORDA_TEST_MAIN(tst_Languages)
#include "tst_languages.moc"
