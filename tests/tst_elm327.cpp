#include "live/elm327.h"
#include "testmain.h"

using namespace module;

/** The conversation with an adapter, in which every command has its time. */
class tst_Elm327 : public QObject
{
    Q_OBJECT
private slots:
    void identifiesAndSets();
    void acceptsClones_data();
    void acceptsClones();
    void refusesOtherDevices_data();
    void refusesOtherDevices();
    void answers_data();
    void answers();
    void countsFrames_data();
    void countsFrames();
    void withoutFrameCount();
    void isPatientWhileItSearches();
    void asksAgainWhenAnAnswerIsLost();
    void losesAnAdapterThatIsSilent();
    void losesAnAdapterThatNeverEnds_data();
    void losesAnAdapterThatNeverEnds();
    void waitsForALongReply();
    void startsAnewWithTheAdapter_data();
    void startsAnewWithTheAdapter();
};

static QStringList eventsOf(Elm327 *adapter)
{
    static const char *const kinds[] = {"ready", "answered", "failed", "lost"};
    QStringList lines;
    for (const ObdEvent &event : adapter->takeEvents()) {
        QStringList words = {QLatin1String(kinds[event.kind])};
        for (const ObdAnswer &answer : event.answers)
            words.append(QString::number(answer.ecu, 16) + QLatin1Char(' ') +
                         QString::fromLatin1(answer.message.toHex()));
        if (!event.text.isEmpty())
            words.append(event.text);
        lines.append(words.join(QLatin1Char(' ')));
    }
    return lines;
}

/** An adapter after its identification and settings. */
static Elm327 readyAdapter()
{
    Elm327 adapter;
    adapter.start(0);
    adapter.receive("\r\rELM327 v1.5\r\r>", 0);
    for (int i = 0; i < 6; ++i)
        adapter.receive("OK\r\r>", 0);
    adapter.takeBytes();
    adapter.takeEvents();
    return adapter;
}

/** The same, with a car. */
static Elm327 connectedAdapter()
{
    Elm327 adapter = readyAdapter();
    adapter.ask({QByteArray::fromHex("0100")}, 0);
    adapter.receive("7E8064100BE3FA813\r\r>", 0);
    adapter.takeBytes();
    adapter.takeEvents();
    return adapter;
}

void tst_Elm327::identifiesAndSets()
{
    Elm327 adapter;
    QCOMPARE(adapter.nextDueMs(), -1LL);
    adapter.start(0);
    QCOMPARE(adapter.takeBytes(), QByteArray("ATZ\r"));
    adapter.receive("ATZ\r\r\rELM327 v1.5\r\r>", 900);
    QCOMPARE(adapter.name(), QStringLiteral("ELM327 v1.5"));
    for (const char *command : {"ATE0\r", "ATL0\r", "ATS0\r", "ATH1\r", "ATAT1\r", "ATSP0\r"}) {
        QCOMPARE(adapter.takeBytes(), QByteArray(command));
        QCOMPARE(eventsOf(&adapter), QStringList());
        adapter.receive("OK\r\r>", 1000);
    }
    QCOMPARE(eventsOf(&adapter), QStringList{"ready"});
    QCOMPARE(adapter.takeBytes(), QByteArray());
    QCOMPARE(adapter.nextDueMs(), -1LL);
}

void tst_Elm327::acceptsClones_data()
{
    QTest::addColumn<QByteArrayList>("replies");
    const QByteArray ok = "OK\r\r>";
    const QByteArray no = "?\r\r>";
    const QByteArray name = "ELM327 v2.1\r\r>";
    QTest::newRow("with echoes") << QByteArrayList{
        "ATZ\r" + name, "ATE0\r" + ok, ok, ok, ok, ok, ok};
    QTest::newRow("without spaces, line feeds and adaptive timing")
        << QByteArrayList{name, ok, no, no, ok, no, ok};
    QTest::newRow("busy at first") << QByteArrayList{"STOPPED\r\r>", name, ok, ok, ok, ok, ok, ok};
    QTest::newRow("a stale answer first")
        << QByteArrayList{"7E804410C1AF8\r\r>", "\r>", name, ok, ok, ok, ok, ok, ok};
    QTest::newRow("a command that is damaged once")
        << QByteArrayList{name, no, ok, ok, ok, ok, ok, ok};
    QTest::newRow("another version with words around it")
        << QByteArrayList{"ELM327/Clone v1.4b\r\r>", ok, ok, ok, ok, ok, ok};
}

void tst_Elm327::acceptsClones()
{
    QFETCH(QByteArrayList, replies);
    Elm327 adapter;
    adapter.start(0);
    for (const QByteArray &reply : qAsConst(replies))
        adapter.receive(reply, 0);
    QCOMPARE(eventsOf(&adapter), QStringList{"ready"});
}

void tst_Elm327::refusesOtherDevices_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("event");
    QTest::newRow("silence") << QByteArray() << "lost expected an ELM327 adapter, got no answer";
    QTest::newRow("modem") << QByteArray("ATZ\r\r\nOK\r\n")
                           << "lost expected an ELM327 adapter, got 'ATZ OK'";
    QTest::newRow("another speed") << QByteArray("\xfe\x80\x00\xff", 4)
                                   << "lost expected an ELM327 adapter, got '?"
                                      "?"
                                      "?"
                                      "?'";
    QTest::newRow("another adapter")
        << QByteArray("OK\r\r>") << "lost expected an ELM327 adapter, got 'OK'";
    QTest::newRow("prompt alone") << QByteArray("\r>") << "lost expected an ELM327 adapter, got ''";
}

void tst_Elm327::refusesOtherDevices()
{
    QFETCH(QByteArray, reply);
    Elm327 adapter;
    adapter.start(0);
    for (qint64 nowMs = 0; adapter.nextDueMs() >= 0 && nowMs < 60000; nowMs += 100) {
        if (!adapter.takeBytes().isEmpty())
            adapter.receive(reply, nowMs);
        adapter.advance(nowMs);
    }
    QTEST(eventsOf(&adapter).join(QLatin1Char('|')), "event");
    QCOMPARE(adapter.nextDueMs(), -1LL);
}

void tst_Elm327::answers_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("event");
    const QByteArray rpm = "010c";
    QTest::newRow("11 bits") << rpm << QByteArray("7E804410C1AF8\r\r>") << "answered 7e8 410c1af8";
    QTest::newRow("29 bits") << rpm << QByteArray("18DAF11004410C1AF8\r\r>")
                             << "answered 18daf110 410c1af8";
    QTest::newRow("older bus") << rpm << QByteArray("48 6B 10 41 0C 1A F8 D2 \r\r>")
                               << "answered 10 410c1af8";
    QTest::newRow("echo and spaces")
        << rpm << QByteArray("010C\r7E8 04 41 0C 1A F8 \r\r>") << "answered 7e8 410c1af8";
    QTest::newRow("two units") << rpm << QByteArray("7E804410C1AF8\r7E904410C1AF0\r\r>")
                               << "answered 7e8 410c1af8 7e9 410c1af0";
    QTest::newRow("after searching")
        << rpm << QByteArray("SEARCHING...\r7E804410C1AF8\r\r>") << "answered 7e8 410c1af8";
    QTest::newRow("several frames")
        << QByteArray("03") << QByteArray("7E81008430301040143\r7E82101960000000000\r\r>")
        << "answered 7e8 4303010401430196";
    QTest::newRow("several frames of two units, mixed")
        << QByteArray("03")
        << QByteArray("7E81008430301040143\r7E902430000000000\r7E82101960000000000\r\r>")
        << "answered 7e9 4300 7e8 4303010401430196";
    QTest::newRow("refusal") << rpm << QByteArray("7E8037F0112\r\r>") << "answered 7e8 7f0112";
    QTest::newRow("one damaged, one not")
        << rpm << QByteArray("7E8 04 41 <RX ERROR\r7E904410C1AF0\r\r>") << "answered 7e9 410c1af0";
    QTest::newRow("no data") << rpm << QByteArray("NO DATA\r\r>")
                             << "failed the car does not answer (NO DATA)";
    QTest::newRow("no bus") << rpm << QByteArray("SEARCHING...\rUNABLE TO CONNECT\r\r>")
                            << "failed no bus of a car was found (UNABLE TO CONNECT)";
    QTest::newRow("damaged") << rpm << QByteArray("7E8 04 41 <RX ERROR\r\r>")
                             << "failed an answer was damaged (RX ERROR)";
    QTest::newRow("half a line") << rpm << QByteArray("7E804410C\r\r>")
                                 << "failed single frame: expected 4 bytes after the first, got 2";
    QTest::newRow("end missing") << QByteArray("03") << QByteArray("7E81008430301040143\r\r>")
                                 << "failed the end of a message is missing";
    QTest::newRow("answer to another request")
        << rpm << QByteArray("7E803410D20\r\r>") << "failed the answer is to another request";
    QTest::newRow("not understood")
        << rpm << QByteArray("?\r\r>") << "failed the adapter answers '?'";
    QTest::newRow("nothing") << rpm << QByteArray("\r>") << "failed the adapter answers nothing";
    QTest::newRow("noise") << rpm << QByteArray("HELLO\r\r>")
                           << "failed the adapter answers 'HELLO'";
}

void tst_Elm327::answers()
{
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, reply);
    Elm327 adapter = readyAdapter();
    adapter.ask({QByteArray::fromHex(request)}, 0);
    QCOMPARE(adapter.takeBytes(), request.toUpper() + '\r');
    for (const char c : qAsConst(reply)) {
        QCOMPARE(eventsOf(&adapter), QStringList());
        adapter.receive(QByteArray(1, c), 10);
    }
    QTEST(eventsOf(&adapter).join(QLatin1Char('|')), "event");
    QCOMPARE(adapter.nextDueMs(), -1LL);
}

void tst_Elm327::countsFrames_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<int>("answers");
    QTest::addColumn<QByteArray>("sent");
    const QByteArray rpm = "010c";
    QTest::newRow("not known") << rpm << 0 << QByteArray("010C\r");
    QTest::newRow("one") << rpm << 1 << QByteArray("010C1\r");
    QTest::newRow("nine") << rpm << 9 << QByteArray("010C9\r");
    QTest::newRow("more than a digit") << rpm << 10 << QByteArray("010C\r");
    QTest::newRow("of unknown length") << QByteArray("03") << 1 << QByteArray("03\r");
}

void tst_Elm327::countsFrames()
{
    QFETCH(QByteArray, request);
    QFETCH(int, answers);
    Elm327 adapter = readyAdapter();
    adapter.ask({QByteArray::fromHex(request), 0x7E8, answers}, 0);
    QTEST(adapter.takeBytes(), "sent");
}

void tst_Elm327::withoutFrameCount()
{
    Elm327 adapter = readyAdapter();
    adapter.ask({QByteArray::fromHex("010c"), 0x7E8, 1}, 0);
    QCOMPARE(adapter.takeBytes(), QByteArray("010C1\r"));
    adapter.receive("?\r\r>", 10);
    QCOMPARE(adapter.takeBytes(), QByteArray("010C\r"));
    adapter.receive("7E804410C1AF8\r\r>", 20);
    QCOMPARE(eventsOf(&adapter), QStringList{"answered 7e8 410c1af8"});
    adapter.ask({QByteArray::fromHex("010d"), 0x7E8, 1}, 30);
    QCOMPARE(adapter.takeBytes(), QByteArray("010D\r"));
}

void tst_Elm327::isPatientWhileItSearches()
{
    Elm327 adapter = readyAdapter();
    adapter.ask({QByteArray::fromHex("0100")}, 0);
    adapter.receive("SEARCHING", 100);
    adapter.receive("...", 5000);
    adapter.advance(30000);
    QCOMPARE(eventsOf(&adapter), QStringList());
    QVERIFY(adapter.nextDueMs() > 30000);
    adapter.receive("\r7E8064100BE3FA813\r\r>", 31000);
    QCOMPARE(eventsOf(&adapter), QStringList{"answered 7e8 4100be3fa813"});
    // Later only when it says so.
    adapter.ask({QByteArray::fromHex("010c")}, 40000);
    QVERIFY(adapter.nextDueMs() <= 42000);
    adapter.receive("BUS INIT: ", 41000);
    QVERIFY(adapter.nextDueMs() >= 71000);
}

void tst_Elm327::asksAgainWhenAnAnswerIsLost()
{
    Elm327 adapter = connectedAdapter();
    adapter.ask({QByteArray::fromHex("010c"), 0x7E8, 1}, 1000);
    QCOMPARE(adapter.takeBytes(), QByteArray("010C1\r"));
    QCOMPARE(adapter.nextDueMs(), 1500LL);
    adapter.receive("7E804", 1100); // and no more
    adapter.advance(1500);
    QCOMPARE(adapter.takeBytes(), QByteArray());
    adapter.advance(1600);
    QCOMPARE(adapter.takeBytes(), QByteArray("010C1\r"));
    adapter.receive("7E804410C1AF8\r\r>", 1650);
    QCOMPARE(eventsOf(&adapter), QStringList{"answered 7e8 410c1af8"});
}

void tst_Elm327::losesAnAdapterThatIsSilent()
{
    Elm327 adapter = connectedAdapter();
    adapter.ask({QByteArray::fromHex("010c"), 0x7E8, 1}, 0);
    int commands = 0;
    for (qint64 nowMs = 0; adapter.nextDueMs() >= 0; nowMs = adapter.nextDueMs()) {
        adapter.advance(nowMs);
        commands += adapter.takeBytes().count('\r');
    }
    QCOMPARE(commands, 3);
    QCOMPARE(eventsOf(&adapter), QStringList{"lost the adapter does not answer"});
}

void tst_Elm327::losesAnAdapterThatNeverEnds_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("pauseMs");
    QTest::addColumn<QString>("event");
    const QString flood = QStringLiteral("lost the adapter does not stop sending");
    QTest::newRow("all frames of a busy bus")
        << QByteArray("123 08 00 11 22 33 44 55 66 77\r").repeated(8) << 1 << flood;
    QTest::newRow("buffer full") << QByteArray("BUFFER FULL\r").repeated(20) << 1 << flood;
    QTest::newRow("no ends of lines") << QByteArray(1000, 'A') << 1 << flood;
    QTest::newRow("searching") << QByteArray("SEARCHING...\r").repeated(20) << 1 << flood;
    QTest::newRow("a character now and then")
        << QByteArray(".") << 400 << QStringLiteral("lost the adapter does not answer");
}

/** It is told to stop, three times in all, and nothing piles up meanwhile. */
void tst_Elm327::losesAnAdapterThatNeverEnds()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, pauseMs);
    Elm327 adapter = connectedAdapter();
    adapter.ask({QByteArray::fromHex("010c"), 0x7E8, 1}, 0);
    int commands = 0;
    int received = 0;
    for (qint64 nowMs = 0; adapter.nextDueMs() >= 0 && nowMs < 600000; nowMs += pauseMs) {
        commands += adapter.takeBytes().count('\r');
        adapter.receive(bytes, nowMs);
        adapter.advance(nowMs);
        received += bytes.size();
    }
    QCOMPARE(commands, 3);
    QTEST(eventsOf(&adapter).join(QLatin1Char('|')), "event");
    QVERIFY2(received <= 3 * ElmReader::LongestReply + 3 * bytes.size(),
             qPrintable(QString::number(received)));
}

/** The longest message of one unit. */
void tst_Elm327::waitsForALongReply()
{
    QByteArray reply = "7E81FFF430301040143\r";
    for (int i = 0; i < 585; ++i)
        reply += "7E82" + QByteArray::number((i + 1) % 16, 16) + "00000000000000\r";
    Elm327 adapter = connectedAdapter();
    adapter.ask({QByteArray::fromHex("03"), 0x7E8, 1}, 0);
    adapter.receive(reply + "\r>", 10);
    const QString event = eventsOf(&adapter).join(QLatin1Char('|'));
    QVERIFY2(event.startsWith("answered 7e8 430301040143"), qPrintable(event));
    QCOMPARE(event.size(), int(qstrlen("answered 7e8 ")) + 2 * 4095);
}

void tst_Elm327::startsAnewWithTheAdapter_data()
{
    QTest::addColumn<bool>("isAsking");
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("asking") << true << QByteArray("LV RESET\r\rELM327 v1.5\r\r>");
    QTest::newRow("at rest") << false << QByteArray("ELM327 v1.5\r\r>");
}

/** Its settings are gone. */
void tst_Elm327::startsAnewWithTheAdapter()
{
    QFETCH(bool, isAsking);
    QFETCH(QByteArray, reply);
    Elm327 adapter = connectedAdapter();
    if (isAsking)
        adapter.ask({QByteArray::fromHex("010c")}, 0);
    adapter.takeBytes();
    adapter.receive(reply, 10);
    QCOMPARE(eventsOf(&adapter), QStringList{"lost the adapter has started anew"});
    adapter.start(20);
    QCOMPARE(adapter.takeBytes(), QByteArray("ATZ\r"));
}

NORDA_TEST_MAIN(tst_Elm327)
#include "tst_elm327.moc"
