#include "elidedlabel.h"

#include <QPainter>
#include <QStyle>

namespace norda {

ElidedLabel::ElidedLabel(QWidget *parent) : QLabel(parent) {}

ElidedLabel::~ElidedLabel() = default;

void ElidedLabel::paintEvent(QPaintEvent *event)
{
    const QRect room = contentsRect();
    if (fontMetrics().size(0, text()).width() <= room.width()) {
        QLabel::paintEvent(event);
        return;
    }
    const QString shown =
        fontMetrics().elidedText(text(), Qt::ElideRight, room.width(), Qt::TextSingleLine);
    const int flags = QStyle::visualAlignment(layoutDirection(), alignment()) | Qt::TextSingleLine;
    QPainter painter(this);
    style()->drawItemText(&painter, room, flags, palette(), isEnabled(), shown, foregroundRole());
}

} // namespace norda
