#pragma once

#include <QByteArray>

class CurveList;

/**
 * The samples of all curves as CSV: a row for each time that one of them has, in seconds, with the
 * values that hold then. A value that is unknown is empty.
 */
QByteArray curvesAsCsv(const CurveList &curves);
