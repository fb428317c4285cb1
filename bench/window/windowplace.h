#pragma once

class PanelDocks;
class QMainWindow;
class QSize;

/** Where the bench's window is on the display, and its panels around the screen. */
namespace windowplace {

/** What the display has for the window. Without a real one, as offscreen, a usual desktop's. */
QSize space(const QMainWindow *window);
/** As it was the last time, or as suits the display. */
void restore(QMainWindow *window, PanelDocks *panels);
/** Whether something is remembered of the last time. */
bool isRemembered();
void save(const QMainWindow *window);

} // namespace windowplace
