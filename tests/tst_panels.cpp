#include "benchfixture.h"

#include <QClipboard>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

using norda::VtqAdaptor;

/** The panels beside the screen: what they tell, and what can be done with them. */
class tst_Panels : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void init() { makeBench(); }
    void cleanup() { removeBench(); }

    void signalsTellLastValueAndListeners();
    void signalIsSentByHand();
    void unfitArgumentsAreNotSent();
    void callsAreDecodedFilteredAndCopied();
    void carIsHeldInHand();
    void recordedCarCannotBeHeld();
    void faultsAreSet();
};

enum SignalColumn { Name, Last, Count, Age, Receivers };
enum CallColumn { Time, Operation, Meaning, Arguments };

void tst_Panels::signalsTellLastValueAndListeners()
{
    open("signals");
    const int doors = rowOf("signals", "doorStatus", Name);
    QVERIFY(doors >= 0);
    QCOMPARE(cell("signals", doors, Count), QString());
    QCOMPARE(cell("signals", doors, Receivers), QStringLiteral("none")); // the page is not there
    windows()->openWindow(81);
    emit VtqAdaptor::instance()->doorStatus(4);
    emit VtqAdaptor::instance()->doorStatus(5);
    QTRY_COMPARE(cell("signals", doors, Count), QStringLiteral("2"));
    QCOMPARE(cell("signals", doors, Last), QStringLiteral("5"));
    QVERIFY(cell("signals", doors, Age).startsWith("0."));
    QCOMPARE(cell("signals", doors, Receivers), QStringLiteral("1"));

    auto *filter = find<QDockWidget>("signals")->findChild<QLineEdit *>();
    QTest::keyClicks(filter, "tire");
    QCOMPARE(model("signals")->rowCount(), 2);
    QTest::keyClicks(filter, "xx");
    QCOMPARE(model("signals")->rowCount(), 0);
}

void tst_Panels::signalIsSentByHand()
{
    open("signals");
    windows()->openWindow(81);
    auto *table = find<QTableView>("signals");
    table->selectRow(rowOf("signals", "tirePressureStatus", Name));
    auto *presets = find<QComboBox>("presets");
    QVERIFY(presets->findText("Soft, rear right") > 0);
    presets->setCurrentText("Soft, rear right");
    emit presets->activated(presets->currentIndex());
    QCOMPARE(find<QSpinBox>("argument-0")->value(), 40);
    QTest::mouseClick(find<QPushButton>("send"), Qt::LeftButton);
    QCOMPARE(text("Txt_psi_rear_right"), QStringLiteral("17 psi"));
    // The pressures stay white; the temperature and the info text warn.
    const QString yellow = QStringLiteral("color: rgb(248, 255, 55);");
    QCOMPARE(screen()->widgetNamed("Txt_temp_rear_right")->styleSheet(), yellow);
    QVERIFY(screen()->widgetNamed("Txt_temp_rear_left")->styleSheet() != yellow);
    QCOMPARE(text("Txt_carInfo"), QStringLiteral("Rear right tire"));
    QCOMPARE(text("Txt_carInfo_2"), QStringLiteral("pressure low"));

    // Changed by hand and sent again.
    auto *values = find<QLineEdit>("argument-2");
    values->setText(values->text().replace("17", "9"));
    QTest::mouseClick(find<QPushButton>("send"), Qt::LeftButton);
    QCOMPARE(text("Txt_psi_rear_right"), QStringLiteral("9 psi"));
    const Journal *journal = session()->journal();
    QCOMPARE(journal->totalOf(Journal::Signal, "tirePressureStatus")->count, 2);
    QCOMPARE(journal->totalOf(Journal::Action, "signal")->count, 6); // each with two followers

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

void tst_Panels::carIsHeldInHand()
{
    makeBench("simulator");
    open("car");
    module::Drive *drive = session()->drive();
    drive->setSpeed(30);
    windows()->openWindow(81);
    QTRY_VERIFY(drive->positionMs() > 10000);
    auto *hood = find<QComboBox>("car-hood");
    hood->setCurrentText("open");
    emit hood->activated(hood->currentIndex());
    QTRY_VERIFY(screen()->widgetNamed("icon_hood")->isVisible());
    hood->setCurrentIndex(0);
    emit hood->activated(0);
    QTRY_VERIFY(screen()->widgetNamed("icon_hood")->isHidden());
    find<QSpinBox>("car-tire-rear-left")->setValue(11);
    QTRY_COMPARE(text("Txt_psi_rear_left"), QStringLiteral("11 psi"));
    QTest::mouseClick(find<QPushButton>("warning"), Qt::LeftButton);
    QTRY_COMPARE(audio()->voice(), AudioStage::WarningTone);
}

void tst_Panels::recordedCarCannotBeHeld()
{
    open("car");
    QVERIFY(!find<QComboBox>("car-hood")->isEnabled());
    QVERIFY(find<QDoubleSpinBox>("fault-silence")->isEnabled());
    makeBench("simulator");
    QVERIFY(find<QComboBox>("car-hood")->isEnabled());
}

void tst_Panels::faultsAreSet()
{
    using module::Faults;
    const Faults &faults = session()->drive()->faults();
    auto *silence = find<QDoubleSpinBox>("fault-silence");
    QCOMPARE(silence->text(), QStringLiteral("off"));
    silence->setValue(0.2);
    QCOMPARE(faults.value(Faults::Silence), 0.2);
    QCOMPARE(silence->text(), QStringLiteral("0.2"));
    // The numbers are those of the command line, also while somebody writes one.
    silence->setFocus();
    silence->selectAll();
    QTest::keyClicks(silence, "0.9");
    QTest::qWait(400); // the panels look
    QCOMPARE(silence->cleanText(), QStringLiteral("0.9"));
    QTest::keyClick(silence, Qt::Key_Return);
    QCOMPARE(faults.value(Faults::Silence), 0.9);
    QCOMPARE(silence->text(), QStringLiteral("0.9"));
    QCOMPARE(silence->maximum(), 1.0);
    find<QDoubleSpinBox>("fault-restart")->setValue(60);
    QCOMPARE(faults.value(Faults::Restart), 60.0);
    silence->setValue(0);
    QCOMPARE(faults.value(Faults::Silence), 0.0);
    QCOMPARE(faults.value(Faults::Restart), 60.0);
}

NORDA_TEST_MAIN(tst_Panels)
#include "tst_panels.moc"
