#pragma once

#include "carstate.h"

#include <QByteArray>
#include <QSet>
#include <QStringList>

#include <bitset>

namespace ecu {

/** What the control units know of their car, at this moment. */
struct Car
{
    module::CarState values;
    /** By quantity: what it has a sensor for, whether that reports now or not. */
    std::bitset<size_t(module::Quantity::Count)> sensors;
    QSet<quint8> missingPids; ///< that its control units do not know although it has the sensor
    bool hasFault = false;    ///< the drive has its check-engine lamp on
    QStringList faultCodes = {QStringLiteral("P0304")}; ///< what it stores then
    bool alwaysHasFault = false;
    QByteArray identification = "NRDATEST000000001"; ///< its number, 17 letters and digits

    /** What it stores now; the check-engine lamp is on while there is something. */
    QStringList troubleCodes() const
    {
        return hasFault || alwaysHasFault ? faultCodes : QStringList();
    }
};

} // namespace ecu
