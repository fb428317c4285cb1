#include "adaptorlink.h"
#include "callspy.h"
#include "disabledlook.h"
#include "drives.h"
#include "messagecapture.h"
#include "norda/vtqadaptor.h"
#include "paintcounter.h"
#include "pluginfixture.h"
#include "scrolllabel.h"
#include "testmain.h"
#include "vehiclesource.h"

#include <QLabel>
#include <QPushButton>

using norda::VtqAdaptor;

enum Overlay { Hood, Trunk, FrontLeft, FrontRight, RearLeft, RearRight, OverlayCount };

static const char *const overlayNames[] = {
    "icon_hood",           "icon_trunk",          "icon_door_front_left", "icon_door_front_right",
    "icon_door_rear_left", "icon_door_rear_right"};

/** Everything but the tires of the vehicle information screen. */
class tst_Vehicle : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void startsAsAgreed();
    void images_data();
    void images();
    void overlaysFitTheCar();
    void asksForItsData();
    void doorBits_data();
    void doorBits();
    void doorCodes_data();
    void doorCodes();
    void battery_data();
    void battery();
    void checkEngine_data();
    void checkEngine();
    void unknownEngineFades();
    void checkEngineTouchSendsNothing();
    void checkEngineSlotSends();
    void texts_data();
    void texts();
    void longTextScrolls_data();
    void longTextScrolls();
    void properties_data();
    void properties();
    void shortPropertiesAreIgnored_data();
    void shortPropertiesAreIgnored();
    void logOnlySignals_data();
    void logOnlySignals();
    void markupIsText();
    void hiddenScreenFollows();
    void disconnectKeepsTheLifeConnections();
    void moduleSettingsKey();
    void repeatedSignalsPaintNothing();
    void recordedVoltage_data();
    void recordedVoltage();

private:
    template <typename Widget>
    Widget *child(const char *name) const
    {
        return find<Widget>(m_screen, name);
    }
    QString text(const char *name) const { return child<QLabel>(name)->text(); }
    /** The overlays that show, as bits of the door status. */
    int shownOverlays() const
    {
        int bits = 0;
        for (int i = 0; i < OverlayCount; ++i)
            bits |= child<QLabel>(overlayNames[i])->isVisibleTo(m_screen) << i;
        return bits;
    }

    QScopedPointer<PluginFixture> m_host;
    QWidget *m_screen = nullptr;
    VtqAdaptor *const m_adaptor = VtqAdaptor::instance();
};

void tst_Vehicle::init()
{
    m_host.reset(new PluginFixture);
    m_screen = m_host->open(81);
}

void tst_Vehicle::cleanup()
{
    m_host.reset();
}

void tst_Vehicle::startsAsAgreed()
{
    QCOMPARE(m_screen->metaObject()->className(), "norda::Vantiq_Vehicle_Widget");
    QCOMPARE(text("Txt_pop_title"), QStringLiteral("Vehicle Information"));
    QCOMPARE(text("Txt_battery"), QStringLiteral("13.2V"));
    QCOMPARE(shownOverlays(), 0);
    for (const char *hidden :
         {"button_widget", "key_settings", "icon_typer_front_right", "icon_typer_front_left",
          "icon_typer_rear_right", "icon_typer_rear_left"})
        QVERIFY2(!child<QWidget>(hidden)->isVisibleTo(m_screen), hidden);
    QVERIFY(child<QPushButton>("key_engine")->isCheckable());
    QCOMPARE(child<QPushButton>("key_engine")->iconSize(), QSize(240, 162));
    QCOMPARE(child<QWidget>("key_settings")->x(), 9999);
    QCOMPARE(child<QWidget>("bkg_top_pop")->styleSheet(),
             QStringLiteral("background-color: rgb(0, 0, 0);"));
    QVERIFY(child<QPushButton>("norda_key_vehicle")->isChecked());
}

void tst_Vehicle::images_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("image");
    const auto row = [](const char *label, const char *image) {
        QTest::newRow(label) << label << QStringLiteral(":/icon/vehicleicon/%1.png").arg(image);
    };
    row("icon_battery", "battery");
    row("bkg_vehicle_car", "bkg_vehicle_car");
    row("icon_hood", "hoot");
    row("icon_trunk", "trunk");
    // The front pair's file names are crossed against the object names.
    row("icon_door_front_right", "front_left_door");
    row("icon_door_front_left", "front_right");
    row("icon_door_rear_right", "rear_right");
    row("icon_door_rear_left", "rear_left");
    for (const char *background :
         {"bkg_front_right", "bkg_rear_right", "bkg_rear_left", "bkg_front_left"})
        row(background, "info_txt");
}

void tst_Vehicle::images()
{
    QFETCH(QString, label);
    QFETCH(QString, image);
    const auto *shown = m_screen->findChild<QLabel *>(label);
    QVERIFY(shown);
    QVERIFY(!QPixmap(image).isNull());
    QCOMPARE(shown->pixmap(Qt::ReturnByValue).toImage(), QPixmap(image).toImage());
    QCOMPARE(shown->size(), QPixmap(image).size()); // nothing is cut or moved inside of its label
}

void tst_Vehicle::overlaysFitTheCar()
{
    QCOMPARE(child<QLabel>("bkg_vehicle_car")->size(), QSize(664, 427));
    for (const char *name : overlayNames) {
        const auto *overlay = child<QLabel>(name);
        QCOMPARE(overlay->parentWidget(), child<QWidget>("car_info_widget"));
        QVERIFY2(child<QWidget>("car_info_widget")->rect().contains(overlay->geometry()), name);
    }
    for (const char *top : {"icon_door_front_right", "icon_door_rear_right"})
        QVERIFY2(child<QLabel>(top)->geometry().bottom() <= 150, top);
    for (const char *bottom : {"icon_door_front_left", "icon_door_rear_left"})
        QVERIFY2(child<QLabel>(bottom)->y() >= 270, bottom);
}

void tst_Vehicle::asksForItsData()
{
    const QString request = QStringLiteral("norda::VtqAdaptor::requestVehicleInfo()");
    m_host->close(81);
    CallSpy calls;
    m_host->window(81)->onCreate();
    QCOMPARE(calls.take({"norda::"}), QStringList{request});
    m_host->window(81)->onEnter();
    QCOMPARE(calls.take({"norda::"}), QStringList{request});
}

void tst_Vehicle::doorBits_data()
{
    QTest::addColumn<int>("status");
    for (int status = 0; status <= 255; ++status)
        QTest::addRow("0x%02X", status) << status;
}

void tst_Vehicle::doorBits()
{
    QFETCH(int, status);
    emit m_adaptor->doorStatus(static_cast<unsigned char>(status));
    QCOMPARE(shownOverlays(), status & 0x3F);
    emit m_adaptor->doorStatus(static_cast<unsigned char>(~status));
    QCOMPARE(shownOverlays(), ~status & 0x3F);
}

void tst_Vehicle::doorCodes_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("shown");
    QTest::newRow("hood") << 0 << (1 << Hood);
    QTest::newRow("trunk") << 1 << (1 << Trunk);
    QTest::newRow("rear left") << 2 << (1 << RearLeft);
    QTest::newRow("rear right") << 3 << (1 << RearRight);
    QTest::newRow("front left") << 4 << (1 << FrontLeft);
    QTest::newRow("front right") << 5 << (1 << FrontRight);
    for (int code : {6, 7, 8, 63, 255})
        QTest::addRow("unknown %d", code) << code << 0;
}

void tst_Vehicle::doorCodes()
{
    QFETCH(int, code);
    QFETCH(int, shown);
    emit m_adaptor->doorStatus(0x3F);
    invoke(m_screen, "onNordaDoorStatus", Q_ARG(uchar, uchar(code)));
    QCOMPARE(shownOverlays(), shown);
}

void tst_Vehicle::battery_data()
{
    QTest::addColumn<QString>("sent");
    QTest::addColumn<QString>("shown");
    QTest::newRow("five letters") << "14.1V"
                                  << "14.1V";
    QTest::newRow("six letters") << "12.65V"
                                 << "12.65";
    QTest::newRow("short") << "9V"
                           << "9V";
    QTest::newRow("nothing") << ""
                             << "";
    QTest::newRow("huge") << QString(100000, 'x') << "xxxxx";
}

void tst_Vehicle::battery()
{
    QFETCH(QString, sent);
    QFETCH(QString, shown);
    QWidget *label = child<QLabel>("Txt_battery");
    child<QLabel>("icon_battery")->raise();
    emit m_adaptor->batteryVoltage(sent);
    QCOMPARE(text("Txt_battery"), shown);
    QCOMPARE(label->parentWidget()->children().last(), label); // above its siblings
}

void tst_Vehicle::checkEngine_data()
{
    QTest::addColumn<bool>("checkedBefore");
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("checked");
    for (const bool before : {false, true}) {
        const char *name = before ? "was on" : "was off";
        QTest::addRow("unknown, %s", name) << before << 0 << false << before;
        QTest::addRow("fine, %s", name) << before << 1 << true << false;
        QTest::addRow("fault, %s", name) << before << 2 << true << true;
        for (const int other : {3, 128, 255})
            QTest::addRow("%d, %s", other, name) << before << other << true << before;
    }
}

void tst_Vehicle::checkEngine()
{
    QFETCH(bool, checkedBefore);
    QFETCH(int, status);
    QFETCH(bool, enabled);
    QFETCH(bool, checked);
    auto *key = child<QPushButton>("key_engine");
    emit m_adaptor->checkEngineStatus(checkedBefore ? 2 : 1);
    emit m_adaptor->checkEngineStatus(0);
    emit m_adaptor->checkEngineStatus(static_cast<unsigned char>(status));
    QCOMPARE(key->isEnabled(), enabled);
    QCOMPARE(key->isChecked(), checked);
}

void tst_Vehicle::unknownEngineFades()
{
    for (const int before : {1, 2}) {
        emit m_adaptor->checkEngineStatus(static_cast<unsigned char>(before));
        emit m_adaptor->checkEngineStatus(0);
        QCOMPARE(faultOfDisabledLook(child<QPushButton>("key_engine")), QString());
    }
}

void tst_Vehicle::checkEngineTouchSendsNothing()
{
    auto *key = child<QPushButton>("key_engine");
    emit m_adaptor->checkEngineStatus(1);
    CallSpy calls;
    const QImage blue = key->grab().toImage();
    QTest::mouseClick(key, Qt::LeftButton);
    QVERIFY(key->isChecked());
    QVERIFY(key->grab().toImage() != blue);
    QCOMPARE(calls.take(), QStringList());
}

void tst_Vehicle::checkEngineSlotSends()
{
    CallSpy calls;
    invoke(m_screen, "onCheckEngineClicked");
    QCOMPARE(calls.take(), (QStringList{"svaudio::AudioService::doBeep(0)",
                                        "norda::VtqAdaptor::onClickCheckEngineBtn()"}));
}

// A step is "bar TEXT" or "info LINE1/LINE2".
void tst_Vehicle::texts_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QStringList>("shown"); // the bar, or the two lines
    QTest::newRow("nothing yet") << QStringList{} << QStringList{""};
    QTest::newRow("bar") << QStringList{"bar ABC"} << QStringList{"ABC"};
    QTest::newRow("bar of 60") << QStringList{"bar " + QString(49, 'x') + "123456789ab"}
                               << QStringList{QString(49, 'x') + "1"};
    QTest::newRow("info") << QStringList{"bar ABC", "info one/two"} << QStringList{"one", "two"};
    QTest::newRow("info of 25")
        << QStringList{"info 1234567890123456789012345/abcdefghijklmnopqrst!"}
        << QStringList{"12345678901234567890", "abcdefghijklmnopqrst"};
    QTest::newRow("first line only") << QStringList{"info one/"} << QStringList{"one", ""};
    QTest::newRow("second line only") << QStringList{"info /two"} << QStringList{"", "two"};
    QTest::newRow("info and gone")
        << QStringList{"bar ABC", "info one/two", "info /"} << QStringList{"ABC"};
    QTest::newRow("bar meanwhile is lost")
        << QStringList{"bar ABC", "info one/two", "bar DEF", "info /"} << QStringList{"ABC"};
    QTest::newRow("bar meanwhile changes nothing")
        << QStringList{"info one/two", "bar DEF"} << QStringList{"one", "two"};
    QTest::newRow("gone without a bar text")
        << QStringList{"info one/two", "info /"} << QStringList{""};
    QTest::newRow("bar after info")
        << QStringList{"info one/two", "info /", "bar DEF"} << QStringList{"DEF"};
    QTest::newRow("empty bar") << QStringList{"bar ABC", "bar "} << QStringList{""};
}

void tst_Vehicle::texts()
{
    QFETCH(QStringList, steps);
    QFETCH(QStringList, shown);
    for (const QString &step : qAsConst(steps)) {
        const QString content = step.section(QLatin1Char(' '), 1);
        if (step.startsWith(QLatin1String("bar")))
            emit m_adaptor->vehTopBarText(content);
        else
            emit m_adaptor->vehicleInfoText(content.section(QLatin1Char('/'), 0, 0),
                                            content.section(QLatin1Char('/'), 1));
    }
    const bool info = shown.size() == 2;
    if (!steps.isEmpty()) {
        QCOMPARE(child<QLabel>("Txt_fork")->isVisible(), !info);
        QCOMPARE(child<QLabel>("Txt_carInfo")->isVisible(), info);
        QCOMPARE(child<QLabel>("Txt_carInfo_2")->isVisible(), info);
    }
    const QStringList seen = info ? QStringList{text("Txt_carInfo"), text("Txt_carInfo_2")}
                                  : QStringList{text("Txt_fork")};
    QCOMPARE(seen, shown);
}

void tst_Vehicle::longTextScrolls_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {"Txt_fork", "Txt_carInfo", "Txt_carInfo_2"})
        QTest::newRow(name) << QByteArray(name);
}

void tst_Vehicle::longTextScrolls()
{
    QFETCH(QByteArray, name);
    auto *line = child<ScrollLabel>(name);
    const QString text(60, QLatin1Char('W'));
    if (name == "Txt_fork")
        emit m_adaptor->vehTopBarText(text);
    else
        emit m_adaptor->vehicleInfoText(text, text);
    QVERIFY(line->overflow() > 0);
    QTRY_VERIFY(line->scrollOffset() > 0);
}

void tst_Vehicle::properties_data()
{
    QTest::addColumn<QList<int>>("list");
    QTest::addColumn<int>("doors");
    QTest::addColumn<QString>("battery");
    QTest::addColumn<QStringList>("temperatures"); // front left, front right, rear left, rear right
    QTest::newRow("example") << QList<int>{0x3F, 14, 0, 0, 0, 0, 99, 100, 255, 256} << 0x3F << "14V"
                             << QStringList{"99F", "100F", "256F", "Error"};
    QTest::newRow("order") << QList<int>{0x40, 12, 1, 2, 3, 4, 61, 62, 63, 64} << 0 << "12V"
                           << QStringList{"61F", "62F", "64F", "63F"};
    QTest::newRow("low eight bits") << QList<int>{0x104, 12, 0, 0, 0, 0, 1, 2, 3, 4} << 0x04
                                    << "12V" << QStringList{"1F", "2F", "4F", "3F"};
    QTest::newRow("negative") << QList<int>{-1, -5, 0, 0, 0, 0, -5, -40, -1, 0} << 0x3F << "-5V"
                              << QStringList{"-5F", "-40F", "0F", "-1F"};
    QTest::newRow("extreme") << QList<int>{INT_MIN, INT_MAX, 0, 0, 0, 0, INT_MAX, INT_MIN, 255, 254}
                             << 0 << "21474"
                             << QStringList{"2147483647F", "-2147483648F", "254F", "Error"};
    QTest::newRow("longer than needed") << QList<int>{1, 13, 0, 0, 0, 0, 70, 71, 72, 73, 74, 75}
                                        << 1 << "13V" << QStringList{"70F", "71F", "73F", "72F"};
}

void tst_Vehicle::properties()
{
    QFETCH(QList<int>, list);
    QFETCH(int, doors);
    QFETCH(QString, battery);
    QFETCH(QStringList, temperatures);
    emit m_adaptor->Properties2TextInfo(list);
    QCOMPARE(shownOverlays(), doors);
    QCOMPARE(text("Txt_battery"), battery);
    QCOMPARE((QStringList{text("Txt_temp_front_left"), text("Txt_temp_front_right"),
                          text("Txt_temp_rear_left"), text("Txt_temp_rear_right")}),
             temperatures);
}

void tst_Vehicle::shortPropertiesAreIgnored_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("warns");
    for (const int size : {0, 1, 2, 5})
        QTest::addRow("%d numbers", size) << size << true;
    for (const int size : {6, 9})
        QTest::addRow("%d numbers, meant for the gauges", size) << size << false;
}

void tst_Vehicle::shortPropertiesAreIgnored()
{
    QFETCH(int, size);
    QFETCH(bool, warns);
    emit m_adaptor->Properties2TextInfo({5, 12, 0, 0, 0, 0, 70, 71, 72, 73});
    const QImage before = m_screen->grab().toImage();
    MessageCapture messages;
    emit m_adaptor->Properties2TextInfo(QVector<int>(size, 63).toList());
    const QStringList warnings = messages.takeTexts().filter(QStringLiteral("vehicle properties"));
    QCOMPARE(warnings.size(), int(warns));
    if (warns)
        QVERIFY2(warnings.first().endsWith(QStringLiteral("expected 10 numbers, got %1").arg(size)),
                 qPrintable(warnings.first()));
    QCOMPARE(m_screen->grab().toImage(), before);
}

void tst_Vehicle::logOnlySignals_data()
{
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("logged");
    QTest::newRow("compass") << QByteArray("compassHeading") << QVariant("NW") << "NW";
    QTest::newRow("seat belt") << QByteArray("seatbeltStatus") << QVariant::fromValue(uchar(7))
                               << "7";
    QTest::newRow("gear") << QByteArray("checkGearPositionStatus") << QVariant::fromValue(uchar(4))
                          << "4";
}

void tst_Vehicle::logOnlySignals()
{
    QFETCH(QByteArray, signal);
    QFETCH(QVariant, value);
    QFETCH(QString, logged);
    const QImage before = m_screen->grab().toImage();
    MessageCapture messages;
    QVERIFY(module::AdaptorLink().deliver({0, signal, {value}}));
    const QStringList lines = messages.takeTexts();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.first().contains(logged), qPrintable(lines.first()));
    QCOMPARE(m_screen->grab().toImage(), before);
}

void tst_Vehicle::markupIsText()
{
    const QString markup = QStringLiteral("<h1>");
    emit m_adaptor->batteryVoltage(markup);
    emit m_adaptor->tirePressureStatus(0x20, 0, {markup, markup, markup, markup, "0"});
    emit m_adaptor->tireTemperatureStatus(0x20, 0, {markup, markup, markup, markup});
    for (const char *name : {"Txt_battery", "Txt_psi_front_left", "Txt_temp_rear_right"}) {
        QCOMPARE(text(name), markup);
        QCOMPARE(child<QLabel>(name)->textFormat(), Qt::PlainText);
    }
}

void tst_Vehicle::hiddenScreenFollows()
{
    m_host->window(81)->onHide(QByteArray());
    m_screen->hide();
    emit m_adaptor->doorStatus(0x02);
    emit m_adaptor->batteryVoltage("11.9V");
    QCOMPARE(shownOverlays(), 2);
    QCOMPARE(text("Txt_battery"), QStringLiteral("11.9V"));
    emit m_adaptor->Properties2TextInfo({4, 12, 0, 0, 0, 0, 70, 71, 72, 73});
    QCOMPARE(shownOverlays(), 4);
    QCOMPARE(text("Txt_battery"), QStringLiteral("12V"));
}

void tst_Vehicle::disconnectKeepsTheLifeConnections()
{
    invoke(m_screen, "disconnectVtqAdaptor");
    emit m_adaptor->doorStatus(0x3F);
    emit m_adaptor->batteryVoltage("9.9V");
    QCOMPARE(shownOverlays(), 0);
    QCOMPARE(text("Txt_battery"), QStringLiteral("13.2V"));
    emit m_adaptor->Properties2TextInfo({1, 12, 0, 0, 0, 0, 70, 71, 72, 73});
    QCOMPARE(shownOverlays(), 1);
    emit m_adaptor->tirePressureStatus(0, 0, {"1", "2", "3", "4", "0"});
    QCOMPARE(text("Txt_psi_front_left"), QStringLiteral("1")); // not the first reader's "null"

    // Connected again, and once more, the second reader still has the last word.
    invoke(m_screen, "connectVtqAdaptor");
    invoke(m_screen, "connectVtqAdaptor");
    emit m_adaptor->tirePressureStatus(0, 0, {"5", "6", "7", "8", "0"});
    QCOMPARE(text("Txt_psi_front_left"), QStringLiteral("5"));
    emit m_adaptor->doorStatus(0x3F);
    QCOMPARE(shownOverlays(), 0x3F);
}

void tst_Vehicle::moduleSettingsKey()
{
    CallSpy calls;
    auto *key = child<QPushButton>("key_settings");
    key->show();
    key->click();
    QCOMPARE(calls.takeTouches(), (QStringList{"svaudio::AudioService::doBeep(0)",
                                               "norda::VtqAdaptor::vehicleSettings()"}));
}

void tst_Vehicle::repeatedSignalsPaintNothing()
{
    const auto report = [this] {
        emit m_adaptor->doorStatus(0x05);
        emit m_adaptor->batteryVoltage("14.1V");
        emit m_adaptor->checkEngineStatus(2);
        emit m_adaptor->vehTopBarText("Short");
        emit m_adaptor->tireTemperatureStatus(0x21, 0, {"99F", "70F", "71F", "72F"});
        QCoreApplication::processEvents();
    };
    report();
    QTest::qWait(50);
    PaintCounter counter;
    report();
    QTest::qWait(50);
    QCOMPARE(counter.paints, 0);
    emit m_adaptor->batteryVoltage("14.2V");
    QTRY_VERIFY(counter.paints > 0);
}

void tst_Vehicle::recordedVoltage_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("atCranking");
    QTest::newRow("candump") << recordedDrive("skoda_obd2_20240907.candump.log") << "11.1V";
    QTest::newRow("csv") << recordedDrive("etios2014_live1_coldstart.csv") << "10.3V";
}

void tst_Vehicle::recordedVoltage()
{
    QFETCH(QString, file);
    QFETCH(QString, atCranking);
    if (!QFile::exists(file))
        QSKIP("this recorded drive is not on this machine");
    QString error;
    const auto source = module::openSource(file, &error);
    QVERIFY2(source, qPrintable(error));
    module::AdaptorLink link;
    QString lowest = QStringLiteral("99V");
    const auto volts = [](const QString &shown) { return shown.chopped(1).toDouble(); };
    while (source->nextDueMs() >= 0) {
        link.deliver(source->take());
        const QString shown = text("Txt_battery");
        if (shown.endsWith(QLatin1Char('V')) && volts(shown) < volts(lowest))
            lowest = shown;
    }
    QCOMPARE(lowest, atCranking);
}

NORDA_TEST_MAIN(tst_Vehicle)
#include "tst_vehicle.moc"
