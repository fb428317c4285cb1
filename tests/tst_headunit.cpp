#include "audiostage.h"
#include "callspy.h"
#include "cameraview.h"
#include "cm/reverservideoinservice.h"
#include "cm/statusbarcontrol.h"
#include "mem/settingsfunc.h"
#include "messagecapture.h"
#include "norda/vtqadaptor.h"
#include "pages.h"
#include "paintcounter.h"
#include "screen.h"
#include "session/session.h"
#include "statuscolumn.h"
#include "testmain.h"
#include "testpaths.h"
#include "touchevent.h"
#include "window/transportbar.h"
#include "windowstack.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>

#include <functional>

Q_DECLARE_METATYPE(std::function<void()>)

/** The bench's head unit around the real plugin. */
class tst_HeadUnit : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void barOpensEveryPage_data();
    void barOpensEveryPage();
    void pageOpensAsByTheBar_data();
    void pageOpensAsByTheBar();
    void backWalksTheStack();
    void cameraCoversAndResumes();
    void splitViewStandsBesideThePage();
    void warningIsLaidOutWhenTold();
    void ignoredSplitShowsTheWholeView();
    void cameraIsStatedOnce();
    void cameraFollowsTheSteering();
    void statusColumnFollowsTheControl();
    void keysReachTheOpenWindow();
    void pageIsBuiltAnew();
    void parkingIsBoundByTheHost();
    void framesAreCounted();
    void unknownCodesAndWindows();
    void carAnswersTheTouch();

private:
    QPushButton *barKey(const char *name)
    {
        return m_unit->currentPage()->findChild<QPushButton *>(QLatin1String(name));
    }
    static void post(int code)
    {
        QCoreApplication::postEvent(QCoreApplication::instance(),
                                    new TouchEvent(Qx::Touch(code), -1, -1));
        QCoreApplication::processEvents();
    }

    QScopedPointer<Screen> m_screen;
    QScopedPointer<WindowStack> m_unit;
};

void tst_HeadUnit::init()
{
    m_screen.reset(new Screen);
    m_unit.reset(new WindowStack(m_screen.data()));
    QString error;
    QVERIFY2(m_unit->load(testpaths::pluginFile(), &error), qPrintable(error));
    m_screen->show();
    m_unit->openWindow(80);
    QVERIFY(QTest::qWaitForWindowExposed(m_screen.data()));
}

void tst_HeadUnit::cleanup()
{
    m_unit.reset();
    m_screen.reset();
}

void tst_HeadUnit::barOpensEveryPage_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("page");
    QTest::newRow("vehicle") << QByteArray("norda_key_vehicle") << 81 << "norda_vehicles";
    QTest::newRow("climate") << QByteArray("norda_key_climate") << 82 << "norda_vantiq_climate";
    QTest::newRow("parking") << QByteArray("norda_key_radar") << 83 << "norda_parking";
    QTest::newRow("settings") << QByteArray("norda_key_setting") << 84 << "norda_vantiq_settings";
    QTest::newRow("about") << QByteArray("norda_key_about") << 85 << "norda_about";
}

void tst_HeadUnit::barOpensEveryPage()
{
    QFETCH(QByteArray, key);
    QFETCH(int, id);
    QFETCH(QString, page);
    QWidget *gauges = m_unit->currentPage();
    QTest::mouseClick(barKey(key), Qt::LeftButton);
    QCOMPARE(m_unit->currentWindow(), 80); // the event is on its way
    QCoreApplication::processEvents();
    QCOMPARE(m_unit->currentWindow(), id);
    QCOMPARE(m_unit->currentPage()->objectName(), page);
    QVERIFY(m_unit->currentPage()->isVisible());
    QVERIFY(!gauges->isVisible());
    QVERIFY(barKey(key)->isChecked());
    QCOMPARE(m_unit->currentPage()->geometry(), QRect(0, 0, 1280, 720));

    QTest::mouseClick(barKey("norda_key_gauge"), Qt::LeftButton);
    QCoreApplication::processEvents();
    QCOMPARE(m_unit->currentPage(), gauges); // the page that was there before
    QVERIFY(gauges->isVisible());
}

// However a page of the module is opened, the unit asks for it, and once.
void tst_HeadUnit::pageOpensAsByTheBar_data()
{
    using Open = std::function<void()>;
    QTest::addColumn<Open>("open");
    QTest::addColumn<QStringList>("requests");
    const auto request = [](int page) {
        return QStringLiteral("norda::VtqAdaptor::NordaData_Request(%1)").arg(page);
    };
    const auto row = [](const char *name, const Open &open, const QStringList &requests) {
        QTest::newRow(name) << open << requests;
    };
    const auto touch = [this](const char *key) {
        QTest::mouseClick(barKey(key), Qt::LeftButton);
        QCoreApplication::processEvents();
    };
    row("settings, by the bar", [=] { touch("norda_key_setting"); }, {request(13)});
    row("about, by the bar", [=] { touch("norda_key_about"); }, {request(5)});
    row("settings, by the unit", [this] { m_unit->openWindow(84); }, {request(13)});
    row("about, by the unit", [this] { m_unit->openWindow(85); }, {request(5)});
    row("settings, once more",
        [this] {
            m_unit->openWindow(84);
            m_unit->openWindow(84);
        },
        {request(13), request(13)});
    row("back to the settings",
        [this] {
            m_unit->openWindow(84);
            m_unit->openWindow(80);
            m_unit->back();
        },
        {request(13), request(13)});
    row("about, built anew",
        [this] {
            m_unit->openWindow(85);
            m_unit->recreateWindow();
        },
        {request(5), request(5)});
    row("vehicle, by the unit", [this] { m_unit->openWindow(81); }, {});
    row("no page", [this] { m_unit->openWindow(lastPage + 1); }, {});
}

void tst_HeadUnit::pageOpensAsByTheBar()
{
    QFETCH(std::function<void()>, open);
    QFETCH(QStringList, requests);
    CallSpy calls;
    open();
    QCOMPARE(calls.take({"norda::VtqAdaptor::NordaData_Request"}), requests);
}

void tst_HeadUnit::backWalksTheStack()
{
    post(88);
    post(89);
    post(90);
    m_unit->back();
    QCOMPARE(m_unit->currentWindow(), 82);
    post(88); // a page that was opened before comes to the front
    m_unit->back();
    QCOMPARE(m_unit->currentWindow(), 82);
    m_unit->back();
    QCOMPARE(m_unit->currentWindow(), 80);
    m_unit->back(); // the last one stays
    QCOMPARE(m_unit->currentWindow(), 80);
}

void tst_HeadUnit::cameraCoversAndResumes()
{
    post(89);
    post(61);
    QVERIFY(m_screen->isCameraShown());
    QCOMPARE(m_unit->currentWindow(), 82);
    CallSpy calls;
    m_unit->back();
    QVERIFY(!m_screen->isCameraShown());
    QCOMPARE(m_unit->currentWindow(), 82);
    // The page was resumed, not entered anew.
    QCOMPARE(calls.take(), (QStringList{"norda::VtqAdaptor::requestMainClimateInfo()",
                                        "norda::VtqAdaptor::requestSecondClimateInfo()"}));
    post(61);
    post(87);
    QVERIFY(!m_screen->isCameraShown());
    QCOMPARE(m_unit->currentWindow(), 80);
}

void tst_HeadUnit::splitViewStandsBesideThePage()
{
    post(90);
    m_unit->toggleSplit();
    CallSpy calls;
    post(61);
    // What the unit reads for itself is nothing that the plugin asked for.
    QCOMPARE(calls.take(), QStringList{"TouchEvent(61, -1, -1)"});
    CameraView *camera = m_screen->camera();
    QVERIFY(camera->isVisible() && m_screen->isSplit());
    auto *rearZone = m_unit->currentPage()->findChild<QLabel *>("icon_rear_right_radar");
    const QPoint corner = rearZone->mapTo(m_screen.data(), QPoint(0, 0));
    QVERIFY(!camera->geometry().intersects(QRect(corner, rearZone->size())));
    const QImage before = camera->grab().toImage();

    m_unit->toggleSplit(); // while it is open
    QVERIFY(!m_screen->isSplit());
    QCOMPARE(camera->geometry(), QRect(128, 0, 1152, 720));
    QVERIFY(camera->grab().toImage() != before);
    m_unit->back();
    QVERIFY(!camera->isVisible());
    post(61);
    QCOMPARE(camera->geometry(), QRect(128, 0, 1152, 720));
}

void tst_HeadUnit::warningIsLaidOutWhenTold()
{
    post(90);
    post(61);
    auto *warning = m_screen->findChild<QLabel *>(QStringLiteral("cameraWarning"));
    QVERIFY(warning->isVisible());
    const QRect whole(0, 656, 1152, 64);
    QCOMPARE(warning->geometry(), whole);
    m_screen->setSplit(true);
    QCOMPARE(warning->geometry(), whole); // nobody has told it yet
    cm::ReverserVideoInService::getInstance()->updateWarning();
    QCOMPARE(warning->geometry(), QRect(0, 467, 440, 64));
    m_screen->setSplit(false);
}

void tst_HeadUnit::ignoredSplitShowsTheWholeView()
{
    post(90);
    m_unit->toggleSplit();
    mem::SettingsFunc::instance()->setValue("Camera_Ignore_Spilt", false, true, true);
    post(61);
    QVERIFY(!m_screen->isSplit());
    m_unit->back();
    // The page's own key takes that back.
    QTest::mouseClick(m_unit->currentPage()->findChild<QPushButton *>("key_camera"),
                      Qt::LeftButton);
    QCoreApplication::processEvents();
    QVERIFY(m_screen->isCameraShown() && m_screen->isSplit());
    m_unit->toggleSplit();
}

void tst_HeadUnit::cameraIsStatedOnce()
{
    const QString file = qEnvironmentVariable("NORDA_HOST_ROOT") +
                         QStringLiteral("/media/flash/nvm/factory/settings.ini");
    QFile settings(file);
    QVERIFY(settings.open(QIODevice::ReadWrite));
    QVERIFY(settings.readAll().contains("CameraInput=1"));
    settings.resize(0);
    settings.write("[General]\nCameraInput=0\n");
    settings.close();
    m_unit.reset(); // the owner's word holds on the next start
    m_unit.reset(new WindowStack(m_screen.data()));
    QVERIFY(settings.open(QIODevice::ReadOnly));
    QCOMPARE(settings.readAll(), QByteArray("[General]\nCameraInput=0\n"));
    settings.remove();
    QString error;
    QVERIFY(m_unit->load(testpaths::pluginFile(), &error));
}

void tst_HeadUnit::cameraFollowsTheSteering()
{
    QString error;
    Session session(module::openSource(QStringLiteral("simulator"), &error));
    CameraView *camera = m_screen->camera();
    session.connectCamera(camera);
    m_screen->showCamera(true);
    session.drive()->seek(500000);
    QCOMPARE(camera->view().steeringDegrees, 0.0);
    const QImage straight = camera->grab().toImage();
    session.drive()->seek(556500);
    QVERIFY(qAbs(camera->view().steeringDegrees) > 5);
    const QImage turned = camera->grab().toImage();
    QVERIFY(turned != straight);
    session.drive()->seek(570000);
    QVERIFY(camera->view().wall < 0.4);
    QVERIFY(camera->grab().toImage() != turned);

    // A view that stays the same is not painted again.
    QTest::qWait(50);
    PaintCounter counter(camera);
    camera->setView(camera->view());
    QTest::qWait(50);
    QCOMPARE(counter.paints, 0);
}

void tst_HeadUnit::statusColumnFollowsTheControl()
{
    StatusColumn *column = m_screen->statusColumn();
    QVERIFY(column->isVisible());
    cm::StatusBarControl::instance()->sethide(true);
    QVERIFY(!column->isVisible());
    post(84 + 7); // settings leave it as it is
    QVERIFY(!column->isVisible());
    post(88); // a data screen brings it back
    QVERIFY(column->isVisible());
}

void tst_HeadUnit::keysReachTheOpenWindow()
{
    CallSpy calls;
    QVERIFY(!m_unit->pressKey(0x42));
    QCOMPARE(calls.take(),
             (QStringList{"cm::BaseWindow::keyEvent(66)", "cm::BaseWindow::keyEvent(66)"}));
}

void tst_HeadUnit::pageIsBuiltAnew()
{
    QPointer<QWidget> before = m_unit->currentPage();
    m_unit->recreateWindow();
    QVERIFY(!before);
    QVERIFY(m_unit->currentPage());
    QVERIFY(m_unit->currentPage()->isVisible());
    QCOMPARE(m_unit->currentWindow(), 80);
}

void tst_HeadUnit::parkingIsBoundByTheHost()
{
    const auto reactions = [] {
        MessageCapture capture;
        emit norda::VtqAdaptor::instance()->parkGuiDisplayType(0);
        return capture.takeTexts().filter(QStringLiteral("createListview")).size();
    };
    QCOMPARE(reactions(), 0);
    post(90);
    QCOMPARE(reactions(), 1);
    post(88);
    post(90);
    QCOMPARE(reactions(), 1);
    m_unit->recreateWindow(); // a new page wants to be bound anew
    QCOMPARE(reactions(), 1);
}

void tst_HeadUnit::framesAreCounted()
{
    QCoreApplication::processEvents();
    const int before = m_screen->framesPainted();
    m_screen->update();
    QTRY_VERIFY(m_screen->framesPainted() > before);
}

void tst_HeadUnit::unknownCodesAndWindows()
{
    for (int code : {0, 60, 62, 86, std::end(pages)[-1].code + 1, -1})
        post(code);
    m_unit->openWindow(79);
    m_unit->openWindow(lastPage + 1);
    QCOMPARE(m_unit->currentWindow(), 80);
    QVERIFY(!m_screen->isCameraShown());
}

void tst_HeadUnit::carAnswersTheTouch()
{
    QString error;
    Session session(module::openSource(QStringLiteral("simulator"), &error));
    session.drive()->play();
    const auto key = [this](const char *name) {
        return m_unit->currentPage()->findChild<QPushButton *>(QLatin1String(name));
    };
    const auto text = [this](const char *name) {
        return m_unit->currentPage()->findChild<QLabel *>(QLatin1String(name))->text();
    };
    post(89);
    QTRY_COMPARE(text("Txt_left_temp"), QStringLiteral("70.00 F"));
    QTest::mouseClick(key("key_left_temp_next"), Qt::LeftButton);
    QTRY_COMPARE(text("Txt_left_temp"), QStringLiteral("71.00 F"));

    // Paused, the drive goes on for just as long as the answer takes.
    session.drive()->pause();
    const qint64 before = session.drive()->positionMs();
    QTest::mouseClick(key("key_AC"), Qt::LeftButton);
    QVERIFY(key("key_AC")->isChecked());
    QTest::mouseClick(key("key_left_temp_prev"), Qt::LeftButton);
    QTRY_COMPARE(text("Txt_left_temp"), QStringLiteral("70.00 F"));
    QVERIFY(key("key_AC")->isChecked());
    QVERIFY(session.drive()->positionMs() <= before + 200);
    QTest::mouseClick(key("key_rear"), Qt::LeftButton);
    QTRY_COMPARE(text("Txt_fork"), QStringLiteral("70.00 F"));
}

NORDA_TEST_MAIN(tst_HeadUnit)
#include "tst_headunit.moc"
