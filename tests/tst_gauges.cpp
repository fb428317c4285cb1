#include "gaugesfixture.h"
#include "messagecapture.h"
#include "scrolllabel.h"

using norda::SQuilloGauge;
using norda::VtqAdaptor;

/** What the gauges show: values, titles, scales and styles. */
class tst_Gauges : public QObject, private GaugesFixture
{
    Q_OBJECT
private slots:
    void init() { openScreen(); }
    void cleanup() { closeScreen(); }

    void startsAsAgreed();
    void gaugeRecords_data();
    void gaugeRecords();
    void asksForItsData();

    void centreValue_data();
    void centreValue();
    void firstCentreSlotFitsItsText_data();
    void firstCentreSlotFitsItsText();
    void fontIsTheLargestForAnyText();
    void orderOfTheCentreReceiversSurvivesReconnection();
    void cornerValues_data();
    void cornerValues();
    void properties_data();
    void properties();
    void shortPropertiesAreIgnored_data();
    void shortPropertiesAreIgnored();

    void titles_data();
    void titles();
    void scale_data();
    void scale();
    void scaleLayouts_data();
    void scaleLayouts();
    void styles_data();
    void styles();
    void partOfTheStylesKeepsTheRest();
};

void tst_Gauges::startsAsAgreed()
{
    QCOMPARE(m_screen->objectName(), QStringLiteral("norda_gauge"));
    QCOMPARE(m_screen->size(), QSize(1280, 720));
    QVERIFY(!find<QWidget>(m_screen, "button_widget")->isVisible());
    QVERIFY(!find<QWidget>(m_screen, "key_settings")->isVisible());
    QCOMPARE(find<QWidget>(m_screen, "key_settings")->x(), 9999);

    const QStringList titles = {"Tachometer", "Transmission Temp", "Coolant Temp",
                                "Intake Air Temp", "Engine Calculated Load"};
    for (int index = 0; index < GaugeCount; ++index) {
        QCOMPARE(text(titleNames[index]), titles[index]);
        QVERIFY(qobject_cast<ScrollLabel *>(label(titleNames[index])));
        QCOMPARE(text(valueNames[index]), QString());
    }
    QVERIFY(qobject_cast<ScrollLabel *>(label("Txt_center_value")));
    QVERIFY(qobject_cast<ScrollLabel *>(label("Txt_fork")));
    QCOMPARE(text("Txt_ready"), QStringLiteral("READY"));
    for (int i = 0; i <= 10; ++i)
        QCOMPARE(text(qPrintable(QStringLiteral("Txt_scale_%1").arg(i + 1))),
                 QString::number(10 * i));
}

void tst_Gauges::gaugeRecords_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QRect>("geometry");
    QTest::addColumn<int>("fullScale");
    QTest::addColumn<QString>("pointer");
    const QString large = QStringLiteral(":/icon/gaugesicon/gagus_pointer_large.png");
    const QString medium = QStringLiteral(":/icon/gaugesicon/gagus_pointer_medium.png");
    QTest::newRow("centre") << 0 << QRect(387, 14, 370, 370) << 100 << large;
    QTest::newRow("top left") << 1 << QRect(102, 21, 224, 224) << 250 << medium;
    QTest::newRow("top right") << 2 << QRect(825, 21, 224, 224) << 250 << medium;
    QTest::newRow("bottom left") << 3 << QRect(102, 250, 224, 224) << 250 << medium;
    QTest::newRow("bottom right") << 4 << QRect(825, 250, 224, 224) << 100 << medium;
}

void tst_Gauges::gaugeRecords()
{
    QFETCH(int, index);
    QFETCH(QRect, geometry);
    QFETCH(int, fullScale);
    QFETCH(QString, pointer);
    SQuilloGauge *shown = gauge(index);
    QCOMPARE(shown->parentWidget(), find<QWidget>(m_screen, "gagus_widget_1"));
    QCOMPARE(shown->geometry(), geometry);
    QCOMPARE(shown->mixValue(), fullScale);
    QCOMPARE(shown->imageDir(), pointer);
    QCOMPARE(shown->zeroImageDir(), QString());
    QVERIFY(shown->getNeedle());
    QVERIFY(shown->autoFillBackground());
    QVERIFY(shown->isVisible());
    QCOMPARE(shown->palette().brush(QPalette::Window).texture().size(), geometry.size());
}

void tst_Gauges::asksForItsData()
{
    CallSpy calls;
    m_host->window(80)->onEnter();
    QCOMPARE(calls.take({"norda::"}), QStringList{command("requestGaugesInfo()")});
    QMetaObject::invokeMethod(m_screen, "connectVtqAdaptor");
    QCOMPARE(calls.take(), QStringList{command("requestGaugesInfo()")});
    m_host->close(80);
    calls.take();
    m_host->window(80)->onCreate();
    QCOMPARE(calls.take({"norda::"}), QStringList{command("requestGaugesInfo()")});
}

void tst_Gauges::centreValue_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<int>("position");
    QTest::newRow("3500") << "3500"
                          << "3500 RPM" << 35;
    QTest::newRow("truncated to hundreds") << "2999"
                                           << "2999 RPM" << 29;
    QTest::newRow("standing") << "0"
                              << "0 RPM" << 0;
    QTest::newRow("largest") << "10000"
                             << "10000 RPM" << 100;
    QTest::newRow("just too large") << "10001"
                                    << "Error RPM" << 0;
    QTest::newRow("12000") << "12000"
                           << "Error RPM" << 0;
    QTest::newRow("no engine speed") << "65535"
                                     << "Error RPM" << 0;
    QTest::newRow("not a number") << "n/a"
                                  << "n/a RPM" << 0;
    QTest::newRow("too large for an integer") << "99999999999"
                                              << "99999999999 RPM" << 0;
    QTest::newRow("empty") << ""
                           << " RPM" << 0;
    QTest::newRow("longer than ten characters") << "twelve chars"
                                                << "twelve chars RPM" << 0;
    QTest::newRow("negative") << "-500"
                              << "-500 RPM" << -5;
}

void tst_Gauges::centreValue()
{
    QFETCH(QString, value);
    QFETCH(QString, shown);
    QFETCH(int, position);
    emit adaptor()->centerGaugeValueNotify(QStringLiteral("8888"), QString(), 88);
    // Unit and position of the signal do not matter.
    emit adaptor()->centerGaugeValueNotify(value, QStringLiteral("km/h"), 77);
    QCOMPARE(text("Txt_center_value"), shown);
    QCOMPARE(gauge(Centre)->value(), position);
}

void tst_Gauges::firstCentreSlotFitsItsText_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("shown");
    QTest::newRow("as it is") << "3500"
                              << "RPM"
                              << "3500 RPM";
    QTest::newRow("both cut to ten") << "12345678901"
                                     << "abcdefghijk"
                                     << "1234567890 abcdefghij";
    QTest::newRow("empty unit") << "1"
                                << ""
                                << "1 ";
}

void tst_Gauges::firstCentreSlotFitsItsText()
{
    QFETCH(QString, value);
    QFETCH(QString, unit);
    QFETCH(QString, shown);
    // The text is measured in the font that the label has, which is its plain one from then on.
    for (int call = 0; call < 2; ++call)
        QMetaObject::invokeMethod(m_screen, "onCenterGaugeValue", Q_ARG(QString, value),
                                  Q_ARG(QString, unit), Q_ARG(uchar, 42));
    QLabel *centre = label("Txt_center_value");
    QCOMPARE(centre->text(), shown);
    QCOMPARE(gauge(Centre)->value(), 42);

    // The largest size from 30 pixels down at which the text fits, and no other trait of the font.
    const int pixels = centre->font().pixelSize();
    QVERIFY(pixels >= 1 && pixels <= 30);
    QVERIFY(QFontMetrics(centre->font()).horizontalAdvance(shown) <= centre->width());
    QCOMPARE(centre->font().family(), QFont().family());
    QVERIFY(!centre->font().bold());
    if (pixels < 30) {
        QFont larger = centre->font();
        larger.setPixelSize(pixels + 1);
        QVERIFY(QFontMetrics(larger).horizontalAdvance(shown) > centre->width());
    }
}

/** Most texts are not measured as a whole: their letters fit one by one. It must not show. */
void tst_Gauges::fontIsTheLargestForAnyText()
{
    const auto largestFor = [](QFont font, const QString &text, int width) {
        int pixels = 30;
        for (; pixels > 1; --pixels) {
            font.setPixelSize(pixels);
            if (QFontMetrics(font).horizontalAdvance(text) <= width)
                break;
        }
        return pixels;
    };
    QLabel *centre = label("Txt_center_value");
    QRandomGenerator random(21);
    int reduced = 0;
    for (int turn = 0; turn < 500; ++turn) {
        QString value(random.bounded(1, 11), QLatin1Char(' '));
        QString unit(random.bounded(1, 11), QLatin1Char(' '));
        for (QString *text : {&value, &unit}) {
            for (QChar &letter : *text)
                letter = turn % 10 ? QChar(random.bounded(32, 127)) : QChar('\t');
        }
        const QFont before = centre->font();
        QMetaObject::invokeMethod(m_screen, "onCenterGaugeValue", Q_ARG(QString, value),
                                  Q_ARG(QString, unit), Q_ARG(uchar, 42));
        QCOMPARE(centre->font().pixelSize(), largestFor(before, centre->text(), centre->width()));
        reduced += centre->font().pixelSize() < 30;
    }
    QVERIFY(reduced > 50 && reduced < 450);
}

void tst_Gauges::orderOfTheCentreReceiversSurvivesReconnection()
{
    const auto showsSecondReceiver = [this] {
        emit adaptor()->centerGaugeValueNotify(QStringLiteral("1200"), QStringLiteral("x"), 99);
        return text("Txt_center_value") == QStringLiteral("1200 RPM") &&
               gauge(Centre)->value() == 12;
    };
    QVERIFY(showsSecondReceiver());
    QMetaObject::invokeMethod(m_screen, "connectVtqAdaptor");
    QVERIFY(showsSecondReceiver());
    QMetaObject::invokeMethod(m_screen, "disconnectVtqAdaptor");
    QMetaObject::invokeMethod(m_screen, "connectVtqAdaptor");
    QVERIFY(showsSecondReceiver());
}

void tst_Gauges::cornerValues_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("corner");
    QTest::newRow("top left") << 1 << QByteArray("TL");
    QTest::newRow("top right") << 2 << QByteArray("TR");
    QTest::newRow("bottom left") << 3 << QByteArray("BL");
    QTest::newRow("bottom right") << 4 << QByteArray("BR");
}

void tst_Gauges::cornerValues()
{
    QFETCH(int, index);
    QFETCH(QByteArray, corner);
    const QFont before = label(valueNames[index])->font();
    QMetaObject::invokeMethod(adaptor(), "gauge" + corner + "ValueNotify",
                              Q_ARG(QString, QStringLiteral("a text that is not cut at all")),
                              Q_ARG(uchar, 77));
    QCOMPARE(text(valueNames[index]), QStringLiteral("a text that is not cut at all"));
    QCOMPARE(gauge(index)->value(), 77);
    QCOMPARE(label(valueNames[index])->font(), before);

    QMetaObject::invokeMethod(adaptor(), "gauge" + corner + "ValueDualNotify",
                              Q_ARG(QString, QStringLiteral("203")),
                              Q_ARG(QString, QStringLiteral("℉")), Q_ARG(uchar, 203));
    QCOMPARE(text(valueNames[index]), QStringLiteral("203 ℉"));
    QCOMPARE(gauge(index)->value(), 203);
    for (int other = 1; other < GaugeCount; ++other) {
        if (other != index)
            QCOMPARE(text(valueNames[other]), QString());
    }
}

void tst_Gauges::properties_data()
{
    QTest::addColumn<QList<int>>("properties");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QList<int>>("positions"); // after a first list of 1, 2, 3, 4
    QTest::newRow("worked example")
        << QList<int>{9, 9, 180, 251, -1, 100}
        << QStringList{"180 ℉", "Error ℉", "Error ℉", "100 %"} << QList<int>{180, 2, 3, 100};
    QTest::newRow("lowest") << QList<int>{0, 0, 0, 0, 0, 0}
                            << QStringList{"0 ℉", "0 ℉", "0 ℉", "0 %"} << QList<int>{0, 0, 0, 0};
    QTest::newRow("highest") << QList<int>{0, 0, 250, 250, 250, 100, 1, 2, 3, 4, 5}
                             << QStringList{"250 ℉", "250 ℉", "250 ℉", "100 %"}
                             << QList<int>{250, 250, 250, 100};
    QTest::newRow("all beyond") << QList<int>{0, 0, 251, INT_MAX, INT_MIN, 101}
                                << QStringList{"Error ℉", "Error ℉", "Error ℉", "Error %"}
                                << QList<int>{1, 2, 3, 4};
}

void tst_Gauges::properties()
{
    QFETCH(QList<int>, properties);
    QFETCH(QStringList, texts);
    QFETCH(QList<int>, positions);
    emit adaptor()->Properties2TextInfo({0, 0, 1, 2, 3, 4});
    emit adaptor()->Properties2TextInfo(properties);
    for (int corner = TopLeft; corner <= BottomRight; ++corner) {
        QCOMPARE(text(valueNames[corner]), texts[corner - 1]);
        QCOMPARE(gauge(corner)->value(), positions[corner - 1]);
    }
}

void tst_Gauges::shortPropertiesAreIgnored_data()
{
    QTest::addColumn<QList<int>>("properties");
    QTest::newRow("empty") << QList<int>();
    QTest::newRow("five") << QList<int>{1, 2, 3, 4, 5};
}

void tst_Gauges::shortPropertiesAreIgnored()
{
    QFETCH(QList<int>, properties);
    emit adaptor()->Properties2TextInfo({0, 0, 11, 12, 13, 14});
    MessageCapture capture;
    emit adaptor()->Properties2TextInfo(properties);
    const QStringList lines = capture.takeTexts();
    QCOMPARE(lines.size(), 1);
    QVERIFY(lines[0].endsWith(
        QStringLiteral("vehicle properties: expected 6 numbers, got %1").arg(properties.size())));
    QCOMPARE(text(valueNames[TopLeft]), QStringLiteral("11 ℉"));
    QCOMPARE(text(valueNames[BottomRight]), QStringLiteral("14 %"));
}

void tst_Gauges::titles_data()
{
    QTest::addColumn<QStringList>("titles");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("five") << QStringList{"A", "B", "C", "D", "E"} << true;
    QTest::newRow("a sixth is ignored") << QStringList{"A", "B", "C", "D", "E", "F"} << true;
    QTest::newRow("a long centre title")
        << QStringList{QString(60, 'W'), "B", "C", "D", "E"} << true;
    QTest::newRow("four") << QStringList{"A", "B", "C", "D"} << false;
    QTest::newRow("none") << QStringList() << false;
}

void tst_Gauges::titles()
{
    QFETCH(QStringList, titles);
    QFETCH(bool, accepted);
    MessageCapture capture;
    emit adaptor()->gaugeTitlesNotify(titles);
    const QList<MessageCapture::Message> messages = capture.take();
    QCOMPARE(messages.size(), accepted ? 0 : 1);
    if (!accepted) {
        QCOMPARE(messages[0].type, QtCriticalMsg);
        QCOMPARE(text(titleNames[0]), QStringLiteral("Tachometer"));
        QCOMPARE(text(titleNames[4]), QStringLiteral("Engine Calculated Load"));
        return;
    }
    for (int index = 0; index < GaugeCount; ++index)
        QCOMPARE(text(titleNames[index]), titles[index]);
    QLabel *centre = label(titleNames[Centre]);
    QCOMPARE(QFontMetrics(centre->font()).horizontalAdvance(titles[0]) <= centre->width() ||
                 centre->font().pixelSize() == 1,
             true);
    QCOMPARE(centre->font().pixelSize() == 30, titles[0] == QStringLiteral("A"));
}

void tst_Gauges::scale_data()
{
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QStringList>("shown"); // the eleven labels
    QTest::addColumn<int>("warnings");
    const QStringList twelve = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12"};
    QTest::newRow("twelve entries fill eleven labels")
        << twelve << QStringList(twelve.mid(0, 11)) << 0;
    QTest::newRow("cut to three characters")
        << QStringList{"1000"}
        << QStringList{"100", "10", "20", "30", "40", "50", "60", "70", "80", "90", "100"} << 0;
    QTest::newRow("not a number keeps its text")
        << QStringList{"5", "x", "15", ""}
        << QStringList{"5", "10", "15", "30", "40", "50", "60", "70", "80", "90", "100"} << 2;
    QTest::newRow("a huge text") << QStringList{QString(200000, 'x')}
                                 << QStringList{"0",  "10", "20", "30", "40", "50",
                                                "60", "70", "80", "90", "100"}
                                 << 1;
    QTest::newRow("negative") << QStringList{"-1234"}
                              << QStringList{"-12", "10", "20", "30", "40", "50",
                                             "60",  "70", "80", "90", "100"}
                              << 0;
}

void tst_Gauges::scale()
{
    QFETCH(QStringList, entries);
    QFETCH(QStringList, shown);
    QFETCH(int, warnings);
    MessageCapture capture;
    QMetaObject::invokeMethod(m_screen, "onCenterGaugeScale", Q_ARG(QString, entries[0]),
                              Q_ARG(QStringList, entries.mid(1)));
    const QList<MessageCapture::Message> messages = capture.take();
    QCOMPARE(messages.size(), warnings);
    for (const MessageCapture::Message &message : messages) {
        QCOMPARE(message.type, QtWarningMsg);
        QVERIFY(!message.text.contains(QString(81, 'x'))); // texts of the car are cut to 80
    }
    QStringList texts;
    for (int i = 1; i <= 11; ++i)
        texts.append(text(qPrintable(QStringLiteral("Txt_scale_%1").arg(i))));
    QCOMPARE(texts, shown);
}

void tst_Gauges::scaleLayouts_data()
{
    QTest::addColumn<char>("style");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("pixels");
    QTest::addColumn<QList<QPoint>>("positions");
    QTest::newRow("needle") << char(1) << QSize(40, 34) << 20
                            << QList<QPoint>{{372, 296}, {344, 261}, {330, 217}, {335, 168},
                                             {357, 125}, {390, 103}, {434, 89},  {460, 95},
                                             {499, 119}, {525, 149}, {537, 176}};
    QTest::newRow("arc") << char(0) << QSize(34, 28) << 16
                         << QList<QPoint>{{131, 202}, {97, 193},  {74, 172}, {64, 144},
                                          {64, 115},  {78, 88},   {105, 69}, {140, 66},
                                          {173, 79},  {190, 106}, {197, 135}};
}

void tst_Gauges::scaleLayouts()
{
    QFETCH(char, style);
    QFETCH(QSize, size);
    QFETCH(int, pixels);
    QFETCH(QList<QPoint>, positions);
    emit adaptor()->gaugeGraphicalSettingNotify(QByteArray(5, style), QByteArray(5, '\0'));
    QMetaObject::invokeMethod(m_screen, "updateScale");
    for (int i = 0; i < 11; ++i) {
        const QLabel *number = label(qPrintable(QStringLiteral("Txt_scale_%1").arg(i + 1)));
        QCOMPARE(number->geometry(), QRect(positions[i], size));
        QCOMPARE(number->font().pixelSize(), pixels);
    }
}

void tst_Gauges::styles_data()
{
    QTest::addColumn<QByteArray>("styles");
    QTest::addColumn<QByteArray>("zeros");
    QTest::addColumn<QList<bool>>("needles");
    QTest::addColumn<QList<double>>("zeroPositions");
    QTest::addColumn<int>("warnings");
    QTest::newRow("all needles") << QByteArray("\1\1\1\1\1", 5) << QByteArray("\0\0\0\0\0", 5)
                                 << QList<bool>{true, true, true, true, true}
                                 << QList<double>{0, 0, 0, 0, 0} << 0;
    QTest::newRow("all arcs") << QByteArray("\0\2\3\4\xff", 5) << QByteArray("\x32\1\2\3\xff", 5)
                              << QList<bool>{false, false, false, false, false}
                              << QList<double>{50, 1, 2, 3, 255} << 0;
    // Only three gauges are set, but all five are restyled from their stored bytes, which are 0.
    QTest::newRow("three zero positions")
        << QByteArray("\1\1\0\1\1", 5) << QByteArray("\5\6\7", 3)
        << QList<bool>{true, true, false, false, false} << QList<double>{5, 6, 7, 0, 0} << 0;
    QTest::newRow("too few styles skip gauges")
        << QByteArray("\1", 1) << QByteArray("\1\2\3\4\5", 5)
        << QList<bool>{true, false, false, false, false} << QList<double>{1, 0, 0, 0, 0} << 1;
    QTest::newRow("both empty") << QByteArray() << QByteArray()
                                << QList<bool>{false, false, false, false, false}
                                << QList<double>{0, 0, 0, 0, 0} << 0;
    QTest::newRow("more than five")
        << QByteArray(9, '\1') << QByteArray(9, '\1') << QList<bool>{true, true, true, true, true}
        << QList<double>{1, 1, 1, 1, 1} << 0;
}

void tst_Gauges::styles()
{
    QFETCH(QByteArray, styles);
    QFETCH(QByteArray, zeros);
    QFETCH(QList<bool>, needles);
    QFETCH(QList<double>, zeroPositions);
    QFETCH(int, warnings);
    const auto imageKeys = [this] {
        QList<qint64> keys;
        for (int i = 0; i < GaugeCount; ++i)
            keys.append(gauge(i)->palette().brush(QPalette::Window).texture().cacheKey());
        return keys;
    };
    const QList<qint64> needleFaces = imageKeys();

    MessageCapture capture;
    emit adaptor()->gaugeGraphicalSettingNotify(styles, zeros);
    QCOMPARE(capture.take().size(), warnings);

    const char *const pointers[2][2] = {{"gagus_arc_small", "gagus_pointer_medium"},
                                        {"gagus_arc_large", "gagus_pointer_large"}};
    for (int i = 0; i < GaugeCount; ++i) {
        QCOMPARE(gauge(i)->getNeedle(), needles[i]);
        QCOMPARE(gauge(i)->zeroPosition(), zeroPositions[i]);
        QCOMPARE(gauge(i)->imageDir(), QStringLiteral(":/icon/gaugesicon/%1.png")
                                           .arg(QLatin1String(pointers[i == Centre][needles[i]])));
        QCOMPARE(gauge(i)->zeroImageDir(), QString());
        QCOMPARE(imageKeys()[i] == needleFaces[i], needles[i]);
        QVERIFY(gauge(i)->autoFillBackground());
    }
}

void tst_Gauges::partOfTheStylesKeepsTheRest()
{
    emit adaptor()->gaugeGraphicalSettingNotify(QByteArray(5, '\1'), QByteArray("\1\2\3\4\5"));
    emit adaptor()->gaugeGraphicalSettingNotify(QByteArray(5, '\0'), QByteArray("\6\7\10"));
    for (int i = 0; i < GaugeCount; ++i) {
        QCOMPARE(gauge(i)->getNeedle(), i >= 3);
        QCOMPARE(gauge(i)->zeroPosition(), QList<double>({6, 7, 8, 4, 5})[i]);
    }
}

NORDA_TEST_MAIN(tst_Gauges)
#include "tst_gauges.moc"
