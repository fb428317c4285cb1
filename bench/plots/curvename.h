#pragma once

#include "quantities.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

class Journal;
class QuantityLog;

/**
 * Names a value in the arguments of a signal: "doorStatus.bits", or for an element of a list, a
 * byte array or a map "tirePressureStatus.values[0]". Or a quantity of the car by its path:
 * "Vehicle.Speed".
 */
struct CurveName
{
    QString signal;
    int argument = 0;
    QString element;       ///< an index or a key; empty for the argument itself
    int unitArgument = -1; ///< the argument that holds the unit as a text
    module::Quantity quantity = module::Quantity::Count; ///< Count for a value of a signal

    bool isQuantity() const { return quantity != module::Quantity::Count; }

    /** @return nothing for a signal or an argument that does not exist */
    static std::optional<CurveName> parse(const QString &text);
};

/** A number, and its unit where that is known. */
struct Reading
{
    double value = 0;
    QString unit;
};

/** Reads a number, a flag, or a text that begins with a number, such as "34 psi". */
std::optional<Reading> readingOf(const QVariant &value);
/** Reads what a name stands for. */
std::optional<Reading> readingOf(const CurveName &name, const QVariantList &arguments);

/**
 * The names of a signal's values: its numeric arguments and, once the signal has occurred, what its
 * last arguments hold.
 */
QStringList curvesOf(const QString &signal, const Journal *journal);
/** Those of all signals, and of the quantities that have a value. */
QStringList offeredCurves(const Journal *journal, const QuantityLog &quantities);
