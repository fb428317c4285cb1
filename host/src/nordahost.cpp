#include "nordahost.h"

#include "audiomanager.h"
#include "calllog.h"
#include "cm/reverservideoinservice.h"
#include "cm/statusbarcontrol.h"
#include "eventhandler.h"
#include "mcu/mcuservice.h"
#include "mcumanager.h"
#include "mem/settingscache.h"
#include "mem/settingsfunc.h"
#include "mem/settingsutil.h"
#include "norda/vtqadaptor.h"
#include "norda/vtqservice.h"
#include "serviceconnection.h"
#include "spplfctrl/spplatformcontrol.h"
#include "srcdsplctrl.h"
#include "svaudio/audioservice.h"
#include "touchevent.h"
#include "translator.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFileInfo>
#include <QResource>

#include <dlfcn.h>

template <typename Class>
static QObject *object()
{
    return Class::instance();
}

struct ObjectRow
{
    const char *name;
    QObject *(*object)();
};

static const ObjectRow objects[] = {
    {"norda::VtqAdaptor", object<norda::VtqAdaptor>},
    {"norda::VtqService", object<norda::VtqService>},
    {"svaudio::AudioService", object<svaudio::AudioService>},
    {"mcu::McuService", object<mcu::McuService>},
    {"McuManager", object<McuManager>},
    {"AudioManager", object<AudioManager>},
    {"EventHandler", object<EventHandler>},
    {"SrcDsplCtrl", []() -> QObject * { return EventHandler::instance()->control(); }},
    {"mem::SettingsCache", object<mem::SettingsCache>},
    {"mem::SettingsFunc", object<mem::SettingsFunc>},
    {"mem::SettingsUtil", object<mem::SettingsUtil>},
    {"cm::StatusBarControl", object<cm::StatusBarControl>},
    {"cm::ReverserVideoInService",
     []() -> QObject * { return cm::ReverserVideoInService::getInstance(); }},
    {"spplfctrl::SPPlatformControl",
     []() -> QObject * { return spplfctrl::SPPlatformControl::GetInstance(); }},
    {"Translator", object<Translator>},
    {"CallLog", object<CallLog>},
    {"ServiceConnection", object<ServiceConnection>},
};

QObject *nordaHostObject(const char *name)
{
    for (const ObjectRow &row : objects) {
        if (qstrcmp(row.name, name) == 0)
            return row.object();
    }
    return nullptr;
}

/** Sees the navigation events that reach the application object; consumes none of them. */
class TouchEventWatch : public QObject
{
public:
    using QObject::QObject;

private:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == TouchEvent::EventType && watched == parent())
            report(dynamic_cast<SimpleEvent *>(event));
        return false;
    }

    // The number is free for anyone to use: another kind of event has no payload to read.
    static void report(const SimpleEvent *event)
    {
        const QByteArray payload = event ? event->payload() : QByteArray();
        qint32 fields[4];
        if (payload.size() != sizeof fields) {
            qWarning("navigation event: expected %d bytes, got %d", int(sizeof fields),
                     payload.size());
            return;
        }
        memcpy(fields, payload.constData(), sizeof fields);
        CallLog::report("TouchEvent", int(fields[1]), int(fields[2]), int(fields[3]));
        emit EventHandler::instance()->touched(fields[1], fields[2], fields[3]);
    }
};

/** Beside the library in a build folder, or where an installed library has its shared files. */
static QString iconFile()
{
    QString file = qEnvironmentVariable("NORDA_ICONS");
    if (!file.isEmpty())
        return file;
    Dl_info library = {};
    dladdr(reinterpret_cast<void *>(&nordaHostObject), &library);
    const QString folder = QFileInfo(QString::fromLocal8Bit(library.dli_fname)).absolutePath();
    const QString beside = folder + QStringLiteral("/../share/norda/icons.rcc");
    const QString installed = folder + QStringLiteral("/../../../share/norda/icons.rcc");
    return QFileInfo::exists(beside) || !QFileInfo::exists(installed) ? beside : installed;
}

static void registerIcons()
{
    if (!QResource::registerResource(iconFile()))
        qWarning("icon library %s: expected a readable resource file", qPrintable(iconFile()));
}

Q_CONSTRUCTOR_FUNCTION(registerIcons)

static void unregisterIcons()
{
    QResource::unregisterResource(iconFile());
}
Q_DESTRUCTOR_FUNCTION(unregisterIcons)

// Runs with the application object, or at once where the library comes later than that.
static void watchTouchEvents()
{
    QCoreApplication *application = QCoreApplication::instance();
    application->installEventFilter(new TouchEventWatch(application));
}
Q_COREAPP_STARTUP_FUNCTION(watchTouchEvents)
