#include "norda/climate/climatestatus.h"
#include "norda/climate/commandbytes.h"
#include "testmain.h"

using namespace norda;

Q_DECLARE_METATYPE(norda::ClimateGroup)

/** Decoding of the climate status and building of the key map, without a widget. */
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

    void keysWithABit_data();
    void keysWithABit();
    void everyBitStandsForOneTouch();
    void seatBits_data();
    void seatBits();
    void seatDirections_data();
    void seatDirections();
    void seatWalk();
    void bytesAreClearedWhole();
    void digits();
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

void tst_ClimateModel::keysWithABit_data()
{
    QTest::addColumn<ClimateGroup>("group");
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("byte"); // 0 for a key without a bit of its own
    QTest::addColumn<int>("value");
    const auto row = [](const char *key, ClimateGroup group, int id, int byte, int value) {
        QTest::newRow(key) << group << id << byte << value;
    };
    row("key_power", ClimateGroup::AutoDualIcon, 9, 4, 128);
    row("key_auto", ClimateGroup::AutoDualText, 0, 4, 64);
    row("key_air_speed_next", ClimateGroup::AutoDualIcon, 5, 4, 32);
    row("key_air_speed_prev", ClimateGroup::AutoDualIcon, 4, 4, 16);
    row("key_left_temp_next", ClimateGroup::AutoDualIcon, 0, 4, 2);
    row("key_left_temp_prev", ClimateGroup::AutoDualIcon, 2, 4, 1);
    row("key_right_temp_next", ClimateGroup::AutoDualIcon, 1, 5, 128);
    row("key_right_temp_prev", ClimateGroup::AutoDualIcon, 3, 5, 64);
    row("key_circulation", ClimateGroup::AutoDualIcon, 7, 5, 32);
    row("key_AC", ClimateGroup::AutoDualText, 2, 5, 16);
    row("key_max_AC", ClimateGroup::AutoDualText, 3, 5, 8);
    row("key_demisting", ClimateGroup::AutoDualIcon, 15, 5, 4);
    row("key_wind_direction", ClimateGroup::AutoDualIcon, 14, 5, 2);
    row("key_Steering_wheel_heat", ClimateGroup::AutoDualIcon, 8, 7, 8);
    row("key_dual", ClimateGroup::AutoDualText, 1, 7, 1);
    row("key_power_2", ClimateGroup::ManualIcon, 11, 8, 32);
    row("key_air_speed_next_2", ClimateGroup::ManualIcon, 3, 8, 8);
    row("key_air_speed_prev_2", ClimateGroup::ManualIcon, 1, 8, 4);
    row("key_temp_next", ClimateGroup::ManualIcon, 2, 8, 2);
    row("key_temp_prev", ClimateGroup::ManualIcon, 0, 8, 1);
    row("key_AC_2", ClimateGroup::ManualText, 0, 9, 128);
    row("key_max_AC_2", ClimateGroup::ManualText, 1, 9, 64);
    row("key_seat_2", ClimateGroup::ManualIcon, 8, 10, 16);

    row("key_P1", ClimateGroup::AutoDualText, 4, 0, 0);
    row("key_P2", ClimateGroup::AutoDualText, 5, 0, 0);
    row("key_P1_2", ClimateGroup::ManualText, 2, 0, 0);
    row("key_P2_2", ClimateGroup::ManualText, 3, 0, 0);
    row("key_circulation_2", ClimateGroup::ManualIcon, 9, 0, 0);
    row("key_Steering_wheel_heat_2", ClimateGroup::ManualIcon, 10, 0, 0);
    row("key_wind_direction_2", ClimateGroup::ManualIcon, 12, 0, 0);
    row("key_demisting_2", ClimateGroup::ManualIcon, 13, 0, 0);
    for (const ClimateGroup group : {ClimateGroup::ManualText, ClimateGroup::ManualIcon,
                                     ClimateGroup::AutoDualText, ClimateGroup::AutoDualIcon}) {
        for (int id : {-1, 16, INT_MAX, INT_MIN})
            QTest::addRow("group %d, unknown id %d", int(group), id) << group << id << 0 << 0;
    }
}

void tst_ClimateModel::keysWithABit()
{
    QFETCH(ClimateGroup, group);
    QFETCH(int, id);
    QFETCH(int, byte);
    QFETCH(int, value);
    QVERIFY(!seatKey(group, id));
    const auto bit = commandBit(group, id);
    QCOMPARE(bit.has_value(), byte != 0);
    CommandBytes bytes;
    if (bit)
        bytes.set(*bit);
    QMap<int, int> expected = {{4, 0}, {5, 0}, {6, 0}, {7, 0}, {8, 0}, {9, 0}, {10, 0}};
    if (byte)
        expected[byte] = value;
    QCOMPARE(bytes.map(), expected);
}

void tst_ClimateModel::everyBitStandsForOneTouch()
{
    QSet<QPair<int, int>> seen;
    const auto add = [&seen](CommandBit bit) {
        const QPair<int, int> key(bit.byte, bit.value);
        const bool isNew = !seen.contains(key);
        seen.insert(key);
        return isNew && bit.byte >= 4 && bit.byte <= 10 &&
               qPopulationCount(quint32(bit.value)) == 1;
    };
    for (const ClimateGroup group : {ClimateGroup::ManualText, ClimateGroup::ManualIcon,
                                     ClimateGroup::AutoDualText, ClimateGroup::AutoDualIcon}) {
        for (int id = 0; id < 16; ++id) {
            if (const auto bit = commandBit(group, id))
                QVERIFY(add(*bit));
            if (const auto key = seatKey(group, id)) {
                QVERIFY(add(seatCommandBit(group, *key, true)));
                QVERIFY(add(seatCommandBit(group, *key, false)));
            }
        }
    }
    for (int index = 0; index < ventModeCount; ++index)
        QVERIFY(add(ventCommandBit(index)));
    QVERIFY(add(zoneCommandBit(true)));
    QVERIFY(add(zoneCommandBit(false)));
    QCOMPARE(seen.size(), 23 + 16 + 4 + 2);
}

void tst_ClimateModel::seatBits_data()
{
    QTest::addColumn<ClimateGroup>("group");
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("byte");
    QTest::addColumn<int>("up");
    QTest::addColumn<int>("down");
    QTest::newRow("key_left_seat_heat") << ClimateGroup::AutoDualIcon << 10 << 6 << 2 << 8;
    QTest::newRow("key_right_seat_heat") << ClimateGroup::AutoDualIcon << 11 << 6 << 1 << 4;
    QTest::newRow("key_left_seat_AC") << ClimateGroup::AutoDualIcon << 12 << 7 << 64 << 128;
    QTest::newRow("key_right_seat_AC") << ClimateGroup::AutoDualIcon << 13 << 7 << 16 << 32;
    QTest::newRow("key_left_seat_heat_2") << ClimateGroup::ManualIcon << 4 << 9 << 32 << 16;
    QTest::newRow("key_right_seat_heat_2") << ClimateGroup::ManualIcon << 5 << 9 << 8 << 4;
    QTest::newRow("key_left_seat_AC_2") << ClimateGroup::ManualIcon << 6 << 9 << 1 << 2;
    QTest::newRow("key_right_seat_AC_2") << ClimateGroup::ManualIcon << 7 << 10 << 64 << 128;
}

void tst_ClimateModel::seatBits()
{
    QFETCH(ClimateGroup, group);
    QFETCH(int, id);
    QFETCH(int, byte);
    QFETCH(int, up);
    QFETCH(int, down);
    const auto key = seatKey(group, id);
    QVERIFY(key);
    QVERIFY(!commandBit(group, id));
    QCOMPARE(seatCommandBit(group, *key, true).byte, byte);
    QCOMPARE(seatCommandBit(group, *key, true).value, up);
    QCOMPARE(seatCommandBit(group, *key, false).byte, byte);
    QCOMPARE(seatCommandBit(group, *key, false).value, down);
}

void tst_ClimateModel::seatDirections_data()
{
    QTest::addColumn<ClimateGroup>("group");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("turnsDownAt");
    QTest::addColumn<int>("turnsUpAt");
    for (int key = 0; key < seatKeyCount; ++key) {
        const bool cooled = key >= int(SeatKey::LeftCool);
        QTest::addRow("auto/dual %d", key)
            << ClimateGroup::AutoDualIcon << key << (cooled ? 19 : 3) << (cooled ? 16 : 0);
        QTest::addRow("manual %d", key)
            << ClimateGroup::ManualIcon << key << (cooled ? 19 : 3) << 0;
    }
}

void tst_ClimateModel::seatDirections()
{
    QFETCH(ClimateGroup, group);
    QFETCH(int, key);
    QFETCH(int, turnsDownAt);
    QFETCH(int, turnsUpAt);
    for (int value = -1; value <= 20; ++value) {
        for (const bool up : {true, false}) {
            const bool expected = value == turnsDownAt ? false : value == turnsUpAt || up;
            QCOMPARE(seatStepsUp(group, SeatKey(key), up, value), expected);
        }
    }
}

void tst_ClimateModel::seatWalk()
{
    // A car that answers each touch runs the seat up to the end and down again.
    bool up = true;
    int level = 0;
    QList<int> levels;
    for (int touch = 0; touch < 8; ++touch) {
        up = seatStepsUp(ClimateGroup::AutoDualIcon, SeatKey::LeftHeat, up, level);
        level += up ? 1 : -1;
        levels.append(level);
    }
    QCOMPARE(levels, (QList<int>{1, 2, 3, 2, 1, 0, 1, 2}));
}

void tst_ClimateModel::bytesAreClearedWhole()
{
    const QMap<int, int> zeros = {{4, 0}, {5, 0}, {6, 0}, {7, 0}, {8, 0}, {9, 0}, {10, 0}};
    CommandBytes bytes;
    QCOMPARE(bytes.map(), zeros);
    bytes.set({4, 128});
    bytes.set({10, 1});
    QCOMPARE(bytes.map().value(4), 128);
    QCOMPARE(bytes.map().value(10), 1);
    bytes.clear();
    QCOMPARE(bytes.map(), zeros);
    bytes.set({10, 64});
    QCOMPARE(bytes.map().value(10), 64); // nothing of the earlier touch
}

void tst_ClimateModel::digits()
{
    QCOMPARE(ListIntToString({}), QString());
    QCOMPARE(ListIntToString({1, 0, 0, 1}), QStringLiteral("1001"));
    QCOMPARE(ListIntToString({12, -3}), QStringLiteral("12-3"));
}

NORDA_TEST_MAIN(tst_ClimateModel)
#include "tst_climatemodel.moc"
