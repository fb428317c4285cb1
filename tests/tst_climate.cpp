#include "climatefixture.h"
#include "disabledlook.h"
#include "messagecapture.h"
#include "paintcounter.h"

using Features = QMap<int, bool>;
Q_DECLARE_METATYPE(Features)

/** What the climate screen shows: status lists, the car's features and single items. */
class tst_Climate : public QObject, private ClimateFixture
{
    Q_OBJECT
private slots:
    void init() { openScreen(); }
    void cleanup() { closeScreen(); }

    void startsAsAgreed();

    void statusConnection();
    void statusLengths_data();
    void statusLengths();
    void autoDualStatus_data();
    void autoDualStatus();
    void manualStatus_data();
    void manualStatus();
    void seatsBelowZero_data();
    void seatsBelowZero();
    void disabledKeys_data();
    void disabledKeys();
    void disabledZoneKeyFadesItsCaption();
    void repeatedStatusPaintsNothing();

    void secondZoneTellsTheServiceOnce();
    void ventUpdateForgetsTheZone();
    void features_data();
    void features();
    void secondStatus();
    void items();
    void customLabels();
    void displayTypeReturnsToThePage();
};

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
    row(1, 0, "key_dual", "unchecked");
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
    if (expected == QStringLiteral("unchecked"))
        key(target)->setChecked(true);
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
    row("below 0 leaves heat", listWith({{14, 2}}), listWith({{14, -1}}), "icon_left_seat_heat_2",
        "seat_heat_2");
    row("below 0 leaves cool", listWith({{15, 18}}), listWith({{15, -4}}), "icon_right_seat_AC_2",
        "seat_AC_2");
    row("-4 names no image", listWith({{15, 3}}), listWith({{15, -4}}), "icon_right_seat_heat_2",
        "seat_heat_3");
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

void tst_Climate::seatsBelowZero_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("left");
    for (int value : {-1, -2, -3, -5, -7})
        QTest::addRow("%d keeps the level", value) << value << "seat_heat_2";
    for (int value : {-4, -8, INT_MIN})
        QTest::addRow("%d is level 0", value) << value << "seat_heat_0";
}

void tst_Climate::seatsBelowZero()
{
    QFETCH(int, value);
    QFETCH(QString, left);
    report(listWith({{9, 1}, {10, 2}})); // 2 is the level remembered last
    report(listWith({{9, value}, {10, 3}}));
    QVERIFY(shows("icon_left_seat_heat", left));
    QVERIFY(shows("icon_right_seat_heat", "seat_heat_3"));
}

void tst_Climate::disabledKeys_data()
{
    QTest::addColumn<bool>("slabs");
    QTest::addColumn<int>("checked");
    QTest::newRow("unchecked") << false << 0;
    QTest::newRow("checked") << false << 1;
    QTest::newRow("whatever the style draws") << true << 0;
}

void tst_Climate::disabledKeys()
{
    QFETCH(bool, slabs);
    QFETCH(int, checked);
    const QString style = QApplication::style()->objectName();
    if (slabs)
        QApplication::setStyle(new SlabStyle);
    const auto restore = qScopeGuard([&] {
        if (slabs)
            QApplication::setStyle(style);
    });
    QList<int> status = listWith({});
    for (int position : {0, 4, 11, 12, 16, 19, 22})
        status[position] = 9;
    report(status);
    QVERIFY(!key("key_power")->isEnabled());
    int keys = 0;
    for (auto *each : m_screen->findChildren<QPushButton *>(QRegularExpression("^key_"))) {
        const QString name = each->objectName();
        if (name == QLatin1String("key_settings") || name.contains(QLatin1String("_seat_")))
            continue; // which no state disables
        each->setChecked(checked);
        QCOMPARE(faultOfDisabledLook(each), QString());
        ++keys;
    }
    QVERIFY(keys >= 30);
}

void tst_Climate::disabledZoneKeyFadesItsCaption()
{
    const auto captionColor = [this] {
        return label("Txt_rear")->palette().color(QPalette::WindowText).lightness();
    };
    const int live = captionColor();
    invoke("onRearZoneButtonStatusNotify", Q_ARG(int, 9));
    QVERIFY(captionColor() < live * 6 / 10);
    invoke("onRearZoneButtonStatusNotify", Q_ARG(int, 1));
    QCOMPARE(captionColor(), live);
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
    key("key_auto")->setChecked(true);
    key("key_max_AC")->setChecked(true);
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

NORDA_TEST_MAIN(tst_Climate)
#include "tst_climate.moc"
