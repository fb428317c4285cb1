#include "ecuprogram.h"
#include "live/canobdlink.h"
#include "live/elm327link.h"
#include "testmain.h"

#include <QCanBus>
#include <QTcpServer>

using namespace module;

/** Both ends of the cable: what reads a live car, and norda-ecu in another process. */
class tst_EcuBothEnds : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void answers_data();
    void answers();
    void badAnswers_data();
    void badAnswers();

private:
    QTemporaryDir m_folder;
    QString m_drive;
};

/** One that has the same values all the time. */
void tst_EcuBothEnds::initTestCase()
{
    QFile log(m_folder.filePath("drive.log"));
    QVERIFY(log.open(QIODevice::WriteOnly));
    for (const char *second : {"1", "3601"}) {
        log.write(QByteArray("(") + second + ".0) can0 7E8#04410C1AF8\n(");
        log.write(QByteArray(second) + ".0) can0 7E8#0341057B\n");
    }
    m_drive = log.fileName();
}

static std::unique_ptr<ObdLink> linkTo(const QString &kind, const QString &place)
{
    if (kind == QLatin1String("can"))
        return std::make_unique<CanObdLink>(*canPortOf(place));
    ElmPort port;
    if (kind == QLatin1String("pty")) {
        port.device = place;
    } else {
        port.host = place.section(':', 0, 0);
        port.port = place.section(':', 1).toUShort();
    }
    return std::make_unique<Elm327Link>(port);
}

/** Asks one thing after the other. */
class Conversation
{
public:
    explicit Conversation(std::unique_ptr<ObdLink> link) : m_link(std::move(link))
    {
        QObject::connect(m_link.get(), &ObdLink::ready, &m_context, [this] { m_isReady = true; });
        QObject::connect(m_link.get(), &ObdLink::lost, &m_context,
                         [this](const QString &why) { m_last = "lost: " + why.toUtf8(); });
        QObject::connect(
            m_link.get(), &ObdLink::failed, &m_context,
            [this](ObdFailure, const QString &why) { m_last = "no: " + why.toUtf8(); });
        QObject::connect(m_link.get(), &ObdLink::answered, &m_context,
                         [this](const QVector<ObdAnswer> &answers) {
                             QByteArrayList texts;
                             for (const ObdAnswer &answer : answers)
                                 texts.append(answer.message.toHex());
                             m_last = texts.join(' ');
                         });
    }

    bool opens()
    {
        m_link->open();
        return QTest::qWaitFor([this] { return m_isReady; }, 30000);
    }
    /** To all units. @return their answers, or why there is none */
    QByteArray ask(const char *hex)
    {
        m_last.clear();
        m_link->ask({QByteArray::fromHex(hex), 0, 0});
        return QTest::qWaitFor([this] { return !m_last.isEmpty(); }, 30000) ? m_last : "nothing";
    }

private:
    QObject m_context;
    std::unique_ptr<ObdLink> m_link;
    QByteArray m_last;
    bool m_isReady = false;
};

static QString busOption()
{
    QTcpServer free;
    free.listen(QHostAddress::LocalHost);
    return QStringLiteral("--can virtualcan:tcp://127.0.0.1:%1/can0").arg(free.serverPort());
}

void tst_EcuBothEnds::answers_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("options");
    QTest::newRow("bus") << "can" << busOption();
    QTest::newRow("bus with a bit rate") << "can" << busOption() + "?bitrate=250000";
    QTest::newRow("bus, slow car") << "can" << busOption() + " --delay 60";
    QTest::newRow("terminal") << "pty"
                              << "--pty";
    QTest::newRow("port") << "tcp"
                          << "--tcp 0";
    QTest::newRow("29 bits") << "tcp"
                             << "--tcp 0 --bits 29";
    QTest::newRow("slow car") << "tcp"
                              << "--tcp 0 --delay 120";
    QTest::newRow("a version that lies") << "tcp"
                                         << "--tcp 0 --say version";
    QTest::newRow("echoes") << "tcp"
                            << "--tcp 0 --say echo";
    QTest::newRow("searches every time") << "tcp"
                                         << "--tcp 0 --say SEARCHING...";
}

void tst_EcuBothEnds::answers()
{
    QFETCH(QString, kind);
    QFETCH(QString, options);
    if (kind == "can" && !QCanBus::instance()->plugins().contains("virtualcan"))
        QSKIP("the plugin virtualcan of libqt5serialbus5-plugins is missing");
    EcuProgram program(options + " --codes P0304,U0100,C0123 --source " + m_drive);
    Conversation client(linkTo(kind, program.place(kind)));
    QVERIFY2(client.opens(), qPrintable(program.err()));
    QCOMPARE(client.ask("0100"), QByteArray("410088100010"));
    QThread::msleep(50);
    QCOMPARE(client.ask("010c"), QByteArray("410c1af8"));
    QCOMPARE(client.ask("0105"), QByteArray("41057b"));
    QCOMPARE(client.ask("010c05"), QByteArray("410c1af8057b"));
    QCOMPARE(client.ask("03"), QByteArray("43030304c1004123"));
    QCOMPARE(client.ask("0902"), "490201" + QByteArray("NRDATEST000000001").toHex());
    QVERIFY2(client.ask("015e").startsWith("no: "), "an answer to what the car does not know");
    QCOMPARE(client.ask("010c"), QByteArray("410c1af8"));
}

void tst_EcuBothEnds::badAnswers_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text :
         {"NO DATA", "UNABLE TO CONNECT", "BUS INIT: ...ERROR", "BUS BUSY", "BUS ERROR",
          "CAN ERROR", "STOPPED", "?", "<RX ERROR", "<DATA ERROR", "BUFFER FULL", "half line"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

/** Half of the answers are bad: those are named, and the others are read. */
void tst_EcuBothEnds::badAnswers()
{
    QFETCH(QString, text);
    EcuProgram program("--tcp 0 --say \"" + text + ":0.5\" --source " + m_drive);
    Conversation client(linkTo("tcp", program.place("tcp")));
    QVERIFY2(client.opens(), qPrintable(program.err()));
    int good = 0;
    for (int i = 0; i < 12; ++i) {
        const QByteArray answer = client.ask("010c");
        good += answer == "410c1af8";
        QVERIFY2(answer == "410c1af8" || answer.startsWith("no: "), answer.constData());
    }
    QVERIFY2(good > 2, qPrintable(QString::number(good)));
}

NORDA_TEST_MAIN(tst_EcuBothEnds)
#include "tst_ecubothends.moc"
