#include "testmain.h"
#include "tools/propertytext.h"

#include <QCursor>
#include <QKeySequence>
#include <QLocale>
#include <QSizePolicy>

/** Values of properties, as the Inspector writes them. */
class tst_PropertyText : public QObject
{
    Q_OBJECT
private slots:
    void flagsHaveNames_data();
    void flagsHaveNames();
    void valuesAreInWords_data();
    void valuesAreInWords();
};

void tst_PropertyText::flagsHaveNames_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<QString>("text");
    QTest::newRow("one") << int(Qt::AlignRight) << "AlignRight";
    QTest::newRow("first of two names") << int(Qt::AlignLeft) << "AlignLeft";
    QTest::newRow("two") << int(Qt::AlignLeft | Qt::AlignVCenter) << "AlignLeft | AlignVCenter";
    QTest::newRow("a key for both") << 132 << "AlignCenter";
    QTest::newRow("none") << 0 << "0";
    QTest::newRow("unknown") << 0x10000 << "0x10000";
    QTest::newRow("unknown too") << (0x10000 | Qt::AlignTop) << "AlignTop | 0x10000";
}

void tst_PropertyText::flagsHaveNames()
{
    QFETCH(int, flags);
    QFETCH(QString, text);
    QLabel label;
    const QMetaObject *meta = label.metaObject();
    const QMetaProperty alignment = meta->property(meta->indexOfProperty("alignment"));
    QCOMPARE(propertyText(alignment, flags), text);
}

void tst_PropertyText::valuesAreInWords_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *title, const QVariant &value, const char *text) {
        QTest::newRow(title) << value << text;
    };
    QFont font("Arial", 12, QFont::Bold, true);
    row("truth", true, "true");
    row("number", 42, "42");
    row("large number", 2592000.0, "2592000");
    row("text", "17 psi", "17 psi");
    row("nothing", {}, "");
    row("size", QSize(145, 90), "145 x 90");
    row("point", QPoint(-1, 2), "(-1, 2)");
    row("rectangle", QRect(1, 2, 30, 40), "30 x 40 at (1, 2)");
    row("font in points", font, "Arial, 12 pt, bold, italic");
    font = QFont("Arial");
    font.setPixelSize(20);
    row("font in pixels", font, "Arial, 20 px");
    row("colour", QColor(0x41, 0xD9, 0x8D), "#ff41d98d");
    row("policy", QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding), "Fixed, Expanding");
    row("cursor", QCursor(Qt::PointingHandCursor), "PointingHandCursor");
    row("shortcut", QKeySequence("Ctrl+K"), "Ctrl+K");
    row("locale", QLocale("de_DE"), "de_DE");
    row("image of a resource", QPixmap(":/icon/radaricon/camera_n.png"),
        ":/icon/radaricon/camera_n.png");
    QPixmap plain(7, 5);
    plain.fill(Qt::red);
    row("other image", plain, "7 x 5");
    row("no image", QPixmap(), "");
    row("list", QVariant::fromValue(QStringList{"a", "b"}), R"(["a","b"])");
}

void tst_PropertyText::valuesAreInWords()
{
    QFETCH(QVariant, value);
    QFETCH(QString, text);
    QCOMPARE(valueText(value), text);
}

NORDA_TEST_MAIN(tst_PropertyText)
#include "tst_propertytext.moc"
