#include "window/windowplace.h"

#include "window/benchsettings.h"
#include "window/paneldocks.h"

#include <QScreen>

static constexpr int stateVersion = 2; // of the panels
static const QString geometryKey = QStringLiteral("geometry");
static const QString panelsKey = QStringLiteral("panels");

QSize windowplace::space(const QMainWindow *window)
{
    static constexpr QSize least(800, 600);
    static constexpr QSize usual(1920, 1080);
    const QSize available = window->screen()->availableSize();
    return available.width() > least.width() ? available : usual;
}

void windowplace::restore(QMainWindow *window, PanelDocks *panels)
{
    static constexpr QSize roomy(2200, 1200);
    const BenchSettings settings;
    const QSize all = space(window);
    panels->arrange(PanelDocks::layoutFor(all));
    const bool fillsDisplay = all.width() < roomy.width() || all.height() < roomy.height();
    window->resize(fillsDisplay ? all : all * 0.9);
    if (!window->restoreGeometry(settings.value(geometryKey).toByteArray()) && fillsDisplay &&
        all == window->screen()->availableSize())
        window->setWindowState(window->windowState() | Qt::WindowMaximized);
    window->restoreState(settings.value(panelsKey).toByteArray(), stateVersion);
}

bool windowplace::isRemembered()
{
    return BenchSettings().contains(panelsKey);
}

void windowplace::save(const QMainWindow *window)
{
    BenchSettings settings;
    settings.setValue(geometryKey, window->saveGeometry());
    settings.setValue(panelsKey, window->saveState(stateVersion));
}
