#include "nordahost.h"
#include "testmain.h"
#include "testpaths.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QRegularExpression>

/** The icon library against everything that names an image. */
class tst_Icons : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(nordaHostObject("CallLog"));
    } // loads the host, which has the images
    void everyNamedImageExists();
    void rowsAreComplete();
    void everyImageDiffers();
    void everyDrawingIsUsed();
    void sizes_data();
    void sizes();
};

static QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

static QStringList filesBelow(const QString &folder, const QStringList &patterns)
{
    QStringList files;
    QDirIterator walk(folder, patterns, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext())
        files.append(walk.next());
    return files;
}

void tst_Icons::everyNamedImageExists()
{
    const QRegularExpression path(QStringLiteral(":/(?:icon|popupicon)/[^\"<]+\\.png"));
    int named = 0;
    for (const QString &file : filesBelow(testpaths::source("plugin"), {"*.cpp", "*.h", "*.ui"})) {
        for (auto it = path.globalMatch(QString::fromUtf8(content(file))); it.hasNext();) {
            QString image = it.next().captured();
            image.replace(QStringLiteral("%1"), QStringLiteral("0")); // the first of a row
            ++named;
            QVERIFY2(!QPixmap(image).isNull(), qPrintable(file + ": " + image));
        }
    }
    QVERIFY(named > 30);
}

void tst_Icons::everyImageDiffers()
{
    QHash<QByteArray, QString> seen;
    const QStringList images = filesBelow(QStringLiteral(":/icon"), {"*.png"}) +
                               filesBelow(QStringLiteral(":/popupicon"), {"*.png"});
    QVERIFY(images.size() > 20);
    for (const QString &image : images) {
        const QByteArray hash = QCryptographicHash::hash(content(image), QCryptographicHash::Sha1);
        QVERIFY2(!seen.contains(hash), qPrintable(image + " is the same as " + seen.value(hash)));
        seen.insert(hash, image);
    }
}

void tst_Icons::everyDrawingIsUsed()
{
    const QString folder = testpaths::source("host/icons/");
    const QByteArray manifest = content(folder + QStringLiteral("manifest.txt"));
    for (const QString &file : filesBelow(folder, {"*.svg", "*.css"}))
        QVERIFY2(manifest.contains(file.mid(folder.size()).toUtf8()), qPrintable(file));
}

void tst_Icons::rowsAreComplete()
{
    QMap<QString, int> highest = {
        {"airicon/seat_heat_%1", 3}, {"airicon/seat_AC_%1", 3}, {"airicon/position_%1", 7}};
    for (const char *zone : {"F_U", "F_U_M", "F_D_M", "F_D", "R_U", "R_U_M", "R_D_M", "R_D"})
        highest.insert(QStringLiteral("radaricon/%1_%2").arg(QLatin1String(zone)), 4);
    for (auto it = highest.cbegin(); it != highest.cend(); ++it) {
        for (int level = 0; level <= it.value(); ++level) {
            QString image = QStringLiteral(":/icon/%1.png").arg(it.key());
            image.replace(QRegularExpression(QStringLiteral("%\\d")), QString::number(level));
            QVERIFY2(!QPixmap(image).isNull(), qPrintable(image));
        }
    }
    for (const char *start :
         {"F_D_00", "F_D_M_01", "F_U_M_00", "F_U_00", "R_D_00", "R_D_M_00", "R_U_M_00", "R_U_00"}) {
        const QString image = QStringLiteral(":/icon/radaricon/%1.png").arg(QLatin1String(start));
        QVERIFY2(!QPixmap(image).isNull(), qPrintable(image));
    }
}

void tst_Icons::sizes_data()
{
    QTest::addColumn<QString>("image");
    QTest::addColumn<QSize>("size");
    const auto row = [](const char *image, int width, int height) {
        QTest::newRow(image) << QStringLiteral(":/icon/") + QLatin1String(image)
                             << QSize(width, height);
    };
    row("gaugesicon/gagus_mph_1.png", 370, 370);
    row("gaugesicon/gagus_mph_2.png", 370, 370);
    row("gaugesicon/gagus_arc_large.png", 370, 370);
    row("gaugesicon/gagus_braking_1.png", 224, 224);
    row("gaugesicon/gagus_braking_2.png", 224, 224);
    row("gaugesicon/gagus_arc_small.png", 224, 224);
    row("vehicleicon/bkg_vehicle_car.png", 664, 427);
    row("vehicleicon/info_txt.png", 132, 142);
    row("vehicleicon/engine_blue.png", 240, 162);
    row("vehicleicon/engine_yellow.png", 240, 162);
    row("radaricon/bkg_radar_car.png", 684, 429);
    row("radaricon/camera_n.png", 145, 145);
    row("radaricon/split_p.png", 145, 145);
    row("baricon/norda_btn_gagus_n.png", 130, 64);
    row("baricon/icon_message_p.png", 130, 64);
}

void tst_Icons::sizes()
{
    QFETCH(QString, image);
    QFETCH(QSize, size);
    QCOMPARE(QPixmap(image).size(), size);
}

NORDA_TEST_MAIN(tst_Icons)
#include "tst_icons.moc"
