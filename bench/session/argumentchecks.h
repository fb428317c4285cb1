#pragma once

#include <QVariant>

// The arguments that a word of a scenario accepts. A check that knows more than the word's own
// description sets the error.

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
bool isLanguage(const Arguments &values, QString *error);
bool isSignal(const Arguments &values, QString *error);
bool isHostCall(const Arguments &values, QString *error);
/** A widget and a method of it; whether they exist is known only when it is called. */
bool isCall(const Arguments &values, QString *error);
