#include "norda/widget/sourcecode.h"
#include "testmain.h"

/** The module's codes of what the head unit plays. */
class tst_SourceCodes : public QObject
{
    Q_OBJECT
private slots:
    void sourceCodes_data();
    void sourceCodes();
};

void tst_SourceCodes::sourceCodes_data()
{
    QTest::addColumn<int>("source");
    QTest::addColumn<int>("code");
    // Every source up to the last named one, and some beyond.
    const QMap<int, int> named = {
        {5, 0x00},  {6, 0x02},  {8, 0x02},  {10, 0x05}, {11, 0x05}, {12, 0x0C},
        {13, 0x06}, {14, 0x06}, {15, 0x20}, {16, 0x20}, {17, 0x20}, {18, 0x20},
        {19, 0x20}, {20, 0x21}, {21, 0x21}, {22, 0x21}, {23, 0x21}, {24, 0x07},
        {25, 0x07}, {26, 0x07}, {27, 0x07}, {28, 0x07}, {32, 0x09}, {33, 0x03},
        {36, 0x0A}, {47, 0x80}, {48, 0x84}, {49, 0x82}, {50, 0x81},
    };
    for (int source = -1; source <= 52; ++source)
        QTest::addRow("source %d", source) << source << named.value(source, 0x01);
    QTest::newRow("largest") << INT_MAX << 0x01;
    QTest::newRow("smallest") << INT_MIN << 0x01;
}

void tst_SourceCodes::sourceCodes()
{
    QFETCH(int, source);
    QFETCH(int, code);
    QCOMPARE(int(norda::moduleSourceCode(source, 0)), code);
    QCOMPARE(int(norda::moduleSourceCode(source, 4)), code);
    QCOMPARE(int(norda::moduleSourceCode(source, 3)), 0);
}

NORDA_TEST_MAIN(tst_SourceCodes)
#include "tst_sourcecodes.moc"
