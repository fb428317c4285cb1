#include "window/repeatedpart.h"
#include "window/transportbar.h"
#include "windowfixture.h"

#include <QLineEdit>
#include <QMenu>
#include <QStatusBar>

/** The seek bar, the clock, speeds, steps and bookmarks. */
class tst_Transport : public QObject, WindowFixture
{
    Q_OBJECT

private slots:
    void init() { makeBench(); }
    void cleanup() { removeBench(); }

    void clickOnTheSeekBarGoesThere();
    void clockGoesOnBetweenSignals();
    void typedTime_data();
    void typedTime();
    void clockTakesATime();
    void speedKeys();
    void partIsRepeated();
    void stepsToTheNextEvent();
    void stepsBackThroughEvents();
    void bookmarksAreVisited();
};

void tst_Transport::clickOnTheSeekBarGoesThere()
{
    openDriveOf("seek.jsonl", 100);
    session()->drive()->pause();
    auto *slider = find<QSlider>("seek");
    QTest::mouseClick(slider, Qt::LeftButton, {},
                      QPoint(slider->width() * 3 / 4, slider->height() / 2));
    const qint64 ms = session()->drive()->positionMs();
    QVERIFY2(ms > 72000 && ms < 78000, qPrintable(QString::number(ms)));
}

/** Nothing arrives for a minute, and the clock does not look hung. */
void tst_Transport::clockGoesOnBetweenSignals()
{
    openDriveOf("sparse.jsonl", 2, 60);
    session()->drive()->setSpeed(10);
    QTRY_COMPARE(session()->signalCount(), 1);
    const QString before = find<QLineEdit>("clock")->text();
    QTRY_VERIFY(find<QLineEdit>("clock")->text() != before);
    QCOMPARE(session()->signalCount(), 1);
}

void tst_Transport::typedTime_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("ms");
    QTest::newRow("seconds") << "75" << 75000LL;
    QTest::newRow("parts of a second") << "75.25" << 75250LL;
    QTest::newRow("minutes") << "1:15" << 75000LL;
    QTest::newRow("hours") << " 1:01:15.5 " << 3675500LL;
    QTest::newRow("many minutes") << "90:00" << 5400000LL;
    QTest::newRow("nothing") << "" << -1LL;
    QTest::newRow("a word") << "noon" << -1LL;
    QTest::newRow("negative") << "-5" << -1LL;
    QTest::newRow("not a number") << "nan" << -1LL;
    QTest::newRow("endless") << "inf" << -1LL;
    QTest::newRow("too many seconds") << "1:75" << -1LL;
    QTest::newRow("too many parts") << "1:2:3:4" << -1LL;
    QTest::newRow("empty part") << "1:" << -1LL;
}

void tst_Transport::typedTime()
{
    QFETCH(QString, text);
    QTEST(TransportBar::readTime(text), "ms");
}

void tst_Transport::clockTakesATime()
{
    openDriveOf("typed.jsonl", 100);
    session()->drive()->pause();
    press(Qt::Key_T);
    auto *clock = find<QLineEdit>("clock");
    QVERIFY(clock->hasFocus());
    QTest::keyClicks(clock, "1:05");
    press(Qt::Key_Return);
    QCOMPARE(session()->drive()->positionMs(), 65000);
    QVERIFY(!clock->hasFocus());

    press(Qt::Key_T);
    QTest::keyClicks(clock, "soon");
    press(Qt::Key_Return);
    QCOMPARE(session()->drive()->positionMs(), 65000);
    QVERIFY(m_window->statusBar()->currentMessage().startsWith("soon: expected a time"));
    press(Qt::Key_Escape);
    QCOMPARE(clock->text(), QString("1:05"));
}

void tst_Transport::speedKeys()
{
    QCOMPARE(session()->drive()->speed(), 1.0);
    press(Qt::Key_Plus);
    QCOMPARE(session()->drive()->speed(), 2.0);
    press(Qt::Key_Minus);
    press(Qt::Key_Minus);
    QCOMPARE(session()->drive()->speed(), 0.5);
}

void tst_Transport::partIsRepeated()
{
    openDriveOf("part.jsonl", 100);
    module::Drive *drive = session()->drive();
    drive->pause();
    drive->seek(20000);
    press(Qt::Key_I);
    drive->seek(30000);
    press(Qt::Key_O);
    const RepeatedPart *part = find<TransportBar>("transport")->repeatedPart();
    QCOMPARE(part->fromMs(), 20000);
    QCOMPARE(part->toMs(), 30000);

    drive->seek(29000);
    drive->setSpeed(30);
    const QSignalSpy jumps(drive, &module::Drive::jumped);
    drive->play();
    QTRY_VERIFY(jumps.size() >= 2);
    for (const QVariantList &jump : jumps)
        QCOMPARE(jump[1].toLongLong(), 20000);

    press(Qt::Key_L);
    drive->seek(29000);
    QTRY_VERIFY(drive->positionMs() > 35000);
}

void tst_Transport::stepsToTheNextEvent()
{
    openDriveOf("steps.jsonl", 100);
    module::Drive *drive = session()->drive();
    drive->pause();
    drive->seek(0);
    const int before = session()->signalCount();
    press(Qt::Key_Period);
    QCOMPARE(drive->positionMs(), 1000);
    press(Qt::Key_Period);
    QCOMPARE(drive->positionMs(), 2000);
    QCOMPARE(session()->signalCount(), before + 2);
    QCOMPARE(find<QLineEdit>("clock")->text(), QString("0:02"));
    QVERIFY(!drive->isPlaying());
}

void tst_Transport::stepsBackThroughEvents()
{
    openDriveOf("back.jsonl", 100);
    windows()->openWindow(VehiclePage);
    module::Drive *drive = session()->drive();
    drive->pause();
    drive->seek(0);
    for (int i = 0; i < 3; ++i)
        drive->step();
    QCOMPARE(text("Txt_battery"), QString("12.3V"));
    press(Qt::Key_Comma);
    QVERIFY(session()->isRewound());
    press(Qt::Key_Comma);
    QCOMPARE(text("Txt_battery"), QString("12.1V"));
    press(Qt::Key_Period);
    QCOMPARE(text("Txt_battery"), QString("12.2V"));
    press(Qt::Key_End);
    QVERIFY(!session()->isRewound());
    QCOMPARE(text("Txt_battery"), QString("12.3V"));
}

void tst_Transport::bookmarksAreVisited()
{
    openDriveOf("marked.jsonl", 100);
    module::Drive *drive = session()->drive();
    drive->pause();
    for (int i = 0; i < 4; ++i) {
        drive->step();
        press(Qt::Key_B);
    }
    QMenu *menu = command("bookmarks")->menu();
    emit menu->aboutToShow();
    QCOMPARE(menu->actions().size(), 4);
    QVERIFY(menu->actions()[1]->text().endsWith("Bookmark 2"));
    windows()->openWindow(VehiclePage);
    menu->actions()[1]->trigger();
    QVERIFY(session()->isRewound());
    QCOMPARE(windows()->currentWindow(), int(GaugesPage)); // which was open then

    press(Qt::Key_B); // of the moment that is shown, between those that are there
    emit menu->aboutToShow();
    QVERIFY(menu->actions()[2]->text().endsWith("Bookmark 5"));
}

NORDA_TEST_MAIN(tst_Transport)
#include "tst_transport.moc"
