#pragma once

#include "adapter/adapterstate.h"

#include <QByteArrayList>

namespace ecu {

/** How an adapter prints a frame: usually one line, and the length before a long message. */
QByteArrayList answerLines(const module::CanFrame &frame, const AdapterState &state);

} // namespace ecu
