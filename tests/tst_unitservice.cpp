#include "moduledprogram.h"
#include "privatebus.h"
#include "testmain.h"
#include "unitplace.h"

/** norda-unit as a service: what it reports, how it ends, and what it opens at the next start. */
class tst_UnitService : public QObject
{
    Q_OBJECT
private slots:
    void init() { m_place = std::make_unique<UnitPlace>(); }
    void cleanup() { m_place.reset(); }

    void reports_data();
    void reports();
    void unusableManager_data();
    void unusableManager();
    void readyFollowsThePicture();
    void statusFollowsTheModule();
    void hangingLoopIsNotAlive();
    void noWatchdog_data();
    void noWatchdog();
    void ends_data();
    void ends();
    void unusablePlugin_data();
    void unusablePlugin();

    void lastPage_data();
    void lastPage();
    void pageSettles();
    void keptText_data();
    void keptText();

private:
    std::unique_ptr<UnitPlace> m_place;
};

// ---- Reports to the service manager -------------------------------------------------------------

void tst_UnitService::reports_data()
{
    QTest::addColumn<bool>("isAbstract");
    QTest::newRow("path") << false;
    QTest::newRow("abstract") << true;
}

void tst_UnitService::reports()
{
    QFETCH(bool, isAbstract);
    if (isAbstract)
        m_place->moveManager("@norda-test-" + QByteArray::number(::getpid()));
    QVERIFY(m_place->manager().isBound());
    const std::unique_ptr<StartedProgram> unit = m_place->start("--page parking");
    const QByteArray status = "STATUS=Parking (83), module in this process";
    const QList<QByteArray> beginning = {status, "READY=1\n" + status, "WATCHDOG=1"};
    QCOMPARE(m_place->manager().upTo("WATCHDOG=1"), beginning);
    const QList<QByteArray> alive = m_place->manager().during(2000);
    QCOMPARE(alive.count("WATCHDOG=1"), alive.size());
    QVERIFY2(alive.size() <= 40, "expected one in 100 ms");
    QVERIFY(!alive.isEmpty());
    QCOMPARE(unit->end(), 0);
    QVERIFY(m_place->manager().during(100).contains("STOPPING=1"));
    QCOMPARE(messages(unit->err()), QString());
    QCOMPARE(unit->err().count("display: expected at least 1280 x 720"), 1);
}

void tst_UnitService::unusableManager_data()
{
    QTest::addColumn<QString>("settings");
    QTest::addColumn<QString>("message");
    QTest::newRow("no path") << "NOTIFY_SOCKET=socket"
                             << "NOTIFY_SOCKET: expected a path or a name with '@', got 'socket'";
    const QString longest = '/' + QString(107, 'x');
    QTest::newRow("too long") << "NOTIFY_SOCKET=" + longest
                              << "NOTIFY_SOCKET: expected a path or a name with '@', got '" +
                                     longest + '\'';
    QTest::newRow("nobody there") << "NOTIFY_SOCKET=/nowhere/notify"
                                  << "";
    QTest::newRow("none") << "NOTIFY_SOCKET="
                          << "";
    QTest::newRow("watchdog") << "WATCHDOG_USEC=soon"
                              << "WATCHDOG_USEC: expected a number of microseconds, got 'soon'";
}

/** The unit works without. */
void tst_UnitService::unusableManager()
{
    QFETCH(QString, settings);
    QFETCH(QString, message);
    const std::unique_ptr<StartedProgram> unit = m_place->start("--page climate", settings);
    QTRY_VERIFY(m_place->settings().contains("UnitLastPage=82 1"));
    QCOMPARE(unit->end(), 0);
    QCOMPARE(messages(unit->err()), message);
}

/** The page hangs while it is painted for the first time. */
void tst_UnitService::readyFollowsThePicture()
{
    const auto unit = m_place->start("--plugin " + testpaths::brokenPlugin("HANG_IN_PAINT"));
    QCOMPARE(m_place->manager().upTo("STATUS=").size(), 1);
    QCOMPARE(m_place->manager().during(2000), QList<QByteArray>());
}

void tst_UnitService::statusFollowsTheModule()
{
    static const QByteArray without = "STATUS=Gauges (80), no module";
    static const QByteArray with = "STATUS=Gauges (80), module connected";
    const PrivateBus bus;
    const auto unit = m_place->start("--module " + bus.address());
    QVERIFY(m_place->manager().upTo(without).contains(without));
    ModuledProgram module("--bus " + bus.address());
    QVERIFY(m_place->manager().upTo(with).contains(with));
    module.end(SIGKILL);
    QVERIFY(m_place->manager().upTo(without).contains(without));
}

void tst_UnitService::hangingLoopIsNotAlive()
{
    const auto unit = m_place->start("--plugin " + testpaths::brokenPlugin("HANG_AFTER_PAINT"));
    QVERIFY(m_place->manager().upTo("WATCHDOG=1").contains("WATCHDOG=1"));
    QVERIFY(m_place->manager().fallsSilent(5000));
}

void tst_UnitService::noWatchdog_data()
{
    QTest::addColumn<QString>("settings");
    QTest::newRow("not expected") << "WATCHDOG_USEC=";
    QTest::newRow("of another process") << "WATCHDOG_PID=1";
}

void tst_UnitService::noWatchdog()
{
    QFETCH(QString, settings);
    const std::unique_ptr<StartedProgram> unit = m_place->start({}, settings);
    QCOMPARE(m_place->manager().upTo("READY=1").size(), 2);
    QCOMPARE(m_place->manager().during(1500), QList<QByteArray>());
}

void tst_UnitService::ends_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("INT") << SIGINT;
    QTest::newRow("TERM") << SIGTERM;
    QTest::newRow("HUP") << SIGHUP;
}

void tst_UnitService::ends()
{
    QFETCH(int, signal);
    struct sigaction own = {};
    if (signal == SIGHUP && ::sigaction(SIGHUP, nullptr, &own) == 0 && own.sa_handler == SIG_IGN)
        QSKIP("HUP is ignored here, as under nohup");
    const std::unique_ptr<StartedProgram> unit = m_place->start("--page climate");
    m_place->manager().upTo("READY=1");
    QCOMPARE(unit->end(signal), 0);
    QCOMPARE(m_place->settings(), QStringLiteral("[General]\nUnitLastPage=82\n"));
}

void tst_UnitService::unusablePlugin_data()
{
    QTest::addColumn<QString>("plugin");
    QTest::addColumn<QString>("message");
    const QString name = QStringLiteral("norda-unit: ");
    QTest::newRow("another interface")
        << "WRONG_IID"
        << name + testpaths::brokenPlugin("WRONG_IID") +
               ": expected a plugin with the interface com.stavel.Qt.nordaPlugin, found "
               "org.example.Another";
    for (const char *plugin : {"NO_ID", "NO_WIDGET"})
        QTest::newRow(plugin) << plugin
                              << name + testpaths::brokenPlugin(plugin) +
                                     ": expected a plugin with the page Gauges (80), found none";
    QTest::newRow("ends the program")
        << "EXIT_IN_ON_CREATE"
        << "The plugin ended the program with exit(); leave that to the head unit";
}

void tst_UnitService::unusablePlugin()
{
    QFETCH(QString, plugin);
    QFETCH(QString, message);
    const ProgramResult result = m_place->run(
        {"--config", m_place->path("unit.conf"), "--plugin", testpaths::brokenPlugin(plugin)});
    QCOMPARE(messages(result.err), message);
    QCOMPARE(result.exitCode, 2);
}

// ---- The last page ------------------------------------------------------------------------------

using Runs = QVector<QPair<QString, int>>; // options, and the signal that ends it
Q_DECLARE_METATYPE(Runs)

void tst_UnitService::lastPage_data()
{
    QTest::addColumn<Runs>("runs");
    QTest::addColumn<QString>("page"); // of the start after them
    const QPair<QString, int> first = {"--page climate", SIGKILL};
    const QPair<QString, int> killed = {"", SIGKILL};
    const QPair<QString, int> ended = {"", SIGTERM};
    QTest::newRow("killed") << Runs{first} << "Climate (82)";
    QTest::newRow("killed, ended") << Runs{first, ended} << "Climate (82)";
    QTest::newRow("ended three times")
        << Runs{{"--page climate", SIGTERM}, ended, ended} << "Climate (82)";
    QTest::newRow("killed twice") << Runs{first, killed} << "Gauges (80)";
    QTest::newRow("killed, ended, killed") << Runs{first, ended, killed} << "Climate (82)";
    QTest::newRow("killed three times") << Runs{first, killed, killed} << "Gauges (80)";
    QTest::newRow("not kept") << Runs{{"--page climate --restore-page off", SIGKILL}}
                              << "Gauges (80)";
}

void tst_UnitService::lastPage()
{
    QFETCH(Runs, runs);
    QFETCH(QString, page);
    for (const auto &[options, signal] : qAsConst(runs))
        m_place->openedPage(options, signal);
    QCOMPARE(m_place->openedPage({}, SIGTERM), page);
}

/** After ten seconds the page has nothing to do with the end. */
void tst_UnitService::pageSettles()
{
    const auto kept = [this] { return m_place->settings(); };
    m_place->openedPage("--page climate", SIGKILL);
    const std::unique_ptr<StartedProgram> unit = m_place->start({});
    QTRY_COMPARE(kept(), QStringLiteral("[General]\nUnitLastPage=82 2\n"));
    QTRY_COMPARE(kept(), QStringLiteral("[General]\nUnitLastPage=82\n"));
    unit->end(SIGKILL);
    m_place->manager().during(1);
    QCOMPARE(m_place->openedPage({}, SIGTERM), QStringLiteral("Climate (82)"));
}

void tst_UnitService::keptText_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("page");
    const auto row = [](const char *text, const char *page) {
        QTest::newRow(text) << QByteArray(text) << page;
    };
    row("81", "Vehicle (81)");
    row("81 1", "Vehicle (81)");
    row("81 2", "Climate (82)");
    row("81 -1", "Climate (82)");
    row("99", "Climate (82)");
    row("Vehicle", "Climate (82)");
    row("", "Climate (82)");
}

void tst_UnitService::keptText()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, page);
    QVERIFY(QDir().mkpath(m_place->path("data/media/flash/nvm")));
    m_place->write("data/media/flash/nvm/settings.ini", "[General]\nUnitLastPage=" + text + '\n');
    QCOMPARE(m_place->openedPage("--page climate", SIGTERM), page);
}

NORDA_TEST_MAIN(tst_UnitService)
#include "tst_unitservice.moc"
