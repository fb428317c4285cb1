#pragma once

#include <QtGlobal>

namespace ecu {

/** A protocol that an adapter can be set to. */
struct Protocol
{
    const char *name;
    const char *failure; ///< what comes of a request where the car has another one
};

/** By the digit of its command; null for a digit that has none. */
const Protocol *protocol(int number);

/** The one of a car with these identifiers, at 500 kbit/s. */
constexpr int protocolOf(bool isExtended)
{
    return isExtended ? 7 : 6;
}

} // namespace ecu
