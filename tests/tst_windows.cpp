#include "callspy.h"
#include "keyevent.h"
#include "mainwindow.h"
#include "messagecapture.h"
#include "norda/window/Aboutwindow.h"
#include "norda/window/Topwindow.h"
#include "norda/window/barwindow.h"
#include "norda/window/climatewindow.h"
#include "norda/window/gaugeswindow.h"
#include "norda/window/parkingassistwindow.h"
#include "norda/window/settingwindow.h"
#include "norda/window/vehicleinfowindow.h"
#include "testmain.h"

#include <QApplication>
#include <QtTest>

using namespace norda;
using MakeWindow = cm::BaseWindow *(*)(QObject *parent);
Q_DECLARE_METATYPE(MakeWindow)

template <typename Window>
static cm::BaseWindow *make(QObject *parent)
{
    if constexpr (std::is_constructible_v<Window, int, QObject *>)
        return new Window(-7, parent); // the id is accepted and not stored
    else
        return new Window(parent);
}

/** The nine windows: names, attributes, and the life of their screens. */
class tst_Windows : public QObject
{
    Q_OBJECT
private slots:
    void everyWindow_data();
    void everyWindow();
    void servedWindows_data();
    void servedWindows();
    void attributeFollowsTheBaseOnTwoWindows_data();
    void attributeFollowsTheBaseOnTwoWindows();
    void onEnterReachesTheDataScreens_data();
    void onEnterReachesTheDataScreens();
    void unservedBarsAreCreatedButNotInstalled_data();
    void unservedBarsAreCreatedButNotInstalled();
    void mainWindowCreatesNothing();
    void traceMarksWhileCreating_data();
    void traceMarksWhileCreating();
};

void tst_Windows::everyWindow_data()
{
    QTest::addColumn<MakeWindow>("makeWindow");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("attribute");

    QTest::newRow("gauges") << MakeWindow(make<GaugesWindow>) << "norda_gauges" << (0x201);
    QTest::newRow("vehicle") << MakeWindow(make<VehicleWindow>) << "" << 0x201;
    QTest::newRow("climate") << MakeWindow(make<ClimateWindow>) << "canbus_climate" << (0x201);
    QTest::newRow("parking") << MakeWindow(make<ParkingWindow>) << "" << 0x201;
    QTest::newRow("setting") << MakeWindow(make<SettingWindow>) << "DSPLState_NORDA_Setting"
                             << 0x201;
    QTest::newRow("about") << MakeWindow(make<AboutWindow>) << "Aboutwindow" << 0x201;
    QTest::newRow("top") << MakeWindow(make<TopWindow>) << "" << 0x201;
    QTest::newRow("bar") << MakeWindow(make<BarWindow>) << "" << 0x201;
    QTest::newRow("main") << MakeWindow(make<MainWindow>) << "norda" << 1;
}

void tst_Windows::everyWindow()
{
    QFETCH(MakeWindow, makeWindow);
    QFETCH(QString, name);
    QFETCH(int, attribute);
    QObject root;
    CallSpy calls;
    cm::BaseWindow *window = makeWindow(&root);
    QCOMPARE(calls.take(), QStringList{"cm::BaseWindow::setWindowAttribute(4, false, true)"});
    QCOMPARE(window->parent(), &root);
    QCOMPARE(window->windowAttribute(4), QVariant(false));
    QCOMPARE(window->mainWidget(), nullptr);
    QCOMPARE(window->name(), name);
    QCOMPARE(window->attribute(), attribute);
    QCOMPARE(window->backEvent(), 1);
    QVERIFY(window->metaObject()->indexOfSlot("onDestroyObj()") >= 0);

    for (int key : {0, 1, 0x0fffffff}) {
        calls.take();
        MessageCapture capture;
        KeyEvent event(QEvent::KeyRelease, key);
        QCOMPARE(window->keyEvent(&event), 0);
        QVERIFY(capture.takeTexts().constFirst().endsWith(QStringLiteral("-- %1 7").arg(key)));
        QCOMPARE(calls.take().size(), 1); // passed on to the base, whatever the key
    }
}

void tst_Windows::servedWindows_data()
{
    QTest::addColumn<MakeWindow>("makeWindow");
    QTest::addColumn<int>("id");
    QTest::addColumn<QByteArray>("screen");
    QTest::addColumn<bool>("showsStatusBar");

    QTest::newRow("gauges") << MakeWindow(make<GaugesWindow>) << 80
                            << QByteArray("norda::Vantiq_Gaugue_Widget") << true;
    QTest::newRow("vehicle") << MakeWindow(make<VehicleWindow>) << 81
                             << QByteArray("norda::Vantiq_Vehicle_Widget") << false;
    QTest::newRow("climate") << MakeWindow(make<ClimateWindow>) << 82
                             << QByteArray("norda::Vantiq_Climate_Widget") << false;
    QTest::newRow("parking") << MakeWindow(make<ParkingWindow>) << 83
                             << QByteArray("norda::Vantiq_Parking_Widget") << true;
    QTest::newRow("setting") << MakeWindow(make<SettingWindow>) << 84
                             << QByteArray("norda::Vantiq_Settings_Widget") << false;
    QTest::newRow("about") << MakeWindow(make<AboutWindow>) << 85
                           << QByteArray("norda::Norda_About_Widget") << false;
}

void tst_Windows::servedWindows()
{
    QFETCH(MakeWindow, makeWindow);
    QFETCH(int, id);
    QFETCH(QByteArray, screen);
    QFETCH(bool, showsStatusBar);
    const QStringList ofInterest = {"cm::BaseWindow::onCreate", "cm::BaseWindow::setMainWidget",
                                    "cm::StatusBarControl", "cm::BaseWindow::deleteDelay"};
    const QString install =
        QStringLiteral("cm::BaseWindow::setMainWidget(%1, %2)").arg(QString(screen)).arg(id);
    const QStringList status =
        showsStatusBar ? QStringList{"cm::StatusBarControl::sethide(false)"} : QStringList();

    QScopedPointer<cm::BaseWindow> window(makeWindow(nullptr));
    CallSpy calls;
    window->onCreate();
    QCOMPARE(calls.take(ofInterest),
             QStringList("cm::BaseWindow::onCreate()") + status + QStringList(install));
    QPointer<QWidget> first = window->mainWidget();
    QVERIFY(first);
    QCOMPARE(first->metaObject()->className(), screen.constData());
    QCOMPARE(first->parent(), nullptr);
    QCOMPARE(window->screenId(), id);

    // Created again while the screen lives: nothing more is built or installed.
    window->onCreate();
    QCOMPARE(calls.take(ofInterest), QStringList("cm::BaseWindow::onCreate()") + status);
    QCOMPARE(window->mainWidget(), first.data());

    // Given back: the screen goes once control is in the event loop, then a new one is built.
    window->onDestroy();
    QCOMPARE(calls.take(ofInterest), QStringList{"cm::BaseWindow::deleteDelay()"});
    QVERIFY(first);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!first);
    window->onCreate();
    QCOMPARE(calls.take(ofInterest),
             QStringList("cm::BaseWindow::onCreate()") + status + QStringList(install));
    QVERIFY(window->mainWidget());

    // A screen that somebody else deletes is forgotten just the same.
    delete window->mainWidget();
    window->onCreate();
    QVERIFY(calls.take(ofInterest).contains(install));
    delete window->mainWidget();
}

void tst_Windows::attributeFollowsTheBaseOnTwoWindows_data()
{
    QTest::addColumn<MakeWindow>("makeWindow");
    QTest::addColumn<int>("expected");
    QTest::newRow("gauges") << MakeWindow(make<GaugesWindow>) << 0x254;
    QTest::newRow("climate") << MakeWindow(make<ClimateWindow>) << 0x254;
    QTest::newRow("vehicle") << MakeWindow(make<VehicleWindow>) << 0x201;
    QTest::newRow("parking") << MakeWindow(make<ParkingWindow>) << 0x201;
    QTest::newRow("main") << MakeWindow(make<MainWindow>) << 0x54;
}

void tst_Windows::attributeFollowsTheBaseOnTwoWindows()
{
    QFETCH(MakeWindow, makeWindow);
    QFETCH(int, expected);
    QScopedPointer<cm::BaseWindow> window(makeWindow(nullptr));
    window->setBaseAttribute(0x54);
    QCOMPARE(window->attribute(), expected);
}

void tst_Windows::onEnterReachesTheDataScreens_data()
{
    QTest::addColumn<MakeWindow>("makeWindow");
    QTest::addColumn<QStringList>("requests");
    const auto adaptor = [](const char *name) {
        return QStringLiteral("norda::VtqAdaptor::%1()").arg(QLatin1String(name));
    };
    QTest::newRow("gauges") << MakeWindow(make<GaugesWindow>)
                            << QStringList{adaptor("requestGaugesInfo")};
    QTest::newRow("vehicle") << MakeWindow(make<VehicleWindow>)
                             << QStringList{adaptor("requestVehicleInfo")};
    QTest::newRow("climate") << MakeWindow(make<ClimateWindow>)
                             << QStringList{adaptor("requestMainClimateInfo"),
                                            adaptor("requestSecondClimateInfo")};
    QTest::newRow("parking") << MakeWindow(make<ParkingWindow>)
                             << QStringList{adaptor("requestParkingInfo")};
    QTest::newRow("setting") << MakeWindow(make<SettingWindow>) << QStringList();
    QTest::newRow("about") << MakeWindow(make<AboutWindow>) << QStringList();
}

void tst_Windows::onEnterReachesTheDataScreens()
{
    QFETCH(MakeWindow, makeWindow);
    QFETCH(QStringList, requests);
    QScopedPointer<cm::BaseWindow> window(makeWindow(nullptr));
    window->onEnter(); // without a screen there is nobody to ask
    window->onCreate();
    CallSpy calls;
    window->onEnter();
    QCOMPARE(calls.take({"cm::BaseWindow", "norda::"}),
             QStringList("cm::BaseWindow::onEnter()") + requests);
    delete window->mainWidget();
}

void tst_Windows::unservedBarsAreCreatedButNotInstalled_data()
{
    QTest::addColumn<MakeWindow>("makeWindow");
    QTest::addColumn<QByteArray>("bar");
    QTest::newRow("top") << MakeWindow(make<TopWindow>)
                         << QByteArray("norda::Vantiq_Top_Bar_Widget");
    QTest::newRow("bar") << MakeWindow(make<BarWindow>) << QByteArray("norda::Vantiq_Bar_Widget");
}

void tst_Windows::unservedBarsAreCreatedButNotInstalled()
{
    QFETCH(MakeWindow, makeWindow);
    QFETCH(QByteArray, bar);
    const auto bars = [bar] {
        QWidgetList found;
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->metaObject()->className() == bar)
                found.append(widget);
        }
        return found;
    };
    QScopedPointer<cm::BaseWindow> window(makeWindow(nullptr));
    window->onCreate();
    QCOMPARE(bars().size(), 1);
    QCOMPARE(window->mainWidget(), nullptr);
    QCOMPARE(window->screenId(), -1);
    window->onCreate();
    QCOMPARE(bars().size(), 1);
    delete bars().constFirst();
    window->onCreate();
    QCOMPARE(bars().size(), 1);
    window.reset();
    QCOMPARE(bars().size(), 1); // nobody's, since no host has been given it
    delete bars().constFirst();
}

void tst_Windows::mainWindowCreatesNothing()
{
    MainWindow window;
    CallSpy calls;
    window.onCreate();
    QCOMPARE(window.mainWidget(), nullptr);
    QCOMPARE(calls.take(), QStringList());

    MessageCapture capture;
    window.onShow(QByteArray("argument"));
    const QStringList lines = capture.takeTexts();
    QCOMPARE(lines.size(), 1);
    QVERIFY(lines[0].contains(QStringLiteral("norda::MainWindow::onShow(")));
    QVERIFY(lines[0].endsWith(QStringLiteral(" --")));
    window.onEnter();
    window.onExit();
    window.onHide(QByteArray());
    window.onDestroy();
    QCOMPARE(calls.take(),
             (QStringList{"cm::BaseWindow::onShow(argument)", "cm::BaseWindow::onEnter()",
                          "cm::BaseWindow::onExit()", "cm::BaseWindow::onHide()",
                          "cm::BaseWindow::deleteDelay()"}));
}

void tst_Windows::traceMarksWhileCreating_data()
{
    QTest::addColumn<MakeWindow>("makeWindow");
    QTest::addColumn<bool>("isMarked");
    QTest::newRow("climate") << MakeWindow(make<ClimateWindow>) << false;
    QTest::newRow("setting") << MakeWindow(make<SettingWindow>) << true;
    QTest::newRow("about") << MakeWindow(make<AboutWindow>) << true;
}

/** The lines of the windows' `onCreate()`, by kind. */
static QStringList creationLines(const QStringList &lines)
{
    const QPair<const char *, const char *> kinds[] = {{"[--IN--]", "in"},
                                                       {"[--OUT--]", "out"},
                                                       {"[--ExecTime--]", "time"},
                                                       {"::onCreate()", "mark"}};
    QStringList found;
    for (const QString &line : lines) {
        for (const auto &[text, kind] : kinds) {
            if (line.contains(QLatin1String(text))) {
                found.append(QLatin1String(kind));
                break;
            }
        }
    }
    return found;
}

void tst_Windows::traceMarksWhileCreating()
{
    QFETCH(MakeWindow, makeWindow);
    QFETCH(bool, isMarked);
    QScopedPointer<cm::BaseWindow> window(makeWindow(nullptr));
    MessageCapture capture;
    // Before the timer, after the base's part, and before the screen is built.
    const QStringList marks = isMarked ? QStringList{"mark"} : QStringList();
    const QStringList begin = marks + QStringList{"in"} + marks;
    const QStringList end = {"time", "out"};
    window->onCreate();
    QCOMPARE(creationLines(capture.takeTexts()), begin + marks + end);
    window->onCreate();
    QCOMPARE(creationLines(capture.takeTexts()), begin + end);
}

NORDA_TEST_MAIN(tst_Windows)
#include "tst_windows.moc"
