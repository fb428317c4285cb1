#pragma once

#include "busconnection.h"
#include "linkmembers.h"
#include "signaltap.h"
#include "snapshot.h"

#include <QDBusVirtualObject>
#include <QTimer>

namespace module {

/**
 * Offers the module of this process on D-Bus: every signal of the adaptor and of the vehicle
 * service goes out, every command that comes in is called on them. Owns the name as long as the bus
 * lets it; after a restart of the bus it takes the name again.
 */
class ModuleService : public QDBusVirtualObject
{
    Q_OBJECT
public:
    explicit ModuleService(QObject *parent = nullptr);
    ~ModuleService() override;

    /**
     * @param address  "session", "system", or the address of a bus
     * @param error    one line that names the bus or the name, and what was expected
     */
    bool open(const QString &address, QString *error);

    /** Offers the slots of another object beside the module, on the same connection. */
    bool addObject(const QString &path, QObject *object);

    /** The interface as `busctl introspect` and code generators read it: a whole XML document. */
    static QString introspectionXml();

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override;

signals:
    /** The bus has gone; not any more once it is back and the name is taken. */
    void lost(bool isLost);

private slots:
    void onDisconnected();

private:
    bool takeName(QString *error);
    void reconnect();
    void onSignal(const QByteArray &name, const QVariantList &arguments);
    void send(const bus::Record &signal);
    void sendFeatures();
    QVariantList snapshot() const;
    QDBusMessage answerTo(const QDBusMessage &message);
    QDBusMessage call(const QDBusMessage &message);

    QString m_address;
    bus::BusConnection m_connection;
    bus::SignalTap m_tap;
    Snapshot<bus::Record> m_state;
    int m_featuresSent; // their revision
    QTimer m_retry;
};

} // namespace module
