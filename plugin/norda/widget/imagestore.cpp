#include "imagestore.h"

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

} // namespace norda
