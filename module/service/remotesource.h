#pragma once

#include "carfiles.h"
#include "client.h"
#include "snapshot.h"
#include "vehiclesource.h"

#include <QElapsedTimer>
#include <QObject>
#include <QQueue>

namespace module {

/**
 * The module of another process, which is followed over D-Bus: a drive that happens now. It may
 * come, go and return at any time; while it is away, its values are missing and commands are
 * dropped.
 */
class RemoteSource : public QObject, public VehicleSource
{
    Q_OBJECT
public:
    /** @param address  "session", "system", or the address of a bus */
    explicit RemoteSource(const QString &address);
    ~RemoteSource() override;

    /**
     * Connects for the first time. A module that is there is waited for; events are handled
     * meanwhile.
     * @param error  one line that names the bus
     */
    bool connectToBus(QString *error);

    QString title() const override { return QStringLiteral("Module on D-Bus: ") + m_address; }
    qint64 durationMs() const override { return -1; }
    qint64 liveMs() const override { return m_clock.elapsed(); }
    void setWakeUp(const std::function<void()> &wakeUp) override { m_wakeUp = wakeUp; }
    void setNotify(const std::function<void(const QString &)> &notify) override
    {
        m_notify = notify;
    }
    qint64 nextDueMs() const override;
    Emission take() override { return m_pending.dequeue(); }
    void seek(qint64 ms) override;
    bool command(qint64 nowMs, const QString &operation, const QVariantList &arguments) override;
    QStringList findings() const override;
    QVector<Findings> findingsByPage() const override;
    QJsonObject statistics() const override;

private:
    void onState(bus::Client::State state);
    void onReceived(const QString &signal, const QVariantList &arguments);
    void waitForModule();

    QString m_address;
    bus::Client m_client;
    Snapshot<Emission> m_state;
    QQueue<Emission> m_pending; // in order
    std::function<void()> m_wakeUp;
    std::function<void(const QString &)> m_notify;
    QElapsedTimer m_clock;
    qint64 m_received = 0;
    int m_connections = 0;
};

/** Whether the name of a source, as on the command line, is one of a module on a bus. */
bool isRemoteName(const QString &name);
/** The bus in such a name, "session" where there is none. */
QString addressIn(const QString &name);

/**
 * Follows a module by "dbus[:ADDRESS]", where the address is "session", "system" or that of a bus.
 * @param error  one line that names the source
 */
std::unique_ptr<VehicleSource> openRemote(const QString &name, const CarFiles &car, QString *error);

} // namespace module
