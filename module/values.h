#pragma once

#include <QJsonArray>
#include <QJsonValue>
#include <QMetaMethod>
#include <QVariant>

namespace module {

// Arguments of signals and calls as JSON, as recordings and scenarios write them: byte arrays are
// hex texts, null for a null array; maps are objects with the keys as texts; an element of a list
// of any kind is an object with its type as the key.

QJsonValue toJson(const QVariant &value);
QJsonArray toJson(const QVariantList &arguments);

/** The same as a text: what a line of a recording has for it. */
QString jsonText(const QVariant &value);
/** Arguments by spaces. */
QString argumentsText(const QVariantList &arguments);

/** @return an invalid value for JSON of another shape than this type's */
QVariant fromJson(const QJsonValue &json, int type);

/**
 * Brings arguments, typed or as JSON has them, to what a method takes.
 * @param error  what was expected there instead
 */
bool bindArguments(const QMetaMethod &method, QVariantList *arguments, QString *error);
/** Calls a method, or emits a signal, with arguments of its own types. */
void invokeMethod(QObject *object, const QMetaMethod &method, QVariantList arguments);

} // namespace module
