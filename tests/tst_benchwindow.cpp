#include "session/warnings.h"
#include "window/commands.h"
#include "window/filecommands.h"
#include "windowfixture.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QStatusBar>
#include <QTabBar>
#include <QToolButton>

class tst_BenchWindow : public QObject, WindowFixture
{
    Q_OBJECT

private slots:
    void init() { makeBench(); }
    void cleanup() { removeBench(); }

    void keyReachesItsCommand_data();
    void keyReachesItsCommand();
    void lettersGoToAField();
    void escapeLeavesAField();
    void returnPressesAButton();
    void focusBeginsOnTheScreen();
    void focusLeavesACoveredPanel();
    void fileAtUnlimitedSpeedIsSeen();
    void titleNamesTheDrive();
    void recentDrivesAreOffered();
    void recordingFromTheWindow();
    void recordingContinuesWithAnotherDrive();
    void pictureKeySavesTheScreen();
    void warningsAreCountedInTheStatusBar();
    void keysAreListedEverywhere();
};

static const char *const places[] = {"the page",  "service",  "signals", "calls", "car",
                                     "inspector", "timeline", "audio",   "plots", "warnings"};

void tst_BenchWindow::keyReachesItsCommand_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("place");
    for (const char *place : places) {
        for (const CommandRow &row : commandRows()) {
            if (!row.key.isEmpty())
                QTest::addRow("%s, %s", qPrintable(row.key), place) << row.name << QString(place);
        }
    }
}

/** Each documented key with the focus on the page and in each panel. */
void tst_BenchWindow::keyReachesItsCommand()
{
    QFETCH(QString, command);
    QFETCH(QString, place);
    if (place != "the page") {
        auto *dock = find<QDockWidget>(qPrintable(place));
        open(qPrintable(place));
        // The table of a panel, where it has one, is where somebody works.
        QWidget *table = dock->findChild<QTableView *>();
        QWidget *target = table ? table : dock->widget();
        target->setFocusPolicy(Qt::StrongFocus);
        target->setFocus();
        QVERIFY(dock->isAncestorOf(QApplication::focusWidget()));
    }
    QAction *action = this->command(qPrintable(command));
    disconnect(action, &QAction::triggered, nullptr, nullptr); // what it does has tests of its own
    const QSignalSpy triggered(action, &QAction::triggered);
    const QKeySequence keys(commandRow(command).key, QKeySequence::PortableText);
    press(keys[0] & ~Qt::KeyboardModifierMask,
          Qt::KeyboardModifiers(keys[0] & int(Qt::KeyboardModifierMask)));
    QCOMPARE(triggered.size(), 1);
}

void tst_BenchWindow::lettersGoToAField()
{
    open("signals");
    auto *filter = find<QDockWidget>("signals")->findChild<QLineEdit *>();
    filter->setFocus();
    const int page = windows()->currentWindow();
    for (const int key : {Qt::Key_2, Qt::Key_A, Qt::Key_S, Qt::Key_Space, Qt::Key_Plus})
        press(key);
    QCOMPARE(filter->text(), QString("2as +"));
    QCOMPARE(windows()->currentWindow(), page);
    press(Qt::Key_F6); // no text, so it is the bench's
    QVERIFY(!find<QDockWidget>("calls")->visibleRegion().isEmpty());
}

void tst_BenchWindow::escapeLeavesAField()
{
    windows()->openWindow(SettingsPage);
    open("signals");
    auto *filter = find<QDockWidget>("signals")->findChild<QLineEdit *>();
    filter->setFocus();
    press(Qt::Key_T);
    QCOMPARE(filter->text(), QString("t"));
    press(Qt::Key_Escape);
    QCOMPARE(filter->text(), QString());
    QVERIFY(filter->hasFocus());
    press(Qt::Key_Escape);
    QVERIFY(view()->hasFocus());
    QCOMPARE(windows()->currentWindow(), int(SettingsPage)); // not back by the same key
    press(Qt::Key_Escape);
    QCOMPARE(windows()->currentWindow(), int(GaugesPage));
}

void tst_BenchWindow::returnPressesAButton()
{
    auto *play = find<QToolButton>("play");
    play->setFocus();
    QVERIFY(session()->drive()->isPlaying());
    press(Qt::Key_Return);
    QVERIFY(!session()->drive()->isPlaying());
}

void tst_BenchWindow::focusBeginsOnTheScreen()
{
    QVERIFY(view()->hasFocus());
    press(Qt::Key_2);
    QCOMPARE(windows()->currentWindow(), int(VehiclePage));
}

void tst_BenchWindow::focusLeavesACoveredPanel()
{
    open("signals");
    find<QDockWidget>("signals")->findChild<QLineEdit *>()->setFocus();
    find<QDockWidget>("calls")->raise();
    QTRY_VERIFY(view()->hasFocus());

    find<QDockWidget>("calls")->findChild<QLineEdit *>()->setFocus();
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, QPoint(5, 5));
    QVERIFY(view()->hasFocus());

    QLineEdit *filter = find<QDockWidget>("calls")->findChild<QLineEdit *>();
    filter->setFocus();
    const QList<QTabBar *> bars = m_window->findChildren<QTabBar *>();
    const auto right = std::find_if(bars.begin(), bars.end(), [](const QTabBar *bar) {
        return bar->isVisible() && bar->tabText(0) == QLatin1String("Drive");
    });
    QVERIFY(right != bars.end());
    QTest::mouseClick(*right, Qt::LeftButton, {}, (*right)->tabRect(0).center());
    QVERIFY(view()->hasFocus());

    find<QSlider>("seek")->setEnabled(true); // this source has no end
    QTest::mouseClick(find<QSlider>("seek"), Qt::LeftButton);
    QVERIFY(!filter->hasFocus());
}

void tst_BenchWindow::fileAtUnlimitedSpeedIsSeen()
{
    session()->drive()->setSpeed(module::Drive::Unlimited);
    openDriveOf("fast.jsonl", 1000);
    QCOMPARE(session()->drive()->speed(), 1.0);
    QVERIFY(session()->drive()->positionMs() < 10000);
}

void tst_BenchWindow::titleNamesTheDrive()
{
    openDriveOf("title.jsonl", 5);
    QCOMPARE(m_window->windowTitle(), QString("title.jsonl - Head unit bench"));
    command("simulator")->trigger();
    QCOMPARE(m_window->windowTitle(), QString("Simulated car - Head unit bench"));
}

void tst_BenchWindow::recentDrivesAreOffered()
{
    openDriveOf("one.jsonl", 5);
    openDriveOf("two.jsonl", 5);
    command("simulator")->trigger();
    openDriveOf("one.jsonl", 5);
    removeBench();
    makeRig();
    showWindow();
    QMenu *menu = command("recent")->menu();
    emit menu->aboutToShow();
    QStringList offered;
    for (const QAction *action : menu->actions())
        offered.append(action->text());
    QCOMPARE(offered, QStringList({"one.jsonl", "two.jsonl"}));
    menu->actions()[1]->trigger();
    QVERIFY(m_window->windowTitle().startsWith("two.jsonl"));

    QFile::remove(m_folder.filePath("one.jsonl"));
    emit menu->aboutToShow();
    QVERIFY(menu->actions()[0]->isEnabled());
    QVERIFY(!menu->actions()[1]->isEnabled());
}

static QStringList linesOf(const QString &file)
{
    QFile opened(file);
    return opened.open(QIODevice::ReadOnly)
               ? QString::fromUtf8(opened.readAll()).split('\n', Qt::SkipEmptyParts)
               : QStringList();
}

/** Begun within a drive, it holds what brings a unit to that moment, and plays alone. */
void tst_BenchWindow::recordingFromTheWindow()
{
    openDriveOf("source.jsonl", 100);
    windows()->openWindow(VehiclePage);
    module::Drive *drive = session()->drive();
    drive->pause();
    drive->seek(7500);
    const QString file = m_folder.filePath("recorded.jsonl");
    QString error;
    QVERIFY2(m_window->files()->startRecording(file, &error), qPrintable(error));
    QVERIFY(find<QLabel>("recording")->isVisible());
    QCOMPARE(command("record")->text(), QString("Stop &recording"));
    drive->step();
    drive->step();
    m_window->files()->stopRecording();
    QVERIFY(find<QLabel>("recording")->isHidden());
    drive->step();

    const QStringList lines = linesOf(file);
    QVERIFY2(lines.filter("12.7V").size() == 1 && lines.filter("12.8V").size() == 1,
             qPrintable(lines.join('\n')));
    QVERIFY2(lines.filter("12.9V").size() == 1 && lines.filter("12.0V").isEmpty(),
             qPrintable(lines.join('\n')));
    QVERIFY(lines.constLast().contains("\"end\":true"));
    QVERIFY(lines.filter("12.8V").constFirst().contains("\"t\":500"));

    m_window->openDrive(file);
    QTRY_COMPARE(text("Txt_battery"), QString("12.9V"));
    QCOMPARE(windows()->currentWindow(), int(VehiclePage));
}

void tst_BenchWindow::recordingContinuesWithAnotherDrive()
{
    const QString file = m_folder.filePath("both.jsonl");
    QString error;
    QVERIFY2(m_window->files()->startRecording(file, &error), qPrintable(error));
    openDriveOf("another.jsonl", 3);
    QVERIFY(find<QLabel>("recording")->isVisible());
    QVERIFY(m_window->statusBar()->currentMessage().contains("recording continues"));
    QCOMPARE(session()->journal()->count(Journal::Mark), 1); // seen on the timeline
    QVERIFY2(!m_window->files()->startRecording(m_folder.filePath("another.jsonl"), &error),
             "the drive would be overwritten");
    QVERIFY(error.contains("another.jsonl"));
}

void tst_BenchWindow::pictureKeySavesTheScreen()
{
    const QString file = m_window->files()->savePicture(m_folder.path());
    QCOMPARE(QImage(file).size(), QSize(1280, 720));
    QVERIFY(m_window->statusBar()->currentMessage().contains(file));
}

void tst_BenchWindow::warningsAreCountedInTheStatusBar()
{
    const Warnings collected;
    makeBench();
    auto *button = find<QToolButton>("warning-count");
    find<QDockWidget>("warnings")->hide();
    QTest::ignoreMessage(QtWarningMsg, "something is wrong");
    qWarning("something is wrong");
    QTRY_VERIFY(button->isVisible());
    QVERIFY(button->text().endsWith("warning") || button->text().endsWith("warnings"));
    button->click();
    QVERIFY(!find<QDockWidget>("warnings")->visibleRegion().isEmpty());
}

/** The help and the manual page name each key and what it does. */
void tst_BenchWindow::keysAreListedEverywhere()
{
    Options help;
    QString error;
    QVERIFY(help.parse({"norda-bench", "--help"}, &error));
    const QString manual =
        linesOf(testpaths::source("packaging/norda-bench.1")).join('\n').remove('\\');
    for (const CommandRow &row : commandRows()) {
        if (row.key.isEmpty())
            continue;
        QVERIFY2(help.text.contains(row.key) && help.text.contains(row.what), qPrintable(row.what));
        QVERIFY2(manual.contains(QString(".B %1\n%2").arg(row.key, row.what)),
                 qPrintable(row.what));
        QCOMPARE(command(qPrintable(row.name))->toolTip(),
                 QString("%1 (%2)").arg(row.what, row.key));
    }
}

NORDA_TEST_MAIN(tst_BenchWindow)
#include "tst_benchwindow.moc"
