#include "referencepictures.h"

#include <QFileInfo>
#include <QPainter>

static QImage differing(const QImage &picture, const QImage &first)
{
    QImage result = picture.convertToFormat(QImage::Format_ARGB32);
    const QImage base = first.convertToFormat(QImage::Format_ARGB32);
    if (result.size() != base.size())
        return result;
    for (int y = 0; y < result.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(result.scanLine(y));
        const auto *other = reinterpret_cast<const QRgb *>(base.constScanLine(y));
        for (int x = 0; x < result.width(); ++x)
            line[x] = line[x] == other[x] ? qRgba(0, 0, 0, 0) : line[x];
    }
    return result;
}

QString ReferencePictures::file(const QString &name) const
{
    return m_folder.filePath(name + QStringLiteral(".png"));
}

static QString seriesOf(const QString &name)
{
    return name.section(QLatin1Char('-'), 0, 0);
}

QImage ReferencePictures::picture(const QString &name) const
{
    const QImage kept(file(name));
    QImage whole(file(seriesOf(name)));
    if (isWhole(name) || kept.size() != whole.size())
        return kept;
    whole = whole.convertToFormat(QImage::Format_RGB32);
    QPainter(&whole).drawImage(0, 0, kept);
    return whole;
}

bool ReferencePictures::accept(const QString &name, const QImage &picture) const
{
    const QImage kept = name == seriesOf(name) ? picture.convertToFormat(QImage::Format_RGB32)
                                               : differing(picture, QImage(file(seriesOf(name))));
    return kept.save(file(name), "PNG");
}

QStringList ReferencePictures::names() const
{
    QStringList names;
    for (const QFileInfo &each : m_folder.entryInfoList({QStringLiteral("*.png")}, QDir::Files))
        names.append(each.completeBaseName());
    return names;
}

qint64 ReferencePictures::size() const
{
    qint64 bytes = 0;
    for (const QString &name : names())
        bytes += QFileInfo(file(name)).size();
    return bytes;
}

void ReferencePictures::remove(const QString &name) const
{
    QFile::remove(file(name));
}
