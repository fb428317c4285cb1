#pragma once

#include "cardrive.h"

#include <QElapsedTimer>

namespace ecu {

/** A car that drives as time passes. */
class LiveCar
{
public:
    /** @param speed  factor of real time */
    LiveCar(std::unique_ptr<CarDrive> drive, const Car &car, double speed);

    /** Brings the car to this moment. @return milliseconds since the start, in real time */
    qint64 update();
    const Car &car() const { return m_car; }

private:
    std::unique_ptr<CarDrive> m_drive;
    Car m_car;
    double m_speed;
    QElapsedTimer m_clock;
};

} // namespace ecu
