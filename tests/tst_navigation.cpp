#include "callspy.h"
#include "messagecapture.h"
#include "norda/widget/norda_bar_widget.h"
#include "norda/widget/vantiq_top_bar_widget.h"
#include "pluginfixture.h"
#include "testmain.h"
#include "touchevent.h"
#include "translator.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

using namespace norda;

static const char *const keyNames[] = {"norda_key_gauge", "norda_key_vehicle", "norda_key_climate",
                                       "norda_key_radar", "norda_key_setting", "norda_key_about"};
static constexpr int pageCount = 6;

static QList<int> checkedPages(QWidget *bar)
{
    QList<int> pages;
    for (int page = 0; page < pageCount; ++page) {
        if (find<QPushButton>(bar, keyNames[page])->isChecked())
            pages.append(page);
    }
    return pages;
}

/** The navigation bar in every screen, and the top bar. */
class tst_Navigation : public QObject
{
    Q_OBJECT
private slots:
    void touchOfAPageKey_data();
    void touchOfAPageKey();
    void otherIdsBeepOnly_data();
    void otherIdsBeepOnly();
    void eventIsPostedNotSent();
    void marksOnePageOnly_data();
    void marksOnePageOnly();
    void touchMovesTheMark();
    void showMarksTheScreensPage_data();
    void showMarksTheScreensPage();
    void slotsThatDoNothing();
    void formIsAsAgreed();
    void heldKeyIsLit();
    void topBarTitles_data();
    void topBarTitles();
    void topBarKeys();
};

void tst_Navigation::touchOfAPageKey_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QStringList>("calls");
    const QString beep = QStringLiteral("svaudio::AudioService::doBeep(0)");
    const auto touch = [](int code) { return QStringLiteral("TouchEvent(%1, -1, -1)").arg(code); };
    const auto request = [](int page) {
        return QStringLiteral("norda::VtqAdaptor::NordaData_Request(%1)").arg(page);
    };
    QTest::newRow("gauges") << 0 << QStringList{beep, touch(87)};
    QTest::newRow("vehicle") << 1 << QStringList{beep, touch(88)};
    QTest::newRow("climate") << 2 << QStringList{beep, touch(89)};
    QTest::newRow("parking") << 3 << QStringList{beep, touch(90)};
    // The module is asked before the page opens: the event comes with the next turn of the loop.
    QTest::newRow("settings") << 4 << QStringList{beep, request(13), touch(91)};
    QTest::newRow("about") << 5 << QStringList{beep, request(5), touch(92)};
}

void tst_Navigation::touchOfAPageKey()
{
    QFETCH(int, page);
    QFETCH(QStringList, calls);
    PluginFixture host;
    QWidget *screen = host.open(80);
    QCoreApplication::processEvents();
    CallSpy spy;
    MessageCapture capture;
    QTest::mouseClick(find<QPushButton>(screen, keyNames[page]), Qt::LeftButton);
    QCoreApplication::processEvents();
    QCOMPARE(spy.takeTouches(), calls);
    const QStringList lines = capture.takeTexts().filter("::onPageButGroupClicked(int)");
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].endsWith(QStringLiteral("-- %1").arg(page)), qPrintable(lines[0]));
}

void tst_Navigation::otherIdsBeepOnly_data()
{
    QTest::addColumn<int>("id");
    for (int id : {-1, 6, 7, INT_MAX, INT_MIN})
        QTest::addRow("%d", id) << id;
}

void tst_Navigation::otherIdsBeepOnly()
{
    QFETCH(int, id);
    Vantiq_Bar_Widget bar;
    CallSpy spy;
    QVERIFY(QMetaObject::invokeMethod(&bar, "onPageButGroupClicked", Q_ARG(int, id)));
    QCoreApplication::processEvents();
    QCOMPARE(spy.take(), QStringList{"svaudio::AudioService::doBeep(0)"});
}

/** Looks at what reaches the application object. */
class EventProbe : public QObject
{
public:
    EventProbe() { QCoreApplication::instance()->installEventFilter(this); }
    QByteArray payload;

private:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == QCoreApplication::instance() && event->type() == 1008)
            payload = static_cast<TouchEvent *>(event)->payload();
        return false;
    }
};

void tst_Navigation::eventIsPostedNotSent()
{
    Vantiq_Bar_Widget bar;
    EventProbe probe;
    bar.onPageButGroupClicked(3);
    QVERIFY(probe.payload.isNull());
    QCoreApplication::processEvents();
    const qint32 expected[] = {1008, 90, -1, -1};
    QCOMPARE(probe.payload, QByteArray(reinterpret_cast<const char *>(expected), sizeof expected));
}

void tst_Navigation::marksOnePageOnly_data()
{
    QTest::addColumn<QList<int>>("updates");
    QTest::addColumn<QList<int>>("checked");
    for (int page = 0; page < pageCount; ++page)
        QTest::addRow("page %d", page) << QList<int>{page} << QList<int>{page};
    QTest::newRow("from one page to another") << QList<int>{1, 4} << QList<int>{4};
    QTest::newRow("the same page twice") << QList<int>{3, 3} << QList<int>{3};
    QTest::newRow("a page beyond the last") << QList<int>{3, 7} << QList<int>();
    QTest::newRow("page 6") << QList<int>{3, 6} << QList<int>();
    QTest::newRow("a negative page") << QList<int>{3, -1} << QList<int>();
    QTest::newRow("exclusive again after unmarking") << QList<int>{3, 7, 2, 5} << QList<int>{5};
}

void tst_Navigation::marksOnePageOnly()
{
    QFETCH(QList<int>, updates);
    QFETCH(QList<int>, checked);
    Vantiq_Bar_Widget bar;
    CallSpy spy;
    for (int page : updates)
        bar.updateBtnChecked(page);
    QCOMPARE(checkedPages(&bar), checked);
    QCOMPARE(spy.take(), QStringList()); // marking is not touching
}

void tst_Navigation::touchMovesTheMark()
{
    Vantiq_Bar_Widget bar;
    bar.updateBtnChecked(0);
    QTest::mouseClick(find<QPushButton>(&bar, keyNames[2]), Qt::LeftButton);
    QCOMPARE(checkedPages(&bar), QList<int>{2});
    QTest::mouseClick(find<QPushButton>(&bar, keyNames[2]), Qt::LeftButton);
    QCOMPARE(checkedPages(&bar), QList<int>{2});
}

void tst_Navigation::showMarksTheScreensPage_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("page");
    for (int page = 0; page < pageCount; ++page)
        QTest::addRow("window %d", 80 + page) << 80 + page << page;
}

void tst_Navigation::showMarksTheScreensPage()
{
    QFETCH(int, id);
    QFETCH(int, page);
    PluginFixture host;
    QWidget *screen = host.open(id);
    QWidget *bar = find<QWidget>(screen, "Nordalink_bar");
    QCOMPARE(bar->pos(), QPoint(0, 620));
    QCOMPARE(checkedPages(bar), QList<int>{page});

    QTest::mouseClick(find<QPushButton>(screen, keyNames[(page + 1) % pageCount]), Qt::LeftButton);
    screen->hide();
    screen->show();
    QCOMPARE(checkedPages(bar), QList<int>{page});
}

void tst_Navigation::slotsThatDoNothing()
{
    Vantiq_Bar_Widget bar;
    bar.updateBtnChecked(1);
    CallSpy spy;
    MessageCapture capture;
    QVERIFY(QMetaObject::invokeMethod(&bar, "onVantiqDsplChange", Q_ARG(int, 5)));
    const QStringList lines = capture.takeTexts();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].endsWith("-- 5"), qPrintable(lines[0]));
    bar.update_barbtn_status(true, true, true, true);
    bar.resumeItemChecked();
    QCOMPARE(checkedPages(&bar), QList<int>{1});
    QCOMPARE(spy.take(), QStringList());
    for (const char *signal : {"gotoGauges()", "gotoVehicle()", "gotoClimate()", "gotoParking()"})
        QVERIFY(bar.metaObject()->indexOfSignal(signal) >= 0);
}

void tst_Navigation::formIsAsAgreed()
{
    Vantiq_Bar_Widget bar;
    QCOMPARE(bar.objectName(), QStringLiteral("Nordalink_bar"));
    QCOMPARE(bar.windowTitle(), QStringLiteral("Form"));
    QCOMPARE(bar.size(), QSize(1280, 88));
    QCOMPARE(find<QFrame>(&bar, "bar_widget")->geometry(), QRect(128, 0, 1152, 88));
    QVERIFY(bar.findChild<QHBoxLayout *>(QStringLiteral("horizontalLayout")));
    for (const char *name : keyNames) {
        auto *key = find<QPushButton>(&bar, name);
        QVERIFY(key->isCheckable());
        QCOMPARE(key->iconSize(), QSize(130, 64));
        const auto image = [key](QIcon::Mode mode, QIcon::State state) {
            return key->icon().pixmap(key->iconSize(), mode, state).toImage();
        };
        const QImage normal = image(QIcon::Normal, QIcon::Off);
        const QImage pressed = image(QIcon::Normal, QIcon::On);
        QVERIFY(!normal.isNull());
        QVERIFY(normal != pressed);
        QCOMPARE(image(QIcon::Selected, QIcon::Off), pressed);
    }
}

void tst_Navigation::heldKeyIsLit()
{
    Vantiq_Bar_Widget bar;
    auto *key = find<QPushButton>(&bar, keyNames[1]);
    bar.grab(); // lays the keys out
    const auto picture = [key] {
        return key->grab().toImage().convertToFormat(QImage::Format_RGB32);
    };
    const QImage resting = picture();
    key->setDown(true);
    const QImage held = picture();
    key->setDown(false);
    key->setChecked(true);
    const QImage checked = picture();

    const QRgb background = bar.findChild<QFrame *>(QStringLiteral("bar_widget"))
                                ->palette()
                                .color(QPalette::Window)
                                .rgb();
    QCOMPARE(resting.pixel(2, 2), background);
    QCOMPARE(checked.pixel(2, 2), background);
    // 56 of 255 of the accent's light over it
    const QColor lit(held.pixel(2, 2));
    QVERIFY2(qAbs(lit.red() - 27) <= 1 && qAbs(lit.green() - 64) <= 1 && qAbs(lit.blue() - 79) <= 1,
             qPrintable(lit.name()));
    QVERIFY(checked != resting);
}

void tst_Navigation::topBarTitles_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("title");
    QTest::addColumn<bool>("settingsKey");
    QTest::newRow("gauges") << 0 << "en"
                            << "Gauges" << true;
    QTest::newRow("vehicle") << 1 << "en"
                             << "Vehicle" << true;
    QTest::newRow("climate") << 2 << "en"
                             << "Climate" << true;
    QTest::newRow("parking") << 3 << "en"
                             << "Parking" << true;
    QTest::newRow("settings, without its own key") << 4 << "en"
                                                   << "Settings" << false;
    QTest::newRow("about is ignored") << 5 << "en"
                                      << "before" << true;
    QTest::newRow("negative is ignored") << -1 << "en"
                                         << "before" << true;
}

void tst_Navigation::topBarTitles()
{
    QFETCH(int, page);
    QFETCH(QString, language);
    QFETCH(QString, title);
    QFETCH(bool, settingsKey);
    QVERIFY(Translator::instance()->setLanguage(language));
    Vantiq_Top_Bar_Widget bar;
    bar.show();
    auto *label = find<QLabel>(&bar, "Txt_title");
    label->setText(QStringLiteral("before"));
    bar.setCurrentPageTitle(page);
    QCOMPARE(label->text(), title);
    QCOMPARE(find<QPushButton>(&bar, "key_settings")->isVisible(), settingsKey);

    bar.setCurrentPageTitle(4);
    bar.setCurrentPageTitle(0);
    QVERIFY(find<QPushButton>(&bar, "key_settings")->isVisible());
}

void tst_Navigation::topBarKeys()
{
    Vantiq_Top_Bar_Widget bar;
    auto *back = find<QPushButton>(&bar, "key_back");
    auto *settings = find<QPushButton>(&bar, "key_settings");
    QVERIFY(back->isCheckable());
    QVERIFY(settings->isCheckable());
    QCOMPARE(back->property("colorGroup").toString(), QStringLiteral("ColorGroup7"));

    QSignalSpy backSpy(&bar, &Vantiq_Top_Bar_Widget::gotoLastPage);
    QSignalSpy settingsSpy(&bar, &Vantiq_Top_Bar_Widget::gotoSettings);
    CallSpy calls;
    QTest::mouseClick(back, Qt::LeftButton);
    QCOMPARE(backSpy.count(), 1);
    QCOMPARE(settingsSpy.count(), 0);
    QTest::mouseClick(settings, Qt::LeftButton);
    QCOMPARE(backSpy.count(), 1);
    QCOMPARE(settingsSpy.count(), 1);
    QCOMPARE(calls.take(),
             (QStringList{"svaudio::AudioService::doBeep(0)", "svaudio::AudioService::doBeep(0)"}));
}

NORDA_TEST_MAIN(tst_Navigation)
#include "tst_navigation.moc"
