#pragma once

#include <QList>
#include <QMetaMethod>
#include <QObject>
#include <QVariant>

#include <functional>

namespace bus {

/** The signals that a class declares itself, without those of its base classes. */
QList<QMetaMethod> ownSignals(const QMetaObject *meta);

/**
 * Receives every signal of some objects, whoever emits it. The signals are taken from the
 * meta-objects, so a new one needs no change here.
 */
class SignalTap : public QObject
{
    // No Q_OBJECT: the slots that the signals are connected to exist as numbers only.
public:
    using Listener = std::function<void(const QByteArray &signal, const QVariantList &arguments)>;

    SignalTap(const QList<QObject *> &emitters, Listener listener, QObject *parent = nullptr);
    ~SignalTap() override;

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override;

private:
    Listener m_listener;
    QList<QMetaMethod> m_signals;
};

} // namespace bus
