#include "benchfixture.h"
#include "imagenames.h"
#include "lookback.h"
#include "panels/timeline.h"
#include "program.h"
#include "testpaths.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

using norda::VtqAdaptor;

/** A session at the bench: looked back on, kept, remembered and written down as a scenario. */
class tst_Session : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void init() { makeBench(); }
    void cleanup() { removeBench(); }

    void callLeadsToItsMoment();
    void screenAsItWas();
    void whatCameInPartsAsItWas();
    void lineZoomsAndMoves();
    void panelsAreRemembered();
    void burstWithEverythingOpen();
    void journalTellsWhatItLetGo();
    void sessionByHandBecomesAScenario();

private:
    QTemporaryDir m_folder;
};

enum CallColumn { Time, Operation, Meaning, Arguments };

void tst_Session::callLeadsToItsMoment()
{
    open("timeline");
    open("calls");
    m_unit->openWindow(81);
    auto *table = find<QTableView>("calls");
    QTRY_VERIFY(rowOf("calls", "requestVehicleInfo", Operation) >= 0);
    const QModelIndex index =
        model("calls")->index(rowOf("calls", "requestVehicleInfo", Operation), Operation);
    table->scrollTo(index);
    emit table->doubleClicked(index);
    QVERIFY(m_window->session()->isLookingBack());
    QVERIFY(!find<TimelineView>("timeline")->follows());
    QTest::mouseClick(find<QToolButton>("present"), Qt::LeftButton);
    QVERIFY(!m_window->session()->isLookingBack());
}

void tst_Session::screenAsItWas()
{
    makeWindow("simulator");
    open("timeline");
    module::Drive *drive = m_window->session()->drive();
    Journal *journal = m_window->session()->journal();
    drive->setSpeed(100);
    QTRY_VERIFY(journal->totalOf(Journal::Signal, "centerGaugeValueNotify") &&
                drive->positionMs() > 12000);
    click("norda_key_vehicle");
    QTRY_VERIFY(drive->positionMs() > 30000);
    QVERIFY(m_screen->widgetNamed("icon_door_front_left")->isHidden());

    // The module speaks for a moment.
    norda::VtqService *service = norda::VtqService::instance();
    emit service->audioInterruptNotify(4, 19);
    QCOMPARE(m_stage->voice(), AudioStage::WarningTone);
    const qint64 spoken = m_window->session()->nowMs();
    QTRY_VERIFY(m_window->session()->nowMs() > spoken + 500);
    emit service->audioInterruptNotify(0, 0);
    QCOMPARE(m_stage->voice(), AudioStage::Silent);

    // At 2 s the driver's door was open, and the gauges were on the screen.
    auto *line = find<TimelineView>("timeline");
    line->setRange(0, 40000);
    QTest::mouseClick(line, Qt::LeftButton, {}, QPoint(line->xAt(2000), line->height() / 2));
    QVERIFY(!drive->isPlaying());
    QCOMPARE(m_unit->currentWindow(), 80);
    QCOMPARE(text("Txt_center_value"), QStringLiteral("0 RPM"));
    const qint64 known = journal->total();
    emit line->momentWanted(spoken + 100);
    QCOMPARE(m_stage->voice(), AudioStage::Silent); // what is past is seen and not heard
    // Along the scale, the screen follows the pointer.
    QTest::mousePress(line, Qt::LeftButton, {}, QPoint(line->xAt(3000), 5));
    for (const int ms : {10000, 20000, 29000}) {
        QMouseEvent move(QEvent::MouseMove, QPoint(line->xAt(ms), 5), Qt::NoButton, Qt::LeftButton,
                         {});
        QCoreApplication::sendEvent(line, &move);
    }
    QTest::mouseRelease(line, Qt::LeftButton, {}, QPoint(line->xAt(29000), 5));
    QCOMPARE(line->beginMs(), qint64(0));
    QCOMPARE(m_unit->currentWindow(), 81);
    QVERIFY(text("Txt_battery").startsWith("1"));
    QTest::qWait(50);
    QCOMPARE(journal->total(), known); // looking back is not part of the session

    QTest::keyClick(m_window.data(), Qt::Key_Space); // the key for it goes on
    QVERIFY(drive->isPlaying());
    emit line->momentWanted(29000);
    QVERIFY(!drive->isPlaying());

    // A touch of the past brings the present back, and nothing else.
    click("norda_key_about");
    QVERIFY(drive->isPlaying());
    QCOMPARE(m_unit->currentWindow(), 81);
    emit line->momentWanted(2000);
    QVERIFY(!drive->isPlaying());
    QTest::mouseClick(find<QToolButton>("present"), Qt::LeftButton);
    QVERIFY(drive->isPlaying());
    QCOMPARE(m_unit->currentWindow(), 81);
    const qint64 position = drive->positionMs();
    QTRY_VERIFY(drive->positionMs() > position);
    QTRY_VERIFY(journal->total() > known);
}

void tst_Session::whatCameInPartsAsItWas()
{
    auto *look = m_window->findChild<LookBack *>();
    const auto now = [this] { return m_window->session()->nowMs(); };
    const auto send = [](int type, int line, const QString &text) {
        emit VtqAdaptor::instance()->NordaConfigMenuTextInfo({type, 0, line}, {text}, {});
    };
    const auto rows = [this] {
        QStringList texts;
        for (int row = 1; row <= 15; ++row) {
            const QByteArray name = "Txt_item_" + QByteArray::number(row);
            if (m_screen->widgetNamed(name)->isVisible())
                texts.append(text(name.constData()));
        }
        return text("Txt_pop_title") + ": " + texts.join(' ');
    };
    m_unit->openWindow(84);
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
        return imagesShownBy(m_screen->widgetNamed("icon_rear_right_mid_radar")).join(' ');
    };
    m_unit->openWindow(83);
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
    QVERIFY(!m_window->session()->isLookingBack()); // a drag is no click
}

void tst_Session::panelsAreRemembered()
{
    open("timeline");
    find<QDockWidget>("service")->hide();
    m_window->close();
    makeWindow();
    QVERIFY(!find<QDockWidget>("timeline")->isHidden());
    QVERIFY(find<QDockWidget>("service")->isHidden());
    QVERIFY(find<QDockWidget>("audio")->isHidden());
}

void tst_Session::burstWithEverythingOpen()
{
    const QString file = m_folder.filePath("burst.jsonl");
    QString error;
    QVERIFY(m_window->session()->record(file, 0, &error));
    for (const char *dock : {"signals", "calls", "car", "inspector", "timeline", "audio"})
        open(dock);
    for (int i = 0; i < 60; ++i)
        emit VtqAdaptor::instance()->centerGaugeValueNotify(QString::number(i), "RPM", uchar(i));
    QTest::qWait(400); // the panels look
    const Journal *journal = m_window->session()->journal();
    QStringList noted;
    for (const int place : journal->ofKind(Journal::Signal))
        noted.append(journal->entries()[place].arguments[0].toString());
    QStringList sent;
    for (int i = 0; i < 60; ++i)
        sent.append(QString::number(i));
    QCOMPARE(noted, sent);
    m_window->session()->finish();
    const auto recording = module::RecordingSource::open(file, &error);
    QVERIFY(recording);
    QStringList recorded;
    while (recording->nextDueMs() >= 0)
        recorded.append(recording->take().arguments[0].toString());
    QCOMPARE(recorded, sent);
}

void tst_Session::journalTellsWhatItLetGo()
{
    open("timeline");
    open("calls");
    Journal *journal = m_window->session()->journal();
    journal->setLimit(100);
    for (int i = 0; i < 250; ++i) {
        emit VtqAdaptor::instance()->doorStatus(uchar(i));
        journal->note(0, Journal::Call, "A::b", {i});
    }
    QTRY_VERIFY(find<QLabel>("timelineState")
                    ->text()
                    .contains("is no longer kept: 100 events are the most."));
    QTRY_COMPARE(model("calls")->rowCount(), journal->ofKind(Journal::Call).size());
    QCOMPARE(cell("calls", model("calls")->rowCount() - 1, Arguments), QStringLiteral("249"));
    find<TimelineView>("timeline")->grab(); // nothing of what is gone is looked at
}

void tst_Session::sessionByHandBecomesAScenario()
{
    makeWindow("simulator");
    module::Drive *drive = m_window->session()->drive();
    QTRY_VERIFY(drive->positionMs() > 500);
    click("norda_key_climate");
    QTRY_COMPARE(m_unit->currentWindow(), 82);
    QTRY_COMPARE(text("Txt_left_temp"), QStringLiteral("70.00 F"));
    click("key_left_temp_next");
    QTRY_COMPARE(text("Txt_left_temp"), QStringLiteral("71.00 F"));
    click("Txt_left_temp");                      // nothing to be touched
    QTest::keyClick(m_window.data(), Qt::Key_K); // no page uses it
    QTest::keyClick(m_window.data(), Qt::Key_5);
    QTRY_COMPARE(m_unit->currentWindow(), 84);
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

NORDA_TEST_MAIN(tst_Session)
#include "tst_session.moc"
