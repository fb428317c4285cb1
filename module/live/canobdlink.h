#pragma once

#include "live/canportname.h"
#include "live/cantester.h"
#include "live/timedlink.h"

#include <QCanBusDevice>

#include <memory>

namespace module {

/** Listens to a CAN bus, and asks the car on it. It sends nothing that it is not asked for. */
class CanObdLink : public TimedLink
{
    Q_OBJECT
public:
    explicit CanObdLink(const CanPort &port);
    ~CanObdLink() override;

    void open() override;
    void close() override;
    void ask(const ObdRequest &request) override;
    bool isListening() const override { return true; }
    int bitrate() const override { return m_port.bitrate; }
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
