#pragma once

#include "nordahost_global.h"

#include <QObject>

namespace svaudio {

/** Main audio sources, as far as plugins name them. */
enum SVAudio_source_id_e : int {
    SVAudio_source_module_voice = 7,
};

/** Announcements of what the main audio does, as far as plugins name them. */
enum SVAudio_status_id_e : int {
    SVAudio_status_warning_tone_start = 21,
    SVAudio_status_warning_tone_stop = 22,
    SVAudio_status_voice_information_start = 23,
    SVAudio_status_voice_information_stop = 24,
    SVAudio_status_voice_recognition_start = 25,
    SVAudio_status_voice_recognition_stop = 26,
};

/** The head unit's audio service. */
class NORDAHOST_EXPORT AudioService : public QObject
{
    Q_OBJECT
public:
    /** The one object: made on the first call, never null, never deleted. */
    static AudioService *instance();

    /** The click of a touch. @param tone  0 the ordinary click */
    void doBeep(int tone);
    /**
     * Makes a source the main one.
     * @param source  the source
     * @param fade    whether the change fades
     */
    void setMainAudioSource(SVAudio_source_id_e source, bool fade);
    /** Announces the start or the end of an interruption. */
    void setMainAudioStatus(SVAudio_status_id_e status);

signals:
    /** A beep was asked for, by a screen or through `McuManager`; the bench sounds it. */
    void beeped(int tone);

private:
    AudioService();
};

} // namespace svaudio
