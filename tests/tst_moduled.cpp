#include "ecuprogram.h"
#include "interface.h"
#include "moduledprogram.h"
#include "privatebus.h"
#include "service/moduleservice.h"
#include "testfolder.h"
#include "testmain.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

/** norda-moduled: what is installed, what it serves, and when bus or car are missing. */
class tst_Moduled : public QObject
{
    Q_OBJECT
private slots:
    void interfaceIsCommitted();
    void interfaceIsPrinted();
    void sandboxIsTight();
    void servesSource_data();
    void servesSource();
    void recordedDriveBeginsAgain();
    void relaysSignals();
    void nameIsTaken();
    void busComesBack();
    void carComesLater();
};

static ProgramResult run(const QString &options)
{
    return runProgram({"sh", "-c", "exec " + ModuledProgram::command() + ' ' + options}, 60);
}

// ---- What is installed --------------------------------------------------------------------------

void tst_Moduled::interfaceIsCommitted()
{
    const QString name = QStringLiteral("moduled/com.stavel.norda.Adaptor1.xml");
    QFile file(testpaths::source(name));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY2(QString::fromUtf8(file.readAll()) == module::ModuleService::introspectionXml(),
             qPrintable("the adaptor has changed; renew the file with: norda-moduled "
                        "--print-interface > " +
                        name));
}

void tst_Moduled::interfaceIsPrinted()
{
    const ProgramResult result = run("--print-interface");
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.out, module::ModuleService::introspectionXml());
}

/** By the scale of systemd, on which 10 is a service without any restriction. */
void tst_Moduled::sandboxIsTight()
{
    if (runProgram({"sh", "-c", "systemd-analyze --version"}).exitCode != 0)
        QSKIP("systemd-analyze is missing (package systemd)");
    const ProgramResult result =
        runProgram({"systemd-analyze", "security", "--offline=yes", "--threshold=20", "--no-pager",
                    testpaths::source("moduled/norda-moduled.service")});
    QVERIFY2(result.exitCode == 0, qPrintable(result.out + result.err));
}

// ---- Service ------------------------------------------------------------------------------------

/** Receives the signals of the module on a bus. */
class Listener : public QObject
{
    Q_OBJECT
public:
    explicit Listener(const QString &address)
        : m_bus(QDBusConnection::connectToBus(address, "listener"))
    {
        m_bus.connect(bus::serviceName, bus::objectPath, bus::interfaceName, {}, this,
                      SLOT(onSignal(QDBusMessage)));
    }
    ~Listener() override { QDBusConnection::disconnectFromBus("listener"); }

    QDBusConnection &bus() { return m_bus; }
    int count(const QString &signal) const { return m_counts.value(signal); }
    bool isModuleThere() const
    {
        return m_bus.interface()->isServiceRegistered(bus::serviceName).value();
    }

private slots:
    void onSignal(const QDBusMessage &message) { ++m_counts[message.member()]; }

private:
    QDBusConnection m_bus;
    QHash<QString, int> m_counts;
};

static const char csv[] = "Time (sec),Engine RPM (rpm)\n0,1000\n0.2,2000\n0.4,3000\n";

void tst_Moduled::servesSource_data()
{
    QTest::addColumn<QByteArray>("drive");
    QTest::addColumn<QString>("options");
    QTest::newRow("simulator") << QByteArray() << QString();
    QTest::newRow("simulator, faster")
        << QByteArray() << "--speed 10 --trim manual --fault flood:1";
    QTest::newRow("OBD-II export") << QByteArray(csv) << "--source '%1'";
    QTest::newRow("candump log") << QByteArray("(1.000000) can0 7E8#04410C1F40\n"
                                               "(1.500000) can0 7E8#04410C1F80\n")
                                 << "--source '%1'";
}

void tst_Moduled::servesSource()
{
    QFETCH(QByteArray, drive);
    QFETCH(QString, options);
    const TestFolder folder;
    const QString file = folder.write("drive", drive);
    PrivateBus bus;
    Listener listener(bus.address());
    ModuledProgram program("--bus " + bus.address() + ' ' + options.replace("%1", file));
    QVERIFY2(program.serves(), qPrintable(program.err()));
    QTRY_VERIFY(listener.count("centerGaugeValueNotify") > 0);
    QCOMPARE(program.err(), QString());
}

/** A service does not end with its drive. */
void tst_Moduled::recordedDriveBeginsAgain()
{
    const TestFolder folder;
    const QString file = folder.write("drive.csv", csv);
    PrivateBus bus;
    Listener listener(bus.address());
    ModuledProgram program("--bus " + bus.address() + " --source " + file);
    QTRY_VERIFY(listener.count("centerGaugeValueNotify") > 9);
    QCOMPARE(program.err(), QString());
}

/** What a command line emits comes from the module; what is none of its signals does not. */
void tst_Moduled::relaysSignals()
{
    PrivateBus bus;
    Listener listener(bus.address());
    ModuledProgram program("--source none --relay --bus " + bus.address());
    QVERIFY2(program.serves(), qPrintable(program.err()));
    const auto emitAs = [&listener](const char *name, const QVariant &argument) {
        QDBusMessage signal =
            QDBusMessage::createSignal(bus::objectPath, bus::interfaceName, QLatin1String(name));
        signal.setArguments({argument});
        listener.bus().send(signal);
    };
    emitAs("doorState", 1);
    emitAs("doorStatus", QStringLiteral("open"));
    for (int round = 0; round < 3; ++round) {
        emitAs("doorStatus", QVariant::fromValue(uchar(3)));
        QTRY_COMPARE(listener.count("doorStatus"), round + 1);
    }
    QTest::qWait(200);
    QCOMPARE(listener.count("doorStatus"), 3);
    QCOMPARE(program.err(),
             "norda-moduled: doorState: expected a signal of com.stavel.norda.Adaptor1 with its "
             "arguments\nnorda-moduled: doorStatus: expected a signal of "
             "com.stavel.norda.Adaptor1 with its arguments\n");
}

void tst_Moduled::nameIsTaken()
{
    PrivateBus bus;
    ModuledProgram first("--bus " + bus.address());
    QVERIFY2(first.serves(), qPrintable(first.err()));
    const ProgramResult second = run("--bus " + bus.address());
    QCOMPARE(second.exitCode, 2);
    QCOMPARE(second.err, "norda-moduled: com.stavel.norda.Module: expected a free name, another "
                         "module has it\n");
    QCOMPARE(first.err(), QString());
}

/** One line when it goes, one when it is back; the same program serves again. */
void tst_Moduled::busComesBack()
{
    PrivateBus bus;
    ModuledProgram program("--bus " + bus.address());
    QVERIFY2(program.serves(), qPrintable(program.err()));
    for (int round = 0; round < 2; ++round) {
        bus.stop();
        QVERIFY2(program.logs(bus.address() + ": the bus is gone; connecting again", round),
                 qPrintable(program.err()));
        bus.start();
        QVERIFY2(program.logs(bus.address() + ": connected", round), qPrintable(program.err()));
        Listener listener(bus.address());
        QVERIFY(listener.isModuleThere());
        QTRY_VERIFY(listener.count("centerGaugeValueNotify") > 0);
    }
    QCOMPARE(program.err().count('\n'), 4);
}

/** The adapter is plugged in after the start, unplugged, and plugged in again. */
void tst_Moduled::carComesLater()
{
    const TestFolder folder;
    const QString device = folder.filePath("obd");
    PrivateBus bus;
    Listener listener(bus.address());
    ModuledProgram program("--bus " + bus.address() + " --source elm327:" + device);
    QVERIFY2(program.serves(), qPrintable(program.err()));
    QTRY_VERIFY(program.err().contains("elm327:" + device + ": "));
    QVERIFY2(program.err().endsWith("; connecting again\n"), qPrintable(program.err()));
    for (int round = 0; round < 2; ++round) {
        const int before = listener.count("centerGaugeValueNotify");
        EcuProgram car("--pty " + device);
        QVERIFY2(program.logs("elm327:" + device + ": connected", round),
                 qPrintable(program.err()));
        QTRY_VERIFY(listener.count("centerGaugeValueNotify") > before + 1);
    }
}

NORDA_TEST_MAIN(tst_Moduled)
#include "tst_moduled.moc"
