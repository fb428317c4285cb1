#include "benchfixture.h"
#include "program.h"
#include "recording.h"
#include "scenario/scenario.h"
#include "testpaths.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLoggingCategory>
#include <QPushButton>
#include <QStatusBar>

using norda::VtqAdaptor;

/** What a session at the bench leaves: scenarios and recordings, which play back alike. */
class tst_SessionFiles : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void init()
    {
        m_options = Options();
        makeBench();
    }
    void cleanup() { removeBench(); }

    void burstWithEverythingOpen();
    void sessionByHandBecomesAScenario();
    void seedIsPartOfTheScenario();
    void recordingGoesOnWithAnotherDrive();
    void recordingOpensItsPage();
    void partIsReplayedAlike_data();
    void partIsReplayedAlike();

private:
    void recordTouches(const QString &file);
    void waitFor(int seconds) const { QTRY_VERIFY(session()->nowMs() >= seconds * 1000); }
    QByteArray content(const QString &name) const
    {
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void drag(const char *name, const QVector<int> &places) const;

    QTemporaryDir m_folder;
};

void tst_SessionFiles::burstWithEverythingOpen()
{
    const QString file = m_folder.filePath("burst.jsonl");
    QString error;
    QVERIFY(session()->record(file, 0, {}, &error));
    for (const char *dock : {"signals", "calls", "car", "inspector", "timeline", "audio"})
        open(dock);
    for (int i = 0; i < 60; ++i)
        emit VtqAdaptor::instance()->centerGaugeValueNotify(QString::number(i), "RPM", uchar(i));
    QTest::qWait(400); // the panels look
    const Journal *journal = session()->journal();
    QStringList noted;
    for (const int place : journal->ofKind(Journal::Signal))
        noted.append(journal->entries()[place].arguments[0].toString());
    QStringList sent;
    for (int i = 0; i < 60; ++i)
        sent.append(QString::number(i));
    QCOMPARE(noted, sent);
    session()->finish();
    const auto recording = module::RecordingSource::open(file, &error);
    QVERIFY(recording);
    QStringList recorded;
    while (recording->nextDueMs() >= 0)
        recorded.append(recording->take().arguments[0].toString());
    QCOMPARE(recorded, sent);
}

void tst_SessionFiles::sessionByHandBecomesAScenario()
{
    makeBench("simulator");
    module::Drive *drive = session()->drive();
    QTRY_VERIFY(drive->positionMs() > 500);
    click("norda_key_climate");
    QTRY_COMPARE(windows()->currentWindow(), 82);
    QTRY_COMPARE(text("Txt_left_temp"), QStringLiteral("70.00 F"));
    click("key_left_temp_next");
    QTRY_COMPARE(text("Txt_left_temp"), QStringLiteral("71.00 F"));
    click("Txt_left_temp");                      // nothing to be touched
    QTest::keyClick(m_window.data(), Qt::Key_K); // no page uses it
    QTest::keyClick(m_window.data(), Qt::Key_5);
    QTRY_COMPARE(windows()->currentWindow(), 84);
    auto *trunk = find<QComboBox>("car-trunk");
    trunk->setCurrentText("open");
    emit trunk->activated(trunk->currentIndex());
    auto *table = find<QTableView>("signals");
    table->selectRow(rowOf("signals", "tirePressureStatus", 0));
    auto *presets = find<QComboBox>("presets");
    presets->setCurrentText("Soft, rear right");
    emit presets->activated(presets->currentIndex());
    QTest::mouseClick(find<QPushButton>("send"), Qt::LeftButton);
    const QString file = m_folder.filePath("by-hand.scenario");
    QString error;
    QVERIFY2(m_window->saveScenario(file, &error), qPrintable(error));

    QFile saved(file);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    const QString scenario = QString::fromUtf8(saved.readAll());
    QVERIFY2(scenario.contains("touch key_left_temp_next "), qPrintable(scenario));
    QVERIFY2(scenario.contains("expect call NordatriggerRearDefrostButton {"),
             qPrintable(scenario));
    QVERIFY2(scenario.contains(QRegularExpression("touch \\d+ \\d+\n")), qPrintable(scenario));
    QVERIFY2(!scenario.contains("Txt_left_temp"), qPrintable(scenario));
    QVERIFY2(scenario.contains("key 75\n"), qPrintable(scenario));
    QVERIFY2(scenario.contains("car trunk open"), qPrintable(scenario));
    QVERIFY2(scenario.contains("signal tirePressureStatus 40 0 [\"34 psi\",\"34 psi\",\"17 psi\","),
             qPrintable(scenario));
    const ProgramResult result =
        runProgram({testpaths::benchFile(), "--gallery", m_folder.path(), "--script", file});
    QVERIFY2(result.exitCode == 0, qPrintable(scenario + result.out + result.err));

    // Somewhere that cannot be written to: one line.
    QVERIFY(!m_window->saveScenario("/proc/no.scenario", &error));
    QVERIFY(error.startsWith("/proc/no.scenario: expected a file that can be written: "));
}

// The same faults strike when it is played again, those of the drive that was open in the end.
void tst_SessionFiles::seedIsPartOfTheScenario()
{
    using module::Faults;
    QString error;
    QFile drive(m_folder.filePath("still.jsonl"));
    QVERIFY(drive.open(QIODevice::WriteOnly));
    drive.write(module::recordingHeader("still") + "{\"end\":true,\"t\":60000}\n");
    drive.close();
    m_options.setup.faults = Faults(7);
    QVERIFY(m_options.setup.faults.add("silence:0.3", &error));
    makeBench("simulator");
    find<QDoubleSpinBox>("fault-duplicate")->setValue(0.25);

    const auto readBack = [this](Scenario *scenario) {
        QString error;
        const QString file = m_folder.filePath("faults.scenario");
        QVERIFY2(m_window->saveScenario(file, &error), qPrintable(error));
        if (content("faults.scenario").contains("expect") && !scenario->read(file, &error))
            QFAIL(qPrintable(error));
    };
    Scenario first;
    readBack(&first);
    QCOMPARE(first.setup.faults.seed(), 7u);
    QCOMPARE(first.setup.faults.stated(), QStringList{"silence:0.3"});
    for (int i = 0; i < 200; ++i) { // and they strike the same signals
        const module::Emission emission{i, "doorStatus", {i}};
        QCOMPARE(first.setup.faults.pass(emission).size(),
                 m_options.setup.faults.pass(emission).size());
    }
    m_window->openDrive(drive.fileName());
    Scenario second;
    readBack(&second);
    QCOMPARE(second.setup.source, drive.fileName());
    QCOMPARE(second.setup.faults.seed(), 7u);
    QCOMPARE(second.setup.faults.stated(), (QStringList{"silence:0.3", "duplicate:0.25"}));
}

void tst_SessionFiles::recordingGoesOnWithAnotherDrive()
{
    const QString file = m_folder.filePath("both.jsonl");
    QString error;
    QFile other(m_folder.filePath("other.jsonl"));
    QVERIFY(other.open(QIODevice::WriteOnly));
    other.write(module::recordingHeader("other") +
                "{\"args\":[9],\"signal\":\"doorStatus\",\"t\":10}\n");
    other.close();
    QVERIFY(session()->record(file, 0, {}, &error));
    emit VtqAdaptor::instance()->doorStatus(4);
    QTRY_VERIFY(session()->nowMs() > 20);
    m_window->openDrive(other.fileName());
    QVERIFY2(m_window->statusBar()->currentMessage().contains("other.jsonl"),
             qPrintable(m_window->statusBar()->currentMessage()));
    const Journal *journal = session()->journal();
    QTRY_VERIFY(journal->totalOf(Journal::Signal, "doorStatus"));
    session()->finish();

    const auto recorded = module::RecordingSource::open(file, &error);
    QVERIFY2(recorded, qPrintable(error));
    QCOMPARE(recorded->take().arguments, QVariantList{QVariant::fromValue(uchar(4))});
    QVERIFY(recorded->nextDueMs() > 20);
    QCOMPARE(recorded->take().arguments, QVariantList{QVariant::fromValue(uchar(9))});
    QCOMPARE(recorded->statistics().value("badLines").toInt(), 0);
    QVERIFY(content("both.jsonl").contains("\"end\""));
}

/** From the middle of a widget to the right, so many pixels at a time. */
void tst_SessionFiles::drag(const char *name, const QVector<int> &places) const
{
    const QWidget *named = screen()->widgetNamed(name);
    const QPoint from = named->mapTo(screen(), named->rect().center());
    QWidget *hit = screen()->childAt(from);
    const auto send = [hit](QEvent::Type type, const QPoint &place) {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        const Qt::MouseButtons held =
            type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, place, button, held, {});
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(hit, &event); // sendEvent() would take that off again
    };
    const QPoint begin = hit->mapFrom(screen(), from);
    send(QEvent::MouseButtonPress, begin);
    for (const int right : places)
        send(QEvent::MouseMove, begin + QPoint(right, 0));
    send(QEvent::MouseButtonRelease, begin + QPoint(places.constLast(), 0));
}

/** As somebody at the bench uses it: in real time, with real mouse events. */
void tst_SessionFiles::recordTouches(const QString &file)
{
    // What a trace line looks up is a call like any other.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    m_options.setup.record = file;
    m_options.setup.speed = 20;
    m_options.setup.page = 81;
    makeBench("simulator");

    waitFor(4);
    click("norda_key_climate");
    waitFor(6);
    click("key_left_temp_next");
    QTest::mouseDClick(screen()->widgetNamed("key_AC"), Qt::LeftButton);
    QTest::mouseRelease(screen()->widgetNamed("key_AC"), Qt::LeftButton);
    click("key_rear"); // what it shows from here on depends on this touch
    waitFor(12);
    drag("bkg_temp_cusl", {0, 40, 90});
    waitFor(16);
    QTest::keyClick(m_window.data(), Qt::Key_5);
    QTRY_VERIFY(screen()->widgetNamed("key_item_2")->isVisible());
    waitFor(20);
    click("key_item_2");
    waitFor(24);
    QTest::keyClick(m_window.data(), Qt::Key_K);
    click("norda_key_radar");
    waitFor(26);
    click("key_camera");
    waitFor(28);
    QTest::keyClick(m_window.data(), Qt::Key_Escape);
    emit norda::VtqService::instance()->audioInterruptNotify(4, 19);
    waitFor(30);
    emit norda::VtqService::instance()->audioInterruptNotify(0, 0);
    waitFor(34);
    click("norda_key_gauge");
    waitFor(38);
    session()->finish();
    QLoggingCategory::setFilterRules(QString());
}

// A recording is opened where it began, and then it is the person's who sits there.
void tst_SessionFiles::recordingOpensItsPage()
{
    const QString file = m_folder.filePath("page.jsonl");
    QFile recording(file);
    QVERIFY(recording.open(QIODevice::WriteOnly));
    recording.write(module::recordingHeader("page") +
                    "{\"action\":\"page\",\"args\":[82],\"t\":0}\n"
                    "{\"action\":\"page\",\"args\":[81],\"t\":50}\n"
                    "{\"end\":true,\"t\":100}\n");
    recording.close();
    makeBench(file);
    QTRY_VERIFY(session()->drive()->positionMs() >= 100);
    QCOMPARE(windows()->currentWindow(), 82);
    QCOMPARE(session()->journal()->totalOf(Journal::Action, "page"), nullptr);
    QString error;
    QVERIFY(m_window->saveScenario(m_folder.filePath("page.scenario"), &error));
    QVERIFY(content("page.scenario").contains("0        page 82\n"));
}

void tst_SessionFiles::partIsReplayedAlike_data()
{
    QTest::addColumn<QStringList>("range");
    QTest::newRow("the whole") << QStringList{};
    QTest::newRow("its start") << QStringList{"--to", "10"};
    QTest::newRow("behind the page") << QStringList{"--from", "5", "--to", "36"};
    QTest::newRow("within the rear zone") << QStringList{"--from", "11", "--to", "15"};
    QTest::newRow("from the menu on") << QStringList{"--from", "18"};
    QTest::newRow("before the camera closes") << QStringList{"--from", "27.5", "--to", "37"};
    QTest::newRow("while the module warns") << QStringList{"--from", "29"};
}

// What docs/bench.md tells one to do.
void tst_SessionFiles::partIsReplayedAlike()
{
    QFETCH(QStringList, range);
    const QString file = m_folder.filePath("report.jsonl");
    if (!QFile::exists(file))
        recordTouches(file);
    const QString part = m_folder.filePath("part.jsonl");
    const QString replayed = m_folder.filePath("new.jsonl");
    const auto run = [](const QStringList &arguments) {
        const ProgramResult result = runProgram(QStringList{testpaths::benchFile()} + arguments);
        if (result.exitCode != 0)
            qInfo("%s%s", qPrintable(result.out), qPrintable(result.err));
        return result;
    };
    QCOMPARE(run(QStringList{"--cut", file, "--record", part} + range).exitCode, 0);
    const ProgramResult replay = run({"--headless", "--source", part, "--record", replayed});
    QCOMPARE(replay.exitCode, 0);
    QVERIFY2(!replay.err.contains("expected"), qPrintable(replay.err));
    const ProgramResult diff = run({"--diff", part, replayed});
    QCOMPARE(diff.exitCode, 0);
    QVERIFY2(diff.out.startsWith("identical: "), qPrintable(diff.out));
    QVERIFY(content("new.jsonl").contains("\"call\""));
    QVERIFY(content("report.jsonl").contains("manTempValue"));
}

NORDA_TEST_MAIN(tst_SessionFiles)
#include "tst_sessionfiles.moc"
