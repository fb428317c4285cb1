#include "window/seekslider.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>

SeekSlider::SeekSlider(QWidget *parent) : QSlider(Qt::Horizontal, parent) {}

void SeekSlider::setPart(int from, int to)
{
    m_from = from;
    m_to = to;
    update();
}

/** Where the middle of the handle can be. */
QRect SeekSlider::groove() const
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect whole =
        style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderGroove, this);
    const int handle = style()->pixelMetric(QStyle::PM_SliderLength, &option, this);
    return whole.adjusted(handle / 2, 0, -(handle - handle / 2), 0);
}

int SeekSlider::xOf(int value) const
{
    const QRect range = groove();
    return range.left() +
           QStyle::sliderPositionFromValue(minimum(), maximum(), value, range.width());
}

/** The handle jumps under the pointer, and then follows it. */
void SeekSlider::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        const QRect range = groove();
        setValue(QStyle::sliderValueFromPosition(minimum(), maximum(), event->x() - range.left(),
                                                 range.width()));
    }
    QSlider::mousePressEvent(event);
}

void SeekSlider::paintEvent(QPaintEvent *event)
{
    QSlider::paintEvent(event);
    if (m_from < 0)
        return;
    QPainter painter(this);
    painter.setPen(QPen(palette().color(QPalette::Link), 3, Qt::SolidLine, Qt::FlatCap));
    const int y = height() - 2;
    const int from = xOf(m_from);
    painter.drawLine(from, y, m_to < 0 ? from + 6 : xOf(m_to), y);
    painter.drawLine(from, y - 5, from, y);
    if (m_to >= 0)
        painter.drawLine(xOf(m_to), y - 5, xOf(m_to), y);
}
