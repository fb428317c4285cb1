#pragma once

#include "live/canframe.h"

#include <QCanBusDevice>
#include <QObject>

#include <memory>

namespace ecu {

/** A CAN interface. */
class CanPort : public QObject
{
    Q_OBJECT
public:
    /** @param name  a plugin and its interface, such as "socketcan:can0?bitrate=250000" */
    explicit CanPort(const QString &name, QObject *parent = nullptr);
    ~CanPort() override;

    /** Begins to connect. @param error  one line, when that cannot be */
    bool open(QString *error);
    QString name() const { return m_name; }
    void send(const module::CanFrame &frame);

signals:
    void connected();
    void received(const module::CanFrame &frame);
    /** The connection was lost, or never came. */
    void failed(const QString &error);

private:
    void read();
    void onState(QCanBusDevice::CanBusDeviceState state);

    QString m_name;
    std::unique_ptr<QCanBusDevice> m_device;
    bool m_isOpen = false;
};

} // namespace ecu
