#pragma once

#include <QMetaEnum>
#include <QMetaProperty>
#include <QString>
#include <QVariant>

// Properties as texts for a person, and back.

/** The keys of flags, as "AlignLeft | AlignVCenter"; what has no key is appended as a number. */
QString flagsText(const QMetaEnum &keys, int value);
/** A value: sizes, fonts, colours and the like in words, everything else as JSON. */
QString valueText(const QVariant &value);
/** The same for a property: enums and flags by name. */
QString propertyText(const QMetaProperty &property, const QVariant &value);

/** Whether a person can edit it: a truth value, a number, a text, an enum or flags. */
bool isEditable(const QMetaProperty &property);
/**
 * Writes a value that was edited: enums and flags as texts.
 * @param error  one line with what was expected, or what the object made of it
 */
bool writeProperty(QObject *object, const QMetaProperty &property, const QVariant &value,
                   QString *error);
