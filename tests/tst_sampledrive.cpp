#include "drives.h"
#include "obdcsv.h"
#include "testfolder.h"
#include "testmain.h"

using namespace module;

/** Rows of values as a drive: which signals they become, when they go missing, and rewinding. */
class tst_SampleDrive : public QObject
{
    Q_OBJECT
private slots:
    void signalsOfADrive();
    void missingQuantitiesAreMarks();
    void goesMissing_data();
    void goesMissing();
    void seekCatchesUp();
    void seekIsPlaying_data();
    void seekIsPlaying();
    void moreThanIsKept();
    void realDrive();

private:
    std::unique_ptr<VehicleSource> open(const QByteArray &rows)
    {
        QString error;
        auto source = openSource(m_folder.write("drive.csv", rows), &error);
        if (!source)
            qFatal("%s", qPrintable(error));
        return source;
    }

    TestFolder m_folder;
};

/** What is emitted until the end, one line for each signal: its time, name and arguments. */
static QStringList drive(VehicleSource *source)
{
    QStringList lines;
    while (source->nextDueMs() >= 0) {
        const Emission emission = source->take();
        QStringList arguments;
        for (const QVariant &argument : emission.arguments)
            arguments.append(argument.userType() == QMetaType::QStringList
                                 ? argument.toStringList().join(QLatin1Char('|'))
                             : argument.userType() == QMetaType::UChar
                                 ? QString::number(argument.toInt())
                                 : argument.toString());
        lines.append(
            QStringLiteral("%1 %2 %3")
                .arg(emission.atMs)
                .arg(QString::fromLatin1(emission.signal), arguments.join(QStringLiteral(", "))));
    }
    return lines;
}

void tst_SampleDrive::signalsOfADrive()
{
    const auto source =
        open("Time,RPM,Speed (mph),Coolant Temp (°C),IAT,Engine Load,Oil Temp,Voltage\n"
             "0,812.6,0,21,20,18.4,19,12.34\n"
             "0.5,812.9,0,21,20,18.4,19,12.34\n"
             "1,12400,62,130,-30,99.6,140,11.1\n");
    const QStringList lines = drive(source.get());
    for (const char *known : {"gaugeT", "gaugeB", "gauTop", "battery", "center"})
        QCOMPARE(lines.filter(QLatin1String(known)).filter("--"), QStringList());
    QCOMPARE(lines.mid(lines.indexOf("0 NordaVerInfo V|3|12|7") + 1),
             (QStringList{
                 "0 gaugeTitlesNotify Tachometer|Oil Temp|Coolant Temp|Intake Air Temp|Engine "
                 "Calculated Load",
                 "0 centerGaugeValueNotify 812, RPM, 8",
                 "0 gauTopBarTextNotify 0 km/h   0 mph",
                 "0 gaugeTRValueDualNotify 70, ℉, 70",
                 "0 gaugeBLValueDualNotify 68, ℉, 68",
                 "0 gaugeBRValueDualNotify 18, %, 18",
                 "0 gaugeTLValueDualNotify 66, ℉, 66",
                 "0 batteryVoltage 12.3V",
                 "1000 centerGaugeValueNotify 12400, RPM, 100",
                 "1000 gauTopBarTextNotify 100 km/h   62 mph",
                 "1000 gaugeTRValueDualNotify 266, ℉, 250",
                 "1000 gaugeBLValueDualNotify -22, ℉, 0",
                 "1000 gaugeBRValueDualNotify 100, %, 100",
                 "1000 gaugeTLValueDualNotify 284, ℉, 250",
                 "1000 batteryVoltage 11.1V",
             }));
    QCOMPARE(source->durationMs(), 1000);
}

void tst_SampleDrive::missingQuantitiesAreMarks()
{
    const auto source = open("Time,RPM,IAT\n0,800,20\n");
    QCOMPARE(
        drive(source.get()),
        (QStringList{"0 gaugeGraphicalSettingNotify \1\1\1\1\1, ",
                     "0 gaugeTLValueNotify --, 0",
                     "0 gaugeTRValueNotify --, 0",
                     "0 gaugeBRValueNotify --, 0",
                     "0 peakIndicatorNotify 0",
                     "0 shifterArrowIndicatorNotify 0",
                     "0 gauTopBarTextNotify ",
                     "0 doorStatus 0",
                     "0 batteryVoltage --",
                     "0 tirePressureStatus 32, 0, --|--|--|--|0",
                     "0 tireTemperatureStatus 32, 0, --|--|--|--",
                     "0 checkEngineStatus 0",
                     "0 vehicleInfoText , ",
                     "0 vehTopBarText ",
                     "0 parkingDistanceRear ",
                     "0 parkingTopBarText ",
                     "0 TimeInfo -|-|-|-|-|-|-|-|-|-|-|-",
                     "0 NordaVerInfo V|3|12|7",
                     "0 gaugeTitlesNotify Tachometer|Transmission Temp|Coolant Temp|Intake Air "
                     "Temp|Engine Calculated Load",
                     "0 centerGaugeValueNotify 800, RPM, 8",
                     "0 gaugeBLValueDualNotify 68, ℉, 68"}));
    const QString findings = source->findings().join(QLatin1Char('\n'));
    QVERIFY(findings.contains(QStringLiteral("Engine speed: 1 samples, 800 to 800 rpm")));
    QVERIFY(findings.contains(
        QStringLiteral("Gauges: engine speed, intake air temperature; not engine load, coolant "
                       "temperature")));
    QVERIFY(findings.contains(QStringLiteral("Climate: nothing")));
}

void tst_SampleDrive::goesMissing_data()
{
    QTest::addColumn<QByteArray>("rows");
    QTest::addColumn<QString>("missing"); // when, in ms
    const auto rows = [](std::initializer_list<double> seconds, const char *values) {
        QByteArray text;
        for (const double second : seconds)
            text += QByteArray::number(second) + ',' + values + '\n';
        return text;
    };
    const QByteArray steady = rows({0, 1, 2, 3}, "800,20");
    QTest::newRow("a pause") << steady + rows({60, 61}, "800,20") << "8000";
    QTest::newRow("one column stays empty")
        << steady + rows({4, 5, 6, 7, 8, 9, 10}, "800,") << "8000";
    QTest::newRow("twice") << rows({0,  1,  2,  3,  4,  5,  6,  7,  8,  9, 20,
                                    21, 22, 23, 24, 25, 26, 27, 28, 29, 45},
                                   "800,20")
                           << "14000 34000";
    QTest::newRow("a short gap") << steady + rows({8}, "800,20") << "";
    QTest::newRow("fast, a second's gap") << rows({0, 0.1, 0.2, 1.2, 1.3}, "800,20") << "";
    QTest::newRow("fast, a longer gap") << rows({0, 0.1, 0.2, 1.3, 1.4}, "800,20") << "1200";
    QTest::newRow("every 30 seconds") << rows({0, 30, 60, 130, 160}, "800,20") << "";
    QTest::newRow("bursts of four")
        << rows({0, 0.2, 0.4, 0.6, 2, 2.2, 2.4, 2.6, 4, 4.2, 4.4, 4.6, 6}, "800,20") << "";
    QTest::newRow("several rows of each second")
        << rows({0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 2, 2, 2, 5, 5}, "800,20") << "";
    QTest::newRow("only once") << rows({0}, "800,20") + rows({1, 2, 600, 601}, "800,") << "";
}

void tst_SampleDrive::goesMissing()
{
    QFETCH(QByteArray, rows);
    QFETCH(QString, missing);
    const auto source = open("Time,RPM,IAT\n" + rows);
    QStringList moments;
    for (const QString &line : drive(source.get()).filter("gaugeBLValueNotify --, 0"))
        moments.append(line.section(QLatin1Char(' '), 0, 0));
    QCOMPARE(moments.join(QLatin1Char(' ')), missing);
    const QString finding = source->findings().filter("Intake air temperature:").value(0);
    QCOMPARE(finding.contains("; missing "), !missing.isEmpty());
}

void tst_SampleDrive::seekCatchesUp()
{
    const auto source = open("Time,RPM,IAT\n0,800,20\n1,900,\n2,1000,30\n3,1100,\n4,1200,40\n");
    drive(source.get());
    source->seek(3000);
    const QStringList lines = drive(source.get());
    QCOMPARE(lines.mid(lines.size() - 5), (QStringList{"3000 centerGaugeValueNotify 1000, RPM, 10",
                                                       "3000 gaugeBLValueDualNotify 86, ℉, 86",
                                                       "3000 centerGaugeValueNotify 1100, RPM, 11",
                                                       "4000 centerGaugeValueNotify 1200, RPM, 12",
                                                       "4000 gaugeBLValueDualNotify 104, ℉, 104"}));
}

/** What the screens show after playing up to a moment. */
static QStringList shownAt(SampleSource *source, qint64 ms)
{
    QMap<QByteArray, QString> shown;
    while (source->nextDueMs() >= 0 && source->nextDueMs() < ms) {
        const Emission emission = source->take();
        shown.insert(emission.signal, emission.arguments[0].toString());
    }
    return QStringList(shown.values());
}

void tst_SampleDrive::seekIsPlaying_data()
{
    QTest::addColumn<int>("ms");
    for (const int ms : {0, 1, 500, 1000, 4321, 9999, 10000, 99999})
        QTest::addRow("%d ms", ms) << ms;
}

void tst_SampleDrive::seekIsPlaying()
{
    QFETCH(int, ms);
    SampleLog log; // quantities that fall silent at different moments
    for (int i = 0; i < 1000; ++i) {
        const Quantity quantity = Quantity(i % int(Quantity::Count));
        if (i < 60 * int(quantity) || quantity == Quantity::EngineSpeed)
            log.add(i * 10, quantity, i % 90);
    }
    log.durationMs = 9990;
    SampleSource played(log);
    SampleSource sought(log);
    const QStringList shown = shownAt(&played, ms);
    sought.seek(ms);
    QMap<QByteArray, QString> caughtUp;
    for (int i = 0; i < shown.size(); ++i) {
        const Emission emission = sought.take();
        QCOMPARE(emission.atMs, ms);
        caughtUp.insert(emission.signal, emission.arguments[0].toString());
    }
    QCOMPARE(QStringList(caughtUp.values()), shown);
    QCOMPARE(drive(&sought), drive(&played));
}

void tst_SampleDrive::moreThanIsKept()
{
    SampleLog log;
    log.capacity = 3;
    for (int i = 0; i < 5; ++i)
        log.add(i, Quantity::EngineSpeed, 900);
    log.add(5, Quantity::EngineSpeed, -1);
    QCOMPARE(log.samples.size(), 3);
    const SampleSource source(log);
    QVERIFY(source.findings().contains(QStringLiteral("2 values were not kept: the limit is 3")));
    QCOMPARE(source.statistics().value("beyondCapacity").toInt(), 2);
    QCOMPARE(source.statistics().value("droppedValues").toInt(), 1);
}

void tst_SampleDrive::realDrive()
{
    const QString path = recordedDrive("etios2014_live1_coldstart.csv");
    if (!QFile::exists(path))
        QSKIP("this recorded drive is not on this machine");
    QString error;
    const auto source = openSource(path, &error);
    QVERIFY2(source, qPrintable(error));
    const QJsonObject totals = source->statistics();
    QCOMPARE(totals.value("rows").toInt(), 3853);
    QCOMPARE(totals.value("badLines").toInt(), 0);
    QVERIFY(qAbs(totals.value("driveSeconds").toDouble() - 1893) < 1);
    const QJsonObject quantities = totals.value("quantities").toObject();
    const auto range = [&quantities](const char *name) {
        const QJsonObject quantity = quantities.value(QLatin1String(name)).toObject();
        return QPair<double, double>(quantity.value("min").toDouble(),
                                     quantity.value("max").toDouble());
    };
    QCOMPARE(range("Engine speed"), qMakePair(0.0, 2334.25));
    QCOMPARE(range("Coolant temperature"), qMakePair(77.0, 203.0));
    QCOMPARE(range("Intake air temperature"), qMakePair(75.2, 131.0));
    QCOMPARE(range("Engine load"), qMakePair(0.0, 98.431));
    QCOMPARE(range("Voltage"), qMakePair(10.332, 14.414));
    QCOMPARE(drive(source.get()).filter(QStringLiteral("batteryVoltage 10.3V")).size(), 1);
}

NORDA_TEST_MAIN(tst_SampleDrive)
#include "tst_sampledrive.moc"
