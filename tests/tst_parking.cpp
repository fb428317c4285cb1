#include "callspy.h"
#include "messagecapture.h"
#include "norda/vtqadaptor.h"
#include "pluginfixture.h"
#include "scrolllabel.h"
#include "testmain.h"

#include <QLabel>
#include <QPushButton>

using norda::VtqAdaptor;

struct Zone
{
    const char *label;
    const char *image;
    const char *start;
};

// clang-format off
static constexpr Zone zones[] = {
    {"icon_front_left_radar",      "F_U",   "F_D_00"},
    {"icon_front_left_mid_radar",  "F_U_M", "F_D_M_01"},
    {"icon_front_right_mid_radar", "F_D_M", "F_U_M_00"},
    {"icon_front_right_radar",     "F_D",   "F_U_00"},
    {"icon_rear_left_radar",       "R_U",   "R_D_00"},
    {"icon_rear_left_mid_radar",   "R_U_M", "R_D_M_00"},
    {"icon_rear_right_mid_radar",  "R_D_M", "R_U_M_00"},
    {"icon_rear_right_radar",      "R_D",   "R_U_00"},
};
// clang-format on
static constexpr int zoneCount = 8;
static constexpr int levelCount = 5;

static const QString zoneQuery = QStringLiteral("norda::VtqService::getParkingAssistZones()");

/** The zones and texts of the parking screen. */
class tst_Parking : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void startsAsAgreed();
    void constructionAsks();
    void startImages();
    void everyZoneAndLevel_data();
    void everyZoneAndLevel();
    void blindSpots_data();
    void blindSpots();
    void clearMessage();
    void longerMessages();
    void ignoredMessages_data();
    void ignoredMessages();
    void shortMessages_data();
    void shortMessages();
    void distances_data();
    void distances();
    void distanceExample();
    void rearDistancesByName();
    void shortDistances_data();
    void shortDistances();
    void sideDistances_data();
    void sideDistances();
    void whatIsConnectedWhen();
    void topBarText();
    void showClearsTheBlindSpot();
    void resumeStartsAnew();
    void onlyChangedZonesRepaint();
    void hiddenScreenFollows();

private:
    template <typename Widget>
    Widget *child(const char *name) const
    {
        return find<Widget>(m_screen, name);
    }
    QLabel *label(int zone) const { return child<QLabel>(zones[zone].label); }
    QString blindSpot() const { return child<QLabel>("blindStopLabel")->text(); }
    /** The level that each zone shows, or 's' for its start image and '?' for any other. */
    QString levels() const
    {
        QString shown;
        for (int zone = 0; zone < zoneCount; ++zone)
            shown.append(level(zone));
        return shown;
    }
    QChar level(int zone) const
    {
        const QImage image = label(zone)->pixmap(Qt::ReturnByValue).toImage();
        const auto isImage = [&image](const QString &name) {
            const QPixmap known(QStringLiteral(":/icon/radaricon/%1.png").arg(name));
            return !known.isNull() && known.toImage() == image;
        };
        for (int level = 0; level < levelCount; ++level) {
            if (isImage(QStringLiteral("%1_%2").arg(zones[zone].image).arg(level)))
                return QLatin1Char(char('0' + level));
        }
        return QLatin1Char(isImage(zones[zone].start) ? 's' : '?');
    }
    void send(const QByteArray &message) { emit m_adaptor->parkingDistanceRear(message); }

    QScopedPointer<PluginFixture> m_host;
    QWidget *m_screen = nullptr;
    VtqAdaptor *const m_adaptor = VtqAdaptor::instance();
};

static QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray bytes;
    for (const int value : values)
        bytes.append(char(value));
    return bytes;
}

void tst_Parking::init()
{
    m_host.reset(new PluginFixture);
    m_screen = m_host->open(83);
}

void tst_Parking::cleanup()
{
    m_host.reset();
}

void tst_Parking::startsAsAgreed()
{
    QCOMPARE(m_screen->metaObject()->className(), "norda::Vantiq_Parking_Widget");
    QCOMPARE(child<QLabel>("Txt_pop_title")->text(), QStringLiteral("Parking Assist"));
    QVERIFY(child<QWidget>("top_title_widget")->isVisible());
    for (const char *hidden : {"button_widget", "key_settings", "key_split"})
        QVERIFY2(!child<QWidget>(hidden)->isVisibleTo(m_screen), hidden);
    QVERIFY(child<QPushButton>("key_camera")->isVisible());
    for (const char *key : {"key_split", "key_camera"}) {
        QVERIFY(child<QPushButton>(key)->isCheckable());
        QCOMPARE(child<QPushButton>(key)->size(), QSize(145, 145));
    }
    QCOMPARE(child<QWidget>("key_settings")->x(), 9999);
    QCOMPARE(child<QWidget>("function_widget")->geometry(), QRect(128, 89, 1152, 528));
    QCOMPARE(child<QWidget>("car_radar_widget")->geometry(), QRect(323, 82, 684, 429));
    QVERIFY(child<QWidget>("car_radar_widget")->testAttribute(Qt::WA_TransparentForMouseEvents));
    QCOMPARE(child<QLabel>("blindStopLabel")->geometry(), QRect(487, 24, 301, 49));
    QCOMPARE(child<QLabel>("blindStopLabel")->parentWidget(), child<QWidget>("function_widget"));
    QVERIFY(child<QPushButton>("norda_key_radar")->isChecked());
}

void tst_Parking::constructionAsks()
{
    m_host->close(83);
    CallSpy calls;
    m_host->window(83)->onCreate();
    QCOMPARE(calls.take({"norda::"}),
             (QStringList{zoneQuery, "norda::VtqAdaptor::requestParkingInfo()"}));
    m_host->window(83)->onEnter();
    QCOMPARE(calls.take({"norda::"}), QStringList{"norda::VtqAdaptor::requestParkingInfo()"});
}

void tst_Parking::startImages()
{
    QCOMPARE(levels(), QStringLiteral("ssssssss"));
    for (int zone = 0; zone < zoneCount; ++zone)
        QVERIFY(label(zone)->isVisible());
}

void tst_Parking::everyZoneAndLevel_data()
{
    QTest::addColumn<int>("zone");
    QTest::addColumn<int>("level");
    for (int zone = 0; zone < zoneCount; ++zone) {
        for (int level = 0; level < levelCount; ++level)
            QTest::addRow("%s level %d", zones[zone].label, level) << zone << level;
    }
}

void tst_Parking::everyZoneAndLevel()
{
    QFETCH(int, zone);
    QFETCH(int, level);
    QString expected(zoneCount, QLatin1Char('0'));
    expected[zone] = QLatin1Char(char('0' + level));
    send(bytes({9, 1}));
    send(bytes({zone + 1, level}));
    QCOMPARE(levels(), expected);
    QCOMPARE(blindSpot(), QString());

    // After a message for every other zone the seven others are back at 0.
    for (int other = 1; other <= zoneCount; ++other)
        send(bytes({other, 4}));
    send(bytes({zone + 1, level}));
    QCOMPARE(levels(), expected);
}

void tst_Parking::blindSpots_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("text");
    for (int level = 0; level < levelCount; ++level) {
        QTest::addRow("left %d", level) << 9 << level << QString("Left Blind stop:%1").arg(level);
        QTest::addRow("right %d", level)
            << 10 << level << QString("Right Blind stop:%1").arg(level);
    }
}

void tst_Parking::blindSpots()
{
    QFETCH(int, code);
    QFETCH(int, level);
    QFETCH(QString, text);
    send(bytes({3, 2}));
    send(bytes({code, level}));
    QCOMPARE(blindSpot(), text);
    QCOMPARE(levels(), QStringLiteral("00200000"));
}

void tst_Parking::clearMessage()
{
    send(bytes({3, 2}));
    for (int level = 0; level < levelCount; ++level) {
        send(bytes({9, 3}));
        send(bytes({0, level}));
        QCOMPARE(blindSpot(), QString());
        QCOMPARE(levels(), QStringLiteral("00200000"));
    }
}

void tst_Parking::longerMessages()
{
    send(bytes({3, 2, 9, 9}));
    QCOMPARE(levels(), QStringLiteral("00200000"));
    send(bytes({9, 3}) + QByteArray(100000, 'x'));
    QCOMPARE(blindSpot(), QStringLiteral("Left Blind stop:3"));
    QCOMPARE(levels(), QStringLiteral("00200000"));
}

void tst_Parking::ignoredMessages_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("code 11") << bytes({11, 0});
    QTest::newRow("level 5") << bytes({1, 5});
    QTest::newRow("blind spot, level 5") << bytes({9, 5});
    QTest::newRow("clear, level 5") << bytes({0, 5});
    QTest::newRow("code above 127") << bytes({0x80, 0});
    QTest::newRow("level above 127") << bytes({1, 0x80});
    QTest::newRow("both 255") << bytes({255, 255});
    QTest::newRow("long") << bytes({11, 0, 1, 2, 3, 4});
}

void tst_Parking::ignoredMessages()
{
    QFETCH(QByteArray, message);
    send(bytes({6, 4}));
    send(bytes({10, 2}));
    send(message); // in silence: the test fails on a warning
    QCOMPARE(blindSpot(), QStringLiteral("Right Blind stop:2"));
    QCOMPARE(levels(), QStringLiteral("00000400"));
}

void tst_Parking::shortMessages_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("null") << QByteArray();
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("one byte") << bytes({1});
}

void tst_Parking::shortMessages()
{
    QFETCH(QByteArray, message);
    send(bytes({6, 4}));
    send(bytes({10, 2}));
    MessageCapture messages;
    send(message);
    const QStringList warnings = messages.takeTexts();
    QCOMPARE(warnings.size(), 1);
    QVERIFY2(warnings.first().endsWith(
                 QStringLiteral("parking message: expected 2 bytes, got %1").arg(message.size())),
             qPrintable(warnings.first()));
    QCOMPARE(blindSpot(), QStringLiteral("Right Blind stop:2"));
    QCOMPARE(levels(), QStringLiteral("00000400"));
}

void tst_Parking::distances_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("level");
    QTest::newRow("0") << 0 << 0 << 0;
    QTest::newRow("1 to 64") << 1 << 64 << 1;
    QTest::newRow("65 to 128") << 65 << 128 << 2;
    QTest::newRow("129 to 192") << 129 << 192 << 3;
    QTest::newRow("193 to 255") << 193 << 255 << 4;
}

void tst_Parking::distances()
{
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(int, level);
    invoke(m_screen, "connectVtqAdaptor");
    const QChar digit = QLatin1Char(char('0' + level));
    for (int distance = first; distance <= last; ++distance) {
        const int place = distance % 4;
        QByteArray message(4, char((level + 1) % levelCount ? 0 : 200));
        message[place] = char(distance);
        emit m_adaptor->parkingDistanceFront(message);
        QCOMPARE(levels()[place], digit);
    }
}

void tst_Parking::distanceExample()
{
    invoke(m_screen, "connectVtqAdaptor");
    emit m_adaptor->parkingDistanceFront(bytes({0x00, 0x40, 0x41, 0xFF}));
    QCOMPARE(levels(), QStringLiteral("0124ssss")); // the rear zones have not been heard of
    emit m_adaptor->parkingDistanceFront(bytes({0x80, 0x81, 0xC0, 0xC1, 1, 2, 3}));
    QCOMPARE(levels(), QStringLiteral("2334ssss"));
}

void tst_Parking::rearDistancesByName()
{
    invoke(m_screen, "onParkingDistanceRear", Q_ARG(QByteArray, bytes({0x00, 0x40, 0x41, 0xFF})));
    QCOMPARE(levels(), QStringLiteral("ssss0124"));
}

void tst_Parking::shortDistances_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("null") << QByteArray();
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("three bytes") << bytes({1, 2, 3});
}

void tst_Parking::shortDistances()
{
    QFETCH(QByteArray, message);
    invoke(m_screen, "connectVtqAdaptor");
    const auto warnsOnce = [&](const std::function<void()> &deliver) {
        MessageCapture messages;
        deliver();
        const QStringList warnings = messages.takeTexts();
        return warnings.size() == 1 &&
               warnings.first().endsWith(
                   QStringLiteral("parking distances: expected 4 bytes, got %1")
                       .arg(message.size()));
    };
    QVERIFY(warnsOnce([&] { emit m_adaptor->parkingDistanceFront(message); }));
    QVERIFY(
        warnsOnce([&] { invoke(m_screen, "onParkingDistanceRear", Q_ARG(QByteArray, message)); }));
    QCOMPARE(levels(), QStringLiteral("ssssssss"));
}

void tst_Parking::sideDistances_data()
{
    QTest::addColumn<bool>("left");
    QTest::newRow("left") << true;
    QTest::newRow("right") << false;
}

void tst_Parking::sideDistances()
{
    QFETCH(bool, left);
    invoke(m_screen, "connectVtqAdaptor");
    const auto signal = left ? &VtqAdaptor::parkingDistanceLeft : &VtqAdaptor::parkingDistanceRight;
    const QImage before = m_screen->grab().toImage();
    CallSpy calls;
    MessageCapture messages;
    for (const QByteArray &payload : {bytes({0xAB, 0x01}), QByteArray(), QByteArray(3000, 'x')}) {
        emit(m_adaptor->*signal)(payload);
        QCOMPARE(calls.take(), QStringList{zoneQuery});
        QVERIFY(messages.takeTexts().join(QString()).contains(QString(payload.toHex())));
    }
    QCOMPARE(m_screen->grab().toImage(), before);
}

void tst_Parking::whatIsConnectedWhen()
{
    const auto front = [this] {
        emit m_adaptor->parkingDistanceFront(bytes({0, 0, 0, 0}));
        emit m_adaptor->parkingDistanceFront(bytes({255, 255, 255, 255}));
        return levels().left(4) == QLatin1String("4444");
    };
    const auto rear = [this] {
        send(bytes({5, 0}));
        send(bytes({5, 3}));
        return levels().mid(4) == QLatin1String("3000");
    };
    QVERIFY(!front()); // until the host connects the screen
    QVERIFY(rear());
    invoke(m_screen, "connectVtqAdaptor");
    QVERIFY(front());
    invoke(m_screen, "disconnectVtqAdaptor");
    invoke(m_screen, "resume"); // forgets what was shown
    QVERIFY(!front());
    QVERIFY(!rear());
    invoke(m_screen, "connectVtqAdaptor");
    QVERIFY(front());
    QVERIFY(!rear()); // it was made for life, once
}

void tst_Parking::topBarText()
{
    auto *bar = child<ScrollLabel>("Txt_fork");
    emit m_adaptor->parkingTopBarText("early");
    QCOMPARE(bar->text(), QString());
    invoke(m_screen, "connectVtqAdaptor");
    emit m_adaptor->parkingTopBarText(QString(60, QLatin1Char('W')));
    QCOMPARE(bar->text(), QString(50, QLatin1Char('W')));
    QTRY_VERIFY(bar->scrollOffset() > 0);
    emit m_adaptor->parkingTopBarText("");
    QCOMPARE(bar->text(), QString());
}

void tst_Parking::showClearsTheBlindSpot()
{
    send(bytes({9, 3}));
    m_screen->hide();
    QCOMPARE(blindSpot(), QStringLiteral("Left Blind stop:3"));
    m_screen->show();
    QCOMPARE(blindSpot(), QString());
}

void tst_Parking::resumeStartsAnew()
{
    send(bytes({3, 2}));
    label(0)->hide();
    CallSpy calls;
    invoke(m_screen, "resume");
    QCOMPARE(calls.take({"norda::"}),
             (QStringList{zoneQuery, "norda::VtqAdaptor::requestParkingInfo()"}));
    QCOMPARE(levels(), QStringLiteral("ssssssss"));
    QVERIFY(label(0)->isVisible());
}

/** Which zones were asked to paint themselves. */
class ZonePaints : public QObject
{
public:
    explicit ZonePaints(const QList<QLabel *> &labels) : m_labels(labels)
    {
        for (QLabel *label : labels)
            label->installEventFilter(this);
    }
    QSet<int> painted;

private:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            painted.insert(m_labels.indexOf(static_cast<QLabel *>(watched)));
        return false;
    }
    QList<QLabel *> m_labels;
};

void tst_Parking::onlyChangedZonesRepaint()
{
    QList<QLabel *> labels;
    for (int zone = 0; zone < zoneCount; ++zone)
        labels.append(label(zone));
    send(bytes({1, 4}));
    QTest::qWait(50);
    ZonePaints paints(labels);
    send(bytes({1, 4}));
    QTest::qWait(50);
    QCOMPARE(paints.painted, QSet<int>());
    send(bytes({8, 2}));
    QTRY_VERIFY(paints.painted.contains(0) && paints.painted.contains(7));
    // Their neighbours' pictures reach into theirs; all others stay as they are.
    QCOMPARE(paints.painted & (QSet<int>{2, 3, 4, 5}), QSet<int>());
}

void tst_Parking::hiddenScreenFollows()
{
    m_host->window(83)->onHide(QByteArray());
    m_screen->hide();
    send(bytes({4, 1}));
    QCOMPARE(levels(), QStringLiteral("00010000"));
}

NORDA_TEST_MAIN(tst_Parking)
#include "tst_parking.moc"
