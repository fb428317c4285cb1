#include "window/paneldocks.h"

#include "window/commands.h"

#include <QApplication>
#include <QDockWidget>

#include <algorithm>
#include <iterator>

/** Places around the screen; panels at the same one are tabs. */
enum Spot { Left, Right, LowerRight, Bottom, BottomRight, SpotCount };

struct PanelRow
{
    const char *name;
    Spot wide; // in the wide layout; the others have only Right and Bottom
    bool isFront;
};

static constexpr PanelRow panelRows[] = {
    {"service", Left, true},      {"signals", Right, true},    {"calls", LowerRight, true},
    {"car", Left, false},         {"inspector", Left, false},  {"timeline", Bottom, true},
    {"plots", BottomRight, true}, {"warnings", Bottom, false}, {"audio", BottomRight, false},
};

struct LayoutRow
{
    QSize least; // space of the display
    bool isWide;
    bool showsBottom;
    int left;
    int right;
    int bottom;
};

// In the order of PanelLayout. The normal one leaves the screen its 1280 x 720 on a Full HD
// display.
static constexpr LayoutRow layouts[] = {
    {{0, 0}, false, false, 0, 340, 210},
    {{1700, 900}, false, true, 0, 620, 230},
    {{2400, 1200}, true, true, 420, 520, 300},
};

static const LayoutRow &rowOf(PanelLayout layout)
{
    return layouts[int(layout)];
}

static Spot spotOf(const PanelRow &row, bool isWide)
{
    if (isWide)
        return row.wide;
    return row.wide == Bottom || row.wide == BottomRight ? Bottom : Right;
}

PanelDocks::PanelDocks(QMainWindow *window, QWidget *home)
    : QObject(window), m_window(window), m_home(home)
{
    window->setDockOptions(QMainWindow::AnimatedDocks | QMainWindow::AllowTabbedDocks |
                           QMainWindow::AllowNestedDocks);
    window->setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    window->setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    window->setTabPosition(Qt::AllDockWidgetAreas, QTabWidget::North);
}

void PanelDocks::add(const QString &name, QWidget *panel)
{
    auto *dock = new QDockWidget(QString(commandRow(name).text).remove(QLatin1Char('&')), m_window);
    dock->setObjectName(name);
    dock->setWidget(panel);
    panel->setFocusPolicy(Qt::ClickFocus); // otherwise a detached one puts it into its first field
    m_docks.append(dock);
    connect(dock, &QDockWidget::visibilityChanged, this, [this, dock](bool visible) {
        // A covered panel keeps the focus, and would take keys that nobody sees go there.
        if (!visible && dock->isAncestorOf(QApplication::focusWidget()))
            m_home->setFocus();
        emit changed(dock->objectName());
    });
}

QDockWidget *PanelDocks::dock(const QString &name) const
{
    const auto found =
        std::find_if(m_docks.begin(), m_docks.end(),
                     [&name](const QDockWidget *dock) { return dock->objectName() == name; });
    Q_ASSERT(found != m_docks.end());
    return *found;
}

PanelLayout PanelDocks::layoutFor(QSize space)
{
    int layout = int(std::size(layouts)) - 1;
    while (layout > 0 && (space.width() < layouts[layout].least.width() ||
                          space.height() < layouts[layout].least.height()))
        --layout;
    return PanelLayout(layout);
}

/** The first at a spot makes it, beside the spot that it divides. */
void PanelDocks::place(QDockWidget *dock, int spot)
{
    if (QDockWidget *first = m_firstAt.value(spot))
        m_window->tabifyDockWidget(first, dock);
    else if (spot == LowerRight)
        m_window->splitDockWidget(m_firstAt.value(Right), dock, Qt::Vertical);
    else if (spot == BottomRight)
        m_window->splitDockWidget(m_firstAt.value(Bottom), dock, Qt::Horizontal);
    else
        m_window->addDockWidget(spot == Left    ? Qt::LeftDockWidgetArea
                                : spot == Right ? Qt::RightDockWidgetArea
                                                : Qt::BottomDockWidgetArea,
                                dock);
    if (!m_firstAt.contains(spot))
        m_firstAt.insert(spot, dock);
}

void PanelDocks::arrange(PanelLayout layout)
{
    m_layout = layout;
    const LayoutRow &row = rowOf(layout);
    for (QDockWidget *dock : qAsConst(m_docks)) {
        dock->setFloating(false);
        m_window->removeDockWidget(dock);
    }
    m_firstAt.clear();
    // A spot is divided before it gets tabs.
    for (const bool isFront : {true, false}) {
        for (const PanelRow &panel : panelRows) {
            const Spot spot = spotOf(panel, row.isWide);
            if (panel.isFront == isFront)
                place(dock(QLatin1String(panel.name)), spot);
            dock(QLatin1String(panel.name))->setVisible(spot != Bottom || row.showsBottom);
        }
    }
    for (QDockWidget *first : qAsConst(m_firstAt))
        first->raise();
    resizePanels();
}

void PanelDocks::resizePanels()
{
    const LayoutRow &row = rowOf(m_layout);
    const auto resize = [this](int spot, int size, Qt::Orientation orientation) {
        if (QDockWidget *first = m_firstAt.value(spot))
            m_window->resizeDocks({first}, {size}, orientation);
    };
    resize(Left, row.left, Qt::Horizontal);
    resize(Right, row.right, Qt::Horizontal);
    resize(Bottom, row.bottom, Qt::Vertical);
}

bool PanelDocks::isInFront(const QString &name) const
{
    const QDockWidget *wanted = dock(name);
    return wanted->isVisible() && !wanted->visibleRegion().isEmpty();
}

void PanelDocks::show(const QString &name)
{
    QDockWidget *shown = dock(name);
    shown->show();
    shown->raise();
    if (shown->isFloating())
        shown->activateWindow();
    shown->widget()->setFocus();
}

void PanelDocks::toggle(const QString &name)
{
    QDockWidget *toggled = dock(name);
    const bool isCovered = toggled->isFloating() && !toggled->isActiveWindow();
    if (!isInFront(name) || isCovered) {
        show(name);
        return;
    }
    const bool hadFocus = toggled->isAncestorOf(QApplication::focusWidget());
    toggled->hide();
    if (hadFocus)
        m_home->setFocus();
}

void PanelDocks::setAllHidden(bool hidden)
{
    if (hidden) {
        m_hiddenState = m_window->saveState();
        for (QDockWidget *dock : qAsConst(m_docks))
            dock->hide();
    } else {
        m_window->restoreState(m_hiddenState);
    }
}
