#include "adapter/elmadapter.h"
#include "ecucar.h"
#include "testmain.h"

using namespace ecu;

/** The adapter: what it answers to each line, character by character. */
class tst_EcuAdapter : public QObject
{
    Q_OBJECT
private slots:
    void commands_data();
    void commands();
    void requests_data();
    void requests();
    void echoAndLineFeeds();
    void emptyLineRepeats();
    void characterStops();
    void waiting_data();
    void waiting();
    void slowCarIsLearned();
    void badAnswers_data();
    void badAnswers();
    void shareOfBadAnswers();
    void unknownBadAnswers_data();
    void unknownBadAnswers();
    void versionThatLies();
    void otherTesterIsHeard();
    void lostAnswers();
};

/** An adapter in a car, with a clock that runs as far as something is due. */
class Bench
{
public:
    explicit Bench(const CarBus::Settings &settings = {}, const QStringList &bad = {})
        : m_car(testCar()), m_bus(&m_car, settings), m_adapter(&m_car, &m_bus, wanted(bad))
    {
    }

    Car &car() { return m_car; }
    ElmAdapter &adapter() { return m_adapter; }
    qint64 nowMs() const { return m_nowMs; }

    /** Sends characters, and waits for the prompt. */
    QByteArray send(const QByteArray &characters)
    {
        m_adapter.receive(characters, m_nowMs);
        QByteArray out = m_adapter.takeOutput();
        while (!out.endsWith('>') && m_adapter.nextDueMs() >= 0) {
            m_nowMs = qMax(m_nowMs, m_adapter.nextDueMs());
            m_adapter.advance(m_nowMs);
            out += m_adapter.takeOutput();
        }
        return out;
    }

    /** Some lines after the other. @return what the last one brought */
    QByteArray lines(const QByteArray &lines)
    {
        QByteArray last;
        for (const QByteArray &line : lines.split(','))
            last = send(line + '\r');
        return last;
    }

private:
    static BadAnswers wanted(const QStringList &texts)
    {
        BadAnswers answers;
        QString error;
        for (const QString &text : texts) {
            if (!answers.add(text, &error))
                qFatal("%s", qPrintable(error));
        }
        return answers;
    }

    Car m_car;
    CarBus m_bus;
    ElmAdapter m_adapter;
    qint64 m_nowMs = 0;
};

/** Lines with bars between them, as the adapter sends them. */
static QByteArray wire(QByteArray lines)
{
    return lines.replace('|', "\r") + "\r\r>";
}

void tst_EcuAdapter::commands_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QByteArray>("answer");
    const auto row = [](const char *lines, const char *answer) {
        QTest::newRow(lines) << QByteArray(lines) << QByteArray(answer);
    };
    row("ATZ", "ELM327 v1.5");
    row("ATE0,ATSP6,ATZ,ATE0,ATDPN", "A0");
    row("ATWS", "ELM327 v1.5");
    row("ATI", "ELM327 v1.5");
    row("at i", "ELM327 v1.5");
    row("AT@1", "OBDII to RS232 Interpreter");
    row("ATD", "OK");
    row("ATSP6,ATD,ATE0,ATDPN", "6");
    row("ATE0", "OK");
    row("ATL0", "OK");
    row("ATS0", "OK");
    row("ATH1", "OK");
    row("ATM0", "OK");
    row("ATAL", "OK");
    row("ATNL", "OK");
    row("ATBI", "OK");
    row("ATLP", "OK");
    row("ATSS", "OK");
    row("ATKW0", "OK");
    row("ATV1", "OK");
    row("ATR1", "OK");
    row("ATAT0", "OK");
    row("ATAT1", "OK");
    row("ATAT2", "OK");
    row("ATAT3", "?");
    row("ATST62", "OK");
    row("ATST00", "OK");
    row("ATST6", "?");
    row("ATSTXX", "?");
    row("ATCAF0", "OK");
    row("ATCFC0", "OK");
    row("ATSH7E0", "OK");
    row("AT SH DA 10 F1", "OK");
    row("ATSH18DA10F1", "OK");
    row("ATSH7E", "?");
    row("ATCP18", "OK");
    row("ATCF7E8", "OK");
    row("ATCM7F8", "OK");
    row("ATCRA7E8", "OK");
    row("ATCRA", "OK");
    row("ATCRA7", "?");
    row("ATAR", "OK");
    row("ATPC", "OK");
    row("ATIGN", "ON");
    row("ATRV", "13.9V");
    row("ATDP", "AUTO");
    row("ATDPN", "A0");
    row("ATSP0,ATDPN", "A0");
    row("ATSP00,ATDPN", "A0");
    row("ATSP6,ATDP", "ISO 15765-4 (CAN 11/500)");
    row("ATSP6,ATDPN", "6");
    row("ATSPA7,ATDP", "AUTO, ISO 15765-4 (CAN 29/500)");
    row("ATSPC,ATDPN", "C");
    row("ATTP7,ATDPN", "7");
    row("ATSPD", "?");
    row("ATSP66", "?");
    row("ATSP6,ATPC,ATDPN", "6");
    row("0100,ATDPN", "A6");
    row("0100,ATDP", "AUTO, ISO 15765-4 (CAN 11/500)");
    row("0100,ATPC,ATDPN", "A0");
    row("ATE2", "?");
    row("ATXY", "?");
    row("AT", "?");
    row("HELLO", "?");
    row("0", "?");
    row("0102030405060708", "?");
}

void tst_EcuAdapter::commands()
{
    QFETCH(QByteArray, lines);
    QFETCH(QByteArray, answer);
    Bench bench;
    QCOMPARE(bench.lines("ATE0," + lines), wire(answer));
}

void tst_EcuAdapter::requests_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QByteArray>("answer"); // lines between bars
    const auto row = [](const char *name, const char *lines, const char *answer) {
        QTest::newRow(name) << QByteArray(lines) << QByteArray(answer);
    };
    row("the first one searches", "010D", "SEARCHING...|41 0D 33 ");
    row("the second one does not", "010D,010C", "41 0C 1A F8 ");
    row("spaces and small letters", "010D,01 0c", "41 0C 1A F8 ");
    row("no spaces", "ATS0,ATSP6,010C", "410C1AF8");
    row("headers", "ATH1,ATSP6,010C", "7E8 04 41 0C 1A F8 ");
    row("headers, no spaces", "ATH1,ATS0,ATSP6,010C", "7E804410C1AF8");
    row("headers and length", "ATH1,ATD1,ATSP6,010C", "7E8 8 04 41 0C 1A F8 ");
    row("frames as they are", "ATCAF0,ATSP6,02010C", "04 41 0C 1A F8 55 55 55 ");
    row("frames and headers as they are", "ATCAF0,ATH1,ATSP6,02010C",
        "7E8 04 41 0C 1A F8 55 55 55 ");
    row("one answer expected", "ATSP6,010C1", "41 0C 1A F8 ");
    row("several values", "ATSP6,010C0D", "41 0C 1A F8 0D 33 ");
    row("long", "ATSP6,0902",
        "014|0: 49 02 01 4E 52 44 |1: 41 54 45 53 54 30 30 |2: 30 30 30 30 30 30 31 ");
    row("long, no spaces", "ATSP6,ATS0,0902",
        "014|0:4902014E5244|1:41544553543030|2:30303030303031");
    row("long, headers", "ATSP6,ATH1,0902",
        "7E8 10 14 49 02 01 4E 52 44 |7E8 21 41 54 45 53 54 30 30 |7E8 22 30 30 30 30 30 30 31 ");
    row("long, three frames expected", "ATSP6,ATH1,ATS0,09023",
        "7E810144902014E5244|7E82141544553543030|7E82230303030303031");
    row("long, one frame expected", "ATSP6,ATS0,09021", "014|0:4902014E5244");
    row("long, without flow control", "ATSP6,ATS0,ATCFC0,0902", "014|0:4902014E5244");
    row("no such value", "ATSP6,015E", "NO DATA");
    row("the engine's unit", "ATSP6,ATSH7E0,015E", "7F 01 12 ");
    row("a unit that is not there", "ATSP6,ATSH7E3,010C", "NO DATA");
    row("only of another unit", "ATSP6,ATCRA7E9,010C", "NO DATA");
    row("only of this unit", "ATSP6,ATCRA7E8,010C", "41 0C 1A F8 ");
    row("all again", "ATSP6,ATCRA7E9,ATAR,010C", "41 0C 1A F8 ");
    row("filter and mask", "ATSP6,ATCF7E0,ATCM7F0,010C", "41 0C 1A F8 ");
    row("no codes", "ATSP6,03", "43 00 ");
    row("a service without a parameter is unknown", "ATSP6,22", "NO DATA");
    row("without waiting", "ATSP6,ATR0,010C", "41 0C 1A F8 ");
    row("another bit rate", "ATSP8,010C", "CAN ERROR");
    row("longer identifiers", "ATSP7,010C", "NO DATA");
    row("an older bus", "ATSP3,010C", "BUS INIT: ...ERROR");
    row("search from another one", "ATSPA3,010C", "SEARCHING...|41 0C 1A F8 ");
}

void tst_EcuAdapter::requests()
{
    QFETCH(QByteArray, lines);
    QFETCH(QByteArray, answer);
    Bench bench;
    QCOMPARE(bench.lines("ATE0," + lines), wire(answer));
}

void tst_EcuAdapter::echoAndLineFeeds()
{
    Bench bench;
    QCOMPARE(bench.send("ATI\r"), QByteArray("ATI\rELM327 v1.5\r\r>"));
    QCOMPARE(bench.send("ATL1\r"), QByteArray("ATL1\rOK\r\n\r\n>"));
    QCOMPARE(bench.send("ATI\r\n"), QByteArray("ATI\r\nELM327 v1.5\r\n\r\n>"));
    QCOMPARE(bench.send("ATE0\r"), QByteArray("ATE0\r\nOK\r\n\r\n>"));
    QCOMPARE(bench.send("ATI\r"), QByteArray("ELM327 v1.5\r\n\r\n>"));
    QCOMPARE(bench.send("ATZ\r"), QByteArray("ELM327 v1.5\r\r>"));
    QCOMPARE(bench.send("ATI\r"), QByteArray("ATI\rELM327 v1.5\r\r>"));
}

void tst_EcuAdapter::emptyLineRepeats()
{
    Bench bench;
    bench.lines("ATE0,ATSP6,010D");
    bench.car().values.set(module::Quantity::VehicleSpeed, 52);
    QCOMPARE(bench.send("\r"), wire("41 0D 34 "));
}

/** Any character while it waits; that one is lost. */
void tst_EcuAdapter::characterStops()
{
    CarBus::Settings settings;
    settings.delayMs = 50;
    Bench bench(settings);
    bench.lines("ATE0,ATSP6");
    bench.adapter().receive("010C\rA", 0);
    QCOMPARE(bench.adapter().takeOutput(), wire("STOPPED"));
    bench.adapter().receive("TI\r", 0);
    QCOMPARE(bench.adapter().takeOutput(), wire("?"));
}

void tst_EcuAdapter::waiting_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<int>("ms");
    QTest::newRow("usually") << QByteArray("ATAT0,010C") << 10 + 200;
    QTest::newRow("as set") << QByteArray("ATAT0,ATST19,010C") << 10 + 100;
    QTest::newRow("one answer expected") << QByteArray("ATAT0,010C1") << 10;
    QTest::newRow("two answers expected") << QByteArray("ATAT0,010C2") << 10 + 200;
    QTest::newRow("no answer") << QByteArray("ATAT0,ATST19,015E1") << 100;
    QTest::newRow("adaptive") << QByteArray("ATAT1,010C") << 10 + 50;
    QTest::newRow("more so") << QByteArray("ATAT2,010C") << 10 + 25;
    QTest::newRow("not longer than set") << QByteArray("ATAT1,ATST05,010C") << 10 + 20;
}

void tst_EcuAdapter::waiting()
{
    QFETCH(QByteArray, lines);
    QFETCH(int, ms);
    CarBus::Settings settings;
    settings.delayMs = 10;
    Bench bench(settings);
    const int last = lines.lastIndexOf(',');
    bench.lines("ATE0,ATSP6," + lines.left(last));
    const qint64 before = bench.nowMs();
    bench.lines(lines.mid(last + 1));
    QCOMPARE(bench.nowMs() - before, qint64(ms));
}

/** After an answer that came too late it waits as long as it may. */
void tst_EcuAdapter::slowCarIsLearned()
{
    CarBus::Settings settings;
    settings.delayMs = 120;
    Bench bench(settings);
    bench.lines("ATE0,ATSP6,ATAT2");
    QCOMPARE(bench.lines("010C"), wire("41 0C 1A F8 "));
    QCOMPARE(bench.lines("015E"), wire("NO DATA"));
    QCOMPARE(bench.lines("010C"), wire("41 0C 1A F8 "));
}

void tst_EcuAdapter::badAnswers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("answer");
    for (const char *instead : {"NO DATA", "UNABLE TO CONNECT", "BUS INIT: ...ERROR", "BUS BUSY",
                                "BUS ERROR", "CAN ERROR", "STOPPED", "?"})
        QTest::newRow(instead) << QString::fromLatin1(instead) << QByteArray(instead);
    QTest::newRow("SEARCHING...") << "SEARCHING..." << QByteArray("SEARCHING...|41 0C 1A F8 ");
    QTest::newRow("<RX ERROR") << "<RX ERROR" << QByteArray("41 0C 1A F8 <RX ERROR");
    QTest::newRow("<DATA ERROR") << "<DATA ERROR" << QByteArray("41 0C 1A F8 <DATA ERROR");
    QTest::newRow("BUFFER FULL") << "BUFFER FULL" << QByteArray("41 0C 1A F8 |BUFFER FULL");
    QTest::newRow("half line") << "half line" << QByteArray("41 0C ");
    QTest::newRow("echo") << "echo" << QByteArray("010C|41 0C 1A F8 ");
    QTest::newRow("small letters") << "no data" << QByteArray("NO DATA");
    QTest::newRow("with its share") << "BUS INIT: ...ERROR:1" << QByteArray("BUS INIT: ...ERROR");
    QTest::newRow("never") << "NO DATA:0" << QByteArray("41 0C 1A F8 ");
}

void tst_EcuAdapter::badAnswers()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, answer);
    Bench bench({}, {text});
    QCOMPARE(bench.lines("ATE0,ATSP6,010C"), wire(answer));
    QCOMPARE(bench.lines("ATI"), wire("ELM327 v1.5")); // the commands work
}

void tst_EcuAdapter::shareOfBadAnswers()
{
    const auto faults = [](const QStringList &bad) {
        Bench bench({}, bad);
        bench.lines("ATE0,ATSP6");
        int count = 0;
        for (int i = 0; i < 1000; ++i)
            count += bench.lines("010C1") == wire("CAN ERROR");
        return count;
    };
    const int alone = faults({"CAN ERROR:0.2"});
    QVERIFY2(alone > 150 && alone < 250, qPrintable(QString::number(alone)));
    const int afterAnother = faults({"NO DATA:0.5", "CAN ERROR:0.2"});
    QVERIFY2(afterAnother > 60 && afterAnother < 140, qPrintable(QString::number(afterAnother)));
}

void tst_EcuAdapter::unknownBadAnswers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("unknown") << "NO IDEA"
                             << "one of 'NO DATA', 'UNABLE TO CONNECT', ";
    QTest::newRow("nothing") << ""
                             << "one of 'NO DATA', ";
    QTest::newRow("no share") << "NO DATA:"
                              << "a share from 0 to 1 after 'NO DATA:'";
    QTest::newRow("share too large") << "no data:2"
                                     << "a share from 0 to 1 after 'NO DATA:'";
    QTest::newRow("share below 0") << "?:-1"
                                   << "a share from 0 to 1 after '?:'";
    QTest::newRow("no number") << "echo:often"
                               << "a share from 0 to 1 after 'echo:'";
}

void tst_EcuAdapter::unknownBadAnswers()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    BadAnswers answers;
    QString error;
    QVERIFY(!answers.add(text, &error));
    QVERIFY2(error.startsWith(expected), qPrintable(error));
}

/** It claims to be new and knows only what is old. */
void tst_EcuAdapter::versionThatLies()
{
    Bench bench({}, {"version"});
    QCOMPARE(bench.lines("ATE0,ATI"), wire("ELM327 v2.1"));
    QCOMPARE(bench.lines("ATZ,ATE0,ATI"), wire("ELM327 v2.1"));
    QCOMPARE(bench.lines("ATS0"), wire("?"));
    QCOMPARE(bench.lines("ATCRA7E8"), wire("?"));
    QCOMPARE(bench.lines("ATAT1"), wire("OK"));
    QCOMPARE(bench.lines("ATSP6,010C"), wire("41 0C 1A F8 "));
}

/** An answer to somebody else looks like one to the request. */
void tst_EcuAdapter::otherTesterIsHeard()
{
    CarBus::Settings settings;
    settings.otherTesterMs = 30;
    settings.delayMs = 10;
    Bench bench(settings);
    QCOMPARE(bench.lines("ATE0,ATSP6,ATH1,ATAT0,ATST19,010D2"),
             wire("7E8 03 41 0D 33 |7E8 04 41 0C 1A F8 "));
}

void tst_EcuAdapter::lostAnswers()
{
    CarBus::Settings settings;
    settings.lost = 0.1;
    Bench bench(settings);
    bench.lines("ATE0,ATSP6");
    int lost = 0;
    for (int i = 0; i < 1000; ++i) {
        const QByteArray answer = bench.lines("010C1");
        lost += answer == wire("NO DATA");
        QVERIFY(answer == wire("NO DATA") || answer == wire("41 0C 1A F8 "));
    }
    QVERIFY2(lost > 70 && lost < 130, qPrintable(QString::number(lost)));
}

NORDA_TEST_MAIN(tst_EcuAdapter)
#include "tst_ecuadapter.moc"
