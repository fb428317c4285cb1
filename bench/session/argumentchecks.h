#pragma once

#include <QVariant>

// What may stand behind a word of a scenario. Each check says false and, where it knows better than
// the word's own description, what was expected.

using Arguments = QVariantList;

bool isNothing(const Arguments &values, QString *error);
bool isOneNumber(const Arguments &values, QString *error);
/** In seconds. */
bool isTime(const Arguments &values, QString *error);
/** A widget's name, one with a place in it, or a place on the screen. */
bool isPlace(const Arguments &values, QString *error);
bool isBarePlace(const Arguments &values, QString *error);
bool isFault(const Arguments &values, QString *error);
bool isControl(const Arguments &values, QString *error);
bool isFocus(const Arguments &values, QString *error);
bool isSignal(const Arguments &values, QString *error);
bool isHostCall(const Arguments &values, QString *error);
/** Something to call by name, which is not known before. */
bool isCall(const Arguments &values, QString *error);

/** Emits a signal of the module: its name and the arguments. */
bool emitSignal(const Arguments &values, QString *error);
/** Calls a method of an object: its description, the method, and the arguments. */
bool callByName(QObject *object, const Arguments &values, QString *error);
/** The same for an object of the host, by its name. */
bool callHostObject(const Arguments &values, QString *error);
