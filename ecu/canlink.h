#pragma once

#include "broadcast/broadcaster.h"
#include "carbus.h"
#include "livecar.h"
#include "outage.h"
#include "ports/canport.h"

#include <QTimer>

namespace ecu {

/** A car on a CAN interface. */
class CanLink : public QObject
{
    Q_OBJECT
public:
    /**
     * @param broadcaster  of what the car sends by itself; none for nothing
     * @param silence      when the cable is not plugged in
     */
    CanLink(LiveCar *car, const CarBus::Settings &bus, std::optional<Broadcaster> broadcaster,
            const Outage &silence, std::unique_ptr<CanPort> port, QObject *parent = nullptr);
    ~CanLink() override;

private:
    void receive(const module::CanFrame &frame);
    void advance();
    void flush(qint64 nowMs);
    void send(const QVector<module::CanFrame> &frames, qint64 nowMs);
    qint64 nextDueMs() const;

    LiveCar *m_car;
    CarBus m_bus;
    std::optional<Broadcaster> m_broadcaster;
    Outage m_silence;
    std::unique_ptr<CanPort> m_port;
    QTimer m_timer;
};

} // namespace ecu
