#include "audiostage.h"
#include "benchwindow.h"
#include "headunit.h"
#include "norda/vtqadaptor.h"
#include "options.h"
#include "panels/carpanel.h"
#include "panels/inspectorpanel.h"
#include "panels/timeline.h"
#include "program.h"
#include "screen.h"
#include "session.h"
#include "testmain.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QComboBox>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTableView>
#include <QToolButton>

using norda::VtqAdaptor;

/** The bench as somebody at it uses it: panels, fingers, looking back, saving what was done. */
class tst_Panels : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void signalsTellLastValueAndListeners();
    void signalIsSentByHand();
    void unfitArgumentsAreNotSent();
    void callsAreDecodedFilteredAndCopied();
    void callLeadsToItsMoment();
    void screenAsItWas();
    void lineZoomsAndMoves();
    void carIsHeldInHand();
    void recordedCarCannotBeHeld();
    void faultsAreSet();
    void inspectorTellsWhatIsThere();
    void panelsAreRemembered();
    void burstWithEverythingOpen();
    void journalTellsWhatItLetGo();
    void sessionByHandBecomesAScenario();

private:
    template <typename T>
    T *find(const char *name) const
    {
        auto *found = m_window->findChild<T *>(QLatin1String(name));
        if (!found)
            qFatal("no %s", name);
        return found;
    }
    QAbstractItemModel *model(const char *table) const { return find<QTableView>(table)->model(); }
    int rowOf(const char *table, const QString &text, int column) const
    {
        const QModelIndexList found = model(table)->match(
            model(table)->index(0, column), Qt::DisplayRole, text, 1, Qt::MatchExactly);
        return found.isEmpty() ? -1 : found.constFirst().row();
    }
    QString cell(const char *table, int row, int column) const
    {
        return model(table)->index(row, column).data().toString();
    }
    void open(const char *dock) const
    {
        find<QDockWidget>(dock)->show();
        find<QDockWidget>(dock)->raise();
        QCoreApplication::processEvents();
    }
    void makeWindow(const QString &source = QStringLiteral("none"));
    void click(const char *name) const
    {
        QTest::mouseClick(m_screen->widgetNamed(QLatin1String(name)), Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    QString text(const char *label) const
    {
        return m_screen->widgetNamed(QLatin1String(label))->property("text").toString();
    }

    Options m_options;
    QScopedPointer<Screen> m_screen;
    QScopedPointer<HeadUnit> m_unit;
    QScopedPointer<AudioStage> m_stage;
    QScopedPointer<BenchWindow> m_window;
    QTemporaryDir m_folder;
};

enum SignalColumn { Name, Last, Count, Ago, HeardBy };
enum CallColumn { Time, Operation, Meaning, Arguments };

void tst_Panels::makeWindow(const QString &source)
{
    QString error;
    m_window.reset(); // it lets go of the screen
    m_window.reset(new BenchWindow(m_options, m_screen.data(), m_unit.data(), m_stage.data()));
    m_unit->openWindow(80);
    m_options.source = source;
    m_window->start(std::make_unique<Session>(module::openSource(source, &error)));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.data()));
}

void tst_Panels::init()
{
    QFile::remove(QSettings("norda", "bench").fileName());
    m_screen.reset(new Screen);
    m_unit.reset(new HeadUnit(m_screen.data()));
    QString error;
    QVERIFY2(m_unit->load(QStringLiteral(NORDA_PLUGIN_FILE), &error), qPrintable(error));
    m_stage.reset(new AudioStage(m_unit.data()));
    makeWindow();
}

void tst_Panels::cleanup()
{
    m_window.reset();
    m_stage.reset();
    m_unit.reset();
    m_screen.reset();
}

void tst_Panels::signalsTellLastValueAndListeners()
{
    open("signals");
    const int doors = rowOf("signals", "doorStatus", Name);
    QVERIFY(doors >= 0);
    QCOMPARE(cell("signals", doors, Count), QString());
    QCOMPARE(cell("signals", doors, HeardBy), QStringLiteral("nobody")); // the page is not there
    m_unit->openWindow(81);
    emit VtqAdaptor::instance()->doorStatus(4);
    emit VtqAdaptor::instance()->doorStatus(5);
    QTRY_COMPARE(cell("signals", doors, Count), QStringLiteral("2"));
    QCOMPARE(cell("signals", doors, Last), QStringLiteral("5"));
    QCOMPARE(cell("signals", doors, Ago), QStringLiteral("0.0 s"));
    QCOMPARE(cell("signals", doors, HeardBy), QStringLiteral("1"));

    auto *filter = find<QDockWidget>("signals")->findChild<QLineEdit *>();
    QTest::keyClicks(filter, "tire");
    QCOMPARE(model("signals")->rowCount(), 2);
    QTest::keyClicks(filter, "xx");
    QCOMPARE(model("signals")->rowCount(), 0);
}

void tst_Panels::signalIsSentByHand()
{
    open("signals");
    m_unit->openWindow(81);
    auto *table = find<QTableView>("signals");
    table->selectRow(rowOf("signals", "tirePressureStatus", Name));
    auto *presets = find<QComboBox>("presets");
    QVERIFY(presets->findText("Soft, rear right") > 0);
    presets->setCurrentText("Soft, rear right");
    emit presets->activated(presets->currentIndex());
    QCOMPARE(find<QSpinBox>("argument-0")->value(), 40);
    QTest::mouseClick(find<QPushButton>("send"), Qt::LeftButton);
    QCOMPARE(text("Txt_psi_rear_right"), QStringLiteral("17 psi"));

    // Changed by hand and sent again.
    auto *values = find<QLineEdit>("argument-2");
    values->setText(values->text().replace("17", "9"));
    QTest::mouseClick(find<QPushButton>("send"), Qt::LeftButton);
    QCOMPARE(text("Txt_psi_rear_right"), QStringLiteral("9 psi"));
    const Journal *journal = m_window->session()->journal();
    QCOMPARE(journal->totalOf(Journal::Signal, "tirePressureStatus")->count, 2);
    QCOMPARE(journal->totalOf(Journal::Deed, "signal")->count, 2);

    // The last value can be taken again.
    table->selectRow(rowOf("signals", "doorStatus", Name));
    table->selectRow(rowOf("signals", "tirePressureStatus", Name));
    QVERIFY(find<QLineEdit>("argument-2")->text().contains("9 psi"));
}

void tst_Panels::unfitArgumentsAreNotSent()
{
    open("signals");
    auto *send = find<QPushButton>("send");
    QVERIFY(!send->isEnabled()); // nothing is chosen
    find<QTableView>("signals")->selectRow(rowOf("signals", "parkingDistanceRear", Name));
    QVERIFY(send->isEnabled());
    find<QLineEdit>("argument-0")->setText("\"050\"");
    QVERIFY(!send->isEnabled());
    QStringList texts;
    for (const QLabel *label : find<QDockWidget>("signals")->findChildren<QLabel *>())
        texts.append(label->text());
    QVERIFY(texts.contains("argument 1 of parkingDistanceRear: expected bytes as a hex text or "
                           "null"));
    find<QLineEdit>("argument-0")->setText("\"0504\"");
    QVERIFY(send->isEnabled());
    find<QTableView>("signals")->selectRow(rowOf("signals", "listInfoNotify", Name));
    QVERIFY(send->isEnabled()); // empty lists are lists
}

void tst_Panels::callsAreDecodedFilteredAndCopied()
{
    open("calls");
    click("norda_key_climate");
    click("key_AC");
    QTRY_VERIFY(rowOf("calls", "NordatriggerRearDefrostButton", Operation) >= 0);
    const int row = rowOf("calls", "NordatriggerRearDefrostButton", Operation);
    QCOMPARE(cell("calls", row, Meaning), QStringLiteral("A/C"));
    QCOMPARE(cell("calls", row, Arguments),
             QStringLiteral(R"({"10":0,"4":0,"5":16,"6":0,"7":0,"8":0,"9":0})"));
    QCOMPARE(cell("calls", rowOf("calls", "TouchEvent", Operation), Meaning),
             QStringLiteral("the climate page"));

    const int all = model("calls")->rowCount();
    auto *filter = find<QDockWidget>("calls")->findChild<QLineEdit *>();
    QTest::keyClicks(filter, "a/c");
    QVERIFY(model("calls")->rowCount() >= 1 && model("calls")->rowCount() < all);
    QCOMPARE(cell("calls", 0, Meaning), QStringLiteral("A/C"));
    click("key_AC"); // what comes later is filtered too
    QTRY_VERIFY(model("calls")->rowCount() >= 2);

    auto *table = find<QTableView>("calls");
    table->selectRow(0);
    table->setFocus();
    QTest::keySequence(table, QKeySequence::Copy);
    const QStringList copied = QGuiApplication::clipboard()->text().split('\t');
    QCOMPARE(copied.size(), 4);
    QCOMPARE(copied[1], QStringLiteral("NordatriggerRearDefrostButton"));
    QCOMPARE(copied[2], QStringLiteral("A/C"));
}

void tst_Panels::callLeadsToItsMoment()
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

void tst_Panels::screenAsItWas()
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

    // At 2 s the driver's door was open, and the gauges were on the screen.
    auto *line = find<TimelineView>("timeline");
    line->setRange(0, 40000);
    QTest::mouseClick(line, Qt::LeftButton, {}, QPoint(line->xAt(2000), line->height() / 2));
    QVERIFY(!drive->isPlaying());
    QCOMPARE(m_unit->currentWindow(), 80);
    QCOMPARE(text("Txt_center_value"), QStringLiteral("0 RPM"));
    const qint64 known = journal->total();
    emit line->momentWanted(29000);
    QCOMPARE(m_unit->currentWindow(), 81);
    QVERIFY(text("Txt_battery").startsWith("1"));
    QTest::qWait(50);
    QCOMPARE(journal->total(), known); // looking back is not part of the session

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

void tst_Panels::lineZoomsAndMoves()
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

void tst_Panels::carIsHeldInHand()
{
    makeWindow("simulator");
    open("car");
    module::Drive *drive = m_window->session()->drive();
    drive->setSpeed(30);
    m_unit->openWindow(81);
    QTRY_VERIFY(drive->positionMs() > 10000);
    auto *hood = find<QComboBox>("car-hood");
    hood->setCurrentText("open");
    emit hood->activated(hood->currentIndex());
    QTRY_VERIFY(m_screen->widgetNamed("icon_hood")->isVisible());
    hood->setCurrentIndex(0);
    emit hood->activated(0);
    QTRY_VERIFY(m_screen->widgetNamed("icon_hood")->isHidden());
    find<QSpinBox>("car-tire-rear-left")->setValue(11);
    QTRY_COMPARE(text("Txt_psi_rear_left"), QStringLiteral("11 psi"));
    QTest::mouseClick(find<QPushButton>("warning"), Qt::LeftButton);
    QTRY_COMPARE(m_stage->voice(), AudioStage::WarningTone);
}

void tst_Panels::recordedCarCannotBeHeld()
{
    open("car");
    QVERIFY(!find<QComboBox>("car-hood")->isEnabled());
    QVERIFY(find<QDoubleSpinBox>("fault-silence")->isEnabled());
    makeWindow("simulator");
    QVERIFY(find<QComboBox>("car-hood")->isEnabled());
}

void tst_Panels::faultsAreSet()
{
    using module::Faults;
    const Faults &faults = m_window->session()->drive()->faults();
    auto *silence = find<QDoubleSpinBox>("fault-silence");
    QCOMPARE(silence->text(), QStringLiteral("off"));
    silence->setValue(20);
    QCOMPARE(faults.value(Faults::Silence), 0.2);
    find<QDoubleSpinBox>("fault-restart")->setValue(60);
    QCOMPARE(faults.value(Faults::Restart), 60.0);
    silence->setValue(0);
    QCOMPARE(faults.value(Faults::Silence), 0.0);
    QCOMPARE(faults.value(Faults::Restart), 60.0);
}

void tst_Panels::inspectorTellsWhatIsThere()
{
    open("inspector");
    m_unit->openWindow(83);
    QTest::mouseClick(find<QToolButton>("point"), Qt::LeftButton);
    QWidget *car = m_screen->widgetNamed("bkg_car");
    const QPoint place = car->mapTo(m_screen.data(), car->rect().center());
    QWidget *top = m_screen->childAt(place);
    QTest::mouseMove(top, top->mapFrom(m_screen.data(), place));
    QMouseEvent move(QEvent::MouseMove, top->mapFrom(m_screen.data(), place), Qt::NoButton,
                     Qt::NoButton, {});
    QCoreApplication::sendEvent(top, &move);
    QString told = find<QPlainTextEdit>("inspected")->toPlainText();
    QVERIFY2(told.startsWith("Name: bkg_car\nClass: QLabel\n"), qPrintable(told));
    QVERIFY2(told.contains("Image: :/icon/"), qPrintable(told));
    QVERIFY(told.contains("Within: car_radar_widget < "));

    // A click keeps it, and the key under it is not touched.
    const Journal *journal = m_window->session()->journal();
    const int calls = journal->count(Journal::Call);
    click("key_camera");
    QVERIFY(!find<QToolButton>("point")->isChecked());
    QVERIFY(!m_screen->isCameraShown());
    QCOMPARE(journal->count(Journal::Call), calls);
    told = find<QPlainTextEdit>("inspected")->toPlainText();
    QVERIFY2(told.startsWith("Name: key_camera\nClass: norda::IconKey\n"), qPrintable(told));
    QVERIFY2(told.contains("clicked("), qPrintable(told));
    click("key_camera");
    QVERIFY(m_screen->isCameraShown());
}

void tst_Panels::panelsAreRemembered()
{
    open("timeline");
    find<QDockWidget>("service")->hide();
    m_window->close();
    makeWindow();
    QVERIFY(!find<QDockWidget>("timeline")->isHidden());
    QVERIFY(find<QDockWidget>("service")->isHidden());
    QVERIFY(find<QDockWidget>("audio")->isHidden());
}

void tst_Panels::burstWithEverythingOpen()
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

void tst_Panels::journalTellsWhatItLetGo()
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

void tst_Panels::sessionByHandBecomesAScenario()
{
    makeWindow("simulator");
    module::Drive *drive = m_window->session()->drive();
    QTRY_VERIFY(drive->positionMs() > 500);
    click("norda_key_climate");
    QTRY_COMPARE(m_unit->currentWindow(), 82);
    QTRY_COMPARE(text("Txt_left_temp"), QStringLiteral("70.00 F"));
    click("key_left_temp_next");
    QTRY_COMPARE(text("Txt_left_temp"), QStringLiteral("71.00 F"));
    QTest::keyClick(m_window.data(), Qt::Key_5);
    QTRY_COMPARE(m_unit->currentWindow(), 84);
    auto *trunk = find<QComboBox>("car-trunk");
    trunk->setCurrentText("open");
    emit trunk->activated(trunk->currentIndex());
    const QString file = m_folder.filePath("by-hand.scenario");
    QString error;
    QVERIFY2(m_window->saveScenario(file, &error), qPrintable(error));

    QFile saved(file);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    const QString scenario = QString::fromUtf8(saved.readAll());
    QVERIFY2(scenario.contains("touch key_left_temp_next "), qPrintable(scenario));
    QVERIFY2(scenario.contains("expect call NordatriggerRearDefrostButton {"),
             qPrintable(scenario));
    QVERIFY2(scenario.contains("car trunk open"), qPrintable(scenario));
    const ProgramResult result =
        runProgram({NORDA_BENCH_FILE, "--gallery", m_folder.path(), "--script", file});
    QVERIFY2(result.exitCode == 0, qPrintable(scenario + result.out + result.err));

    // Somewhere that cannot be written to: one line.
    QVERIFY(!m_window->saveScenario("/proc/no.scenario", &error));
    QVERIFY(error.startsWith("/proc/no.scenario: expected a file that can be written: "));
}

NORDA_TEST_MAIN(tst_Panels)
#include "tst_panels.moc"
