#pragma once

#include <QImage>
#include <QPainter>
#include <QProxyStyle>
#include <QPushButton>

/** A style that draws every disabled icon as a white slab; no key may look like that. */
class SlabStyle : public QProxyStyle
{
public:
    QPixmap generatedIconPixmap(QIcon::Mode, const QPixmap &pixmap,
                                const QStyleOption *) const override
    {
        QPixmap slab(pixmap.size());
        slab.fill(Qt::white);
        return slab;
    }
};

/** A key as it shows on a page, over the page's colour. */
inline QImage onThePage(QWidget *key)
{
    QImage page(key->size(), QImage::Format_RGB32);
    page.fill(0x0D131A);
    key->render(&page, QPoint(), QRegion(), QWidget::DrawChildren);
    return page;
}

/** How far the brightest pixel is from black, and the most colourful one from grey. */
struct Strength
{
    int light = 0;
    int colour = 0;
};

inline Strength strength(const QImage &image)
{
    Strength most;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            const auto [least, largest] = std::minmax({pixel.red(), pixel.green(), pixel.blue()});
            most.light = qMax(most.light, qGray(pixel.rgb()));
            most.colour = qMax(most.colour, largest - least);
        }
    }
    return most;
}

/** Checks that a key, disabled, is grey and clearly weaker than live, but can still be seen. */
inline QString faultOfDisabledLook(QPushButton *key)
{
    static constexpr int pageLight = 20;
    const bool wasEnabled = key->isEnabled();
    key->setEnabled(true);
    const Strength live = strength(onThePage(key));
    key->setEnabled(false);
    const Strength disabled = strength(onThePage(key));
    key->setEnabled(wasEnabled);

    const QString name = key->objectName();
    if (disabled.light > live.light * 6 / 10)
        return QStringLiteral("%1: %2 of %3 is bright")
            .arg(name)
            .arg(disabled.light)
            .arg(live.light);
    if (disabled.light < 3 * pageLight / 2)
        return QStringLiteral("%1: %2 cannot be seen").arg(name).arg(disabled.light);
    if (disabled.colour > 32)
        return QStringLiteral("%1: colour is left, %2").arg(name).arg(disabled.colour);
    return QString();
}
