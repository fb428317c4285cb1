#pragma once

#include "dbc/dbc.h"
#include "dbc/signalmap.h"
#include "quantities.h"

namespace ecu {

/**
 * A map read backwards: the physical value of a signal from which the map makes the value closest
 * to this one. Nothing where no value of the signal becomes any.
 */
std::optional<double> signalValue(const module::MapEntry &entry, const module::DbcSignal &signal,
                                  module::Quantity quantity, double value);

} // namespace ecu
