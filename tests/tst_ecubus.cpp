#include "carbus.h"
#include "ecucar.h"
#include "testmain.h"

using namespace ecu;
using module::CanFrame;

/** The car's end of the bus, frame by frame. */
class tst_EcuBus : public QObject
{
    Q_OBJECT
private slots:
    void requests_data();
    void requests();
    void longAnswer_data();
    void longAnswer();
    void delay();
    void loss();
    void otherTester();
};

/** Frames as candump writes them, padding left out. */
static QStringList texts(const QVector<CanFrame> &frames)
{
    QStringList lines;
    for (const CanFrame &frame : frames) {
        QString data = QString::fromLatin1(frame.data.toHex().toUpper());
        while (data.endsWith(QLatin1String("55")))
            data.chop(2);
        lines.append(QStringLiteral("%1#%2")
                         .arg(frame.id, frame.isExtended ? 8 : 3, 16, QLatin1Char('0'))
                         .toUpper()
                         .arg(data));
    }
    return lines;
}

static CanFrame frameOf(const QString &text)
{
    const QString id = text.section(QLatin1Char('#'), 0, 0);
    return {id.toUInt(nullptr, 16), id.size() == 8,
            QByteArray::fromHex(text.section(QLatin1Char('#'), 1).toLatin1())};
}

void tst_EcuBus::requests_data()
{
    QTest::addColumn<bool>("extended");
    QTest::addColumn<int>("units");
    QTest::addColumn<QString>("request");
    QTest::addColumn<QStringList>("answers");
    const auto row = [](const char *name, bool extended, int units, const char *request,
                        const QStringList &answers) {
        QTest::newRow(name) << extended << units << QString::fromLatin1(request) << answers;
    };
    row("all units", false, 2, "7DF#02010D", {"7E8#03410D33", "7E9#03410D33"});
    row("all units, padded", false, 1, "7DF#02010D0000000000", {"7E8#03410D33"});
    row("the engine's unit", false, 2, "7E0#02010C", {"7E8#04410C1AF8"});
    row("the second unit", false, 2, "7E1#02010D", {"7E9#03410D33"});
    row("the last unit", false, 8, "7E7#02010D", {"7EF#03410D33"});
    row("a unit that is not there", false, 1, "7E1#02010D", {});
    row("what a unit does not know", false, 1, "7E0#02015E", {"7E8#037F0112"});
    row("what no unit knows", false, 2, "7DF#02015E", {});
    row("another frame", false, 1, "123#02010C", {});
    row("no data", false, 1, "7DF#", {});
    row("a first frame for all", false, 1, "7DF#1008010C0D050411", {});
    row("29 bits where the car has 11", false, 1, "18DB33F1#02010C", {});
    row("29 bits, all units", true, 2, "18DB33F1#02010D",
        {"18DAF110#03410D33", "18DAF111#03410D33"});
    row("29 bits, the second unit", true, 2, "18DA11F1#02010D", {"18DAF111#03410D33"});
    row("11 bits where the car has 29", true, 1, "7DF#02010C", {});
}

void tst_EcuBus::requests()
{
    QFETCH(bool, extended);
    QFETCH(int, units);
    QFETCH(QString, request);
    QFETCH(QStringList, answers);
    const Car car = testCar();
    CarBus::Settings settings;
    settings.isExtended = extended;
    settings.units = units;
    CarBus bus(&car, settings);
    bus.receive(frameOf(request), 0);
    QCOMPARE(texts(bus.takeFrames()), answers);
    QCOMPARE(bus.nextDueMs(), qint64(-1));
    QVERIFY(bus.takeFrames().isEmpty());
}

void tst_EcuBus::longAnswer_data()
{
    QTest::addColumn<bool>("extended");
    QTest::addColumn<QString>("request");
    QTest::addColumn<QString>("flowControl");
    QTest::addColumn<QString>("answerId");
    QTest::newRow("11 bits") << false << "7DF#020902"
                             << "7E0#300000"
                             << "7E8";
    QTest::newRow("29 bits") << true << "18DB33F1#020902"
                             << "18DA10F1#300000"
                             << "18DAF110";
}

/** The identification number, after the tester has said go on. */
void tst_EcuBus::longAnswer()
{
    QFETCH(bool, extended);
    QFETCH(QString, request);
    QFETCH(QString, flowControl);
    QFETCH(QString, answerId);
    const Car car = testCar();
    CarBus::Settings settings;
    settings.isExtended = extended;
    CarBus bus(&car, settings);
    bus.receive(frameOf(request), 0);
    QCOMPARE(texts(bus.takeFrames()), QStringList{answerId + "#10144902014E5244"});
    QVERIFY(bus.nextDueMs() > 0);
    bus.receive(frameOf(flowControl), 5);
    QCOMPARE(texts(bus.takeFrames()),
             (QStringList{answerId + "#2141544553543030", answerId + "#2230303030303031"}));
}

void tst_EcuBus::delay()
{
    const Car car = testCar();
    CarBus::Settings settings;
    settings.delayMs = 30;
    CarBus bus(&car, settings);
    bus.receive(frameOf("7DF#02010D"), 100);
    QVERIFY(bus.takeFrames().isEmpty());
    QCOMPARE(bus.nextDueMs(), qint64(130));
    bus.advance(129);
    QVERIFY(bus.takeFrames().isEmpty());
    bus.advance(130);
    QCOMPARE(texts(bus.takeFrames()), QStringList{"7E8#03410D33"});
    QCOMPARE(bus.nextDueMs(), qint64(-1));
}

static QVector<bool> answered(quint32 seed, double lost)
{
    const Car car = testCar();
    CarBus::Settings settings;
    settings.lost = lost;
    settings.seed = seed;
    CarBus bus(&car, settings);
    QVector<bool> found;
    for (int i = 0; i < 1000; ++i) {
        bus.receive(frameOf("7DF#02010D"), i);
        found.append(!bus.takeFrames().isEmpty());
    }
    return found;
}

void tst_EcuBus::loss()
{
    QCOMPARE(answered(1, 0).count(false), 0);
    QCOMPARE(answered(1, 1).count(true), 0);
    const int lost = answered(1, 0.1).count(false);
    QVERIFY2(lost > 70 && lost < 130, qPrintable(QString::number(lost)));
    QCOMPARE(answered(7, 0.1), answered(7, 0.1));
    QVERIFY(answered(7, 0.1) != answered(8, 0.1));
}

/** Its requests and the answers to them, which everybody on the bus sees. */
void tst_EcuBus::otherTester()
{
    const Car car = testCar();
    CarBus::Settings settings;
    settings.otherTesterMs = 50;
    CarBus bus(&car, settings);
    QCOMPARE(bus.nextDueMs(), qint64(50));
    bus.advance(49);
    QVERIFY(bus.takeFrames().isEmpty());
    const QStringList exchange = {"7DF#02010C", "7E8#04410C1AF8"};
    bus.advance(50);
    QCOMPARE(texts(bus.takeFrames()), exchange);
    QCOMPARE(bus.nextDueMs(), qint64(100));
    bus.advance(100);
    QCOMPARE(texts(bus.takeFrames()), exchange);
}

NORDA_TEST_MAIN(tst_EcuBus)
#include "tst_ecubus.moc"
