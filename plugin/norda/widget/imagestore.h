#pragma once

#include <QHash>
#include <QPixmap>
#include <QString>

class QLabel;

namespace norda {

/** A screen's images: each is decoded on first use and kept, so a change of image never decodes. */
class ImageStore
{
public:
    /** The image of a path; null when the library has none under it. */
    QPixmap pixmap(const QString &path);
    /** Shows an image on a label; one that is shown already is not painted again. */
    void show(QLabel *label, const QString &path);

private:
    QHash<QString, QPixmap> m_pixmaps;
};

} // namespace norda
