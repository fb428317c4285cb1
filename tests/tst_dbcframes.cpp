#include "dbc/framebuilder.h"
#include "dbc/frameplan.h"
#include "testmain.h"

#include <random>

using namespace module;

using Values = QMap<QString, double>;
Q_DECLARE_METATYPE(Values)

/** Frames taken apart and built by a DBC file. */
class tst_DbcFrames : public QObject
{
    Q_OBJECT
private slots:
    void values_data();
    void values();
    void carried_data();
    void carried();
    void decodesWhatIsWanted();
    void builds_data();
    void builds();
    void refusesWhatDoesNotFit_data();
    void refusesWhatDoesNotFit();
    void selectsWhatItSets();
    void roundTrip();

private:
    /** A message of so many bytes with these signals, and what else is stated about it. */
    static DbcMessage message(int length, const QByteArray &lines,
                              const QByteArray &statements = {})
    {
        QString error;
        const auto dbc = Dbc::parse("BO_ 1 M: " + QByteArray::number(length) + " U\n" + lines +
                                        "\n" + statements,
                                    QStringLiteral("car.dbc"), &error);
        if (!dbc)
            qFatal("%s", qPrintable(error));
        return dbc->messages().constFirst();
    }
    static std::vector<DecodedSignal> decoded(const FramePlan &plan, const QByteArray &data)
    {
        static const DecodingStep none;
        std::vector<DecodedSignal> found(size_t(plan.capacity()) + 1, {&none, 0xE7D});
        const int count = plan.decode(reinterpret_cast<const quint8 *>(data.constData()),
                                      data.size(), found.data());
        if (found.back().raw() != 0xE7D)
            qFatal("written behind the capacity");
        found.resize(size_t(count));
        return found;
    }
};

void tst_DbcFrames::values_data()
{
    QTest::addColumn<QByteArray>("layout");
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<qint64>("raw");
    QTest::addColumn<double>("value");
    const auto row = [](const char *name, const char *layout, const char *hex, qint64 raw,
                        double value, const char *type = "") {
        QTest::newRow(name) << QByteArray(layout) << QByteArray(type) << QByteArray(hex) << raw
                            << value;
    };
    row("a bit", "0|1@1+ (1,0)", "0100000000000000", 1, 1);
    row("the last bit", "63|1@1+ (1,0)", "0000000000000080", 1, 1);
    row("a byte", "8|8@1+ (1,-40)", "00FF000000000000", 255, 215);
    row("across bytes", "4|12@1+ (0.25,0)", "F0AB000000000000", 0xABF, 687.75);
    row("with a sign", "0|12@1- (1,0)", "00F8000000000000", -2048, -2048);
    row("with a sign, positive", "0|12@1- (1,0)", "FFF7000000000000", 2047, 2047);
    row("a negative factor", "0|8@1- (-0.5,1)", "FF00000000000000", -1, 1.5);
    row("big-endian", "7|16@0+ (0.25,0)", "1AF8000000000000", 6904, 1726);
    row("big-endian across bytes", "3|12@0+ (1,0)", "FABC000000000000", 0xABC, 0xABC);
    row("big-endian at the end", "50|11@0- (1,0)", "0000000000000400", -1024, -1024);
    row("64 bits", "0|64@1+ (1,0)", "FFFFFFFFFFFFFFFF", -1, 18446744073709551615.0);
    row("64 bits with a sign", "0|64@1- (1,0)", "FEFFFFFFFFFFFFFF", -2, -2);
    row("64 bits, big-endian", "7|64@0+ (1,0)", "0000000000000102", 258, 258);
    row("63 bits", "1|63@1+ (1,0)", "FEFFFFFFFFFFFFFF", 0x7FFFFFFFFFFFFFFF, 9223372036854775807.0);
    row("float", "0|32@1- (2,1)", "0000C03F", 0x3FC00000, 4, "SIG_VALTYPE_ 1 S : 1;");
    row("float, big-endian", "7|32@0- (1,0)", "BFC00000", 0xBFC00000, -1.5,
        "SIG_VALTYPE_ 1 S : 1;");
    row("double", "0|64@1- (1,0)", "000000000000F8BF", qint64(0xBFF8000000000000), -1.5,
        "SIG_VALTYPE_ 1 S : 2;");
    row("behind eight bytes", "504|8@1- (1,0)", QByteArray(126, '0') + "FE", -2, -2);
    row("across the eighth byte", "60|8@1+ (1,0)", "00000000000000700A000000", 0xA7, 0xA7);
    row("across the eighth byte, big-endian", "59|8@0+ (1,0)", "0000000000000007A0000000", 0x7A,
        0x7A);
    row("in nine bytes", "68|64@1+ (1,0)", "0000000000000000F0DEBC9A785634120F000000",
        qint64(0xF123456789ABCDEF), 17375808098319191535.0);
    row("in nine bytes, big-endian", "67|64@0- (1,0)", "00000000000000000F123456789ABCDEF0000000",
        qint64(0xF123456789ABCDEF), -1070935975390360081.0);
}

void tst_DbcFrames::values()
{
    QFETCH(QByteArray, layout);
    QFETCH(QByteArray, type);
    QFETCH(QByteArray, hex);
    QFETCH(qint64, raw);
    QFETCH(double, value);
    const QByteArray data = QByteArray::fromHex(hex);
    const DbcMessage described = message(data.size(), " SG_ S : " + layout + " [0|0] \"\" D", type);
    const FramePlan plan(described);
    QCOMPARE(plan.capacity(), 1);
    const auto found = decoded(plan, data);
    QCOMPARE(found.size(), size_t(1));
    QCOMPARE(found[0].raw(), raw);
    QCOMPARE(found[0].value(), value);

    // Building replaces what was there.
    QByteArray inverse = data;
    for (char &byte : inverse)
        byte = char(~byte);
    FrameBuilder builder(described);
    QVERIFY(builder.setRaw(0, decoded(plan, inverse)[0].raw()));
    QVERIFY(builder.setRaw(0, raw));
    QCOMPARE(decoded(plan, builder.data())[0].raw(), raw);
    QCOMPARE(builder.data().size(), data.size());
}

static const QByteArray nested = " SG_ Always : 56|8@1+ (1,0) [0|0] \"\" D\n"
                                 " SG_ Root M : 0|8@1- (1,0) [0|0] \"\" D\n"
                                 " SG_ One m1 : 8|8@1+ (1,0) [0|0] \"\" D\n"
                                 " SG_ Inner m2M : 8|8@1+ (1,0) [0|0] \"\" D\n"
                                 " SG_ Low m0 : 16|8@1+ (1,0) [0|0] \"\" D\n"
                                 " SG_ High m0 : 16|8@1+ (1,0) [0|0] \"\" D\n";
static const QByteArray ranges = "SG_MUL_VAL_ 1 Low Inner 0-3,9-9;\n"
                                 "SG_MUL_VAL_ 1 High Inner 4-8;\n"
                                 "SG_MUL_VAL_ 1 Inner Root 2-2;\n";

void tst_DbcFrames::carried_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<Values>("values");
    QTest::newRow("no value selected")
        << QByteArray("0512341122334455") << Values{{"Always", 0x55}, {"Root", 5}};
    QTest::newRow("a negative multiplexor")
        << QByteArray("FF12341122334455") << Values{{"Always", 0x55}, {"Root", -1}};
    QTest::newRow("one") << QByteArray("0112341122334455")
                         << Values{{"Always", 0x55}, {"Root", 1}, {"One", 0x12}};
    QTest::newRow("inner, low") << QByteArray("0203341122334455")
                                << Values{
                                       {"Always", 0x55}, {"Root", 2}, {"Inner", 3}, {"Low", 0x34}};
    QTest::newRow("inner, high") << QByteArray("0204341122334455")
                                 << Values{{"Always", 0x55},
                                           {"Root", 2},
                                           {"Inner", 4},
                                           {"High", 0x34}};
    QTest::newRow("inner, second range")
        << QByteArray("0209341122334455")
        << Values{{"Always", 0x55}, {"Root", 2}, {"Inner", 9}, {"Low", 0x34}};
    QTest::newRow("inner, none") << QByteArray("0212341122334455")
                                 << Values{{"Always", 0x55}, {"Root", 2}, {"Inner", 0x12}};
    QTest::newRow("too short for the last")
        << QByteArray("020934") << Values{{"Root", 2}, {"Inner", 9}, {"Low", 0x34}};
    QTest::newRow("too short for what is selected")
        << QByteArray("0209") << Values{{"Root", 2}, {"Inner", 9}};
    QTest::newRow("too short for the multiplexor inside")
        << QByteArray("02") << Values{{"Root", 2}};
    QTest::newRow("empty") << QByteArray() << Values{};
    QTest::newRow("longer than described") << QByteArray("0112341122334455FFFF")
                                           << Values{{"Always", 0x55}, {"Root", 1}, {"One", 0x12}};
    QTest::newRow("longer than any frame") << "0112341122334455" + QByteArray(200, 'F')
                                           << Values{{"Always", 0x55}, {"Root", 1}, {"One", 0x12}};
}

void tst_DbcFrames::carried()
{
    QFETCH(QByteArray, hex);
    QFETCH(Values, values);
    const DbcMessage described = message(8, nested, ranges);
    const FramePlan plan(described);
    Values seen;
    for (const DecodedSignal &signal : decoded(plan, QByteArray::fromHex(hex)))
        seen.insert(described.fields.at(signal.signal()).name, signal.value());
    QCOMPARE(seen, values);
}

/** What is not wanted still selects. */
void tst_DbcFrames::decodesWhatIsWanted()
{
    const DbcMessage described = message(8, nested, ranges);
    const FramePlan plan(described, {described.indexOf("High"), described.indexOf("Always")});
    QCOMPARE(plan.capacity(), 2);
    const auto selected = decoded(plan, QByteArray::fromHex("0204341122334455"));
    QCOMPARE(selected.size(), size_t(2));
    for (const DecodedSignal &signal : selected)
        QCOMPARE(signal.value(), signal.signal() == 0 ? 0x34 : 0x55);
    const auto other = decoded(plan, QByteArray::fromHex("0104341122334455"));
    QCOMPARE(other.size(), size_t(1));
    QCOMPARE(other[0].signal(), 1);
    QCOMPARE(FramePlan(described, {}).capacity(), 0);
    QVERIFY(decoded(FramePlan(described, {}), QByteArray::fromHex("0204341122334455")).empty());
}

void tst_DbcFrames::builds_data()
{
    QTest::addColumn<QByteArray>("layout");
    QTest::addColumn<double>("value");
    QTest::addColumn<QByteArray>("hex");
    QTest::newRow("whole") << QByteArray("8|8@1+ (1,-40)") << 83.0
                           << QByteArray("007b000000000000");
    QTest::newRow("to the next") << QByteArray("8|8@1+ (0.5,0)") << 1.3
                                 << QByteArray("0003000000000000");
    QTest::newRow("below zero") << QByteArray("8|8@1- (0.5,0)") << -1.3
                                << QByteArray("00fd000000000000");
    QTest::newRow("the lowest") << QByteArray("8|8@1- (1,0)") << -128.0
                                << QByteArray("0080000000000000");
    QTest::newRow("big-endian") << QByteArray("7|16@0+ (0.25,0)") << 1726.0
                                << QByteArray("1af8000000000000");
    QTest::newRow("64 bits") << QByteArray("0|64@1+ (1,0)") << 18446744073709549568.0
                             << QByteArray("00f8ffffffffffff");
    QTest::newRow("no factor") << QByteArray("8|8@1+ (0,7)") << 7.0
                               << QByteArray("0000000000000000");
}

void tst_DbcFrames::builds()
{
    QFETCH(QByteArray, layout);
    QFETCH(double, value);
    QFETCH(QByteArray, hex);
    FrameBuilder builder(message(8, " SG_ S : " + layout + " [0|0] \"\" D"));
    QVERIFY(builder.set(0, value));
    QCOMPARE(builder.data().toHex(), hex);
}

void tst_DbcFrames::refusesWhatDoesNotFit_data()
{
    QTest::addColumn<QByteArray>("layout");
    QTest::addColumn<double>("value");
    QTest::newRow("too high") << QByteArray("0|8@1+ (1,0)") << 256.0;
    QTest::newRow("too low") << QByteArray("0|8@1+ (1,0)") << -1.0;
    QTest::newRow("too high with a sign") << QByteArray("0|8@1- (1,0)") << 128.0;
    QTest::newRow("too low with a sign") << QByteArray("0|8@1- (1,0)") << -129.0;
    QTest::newRow("too high for 63 bits") << QByteArray("0|63@1+ (1,0)") << 9223372036854775808.0;
    QTest::newRow("too high for 64 bits") << QByteArray("0|64@1+ (1,0)") << 18446744073709551616.0;
    QTest::newRow("too low for 64 bits") << QByteArray("0|64@1- (1,0)") << -1e19;
    QTest::newRow("no number") << QByteArray("0|8@1+ (1,0)") << qQNaN();
    QTest::newRow("infinite") << QByteArray("0|8@1+ (1,0)") << qInf();
    QTest::newRow("outside the message") << QByteArray("60|8@1+ (1,0)") << 0.0;
}

void tst_DbcFrames::refusesWhatDoesNotFit()
{
    QFETCH(QByteArray, layout);
    QFETCH(double, value);
    FrameBuilder builder(message(8, " SG_ S : " + layout + " [0|0] \"\" D"));
    QVERIFY(!builder.set(0, value));
    QCOMPARE(builder.data(), QByteArray(8, '\0'));
}

void tst_DbcFrames::selectsWhatItSets()
{
    const DbcMessage described = message(8, nested, ranges);
    FrameBuilder builder(described);
    QVERIFY(builder.set(described.indexOf("High"), 0x34));
    QCOMPARE(builder.data().toHex(), QByteArray("0204340000000000"));
    QVERIFY(builder.set(described.indexOf("Inner"), 6));
    QVERIFY(builder.set(described.indexOf("High"), 0x35)); // selected already
    QCOMPARE(builder.data().toHex(), QByteArray("0206350000000000"));
    QVERIFY(builder.set(described.indexOf("One"), 1));
    QCOMPARE(builder.data().toHex(), QByteArray("0101350000000000"));

    // A multiplexor that cannot hold the value leaves all as it was.
    FrameBuilder narrow(message(8, " SG_ R M : 0|2@1+ (1,0) [0|0] \"\" D\n"
                                   " SG_ S m4 : 8|8@1+ (1,0) [0|0] \"\" D"));
    QVERIFY(!narrow.set(1, 1));
    QCOMPARE(narrow.data(), QByteArray(8, '\0'));
}

/** Random layouts in both byte orders: what is built into a random frame is what is decoded. */
void tst_DbcFrames::roundTrip()
{
    std::mt19937_64 random(1);
    for (int turn = 0; turn < 20000; ++turn) {
        const bool isBig = random() & 1;
        const bool isSigned = random() & 1;
        const int length = 1 + int(random() % 64);
        const int first = int(random() % unsigned(512 - length + 1)); // by the order of the bits
        DbcSignal field;
        field.name = QStringLiteral("S");
        field.length = length;
        field.startBit = isBig ? first / 8 * 8 + 7 - first % 8 : first;
        field.byteOrder =
            isBig ? DbcSignal::ByteOrder::BigEndian : DbcSignal::ByteOrder::LittleEndian;
        field.type = isSigned ? DbcSignal::Type::Signed : DbcSignal::Type::Unsigned;
        DbcMessage described;
        described.length = qMax((first + length + 7) / 8, int(random() % 64));
        described.fields = {field};

        // By the definition, bit by bit.
        QByteArray data(described.length, '\0');
        quint64 bits = 0;
        for (char &byte : data)
            byte = char(random());
        for (int i = 0; i < length; ++i) {
            const int at = first + i;
            const quint64 bit = uchar(data.at(at / 8)) >> (isBig ? 7 - at % 8 : at % 8) & 1;
            bits |= bit << (isBig ? length - 1 - i : i);
        }
        const bool isNegative = isSigned && bits >> (length - 1) & 1;
        const qint64 raw = qint64(isNegative && length < 64 ? bits | ~quint64(0) << length : bits);

        const FramePlan plan(described);
        const auto found = decoded(plan, data);
        QCOMPARE(found.size(), size_t(1));
        QCOMPARE(found[0].raw(), raw);
        FrameBuilder builder(described);
        QVERIFY(builder.setRaw(0, raw));
        QCOMPARE(decoded(plan, builder.data())[0].raw(), raw);
    }
}

NORDA_TEST_MAIN(tst_DbcFrames)
#include "tst_dbcframes.moc"
