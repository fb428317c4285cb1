#include "benchfixture.h"
#include "panels/journaltexts.h"
#include "panels/timelineview.h"
#include "panels/timerange.h"
#include "plots/curvelegend.h"
#include "plots/curvelist.h"
#include "plots/curvename.h"
#include "plots/plotarea.h"
#include "plots/plotexport.h"
#include "plots/plotpanel.h"
#include "plots/samples.h"
#include "scenario/scenariowriter.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMimeData>
#include <QToolButton>

#include <cmath>

using norda::VtqAdaptor;

/** Plots: what they read from a session, and what can be done with them. */
class tst_Plots : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void init() { m_options = Options(); }
    void cleanup() { removeBench(); }

    void readings_data();
    void readings();
    void names_data();
    void names();
    void extentsAreExact_data();
    void extentsAreExact();
    void pointsAreBounded_data();
    void pointsAreBounded();
    void missingValuesAreGaps();
    void colorsAreReadable_data();
    void colorsAreReadable();

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

// ---- Values -------------------------------------------------------------------------------------

void tst_Plots::readings_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<double>("number"); // not one where nothing is read
    QTest::addColumn<QString>("unit");
    const double none = qQNaN();

    QTest::newRow("int") << QVariant(-7) << -7.0 << "";
    QTest::newRow("byte") << QVariant::fromValue(uchar(200)) << 200.0 << "";
    QTest::newRow("true") << QVariant(true) << 1.0 << "";
    QTest::newRow("false") << QVariant(false) << 0.0 << "";
    QTest::newRow("real") << QVariant(1.5) << 1.5 << "";
    QTest::newRow("text with unit") << QVariant("34 psi") << 34.0 << "psi";
    QTest::newRow("unit without a space") << QVariant("14.4V") << 14.4 << "V";
    QTest::newRow("degrees") << QVariant(QStringLiteral("-4\u2109")) << -4.0 << "\u2109";
    QTest::newRow("percent") << QVariant("87 %") << 87.0 << "%";
    QTest::newRow("bare number text") << QVariant(" 12 ") << 12.0 << "";
    QTest::newRow("no number") << QVariant("-- psi") << none << "";
    QTest::newRow("empty") << QVariant("") << none << "";
    QTest::newRow("time of day") << QVariant("12:30") << none << "";
    QTest::newRow("version") << QVariant("2.5.1") << none << "";
    QTest::newRow("sentence") << QVariant("4 doors are open") << none << "";
    QTest::newRow("list") << QVariant(QStringList{"1"}) << none << "";
    QTest::newRow("nothing") << QVariant() << none << "";
}

void tst_Plots::readings()
{
    QFETCH(QVariant, value);
    QFETCH(double, number);
    QFETCH(QString, unit);
    const std::optional<Reading> reading = readingOf(value);
    QCOMPARE(reading.has_value(), !std::isnan(number));
    if (reading) {
        QCOMPARE(reading->value, number);
        QCOMPARE(reading->unit, unit);
    }
}

void tst_Plots::names_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariantList>("arguments");
    QTest::addColumn<QString>("read"); // empty where there is no such value

    const QVariantList tires = {40, 0, QStringList{"34 psi", "33 psi", "", "", "0"}};
    QTest::newRow("argument") << "tirePressureStatus.flags" << tires << "40";
    QTest::newRow("text of a list") << "tirePressureStatus.values[1]" << tires << "33 psi";
    QTest::newRow("empty text") << "tirePressureStatus.values[2]" << tires << "";
    QTest::newRow("beyond the list") << "tirePressureStatus.values[9]" << tires << "";
    QTest::newRow("a list is no number") << "tirePressureStatus.values" << tires << "";
    QTest::newRow("list of numbers") << "Properties2TextInfo.properties[1]"
                                     << QVariantList{QVariant::fromValue(QList<int>{5, 6})} << "6";
    QTest::newRow("bytes") << "parkingDistanceFront.distances[0]"
                           << QVariantList{QByteArray::fromHex("ff02")} << "255";
    QTest::newRow("unit of its own")
        << "centerGaugeValueNotify.value" << QVariantList{"900", "RPM", 12} << "900 RPM";
    QTest::newRow("no argument") << "doorStatus.bits" << QVariantList{} << "";
}

void tst_Plots::names()
{
    QFETCH(QString, name);
    QFETCH(QVariantList, arguments);
    QFETCH(QString, read);
    const std::optional<CurveName> parsed = CurveName::parse(name);
    QVERIFY(parsed);
    const std::optional<Reading> reading = readingOf(*parsed, arguments);
    const QString text =
        reading ? (QString::number(reading->value) + ' ' + reading->unit).trimmed() : QString();
    QCOMPARE(text, read);
    CurveName map;
    map.element = QStringLiteral("3");
    const QVariant zones = QVariant::fromValue(QMap<int, bool>{{2, false}, {3, true}});
    QCOMPARE(readingOf(map, {zones}).value_or(Reading()).value, 1.0);
    for (const char *unknown :
         {"", "doorStatus", "doorStatus.x", "x.bits", "doorStatus.bits[", "a b"})
        QVERIFY(!CurveName::parse(unknown));
}

// ---- Samples ------------------------------------------------------------------------------------

static Samples::Extent extentByHand(const Samples &samples, int first, int last)
{
    Samples::Extent extent;
    for (int i = first; i < last; ++i)
        extent.add(samples.valueAt(i));
    return extent;
}

void tst_Plots::extentsAreExact_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("dropped");
    QTest::newRow("empty") << 0 << 0;
    QTest::newRow("one") << 1 << 0;
    QTest::newRow("a block") << 16 << 0;
    QTest::newRow("three levels") << 5000 << 0;
    QTest::newRow("three levels, front dropped") << 5000 << 1234;
    QTest::newRow("all dropped") << 5000 << 5000;
}

void tst_Plots::extentsAreExact()
{
    QFETCH(int, count);
    QFETCH(int, dropped);
    Samples samples;
    for (int i = 0; i < count; ++i)
        samples.append(i, (i * 7919) % 1009 - 500);
    samples.dropBefore(dropped);
    QCOMPARE(samples.size(), count - dropped);
    for (int i = 0; i < 10; ++i) // what comes later still lands in the right blocks
        samples.append(count + i, i * 1000);
    const int size = samples.size();
    for (int i = 0; i < 400; ++i) {
        const int first = (i * 37) % size;
        const int last = first + (i * 613) % (size - first + 1);
        const Samples::Extent found = samples.extent(first, last);
        const Samples::Extent expected = extentByHand(samples, first, last);
        QCOMPARE(found.lowest, expected.lowest);
        QCOMPARE(found.highest, expected.highest);
    }
}

void tst_Plots::pointsAreBounded_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("columns");
    QTest::newRow("as many as columns") << 100 << 100;
    QTest::newRow("a thousand") << 1000 << 100;
    QTest::newRow("a million") << 1000 * 1000 << 1000;
    QTest::newRow("a million, narrow") << 1000 * 1000 << 1;
}

void tst_Plots::pointsAreBounded()
{
    QFETCH(int, count);
    QFETCH(int, columns);
    Samples samples;
    const int spike = count * 2 / 3;
    for (int i = 0; i < count; ++i)
        samples.append(i, i == spike ? 500 : i == spike + 1 ? -500 : i % 10);
    const QVector<QPointF> points = samples.reduced(0, count, columns);
    QVERIFY2(points.size() <= 4 * (columns + 2), qPrintable(QString::number(points.size())));
    Samples::Extent drawn;
    for (const QPointF &point : points)
        drawn.add(point.y());
    QCOMPARE(drawn.highest, 500.0); // a single sample is never lost
    QCOMPARE(drawn.lowest, -500.0);
    QVERIFY(std::is_sorted(points.begin(), points.end(),
                           [](const QPointF &a, const QPointF &b) { return a.x() < b.x(); }));
    QCOMPARE(points.constFirst(), QPointF(0, 0));
    QCOMPARE(points.constLast().x(), double(count - 1) / 1000);
    // What holds at the left edge came before it.
    const QVector<QPointF> right = samples.reduced(count - 2, count, columns);
    QCOMPARE(right.constFirst().x(), double(count - 3) / 1000);
}

void tst_Plots::missingValuesAreGaps()
{
    Samples samples;
    samples.append(0, 3);
    samples.append(10, qQNaN());
    samples.append(20, 5);
    QCOMPARE(samples.valueAtMs(9), 3.0);
    QVERIFY(std::isnan(samples.valueAtMs(10)));
    QVERIFY(std::isnan(samples.valueAtMs(-1)));
    QCOMPARE(samples.extent(0, 3).lowest, 3.0);
    QVERIFY(samples.extent(1, 2).isEmpty());
    QVERIFY(std::isnan(samples.reduced(0, 100, 10).value(1).y()));
    for (int i = 0; i < 100; ++i)
        samples.append(30, qQNaN()); // whole blocks
    QCOMPARE(samples.extent(0, 103).highest, 5.0);
}

static double luminance(const QColor &color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

void tst_Plots::colorsAreReadable_data()
{
    QTest::addColumn<QColor>("color");
    for (const QColor &color : CurveList::colors())
        QTest::newRow(qPrintable(color.name())) << color;
}

void tst_Plots::colorsAreReadable()
{
    QFETCH(QColor, color);
    const auto contrast = [&color](const QColor &background) {
        const double one = luminance(color) + 0.05, other = luminance(background) + 0.05;
        return qMax(one, other) / qMin(one, other);
    };
    QVERIFY2(contrast(Qt::white) >= 3, qPrintable(QString::number(contrast(Qt::white))));
    const QColor dark(0x14, 0x18, 0x1E);
    QVERIFY2(contrast(dark) >= 3, qPrintable(QString::number(contrast(dark))));
}

// ---- Panel --------------------------------------------------------------------------------------

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
    QTRY_VERIFY_WITH_TIMEOUT(!session()->drive()->isPlaying(), 60000);
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
    QTRY_VERIFY_WITH_TIMEOUT(!session()->drive()->isPlaying(), 60000);
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
