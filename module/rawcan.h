#pragma once

#include "carfiles.h"
#include "samplesource.h"

#include <optional>

namespace module {

/**
 * Reads a candump log of a car's own frames. Frames that the DBC file does not know and damaged
 * lines are ignored and counted.
 * @param error  one line that names the file, when it holds no values to play
 */
std::optional<SampleLog> readRawCan(const QString &path, const CarFiles &car, QString *error);

} // namespace module
