#include "iconkey.h"

#include "lazyicon.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>

#include <algorithm>

namespace norda {

static constexpr QRgb fadedText = 0xFF6B7683;

/** A grey as cool as the pages, or it would look brown on them. */
static QRgb faded(QRgb pixel)
{
    const int grey = qGray(pixel);
    return qRgba(grey * 7 / 8, grey, qMin(255, grey * 9 / 8), qAlpha(pixel) * 2 / 5);
}

static QPixmap faded(const QPixmap &live)
{
    QImage image = live.toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        std::transform(line, line + image.width(), line, [](QRgb pixel) { return faded(pixel); });
    }
    return QPixmap::fromImage(image);
}

IconKey::IconKey(QWidget *parent) : QPushButton(parent) {}

IconKey::~IconKey() = default;

void IconKey::setImages(const QStringList &paths)
{
    m_images = paths;
    setIcon(QIcon(new LazyIcon(paths.value(0), paths.value(1))));
}

void IconKey::setCaption(QLabel *caption)
{
    m_caption = caption;
    caption->setAttribute(Qt::WA_TransparentForMouseEvents);
    showCaption();
}

void IconKey::showCaption()
{
    // Not disabled with the key: some styles engrave disabled texts.
    QPalette palette; // that of the page
    if (!isEnabled())
        palette.setColor(QPalette::WindowText, QColor(fadedText));
    if (m_caption)
        m_caption->setPalette(palette);
}

// A style's own disabled icons are made for light pages and outshine the live keys of these.
QIcon IconKey::fadedIcon()
{
    const QIcon live = icon();
    if (m_fadedFrom != live.cacheKey()) {
        m_fadedFrom = live.cacheKey();
        m_fadedIcon = QIcon();
        for (const QIcon::State state : {QIcon::Off, QIcon::On})
            m_fadedIcon.addPixmap(faded(live.pixmap(size(), QIcon::Normal, state)), QIcon::Normal,
                                  state);
    }
    return m_fadedIcon;
}

QIcon IconKey::shownIcon()
{
    return isEnabled() ? icon() : fadedIcon();
}

void IconKey::changeEvent(QEvent *event)
{
    QPushButton::changeEvent(event);
    if (event->type() == QEvent::EnabledChange)
        showCaption();
}

void IconKey::paintEvent(QPaintEvent *)
{
    const QIcon::State state = isChecked() || isDown() ? QIcon::On : QIcon::Off;
    QPainter painter(this);
    shownIcon().paint(&painter, rect(), Qt::AlignCenter, QIcon::Normal, state);
}

} // namespace norda
