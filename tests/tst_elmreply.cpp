#include "live/elmreply.h"
#include "testmain.h"

using namespace module;

/** What adapters write, one line each, and in pieces. */
class tst_ElmReply : public QObject
{
    Q_OBJECT
private slots:
    void frames_data();
    void frames();
    void oldFrames_data();
    void oldFrames();
    void words_data();
    void words();
    void ignoresEmptyLines_data();
    void ignoresEmptyLines();
    void echoes_data();
    void echoes();
    void collectsReplies_data();
    void collectsReplies();
    void dropsWhatNeverEnds();
};

void tst_ElmReply::frames_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<quint32>("id");
    QTest::addColumn<QByteArray>("data");
    const QByteArray mask = "064100be3fa813";
    QTest::newRow("11 bits") << QByteArray("7E8064100BE3FA813") << 0x7E8u << mask;
    QTest::newRow("11 bits, spaces") << QByteArray("7E8 06 41 00 BE 3F A8 13 ") << 0x7E8u << mask;
    QTest::newRow("small letters") << QByteArray("7e8064100be3fa813") << 0x7E8u << mask;
    QTest::newRow("29 bits") << QByteArray("18DAF110064100BE3FA813") << 0x18DAF110u << mask;
    QTest::newRow("29 bits, spaces")
        << QByteArray("18 DA F1 10 06 41 00 BE 3F A8 13") << 0x18DAF110u << mask;
    QTest::newRow("whole frame") << QByteArray("7E81014490201314434") << 0x7E8u
                                 << QByteArray("1014490201314434");
    QTest::newRow("after searching")
        << QByteArray("SEARCHING...7E8064100BE3FA813") << 0x7E8u << mask;
    QTest::newRow("after the start of the bus")
        << QByteArray("BUS INIT: ...OK7E8064100BE3FA813") << 0x7E8u << mask;
    QTest::newRow("bytes of zero in between")
        << QByteArray("7E8064100\0BE3FA813", 18) << 0x7E8u << mask;
    QTest::newRow("half a line") << QByteArray("7E8064100BE") << 0x7E8u << QByteArray("064100be");
}

void tst_ElmReply::frames()
{
    QFETCH(QByteArray, line);
    QFETCH(quint32, id);
    const auto parsed = parseElmLine(line);
    QVERIFY(parsed);
    QCOMPARE(parsed->kind, ElmLine::Frame);
    QCOMPARE(parsed->frame.id, id);
    QCOMPARE(parsed->frame.isExtended, id > 0x7FF);
    QTEST(parsed->frame.data.toHex(), "data");
}

void tst_ElmReply::oldFrames_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<quint32>("sender");
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("ISO 9141") << QByteArray("48 6B 10 41 00 BE 3E B8 11 FA") << 0x10u
                              << QByteArray("4100be3eb811");
    QTest::newRow("ISO 14230") << QByteArray("84F110410C1AF8E4") << 0x10u << QByteArray("410c1af8");
    QTest::newRow("J1850 PWM") << QByteArray("416B10410D3244") << 0x10u << QByteArray("410d32");
}

void tst_ElmReply::oldFrames()
{
    QFETCH(QByteArray, line);
    const auto parsed = parseElmLine(line);
    QVERIFY(parsed);
    QCOMPARE(parsed->kind, ElmLine::OldFrame);
    QTEST(parsed->frame.id, "sender");
    QTEST(parsed->frame.data.toHex(), "data");
}

void tst_ElmReply::words_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("failure");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *line, ElmLine::Kind kind, ObdFailure failure,
                        const char *text) {
        QTest::newRow(line) << QByteArray(line) << int(kind) << int(failure) << QString(text);
    };
    const auto failure = [&row](const char *line, ObdFailure kind, const char *text) {
        row(line, ElmLine::Failure, kind, text);
    };
    const auto plain = [&row](const char *line, ElmLine::Kind kind) {
        row(line, kind, ObdFailure::NoAnswer, line);
    };
    plain("OK", ElmLine::Ok);
    plain("?", ElmLine::Refused);
    plain("ELM327 v1.5", ElmLine::Restarted);
    plain("LV RESET", ElmLine::Restarted);
    plain("12.3V", ElmLine::Text);
    plain("ISO 15765-4 (CAN 11/500)", ElmLine::Text);
    plain("A6", ElmLine::Text);
    plain("7E8", ElmLine::Text);
    plain("+CME: 3", ElmLine::Text);
    plain("41 0C 1A F8", ElmLine::Text);
    plain("7E8 06 41 00 BE 3F A8 13 00 00 00", ElmLine::Text);
    failure("NO DATA", ObdFailure::NoAnswer, "the car does not answer (NO DATA)");
    failure("NODATA", ObdFailure::NoAnswer, "the car does not answer (NO DATA)");
    failure("SEARCHING...NO DATA", ObdFailure::NoAnswer, "the car does not answer (NO DATA)");
    failure("UNABLE TO CONNECT", ObdFailure::NoBus,
            "no bus of a car was found (UNABLE TO CONNECT)");
    failure("CAN ERROR", ObdFailure::NoBus, "the car's bus does not take messages (CAN ERROR)");
    failure("BUS BUSY", ObdFailure::NoBus, "the car's bus is too busy (BUS BUSY)");
    failure("BUS ERROR", ObdFailure::NoBus, "the car's bus does not work (BUS ERROR)");
    failure("FB ERROR", ObdFailure::NoBus, "the adapter cannot drive the car's bus (FB ERROR)");
    failure("BUS INIT: ...ERROR", ObdFailure::NoBus,
            "the car's bus does not start (BUS INIT: ERROR)");
    failure("BUS INIT: ERROR", ObdFailure::NoBus, "the car's bus does not start (BUS INIT: ERROR)");
    failure("BUFFER FULL", ObdFailure::Damaged, "the adapter cannot keep up (BUFFER FULL)");
    failure("STOPPED", ObdFailure::Damaged, "the adapter was interrupted (STOPPED)");
    failure("<RX ERROR", ObdFailure::Damaged, "an answer was damaged (RX ERROR)");
    failure("7E8 06 41 00 <RX ERROR", ObdFailure::Damaged, "an answer was damaged (RX ERROR)");
    failure("7E8 06 41 <DATA ERROR", ObdFailure::Damaged, "an answer was damaged (DATA ERROR)");
    failure("DATA ERROR", ObdFailure::Damaged, "an answer was damaged (DATA ERROR)");
    failure("ERR94", ObdFailure::Damaged, "the adapter has a fault of its own (ERR)");
    failure("LP ALERT", ObdFailure::NoBus, "the adapter is about to sleep (LP ALERT)");
    failure("ACT ALERT", ObdFailure::NoBus, "the adapter is about to sleep (ACT ALERT)");
    row("\xff\x01 noise", ElmLine::Text, ObdFailure::NoAnswer, "?? noise");
}

void tst_ElmReply::words()
{
    QFETCH(QByteArray, line);
    const auto parsed = parseElmLine(line);
    QVERIFY(parsed);
    QTEST(int(parsed->kind), "kind");
    QTEST(int(parsed->failure), "failure");
    QTEST(parsed->text, "text");
}

void tst_ElmReply::ignoresEmptyLines_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("spaces") << QByteArray("   ");
    QTest::newRow("searching") << QByteArray("SEARCHING...");
    QTest::newRow("bus started") << QByteArray("BUS INIT: ...OK");
    QTest::newRow("bus starting") << QByteArray("BUS INIT: ...");
}

void tst_ElmReply::ignoresEmptyLines()
{
    QFETCH(QByteArray, line);
    QVERIFY(!parseElmLine(line));
}

void tst_ElmReply::echoes_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("isEcho");
    QTest::newRow("same") << QByteArray("010C1") << true;
    QTest::newRow("spaces") << QByteArray("01 0C 1") << true;
    QTest::newRow("small letters") << QByteArray("010c1") << true;
    QTest::newRow("another command") << QByteArray("010D1") << false;
    QTest::newRow("answer") << QByteArray("7E804410C1AF8") << false;
}

void tst_ElmReply::echoes()
{
    QFETCH(QByteArray, line);
    QTEST(isElmEcho(line, "010C1"), "isEcho");
}

void tst_ElmReply::collectsReplies_data()
{
    QTest::addColumn<QByteArrayList>("pieces");
    QTest::addColumn<QByteArrayList>("lines");
    QTest::addColumn<QByteArray>("rest");
    QTest::newRow("at once") << QByteArrayList{"7E8 04 41\r\r>"} << QByteArrayList{"7E8 04 41"}
                             << QByteArray();
    QTest::newRow("byte by byte") << QByteArrayList{"O", "K", "\r", "\r", ">"}
                                  << QByteArrayList{"OK"} << QByteArray();
    QTest::newRow("line feeds") << QByteArrayList{"ATZ\r\r\n\r\nELM327 v1.5\r\n\r\n>"}
                                << QByteArrayList{"ATZ", "ELM327 v1.5"} << QByteArray();
    QTest::newRow("nothing but a prompt")
        << QByteArrayList{"\r>"} << QByteArrayList() << QByteArray();
    QTest::newRow("not yet") << QByteArrayList{"SEARCHING..."} << QByteArrayList()
                             << QByteArray("SEARCHING...");
    QTest::newRow("start of the next")
        << QByteArrayList{"OK\r>7E8"} << QByteArrayList{"OK"} << QByteArray("7E8");
    QTest::newRow("bytes of zero")
        << QByteArrayList{QByteArray("OK\r\0\r>", 6)} << QByteArrayList{"OK"} << QByteArray();
}

void tst_ElmReply::collectsReplies()
{
    QFETCH(QByteArrayList, pieces);
    ElmReader reader;
    for (const QByteArray &piece : qAsConst(pieces))
        reader.add(piece);
    const QList<QByteArray> lines = reader.hasReply() ? reader.takeReply() : QList<QByteArray>();
    QTEST(lines, "lines");
    QTEST(reader.pending(), "rest");
    QVERIFY(!reader.hasReply());
}

void tst_ElmReply::dropsWhatNeverEnds()
{
    ElmReader reader;
    for (int i = 0; i < 1000; ++i)
        reader.add(QByteArray(1000, 'A'));
    QCOMPARE(reader.pending().size(), int(ElmReader::LongestReply));
    reader.add("\rOK\r>");
    QCOMPARE(reader.takeReply().last(), QByteArray("OK"));
}

NORDA_TEST_MAIN(tst_ElmReply)
#include "tst_elmreply.moc"
