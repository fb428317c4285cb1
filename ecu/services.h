#pragma once

#include "car.h"

namespace ecu {

enum class Addressing { Functional, Physical };

/**
 * The answer of a control unit to a request of OBD-II; empty for none. To a request for all units,
 * one that does not know the service or the parameter stays silent.
 * @param unit  0 for the engine's, which knows everything; the others know the vehicle's speed
 */
QByteArray answer(const Car &car, int unit, const QByteArray &request, Addressing addressing);

/** Two bytes for a trouble code such as "P0304"; nothing for what is none. */
QByteArray troubleCodeBytes(const QString &code);

} // namespace ecu
