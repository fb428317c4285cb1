#pragma once

#include <QHash>
#include <QIcon>
#include <QPixmap>
#include <QString>

class QAbstractButton;
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
    /** Shows a pair of images on a key; one that is shown already is not painted again. */
    void showIcon(QAbstractButton *key, const QString &normal, const QString &selected);

private:
    const QIcon &icon(const QString &normal, const QString &selected);

    QHash<QString, QPixmap> m_pixmaps;
    QHash<QString, QIcon> m_icons; // by the normal image
};

} // namespace norda
