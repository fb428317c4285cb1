#include "adaptortap.h"

#include "adaptorlink.h"

namespace module {

AdaptorTap::AdaptorTap(Listener listener, QObject *parent)
    : QObject(parent), m_listener(std::move(listener))
{
    for (const ModuleSignal &signal : moduleSignals()) {
        const int slot = QObject::staticMetaObject.methodCount() + m_signals.size();
        QMetaObject::connect(signal.emitter, signal.method.methodIndex(), this, slot,
                             Qt::DirectConnection);
        m_signals.append(signal.method);
    }
}

AdaptorTap::~AdaptorTap() = default;

int AdaptorTap::qt_metacall(QMetaObject::Call call, int id, void **arguments)
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

} // namespace module
