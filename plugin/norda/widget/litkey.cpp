#include "litkey.h"

#include <QPainter>

namespace norda {

static constexpr QRgb light = 0x3836C5F0;

LitKey::LitKey(QWidget *parent) : IconKey(parent) {}

LitKey::~LitKey() = default;

QSize LitKey::sizeHint() const
{
    return iconSize();
}

void LitKey::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (isDown()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor::fromRgba(light));
        painter.drawRoundedRect(rect(), m_cornerRadius, m_cornerRadius);
    }
    shownIcon().paint(&painter, rect(), Qt::AlignCenter, QIcon::Normal,
                      isChecked() ? QIcon::On : QIcon::Off);
}

} // namespace norda
