#include "benchfixture.h"
#include "panels/journaltexts.h"
#include "panels/timelineview.h"
#include "panels/timerange.h"
#include "plots/curvelegend.h"
#include "plots/curvelist.h"
#include "plots/plotarea.h"
#include "plots/plotexport.h"
#include "plots/plotpanel.h"
#include "plots/samples.h"
#include "scenario/scenariowriter.h"

#include <QLineEdit>
#include <QMimeData>
#include <QToolButton>

#include <limits>

using norda::VtqAdaptor;

/** The plots panel: what it reads from a session, and what can be done with it. */
class tst_Plots : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void init() { m_options = Options(); }
    void cleanup() { removeBench(); }

    void valueIsAPoint();
    void valueHoldsUntilTheNext();
    void curvesAreSearched();
    void quantitiesAreCurves();
    void quantitiesOfALogAreCurves();
    void quantityLogIsBounded();
    void droppedSignalIsACurve();
    void rangeIsSharedWithTimeline();
    void clickRewinds();
    void cursorReadsCurves();
    void curvesAreRemembered();
    void oldestAreDropped();
    void hiddenPanelRests();
    void csvHoldsWhatCurvesHold();
    void marksBelongToWhatIsShown();

private:
    PlotPanel *panel() const { return m_window->findChild<PlotPanel *>(); }
    PlotArea *area() const { return find<PlotArea>("plotArea"); }
    TimeRange *range() const { return m_window->findChild<TimeRange *>(); }
    CurveLegend *legend() const { return find<CurveLegend>("plotLegend"); }
    const Samples &samples(int curve = 0) const
    {
        return panel()->curves()->items()[size_t(curve)].curve->samples();
    }
    /** A bench with its plots open; time passes only where a test writes it. */
    void openPlots(const QStringList &curves)
    {
        makeBench();
        session()->drive()->pause();
        m_window->resize(1900, 1400);
        open("plots");
        for (const QString &curve : curves)
            QVERIFY(panel()->add(curve));
        QCoreApplication::processEvents();
    }
    void noteDoors(const QVector<int> &values, qint64 stepMs = 1000)
    {
        for (int i = 0; i < values.size(); ++i)
            session()->journal()->noteSignal(i * stepMs, "doorStatus", {uchar(values[i])});
    }
    void playUntil(qint64 ms)
    {
        session()->drive()->setSpeed(1000);
        session()->drive()->play();
        QTRY_VERIFY(session()->nowMs() > ms);
        session()->drive()->pause();
    }
    QString legendValue(int row = 0) const
    {
        return legend()->topLevelItem(row)->text(CurveLegend::Value);
    }
    void moveTo(qint64 ms, Qt::MouseButtons buttons = Qt::NoButton) const
    {
        const QPoint place(area()->xAt(ms), area()->canvasRect().center().y());
        QMouseEvent move(QEvent::MouseMove, place, Qt::NoButton, buttons, {});
        QCoreApplication::sendEvent(area(), &move);
    }
};

void tst_Plots::valueIsAPoint()
{
    openPlots({"tirePressureStatus.values[0]"});
    emit VtqAdaptor::instance()->tirePressureStatus(0, 0, {"34 psi", "", "", "", ""});
    QTRY_COMPARE(samples().size(), 1);
    const int entry = session()->journal()->ofKind(Journal::Signal).constLast();
    QCOMPARE(samples().msAt(0), session()->journal()->entries()[entry].ms);
    QCOMPARE(samples().valueAt(0), 34.0);
    QTRY_COMPARE(legendValue(), QStringLiteral("34 psi"));
    QCOMPARE(area()->lanes().size(), 1);
    QCOMPARE(area()->lanes().constFirst()->scale(), QStringLiteral("psi"));

    // Another unit has an axis of its own.
    emit VtqAdaptor::instance()->batteryVoltage("14.4V");
    QVERIFY(panel()->add("batteryVoltage.text"));
    QTRY_COMPARE(area()->lanes().size(), 2);
    QCOMPARE(legendValue(1), QStringLiteral("14.4 V"));
    QCOMPARE(area()->lanes()[0]->canvas()->x(), area()->lanes()[1]->canvas()->x());
    QCOMPARE(area()->lanes()[0]->canvas()->width(), area()->lanes()[1]->canvas()->width());
}

void tst_Plots::valueHoldsUntilTheNext()
{
    openPlots({"doorStatus.bits"});
    noteDoors({4, 8, 4});
    range()->set(0, 3000);
    find<QDockWidget>("plots")->hide();
    open("plots");
    PlotLane *lane = area()->lanes().constFirst();
    const QImage picture = lane->canvas()->grab().toImage();
    const auto isDrawn = [&](double seconds, double value) {
        const QRect around(int(lane->transform(QwtPlot::xBottom, seconds)),
                           int(lane->transform(QwtPlot::yLeft, value)) - 1, 1, 3);
        for (int y = around.top(); y <= around.bottom(); ++y) {
            if (picture.pixelColor(around.x(), y) == panel()->curves()->items()[0].color)
                return true;
        }
        return false;
    };
    QVERIFY(isDrawn(0.5, 4));
    QVERIFY(!isDrawn(0.5, 8));
    QVERIFY(isDrawn(1.5, 8));
    QVERIFY(!isDrawn(1.5, 4));
}

void tst_Plots::curvesAreSearched()
{
    openPlots({});
    auto *search = find<QLineEdit>("plotSearch");
    emit VtqAdaptor::instance()->tirePressureStatus(0, 0, {"34 psi", "33 psi", "--"});
    QTest::keyClicks(search, "tirePressureStatus.v");
    QStringList offered = offeredCurves(session()->journal(), session()->quantities());
    QVERIFY(offered.contains("tirePressureStatus.values[1]"));
    QVERIFY(!offered.contains("tirePressureStatus.values[2]")); // no number
    QVERIFY(offered.contains("doorStatus.bits"));               // has not occurred
    QTest::keyClick(search, Qt::Key_Return);
    QVERIFY(panel()->curves()->isEmpty()); // only a part of a name
    search->setText("tirePressureStatus.values[1]");
    QTest::keyClick(search, Qt::Key_Return);
    QCOMPARE(panel()->curves()->names(), QStringList("tirePressureStatus.values[1]"));
    QCOMPARE(search->text(), QString());
    QVERIFY(!panel()->add("tirePressureStatus.values[1]")); // it is there
}

static const char speedPath[] = "Vehicle.Speed";
static const char rpmPath[] = "Vehicle.Powertrain.CombustionEngine.Speed";
static const char throttlePath[] = "Vehicle.OBD.ThrottlePosition";

/** Of the simulated car, in the units of their paths. */
void tst_Plots::quantitiesAreCurves()
{
    makeBench("simulator");
    open("plots");
    for (const char *name : {rpmPath, speedPath, "centerGaugeValueNotify.value"})
        QVERIFY(panel()->add(name));
    QCOMPARE(panel()->curves()->names(),
             QStringList({rpmPath, speedPath, "centerGaugeValueNotify.value"}));
    session()->drive()->setSpeed(module::Drive::Unlimited);
    session()->drive()->setLimit(90000);
    session()->drive()->play();
    QTRY_VERIFY(!session()->drive()->isPlaying());
    QStringList offered = offeredCurves(session()->journal(), session()->quantities());
    QVERIFY(offered.contains(speedPath));
    QVERIFY(!offered.contains(throttlePath)); // the simulated car has none

    QString error;
    QTemporaryDir folder;
    QVERIFY(panel()->writeCsv(folder.filePath("q.csv"), &error)); // reads all there is
    const auto &items = panel()->curves()->items();
    QCOMPARE(items[0].curve->unit(), QString("rpm"));
    QCOMPARE(items[1].curve->unit(), QString("km/h"));
    const Samples &rpm = items[0].curve->samples();
    const Samples &gauge = items[2].curve->samples();
    QVERIFY2(rpm.size() > 100, qPrintable(QString::number(rpm.size())));
    // The gauge shows it rounded and at its own pace.
    QVERIFY(qAbs(rpm.valueAtMs(89000) - gauge.valueAtMs(89000)) < 200);
    QVERIFY(items[1].curve->samples().extent(0, items[1].curve->samples().size()).highest > 30);
}

/** With its own times, and also what no page shows. */
void tst_Plots::quantitiesOfALogAreCurves()
{
    QTemporaryDir folder;
    const QString file = folder.filePath("drive.csv");
    QFile csv(file);
    QVERIFY(csv.open(QIODevice::WriteOnly));
    csv.write("Time(s),Engine RPM(rpm),Throttle Position(%)\n");
    for (int second = 0; second < 20; ++second)
        csv.write(QString("%1,%2,%3\n").arg(second).arg(1000 + second).arg(second).toLatin1());
    csv.close();
    makeBench(file);
    open("plots");
    QVERIFY(panel()->add(throttlePath));
    session()->drive()->seek(0);
    session()->drive()->setSpeed(module::Drive::Unlimited);
    session()->drive()->play();
    QTRY_VERIFY(!session()->drive()->isPlaying());
    QString error;
    QVERIFY(panel()->writeCsv(folder.filePath("q.csv"), &error));
    const Samples &throttle = panel()->curves()->items()[0].curve->samples();
    const qint64 begin = session()->nowMs() - session()->drive()->positionMs();
    QCOMPARE(throttle.valueAtMs(begin + 7000), 7.0);
    QCOMPARE(throttle.valueAtMs(begin + 6999), 6.0);
    QCOMPARE(throttle.valueAtMs(begin + 19000), 19.0);
}

void tst_Plots::quantityLogIsBounded()
{
    static constexpr auto speed = module::Quantity::VehicleSpeed;
    QuantityLog log(100);
    log.add(0, module::Quantity::Gear, 1);
    log.add(5, speed, std::numeric_limits<double>::quiet_NaN()); // was never known
    QVERIFY(log.values(speed).isEmpty());
    for (int i = 0; i < 1000; ++i) {
        log.add(i, speed, i / 2); // each comes twice
        QVERIFY(log.values(speed).size() <= 100);
    }
    QCOMPARE(log.dropped(speed) + log.values(speed).size(), 500);
    QCOMPARE(log.values(speed).constLast().value, 499.0);
    QCOMPARE(log.values(module::Quantity::Gear).size(), 1); // it still holds
}

void tst_Plots::droppedSignalIsACurve()
{
    openPlots({});
    const int row = rowOf("signals", "doorStatus", 0);
    const QModelIndex index = model("signals")->index(row, 0);
    QVERIFY(index.flags() & Qt::ItemIsDragEnabled);
    QVERIFY(find<QTableView>("signals")->dragEnabled());
    const QScopedPointer<QMimeData> dragged(model("signals")->mimeData({index}));
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, dragged.data(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(panel(), &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPoint(50, 50), Qt::CopyAction, dragged.data(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(panel(), &drop);
    QCOMPARE(panel()->curves()->names(), QStringList("doorStatus.bits"));

    QMimeData other;
    other.setText("doorStatus");
    QDragEnterEvent text(QPoint(50, 50), Qt::CopyAction, &other, Qt::LeftButton, {});
    QCoreApplication::sendEvent(panel(), &text);
    QVERIFY(!text.isAccepted());
}

void tst_Plots::rangeIsSharedWithTimeline()
{
    openPlots({"doorStatus.bits"});
    open("timeline");
    auto *line = find<TimelineView>("timeline");
    line->setRange(100000, 60000);
    const auto shown = [this] {
        const QwtInterval interval = area()->lanes().constFirst()->axisInterval(QwtPlot::xBottom);
        return QVector<qint64>{qRound64(interval.minValue() * 1000),
                               qRound64(interval.maxValue() * 1000)};
    };
    QCOMPARE(shown(), (QVector<qint64>{100000, 160000}));

    const int x = area()->canvasRect().center().x();
    const qint64 under = area()->msAt(x);
    QWheelEvent wheel(QPointF(x, 20), area()->mapToGlobal(QPoint(x, 20)), QPoint(), QPoint(0, 240),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(area(), &wheel);
    QVERIFY(line->spanMs() < 45000);
    QVERIFY(qAbs(area()->msAt(x) - under) < 200);
    QCOMPARE(shown().constFirst(), line->beginMs());

    const qint64 begin = line->beginMs();
    QTest::mousePress(area(), Qt::LeftButton, {}, QPoint(x, 40));
    QMouseEvent move(QEvent::MouseMove, QPoint(x - 100, 40), Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(area(), &move);
    QTest::mouseRelease(area(), Qt::LeftButton, {}, QPoint(x - 100, 40));
    QVERIFY(line->beginMs() > begin);
    QCOMPARE(shown().constFirst(), line->beginMs());
    QVERIFY(!session()->isRewound()); // a drag is no click
    QVERIFY(!range()->follows());
    QVERIFY(find<QToolButton>("live")->isEnabled());
    QTest::mouseClick(find<QToolButton>("live"), Qt::LeftButton);
    QVERIFY(range()->follows());
}

void tst_Plots::clickRewinds()
{
    openPlots({"doorStatus.bits"});
    playUntil(20000);
    range()->set(0, 30000);
    const QPoint place(area()->xAt(4000), area()->canvasRect().center().y());
    QTest::mouseClick(area(), Qt::LeftButton, {}, place);
    QVERIFY(session()->isRewound());
    QVERIFY(qAbs(area()->momentMs() - 4000) < 50);
}

void tst_Plots::cursorReadsCurves()
{
    openPlots({"doorStatus.bits", "seatbeltStatus.state"});
    noteDoors({4, 8, 16});
    session()->journal()->noteSignal(3000, "seatbeltStatus", {uchar(1)});
    range()->set(0, 10000);
    find<QDockWidget>("plots")->hide();
    open("plots");
    moveTo(1500);
    QCOMPARE(legendValue(0), QStringLiteral("8"));
    QCOMPARE(legendValue(1), QStringLiteral("\u2013")); // not known yet
    QVERIFY(qAbs(area()->cursorMs() - 1500) < 50);
    QCOMPARE(legend()->headerItem()->text(CurveLegend::Name),
             QStringLiteral("At %1 s").arg(double(area()->cursorMs()) / 1000, 0, 'f', 3));
    moveTo(3500);
    QCOMPARE(legendValue(0), QStringLiteral("16"));
    QCOMPARE(legendValue(1), QStringLiteral("1"));
}

void tst_Plots::curvesAreRemembered()
{
    openPlots({"doorStatus.bits", "batteryVoltage.text"});
    const QColor second = panel()->curves()->items()[1].color;
    QVERIFY(panel()->curves()->items()[0].color != second);
    removeBench();
    makeRig();
    showWindow();
    QCOMPARE(panel()->curves()->names(), (QStringList{"doorStatus.bits", "batteryVoltage.text"}));
    open("plots");
    emit legend()->itemClicked(legend()->topLevelItem(0), CurveLegend::Remove);
    QCOMPARE(panel()->curves()->names(), QStringList("batteryVoltage.text"));
    QTRY_COMPARE(legend()->topLevelItemCount(), 1);
    QTest::mouseClick(find<QToolButton>("plotClear"), Qt::LeftButton);
    QTRY_COMPARE(legend()->topLevelItemCount(), 0);
    QVERIFY(QSettings("norda", "bench").value("plots/curves").toStringList().isEmpty());
}

void tst_Plots::oldestAreDropped()
{
    openPlots({"doorStatus.bits"});
    session()->journal()->setLimit(100);
    QVector<int> values;
    for (int i = 0; i < 250; ++i)
        values.append(i);
    noteDoors(values);
    QTRY_VERIFY(!samples().isEmpty());
    QCOMPARE(samples().msAt(0), session()->journal()->beginMs());
    QCOMPARE(samples().size(), session()->journal()->ofKind(Journal::Signal).size());
    QCOMPARE(samples().valueAt(samples().size() - 1), 249.0);
}

void tst_Plots::hiddenPanelRests()
{
    openPlots({"doorStatus.bits"});
    find<QDockWidget>("plots")->hide();
    noteDoors({1, 2, 3});
    QTest::qWait(400); // a panel on view refreshes in this time
    range()->set(5000, 1000);
    QVERIFY(samples().isEmpty());
    QCOMPARE(area()->lanes().constFirst()->pointCount(), 0);
    open("plots");
    QCOMPARE(samples().size(), 3);
}

void tst_Plots::csvHoldsWhatCurvesHold()
{
    openPlots({"doorStatus.bits", "batteryVoltage.text"});
    noteDoors({4, 8});
    session()->journal()->noteSignal(500, "batteryVoltage", {"12.5V"});
    session()->journal()->noteSignal(2000, "batteryVoltage", {"--"});
    session()->journal()->noteSignal(2500, "batteryVoltage", {"12.6V"});
    QTemporaryDir folder;
    const QString file = folder.filePath("plots.csv");
    QString error;
    QVERIFY2(panel()->writeCsv(file, &error), qPrintable(error));
    QFile written(file);
    QVERIFY(written.open(QIODevice::ReadOnly));
    QCOMPARE(written.readAll(), QByteArray("seconds,doorStatus.bits,batteryVoltage.text\n"
                                           "0.000,4,\n"
                                           "0.500,4,12.5\n"
                                           "1.000,8,12.5\n"
                                           "2.000,8,\n"
                                           "2.500,8,12.6\n"));
    QVERIFY(panel()->writePlot(folder.filePath("plots.png"), &error));
    QCOMPARE(QImage(folder.filePath("plots.png")).size(),
             (panel()->size() * panel()->devicePixelRatioF()));
}

void tst_Plots::marksBelongToWhatIsShown()
{
    openPlots({"doorStatus.bits"});
    playUntil(20000);
    session()->addMark("live");
    session()->setRewound(5500);
    session()->addMark("rewound");
    session()->setLive();
    const Journal *journal = session()->journal();
    QVector<qint64> times;
    for (const int place : journal->ofKind(Journal::Mark))
        times.append(journal->entries()[place].ms);
    QCOMPARE(times, (QVector<qint64>{5500, session()->nowMs()}));

    // Their lane is the last one of the timeline.
    open("timeline");
    auto *line = find<TimelineView>("timeline");
    line->setRange(0, 30000);
    const QImage picture = line->grab().toImage();
    const auto isDrawn = [&](qint64 ms) {
        const QColor color = kindColor(Journal::Mark, line->palette());
        const int y = line->height() - 8;
        return picture.pixelColor(line->xAt(ms), y) == color ||
               picture.pixelColor(line->xAt(ms) - 1, y) == color; // rounding
    };
    QVERIFY(isDrawn(5500));
    QVERIFY(!isDrawn(10500));

    const QString scenario = scenarioOf(journal, m_options.setup, "marks");
    QVERIFY2(!scenario.contains("live") && !scenario.contains("rewound"), qPrintable(scenario));
}

NORDA_TEST_MAIN(tst_Plots)
#include "tst_plots.moc"
