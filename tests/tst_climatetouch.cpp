#include "climatefixture.h"

using norda::VtqAdaptor;
using Bytes = QMap<int, int>;

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

/** What touches and drags on the climate screen send. */
class tst_ClimateTouch : public QObject, private ClimateFixture
{
    Q_OBJECT
private slots:
    void init() { openScreen(); }
    void cleanup() { closeScreen(); }

    void roundTrips_data();
    void roundTrips();
    void keysWithoutARow_data();
    void keysWithoutARow();
    void customKeyTouches_data();
    void customKeyTouches();
    void seatDirections();
    void ventCycle();

    void zoneWalk();
    void slideOffTheZoneKey();
    void threeTouchesOfTheZoneKey();

    void temperatureDrag();
    void temperatureBarWantsTheManualLayout();
    void fanDrag_data();
    void fanDrag();
    void autoFanDragMovesTheOtherMeter();
    void otherButtonsDragNothing_data();
    void otherButtonsDragNothing();
    void otherButtonDuringADrag();

    void settingsKeyFollowsTheZone();
    void customKeysFollowTheZone();
    void singleCommands_data();
    void singleCommands();

private:
    void drag(QWidget *widget, const QList<int> &places, Qt::MouseButton button = Qt::LeftButton)
    {
        const int y = widget->height() / 2;
        QTest::mousePress(widget, button, {}, QPoint(places.first(), y));
        for (int x : places) {
            QMouseEvent move(QEvent::MouseMove, QPoint(x, y), Qt::NoButton, button, {});
            QCoreApplication::sendEvent(widget, &move);
        }
        QTest::mouseRelease(widget, button, {}, QPoint(places.last(), y));
    }
};

void tst_ClimateTouch::roundTrips_data()
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

void tst_ClimateTouch::roundTrips()
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

void tst_ClimateTouch::keysWithoutARow_data()
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

void tst_ClimateTouch::keysWithoutARow()
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

/** Custom keys as somebody touches them once a host shows them: their captions let touches pass. */
void tst_ClimateTouch::customKeyTouches_data()
{
    QTest::addColumn<QByteArray>("widget");
    QTest::addColumn<QByteArray>("name");
    for (const char *suffix : {"", "_2"}) {
        for (const char *key : {"key_P1", "key_P2"})
            QTest::addRow("%s%s", key, suffix)
                << QByteArray("button_widget") + suffix << QByteArray(key) + suffix;
    }
}

void tst_ClimateTouch::customKeyTouches()
{
    QFETCH(QByteArray, widget);
    QFETCH(QByteArray, name);
    if (widget.endsWith("_2"))
        toManual();
    find<QWidget>(m_screen, widget)->show();
    const QPoint centre = key(name)->mapTo(m_screen, key(name)->rect().center());
    ByteSpy bytes;
    QTest::mouseClick(m_screen->windowHandle(), Qt::LeftButton, {}, centre);
    QCOMPARE(bytes.sent, QList<Bytes>{zeros});
}

void tst_ClimateTouch::seatDirections()
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

void tst_ClimateTouch::ventCycle()
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

void tst_ClimateTouch::zoneWalk()
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

void tst_ClimateTouch::slideOffTheZoneKey()
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

void tst_ClimateTouch::threeTouchesOfTheZoneKey()
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

void tst_ClimateTouch::temperatureDrag()
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

void tst_ClimateTouch::temperatureBarWantsTheManualLayout()
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

void tst_ClimateTouch::fanDrag_data()
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
    QTest::newRow("100") << 100 << 2 << 36;
    QTest::newRow("before the start") << -20 << 0 << 0;
    QTest::newRow("beyond the end") << 401 << 0 << 144;
}

void tst_ClimateTouch::fanDrag()
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

void tst_ClimateTouch::autoFanDragMovesTheOtherMeter()
{
    CallSpy calls;
    drag(label("bkg_air_gear_position"), {10, 100});
    QCOMPARE(
        calls.take({"norda::VtqAdaptor", "Mcu"}),
        (QStringList{"McuManager::triggerBeep(0)", "norda::VtqAdaptor::fanDirectValue(0, true)"}));
    QVERIFY(shows("bkg_air_gear_position_2", "position_2"));
    QVERIFY(shows("bkg_air_gear_position", "position_0"));
}

void tst_ClimateTouch::otherButtonsDragNothing_data()
{
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<int>("button");
    for (const char *target : {"tempbar_W", "bkg_air_gear_position", "bkg_air_gear_position_2"}) {
        QTest::addRow("%s, right", target) << QByteArray(target) << int(Qt::RightButton);
        QTest::addRow("%s, middle", target) << QByteArray(target) << int(Qt::MiddleButton);
    }
}

void tst_ClimateTouch::otherButtonsDragNothing()
{
    QFETCH(QByteArray, target);
    QFETCH(int, button);
    toManual();
    const QImage before = m_screen->grab().toImage();
    CallSpy calls;
    drag(find<QWidget>(m_screen, target), {label("bkg_temp_cusl")->x() + 5, 200},
         Qt::MouseButton(button));
    QCOMPARE(calls.take(), QStringList());
    QCOMPARE(m_screen->grab().toImage(), before);
}

void tst_ClimateTouch::otherButtonDuringADrag()
{
    toManual();
    QWidget *bar = find<QWidget>(m_screen, "tempbar_W");
    const QPoint marker(label("bkg_temp_cusl")->x() + 5, bar->height() / 2);
    CallSpy calls;
    QTest::mousePress(bar, Qt::LeftButton, {}, marker);
    QTest::mouseClick(bar, Qt::RightButton, {}, marker);
    QCOMPARE(calls.take(), QStringList());
    QMouseEvent move(QEvent::MouseMove, QPoint(207, marker.y()), Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(bar, &move);
    QTest::mouseRelease(bar, Qt::LeftButton, {}, QPoint(207, marker.y()));
    QCOMPARE(calls.take(), QStringList{"norda::VtqAdaptor::manTempValue(127, true)"});
}

void tst_ClimateTouch::customKeysFollowTheZone()
{
    const auto sent = [this](int id) {
        CallSpy calls;
        invoke("onButtonPressed", Q_ARG(int, id));
        invoke("onButtonReleased", Q_ARG(int, id));
        return calls.take();
    };
    const auto commands = [](const char *command, int control) {
        const QString call =
            QStringLiteral("norda::VtqAdaptor::%1(%2, %3)").arg(command).arg(control);
        return QStringList{call.arg(1), call.arg(2)};
    };
    QCOMPARE(sent(0), commands("customCtrlsButton", 18));
    invoke("onSecondCliTopBarTextNotify", Q_ARG(QString, QString()));
    QCOMPARE(sent(0), commands("secoundcustomCtrlsButton", 18));
    QCOMPARE(sent(1), commands("secoundcustomCtrlsButton", 34));
    QCOMPARE(sent(2), QStringList());
    invoke("onCliTopBarTextNotify", Q_ARG(QString, QString()));
    QCOMPARE(sent(1), commands("customCtrlsButton", 34));
}

void tst_ClimateTouch::settingsKeyFollowsTheZone()
{
    CallSpy calls;
    key("key_settings")->click();
    QCOMPARE(calls.take(), (QStringList{beep, "norda::VtqAdaptor::climateSettings()"}));
    invoke("onSecondCliTopBarTextNotify", Q_ARG(QString, QString()));
    calls.take();
    key("key_settings")->click();
    QCOMPARE(calls.take(), (QStringList{beep, "norda::VtqAdaptor::secoundclimateSettings()"}));
}

void tst_ClimateTouch::singleCommands_data()
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

void tst_ClimateTouch::singleCommands()
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

NORDA_TEST_MAIN(tst_ClimateTouch)
#include "tst_climatetouch.moc"
