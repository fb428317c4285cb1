#include "differencereport.h"
#include "picturecomparison.h"
#include "referencepictures.h"
#include "testmain.h"
#include "testpaths.h"

#include <QPainter>
#include <QTemporaryDir>

/** What counts as another picture, and how the difference is shown. */
class tst_PictureComparison : public QObject
{
    Q_OBJECT
private slots:
    void changesAreCaught_data();
    void changesAreCaught();
    void roundingIsNotCaught();
    void differencesAreShown();

private:
    const ReferencePictures m_references{testpaths::source(QStringLiteral("tests/pictures"))};
};

using Change = void (*)(QImage *picture);
Q_DECLARE_METATYPE(Change)

template <QRgb from, QRgb to>
static void recolour(QImage *picture)
{
    for (int y = 0; y < picture->height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(picture->scanLine(y));
        std::replace(line, line + picture->width(), from, to);
    }
}

template <int x, int y, int width, int height, int dx, int dy>
static void shift(QImage *picture)
{
    const QRect area(x, y, width, height);
    QPainter(picture).drawImage(area.topLeft() + QPoint(dx, dy), picture->copy(area));
}

void tst_PictureComparison::changesAreCaught_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("accent, a little lighter") << Change(recolour<0xFF36C5F0, 0xFF3CC5F0>);
    QTest::newRow("border of keys, a little bluer") << Change(recolour<0xFF2A3744, 0xFF2A374C>);
    QTest::newRow("title, two pixels to the right") << Change(shift<150, 20, 200, 50, 2, 0>);
    QTest::newRow("a key, two pixels lower") << Change(shift<150, 120, 260, 80, 0, 2>);
}

void tst_PictureComparison::changesAreCaught()
{
    QFETCH(Change, change);
    const QImage picture = m_references.picture("climate");
    QImage changed = picture.convertToFormat(QImage::Format_RGB32);
    change(&changed);
    QVERIFY(!compare(picture, changed).isSame());
}

void tst_PictureComparison::roundingIsNotCaught()
{
    const QImage picture = m_references.picture("gauges");
    QImage rounded = picture.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < rounded.height(); ++y) {
        for (int x = 0; x < rounded.width(); ++x)
            rounded.setPixel(x, y, rounded.pixel(x, y) ^ QRgb((x + y) % 4)); // of the blue part
    }
    QCOMPARE(compare(picture, rounded).pixels, 0);
    QVERIFY(!compare(picture, picture.copy(0, 0, 1280, 719)).isSame());
}

static int redPixels(const QImage &picture)
{
    int red = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            red += int(picture.pixel(x, y) == qRgb(255, 60, 60));
    }
    return red;
}

void tst_PictureComparison::differencesAreShown()
{
    const QTemporaryDir folder;
    const QDir results(folder.path());
    const QImage expected = m_references.picture("climate");
    QImage seen = expected.convertToFormat(QImage::Format_RGB32);
    shift<150, 20, 200, 50, 2, 0>(&seen);
    QString error;
    QVERIFY2(
        writeDifferences(results, {{"a", "moved", expected, seen}, {"b", "new", {}, seen}}, &error),
        qPrintable(error));
    QCOMPARE(results.entryList(QDir::Files),
             (QStringList{"a-difference.png", "a-new.png", "a-reference.png", "b-new.png",
                          "report.html"}));
    QFile page(results.filePath("report.html"));
    QVERIFY(page.open(QIODevice::ReadOnly));
    const QByteArray html = page.readAll();
    for (const QString &file : results.entryList({"*.png"}))
        QVERIFY2(html.contains("href=\"" + file.toUtf8() + '"'), qPrintable(file));
    const QImage difference(results.filePath("a-difference.png"));
    QCOMPARE(redPixels(difference), compare(expected, seen).pixels);
}

NORDA_TEST_MAIN(tst_PictureComparison)
#include "tst_picturecomparison.moc"
