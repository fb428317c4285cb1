#include "live/cantester.h"
#include "testmain.h"

using namespace module;

Q_DECLARE_METATYPE(module::CanFrame)

/** Requests to the control units of a car, and what their frames make of them. */
class tst_CanTester : public QObject
{
    Q_OBJECT
private slots:
    void identifiers_data();
    void identifiers();
    void asksAllUnits_data();
    void asksAllUnits();
    void endsWhenAllHaveAnswered();
    void fallsBackToLongIdentifiers();
    void asksOneUnit_data();
    void asksOneUnit();
    void failsToBeAnswered_data();
    void failsToBeAnswered();
    void readsSeveralFrames();
    void waitsForAUnitThatAsksForTime();
    void adaptsItsPatience();
    void keepsOutOfOtherConversations_data();
    void keepsOutOfOtherConversations();
};

static CanFrame frame(quint32 id, const char *hex)
{
    return {id, id > 0x7FF, QByteArray::fromHex(hex)};
}

static QByteArray bytes(const char *hex)
{
    return QByteArray::fromHex(hex);
}

/** The frames that are due, as lines. */
static QByteArrayList sentBy(CanTester *tester)
{
    QByteArrayList lines;
    for (const CanFrame &sent : tester->takeFrames())
        lines.append(QByteArray::number(sent.id, 16) + '#' + sent.data.toHex());
    return lines;
}

/** The events since the last time, as lines. */
static QStringList eventsOf(CanTester *tester)
{
    QStringList lines;
    for (const ObdEvent &event : tester->takeEvents()) {
        QStringList words = {event.text};
        for (const ObdAnswer &answer : event.answers)
            words.append(QString::number(answer.ecu, 16) + QLatin1Char(' ') +
                         QString::fromLatin1(answer.message.toHex()));
        if (event.kind == ObdEvent::OtherTester)
            words.append(QStringLiteral("other tester"));
        lines.append(words.join(QLatin1Char(' ')).trimmed());
    }
    return lines;
}

void tst_CanTester::identifiers_data()
{
    QTest::addColumn<quint32>("id");
    QTest::addColumn<bool>("isRequest");
    QTest::addColumn<bool>("isAnswer");
    QTest::newRow("to all") << 0x7DFu << true << false;
    QTest::newRow("to the first") << 0x7E0u << true << false;
    QTest::newRow("to the last") << 0x7E7u << true << false;
    QTest::newRow("of the first") << 0x7E8u << false << true;
    QTest::newRow("of the last") << 0x7EFu << false << true;
    QTest::newRow("beyond") << 0x7F0u << false << false;
    QTest::newRow("the car's own") << 0x123u << false << false;
    QTest::newRow("to all, long") << 0x18DB33F1u << true << false;
    QTest::newRow("to one, long") << 0x18DA10F1u << true << false;
    QTest::newRow("to one from another tester") << 0x18DA10F2u << true << false;
    QTest::newRow("of one, long") << 0x18DAF110u << false << true;
    QTest::newRow("the car's own, long") << 0x18FEF100u << false << false;
}

void tst_CanTester::identifiers()
{
    QFETCH(quint32, id);
    QTEST(isObdRequest(frame(id, "00")), "isRequest");
    QTEST(isObdAnswer(frame(id, "00")), "isAnswer");
}

void tst_CanTester::asksAllUnits_data()
{
    QTest::addColumn<QVector<CanFrame>>("frames");
    QTest::addColumn<QStringList>("events");
    const CanFrame engine = frame(0x7E8, "064100be3fa813aa");
    const CanFrame gearbox = frame(0x7E9, "064100800000aaaa");
    QTest::newRow("one") << QVector<CanFrame>{engine} << QStringList{"7e8 4100be3fa813"};
    QTest::newRow("two") << QVector<CanFrame>{gearbox, engine}
                         << QStringList{"7e9 4100800000aa 7e8 4100be3fa813"};
    QTest::newRow("answer to another request")
        << QVector<CanFrame>{frame(0x7E8, "04410c1af8aaaaaa"), engine}
        << QStringList{"7e8 4100be3fa813"};
    QTest::newRow("answer of another service")
        << QVector<CanFrame>{frame(0x7E8, "0643000102030405"), engine}
        << QStringList{"7e8 4100be3fa813"};
    QTest::newRow("identifier that is none of diagnosis")
        << QVector<CanFrame>{frame(0x7F8, "064100be3fa813aa"), engine}
        << QStringList{"7e8 4100be3fa813"};
    QTest::newRow("refusal") << QVector<CanFrame>{frame(0x7E8, "037f0111aaaaaaaa")}
                             << QStringList{"7e8 7f0111"};
}

void tst_CanTester::asksAllUnits()
{
    QFETCH(QVector<CanFrame>, frames);
    CanTester tester;
    QCOMPARE(tester.nextDueMs(), -1LL);
    tester.ask({bytes("0100")}, 1000);
    QCOMPARE(sentBy(&tester), QByteArrayList{"7df#0201005555555555"});
    for (const CanFrame &received : qAsConst(frames))
        tester.receive(received, 1020);
    QCOMPARE(eventsOf(&tester), QStringList()); // others may still answer
    QCOMPARE(tester.nextDueMs(), 1500LL);
    tester.advance(1500);
    QTEST(eventsOf(&tester), "events");
    QCOMPARE(tester.nextDueMs(), -1LL);
}

void tst_CanTester::endsWhenAllHaveAnswered()
{
    CanTester tester;
    tester.ask({bytes("0120"), 0, 2}, 0);
    tester.receive(frame(0x7E8, "064120be3fa813aa"), 10);
    QCOMPARE(eventsOf(&tester), QStringList());
    tester.receive(frame(0x7E9, "064120be3fa813aa"), 20);
    QCOMPARE(eventsOf(&tester), QStringList{"7e8 4120be3fa813 7e9 4120be3fa813"});
}

/** A car without answers to the short ones may have the long ones; once known, they are kept. */
void tst_CanTester::fallsBackToLongIdentifiers()
{
    CanTester tester;
    tester.ask({bytes("0100")}, 0);
    QCOMPARE(sentBy(&tester), QByteArrayList{"7df#0201005555555555"});
    tester.advance(500);
    QCOMPARE(sentBy(&tester), QByteArrayList{"18db33f1#0201005555555555"});
    tester.receive(frame(0x18DAF110, "064100be3fa813aa"), 510);
    tester.advance(1000);
    QCOMPARE(eventsOf(&tester), QStringList{"18daf110 4100be3fa813"});
    tester.ask({bytes("0120")}, 2000);
    QCOMPARE(sentBy(&tester), QByteArrayList{"18db33f1#0201205555555555"});
    tester.advance(2500);
    QCOMPARE(eventsOf(&tester), QStringList{"the car does not answer"});
    tester.ask({bytes("0100")}, 3000); // perhaps another car by now
    QCOMPARE(sentBy(&tester), QByteArrayList{"7df#0201005555555555"});
}

void tst_CanTester::asksOneUnit_data()
{
    QTest::addColumn<quint32>("ecu");
    QTest::addColumn<QByteArray>("sent");
    QTest::newRow("first") << 0x7E8u << QByteArray("7e0#02010c5555555555");
    QTest::newRow("last") << 0x7EFu << QByteArray("7e7#02010c5555555555");
    QTest::newRow("long") << 0x18DAF110u << QByteArray("18da10f1#02010c5555555555");
}

void tst_CanTester::asksOneUnit()
{
    QFETCH(quint32, ecu);
    CanTester tester;
    tester.ask({bytes("0100")}, 0);
    if (ecu > 0x7FF)
        tester.advance(500);
    tester.receive(frame(ecu, "064100be3fa813aa"), 510);
    tester.advance(1000);
    tester.takeFrames();
    tester.takeEvents();
    tester.ask({bytes("010c"), ecu}, 2000);
    QTEST(sentBy(&tester).join(), "sent");
    tester.receive(frame(ecu ^ 1, "04410c1af8aaaaaa"), 2005);
    QCOMPARE(eventsOf(&tester), QStringList());
    tester.receive(frame(ecu, "04410c1af8aaaaaa"), 2010);
    QCOMPARE(eventsOf(&tester), QStringList{QString::number(ecu, 16) + " 410c1af8"});
}

void tst_CanTester::failsToBeAnswered_data()
{
    QTest::addColumn<QByteArrayList>("frames");
    QTest::addColumn<QString>("event");
    QTest::newRow("silence") << QByteArrayList() << "the car does not answer";
    QTest::newRow("frame missing") << QByteArrayList{"1014430604200301", "2205060708090a0b"}
                                   << "expected consecutive frame 1, got 2";
    QTest::newRow("cut off") << QByteArrayList{"1014430604200301"}
                             << "no consecutive frame 1 within 1000 ms";
}

void tst_CanTester::failsToBeAnswered()
{
    QFETCH(QByteArrayList, frames);
    CanTester tester;
    tester.ask({bytes("03"), 0x7E8}, 0);
    for (const QByteArray &received : qAsConst(frames))
        tester.receive(frame(0x7E8, received), 0);
    while (tester.nextDueMs() >= 0)
        tester.advance(tester.nextDueMs());
    QCOMPARE(eventsOf(&tester).size(), 1);
    tester.ask({bytes("03"), 0x7E8}, 5000);
    for (const QByteArray &received : qAsConst(frames))
        tester.receive(frame(0x7E8, received), 5000);
    while (tester.nextDueMs() >= 0)
        tester.advance(tester.nextDueMs());
    QTEST(eventsOf(&tester).join(QLatin1Char('|')), "event");
}

void tst_CanTester::readsSeveralFrames()
{
    CanTester tester;
    tester.ask({bytes("03"), 0x7E8}, 0);
    tester.takeFrames();
    tester.receive(frame(0x7E8, "1008430301040143"), 5);
    QCOMPARE(sentBy(&tester), QByteArrayList{"7e0#3000005555555555"});
    tester.receive(frame(0x7E8, "210196aaaaaaaaaa"), 10);
    QCOMPARE(eventsOf(&tester), QStringList{"7e8 4303010401430196"});
}

void tst_CanTester::waitsForAUnitThatAsksForTime()
{
    CanTester tester;
    tester.ask({bytes("03"), 0x7E8}, 0);
    tester.receive(frame(0x7E8, "037f0378aaaaaaaa"), 50);
    QCOMPARE(tester.nextDueMs(), 5050LL);
    tester.receive(frame(0x7E8, "024300aaaaaaaaaa"), 4000);
    QCOMPARE(eventsOf(&tester), QStringList{"7e8 4300"});
}

void tst_CanTester::adaptsItsPatience()
{
    CanTester tester;
    tester.ask({bytes("010c"), 0x7E8}, 0);
    QCOMPARE(tester.nextDueMs(), 1000LL);
    for (int i = 0; i < 100; ++i) {
        tester.ask({bytes("010c"), 0x7E8}, i * 100);
        tester.receive(frame(0x7E8, "04410c1af8aaaaaa"), i * 100 + 50);
    }
    tester.ask({bytes("010c"), 0x7E8}, 20000);
    QCOMPARE(tester.nextDueMs(), 20200LL);
}

void tst_CanTester::keepsOutOfOtherConversations_data()
{
    QTest::addColumn<bool>("isAsking");
    QTest::addColumn<quint32>("id");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QStringList>("events");
    const QStringList seen = {"other tester"};
    QTest::newRow("its request") << false << 0x7DFu << QByteArray("02010caaaaaaaaaa") << seen;
    QTest::newRow("its request to one") << true << 0x7E0u << QByteArray("0210c0aaaaaaaaaa") << seen;
    QTest::newRow("its long request")
        << false << 0x18DB33F1u << QByteArray("02010caaaaaaaaaa") << seen;
    QTest::newRow("the answer to it")
        << false << 0x7E8u << QByteArray("04410c1af8aaaaaa") << QStringList();
    QTest::newRow("a long answer to it, at rest")
        << false << 0x7E8u << QByteArray("1014490201314434") << QStringList();
    QTest::newRow("a long answer to it, while asking")
        << true << 0x7E8u << QByteArray("1014490201314434") << QStringList();
    QTest::newRow("the car's own frames")
        << true << 0x123u << QByteArray("1014490201314434") << QStringList();
}

void tst_CanTester::keepsOutOfOtherConversations()
{
    QFETCH(bool, isAsking);
    QFETCH(quint32, id);
    QFETCH(QByteArray, data);
    CanTester tester;
    if (isAsking)
        tester.ask({bytes("010c"), 0x7E8}, 0);
    tester.takeFrames();
    tester.receive(frame(id, data), 10);
    QVERIFY(tester.takeFrames().isEmpty());
    QTEST(eventsOf(&tester), "events");
}

NORDA_TEST_MAIN(tst_CanTester)
#include "tst_cantester.moc"
