#include "adaptortap.h"

#include "norda/vtqadaptor.h"

namespace module {

AdaptorTap::AdaptorTap(Listener listener, QObject *parent)
    : QObject(parent), m_listener(std::move(listener))
{
    norda::VtqAdaptor *adaptor = norda::VtqAdaptor::instance();
    const QMetaObject *meta = adaptor->metaObject();
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        if (meta->method(i).methodType() != QMetaMethod::Signal)
            continue;
        const int slot = QObject::staticMetaObject.methodCount() + m_signals.size();
        QMetaObject::connect(adaptor, i, this, slot, Qt::DirectConnection);
        m_signals.append(meta->method(i));
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
