#include "adaptorlink.h"
#include "callspy.h"
#include "drive.h"
#include "messagecapture.h"
#include "norda/vtqadaptor.h"
#include "pluginfixture.h"
#include "simulator/menu.h"
#include "simulator/simulatedcar.h"
#include "testmain.h"

#include <QLabel>
#include <QLoggingCategory>
#include <QPushButton>
#include <QScrollArea>

#include <random>

using namespace module;
using norda::VtqAdaptor;

struct MenuPage
{
    QString title;
    QStringList rows;
};

/** The menu, the version, the clock and the prompts of the simulated car. */
class tst_SimulatedMenu : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void pagesAreSentInOrder();
    void valuesGoRound();
    void resetAsks();
    void linesThatAPageLacks_data();
    void linesThatAPageLacks();
    void everyLeafAndBack();
    void randomTouches();
    void burstArrivesWhole();
    void hastyTouchesDoNotMixPages();
    void noPageIsLongerThanTheOneAbove();
    void versionAndClock();
    void promptsComeOneAtATime();

private:
    /** The page that a burst of lines describes. */
    static MenuPage pageOf(EmissionQueue *out)
    {
        MenuPage page;
        int line = 1;
        while (!out->isEmpty()) {
            const Emission emission = out->take();
            if (emission.signal != "NordaConfigMenuTextInfo")
                qFatal("a menu sends lines only");
            const QList<int> info = emission.arguments[0].value<QList<int>>();
            const QString text = emission.arguments[1].toStringList().join(QString()) +
                                 emission.arguments[2].toStringList().join(QString());
            if (info.size() != 3 || info[2] != line++ || (info[0] == 1) != (info[2] == 1))
                qFatal("a page is a title and its lines in order");
            if (info[0] == 1)
                page.title = text;
            else
                page.rows.append(text);
        }
        return page;
    }
    static MenuPage back(Menu *menu)
    {
        EmissionQueue out;
        menu->back(&out, 0);
        return pageOf(&out);
    }
    static MenuPage select(Menu *menu, int line)
    {
        EmissionQueue out;
        menu->select(&out, 0, line);
        return pageOf(&out);
    }
    static int lineOf(const MenuPage &page, const char *text)
    {
        for (int row = 0; row < page.rows.size(); ++row) {
            if (page.rows[row].startsWith(QLatin1String(text)))
                return row + 2;
        }
        qFatal("no row %s", text);
        return 0;
    }
    void walk(Menu *menu, const MenuPage &page, int depth);

    int m_deepest = 0;
    int m_leaves = 0;
    int m_longest = 0;
};

void tst_SimulatedMenu::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
}

void tst_SimulatedMenu::pagesAreSentInOrder()
{
    Menu menu;
    const MenuPage main = back(&menu);
    QCOMPARE(main.title, QStringLiteral("Vehicle settings"));
    QCOMPARE(main.rows.first(), QStringLiteral("Units"));
    const MenuPage units = select(&menu, 2);
    QCOMPARE(units.title, QStringLiteral("Units"));
    QCOMPARE(units.rows.first(), QStringLiteral("Speed:  mph"));
    QCOMPARE(back(&menu).title, main.title);
    QCOMPARE(back(&menu).title, main.title); // at the top it stays
}

void tst_SimulatedMenu::valuesGoRound()
{
    Menu menu;
    select(&menu, lineOf(back(&menu), "Units"));
    QStringList seen;
    for (int touch = 0; touch < 3; ++touch)
        seen.append(select(&menu, 4).rows[2]);
    QCOMPARE(seen, (QStringList{"Pressure:  bar", "Pressure:  kPa", "Pressure:  psi"}));
}

void tst_SimulatedMenu::resetAsks()
{
    Menu menu;
    const auto speed = [this, &menu] {
        const QString row = select(&menu, lineOf(back(&menu), "Units")).rows[0];
        back(&menu);
        return row;
    };
    select(&menu, lineOf(back(&menu), "Units"));
    select(&menu, 2);
    back(&menu);
    QCOMPARE(speed(), QStringLiteral("Speed:  km/h"));

    MenuPage question = select(&menu, lineOf(back(&menu), "Reset"));
    QCOMPARE(select(&menu, lineOf(question, "No")).title, QStringLiteral("Vehicle settings"));
    QCOMPARE(speed(), QStringLiteral("Speed:  km/h"));
    question = select(&menu, lineOf(back(&menu), "Reset"));
    QCOMPARE(select(&menu, lineOf(question, "Yes")).title, QStringLiteral("Vehicle settings"));
    QCOMPARE(speed(), QStringLiteral("Speed:  mph"));
}

void tst_SimulatedMenu::linesThatAPageLacks_data()
{
    QTest::addColumn<int>("line");
    for (const int line : {-1, 0, 1, 17, 18, 1000, INT_MAX, INT_MIN})
        QTest::addRow("%d", line) << line;
}

void tst_SimulatedMenu::linesThatAPageLacks()
{
    QFETCH(int, line);
    Menu menu;
    const MenuPage main = back(&menu);
    const MenuPage again = select(&menu, line);
    QCOMPARE(again.title, main.title);
    QCOMPARE(again.rows, main.rows);
}

void tst_SimulatedMenu::walk(Menu *menu, const MenuPage &page, int depth)
{
    m_deepest = qMax(m_deepest, depth);
    m_longest = qMax(m_longest, page.rows.size());
    QVERIFY(page.rows.size() <= 15);
    for (int row = 0; row < page.rows.size(); ++row) {
        const MenuPage next = select(menu, row + 2);
        if (next.title == page.title) { // a value
            QVERIFY(next.rows[row] != page.rows[row]);
            ++m_leaves;
        } else if (depth == 1 || next.title != QLatin1String("Vehicle settings")) {
            walk(menu, next, depth + 1);
            if (menu->title() != page.title)
                back(menu);
        } else { // an answer led to the top: in again
            ++m_leaves;
            select(menu, lineOf(next, qPrintable(page.title)));
        }
    }
}

void tst_SimulatedMenu::everyLeafAndBack()
{
    Menu menu;
    walk(&menu, back(&menu), 1);
    QCOMPARE(m_deepest, 3);
    QCOMPARE(m_longest, 15);
    QVERIFY(m_leaves > 30);
}

/** The rows that the settings page shows, from top to bottom. */
static MenuPage shownPage(QWidget *screen)
{
    MenuPage page;
    page.title = find<QLabel>(screen, "Txt_pop_title")->text();
    QMap<int, QString> byPlace;
    for (int row = 1; row <= 15; ++row) {
        const auto *widget =
            find<QWidget>(screen, qPrintable(QStringLiteral("item_bar_widget_%1").arg(row)));
        if (widget->isVisibleTo(screen))
            byPlace.insert(
                widget->y(),
                find<QLabel>(screen, qPrintable(QStringLiteral("Txt_item_%1").arg(row)))->text());
    }
    page.rows = byPlace.values();
    return page;
}

// The screen's real keys, the car's real answers, and a second menu as the judge.
void tst_SimulatedMenu::randomTouches()
{
    PluginFixture host;
    QWidget *screen = host.open(84);
    Drive drive(std::make_unique<SimulatedCar>()); // stands still and answers touches
    Menu judge;
    const auto settled = [screen](const MenuPage &expected) {
        QTRY_COMPARE(shownPage(screen).title, expected.title);
        QTRY_COMPARE(shownPage(screen).rows, expected.rows);
    };
    VtqAdaptor::instance()->NordaData_Request(13);
    settled(back(&judge));
    std::mt19937 random(20140907);
    for (int touch = 0; touch < 60; ++touch) {
        const int rows = shownPage(screen).rows.size();
        const int choice = int(random() % unsigned(rows + 1));
        if (choice == rows) {
            QTest::mouseClick(find<QPushButton>(screen, "key_back"), Qt::LeftButton);
            settled(back(&judge));
        } else {
            const QString name = QStringLiteral("key_item_%1").arg(choice + 1);
            auto *key = find<QPushButton>(screen, qPrintable(name));
            find<QScrollArea>(screen, "scrollArea_item_01")->ensureWidgetVisible(key);
            QTest::mouseClick(key, Qt::LeftButton);
            settled(select(&judge, choice + 2));
        }
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(QStringLiteral("after touch %1").arg(touch)));
    }
}

void tst_SimulatedMenu::burstArrivesWhole()
{
    PluginFixture host;
    QWidget *screen = host.open(84);
    QWidget *hidden = host.open(80);
    Q_UNUSED(hidden)
    Menu menu;
    EmissionQueue out;
    menu.back(&out, 0); // the longest page
    AdaptorLink link;
    QElapsedTimer clock;
    clock.start();
    while (!out.isEmpty())
        QVERIFY(link.deliver(out.take()));
    QVERIFY(clock.elapsed() >= 160); // it paces itself
    const MenuPage page = shownPage(screen);
    QCOMPARE(page.title, QStringLiteral("Vehicle settings"));
    QCOMPARE(page.rows.size(), 15);
    QCOMPARE(page.rows, select(&menu, 99).rows);
}

void tst_SimulatedMenu::hastyTouchesDoNotMixPages()
{
    PluginFixture host;
    QWidget *screen = host.open(84);
    Drive drive(std::make_unique<SimulatedCar>());
    VtqAdaptor::instance()->NordaData_Request(13);
    QTRY_COMPARE(shownPage(screen).rows.size(), 15);
    // The second touch comes before the answer to the first.
    QTest::mouseClick(find<QPushButton>(screen, "key_item_1"), Qt::LeftButton);
    find<QPushButton>(screen, "key_back")->click();
    QTRY_COMPARE(shownPage(screen).rows.size(), 15);
    Menu judge;
    QCOMPARE(shownPage(screen).title, QStringLiteral("Vehicle settings"));
    QCOMPARE(shownPage(screen).rows, back(&judge).rows);
}

// The navigation key asks for the menu without clearing what the page shows.
void tst_SimulatedMenu::noPageIsLongerThanTheOneAbove()
{
    Menu menu;
    const MenuPage main = back(&menu);
    for (int row = 0; row < main.rows.size(); ++row) {
        const MenuPage page = select(&menu, row + 2);
        QVERIFY(page.rows.size() <= main.rows.size());
        if (page.title == main.title)
            continue;
        for (int inner = 0; inner < page.rows.size(); ++inner) {
            const MenuPage next = select(&menu, inner + 2);
            if (next.title == page.title)
                continue;
            if (next.title == main.title)
                break; // an answer led to the top
            QVERIFY(next.rows.size() <= page.rows.size());
            back(&menu);
        }
        while (menu.title() != main.title)
            back(&menu);
    }
}

void tst_SimulatedMenu::versionAndClock()
{
    PluginFixture host;
    QWidget *screen = host.open(85);
    SimulatedCar car;
    AdaptorLink link;
    const auto driveTo = [&](qint64 ms) {
        while (car.nextDueMs() <= ms)
            link.deliver(car.take());
    };
    driveTo(10000);
    QCOMPARE(find<QLabel>(screen, "Time_Label")->text(), QStringLiteral("Vehicle Features"));
    car.command(10000, QStringLiteral("norda::VtqAdaptor::NordaData_Request"), {5});
    driveTo(10050);
    QCOMPARE(find<QLabel>(screen, "Interface_Fw_Label")->text(),
             QStringLiteral("Interface FW:3.12.7"));
    QCOMPARE(find<QLabel>(screen, "Time_Label")->text(), QStringLiteral("Time:03/14/26 08:15:10"));
    driveTo(95000);
    QCOMPARE(find<QLabel>(screen, "Time_Label")->text(), QStringLiteral("Time:03/14/26 08:16:35"));
}

void tst_SimulatedMenu::promptsComeOneAtATime()
{
    SimulatedCar car;
    bool playing = false;
    QMap<int, int> kinds;
    while (car.nextDueMs() >= 0) {
        const Emission emission = car.take();
        if (emission.signal != "audioInterruptNotify")
            continue;
        const int kind = emission.arguments[0].toInt();
        QVERIFY(playing == (kind == 0)); // begins and ends take turns
        playing = kind != 0;
        ++kinds[kind];
        if (playing)
            QVERIFY(emission.arguments[1].toInt() > 0 && emission.arguments[1].toInt() < 64);
    }
    QVERIFY(!playing);
    QCOMPARE(kinds.keys(), (QList<int>{0, 2, 3, 4}));
    QCOMPARE(kinds[0], kinds[2] + kinds[3] + kinds[4]);
}

NORDA_TEST_MAIN(tst_SimulatedMenu)
#include "tst_simulatedmenu.moc"
