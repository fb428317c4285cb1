#pragma once

#include "nordahost_global.h"

#include <QObject>

namespace mem {

class SettingsExe;

/**
 * The head unit's display preferences. The object and its notifications are the host's; the
 * accessors of the camera and split-view preferences are compiled into the plugin that uses them.
 */
class NORDAHOST_EXPORT SettingsUtil : public QObject
{
    Q_OBJECT
public:
    /** The one object: made on the first call, never null, never deleted. */
    static SettingsUtil *instance();

    /** The saver of the preferences; never null. */
    SettingsExe *getSaver() const { return m_saver; }

    /** The camera input, 0 for none. */
    NORDA_PLUGIN_SIDE int getCameraInput(int defaultValue = 0);
    /** Whether a rear camera is connected. */
    NORDA_PLUGIN_SIDE bool getRearInput(bool defaultValue = true);
    /** Whether a front camera is connected. */
    NORDA_PLUGIN_SIDE bool getFrontInput(bool defaultValue = true);
    /** Whether the split view is preferred. */
    NORDA_PLUGIN_SIDE bool getVantiqSplit(bool defaultValue = false);
    /**
     * Stores whether the module's camera is on.
     * @param on      true for on
     * @param notify  whether the host is notified
     */
    NORDA_PLUGIN_SIDE void setVantiqCamera(bool on, bool notify);
    /**
     * Stores the split-view preference.
     * @param on      true for the split view
     * @param notify  whether the host is notified
     */
    NORDA_PLUGIN_SIDE void setVantiqSplit(bool on, bool notify);

signals:
    /** The module's camera was switched. */
    void VantiqCamera(int on);
    /** The split-view preference changed. */
    void VantiqSplit(int on);

private:
    SettingsUtil();

    SettingsExe *m_saver;
};

} // namespace mem
