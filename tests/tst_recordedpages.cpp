#include "benchfixture.h"
#include "recording.h"
#include "testfolder.h"

#include <QAbstractButton>
#include <QLabel>

/** What the pages show of a recorded drive: its own values, and none that it does not hold. */
class tst_RecordedPages : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void init() { makeBench(); }
    void cleanup() { removeBench(); }

    void onlyItsOwnNumbers_data();
    void onlyItsOwnNumbers();
    void unknownIsShown();
    void lampOfAnotherDriveGoesOut();
    void lastValuesAfterTheEnd();
    void lateValueIsUnknownBefore();
    void seekBackForgets();
    void noLongerComes();
    void recordedTiresStay();
    void menuAndVersions_data();
    void menuAndVersions();
    void repeatsAreNotRecorded();

private:
    QString csv() const
    {
        return m_folder.write("drive.csv", "Time,RPM,IAT\n0,800,20\n2,800,20\n");
    }
    QString candump() const
    {
        return m_folder.write("drive.log", "(1.0) can0 7E8#04410C0C80\n(1.0) can0 7E8#03410F3C\n"
                                           "(3.0) can0 7E8#04410C0C80\n");
    }
    QString recording() const
    {
        return m_folder.write("drive.jsonl",
                              recordingLines("centerGaugeValueNotify", R"("800","RPM",8)") +
                                  "{\"t\":0,\"signal\":\"gaugeBLValueDualNotify\","
                                  "\"args\":[\"68\",\"\u2109\",68]}\n"
                                  "{\"t\":2000,\"end\":true}\n");
    }
    static QByteArray recordingLines(const char *signal, const char *arguments)
    {
        return module::recordingHeader(QStringLiteral("test")) + "{\"t\":0,\"signal\":\"" + signal +
               "\",\"args\":[" + arguments + "]}\n";
    }
    void playToItsEnd()
    {
        module::Drive *drive = session()->drive();
        drive->setSpeed(module::Drive::Unlimited);
        QTRY_VERIFY(!drive->isPlaying() && drive->positionMs() >= drive->durationMs());
    }
    /** Until a fault, a soft tire and others beside the car have left their marks on every page. */
    void simulateBefore()
    {
        makeBench(QStringLiteral("simulator"));
        session()->drive()->seek(400000);
        for (const int id : {80, 81, 82})
            QTRY_VERIFY(!numbersOn(id).isEmpty());
        windows()->openWindow(83);
        windows()->openWindow(80);
    }

    TestFolder m_folder;
};

void tst_RecordedPages::onlyItsOwnNumbers_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("when");
    for (const char *when : {"before the drive", "during it", "after its end", "after another"}) {
        QTest::addRow("CSV export, opened %s", when) << csv() << QByteArray(when);
        QTest::addRow("candump log, opened %s", when) << candump() << QByteArray(when);
        QTest::addRow("recording, opened %s", when) << recording() << QByteArray(when);
    }
}

void tst_RecordedPages::onlyItsOwnNumbers()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, when);
    if (when == "before the drive") {
        for (const int id : {81, 82, 83, 85})
            windows()->openWindow(id);
    }
    if (when == "after another")
        simulateBefore();
    if (when == "during it" || when == "after its end")
        makeBench(file);
    else
        drop(file);
    QTRY_COMPARE(text("Txt_center_value"), QStringLiteral("800 RPM"));
    if (when == "after its end")
        playToItsEnd();
    QTRY_COMPARE(numbersOn(80), (QStringList{"68 ℉", "800 RPM"}));
    for (const int id : {81, 82, 83})
        QCOMPARE(numbersOn(id), QStringList());
    windows()->openWindow(85);
    norda::VtqAdaptor::instance()->NordaData_Request(5);
    QTRY_COMPARE(text("Time_Label"), QStringLiteral("Time:--/--/-- --:--:--"));
}

void tst_RecordedPages::unknownIsShown()
{
    makeBench(csv());
    windows()->openWindow(81);
    QTRY_COMPARE(text("Txt_battery"), QStringLiteral("--"));
    for (const char *kind : {"psi", "temp"}) {
        for (const char *place : {"front_left", "front_right", "rear_left", "rear_right"})
            QCOMPARE(text(QByteArray("Txt_").append(kind).append('_').append(place)),
                     QStringLiteral("--"));
    }
    QVERIFY(!screen()->widgetNamed("key_engine")->isEnabled());
    drop(m_folder.write("speed.csv", "Time,Vehicle Speed (km/h)\n0,50\n1,50\n"));
    windows()->openWindow(80);
    QTRY_COMPARE(text("Txt_center_value"), QStringLiteral("-- RPM"));
    QCOMPARE(text("Txt_up_left_value"), QStringLiteral("--"));
}

void tst_RecordedPages::lampOfAnotherDriveGoesOut()
{
    simulateBefore();
    windows()->openWindow(81);
    auto *lamp = qobject_cast<QAbstractButton *>(screen()->widgetNamed("key_engine"));
    QTRY_VERIFY(lamp->isChecked());
    drop(csv());
    QTRY_VERIFY(!lamp->isEnabled() && !lamp->isChecked());
    QCOMPARE(text("Txt_fork"), QString()); // no trip, no outside temperature
    QVERIFY(screen()->widgetNamed("Txt_carInfo")->isHidden());
    windows()->openWindow(80);
    QCOMPARE(text("Txt_fork"), QString()); // no speed, no gear
}

void tst_RecordedPages::lastValuesAfterTheEnd()
{
    makeBench(m_folder.write("volts.csv", "Time,RPM,Voltage\n0,800,12.3\n1,900,14.1\n"));
    playToItsEnd();
    windows()->openWindow(81);
    QTRY_COMPARE(text("Txt_battery"), QStringLiteral("14.1V"));
    windows()->rebuildWindow(80);
    windows()->openWindow(80);
    QTRY_COMPARE(text("Txt_center_value"), QStringLiteral("900 RPM"));
}

void tst_RecordedPages::lateValueIsUnknownBefore()
{
    makeBench(m_folder.write("late.csv", "Time,RPM,Voltage\n0,800,\n60,800,12.3\n"));
    windows()->openWindow(81);
    QTRY_COMPARE(text("Txt_battery"), QStringLiteral("--"));
    session()->drive()->seek(60000);
    QTRY_COMPARE(text("Txt_battery"), QStringLiteral("12.3V"));
}

void tst_RecordedPages::seekBackForgets()
{
    makeBench(m_folder.write("late.csv", "Time,RPM,Voltage\n0,800,\n60,800,12.3\n"));
    windows()->openWindow(81);
    session()->drive()->seek(60000);
    QTRY_COMPARE(text("Txt_battery"), QStringLiteral("12.3V"));
    session()->drive()->seek(10000);
    QTRY_COMPARE(text("Txt_battery"), QStringLiteral("--"));
}

void tst_RecordedPages::noLongerComes()
{
    makeBench(m_folder.write("gap.csv", "Time,RPM,Voltage\n0,800,12.3\n1,800,12.3\n2,800,\n3,800,\n"
                                        "60,900,14.1\n"));
    const auto shows = [this](qint64 ms, const char *label, const char *expected) {
        session()->drive()->seek(ms);
        QTRY_COMPARE(text(label), QString::fromLatin1(expected));
    };
    session()->drive()->pause();
    windows()->openWindow(81);
    shows(5900, "Txt_battery", "12.3V");
    shows(6100, "Txt_battery", "--");
    shows(60000, "Txt_battery", "14.1V");
    windows()->openWindow(80);
    shows(6100, "Txt_center_value", "800 RPM");
    shows(8100, "Txt_center_value", "-- RPM");
    shows(60000, "Txt_center_value", "900 RPM");
    const QStringList findings = session()->drive()->source()->findings();
    QVERIFY(findings.contains("Voltage: 3 samples, 12.3 to 14.1 V; missing once"));
}

void tst_RecordedPages::recordedTiresStay()
{
    makeBench(m_folder.write(
        "tires.jsonl",
        recordingLines("tirePressureStatus", R"(32,0,["31 psi","32 psi","33 psi","34 psi","1"])") +
            "{\"t\":10,\"signal\":\"checkEngineStatus\",\"args\":[2]}\n"
            "{\"t\":500,\"end\":true}\n"));
    playToItsEnd();
    windows()->openWindow(81);
    QTRY_COMPARE(text("Txt_psi_front_left"), QStringLiteral("31 psi"));
    QCOMPARE(text("Txt_battery"), QStringLiteral("--"));
    auto *lamp = qobject_cast<QAbstractButton *>(screen()->widgetNamed("key_engine"));
    QVERIFY(lamp->isEnabled() && lamp->isChecked());
}

void tst_RecordedPages::menuAndVersions_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("CSV export") << csv();
    QTest::newRow("candump log") << candump();
    QTest::newRow("recording") << recording();
}

void tst_RecordedPages::menuAndVersions()
{
    QFETCH(QString, file);
    makeBench(file);
    click("norda_key_setting");
    QTRY_COMPARE(text("Txt_pop_title"), QStringLiteral("Vehicle settings"));
    QTRY_COMPARE(text("Txt_item_1"), QStringLiteral("Units"));
    click("key_item_1");
    QTRY_COMPARE(text("Txt_item_1"), QStringLiteral("Speed:  mph"));
    playToItsEnd();
    click("norda_key_about");
    QTRY_COMPARE(text("Interface_Fw_Label"), QStringLiteral("Interface FW:3.12.7"));
}

void tst_RecordedPages::repeatsAreNotRecorded()
{
    makeBench(recording());
    for (const int id : {81, 82, 83})
        numbersOn(id);
    playToItsEnd();
    QCOMPARE(session()->signalCount(), 2);
    QCOMPARE(session()->drive()->refused(), 0);
}

NORDA_TEST_MAIN(tst_RecordedPages)
#include "tst_recordedpages.moc"
