#pragma once

#include <QByteArray>
#include <QString>
#include <QtPlugin>

class KeyEvent;

/**
 * What the host knows of an audio source. The order of the operations is the order of their slots
 * and is fixed. All calls come on the GUI thread.
 */
class SourceInterface
{
public:
    virtual ~SourceInterface() = default;

    /** The source's name in the host's audio policy. */
    virtual QString name() const = 0;
    /** Starts to play. @param argument  what the requester passed, usually empty */
    virtual void start(const QByteArray &argument) = 0;
    /** Stops and gives the audio back. */
    virtual void stop(const QByteArray &argument) = 0;
    /** The user paused the source; a source that cannot pause leaves this as it is. */
    virtual void pause() {}
    /** The user resumed the source. */
    virtual void play() {}
    /** A hardware key. @return 1 when the source used it, 0 to let the host handle it */
    virtual int keyEvent(KeyEvent *event)
    {
        Q_UNUSED(event)
        return 0;
    }
    /** The source's attribute bits; their meaning is the host's. */
    virtual int attribute() { return 0; }
};

Q_DECLARE_INTERFACE(SourceInterface, "com.stavel.Plugin.SourceInterface/1.0")
