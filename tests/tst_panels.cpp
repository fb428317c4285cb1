#include "benchfixture.h"
#include "livebus.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTextBrowser>

using norda::VtqAdaptor;

/** The panels beside the screen: what they tell, and what can be done with them. */
class tst_Panels : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void init() { makeBench(); }
    void cleanup() { removeBench(); }

    void driveIsDescribedPageByPage();
    void driveThatIsNoFileIsDescribed_data();
    void driveThatIsNoFileIsDescribed();
    void connectedCarIsDescribedAsItComes();
    void drivePanelIsUsableWhenSmall();
    void signalsTellLastValueAndListeners();
    void signalIsSentByHand();
    void unfitArgumentsAreNotSent();
    void bitsAreNamed();
    void valuesAreNamed();
    void argumentsAreExplained();
    void editorLeavesRoomForTheTable();
    void callsAreDecodedFilteredAndCopied();
    void carIsHeldInHand();
    void recordedCarCannotBeHeld();
    void faultsAreSet();
};

/** A log with two quantities of the gauges, one that no page shows, and a damaged line. */
static QString writeLog(const QTemporaryDir &folder)
{
    QFile file(folder.filePath("an-unusually-long-name-of-a-drive.csv"));
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write("Time,RPM,Coolant Temp,Throttle\n0,900,80,10\n90,1800,90,20\nnonsense\n");
    return file.fileName();
}

static QStringList linesOf(const QTextBrowser *browser)
{
    return browser->toPlainText().split('\n');
}

void tst_Panels::driveIsDescribedPageByPage()
{
    const QTemporaryDir folder;
    QString error;
    QVERIFY2(m_rig->openDrive(writeLog(folder), &error), qPrintable(error));
    const QStringList lines = linesOf(find<QTextBrowser>("findings"));
    const QString missing = "Not in this file: ";
    QCOMPARE(lines.mid(0, 6),
             (QStringList{"an-unusually-long-name-of-a-drive.csv", "OBD log, 1:30 minutes",
                          "Gauges", "Engine speed: 2 samples, 900 to 1800 rpm",
                          "Coolant temperature: 2 samples, 176 to 194 " + QString::fromUtf8("℉"),
                          missing + "engine load, intake air temperature, oil, transmission or "
                                    "ambient temperature, vehicle speed"}));
    for (const char *page : {"Vehicle", "Climate", "Parking"}) {
        const int heading = lines.indexOf(QString(page));
        QVERIFY2(heading > 0 && lines.value(heading + 1).startsWith(missing), page);
    }
    const int others = lines.indexOf("On no page");
    QCOMPARE(lines.value(others + 1), QString("Throttle: 2 samples, 10 to 20 %"));
    QCOMPARE(lines.value(others + 2), QString("File"));
    QCOMPARE(lines.value(others + 3), QString("1 lines could not be read"));
}

void tst_Panels::driveThatIsNoFileIsDescribed_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("simulator") << "simulator"
                               << QStringList{"Simulated car", "Built-in trip, 10:00 minutes"};
    QTest::newRow("none") << "none" << QStringList{"No car", "Nothing is emitted by itself"};
}

void tst_Panels::driveThatIsNoFileIsDescribed()
{
    QFETCH(QString, source);
    makeBench(source);
    QTEST(QStringList(linesOf(find<QTextBrowser>("findings")).mid(0, 2)), "lines");
}

/** With the age of each value, and why a page shows dashes. */
void tst_Panels::connectedCarIsDescribedAsItComes()
{
    FakeAdapter adapter(false);
    const module::ElmPort port = adapter.port();
    const QString name = QStringLiteral("elm327:tcp:%1:%2").arg(port.host).arg(port.port);
    QString error;
    QVERIFY2(m_rig->openDrive(name, &error), qPrintable(error));
    m_rig->session()->drive()->play();
    const auto *findings = find<QTextBrowser>("findings");
    QCOMPARE(linesOf(findings).mid(0, 2), (QStringList{name, "A car that is connected"}));
    const QRegularExpression speed("Engine speed: 1726 rpm, \\d\\.\\d s ago");
    QTRY_VERIFY2(findings->toPlainText().contains(speed), qPrintable(findings->toPlainText()));
    QVERIFY(linesOf(findings).contains("Not known to this car: oil, transmission or ambient "
                                       "temperature"));
    m_rig->session()->drive()->pause();
    adapter.unplug();
    QTRY_VERIFY(findings->toPlainText().contains("No connection: "));
}

/** All that is found can be reached, and the counters are whole. */
void tst_Panels::drivePanelIsUsableWhenSmall()
{
    const QTemporaryDir folder;
    QString error;
    QVERIFY2(m_rig->openDrive(writeLog(folder), &error), qPrintable(error));
    const QScopedPointer<QWidget> panel(find<QDockWidget>("service")->widget());
    panel->setParent(nullptr);
    panel->resize(320, 160);
    panel->show();
    QCoreApplication::processEvents();
    QCOMPARE(panel->size(), QSize(320, 160));
    auto *browser = panel->findChild<QTextBrowser *>();
    QVERIFY(browser->height() >= 60);
    QCOMPARE(browser->horizontalScrollBar()->maximum(), 0);
    QScrollBar *bar = browser->verticalScrollBar();
    QVERIFY(bar->maximum() > 0);
    bar->setValue(bar->maximum());
    QTextCursor end(browser->document());
    end.movePosition(QTextCursor::End);
    QVERIFY(browser->viewport()->rect().contains(browser->cursorRect(end)));
    for (const QLabel *label : panel->findChildren<QLabel *>()) {
        QVERIFY2(label->width() >= label->sizeHint().width(), qPrintable(label->text()));
        QVERIFY2(label->height() >= label->sizeHint().height(), qPrintable(label->text()));
        QVERIFY(panel->rect().contains(label->geometry()));
    }
    browser->selectAll();
    browser->copy();
    QVERIFY(QGuiApplication::clipboard()->text().contains("Not in this file"));
}

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
    QElapsedTimer clock;
    clock.start();
    emit VtqAdaptor::instance()->doorStatus(4);
    emit VtqAdaptor::instance()->doorStatus(5);
    QTRY_COMPARE(cell("signals", doors, Count), QStringLiteral("2"));
    QCOMPARE(cell("signals", doors, Last), QStringLiteral("5"));
    const QStringList age = cell("signals", doors, Age).split(' ');
    QCOMPARE(age.value(1), QStringLiteral("s"));
    QVERIFY(age[0].toDouble() <= double(clock.elapsed()) / 1000 + 0.1);
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

void tst_Panels::bitsAreNamed()
{
    open("signals");
    find<QTableView>("signals")->selectRow(rowOf("signals", "doorStatus", Name));
    auto *number = find<QSpinBox>("argument-0");
    QStringList names;
    for (int bit = 0; bit < 6; ++bit)
        names.append(find<QCheckBox>("bit-" + QByteArray::number(bit))->text());
    QCOMPARE(names, (QStringList{"hood", "trunk", "front left", "front right", "rear left",
                                 "rear right"}));
    number->setValue(0x81); // a bit without a name stays
    QVERIFY(find<QCheckBox>("bit-0")->isChecked());
    QVERIFY(!find<QCheckBox>("bit-2")->isChecked());
    find<QCheckBox>("bit-2")->click();
    find<QCheckBox>("bit-0")->click();
    QCOMPARE(number->value(), 0x84);
    const QSignalSpy spy(VtqAdaptor::instance(), &VtqAdaptor::doorStatus);
    QTest::mouseClick(find<QPushButton>("send"), Qt::LeftButton);
    QCOMPARE(spy.value(0).value(0).toInt(), 0x84);
}

void tst_Panels::valuesAreNamed()
{
    open("signals");
    emit VtqAdaptor::instance()->checkEngineStatus(2);
    find<QTableView>("signals")->selectRow(rowOf("signals", "checkEngineStatus", Name));
    auto *box = find<QComboBox>("argument-0");
    QCOMPARE(box->currentText(), QString("2 warning"));
    QCOMPARE(box->itemText(1), QString("1 normal"));
    auto *send = find<QPushButton>("send");
    const QSignalSpy spy(VtqAdaptor::instance(), &VtqAdaptor::checkEngineStatus);
    const auto sent = [&](const QString &text) {
        box->setCurrentText(text);
        if (!send->isEnabled())
            return -1;
        QTest::mouseClick(send, Qt::LeftButton);
        return spy.constLast()[0].toInt();
    };
    QCOMPARE(sent("1 normal"), 1);
    QCOMPARE(sent("0"), 0);
    QCOMPARE(sent("77"), 77); // no page may stumble over it
    QCOMPARE(sent("256"), -1);
    QCOMPARE(sent("-1"), -1);
    QCOMPARE(sent("normal"), -1);
    QCOMPARE(sent(""), -1);

    const auto offered = [this](const char *signal) {
        find<QTableView>("signals")->selectRow(rowOf("signals", signal, Name));
        QStringList texts;
        for (int i = 0; i < find<QComboBox>("argument-0")->count(); ++i)
            texts.append(find<QComboBox>("argument-0")->itemText(i));
        return texts;
    };
    QCOMPARE(offered("peakIndicatorNotify"), (QStringList{"0 hidden", "1 shown"}));
    QCOMPARE(offered("centerGaugePeakColorNotify"),
             (QStringList{"1 red", "2 blue", "3 orange", "4 yellow", "5 green", "0 default"}));
}

void tst_Panels::argumentsAreExplained()
{
    open("signals");
    emit VtqAdaptor::instance()->tirePressureStatus(40, 0, {"34 psi", "33 psi"});
    const int row = rowOf("signals", "tirePressureStatus", Name);
    QTRY_COMPARE(cell("signals", row, Count), QString("1"));
    const auto tooltip = [&](int column) {
        return model("signals")->index(row, column).data(Qt::ToolTipRole).toString();
    };
    QCOMPARE(tooltip(Name), QString("<p><b>tirePressureStatus(uchar,uchar,QStringList)</b></p>"
                                    "<p>Tire pressures</p>"));
    QCOMPARE(tooltip(Last),
             QString("<p><b>flags</b>: 40: rear right warns, texts are valid</p><p><b>aux</b>: "
                     "0</p><p><b>values</b>: front left 34 psi, front right 33 psi</p>"));
    find<QTableView>("signals")->selectRow(row);
    const QString words = find<QSpinBox>("argument-1")->parentWidget()->toolTip();
    QCOMPARE(words, QString("<p>not used</p><p><tt>uchar</tt></p>"));
}

void tst_Panels::editorLeavesRoomForTheTable()
{
    open("signals");
    auto *table = find<QTableView>("signals");
    const QVector<int> rows = {rowOf("signals", "listInfoNotify", Name),
                               rowOf("signals", "doorStatus", Name),
                               rowOf("signals", "climateType", Name)};
    const QScopedPointer<QWidget> panel(find<QDockWidget>("signals")->widget());
    panel->setParent(nullptr);
    panel->setMinimumWidth(0);
    panel->show();
    for (const int row : rows) {
        table->selectRow(row);
        for (const QSize size : {QSize(420, 320), QSize(420, 700)}) {
            panel->resize(size);
            QTest::qWait(50);
            QCOMPARE(panel->size(), size);
            QVERIFY(table->viewport()->height() >= 2 * table->rowHeight(0));
        }
        auto *area = panel->findChild<QScrollArea *>();
        QVERIFY(area->height() >=
                area->widget()->sizeHint().height()); // whole, where there is room
    }
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
    drive->seek(10000);
    windows()->openWindow(81);
    const QSignalSpy voices(audio(), &AudioStage::voiceStarted);
    QTest::mouseClick(find<QPushButton>("warning"), Qt::LeftButton);
    QTRY_COMPARE(voices.count(), 1);
    QCOMPARE(voices[0][0].toInt(), int(AudioStage::WarningTone));
    auto *hood = find<QComboBox>("car-hood");
    hood->setCurrentText("open");
    emit hood->activated(hood->currentIndex());
    QTRY_VERIFY(screen()->widgetNamed("icon_hood")->isVisible());
    hood->setCurrentIndex(0);
    emit hood->activated(0);
    QTRY_VERIFY(screen()->widgetNamed("icon_hood")->isHidden());
    find<QSpinBox>("car-tire-rear-left")->setValue(11);
    QTRY_COMPARE(text("Txt_psi_rear_left"), QStringLiteral("11 psi"));
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
