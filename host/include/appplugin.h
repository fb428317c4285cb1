#pragma once

#include <QList>
#include <QtPlugin>

class SourceInterface;
class WindowInterface;

/**
 * A plugin's root as the host knows it. The order of the operations is the order of their slots
 * and is fixed. All calls come on the GUI thread.
 *
 * The host loads the library, casts the instance to this interface, calls `create()` once, reads
 * the two id lists and then requests objects by id whenever it first needs them.
 */
class AppPlugin
{
public:
    virtual ~AppPlugin() = default;

    /** Starts the plugin; called once, before any request. */
    virtual void create() = 0;
    /** The ids of the windows that the plugin offers. */
    virtual QList<int> windowInterfaceID() = 0;
    /** The ids of the audio sources that the plugin offers. */
    virtual QList<int> sourceInterfaceID() = 0;
    /** @return the window of an id, the same on every call; null for an unknown id */
    virtual WindowInterface *requestWindowInterface(int id) = 0;
    /** @return the audio source of an id, the same on every call; null for an unknown id */
    virtual SourceInterface *requestSourceInterface(int id) = 0;
};

Q_DECLARE_INTERFACE(AppPlugin, "com.stavel.Plugin.AppPlugin/1.0")
