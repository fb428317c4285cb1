#pragma once

#include "nordahost_global.h"

#include <QByteArray>
#include <QObject>

namespace spplfctrl {

/** Control of the head unit's platform. */
class NORDAHOST_EXPORT SPPlatformControl : public QObject
{
    Q_OBJECT
public:
    /** The one object: made on the first call, never null, never deleted. */
    static SPPlatformControl *GetInstance();

    /** Routes a video input to the screen. @param input  0 the module's  @param flags  256 split */
    void setVideoPath(int input, int flags);
    /** Version of the audio firmware as the platform reports it; valid until the next call. */
    const char *getAudioFirmwareVersion();

    /** What `getAudioFirmwareVersion()` answers from now on. For benches and tests. */
    Q_INVOKABLE
    void setAudioFirmwareVersion(const QString &version);

signals:
    /** A video input was routed. */
    void videoPathChanged(int input, int flags);

private:
    SPPlatformControl();

    QByteArray m_audioFirmwareVersion;
};

} // namespace spplfctrl
