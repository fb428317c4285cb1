#include "norda/vtqservice.h"
#include "simulator/climate.h"
#include "simulator/simulatedcar.h"
#include "testmain.h"

using namespace module;

/** The simulated car's climate, driven by the bytes on the wire. */
class tst_SimulatedClimate : public QObject
{
    Q_OBJECT
private slots:
    void everyBit_data();
    void everyBit();
    void seatsStepAsACarDoes();
    void temperatureEnds();
    void dualSeparatesTheSides();
    void drags_data();
    void drags();
    void automaticFanFollowsTheCabin();
    void trims_data();
    void trims();
    void answersWithinItsTime();
};

void tst_SimulatedClimate::everyBit_data()
{
    QTest::addColumn<int>("byte");
    QTest::addColumn<int>("mask");
    QTest::addColumn<QMap<int, int>>("changes"); // positions of the report and their new values
    const auto row = [](int byte, int mask, const QMap<int, int> &changes) {
        QTest::addRow("byte %d, %d", byte, mask) << byte << mask << changes;
    };
    row(4, 128, {{0, 0}, {2, 0}});
    row(4, 64, {{1, 1}});
    row(4, 32, {{2, 108}});
    row(4, 16, {{2, 36}});
    row(4, 2, {{6, 71}, {7, 71}});
    row(4, 1, {{6, 69}, {7, 69}});
    row(5, 128, {{7, 71}, {1, 2}});
    row(5, 64, {{7, 69}, {1, 2}});
    row(5, 32, {{8, 0}});
    row(5, 16, {{4, 1}});
    row(5, 8, {{11, 1}});
    row(5, 4, {{5, 1}});
    row(5, 2, {{12, 1}});
    row(6, 128, {{3, 1}});
    row(6, 64, {{3, 2}});
    row(6, 32, {{3, 3}});
    row(6, 16, {});
    row(6, 8, {});
    row(6, 2, {{9, 1}});
    row(6, 1, {{10, 1}});
    row(7, 64, {{9, 17}});
    row(7, 16, {{10, 17}});
    row(7, 8, {{5, 2}});
    row(7, 1, {{1, 2}});
    row(8, 128, {});
    row(8, 64, {});
    row(8, 32, {{19, 0}, {17, 0}});
    row(8, 8, {{17, 108}});
    row(8, 4, {{17, 36}});
    row(8, 2, {{18, 71}});
    row(8, 1, {{18, 69}});
    row(9, 128, {{16, 1}});
    row(9, 64, {{22, 1}});
    row(9, 32, {{14, 1}});
    row(9, 8, {{15, 1}});
    row(9, 1, {{14, 17}});
    row(10, 64, {{15, 17}});
    row(10, 16, {{20, 2}});
    row(10, 1, {}); // bits that no key has
    row(3, 255, {});
    row(11, 255, {});
}

void tst_SimulatedClimate::everyBit()
{
    QFETCH(int, byte);
    QFETCH(int, mask);
    using Changes = QMap<int, int>;
    QFETCH(Changes, changes);
    Climate car;
    QList<int> expected = car.report();
    QCOMPARE(expected.size(), 23);
    for (auto it = changes.cbegin(); it != changes.cend(); ++it)
        expected[it.key()] = it.value();
    car.press({{byte, mask}});
    QCOMPARE(car.report(), expected);
}

static QList<int> walk(Climate *car, int byte, int mask, int position, int touches)
{
    QList<int> values;
    for (int touch = 0; touch < touches; ++touch) {
        car->press({{byte, mask}});
        values.append(car->report()[position]);
    }
    return values;
}

void tst_SimulatedClimate::seatsStepAsACarDoes()
{
    Climate car;
    QCOMPARE(walk(&car, 6, 2, 9, 4), (QList<int>{1, 2, 3, 3}));
    QCOMPARE(walk(&car, 7, 64, 9, 4), (QList<int>{17, 18, 19, 19}));  // cooling ends heating
    QCOMPARE(walk(&car, 7, 128, 9, 4), (QList<int>{18, 17, 16, 16})); // level 0 in front
    QCOMPARE(walk(&car, 6, 8, 9, 1), QList<int>{0});
    QCOMPARE(walk(&car, 9, 1, 14, 3), (QList<int>{17, 18, 19}));
    QCOMPARE(walk(&car, 9, 2, 14, 4), (QList<int>{18, 17, 0, 0})); // off in the rear
    QCOMPARE(walk(&car, 4, 32, 2, 6).last(), 252);
    QCOMPARE(walk(&car, 4, 16, 2, 9).last(), 0);
}

void tst_SimulatedClimate::temperatureEnds()
{
    Climate car;
    QCOMPARE(walk(&car, 4, 2, 6, 30).last(), 95);
    QCOMPARE(walk(&car, 4, 1, 6, 1).last(), 90);
    QCOMPARE(walk(&car, 4, 1, 6, 60).last(), 50);
}

void tst_SimulatedClimate::dualSeparatesTheSides()
{
    Climate car;
    car.press({{7, 1}});
    car.press({{4, 2}});
    QCOMPARE(car.report()[6], 71);
    QCOMPARE(car.report()[7], 70);
}

void tst_SimulatedClimate::drags_data()
{
    QTest::addColumn<int>("raw");
    QTest::addColumn<int>("degrees");
    QTest::addColumn<int>("fan");
    QTest::newRow("start") << 0 << 59 << 0;
    QTest::newRow("middle") << 127 << 74 << 144;
    QTest::newRow("end") << 255 << 91 << 252;
    QTest::newRow("beyond") << 9999 << 91 << 252;
    QTest::newRow("below") << -5 << 59 << 0;
}

void tst_SimulatedClimate::drags()
{
    QFETCH(int, raw);
    QFETCH(int, degrees);
    QFETCH(int, fan);
    Climate car;
    car.setTemperature(raw);
    QCOMPARE(car.report()[18], degrees);
    car.setFan(raw);
    QCOMPARE(car.report()[2], fan);
    QCOMPARE(car.report()[17], 72);
    car.setRearFan(raw);
    QCOMPARE(car.report()[17], fan);
}

void tst_SimulatedClimate::automaticFanFollowsTheCabin()
{
    Climate car;
    car.press({{4, 64}});
    for (int touch = 0; touch < 15; ++touch)
        car.press({{4, 2}});
    int highest = 0;
    int changes = 0;
    for (int tenth = 0; tenth < 12000; ++tenth) {
        if (car.step(19, true)) {
            ++changes;
            car.takeReport();
        }
        highest = qMax(highest, car.report()[2]);
    }
    QCOMPARE(highest, 252);                                       // far from the wish: full
    QVERIFY(car.report()[2] <= 72);                               // and nearly there: low
    QVERIFY2(changes < 60, qPrintable(QString::number(changes))); // without hunting
}

void tst_SimulatedClimate::trims_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("known");
    QTest::addColumn<QList<int>>("present"); // features of group 1
    QTest::addColumn<bool>("rearAnswers");
    QTest::newRow("full") << "full" << true << QList<int>{0, 1, 2, 3, 4, 5, 6, 7} << true;
    QTest::newRow("no rear zone") << "no-rear" << true << QList<int>() << false;
    QTest::newRow("manual") << "manual" << true << QList<int>{1, 2, 3, 4, 5} << true;
    QTest::newRow("unknown") << "sports" << false << QList<int>{0, 1, 2, 3, 4, 5, 6, 7} << true;
}

void tst_SimulatedClimate::trims()
{
    QFETCH(QString, name);
    QFETCH(bool, known);
    QFETCH(QList<int>, present);
    QFETCH(bool, rearAnswers);
    Trim trim;
    QCOMPARE(trimFromName(name, &trim), known);
    const SimulatedCar car(trim); // tells the service what it has
    const QMap<int, bool> features =
        norda::VtqService::instance()->getRearClimateControlFeatures(1);
    QCOMPARE(features.keys(true), present);

    Climate climate(trim);
    const QList<int> before = climate.report();
    climate.press({{9, 128}});
    QCOMPARE(climate.report() != before, rearAnswers);
}

void tst_SimulatedClimate::answersWithinItsTime()
{
    SimulatedCar car;
    while (car.nextDueMs() < 20000)
        car.take();
    const QMap<int, int> bytes = {{4, 0}, {5, 16}, {6, 0}, {7, 0}, {8, 0}, {9, 0}, {10, 0}};
    QVERIFY(car.command(20000, QStringLiteral("norda::VtqAdaptor::NordatriggerRearDefrostButton"),
                        {QVariant::fromValue(bytes)}));
    QVERIFY(!car.command(20000, QStringLiteral("norda::VtqAdaptor::gaugesSettings"), {}));
    QList<int> report;
    while (car.nextDueMs() <= 20000 + VehicleSource::LatestAnswerMs) {
        const Emission emission = car.take();
        if (emission.signal == "NordaClimateCtrlStatusNotify")
            report = emission.arguments[0].value<QList<int>>();
    }
    QCOMPARE(report.value(4), 1);
}

NORDA_TEST_MAIN(tst_SimulatedClimate)
#include "tst_simulatedclimate.moc"
