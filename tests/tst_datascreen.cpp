#include "callspy.h"
#include "displaysteps.h"
#include "elision.h"
#include "messagecapture.h"
#include "norda/vtqadaptor.h"
#include "norda/widget/vantiq_parking_widget.h"
#include "nordahost.h"
#include "pluginfixture.h"
#include "testmain.h"

#include <QAbstractButton>
#include <QLabel>

using norda::VtqAdaptor;

static const QString beep = QStringLiteral("svaudio::AudioService::doBeep(0)");

static QString command(const char *text)
{
    return QStringLiteral("norda::VtqAdaptor::%1").arg(QLatin1String(text));
}

/** What the four data screens have in common, each under the names that the host knows. */
class tst_DataScreen : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

    void sourceSyncOnEveryScreen_data();
    void sourceSyncOnEveryScreen();
    void sourceSyncLog();

    void commandsOfSlots_data();
    void commandsOfSlots();
    void tracesOfSlots_data();
    void tracesOfSlots();
    void customKeys_data();
    void customKeys();
    void customKeyTouch_data();
    void customKeyTouch();
    void otherCustomKeysSendNothing();
    void labelsAreOnlyLogged_data();
    void labelsAreOnlyLogged();
    void parkingsOwnLabelRoutine();
    void longCaptionsAreElided_data();
    void longCaptionsAreElided();

    void displayTypeSignals_data();
    void displayTypeSignals();
    void payloadsCloseAndAreLogged_data();
    void payloadsCloseAndAreLogged();

    void showBringsTheStatusBarUp_data();
    void showBringsTheStatusBarUp();
    void parkingBindsOnRequestOnly();

private:
    QScopedPointer<PluginFixture> m_host;
};

void tst_DataScreen::initTestCase()
{
    qRegisterMetaType<QList<int>>();
}

void tst_DataScreen::init()
{
    m_host.reset(new PluginFixture);
}

void tst_DataScreen::cleanup()
{
    m_host.reset();
    invoke(nordaHostObject("SrcDsplCtrl"), "setCurrentSrc", Q_ARG(int, 0));
    invoke(nordaHostObject("SrcDsplCtrl"), "setCurrentDspl", Q_ARG(int, 0));
}

static void addScreens()
{
    QTest::addColumn<int>("id");
    QTest::newRow("gauges") << 80;
    QTest::newRow("vehicle") << 81;
    QTest::newRow("climate") << 82;
    QTest::newRow("parking") << 83;
}

void tst_DataScreen::sourceSyncOnEveryScreen_data()
{
    addScreens();
}

void tst_DataScreen::sourceSyncOnEveryScreen()
{
    QFETCH(int, id);
    QWidget *screen = m_host->open(id);
    QObject *control = nordaHostObject("SrcDsplCtrl");
    invoke(control, "setCurrentSrc", Q_ARG(int, 20));

    CallSpy calls;
    invoke(screen, "UpdataVtqSourceDspl");
    QCOMPARE(calls.take(), (QStringList{"SrcDsplCtrl::currentSrc()", "SrcDsplCtrl::currentDspl()",
                                        "norda::VtqService::syncRadioStatus(33, 132, 100, 1, "
                                        "128, 128)"}));

    invoke(control, "setCurrentDspl", Q_ARG(int, 3));
    invoke(screen, "UpdataVtqSourceDspl");
    QCOMPARE(calls.take({"norda::"}),
             QStringList{"norda::VtqService::syncRadioStatus(0, 132, 100, 1, 128, 128)"});
}

void tst_DataScreen::sourceSyncLog()
{
    QWidget *screen = m_host->open(80);
    invoke(nordaHostObject("SrcDsplCtrl"), "setCurrentSrc", Q_ARG(int, 47));
    MessageCapture capture;
    invoke(screen, "UpdataVtqSourceDspl");
    const QStringList lines = capture.takeTexts();
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines[0].endsWith(QStringLiteral("-- 47")));
    QVERIFY(lines[1].endsWith(QStringLiteral("-- ===syncRadioStatus=== 128 100 1 128 128")));
}

void tst_DataScreen::commandsOfSlots_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<QStringList>("calls");

    const struct
    {
        int id;
        const char *screen;
        const char *prefix;
    } screens[] = {{80, "gauges", "gauges"},
                   {81, "vehicle", "vehicle"},
                   {82, "climate", "climate"},
                   {83, "parking", "parking"}};
    const auto row = [](const char *screen, int id, const QByteArray &slot,
                        const QByteArray &sent) {
        QTest::addRow("%s %s", screen, slot.constData())
            << id << slot << (QStringList{beep, command(sent + "()")});
    };
    for (const auto &screen : screens) {
        const QByteArray prefix = screen.prefix;
        row(screen.screen, screen.id, "onListBackClicked", prefix + "ListBack");
        row(screen.screen, screen.id, "onListUpClicked", prefix + "ListPrevious");
        row(screen.screen, screen.id, "onListDnClicked", prefix + "ListNext");
        if (screen.id != 83)
            row(screen.screen, screen.id, "onSettingsClicked", prefix + "Settings");
    }
    row("second zone", 82, "onSecondListBackClicked", "secoundclimateListBack");
    row("second zone", 82, "onSecondListUpClicked", "secoundclimateListPrevious");
    row("second zone", 82, "onSecondListDnClicked", "secoundclimateListNext");
    const auto quietRow = [](const char *screen, int id, const char *slot, bool sounds) {
        QTest::addRow("%s %s", screen, slot)
            << id << QByteArray(slot) << (sounds ? QStringList{beep} : QStringList());
    };

    // Beeps without a command, and what makes no sound at all.
    for (const auto &screen : screens) {
        const bool vehicle = screen.id == 81;
        const auto quiet = [&](const char *slot, bool sounds) {
            quietRow(screen.screen, screen.id, slot, sounds);
        };
        quiet("onPopupKeyClicked", true);
        quiet("onListItemClicked", true);
        quiet("onListCustomItemPressed", false);
        quiet("onListCustomItemReleased", false);
        quiet("onListCustomItemClicked", !vehicle);
        quiet("onShowListview", false);
        quiet("soundClickedBeep", true);
    }
    quietRow("second zone", 82, "onSecondPopupKeyClicked", true);
    quietRow("second zone", 82, "onSecondListItemClicked", true);
    quietRow("second zone", 82, "onSecondListCustomItemPressed", false);
    quietRow("second zone", 82, "onSecondListCustomItemReleased", false);
    quietRow("second zone", 82, "onSecondListCustomItemClicked", true);
    quietRow("second zone", 82, "onShowSecendListview", false);
}

void tst_DataScreen::commandsOfSlots()
{
    QFETCH(int, id);
    QFETCH(QByteArray, slot);
    QFETCH(QStringList, calls);
    QWidget *screen = m_host->open(id);
    CallSpy spy;
    const bool takesNumber = screen->metaObject()->indexOfSlot(slot + "(int)") >= 0;
    if (takesNumber)
        invoke(screen, slot, Q_ARG(int, 1));
    else
        invoke(screen, slot);
    QCOMPARE(spy.take(), calls);
}

void tst_DataScreen::tracesOfSlots_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<QString>("trace"); // the function and its message, empty for none
    for (const int id : {80, 81, 82, 83}) {
        QTest::addRow("%d popup key", id) << id << QByteArray("onPopupKeyClicked")
                                          << (id == 81 ? "createPopup(bool) -- false" : "");
        QTest::addRow("%d list", id)
            << id << QByteArray("onShowListview") << (id == 81 ? "" : "onShowListview() --");
    }
    QTest::newRow("second zone's popup key") << 82 << QByteArray("onSecondPopupKeyClicked") << "";
    QTest::newRow("second zone's list")
        << 82 << QByteArray("onShowSecendListview") << "onShowSecendListview() --";
}

void tst_DataScreen::tracesOfSlots()
{
    QFETCH(int, id);
    QFETCH(QByteArray, slot);
    QFETCH(QString, trace);
    QWidget *screen = m_host->open(id);
    MessageCapture capture;
    if (slot.contains("Key"))
        invoke(screen, slot, Q_ARG(int, 1));
    else
        invoke(screen, slot);
    QStringList traces = capture.takeTexts();
    // "... function line -- message"
    traces.replaceInStrings(QRegularExpression(".*::(\\w+\\(.*\\)) \\d+ --"), "\\1 --");
    QCOMPARE(traces, trace.isEmpty() ? QStringList() : QStringList{trace});
}

void tst_DataScreen::customKeys_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QByteArray>("prefix");
    QTest::addColumn<QByteArray>("sent");
    QTest::newRow("gauges") << 80 << QByteArray("onButton") << QByteArray("gaugesCustomControls");
    QTest::newRow("vehicle") << 81 << QByteArray("onButton") << QByteArray("vehicleCustomControls");
    QTest::newRow("parking") << 83 << QByteArray("onPButton")
                             << QByteArray("parkingCustomControls");
}

void tst_DataScreen::customKeys()
{
    QFETCH(int, id);
    QFETCH(QByteArray, prefix);
    QFETCH(QByteArray, sent);
    QWidget *screen = m_host->open(id);
    CallSpy spy;
    const struct
    {
        int key;
        const char *control;
    } keys[] = {{0, "18"}, {1, "34"}};
    for (const auto &key : keys) {
        invoke(screen, prefix + "Pressed", Q_ARG(int, key.key));
        invoke(screen, prefix + "Released", Q_ARG(int, key.key));
        invoke(screen, prefix + "Clicked", Q_ARG(int, key.key));
        QCOMPARE(spy.take(), (QStringList{command(sent + "(" + key.control + ", 1)"),
                                          command(sent + "(" + key.control + ", 2)"), beep}));
    }
}

void tst_DataScreen::customKeyTouch_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QByteArray>("sent");
    QTest::newRow("vehicle") << 81 << QByteArray("vehicleCustomControls");
    QTest::newRow("parking") << 83 << QByteArray("parkingCustomControls");
}

void tst_DataScreen::customKeyTouch()
{
    QFETCH(int, id);
    QFETCH(QByteArray, sent);
    QWidget *screen = m_host->open(id);
    find<QWidget>(screen, "button_widget")->show(); // as a host would
    const struct
    {
        const char *key;
        const char *control;
    } keys[] = {{"key_P1", "18"}, {"key_P2", "34"}};
    for (const auto &row : keys) {
        // The window system's touch, which meets the caption first.
        auto *key = find<QAbstractButton>(screen, row.key);
        const QPoint centre = key->mapTo(screen, key->rect().center());
        CallSpy spy;
        QTest::mouseClick(screen->windowHandle(), Qt::LeftButton, {}, centre);
        const QByteArray call = sent + "(" + row.control;
        QCOMPARE(spy.take(), (QStringList{command(call + ", 1)"), command(call + ", 2)"), beep}));
    }
}

void tst_DataScreen::otherCustomKeysSendNothing()
{
    QWidget *screen = m_host->open(80);
    CallSpy spy;
    for (int key : {-1, 2, INT_MAX}) {
        invoke(screen, "onButtonPressed", Q_ARG(int, key));
        invoke(screen, "onButtonReleased", Q_ARG(int, key));
    }
    QCOMPARE(spy.take(), QStringList());
}

void tst_DataScreen::labelsAreOnlyLogged_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QByteArray>("signal");
    QTest::newRow("vehicle") << 81 << QByteArray("vehCustomeCtrlLabels");
    QTest::newRow("parking") << 83 << QByteArray("parkCustomControlLabels");
}

void tst_DataScreen::labelsAreOnlyLogged()
{
    QFETCH(int, id);
    QFETCH(QByteArray, signal);
    QWidget *screen = m_host->open(id);
    find<QWidget>(screen, "button_widget")->show();
    if (id == 83)
        invoke(screen, "connectVtqAdaptor");
    const QImage before = screen->grab().toImage();
    const QStringList captions = {"Fog lamps", "Wipers"};
    for (const QByteArray &states : {QByteArray("\2\0", 2), QByteArray("\1"), QByteArray()}) {
        MessageCapture capture;
        invoke(VtqAdaptor::instance(), signal, Q_ARG(QStringList, captions),
               Q_ARG(QByteArray, states));
        const QStringList lines = capture.takeTexts();
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines[0].contains("Fog lamps"), qPrintable(lines[0]));
        QCOMPARE(screen->grab().toImage(), before);
    }
}

/** Nothing calls it, but a screen that offers labels has it. */
void tst_DataScreen::parkingsOwnLabelRoutine()
{
    norda::Vantiq_Parking_Widget screen(nullptr);
    find<QWidget>(&screen, "button_widget")->show();
    screen.show();
    auto *first = find<QAbstractButton>(&screen, "key_P1");
    auto *second = find<QAbstractButton>(&screen, "key_P2");
    screen.updateCustomControlLabels({"Fog lamps", "Wipers"}, QByteArray("\2\0", 2));
    QVERIFY(first->isChecked() && first->isEnabled());
    QVERIFY(second->isVisible() && !second->isEnabled());
    QCOMPARE(find<QLabel>(&screen, "Txt_P1")->text(), QStringLiteral("Fog lamps"));
    screen.updateCustomControlLabels({"Horn"}, QByteArray("\1"));
    QVERIFY(first->isVisible() && !first->isChecked());
    QVERIFY(!second->isVisible());
    screen.updateCustomControlLabels({}, QByteArray());
    QVERIFY(!first->isVisible());
}

void tst_DataScreen::longCaptionsAreElided_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QByteArray>("caption");
    for (const char *caption : {"Txt_P1", "Txt_P2"}) {
        for (const int id : {80, 81, 82, 83})
            QTest::addRow("screen %d, %s", id, caption) << id << QByteArray(caption);
        QTest::addRow("screen 82, %s_2", caption) << 82 << QByteArray(caption) + "_2";
    }
}

void tst_DataScreen::longCaptionsAreElided()
{
    QFETCH(int, id);
    QFETCH(QByteArray, caption);
    auto *shown = find<QLabel>(m_host->open(id), caption);
    QCOMPARE(faultOfElision(shown, QStringLiteral("Interior lamps at the rear"),
                            [=](const QString &text) { shown->setText(text); }),
             QString());
}

void tst_DataScreen::displayTypeSignals_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QByteArray>("slot");
    QTest::newRow("gauges") << 80 << QByteArray("guiDisplayTypeNotify")
                            << QByteArray("onGuiDisplayTypeChanged");
    QTest::newRow("vehicle") << 81 << QByteArray("vehGuiDisplayType")
                             << QByteArray("onVehGuiDisplayType");
    QTest::newRow("parking") << 83 << QByteArray("parkGuiDisplayType")
                             << QByteArray("onGuiDisplayTypeChanged");
    QTest::newRow("climate, without a signal")
        << 82 << QByteArray() << QByteArray("onGuiDisplayTypeChanged");
}

void tst_DataScreen::displayTypeSignals()
{
    QFETCH(int, id);
    QFETCH(QByteArray, signal);
    QFETCH(QByteArray, slot);
    QWidget *screen = m_host->open(id);
    if (id == 83)
        invoke(screen, "connectVtqAdaptor");
    const QStringList listShown = {QStringLiteral("createPopup false"),
                                   QStringLiteral("createListview true")};
    {
        MessageCapture capture;
        invoke(screen, slot, Q_ARG(uchar, 17));
        QCOMPARE(displaySteps(capture.takeTexts()), listShown);
    }
    for (const char *any : {"guiDisplayTypeNotify", "vehGuiDisplayType", "parkGuiDisplayType"}) {
        MessageCapture capture;
        invoke(VtqAdaptor::instance(), any, Q_ARG(uchar, 17));
        QCOMPARE(displaySteps(capture.takeTexts()), signal == any ? listShown : QStringList());
    }
}

void tst_DataScreen::payloadsCloseAndAreLogged_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QByteArray>("popupSignal");
    QTest::addColumn<bool>("logsPopup");
    QTest::addColumn<QByteArray>("listSignal");
    QTest::addColumn<bool>("logsList");
    QTest::newRow("gauges") << 80 << QByteArray("gauPopUpNotify") << false
                            << QByteArray("listInfoNotify") << true;
    QTest::newRow("vehicle") << 81 << QByteArray("vehPopUpNotify") << true
                             << QByteArray("vehListInfo") << true;
    QTest::newRow("parking") << 83 << QByteArray("parkPopUpNotify") << false
                             << QByteArray("parkListInfo") << false;
    // No signal of the module leads there, but a host may.
    QTest::newRow("climate") << 82 << QByteArray("onPopup") << false << QByteArray("onListInfo")
                             << false;
    QTest::newRow("second zone") << 82 << QByteArray("onSecondPopup") << false
                                 << QByteArray("onSecondListInfo") << false;
}

void tst_DataScreen::payloadsCloseAndAreLogged()
{
    QFETCH(int, id);
    QFETCH(QByteArray, popupSignal);
    QFETCH(bool, logsPopup);
    QFETCH(QByteArray, listSignal);
    QFETCH(bool, logsList);
    QWidget *screen = m_host->open(id);
    if (id == 83)
        invoke(screen, "connectVtqAdaptor");
    QObject *receiver = id == 82 ? static_cast<QObject *>(screen) : VtqAdaptor::instance();
    const bool isSecond = popupSignal.contains("Second");
    {
        MessageCapture capture;
        invoke(receiver, popupSignal, Q_ARG(QString, QStringLiteral("Heading")),
               Q_ARG(QStringList, {}), Q_ARG(QStringList, {}), Q_ARG(QByteArray, {}));
        const QStringList lines = capture.takeTexts();
        QCOMPARE(displaySteps(lines),
                 QStringList{isSecond ? "createSecondPopup false" : "createPopup false"});
        QCOMPARE(lines.join(QLatin1Char('\n')).contains(QStringLiteral("Heading")), logsPopup);
    }
    {
        MessageCapture capture;
        invoke(receiver, listSignal, Q_ARG(QString, QStringLiteral("Heading")),
               Q_ARG(QByteArray, {}), Q_ARG(QStringList, {}), Q_ARG(QList<QVariant>, {}),
               Q_ARG(QByteArray, {}));
        const QStringList lines = capture.takeTexts();
        QCOMPARE(displaySteps(lines),
                 QStringList{isSecond ? "createSecondListview false" : "createListview false"});
        QCOMPARE(lines.join(QLatin1Char('\n')).contains(QStringLiteral("Heading")), logsList);
    }
}

void tst_DataScreen::showBringsTheStatusBarUp_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("expected");
    QTest::newRow("gauges") << 80 << true;
    QTest::newRow("vehicle") << 81 << true;
    QTest::newRow("climate") << 82 << true;
    QTest::newRow("parking") << 83 << true;
    QTest::newRow("settings leave it alone") << 84 << false;
    QTest::newRow("about leaves it alone") << 85 << false;
}

void tst_DataScreen::showBringsTheStatusBarUp()
{
    QFETCH(int, id);
    QFETCH(bool, expected);
    m_host->window(id)->onCreate();
    CallSpy spy;
    m_host->window(id)->mainWidget()->show();
    QCOMPARE(spy.take({"cm::StatusBarControl"}),
             expected ? QStringList{"cm::StatusBarControl::sethide(false)"} : QStringList());
    m_host->window(id)->mainWidget()->hide();
    QCOMPARE(spy.take(), QStringList());
}

void tst_DataScreen::parkingBindsOnRequestOnly()
{
    QWidget *screen = m_host->open(83);
    const auto reacts = [] {
        MessageCapture capture;
        emit VtqAdaptor::instance()->parkGuiDisplayType(0);
        return displaySteps(capture.takeTexts()).size() / 2;
    };
    QCOMPARE(reacts(), 0);
    invoke(screen, "connectVtqAdaptor");
    invoke(screen, "connectVtqAdaptor");
    QCOMPARE(reacts(), 1); // invoked twice, connected once
    invoke(screen, "disconnectVtqAdaptor");
    QCOMPARE(reacts(), 0);
    invoke(screen, "connectVtqAdaptor");
    QCOMPARE(reacts(), 1);
}

NORDA_TEST_MAIN(tst_DataScreen)
#include "tst_datascreen.moc"
