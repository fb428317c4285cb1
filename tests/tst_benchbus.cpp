#include "benchfixture.h"
#include "privatebus.h"
#include "program.h"
#include "service/moduleservice.h"
#include "serviceconnection.h"
#include "testfolder.h"

#include <QJsonDocument>
#include <QTextBrowser>

#include <csignal>

/** The bench at either end of a bus: it follows a module, and it is one. */
class tst_BenchBus : public QObject, protected BenchFixture
{
    Q_OBJECT
private slots:
    void twoBuses();
    void unusable_data();
    void unusable();
    void nameIsTaken();
    void ownModule();
    void followsAndRecords();
    void touchReachesTheModule();
    void touchOfAUnit();
    void moduleGoesAndReturns();
    void laterModule();
    void onlyThePresent();
    void inTheWindow();
};

/** The bench as the module, until the test ends it. */
class ServingBench
{
public:
    ServingBench(const PrivateBus &bus, const QString &options,
                 const QString &display = QStringLiteral("--headless"))
    {
        start(QStringLiteral("%1 %2 --serve=%3 %4")
                  .arg(testpaths::benchFile(), display, bus.address(), options));
        waitForName(bus);
    }
    ~ServingBench() { end(SIGTERM); }

    /** Returns when it has ended. */
    void end(int signal)
    {
        const QByteArray pid = content("pid").trimmed();
        if (pid.isEmpty() || m_hasEnded)
            return;
        m_hasEnded = true;
        ::kill(pid.toInt(), signal);
        QTRY_VERIFY(QFile::exists(m_folder.filePath("code")));
    }
    bool isServing() const { return m_isServing; }
    QString file(const char *name) const { return m_folder.filePath(name); }
    QByteArray content(const char *name) const
    {
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    /** Through the shell, since a QProcess has no place under emulation. */
    void start(const QString &command)
    {
        const QString line = QStringLiteral("cd '%1'; (sh -c 'echo $$ >pid; exec %2' >out 2>err "
                                            "</dev/null; echo $? >code) &")
                                 .arg(m_folder.path(), command);
        QCOMPARE(std::system(qPrintable(line)), 0);
    }
    void waitForName(const PrivateBus &bus)
    {
        const QString call = QStringLiteral("dbus-send --bus='%1' --print-reply "
                                            "--dest=com.stavel.norda.Module "
                                            "/com/stavel/norda/Module "
                                            "com.stavel.norda.Adaptor1.Ping >/dev/null 2>&1")
                                 .arg(bus.address());
        for (int i = 0; i < 600 && !m_isServing; ++i) {
            m_isServing = std::system(qPrintable(call)) == 0;
            QTest::qWait(50);
        }
    }

    TestFolder m_folder;
    bool m_isServing = false;
    bool m_hasEnded = false;
};

static ProgramResult runBench(const QStringList &arguments)
{
    return runProgram(QStringList{testpaths::benchFile(), QStringLiteral("--headless")} +
                      arguments);
}

/** The signals and their arguments in a recording, in order; without their times. */
static QStringList signalsIn(const QString &file, const QString &key = QStringLiteral("signal"))
{
    QFile recording(file);
    QStringList found;
    if (!recording.open(QIODevice::ReadOnly))
        return found;
    while (!recording.atEnd()) {
        QJsonObject line = QJsonDocument::fromJson(recording.readLine()).object();
        line.remove(QStringLiteral("t"));
        if (line.contains(key))
            found.append(QString::fromUtf8(QJsonDocument(line).toJson(QJsonDocument::Compact)));
    }
    return found;
}

/** The host's library and the program have the same code in them, and connections of their own. */
void tst_BenchBus::twoBuses()
{
    const PrivateBus followed;
    const PrivateBus served;
    const ServingBench module(followed, "--source simulator --speed 1");
    ServiceConnection *connection = ServiceConnection::instance();
    connection->setAddress(followed.address());
    connection->open();
    QTRY_COMPARE(connection->state(), ServiceConnection::Connected);
    module::ModuleService service;
    QString error;
    QVERIFY2(service.open(served.address(), &error), qPrintable(error));
    connection->setAddress({});
    connection->open();
}

// ---- What cannot be used ------------------------------------------------------------------------

void tst_BenchBus::unusable_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const QStringList &arguments, const char *message) {
        QTest::newRow(name) << arguments << message;
    };
    row("no address", {"--source", "dbus:"},
        "dbus:: expected dbus:session, dbus:system or dbus: with the address of a bus");
    row("no such bus", {"--source", "dbus:unix:path=/nowhere/bus"},
        "dbus:unix:path=/nowhere/bus: expected a D-Bus, got '");
    row("not an address", {"--source", "dbus:there"}, "dbus:there: expected a D-Bus, got '");
    row("with a DBC file", {"--source", "dbus", "--dbc", "a.dbc", "--map", "a.json"},
        "dbus: expected a candump log or a CAN bus with --dbc and --map");
    row("serves on no such bus", {"--serve=unix:path=/nowhere/bus"},
        "--serve: unix:path=/nowhere/bus: expected a D-Bus, got '");
    row("serves on no address", {"--serve="}, "--serve: expected ADDRESS, got ''");
    row("serves with a tool", {"--serve", "--check", "a.so"},
        "--serve: expected with a drive, got it with --script or a tool");
    row("follows itself", {"--source", "dbus:system", "--serve=system"},
        "--serve: expected another bus than that of --source, got 'system'");
}

void tst_BenchBus::unusable()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    const ProgramResult result = runBench(arguments);
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.err.startsWith(message), qPrintable(result.err));
    QCOMPARE(result.err.count(QLatin1Char('\n')), 1);
    QCOMPARE(result.out, QString());
}

void tst_BenchBus::nameIsTaken()
{
    const PrivateBus bus;
    const ServingBench first(bus, "--source none");
    QVERIFY(first.isServing());
    const ProgramResult second = runBench({"--serve=" + bus.address()});
    QCOMPARE(second.exitCode, 2);
    QCOMPARE(second.err, QStringLiteral("--serve: com.stavel.norda.Module: expected a free name, "
                                        "another module has it\n"));
}

/** The address of the session bus is another name of it. */
void tst_BenchBus::ownModule()
{
    const PrivateBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    const ProgramResult result = runBench({"--source", "dbus", "--serve=" + bus.address()});
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    QCOMPARE(result.exitCode, 2);
    QVERIFY(result.err.startsWith("--serve: expected another bus than that of --source"));
}

// ---- Following a module -------------------------------------------------------------------------

void tst_BenchBus::followsAndRecords()
{
    const PrivateBus bus;
    ServingBench module(bus, "--source simulator --speed 1 --record module.jsonl");
    QVERIFY(module.isServing());
    const TestFolder folder;
    const QString followed = folder.filePath("followed.jsonl");
    const ProgramResult result =
        runBench({"--source", "dbus:" + bus.address(), "--duration", "4", "--record", followed});
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(result.out.contains("Connected to com.stavel.norda.Module"), qPrintable(result.out));
    module.end(SIGTERM);
    // The snapshot comes first, then what the module emits, without a loss.
    const QStringList here = signalsIn(followed);
    const QStringList there = signalsIn(module.file("module.jsonl"));
    QVERIFY(here.size() > 50);
    const QString live = here.mid(here.size() - 30).join('\n');
    QVERIFY2(there.join('\n').contains(live), qPrintable(live));
}

static Setup followerOf(const PrivateBus &bus)
{
    Setup setup;
    setup.source = QStringLiteral("dbus:") + bus.address();
    setup.journalLimit = Journal::usualLimit;
    return setup;
}

/** A bench without a window that follows the module of a bus. */
class Follower
{
public:
    explicit Follower(const PrivateBus &bus) : rig(followerOf(bus))
    {
        QObject::connect(&rig, &Rig::noticed, &rig,
                         [this](const QString &line) { notices.append(line); });
    }
    void start(int page)
    {
        QString error;
        QVERIFY2(rig.open(testpaths::pluginFile(), &error), qPrintable(error));
        rig.unit()->screen()->show();
        rig.begin(Replay::Everything);
        rig.session()->drive()->play();
        QVERIFY(rig.actions()->perform("page", {page}, &error));
    }
    QString text(const char *name) const
    {
        auto *label = qobject_cast<QLabel *>(rig.unit()->screen()->widgetNamed(name));
        return label ? label->text() : QString();
    }

    mutable Rig rig;
    QStringList notices;
};

/** What the module says about the climate control, from now on. */
class ClimateStates : public QSignalSpy
{
public:
    ClimateStates()
        : QSignalSpy(norda::VtqAdaptor::instance(),
                     &norda::VtqAdaptor::NordaClimateCtrlStatusNotify)
    {
    }
    bool isOff() const
    {
        return !isEmpty() && constLast().constFirst().value<QList<int>>().value(0, 1) == 0;
    }
};

void tst_BenchBus::touchReachesTheModule()
{
    const PrivateBus bus;
    ServingBench module(bus, "--source simulator --speed 1 --record module.jsonl");
    Follower bench(bus);
    bench.start(ClimatePage);
    const auto *key =
        qobject_cast<QAbstractButton *>(bench.rig.unit()->screen()->widgetNamed("key_power"));
    QVERIFY(key);
    QTRY_VERIFY(key->isChecked());
    const ClimateStates answers;
    QString error;
    QVERIFY2(bench.rig.actions()->perform("touch", {"key_power"}, &error), qPrintable(error));
    QTRY_VERIFY(answers.isOff());
    QVERIFY(!key->isChecked());
    module.end(SIGTERM);
    const QStringList calls = signalsIn(module.file("module.jsonl"), "call");
    QVERIFY2(!calls.filter("NordatriggerRearDefrostButton").isEmpty(), qPrintable(calls.join("")));
}

/** The plugin in a head unit without a bench, connected by the host. */
void tst_BenchBus::touchOfAUnit()
{
    const PrivateBus bus;
    ServingBench module(bus, "--source simulator --speed 1 --record module.jsonl");
    ServiceConnection::instance()->setAddress(bus.address());
    HeadUnit unit;
    QString error;
    QVERIFY2(unit.load(testpaths::pluginFile(), &error), qPrintable(error));
    unit.screen()->show();
    unit.windows()->openWindow(ClimatePage);
    auto *key = qobject_cast<QAbstractButton *>(unit.screen()->widgetNamed("key_power"));
    QVERIFY(key);
    QTRY_VERIFY(key->isChecked());
    const ClimateStates answers;
    QTest::mouseClick(key, Qt::LeftButton);
    QTRY_VERIFY(answers.isOff());
    QVERIFY(!key->isChecked());
    ServiceConnection::instance()->setAddress({});
    ServiceConnection::instance()->open();
    module.end(SIGTERM);
    const QStringList calls = signalsIn(module.file("module.jsonl"), "call");
    QVERIFY2(!calls.filter("NordatriggerRearDefrostButton").isEmpty(), qPrintable(calls.join("")));
}

void tst_BenchBus::moduleGoesAndReturns()
{
    const PrivateBus bus;
    Follower bench(bus);
    {
        ServingBench module(bus, "--source simulator --speed 1");
        bench.start(VehiclePage);
        QTRY_VERIFY(bench.text("Txt_battery").contains("12."));
        module.end(SIGKILL);
    }
    QTRY_VERIFY(bench.notices.contains("The vehicle module has gone"));
    QTRY_VERIFY(bench.text("Txt_battery").startsWith("--"));
    const QStringList gone = bench.rig.session()->drive()->source()->findings();
    QVERIFY2(gone.contains("com.stavel.norda.Module has gone"), qPrintable(gone.join('\n')));
    const ServingBench next(bus, "--source simulator --speed 1");
    QTRY_VERIFY(bench.notices.contains("The vehicle module is back"));
    QTRY_VERIFY(bench.text("Txt_battery").contains("1"));
}

void tst_BenchBus::laterModule()
{
    const PrivateBus bus;
    Follower bench(bus);
    bench.start(VehiclePage);
    const QStringList waiting = bench.rig.session()->drive()->source()->findings();
    QVERIFY2(waiting.contains("Waiting for com.stavel.norda.Module"), qPrintable(waiting.join("")));
    const ServingBench module(bus, "--source simulator --speed 1");
    QTRY_VERIFY(bench.notices.contains("The vehicle module is there"));
    QTRY_VERIFY(bench.text("Txt_battery").contains("12."));
}

void tst_BenchBus::onlyThePresent()
{
    const PrivateBus bus;
    const ServingBench module(bus, "--source simulator --speed 1");
    Follower bench(bus);
    bench.start(VehiclePage);
    QTRY_VERIFY(bench.text("Txt_battery").contains("12."));
    module::Drive *drive = bench.rig.session()->drive();
    QCOMPARE(drive->durationMs(), -1);
    static constexpr qint64 anHour = 3600000;
    drive->seek(anHour);
    QVERIFY(drive->positionMs() < anHour);
    drive->setSpeed(10);
    QCOMPARE(drive->speed(), 1.0);
    QVERIFY(bench.text("Txt_battery").contains("12."));
}

/** Both ends have a window. */
void tst_BenchBus::inTheWindow()
{
    const PrivateBus bus;
    makeBench("dbus:" + bus.address());
    const auto *findings = find<QTextBrowser>("findings");
    QTRY_VERIFY(findings->toPlainText().contains("Waiting for com.stavel.norda.Module"));
    const ServingBench module(bus, "--source simulator", "--platform offscreen");
    QVERIFY(module.isServing());
    QTRY_VERIFY(findings->toPlainText().contains("Connected to com.stavel.norda.Module"));
    QTRY_VERIFY(!numbersOn(VehiclePage).isEmpty());
    QVERIFY(!find<QSlider>("seek")->isEnabled());
    removeBench();
}

NORDA_TEST_MAIN(tst_BenchBus)
#include "tst_benchbus.moc"
