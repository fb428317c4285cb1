#include "live/obdpoller.h"
#include "testmain.h"

using namespace module;

/** A car that answers by the byte, in its own time. */
struct Car
{
    QMap<QByteArray, QByteArray> answers; // by the request, both from the service on
    QMap<QByteArray, QByteArray> gearbox; // those of a second unit
    int answerMs = 10;
    int losesEvery = 0; // of its answers
    bool isSilent = false;

    int asked = 0;
};

static constexpr quint32 engineUnit = 0x7E8;
static constexpr quint32 gearboxUnit = 0x7E9;

/** Lives with a poller for a time, and keeps when it was asked for what. */
class Life
{
public:
    explicit Life(const ObdPoller::Settings &settings = ObdPoller::Settings()) : poller(settings)
    {
        const auto hex = [this](const char *request, const char *answer) {
            car.answers.insert(QByteArray::fromHex(request), QByteArray::fromHex(answer));
        };
        // 01, 04, 05, 0B to 0D, 0F, 11, 20; 21, 40; 42, 46, 5C
        hex("0100", "4100983a8001");
        hex("0120", "412080000001");
        hex("0140", "414044000010");
        hex("0101", "410100000000");
        hex("0104", "410480");
        hex("0105", "410578");
        hex("010c", "410c1af8");
        hex("010d", "410d20");
        hex("010f", "410f40");
        hex("0142", "414230d4");
        hex("015c", "415c80");
        hex("03", "4300");
    }

    void live(qint64 ms)
    {
        const qint64 end = nowMs + ms;
        while (poller.nextDueMs() >= 0 && poller.nextDueMs() <= end) {
            nowMs = qMax(nowMs, poller.nextDueMs());
            const auto request = poller.takeRequest(nowMs);
            if (!request)
                break;
            asked.append({nowMs, request->message.toHex()});
            answer(*request);
        }
        nowMs = end;
    }

    int count(const char *message) const
    {
        return int(std::count_if(asked.begin(), asked.end(),
                                 [message](const auto &of) { return of.second == message; }));
    }

    QByteArrayList messages() const
    {
        QByteArrayList list;
        for (const auto &of : asked)
            list.append(of.second);
        return list;
    }

    ObdPoller poller;
    Car car;
    QVector<QPair<qint64, QByteArray>> asked;
    qint64 nowMs = 0;

private:
    QVector<ObdAnswer> answersTo(const ObdRequest &request) const
    {
        QVector<ObdAnswer> answers = {{engineUnit, car.answers.value(request.message)}};
        if (request.ecu == 0 && car.gearbox.contains(request.message))
            answers.append({gearboxUnit, car.gearbox.value(request.message)});
        return answers;
    }

    void answer(const ObdRequest &request)
    {
        nowMs += car.answerMs;
        const bool isLost = car.losesEvery > 0 && ++car.asked % car.losesEvery == 0;
        if (car.isSilent || isLost || !car.answers.contains(request.message))
            poller.failed(ObdFailure::NoAnswer, QStringLiteral("the car does not answer"), nowMs);
        else
            poller.answered(answersTo(request), nowMs);
    }
};

/** What a poller asks of a car, in a time that passes at once. */
class tst_ObdPoller : public QObject
{
    Q_OBJECT
private slots:
    void asksWhatTheCarHasFirst();
    void asksFastValuesOften_data();
    void asksFastValuesOften();
    void doesNotAskForWhatIsHeard();
    void leavesASlowCarItsTime();
    void neverAsks();
    void waitsForASilentCar();
    void alwaysAsks();
    void waitsForAnotherTester();
    void waitsAlsoAfterAnAnswer_data();
    void waitsAlsoAfterAnAnswer();
    void waitsForTheEngine();
    void waitsAtTrafficLights();
    void bearsLostAnswers();
    void pausesWhatIsNotAnswered_data();
    void pausesWhatIsNotAnswered();
    void goesOnWithAPartOfTheCar();
    void readsCodesWithTheLamp();
    void readsLampAndCodesOfAllUnits();
    void startsAnewWhenConnected();
};

void tst_ObdPoller::asksWhatTheCarHasFirst()
{
    Life life;
    QCOMPARE(life.poller.nextDueMs(), -1LL);
    life.poller.connected(0);
    QCOMPARE(life.poller.present().count(true), 0);
    life.live(600);
    QCOMPARE(life.messages().mid(0, 11),
             (QByteArrayList{"0100", "0120", "0140", "0104", "0105", "010c", "010d", "010f", "0142",
                             "015c", "0101"}));
    QCOMPARE(life.poller.present().count(true), 8);
    QVERIFY(life.poller.present().at(int(Quantity::OilTemperature)));
    const QVector<Sample> samples = life.poller.takeSamples();
    QVERIFY(samples.size() >= 7);
    QCOMPARE(samples.at(2).quantity, Quantity::EngineSpeed);
    QCOMPARE(samples.at(2).value, 1726.f);
    QCOMPARE(samples.at(2).atMs, life.asked.at(5).first + 10);
    QVERIFY(life.poller.takeSamples().isEmpty());
}

void tst_ObdPoller::asksFastValuesOften_data()
{
    QTest::addColumn<int>("perSecond");
    QTest::addColumn<int>("leastRpm"); // a second
    QTest::newRow("as usual") << 20 << 5;
    QTest::newRow("slowly") << 5 << 1;
    QTest::newRow("seldom") << 1 << 0;
}

void tst_ObdPoller::asksFastValuesOften()
{
    QFETCH(int, perSecond);
    QFETCH(int, leastRpm);
    ObdPoller::Settings settings;
    settings.requestsPerSecond = perSecond;
    Life life(settings);
    life.poller.connected(0);
    life.live(60000);
    for (int i = perSecond; i < life.asked.size(); ++i)
        QVERIFY(life.asked[i].first - life.asked[i - perSecond].first >= 1000);
    QVERIFY(life.asked.size() > 50 * perSecond);
    QVERIFY(life.count("010c") >= leastRpm * 60);
    QVERIFY(life.count("010c") >= life.count("010d"));
    QVERIFY(life.count("010d") >= life.count("0105"));
    QVERIFY(life.count("0105") >= 1 && life.count("0105") <= 13);
    QVERIFY(life.count("0142") >= 1);
    QVERIFY(life.count("03") >= 1 && life.count("03") <= 2);
}

void tst_ObdPoller::doesNotAskForWhatIsHeard()
{
    ObdPoller::Settings settings;
    settings.heard = QVector<bool>(int(Quantity::Count), false);
    settings.heard[int(Quantity::EngineSpeed)] = true;
    Life life(settings);
    life.poller.connected(0);
    life.live(10000);
    QCOMPARE(life.count("010c"), 0);
    QVERIFY(life.count("010d") > 20);
}

void tst_ObdPoller::leavesASlowCarItsTime()
{
    Life life;
    life.car.answerMs = 200;
    life.poller.connected(0);
    life.live(30000);
    life.asked.clear();
    life.live(10000);
    QVERIFY(life.asked.size() >= 35 && life.asked.size() <= 41);
}

void tst_ObdPoller::neverAsks()
{
    ObdPoller::Settings settings;
    settings.asking = Asking::Never;
    Life life(settings);
    life.poller.connected(0);
    life.poller.carHeard(0);
    life.poller.otherTesterSeen(0);
    life.live(3600000);
    QVERIFY(life.asked.isEmpty());
    QCOMPARE(life.poller.nextDueMs(), -1LL);
    QCOMPARE(life.poller.state(), QStringLiteral("The car is not asked"));
}

void tst_ObdPoller::waitsForASilentCar()
{
    Life life;
    life.car.isSilent = true;
    life.poller.connected(0);
    life.live(1000);
    QCOMPARE(life.poller.state(), QStringLiteral("The car does not answer: asked again in 1 s"));
    QVERIFY(life.poller.isCarSilent());
    life.live(600000);
    QCOMPARE(life.asked.size(), 13);
    QVERIFY(life.asked[2].first - life.asked[1].first >= 2000);
    QVERIFY(life.asked[12].first - life.asked[11].first >= 60000);
    QCOMPARE(life.poller.nextDueMs(), -1LL);
    QCOMPARE(life.poller.state(),
             QStringLiteral("The car does not answer: not asked until it is heard"));
    life.car.isSilent = false;
    life.poller.carHeard(life.nowMs);
    life.live(10000);
    QVERIFY(life.count("010c") > 30);
    QVERIFY(!life.poller.isCarSilent());
    // And in the middle of a drive.
    life.asked.clear();
    life.car.isSilent = true;
    life.live(1500);
    QVERIFY(life.asked.size() <= 6);
    QVERIFY(life.poller.state().startsWith(QStringLiteral("The car does not answer")));
}

void tst_ObdPoller::alwaysAsks()
{
    ObdPoller::Settings settings;
    settings.asking = Asking::Always;
    Life life(settings);
    life.car.isSilent = true;
    life.poller.connected(0);
    life.live(100000);
    QVERIFY(life.asked.size() >= 95);
    life.car.isSilent = false;
    life.car.answers["\x01\x0c"] = QByteArray::fromHex("410c0000");
    life.asked.clear();
    for (int i = 0; i < 100; ++i) {
        life.live(1000);
        life.poller.otherTesterSeen(life.nowMs);
    }
    QVERIFY(life.asked.size() > 1500);
}

void tst_ObdPoller::waitsForAnotherTester()
{
    Life life;
    life.poller.connected(0);
    life.live(10000);
    life.asked.clear();
    for (int i = 0; i < 20; ++i) {
        life.poller.otherTesterSeen(life.nowMs);
        life.live(1000);
    }
    QCOMPARE(life.asked.size(), 0);
    QCOMPARE(life.poller.state(),
             QStringLiteral("Another tester asks the car: waiting until it stops"));
    life.live(9500);
    QVERIFY(!life.asked.isEmpty());
    QVERIFY(life.asked.first().first >= 10000 + 19000 + 10000);
}

void tst_ObdPoller::waitsAlsoAfterAnAnswer_data()
{
    QTest::addColumn<bool>("isAnswered");
    QTest::newRow("answer") << true;
    QTest::newRow("failure") << false;
}

/** The request was outstanding when the other tester was seen. */
void tst_ObdPoller::waitsAlsoAfterAnAnswer()
{
    QFETCH(bool, isAnswered);
    ObdPoller poller({});
    poller.connected(0);
    QVERIFY(poller.takeRequest(0));
    poller.otherTesterSeen(10);
    if (isAnswered)
        poller.answered({{0x7E8, QByteArray::fromHex("410000100000")}}, 20);
    else
        poller.failed(ObdFailure::NoAnswer, QStringLiteral("silence"), 20);
    QVERIFY(!poller.isAsking());
    QCOMPARE(poller.nextDueMs(), 10010LL);
    QCOMPARE(poller.state(), QStringLiteral("Another tester asks the car: waiting until it stops"));
}

void tst_ObdPoller::waitsForTheEngine()
{
    Life life;
    life.poller.connected(0);
    life.live(10000);
    life.car.answers["\x01\x0c"] = QByteArray::fromHex("410c0000");
    life.live(40000);
    life.asked.clear();
    life.live(300000);
    QVERIFY(life.asked.size() >= 5 && life.asked.size() <= 10);
    QCOMPARE(life.count("010c"), life.asked.size());
    QVERIFY(life.poller.state().startsWith(QStringLiteral("The engine is off: asked again in")));
    life.car.answers["\x01\x0c"] = QByteArray::fromHex("410c1af8");
    life.live(61000);
    life.asked.clear();
    life.live(10000);
    QVERIFY(life.count("010c") > 50);
    QVERIFY(life.count("010d") > 20);
}

void tst_ObdPoller::waitsAtTrafficLights()
{
    Life life;
    life.poller.connected(0);
    life.live(10000);
    life.car.answers["\x01\x0c"] = QByteArray::fromHex("410c0000");
    life.live(25000);
    life.car.answers["\x01\x0c"] = QByteArray::fromHex("410c1af8");
    life.live(10000);
    life.car.answers["\x01\x0c"] = QByteArray::fromHex("410c0000");
    life.asked.clear();
    life.live(25000);
    QVERIFY(life.asked.size() > 400);
}

void tst_ObdPoller::bearsLostAnswers()
{
    Life life;
    life.car.losesEvery = 10;
    life.poller.connected(0);
    life.live(60000);
    QVERIFY(life.count("010c") >= 5 * 60);
    QVERIFY(life.poller.state().startsWith(QStringLiteral("Asking the car for")));
}

void tst_ObdPoller::pausesWhatIsNotAnswered_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("no answer") << QByteArray();
    QTest::newRow("refusal") << QByteArray("7f0112");
    QTest::newRow("too short") << QByteArray("410d");
}

void tst_ObdPoller::pausesWhatIsNotAnswered()
{
    QFETCH(QByteArray, answer);
    Life life;
    life.car.answers.remove("\x01\x0d");
    if (!answer.isEmpty())
        life.car.answers.insert("\x01\x0d", QByteArray::fromHex(answer));
    life.poller.connected(0);
    life.live(60000);
    QVERIFY(life.count("010d") >= 3 && life.count("010d") <= 6);
    QVERIFY(life.count("010c") >= 300);
}

/** A unit may tell of a block, and then not answer for it. */
void tst_ObdPoller::goesOnWithAPartOfTheCar()
{
    Life life;
    life.car.answers.remove("\x01\x40");
    life.poller.connected(0);
    life.live(5000);
    QVERIFY(life.count("010c") > 20);
    QCOMPARE(life.count("0140"), 3);
    QCOMPARE(life.count("0142"), 0);
}

void tst_ObdPoller::readsCodesWithTheLamp()
{
    Life life;
    life.poller.connected(0);
    life.live(10000);
    QVERIFY(!life.poller.takeCodes());
    QCOMPARE(life.count("03"), 1);
    life.car.answers["\x01\x01"] = QByteArray::fromHex("410182000000");
    life.car.answers["\x03"] = QByteArray::fromHex("430203010143");
    life.live(6000);
    QCOMPARE(life.poller.takeCodes().value_or(QStringList()), (QStringList{"P0301", "P0143"}));
    QVERIFY(!life.poller.takeCodes());
    QCOMPARE(life.count("03"), 2);
    life.car.answers["\x03"] = QByteArray::fromHex("4300");
    life.live(61000);
    QCOMPARE(life.poller.takeCodes(), std::optional<QStringList>(QStringList()));
}

void tst_ObdPoller::readsLampAndCodesOfAllUnits()
{
    Life life;
    life.car.gearbox[QByteArray::fromHex("0100")] = QByteArray::fromHex("410080000000");
    life.car.gearbox[QByteArray::fromHex("0101")] = QByteArray::fromHex("410181000000");
    life.car.gearbox["\x03"] = QByteArray::fromHex("43010700");
    life.poller.connected(0);
    life.live(10000);
    const auto isLampOn = [&life] {
        std::optional<bool> isOn;
        for (const Sample &sample : life.poller.takeSamples()) {
            if (sample.quantity == Quantity::EngineLamp)
                isOn = sample.value > 0;
        }
        return isOn;
    };
    QCOMPARE(isLampOn(), std::optional<bool>(true));
    QCOMPARE(life.poller.takeCodes().value_or(QStringList()), QStringList{"P0700"});

    life.car.answers["\x03"] = QByteArray::fromHex("43010301");
    life.live(61000);
    QCOMPARE(life.poller.takeCodes().value_or(QStringList()), (QStringList{"P0301", "P0700"}));
    // Refused, and lost: what was known stays.
    for (const bool isLost : {false, true}) {
        for (const char *request : {"0101", "03"}) {
            const QByteArray asked = QByteArray::fromHex(request);
            life.car.gearbox[asked] = isLost ? QByteArray() : '\x7f' + asked.left(1) + '\x22';
        }
        life.live(61000);
        QVERIFY(!life.poller.takeCodes());
        QCOMPARE(isLampOn(), std::optional<bool>(true));
    }
    life.car.gearbox["\x03"] = QByteArray::fromHex("4300");
    life.live(61000);
    QCOMPARE(life.poller.takeCodes().value_or(QStringList()), QStringList{"P0301"});
    life.car.gearbox[QByteArray::fromHex("0101")] = QByteArray::fromHex("410100000000");
    life.live(6000);
    QCOMPARE(isLampOn(), std::optional<bool>(false));
}

void tst_ObdPoller::startsAnewWhenConnected()
{
    Life life;
    life.poller.connected(0);
    life.live(5000);
    life.poller.disconnected();
    QCOMPARE(life.poller.nextDueMs(), -1LL);
    QCOMPARE(life.poller.state(), QStringLiteral("Not connected"));
    life.poller.answered({}, 5000); // of a request before
    life.asked.clear();
    life.poller.connected(6000);
    life.live(2000);
    QCOMPARE(life.messages().value(0), QByteArray("0100"));
}

NORDA_TEST_MAIN(tst_ObdPoller)
#include "tst_obdpoller.moc"
