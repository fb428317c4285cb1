#include "norda/climate/climatedrag.h"
#include "norda/climate/climatemodel.h"
#include "testmain.h"

using namespace norda;

/** The zones of the climate screen, what it remembers, and its drags, without a widget. */
class tst_ClimateZones : public QObject
{
    Q_OBJECT
private slots:
    void walks_data();
    void walks();
    void zoneKeyBits();
    void ventPositionFallsBackToFront();
    void ventRowIsKept();
    void seatLevelIsKept();
    void temperatureDrag_data();
    void temperatureDrag();
    void fanPlaces_data();
    void fanPlaces();
};

/** "zone layout page way": which zone is active, what is drawn, what is on view, which way. */
static QString state(const ClimateZones &zones)
{
    return QStringLiteral("%1 %2 %3 %4")
        .arg(int(zones.active()))
        .arg(int(zones.layout()))
        .arg(int(zones.page()))
        .arg(zones.isTowardsSecond() ? "rear" : "front");
}

static void step(ClimateModel *model, char what, QString *changes)
{
    ClimateZones &zones = model->zones();
    switch (what) {
    case 'p':
        zones.press();
        break;
    case 'c': // checked
    case 'u': // unchecked
        zones.click(what == 'c');
        break;
    case '1':
    case '2':
        *changes += zones.bringUp(what == '1' ? Zone::Front : Zone::Second) ? what : '-';
        break;
    case 'v':
        model->setVentPosition(0);
        break;
    case 'r':
        zones.returnToLayout();
        break;
    default:
        QFAIL("no such step");
    }
}

void tst_ClimateZones::walks_data()
{
    // p press, c and u click; 1 and 2 a signal of a zone, v a vent position, r back to the layout
    QTest::addColumn<QByteArray>("steps");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("changes"); // of the zone, per signal, "-" for none
    const auto row = [](const char *name, const char *steps, const char *expected,
                        const char *changes = "") {
        QTest::newRow(name) << QByteArray(steps) << QString(expected) << QString(changes);
    };
    row("start", "", "0 0 0 front");
    row("first press", "p", "0 0 1 rear");
    row("first click", "pc", "0 1 1 rear");
    row("second press", "pcp", "0 1 0 front");
    row("second click", "pcpu", "1 0 0 front");
    row("third touch", "pcpupc", "0 1 1 rear");
    row("slid off the key", "ppc", "0 1 1 front");
    row("second zone", "2", "1 0 0 front", "2");
    row("second zone twice", "22", "1 0 0 front", "2-");
    row("front zone at the start", "1", "0 0 0 front", "-");
    row("there and back", "21", "0 0 0 front", "21");
    row("second zone on the manual layout", "pc2", "1 1 1 rear", "2");
    row("a signal brings the page back", "p1", "0 0 0 rear", "-");
    row("front zone after the toggle", "pcpu1", "0 0 0 front", "1");
    row("a vent position forgets the zone", "2v2", "1 0 0 front", "22");
    row("a vent position leaves the page", "pv", "0 0 1 rear");
    row("the page comes back", "pr", "0 0 0 rear");
}

void tst_ClimateZones::walks()
{
    QFETCH(QByteArray, steps);
    QFETCH(QString, expected);
    QFETCH(QString, changes);
    ClimateModel model;
    QString changed;
    for (const char what : steps)
        step(&model, what, &changed);
    QCOMPARE(state(model.zones()), expected);
    QCOMPARE(changed, changes);
}

void tst_ClimateZones::zoneKeyBits()
{
    ClimateModel model;
    for (const int bit : {64, 128, 64}) {
        model.clearBytes();
        model.pressZoneKey();
        QCOMPARE(model.bytes(),
                 (QMap<int, int>{{4, 0}, {5, 0}, {6, 0}, {7, 0}, {8, bit}, {9, 0}, {10, 0}}));
    }
}

void tst_ClimateZones::ventPositionFallsBackToFront()
{
    ClimateModel model;
    model.zones().bringUp(Zone::Second);
    model.setVentPosition(99);
    QCOMPARE(model.zones().active(), Zone::Front);
}

void tst_ClimateZones::ventRowIsKept()
{
    ClimateModel model;
    QCOMPARE(model.setVentPosition(99), 0);
    QCOMPARE(model.setVentPosition(3), 3);
    QCOMPARE(model.setVentPosition(6), 3);
    QCOMPARE(model.setVentPosition(4), 7); // a row without images is remembered, too
    QCOMPARE(model.setVentPosition(-1), 7);
    QCOMPARE(model.setVentPosition(model.followVentMode(Layout::AutoDual, 1)), 4);
    QCOMPARE(model.setVentPosition(model.followVentMode(Layout::AutoDual, 5)), 0);
}

void tst_ClimateZones::seatLevelIsKept()
{
    ClimateModel model;
    QCOMPARE(model.setSeatLevel(-1), 0);
    QCOMPARE(model.setSeatLevel(3), 3);
    for (const int level : {4, -1, INT_MAX, INT_MIN})
        QCOMPARE(model.setSeatLevel(level), 3);
    QCOMPARE(model.setSeatLevel(0), 0);
}

void tst_ClimateZones::temperatureDrag_data()
{
    // A marker from 100 to 138.
    QTest::addColumn<int>("press");
    QTest::addColumn<QList<int>>("moves");
    QTest::addColumn<QString>("followed"); // a letter a move
    QTest::addColumn<int>("raw");
    QTest::newRow("to the end") << 100 << QList<int>{414} << "y" << 255;
    QTest::newRow("to the middle") << 138 << QList<int>{207} << "y" << 127;
    QTest::newRow("to the start") << 120 << QList<int>{300, 0} << "yy" << 0;
    QTest::newRow("beyond the ends") << 120 << QList<int>{200, 415, -1} << "ynn" << 123;
    QTest::newRow("left of the marker") << 99 << QList<int>{200} << "n" << 0;
    QTest::newRow("right of the marker") << 139 << QList<int>{200} << "n" << 0;
}

void tst_ClimateZones::temperatureDrag()
{
    QFETCH(int, press);
    QFETCH(QList<int>, moves);
    QFETCH(QString, followed);
    QFETCH(int, raw);
    TemperatureDrag drag;
    drag.press(press, 100, 38);
    QString seen;
    for (const int x : moves)
        seen += drag.move(x) ? 'y' : 'n';
    QCOMPARE(seen, followed);
    QCOMPARE(drag.raw(), raw);
    drag.release();
    QVERIFY(!drag.move(10));
    QCOMPARE(drag.raw(), raw);
}

void tst_ClimateZones::fanPlaces_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("raw"); // -1 for unchanged
    QTest::newRow("before") << INT_MIN << 0 << 0 << 0;
    const int raws[] = {18, 36, 72, 144, 180, 216, 255};
    const int lasts[] = {0, 46, 105, 164, 223, 282, 341, 400};
    for (int level = 1; level <= 7; ++level)
        QTest::addRow("level %d", level)
            << lasts[level - 1] + 1 << lasts[level] << level << raws[level - 1];
    QTest::newRow("after") << 401 << INT_MAX << 0 << -1;
}

void tst_ClimateZones::fanPlaces()
{
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(int, level);
    QFETCH(int, raw);
    for (const int x : {first, last}) {
        QCOMPARE(fanPlace(x).level, level);
        QCOMPARE(fanPlace(x).raw.value_or(-1), raw);
    }
}

NORDA_TEST_MAIN(tst_ClimateZones)
#include "tst_climatezones.moc"
