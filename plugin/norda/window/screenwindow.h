#pragma once

#include "cm/basewindow.h"
#include "norda/pages.h"

namespace norda {

/**
 * The thin shell that all windows share: builds the screen widget when the host asks for content,
 * forgets it when the host has deleted it, and leaves the rest to the host.
 */
class ScreenWindow : public cm::BaseWindow
{
    Q_OBJECT
public:
    ~ScreenWindow() override;

    QString name() override;
    void onCreate() override;
    void onDestroy() override;
    void onEnter() override;
    int backEvent() override;
    int attribute() override;
    int keyEvent(KeyEvent *event) override;

public slots:
    void onDestroyObj();

protected:
    static constexpr int FullScreen = 0x201;
    static constexpr int OwnBar = 0x200;

    /** What tells one window from another. */
    struct Shell
    {
        const char *name;
        WindowId screenId;  ///< the id for setMainWidget(), None to install nothing
        bool showStatusBar; ///< bring the host's status bar up on creation
        int attribute;      ///< FullScreen, or OwnBar to add that bit to the base's
        bool marked;        ///< writes trace marks while creating
    };

    /** @param shell  must outlive the window */
    ScreenWindow(const Shell &shell, QObject *parent);

private:
    virtual QWidget *createScreen() = 0;

    const Shell &m_shell;
    QWidget *m_screen = nullptr;
};

} // namespace norda
