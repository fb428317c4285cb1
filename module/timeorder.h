#pragma once

#include <QVector>

namespace module {

/**
 * Which times of a log are damaged: without them the others are in order, and no smaller choice
 * achieves that. A single time far ahead costs itself and not all that follows.
 * @return for each time, whether it is out of order
 */
QVector<bool> outOfOrder(const QVector<qint64> &times);

} // namespace module
