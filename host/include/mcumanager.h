#pragma once

#include "nordahost_global.h"

#include <QObject>

/** The microcontroller's own beeper, which sounds without the audio service. */
class NORDAHOST_EXPORT McuManager : public QObject
{
    Q_OBJECT
public:
    /** The one object: made on the first call, never null, never deleted. */
    static McuManager *instance();

    /** Sounds the beeper. @param tone  0 the ordinary click */
    void triggerBeep(int tone);

private:
    McuManager();
};
