#include "iconkey.h"

#include <QPainter>

namespace norda {

IconKey::IconKey(QWidget *parent) : QPushButton(parent) {}

IconKey::~IconKey() = default;

void IconKey::paintEvent(QPaintEvent *)
{
    const QIcon::Mode mode = isEnabled() ? QIcon::Normal : QIcon::Disabled;
    const QIcon::State state = isChecked() || isDown() ? QIcon::On : QIcon::Off;
    QPainter painter(this);
    icon().paint(&painter, rect(), Qt::AlignCenter, mode, state);
}

} // namespace norda
