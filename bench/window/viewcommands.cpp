#include "window/viewcommands.h"

#include "window/commands.h"
#include "window/paneldocks.h"
#include "window/screenview.h"
#include "window/theme.h"
#include "window/windowplace.h"

#include <QAction>
#include <QDockWidget>
#include <QMainWindow>

ViewCommands::ViewCommands(const Commands *commands, ScreenView *view, PanelDocks *panels,
                           Theme *theme, QMainWindow *window)
    : QObject(window), m_commands(commands), m_view(view), m_panels(panels), m_window(window)
{
    connectSizes();
    connectLayouts();
    connectPanels();
    for (const auto mode : {theme::Mode::Auto, theme::Mode::Light, theme::Mode::Dark})
        theme->offer(mode, commands->action(QStringLiteral("theme-") + theme::nameOf(mode)));
}

void ViewCommands::connectSizes()
{
    static constexpr double step = 1.25;
    m_commands->on("fullscreen", this, &ViewCommands::toggleFullScreen);
    m_commands->on("fit", m_view, [this] { m_view->setFactor(ScreenView::Fit); });
    m_commands->on("larger", m_view, [this] { m_view->setFactor(m_view->factor() * step); });
    m_commands->on("smaller", m_view, [this] { m_view->setFactor(m_view->factor() / step); });
}

void ViewCommands::connectLayouts()
{
    m_commands->on("layout-small", this, [this] { arrange(PanelLayout::Small); });
    m_commands->on("layout-normal", this, [this] { arrange(PanelLayout::Normal); });
    m_commands->on("layout-wide", this, [this] { arrange(PanelLayout::Wide); });
    m_commands->on("layout-reset", this,
                   [this] { arrange(PanelDocks::layoutFor(windowplace::space(m_window))); });
}

void ViewCommands::connectPanels()
{
    for (const QDockWidget *dock : m_panels->docks()) {
        const QString name = dock->objectName();
        QAction *action = m_commands->action(name);
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, name, action] {
            leaveFullScreen();
            m_panels->toggle(name);
            action->setChecked(m_panels->isInFront(name));
        });
    }
    connect(m_panels, &PanelDocks::changed, this, [this](const QString &name) {
        m_commands->action(name)->setChecked(m_panels->isInFront(name));
    });
}

void ViewCommands::toggleFullScreen()
{
    m_window->setWindowState(m_window->windowState() ^ Qt::WindowFullScreen);
}

void ViewCommands::leaveFullScreen()
{
    if (m_window->isFullScreen())
        toggleFullScreen();
}

void ViewCommands::arrange(PanelLayout layout)
{
    leaveFullScreen();
    m_view->setFactor(ScreenView::Fit);
    m_panels->arrange(layout);
}
