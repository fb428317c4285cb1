#pragma once

#include <QString>
#include <QStringList>

/** The host's popup layer as a window may use it; handed over with `setPopup()`. */
class PopupInterface
{
public:
    virtual ~PopupInterface() = default;

    /**
     * Opens a popup; answers come through the window's `popup...` operations.
     * @param popup      the window's own number for it
     * @param text       what it shows
     * @param buttons    captions of its buttons, from left to right; may be empty
     * @param timeoutMs  how long it stays, 0 until it is closed
     */
    virtual void open(int popup, const QString &text, const QStringList &buttons,
                      int timeoutMs) = 0;
    /** Closes a popup; one that is not open is ignored. */
    virtual void close(int popup) = 0;
};
