#pragma once

#include "nordahost_global.h"

#include <QByteArray>
#include <QEvent>

/** An event that carries plain bytes; the base of what plugins post to the application object. */
class NORDAHOST_EXPORT SimpleEvent : public QEvent
{
public:
    /**
     * @param type     the event type, 1000 or above
     * @param payload  what the event carries
     */
    SimpleEvent(int type, const QByteArray &payload);
    ~SimpleEvent() override;

    /** What the event carries. */
    const QByteArray &payload() const { return m_payload; }

private:
    QByteArray m_payload;
};

namespace Qx {

/** Navigation codes that the host understands in a `TouchEvent`. */
enum Touch : int {
    TouchCamera = 61,   ///< the camera view
    TouchGauges = 87,   ///< window 80
    TouchVehicle = 88,  ///< window 81
    TouchClimate = 89,  ///< window 82
    TouchParking = 90,  ///< window 83
    TouchSettings = 91, ///< window 84
    TouchAbout = 92,    ///< window 85
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
    /** The Qt event type of all navigation events. */
    static constexpr int EventType = 1008;

    /**
     * @param code  where to go
     * @param x, y  where the touch was; -1 and -1 when it has no place
     */
    TouchEvent(Qx::Touch code, int x, int y);
    ~TouchEvent() override;
};
