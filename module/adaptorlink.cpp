#include "adaptorlink.h"

#include "norda/vtqadaptor.h"

#include <QVarLengthArray>

namespace module {

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
    const QMetaMethod signal = adaptorSignal(emission.signal);
    QVariantList arguments = emission.arguments;
    if (!fits(signal, &arguments)) {
        if (m_refused++ == 0)
            qWarning("%s: expected a signal of the adaptor with its arguments",
                     emission.signal.constData());
        return false;
    }
    QVarLengthArray<void *, 8> passed = {nullptr}; // the place of a result comes first
    for (QVariant &argument : arguments)
        passed.append(argument.data());
    norda::VtqAdaptor::instance()->qt_metacall(QMetaObject::InvokeMetaMethod, signal.methodIndex(),
                                               passed.data());
    return true;
}

} // namespace module
