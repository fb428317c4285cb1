#include "ecuprogram.h"
#include "testmain.h"

#include <QCanBus>
#include <QFileInfo>
#include <QTcpServer>

#include <functional>
#include <memory>

/** norda-ecu as a program: what clients of its lines and its bus get. */
class tst_EcuProgram : public QObject
{
    Q_OBJECT
private slots:
    void lines_data();
    void lines();
    void linkIsMadeAndRemoved();
    void recordedDrive();
    void simulatedDrive();
    void faults_data();
    void faults();
    void secondClientFindsItTaken();
    void nextClientComesAtOnce();
    void listensOnThisMachineOnly();
    void silence();
    void pulledOut_data();
    void pulledOut();
    void ends_data();
    void ends();
    void bus();
    void busOutage();
    void busWithItsOwnFrames();
};

/** Opens the one line that a program serves. */
static LineClient clientOf(const EcuProgram &program, const QString &kind, int nth = 0)
{
    const QString place = program.place(kind, nth);
    return kind == QLatin1String("pty") ? LineClient::terminal(place) : LineClient::port(place);
}

void tst_EcuProgram::lines_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("options");
    QTest::newRow("terminal") << "pty"
                              << "--pty";
    QTest::newRow("port") << "tcp"
                          << "--tcp 0";
}

/** What a client does first, and one long answer. */
void tst_EcuProgram::lines()
{
    QFETCH(QString, kind);
    QFETCH(QString, options);
    EcuProgram program(options);
    LineClient client = clientOf(program, kind);
    QVERIFY2(client.isOpen(), qPrintable(program.err()));
    QCOMPARE(client.send("ATZ"), QByteArray("ATZ\rELM327 v1.5\r\r>"));
    QCOMPARE(client.send("ATE0"), QByteArray("ATE0\rOK\r\r>"));
    QCOMPARE(client.send("ATS0"), QByteArray("OK\r\r>"));
    QCOMPARE(client.send("0100"), QByteArray("SEARCHING...\r4100981A0011\r\r>"));
    QCOMPARE(client.send("0902"), QByteArray("014\r0:4902014E5244\r1:41544553543030\r"
                                             "2:30303030303031\r\r>"));
    QCOMPARE(program.end(), 0);
    QCOMPARE(program.err(), QString());
    QVERIFY(client.isAtEnd());
}

/** One that an earlier run has left is replaced. */
void tst_EcuProgram::linkIsMadeAndRemoved()
{
    const QTemporaryDir folder;
    const QString link = folder.filePath("obd");
    QVERIFY(QFile::link("/dev/null", link));
    EcuProgram program("--pty " + link);
    QCOMPARE(program.place("pty"), link);
    QVERIFY(QFileInfo(link).symLinkTarget().startsWith("/dev/pts/"));
    QCOMPARE(LineClient::terminal(link).send("ATI"), QByteArray("ATI\rELM327 v1.5\r\r>"));
    QCOMPARE(program.end(), 0);
    QVERIFY(!QFileInfo(link).isSymLink());
}

/** Asks until the answer fits, as a drive goes on. @return the last answer */
static QByteArray askUntil(LineClient *client, const QByteArray &request,
                           bool (*fits)(const QByteArray &answer))
{
    QByteArray answer;
    for (int i = 0; i < 600 && !fits(answer); ++i) {
        QThread::msleep(20);
        answer = client->send(request);
    }
    return answer;
}

void tst_EcuProgram::recordedDrive()
{
    const QTemporaryDir folder;
    QFile log(folder.filePath("drive.log"));
    QVERIFY(log.open(QIODevice::WriteOnly));
    log.write("(1.0) can0 7E8#03410D33\n(1.1) can0 7E8#04410C1AF8\n(1.2) can0 7E8#03410D33\n");
    log.close();
    EcuProgram program("--tcp 0 --source " + log.fileName());
    LineClient client = clientOf(program, "tcp");
    QVERIFY2(client.isOpen(), qPrintable(program.err()));
    for (const char *setUp : {"ATE0", "ATS0", "ATSP6"})
        client.send(setUp);
    QCOMPARE(client.send("0100"), QByteArray("410080180010\r\r>"));
    const auto isKnown = [](const QByteArray &answer) { return answer.startsWith("41"); };
    QCOMPARE(askUntil(&client, "010C1", isKnown), QByteArray("410C1AF8\r\r>"));
    QCOMPARE(client.send("010D1"), QByteArray("410D33\r\r>"));
    QCOMPARE(client.send("01051"), QByteArray("NO DATA\r\r>"));
}

/** The trip, at a hundred times its speed: the engine starts, and later it has a fault. */
void tst_EcuProgram::simulatedDrive()
{
    EcuProgram program("--tcp 0 --speed 100");
    LineClient client = clientOf(program, "tcp");
    QVERIFY2(client.isOpen(), qPrintable(program.err()));
    for (const char *setUp : {"ATE0", "ATS0", "ATSP6"})
        client.send(setUp);
    const auto idles = [](const QByteArray &answer) {
        return answer.startsWith("410C") && answer.mid(4, 4).toInt(nullptr, 16) / 4 > 600;
    };
    QVERIFY(idles(askUntil(&client, "010C1", idles)));
    const auto hasFault = [](const QByteArray &answer) { return answer.startsWith("43010304"); };
    QVERIFY(hasFault(askUntil(&client, "031", hasFault)));
}

void tst_EcuProgram::faults_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("answer");
    const auto row = [](const char *options, const char *request, const char *answer) {
        QTest::newRow(options) << QString::fromLatin1(options) << QByteArray(request)
                               << QByteArray(answer);
    };
    row("--without 0D,0F", "0100", "410098100011");
    row("--without 0D,0c", "010D", "NO DATA");
    row("--lose 1", "0100", "NO DATA");
    row("--delay 300", "0100", "NO DATA");
    row("--delay 100", "011C1", "411C06");
    row("--say \"CAN ERROR\"", "0100", "CAN ERROR");
    row("--say \"NO DATA:0\" --say \"<RX ERROR:1\"", "011C", "411C06<RX ERROR");
    row("--units 2", "011C", "411C06\r411C06");
    row("--codes P0304,U0100", "03", "43020304C100");
    row("--bits 29", "011C", "NO DATA");
}

void tst_EcuProgram::faults()
{
    QFETCH(QString, options);
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, answer);
    EcuProgram program("--tcp 0 " + options);
    LineClient client = clientOf(program, "tcp");
    QVERIFY2(client.isOpen(), qPrintable(program.err()));
    for (const char *setUp : {"ATE0", "ATS0", "ATSP6"})
        client.send(setUp);
    QCOMPARE(client.send(request), answer + "\r\r>");
}

/** Until one opens that answers, for what takes its time to come back. */
static bool answersAgain(const std::function<LineClient()> &open)
{
    for (int i = 0; i < 600; ++i) {
        LineClient client = open();
        if (client.isOpen() && client.send("ATI", 500).endsWith("ELM327 v1.5\r\r>"))
            return true;
        QThread::msleep(50);
    }
    return false;
}

void tst_EcuProgram::secondClientFindsItTaken()
{
    EcuProgram program("--tcp 0");
    const QString place = program.place("tcp");
    {
        LineClient first = LineClient::port(place);
        QVERIFY(!first.send("ATI").isEmpty());
        QVERIFY(LineClient::port(place).isAtEnd());
        QCOMPARE(first.send("ATE0"), QByteArray("ATE0\rOK\r\r>"));
    }
    QVERIFY(answersAgain([&place] { return LineClient::port(place); }));
}

/** The one before has asked for something and left before the answer. */
void tst_EcuProgram::nextClientComesAtOnce()
{
    EcuProgram program(QStringLiteral("--tcp 0"));
    const QString place = program.place("tcp");
    auto client = std::make_unique<LineClient>(LineClient::port(place));
    QVERIFY(client->send("ATI").endsWith('>'));
    for (int i = 0; i < 20; ++i) {
        program.signal(SIGSTOP); // so that it finds all at the same time
        client->send("010C", 0);
        client.reset();
        client = std::make_unique<LineClient>(LineClient::port(place));
        program.signal(SIGCONT);
        QVERIFY(client->send("ATI").endsWith('>'));
    }
}

/** As the kernel sees it: 127.0.0.1, and no other address. */
void tst_EcuProgram::listensOnThisMachineOnly()
{
    EcuProgram program("--tcp 0");
    const QString port = QString::number(program.place("tcp").section(':', 1).toInt(), 16)
                             .toUpper()
                             .rightJustified(4, '0');
    QStringList addresses;
    for (const char *name : {"/proc/net/tcp", "/proc/net/tcp6"}) {
        QFile sockets(name);
        if (!sockets.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray &line : sockets.readAll().split('\n')) {
            const QList<QByteArray> words = line.simplified().split(' ');
            if (words.size() > 3 && words[3] == "0A" && words[1].endsWith(':' + port.toLatin1()))
                addresses.append(QString::fromLatin1(words[1]));
        }
    }
    QCOMPARE(addresses, QStringList{"0100007F:" + port});
}

/** The adapter is there, and says nothing. */
void tst_EcuProgram::silence()
{
    EcuProgram program("--tcp 0 --silence 0:4");
    LineClient client = clientOf(program, "tcp");
    QVERIFY2(client.isOpen(), qPrintable(program.err()));
    QCOMPARE(client.send("ATI", 300), QByteArray());
    QByteArray answer;
    for (int i = 0; i < 60 && answer.isEmpty(); ++i)
        answer = client.send("ATI", 500);
    QVERIFY2(answer.endsWith("ELM327 v1.5\r\r>"), answer.constData());
}

void tst_EcuProgram::pulledOut_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("options");
    QTest::newRow("terminal") << "pty"
                              << "--pty --pull 3:1";
    QTest::newRow("port") << "tcp"
                          << "--tcp 0 --pull 3:1";
}

/** The line ends; a second later there is one again, of an adapter that has forgotten everything.
 */
void tst_EcuProgram::pulledOut()
{
    QFETCH(QString, kind);
    QFETCH(QString, options);
    EcuProgram program(options);
    LineClient client = clientOf(program, kind);
    QCOMPARE(client.send("ATE0"), QByteArray("ATE0\rOK\r\r>"));
    QVERIFY(client.isAtEnd());
    QVERIFY(answersAgain([&program, &kind] { return clientOf(program, kind, 1); }));
    if (kind == QLatin1String("tcp"))
        QCOMPARE(program.place(kind, 1), program.place(kind));
    QCOMPARE(program.err(), QString());
}

void tst_EcuProgram::ends_data()
{
    QTest::addColumn<int>("signal");
    QTest::addColumn<QString>("options");
    QTest::newRow("INT") << SIGINT << "--tcp 0";
    QTest::newRow("TERM") << SIGTERM << "--tcp 0";
    QTest::newRow("HUP") << SIGHUP << "--tcp 0";
    QTest::newRow("by itself") << 0 << "--tcp 0 --duration 20 --speed 100";
}

void tst_EcuProgram::ends()
{
    QFETCH(int, signal);
    QFETCH(QString, options);
    struct sigaction own = {};
    if (signal == SIGHUP && ::sigaction(SIGHUP, nullptr, &own) == 0 && own.sa_handler == SIG_IGN)
        QSKIP("HUP is ignored here, as under nohup");
    EcuProgram program(options);
    QVERIFY(!program.place("tcp").isEmpty());
    QCOMPARE(program.end(signal), 0);
    QCOMPARE(program.err(), QString());
}

// ---- On a bus -----------------------------------------------------------------------------------

static QString busAddress()
{
    QTcpServer free;
    free.listen(QHostAddress::LocalHost);
    return QStringLiteral("tcp://127.0.0.1:%1/can0").arg(free.serverPort());
}

/** A tester on a bus of Qt's virtual kind, which the program has made. */
class BusClient
{
public:
    explicit BusClient(const QString &address)
        : m_device(QCanBus::instance()->createDevice("virtualcan", address))
    {
    }

    bool connects()
    {
        return m_device && m_device->connectDevice() &&
               QTest::qWaitFor(
                   [this] { return m_device->state() == QCanBusDevice::ConnectedState; }, 30000);
    }
    void send(quint32 id, const char *hex)
    {
        m_device->writeFrame(QCanBusFrame(id, QByteArray::fromHex(hex)));
    }
    /** The next frames, as candump writes them. */
    QStringList take(int count, int timeoutMs = 30000)
    {
        QStringList frames;
        if (!QTest::qWaitFor([&] { return m_device->framesAvailable() >= count; }, timeoutMs))
            return frames;
        for (int i = 0; i < count; ++i) {
            const QCanBusFrame frame = m_device->readFrame();
            frames.append(QString::number(frame.frameId(), 16).toUpper() + '#' +
                          QString::fromLatin1(frame.payload().toHex().toUpper()));
        }
        return frames;
    }

private:
    std::unique_ptr<QCanBusDevice> m_device;
};

void tst_EcuProgram::bus()
{
    if (!QCanBus::instance()->plugins().contains("virtualcan"))
        QSKIP("the plugin virtualcan of libqt5serialbus5-plugins is missing");
    const QString address = busAddress();
    EcuProgram program("--can virtualcan:" + address + " --codes P0304,U0100,C0123");
    QCOMPARE(program.place("can"), "virtualcan:" + address);
    BusClient client(address);
    QVERIFY(client.connects());
    client.send(0x7DF, "02011C5555555555");
    QCOMPARE(client.take(1), QStringList{"7E8#03411C0655555555"});
    client.send(0x7E0, "0103");
    QCOMPARE(client.take(1), QStringList{"7E8#100843030304C100"});
    client.send(0x7E0, "300000");
    QCOMPARE(client.take(1), QStringList{"7E8#2141235555555555"});
    QCOMPARE(program.end(), 0);
    QCOMPARE(program.err(), QString());
}

/** The cable is pulled: nothing comes, and what is sent meanwhile is never answered. */
void tst_EcuProgram::busOutage()
{
    if (!QCanBus::instance()->plugins().contains("virtualcan"))
        QSKIP("the plugin virtualcan of libqt5serialbus5-plugins is missing");
    const QString address = busAddress();
    EcuProgram program("--can virtualcan:" + address + " --pull 0:4");
    QVERIFY(!program.place("can").isEmpty());
    BusClient client(address);
    QVERIFY(client.connects());
    client.send(0x7DF, "02011C5555555555");
    QCOMPARE(client.take(1, 300), QStringList());
    QStringList frames;
    for (int i = 0; i < 60 && frames.isEmpty(); ++i) {
        client.send(0x7DF, "0201005555555555");
        frames = client.take(1, 500);
    }
    QCOMPARE(frames.value(0).left(8), QStringLiteral("7E8#0641"));
}

/** What the car sends by itself, at its pace. */
void tst_EcuProgram::busWithItsOwnFrames()
{
    if (!QCanBus::instance()->plugins().contains("virtualcan"))
        QSKIP("the plugin virtualcan of libqt5serialbus5-plugins is missing");
    const QTemporaryDir folder;
    const auto write = [&folder](const char *name, const char *content) {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) > 0 ? file.fileName()
                                                                          : QString();
    };
    const QString dbc =
        write("car.dbc", "BO_ 256 M: 2 U\n SG_ Outside : 0|8@1+ (1,-40) [0|0] \"\" U\n");
    const QString map = write("car.json", R"({"Vehicle.Exterior.AirTemperature":
        {"dbc2vss": {"signal": "Outside"}}})");
    const QString address = busAddress();
    EcuProgram program(
        QStringLiteral("--can virtualcan:%1 --dbc %2 --map %3").arg(address, dbc, map));
    QVERIFY2(!program.place("can").isEmpty(), qPrintable(program.err()));
    BusClient client(address);
    QVERIFY(client.connects());
    QCOMPARE(client.take(3), (QStringList{"100#3B00", "100#3B00", "100#3B00"})); // 19 degrees
    client.send(0x7DF, "02011C5555555555");
    QStringList frames;
    while (frames.size() < 100 && frames.filter("7E8#").isEmpty())
        frames += client.take(1);
    QCOMPARE(frames.filter("7E8#"), QStringList{"7E8#03411C0655555555"});
}

NORDA_TEST_MAIN(tst_EcuProgram)
#include "tst_ecuprogram.moc"
