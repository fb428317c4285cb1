#include "screen.h"

#include "cameraview.h"
#include "cm/statusbarcontrol.h"
#include "palette.h"
#include "statuscolumn.h"

#include <QEvent>

#include <algorithm>

static const QRect wholeView(StatusColumn::Width, 0, 1280 - StatusColumn::Width, 720);
// Between the title strip and the navigation bar, over the keys of the parking page.
static const QRect splitView(StatusColumn::Width, 89, 440, 531);

Screen::Screen(QWidget *parent)
    : QWidget(parent), m_statusColumn(new StatusColumn(this)), m_camera(new CameraView(this))
{
    setFixedSize(1280, 720);
    setAutoFillBackground(true);
    setPalette(night::palette());
    m_camera->setGeometry(wholeView);
    m_camera->hide();

    cm::StatusBarControl *bar = cm::StatusBarControl::instance();
    connect(bar, &cm::StatusBarControl::hiddenChanged, m_statusColumn, &QWidget::setHidden);
    m_statusColumn->setHidden(bar->isHidden());
}

void Screen::adopt(QWidget *page)
{
    if (page->parentWidget() == this)
        return;
    page->setParent(this);
    page->move(0, 0);
    m_statusColumn->raise();
}

/** One of a class among those that can be seen, as they follow each other. */
QWidget *Screen::nthSeen(const QByteArray &className, int number) const
{
    for (QWidget *widget : findChildren<QWidget *>()) {
        if (widget->isVisible() && className == widget->metaObject()->className() && number-- == 0)
            return widget;
    }
    return nullptr;
}

QString Screen::nameOf(const QWidget *wanted) const
{
    if (!wanted->objectName().isEmpty())
        return wanted->objectName();
    const QByteArray className = wanted->metaObject()->className();
    int number = 0;
    for (const QWidget *widget : findChildren<QWidget *>()) {
        if (widget == wanted)
            break;
        number += widget->isVisible() && className == widget->metaObject()->className();
    }
    return QStringLiteral("%1#%2").arg(QLatin1String(className)).arg(number);
}

QWidget *Screen::widgetNamed(const QString &name) const
{
    QList<QWidget *> found = findChildren<QWidget *>(name);
    if (found.isEmpty() && name.contains(QLatin1Char('#')))
        return nthSeen(name.section(QLatin1Char('#'), 0, 0).toLatin1(),
                       name.section(QLatin1Char('#'), 1).toInt());
    const auto seen = std::find_if(found.begin(), found.end(),
                                   [](const QWidget *widget) { return widget->isVisible(); });
    return seen != found.end() ? *seen : found.value(0);
}

void Screen::setSplit(bool on)
{
    m_split = on;
    m_camera->setGeometry(on ? splitView : wholeView);
}

void Screen::showCamera(bool on)
{
    if (on && !m_cameraShown)
        m_camera->updateWarning();
    m_cameraShown = on;
    m_camera->setVisible(on);
    m_camera->raise();
}

// A window turns what was invalidated into one frame when it receives this event.
bool Screen::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_watchedWindow && event->type() == QEvent::UpdateRequest)
        ++m_frames;
    return false;
}

void Screen::showEvent(QShowEvent *)
{
    if (m_watchedWindow == window())
        return;
    m_watchedWindow = window();
    m_watchedWindow->installEventFilter(this);
}
