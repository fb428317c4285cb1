#include "callspy.h"
#include "elision.h"
#include "messagecapture.h"
#include "norda/vtqadaptor.h"
#include "norda/widget/vantiq_settings_widget.h"
#include "paintcounter.h"
#include "pluginfixture.h"
#include "testmain.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>

using norda::VtqAdaptor;

enum LineType { Title = 1, Item = 2, Value = 3 };

static constexpr int rowCount = 15;
static constexpr int rowHeight = 93;

static const QString beep = QStringLiteral("svaudio::AudioService::doBeep(0)");

/** The module's configuration menu. */
class tst_SettingsMenu : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void currentTypes_data();
    void currentTypes();
    void startsAsAgreed();
    void title();
    void itemLines_data();
    void itemLines();
    void fullPage();
    void partsAreJoined();
    void linesWithoutARow_data();
    void linesWithoutARow();
    void rowsLieAsTheyArrive();
    void valuesAloneLieInRowOrder();
    void titledValuesAreKept();
    void emptyValueIsNotKept();
    void whatSurvives_data();
    void whatSurvives();
    void rowTouches_data();
    void rowTouches();
    void captionLeavesTheTouchToTheRow();
    void backKey();
    void backKeyEmptiesTheTexts();
    void secondBackKeyDoesNothing();
    void touchScrollsToTheTop();
    void otherLineTypes_data();
    void otherLineTypes();
    void shortInfo_data();
    void shortInfo();
    void hugeTitleIsCutInTheLog();
    void longTextsAreElided_data();
    void longTextsAreElided();
    void repeatedTextPaintsNothing();
    void hostileTexts();
    void eachLinePausesAndPaints();
    void pausesDoNotRunTheLoop();
    void hiddenScreenFollows();
    void statusBarIsLeftAlone();

private:
    template <typename Widget>
    Widget *child(const char *pattern, int number = 0) const
    {
        return find<Widget>(m_screen, qPrintable(QString::fromLatin1(pattern).replace(
                                          '#', QString::number(number))));
    }
    void line(int type, int number, const QString &label, const QString &value = {})
    {
        emit m_adaptor->NordaConfigMenuTextInfo({type, 0, number}, {label}, {value});
    }
    QString rowText(int row) const { return child<QLabel>("Txt_item_#", row)->text(); }
    /** The rows on screen, from top to bottom. */
    QList<int> rows() const
    {
        QMap<int, int> byPlace;
        for (int row = 1; row <= rowCount; ++row) {
            const auto *widget = child<QWidget>("item_bar_widget_#", row);
            if (widget->isVisibleTo(m_screen))
                byPlace.insert(widget->y(), row);
        }
        return byPlace.values();
    }
    QScrollBar *scrollBar() const
    {
        return child<QScrollArea>("scrollArea_item_01")->verticalScrollBar();
    }

    QScopedPointer<PluginFixture> m_host;
    QWidget *m_screen = nullptr;
    VtqAdaptor *const m_adaptor = VtqAdaptor::instance();
};

void tst_SettingsMenu::init()
{
    m_host.reset(new PluginFixture);
    m_screen = m_host->open(84);
}

void tst_SettingsMenu::cleanup()
{
    m_host.reset();
}

void tst_SettingsMenu::currentTypes_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<int>("type");
    QTest::newRow("nothing") << QStringList{"", "", ""} << -1;
    QTest::newRow("title") << QStringList{"T", "", ""} << -1;
    QTest::newRow("item") << QStringList{"", "A", ""} << -1;
    QTest::newRow("item and value") << QStringList{"", "A", "B"} << -1;
    QTest::newRow("title and item") << QStringList{"T", "A", ""} << 1;
    QTest::newRow("title and value") << QStringList{"T", "", "B"} << 2;
    QTest::newRow("value") << QStringList{"", "", "B"} << 3;
    QTest::newRow("all") << QStringList{"T", "A", "B"} << 1;
    QTest::newRow("too short") << QStringList{"T"} << -1;
    QTest::newRow("empty list") << QStringList{} << -1;
}

void tst_SettingsMenu::currentTypes()
{
    QFETCH(QStringList, lines);
    QFETCH(int, type);
    QCOMPARE(norda::Vantiq_Settings_Widget::GetCurrentType(lines), type);
}

void tst_SettingsMenu::startsAsAgreed()
{
    QCOMPARE(m_screen->metaObject()->className(), "norda::Vantiq_Settings_Widget");
    QCOMPARE(rows(), QList<int>());
    QCOMPARE(child<QStackedWidget>("stackedWidget")->currentIndex(), 0);
    QCOMPARE(child<QScrollArea>("scrollArea_item_01")->size(), QSize(1152, 520));
    QCOMPARE(child<QWidget>("bkg_top_pop")->styleSheet(),
             QStringLiteral("background-color: rgb(0, 0, 0);"));
    QVERIFY(child<QPushButton>("norda_key_setting")->isChecked());
    QCOMPARE(child<QWidget>("back_widget1")->x(), 9999);
    for (int row = 1; row <= rowCount; ++row) {
        QCOMPARE(child<QLabel>("Txt_item_#", row)->size(),
                 QSize(row == 12 || row == 13 ? 850 : 823, 80));
        QCOMPARE(child<QPushButton>("key_item_#", row)->size(), QSize(1026, 96));
    }
}

void tst_SettingsMenu::title()
{
    line(Title, 1, "Vehicle settings");
    QCOMPARE(child<QLabel>("Txt_pop_title")->text(), QStringLiteral("Vehicle settings"));
    line(Title, 99, "Units", "ignored");
    QCOMPARE(child<QLabel>("Txt_pop_title")->text(), QStringLiteral("Units"));
    QCOMPARE(rows(), QList<int>());
}

void tst_SettingsMenu::itemLines_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("number");
    for (const int type : {Item, Value}) {
        for (int number = 2; number <= rowCount + 1; ++number)
            QTest::addRow("type %d, line %d", type, number) << type << number;
    }
}

void tst_SettingsMenu::itemLines()
{
    QFETCH(int, type);
    QFETCH(int, number);
    const int row = number - 1;
    line(Title, 1, "T");
    line(type, number, "Backlight: ", "On");
    QCOMPARE(rows(), QList<int>{row});
    QCOMPARE(rowText(row), QStringLiteral("Backlight: On"));
    QVERIFY(child<QLabel>("Txt_item_#", row)->testAttribute(Qt::WA_TransparentForMouseEvents));
    QCOMPARE(child<QWidget>("item_bar_widget_#", row)->height(), rowHeight);
    QCOMPARE(child<QWidget>("scrollAreaWidgetContents")->height(), rowHeight + 50);
}

void tst_SettingsMenu::fullPage()
{
    line(Title, 1, "T");
    for (int row = 1; row <= rowCount; ++row) {
        line(Item, row + 1, QStringLiteral("Row %1").arg(row));
        QCOMPARE(child<QWidget>("scrollAreaWidgetContents")->height(), rowHeight * row + 50);
        QCOMPARE(child<QWidget>("item_bar_widget_#", row)->y(), rowHeight * (row - 1));
    }
    QCOMPARE(rows().size(), rowCount);
    for (int row = 1; row <= rowCount; ++row)
        QCOMPARE(rowText(row), QStringLiteral("Row %1").arg(row));
    QCOMPARE(scrollBar()->maximum(), rowHeight * rowCount + 50 - 520);
}

void tst_SettingsMenu::partsAreJoined()
{
    emit m_adaptor->NordaConfigMenuTextInfo({Title, 0, 1}, {"Ti", "t", "le"}, {"x"});
    QCOMPARE(child<QLabel>("Txt_pop_title")->text(), QStringLiteral("Title"));
    emit m_adaptor->NordaConfigMenuTextInfo({Item, 0, 2}, {"a", "b"}, {"c", "d", "e"});
    QCOMPARE(rowText(1), QStringLiteral("abcde"));
    emit m_adaptor->NordaConfigMenuTextInfo({Item, 0, 3}, {}, {});
    QCOMPARE(rowText(2), QString());
    QCOMPARE(rows(), (QList<int>{1, 2}));
}

void tst_SettingsMenu::linesWithoutARow_data()
{
    QTest::addColumn<int>("number");
    for (const int number : {17, 18, 1, 0, -1, 1000, INT_MAX, INT_MIN})
        QTest::addRow("%d", number) << number;
}

// Without a label there is no text to store: with one, the page would be laid out anew and the row
// that has no value would go.
void tst_SettingsMenu::linesWithoutARow()
{
    QFETCH(int, number);
    line(Item, 4, "stays");
    emit m_adaptor->NordaConfigMenuTextInfo({Value, 0, number}, {"A"}, {"B"});
    emit m_adaptor->NordaConfigMenuTextInfo({Item, 0, number}, {"A"}, {"B"});
    QCOMPARE(rows(), QList<int>{3});
    for (int row = 1; row <= rowCount; ++row)
        QCOMPARE(rowText(row).contains("AB"), false);
    QTest::mouseClick(child<QPushButton>("key_item_#", 3), Qt::LeftButton); // empties the texts
    line(Item, 4, "");
    emit m_adaptor->NordaConfigMenuTextInfo({Value, 0, number}, {"A"}, {"B"});
    QCOMPARE(rows(), QList<int>{3});
}

void tst_SettingsMenu::rowsLieAsTheyArrive()
{
    line(Title, 1, "T");
    line(Item, 5, "fourth");
    line(Item, 3, "second");
    line(Item, 4, "third");
    QCOMPARE(rows(), (QList<int>{4, 2, 3}));
    line(Item, 5, "fourth again"); // a row that comes again comes last
    QCOMPARE(rows(), (QList<int>{2, 3, 4}));
    QCOMPARE(rowText(4), QStringLiteral("fourth again"));
}

void tst_SettingsMenu::valuesAloneLieInRowOrder()
{
    line(Value, 6, "e: ", "5");
    line(Value, 3, "b: ", "2");
    line(Value, 16, "o: ", "15");
    line(Value, 4, "c: ", "3");
    QCOMPARE(rows(), (QList<int>{2, 3, 5, 15}));
    QCOMPARE(rowText(3), QStringLiteral("c: 3"));
    QCOMPARE(child<QWidget>("scrollAreaWidgetContents")->height(), rowHeight * 4 + 50);
}

// A title's values lie as they arrive, too; as rows of the page they are kept beyond the touch.
void tst_SettingsMenu::titledValuesAreKept()
{
    line(Title, 1, "T");
    line(Value, 5, "d: ", "4");
    line(Value, 3, "b: ", "2");
    QCOMPARE(rows(), (QList<int>{4, 2}));
    QTest::mouseClick(child<QPushButton>("key_item_#", 4), Qt::LeftButton);
    QCOMPARE(rows(), QList<int>());
    line(Value, 6, "e: ", "5"); // without a title: the page's rows, in their order
    QCOMPARE(rows(), (QList<int>{2, 4, 5}));
}

void tst_SettingsMenu::emptyValueIsNotKept()
{
    line(Value, 3, "b: ", "2");
    line(Value, 4, "no value");
    QCOMPARE(rowText(3), QStringLiteral("no value")); // the text is set
    QCOMPARE(rows(), QList<int>{2});                  // the row is not of the page
}

void tst_SettingsMenu::whatSurvives_data()
{
    QTest::addColumn<QByteArray>("act");
    QTest::addColumn<QList<int>>("shown");
    QTest::newRow("row touch") << QByteArray("row") << QList<int>{2, 4};
    QTest::newRow("back key") << QByteArray("back") << QList<int>{4};
    QTest::newRow("hidden and shown") << QByteArray("show") << QList<int>{4};
}

void tst_SettingsMenu::whatSurvives()
{
    QFETCH(QByteArray, act);
    QFETCH(QList<int>, shown);
    line(Value, 3, "b: ", "2");
    if (act == "row") {
        QTest::mouseClick(child<QPushButton>("key_item_#", 2), Qt::LeftButton);
        QCOMPARE(rows(), QList<int>());
    } else if (act == "back") {
        QTest::mouseClick(child<QPushButton>("key_back"), Qt::LeftButton);
        QCOMPARE(rows(), QList<int>());
    } else {
        m_screen->hide();
        m_screen->show();
        QCOMPARE(rows(), QList<int>{2}); // what is on the screen stays
    }
    line(Value, 5, "d: ", "4");
    QCOMPARE(rows(), shown);
}

void tst_SettingsMenu::rowTouches_data()
{
    QTest::addColumn<int>("row");
    for (int row = 1; row <= rowCount; ++row)
        QTest::addRow("row %d", row) << row;
}

void tst_SettingsMenu::rowTouches()
{
    QFETCH(int, row);
    line(Title, 1, "T");
    for (int each = 1; each <= rowCount; ++each)
        line(Item, each + 1, "x");
    auto *key = child<QPushButton>("key_item_#", row);
    child<QScrollArea>("scrollArea_item_01")->ensureWidgetVisible(key);
    CallSpy calls;
    QTest::mouseClick(key, Qt::LeftButton);
    QCOMPARE(calls.take(),
             (QStringList{beep, QStringLiteral("norda::VtqAdaptor::NordaSetSelectedLineNumber(%1)")
                                    .arg(row + 1)}));
    QCOMPARE(rows(), QList<int>());
    // The title's text was emptied with the others: values alone are a page again.
    line(Value, 2, "A: ", "1");
    line(Value, 4, "no value");
    QCOMPARE(rows(), QList<int>{1});
    QCOMPARE(child<QLabel>("Txt_pop_title")->text(), QStringLiteral("T")); // until the next comes
}

void tst_SettingsMenu::captionLeavesTheTouchToTheRow()
{
    line(Item, 4, "A long text");
    auto *row = child<QWidget>("item_bar_widget_#", 3);
    const QPoint onText = child<QLabel>("Txt_item_#", 3)->geometry().center();
    CallSpy calls;
    QTest::mouseClick(m_screen->childAt(row->mapTo(m_screen, onText)), Qt::LeftButton);
    QCOMPARE(calls.take().last(),
             QStringLiteral("norda::VtqAdaptor::NordaSetSelectedLineNumber(4)"));
}

void tst_SettingsMenu::backKey()
{
    line(Title, 1, "T");
    line(Value, 3, "b: ", "2");
    for (const char *label : {"icon_back", "Txt_back"})
        QVERIFY(child<QLabel>(label)->testAttribute(Qt::WA_TransparentForMouseEvents));
    auto *key = child<QPushButton>("key_back");
    CallSpy calls;
    QTest::mouseClick(m_screen->childAt(key->mapTo(m_screen, key->rect().center())),
                      Qt::LeftButton);
    QCOMPARE(calls.take(), (QStringList{beep, "norda::VtqAdaptor::NordaData_Request(13)"}));
    QCOMPARE(rows(), QList<int>());
}

/** Values alone are a page again. */
void tst_SettingsMenu::backKeyEmptiesTheTexts()
{
    line(Title, 1, "T");
    line(Item, 4, "x");
    MessageCapture capture;
    QTest::mouseClick(child<QPushButton>("key_back"), Qt::LeftButton);
    const QStringList lines = capture.takeTexts().filter("::onBackClicked() ");
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].endsWith(" -- -1"), qPrintable(lines[0])); // no page
    line(Value, 2, "A: ", "1");
    line(Value, 4, "no value");
    QCOMPARE(rows(), QList<int>{1});
}

void tst_SettingsMenu::secondBackKeyDoesNothing()
{
    line(Item, 4, "x");
    CallSpy calls;
    child<QPushButton>("key_back_det")->click();
    QCOMPARE(calls.take(), QStringList());
    QCOMPARE(rows(), QList<int>{3});
}

void tst_SettingsMenu::touchScrollsToTheTop()
{
    const auto scrolled = [this] {
        line(Title, 1, "T");
        for (int row = 1; row <= rowCount; ++row)
            line(Item, row + 1, "x");
        QCoreApplication::processEvents();
        scrollBar()->setValue(400);
        return scrollBar()->value() == 400;
    };
    QVERIFY(scrolled());
    QTest::mouseClick(child<QPushButton>("key_item_#", 6), Qt::LeftButton);
    QCOMPARE(scrollBar()->value(), 0);
    QVERIFY(scrolled());
    QTest::mouseClick(child<QPushButton>("key_back"), Qt::LeftButton);
    QCOMPARE(scrollBar()->value(), 0);
    QVERIFY(scrolled());
    m_screen->hide();
    m_screen->show();
    QCOMPARE(scrollBar()->value(), 0);
}

void tst_SettingsMenu::otherLineTypes_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {0, 4, -1, 255, INT_MAX, INT_MIN})
        QTest::addRow("%d", type) << type;
}

void tst_SettingsMenu::otherLineTypes()
{
    QFETCH(int, type);
    line(Title, 1, "T");
    line(Item, 3, "stays");
    line(type, 4, "other", "x");
    QCOMPARE(child<QLabel>("Txt_pop_title")->text(), QStringLiteral("T"));
    QCOMPARE(rows(), QList<int>{2});
    QCOMPARE(rowText(3), QString());
}

void tst_SettingsMenu::shortInfo_data()
{
    QTest::addColumn<QList<int>>("info");
    QTest::newRow("empty") << QList<int>{};
    QTest::newRow("one") << QList<int>{2};
    QTest::newRow("two") << QList<int>{2, 0};
}

void tst_SettingsMenu::shortInfo()
{
    QFETCH(QList<int>, info);
    line(Title, 1, "Units");
    line(Item, 3, "stays");
    QElapsedTimer clock;
    clock.start();
    MessageCapture messages;
    emit m_adaptor->NordaConfigMenuTextInfo(info, {"A"}, {"B"});
    QVERIFY(clock.elapsed() >= 10);
    const QStringList lines = messages.takeTexts();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].contains(QStringLiteral("expected 3 numbers, got %1").arg(info.size())),
             qPrintable(lines[0]));
    QVERIFY2(lines[0].contains(QStringLiteral("Units")), qPrintable(lines[0]));
    QCOMPARE(rows(), QList<int>{2});
}

void tst_SettingsMenu::hugeTitleIsCutInTheLog()
{
    line(Title, 1, QString(200000, QLatin1Char('x')));
    MessageCapture messages;
    emit m_adaptor->NordaConfigMenuTextInfo({}, {"A"}, {"B"});
    const QString warning = messages.takeTexts().join(QString());
    QVERIFY(warning.contains(QString(80, QLatin1Char('x'))));
    QVERIFY(!warning.contains(QString(81, QLatin1Char('x'))));
}

void tst_SettingsMenu::longTextsAreElided_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("label");
    QTest::newRow("title") << int(Title) << QByteArray("Txt_pop_title");
    for (const int row : {1, 12, 15})
        QTest::addRow("row %d", row)
            << int(Item) << QByteArray("Txt_item_") + QByteArray::number(row);
}

void tst_SettingsMenu::longTextsAreElided()
{
    QFETCH(int, type);
    QFETCH(QByteArray, label);
    auto *shown = find<QLabel>(m_screen, label);
    const int number = label.startsWith("Txt_item_") ? label.mid(9).toInt() + 1 : 1;
    const QString longText =
        QStringLiteral("Keep the interior lamps on after the engine was switched off, "
                       "until the doors are locked");
    QCOMPARE(
        faultOfElision(shown, longText, [=](const QString &text) { line(type, number, text); }),
        QString());
    line(type, number, longText);
    QCOMPARE(shown->text(), longText);
}

void tst_SettingsMenu::repeatedTextPaintsNothing()
{
    auto *label = child<QLabel>("Txt_item_#", 1);
    line(Item, 2, QString(200, QLatin1Char('W')));
    QTest::qWait(50);
    PaintCounter counter(label);
    label->setText(label->text());
    QTest::qWait(50);
    QCOMPARE(counter.paints, 0);
}

void tst_SettingsMenu::hostileTexts()
{
    const QString huge(200000, QLatin1Char('W'));
    line(Title, 1, huge);
    line(Item, 2, huge, huge);
    line(Item, 3, "<img src=':/icon/baricon/back.png'>", "<h1>");
    emit m_adaptor->NordaConfigMenuTextInfo(QVector<int>(5000, 3).toList(), {"a"}, {"b"});
    QCOMPARE(child<QLabel>("Txt_item_#", 2)->textFormat(), Qt::PlainText);
    QCOMPARE(rowText(2), QStringLiteral("ab")); // line 3 again, from the long list
    QCOMPARE(m_screen->size(), QSize(1280, 720));
    QCOMPARE(child<QWidget>("item_bar_widget_#", 1)->height(), rowHeight);
    m_screen->grab();
}

void tst_SettingsMenu::eachLinePausesAndPaints()
{
    QTest::qWait(50);
    PaintCounter paints;
    QElapsedTimer clock;
    clock.start();
    line(Title, 1, "T");
    QVERIFY(clock.elapsed() >= 10);
    QVERIFY(paints.paints > 0); // before the event loop runs
    for (int row = 1; row <= 3; ++row) {
        paints.paints = 0;
        clock.start();
        line(Item, row + 1, "x");
        QVERIFY(clock.elapsed() >= 10);
        QVERIFY(paints.paints > 0);
    }
    clock.start();
    QTest::mouseClick(child<QPushButton>("key_back"), Qt::LeftButton);
    QVERIFY(clock.elapsed() >= 5);
}

void tst_SettingsMenu::pausesDoNotRunTheLoop()
{
    int fired = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&fired] { ++fired; });
    timer.start(0);
    for (int row = 1; row <= rowCount; ++row)
        line(Item, row + 1, "x");
    QTest::mouseClick(child<QPushButton>("key_back"), Qt::LeftButton);
    fired = 0;
    child<QPushButton>("key_back")->click();
    line(Title, 1, "T");
    QCOMPARE(fired, 0);
}

void tst_SettingsMenu::hiddenScreenFollows()
{
    m_host->window(84)->onHide(QByteArray());
    m_screen->hide();
    line(Title, 1, "Hidden");
    line(Item, 3, "b");
    m_screen->show();
    QCOMPARE(rows(), QList<int>{2});
    QCOMPARE(child<QLabel>("Txt_pop_title")->text(), QStringLiteral("Hidden"));
}

void tst_SettingsMenu::statusBarIsLeftAlone()
{
    CallSpy calls;
    m_screen->hide();
    m_screen->show();
    QCOMPARE(calls.take({"cm::StatusBarControl"}), QStringList());
}

NORDA_TEST_MAIN(tst_SettingsMenu)
#include "tst_settingsmenu.moc"
