#pragma once

/** The host's status bar as a window may use it; handed over with `setStatusBar()`. */
class StatusBarInterface
{
public:
    virtual ~StatusBarInterface() = default;

    /** Shows or hides the status bar. */
    virtual void setVisible(bool on) = 0;
    /** Lets the status bar leave by itself after a while without touches. */
    virtual void setAutoHide(bool on) = 0;
};
