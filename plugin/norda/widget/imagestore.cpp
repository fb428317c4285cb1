#include "imagestore.h"

#include <QAbstractButton>
#include <QLabel>

namespace norda {

QPixmap ImageStore::pixmap(const QString &path)
{
    const auto known = m_pixmaps.constFind(path);
    if (known != m_pixmaps.constEnd())
        return *known;
    return *m_pixmaps.insert(path, QPixmap(path));
}

void ImageStore::show(QLabel *label, const QString &path)
{
    const QPixmap image = pixmap(path);
    if (label->pixmap(Qt::ReturnByValue).cacheKey() != image.cacheKey())
        label->setPixmap(image);
}

void ImageStore::showIcon(QAbstractButton *key, const QString &normal, const QString &selected)
{
    const QIcon &shown = icon(normal, selected);
    if (key->icon().cacheKey() != shown.cacheKey())
        key->setIcon(shown);
}

const QIcon &ImageStore::icon(const QString &normal, const QString &selected)
{
    QIcon &made = m_icons[normal];
    if (made.isNull()) {
        made.addPixmap(pixmap(normal), QIcon::Normal);
        made.addPixmap(pixmap(selected), QIcon::Selected);
    }
    return made;
}

} // namespace norda
