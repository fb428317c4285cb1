#include "manualpage.h"
#include "testmain.h"
#include "unitplace.h"

#include <sys/stat.h>

/** The configuration of norda-unit: its file, its environment and its command line. */
class tst_UnitProgram : public QObject
{
    Q_OBJECT
private slots:
    void init() { m_place = std::make_unique<UnitPlace>(); }
    void cleanup() { m_place.reset(); }

    void badConfiguration_data();
    void badConfiguration();
    void badArguments_data();
    void badArguments();
    void unreadableConfiguration_data();
    void unreadableConfiguration();
    void printsHelp_data();
    void printsHelp();
    void manualNamesEveryOption();
    void precedence_data();
    void precedence();
    void dataFolder_data();
    void dataFolder();
    void onlyWhatHoldsIsChecked_data();
    void onlyWhatHoldsIsChecked();

private:
    std::unique_ptr<UnitPlace> m_place;
};

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
    const QString file = m_place->write("bad.conf", content);
    const ProgramResult result = m_place->run({"--config", file});
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
    row("language", {"--language", "xx"},
        "--language: expected 'en', 'de', 'fr' or 'es', got 'xx'");
    row("platform", {"-platform", "glass"}, "-platform: expected a Qt platform that works here");
}

void tst_UnitProgram::badArguments()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    const ProgramResult result =
        m_place->run(QStringList{"--config", m_place->path("unit.conf")} + arguments);
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
    const QString file = m_place->path("other.conf");
    if (kind == "folder")
        QVERIFY(QDir().mkpath(file));
    else if (kind == "pipe")
        QCOMPARE(::mkfifo(qPrintable(file), 0600), 0);
    else if (kind == "too large")
        m_place->write("other.conf", QByteArray(100'000, '\n'));
    const ProgramResult result = m_place->run({"--config", file});
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
    const ProgramResult result = m_place->run({"-platform", "none", option});
    QVERIFY2(result.out.contains(text), qPrintable(result.out));
    QCOMPARE(result.err, QString());
    QCOMPARE(result.exitCode, 0);
}

void tst_UnitProgram::manualNamesEveryOption()
{
    const QStringList options = optionsOf(m_place->run({"--help"}).out);
    QVERIFY(options.size() > 8);
    QCOMPARE(missingInManual("norda-unit", options), QStringList());
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
    m_place->write("unit.conf", "[unit]\nmodule = none\n" + content);
    QCOMPARE(m_place->openedPage(options, SIGTERM), page);
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
    m_place->write("unit.conf",
                   "module = none\ndata = " + QFile::encodeName(m_place->path("from-file")) + '\n');
    options.replace("from-option", m_place->path("from-option"));
    const std::unique_ptr<StartedProgram> unit = m_place->start(options, settings);
    m_place->manager().upTo("WATCHDOG=1");
    QCOMPARE(unit->end(), 0);
    QCOMPARE(m_place->settings(folder), QStringLiteral("[General]\nUnitLastPage=80\n"));
}

void tst_UnitProgram::onlyWhatHoldsIsChecked_data()
{
    QTest::addColumn<QString>("bus");
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("message"); // empty where the unit starts
    const auto row = [](const char *name, const char *bus, const char *options,
                        const char *message) { QTest::newRow(name) << bus << options << message; };
    row("file", "", "--module none",
        "%1:1: data: expected a folder that can be written, got '/proc/data'");
    row("option over the file", "", "--module none --data own", "");
    row("bad variable", "sesion", "--data own",
        "NORDA_MODULE_BUS: expected 'session', 'system', 'none' or the address of a bus such as "
        "unix:path=/run/bus, got 'sesion'");
    row("variable for none", "none", "--data own", "");
    row("option over a bad variable", "sesion", "--module none --data own", "");
}

/** As an installed file does not suit a user who states something else. */
void tst_UnitProgram::onlyWhatHoldsIsChecked()
{
    QFETCH(QString, bus);
    QFETCH(QString, options);
    QFETCH(QString, message);
    const QString file = m_place->write("unit.conf", "data = /proc/data\n");
    options.replace("own", m_place->path("own"));
    const std::unique_ptr<StartedProgram> unit =
        m_place->start(options, "NORDA_HOST_ROOT= NORDA_MODULE_BUS=" + bus);
    if (message.isEmpty()) {
        m_place->manager().upTo("WATCHDOG=1");
        QCOMPARE(unit->end(), 0);
        return;
    }
    message.replace("%1", file);
    QTRY_COMPARE(unit->err(), "norda-unit: " + message + '\n');
}

NORDA_TEST_MAIN(tst_UnitProgram)
#include "tst_unitprogram.moc"
