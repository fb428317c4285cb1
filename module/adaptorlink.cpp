#include "adaptorlink.h"

#include "norda/vtqadaptor.h"
#include "norda/vtqservice.h"
#include "values.h"
#include "valuetype.h"

namespace module {

QList<ModuleSignal> moduleSignals()
{
    QList<ModuleSignal> found;
    for (QObject *emitter : {static_cast<QObject *>(norda::VtqAdaptor::instance()),
                             static_cast<QObject *>(norda::VtqService::instance())}) {
        const QMetaObject *meta = emitter->metaObject();
        for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
            if (meta->method(i).methodType() == QMetaMethod::Signal)
                found.append({emitter, meta->method(i)});
        }
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

static bool fits(const QMetaMethod &signal, QVariantList *arguments)
{
    if (!signal.isValid() || arguments->size() != signal.parameterCount())
        return false;
    for (int i = 0; i < arguments->size(); ++i) {
        if (!convertValue(&(*arguments)[i], signal.parameterType(i)))
            return false;
    }
    return true;
}

bool AdaptorLink::deliver(const Emission &emission)
{
    const ModuleSignal signal = moduleSignal(emission.signal);
    QVariantList arguments = emission.arguments;
    if (!fits(signal.method, &arguments)) {
        if (m_refused++ == 0)
            qWarning("%s: expected a signal of the adaptor with its arguments",
                     emission.signal.constData());
        return false;
    }
    invokeMethod(signal.emitter, signal.method, arguments);
    return true;
}

} // namespace module
