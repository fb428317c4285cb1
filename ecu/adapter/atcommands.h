#pragma once

#include "adapter/adapterstate.h"
#include "car.h"

namespace ecu {

/**
 * Carries out a command to the adapter itself.
 * @param command  without its "AT", in capitals and without spaces
 * @return its answer, "?" for what the adapter does not know
 */
QByteArray carryOut(const QByteArray &command, const Car &car, AdapterState *state);

} // namespace ecu
