#include "costruns.h"
#include "meter.h"

#include "appplugin.h"
#include "windowinterface.h"

#include <QApplication>
#include <QPluginLoader>
#include <QWidget>

/** Paints a window and dumps what that has taken. */
static void show(QWidget *window, const char *name)
{
    window->show();
    QApplication::processEvents();
    dumpTotal(name);
}

void measureStartOfPage()
{
    QPluginLoader loader(QStringLiteral(NORDA_PLUGIN_FILE));
    auto *plugin = qobject_cast<AppPlugin *>(loader.instance());
    if (!plugin)
        qFatal("%s", qPrintable(loader.errorString()));
    plugin->create();
    WindowInterface *gauges = plugin->requestWindowInterface(80);
    gauges->onCreate();
    show(gauges->mainWidget(), "start: the gauges page");
}

void measureStartOfEmptyWindow()
{
    QWidget window;
    QPalette colors = window.palette();
    colors.setColor(QPalette::Window, QColor(0x0D, 0x13, 0x1A));
    window.setPalette(colors);
    window.resize(1280, 720);
    show(&window, "start: an empty window");
}
