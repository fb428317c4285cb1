#include "live/isotp.h"
#include "testmain.h"

using namespace module;

/** Messages over CAN frames, as a tester at 7E0 sends them and a car at 7E8 answers. */
class tst_IsoTp : public QObject
{
    Q_OBJECT
private slots:
    void sends_data();
    void sends();
    void receives_data();
    void receives();
    void separates_data();
    void separates();
    void timesOut_data();
    void timesOut();
    void waitsUntilFlowControl();
    void ignoresOtherIdentifiers_data();
    void ignoresOtherIdentifiers();
    void carriesEveryLength_data();
    void carriesEveryLength();
    void givesUpForANewMessage();
    void refusesLengths_data();
    void refusesLengths();
};

static constexpr quint32 tester = 0x7E0;
static constexpr quint32 car = 0x7E8;

static IsoTp testerEnd(const IsoTp::Timing &timing = IsoTp::Timing())
{
    return IsoTp({tester, car, false}, timing);
}

static CanFrame fromCar(const char *hex)
{
    return {car, false, QByteArray::fromHex(hex)};
}

/** The frames that are due, as hexadecimal words. */
static QByteArrayList sentBy(IsoTp *end)
{
    QByteArrayList words;
    for (const CanFrame &frame : end->takeFrames())
        words.append(frame.data.toHex());
    return words;
}

static QByteArrayList messagesOf(IsoTp *end)
{
    QByteArrayList words;
    for (const QByteArray &message : end->takeMessages())
        words.append(message.toHex());
    return words;
}

static QByteArray counting(int size)
{
    QByteArray message(size, '\0');
    for (int i = 0; i < size; ++i)
        message[i] = char(i);
    return message;
}

void tst_IsoTp::sends_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("padding");
    QTest::addColumn<QByteArray>("flowControl");
    QTest::addColumn<QByteArrayList>("frames");
    QTest::addColumn<QString>("error");

    const QByteArray all = "300000";
    const QByteArrayList none;
    QTest::newRow("single") << 2 << 0x55 << QByteArray() << QByteArrayList{"0200015555555555"}
                            << QString();
    QTest::newRow("single, padded with CC")
        << 2 << 0xCC << QByteArray() << QByteArrayList{"020001cccccccccc"} << QString();
    QTest::newRow("single, short")
        << 2 << -1 << QByteArray() << QByteArrayList{"020001"} << QString();
    QTest::newRow("longest single")
        << 7 << 0x55 << QByteArray() << QByteArrayList{"0700010203040506"} << QString();
    QTest::newRow("shortest of several frames")
        << 8 << 0x55 << all << QByteArrayList{"1008000102030405", "2106075555555555"} << QString();
    QTest::newRow("short last frame")
        << 8 << -1 << all << QByteArrayList{"1008000102030405", "210607"} << QString();
    QTest::newRow("flow control cut short")
        << 8 << 0x55 << QByteArray("3000") << QByteArrayList{"1008000102030405"} << QString();
    QTest::newRow("block of two") << 30 << -1 << QByteArray("300200")
                                  << QByteArrayList{"101e000102030405", "21060708090a0b0c",
                                                    "220d0e0f10111213"}
                                  << QString();
    QTest::newRow("wait") << 8 << 0x55 << QByteArray("310000") << QByteArrayList{"1008000102030405"}
                          << QString();
    QTest::newRow("overflow") << 8 << 0x55 << QByteArray("320000")
                              << QByteArrayList{"1008000102030405"}
                              << "the message of 8 bytes is too long for the other side";
    QTest::newRow("unknown flow status")
        << 8 << 0x55 << QByteArray("330000") << QByteArrayList{"1008000102030405"}
        << "flow control: expected a status of 0 to 2, got 3";
}

void tst_IsoTp::sends()
{
    QFETCH(int, size);
    QFETCH(int, padding);
    QFETCH(QByteArray, flowControl);
    IsoTp::Timing timing;
    timing.padding = padding;
    IsoTp end = testerEnd(timing);
    end.send(counting(size), 0);
    end.receive(fromCar(flowControl), 0);
    QTEST(sentBy(&end), "frames");
    QTEST(end.takeError(), "error");
}

void tst_IsoTp::receives_data()
{
    QTest::addColumn<QByteArrayList>("frames");
    QTest::addColumn<QByteArrayList>("messages");
    QTest::addColumn<QByteArrayList>("answers");
    QTest::addColumn<QString>("error");

    const QByteArrayList none;
    const QByteArrayList onward = {"3000005555555555"};
    QTest::newRow("single") << QByteArrayList{"03410d56aaaaaaaa"} << QByteArrayList{"410d56"}
                            << none << QString();
    QTest::newRow("single, short")
        << QByteArrayList{"03410d56"} << QByteArrayList{"410d56"} << none << QString();
    QTest::newRow("single of no bytes")
        << QByteArrayList{"00410d56aaaaaaaa"} << none << none << QString();
    QTest::newRow("single of eight bytes")
        << QByteArrayList{"08410d56aaaaaaaa"} << none << none << QString();
    QTest::newRow("single cut short") << QByteArrayList{"03410d"} << none << none
                                      << "single frame: expected 3 bytes after the first, got 2";
    QTest::newRow("no bytes") << QByteArrayList{""} << none << none << QString();
    QTest::newRow("unknown kind") << QByteArrayList{"43410d56aaaaaaaa"} << none << none
                                  << QString();
    QTest::newRow("several frames")
        << QByteArrayList{"100a490401020304", "2105060708aaaaaa"}
        << QByteArrayList{"49040102030405060708"} << onward << QString();
    QTest::newRow("last frame short")
        << QByteArrayList{"100a490401020304", "2105060708"}
        << QByteArrayList{"49040102030405060708"} << onward << QString();
    QTest::newRow("last frame too short") << QByteArrayList{"100a490401020304", "21050607"} << none
                                          << onward << "consecutive frame: expected 4 bytes, got 3";
    QTest::newRow("frame missing") << QByteArrayList{"1014490401020304", "2205060708090a0b"} << none
                                   << onward << "expected consecutive frame 1, got 2";
    QTest::newRow("frame twice") << QByteArrayList{"1014490401020304", "2105060708090a0b",
                                                   "2105060708090a0b"}
                                 << none << onward << "expected consecutive frame 2, got 1";
    QTest::newRow("consecutive without a first")
        << QByteArrayList{"2105060708090a0b"} << none << none << QString();
    QTest::newRow("first cut short")
        << QByteArrayList{"100a4904010203"} << none << none << QString();
    QTest::newRow("first of a message for a single")
        << QByteArrayList{"1007490401020304"} << none << none << QString();
    QTest::newRow("message longer than 4095 bytes")
        << QByteArrayList{"1000000100004904"} << none << QByteArrayList{"3200005555555555"}
        << "expected a message of at most 4095 bytes, got a longer one";
    QTest::newRow("another message before the end")
        << QByteArrayList{"1014490401020304", "03410d56"} << QByteArrayList{"410d56"} << onward
        << "expected 20 bytes of a message, got 6 and another message";
    QTest::newRow("flow control out of place")
        << QByteArrayList{"300000"} << none << none << QString();
    QTest::newRow("long CAN FD frame")
        << QByteArrayList{"0009410d56aaaaaaaaaaaa"} << none << none << QString();
}

void tst_IsoTp::receives()
{
    QFETCH(QByteArrayList, frames);
    IsoTp end = testerEnd();
    for (const QByteArray &frame : qAsConst(frames))
        end.receive(fromCar(frame), 0);
    QTEST(messagesOf(&end), "messages");
    QTEST(sentBy(&end), "answers");
    QTEST(end.takeError(), "error");
    QVERIFY(end.takeError().isEmpty());
}

void tst_IsoTp::separates_data()
{
    QTest::addColumn<QByteArray>("flowControl");
    QTest::addColumn<int>("gapMs");
    QTest::newRow("none") << QByteArray("300000") << 0;
    QTest::newRow("a millisecond") << QByteArray("300001") << 2;
    QTest::newRow("127 milliseconds") << QByteArray("30007f") << 128;
    QTest::newRow("100 microseconds") << QByteArray("3000f1") << 2;
    QTest::newRow("900 microseconds") << QByteArray("3000f9") << 2;
    QTest::newRow("reserved, low") << QByteArray("300080") << 128;
    QTest::newRow("reserved, below microseconds") << QByteArray("3000f0") << 128;
    QTest::newRow("reserved, high") << QByteArray("3000fa") << 128;
}

void tst_IsoTp::separates()
{
    QFETCH(QByteArray, flowControl);
    QFETCH(int, gapMs);
    IsoTp end = testerEnd();
    end.send(counting(20), 1000);
    QCOMPARE(end.takeFrames().size(), 1);
    end.receive(fromCar(flowControl), 1100);
    if (gapMs == 0) {
        QCOMPARE(end.takeFrames().size(), 2);
        QCOMPARE(end.nextDueMs(), -1LL);
        return;
    }
    QCOMPARE(end.takeFrames().size(), 1);
    QCOMPARE(end.nextDueMs(), 1100LL + gapMs);
    end.advance(1100 + gapMs - 1);
    QCOMPARE(end.takeFrames().size(), 0);
    end.advance(1100 + gapMs);
    QCOMPARE(end.takeFrames().size(), 1);
    QCOMPARE(end.nextDueMs(), -1LL);
}

void tst_IsoTp::timesOut_data()
{
    QTest::addColumn<bool>("isSending");
    QTest::addColumn<QByteArrayList>("frames");
    QTest::addColumn<QString>("error");
    QTest::newRow("no flow control")
        << true << QByteArrayList() << "no flow control within 1000 ms";
    QTest::newRow("no flow control for the next block")
        << true << QByteArrayList{"300100"} << "no flow control within 1000 ms";
    QTest::newRow("only one wait")
        << true << QByteArrayList{"310000"} << "no flow control within 1000 ms";
    QTest::newRow("no first consecutive frame")
        << false << QByteArrayList{"1014490401020304"} << "no consecutive frame 1 within 1000 ms";
    QTest::newRow("no second consecutive frame")
        << false << QByteArrayList{"1014490401020304", "2105060708090a0b"}
        << "no consecutive frame 2 within 1000 ms";
}

void tst_IsoTp::timesOut()
{
    QFETCH(bool, isSending);
    QFETCH(QByteArrayList, frames);
    IsoTp end = testerEnd();
    if (isSending)
        end.send(counting(40), 0);
    for (const QByteArray &frame : qAsConst(frames))
        end.receive(fromCar(frame), 0);
    QCOMPARE(end.nextDueMs(), 1000LL);
    end.advance(999);
    QVERIFY(end.takeError().isEmpty());
    end.advance(1000);
    QTEST(end.takeError(), "error");
    QCOMPARE(end.nextDueMs(), -1LL);
}

/** Each wait extends the time; the other side may not do so for ever. */
void tst_IsoTp::waitsUntilFlowControl()
{
    IsoTp end = testerEnd();
    end.send(counting(8), 0);
    for (int i = 1; i <= 10; ++i) {
        end.receive(fromCar("310000"), i * 900);
        QCOMPARE(end.nextDueMs(), i * 900LL + 1000);
    }
    QVERIFY(end.takeError().isEmpty());
    IsoTp patient = end;
    patient.receive(fromCar("300000"), 9100);
    QCOMPARE(patient.takeFrames().size(), 2);
    end.receive(fromCar("310000"), 9900);
    QCOMPARE(end.takeError(), QStringLiteral("the other side asked to wait 11 times"));
    QCOMPARE(end.nextDueMs(), -1LL);
}

void tst_IsoTp::ignoresOtherIdentifiers_data()
{
    QTest::addColumn<quint32>("id");
    QTest::addColumn<bool>("isExtended");
    QTest::newRow("another unit") << quint32(0x18DAF111) << true;
    QTest::newRow("the same in 11 bits") << quint32(0x10) << false;
    QTest::newRow("its own") << quint32(0x18DA10F1) << true;
}

void tst_IsoTp::ignoresOtherIdentifiers()
{
    QFETCH(quint32, id);
    QFETCH(bool, isExtended);
    IsoTp end({0x18DA10F1, 0x18DAF110, true});
    end.receive({id, isExtended, QByteArray::fromHex("03410d56")}, 0);
    QVERIFY(end.takeMessages().isEmpty());
    end.receive({0x18DAF110, true, QByteArray::fromHex("03410d56")}, 0);
    QCOMPARE(end.takeMessages().size(), 1);
    end.send("\x01", 0);
    const QVector<CanFrame> frames = end.takeFrames();
    QCOMPARE(frames.size(), 1);
    QCOMPARE(frames[0].id, quint32(0x18DA10F1));
    QVERIFY(frames[0].isExtended);
}

void tst_IsoTp::carriesEveryLength_data()
{
    QTest::addColumn<int>("blockSize");
    QTest::addColumn<int>("separationMs");
    QTest::newRow("all at once") << 0 << 0;
    QTest::newRow("blocks of one") << 1 << 0;
    QTest::newRow("blocks of three, separated") << 3 << 5;
    QTest::newRow("blocks of 255") << 255 << 0;
}

/** @return whether a frame went either way */
static bool exchange(IsoTp *left, IsoTp *right, qint64 nowMs)
{
    const QVector<CanFrame> toRight = left->takeFrames();
    for (const CanFrame &frame : toRight)
        right->receive(frame, nowMs);
    const QVector<CanFrame> toLeft = right->takeFrames();
    for (const CanFrame &frame : toLeft)
        left->receive(frame, nowMs);
    return !toRight.isEmpty() || !toLeft.isEmpty();
}

/** Two ends on one bus, whose time goes on when nobody sends. */
void tst_IsoTp::carriesEveryLength()
{
    QFETCH(int, blockSize);
    QFETCH(int, separationMs);
    IsoTp::Timing timing;
    timing.blockSize = blockSize;
    timing.separationMs = separationMs;
    for (const int size : {1, 6, 7, 8, 13, 14, 20, 21, 118, 119, 120, 4094, 4095}) {
        IsoTp from = testerEnd();
        IsoTp to({car, tester, false}, timing);
        qint64 nowMs = 0;
        from.send(counting(size), nowMs);
        for (bool isOver = false; !isOver;) {
            const bool isQuiet = !exchange(&from, &to, nowMs);
            isOver = isQuiet && from.nextDueMs() < 0;
            nowMs = isQuiet ? qMax(nowMs, from.nextDueMs()) : nowMs;
            from.advance(nowMs);
        }
        QCOMPARE(from.takeError() + to.takeError(), QString());
        QCOMPARE(to.takeMessages(), QVector<QByteArray>{counting(size)});
        QCOMPARE(to.nextDueMs(), -1LL);
    }
}

void tst_IsoTp::givesUpForANewMessage()
{
    IsoTp end = testerEnd();
    end.send(counting(20), 0);
    end.send(counting(1), 10);
    QCOMPARE(sentBy(&end), (QByteArrayList{"1014000102030405", "0100555555555555"}));
    QCOMPARE(end.nextDueMs(), -1LL);
    end.receive(fromCar("300000"), 20);
    QVERIFY(end.takeFrames().isEmpty());
}

void tst_IsoTp::refusesLengths_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("none") << 0;
    QTest::newRow("one too many") << 4096;
}

void tst_IsoTp::refusesLengths()
{
    QFETCH(int, size);
    IsoTp end = testerEnd();
    end.send(counting(size), 0);
    QCOMPARE(end.takeError(),
             QStringLiteral("expected a message of 1 to 4095 bytes to send, got %1").arg(size));
    QVERIFY(end.takeFrames().isEmpty());
    QCOMPARE(end.nextDueMs(), -1LL);
}

NORDA_TEST_MAIN(tst_IsoTp)
#include "tst_isotp.moc"
