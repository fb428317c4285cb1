#include "callspy.h"
#include "messagecapture.h"
#include "norda/vant_popup.h"
#include "nordahost.h"
#include "testmain.h"

#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>

/** The dialog of the module's adjustment popups. */
class tst_Popup : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { delete m_popup; }

    void startsAsAgreed();
    void texts_data();
    void texts();
    void images_data();
    void images();
    void pages_data();
    void pages();
    void otherTypesKeepThePage_data();
    void otherTypesKeepThePage();
    void captionsLeaveTheTouch_data();
    void captionsLeaveTheTouch();
    void closeKey();
    void keysSendNothing();
    void insideOfAnOwner();

private:
    template <typename Widget>
    Widget *child(const QString &name) const
    {
        auto *found = m_popup->findChild<Widget *>(name);
        if (!found)
            qFatal("no %s in the popup", qPrintable(name));
        return found;
    }
    QString page() const
    {
        return child<QStackedWidget>("stackedWidget")->currentWidget()->objectName();
    }

    norda::vant_popup *m_popup = nullptr;
};

void tst_Popup::init()
{
    nordaHostObject("CallLog"); // the host brings the images
    m_popup = new vant_popup;
    m_popup->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_popup));
}

void tst_Popup::startsAsAgreed()
{
    QCOMPARE(m_popup->metaObject()->className(), "vant_popup");
    QCOMPARE(m_popup->objectName(), QStringLiteral("vant_popup"));
    QCOMPARE(m_popup->windowTitle(), QStringLiteral("Form"));
    QCOMPARE(vant_popup().geometry(), QRect(0, 0, 1024, 600)); // before a window system moves it
    QCOMPARE(page(), QStringLiteral("Main_page"));
    QCOMPARE(child<QStackedWidget>("stackedWidget")->count(), 7);
}

void tst_Popup::texts_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("page");
    const auto row = [](const char *page, const char *label, const char *text) {
        QTest::newRow(label) << label << text << page;
    };
    row("Main_page", "main_title", "Main Gauges Waring Text");
    row("Main_page", "txt_peak", "PEAK");
    row("Main_page", "txt_hot", "HOT");
    row("Main_page", "txt_limit", "LIMIT");
    row("Main_page", "txt_lean", "LEAN");
    row("Main_page", "txt_high", "HIGH");
    row("Main_page", "txt_max", "MAX");
    row("Capacity_page", "capacity_title", "Tank capacity is set to:");
    row("Capacity_page", "capacity_value", "0.0 Gallons");
    row("Reset_page", "reset_title", "Comfirm Reset");
    row("Reset_page", "reset_value", "Reseting the average fuel economy\n will erase all data.");
    row("Reset_page", "txt_yes", "YES");
    row("Reset_page", "txt_no", "NO");
    row("Voltage_page", "voltage_title", "Set Low Voltage Threshold");
    row("Voltage_page", "voltage_value", "10.0 v");
    row("Front_page", "front_title", "Low Front Tire Threshold");
    row("Front_page", "front_value", "27 PSI");
    row("Rear_page", "rear_title", "Low Rear Tire Threshold");
    row("Rear_page", "rear_value", "27 PSI");
    row("Service_page", "ser_title", "Set Service Alert at:");
    row("Service_page", "ser_value", "3000 Miles");
}

void tst_Popup::texts()
{
    QFETCH(QString, label);
    QFETCH(QString, text);
    QFETCH(QString, page);
    QCOMPARE(child<QLabel>(label)->text(), text);
    QVERIFY(child<QWidget>(page)->isAncestorOf(child<QLabel>(label)));
    // All of it fits into its label.
    const QSize needed = child<QLabel>(label)->sizeHint();
    const QSize given = child<QLabel>(label)->size();
    QVERIFY(needed.width() <= given.width() && needed.height() <= given.height());
}

void tst_Popup::images_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QString>("image"); // of a key: without the last letter
    QTest::newRow("background") << "txt_bkg"
                                << "pop_bg.png";
    QTest::newRow("frame") << "txt_pop"
                           << "Pop-up.png";
    QTest::newRow("close") << "Key_close"
                           << "btn_close_";
    for (const char *name : {"btn_peak", "btn_hot", "btn_limit", "btn_lean", "btn_high", "btn_max",
                             "btn_yes_reset", "btn_no_reset"})
        QTest::newRow(name) << name << "btn_";
    for (const char *page : {"_capacity", "_voltage", "_front", "_rear", ""}) {
        QTest::addRow("less%s", page) << QStringLiteral("btn_sub") + page << "btn_sub_";
        QTest::addRow("more%s", page) << QStringLiteral("btn_add") + page << "btn_add_";
    }
}

void tst_Popup::images()
{
    QFETCH(QString, widget);
    QFETCH(QString, image);
    const QString path = QStringLiteral(":/popupicon/") + image;
    if (image.endsWith(QStringLiteral(".png"))) {
        QVERIFY(!QPixmap(path).isNull());
        QCOMPARE(child<QLabel>(widget)->pixmap(Qt::ReturnByValue).toImage(),
                 QPixmap(path).toImage());
        return;
    }
    auto *key = child<QPushButton>(widget);
    const auto shown = [key](QIcon::State state) {
        return key->icon().pixmap(key->iconSize(), QIcon::Normal, state).toImage();
    };
    QCOMPARE(shown(QIcon::Off), QPixmap(path + "n.png").toImage());
    QCOMPARE(shown(QIcon::On), QPixmap(path + "p.png").toImage());
    auto *stack = child<QStackedWidget>("stackedWidget");
    if (stack->indexOf(key->parentWidget()) >= 0)
        stack->setCurrentWidget(key->parentWidget());
    const QImage released = key->grab().toImage();
    key->setDown(true);
    QVERIFY(key->grab().toImage() != released);
}

void tst_Popup::pages_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("name");
    const QStringList names = {"Main_page",  "Capacity_page", "Reset_page",  "Voltage_page",
                               "Front_page", "Rear_page",     "Service_page"};
    for (int type = 0; type < names.size(); ++type)
        QTest::newRow(qPrintable(names[type])) << type << names[type];
}

void tst_Popup::pages()
{
    QFETCH(int, type);
    QFETCH(QString, name);
    m_popup->setPopType((type + 3) % 7);
    QVERIFY(page() != name);
    MessageCapture messages;
    m_popup->setPopType(type);
    QCOMPARE(page(), name);
    QVERIFY(child<QWidget>(name)->isVisible());
    const QStringList lines = messages.takeTexts();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].contains(QStringLiteral("setPopType ------>>: %1").arg(type)),
             qPrintable(lines[0]));
}

void tst_Popup::otherTypesKeepThePage_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {7, 8, -1, 255, INT_MAX, INT_MIN})
        QTest::addRow("%d", type) << type;
}

void tst_Popup::otherTypesKeepThePage()
{
    QFETCH(int, type);
    m_popup->setPopType(2);
    MessageCapture messages;
    m_popup->setPopType(type);
    QCOMPARE(page(), QStringLiteral("Reset_page"));
    QVERIFY(messages.takeTexts().value(0).contains(QString::number(type)));
}

void tst_Popup::captionsLeaveTheTouch_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("key");
    for (const char *name : {"peak", "hot", "limit", "lean", "high", "max"})
        QTest::newRow(name) << 0 << QStringLiteral("txt_%1").arg(name)
                            << QStringLiteral("btn_%1").arg(name);
    QTest::newRow("yes") << 2 << "txt_yes"
                         << "btn_yes_reset";
    QTest::newRow("no") << 2 << "txt_no"
                        << "btn_no_reset";
}

void tst_Popup::captionsLeaveTheTouch()
{
    QFETCH(int, type);
    QFETCH(QString, caption);
    QFETCH(QString, key);
    m_popup->setPopType(type);
    auto *label = child<QLabel>(caption);
    QVERIFY(label->testAttribute(Qt::WA_TransparentForMouseEvents));
    QSignalSpy clicks(child<QPushButton>(key), &QPushButton::clicked);
    QWidget *touched = m_popup->childAt(label->mapTo(m_popup, label->rect().center()));
    QCOMPARE(touched, child<QPushButton>(key));
    QTest::mouseClick(touched, Qt::LeftButton);
    QCOMPARE(clicks.count(), 1);
}

void tst_Popup::closeKey()
{
    QSignalSpy closed(m_popup, &vant_popup::closeclicked);
    QTest::mouseClick(child<QPushButton>("Key_close"), Qt::LeftButton);
    QCOMPARE(closed.count(), 1);
    QVERIFY(m_popup->isVisible());
}

void tst_Popup::keysSendNothing()
{
    CallSpy calls;
    QSignalSpy closed(m_popup, &vant_popup::closeclicked);
    for (int type = 0; type < 7; ++type) {
        m_popup->setPopType(type);
        auto *stack = child<QStackedWidget>("stackedWidget");
        for (QPushButton *key : stack->currentWidget()->findChildren<QPushButton *>())
            QTest::mouseClick(key, Qt::LeftButton);
        QCOMPARE(stack->currentIndex(), type);
    }
    QCOMPARE(calls.take(), QStringList());
    QCOMPARE(closed.count(), 0);
}

void tst_Popup::insideOfAnOwner()
{
    QWidget owner;
    owner.resize(1280, 720);
    auto *popup = new vant_popup(&owner);
    QCOMPARE(popup->parentWidget(), &owner);
    QCOMPARE(popup->geometry(), QRect(0, 0, 1024, 600));
}

NORDA_TEST_MAIN(tst_Popup)
#include "tst_popup.moc"
