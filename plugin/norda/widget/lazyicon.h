#pragma once

#include <QIconEngine>
#include <QPixmap>

namespace norda {

/**
 * An icon of two image files, each decoded when it is shown first: of a page with forty keys few
 * are ever pressed. The second image is for a key that is on and for a selected one.
 */
class LazyIcon : public QIconEngine
{
public:
    LazyIcon(const QString &normal, const QString &pressed);
    ~LazyIcon() override;

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) const override;
    QIconEngine *clone() const override;

private:
    struct Image
    {
        const QPixmap &pixmap() const;

        QString path;
        mutable QPixmap decoded;
    };
    const Image &image(QIcon::Mode mode, QIcon::State state) const;

    Image m_normal;
    Image m_pressed;
};

} // namespace norda
