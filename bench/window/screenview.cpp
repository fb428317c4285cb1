#include "window/screenview.h"

#include "palette.h"
#include "screen.h"

#include <QGraphicsProxyWidget>
#include <QKeyEvent>

ScreenView::ScreenView(Screen *screen, QWidget *parent)
    : QGraphicsView(parent), m_screen(screen), m_proxy(m_scene.addWidget(screen))
{
    m_scene.setItemIndexMethod(QGraphicsScene::NoIndex);
    m_scene.setSceneRect(screen->rect());
    setScene(&m_scene);
    setObjectName(QStringLiteral("screenView"));
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(false); // files are dropped on the window
    setRenderHint(QPainter::SmoothPixmapTransform);
    setViewportUpdateMode(MinimalViewportUpdate);
    setOptimizationFlags(DontSavePainterState | DontAdjustForAntialiasing);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent); // nothing is filled twice
    viewport()->setAutoFillBackground(false);
    setAlignment(Qt::AlignCenter);
    setFactor(Fit);
}

ScreenView::~ScreenView()
{
    m_proxy->setWidget(nullptr);
}

QSize ScreenView::sizeHint() const
{
    return m_screen->size() * (m_wanted == Fit ? 1.0 : m_wanted);
}

void ScreenView::setFactor(double factor)
{
    m_wanted = factor == Fit ? Fit : qBound(Smallest, factor, Largest);
    const Qt::ScrollBarPolicy bars =
        m_wanted == Fit ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded;
    setHorizontalScrollBarPolicy(bars);
    setVerticalScrollBarPolicy(bars);
    scaleScreen();
    updateGeometry();
}

void ScreenView::scaleScreen()
{
    const double fitting =
        qMin(double(width()) / m_screen->width(), double(height()) / m_screen->height());
    // Pictures are sharpest at their own size, which is worth a narrow edge.
    const bool isNearlyOne = fitting >= 1 && fitting < 1.05;
    m_factor = m_wanted != Fit ? m_wanted : isNearlyOne ? 1 : qMax(fitting, Smallest);
    // Smoothing costs as much as drawing where nothing is scaled.
    setRenderHint(QPainter::SmoothPixmapTransform, !qFuzzyCompare(m_factor, 1));
    setTransform(QTransform::fromScale(m_factor, m_factor));
    emit factorChanged(m_factor);
}

void ScreenView::paintEvent(QPaintEvent *event)
{
    m_screen->countFrame();
    QGraphicsView::paintEvent(event);
}

/** What surrounds the screen, which paints all of itself. */
void ScreenView::drawBackground(QPainter *painter, const QRectF &rect)
{
    if (!sceneRect().contains(rect))
        painter->fillRect(rect, night::background.darker(150));
}

void ScreenView::resizeEvent(QResizeEvent *event)
{
    QGraphicsView::resizeEvent(event);
    if (m_wanted == Fit)
        scaleScreen();
}

/** Keys are the window's, which sends them to the open page as a head unit does. */
void ScreenView::keyPressEvent(QKeyEvent *event)
{
    event->ignore();
}
