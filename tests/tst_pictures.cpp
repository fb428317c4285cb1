#include "differencereport.h"
#include "norda/vant_popup.h"
#include "norda/widget/norda_bar_widget.h"
#include "norda/widget/vantiq_top_bar_widget.h"
#include "nordahost.h"
#include "options.h"
#include "picturecomparison.h"
#include "referencepictures.h"
#include "scenario/scenariorun.h"
#include "session/rig.h"
#include "session/warnings.h"
#include "testmain.h"
#include "testpaths.h"
#include "translator.h"

#include <QAbstractButton>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <functional>

/** Makes what no page shows. */
using Component = std::function<std::unique_ptr<QWidget>()>;

/**
 * The look of the pages, and of what no page shows. The scenarios in tests/pictures go through the
 * states of the pages, which their `picture` lines name. The references are beside them.
 */
class tst_Pictures : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void looksAsAccepted_data();
    void looksAsAccepted();
    void everyReferenceHasAState();
    void cleanupTestCase();

private:
    struct State
    {
        QString name;
        QString scenario; // that leads to it, or
        Component component;
    };

    void addScenarios();
    void addPopups();
    void addBars();
    bool hasState(const QString &name) const;
    bool play(const QString &file);
    QImage seen(const State &state);

    const bool m_accepts = qEnvironmentVariableIsSet("NORDA_ACCEPT_PICTURES");
    const QString m_folder = testpaths::source(QStringLiteral("tests/pictures"));
    const ReferencePictures m_references{m_folder};
    const QDir m_results{testpaths::buildFolder() + QStringLiteral("/pictures")};
    QTemporaryDir m_seen;
    QString m_played; // the scenario whose pictures are there
    bool m_isComplete = false;
    QVector<State> m_states;
    QVector<PictureFailure> m_failures;
};

void tst_Pictures::initTestCase()
{
    QDir(m_results).removeRecursively();
    nordaHostObject("CallLog"); // the host brings the images
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    addScenarios();
    addPopups();
    addBars();
}

void tst_Pictures::addScenarios()
{
    for (const QString &name : QDir(m_folder).entryList({"*.scenario"}, QDir::Files)) {
        Scenario scenario;
        QString error;
        const QString file = QDir(m_folder).filePath(name);
        QVERIFY2(scenario.read(file, &error), qPrintable(error));
        const int begin = m_states.size();
        for (const ScenarioStep &step : qAsConst(scenario.steps)) {
            if (step.word != QLatin1String("picture"))
                continue;
            const QString picture = step.arguments[0].toString();
            QVERIFY2(!hasState(picture), qPrintable(picture));
            // The others are kept as differences from it.
            const bool isWhole = ReferencePictures::isWhole(picture);
            m_states.insert(isWhole ? begin : m_states.size(), {picture, file, {}});
        }
    }
}

/** The module's dialog, which no page opens. */
static Component popup(int type)
{
    return [type]() -> std::unique_ptr<QWidget> {
        auto popup = std::make_unique<vant_popup>();
        popup->setPopType(type);
        return popup;
    };
}

static Component topBar(int page, const QString &language = QStringLiteral("en"))
{
    return [page, language]() -> std::unique_ptr<QWidget> {
        auto bar = std::make_unique<norda::Vantiq_Top_Bar_Widget>();
        Translator::instance()->setLanguage(language);
        bar->setCurrentPageTitle(page);
        Translator::instance()->setLanguage(QStringLiteral("en"));
        return bar;
    };
}

static std::unique_ptr<QWidget> navigationBar()
{
    auto bar = std::make_unique<norda::Vantiq_Bar_Widget>();
    bar->updateBtnChecked(2);
    return bar;
}

/** The same with every key as a finger holds it. */
static Component pressed(const Component &make)
{
    return [make] {
        auto widget = make();
        for (auto *key : widget->findChildren<QAbstractButton *>())
            key->setDown(true);
        return widget;
    };
}

static Component disabled(const Component &make)
{
    return [make] {
        auto widget = make();
        for (auto *key : widget->findChildren<QAbstractButton *>())
            key->setEnabled(false);
        return widget;
    };
}

void tst_Pictures::addPopups()
{
    static constexpr const char *names[] = {"popup",         "popup-capacity", "popup-reset",
                                            "popup-voltage", "popup-front",    "popup-rear",
                                            "popup-service"};
    for (int type = 0; type < int(std::size(names)); ++type) {
        const QString name = QLatin1String(names[type]);
        m_states.append({name, {}, popup(type)});
        m_states.append({name + "-pressed", {}, pressed(popup(type))});
        m_states.append({name + "-disabled", {}, disabled(popup(type))});
    }
}

void tst_Pictures::addBars()
{
    m_states += {{"navigation", {}, navigationBar},
                 {"navigation-pressed", {}, pressed(navigationBar)},
                 {"navigation-disabled", {}, disabled(navigationBar)},
                 {"top", {}, topBar(0)},
                 {"top-pressed", {}, pressed(topBar(0))},
                 {"top-disabled", {}, disabled(topBar(0))}};
    for (const char *language : {"en", "de", "fr", "es"}) {
        for (int page = 0; page < 5; ++page)
            m_states.append({QStringLiteral("top-%1-%2").arg(page).arg(QLatin1String(language)),
                             {},
                             topBar(page, QLatin1String(language))});
    }
}

bool tst_Pictures::hasState(const QString &name) const
{
    return std::any_of(m_states.cbegin(), m_states.cend(),
                       [&name](const State &state) { return state.name == name; });
}

/** Into the folder for what is seen. @return whether every step was done and every expectation held
 */
bool tst_Pictures::play(const QString &file)
{
    if (m_played == file)
        return m_isComplete;
    const Warnings warnings;
    Scenario scenario;
    Options options;
    QString error;
    options.gallery = m_seen.path();
    scenario.read(file, &error);
    Rig rig(scenario.setup);
    if (!rig.open(testpaths::pluginFile(), &error))
        qFatal("%s", qPrintable(error));
    rig.unit()->screen()->show();
    rig.begin(Replay::Beginning);
    const ScenarioResult result = ScenarioRun(scenario, options, &rig).play();
    for (const QString &failure : result.failures)
        qWarning("%s", qPrintable(failure));
    m_played = file;
    m_isComplete = result.failures.isEmpty();
    return m_isComplete;
}

QImage tst_Pictures::seen(const State &state)
{
    if (state.component)
        return state.component()->grab().toImage();
    return play(state.scenario) ? QImage(m_seen.filePath(state.name + QStringLiteral(".png")))
                                : QImage();
}

void tst_Pictures::looksAsAccepted_data()
{
    QTest::addColumn<int>("state");
    for (int i = 0; i < m_states.size(); ++i)
        QTest::newRow(qPrintable(m_states[i].name)) << i;
}

void tst_Pictures::looksAsAccepted()
{
    QFETCH(int, state);
    const QString name = m_states[state].name;
    const QImage picture = seen(m_states[state]);
    QVERIFY2(!picture.isNull(), "expected a picture");
    const QImage reference = m_references.picture(name);
    const PictureDifference difference = compare(reference, picture);
    if (difference.isSame())
        return;
    if (m_accepts) {
        QVERIFY2(m_references.accept(name, picture), "expected a file that can be written");
        return;
    }
    m_failures.append({name, difference.text(), reference, picture});
    QFAIL(
        qPrintable(QStringLiteral("%1; see %2/report.html")
                       .arg(reference.isNull() ? QStringLiteral("no reference") : difference.text(),
                            m_results.path())));
}

void tst_Pictures::everyReferenceHasAState()
{
    static constexpr int most = 4 << 20;
    for (const QString &name : m_references.names()) {
        if (m_accepts && !hasState(name))
            m_references.remove(name);
        else
            QVERIFY2(hasState(name), qPrintable(name));
    }
    if (!m_accepts) // made small afterwards
        QVERIFY2(m_references.size() < most, qPrintable(QString::number(m_references.size())));
}

void tst_Pictures::cleanupTestCase()
{
    QString error;
    if (!m_failures.isEmpty())
        QVERIFY2(writeDifferences(m_results, m_failures, &error), qPrintable(error));
}

NORDA_TEST_MAIN(tst_Pictures)
#include "tst_pictures.moc"
