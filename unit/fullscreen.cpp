#include "fullscreen.h"

#include "headunit.h"

#include <QKeyEvent>
#include <QScreen>

FullScreen::FullScreen(HeadUnit *unit) : m_unit(unit)
{
    setWindowTitle(tr("Head unit"));
    setWindowFlag(Qt::FramelessWindowHint);
    setAutoFillBackground(true);
    setPalette(QPalette(Qt::black));
    setGeometry(screen()->geometry()); // nobody else does where there is no window manager
    unit->screen()->setParent(this);
}

FullScreen::~FullScreen()
{
    m_unit->screen()->setParent(nullptr);
}

/** From the upper left corner where the display is smaller. */
static QPoint placeOf(const QSize &screen, const QSize &display)
{
    return {qMax(0, (display.width() - screen.width()) / 2),
            qMax(0, (display.height() - screen.height()) / 2)};
}

void FullScreen::resizeEvent(QResizeEvent *event)
{
    m_unit->screen()->move(placeOf(m_unit->screen()->size(), event->size()));
}

void FullScreen::showEvent(QShowEvent *)
{
    const QSize wanted = m_unit->screen()->size();
    const QSize display = screen()->size();
    if (display.width() < wanted.width() || display.height() < wanted.height())
        qWarning("display: expected at least %d x %d, got %d x %d: the pages are cut off",
                 wanted.width(), wanted.height(), display.width(), display.height());
}

void FullScreen::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        setWindowTitle(tr("Head unit"));
}

void FullScreen::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Back || event->key() == Qt::Key_Escape)
        m_unit->windows()->back();
    else
        m_unit->windows()->pressKey(event->key());
}
