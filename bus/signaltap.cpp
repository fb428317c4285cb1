#include "signaltap.h"

namespace bus {

QList<QMetaMethod> ownSignals(const QMetaObject *meta)
{
    QList<QMetaMethod> found;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        if (meta->method(i).methodType() == QMetaMethod::Signal)
            found.append(meta->method(i));
    }
    return found;
}

SignalTap::SignalTap(const QList<QObject *> &emitters, Listener listener, QObject *parent)
    : QObject(parent), m_listener(std::move(listener))
{
    for (QObject *emitter : emitters) {
        for (const QMetaMethod &signal : ownSignals(emitter->metaObject())) {
            const int slot = QObject::staticMetaObject.methodCount() + m_signals.size();
            QMetaObject::connect(emitter, signal.methodIndex(), this, slot, Qt::DirectConnection);
            m_signals.append(signal);
        }
    }
}

SignalTap::~SignalTap() = default;

int SignalTap::qt_metacall(QMetaObject::Call call, int id, void **arguments)
{
    id = QObject::qt_metacall(call, id, arguments);
    if (id < 0 || id >= m_signals.size() || call != QMetaObject::InvokeMetaMethod)
        return id;
    const QMetaMethod &signal = m_signals.at(id);
    QVariantList values;
    for (int i = 0; i < signal.parameterCount(); ++i)
        values.append(QVariant(signal.parameterType(i), arguments[i + 1]));
    m_listener(signal.name(), values);
    return -1;
}

} // namespace bus
