#include "notifysocket.h"
#include "program.h"
#include "startedprogram.h"
#include "testmain.h"

#include <memory>
#include <sys/stat.h>

/** norda-unit as a service manager starts it. */
class tst_UnitProgram : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void badConfiguration_data();
    void badConfiguration();
    void badArguments_data();
    void badArguments();
    void unreadableConfiguration_data();
    void unreadableConfiguration();
    void printsHelp_data();
    void printsHelp();
    void precedence_data();
    void precedence();
    void dataFolder_data();
    void dataFolder();

    void reports_data();
    void reports();
    void unusableManager_data();
    void unusableManager();
    void readyFollowsThePicture();
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
    QString path(const char *name) const { return m_folder->filePath(QLatin1String(name)); }
    QString write(const char *name, const QByteArray &content) const;
    QString read(const QString &name) const;
    std::unique_ptr<StartedProgram> start(const QString &options,
                                          const QString &settings = {}) const;
    ProgramResult run(const QStringList &options) const;
    QString openedPage(const QString &options, int endSignal) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<NotifySocket> m_manager;
};

void tst_UnitProgram::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_manager = std::make_unique<NotifySocket>(QFile::encodeName(path("notify")));
    QVERIFY(m_manager->isBound());
    write("unit.conf", "module = none\n");
}

void tst_UnitProgram::cleanup()
{
    m_manager.reset();
    m_folder.reset();
}

QString tst_UnitProgram::write(const char *name, const QByteArray &content) const
{
    QFile file(path(name));
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size()
               ? file.fileName()
               : QString();
}

QString tst_UnitProgram::read(const QString &name) const
{
    QFile file(m_folder->filePath(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/** What it prints, without what the small display of the offscreen platform gives rise to. */
static QString messages(const QString &err)
{
    QStringList lines = err.split('\n', Qt::SkipEmptyParts);
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const QString &line) { return line.startsWith("display: "); }),
                lines.end());
    return lines.join('\n');
}

std::unique_ptr<StartedProgram> tst_UnitProgram::start(const QString &options,
                                                       const QString &settings) const
{
    const QString usual =
        QStringLiteral(
            "NORDA_MODULE_BUS= NORDA_HOST_ROOT=%1 NOTIFY_SOCKET=%2 WATCHDOG_USEC=200000 ")
            .arg(path("data"), QString::fromLocal8Bit(m_manager->name()));
    return std::make_unique<StartedProgram>(
        QStringLiteral("norda-unit"),
        QStringLiteral("--config %1 -platform offscreen %2").arg(path("unit.conf"), options),
        usual + settings);
}

/** To its end, which it must come to by itself. */
ProgramResult tst_UnitProgram::run(const QStringList &options) const
{
    const QStringList command =
        StartedProgram::command(QStringLiteral("norda-unit")).split(' ', Qt::SkipEmptyParts);
    return runProgram(QStringList{"env", "NORDA_HOST_ROOT=" + path("data")} + command +
                      QStringList{"-platform", "offscreen"} + options);
}

// ---- Configuration ------------------------------------------------------------------------------

void tst_UnitProgram::badConfiguration_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message"); // after the name of the file
    const auto row = [](const char *name, const QByteArray &content, const QByteArray &message) {
        QTest::newRow(name) << content << QString::fromLatin1(message);
    };
    const QByteArray keys = "expected one of the keys plugin, module, data, language, page, "
                            "restore-page, cursor, style";
    row("unknown key", "[unit]\ncolour = red\n", "2: colour: " + keys);
    row("key in another case", "\nModule = none\n", "2: Module: " + keys);
    row("another section", "[display]\n", "1: expected key = value, got '[display]'");
    row("no value", "cursor\n", "1: expected key = value, got 'cursor'");
    row("empty value", "# comment\n; another\ncursor =\n", "3: cursor: expected on|off, got ''");
    row("twice", "cursor=on\ncursor=on\n", "2: cursor: expected once, got it again");
    row("cursor", "cursor = yes", "1: cursor: expected 'on' or 'off', got 'yes'");
    row("restored page", "restore-page = 1", "1: restore-page: expected 'on' or 'off', got '1'");
    row("page", "page = radio",
        "1: page: expected one of gauges, vehicle, climate, parking, settings, about, got 'radio'");
    row("language", "language = la", "1: language: expected 'en', 'de', 'fr' or 'es', got 'la'");
    row("style", "style = Motif", "1: style: expected one of Windows, Fusion, got 'Motif'");
    row("plugin", "plugin = /nowhere/lib.so",
        "1: plugin: expected a plugin file that can be read, got '/nowhere/lib.so'");
    row("plugin that is a folder", "plugin = /",
        "1: plugin: expected a plugin file that can be read, got '/'");
    row("data", "data = /dev/null/data",
        "1: data: expected a folder that can be written, got '/dev/null/data'");
    row("module", "module = can0",
        "1: module: expected 'session', 'system', 'none' or the address of a bus such as "
        "unix:path=/run/bus, got 'can0'");
    row("module with a blank", "module = unix:path=/a b",
        "1: module: expected 'session', 'system', 'none' or the address of a bus such as "
        "unix:path=/run/bus, got 'unix:path=/a b'");
}

void tst_UnitProgram::badConfiguration()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    const QString file = write("bad.conf", content);
    const ProgramResult result = run({"--config", file});
    QCOMPARE(result.err, QStringLiteral("norda-unit: %1:%2\n").arg(file, message));
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.out, QString());
}

void tst_UnitProgram::badArguments_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const QStringList &arguments, const char *message) {
        QTest::newRow(name) << arguments << message;
    };
    row("unknown", {"--colour", "red"}, "Unknown option 'colour'. See --help.");
    row("unknown, with one dash", {"-colour"},
        "-colour: expected an option of Qt, or one of the unit with two dashes");
    row("no option", {"--cursor=on", "drive.csv"}, "drive.csv: expected an option, see --help");
    row("no value", {"--page"}, "Missing value after '--page'. See --help.");
    row("empty value", {"--page="}, "--page: expected NAME, got ''");
    row("cursor", {"--cursor", "yes"}, "--cursor: expected 'on' or 'off', got 'yes'");
    row("platform", {"-platform", "glass"}, "-platform: expected a Qt platform that works here");
}

void tst_UnitProgram::badArguments()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    const ProgramResult result = run(QStringList{"--config", path("unit.conf")} + arguments);
    const QStringList lines = result.err.split('\n', Qt::SkipEmptyParts); // Qt's own reasons first
    QVERIFY(!lines.isEmpty());
    QCOMPARE(lines.last(), "norda-unit: " + message);
    QCOMPARE(result.exitCode, 2);
}

void tst_UnitProgram::unreadableConfiguration_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"missing", "folder", "pipe", "too large"})
        QTest::newRow(kind) << kind;
}

void tst_UnitProgram::unreadableConfiguration()
{
    QFETCH(QString, kind);
    const QString file = path("other.conf");
    if (kind == "folder")
        QVERIFY(QDir().mkpath(file));
    else if (kind == "pipe")
        QCOMPARE(::mkfifo(qPrintable(file), 0600), 0);
    else if (kind == "too large")
        write("other.conf", QByteArray(100'000, '\n'));
    const ProgramResult result = run({"--config", file});
    QCOMPARE(result.err,
             QStringLiteral("norda-unit: --config: expected a file that can be read, got '%1'\n")
                 .arg(file));
    QCOMPARE(result.exitCode, 2);
}

void tst_UnitProgram::printsHelp_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("text");
    QTest::newRow("--help") << "--help"
                            << "-platform linuxfb";
    QTest::newRow("-h") << "-h"
                        << "--restore-page <on|off>";
    QTest::newRow("--version") << "--version"
                               << "norda-unit 0.1.0\n";
    QTest::newRow("-v") << "-v"
                        << "norda-unit 0.1.0\n";
}

/** Also where there is no display. */
void tst_UnitProgram::printsHelp()
{
    QFETCH(QString, option);
    QFETCH(QString, text);
    const ProgramResult result = run({"-platform", "none", option});
    QVERIFY2(result.out.contains(text), qPrintable(result.out));
    QCOMPARE(result.err, QString());
    QCOMPARE(result.exitCode, 0);
}

/** Starts it, ends it, and tells which page it had opened. */
QString tst_UnitProgram::openedPage(const QString &options, int endSignal) const
{
    const std::unique_ptr<StartedProgram> unit = start(options);
    const QList<QByteArray> reports = m_manager->upTo("READY=1");
    m_manager->upTo("WATCHDOG=1"); // by then the page is kept
    unit->end(endSignal);
    m_manager->during(1);
    return reports.isEmpty()
               ? unit->err()
               : QString::fromUtf8(reports.last()).section("STATUS=", 1).section(", ", 0, 0);
}

void tst_UnitProgram::precedence_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("page");
    const auto row = [](const char *name, const char *content, const char *options,
                        const char *page) {
        QTest::newRow(name) << QByteArray(content) << options << page;
    };
    row("neither", "", "", "Gauges (80)");
    row("file", "page = vehicle\n", "", "Vehicle (81)");
    row("option", "", "--page about", "About (85)");
    row("option over file", "page=vehicle\n", "--page=climate", "Climate (82)");
}

void tst_UnitProgram::precedence()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, options);
    QFETCH(QString, page);
    write("unit.conf", "[unit]\nmodule = none\n" + content);
    QCOMPARE(openedPage(options, SIGTERM), page);
}

void tst_UnitProgram::dataFolder_data()
{
    QTest::addColumn<QString>("settings");
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("folder");
    QTest::newRow("file") << "NORDA_HOST_ROOT="
                          << ""
                          << "from-file";
    QTest::newRow("environment over file") << ""
                                           << ""
                                           << "data";
    QTest::newRow("option over both") << ""
                                      << "--data from-option"
                                      << "from-option";
}

void tst_UnitProgram::dataFolder()
{
    QFETCH(QString, settings);
    QFETCH(QString, options);
    QFETCH(QString, folder);
    write("unit.conf", "module = none\ndata = " + QFile::encodeName(path("from-file")) + '\n');
    options.replace("from-option", path("from-option"));
    const std::unique_ptr<StartedProgram> unit = start(options, settings);
    m_manager->upTo("WATCHDOG=1");
    QCOMPARE(unit->end(), 0);
    QCOMPARE(read(folder + "/media/flash/nvm/settings.ini"),
             QStringLiteral("[General]\nUnitLastPage=80\n"));
}

// ---- Reports to the service manager -------------------------------------------------------------

void tst_UnitProgram::reports_data()
{
    QTest::addColumn<bool>("isAbstract");
    QTest::newRow("path") << false;
    QTest::newRow("abstract") << true;
}

void tst_UnitProgram::reports()
{
    QFETCH(bool, isAbstract);
    if (isAbstract)
        m_manager = std::make_unique<NotifySocket>("@norda-test-" + QByteArray::number(::getpid()));
    QVERIFY(m_manager->isBound());
    const std::unique_ptr<StartedProgram> unit = start("--page parking");
    const QByteArray status = "STATUS=Parking (83), module in this process";
    const QList<QByteArray> beginning = {status, "READY=1\n" + status, "WATCHDOG=1"};
    QCOMPARE(m_manager->upTo("WATCHDOG=1"), beginning);
    const QList<QByteArray> alive = m_manager->during(2000);
    QCOMPARE(alive.count("WATCHDOG=1"), alive.size());
    QVERIFY2(alive.size() <= 22, "expected one in 100 ms");
    QVERIFY(!alive.isEmpty());
    QCOMPARE(unit->end(), 0);
    QVERIFY(m_manager->during(100).contains("STOPPING=1"));
    QCOMPARE(messages(unit->err()), QString());
    QCOMPARE(unit->err().count("display: expected at least 1280 x 720"), 1);
}

void tst_UnitProgram::unusableManager_data()
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
void tst_UnitProgram::unusableManager()
{
    QFETCH(QString, settings);
    QFETCH(QString, message);
    const std::unique_ptr<StartedProgram> unit = start("--page climate", settings);
    QTRY_VERIFY_WITH_TIMEOUT(
        read("data/media/flash/nvm/settings.ini").contains("UnitLastPage=82 1"), 60000);
    QCOMPARE(unit->end(), 0);
    QCOMPARE(messages(unit->err()), message);
}

/** The page hangs while it is painted for the first time. */
void tst_UnitProgram::readyFollowsThePicture()
{
    const auto unit = start("--plugin " + testpaths::brokenPlugin("HANG_IN_PAINT"));
    QCOMPARE(m_manager->upTo("STATUS=").size(), 1);
    QCOMPARE(m_manager->during(2000), QList<QByteArray>());
}

void tst_UnitProgram::hangingLoopIsNotAlive()
{
    const auto unit = start("--plugin " + testpaths::brokenPlugin("HANG_AFTER_PAINT"));
    QVERIFY(m_manager->upTo("WATCHDOG=1").contains("WATCHDOG=1"));
    QVERIFY(m_manager->fallsSilent(5000));
}

void tst_UnitProgram::noWatchdog_data()
{
    QTest::addColumn<QString>("settings");
    QTest::newRow("not expected") << "WATCHDOG_USEC=";
    QTest::newRow("of another process") << "WATCHDOG_PID=1";
}

void tst_UnitProgram::noWatchdog()
{
    QFETCH(QString, settings);
    const std::unique_ptr<StartedProgram> unit = start({}, settings);
    QCOMPARE(m_manager->upTo("READY=1").size(), 2);
    QCOMPARE(m_manager->during(1500), QList<QByteArray>());
}

void tst_UnitProgram::ends_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("INT") << SIGINT;
    QTest::newRow("TERM") << SIGTERM;
    QTest::newRow("HUP") << SIGHUP;
}

void tst_UnitProgram::ends()
{
    QFETCH(int, signal);
    struct sigaction own = {};
    if (signal == SIGHUP && ::sigaction(SIGHUP, nullptr, &own) == 0 && own.sa_handler == SIG_IGN)
        QSKIP("HUP is ignored here, as under nohup");
    const std::unique_ptr<StartedProgram> unit = start("--page climate");
    m_manager->upTo("READY=1");
    QCOMPARE(unit->end(signal), 0);
    QCOMPARE(read("data/media/flash/nvm/settings.ini"),
             QStringLiteral("[General]\nUnitLastPage=82\n"));
}

void tst_UnitProgram::unusablePlugin_data()
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

void tst_UnitProgram::unusablePlugin()
{
    QFETCH(QString, plugin);
    QFETCH(QString, message);
    const ProgramResult result =
        run({"--config", path("unit.conf"), "--plugin", testpaths::brokenPlugin(plugin)});
    QCOMPARE(messages(result.err), message);
    QCOMPARE(result.exitCode, 2);
}

// ---- The last page ------------------------------------------------------------------------------

using Runs = QVector<QPair<QString, int>>; // options, and the signal that ends it
Q_DECLARE_METATYPE(Runs)

void tst_UnitProgram::lastPage_data()
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

void tst_UnitProgram::lastPage()
{
    QFETCH(Runs, runs);
    QFETCH(QString, page);
    for (const auto &[options, signal] : qAsConst(runs))
        openedPage(options, signal);
    QCOMPARE(openedPage({}, SIGTERM), page);
}

/** After ten seconds the page has nothing to do with the end. */
void tst_UnitProgram::pageSettles()
{
    const auto kept = [this] { return read("data/media/flash/nvm/settings.ini"); };
    openedPage("--page climate", SIGKILL);
    const std::unique_ptr<StartedProgram> unit = start({});
    QTRY_COMPARE_WITH_TIMEOUT(kept(), QStringLiteral("[General]\nUnitLastPage=82 2\n"), 60000);
    QTRY_COMPARE_WITH_TIMEOUT(kept(), QStringLiteral("[General]\nUnitLastPage=82\n"), 60000);
    unit->end(SIGKILL);
    m_manager->during(1);
    QCOMPARE(openedPage({}, SIGTERM), QStringLiteral("Climate (82)"));
}

void tst_UnitProgram::keptText_data()
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

void tst_UnitProgram::keptText()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, page);
    QVERIFY(QDir().mkpath(path("data/media/flash/nvm")));
    write("data/media/flash/nvm/settings.ini", "[General]\nUnitLastPage=" + text + '\n');
    QCOMPARE(openedPage("--page climate", SIGTERM), page);
}

NORDA_TEST_MAIN(tst_UnitProgram)
#include "tst_unitprogram.moc"
