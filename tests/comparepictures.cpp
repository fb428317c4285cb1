// Compares the pictures of two folders, as different processors drew them.
//
//   norda-compare-pictures EXPECTED SEEN

#include "picturecomparison.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>
#include <cstdio>

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
    int most = 0;
    bool differ = false;
    for (const QString &name : names) {
        const PictureDifference difference =
            compare(QImage(expected.filePath(name)), QImage(seen.filePath(name)));
        most = std::max(most, difference.pixels);
        if (difference.isSame())
            continue;
        std::fprintf(stderr, "%s: expected the same picture, %s\n", qPrintable(name),
                     qPrintable(difference.text()));
        differ = true;
    }
    std::printf("%d pictures; where they differ most, %d pixels do\n", names.size(), most);
    return differ;
}
