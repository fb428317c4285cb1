#include "norda/climate/climatestatus.h"
#include "testmain.h"

using namespace norda;

/** Decoding of the climate status, without a widget. */
class tst_ClimateModel : public QObject
{
    Q_OBJECT
private slots:
    void statusMap_data();
    void statusMap();
    void buttonStates_data();
    void buttonStates();
    void ventModes_data();
    void ventModes();
    void ventRows_data();
    void ventRows();
    void imagePairs();
    void seats_data();
    void seats();
    void fanLevels_data();
    void fanLevels();
    void temperatures_data();
    void temperatures();
    void marker_data();
    void marker();
    void autoAndDual_data();
    void autoAndDual();
    void autoDualReads_data();
    void autoDualReads();
    void manualReads();
};

void tst_ClimateModel::statusMap_data()
{
    QTest::addColumn<int>("length");
    for (int length : {0, 1, 22, 23, 24, 1000})
        QTest::addRow("%d elements", length) << length;
}

void tst_ClimateModel::statusMap()
{
    QFETCH(int, length);
    QList<int> list;
    for (int i = 0; i < length; ++i)
        list.append(i % 2 ? INT_MAX - i : INT_MIN + i);
    ClimateStatusMap map = climateStatusMap(list);
    QCOMPARE(map.size(), length);
    for (int i = 0; i < length; ++i)
        QCOMPARE(map.value(NordaClimateVaule(i)), list[i]);
    QCOMPARE(map[NordaClimateVaule(length)], 0); // a missing position reads as 0
    QCOMPARE(int(NordaClimateVaule::FrontDefroster), 12);
    QCOMPARE(int(NordaClimateVaule::ManualMaxAirConditioning), 22);
}

void tst_ClimateModel::buttonStates_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("look"); // enabled, checked, visible
    const QMap<int, QString> known = {{0, "e-v"}, {1, "ecv"}, {3, "e-v"}, {9, "--v"}};
    for (int code = -1; code <= 11; ++code)
        QTest::addRow("%d", code) << code << known.value(code, "---");
    QTest::newRow("largest") << INT_MAX << "---";
}

void tst_ClimateModel::buttonStates()
{
    QFETCH(int, code);
    QFETCH(QString, look);
    const ButtonLook seen = buttonLook(code);
    QCOMPARE(QString(seen.enabled ? "e" : "-") + (seen.checked ? "c" : "-") +
                 (seen.visible ? "v" : "-"),
             look);
}

void tst_ClimateModel::ventModes_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("index"); // -1 keeps the previous one
    QTest::addColumn<int>("row");   // of the vent table, after both steps
    QTest::newRow("4, head") << 4 << 0 << 1;
    QTest::newRow("2, feet") << 2 << 1 << 2;
    QTest::newRow("3, feet and head") << 3 << 2 << 3;
    QTest::newRow("1, windshield and feet") << 1 << 3 << 4;
    for (int value : {0, 5, 6, -1, 255, INT_MAX, INT_MIN})
        QTest::addRow("%d", value) << value << -1 << 0;
}

void tst_ClimateModel::ventModes()
{
    QFETCH(int, value);
    QFETCH(int, index);
    QFETCH(int, row);
    const VentMode mode = ventMode(value);
    QCOMPARE(mode.index.value_or(-1), index);
    QCOMPARE(ventRow(mode.position).value_or(-1), row);
}

void tst_ClimateModel::ventRows_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("row"); // -1 keeps the previous one
    QTest::addColumn<bool>("hasImages");
    const int rows[] = {0, 2, 1, 3, 7, 4, -1, 6};
    for (int code = 0; code < 8; ++code)
        QTest::addRow("code %d", code)
            << code << rows[code] << (rows[code] >= 0 && rows[code] <= 4);
    for (int code : {8, 9, 255, -1, INT_MAX})
        QTest::addRow("code %d", code) << code << -1 << false;
}

void tst_ClimateModel::ventRows()
{
    QFETCH(int, code);
    QFETCH(int, row);
    QFETCH(bool, hasImages);
    QCOMPARE(ventRow(code).value_or(-1), row);
    QCOMPARE(ventImages(row) != nullptr, hasImages);
}

void tst_ClimateModel::imagePairs()
{
    const char *const vents[] = {"seat", "seat_head", "seat_foot", "seat_foot_head",
                                 "seat_foot_windshied"};
    for (int row = 0; row < 5; ++row) {
        const QString name = QStringLiteral(":/icon/airicon/") + QLatin1String(vents[row]);
        QCOMPARE(ventImages(row)[0].path, name + QStringLiteral("_n.png"));
        QCOMPARE(ventImages(row)[1].path, name + QStringLiteral("_p.png"));
        QCOMPARE(ventImages(row)[0].level, row);
        QCOMPARE(ventImages(row)[1].level, row);
    }
    QCOMPARE(ventImages(5), nullptr);
    QCOMPARE(ventImages(-1), nullptr);
    QCOMPARE(recirculationImages(0)[1].path, QStringLiteral(":/icon/airicon/circulation_p.png"));
    QCOMPARE(recirculationImages(1)[0].path,
             QStringLiteral(":/icon/airicon/external_circulation _n.png"));
    QCOMPARE(recirculationImages(2), nullptr);
    QCOMPARE(recirculationImages(-1), nullptr);
}

void tst_ClimateModel::seats_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("image");
    for (int level = 0; level < 4; ++level) {
        QTest::addRow("heating %d", level)
            << level << QStringLiteral(":/icon/airicon/seat_heat_%1.png").arg(level);
        QTest::addRow("cooling %d", 16 + level)
            << 16 + level << QStringLiteral(":/icon/airicon/seat_AC_%1.png").arg(level);
    }
    QTest::newRow("4 is cooling 0") << 4 << ":/icon/airicon/seat_AC_0.png";
    QTest::newRow("7 is cooling 3") << 7 << ":/icon/airicon/seat_AC_3.png";
    QTest::newRow("largest") << INT_MAX << ":/icon/airicon/seat_AC_3.png";
    QTest::newRow("-4 has a level") << -4 << ":/icon/airicon/seat_heat_0.png";
    QTest::newRow("-5 has none") << -5 << ":/icon/airicon/seat_heat_-1.png";
    QTest::newRow("smallest") << INT_MIN << ":/icon/airicon/seat_heat_0.png";
}

void tst_ClimateModel::seats()
{
    QFETCH(int, code);
    QFETCH(QString, image);
    const SeatState seat = seatState(code);
    QCOMPARE(seat.cooled ? seatCoolImage(seat.level) : seatHeatImage(seat.level), image);
}

void tst_ClimateModel::fanLevels_data()
{
    QTest::addColumn<int>("speed");
    QTest::addColumn<int>("level");
    const int last[] = {0, 36, 72, 108, 144, 180, 216};
    for (int level = 0; level < 7; ++level) {
        QTest::addRow("%d", last[level]) << last[level] << level;
        QTest::addRow("%d", last[level] + 1) << last[level] + 1 << level + 1;
    }
    QTest::newRow("255") << 255 << 7;
    QTest::newRow("largest") << INT_MAX << 7;
    QTest::newRow("below zero") << -1 << 0;
    QTest::newRow("smallest") << INT_MIN << 0;
}

void tst_ClimateModel::fanLevels()
{
    QFETCH(int, speed);
    QFETCH(int, level);
    QCOMPARE(fanLevel(speed), level);
    QCOMPARE(fanImage(level), QStringLiteral(":/icon/airicon/position_%1.png").arg(level));
}

void tst_ClimateModel::temperatures_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("plain");
    QTest::newRow("lowest") << 50 << "LO"
                            << "50.00 F";
    QTest::newRow("highest") << 95 << "HI"
                             << "95.00 F";
    QTest::newRow("70") << 70 << "70.00 F"
                        << "70.00 F";
    QTest::newRow("72") << 72 << "72.00 F"
                        << "72.00 F";
    QTest::newRow("51") << 51 << "51.00 F"
                        << "51.00 F";
    QTest::newRow("0") << 0 << "0.00 F"
                       << "0.00 F";
    QTest::newRow("negative") << -5 << "-5.00 F"
                              << "-5.00 F";
    QTest::newRow("largest, not in exponents") << INT_MAX << "2147483647.00 F"
                                               << "2147483647.00 F";
}

void tst_ClimateModel::temperatures()
{
    QFETCH(int, value);
    QFETCH(QString, text);
    QFETCH(QString, plain);
    QCOMPARE(temperatureText(value), text);
    QCOMPARE(plainTemperatureText(value), plain);
}

void tst_ClimateModel::marker_data()
{
    // A track of 500 and a marker of 38: 462 to travel, steps of 14.
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("x");
    QTest::newRow("minimum") << 59 << 0;
    QTest::newRow("one step") << 60 << 14;
    QTest::newRow("90") << 90 << 31 * 14;
    QTest::newRow("maximum") << 91 << 462;
    QTest::newRow("92") << 92 << 462;
    QTest::newRow("117") << 117 << 462;
    QTest::newRow("118 starts again") << 118 << 0;
    QTest::newRow("119") << 119 << 14;
    QTest::newRow("below the minimum lands at its own step") << 10 << 140;
    QTest::newRow("31") << 31 << 31 * 14;
    QTest::newRow("32") << 32 << 462;
    QTest::newRow("58") << 58 << 462;
    QTest::newRow("0") << 0 << 0;
    QTest::newRow("negative") << -20 << 0;
    QTest::newRow("smallest") << INT_MIN << 0;
}

void tst_ClimateModel::marker()
{
    QFETCH(int, value);
    QFETCH(int, x);
    QCOMPARE(temperatureMarkerX(value, 500, 38), x);
}

void tst_ClimateModel::autoAndDual_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("state");
    QTest::newRow("0") << 0 << "-- ";
    QTest::newRow("1") << 1 << "a- ";
    QTest::newRow("2") << 2 << "-d ";
    QTest::newRow("3") << 3 << "ad ";
    QTest::newRow("4") << 4 << "unchanged";
    QTest::newRow("-1") << -1 << "unchanged";
}

void tst_ClimateModel::autoAndDual()
{
    QFETCH(int, value);
    QFETCH(QString, state);
    const auto seen = autoDual(value);
    QCOMPARE(seen ? QString(seen->automatic ? "a" : "-") + (seen->dual ? "d " : "- ")
                  : QStringLiteral("unchanged"),
             state);
}

/** A list in which every position holds a number of its own. */
static ClimateStatusMap numbered()
{
    QList<int> list;
    for (int position = 0; position < 23; ++position)
        list.append(100 + position);
    return climateStatusMap(list);
}

void tst_ClimateModel::autoDualReads_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("rear");
    QTest::addColumn<int>("wheel");
    QTest::newRow("neither") << 0 << 0 << 0;
    QTest::newRow("rear defroster") << 1 << 1 << 0;
    QTest::newRow("heated wheel") << 2 << 0 << 1;
    QTest::newRow("both and others") << 0xFF << 1 << 1;
}

void tst_ClimateModel::autoDualReads()
{
    QFETCH(int, bits);
    QFETCH(int, rear);
    QFETCH(int, wheel);
    ClimateStatusMap list = numbered();
    list[NordaClimateVaule::HeatingBits] = bits;
    list[NordaClimateVaule::AutoDual] = 1;
    const AutoDualStatus read = autoDualStatus(list);
    QVERIFY(read.modes && read.modes->automatic && !read.modes->dual);
    QCOMPARE(read.rearDefroster, rear);
    QCOMPARE(read.heatedWheel, wheel);
    QCOMPARE(
        (QList<int>{read.system, read.fan, read.ventMode, read.airConditioning,
                    read.leftTemperature, read.rightTemperature, read.recirculation, read.leftSeat,
                    read.rightSeat, read.maxAirConditioning, read.frontDefroster}),
        (QList<int>{100, 102, 103, 104, 106, 107, 0, 109, 110, 111, 112}));
    QCOMPARE(autoDualStatus({}).recirculation, 1); // air source 0
}

void tst_ClimateModel::manualReads()
{
    const ManualStatus read = manualStatus(numbered());
    QCOMPARE((QList<int>{read.leftSeat, read.rightSeat, read.airConditioning, read.fan,
                         read.temperature, read.system, read.ventMode, read.maxAirConditioning}),
             (QList<int>{114, 115, 116, 117, 118, 119, 120, 122}));
    QCOMPARE(manualStatus({}).system, 0);
}

NORDA_TEST_MAIN(tst_ClimateModel)
#include "tst_climatemodel.moc"
