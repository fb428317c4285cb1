#pragma once

#include "report/chart.h"

class Session;

/** The main values of a drive: quantities of the car or, without any, what the gauges were sent. */
QVector<Chart> mainCurves(const Session *session);
