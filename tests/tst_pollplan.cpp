#include "live/pollplan.h"
#include "live/troublecodes.h"
#include "obdpids.h"
#include "testmain.h"

using namespace module;

/** What is asked of a car, and what its answers say. */
class tst_PollPlan : public QObject
{
    Q_OBJECT
private slots:
    void plans_data();
    void plans();
    void codes_data();
    void codes();
    void readings_data();
    void readings();
};

void tst_PollPlan::plans_data()
{
    QTest::addColumn<QByteArrayList>("masks"); // by block, and of which unit
    QTest::addColumn<QByteArrayList>("messages");
    QTest::newRow("engine speed alone")
        << QByteArrayList{"410000100000"} << QByteArrayList{"010c", "03"};
    QTest::newRow("lamp") << QByteArrayList{"410080000000"} << QByteArrayList{"0101", "03"};
    QTest::newRow("what no page shows") << QByteArrayList{"410000208000"} << QByteArrayList{"03"};
    QTest::newRow("ambient temperature")
        << QByteArrayList{"414004000000"} << QByteArrayList{"0146", "03"};
    QTest::newRow("oil before ambient temperature")
        << QByteArrayList{"414004000010"} << QByteArrayList{"015c", "03"};
}

void tst_PollPlan::plans()
{
    QFETCH(QByteArrayList, masks);
    SupportedPids supported;
    for (const QByteArray &mask : qAsConst(masks)) {
        const QByteArray answer = QByteArray::fromHex(mask);
        QVERIFY(supported.add(answer.at(1), {0x7E8, answer}));
    }
    QByteArrayList messages;
    for (const PollItem &item : pollPlan(supported))
        messages.append(item.request.message.toHex());
    QTEST(messages, "messages");
}

void tst_PollPlan::codes_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QStringList>("codes");
    QTest::newRow("none") << QByteArray("4300") << QStringList();
    QTest::newRow("one") << QByteArray("43010301") << QStringList{"P0301"};
    QTest::newRow("of every system")
        << QByteArray("43040143519a92abf00f") << QStringList{"P0143", "C119A", "B12AB", "U300F"};
    QTest::newRow("older bus") << QByteArray("43030101430000") << QStringList{"P0301", "P0143"};
    QTest::newRow("half a code") << QByteArray("4302030101") << QStringList{"P0203", "P0101"};
    QTest::newRow("another service") << QByteArray("47010301") << QStringList();
    QTest::newRow("nothing") << QByteArray() << QStringList();
}

void tst_PollPlan::codes()
{
    QFETCH(QByteArray, answer);
    QTEST(troubleCodes(QByteArray::fromHex(answer)), "codes");
}

void tst_PollPlan::readings_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("quantity");
    QTest::addColumn<double>("value");
    QTest::newRow("engine speed") << QByteArray("410c1af8") << int(Quantity::EngineSpeed) << 1726.0;
    QTest::newRow("lamp on") << QByteArray("410183000000") << int(Quantity::EngineLamp) << 1.0;
    QTest::newRow("lamp off, with a code")
        << QByteArray("410103000000") << int(Quantity::EngineLamp) << 0.0;
    QTest::newRow("too short") << QByteArray("410c1a") << -1 << 0.0;
    QTest::newRow("no bytes") << QByteArray("410c") << -1 << 0.0;
    QTest::newRow("another service") << QByteArray("430c1af8") << -1 << 0.0;
    QTest::newRow("not used") << QByteArray("41100000") << -1 << 0.0;
    QTest::newRow("not known") << QByteArray("41fe0000") << -1 << 0.0;
}

void tst_PollPlan::readings()
{
    QFETCH(QByteArray, answer);
    const auto reading = pidReading(QByteArray::fromHex(answer));
    QTEST(reading ? int(reading->quantity) : -1, "quantity");
    QTEST(reading ? reading->value : 0.0, "value");
}

NORDA_TEST_MAIN(tst_PollPlan)
#include "tst_pollplan.moc"
