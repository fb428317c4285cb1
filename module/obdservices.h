#pragma once

#include <QByteArray>

/** What the requests of a tester and the answers of a car's units begin with (OBD-II). */
namespace module::obd {

// Services
constexpr quint8 currentData = 1;
constexpr quint8 storedCodes = 3;
constexpr quint8 vehicleInformation = 9;

constexpr quint8 answerBit = 0x40; ///< set in a request's service for its answer
constexpr quint8 currentDataAnswer = currentData | answerBit;
constexpr quint8 storedCodesAnswer = storedCodes | answerBit;

constexpr quint8 refusal = 0x7F;       ///< in place of the service: service and reason follow
constexpr quint8 answerPending = 0x78; ///< the reason of a unit that asks for time

/** @return a byte of a message, 0 beyond its end */
inline quint8 byteAt(const QByteArray &data, int index)
{
    return index < data.size() ? static_cast<quint8>(data.at(index)) : quint8(0);
}

} // namespace module::obd
