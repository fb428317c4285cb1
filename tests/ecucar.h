#pragma once

#include "car.h"

/** A car of which a test knows every value. */
inline ecu::Car testCar()
{
    using module::Quantity;
    static const QVector<QPair<Quantity, double>> values = {
        {Quantity::EngineSpeed, 1726},      {Quantity::EngineLoad, 40},
        {Quantity::CoolantTemperature, 83}, {Quantity::IntakeTemperature, -10},
        {Quantity::AmbientTemperature, 19}, {Quantity::OilTemperature, 96},
        {Quantity::VehicleSpeed, 51},       {Quantity::Voltage, 13.9},
    };
    ecu::Car car;
    for (const auto &[quantity, value] : values) {
        car.values.set(quantity, value);
        car.sensors.set(size_t(quantity));
    }
    return car;
}
