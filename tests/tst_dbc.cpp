#include "dbc/dbc.h"
#include "dbcfiles.h"
#include "testmain.h"

using namespace module;

/** DBC files: what is read of them, what is remarked on and what is refused. */
class tst_Dbc : public QObject
{
    Q_OBJECT
private slots:
    void readsMessagesAndSignals();
    void readsValueNames();
    void readsMultiplexing();
    void texts_data();
    void texts();
    void passesOver_data();
    void passesOver();
    void remarks_data();
    void remarks();
    void furtherRemarksAreCounted();
    void malformed_data();
    void malformed();
    void unreadableFiles();
    void largeFile();
    void realFile();

private:
};

static const QByteArray engine = "BO_ 100 Engine: 8 Unit\n"
                                 " SG_ Speed : 7|16@0+ (0.25,0) [0|16000] \"rpm\" Dash,Gateway\n"
                                 " SG_ Coolant : 16|8@1- (1,-40) [-40|215] \"C\" Dash\n";

void tst_Dbc::readsMessagesAndSignals()
{
    const Dbc dbc = parsed<Dbc>("VERSION \"1.0\"\n" + engine +
                                "BO_ 2565868078 Long: 64 Unit\n"
                                " SG_ Ratio : 256|32@1- (1E-3,+.5) [-1e+6|1E6] \"\" Dash\n"
                                " SG_ Exact:320|64@1-(1,0)[0|0]\"\"\n"
                                "SIG_VALTYPE_ 2565868078 Ratio : 1;\n"
                                "SIG_VALTYPE_ 2565868078 Exact 2 ;\n");
    QCOMPARE(dbc.remarks(), QStringList());
    QCOMPARE(dbc.messages().size(), 2);
    QCOMPARE(dbc.signalCount(), 4);
    const DbcMessage &first = dbc.messages().at(0);
    QCOMPARE(first.id, 100u);
    QCOMPARE(first.name, QStringLiteral("Engine"));
    QCOMPARE(first.length, 8);
    const DbcSignal &speed = first.fields.at(first.indexOf(QStringLiteral("Speed")));
    QCOMPARE(speed.startBit, 7);
    QCOMPARE(speed.length, 16);
    QCOMPARE(speed.byteOrder, DbcSignal::ByteOrder::BigEndian);
    QCOMPARE(speed.type, DbcSignal::Type::Unsigned);
    QCOMPARE(speed.factor, 0.25);
    QCOMPARE(speed.maximum, 16000.0);
    QCOMPARE(speed.unit, QStringLiteral("rpm"));
    QCOMPARE(first.fields.at(1).type, DbcSignal::Type::Signed);
    QCOMPARE(first.fields.at(1).offset, -40.0);
    QCOMPARE(first.indexOf(QStringLiteral("Oil")), -1);

    const DbcMessage &second =
        dbc.messages().at(dbc.indexOf(0x18F00A2E | DbcMessage::extendedFlag));
    QCOMPARE(second.length, 64);
    QCOMPARE(second.fields.at(0).type, DbcSignal::Type::Float);
    QCOMPARE(second.fields.at(0).factor, 0.001);
    QCOMPARE(second.fields.at(0).offset, 0.5);
    QCOMPARE(second.fields.at(1).type, DbcSignal::Type::Double);
    QCOMPARE(dbc.indexOf(0x18F00A2E), -1);
    QCOMPARE(dbc.places(QStringLiteral("Exact")).size(), 1);
    QVERIFY(dbc.places(QStringLiteral("Oil")).isEmpty());
}

void tst_Dbc::readsValueNames()
{
    const Dbc dbc =
        parsed<Dbc>("VAL_TABLE_ OnOff 1 \"On\" 0 \"Off\" ;\n" + engine +
                    "BO_ 101 Lamp: 2 Unit\n SG_ Light : 0|1@1+ (1,0) [0|1] \"\" Dash\n"
                    " SG_ Word : 8|8@1- (1,0) [0|1] \"\" Dash\n"
                    "VAL_ 100 Coolant 255 \"not available\" -2 \"a \\\"cold\\\" one\" 3 \"warm\";\n"
                    "VAL_ 101 Light OnOff ;\n"
                    "VAL_ 101 Word 18446744073709551615 \"none\" ;\n"
                    "VAL_ Variable 0 \"Off\" ;\n");
    QCOMPARE(dbc.remarks(), QStringList());
    const QVector<DbcValue> coolant = dbc.messages().at(0).fields.at(1).values;
    QCOMPARE(valueName(coolant, -1), QStringLiteral("not available")); // 255 in 8 bits with a sign
    QCOMPARE(valueName(coolant, -2), QStringLiteral("a \"cold\" one"));
    QCOMPARE(valueName(coolant, 3), QStringLiteral("warm"));
    QCOMPARE(valueName(coolant, 4), QString());
    QCOMPARE(valueName(dbc.messages().at(1).fields.at(0).values, 1), QStringLiteral("On"));
    QCOMPARE(valueName(dbc.messages().at(1).fields.at(1).values, -1), QStringLiteral("none"));
}

void tst_Dbc::readsMultiplexing()
{
    const Dbc dbc = parsed<Dbc>("BO_ 1 M: 8 Unit\n"
                                " SG_ Selected m3 : 8|8@1+ (1,0) [0|0] \"\" Dash\n"
                                " SG_ Inner m1M : 8|4@1+ (1,0) [0|0] \"\" Dash\n"
                                " SG_ Root M : 0|8@1+ (1,0) [0|0] \"\" Dash\n"
                                " SG_ Deep m9 : 16|8@1+ (1,0) [0|0] \"\" Dash\n"
                                "SG_MUL_VAL_ 1 Deep Inner 2-2, 4-7;\n"
                                "SG_MUL_VAL_ 1 Inner Root 1-1 ;\n");
    QCOMPARE(dbc.remarks(), QStringList());
    const QVector<DbcSignal> fields = dbc.messages().at(0).fields;
    QCOMPARE(fields.at(0).multiplexor, 2);
    QCOMPARE(fields.at(0).selectedBy.constFirst().from, 3);
    QCOMPARE(fields.at(1).multiplexor, 2);
    QVERIFY(fields.at(1).isMultiplexor);
    QCOMPARE(fields.at(2).multiplexor, -1);
    QCOMPARE(fields.at(3).multiplexor, 1);
    QCOMPARE(fields.at(3).selectedBy.size(), 2);
    QCOMPARE(fields.at(3).selectedBy.at(1).to, 7);
}

void tst_Dbc::texts_data()
{
    QTest::addColumn<QByteArray>("unit");
    QTest::addColumn<QString>("read");
    QTest::newRow("plain") << QByteArray("km/h") << "km/h";
    QTest::newRow("empty") << QByteArray() << "";
    QTest::newRow("Latin-1") << QByteArray("\xB0"
                                           "C")
                             << QStringLiteral("\u00B0C");
    QTest::newRow("Latin-1 at the end") << QByteArray("\xE9") << QStringLiteral("\u00E9");
    QTest::newRow("UTF-8") << QByteArray("\xC2\xB0"
                                         "C")
                           << QStringLiteral("\u00B0C");
    QTest::newRow("quotes") << QByteArray("a \\\"b\\\"") << "a \"b\"";
}

void tst_Dbc::texts()
{
    QFETCH(QByteArray, unit);
    QFETCH(QString, read);
    const Dbc dbc =
        parsed<Dbc>("BO_ 1 M: 8 U\n SG_ S : 0|8@1+ (1,0) [0|0] \"" + unit + "\" Dash\n");
    QCOMPARE(dbc.messages().at(0).fields.at(0).unit, read);
}

void tst_Dbc::passesOver_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    const QByteArray none;
    QTest::newRow("nothing") << none << none;
    QTest::newRow("a byte order mark") << QByteArray("\xEF\xBB\xBF") << none;
    QTest::newRow("new symbols") << QByteArray("NS_ :\n\tNS_DESC_\n\tCM_\n\tVAL_\n\tSG_MUL_VAL_\n\n"
                                               "BS_:\n\nBU_: Dash Unit\n")
                                 << none;
    QTest::newRow("new symbols on one line") << QByteArray("NS_: CM_ VAL_ BS_:\n") << none;
    QTest::newRow("new symbols alone") << QByteArray("NS_ : CM_ VAL_\n") << none;
    QTest::newRow("a baud rate") << QByteArray("BS_: 500 : 1, 2\n") << none;
    QTest::newRow("nodes on several lines") << QByteArray("BU_: A B\n  C\n  D\n") << none;
    QTest::newRow("a comment") << none << QByteArray("CM_ \"one\";\n");
    QTest::newRow("a comment of several lines")
        << none << QByteArray("CM_ BO_ 100 \"one\nBO_ 7 X: 8 Y\n;\n \\\"SG_\\\" two\";\n");
    QTest::newRow("two on a line") << none << QByteArray("CM_ \"one\"; CM_ \"two\"; BU_: A\n");
    QTest::newRow("attributes") << none
                                << QByteArray("BA_DEF_ BO_ \"Cycle\" INT 0 1000;\n"
                                              "BA_DEF_DEF_ \"Cycle\" 100;\n"
                                              "BA_ \"Cycle\" BO_ 100 10;\n"
                                              "BA_DEF_REL_ BU_SG_REL_ \"T\" INT 0 65535;\n");
    QTest::newRow("an environment variable")
        << none << QByteArray("EV_ Door: 0 [0|1] \"\" 0 1 DUMMY_NODE_VECTOR0 Vector__XXX;\n");
    QTest::newRow("groups and senders") << none
                                        << QByteArray("SIG_GROUP_ 100 Both 1 : Speed Coolant;\n"
                                                      "BO_TX_BU_ 100 : A,B;\n");
    QTest::newRow("a missing semicolon")
        << none << QByteArray("CM_ \"one\"\nVAL_ 100 Speed 0 \"x\";\n");
    QTest::newRow("signals of no message")
        << none
        << QByteArray("BO_ 3221225472 VECTOR__INDEPENDENT_SIG_MSG: 0 Vector__XXX\n"
                      " SG_ Lost : 0|8@1+ (1,0) [0|0] \"\" Vector__XXX\n"
                      "VAL_ 3221225472 Lost 0 \"x\";\n");
    QTest::newRow("no line end at the end") << none << QByteArray("BS_:");
    QTest::newRow("a zero byte at the end") << none << QByteArray("\n\0", 2);
}

void tst_Dbc::passesOver()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    for (const bool isWindows : {false, true}) {
        QByteArray content = before + engine + after;
        if (isWindows)
            content.replace("\n", "\r\n");
        const Dbc dbc = parsed<Dbc>(content);
        QCOMPARE(dbc.remarks(), QStringList());
        QCOMPARE(dbc.messages().size(), 1);
        QCOMPARE(dbc.signalCount(), 2);
    }
}

void tst_Dbc::remarks_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("remark");
    QTest::addColumn<int>("count"); // of signals left
    const QByteArray bytes = " SG_ A : 0|8@1+ (1,0) [0|0] \"\" D\n";
    QTest::newRow("two messages of one identifier")
        << QByteArray("BO_ 1 M: 8 U\n" + bytes + "BO_ 1 N: 8 U\n" + bytes)
        << "line 3: message N is left out: M has the identifier 1 already" << 1;
    QTest::newRow("two messages of one name")
        << QByteArray("BO_ 1 M: 8 U\n" + bytes + "BO_ 2 M: 8 U\n" + bytes)
        << "line 3: another message is called M too" << 2;
    QTest::newRow("two signals of one name")
        << QByteArray("BO_ 1 M: 8 U\n" + bytes + bytes)
        << "line 3: signal A of M is left out: the message has one of this name already" << 1;
    QTest::newRow("overlap") << QByteArray("BO_ 1 M: 8 U\n" + bytes +
                                           " SG_ B : 15|16@0+ (1,0) [0|0] \"\" D\n"
                                           " SG_ C : 20|8@1+ (1,0) [0|0] \"\" D\n")
                             << "line 4: signal C of M shares bits with B" << 3;
    QTest::newRow("selected signals that overlap what is always there")
        << QByteArray("BO_ 1 M: 8 U\n SG_ R M : 8|8@1+ (1,0) [0|0] \"\" D\n" + bytes +
                      " SG_ B m1 : 0|4@1+ (1,0) [0|0] \"\" D\n"
                      " SG_ C m2 : 16|4@1+ (1,0) [0|0] \"\" D\n"
                      " SG_ E m3 : 16|4@1+ (1,0) [0|0] \"\" D\n")
        << "line 4: signal B of M shares bits with A" << 5;
    QTest::newRow("ranges that meet")
        << QByteArray("BO_ 1 M: 8 U\n SG_ R M : 8|8@1+ (1,0) [0|0] \"\" D\n"
                      " SG_ B m1 : 0|4@1+ (1,0) [0|0] \"\" D\n"
                      " SG_ C m2 : 0|4@1+ (1,0) [0|0] \"\" D\n"
                      "SG_MUL_VAL_ 1 B R 1-1, 5-9;\nSG_MUL_VAL_ 1 C R 2-5;\n")
        << "line 4: signal C of M shares bits with B" << 3;
    QTest::newRow("too long for its message")
        << QByteArray("BO_ 1 M: 1 U\n SG_ A : 4|8@1+ (1,0) [0|0] \"\" D\n")
        << "line 2: signal A does not fit into the 1 bytes of M" << 1;
    QTest::newRow("too long for its message, big-endian")
        << QByteArray("BO_ 1 M: 1 U\n SG_ A : 6|8@0+ (1,0) [0|0] \"\" D\n")
        << "line 2: signal A does not fit into the 1 bytes of M" << 1;
    QTest::newRow("beyond any frame")
        << QByteArray("BO_ 1 M: 64 U\n SG_ A : 505|8@1+ (1,0) [0|0] \"\" D\n" + bytes)
        << "line 2: signal A of M is left out: it lies beyond 64 bytes" << 1;
    QTest::newRow("too wide")
        << QByteArray("BO_ 1 M: 64 U\n SG_ B : 8|65@1+ (1,0) [0|0] \"\" D\n" + bytes)
        << "line 2: signal B of M is left out: expected at most 64 bits, found 65" << 1;
    QTest::newRow("a message of several frames")
        << QByteArray("BO_ 1 M: 65 U\n" + bytes + "BO_ 2 N: 8 U\n" + bytes)
        << "line 1: message M is left out: expected at most 64 bytes, found 65" << 1;
    QTest::newRow("an identifier that is not marked as long")
        << QByteArray("BO_ 2048 M: 8 U\n" + bytes + "VAL_ 2048 A 0 \"x\";\n")
        << "line 1: 2048 is taken as an identifier of 29 bits" << 1;
    QTest::newRow("an identifier of 30 bits")
        << QByteArray("BO_ 2684354560 M: 8 U\n" + bytes + "BO_ 2 N: 8 U\n" + bytes)
        << "line 1: message M is left out: expected an identifier of at most 29 bits, found "
           "2684354560"
        << 1;
    QTest::newRow("names for an unknown signal")
        << QByteArray("BO_ 1 M: 8 U\n" + bytes + "VAL_ 1 B 0 \"x\";\n")
        << "line 3: VAL_ names B, a signal that message 1 lacks" << 1;
    QTest::newRow("a type for an unknown message")
        << QByteArray("BO_ 1 M: 8 U\n" + bytes + "SIG_VALTYPE_ 2 A : 1;\n")
        << "line 3: SIG_VALTYPE_ names A, a signal that message 2 lacks" << 1;
    QTest::newRow("an unknown table")
        << QByteArray("BO_ 1 M: 8 U\n" + bytes + "VAL_ 1 A OnOff ;\n")
        << "line 3: VAL_ names OnOff, a table that the file lacks" << 1;
}

void tst_Dbc::remarks()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, remark);
    QFETCH(int, count);
    const Dbc dbc = parsed<Dbc>(content);
    QCOMPARE(dbc.remarks(), QStringList(remark));
    QCOMPARE(dbc.signalCount(), count);
}

void tst_Dbc::furtherRemarksAreCounted()
{
    QByteArray content = engine;
    for (int i = 0; i < 103; ++i)
        content += "VAL_ 100 Oil 0 \"x\";\n";
    const Dbc dbc = parsed<Dbc>(content);
    QCOMPARE(dbc.remarks().size(), 101);
    QCOMPARE(dbc.remarks().constLast(), QStringLiteral("3 further remarks"));
}

void tst_Dbc::malformed_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const QByteArray &content, const char *message) {
        QTest::newRow(name) << content << QString::fromLatin1(message);
    };
    const auto signal = [&row](const char *name, const QByteArray &line, const char *message) {
        row(name, "BO_ 1 M: 8 U\n SG_ " + line + "\n", message);
    };
    row("empty", "", "line 1: expected at least one message (BO_), found the end of the file");
    row("no message", "VERSION \"\"\nBU_:\n",
        "line 3: expected at least one message (BO_), found the end of the file");
    row("another format", "Time,Engine RPM\n1,2\n",
        "line 1: expected a statement such as BO_, SG_ or VAL_, found 'Time,Engine RPM'");
    row("noise", QByteArray("\x01-\x02", 3),
        "line 1: expected a statement such as BO_, SG_ or VAL_, found '?-?'");
    row("an unknown statement", engine + "FOO_ 1;\n",
        "line 4: expected a statement such as BO_, SG_ or VAL_, found 'FOO_ 1;'");
    row("a signal before any message", "\n SG_ A : 0|8@1+ (1,0) [0|0] \"\" D\n",
        "line 2: expected a message (BO_) before its signals, found 'A : 0|8@1+ (1,0) [0|0] \"\" "
        "D'");
    row("no identifier", "BO_ Engine: 8 U\n",
        "line 1: expected a message's identifier, found 'Engine: 8 U'");
    row("an identifier of 33 bits", "BO_ 4294967296 M: 8 U\n",
        "line 1: expected a message's identifier, found '4294967296 M: 8 U'");
    row("a message without a name", "BO_ 1 : 8 U\n",
        "line 1: expected a message's name, found ': 8 U'");
    row("a message without a colon", "BO_ 1 M 8 U\n", "line 1: expected ':', found '8 U'");
    row("a message without a length", "BO_ 1 M: U\n",
        "line 1: expected a length in bytes, found 'U'");
    row("a message with a negative length", "BO_ 1 M: -8 U\n",
        "line 1: expected a length in bytes, found '-8 U'");
    row("noise after a message", "BO_ 1 M: 8 U $\n",
        "line 1: expected the name of a node, found '$'");
    signal("a signal without a name", ": 0|8@1+ (1,0) [0|0] \"\" D",
           "line 2: expected a signal's name, found ': 0|8@1+ (1,0) [0|0] \"\" D'");
    signal("a wrong multiplexing mark", "A x1 : 0|8@1+",
           "line 2: expected M, or m and a number, or ':', found 'x1 : 0|8@1+'");
    signal("a multiplexing mark without a number", "A m : 0|8@1+",
           "line 2: expected M, or m and a number, or ':', found 'm : 0|8@1+'");
    signal("no start bit", "A : |8@1+", "line 2: expected a start bit, found '|8@1+'");
    signal("no length", "A : 0@1+", "line 2: expected '|', found '@1+'");
    signal("a length of 0", "A : 0|0@1+ (1,0)",
           "line 2: expected a length of at least 1 bit, found '0@1+ (1,0)'");
    signal("a wrong byte order", "A : 0|8@2+ (1,0)",
           "line 2: expected a byte order, 0 or 1, found '2+ (1,0)'");
    signal("no sign", "A : 0|8@1 (1,0)", "line 2: expected a sign, '+' or '-', found '(1,0)'");
    signal("a factor that is none", "A : 0|8@1+ (one,0)",
           "line 2: expected a factor, found 'one,0)'");
    signal("an infinite factor", "A : 0|8@1+ (inf,0)", "line 2: expected a factor, found 'inf,0)'");
    signal("a factor beyond numbers", "A : 0|8@1+ (1e999,0)",
           "line 2: expected a factor, found '1e999,0)'");
    signal("no offset", "A : 0|8@1+ (1)", "line 2: expected ',', found ')'");
    signal("no limits", "A : 0|8@1+ (1,0) \"\" D", "line 2: expected '[', found '\"\" D'");
    signal("no unit", "A : 0|8@1+ (1,0) [0|0] D", "line 2: expected a unit in quotes, found 'D'");
    signal("a unit that does not end", "A : 0|8@1+ (1,0) [0|0] \"km D",
           "line 2: expected a unit in quotes, found '\"km D'");
    signal("noise after a signal", "A : 0|8@1+ (1,0) [0|0] \"km\" D ?",
           "line 2: expected the name of a node, found '?'");
    row("a comment that does not end", engine + "CM_ \"one\nBO_ 1 M: 8 U\n",
        "line 4: expected a text that ends, found '\"one'");
    row("a value that is no number", engine + "VAL_ 100 Speed 0 \"a\" -\n",
        "line 4: expected a whole number or ';', found '-'");
    row("a value that is too large", engine + "VAL_ 100 Speed 99999999999999999999 \"a\";\n",
        "line 4: expected a whole number or ';', found '99999999999999999999 \"a\";'");
    row("a value without a name", engine + "VAL_ 100 Speed 0 ;\n",
        "line 4: expected a value's name in quotes, found ';'");
    row("values that do not end", engine + "VAL_ 100 Speed 0 \"a\"\n",
        "line 5: expected a whole number or ';', found the end of the file");
    row("a wrong type", engine + "SIG_VALTYPE_ 100 Speed : 3;\n",
        "line 4: expected 0 for whole numbers, 1 for float or 2 for double, found '3;'");
    row("a float of 16 bits", engine + "SIG_VALTYPE_ 100 Speed : 1;\n",
        "line 4: expected Speed with 32 bits, found 16");
    row("a double of 16 bits", engine + "SIG_VALTYPE_ 100 Speed : 2;\n",
        "line 4: expected Speed with 64 bits, found 16");
    signal("selected by nothing", "A m1 : 0|8@1+ (1,0) [0|0] \"\" D",
           "line 2: expected one multiplexor (M) in M for A, found none");
    signal("selected by two",
           "A m1 : 0|8@1+ (1,0) [0|0] \"\" D\n SG_ B M : 8|8@1+ (1,0) [0|0] \"\" D\n"
           " SG_ C M : 16|8@1+ (1,0) [0|0] \"\" D",
           "line 2: expected one multiplexor (M) in M for A, found several");
    signal("overlapping multiplexor",
           "A m1 : 4|8@1+ (1,0) [0|0] \"\" D\n SG_ B M : 0|8@1+ (1,0) [0|0] \"\" D",
           "line 2: expected bits of its own for A, found it to share some with its multiplexor B");
    signal("selected in a circle",
           "A m1M : 8|8@1+ (1,0) [0|0] \"\" D\n SG_ B m1M : 0|8@1+ (1,0) [0|0] \"\" D\n"
           "SG_MUL_VAL_ 1 A B 1-1;\nSG_MUL_VAL_ 1 B A 1-1;",
           "line 2: expected at most 16 multiplexors above A, found more or a circle");
    row("no multiplexor", engine + "SG_MUL_VAL_ 100 Speed Coolant 1-1;\n",
        "line 4: expected a multiplexor of Engine, found Coolant");
    row("an unknown multiplexor", engine + "SG_MUL_VAL_ 100 Speed Oil 1-1;\n",
        "line 4: expected a multiplexor of Engine, found Oil");
    row("a range the wrong way round", engine + "SG_MUL_VAL_ 100 Speed Coolant 5-3;\n",
        "line 4: expected the last value of a range, found '3;'");
    QByteArray many = "BO_ 1 M: 8 U\n";
    for (int i = 0; i <= Dbc::MostSignals; ++i)
        many += " SG_ S" + QByteArray::number(i) + " : 0|1@1+ (1,0) [0|0] \"\" D\n";
    row("too many signals", many, "line 4098: expected at most 4096 signals in a message");
}

void tst_Dbc::malformed()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    QCOMPARE(parseError<Dbc>(content), message);
}

void tst_Dbc::unreadableFiles()
{
    QTemporaryDir folder;
    QCOMPARE(readError<Dbc>(folder.path()), QStringLiteral("expected a file, found a directory"));
    QVERIFY(readError<Dbc>(folder.filePath("none.dbc")).startsWith("expected a readable file: "));
    QFile file(folder.filePath("large.dbc"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(Dbc::LargestFile + 1));
    QCOMPARE(readError<Dbc>(file.fileName()), QStringLiteral("expected at most 64 MB"));
}

/** 10 MB in many messages, and in the fewest, where each signal is compared with each. */
void tst_Dbc::largeFile()
{
    for (const int perMessage : {20, Dbc::MostSignals}) {
        QByteArray content;
        int signalCount = 0;
        for (int message = 1; content.size() < 10 << 20; ++message) {
            content += "BO_ " + QByteArray::number(0x80000000u + unsigned(message)) + " Message" +
                       QByteArray::number(message) + ": 64 Unit\n";
            for (int i = 0; i < perMessage; ++i, ++signalCount)
                content += " SG_ Signal" + QByteArray::number(i) + " : " +
                           QByteArray::number(i * 8 % 512) +
                           "|8@1+ (0.5,-40) [0|255] \"km/h\" Dash\n";
        }
        QElapsedTimer timer;
        timer.start();
        const Dbc dbc = parsed<Dbc>(content);
        const qint64 ms = timer.elapsed();
        qInfo("%d MB with %d signals in %d ms", content.size() >> 20, signalCount, int(ms));
        QCOMPARE(dbc.signalCount(), signalCount);
        QVERIFY2(ms < 20000,
                 "a file of 10 MB takes too long"); // under sanitizers and emulation too
    }
}

void tst_Dbc::realFile()
{
    const QString path = dbcFile("Model3CAN.dbc");
    if (!QFile::exists(path))
        QSKIP("this DBC file is not on this machine");
    QString error;
    const auto dbc = Dbc::read(path, &error);
    QVERIFY2(dbc, qPrintable(error));
    QCOMPARE(dbc->messages().size(), 159);
    QCOMPARE(dbc->signalCount(), 2752);
    QCOMPARE(dbc->remarks(), QStringList());
    const QVector<DbcPlace> places = dbc->places(QStringLiteral("DI_gear"));
    QCOMPARE(places.size(), 1);
    const DbcMessage &message = dbc->messages().at(places.constFirst().message);
    QCOMPARE(message.id, 280u);
    QCOMPARE(valueName(message.fields.at(places.constFirst().signal).values, 4),
             QStringLiteral("DI_GEAR_D"));
}

NORDA_TEST_MAIN(tst_Dbc)
#include "tst_dbc.moc"
