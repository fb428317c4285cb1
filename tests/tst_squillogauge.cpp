#include "norda/squillogauge.h"
#include "testmain.h"

#include <QPaintEvent>

using norda::SQuilloGauge;

/** Notes what a gauge repaints. */
class PaintProbe : public QObject
{
public:
    explicit PaintProbe(QWidget *watched) { watched->installEventFilter(this); }
    QList<QRegion> regions;

private:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            regions.append(static_cast<QPaintEvent *>(event)->region());
        return false;
    }
};

/** The reference gauge: needle, arc, animation, touch. */
class tst_SQuilloGauge : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { delete m_gauge; }

    void needlePointsWhereItShould_data();
    void needlePointsWhereItShould();
    void arcFillsFromItsZero_data();
    void arcFillsFromItsZero();
    void animationNeverOvershoots_data();
    void animationNeverOvershoots();
    void retargetingGoesOnFromThere();
    void repaintsOnlyWhatTheNeedleUncovers();
    void restsAfterTheAnimation();
    void sameValueDoesNothing();
    void hiddenGaugeJumps();
    void zeroPositionIsTheRestingPlace();
    void propertiesTellTheState();
    void touch();
    void unusableScale();

private:
    SQuilloGauge *m_gauge = nullptr;
};

static const QString needle = QStringLiteral(":/icon/gaugesicon/gagus_pointer_large.png");
static const QString arc = QStringLiteral(":/icon/gaugesicon/gagus_arc_large.png");

void tst_SQuilloGauge::init()
{
    m_gauge = new SQuilloGauge;
    m_gauge->resize(370, 370);
    m_gauge->setImageDir(needle);
    m_gauge->setRotationRange(90, -180);
    m_gauge->setPointerXY(186, 186);
    m_gauge->setMixValue(100);
    QPalette colors = m_gauge->palette();
    colors.setColor(QPalette::Window, Qt::black);
    m_gauge->setPalette(colors);
    m_gauge->setAutoFillBackground(true);
    m_gauge->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_gauge));
}

static void settle(SQuilloGauge *gauge, int value)
{
    gauge->_setAnimationValue(value);
    QTest::qWait(350);
}

/** Brightness of a gauge at an angle, clockwise from twelve o'clock. */
static int brightness(SQuilloGauge *gauge, double angle, double radius)
{
    const QImage image = gauge->grab().toImage();
    const double radians = qDegreesToRadians(angle);
    return qGray(
        image.pixel(qRound(186 + radius * qSin(radians)), qRound(186 - radius * qCos(radians))));
}

void tst_SQuilloGauge::needlePointsWhereItShould_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("end");
    QTest::addColumn<int>("value");
    QTest::addColumn<double>("angle");
    QTest::newRow("lower end, range given downwards") << 90.0 << -180.0 << 0 << -180.0;
    QTest::newRow("middle") << 90.0 << -180.0 << 50 << -45.0;
    QTest::newRow("upper end") << 90.0 << -180.0 << 100 << 90.0;
    QTest::newRow("lower end, range given upwards") << -105.0 << 105.0 << 0 << -105.0;
    QTest::newRow("straight up") << -105.0 << 105.0 << 50 << 0.0;
    QTest::newRow("beyond the end stops there") << -105.0 << 105.0 << 250 << 105.0;
    QTest::newRow("below zero stops there") << -105.0 << 105.0 << -50 << -105.0;
}

void tst_SQuilloGauge::needlePointsWhereItShould()
{
    QFETCH(double, start);
    QFETCH(double, end);
    QFETCH(int, value);
    QFETCH(double, angle);
    m_gauge->setRotationRange(start, end);
    settle(m_gauge, value);
    QVERIFY(brightness(m_gauge, angle, 90) > 100);
    QVERIFY(brightness(m_gauge, angle + 20, 90) < 40);
    QVERIFY(brightness(m_gauge, angle - 20, 90) < 40);
}

void tst_SQuilloGauge::arcFillsFromItsZero_data()
{
    QTest::addColumn<double>("zero");
    QTest::addColumn<int>("value");
    QTest::addColumn<QList<int>>("filled"); // probed values
    QTest::addColumn<QList<int>>("empty");
    QTest::newRow("from the start") << 0.0 << 45 << QList<int>{5, 25, 43} << QList<int>{47, 75};
    QTest::newRow("upwards from the middle")
        << 50.0 << 75 << QList<int>{55, 73} << QList<int>{25, 45, 85};
    QTest::newRow("downwards from the middle")
        << 50.0 << 25 << QList<int>{28, 45} << QList<int>{15, 55, 85};
    QTest::newRow("at its zero") << 50.0 << 50 << QList<int>() << QList<int>{25, 45, 55, 85};
    QTest::newRow("full") << 0.0 << 100 << QList<int>{5, 45, 95} << QList<int>();
}

void tst_SQuilloGauge::arcFillsFromItsZero()
{
    QFETCH(double, zero);
    QFETCH(int, value);
    QFETCH(QList<int>, filled);
    QFETCH(QList<int>, empty);
    m_gauge->setNeedle(false);
    m_gauge->setImageDir(arc);
    m_gauge->setZeroPosition(zero);
    settle(m_gauge, value);
    for (int probed : filled)
        QVERIFY2(brightness(m_gauge, -180 + 2.7 * probed, 158) > 60,
                 qPrintable(QString::number(probed)));
    for (int probed : empty)
        QVERIFY2(brightness(m_gauge, -180 + 2.7 * probed, 158) < 30,
                 qPrintable(QString::number(probed)));
}

void tst_SQuilloGauge::animationNeverOvershoots_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::newRow("up") << 0 << 100;
    QTest::newRow("down") << 100 << 0;
    QTest::newRow("one step") << 50 << 51;
}

void tst_SQuilloGauge::animationNeverOvershoots()
{
    QFETCH(int, from);
    QFETCH(int, to);
    settle(m_gauge, from);
    m_gauge->_setAnimationValue(to);
    double last = m_gauge->shownValue();
    QCOMPARE(last, double(from)); // it moves, it does not jump
    QElapsedTimer clock;
    clock.start();
    while (!qFuzzyCompare(1 + m_gauge->shownValue(), 1.0 + to)) {
        QVERIFY(clock.elapsed() < 2000);
        QTest::qWait(5);
        const double now = m_gauge->shownValue();
        QVERIFY(to > from ? now >= last && now <= to : now <= last && now >= to);
        last = now;
    }
}

void tst_SQuilloGauge::retargetingGoesOnFromThere()
{
    m_gauge->_setAnimationValue(100);
    QTRY_VERIFY(m_gauge->shownValue() > 30);
    const double there = m_gauge->shownValue();
    m_gauge->_setAnimationValue(0);
    QCOMPARE(m_gauge->shownValue(), there);
    QTRY_COMPARE(m_gauge->shownValue(), 0.0);
}

void tst_SQuilloGauge::repaintsOnlyWhatTheNeedleUncovers()
{
    settle(m_gauge, 60);
    PaintProbe probe(m_gauge);
    settle(m_gauge, 61);
    QVERIFY(!probe.regions.isEmpty());
    for (const QRegion &region : probe.regions) {
        int area = 0;
        for (const QRect &rect : region)
            area += rect.width() * rect.height();
        QVERIFY2(area < 370 * 370 / 5, qPrintable(QString::number(area)));
    }
    // And nothing of the old needle stays behind.
    const QImage partly = m_gauge->grab().toImage();
    m_gauge->update();
    QCOMPARE(m_gauge->grab().toImage(), partly);
}

void tst_SQuilloGauge::restsAfterTheAnimation()
{
    settle(m_gauge, 40);
    PaintProbe probe(m_gauge);
    QTest::qWait(300);
    QCOMPARE(probe.regions.size(), 0);
}

void tst_SQuilloGauge::sameValueDoesNothing()
{
    settle(m_gauge, 40);
    PaintProbe probe(m_gauge);
    settle(m_gauge, 40);
    m_gauge->setImageDir(needle);
    m_gauge->setZeroPosition(0);
    QTest::qWait(50);
    QCOMPARE(probe.regions.size(), 0);
}

void tst_SQuilloGauge::hiddenGaugeJumps()
{
    m_gauge->hide();
    m_gauge->_setAnimationValue(70);
    QCOMPARE(m_gauge->shownValue(), 70.0);
}

void tst_SQuilloGauge::zeroPositionIsTheRestingPlace()
{
    m_gauge->setZeroPosition(30);
    QCOMPARE(m_gauge->shownValue(), 30.0);
    settle(m_gauge, 60);
    m_gauge->setZeroPosition(10);
    QCOMPARE(m_gauge->shownValue(), 60.0);
}

void tst_SQuilloGauge::propertiesTellTheState()
{
    m_gauge->setGaugeId(3);
    m_gauge->setNeedle(false);
    m_gauge->setZeroPosition(12);
    m_gauge->_setAnimationValue(34);
    QCOMPARE(m_gauge->property("value").toInt(), 34);
    QCOMPARE(m_gauge->property("needle").toBool(), false);
    QCOMPARE(m_gauge->property("gaugeId").toInt(), 3);
    QCOMPARE(m_gauge->property("mixValue").toInt(), 100);
    QCOMPARE(m_gauge->property("zeroPosition").toDouble(), 12.0);
    QCOMPARE(m_gauge->property("imageDir").toString(), needle);
}

void tst_SQuilloGauge::touch()
{
    m_gauge->setGaugeId(4);
    QSignalSpy touches(m_gauge, &SQuilloGauge::touch);
    QTest::mousePress(m_gauge, Qt::LeftButton);
    QCOMPARE(touches.takeFirst(), (QVariantList{true, 4}));
    QTest::mouseRelease(m_gauge, Qt::LeftButton);
    QCOMPARE(touches.takeFirst(), (QVariantList{false, 4}));
}

void tst_SQuilloGauge::unusableScale()
{
    for (int fullScale : {0, -5}) {
        m_gauge->setMixValue(fullScale);
        settle(m_gauge, 50);
        QVERIFY(brightness(m_gauge, -180, 90) > 100);
    }
}

NORDA_TEST_MAIN(tst_SQuilloGauge)
#include "tst_squillogauge.moc"
