#include "scrolllabel.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

ScrollLabel::ScrollLabel(QWidget *parent) : QLabel(parent) {}

ScrollLabel::~ScrollLabel() = default;

int ScrollLabel::overflow() const
{
    return qMax(0, fontMetrics().horizontalAdvance(text()) - contentsRect().width());
}

void ScrollLabel::setScrollOffset(int pixels)
{
    const int offset = qBound(0, pixels, overflow());
    if (offset == m_offset)
        return;
    m_offset = offset;
    update();
}

void ScrollLabel::paintEvent(QPaintEvent *event)
{
    const int hidden = overflow();
    if (hidden == 0) {
        m_offset = 0; // a shorter text has come since
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    drawFrame(&painter);
    painter.setClipRect(contentsRect());
    const QRect all = contentsRect().adjusted(-m_offset, 0, hidden - m_offset, 0);
    style()->drawItemText(&painter, all, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          palette(), isEnabled(), text(), foregroundRole());
}
