#pragma once

#include "nordahost_global.h"

#include <QObject>

class IAudioFocusChangeListener;

/** Grants the audio focus. */
class NORDAHOST_EXPORT AudioManager : public QObject
{
    Q_OBJECT
public:
    /** The one object: made on the first call, never null, never deleted. */
    static AudioManager *instance();

    /**
     * Asks for the focus.
     * @param stream    the host's stream number
     * @param duration  1 for a passing interruption
     * @param listener  notified when the focus changes; must outlive its focus
     * @return 0 when granted, any other value when refused
     */
    int requestAudioFocus(int stream, int duration, IAudioFocusChangeListener *listener);

    /** What `requestAudioFocus()` answers from now on; 0 at first. For benches and tests. */
    Q_INVOKABLE
    void setFocusResult(int result);

private:
    AudioManager();

    int m_focusResult = 0;
};
