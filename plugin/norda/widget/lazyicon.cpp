#include "lazyicon.h"

#include <QPainter>

namespace norda {

LazyIcon::LazyIcon(const QString &normal, const QString &pressed)
    : m_normal{normal, {}}, m_pressed{pressed, {}}
{
}

LazyIcon::~LazyIcon() = default;

const QPixmap &LazyIcon::Image::pixmap() const
{
    if (decoded.isNull())
        decoded = QPixmap(path);
    return decoded;
}

const LazyIcon::Image &LazyIcon::image(QIcon::Mode mode, QIcon::State state) const
{
    return state == QIcon::On || mode == QIcon::Selected ? m_pressed : m_normal;
}

void LazyIcon::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state)
{
    const QPixmap shown = pixmap(rect.size(), mode, state);
    const QPoint middle(rect.x() + (rect.width() - shown.width()) / 2,
                        rect.y() + (rect.height() - shown.height()) / 2);
    painter->drawPixmap(middle, shown);
}

QPixmap LazyIcon::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    const QPixmap &whole = image(mode, state).pixmap();
    const QSize shown = actualSize(size, mode, state);
    return shown == whole.size()
               ? whole
               : whole.scaled(shown, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/** The image's own, or as much smaller as the room is. */
QSize LazyIcon::actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    const QSize whole = image(mode, state).pixmap().size();
    const bool fits = whole.width() <= size.width() && whole.height() <= size.height();
    return fits ? whole : whole.scaled(size, Qt::KeepAspectRatio);
}

QList<QSize> LazyIcon::availableSizes(QIcon::Mode mode, QIcon::State state) const
{
    const QPixmap &whole = image(mode, state).pixmap();
    return whole.isNull() ? QList<QSize>() : QList<QSize>{whole.size()};
}

QIconEngine *LazyIcon::clone() const
{
    return new LazyIcon(*this);
}

} // namespace norda
