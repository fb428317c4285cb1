#pragma once

#include <QJsonValue>
#include <QVariant>

namespace module {

/** All that depends on the type of an argument of a signal or a command, in one table. */
struct ValueType
{
    int id;                  ///< of the meta-type system
    const char *expectation; ///< what a message expects where the value does not fit
    const char *emptyText;   ///< an empty list, map or byte array in JSON; null for other types

    QJsonValue (*toJson)(const QVariant &value);
    /** @return an invalid value for JSON of another shape */
    QVariant (*fromJson)(const QJsonValue &json);

    // For fault injection, null where a value of this type cannot be damaged in that way.
    int (*length)(const QVariant &value);
    QVariant (*truncated)(const QVariant &value, int length);
    QVariant (*outOfRange)(const QVariant &value);
};

/** The row of a type, null for one that no signal or command of the adaptor takes. */
const ValueType *valueType(int id);

} // namespace module
