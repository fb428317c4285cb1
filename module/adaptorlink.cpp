#include "adaptorlink.h"

#include "norda/vtqadaptor.h"

namespace module {

static constexpr int mostArguments = 5;

static QHash<QByteArray, QMetaMethod> signalsByName()
{
    QHash<QByteArray, QMetaMethod> found;
    const QMetaObject &meta = norda::VtqAdaptor::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Signal)
            found.insert(meta.method(i).name(), meta.method(i));
    }
    return found;
}

QMetaMethod adaptorSignal(const QByteArray &name)
{
    static const QHash<QByteArray, QMetaMethod> found = signalsByName();
    return found.value(name);
}

static bool fits(const QMetaMethod &signal, QVariantList *arguments)
{
    if (!signal.isValid() || arguments->size() != signal.parameterCount())
        return false;
    for (int i = 0; i < arguments->size(); ++i) {
        QVariant &argument = (*arguments)[i];
        const int type = signal.parameterType(i);
        if (argument.userType() != type && !argument.convert(type))
            return false;
    }
    return true;
}

bool AdaptorLink::deliver(const Emission &emission)
{
    const QMetaMethod signal = adaptorSignal(emission.signal);
    QVariantList arguments = emission.arguments;
    if (!fits(signal, &arguments)) {
        if (m_refused++ == 0)
            qWarning("%s: expected a signal of the adaptor with its arguments",
                     emission.signal.constData());
        return false;
    }
    QGenericArgument passed[mostArguments];
    for (int i = 0; i < arguments.size(); ++i)
        passed[i] = QGenericArgument(arguments[i].typeName(), arguments[i].constData());
    return signal.invoke(norda::VtqAdaptor::instance(), Qt::DirectConnection, passed[0], passed[1],
                         passed[2], passed[3], passed[4]);
}

} // namespace module
