#pragma once

#include "nordahost_global.h"

#include <QObject>

class SrcDsplCtrl;

/** The host's event centre. */
class NORDAHOST_EXPORT EventHandler : public QObject
{
    Q_OBJECT
public:
    /** The one object: made on the first call, never null, never deleted. */
    static EventHandler *instance();

    /** Current source and display; never null. */
    SrcDsplCtrl *control() const { return m_control; }
    /** Raises a host event, such as 29 to 34, which start and stop the voice sources. */
    void onEvent(int event);

signals:
    /** A host event was raised. */
    void raised(int event);
    /** A `TouchEvent` reached the application object. */
    void touched(int code, int x, int y);

private:
    EventHandler();

    SrcDsplCtrl *m_control;
};
