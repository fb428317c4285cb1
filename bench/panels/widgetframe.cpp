#include "panels/widgetframe.h"

#include "palette.h"

#include <QPainter>

WidgetFrame::WidgetFrame(QWidget *screen) : QWidget(screen)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
}

WidgetFrame::~WidgetFrame() = default;

void WidgetFrame::surround(const QWidget *widget)
{
    const QWidget *screen = parentWidget();
    const bool isSeen =
        widget && widget != screen && screen->isAncestorOf(widget) && widget->isVisibleTo(screen);
    if (isSeen) {
        setGeometry(QRect(widget->mapTo(screen, QPoint()), widget->size()));
        raise();
    }
    setVisible(isSeen);
}

void WidgetFrame::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(QPen(night::amber, 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}
