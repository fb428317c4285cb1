#include "callspy.h"
#include "disabledlook.h"
#include "mem/settingsutil.h"
#include "norda/vtqadaptor.h"
#include "nordahost.h"
#include "pluginfixture.h"
#include "testmain.h"

#include <QDir>
#include <QPushButton>

static const QString beep = QStringLiteral("svaudio::AudioService::doBeep(0)");
static const QString file = QStringLiteral("/media/flash/nvm/factory/settings.ini");

static QString read(const char *key, const char *defaultValue)
{
    return QStringLiteral("mem::SettingsExe::getValue(%1, %2, %3)")
        .arg(QLatin1String(key), file, QLatin1String(defaultValue));
}

static QString written(const char *key, const char *value)
{
    return QStringLiteral("mem::SettingsExe::setOtherPathValue(%1, %2, %3, %3, true)")
        .arg(QLatin1String(key), file, QLatin1String(value));
}

static QString kept(const char *key, const char *value)
{
    return QStringLiteral("mem::SettingsFunc::setValue(%1, false, %2, true)")
        .arg(QLatin1String(key), QLatin1String(value));
}

/** The keys of the parking screen that lead to the camera and the split view. */
class tst_CameraKeys : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void firstSplitTouch();
    void splitTouches_data();
    void splitTouches();
    void splitFollowsTheFile();
    void cameraTouch_data();
    void cameraTouch();
    void enabledOnEntry_data();
    void enabledOnEntry();
    void enabledOnResume_data();
    void enabledOnResume();
    void disabledWithoutAnyInput();
    void disabledCameraSendsNothing();
    void disabledLooks();
    void hostsWordIsRead();
    void everyTouchNotifies();
    void notificationsOnRequest_data();
    void notificationsOnRequest();
    void accessorDefaults();
    void moduleSettingsKey();
    void settingsSlotFlipsTheSplit();
    void valuesSurviveARestart();

private:
    QString local() const { return qEnvironmentVariable("NORDA_HOST_ROOT") + file; }
    void store(const QByteArray &content) const
    {
        QDir().mkpath(QFileInfo(local()).path());
        QFile target(local());
        QVERIFY(target.open(QIODevice::WriteOnly));
        target.write("[General]\n" + content);
    }
    QPushButton *key(const char *name) const { return find<QPushButton>(m_screen, name); }
    void touch(const char *name)
    {
        QTest::mouseClick(key(name), Qt::LeftButton);
        QCoreApplication::processEvents(); // navigation is posted
    }

    QScopedPointer<PluginFixture> m_host;
    QWidget *m_screen = nullptr;
};

void tst_CameraKeys::init()
{
    QDir(qEnvironmentVariable("NORDA_HOST_ROOT")).removeRecursively();
    m_host.reset(new PluginFixture);
    m_screen = m_host->open(83);
    key("key_split")->show(); // a host's choice
}

void tst_CameraKeys::cleanup()
{
    m_host.reset();
}

void tst_CameraKeys::firstSplitTouch()
{
    QSignalSpy notified(mem::SettingsUtil::instance(), &mem::SettingsUtil::VantiqSplit);
    QVERIFY(!key("key_split")->isChecked());
    CallSpy calls;
    touch("key_split");
    QCOMPARE(calls.take(),
             (QStringList{beep, read("VantiqSplit", "false"), written("VantiqSplit", "true"),
                          read("VantiqSplit", "false"),
                          "spplfctrl::SPPlatformControl::setVideoPath(0, 256)",
                          "cm::ReverserVideoInService::updateWarning()"}));
    QVERIFY(key("key_split")->isChecked());
    QCOMPARE(notified.count(), 1);
    QCOMPARE(notified.first(), QVariantList{1});
}

void tst_CameraKeys::splitTouches_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<QList<int>>("checked"); // after each touch
    QTest::newRow("absent") << QByteArray() << QList<int>{1, 0, 1};
    QTest::newRow("off") << QByteArray("VantiqSplit=false\n") << QList<int>{1, 0, 1};
    QTest::newRow("on") << QByteArray("VantiqSplit=true\n") << QList<int>{0, 1, 0};
}

void tst_CameraKeys::splitTouches()
{
    QFETCH(QByteArray, stored);
    QFETCH(QList<int>, checked);
    store(stored);
    m_host->window(83)->onEnter();
    for (const int expected : qAsConst(checked)) {
        touch("key_split");
        QCOMPARE(key("key_split")->isChecked(), expected == 1);
        QFile content(local());
        QVERIFY(content.open(QIODevice::ReadOnly));
        QVERIFY(content.readAll().contains(expected ? "VantiqSplit=true" : "VantiqSplit=false"));
    }
}

void tst_CameraKeys::splitFollowsTheFile()
{
    for (const bool on : {true, false}) {
        store(on ? "VantiqSplit=true\n" : "VantiqSplit=false\n");
        QCOMPARE(key("key_split")->isChecked(), !on);
        m_host->window(83)->onEnter();
        QCOMPARE(key("key_split")->isChecked(), on);
    }
}

void tst_CameraKeys::cameraTouch_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<bool>("readsRear");
    QTest::addColumn<QByteArray>("second");
    QTest::newRow("nothing stored") << QByteArray() << true << QByteArray("false");
    QTest::newRow("front and rear")
        << QByteArray("FrontInput=true\nRearInput=true\n") << true << QByteArray("false");
    QTest::newRow("front only") << QByteArray("FrontInput=true\nRearInput=false\n") << true
                                << QByteArray("true");
    QTest::newRow("rear only") << QByteArray("FrontInput=false\nRearInput=true\n") << false
                               << QByteArray("false");
    QTest::newRow("neither") << QByteArray("FrontInput=false\nRearInput=false\n") << false
                             << QByteArray("false");
}

void tst_CameraKeys::cameraTouch()
{
    QFETCH(QByteArray, stored);
    QFETCH(bool, readsRear);
    QFETCH(QByteArray, second);
    store(stored);
    QSignalSpy notified(mem::SettingsUtil::instance(), &mem::SettingsUtil::VantiqCamera);
    CallSpy calls;
    touch("key_camera");
    QStringList expected = {beep, written("VantiqCamera", "true"),
                            kept("Camera_Ignore_Spilt", "false"), read("FrontInput", "true")};
    if (readsRear)
        expected.append(read("RearInput", "true"));
    expected << kept("Camera_ISRear", second.constData()) << "TouchEvent(61, -1, -1)";
    QCOMPARE(calls.take(), expected);
    QCOMPARE(notified.count(), 1);
    QCOMPARE(notified.first(), QVariantList{1});
}

void tst_CameraKeys::enabledOnEntry_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("nothing stored") << QByteArray() << true;
    QTest::newRow("front only") << QByteArray("FrontInput=true\nRearInput=false\n") << true;
    QTest::newRow("rear only") << QByteArray("FrontInput=false\nRearInput=true\n") << true;
    QTest::newRow("as numbers") << QByteArray("FrontInput=0\nRearInput=1\n") << true;
    QTest::newRow("neither") << QByteArray("FrontInput=false\nRearInput=false\n") << false;
    QTest::newRow("the camera input does not count")
        << QByteArray("FrontInput=false\nRearInput=false\nCameraInput=3\n") << false;
}

void tst_CameraKeys::enabledOnEntry()
{
    QFETCH(QByteArray, stored);
    QFETCH(bool, enabled);
    store(stored);
    for (const bool before : {true, false}) {
        key("key_camera")->setEnabled(before);
        m_host->window(83)->onEnter();
        QCOMPARE(key("key_camera")->isEnabled(), enabled);
    }
}

void tst_CameraKeys::enabledOnResume_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("nothing stored") << QByteArray() << false;
    QTest::newRow("0") << QByteArray("CameraInput=0\n") << false;
    QTest::newRow("1") << QByteArray("CameraInput=1\n") << true;
    QTest::newRow("256") << QByteArray("CameraInput=256\n") << true;
    QTest::newRow("-1") << QByteArray("CameraInput=-1\n") << true;
    QTest::newRow("no number") << QByteArray("CameraInput=rear\n") << false;
    QTest::newRow("the other inputs do not count")
        << QByteArray("CameraInput=0\nRearInput=true\nFrontInput=true\n") << false;
}

void tst_CameraKeys::enabledOnResume()
{
    QFETCH(QByteArray, stored);
    QFETCH(bool, enabled);
    store(stored);
    for (const bool before : {true, false}) {
        key("key_camera")->setEnabled(before);
        invoke(m_screen, "resume");
        QCOMPARE(key("key_camera")->isEnabled(), enabled);
    }
}

void tst_CameraKeys::disabledWithoutAnyInput()
{
    store("FrontInput=false\nRearInput=false\nCameraInput=0\n");
    m_host->window(83)->onEnter();
    QVERIFY(!key("key_camera")->isEnabled());
    invoke(m_screen, "resume");
    QVERIFY(!key("key_camera")->isEnabled());
}

void tst_CameraKeys::disabledCameraSendsNothing()
{
    const QImage enabled = key("key_camera")->grab().toImage();
    store("FrontInput=false\nRearInput=false\n");
    m_host->window(83)->onEnter();
    QVERIFY(key("key_camera")->grab().toImage() != enabled);
    CallSpy calls;
    touch("key_camera");
    QCOMPARE(calls.take(), QStringList());
}

void tst_CameraKeys::disabledLooks()
{
    for (const char *name : {"key_camera", "key_split", "key_P1", "key_P2"})
        QCOMPARE(faultOfDisabledLook(key(name)), QString());
}

void tst_CameraKeys::hostsWordIsRead()
{
    // Written by somebody else between two touches: nothing is remembered.
    store("VantiqSplit=true\n");
    touch("key_split");
    QVERIFY(!key("key_split")->isChecked());
    store("VantiqSplit=true\n");
    touch("key_split");
    QVERIFY(!key("key_split")->isChecked());
}

void tst_CameraKeys::everyTouchNotifies()
{
    QSignalSpy notified(mem::SettingsUtil::instance(), &mem::SettingsUtil::VantiqSplit);
    for (const int expected : {1, 0, 1}) {
        touch("key_split");
        QCOMPARE(notified.takeFirst(), QVariantList{expected});
        QCOMPARE(notified.count(), 0);
    }
}

void tst_CameraKeys::notificationsOnRequest_data()
{
    QTest::addColumn<bool>("on");
    QTest::addColumn<bool>("notify");
    for (const bool on : {true, false}) {
        for (const bool notify : {true, false})
            QTest::addRow("%s, %s", on ? "on" : "off", notify ? "told" : "not told")
                << on << notify;
    }
}

void tst_CameraKeys::notificationsOnRequest()
{
    QFETCH(bool, on);
    QFETCH(bool, notify);
    mem::SettingsUtil *settings = mem::SettingsUtil::instance();
    QSignalSpy camera(settings, &mem::SettingsUtil::VantiqCamera);
    QSignalSpy split(settings, &mem::SettingsUtil::VantiqSplit);
    CallSpy calls;
    const char *value = on ? "true" : "false";
    settings->setVantiqCamera(on, notify);
    QCOMPARE(calls.take(), QStringList{written("VantiqCamera", value)});
    settings->setVantiqSplit(on, notify);
    QCOMPARE(calls.take(), QStringList{written("VantiqSplit", value)});
    QCOMPARE(settings->getVantiqSplit(!on), on);
    for (QSignalSpy *told : {&camera, &split}) {
        QCOMPARE(told->count(), int(notify));
        QCOMPARE(told->value(0).value(0).toInt(), int(on && notify));
    }
}

void tst_CameraKeys::accessorDefaults()
{
    mem::SettingsUtil *settings = mem::SettingsUtil::instance();
    QCOMPARE(settings->getCameraInput(), 0);
    QCOMPARE(settings->getCameraInput(5), 5);
    QCOMPARE(settings->getRearInput(), true);
    QCOMPARE(settings->getRearInput(false), false);
    QCOMPARE(settings->getFrontInput(), true);
    QCOMPARE(settings->getFrontInput(false), false);
    QCOMPARE(settings->getVantiqSplit(), false);
    QCOMPARE(settings->getVantiqSplit(true), true);
}

void tst_CameraKeys::moduleSettingsKey()
{
    key("key_settings")->show();
    CallSpy calls;
    key("key_settings")->click();
    QCoreApplication::processEvents();
    QCOMPARE(calls.take(), (QStringList{beep, "norda::VtqAdaptor::NordaData_Request(13)",
                                        "TouchEvent(91, -1, -1)"}));
}

void tst_CameraKeys::settingsSlotFlipsTheSplit()
{
    QSignalSpy notified(mem::SettingsUtil::instance(), &mem::SettingsUtil::VantiqSplit);
    CallSpy calls;
    invoke(m_screen, "onSettingsClicked");
    QCOMPARE(calls.take(),
             (QStringList{beep, read("VantiqSplit", "false"), written("VantiqSplit", "true"),
                          "norda::VtqAdaptor::parkingSettings()"}));
    QCOMPARE(notified.takeFirst(), QVariantList{1});
    QVERIFY(!key("key_split")->isChecked()); // its look follows on the next entry
    invoke(m_screen, "onSettingsClicked");
    QCOMPARE(notified.takeFirst(), QVariantList{0});
}

void tst_CameraKeys::valuesSurviveARestart()
{
    touch("key_split");
    m_host.reset();
    m_host.reset(new PluginFixture);
    m_screen = m_host->open(83);
    QVERIFY(key("key_split")->isChecked());
}

NORDA_TEST_MAIN(tst_CameraKeys)
#include "tst_camerakeys.moc"
