#include "scrolllabel.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

// What a label shows comes from the car and is measured letter by letter: no markup.
ScrollLabel::ScrollLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

ScrollLabel::~ScrollLabel() = default;

int ScrollLabel::overflow() const
{
    return qMax(0, fontMetrics().horizontalAdvance(text()) - contentsRect().width());
}

int ScrollLabel::scrollOffset() const
{
    return text() == m_scrolledText ? qMin(m_offset, overflow()) : 0;
}

void ScrollLabel::setScrollOffset(int pixels)
{
    const int before = scrollOffset();
    m_offset = qBound(0, pixels, overflow());
    m_scrolledText = text();
    if (m_offset != before)
        update();
}

void ScrollLabel::paintEvent(QPaintEvent *event)
{
    const int hidden = overflow();
    if (hidden == 0) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    drawFrame(&painter);
    painter.setClipRect(contentsRect());
    const int offset = scrollOffset();
    const QRect all = contentsRect().adjusted(-offset, 0, hidden - offset, 0);
    const int flags = Qt::AlignLeft | Qt::TextSingleLine | (alignment() & Qt::AlignVertical_Mask);
    style()->drawItemText(&painter, all, flags, palette(), isEnabled(), text(), foregroundRole());
}
