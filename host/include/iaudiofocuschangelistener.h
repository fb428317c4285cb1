#pragma once

#include <QString>

/** Receives the changes of the audio focus that was requested from `AudioManager`. */
class IAudioFocusChangeListener
{
public:
    virtual ~IAudioFocusChangeListener() = default;

    /** The focus changed. @param change  the host's code: positive gained, negative lost */
    virtual void onAudioFocusChange(int change) = 0;
    /** Tells listeners apart; unique in the process. */
    virtual QString clientId() const = 0;
};
