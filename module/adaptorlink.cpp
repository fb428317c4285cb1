#include "adaptorlink.h"

#include "norda/vtqadaptor.h"
#include "norda/vtqservice.h"

#include <QVarLengthArray>

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

bool fitArgument(QVariant *value, int type)
{
    if (value->userType() == type)
        return true;
    if (type != QMetaType::UChar)
        return value->convert(type);
    bool isNumber = false;
    const int number = value->toInt(&isNumber);
    *value = QVariant::fromValue(uchar(number));
    return isNumber && number >= 0 && number <= 255;
}

static bool fits(const QMetaMethod &signal, QVariantList *arguments)
{
    if (!signal.isValid() || arguments->size() != signal.parameterCount())
        return false;
    for (int i = 0; i < arguments->size(); ++i) {
        if (!fitArgument(&(*arguments)[i], signal.parameterType(i)))
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
    QVarLengthArray<void *, 8> passed = {nullptr}; // the place of a result comes first
    for (QVariant &argument : arguments)
        passed.append(argument.data());
    signal.emitter->qt_metacall(QMetaObject::InvokeMetaMethod, signal.method.methodIndex(),
                                passed.data());
    return true;
}

} // namespace module
