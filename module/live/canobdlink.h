#pragma once

#include "live/cantester.h"
#include "live/timedlink.h"

#include <QCanBusDevice>

#include <memory>

namespace module {

/** A CAN bus: which plugin of Qt reaches it, and under which name. */
struct CanPort
{
    QString plugin;
    QString interface;
    int bitrate = 0; ///< 0 for what the interface is set to
};

/** Listens to a CAN bus, and asks the car on it. It sends nothing that it is not asked for. */
class CanObdLink : public TimedLink
{
    Q_OBJECT
public:
    explicit CanObdLink(const CanPort &port);
    ~CanObdLink() override;

    void open() override;
    void ask(const ObdRequest &request) override;
    bool isListening() const override { return true; }
    QString description() const override;

protected:
    void advance() override;

private:
    void connectDevice(QString *error);
    void onStateChanged(QCanBusDevice::CanBusDeviceState state);
    void onError(QCanBusDevice::CanBusError error);
    void readFrames();
    void passOn();
    void lose(const QString &why);

    CanPort m_port;
    std::unique_ptr<QCanBusDevice> m_device;
    CanTester m_tester;
    bool m_isOpen = false; // open() was called, and it was not lost since
};

} // namespace module
