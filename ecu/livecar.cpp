#include "livecar.h"

namespace ecu {

LiveCar::LiveCar(std::unique_ptr<CarDrive> drive, const Car &car, double speed)
    : m_drive(std::move(drive)), m_car(car), m_speed(speed)
{
    m_clock.start();
    update();
}

qint64 LiveCar::update()
{
    const qint64 nowMs = m_clock.elapsed();
    m_drive->advance(qint64(double(nowMs) * m_speed), &m_car);
    return nowMs;
}

} // namespace ecu
