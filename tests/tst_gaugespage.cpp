#include "disabledlook.h"
#include "gaugesfixture.h"
#include "messagecapture.h"
#include "scrolllabel.h"

#include <QPushButton>

using norda::VtqAdaptor;

static const QString beep = QStringLiteral("svaudio::AudioService::doBeep(0)");

/** The gauges page around its gauges: lamps, texts, touches and what it costs. */
class tst_GaugesPage : public QObject, private GaugesFixture
{
    Q_OBJECT
private slots:
    void init() { openScreen(); }
    void cleanup() { closeScreen(); }

    void peakIndicator();
    void peakTexts_data();
    void peakTexts();
    void peakColors_data();
    void peakColors();
    void shifterLamp_data();
    void shifterLamp();
    void topBarText();
    void logOnlySignals_data();
    void logOnlySignals();

    void touches_data();
    void touches();
    void unknownGaugesSendNothing();
    void presetKeys();
    void presetLabels_data();
    void presetLabels();
    void disabledPresetKey();
    void settingsKey();

    void receivesWhileHidden();
    void disconnectsAsAWhole();
    void destroyedScreenReceivesNothing();
    void idlePageNeitherWakesNorPaints();
    void repeatedValuesPaintNothing();
};

void tst_GaugesPage::peakIndicator()
{
    QLabel *ready = label("Txt_ready");
    for (int flag : {0, 1, 0, 255}) {
        emit adaptor()->peakIndicatorNotify(static_cast<unsigned char>(flag));
        QCOMPARE(ready->isVisible(), flag != 0);
    }
}

void tst_GaugesPage::peakTexts_data()
{
    QTest::addColumn<QString>("sent");
    QTest::addColumn<QString>("shown");
    QTest::newRow("nine characters") << "OVERSPEED"
                                     << "OVERSP";
    QTest::newRow("six") << "SHIFT!"
                         << "SHIFT!";
    QTest::newRow("five") << "SHIFT"
                          << "SHIFT";
    QTest::newRow("empty") << ""
                           << "";
}

void tst_GaugesPage::peakTexts()
{
    QFETCH(QString, sent);
    QFETCH(QString, shown);
    emit adaptor()->peakIndicatorTextNotify(sent);
    QCOMPARE(text("Txt_ready"), shown);
}

void tst_GaugesPage::peakColors_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("sheet");
    const QMap<int, QString> sheets = {{1, "color:rgb(224, 27, 36);\n"},
                                       {2, "color: rgb(28, 113, 216);\n"},
                                       {3, "color: rgb(255, 125, 0);\n"},
                                       {4, "color: rgb(229, 255, 10);\n"},
                                       {5, "color: rgb(38, 162, 105);\n"}};
    for (int code : {0, 1, 2, 3, 4, 5, 6, 7, 128, 255})
        QTest::addRow("code %d", code) << code << sheets.value(code);
}

void tst_GaugesPage::peakColors()
{
    QFETCH(int, code);
    QFETCH(QString, sheet);
    const QImage formsColor = label("Txt_ready")->grab().toImage();
    emit adaptor()->centerGaugePeakColorNotify(3);
    emit adaptor()->centerGaugePeakColorNotify(static_cast<unsigned char>(code));
    QCOMPARE(label("Txt_ready")->styleSheet(), sheet);
    QCOMPARE(label("Txt_ready")->grab().toImage() == formsColor, sheet.isEmpty());
}

void tst_GaugesPage::shifterLamp_data()
{
    QTest::addColumn<int>("flag");
    QTest::addColumn<QString>("image");
    const QString on = QStringLiteral(":/icon/gaugesicon/gauge_indicator_on.png");
    QTest::newRow("off") << 0 << QStringLiteral(":/icon/gaugesicon/gauge_indicator_off.png");
    QTest::newRow("on") << 1 << on;
    QTest::newRow("on with any other value") << 255 << on;
}

void tst_GaugesPage::shifterLamp()
{
    QFETCH(int, flag);
    QFETCH(QString, image);
    emit adaptor()->shifterArrowIndicatorNotify(flag ? 0 : 1);
    emit adaptor()->shifterArrowIndicatorNotify(static_cast<unsigned char>(flag));
    const QImage expected = QPixmap(image).toImage();
    QVERIFY(!expected.isNull());
    QCOMPARE(label("Indicator_lb_2")->pixmap(Qt::ReturnByValue).toImage(), expected);
}

void tst_GaugesPage::topBarText()
{
    emit adaptor()->gauTopBarTextNotify(QStringLiteral("86 km/h"));
    QCOMPARE(text("Txt_fork"), QStringLiteral("86 km/h"));
    const QString tooLong(200, QLatin1Char('W'));
    emit adaptor()->gauTopBarTextNotify(tooLong);
    QCOMPARE(text("Txt_fork"), tooLong);
    const auto *bar = find<ScrollLabel>(m_screen, "Txt_fork");
    QVERIFY(bar->overflow() > 0);
    QTRY_VERIFY(bar->scrollOffset() > 0);
}

void tst_GaugesPage::logOnlySignals_data()
{
    QTest::addColumn<QByteArray>("signal");
    QTest::newRow("active preset") << QByteArray("activePresetStatusNotify");
    QTest::newRow("red line") << QByteArray("centerGaugeRedLinePositionNotify");
}

void tst_GaugesPage::logOnlySignals()
{
    QFETCH(QByteArray, signal);
    const QImage before = m_screen->grab().toImage();
    MessageCapture capture;
    QMetaObject::invokeMethod(adaptor(), signal, Q_ARG(uchar, 65));
    const QStringList lines = capture.takeTexts();
    QCOMPARE(lines.size(), 1);
    QVERIFY(lines[0].endsWith(QStringLiteral("-- 65")));
    QCOMPARE(m_screen->grab().toImage(), before);
}

void tst_GaugesPage::touches_data()
{
    QTest::addColumn<QPoint>("place"); // inside gagus_widget_1
    QTest::addColumn<QByteArray>("menu");
    QTest::newRow("centre") << QPoint(572, 200) << QByteArray("centerGaugeMenu");
    QTest::newRow("centre, on a scale number") << QPoint(536, 85) << QByteArray("centerGaugeMenu");
    QTest::newRow("centre, on its shift lamp") << QPoint(651, 254) << QByteArray("centerGaugeMenu");
    QTest::newRow("top left, through its panel") << QPoint(214, 180) << QByteArray("gaugeTLMenu");
    QTest::newRow("top right, through its panel") << QPoint(937, 180) << QByteArray("gaugeTRMenu");
    QTest::newRow("bottom left") << QPoint(120, 300) << QByteArray("gaugeBLMenu");
    QTest::newRow("bottom right") << QPoint(937, 400) << QByteArray("gaugeBRMenu");
}

void tst_GaugesPage::touches()
{
    QFETCH(QPoint, place);
    QFETCH(QByteArray, menu);
    // The touch goes to whatever lies on top there, as the window system delivers it.
    const QPoint onScreen = find<QWidget>(m_screen, "gagus_widget_1")->mapTo(m_screen, place);
    CallSpy calls;
    QTest::mousePress(m_screen->windowHandle(), Qt::LeftButton, {}, onScreen);
    QCOMPARE(calls.take(), (QStringList{beep, command(menu + "(1)")}));
    QTest::mouseRelease(m_screen->windowHandle(), Qt::LeftButton, {}, onScreen);
    QCOMPARE(calls.take(), QStringList{command(menu + "(2)")});
}

void tst_GaugesPage::unknownGaugesSendNothing()
{
    CallSpy calls;
    for (int id : {-1, 5, INT_MAX}) {
        QMetaObject::invokeMethod(m_screen, "onGaugeTouch", Q_ARG(bool, true), Q_ARG(int, id));
        QMetaObject::invokeMethod(m_screen, "onGaugeTouch", Q_ARG(bool, false), Q_ARG(int, id));
    }
    QCOMPARE(calls.take({"norda::"}), QStringList());
}

void tst_GaugesPage::presetKeys()
{
    find<QWidget>(m_screen, "button_widget")->show();
    const struct
    {
        const char *key;
        const char *control;
    } keys[] = {{"key_P1", "18"}, {"key_P2", "34"}};
    for (const auto &row : keys) {
        auto *key = find<QPushButton>(m_screen, row.key);
        QVERIFY(key->isCheckable());
        const QByteArray sent = QByteArray("gaugesCustomControls(") + row.control;
        // On the caption, which lets touches through.
        const QPoint centre = key->mapTo(m_screen, key->rect().center());
        CallSpy calls;
        QTest::mousePress(m_screen->windowHandle(), Qt::LeftButton, {}, centre);
        QCOMPARE(calls.take(), QStringList{command(sent + ", 1)")});
        QTest::mouseRelease(m_screen->windowHandle(), Qt::LeftButton, {}, centre);
        QCOMPARE(calls.take(), (QStringList{command(sent + ", 2)"), beep}));
        QVERIFY(key->isChecked());
    }
    QVERIFY(find<QPushButton>(m_screen, "key_P1")->isChecked()); // not exclusive
}

struct KeyLook
{
    bool shown, enabled, checked;
    QString caption;
};
Q_DECLARE_METATYPE(KeyLook)

void tst_GaugesPage::presetLabels_data()
{
    QTest::addColumn<QStringList>("captions");
    QTest::addColumn<QByteArray>("states");
    QTest::addColumn<KeyLook>("first");
    QTest::addColumn<KeyLook>("second");
    // Before each row: both shown, enabled, unchecked, captions "x" and "y".
    const KeyLook x = {true, true, false, "x"};
    const KeyLook y = {true, true, false, "y"};
    const KeyLook hiddenX = {false, true, false, "x"};
    const KeyLook hiddenY = {false, true, false, "y"};
    QTest::newRow("worked example")
        << QStringList{"A", "B", "C"} << QByteArray("\2\0", 2) << KeyLook{true, true, true, "A"}
        << KeyLook{true, false, false, "B"};
    QTest::newRow("null states") << QStringList{"A", "B"} << QByteArray() << hiddenX << hiddenY;
    QTest::newRow("empty states") << QStringList{"A", "B"} << QByteArray("") << x << y;
    QTest::newRow("one state") << QStringList{"A", "B"} << QByteArray("\1", 1)
                               << KeyLook{true, true, false, "A"} << hiddenY;
    QTest::newRow("three states") << QStringList{"A", "B", "C"} << QByteArray("\1\2\0", 3)
                                  << KeyLook{true, true, false, "A"}
                                  << KeyLook{true, true, true, "B"};
    QTest::newRow("fewer captions than states")
        << QStringList{"A"} << QByteArray("\1\1", 2) << KeyLook{true, true, false, "A"}
        << KeyLook{true, true, false, ""};
    QTest::newRow("unknown states")
        << QStringList{"A", "B"} << QByteArray("\3\xff", 2) << KeyLook{true, true, false, "A"}
        << KeyLook{true, true, false, "B"};
}

void tst_GaugesPage::presetLabels()
{
    QFETCH(QStringList, captions);
    QFETCH(QByteArray, states);
    QFETCH(KeyLook, first);
    QFETCH(KeyLook, second);
    find<QWidget>(m_screen, "button_widget")->show();
    emit adaptor()->gauCustomControlLabelsNotify({"x", "y"}, QByteArray("\1\1", 2));
    emit adaptor()->gauCustomControlLabelsNotify(captions, states);
    const struct
    {
        const char *key, *caption;
        KeyLook look;
    } keys[] = {{"key_P1", "Txt_P1", first}, {"key_P2", "Txt_P2", second}};
    for (const auto &row : keys) {
        auto *key = find<QPushButton>(m_screen, row.key);
        QCOMPARE(key->isVisible(), row.look.shown);
        QCOMPARE(label(row.caption)->isVisible(), row.look.shown);
        QCOMPARE(key->isEnabled(), row.look.enabled);
        QCOMPARE(key->isChecked(), row.look.checked);
        const QIcon::State state = key->isChecked() ? QIcon::On : QIcon::Off;
        const QString image = QStringLiteral(":/icon/gaugesicon/gagus_button_%1.png")
                                  .arg(key->isChecked() ? 'p' : 'n');
        QCOMPARE(key->icon().pixmap(key->iconSize(), QIcon::Normal, state).toImage(),
                 QPixmap(image).toImage());
        QCOMPARE(text(row.caption), row.look.caption);
    }
}

void tst_GaugesPage::disabledPresetKey()
{
    find<QWidget>(m_screen, "button_widget")->show();
    const auto captionColor = [this] {
        return label("Txt_P2")->palette().color(QPalette::WindowText).lightness();
    };
    const int live = captionColor();
    QCOMPARE(faultOfDisabledLook(find<QPushButton>(m_screen, "key_P2")), QString());
    emit adaptor()->gauCustomControlLabelsNotify({"A", "B"}, QByteArray("\1\0", 2));
    QVERIFY(captionColor() < live * 6 / 10);
    emit adaptor()->gauCustomControlLabelsNotify({"A", "B"}, QByteArray("\1\1", 2));
    QCOMPARE(captionColor(), live);
}

void tst_GaugesPage::settingsKey()
{
    CallSpy calls;
    find<QPushButton>(m_screen, "key_settings")->click();
    QCOMPARE(calls.take(), (QStringList{beep, command("gaugesSettings()")}));
}

void tst_GaugesPage::receivesWhileHidden()
{
    m_screen->hide();
    emit adaptor()->gaugeTRValueNotify(QStringLiteral("99"), 99);
    QCOMPARE(text(valueNames[TopRight]), QStringLiteral("99"));
    // Nobody watches, so the needle is there at once.
    QCOMPARE(gauge(TopRight)->shownValue(), 99.0);
}

void tst_GaugesPage::disconnectsAsAWhole()
{
    QMetaObject::invokeMethod(m_screen, "disconnectVtqAdaptor");
    emit adaptor()->gaugeTRValueNotify(QStringLiteral("99"), 99);
    emit adaptor()->gaugeTitlesNotify({"A", "B", "C", "D", "E"});
    emit adaptor()->gauTopBarTextNotify(QStringLiteral("text"));
    QCOMPARE(text(valueNames[TopRight]), QString());
    QCOMPARE(text(titleNames[0]), QStringLiteral("Tachometer"));
    QCOMPARE(text("Txt_fork"), QString());

    // The two connections made for life stay.
    emit adaptor()->centerGaugeValueNotify(QStringLiteral("700"), QString(), 0);
    QCOMPARE(text("Txt_center_value"), QStringLiteral("700 RPM"));
    emit adaptor()->Properties2TextInfo({0, 0, 1, 2, 3, 4});
    QCOMPARE(text(valueNames[TopLeft]), QStringLiteral("1 ℉"));

    QMetaObject::invokeMethod(m_screen, "connectVtqAdaptor");
    emit adaptor()->gauTopBarTextNotify(QStringLiteral("text"));
    QCOMPARE(text("Txt_fork"), QStringLiteral("text"));
}

void tst_GaugesPage::destroyedScreenReceivesNothing()
{
    m_host->close(80);
    MessageCapture capture;
    emit adaptor()->gaugeTitlesNotify({});
    emit adaptor()->Properties2TextInfo({});
    QCOMPARE(capture.takeTexts(), QStringList());
}

/** Counts what an idle page must not do. */
class ActivityProbe : public QObject
{
public:
    ActivityProbe() { QCoreApplication::instance()->installEventFilter(this); }
    int paints = 0;
    int timers = 0;

private:
    bool eventFilter(QObject *, QEvent *event) override
    {
        paints += event->type() == QEvent::Paint;
        timers += event->type() == QEvent::Timer;
        return false;
    }
};

void tst_GaugesPage::idlePageNeitherWakesNorPaints()
{
    emit adaptor()->centerGaugeValueNotify(QStringLiteral("3500"), QStringLiteral("RPM"), 35);
    emit adaptor()->gauTopBarTextNotify(QStringLiteral("86 km/h"));
    QTRY_COMPARE(gauge(Centre)->shownValue(), 35.0);
    QTest::qWait(100);
    ActivityProbe probe;
    QTest::qWait(1000);
    QCOMPARE(probe.paints, 0);
    QVERIFY2(probe.timers <= 1, qPrintable(QString::number(probe.timers))); // qWait's own
}

void tst_GaugesPage::repeatedValuesPaintNothing()
{
    const auto burst = [] {
        emit adaptor()->centerGaugeValueNotify(QStringLiteral("3500"), QStringLiteral("RPM"), 35);
        emit adaptor()->gaugeTitlesNotify({"A", "B", "C", "D", "E"});
        emit adaptor()->Properties2TextInfo({0, 0, 11, 12, 13, 14});
        emit adaptor()->gaugeTLValueNotify(QStringLiteral("11 ℉"), 11);
        emit adaptor()->shifterArrowIndicatorNotify(1);
        emit adaptor()->centerGaugePeakColorNotify(1);
        emit adaptor()->peakIndicatorTextNotify(QStringLiteral("SHIFT"));
    };
    burst();
    QTest::qWait(400);
    ActivityProbe probe;
    burst();
    QTest::qWait(400);
    QCOMPARE(probe.paints, 0);
    emit adaptor()->gaugeTitlesNotify({"A", "B", "C", "D", "F"});
    QTRY_VERIFY(probe.paints > 0);
}

NORDA_TEST_MAIN(tst_GaugesPage)
#include "tst_gaugespage.moc"
