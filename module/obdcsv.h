#pragma once

#include "samplesource.h"

#include <optional>

namespace module {

/** The speed, in rows per second, of a file without a time. */
constexpr double assumedRowsPerSecond = 1.0;

/**
 * Reads an OBD-II export of a logging app: a header row, then a row per moment. Columns are found
 * by their meaning, units converted, and the time taken from a time column, from the engine's run
 * time, or from the rows themselves. Missing, damaged and implausible values are counted, never
 * shown.
 * @param error  one line that names the file and the line, when it cannot be played
 */
std::optional<SampleLog> readObdCsv(const QString &path, QString *error);

} // namespace module
