#pragma once

#include "controls.h"
#include "trip.h"

#include <random>

namespace module {

/**
 * Engine, automatic gearbox, cooling and charging of a mid-size petrol car, advanced in fixed
 * steps. Temperatures in degrees Celsius, speeds in km/h.
 */
class Powertrain
{
public:
    /**
     * Advances by one step towards what the driver wants. An override replaces a reading only: the
     * engine itself runs on, so that a released reading is that of the trip at once.
     */
    void step(const DriverWish &wish, const Controls &controls);

    double rpm() const { return m_controls.valueOr(Controls::EngineSpeed, m_rpm); }
    double speedKmh() const { return m_speedKmh; }
    double loadPercent() const { return m_load; }
    int gear() const; ///< 0 while standing in park or neutral
    double coolant() const { return reading(Controls::CoolantTemperature, m_coolant); }
    double intake() const { return reading(Controls::IntakeTemperature, m_intake); }
    double oil() const { return reading(Controls::OilTemperature, m_oil); }
    double transmission() const
    {
        return reading(Controls::TransmissionTemperature, m_transmission);
    }
    double ambient() const { return reading(Controls::OutsideTemperature, m_ambient); }
    double volts() const { return m_volts; }
    bool isRunning() const { return m_running; }
    bool isReversing() const;

    static constexpr int stepMs = 50;
    static constexpr double stepSeconds = stepMs / 1000.0;
    static constexpr double shiftUpRpm = 5600; ///< where the driver should shift at full throttle

private:
    double reading(Controls::Control control, double value) const;
    double noise(double amplitude);
    void move(const DriverWish &wish);
    void shift(const DriverWish &wish);
    void turn(const DriverWish &wish);
    void heat();
    void charge(const DriverWish &wish);

    Controls m_controls;
    std::minstd_rand m_random{20140907};
    double m_speedKmh = 0;
    double m_acceleration = 0; // km/h per second
    double m_rpm = 0;
    double m_load = 0;
    double m_coolant = 21;
    double m_intake = 21;
    double m_oil = 21;
    double m_transmission = 20;
    double m_ambient = 19;
    double m_volts = 12.4;
    double m_shiftPauseS = 0;
    int m_gear = 0;
    bool m_running = false;
    bool m_reversing = false;
};

} // namespace module
