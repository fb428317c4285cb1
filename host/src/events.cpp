#include "keyevent.h"
#include "touchevent.h"

KeyEvent::KeyEvent(QEvent::Type type, int key) : QEvent(type), m_key(key) {}

KeyEvent::~KeyEvent() = default;

SimpleEvent::SimpleEvent(int type, const QByteArray &payload)
    : QEvent(QEvent::Type(type)), m_payload(payload)
{
}

SimpleEvent::~SimpleEvent() = default;

static QByteArray touchPayload(qint32 code, qint32 x, qint32 y)
{
    const qint32 fields[] = {TouchEvent::EventType, code, x, y};
    return QByteArray(reinterpret_cast<const char *>(fields), sizeof fields);
}

TouchEvent::TouchEvent(Qx::Touch code, int x, int y)
    : SimpleEvent(EventType, touchPayload(code, x, y))
{
}

TouchEvent::~TouchEvent() = default;
