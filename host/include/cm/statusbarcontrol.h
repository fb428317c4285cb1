#pragma once

#include "nordahost_global.h"

#include <QObject>

namespace cm {

/** Shows and hides the host's status bar. */
class NORDAHOST_EXPORT StatusBarControl : public QObject
{
    Q_OBJECT
    /** Whether the status bar is hidden. */
    Q_PROPERTY(bool hidden READ isHidden NOTIFY hiddenChanged)
public:
    /** The one object: made on the first call, never null, never deleted. */
    static StatusBarControl *instance();

    /** @param hidden  true hides the status bar, false shows it */
    void sethide(bool hidden);
    /** Whether the status bar is hidden; false at first. */
    bool isHidden() const { return m_hidden; }

signals:
    /** The status bar was hidden (true) or shown (false). */
    void hiddenChanged(bool hidden);

private:
    StatusBarControl();

    bool m_hidden = false;
};

} // namespace cm
