#pragma once

#include "adaptorlink.h"
#include "vehiclesource.h"

#include <cstdlib>

/** Looks at a source, seeks in it and plays it; a source may not lead to a wrong signal or time. */
inline void playBack(module::VehicleSource *source)
{
    static constexpr int mostEmissions = 2000;
    source->findings();
    source->statistics();
    module::AdaptorLink link;
    qint64 last = 0;
    for (const qint64 start : {qint64(0), source->durationMs() / 2, source->durationMs()}) {
        source->seek(start);
        last = start;
        for (int i = 0; i < mostEmissions && source->nextDueMs() >= 0; ++i) {
            if (source->nextDueMs() < last)
                std::abort(); // time does not run backwards
            last = source->nextDueMs();
            const module::Emission emission = source->take();
            if (!emission.isAction && !link.deliver(emission))
                std::abort(); // a source emits only what the adaptor has
        }
    }
}
