#pragma once

#include <QMetaMethod>
#include <QVariant>

namespace bus {

/** Converts a value to a parameter's type. @return false where that would change the value */
bool convertValue(QVariant *value, int type);

/** The same for all arguments of a method. @return false for another number of them, too */
bool convertArguments(const QMetaMethod &method, QVariantList *arguments);

/** Calls a method, or emits a signal. @param arguments  of the types of its parameters */
QVariant invokeMethod(QObject *object, const QMetaMethod &method, QVariantList arguments);

} // namespace bus
