#include "dbc/framebuilder.h"
#include "dbc/framedecoder.h"
#include "dbcfiles.h"
#include "testmain.h"

using namespace module;

using Numbers = QMap<double, QVariant>;
using Frames = QList<QPair<qint64, int>>;
Q_DECLARE_METATYPE(Numbers)
Q_DECLARE_METATYPE(Frames)

/** Formulas, maps from a DBC file's signals to paths, and what both make of frames. */
class tst_DbcMap : public QObject
{
    Q_OBJECT
private slots:
    void formulas_data();
    void formulas();
    void badFormulas_data();
    void badFormulas();
    void readsTreesAndPaths();
    void malformed_data();
    void malformed();
    void badFile();
    void remarks();
    void binds();
    void values_data();
    void values();
    void paces_data();
    void paces();
    void realPair();

private:
    static QVector<PathValue> decoded(FrameDecoder *decoder, qint64 ms, quint32 id,
                                      const QByteArray &data)
    {
        return decoder->decode(ms, id, reinterpret_cast<const quint8 *>(data.constData()),
                               data.size());
    }
};

// ---- Formulas -----------------------------------------------------------------------------------

void tst_DbcMap::formulas_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Numbers>("values"); // invalid for none
    const auto row = [](const char *text, const Numbers &values) {
        QTest::newRow(text) << QString::fromLatin1(text) << values;
    };
    const QVariant none;
    row("x", {{-2.5, -2.5}});
    row("42", {{1, 42.0}});
    row(".5", {{1, 0.5}});
    row("1.5e3 + x", {{1, 1501.0}});
    row("x*1.8+32", {{100, 212.0}, {-40, -40.0}});
    row("32 + x * 1.8", {{100, 212.0}});
    row("(x+32)*1.8", {{68, 180.0}});
    row("10-x-3", {{2, 5.0}});
    row("100/x/5", {{2, 10.0}, {0, none}});
    row("-x", {{3, -3.0}});
    row("--x", {{3, 3.0}});
    row("-x*-2", {{3, 6.0}});
    row("2--x", {{3, 5.0}});
    row("-(x-5)", {{3, 2.0}});
    row("floor(x)", {{2.7, 2.0}, {-2.1, -3.0}});
    row("ceil(x)", {{2.1, 3.0}, {-2.7, -2.0}});
    row("abs(x)", {{-2.5, 2.5}, {2.5, 2.5}});
    row("round(x)", {{2.4, 2.0}, {2.6, 3.0}, {2.5, 2.0}, {3.5, 4.0}, {-2.5, -2.0}});
    row("floor((x*40)-100)", {{2.5, 0.0}, {5, 100.0}});
    row("floor(abs(x/5))", {{-23, 4.0}});
    row(" floor ( x\t) ", {{2.7, 2.0}});
    row("1/(x-1)", {{1, none}, {2, 1.0}});
    row("0/x", {{0, none}, {2, 0.0}});
    row("x*1e308", {{100, none}, {1, 1e308}});
    row("x+1", {{qInf(), none}, {qQNaN(), none}});
    row("1+2*(3-4/(x+1))*2-(6/3)", {{1, 3.0}});
}

void tst_DbcMap::formulas()
{
    QFETCH(QString, text);
    QFETCH(Numbers, values);
    QString error;
    const auto formula = Formula::compile(text, &error);
    QVERIFY2(formula, qPrintable(error));
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        const auto result = formula->evaluate(it.key());
        QCOMPARE(result.has_value(), it->isValid());
        if (result)
            QCOMPARE(*result, it->toDouble());
    }
}

void tst_DbcMap::badFormulas_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");
    const QString operand =
        QStringLiteral("column %1: expected a number, x, '(', floor, ceil, round or abs, found %2");
    const auto row = [](const char *name, const QString &text, const QString &message) {
        QTest::newRow(name) << text << message;
    };
    row("empty", "", operand.arg(1).arg("the end"));
    row("blank", "  ", operand.arg(3).arg("the end"));
    row("cut off", "x*", operand.arg(3).arg("the end"));
    row("no operation", "x 2", "column 3: expected an operation or the end, found '2'");
    row("an unknown operation", "x^2", "column 2: expected an operation or the end, found '^2'");
    row("an unknown function", "sqrt(x)", operand.arg(1).arg("'sqrt(x)'"));
    row("another variable", "y*2", operand.arg(1).arg("'y*2'"));
    row("in a circle", "Vehicle.Speed*2", operand.arg(1).arg("'Vehicle.Speed*2'"));
    row("a function without parentheses", "floor x", "column 7: expected '(', found 'x'");
    row("a function of two", "round(x,2)", "column 8: expected ')', found ',2)'");
    row("a parenthesis left open", "(x+1", "column 5: expected ')', found the end");
    row("a parenthesis too many", "x+1)", "column 4: expected an operation or the end, found ')'");
    row("empty parentheses", "()", operand.arg(2).arg("')'"));
    row("two operations", "x*/2", operand.arg(3).arg("'/2'"));
    row("a plus before a number", "+x", operand.arg(1).arg("'+x'"));
    row("no number", "1.2.3", "column 4: expected an operation or the end, found '.3'");
    row("a dot", ".", "column 1: expected a number, found '.'");
    row("beyond numbers", "1e999", "column 1: expected a number, found '1e999'");
    row("other letters", QStringLiteral("\u00FCx"), operand.arg(1).arg("'?x'"));
    row("too deep", QString(50, '(') + 'x' + QString(50, ')'),
        "column 51: expected at most 50 levels, found 'x" + QString(39, ')') + "...'");
    row("too deep by signs", QString(60, '-') + 'x',
        "column 51: expected at most 50 levels, found '----------x'");
    row("too long", QString(1001, 'x'), "expected at most 1000 characters, found 1001");
}

void tst_DbcMap::badFormulas()
{
    QFETCH(QString, text);
    QFETCH(QString, message);
    QString error;
    QVERIFY(!Formula::compile(text, &error));
    QCOMPARE(error, message);
}

// ---- Maps ---------------------------------------------------------------------------------------

void tst_DbcMap::readsTreesAndPaths()
{
    const SignalMap map = parsed<SignalMap>(R"json({
        "Vehicle": {"type": "branch", "children": {
            "Speed": {"datatype": "float", "dbc2vss": {"signal": "Kmh"}},
            "Cabin": {"children": {"Door": {"children": {"IsOpen": {"dbc2vss":
                {"signal": "DoorState", "on_change": true, "transform": {"mapping":
                    [{"from": "OPEN", "to": true}, {"from": 0, "to": false}]}}}}}}},
            "Width": {"type": "attribute"}}},
        "Vehicle.OBD.EngineLoad": {"dbc2vss":
            {"signal": "Load", "interval_ms": 100, "on_change": true,
             "transform": {"math": "floor(x/5)"}}},
        "Vehicle.OBD.Speed": {"vss2dbc": {"signal": "Kmh"}},
        "Comment": "not a path"})json");
    QCOMPARE(map.remarks(), QStringList());
    QCOMPARE(map.entries().size(), 3);
    const MapEntry &door = map.entries().at(0);
    QCOMPARE(door.path, QStringLiteral("Vehicle.Cabin.Door.IsOpen"));
    QCOMPARE(door.signal, QStringLiteral("DoorState"));
    QCOMPARE(door.intervalMs, 0);
    QVERIFY(door.onChange);
    QCOMPARE(door.transform.mapping.size(), 2);
    QCOMPARE(door.transform.mapping.at(0).from, QVariant(QStringLiteral("OPEN")));
    QCOMPARE(door.transform.mapping.at(0).to, QVariant(true));
    QCOMPARE(door.transform.mapping.at(1).from, QVariant(0.0));
    const MapEntry &load = map.entries().at(1);
    QCOMPARE(load.path, QStringLiteral("Vehicle.OBD.EngineLoad"));
    QCOMPARE(load.intervalMs, 100);
    QCOMPARE(*load.transform.math->evaluate(27), 5.0);
    const MapEntry &speed = map.entries().at(2);
    QCOMPARE(speed.path, QStringLiteral("Vehicle.Speed"));
    QCOMPARE(speed.intervalMs, 1000);
    QVERIFY(!speed.onChange);
    QVERIFY(!speed.transform.math && speed.transform.mapping.isEmpty());
}

void tst_DbcMap::malformed_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const QByteArray &content, const QString &message) {
        QTest::newRow(name) << content << message;
    };
    const auto entry = [&row](const char *name, const QByteArray &json, const QString &message) {
        row(name, "{\"A.B\": {\"dbc2vss\": " + json + "}}", "A.B: dbc2vss: expected " + message);
    };
    const QString none = QStringLiteral("expected paths with 'dbc2vss', as a tree or by path, "
                                        "found none");
    row("empty", "", "line 1: expected JSON: illegal value");
    row("another format", "VERSION \"\"\nBU_:\n", "line 1: expected JSON: illegal value");
    row("cut off", "{\n\"A\": {\n\"dbc2vss\": {", "line 3: expected JSON: unterminated object");
    row("a list", "[1, 2]", none);
    row("JSON of another kind", "{\"format\": \"norda-recording\", \"version\": 1}", none);
    row("a tree without signals", "{\"A\": {\"children\": {\"B\": {\"type\": \"sensor\"}}}}", none);
    row("a path twice",
        R"({"A": {"children": {"B": {"dbc2vss": {"signal": "S"}}}},
            "A.B": {"dbc2vss": {"signal": "S"}}})",
        "A.B: expected one entry, found two");
    row("a path that is none", R"({"A\nB": {"dbc2vss": {"signal": "S"}}})",
        "expected a path of letters, digits and dots, found 'A?B'");
    const QString name = QStringLiteral("the name of a signal as 'signal'");
    entry("no object", "\"S\"", name);
    entry("no signal", "{}", name);
    entry("a signal that is no text", R"({"signal": 5})", name);
    entry("a signal without a name", R"({"signal": ""})", name);
    entry("a signal of several lines", R"({"signal": "a\nb"})", name);
    const QString interval = QStringLiteral("milliseconds, up to a day, as 'interval_ms'");
    entry("an interval below 0", R"({"signal": "S", "interval_ms": -1})", interval);
    entry("an interval without end", R"({"signal": "S", "interval_ms": 1e12})", interval);
    entry("an interval that is a text", R"({"signal": "S", "interval_ms": "100"})", interval);
    entry("a change that is a text", R"({"signal": "S", "on_change": "yes"})",
          "true or false as 'on_change'");
    entry("a transform that is a text", R"({"signal": "S", "transform": "x"})",
          "an object as 'transform'");
    entry("an empty transform", R"({"signal": "S", "transform": {}})",
          "either 'math' or 'mapping' in 'transform'");
    entry("both transforms", R"({"signal": "S", "transform": {"math": "x", "mapping": []}})",
          "either 'math' or 'mapping' in 'transform'");
    entry("a formula that is a number", R"({"signal": "S", "transform": {"math": 5}})",
          "a formula in x as 'math'");
    entry(
        "a bad formula", R"({"signal": "S", "transform": {"math": "x*"}})",
        "a formula in x as 'math': column 3: expected a number, x, '(', floor, ceil, round or abs, "
        "found the end");
    entry(
        "a formula in a circle", R"({"signal": "S", "transform": {"math": "A.B+1"}})",
        "a formula in x as 'math': column 1: expected a number, x, '(', floor, ceil, round or abs, "
        "found 'A.B+1'");
    entry("an empty table", R"({"signal": "S", "transform": {"mapping": []}})",
          "a list of 'from' and 'to' as 'mapping'");
    entry("a table that is an object", R"({"signal": "S", "transform": {"mapping": {"1": 2}}})",
          "a list of 'from' and 'to' as 'mapping'");
    entry("a row without from", R"({"signal": "S", "transform": {"mapping": [{"to": 2}]}})",
          "a number or a value's name as 'from' of row 1");
    entry("a row without to",
          R"({"signal": "S", "transform": {"mapping": [{"from": 1, "to": 2}, {"from": 2}]}})",
          "a number, a text, true or false as 'to' of row 2");
}

void tst_DbcMap::malformed()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    QCOMPARE(parseError<SignalMap>(content), message);
}

void tst_DbcMap::badFile()
{
    QCOMPARE(readError<SignalMap>(QDir::tempPath()),
             QStringLiteral("expected a file, found a directory"));
}

void tst_DbcMap::remarks()
{
    const SignalMap map = parsed<SignalMap>(R"({"A": {"dbc2vss": {"signal": "S", "intervall_ms": 1,
        "transform": {"math": "x", "unit": "m"}}}})");
    QCOMPARE(map.remarks(), QStringList({"A: 'intervall_ms' has no meaning here",
                                         "A: 'unit' has no meaning here"}));
}

// ---- Both together ------------------------------------------------------------------------------

static const QByteArray car = "BO_ 100 Door: 8 U\n"
                              " SG_ State : 0|8@1+ (1,0) [0|3] \"\" D\n"
                              " SG_ Level : 8|8@1- (0.5,0) [0|100] \"%\" D\n"
                              "BO_ 2147483748 Both: 8 U\n"
                              " SG_ State : 8|8@1+ (1,0) [0|3] \"\" D\n"
                              " SG_ Ratio : 32|32@1- (1,0) [0|0] \"\" D\n"
                              "SIG_VALTYPE_ 2147483748 Ratio : 1;\n"
                              "VAL_ 100 State 0 \"CLOSED\" 1 \"OPEN\" 2 \"AJAR\" ;\n"
                              "VAL_ 100 Level 255 \"SNA\" ;\n";

void tst_DbcMap::binds()
{
    const Dbc dbc = parsed<Dbc>(car);
    const SignalMap map = parsed<SignalMap>(R"({
        "A": {"dbc2vss": {"signal": "State", "transform": {"mapping":
            [{"from": "OPEN", "to": 1}, {"from": "BROKEN", "to": 2}]}}},
        "B": {"dbc2vss": {"signal": "Level"}},
        "C": {"dbc2vss": {"signal": "Oil"}},
        "D": {"dbc2vss": {"signal": "Level"}}})");
    const SignalBinding binding = bindSignals(map, dbc);
    QCOMPARE(binding.missing, QVector<int>{2});
    QCOMPARE(
        missingSignal(map.entries().at(2)),
        QStringLiteral("C: expected a signal of the DBC file, found 'Oil', which no message has"));
    QCOMPARE(binding.remarks,
             QStringList({"A: State is in 2 messages, all of which are read: Door, Both",
                          "A: expected a value's name of State in Door, found 'BROKEN'",
                          "A: expected a value's name of State in Both, found 'OPEN'",
                          "A: expected a value's name of State in Both, found 'BROKEN'"}));
    QStringList links;
    for (const SignalLink &link : binding.links)
        links.append(QStringLiteral("%1.%2>%3")
                         .arg(link.place.message)
                         .arg(link.place.signal)
                         .arg(link.entry));
    QCOMPARE(links, QStringList({"0.0>0", "0.1>1", "0.1>3", "1.0>0"}));
}

void tst_DbcMap::values_data()
{
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<quint32>("id");
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<QVariant>("value"); // invalid for none
    QTest::addColumn<QString>("name");
    const auto row = [](const char *name, const char *entry, quint32 id, const char *hex,
                        const QVariant &value, const char *valueName = "") {
        QTest::newRow(name) << QByteArray(entry) << id << QByteArray(hex) << value
                            << QString::fromLatin1(valueName);
    };
    static constexpr quint32 other = 100 | DbcMessage::extendedFlag;
    const QVariant none;
    const char *plain = R"({"signal": "Level"})";
    const char *ratio = R"({"signal": "Ratio"})";
    const char *math = R"({"signal": "Level", "transform": {"math": "10/x"}})";
    const char *table = R"({"signal": "State", "transform": {"mapping": [
        {"from": "OPEN", "to": true}, {"from": 0, "to": false}, {"from": 2, "to": "ajar"},
        {"from": 7, "to": -1.5}]}})";
    row("as it is", plain, 100, "0064", 50.0);
    row("with a sign", plain, 100, "00FE", -1.0);
    row("with a name", plain, 100, "00FF", -0.5, "SNA");
    row("floating point", ratio, other, "000000000000C03F", 1.5);
    row("floating point that is no number", ratio, other, "000000000000C07F", none);
    row("floating point without end", ratio, other, "000000000000807F", none);
    row("another message", plain, other, "0064", none);
    row("an unknown message", plain, 101, "0064", none);
    row("a frame too short", plain, 100, "00", none);
    row("a formula", math, 100, "000A", 2.0);
    row("a formula without a value", math, 100, "0000", none);
    row("a formula and a name", math, 100, "00FF", none);
    row("a table, by name", table, 100, "01", true);
    row("a table, by number", table, 100, "00", false);
    row("a table, by the number of a name", table, 100, "02", QStringLiteral("ajar"));
    row("a table, to a number", table, 100, "07", -1.5);
    row("a table without the value", table, 100, "03", none);
    row("a table, by a name of the other message", table, other, "0001", none);
    row("a table, by number in the other message", table, other, "0007", -1.5);
}

void tst_DbcMap::values()
{
    QFETCH(QByteArray, entry);
    QFETCH(quint32, id);
    QFETCH(QByteArray, hex);
    QFETCH(QVariant, value);
    QFETCH(QString, name);
    FrameDecoder decoder(parsed<SignalMap>("{\"A\": {\"dbc2vss\": " + entry + "}}"),
                         parsed<Dbc>(car));
    const QVector<PathValue> found = decoded(&decoder, 0, id, QByteArray::fromHex(hex));
    QCOMPARE(found.size(), int(value.isValid()));
    if (found.isEmpty())
        return;
    QCOMPARE(found.constFirst().entry, 0);
    QCOMPARE(found.constFirst().value, value);
    QCOMPARE(found.constFirst().value.type(), value.type());
    QCOMPARE(found.constFirst().name, name);
}

void tst_DbcMap::paces_data()
{
    QTest::addColumn<QByteArray>("pacing");
    QTest::addColumn<Frames>("frames"); // at a time, with a value
    QTest::addColumn<Frames>("told");
    const Frames frames = {{0, 1}, {400, 1}, {600, 2}, {1000, 2}, {1100, 1}, {1600, 1}, {2100, 1}};
    QTest::newRow("neither") << QByteArray() << frames << Frames{{0, 1}, {1000, 2}, {2100, 1}};
    QTest::newRow("an interval") << QByteArray(", \"interval_ms\": 500") << frames
                                 << Frames{{0, 1}, {600, 2}, {1100, 1}, {1600, 1}, {2100, 1}};
    QTest::newRow("each frame") << QByteArray(", \"interval_ms\": 0") << frames << frames;
    QTest::newRow("changes") << QByteArray(", \"on_change\": true") << frames
                             << Frames{{0, 1}, {600, 2}, {1100, 1}};
    QTest::newRow("changes at an interval")
        << QByteArray(", \"on_change\": true, \"interval_ms\": 1000") << frames
        << Frames{{0, 1}, {1000, 2}, {2100, 1}};
}

void tst_DbcMap::paces()
{
    QFETCH(QByteArray, pacing);
    QFETCH(Frames, frames);
    QFETCH(Frames, told);
    FrameDecoder decoder(
        parsed<SignalMap>("{\"A\": {\"dbc2vss\": {\"signal\": \"State\"" + pacing + "}}}"),
        parsed<Dbc>(car));
    for (int run = 0; run < 2; ++run) {
        Frames seen;
        for (const auto &frame : frames) {
            for (const PathValue &value :
                 decoded(&decoder, frame.first, 100, QByteArray(1, char(frame.second))))
                seen.append({frame.first, value.value.toInt()});
        }
        QCOMPARE(seen, told);
        decoder.reset();
    }
}

void tst_DbcMap::realPair()
{
    const QString dbcPath = dbcFile("Model3CAN.dbc");
    const QString mapPath = dbcFile("vss_dbc_4.2.json");
    if (!QFile::exists(dbcPath) || !QFile::exists(mapPath))
        QSKIP("this DBC file and its map are not on this machine");
    QString error;
    const auto dbc = Dbc::read(dbcPath, &error);
    QVERIFY2(dbc, qPrintable(error));
    const auto map = SignalMap::read(mapPath, &error);
    QVERIFY2(map, qPrintable(error));
    QCOMPARE(map->entries().size(), 35);
    QCOMPARE(map->remarks(), QStringList());
    const SignalBinding binding = bindSignals(*map, *dbc);
    QCOMPARE(binding.missing, QVector<int>());
    QCOMPARE(binding.links.size(), 36); // CP_hvChargeStatus is in two messages

    FrameDecoder decoder(*map, *dbc, binding);
    const auto tells = [&](const char *signal, const char *valueName, double value) {
        const DbcPlace place = dbc->places(QLatin1String(signal)).constFirst();
        const DbcMessage &message = dbc->messages().at(place.message);
        FrameBuilder builder(message);
        bool isSet = false;
        for (const DbcValue &named : message.fields.at(place.signal).values) {
            if (named.name == QLatin1String(valueName))
                isSet = builder.setRaw(place.signal, named.raw);
        }
        if (!isSet && !builder.set(place.signal, value))
            qFatal("%s cannot be set", signal);
        decoder.reset();
        QVariantMap told;
        for (const PathValue &told_ : decoded(&decoder, 0, message.id, builder.data()))
            told.insert(map->entries().at(told_.entry).path, told_.value);
        return told;
    };
    QCOMPARE(tells("VCLEFT_frontDoorState", "DOOR_STATE_OPEN_OR_AJAR", 0)
                 .value("Vehicle.Cabin.Door.Row1.DriverSide.IsOpen"),
             QVariant(true));
    QCOMPARE(tells("VCLEFT_frontDoorState", "DOOR_STATE_CLOSED", 0)
                 .value("Vehicle.Cabin.Door.Row1.DriverSide.IsOpen"),
             QVariant(false));
    const QVariantMap gear = tells("DI_gear", "DI_GEAR_R", 0);
    QCOMPARE(gear.value("Vehicle.Powertrain.Transmission.CurrentGear"), QVariant(-1.0));
    QCOMPARE(gear.value("Vehicle.Powertrain.Transmission.IsParkLockEngaged"), QVariant(false));
    QCOMPARE(tells("DI_uiSpeed", "", 88).value("Vehicle.Speed"), QVariant(88.0));
    QCOMPARE(tells("SteeringAngle129", "", -12.3).value("Vehicle.Chassis.SteeringWheel.Angle"),
             QVariant(-12.0));
    QCOMPARE(
        tells("VCLEFT_mirrorTiltXPosition", "", 3).value("Vehicle.Body.Mirrors.DriverSide.Pan"),
        QVariant(20.0));
    QCOMPARE(tells("RearPower266", "", -100).value("Vehicle.OBD.EngineLoad"), QVariant(20.0));
    QCOMPARE(
        tells("VCFRONT_tempAmbientFiltered", "", 21.5).value("Vehicle.OBD.AmbientAirTemperature"),
        QVariant(21.5));
}

NORDA_TEST_MAIN(tst_DbcMap)
#include "tst_dbcmap.moc"
