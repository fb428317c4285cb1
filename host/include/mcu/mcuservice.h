#pragma once

#include "nordahost_global.h"

#include <QObject>

namespace mcu {

/** Commands to the microcontroller that mixes the speakers. */
class NORDAHOST_EXPORT McuService : public QObject
{
    Q_OBJECT
public:
    /** The one object: made on the first call, never null, never deleted. */
    static McuService *instance();

    /**
     * Switches speaker locations of the mix.
     * @param channels  one bit per location, bits 0 to 5; 63 is all of them
     * @param on        1 on, 0 off
     */
    void setMixChannel(unsigned char channels, unsigned char on);

private:
    McuService();
};

} // namespace mcu
