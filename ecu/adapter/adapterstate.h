#pragma once

#include "live/canframe.h"

#include <optional>

namespace ecu {

/** What the commands to an adapter set. */
struct AdapterState
{
    static constexpr int UsualTimeout = 0x32;

    bool echoes = true;
    bool sendsLineFeeds = false;
    bool spacesBytes = true;
    bool showsHeaders = false;
    bool showsLength = false;
    bool formatsData = true; ///< lengths and sequence numbers of frames are its own affair
    bool controlsFlow = true;
    bool awaitsAnswers = true;
    int adaptiveTiming = 1;
    int timeout = UsualTimeout; ///< in units of 4 ms

    struct Header
    {
        quint32 value = 0;
        int digits = 0;
    };
    std::optional<Header> header; ///< of requests
    std::optional<quint32> filter;
    quint32 mask = 0x1FFFFFFF; ///< of the filter
    quint8 priority = 0x18;    ///< first byte of a header of 29 bits that is given as three

    int protocol = 0; ///< 0 until one is set or found
    bool searches = true;

    bool claimsTooMuch = false; ///< a version that it is not

    /** The protocol stays. */
    void setDefaults();
    /** As after it was plugged in. */
    void reset();

    /** The identifier of the next request. */
    quint32 requestId(bool isExtended) const;
    /** Whether it shows a frame. */
    bool accepts(const module::CanFrame &frame) const;
};

} // namespace ecu
