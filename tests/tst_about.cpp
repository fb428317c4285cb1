#include "callspy.h"
#include "elision.h"
#include "messagecapture.h"
#include "norda/vtqadaptor.h"
#include "nordahost.h"
#include "pluginfixture.h"
#include "testmain.h"

#include <QLabel>
#include <QPushButton>

using norda::VtqAdaptor;

/** The page of versions and time. */
class tst_About : public QObject
{
    Q_OBJECT
private slots:
    void init() { m_host.reset(new PluginFixture); }
    void cleanup();

    void startsAsAgreed();
    void version_data();
    void version();
    void clock_data();
    void clock();
    void shortLists_data();
    void shortLists();
    void audioFirmware_data();
    void audioFirmware();
    void longTextsAreElided_data();
    void longTextsAreElided();
    void hiddenScreenKeepsAndFollows();
    void touchesDoNothing();
    void labelsLetTouchesThrough();

private:
    static void setFirmware(const QString &text)
    {
        QMetaObject::invokeMethod(nordaHostObject("spplfctrl::SPPlatformControl"),
                                  "setAudioFirmwareVersion", Q_ARG(QString, text));
    }
    QString text(const char *name) { return find<QLabel>(m_host->open(85), name)->text(); }

    QScopedPointer<PluginFixture> m_host;
    VtqAdaptor *const m_adaptor = VtqAdaptor::instance();
};

void tst_About::cleanup()
{
    m_host.reset();
    setFirmware(QString());
}

void tst_About::startsAsAgreed()
{
    QWidget *screen = m_host->open(85);
    QCOMPARE(screen->objectName(), QStringLiteral("norda_about"));
    QCOMPARE(text("Txt_pop_title"), QStringLiteral("About"));
    QCOMPARE(text("Interface_Fw_Label"), QStringLiteral("Vehicle Features"));
    QCOMPARE(text("Time_Label"), QStringLiteral("Vehicle Features"));
    QCOMPARE(find<QLabel>(screen, "Interface_Fw_Label")->font().pointSize(), 35);
    QCOMPARE(find<QLabel>(screen, "Txt_pop_title")->font().pointSize(), 40);
    QCOMPARE(find<QWidget>(screen, "bkg_top_pop")->styleSheet(),
             QStringLiteral("background-color: rgb(0, 0, 0);"));
    QVERIFY(find<QPushButton>(screen, "norda_key_about")->isChecked());
    const auto *rows = find<QWidget>(screen, "widget");
    for (int row = 1; row <= 3; ++row)
        QCOMPARE(find<QWidget>(screen, qPrintable(QString("item_bar_widget_%1").arg(row)))
                     ->parentWidget(),
                 rows);
}

void tst_About::version_data()
{
    QTest::addColumn<QStringList>("list");
    QTest::addColumn<QString>("shown");
    QTest::newRow("example") << QStringList{"x", "3", "12", "7"} << "Interface FW:3.12.7";
    QTest::newRow("longer") << QStringList{"x", "1", "2", "3", "4"} << "Interface FW:1.2.3";
    QTest::newRow("empty parts") << QStringList{"", "", "", ""} << "Interface FW:..";
    QTest::newRow("markup") << QStringList{"", "<b>", "2", "3"} << "Interface FW:<b>.2.3";
}

void tst_About::version()
{
    QFETCH(QStringList, list);
    QFETCH(QString, shown);
    QWidget *screen = m_host->open(85);
    emit m_adaptor->NordaVerInfo(list);
    QCOMPARE(text("Interface_Fw_Label"), shown);
    QCOMPARE(find<QLabel>(screen, "Interface_Fw_Label")->textFormat(), Qt::PlainText);
    QCOMPARE(text("Time_Label"), QStringLiteral("Vehicle Features"));
}

void tst_About::clock_data()
{
    QTest::addColumn<QStringList>("list");
    QTest::addColumn<QString>("shown");
    QTest::newRow("example") << QStringList{"1", "2", "3", "1", "2", "4",
                                            "0", "9", "3", "0", "1", "5"}
                             << "Time:12/31/24 09:30:15";
    QTest::newRow("longer") << QStringList{"1", "2", "3", "1", "2", "4", "0",
                                           "9", "3", "0", "1", "5", "9"}
                            << "Time:12/31/24 09:30:15";
    QTest::newRow("whole fields") << QStringList{"12", "", "31", "", "24", "",
                                                 "09", "", "30", "", "15", ""}
                                  << "Time:12/31/24 09:30:15";
}

void tst_About::clock()
{
    QFETCH(QStringList, list);
    QFETCH(QString, shown);
    m_host->open(85);
    emit m_adaptor->TimeInfo(list);
    QCOMPARE(text("Time_Label"), shown);
    QCOMPARE(text("Interface_Fw_Label"), QStringLiteral("Vehicle Features"));
}

void tst_About::shortLists_data()
{
    QTest::addColumn<bool>("isClock");
    QTest::addColumn<int>("size");
    for (const int size : {0, 1, 3})
        QTest::addRow("version of %d", size) << false << size;
    for (const int size : {0, 1, 6, 11})
        QTest::addRow("clock of %d", size) << true << size;
}

void tst_About::shortLists()
{
    QFETCH(bool, isClock);
    QFETCH(int, size);
    m_host->open(85);
    emit m_adaptor->NordaVerInfo({"", "1", "2", "3"});
    emit m_adaptor->TimeInfo({"1", "2", "3", "1", "2", "4", "0", "9", "3", "0", "1", "5"});
    const QStringList list = QVector<QString>(size, QStringLiteral("9")).toList();
    MessageCapture messages;
    if (isClock)
        emit m_adaptor->TimeInfo(list);
    else
        emit m_adaptor->NordaVerInfo(list);
    const QStringList lines = messages.takeTexts();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].contains(isClock ? QStringLiteral("expected 12 texts, got %1").arg(size)
                                       : QStringLiteral("expected 4 texts, got %1").arg(size)),
             qPrintable(lines[0]));
    QCOMPARE(text("Interface_Fw_Label"), QStringLiteral("Interface FW:1.2.3"));
    QCOMPARE(text("Time_Label"), QStringLiteral("Time:12/31/24 09:30:15"));
}

void tst_About::audioFirmware_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("shown");
    QTest::newRow("long") << "AUDIO-FW:2.4.1"
                          << "Audio FW:2.4.1";
    QTest::newRow("ten letters") << "123456789a"
                                 << "Audio FW:a";
    QTest::newRow("nine letters") << "123456789"
                                  << "Audio FW:";
    QTest::newRow("short") << "2.4"
                           << "Audio FW:";
    QTest::newRow("nothing") << ""
                             << "Audio FW:";
    QTest::newRow("letters beyond Latin")
        << QString::fromUtf8("ääääääääüß") << QString::fromUtf8("Audio FW:ß");
}

void tst_About::audioFirmware()
{
    QFETCH(QString, version);
    QFETCH(QString, shown);
    setFirmware(version);
    QCOMPARE(text("Radio_Fw_Label"), shown);
    setFirmware(QStringLiteral("AUDIO-FW:changed"));
    m_host->open(85);
    QCOMPARE(text("Radio_Fw_Label"), shown); // read once
}

void tst_About::longTextsAreElided_data()
{
    QTest::addColumn<QByteArray>("label");
    for (const char *label : {"Interface_Fw_Label", "Radio_Fw_Label", "Time_Label"})
        QTest::newRow(label) << QByteArray(label);
}

void tst_About::longTextsAreElided()
{
    QFETCH(QByteArray, label);
    auto *shown = find<QLabel>(m_host->open(85), label);
    const QString longText = QStringLiteral("W").repeated(80);
    QCOMPARE(faultOfElision(shown, longText, [&](const QString &text) { shown->setText(text); }),
             QString());
}

void tst_About::hiddenScreenKeepsAndFollows()
{
    QWidget *screen = m_host->open(85);
    emit m_adaptor->NordaVerInfo({"", "1", "2", "3"});
    m_host->window(85)->onHide(QByteArray());
    screen->hide();
    QCOMPARE(find<QLabel>(screen, "Interface_Fw_Label")->text(),
             QStringLiteral("Interface FW:1.2.3"));
    emit m_adaptor->NordaVerInfo({"", "4", "5", "6"});
    QCOMPARE(find<QLabel>(screen, "Interface_Fw_Label")->text(),
             QStringLiteral("Interface FW:4.5.6"));
}

void tst_About::touchesDoNothing()
{
    QWidget *screen = m_host->open(85);
    CallSpy calls;
    for (const char *key : {"key_item_1", "key_item_2", "key_item_4"}) {
        const QImage before = find<QPushButton>(screen, key)->grab().toImage();
        QTest::mousePress(find<QPushButton>(screen, key), Qt::LeftButton);
        QCOMPARE(find<QPushButton>(screen, key)->grab().toImage(), before);
        QTest::mouseRelease(find<QPushButton>(screen, key), Qt::LeftButton);
    }
    QCOMPARE(calls.take(), QStringList());
}

void tst_About::labelsLetTouchesThrough()
{
    QWidget *screen = m_host->open(85);
    const struct
    {
        const char *label, *key;
    } rows[] = {{"Interface_Fw_Label", "key_item_1"},
                {"Radio_Fw_Label", "key_item_2"},
                {"Time_Label", "key_item_4"}};
    for (const auto &row : rows) {
        const auto *label = find<QLabel>(screen, row.label);
        QCOMPARE(screen->childAt(label->mapTo(screen, label->rect().center())),
                 find<QPushButton>(screen, row.key));
    }
}

NORDA_TEST_MAIN(tst_About)
#include "tst_about.moc"
