#pragma once

#include "busconnection.h"
#include "client.h"
#include "linkmembers.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QMutex>
#include <QObject>
#include <QSet>
#include <QTimer>

namespace bus {

/**
 * The half of a client that lives in its thread: it finds the bus and the module, follows its
 * restarts, and notices when it falls silent. A module that sent signals and stopped is asked
 * whether it still runs; one that was quiet all along is left alone, so that nothing wakes an idle
 * unit.
 */
class ModuleLink : public QObject
{
    Q_OBJECT
public:
    explicit ModuleLink(Client *client);
    ~ModuleLink() override;

    void open(const QString &address);
    /** Sends a call that nobody answers; from any thread. @return false without a module */
    bool send(const QString &command, const QVariantList &arguments);
    /** Sends a call and waits for its answer; from any thread but its own. */
    QDBusMessage call(const QDBusMessage &method);

private slots: // the bus calls them by name
    void onSignal(const QDBusMessage &message);
    void onDisconnected();
    void onOwnerChanged(const QString &name, const QString &from, const QString &to);
    void onMissingValues(const QDBusMessage &reply);
    void onSnapshot(const QDBusMessage &reply);
    void onAlive(const QDBusMessage &reply);
    void onNoAnswer(const QDBusError &error, const QDBusMessage &call);

private:
    enum class Stage { NoBus, NoModule, Asking, Connected, Silent };

    QDBusConnection &bus() { return m_connection.bus(); }
    void retry();
    void connectToBus();
    void setModule(const QString &owner);
    void leaveModule();
    void ask(const char *method, const char *slot, int timeoutMs);
    void requestState();
    bool isExpected(const QDBusMessage &reply) const;
    void onUnknownMethod(const QString &method);
    void start(const QVector<Record> &snapshot);
    void startAnew();
    void putState();
    void setStage(Stage stage);
    void watchSilence();
    void onSilenceTimer();
    void showMissing();
    void put(const Record &record);
    void putSignal(const QString &name, QVariantList arguments);
    void putFeatures(const QVariantList &arguments);
    void refuse(const QString &name, const QString &signature);

    Client *m_client;
    QString m_address;
    BusConnection m_connection;
    QMutex m_mutex;  // for send(): connection and owner change under it
    QString m_owner; // the unique name of the module's connection
    Stage m_stage = Stage::NoBus;
    Client::State m_state = Client::Waiting;
    int m_missingAfterMs = 0;
    QVector<Record> m_missing; // the signals that show all values as missing
    bool m_isMissingShown = true;
    bool m_isDenied = false;
    QTimer m_retry;
    QTimer m_silence;
    QTimer m_gone;
    QElapsedTimer m_heard;
    QSet<QString> m_refused;
};

} // namespace bus
