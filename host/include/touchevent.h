#pragma once

#include "nordahost_global.h"

#include <QByteArray>
#include <QEvent>

/** An event that carries plain bytes; the base of what plugins post to the application object. */
class NORDAHOST_EXPORT SimpleEvent : public QEvent
{
public:
    SimpleEvent(int type, const QByteArray &payload);
    ~SimpleEvent() override;

    const QByteArray &payload() const { return m_payload; }

private:
    QByteArray m_payload;
};

namespace Qx {

/** Navigation codes that the host understands in a `TouchEvent`. */
enum Touch : int {
    TouchCamera = 61,
    TouchGauges = 87,
    TouchVehicle = 88,
    TouchClimate = 89,
    TouchParking = 90,
    TouchSettings = 91,
    TouchAbout = 92,
};

} // namespace Qx

/**
 * A request for navigation, posted to the application object; the host opens the window that
 * belongs to the code after the poster has returned to the event loop.
 *
 * The payload is four 32-bit integers in the machine's byte order: the event type, code, x, y.
 */
class NORDAHOST_EXPORT TouchEvent : public SimpleEvent
{
public:
    static constexpr int EventType = 1008;

    /** @param x, y  where the touch was; -1 and -1 when it has no place */
    TouchEvent(Qx::Touch code, int x, int y);
    ~TouchEvent() override;
};
