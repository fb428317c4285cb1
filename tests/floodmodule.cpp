// A module that sends a hundred thousand signals a second for two seconds, and then one last value.

#include "interface.h"
#include "wirevalues.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QTimer>

class FloodModule : public QDBusVirtualObject
{
public:
    explicit FloodModule(const QDBusConnection &bus) : m_bus(bus)
    {
        m_timer.setInterval(10);
        connect(&m_timer, &QTimer::timeout, this, &FloodModule::flood);
    }

    QString introspect(const QString &) const override { return {}; }

    /** The flood begins when a unit has the snapshot. */
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        const QVariant state = QVariant::fromValue(
            QVector<bus::Record>{{QStringLiteral("batteryVoltage"), {QString::number(m_sent)}}});
        if (message.member() == QLatin1String(bus::snapshotMethod)) {
            m_bus.send(message.createReply({m_isOver ? lastState() : state}));
            if (!m_isOver)
                m_timer.start();
        } else if (message.member() == QLatin1String(bus::missingValuesMethod)) {
            m_bus.send(message.createReply({1000u, QVariant::fromValue(QVector<bus::Record>())}));
        } else {
            m_bus.send(message.createReply());
        }
        return true;
    }

private:
    static QVariant lastState()
    {
        return QVariant::fromValue(
            QVector<bus::Record>{{QStringLiteral("batteryVoltage"), {QStringLiteral("last")}}});
    }

    void flood()
    {
        static constexpr int inATurn = 1000;
        static constexpr int all = 200000;
        for (int i = 0; i < inATurn; ++i)
            send(QString::number(m_sent++));
        if (m_sent < all)
            return;
        m_isOver = true;
        m_timer.stop();
        send(QStringLiteral("last"));
    }

    void send(const QString &voltage)
    {
        QDBusMessage message = QDBusMessage::createSignal(
            QLatin1String(bus::objectPath), QLatin1String(bus::interfaceName), "batteryVoltage");
        message << voltage;
        m_bus.send(message);
    }

    QDBusConnection m_bus;
    QTimer m_timer;
    int m_sent = 0;
    bool m_isOver = false;
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    bus::registerWireTypes();
    QDBusConnection bus = QDBusConnection::connectToBus(QCoreApplication::arguments().value(1),
                                                        QStringLiteral("flood"));
    FloodModule module(bus);
    bus.registerVirtualObject(QLatin1String(bus::objectPath), &module);
    return bus.registerService(QLatin1String(bus::serviceName)) ? QCoreApplication::exec() : 2;
}
