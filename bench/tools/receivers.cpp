#include "tools/receivers.h"

#include <QMetaMethod>
#include <QObject>

QVector<SignalReceivers> receiversOf(const QObject *object)
{
    struct Access : QObject
    {
        using QObject::receivers;
    };
    int (QObject::*const receivers)(const char *) const = &Access::receivers;
    QVector<SignalReceivers> found;
    const QMetaObject *meta = object->metaObject();
    for (int i = QObject::staticMetaObject.methodCount(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        const bool isCopy = method.attributes() & QMetaMethod::Cloned; // with default arguments
        if (method.methodType() != QMetaMethod::Signal || isCopy)
            continue;
        const QByteArray signature = method.methodSignature();
        const int count = (object->*receivers)(QByteArray::number(QSIGNAL_CODE) + signature);
        if (count > 0)
            found.append({QString::fromLatin1(signature), count});
    }
    return found;
}
