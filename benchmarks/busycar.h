#pragma once

#include "carfiles.h"
#include "live/canframe.h"

class QByteArray;
class QDir;
class QString;

/** A car whose bus of 500 kbit/s is full, with a DBC file and a map that feed every quantity. */
namespace busycar {

/** Of eight bytes, with 125 bits each on the bus: some of them are stuffed. */
constexpr int framesPerSecond = 4000;
/** The message that carries the engine speed, in its first byte. */
constexpr quint32 engineId = 0x100;
/** How often the map takes the engine speed. */
constexpr int engineIntervalMs = 20;

/** A frame by its number. Each signal goes through its range in some seconds, at its own pace. */
module::CanFrame frame(int number);
/** An engine speed as the first byte of its message. */
char engineByte(double rpm);
/** Writes the DBC file and the map. */
module::CarFiles filesIn(const QDir &folder);
/** Writes a file, or ends the process. */
void write(const QString &path, const QByteArray &content);

} // namespace busycar
