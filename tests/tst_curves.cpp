#include "plots/curvelist.h"
#include "plots/curvename.h"
#include "plots/samples.h"
#include "testmain.h"

#include <cmath>

/** What a plot draws, without a window: values of signals, their names, samples and colours. */
class tst_Curves : public QObject
{
    Q_OBJECT
private slots:
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
};

void tst_Curves::readings_data()
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

void tst_Curves::readings()
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

void tst_Curves::names_data()
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

void tst_Curves::names()
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

static Samples::Extent extentByHand(const Samples &samples, int first, int last)
{
    Samples::Extent extent;
    for (int i = first; i < last; ++i)
        extent.add(samples.valueAt(i));
    return extent;
}

void tst_Curves::extentsAreExact_data()
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

void tst_Curves::extentsAreExact()
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

void tst_Curves::pointsAreBounded_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("columns");
    QTest::newRow("as many as columns") << 100 << 100;
    QTest::newRow("a thousand") << 1000 << 100;
    QTest::newRow("a million") << 1000 * 1000 << 1000;
    QTest::newRow("a million, narrow") << 1000 * 1000 << 1;
}

void tst_Curves::pointsAreBounded()
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

void tst_Curves::missingValuesAreGaps()
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

void tst_Curves::colorsAreReadable_data()
{
    QTest::addColumn<QColor>("color");
    for (const QColor &color : CurveList::colors())
        QTest::newRow(qPrintable(color.name())) << color;
}

void tst_Curves::colorsAreReadable()
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

NORDA_TEST_MAIN(tst_Curves)
#include "tst_curves.moc"
