#include "norda/climate/climatemodel.h"
#include "norda/climate/singlecommands.h"
#include "testmain.h"

using namespace norda;

Q_DECLARE_METATYPE(norda::ClimateGroup)

/** What the keys of the climate screen send, without a widget. */
class tst_ClimateKeys : public QObject
{
    Q_OBJECT
private slots:
    void keysWithABit_data();
    void keysWithABit();
    void everyBitStandsForOneTouch();
    void seatBits_data();
    void seatBits();
    void seatDirections_data();
    void seatDirections();
    void seatWalk();
    void seatsStepAsTheyAreReported();
    void ventCycle();
    void bytesAreClearedWhole();
    void digits();
    void singleCommands_data();
    void singleCommands();
};

void tst_ClimateKeys::keysWithABit_data()
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

void tst_ClimateKeys::keysWithABit()
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

void tst_ClimateKeys::everyBitStandsForOneTouch()
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
                QVERIFY(add(seatUpBit(group, *key)));
                QVERIFY(add(seatDownBit(group, *key)));
            }
        }
    }
    for (int index = 0; index < ventModeCount; ++index)
        QVERIFY(add(ventCommandBit(index)));
    QVERIFY(add(toSecondZoneBit));
    QVERIFY(add(toFrontZoneBit));
    QCOMPARE(seen.size(), 23 + 16 + 4 + 2);
}

void tst_ClimateKeys::seatBits_data()
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

void tst_ClimateKeys::seatBits()
{
    QFETCH(ClimateGroup, group);
    QFETCH(int, id);
    QFETCH(int, byte);
    QFETCH(int, up);
    QFETCH(int, down);
    const auto key = seatKey(group, id);
    QVERIFY(key);
    QVERIFY(!commandBit(group, id));
    QCOMPARE(seatUpBit(group, *key).byte, byte);
    QCOMPARE(seatUpBit(group, *key).value, up);
    QCOMPARE(seatDownBit(group, *key).byte, byte);
    QCOMPARE(seatDownBit(group, *key).value, down);
}

void tst_ClimateKeys::seatDirections_data()
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

void tst_ClimateKeys::seatDirections()
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

void tst_ClimateKeys::seatWalk()
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

static QList<int> listWith(const QMap<int, int> &elements)
{
    QList<int> list = QVector<int>(23, 0).toList();
    for (auto it = elements.cbegin(); it != elements.cend(); ++it)
        list[it.key()] = it.value();
    return list;
}

/** The bits that a touch sends. */
static QMap<int, int> bitsOf(ClimateModel *model, ClimateGroup group, int id)
{
    model->clearBytes();
    model->touch(group, id);
    QMap<int, int> set = model->bytes();
    for (auto it = set.begin(); it != set.end();)
        it = it.value() ? it + 1 : set.erase(it);
    return set;
}

void tst_ClimateKeys::seatsStepAsTheyAreReported()
{
    using Bits = QMap<int, int>;
    static constexpr int leftCool = 12, leftCool2 = 6, rightHeat = 11, rightHeat2 = 5;
    ClimateModel model;
    model.setStatus(listWith({{9, 19}, {10, 3}, {15, 2}}));
    QCOMPARE(bitsOf(&model, ClimateGroup::AutoDualIcon, leftCool), (Bits{{7, 128}}));
    QCOMPARE(bitsOf(&model, ClimateGroup::AutoDualIcon, rightHeat), (Bits{{6, 4}}));
    QCOMPARE(bitsOf(&model, ClimateGroup::ManualIcon, rightHeat2), (Bits{{9, 4}})); // one flag
    model.setStatus(listWith({{9, 16}, {14, 16}}));
    QCOMPARE(bitsOf(&model, ClimateGroup::ManualIcon, leftCool2), (Bits{{9, 2}})); // not at 16
    QCOMPARE(bitsOf(&model, ClimateGroup::AutoDualIcon, leftCool), (Bits{{7, 64}}));
}

void tst_ClimateKeys::ventCycle()
{
    static constexpr int ventKey = 6;
    ClimateModel model;
    QList<int> values;
    for (int touch = 0; touch < 4; ++touch)
        values.append(bitsOf(&model, ClimateGroup::AutoDualIcon, ventKey).value(6));
    QCOMPARE(values, (QList<int>{64, 32, 128, 16}));
    model.followVentMode(Layout::Manual, 1); // has an index of its own
    QCOMPARE(bitsOf(&model, ClimateGroup::AutoDualIcon, ventKey).value(6), 64);
    model.followVentMode(Layout::AutoDual, 3);
    model.followVentMode(Layout::AutoDual, 99);
    QCOMPARE(bitsOf(&model, ClimateGroup::AutoDualIcon, ventKey).value(6), 128);
}

void tst_ClimateKeys::bytesAreClearedWhole()
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

void tst_ClimateKeys::digits()
{
    QCOMPARE(ListIntToString({}), QString());
    QCOMPARE(ListIntToString({1, 0, 0, 1}), QStringLiteral("1001"));
    QCOMPARE(ListIntToString({12, -3}), QStringLiteral("12-3"));
}

void tst_ClimateKeys::singleCommands_data()
{
    QTest::addColumn<ClimateGroup>("group");
    QTest::addColumn<int>("held");    // ids below this one are held
    QTest::addColumn<int>("clicked"); // the others below this one are clicked
    QTest::newRow("manual text") << ClimateGroup::ManualText << 0 << 2;
    QTest::newRow("manual icon") << ClimateGroup::ManualIcon << 4 << 14;
    QTest::newRow("auto/dual text") << ClimateGroup::AutoDualText << 0 << 4;
    QTest::newRow("auto/dual icon") << ClimateGroup::AutoDualIcon << 6 << 16;
}

void tst_ClimateKeys::singleCommands()
{
    QFETCH(ClimateGroup, group);
    QFETCH(int, held);
    QFETCH(int, clicked);
    for (int id = -1; id <= 20; ++id) {
        QCOMPARE(heldCommand(group, id) != nullptr, id >= 0 && id < held);
        QCOMPARE(clickedCommand(group, id) != nullptr, id >= held && id < clicked && id >= 0);
        const bool isText =
            group == ClimateGroup::ManualText || group == ClimateGroup::AutoDualText;
        const bool isCustom = isText && (id == clicked || id == clicked + 1);
        QCOMPARE(customKey(group, id).value_or(-1), isCustom ? id - clicked : -1);
    }
}

NORDA_TEST_MAIN(tst_ClimateKeys)
#include "tst_climatekeys.moc"
