#include "picturecomparison.h"

#include <QPainter>

// Rounding moves a few pixels by one or two shades, four at most. A page has faint lines too: what
// is missing, elsewhere or in another colour changes many pixels by more.
static constexpr int sameShade = 4;
static constexpr int mostOthers = 8;

static bool isSame(QRgb a, QRgb b)
{
    return qAbs(qRed(a) - qRed(b)) <= sameShade && qAbs(qGreen(a) - qGreen(b)) <= sameShade &&
           qAbs(qBlue(a) - qBlue(b)) <= sameShade;
}

/** Calls with the place of each pixel that differs, in pictures of one size. */
template <typename Call>
static void forDifferences(const QImage &expected, const QImage &seen, Call call)
{
    const QImage first = expected.convertToFormat(QImage::Format_RGB32);
    const QImage second = seen.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < first.height(); ++y) {
        const auto *a = reinterpret_cast<const QRgb *>(first.constScanLine(y));
        const auto *b = reinterpret_cast<const QRgb *>(second.constScanLine(y));
        for (int x = 0; x < first.width(); ++x) {
            if (a[x] != b[x] && !isSame(a[x], b[x]))
                call(x, y);
        }
    }
}

bool PictureDifference::isSame() const
{
    return pixels <= mostOthers;
}

QString PictureDifference::text() const
{
    return QStringLiteral("%1 pixels differ, in %2 x %3 at (%4, %5)")
        .arg(pixels)
        .arg(area.width())
        .arg(area.height())
        .arg(area.x())
        .arg(area.y());
}

PictureDifference compare(const QImage &expected, const QImage &seen)
{
    if (expected.size() != seen.size())
        return {qMax(1, seen.width() * seen.height()) + mostOthers, seen.rect()};
    PictureDifference difference;
    forDifferences(expected, seen, [&difference](int x, int y) {
        ++difference.pixels;
        difference.area |= QRect(x, y, 1, 1);
    });
    return difference;
}

static QImage dimmed(const QImage &picture)
{
    QImage grey = picture.convertToFormat(QImage::Format_Grayscale8);
    for (int y = 0; y < grey.height(); ++y) {
        uchar *line = grey.scanLine(y);
        for (int x = 0; x < grey.width(); ++x)
            line[x] /= 2;
    }
    return grey.convertToFormat(QImage::Format_RGB32);
}

QImage differencePicture(const QImage &expected, const QImage &seen)
{
    static constexpr int margin = 6;
    QImage picture = dimmed(seen);
    if (expected.size() != seen.size())
        return picture;
    QRect area;
    forDifferences(expected, seen, [&picture, &area](int x, int y) {
        picture.setPixel(x, y, qRgb(255, 60, 60));
        area |= QRect(x, y, 1, 1);
    });
    QPainter painter(&picture);
    painter.setPen(QPen(QColor(255, 190, 60), 2));
    painter.drawRect(area.adjusted(-margin, -margin, margin, margin));
    return picture;
}
