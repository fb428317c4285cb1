// A module that floods a unit for two seconds, and then sends one last value. In the middle of it
// reverse gear is selected; it prints when, in milliseconds of the clock that all processes share.
//   floodmodule BUS SIGNALS-A-SECOND

#include "interface.h"
#include "wirevalues.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QTimer>

#include <cstdio>

class FloodModule : public QDBusVirtualObject
{
public:
    FloodModule(const QDBusConnection &bus, int aSecond)
        : m_bus(bus), m_inATurn(aSecond / turnsASecond)
    {
        m_timer.setInterval(1000 / turnsASecond);
        connect(&m_timer, &QTimer::timeout, this, &FloodModule::flood);
    }

    QString introspect(const QString &) const override { return {}; }

    /** The flood begins when a unit has the snapshot. */
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        if (message.member() == QLatin1String(bus::snapshotMethod)) {
            m_bus.send(message.createReply({state()}));
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
    QString voltage() const { return m_isOver ? QStringLiteral("last") : QString::number(m_sent); }

    QVariant state() const
    {
        return QVariant::fromValue(
            QVector<bus::Record>{{QStringLiteral("batteryVoltage"), {voltage()}},
                                 {QStringLiteral("checkGearPositionStatus"), {m_gear}}});
    }

    void flood()
    {
        for (int i = 0; i < m_inATurn; ++i, ++m_sent)
            send("batteryVoltage", voltage());
        ++m_turns;
        if (m_turns == turnsASecond)
            selectReverse();
        if (m_turns < 2 * turnsASecond)
            return;
        m_isOver = true;
        m_timer.stop();
        send("batteryVoltage", voltage());
    }

    void selectReverse()
    {
        QElapsedTimer clock;
        clock.start();
        m_gear = QVariant::fromValue(uchar(1));
        send("checkGearPositionStatus", m_gear);
        std::printf("reverse %lld\n", static_cast<long long>(clock.msecsSinceReference()));
        std::fflush(stdout);
    }

    void send(const char *signal, const QVariant &value)
    {
        QDBusMessage message = QDBusMessage::createSignal(
            QLatin1String(bus::objectPath), QLatin1String(bus::interfaceName), signal);
        message << value;
        m_bus.send(message);
    }

    static constexpr int turnsASecond = 100;

    QDBusConnection m_bus;
    const int m_inATurn;
    QTimer m_timer;
    int m_turns = 0;
    int m_sent = 0;
    QVariant m_gear = QVariant::fromValue(uchar(2));
    bool m_isOver = false;
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    bus::registerWireTypes();
    const QStringList arguments = QCoreApplication::arguments();
    QDBusConnection bus =
        QDBusConnection::connectToBus(arguments.value(1), QStringLiteral("flood"));
    FloodModule module(bus, arguments.value(2).toInt());
    bus.registerVirtualObject(QLatin1String(bus::objectPath), &module);
    return bus.registerService(QLatin1String(bus::serviceName)) ? QCoreApplication::exec() : 2;
}
