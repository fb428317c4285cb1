#include "benchfixture.h"
#include "panels/timelineview.h"
#include "program.h"
#include "recording.h"
#include "scenario/scenario.h"
#include "session/rewind.h"
#include "testpaths.h"
#include "tools/imagenames.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLoggingCategory>
#include <QPushButton>
#include <QSlider>
#include <QStatusBar>
#include <QToolButton>

using norda::VtqAdaptor;

/** A session at the bench: rewound, kept, remembered and saved as a scenario. */
class tst_Session : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void init()
    {
        m_options = Options();
        makeBench();
    }
    void cleanup() { removeBench(); }

    void callLeadsToItsMoment();
    void screenAsItWas();
    void whatCameInPartsAsItWas();
    void lineZoomsAndMoves();
    void panelsAreRemembered();
    void burstWithEverythingOpen();
    void journalShowsWhatWasDropped();
    void windowPlaysAndSeeks();
    void sessionByHandBecomesAScenario();
    void seedIsPartOfTheScenario();
    void recordingGoesOnWithAnotherDrive();
    void modifiersAreNoKeys_data();
    void modifiersAreNoKeys();
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

enum CallColumn { Time, Operation, Meaning, Arguments };

void tst_Session::callLeadsToItsMoment()
{
    open("timeline");
    open("calls");
    windows()->openWindow(81);
    auto *table = find<QTableView>("calls");
    QTRY_VERIFY(rowOf("calls", "requestVehicleInfo", Operation) >= 0);
    const QModelIndex index =
        model("calls")->index(rowOf("calls", "requestVehicleInfo", Operation), Operation);
    table->scrollTo(index);
    emit table->doubleClicked(index);
    QVERIFY(session()->isRewound());
    QVERIFY(!find<TimelineView>("timeline")->follows());
    QTest::mouseClick(find<QToolButton>("live"), Qt::LeftButton);
    QVERIFY(!session()->isRewound());
}

void tst_Session::screenAsItWas()
{
    makeBench("simulator");
    open("timeline");
    module::Drive *drive = session()->drive();
    Journal *journal = session()->journal();
    drive->setSpeed(100);
    QTRY_VERIFY(journal->totalOf(Journal::Signal, "centerGaugeValueNotify") &&
                drive->positionMs() > 12000);
    click("norda_key_vehicle");
    QTRY_VERIFY(drive->positionMs() > 30000);
    QVERIFY(screen()->widgetNamed("icon_door_front_left")->isHidden());

    // The module speaks for a moment.
    norda::VtqService *service = norda::VtqService::instance();
    emit service->audioInterruptNotify(4, 19);
    QCOMPARE(audio()->voice(), AudioStage::WarningTone);
    const qint64 spoken = session()->nowMs();
    QTRY_VERIFY(session()->nowMs() > spoken + 500);
    emit service->audioInterruptNotify(0, 0);
    QCOMPARE(audio()->voice(), AudioStage::Silent);

    // At 2 s the driver's door was open, and the gauges were on the screen.
    auto *line = find<TimelineView>("timeline");
    line->setRange(0, 40000);
    QTest::mouseClick(line, Qt::LeftButton, {}, QPoint(line->xAt(2000), line->height() / 2));
    QVERIFY(!drive->isPlaying());
    QCOMPARE(windows()->currentWindow(), 80);
    QCOMPARE(text("Txt_center_value"), QStringLiteral("0 RPM"));
    const qint64 known = journal->total();
    emit line->momentRequested(spoken + 100);
    QCOMPARE(audio()->voice(), AudioStage::Silent); // what is past is seen and not heard
    // Along the scale, the screen follows the pointer.
    QTest::mousePress(line, Qt::LeftButton, {}, QPoint(line->xAt(3000), 5));
    for (const int ms : {10000, 20000, 29000}) {
        QMouseEvent move(QEvent::MouseMove, QPoint(line->xAt(ms), 5), Qt::NoButton, Qt::LeftButton,
                         {});
        QCoreApplication::sendEvent(line, &move);
    }
    QTest::mouseRelease(line, Qt::LeftButton, {}, QPoint(line->xAt(29000), 5));
    QCOMPARE(line->beginMs(), qint64(0));
    QCOMPARE(windows()->currentWindow(), 81);
    QVERIFY(text("Txt_battery").startsWith("1"));
    QTest::qWait(50);
    QCOMPARE(journal->total(), known); // a rewind is not part of the session

    QTest::keyClick(m_window.data(), Qt::Key_Space); // the key for it goes on
    QVERIFY(drive->isPlaying());
    emit line->momentRequested(29000);
    QVERIFY(!drive->isPlaying());

    // A touch of the past brings the present back, and nothing else.
    click("norda_key_about");
    QVERIFY(drive->isPlaying());
    QCOMPARE(windows()->currentWindow(), 81);
    emit line->momentRequested(2000);
    QVERIFY(!drive->isPlaying());
    QTest::mouseClick(find<QToolButton>("live"), Qt::LeftButton);
    QVERIFY(drive->isPlaying());
    QCOMPARE(windows()->currentWindow(), 81);
    const qint64 position = drive->positionMs();
    QTRY_VERIFY(drive->positionMs() > position);
    QTRY_VERIFY(journal->total() > known);
}

void tst_Session::whatCameInPartsAsItWas()
{
    auto *look = m_window->findChild<Rewind *>();
    const auto now = [this] { return session()->nowMs(); };
    const auto send = [](int type, int line, const QString &text) {
        emit VtqAdaptor::instance()->NordaConfigMenuTextInfo({type, 0, line}, {text}, {});
    };
    const auto rows = [this] {
        QStringList texts;
        for (int row = 1; row <= 15; ++row) {
            const QByteArray name = "Txt_item_" + QByteArray::number(row);
            if (screen()->widgetNamed(name)->isVisible())
                texts.append(text(name.constData()));
        }
        return text("Txt_pop_title") + ": " + texts.join(' ');
    };
    windows()->openWindow(84);
    send(1, 1, "Lights");
    send(2, 2, "Fog");
    const qint64 shortPage = now();
    QTRY_VERIFY(now() > shortPage);
    send(1, 1, "Doors");
    send(2, 2, "Left");
    send(2, 3, "Right");
    QCOMPARE(rows(), QStringLiteral("Doors: Left Right"));
    QTRY_VERIFY(now() > shortPage + 50);
    look->show(shortPage);
    QCOMPARE(rows(), QStringLiteral("Lights: Fog"));
    look->end();
    QCOMPARE(rows(), QStringLiteral("Doors: Left Right"));

    // Nobody beside the car says nothing about what is behind it.
    const auto zoneImage = [this] {
        return imagesShownBy(screen()->widgetNamed("icon_rear_right_mid_radar")).join(' ');
    };
    windows()->openWindow(83);
    emit VtqAdaptor::instance()->parkingDistanceRear(QByteArray::fromHex("0702"));
    emit VtqAdaptor::instance()->parkingDistanceRear(QByteArray::fromHex("0000"));
    const qint64 farther = now();
    QTRY_VERIFY(now() > farther);
    emit VtqAdaptor::instance()->parkingDistanceRear(QByteArray::fromHex("0704"));
    QCOMPARE(zoneImage(), QStringLiteral(":/icon/radaricon/R_D_M_4.png"));
    look->show(farther);
    QCOMPARE(zoneImage(), QStringLiteral(":/icon/radaricon/R_D_M_2.png"));
    look->end();
    QCOMPARE(zoneImage(), QStringLiteral(":/icon/radaricon/R_D_M_4.png"));
}

void tst_Session::lineZoomsAndMoves()
{
    open("timeline");
    auto *line = find<TimelineView>("timeline");
    line->setRange(100000, 60000);
    const int x = line->width() / 2;
    const qint64 under = line->msAt(x);
    QWheelEvent wheel(QPointF(x, 20), line->mapToGlobal(QPoint(x, 20)), QPoint(), QPoint(0, 240),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(line, &wheel);
    QVERIFY(line->spanMs() < 45000);
    QVERIFY2(qAbs(line->msAt(x) - under) < 200, "the moment under the pointer stays there");

    const qint64 begin = line->beginMs();
    QTest::mousePress(line, Qt::LeftButton, {}, QPoint(x, 40));
    QMouseEvent move(QEvent::MouseMove, QPoint(x - 100, 40), Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(line, &move);
    QTest::mouseRelease(line, Qt::LeftButton, {}, QPoint(x - 100, 40));
    QVERIFY(line->beginMs() > begin);
    QVERIFY(!session()->isRewound()); // a drag is no click
}

void tst_Session::panelsAreRemembered()
{
    find<QDockWidget>("service")->hide();
    find<QDockWidget>("audio")->hide();
    m_window->close();
    removeBench();
    makeRig();
    showWindow();
    QVERIFY(!find<QDockWidget>("timeline")->isHidden());
    QVERIFY(find<QDockWidget>("service")->isHidden());
    QVERIFY(find<QDockWidget>("audio")->isHidden());
}

void tst_Session::burstWithEverythingOpen()
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

void tst_Session::journalShowsWhatWasDropped()
{
    open("timeline");
    open("calls");
    Journal *journal = session()->journal();
    journal->setLimit(100);
    for (int i = 0; i < 250; ++i) {
        emit VtqAdaptor::instance()->doorStatus(uchar(i));
        journal->note(0, Journal::Call, "A::b", {i});
    }
    QTRY_VERIFY(
        find<QLabel>("timelineState")->text().contains("are no longer kept; the limit is 100."));
    QTRY_COMPARE(model("calls")->rowCount(), journal->ofKind(Journal::Call).size());
    QCOMPARE(cell("calls", model("calls")->rowCount() - 1, Arguments), QStringLiteral("249"));
    find<TimelineView>("timeline")->grab(); // nothing of what is gone is looked at
}

void tst_Session::windowPlaysAndSeeks()
{
    makeBench("simulator");
    module::Drive *drive = session()->drive();
    QVERIFY(drive->isPlaying());
    QTest::mouseClick(find<QToolButton>("play"), Qt::LeftButton);
    QVERIFY(!drive->isPlaying());
    auto *slider = m_window->findChild<QSlider *>();
    QCOMPARE(slider->maximum(), 600);
    slider->setValue(300);
    QCOMPARE(drive->positionMs(), 300000);
    QVERIFY(session()->signalCount() > 5);
    QTest::keyClick(m_window.data(), Qt::Key_Space);
    QTRY_VERIFY(drive->isPlaying());
    QTest::keyClick(m_window.data(), Qt::Key_3);
    QTRY_COMPARE(windows()->currentWindow(), 82);
    QTest::keyClick(m_window.data(), Qt::Key_Escape);
    QTRY_COMPARE(windows()->currentWindow(), 80);
}

void tst_Session::sessionByHandBecomesAScenario()
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
void tst_Session::seedIsPartOfTheScenario()
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

void tst_Session::recordingGoesOnWithAnotherDrive()
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

void tst_Session::modifiersAreNoKeys_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<bool>("isNoted");
    QTest::newRow("shift") << Qt::Key_Shift << false;
    QTest::newRow("super") << Qt::Key_Super_L << false;
    QTest::newRow("super, right") << Qt::Key_Super_R << false;
    QTest::newRow("meta") << Qt::Key_Meta << false;
    QTest::newRow("a letter") << Qt::Key_K << true;
    QTest::newRow("menu") << Qt::Key_Menu << true;
}

void tst_Session::modifiersAreNoKeys()
{
    QFETCH(Qt::Key, key);
    QFETCH(bool, isNoted);
    QTest::keyClick(m_window.data(), key);
    QCOMPARE(session()->journal()->totalOf(Journal::Action, "key") != nullptr, isNoted);
}

/** From the middle of a widget to the right, so many pixels at a time. */
void tst_Session::drag(const char *name, const QVector<int> &places) const
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
void tst_Session::recordTouches(const QString &file)
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
void tst_Session::recordingOpensItsPage()
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

void tst_Session::partIsReplayedAlike_data()
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
void tst_Session::partIsReplayedAlike()
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

NORDA_TEST_MAIN(tst_Session)
#include "tst_session.moc"
