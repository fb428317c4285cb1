#pragma once

#include <QObject>

class Commands;
class PanelDocks;
class QMainWindow;
class ScreenView;
class Theme;
enum class PanelLayout;

/** The commands that change what the window shows: the screen's size, panels, layouts and theme. */
class ViewCommands : public QObject
{
    Q_OBJECT
public:
    ViewCommands(const Commands *commands, ScreenView *view, PanelDocks *panels, Theme *theme,
                 QMainWindow *window);

    void leaveFullScreen();

private:
    void connectSizes();
    void connectLayouts();
    void connectPanels();
    void toggleFullScreen();
    void arrange(PanelLayout layout);

    const Commands *m_commands;
    ScreenView *m_view;
    PanelDocks *m_panels;
    QMainWindow *m_window;
};
