#include "drive.h"
#include "norda/vtqadaptor.h"
#include "testmain.h"

using namespace module;

/** Says the battery's voltage at given moments: "0V", "1V" and so on. */
class ScriptedSource : public VehicleSource
{
public:
    ScriptedSource(const QVector<qint64> &moments, qint64 durationMs)
        : m_moments(moments), m_durationMs(durationMs)
    {
    }

    QString title() const override { return QStringLiteral("scripted"); }
    qint64 durationMs() const override { return m_durationMs; }
    qint64 nextDueMs() const override { return m_next < m_moments.size() ? m_moments[m_next] : -1; }
    Emission take() override
    {
        const int index = m_next++;
        return {m_moments[index], "batteryVoltage", {QString::number(index) + QLatin1Char('V')}};
    }
    void seek(qint64 ms) override
    {
        const auto next = std::lower_bound(m_moments.cbegin(), m_moments.cend(), ms);
        m_next = int(next - m_moments.cbegin());
    }
    bool command(qint64 nowMs, const QString &, const QVariantList &) override
    {
        commandMs = nowMs;
        return false;
    }

    qint64 commandMs = -1;

private:
    const QVector<qint64> m_moments;
    const qint64 m_durationMs;
    int m_next = 0;
};

static std::unique_ptr<ScriptedSource> everyMs(int count, qint64 stepMs = 1)
{
    QVector<qint64> moments;
    for (int i = 0; i < count; ++i)
        moments.append(i * stepMs);
    return std::make_unique<ScriptedSource>(moments, count * stepMs);
}

/** The virtual clock of a drive. */
class tst_Drive : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void pausesKeepTheTimeBetween();
    void aNewSpeedKeepsTheTimeBetween();
    void commandsCarryTheMoment();
    void nowIsExactBetweenSignalsAndDueWithinOne();
    void aDriveWithoutAnEndGoesOn();
    void aLimitCountsAtOnce();
    void nothingFollowsAPause_data();
    void nothingFollowsAPause();
    void slowReceiversDoNotShiftTheClock();
    void aJumpFromWithinIsFollowed_data();
    void aJumpFromWithinIsFollowed();
    void slowScreensStillPaint_data();
    void slowScreensStillPaint();
    void everythingArrivesInOrder_data();
    void everythingArrivesInOrder();

private:
    QStringList m_texts; // what reached the adaptor
    std::function<void()> m_onText;
    QMetaObject::Connection m_connection;
};

void tst_Drive::init()
{
    m_texts.clear();
    m_onText = [] {};
    m_connection = connect(norda::VtqAdaptor::instance(), &norda::VtqAdaptor::batteryVoltage, this,
                           [this](const QString &text) {
                               m_texts.append(text);
                               m_onText();
                           });
}

void tst_Drive::cleanup()
{
    disconnect(m_connection);
}

void tst_Drive::pausesKeepTheTimeBetween()
{
    Drive drive(std::make_unique<ScriptedSource>(QVector<qint64>{5000}, 9000));
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(m_texts.size(), 0);
        drive.play();
        QTest::qWait(100);
        drive.pause();
    }
    QVERIFY2(drive.positionMs() >= 450 && drive.positionMs() < 5000,
             qPrintable(QString::number(drive.positionMs())));
}

void tst_Drive::aNewSpeedKeepsTheTimeBetween()
{
    Drive drive(std::make_unique<ScriptedSource>(QVector<qint64>{4000}, 5000));
    drive.setSpeed(10);
    drive.play();
    QTest::qWait(200);
    drive.setSpeed(1);
    QVERIFY2(drive.positionMs() >= 1900 && drive.positionMs() < 4000,
             qPrintable(QString::number(drive.positionMs())));
}

void tst_Drive::commandsCarryTheMoment()
{
    auto scripted = std::make_unique<ScriptedSource>(QVector<qint64>{4000}, 5000);
    ScriptedSource *source = scripted.get();
    Drive drive(std::move(scripted));
    drive.setSpeed(10);
    drive.play();
    QTest::qWait(200);
    norda::VtqAdaptor::instance()->gaugesSettings();
    QVERIFY2(source->commandMs >= 1900 && source->commandMs <= 4000,
             qPrintable(QString::number(source->commandMs)));
}

void tst_Drive::nowIsExactBetweenSignalsAndDueWithinOne()
{
    Drive drive(std::make_unique<ScriptedSource>(QVector<qint64>{0, 1500, 60000}, 60000));
    QVector<qint64> moments;
    m_onText = [&] {
        QThread::msleep(20); // of real time, in which the drive's clock goes on
        moments.append(drive.nowMs());
    };
    drive.setSpeed(10);
    drive.play();
    QTRY_COMPARE(moments, (QVector<qint64>{0, 1500}));
    QTest::qWait(100);
    const qint64 sinceMs = drive.nowMs() - drive.positionMs();
    QVERIFY2(sinceMs >= 700, qPrintable(QString::number(sinceMs)));
}

void tst_Drive::aDriveWithoutAnEndGoesOn()
{
    QString error;
    Drive drive(openSource(QStringLiteral("none"), &error));
    QSignalSpy positions(&drive, &Drive::positionChanged);
    QSignalSpy finished(&drive, &Drive::finished);
    drive.play();
    QTest::qWait(200);
    QVERIFY(drive.nowMs() >= 190);
    QTRY_VERIFY(drive.positionMs() >= 1000); // a clock that shows it goes on too
    QVERIFY(drive.isPlaying());
    QVERIFY(positions.size() <= 3);
    drive.setSpeed(Drive::Unlimited); // nobody waits for anything
    QVERIFY(finished.wait(60000));
}

void tst_Drive::aLimitCountsAtOnce()
{
    Drive drive(std::make_unique<ScriptedSource>(QVector<qint64>{30000}, 60000));
    QSignalSpy finished(&drive, &Drive::finished);
    drive.play();
    QTest::qWait(10);
    drive.setLimit(100);
    QVERIFY(finished.wait(60000));
    QCOMPARE(drive.positionMs(), 100);
}

static void addSpeeds()
{
    QTest::addColumn<double>("speed");
    QTest::newRow("real time") << 1.0;
    QTest::newRow("fast") << 200.0;
    QTest::newRow("unlimited") << double(Drive::Unlimited);
}

void tst_Drive::nothingFollowsAPause_data()
{
    addSpeeds();
}

void tst_Drive::nothingFollowsAPause()
{
    QFETCH(double, speed);
    Drive drive(everyMs(1000));
    drive.setSpeed(speed);
    m_onText = [&] {
        if (m_texts.size() == 20)
            drive.pause();
    };
    drive.play();
    QTRY_COMPARE(m_texts.size(), 20);
    QTest::qWait(30);
    QCOMPARE(m_texts.size(), 20);
    m_onText = [] {};
    drive.setSpeed(Drive::Unlimited);
    drive.play();
    QTRY_COMPARE(m_texts.size(), 1000);
}

// What a receiver does at a moment of the clock must not depend on how fast the machine is.
void tst_Drive::slowReceiversDoNotShiftTheClock()
{
    const QVector<qint64> moments = {90, 100, 410, 420, 1234};
    Drive drive(std::make_unique<ScriptedSource>(moments, 2000));
    drive.setSpeed(Drive::Unlimited);
    QSet<qint64> positions;
    connect(&drive, &Drive::positionChanged, &drive, [&](qint64 ms) { positions.insert(ms); });
    m_onText = [] { QThread::msleep(50); }; // more than a turn
    drive.play();
    QTRY_VERIFY(!drive.isPlaying());
    for (const qint64 ms : qAsConst(positions))
        QVERIFY2(ms % 250 == 0 || moments.contains(ms), qPrintable(QString::number(ms)));
}

void tst_Drive::aJumpFromWithinIsFollowed_data()
{
    addSpeeds();
}

void tst_Drive::aJumpFromWithinIsFollowed()
{
    QFETCH(double, speed);
    Drive drive(everyMs(400));
    drive.setSpeed(speed);
    m_onText = [&] {
        if (m_texts.size() != 100)
            return;
        drive.seek(0);
        drive.pause();
    };
    drive.play();
    QTRY_VERIFY(!drive.isPlaying());
    QCOMPARE(m_texts.size(), 101); // the jump itself says what stands at its moment
    QCOMPARE(drive.positionMs(), 0);
    drive.setSpeed(Drive::Unlimited);
    drive.play();
    QTRY_COMPARE(m_texts.size(), 500);
    QCOMPARE(m_texts.mid(100, 3), (QStringList{"0V", "1V", "2V"}));
}

void tst_Drive::slowScreensStillPaint_data()
{
    QTest::addColumn<double>("speed");
    QTest::newRow("fast") << 1000.0;
    QTest::newRow("unlimited") << double(Drive::Unlimited);
}

void tst_Drive::slowScreensStillPaint()
{
    // A screen that needs longer than the drive leaves it must not shut out the event loop.
    QFETCH(double, speed);
    Drive drive(everyMs(300));
    drive.setSpeed(speed);
    m_onText = [] { QThread::msleep(2); };
    QTimer painter;
    QElapsedTimer since;
    qint64 longest = 0;
    connect(&painter, &QTimer::timeout, this, [&] { longest = qMax(longest, since.restart()); });
    since.start();
    painter.start(0);
    drive.play();
    QTRY_VERIFY(!drive.isPlaying());
    QCOMPARE(m_texts.size(), 300);
    QVERIFY2(longest < 250, qPrintable(QString::number(longest)));
}

void tst_Drive::everythingArrivesInOrder_data()
{
    addSpeeds();
}

void tst_Drive::everythingArrivesInOrder()
{
    QFETCH(double, speed);
    Drive drive(everyMs(200, 2));
    drive.setSpeed(speed);
    QVector<qint64> moments;
    m_onText = [&] { moments.append(drive.positionMs()); };
    QSignalSpy finished(&drive, &Drive::finished);
    drive.play();
    QVERIFY(finished.wait(60000));
    QCOMPARE(moments.size(), 200);
    for (int i = 0; i < 200; ++i) {
        QCOMPARE(moments[i], i * 2);
        QCOMPARE(m_texts[i], QString::number(i) + QLatin1Char('V'));
    }
    QCOMPARE(drive.positionMs(), 400);
}

NORDA_TEST_MAIN(tst_Drive)
#include "tst_drive.moc"
