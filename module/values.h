#pragma once

#include <QJsonArray>
#include <QJsonValue>
#include <QMetaMethod>
#include <QVariant>

namespace module {

// Arguments of signals and calls in JSON, as recordings and scenarios write them: byte arrays are
// hex texts, null for a null array; maps are objects with the keys as texts; an element of a list
// of mixed types is an object with its type as the key.

QJsonValue toJson(const QVariant &value);
QJsonArray toJson(const QVariantList &arguments);

/** The JSON of a value as a text, as in a line of a recording. */
QString jsonText(const QVariant &value);
/** The texts of all arguments, separated by spaces. */
QString argumentsText(const QVariantList &arguments);

/** @return an invalid value for JSON of another shape than this type's */
QVariant fromJson(const QJsonValue &json, int type);

/**
 * Converts arguments, typed or as JSON has them, to the types of a method's parameters.
 * @param error  what was expected instead
 */
bool bindArguments(const QMetaMethod &method, QVariantList *arguments, QString *error);

} // namespace module
