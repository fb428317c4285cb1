// Compares the pictures of two folders, as different processors drew them.
//
//   norda-compare-pictures EXPECTED SEEN

#include <QCoreApplication>
#include <QDir>
#include <QImage>

#include <algorithm>
#include <cstdio>

// An edge may fall a shade to one side; a thing that is missing or elsewhere changes much more.
static constexpr int sameShade = 24;
static constexpr double mostOthers = 0.0005;

static bool isSame(QRgb a, QRgb b)
{
    return qAbs(qRed(a) - qRed(b)) <= sameShade && qAbs(qGreen(a) - qGreen(b)) <= sameShade &&
           qAbs(qBlue(a) - qBlue(b)) <= sameShade;
}

/** The part of the pixels that differ visibly; 1 where the pictures cannot be laid on each other.
 */
static double difference(const QImage &a, const QImage &b)
{
    if (a.isNull() || a.size() != b.size())
        return 1;
    qint64 others = 0;
    for (int y = 0; y < a.height(); ++y) {
        const auto *first = reinterpret_cast<const QRgb *>(a.constScanLine(y));
        const auto *second = reinterpret_cast<const QRgb *>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x)
            others += !isSame(first[x], second[x]);
    }
    return double(others) / double(qint64(a.width()) * a.height());
}

static QImage picture(const QDir &folder, const QString &name)
{
    return QImage(folder.filePath(name)).convertToFormat(QImage::Format_RGB32);
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: norda-compare-pictures EXPECTED SEEN\n");
        return 2;
    }
    const QDir expected(QString::fromLocal8Bit(argv[1]));
    const QDir seen(QString::fromLocal8Bit(argv[2]));
    const QStringList names = expected.entryList({QStringLiteral("*.png")}, QDir::Files);
    if (names.isEmpty()) {
        std::fprintf(stderr, "%s: expected pictures\n", argv[1]);
        return 2;
    }
    double most = 0;
    bool differ = false;
    for (const QString &name : names) {
        const double part = difference(picture(expected, name), picture(seen, name));
        most = std::max(most, part);
        if (part <= mostOthers)
            continue;
        std::fprintf(stderr, "%s: %.3f %% of the pixels differ, expected at most %.3f %%\n",
                     qPrintable(name), 100 * part, 100 * mostOthers);
        differ = true;
    }
    std::printf("%d pictures; where they differ most, %.4f %% of the pixels do\n", names.size(),
                100 * most);
    return differ;
}
