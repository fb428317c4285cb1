#include "messagecapture.h"
#include "norda/vtqadaptor.h"
#include "pluginfixture.h"
#include "testmain.h"

#include <QLabel>
#include <QPushButton>

using norda::VtqAdaptor;

// In the order of the flag bits.
static const char *const tireNames[] = {"front_left", "front_right", "rear_left", "rear_right"};
static constexpr int tireCount = 4;
static constexpr int validTexts = 0x20;

static const QString normal = QStringLiteral("color: rgb(255, 255, 255);");
static const QString warning = QStringLiteral("color: rgb(248, 255, 55);");

/** The tire boxes of the vehicle information screen. */
class tst_Tires : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void boxes_data();
    void boxes();
    void temperatureFlags_data();
    void temperatureFlags();
    void pressureFlags_data();
    void pressureFlags();
    void firstPressureReadingByName_data();
    void firstPressureReadingByName();
    void iconsAreShared();
    void listLengths_data();
    void listLengths();
    void shortPressureListKeepsTheFirstReading_data();
    void shortPressureListKeepsTheFirstReading();
    void checkEngineText_data();
    void checkEngineText();
    void numbers_data();
    void numbers();
    void errorKeepsTheLook();
    void payloadsAreLogged_data();
    void payloadsAreLogged();
    void examples();

private:
    QLabel *label(const char *pattern, int tire) const
    {
        return find<QLabel>(m_screen,
                            qPrintable(QString::fromLatin1(pattern).arg(tireNames[tire])));
    }
    QStringList texts(const char *pattern) const
    {
        QStringList shown;
        for (int tire = 0; tire < tireCount; ++tire)
            shown.append(label(pattern, tire)->text());
        return shown;
    }
    /** Which texts are in the warning style, as bits; -1 for a style of neither kind. */
    int warningStyles(const char *pattern) const
    {
        int bits = 0;
        for (int tire = 0; tire < tireCount; ++tire) {
            const QString style = label(pattern, tire)->styleSheet();
            if (style != normal && style != warning)
                return -1;
            bits |= (style == warning) << tire;
        }
        return bits;
    }
    /** Which icons show the warning image, as bits; -1 for an image of neither kind. */
    int warningIcons() const
    {
        const QImage normalImage = QPixmap(":/icon/vehicleicon/typer_1.png").toImage();
        const QImage warningImage = QPixmap(":/icon/vehicleicon/tyre_yellow.png").toImage();
        int bits = 0;
        for (int tire = 0; tire < tireCount; ++tire) {
            const QImage shown = label("icon_typer_%1", tire)->pixmap(Qt::ReturnByValue).toImage();
            if (shown != warningImage && shown != normalImage)
                return -1;
            bits |= (shown == warningImage) << tire;
        }
        return bits;
    }

    QScopedPointer<PluginFixture> m_host;
    QWidget *m_screen = nullptr;
    VtqAdaptor *const m_adaptor = VtqAdaptor::instance();
};

static const char *const pressures = "Txt_psi_%1";
static const char *const temperatures = "Txt_temp_%1";
static const QStringList nulls = {"null", "null", "null", "null"};

void tst_Tires::init()
{
    m_host.reset(new PluginFixture);
    m_screen = m_host->open(81);
}

void tst_Tires::cleanup()
{
    m_host.reset();
}

void tst_Tires::boxes_data()
{
    QTest::addColumn<int>("tire");
    QTest::addColumn<QRect>("box");
    QTest::newRow("front left") << 0 << QRect(150, 282, 132, 142);
    QTest::newRow("front right") << 1 << QRect(150, 0, 132, 142);
    QTest::newRow("rear left") << 2 << QRect(400, 282, 132, 142);
    QTest::newRow("rear right") << 3 << QRect(400, 0, 132, 142);
}

void tst_Tires::boxes()
{
    QFETCH(int, tire);
    QFETCH(QRect, box);
    auto *widget = find<QWidget>(m_screen, qPrintable(QString("%1_widget").arg(tireNames[tire])));
    QCOMPARE(widget->geometry(), box);
    QCOMPARE(widget->parentWidget(), find<QWidget>(m_screen, "car_info_widget"));
    for (const char *part : {"bkg_%1", "icon_typer_%1", pressures, temperatures})
        QCOMPARE(label(part, tire)->parentWidget(), widget);
    QVERIFY(!label("icon_typer_%1", tire)->isVisible());
    QCOMPARE(label(pressures, tire)->text(), QStringLiteral("36 psi"));
    QCOMPARE(warningIcons(), 0);
}

static void addFlags()
{
    QTest::addColumn<int>("flags");
    for (const int valid : {0, validTexts}) {
        for (int tires = 0; tires < 16; ++tires) {
            QTest::addRow("tires 0x%X, %s", tires, valid ? "valid" : "not valid")
                << (tires | valid);
            QTest::addRow("tires 0x%X, %s, other bits", tires, valid ? "valid" : "not valid")
                << (tires | valid | 0xD0);
        }
    }
}

void tst_Tires::temperatureFlags_data()
{
    addFlags();
}

void tst_Tires::temperatureFlags()
{
    QFETCH(int, flags);
    const bool valid = flags & validTexts;
    const QStringList before = texts(pressures);
    emit m_adaptor->tireTemperatureStatus(0x2F, 0, {"-", "-", "-", "-"});
    emit m_adaptor->tireTemperatureStatus(uchar(flags), 77, {"61F", "62F", "63F", "64F"});
    QCOMPARE(texts(temperatures), valid ? (QStringList{"61F", "62F", "63F", "64F"}) : nulls);
    QCOMPARE(warningStyles(temperatures), valid ? flags & 0x0F : 0);
    QCOMPARE(warningIcons(), flags & 0x0F);
    QCOMPARE(texts(pressures), before);
    QCOMPARE(warningStyles(pressures), 0);
}

void tst_Tires::pressureFlags_data()
{
    addFlags();
}

// Two readers in a row: the second one's order and white, the first one's icons.
void tst_Tires::pressureFlags()
{
    QFETCH(int, flags);
    const QStringList before = texts(temperatures);
    emit m_adaptor->tirePressureStatus(uchar(flags), 77, {"31", "32", "33", "34", "0"});
    QCOMPARE(texts(pressures), (QStringList{"31", "32", "34", "33"}));
    QCOMPARE(warningStyles(pressures), 0);
    QCOMPARE(warningIcons(), flags & 0x0F);
    QCOMPARE(texts(temperatures), before);
}

void tst_Tires::firstPressureReadingByName_data()
{
    addFlags();
}

void tst_Tires::firstPressureReadingByName()
{
    QFETCH(int, flags);
    const bool valid = flags & validTexts;
    for (const char *slot : {"onTirePressureStatus", "onNordaTirePressureStatus"}) {
        emit m_adaptor->tirePressureStatus(0, 0, {"-", "-", "-", "-", "0"});
        invoke(m_screen, slot, Q_ARG(uchar, uchar(flags)), Q_ARG(uchar, 0),
               Q_ARG(QStringList, (QStringList{"31", "32", "33", "34"})));
        QCOMPARE(texts(pressures), valid ? (QStringList{"31", "32", "33", "34"}) : nulls);
        QCOMPARE(warningStyles(pressures), valid ? flags & 0x0F : 0);
        QCOMPARE(warningIcons(), flags & 0x0F);
    }
}

void tst_Tires::iconsAreShared()
{
    emit m_adaptor->tirePressureStatus(0x21, 0, {"31", "32", "33", "34", "0"});
    QCOMPARE(warningIcons(), 0x1);
    emit m_adaptor->tireTemperatureStatus(0x24, 0, {"61F", "62F", "63F", "64F"});
    QCOMPARE(warningIcons(), 0x4); // whichever came last
    emit m_adaptor->Properties2TextInfo({0, 12, 0, 0, 0, 0, 60, 120, 130, 60});
    QCOMPARE(warningIcons(), 0xA);
}

void tst_Tires::listLengths_data()
{
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<QStringList>("shown");
    QTest::newRow("none") << QStringList{} << QStringList{"a", "b", "c", "d"};
    QTest::newRow("one") << QStringList{"1"} << QStringList{"1", "b", "c", "d"};
    QTest::newRow("three") << QStringList{"1", "2", "3"} << QStringList{"1", "2", "3", "d"};
    QTest::newRow("empty texts") << QStringList{"", "", "", ""} << QStringList{"", "", "", ""};
    QTest::newRow("six") << QStringList{"1", "2", "3", "4", "5", "6"}
                         << QStringList{"1", "2", "3", "4"};
}

void tst_Tires::listLengths()
{
    QFETCH(QStringList, sent);
    QFETCH(QStringList, shown);
    emit m_adaptor->tireTemperatureStatus(validTexts, 0, {"a", "b", "c", "d"});
    emit m_adaptor->tireTemperatureStatus(validTexts | 0x0F, 0, sent);
    QCOMPARE(texts(temperatures), shown);
    QCOMPARE(warningStyles(temperatures), 0x0F); // the looks do not depend on the texts
}

void tst_Tires::shortPressureListKeepsTheFirstReading_data()
{
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<QStringList>("shown");
    QTest::newRow("none") << QStringList{} << QStringList{"a", "b", "c", "d"};
    QTest::newRow("two") << QStringList{"1", "2"} << QStringList{"1", "2", "c", "d"};
    QTest::newRow("four") << QStringList{"1", "2", "3", "4"} << QStringList{"1", "2", "3", "4"};
}

void tst_Tires::shortPressureListKeepsTheFirstReading()
{
    QFETCH(QStringList, sent);
    QFETCH(QStringList, shown);
    emit m_adaptor->tirePressureStatus(validTexts, 0, {"a", "b", "d", "c", "1"});
    MessageCapture messages;
    emit m_adaptor->tirePressureStatus(validTexts | 0x02, 0, sent);
    const QStringList warnings = messages.takeTexts().filter(QStringLiteral("expected"));
    QCOMPARE(warnings.size(), 1);
    QVERIFY2(warnings.first().endsWith(
                 QStringLiteral("tire pressures: expected 5 texts, got %1").arg(sent.size())),
             qPrintable(warnings.first()));
    QCOMPARE(texts(pressures), shown);
    QCOMPARE(warningStyles(pressures), 0x02);
    QVERIFY(find<QPushButton>(m_screen, "key_engine")->isChecked());
}

void tst_Tires::checkEngineText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("checked");
    QTest::newRow("1") << "1" << true;
    QTest::newRow("01") << "01" << true;
    for (const char *other : {"0", "2", "11", "-1", "", "x", "1x", "0x1", "1.0", "4294967297"})
        QTest::addRow("'%s'", other) << other << false;
}

void tst_Tires::checkEngineText()
{
    QFETCH(QString, text);
    QFETCH(bool, checked);
    auto *key = find<QPushButton>(m_screen, "key_engine");
    for (const bool before : {false, true}) {
        key->setChecked(before);
        emit m_adaptor->tirePressureStatus(0, 0, {"1", "2", "3", "4", text});
        QCOMPARE(key->isChecked(), checked);
    }
}

void tst_Tires::numbers_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<bool>("warns");
    QTest::newRow("99") << 99 << "99F" << false;
    QTest::newRow("100") << 100 << "100F" << true;
    QTest::newRow("254") << 254 << "254F" << true;
    QTest::newRow("256") << 256 << "256F" << true;
    QTest::newRow("0") << 0 << "0F" << false;
    QTest::newRow("-5") << -5 << "-5F" << false;
}

void tst_Tires::numbers()
{
    QFETCH(int, value);
    QFETCH(QString, shown);
    QFETCH(bool, warns);
    static constexpr int tireOfElement[] = {0, 1, 3, 2}; // elements 6 to 9
    for (int element = 0; element < tireCount; ++element) {
        const int tire = tireOfElement[element];
        QList<int> list = {0, 12, 0, 0, 0, 0, 50, 50, 50, 50};
        list[6 + element] = value;
        emit m_adaptor->tireTemperatureStatus(warns ? validTexts : validTexts | 0x0F, 0, {});
        emit m_adaptor->Properties2TextInfo(list);
        QCOMPARE(label(temperatures, tire)->text(), shown);
        QCOMPARE(warningStyles(temperatures), int(warns) << tire);
        QCOMPARE(warningIcons(), int(warns) << tire);
    }
}

void tst_Tires::errorKeepsTheLook()
{
    for (const int look : {0x0, 0xF}) {
        emit m_adaptor->tireTemperatureStatus(uchar(validTexts | look), 0, {"a", "b", "c", "d"});
        emit m_adaptor->Properties2TextInfo({0, 12, 0, 0, 0, 0, 255, 255, 255, 255});
        QCOMPARE(texts(temperatures), (QStringList{"Error", "Error", "Error", "Error"}));
        QCOMPARE(warningStyles(temperatures), look);
        QCOMPARE(warningIcons(), look);
    }
}

void tst_Tires::examples()
{
    emit m_adaptor->tireTemperatureStatus(0x21, 0, {"70", "71", "72", "73"});
    QCOMPARE(texts(temperatures), (QStringList{"70", "71", "72", "73"}));
    QCOMPARE(warningStyles(temperatures), 0x01);
    emit m_adaptor->tireTemperatureStatus(0x01, 0, {"70", "71", "72", "73"});
    QCOMPARE(texts(temperatures), nulls);
    QCOMPARE(warningStyles(temperatures), 0);
    emit m_adaptor->tirePressureStatus(0x2F, 0, {"30", "31", "32", "33", "1"});
    QCOMPARE(texts(pressures), (QStringList{"30", "31", "33", "32"}));
    QCOMPARE(warningStyles(pressures), 0);
    QVERIFY(find<QPushButton>(m_screen, "key_engine")->isChecked());
}

void tst_Tires::payloadsAreLogged_data()
{
    QTest::addColumn<QByteArray>("slot");
    for (const char *slot :
         {"onTirePressureStatus", "onNordaTirePressureStatus", "onTireTemperatureStatus"})
        QTest::newRow(slot) << QByteArray(slot);
}

void tst_Tires::payloadsAreLogged()
{
    QFETCH(QByteArray, slot);
    MessageCapture capture;
    invoke(m_screen, slot, Q_ARG(uchar, 33), Q_ARG(uchar, 77),
           Q_ARG(QStringList, (QStringList{"34 psi", "b", "c", "d", "0"})));
    const QStringList lines = capture.takeTexts();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].contains(slot + "(") && lines[0].contains("-- 33 77 (\"34 psi\", \"b\""),
             qPrintable(lines[0]));
}

NORDA_TEST_MAIN(tst_Tires)
#include "tst_tires.moc"
