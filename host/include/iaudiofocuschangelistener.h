#pragma once

#include <QString>

/** Whoever asks `AudioManager` for the audio focus is told through this when it changes. */
class IAudioFocusChangeListener
{
public:
    virtual ~IAudioFocusChangeListener() = default;

    /** The focus changed. @param change  the host's code: positive gained, negative lost */
    virtual void onAudioFocusChange(int change) = 0;
    /** Tells listeners apart; unique in the process. */
    virtual QString clientId() const = 0;
};
