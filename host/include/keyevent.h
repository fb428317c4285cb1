#pragma once

#include "nordahost_global.h"

#include <QEvent>

/** A hardware key of the head unit, handed to the window or source that has the input. */
class NORDAHOST_EXPORT KeyEvent : public QEvent
{
public:
    /** @param type  QEvent::KeyPress or QEvent::KeyRelease  @param key  the host's key code */
    KeyEvent(QEvent::Type type, int key);
    ~KeyEvent() override;

    /** The host's key code. */
    int key() const { return m_key; }

private:
    int m_key;
};
