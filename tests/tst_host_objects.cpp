#include "callspy.h"
#include "eventhandler.h"
#include "nordahost.h"
#include "srcdsplctrl.h"
#include "testmain.h"
#include "touchevent.h"
#include "translator.h"

#include "audiomanager.h"
#include "mcu/mcuservice.h"
#include "mcumanager.h"
#include "mem/settingscache.h"
#include "norda/vtqservice.h"
#include "spplfctrl/spplatformcontrol.h"
#include "svaudio/audioservice.h"

/** The reference host's objects as scripts and tests reach them: by name. */
class tst_HostObjects : public QObject
{
    Q_OBJECT
private slots:
    void byName_data();
    void byName();
    void unknownNames();
    void settersByName();
    void featureMaps();
    void beepsAreHeardWhoeverAsks();
    void navigationIsReportedOnDelivery();
    void foreignNavigationPayload();
    void translations_data();
    void translations();
    void unknownLanguage();
};

void tst_HostObjects::byName_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name :
         {"norda::VtqAdaptor", "norda::VtqService", "svaudio::AudioService", "mcu::McuService",
          "McuManager", "AudioManager", "EventHandler", "SrcDsplCtrl", "mem::SettingsCache",
          "mem::SettingsFunc", "mem::SettingsUtil", "cm::StatusBarControl",
          "cm::ReverserVideoInService", "spplfctrl::SPPlatformControl", "Translator", "CallLog"})
        QTest::newRow(name) << QByteArray(name);
}

void tst_HostObjects::byName()
{
    QFETCH(QByteArray, name);
    QObject *object = nordaHostObject(name.constData());
    QVERIFY(object);
    QCOMPARE(object->metaObject()->className(), name.constData());
    QCOMPARE(nordaHostObject(name.constData()), object);
}

void tst_HostObjects::unknownNames()
{
    QCOMPARE(nordaHostObject("VtqAdaptor"), nullptr);
    QCOMPARE(nordaHostObject(""), nullptr);
    QCOMPARE(nordaHostObject(nullptr), nullptr);
}

template <typename... Arguments>
static void invoke(const char *object, const char *method, Arguments... arguments)
{
    QVERIFY(QMetaObject::invokeMethod(nordaHostObject(object), method, arguments...));
}

void tst_HostObjects::settersByName()
{
    invoke("SrcDsplCtrl", "setCurrentSrc", Q_ARG(int, 20));
    invoke("SrcDsplCtrl", "setCurrentDspl", Q_ARG(int, 3));
    QCOMPARE(EventHandler::instance()->control()->currentSrc(), 20);
    QCOMPARE(EventHandler::instance()->control()->currentDspl(), 3);

    invoke("mem::SettingsCache", "setValue", Q_ARG(QString, "key"), Q_ARG(QVariant, -1),
           Q_ARG(QVariant, 3));
    int value = 0;
    invoke("mem::SettingsCache", "getValue", Q_RETURN_ARG(int, value), Q_ARG(QString, "key"),
           Q_ARG(int, -1));
    QCOMPARE(value, 3);

    QCOMPARE(AudioManager::instance()->requestAudioFocus(1, 1, nullptr), 0);
    invoke("AudioManager", "setFocusResult", Q_ARG(int, 1));
    QCOMPARE(AudioManager::instance()->requestAudioFocus(1, 1, nullptr), 1);

    invoke("spplfctrl::SPPlatformControl", "setAudioFirmwareVersion",
           Q_ARG(QString, "PREFIX___9.9"));
    QCOMPARE(spplfctrl::SPPlatformControl::GetInstance()->getAudioFirmwareVersion(),
             "PREFIX___9.9");
}

void tst_HostObjects::featureMaps()
{
    using Features = QMap<int, bool>;
    norda::VtqService *service = norda::VtqService::instance();
    QCOMPARE(service->getRearClimateControlFeatures(1).size(), 8);
    QCOMPARE(service->getParkingAssistZones().size(), 8);
    QCOMPARE(service->getFrontClimateControlFeatures(2), Features());

    const Features some = {{3, true}, {4, false}};
    const QArgument<Features> features("QMap<int,bool>", some);
    CallSpy calls;
    invoke("norda::VtqService", "setFrontClimateControlFeatures", Q_ARG(int, 0), features);
    invoke("norda::VtqService", "setRearClimateControlFeatures", Q_ARG(int, 1), features);
    invoke("norda::VtqService", "setRearClimateControlFeatures", Q_ARG(int, 2), features);
    invoke("norda::VtqService", "setParkingAssistZones", features);
    QCOMPARE(calls.take(), QStringList()); // the host's own doing, not the plugin's
    QCOMPARE(service->getFrontClimateControlFeatures(0), some);
    QCOMPARE(service->getRearClimateControlFeatures(1), some);
    QCOMPARE(service->getRearClimateControlFeatures(0).size(), 8);
    QCOMPARE(service->getRearClimateControlFeatures(2), Features()); // there are two
    QCOMPARE(service->getParkingAssistZones(), some);
}

void tst_HostObjects::beepsAreHeardWhoeverAsks()
{
    QSignalSpy beeps(svaudio::AudioService::instance(), &svaudio::AudioService::beeped);
    CallSpy calls;
    svaudio::AudioService::instance()->doBeep(0);
    McuManager::instance()->triggerBeep(0);
    mcu::McuService::instance()->setMixChannel(63, 1);
    QCOMPARE(beeps.count(), 2);
    QCOMPARE(calls.take(),
             (QStringList{"svaudio::AudioService::doBeep(0)", "McuManager::triggerBeep(0)",
                          "mcu::McuService::setMixChannel(63, 1)"}));
}

void tst_HostObjects::navigationIsReportedOnDelivery()
{
    QSignalSpy touched(EventHandler::instance(), &EventHandler::touched);
    CallSpy calls;
    QCoreApplication::postEvent(QCoreApplication::instance(),
                                new TouchEvent(Qx::TouchCamera, -1, 7));
    QCOMPARE(calls.take(), QStringList());
    QCoreApplication::processEvents();
    QCOMPARE(calls.take(), QStringList{"TouchEvent(61, -1, 7)"});
    QCOMPARE(touched.takeFirst(), (QVariantList{61, -1, 7}));

    // One that is meant for another object is nobody's navigation.
    QCoreApplication::postEvent(this, new TouchEvent(Qx::TouchCamera, -1, -1));
    QCoreApplication::processEvents();
    QCOMPARE(calls.take(), QStringList());
}

void tst_HostObjects::foreignNavigationPayload()
{
    CallSpy calls;
    QTest::ignoreMessage(QtWarningMsg, "navigation event: expected 16 bytes, got 3");
    QCoreApplication::postEvent(QCoreApplication::instance(), new SimpleEvent(1008, "abc"));
    QTest::ignoreMessage(QtWarningMsg, "navigation event: expected 16 bytes, got 0");
    QCoreApplication::postEvent(QCoreApplication::instance(), new QEvent(QEvent::Type(1008)));
    QCoreApplication::processEvents();
    QCOMPARE(calls.take(), QStringList());
}

void tst_HostObjects::translations_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QStringList>("texts"); // 250 to 255, 261, 262
    QTest::newRow("English") << "en" << QStringList{"Gauges",   "Vehicle", "Climate", "Parking",
                                                    "Settings", "About",   "Front",   "Rear"};
    QTest::newRow("German") << "de" << QStringList{"Instrumente",   "Fahrzeug", "Klima", "Parken",
                                                   "Einstellungen", "Info",     "Vorn",  "Hinten"};
    QTest::newRow("French") << "fr"
                            << QStringList{"Instruments", "Véhicule", "Climat", "Stationnement",
                                           "Réglages",    "À propos", "Avant",  "Arrière"};
    QTest::newRow("Spanish") << "es"
                             << QStringList{"Indicadores", "Vehículo",  "Clima",   "Aparcamiento",
                                            "Ajustes",     "Acerca de", "Delante", "Detrás"};
}

void tst_HostObjects::translations()
{
    QFETCH(QString, language);
    QFETCH(QStringList, texts);
    Translator *translator = Translator::instance();
    QVERIFY(translator->setLanguage(language));
    QCOMPARE(translator->language(), language);
    QStringList seen;
    for (int id : {250, 251, 252, 253, 254, 255, 261, 262})
        seen.append(translator->text(id));
    QCOMPARE(seen, texts);
    QCOMPARE(translator->text(0), QString());
}

void tst_HostObjects::unknownLanguage()
{
    Translator *translator = Translator::instance();
    translator->setLanguage(QStringLiteral("fr"));
    QSignalSpy changes(translator, &Translator::languageChanged);
    for (const char *language : {"xx", "", "fra", "../de"})
        QVERIFY(!translator->setLanguage(QLatin1String(language)));
    QVERIFY(translator->setLanguage(QStringLiteral("fr")));
    QCOMPARE(changes.count(), 0);
    QVERIFY(translator->setLanguage(QStringLiteral("en")));
    QCOMPARE(changes.count(), 1);
}

NORDA_TEST_MAIN(tst_HostObjects)
#include "tst_host_objects.moc"
