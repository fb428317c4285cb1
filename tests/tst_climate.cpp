#include "callspy.h"
#include "messagecapture.h"
#include "norda/vtqadaptor.h"
#include "norda/vtqservice.h"
#include "paintcounter.h"
#include "pluginfixture.h"
#include "simulator/climate.h"
#include "testmain.h"
#include "translator.h"

#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>

using norda::VtqAdaptor;
using Bytes = QMap<int, int>;
using Features = QMap<int, bool>;
Q_DECLARE_METATYPE(Features)

static const QString beep = QStringLiteral("svaudio::AudioService::doBeep(0)");
static const Bytes zeros = {{4, 0}, {5, 0}, {6, 0}, {7, 0}, {8, 0}, {9, 0}, {10, 0}};

/** Keeps the byte maps that the screen sends. */
class ByteSpy : public QObject
{
public:
    ByteSpy()
    {
        connect(CallLog::instance(), &CallLog::called, this,
                [this](const QString &operation, const QVariantList &arguments) {
                    if (operation.endsWith(QStringLiteral("NordatriggerRearDefrostButton")))
                        sent.append(arguments[0].value<Bytes>());
                });
    }
    QList<Bytes> sent;
};

/** The climate screen, driven by status lists, touches and drags. */
class tst_Climate : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void startsAsAgreed();
    void roundTrips_data();
    void roundTrips();
    void keysWithoutARow_data();
    void keysWithoutARow();
    void seatDirections();
    void ventCycle();

    void zoneWalk();
    void slideOffTheZoneKey();
    void threeTouchesOfTheZoneKey();

    void statusConnection();
    void statusLengths_data();
    void statusLengths();
    void autoDualStatus_data();
    void autoDualStatus();
    void manualStatus_data();
    void manualStatus();
    void repeatedStatusPaintsNothing();

    void temperatureDrag();
    void temperatureBarWantsTheManualLayout();
    void fanDrag_data();
    void fanDrag();
    void autoFanDragMovesTheOtherMeter();

    void secondZoneTellsTheServiceOnce();
    void ventUpdateForgetsTheZone();
    void features_data();
    void features();
    void secondStatus();
    void items();
    void customLabels();
    void displayTypeReturnsToThePage();
    void settingsKeyFollowsTheZone();
    void singleCommands_data();
    void singleCommands();

private:
    QPushButton *key(const char *name) const { return find<QPushButton>(m_screen, name); }
    QLabel *label(const char *name) const { return find<QLabel>(m_screen, name); }
    int page() const { return find<QStackedWidget>(m_screen, "stackedWidget")->currentIndex(); }
    bool shows(const char *name, const QString &image) const
    {
        const QImage expected =
            QPixmap(QStringLiteral(":/icon/airicon/") + image + ".png").toImage();
        return !expected.isNull() && label(name)->pixmap(Qt::ReturnByValue).toImage() == expected;
    }
    bool showsIcon(const char *name, const QString &image) const
    {
        const QImage expected =
            QPixmap(QStringLiteral(":/icon/airicon/") + image + ".png").toImage();
        return !expected.isNull() && key(name)->icon().pixmap(200, 164).toImage() == expected;
    }
    void toManual() { QTest::mouseClick(key("key_rear"), Qt::LeftButton); }
    static void report(const QList<int> &status)
    {
        emit VtqAdaptor::instance()->NordaClimateCtrlStatusNotify(status);
    }
    static QList<int> listWith(const QMap<int, int> &elements)
    {
        QList<int> list = QVector<int>(23, 0).toList();
        for (auto it = elements.cbegin(); it != elements.cend(); ++it)
            list[it.key()] = it.value();
        return list;
    }
    template <typename... Arguments>
    void invoke(const char *slot, Arguments... arguments)
    {
        if (!QMetaObject::invokeMethod(m_screen, slot, arguments...))
            qFatal("no slot %s", slot);
    }
    void drag(QWidget *widget, const QList<int> &places)
    {
        const int y = widget->height() / 2;
        QTest::mousePress(widget, Qt::LeftButton, {}, QPoint(places.first(), y));
        for (int x : places) {
            QMouseEvent move(QEvent::MouseMove, QPoint(x, y), Qt::NoButton, Qt::LeftButton, {});
            QCoreApplication::sendEvent(widget, &move);
        }
        QTest::mouseRelease(widget, Qt::LeftButton, {}, QPoint(places.last(), y));
    }

    QScopedPointer<PluginFixture> m_host;
    QWidget *m_screen = nullptr;
};

void tst_Climate::init()
{
    Translator::instance()->setLanguage(QStringLiteral("en"));
    const module::Climate car;
    for (int group : {0, 1})
        norda::VtqService::instance()->setRearClimateControlFeatures(group,
                                                                     car.rearFeatures(group));
    m_host.reset(new PluginFixture);
    m_screen = m_host->open(82);
}

void tst_Climate::cleanup()
{
    m_host.reset();
}

void tst_Climate::startsAsAgreed()
{
    QCOMPARE(m_screen->objectName(), QStringLiteral("norda_vantiq_climate"));
    QCOMPARE(page(), 0);
    QCOMPARE(label("Txt_rear")->text(), QStringLiteral("Rear"));
    for (const char *hidden : {"button_widget", "button_widget_2", "key_settings"})
        QVERIFY(find<QWidget>(m_screen, hidden)->isHidden());
    QVERIFY(shows("icon_left_seat_AC", "seat_AC_0"));
    QVERIFY(shows("icon_right_seat_AC", "seat_AC_0"));
    for (const char *name : {"key_power", "key_AC_2", "key_P1", "key_P2_2", "key_seat", "key_rear"})
        QVERIFY(key(name)->isCheckable());
    int small = 0;
    for (QPushButton *button : m_screen->findChildren<QPushButton *>())
        small += button->width() < 76 || button->height() < 76;
    QCOMPARE(small, 0);
}

void tst_Climate::roundTrips_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("manual");
    QTest::addColumn<int>("byte");
    QTest::addColumn<int>("value");
    QTest::addColumn<QByteArray>("target"); // what shows the car's answer
    QTest::addColumn<QString>("expected");  // a text, an image, "checked" or "unchecked"
    const auto row = [](const char *name, bool manual, int byte, int value, const char *target,
                        const char *expected) {
        QTest::newRow(name) << QByteArray(name) << manual << byte << value << QByteArray(target)
                            << QString::fromLatin1(expected);
    };
    row("key_power", false, 4, 128, "key_power", "unchecked");
    row("key_auto", false, 4, 64, "key_auto", "checked");
    row("key_air_speed_next", false, 4, 32, "bkg_air_gear_position", "position_3");
    row("key_air_speed_prev", false, 4, 16, "bkg_air_gear_position", "position_1");
    row("key_left_temp_next", false, 4, 2, "Txt_left_temp", "71.00 F");
    row("key_left_temp_prev", false, 4, 1, "Txt_left_temp", "69.00 F");
    row("key_right_temp_next", false, 5, 128, "Txt_right_temp", "71.00 F");
    row("key_right_temp_prev", false, 5, 64, "Txt_right_temp", "69.00 F");
    row("key_circulation", false, 5, 32, "key_circulation", "checked");
    row("key_AC", false, 5, 16, "key_AC", "checked");
    row("key_max_AC", false, 5, 8, "key_max_AC", "checked");
    row("key_demisting", false, 5, 4, "key_demisting", "checked");
    row("key_wind_direction", false, 5, 2, "key_wind_direction", "checked");
    row("key_seat", false, 6, 64, "key_seat", "seat_foot_n");
    row("key_left_seat_heat", false, 6, 2, "icon_left_seat_heat", "seat_heat_1");
    row("key_right_seat_heat", false, 6, 1, "icon_right_seat_heat", "seat_heat_1");
    row("key_left_seat_AC", false, 7, 64, "icon_left_seat_AC", "seat_AC_1");
    row("key_right_seat_AC", false, 7, 16, "icon_right_seat_AC", "seat_AC_1");
    row("key_Steering_wheel_heat", false, 7, 8, "key_Steering_wheel_heat", "checked");
    row("key_dual", false, 7, 1, "key_dual", "checked");
    row("key_power_2", true, 8, 32, "key_power_2", "unchecked");
    row("key_air_speed_next_2", true, 8, 8, "bkg_air_gear_position_2", "position_3");
    row("key_air_speed_prev_2", true, 8, 4, "bkg_air_gear_position_2", "position_1");
    row("key_temp_next", true, 8, 2, "Txt_fork", "71.00 F");
    row("key_temp_prev", true, 8, 1, "Txt_fork", "69.00 F");
    row("key_AC_2", true, 9, 128, "key_AC_2", "checked");
    row("key_max_AC_2", true, 9, 64, "key_max_AC_2", "checked");
    row("key_left_seat_heat_2", true, 9, 32, "icon_left_seat_heat_2", "seat_heat_1");
    row("key_right_seat_heat_2", true, 9, 8, "icon_right_seat_heat_2", "seat_heat_1");
    row("key_left_seat_AC_2", true, 9, 1, "icon_left_seat_AC_2", "seat_AC_1");
    row("key_right_seat_AC_2", true, 10, 64, "icon_right_seat_AC_2", "seat_AC_1");
    row("key_seat_2", true, 10, 16, "key_seat_2", "seat_foot_n");
}

void tst_Climate::roundTrips()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, manual);
    QFETCH(int, byte);
    QFETCH(int, value);
    QFETCH(QByteArray, target);
    QFETCH(QString, expected);
    if (manual)
        toManual();
    // The car is another reading of the wire than the screen's.
    module::Climate car;
    report(car.report());

    ByteSpy bytes;
    CallSpy calls;
    QVERIFY(key(name)->isVisible());
    QTest::mouseClick(key(name), Qt::LeftButton);
    Bytes wanted = zeros;
    wanted[byte] = value;
    QCOMPARE(bytes.sent, QList<Bytes>{wanted});
    QCOMPARE(calls.take().first(), beep); // first the beep, and only one
    QCOMPARE(calls.take({"svaudio"}).size(), 0);

    car.press(bytes.sent[0]);
    report(car.report());
    if (expected.endsWith(QStringLiteral("checked")))
        QCOMPARE(key(target)->isChecked(), expected == QStringLiteral("checked"));
    else if (target.startsWith("Txt"))
        QCOMPARE(label(target)->text(), expected);
    else if (target.startsWith("key"))
        QVERIFY(showsIcon(target, expected));
    else
        QVERIFY(shows(target, expected));
}

void tst_Climate::keysWithoutARow_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<int>("id");
    for (int id : {2, 3, 4, -1, INT_MAX})
        QTest::addRow("manual text %d", id) << QByteArray("onNordaManualTextBtnClicked") << id;
    for (int id : {9, 10, 12, 13, 14, -1})
        QTest::addRow("manual icon %d", id) << QByteArray("onNordaManualIconBtnClicked") << id;
    for (int id : {4, 5, 6, -1})
        QTest::addRow("auto/dual text %d", id)
            << QByteArray("OonNordaAutoDualTextBtnClicked") << id;
    for (int id : {16, 99, -1, INT_MIN})
        QTest::addRow("auto/dual icon %d", id) << QByteArray("OnNordaDualButtonClicked") << id;
}

void tst_Climate::keysWithoutARow()
{
    QFETCH(QByteArray, slot);
    QFETCH(int, id);
    key("key_power")->click(); // nothing of an earlier touch stays
    ByteSpy bytes;
    CallSpy calls;
    invoke(slot, Q_ARG(int, id));
    QCOMPARE(bytes.sent, QList<Bytes>{zeros});
    QCOMPARE(calls.take().size(), 2);
}

void tst_Climate::seatDirections()
{
    const auto touch = [this](const char *name, int byte) {
        ByteSpy bytes;
        key(name)->click();
        return bytes.sent.value(0).value(byte);
    };
    report(listWith({{9, 3}}));
    QCOMPARE(touch("key_left_seat_heat", 6), 8);
    report(listWith({{9, 2}}));
    QCOMPARE(touch("key_left_seat_heat", 6), 8);
    report(listWith({{9, 0}}));
    QCOMPARE(touch("key_left_seat_heat", 6), 2);
    report(listWith({{9, 19}}));
    QCOMPARE(touch("key_left_seat_AC", 7), 128);
    report(listWith({{9, 16}}));
    QCOMPARE(touch("key_left_seat_AC", 7), 64);

    // The twin of the manual layout shares the flag, and turns up again at 0 only. Its values are
    // remembered whichever layout shows.
    report(listWith({{14, 19}}));
    QCOMPARE(touch("key_left_seat_AC_2", 9), 2);
    report(listWith({{14, 16}}));
    QCOMPARE(touch("key_left_seat_AC_2", 9), 2);
    report(listWith({{14, 0}}));
    QCOMPARE(touch("key_left_seat_AC_2", 9), 1);
}

void tst_Climate::ventCycle()
{
    ByteSpy bytes;
    for (int touch = 0; touch < 4; ++touch)
        key("key_seat")->click();
    QList<int> values;
    for (const Bytes &sent : bytes.sent)
        values.append(sent.value(6));
    QCOMPARE(values, (QList<int>{64, 32, 128, 16}));
    report(listWith({{3, 3}})); // reported: index 2
    key("key_seat")->click();
    QCOMPARE(bytes.sent.last().value(6), 128);
    report(listWith({{3, 99}})); // an unknown mode keeps it
    key("key_seat")->click();
    QCOMPARE(bytes.sent.last().value(6), 16);
}

void tst_Climate::zoneWalk()
{
    QPushButton *rear = key("key_rear");
    ByteSpy bytes;
    CallSpy calls;
    QTest::mousePress(rear, Qt::LeftButton);
    QCOMPARE(page(), 1);
    QCOMPARE(label("Txt_rear")->text(), QStringLiteral("front"));
    QCOMPARE(bytes.sent.size(), 1);
    QCOMPARE(bytes.sent[0].value(8), 64);
    report(listWith({{6, 72}, {18, 80}})); // the shown type is still the front one
    QCOMPARE(label("Txt_left_temp")->text(), QStringLiteral("72.00 F"));
    QCOMPARE(label("Txt_fork")->text(), QString());

    QTest::mouseRelease(rear, Qt::LeftButton);
    QVERIFY(rear->isChecked());
    QCOMPARE(page(), 1);
    QCOMPARE(bytes.sent.size(), 1); // not sent again
    report(listWith({{6, 60}, {18, 80}}));
    QCOMPARE(label("Txt_left_temp")->text(), QStringLiteral("72.00 F"));
    QCOMPARE(label("Txt_fork")->text(), QStringLiteral("80.00 F"));
    for (const char *hidden : {"key_Steering_wheel_heat_2", "key_circulation_2", "key_demisting_2",
                               "key_wind_direction_2"})
        QVERIFY(key(hidden)->isHidden());

    QTest::mousePress(rear, Qt::LeftButton);
    QCOMPARE(page(), 0);
    QCOMPARE(label("Txt_rear")->text(), QStringLiteral("rear"));
    QCOMPARE(bytes.sent.last().value(8), 128);
    QTest::mouseRelease(rear, Qt::LeftButton);
    QCOMPARE(page(), 0);
    QCOMPARE(bytes.sent.size(), 2);
    // The toggle itself never tells the service, and each press beeps once.
    const QStringList all = calls.take();
    QCOMPARE(all.filter(QStringLiteral("setClimateRearZone")), QStringList());
    QCOMPARE(all.filter(QStringLiteral("doBeep")).size(), 2);
}

void tst_Climate::slideOffTheZoneKey()
{
    // Pressed, but let go beside the key: the page has turned, the types have not.
    QPushButton *rear = key("key_rear");
    QTest::mousePress(rear, Qt::LeftButton);
    QTest::mouseRelease(rear, Qt::LeftButton, {}, QPoint(-50, -50));
    QVERIFY(!rear->isChecked());
    QCOMPARE(page(), 1);
    report(listWith({{6, 72}, {18, 80}}));
    QCOMPARE(label("Txt_left_temp")->text(), QStringLiteral("72.00 F"));

    // So the next full touch turns the page back while the layout goes over.
    ByteSpy bytes;
    toManual();
    QCOMPARE(bytes.sent[0].value(8), 128);
    QCOMPARE(label("Txt_rear")->text(), QStringLiteral("rear"));
    QCOMPARE(page(), 1);
    report(listWith({{18, 81}}));
    QCOMPARE(label("Txt_fork")->text(), QStringLiteral("81.00 F"));
}

void tst_Climate::threeTouchesOfTheZoneKey()
{
    ByteSpy bytes;
    for (int touch = 0; touch < 3; ++touch)
        toManual();
    QList<int> values;
    for (const Bytes &sent : bytes.sent)
        values.append(sent.value(8));
    QCOMPARE(values, (QList<int>{64, 128, 64}));
    QCOMPARE(page(), 1);
    QCOMPARE(label("Txt_rear")->text(), QStringLiteral("front"));
    CallSpy calls;
    drag(find<QWidget>(m_screen, "tempbar_W"), {label("bkg_temp_cusl")->x() + 1, 207});
    QCOMPARE(calls.take({"norda::"}), QStringList{"norda::VtqAdaptor::manTempValue(127, true)"});
}

void tst_Climate::statusConnection()
{
    const auto runs = [] {
        MessageCapture capture;
        report(listWith({}));
        return capture.takeTexts().filter(QStringLiteral("onNordaNotifyClimateCtrlStatus")).size();
    };
    QCOMPARE(runs(), 1); // connected at construction and on show, run once
    m_screen->hide();
    QCOMPARE(runs(), 0);
    m_screen->show();
    QCOMPARE(runs(), 1);
    m_screen->hide();
    m_screen->show();
    QCOMPARE(runs(), 1);
    m_host->close(82);
    QCOMPARE(runs(), 0);
    m_host->window(82)->onCreate();
    QCOMPARE(runs(), 1); // never shown, yet it receives
}

void tst_Climate::statusLengths_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("value");
    for (int length : {0, 1, 22, 23, 24, 1000}) {
        for (int value : {0, 1, INT_MAX, INT_MIN})
            QTest::addRow("%d of %d", length, value) << length << value;
    }
}

void tst_Climate::statusLengths()
{
    QFETCH(int, length);
    QFETCH(int, value);
    const QList<int> status = QVector<int>(length, value).toList();
    report(status);
    const int shown = length > 6 ? value : 0;
    QCOMPARE(label("Txt_left_temp")->text(), QString::number(double(shown), 'f', 2) + " F");
    toManual();
    report(status);
    const int manual = length > 18 ? value : 0;
    QCOMPARE(label("Txt_fork")->text(), QString::number(double(manual), 'f', 2) + " F");
    const QLabel *marker = label("bkg_temp_cusl");
    QVERIFY(marker->x() >= 0 && marker->x() <= 414);
}

void tst_Climate::autoDualStatus_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("value");
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<QString>("expected");
    const auto row = [](int position, int value, const char *target, const char *expected) {
        QTest::addRow("%d is %d: %s %s", position, value, target, expected)
            << position << value << QByteArray(target) << QString::fromLatin1(expected);
    };
    const struct
    {
        int position;
        const char *key;
    } buttons[] = {{0, "key_power"}, {4, "key_AC"}, {11, "key_max_AC"}, {12, "key_wind_direction"}};
    for (const auto &button : buttons) {
        row(button.position, 0, button.key, "unchecked");
        row(button.position, 1, button.key, "checked");
        row(button.position, 3, button.key, "unchecked");
        row(button.position, 9, button.key, "greyed");
        row(button.position, 2, button.key, "hidden");
    }
    row(1, 0, "key_auto", "unchecked");
    row(1, 3, "key_auto", "checked");
    row(1, 3, "key_dual", "checked");
    row(1, 1, "key_dual", "unchecked");
    row(1, 2, "key_dual", "checked");
    row(2, 36, "bkg_air_gear_position", "position_1");
    row(2, 37, "bkg_air_gear_position", "position_2");
    row(2, 217, "bkg_air_gear_position", "position_7");
    row(2, 0, "bkg_air_gear_position", "position_0");
    row(3, 4, "key_seat", "seat_head_n");
    row(3, 2, "key_seat", "seat_foot_n");
    row(3, 3, "key_seat", "seat_foot_head_n");
    row(3, 1, "key_seat", "seat_foot_windshied_n");
    row(3, 7, "key_seat", "seat_n");
    row(5, 1, "key_demisting", "checked");
    row(5, 2, "key_demisting", "unchecked");
    row(5, 2, "key_Steering_wheel_heat", "checked");
    row(6, 50, "Txt_left_temp", "LO");
    row(6, 95, "Txt_left_temp", "HI");
    row(6, 70, "Txt_left_temp", "70.00 F");
    row(7, 95, "Txt_right_temp", "HI");
    row(7, 72, "Txt_right_temp", "72.00 F");
    row(8, 0, "key_circulation", "checked");
    row(8, 5, "key_circulation", "unchecked");
    row(9, 16, "icon_left_seat_AC", "seat_AC_0");
    row(9, 19, "icon_left_seat_AC", "seat_AC_3");
    row(9, 3, "icon_left_seat_heat", "seat_heat_3");
    row(10, 0, "icon_right_seat_heat", "seat_heat_0");
    row(10, 18, "icon_right_seat_AC", "seat_AC_2");
    row(13, 1, "Txt_fork", "");
}

void tst_Climate::autoDualStatus()
{
    QFETCH(int, position);
    QFETCH(int, value);
    QFETCH(QByteArray, target);
    QFETCH(QString, expected);
    report(listWith({{position, value}}));
    if (target.startsWith("Txt")) {
        QCOMPARE(label(target)->text(), expected);
    } else if (target.startsWith("icon") || target.startsWith("bkg")) {
        QVERIFY(shows(target, expected));
    } else if (expected.startsWith(QStringLiteral("seat"))) {
        QVERIFY(showsIcon(target, expected));
    } else {
        const QPushButton *button = key(target);
        QCOMPARE(button->isHidden(), expected == QStringLiteral("hidden"));
        QCOMPARE(button->isChecked(), expected == QStringLiteral("checked"));
        QCOMPARE(button->isEnabled(), expected.endsWith(QStringLiteral("checked")));
    }
}

void tst_Climate::manualStatus_data()
{
    QTest::addColumn<QList<int>>("first");
    QTest::addColumn<QList<int>>("second");
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<QString>("expected");
    const QList<int> none = listWith({});
    const auto row = [](const char *name, const QList<int> &first, const QList<int> &second,
                        const char *target, const char *expected) {
        QTest::newRow(name) << first << second << QByteArray(target)
                            << QString::fromLatin1(expected);
    };
    row("A/C", none, listWith({{16, 1}}), "key_AC_2", "checked");
    row("max A/C", none, listWith({{22, 1}}), "key_max_AC_2", "checked");
    row("power", none, listWith({{19, 1}}), "key_power_2", "checked");
    row("fan", none, listWith({{17, 216}}), "bkg_air_gear_position_2", "position_6");
    row("50 without LO", none, listWith({{18, 50}}), "Txt_fork", "50.00 F");
    row("95 without HI", none, listWith({{18, 95}}), "Txt_fork", "95.00 F");
    row("vent", none, listWith({{20, 3}}), "key_seat_2", "seat_foot_head_n");
    row("left heat", none, listWith({{14, 2}}), "icon_left_seat_heat_2", "seat_heat_2");
    row("right cool", none, listWith({{15, 18}}), "icon_right_seat_AC_2", "seat_AC_2");
    // Only the kind that is on is drawn; off draws both.
    row("heat leaves cool", listWith({{14, 18}}), listWith({{14, 2}}), "icon_left_seat_AC_2",
        "seat_AC_2");
    row("cool leaves heat", listWith({{15, 3}}), listWith({{15, 17}}), "icon_right_seat_heat_2",
        "seat_heat_3");
    row("off clears cool", listWith({{14, 18}}), none, "icon_left_seat_AC_2", "seat_AC_0");
    row("off clears heat", listWith({{15, 3}}), none, "icon_right_seat_heat_2", "seat_heat_0");
}

void tst_Climate::manualStatus()
{
    QFETCH(QList<int>, first);
    QFETCH(QList<int>, second);
    QFETCH(QByteArray, target);
    QFETCH(QString, expected);
    toManual();
    report(first);
    report(second);
    if (target.startsWith("Txt"))
        QCOMPARE(label(target)->text(), expected);
    else if (expected == QStringLiteral("checked"))
        QVERIFY(key(target)->isChecked());
    else if (target.startsWith("key"))
        QVERIFY(showsIcon(target, expected));
    else
        QVERIFY(shows(target, expected));
}

void tst_Climate::repeatedStatusPaintsNothing()
{
    module::Climate car;
    for (const bool manual : {false, true}) {
        if (manual)
            toManual();
        report(car.report());
        QTest::qWait(100);
        PaintCounter counter;
        report(car.report());
        QTest::qWait(100);
        QCOMPARE(counter.paints, 0);
    }
}

void tst_Climate::temperatureDrag()
{
    toManual();
    QWidget *bar = find<QWidget>(m_screen, "tempbar_W");
    QLabel *marker = label("bkg_temp_cusl");
    const int y = marker->y();
    CallSpy calls;
    const auto sent = [&calls] { return calls.take({"norda::VtqAdaptor", "svaudio"}); };
    const auto value = [](int raw) {
        return QStringList{QStringLiteral("norda::VtqAdaptor::manTempValue(%1, true)").arg(raw)};
    };
    drag(bar, {marker->x() + 5, 207});
    QCOMPARE(sent(), value(127)); // and no beep
    QCOMPARE(marker->pos(), QPoint(207, y));
    drag(bar, {marker->x() + marker->width(), 414});
    QCOMPARE(sent(), value(255));
    drag(bar, {marker->x(), 100, 415, -1}); // beyond the ends is ignored
    QCOMPARE(sent(), value(61));
    QCOMPARE(marker->x(), 100);
    drag(bar, {300, 350}); // beside the marker: no drag, the last value again
    QCOMPARE(sent(), value(61));
    QCOMPARE(marker->x(), 100);

    // The second zone, once a report has made it the active one, has a command of its own.
    invoke("onSecondCliTopBarTextNotify", Q_ARG(QString, QString()));
    calls.take();
    drag(bar, {marker->x() + 1, 0});
    QCOMPARE(sent(), QStringList{"norda::VtqAdaptor::secoundmanTempValue(0, true)"});
}

void tst_Climate::temperatureBarWantsTheManualLayout()
{
    QWidget *bar = find<QWidget>(m_screen, "tempbar_W");
    CallSpy calls;
    drag(bar, {5, 100});
    QCOMPARE(calls.take(), QStringList());
    toManual();
    toManual();
    calls.take();
    drag(bar, {5, 100});
    QCOMPARE(calls.take(), QStringList());
}

void tst_Climate::fanDrag_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("raw"); // of a drag that came from x 200, which is 144
    const int last[] = {0, 46, 105, 164, 223, 282, 341, 400};
    const int raw[] = {0, 18, 36, 72, 144, 180, 216, 255};
    for (int level = 0; level < 8; ++level) {
        QTest::addRow("%d", last[level]) << last[level] << level << raw[level];
        if (level < 7)
            QTest::addRow("%d", last[level] + 1) << last[level] + 1 << level + 1 << raw[level + 1];
    }
    QTest::newRow("before the start") << -20 << 0 << 0;
    QTest::newRow("beyond the end") << 401 << 0 << 144;
}

void tst_Climate::fanDrag()
{
    QFETCH(int, x);
    QFETCH(int, level);
    QFETCH(int, raw);
    toManual();
    CallSpy calls;
    drag(label("bkg_air_gear_position_2"), {200, x});
    QCOMPARE(calls.take({"norda::VtqAdaptor", "Mcu", "svaudio"}),
             (QStringList{"McuManager::triggerBeep(0)",
                          QStringLiteral("norda::VtqAdaptor::fanDirectValue(%1, true)").arg(raw)}));
    QVERIFY(shows("bkg_air_gear_position_2", QStringLiteral("position_%1").arg(level)));
}

void tst_Climate::autoFanDragMovesTheOtherMeter()
{
    CallSpy calls;
    drag(label("bkg_air_gear_position"), {10, 100});
    QCOMPARE(
        calls.take({"norda::VtqAdaptor", "Mcu"}),
        (QStringList{"McuManager::triggerBeep(0)", "norda::VtqAdaptor::fanDirectValue(0, true)"}));
    QVERIFY(shows("bkg_air_gear_position_2", "position_2"));
    QVERIFY(shows("bkg_air_gear_position", "position_0"));
}

static QStringList zoneCalls(CallSpy *calls)
{
    return calls->take({"norda::VtqService::setClimateRearZone"});
}

void tst_Climate::secondZoneTellsTheServiceOnce()
{
    const QStringList toRear = {"norda::VtqService::setClimateRearZone(true)"};
    const QStringList toFront = {"norda::VtqService::setClimateRearZone(false)"};
    CallSpy calls;
    invoke("onSecondCliTopBarTextNotify", Q_ARG(QString, QStringLiteral("second")));
    QCOMPARE(label("Txt_rear")->text(), QStringLiteral("front"));
    QCOMPARE(label("Txt_fork")->text(), QStringLiteral("second"));
    invoke("onSecondHeatedSteeringWheelNotify", Q_ARG(int, 1));
    QCOMPARE(zoneCalls(&calls), toRear);
    invoke("onCliTopBarTextNotify", Q_ARG(QString, QStringLiteral("main")));
    QCOMPARE(label("Txt_rear")->text(), QStringLiteral("rear"));
    invoke("onDefrosterStatusNotify", Q_ARG(int, 1), Q_ARG(int, 0));
    QCOMPARE(zoneCalls(&calls), toFront);
    QVERIFY(key("key_wind_direction")->isChecked());
}

void tst_Climate::ventUpdateForgetsTheZone()
{
    CallSpy calls;
    for (int i = 0; i < 2; ++i)
        invoke("onSecondVentStatusNotify", Q_ARG(int, 1), Q_ARG(int, 0), Q_ARG(int, 100));
    QCOMPARE(zoneCalls(&calls).size(), 2);
    QVERIFY(showsIcon("key_seat", "seat_foot_n"));
    QVERIFY(shows("bkg_air_gear_position", "position_3"));
    // Rows that the table does not hold leave the icon, and so do unknown codes.
    for (int code : {4, 7, 6, 99}) {
        invoke("onVentStatusPassengerNotify", Q_ARG(int, code), Q_ARG(int, 0), Q_ARG(int, 0));
        QVERIFY(showsIcon("key_seat", "seat_foot_n"));
    }
}

void tst_Climate::features_data()
{
    QTest::addColumn<int>("group");
    QTest::addColumn<int>("feature");
    QTest::addColumn<bool>("manual");
    QTest::addColumn<QStringList>("governed");
    const auto row = [](int group, int feature, bool manual, const QStringList &governed) {
        QTest::addRow("group %d, feature %d, %s", group, feature, manual ? "manual" : "auto/dual")
            << group << feature << manual << governed;
    };
    row(0, 2, true, {"tempbar_W", "key_temp_next", "key_temp_prev"});
    row(0, 0, false, {"key_left_temp_next", "key_left_temp_prev"});
    row(0, 1, false, {"key_right_temp_next", "key_right_temp_prev"});
    const struct
    {
        int group, feature;
        QStringList keys;
    } pairs[] = {{0, 3, {"key_AC"}},
                 {0, 4, {"key_power"}},
                 {0, 5, {"key_wind_direction"}},
                 {0, 6, {"key_demisting"}},
                 {0, 7, {"key_circulation"}},
                 {1, 2, {"key_max_AC"}},
                 {1, 3, {"bkg_air_gear_position"}},
                 {1, 4, {"key_air_speed_next"}},
                 {1, 5, {"key_air_speed_prev"}},
                 {1, 6, {"key_left_seat_AC", "key_right_seat_AC"}},
                 {1, 7, {"key_left_seat_heat", "key_right_seat_heat"}}};
    for (const auto &pair : pairs) {
        row(pair.group, pair.feature, false, pair.keys);
        QStringList twins;
        for (const QString &name : pair.keys)
            twins.append(name + QStringLiteral("_2"));
        row(pair.group, pair.feature, true, twins);
    }
    row(1, 1, true, {"key_seat_2"});
    row(1, 1, false, {"key_Steering_wheel_heat"});
    row(1, 0, false, {"key_dual"});
}

void tst_Climate::features()
{
    QFETCH(int, group);
    QFETCH(int, feature);
    QFETCH(bool, manual);
    QFETCH(QStringList, governed);
    norda::VtqService *service = norda::VtqService::instance();
    Features all = service->getRearClimateControlFeatures(group);
    if (manual)
        toManual();
    for (const bool present : {false, true}) {
        Features some = all;
        if (present)
            some[feature] = true;
        else
            some.remove(feature); // a key that the map lacks is absent
        service->setRearClimateControlFeatures(group, some);
        invoke("onCliTopBarTextNotify", Q_ARG(QString, QString())); // to the front zone
        invoke("onSecondCliTopBarTextNotify", Q_ARG(QString, QString()));
        for (const QString &name : governed) {
            auto *widget = m_screen->findChild<QWidget *>(name);
            QVERIFY(widget);
            QVERIFY2(widget->isHidden() != present, qPrintable(name));
        }
    }
    if (group == 0 && feature == 1) {
        // An absent right temperature hides its text, a present one shows the left text.
        QVERIFY(!label("Txt_left_temp")->isHidden());
        service->setRearClimateControlFeatures(0, {});
        invoke("onCliTopBarTextNotify", Q_ARG(QString, QString()));
        invoke("onSecondCliTopBarTextNotify", Q_ARG(QString, QString()));
        QVERIFY(label("Txt_right_temp")->isHidden());
        QVERIFY(label("Txt_left_temp")->isHidden());
    }
}

void tst_Climate::secondStatus()
{
    invoke("onSecondClimateCtrlStatusNotify", Q_ARG(int, 1), Q_ARG(int, 9), Q_ARG(int, 1),
           Q_ARG(int, 1), Q_ARG(int, 0), Q_ARG(int, 3), Q_ARG(int, 0), Q_ARG(int, 2));
    QVERIFY(key("key_AC")->isChecked());
    QVERIFY(!key("key_power")->isEnabled());
    QVERIFY(key("key_circulation")->isChecked());
    QVERIFY(key("key_dual")->isChecked());
    QVERIFY(!key("key_auto")->isChecked());
    QVERIFY(!key("key_max_AC")->isChecked());
    QVERIFY(!key("key_air_speed_next")->isHidden());
    QVERIFY(key("key_air_speed_prev")->isHidden());
    // The front zone's twin changes nothing.
    invoke("onClimateCtrlStatusNotify", Q_ARG(int, 0), Q_ARG(int, 0), Q_ARG(int, 0), Q_ARG(int, 0),
           Q_ARG(int, 1), Q_ARG(int, 1), Q_ARG(int, 0), Q_ARG(int, 0));
    QVERIFY(key("key_AC")->isChecked());
    QVERIFY(!key("key_auto")->isChecked());
}

void tst_Climate::items()
{
    invoke("onManClimateTempNotify", Q_ARG(int, 1), Q_ARG(int, 9), Q_ARG(int, 60));
    QVERIFY(key("key_temp_next")->isChecked());
    QVERIFY(!key("key_temp_prev")->isEnabled());
    QCOMPARE(label("bkg_temp_cusl")->x(), 12);

    invoke("onHeatedCooledSeatsStatusNotify", Q_ARG(int, 1), Q_ARG(int, 2), Q_ARG(int, 3),
           Q_ARG(int, 0));
    QVERIFY(shows("icon_left_seat_heat", "seat_heat_1"));
    QVERIFY(shows("icon_right_seat_heat", "seat_heat_2"));
    QVERIFY(shows("icon_left_seat_AC", "seat_AC_3"));
    QVERIFY(shows("icon_right_seat_AC", "seat_AC_0"));
    // A level that does not exist keeps the one remembered last, whichever seat had it.
    invoke("onHeatedCooledSeatsStatusNotify", Q_ARG(int, 9), Q_ARG(int, 9), Q_ARG(int, 9),
           Q_ARG(int, 9));
    QVERIFY(shows("icon_left_seat_AC", "seat_AC_2"));

    for (int state : {0, 1, 4, 9}) {
        invoke("onRearZoneButtonStatusNotify", Q_ARG(int, state));
        QCOMPARE(label("Txt_rear")->isHidden(), state == 4);
    }
    invoke("onHeatedSteeringWheelNotify", Q_ARG(int, 1));
    QVERIFY(key("key_Steering_wheel_heat")->isChecked());
    invoke("updateRecircFreshState", Q_ARG(int, 1));
    QVERIFY(showsIcon("key_circulation_2", "external_circulation _n"));
    invoke("updateRecircFreshState", Q_ARG(int, 2));
    QVERIFY(showsIcon("key_circulation_2", "external_circulation _n"));
}

void tst_Climate::customLabels()
{
    find<QWidget>(m_screen, "button_widget")->show();
    find<QWidget>(m_screen, "button_widget_2")->show();
    const char *const slots_[] = {"onCustomControlLabels", "onSecondCustomControlLabels"};
    for (const char *slot : slots_) {
        invoke(slot, Q_ARG(QStringList, (QStringList{"A", "B", "C"})),
               Q_ARG(QByteArray, QByteArray("\2\0", 2)));
        for (const char *suffix : {"", "_2"}) {
            const QByteArray first = QByteArray("key_P1") + suffix;
            const QByteArray second = QByteArray("key_P2") + suffix;
            QVERIFY(key(first)->isEnabled() && key(first)->isChecked());
            QVERIFY(!key(second)->isEnabled() && !key(second)->isChecked());
            QCOMPARE(label(QByteArray("Txt_P2") + suffix)->text(), QStringLiteral("B"));
        }
        invoke(slot, Q_ARG(QStringList, QStringList()), Q_ARG(QByteArray, QByteArray()));
        QVERIFY(key("key_P1")->isHidden());
        QVERIFY(key("key_P2_2")->isHidden());
    }
}

void tst_Climate::displayTypeReturnsToThePage()
{
    QTest::mousePress(key("key_rear"), Qt::LeftButton); // the page turns, the types do not
    QCOMPARE(page(), 1);
    invoke("onGuiDisplayTypeChanged", Q_ARG(uchar, 2));
    QCOMPARE(page(), 1);
    invoke("onGuiDisplayTypeChanged", Q_ARG(uchar, 0));
    QCOMPARE(page(), 0);
    MessageCapture capture;
    invoke("onSecondGuiDisplayTypeChanged", Q_ARG(uchar, 16));
    const QStringList lines = capture.takeTexts();
    QVERIFY(lines.filter(QStringLiteral("createSecondPopup")).first().endsWith("false"));
    QVERIFY(lines.filter(QStringLiteral("createSecondListview")).first().endsWith("true"));
}

void tst_Climate::settingsKeyFollowsTheZone()
{
    CallSpy calls;
    key("key_settings")->click();
    QCOMPARE(calls.take(), (QStringList{beep, "norda::VtqAdaptor::climateSettings()"}));
    invoke("onSecondCliTopBarTextNotify", Q_ARG(QString, QString()));
    calls.take();
    key("key_settings")->click();
    QCOMPARE(calls.take(), (QStringList{beep, "norda::VtqAdaptor::secoundclimateSettings()"}));
}

void tst_Climate::singleCommands_data()
{
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<int>("id");
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<bool>("held");
    const auto rows = [](const char *group, const QList<QByteArray> &commands) {
        for (int id = 0; id < commands.size(); ++id) {
            QTest::addRow("%s %d", group, id)
                << QByteArray(group) << id << commands[id] << !commands[id].startsWith("trigger");
        }
    };
    rows("ManualIcon",
         {"manTempDecButton", "fanSpeedDownButton", "manTempIncButton", "fanSpeedUpButton",
          "triggerLHeatedSeatButton", "triggerRHeatedSeatButton", "triggerLCooledSeatButton",
          "triggerRCooledSeatButton", "triggerVentPositionButton", "triggerRecircFreshButton",
          "triggerHeatedSteeringWheelButton", "triggerClimateOnOffButton",
          "triggerFrontDefrostButton", "triggerRearDefrostButton"});
    rows("ManualText", {"triggerACButton", "triggerMaxACButton"});
    rows("AutoDualIcon",
         {"autoMainZoneTempIncButton", "autoSecZoneTempIncButton", "autoMainZoneTempDecButton",
          "autoSecZoneTempDecButton", "fanSpeedDownButton", "fanSpeedUpButton",
          "triggerVentPositionButton", "triggerRecircFreshButton",
          "triggerHeatedSteeringWheelButton", "triggerClimateOnOffButton",
          "triggerLHeatedSeatButton", "triggerRHeatedSeatButton", "triggerLCooledSeatButton",
          "triggerRCooledSeatButton", "triggerFrontDefrostButton", "triggerRearDefrostButton"});
    rows("AutoDualText", {"triggerAutoClimateOnOffButton", "triggerDualButton", "triggerACButton",
                          "triggerMaxACButton"});
}

void tst_Climate::singleCommands()
{
    QFETCH(QByteArray, group);
    QFETCH(int, id);
    QFETCH(QByteArray, command);
    QFETCH(bool, held);
    for (const QByteArray &zone : {QByteArray(), QByteArray("secound")}) {
        if (!zone.isEmpty())
            invoke("onSecondCliTopBarTextNotify", Q_ARG(QString, QString()));
        const QString sent = QStringLiteral("norda::VtqAdaptor::") + zone + command;
        CallSpy calls;
        for (const char *step : {"Pressed", "Released", "Clicked"})
            invoke("on" + group + "Btn" + step, Q_ARG(int, id));
        QCOMPARE(calls.take(),
                 held ? (QStringList{beep, sent + "(true, false)", sent + "(false, true)"})
                      : (QStringList{beep, sent + "(true)"}));
    }
    const bool text = group.endsWith("Text");
    const int custom = group.startsWith("Manual") ? 2 : 4;
    CallSpy calls;
    invoke("on" + group + "BtnPressed", Q_ARG(int, text ? custom + 1 : 99));
    invoke("on" + group + "BtnReleased", Q_ARG(int, text ? custom + 1 : 99));
    invoke("on" + group + "BtnClicked", Q_ARG(int, text ? custom + 1 : 99));
    const QString customCommand =
        QStringLiteral("norda::VtqAdaptor::secoundcustomCtrlsButton(34, %1)");
    QCOMPARE(calls.take(), text ? (QStringList{customCommand.arg(1), customCommand.arg(2), beep})
                                : QStringList());
}

NORDA_TEST_MAIN(tst_Climate)
#include "tst_climate.moc"
