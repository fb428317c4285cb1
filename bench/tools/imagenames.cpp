#include "tools/imagenames.h"

#include <QAbstractButton>
#include <QDirIterator>
#include <QImageReader>
#include <QLabel>
#include <QRegularExpression>

/** Resources by their size in pixels, which is read without decoding them. */
static QHash<QString, QStringList> resourcesBySize()
{
    QHash<QString, QStringList> found;
    QDirIterator images(QStringLiteral(":/"), {QStringLiteral("*.png")}, QDir::Files,
                        QDirIterator::Subdirectories);
    while (images.hasNext()) {
        const QString path = images.next();
        const QSize size = QImageReader(path).size();
        if (!path.startsWith(QLatin1String(":/qt-project.org")))
            found[QStringLiteral("%1x%2").arg(size.width()).arg(size.height())].append(path);
    }
    return found;
}

QString imagePathOf(const QPixmap &pixmap)
{
    static const QHash<QString, QStringList> bySize = resourcesBySize();
    static QHash<qint64, QString> known; // by what identifies an image in memory
    if (pixmap.isNull())
        return {};
    const auto it = known.constFind(pixmap.cacheKey());
    if (it != known.constEnd())
        return *it;
    const QImage wanted = pixmap.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QStringList candidates =
        bySize.value(QStringLiteral("%1x%2").arg(pixmap.width()).arg(pixmap.height()));
    QString path;
    for (const QString &candidate : candidates) {
        if (QImage(candidate).convertToFormat(QImage::Format_ARGB32_Premultiplied) == wanted) {
            path = candidate;
            break;
        }
    }
    known.insert(pixmap.cacheKey(), path);
    return path;
}

static QStringList shownByStyle(const QString &style)
{
    static const QRegularExpression url(QStringLiteral("url\\(\"?([^)\"]+)\"?\\)"));
    QStringList paths;
    auto matches = url.globalMatch(style);
    while (matches.hasNext())
        paths.append(matches.next().captured(1));
    return paths;
}

QStringList imagesShownBy(const QWidget *widget)
{
    QStringList paths;
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        paths.append(imagePathOf(label->pixmap(Qt::ReturnByValue)));
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget)) {
        const bool isOn = button->isChecked() || button->isDown();
        QIcon::State state = isOn ? QIcon::On : QIcon::Off;
        if (button->icon().availableSizes(QIcon::Normal, state).isEmpty())
            state = isOn ? QIcon::Off : QIcon::On; // an icon without one shows the other
        const QSize size = button->icon().availableSizes(QIcon::Normal, state).value(0);
        if (size.isValid())
            paths.append(imagePathOf(button->icon().pixmap(size, QIcon::Normal, state)));
    }
    paths.removeAll(QString());
    return paths + shownByStyle(widget->styleSheet());
}
