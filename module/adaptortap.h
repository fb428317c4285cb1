#pragma once

#include <QList>
#include <QMetaMethod>
#include <QObject>
#include <QVariant>

#include <functional>

namespace module {

/**
 * Receives every signal of the module, whoever emits it. The signals are taken from the
 * meta-objects, so a new one needs no change here.
 */
class AdaptorTap : public QObject
{
    // No Q_OBJECT: the slots that the signals are connected to exist as numbers only.
public:
    using Listener = std::function<void(const QByteArray &signal, const QVariantList &arguments)>;

    explicit AdaptorTap(Listener listener, QObject *parent = nullptr);
    ~AdaptorTap() override;

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override;

private:
    Listener m_listener;
    QList<QMetaMethod> m_signals;
};

} // namespace module
