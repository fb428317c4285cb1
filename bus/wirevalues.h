#pragma once

#include "linkmembers.h"

#include <QMetaMethod>
#include <QVariant>

namespace bus {

/** Makes the types of the interface known to the bus; to be called before the first message. */
void registerWireTypes();

/**
 * The arguments of a message as the types of a method's parameters.
 * @return false where a value has another type; nothing is converted
 */
bool fromWire(const QMetaMethod &method, QVariantList *arguments);

/** A value of a message as a type of the meta-type system; invalid if it is another one. */
QVariant fromWire(const QVariant &value, int type);

} // namespace bus
