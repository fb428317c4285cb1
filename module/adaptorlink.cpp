#include "adaptorlink.h"

#include "metacall.h"
#include "norda/vtqadaptor.h"
#include "norda/vtqservice.h"
#include "signaltap.h"

namespace module {

QList<QObject *> moduleEmitters()
{
    return {norda::VtqAdaptor::instance(), norda::VtqService::instance()};
}

QList<ModuleSignal> moduleSignals()
{
    QList<ModuleSignal> found;
    for (QObject *emitter : moduleEmitters()) {
        for (const QMetaMethod &signal : bus::ownSignals(emitter->metaObject()))
            found.append({emitter, signal});
    }
    return found;
}

static QHash<QByteArray, ModuleSignal> signalsByName()
{
    QHash<QByteArray, ModuleSignal> found;
    for (const ModuleSignal &signal : moduleSignals())
        found.insert(signal.method.name(), signal);
    return found;
}

ModuleSignal moduleSignal(const QByteArray &name)
{
    static const QHash<QByteArray, ModuleSignal> found = signalsByName();
    return found.value(name);
}

QString adaptorCommand(const QString &operation)
{
    static const QString prefix = QStringLiteral("norda::VtqAdaptor::");
    return operation.startsWith(prefix) ? operation.mid(prefix.size()) : QString();
}

bool AdaptorLink::deliver(const Emission &emission, VehicleSource *source, qint64 nowMs)
{
    const ModuleSignal signal = moduleSignal(emission.signal);
    Emission typed = emission;
    if (!bus::convertArguments(signal.method, &typed.arguments)) {
        if (m_refused++ == 0)
            qWarning("%s: expected a signal of the adaptor with its arguments",
                     emission.signal.constData());
        return false;
    }
    if (!source || !source->emitSignal(nowMs, typed))
        bus::invokeMethod(signal.emitter, signal.method, typed.arguments);
    return true;
}

} // namespace module
