#include "benchfixture.h"
#include "session/warnings.h"
#include "window/commands.h"
#include "window/filecommands.h"
#include "window/paneldocks.h"
#include "window/recentdrives.h"
#include "window/repeatedpart.h"
#include "window/screenview.h"
#include "window/seekslider.h"
#include "window/transportbar.h"

#include <QGraphicsProxyWidget>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QScrollArea>
#include <QStatusBar>
#include <QTabBar>
#include <QTemporaryDir>
#include <QToolButton>

class tst_BenchWindow : public QObject, BenchFixture
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

    void screenScales_data();
    void screenScales();
    void screenIsTouchedAtAnyScale_data();
    void screenIsTouchedAtAnyScale();
    void picturesKeepTheirSize();
    void fixedScale();
    void framesAreCountedInTheView();
    void fullScreenShowsTheScreenAlone();
    void fullScreenEndsFromOutside();

    void layoutSuitsTheDisplay_data();
    void layoutSuitsTheDisplay();
    void noPanelIsClipped_data();
    void noPanelIsClipped();
    void keyBringsAPanelToTheFront();
    void layoutPutsPanelsBack();

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
    void fileAtUnlimitedSpeedIsSeen();
    void titleNamesTheDrive();
    void recentDrivesAreOffered();
    void recordingFromTheWindow();
    void recordingContinuesWithAnotherDrive();
    void pictureKeySavesTheScreen();
    void warningsAreCountedInTheStatusBar();
    void keysAreListedEverywhere();

private:
    QAction *command(const char *name) const { return find<QAction>(name); }
    ScreenView *view() const { return find<ScreenView>("screenView"); }
    void press(int key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QWidget *target = QApplication::focusWidget();
        QTest::keyClick(target ? target : m_window.data(), Qt::Key(key), modifiers);
        QCoreApplication::processEvents();
    }
    void resizeWindow(QSize size) const
    {
        m_window->resize(size);
        QCoreApplication::processEvents();
    }
    QString writeDrive(const QString &name, int signalCount, int everySeconds = 1) const;
    void openDriveOf(const QString &name, int signalCount, int everySeconds = 1) const
    {
        m_window->openDrive(writeDrive(name, signalCount, everySeconds));
    }

    QTemporaryDir m_folder;
};

/** A recording whose battery says the last digit of the second. */
QString tst_BenchWindow::writeDrive(const QString &name, int signalCount, int everySeconds) const
{
    const QString file = m_folder.filePath(name);
    QString error;
    module::RecordingWriter writer(file, "A drive of " + name, &error);
    for (int i = 0; i < signalCount; ++i)
        writer.writeSignal(i * everySeconds * 1000, "batteryVoltage",
                           {QString("12.%1V").arg(i % 10)});
    writer.finish(signalCount * everySeconds * 1000);
    return file;
}

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

void tst_BenchWindow::screenScales_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("factor");
    QTest::newRow("a quarter") << QSize(320, 180) << 0.25;
    QTest::newRow("half") << QSize(640, 400) << 0.5;
    QTest::newRow("limited by the height") << QSize(1280, 540) << 0.75;
    QTest::newRow("its own size") << QSize(1280, 720) << 1.0;
    QTest::newRow("a little more") << QSize(1300, 740) << 1.0;
    QTest::newRow("twice") << QSize(2560, 1440) << 2.0;
    QTest::newRow("less than the least") << QSize(200, 100) << 0.25;
}

void tst_BenchWindow::screenScales()
{
    QFETCH(QSize, size);
    QFETCH(double, factor);
    ScreenView *view = this->view();
    view->setParent(nullptr); // at any size, without what is around it
    view->setMinimumSize(size);
    view->resize(size);
    view->show();
    QCOMPARE(view->factor(), factor);
    QCOMPARE(view->transform().m11(), factor);
    QCOMPARE(screen()->size(), QSize(1280, 720));
    delete view;
}

void tst_BenchWindow::screenIsTouchedAtAnyScale_data()
{
    QTest::addColumn<QSize>("window");
    QTest::newRow("small") << QSize(1024, 768);
    QTest::newRow("normal") << QSize(1920, 1080);
    QTest::newRow("large") << QSize(3200, 1900);
}

void tst_BenchWindow::screenIsTouchedAtAnyScale()
{
    QFETCH(QSize, window);
    resizeWindow(window);
    QWidget *key = screen()->widgetNamed("norda_key_vehicle");
    QVERIFY(key);
    const QPoint onScreen = key->mapTo(screen(), key->rect().center());
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, view()->mapFromScene(onScreen));
    QTRY_COMPARE(windows()->currentWindow(), int(VehiclePage));
}

void tst_BenchWindow::picturesKeepTheirSize()
{
    session()->drive()->pause();
    windows()->openWindow(AboutPage);
    view()->setFactor(1);
    const QImage atOne = screen()->grab().toImage();
    QCOMPARE(atOne.size(), QSize(1280, 720));
    view()->setFactor(0.5);
    QCoreApplication::processEvents();
    QCOMPARE(screen()->grab().toImage(), atOne);
}

void tst_BenchWindow::fixedScale()
{
    removeBench();
    m_options.scale = 0.5;
    makeBench();
    m_options.scale = 0;
    QCOMPARE(view()->factor(), 0.5);
    resizeWindow({2400, 1400});
    QCOMPARE(view()->factor(), 0.5);
    command("fit")->trigger();
    QVERIFY(view()->factor() > 1);
}

void tst_BenchWindow::framesAreCountedInTheView()
{
    const int before = screen()->framesPainted();
    screen()->update();
    QTRY_VERIFY(screen()->framesPainted() > before);
}

void tst_BenchWindow::fullScreenShowsTheScreenAlone()
{
    open("signals");
    QVERIFY(find<QDockWidget>("signals")->isVisible());
    press(Qt::Key_F11);
    QVERIFY(m_window->isFullScreen());
    for (const QDockWidget *dock : m_window->findChildren<QDockWidget *>())
        QVERIFY2(dock->isHidden(), qPrintable(dock->objectName()));
    QVERIFY(m_window->menuBar()->isHidden());
    QCOMPARE(view()->size(), m_window->size());
    press(Qt::Key_3); // keys work without the menu bar
    QCOMPARE(windows()->currentWindow(), int(ClimatePage));
    press(Qt::Key_F11);
    QVERIFY(!m_window->isFullScreen());
    QVERIFY(!m_window->menuBar()->isHidden());
    QVERIFY(find<QDockWidget>("signals")->isVisible());
}

/** The window manager has keys of its own for this. */
void tst_BenchWindow::fullScreenEndsFromOutside()
{
    open("signals");
    press(Qt::Key_F11);
    m_window->showNormal();
    QVERIFY(!m_window->menuBar()->isHidden());
    QVERIFY(find<QDockWidget>("signals")->isVisible());
    m_window->showFullScreen();
    QVERIFY(find<QDockWidget>("signals")->isHidden());
}

void tst_BenchWindow::layoutSuitsTheDisplay_data()
{
    QTest::addColumn<QSize>("display");
    QTest::addColumn<int>("layout");
    QTest::newRow("1024 x 768") << QSize(1024, 768) << int(PanelLayout::Small);
    QTest::newRow("1366 x 768") << QSize(1366, 768) << int(PanelLayout::Small);
    QTest::newRow("1920 x 1040") << QSize(1920, 1040) << int(PanelLayout::Normal);
    QTest::newRow("2560 x 1400") << QSize(2560, 1400) << int(PanelLayout::Wide);
    QTest::newRow("wide and low") << QSize(2560, 800) << int(PanelLayout::Small);
}

void tst_BenchWindow::layoutSuitsTheDisplay()
{
    QFETCH(QSize, display);
    QTEST(int(PanelDocks::layoutFor(display)), "layout");
}

void tst_BenchWindow::noPanelIsClipped_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<QSize>("window");
    for (const char *layout : {"layout-small", "layout-normal", "layout-wide"}) {
        for (const QSize size :
             {QSize(1024, 740), QSize(1366, 740), QSize(1920, 1050), QSize(2560, 1400)})
            QTest::addRow("%s at %d", layout, size.width()) << QString(layout) << size;
    }
}

/** The first widget that reaches out of its parent, null for none. Scrolled contents may. */
static const QWidget *firstClipped(const QWidget *parent)
{
    for (const QObject *child : parent->children()) {
        const auto *widget = qobject_cast<const QWidget *>(child);
        if (!widget || !widget->isVisible() || widget->isWindow())
            continue;
        const auto *area = qobject_cast<const QAbstractScrollArea *>(parent->parentWidget());
        const bool isScrolled = area && area->viewport() == parent;
        if (!isScrolled && !parent->rect().contains(widget->geometry()))
            return widget;
        if (const QWidget *inner = isScrolled ? nullptr : firstClipped(widget))
            return inner;
    }
    return nullptr;
}

void tst_BenchWindow::noPanelIsClipped()
{
    QFETCH(QString, layout);
    QFETCH(QSize, window);
    resizeWindow(window);
    command(qPrintable(layout))->trigger();
    for (QDockWidget *dock : m_window->findChildren<QDockWidget *>())
        open(qPrintable(dock->objectName()));
    QCOMPARE(m_window->size(), window); // nothing makes it larger
    QVERIFY2(view()->factor() >= 0.25 && view()->width() >= 320, "the screen needs room too");
    for (QDockWidget *dock : m_window->findChildren<QDockWidget *>()) {
        dock->raise();
        QCoreApplication::processEvents();
        QVERIFY2(m_window->rect().contains(dock->geometry()), qPrintable(dock->objectName()));
        const QWidget *panel = dock->widget();
        const QSize least = panel->minimumSizeHint();
        QVERIFY2(panel->width() >= least.width() && panel->height() >= least.height(),
                 qPrintable(QString("%1 is %2 x %3 and needs %4 x %5")
                                .arg(dock->objectName())
                                .arg(panel->width())
                                .arg(panel->height())
                                .arg(least.width())
                                .arg(least.height())));
        const QWidget *clipped = firstClipped(dock);
        QVERIFY2(!clipped, clipped ? qPrintable(QString("%1 in %2")
                                                    .arg(clipped->metaObject()->className(),
                                                         dock->objectName()))
                                   : "");
    }
}

void tst_BenchWindow::keyBringsAPanelToTheFront()
{
    auto *calls = find<QDockWidget>("calls");
    auto *signalsDock = find<QDockWidget>("signals");
    open("signals");
    QVERIFY(calls->visibleRegion().isEmpty()); // behind the other
    press(Qt::Key_F6);
    QVERIFY(!calls->visibleRegion().isEmpty());
    QVERIFY(command("calls")->isChecked());
    press(Qt::Key_F6);
    QVERIFY(calls->isHidden());
    QVERIFY(!command("calls")->isChecked());
    press(Qt::Key_F6);
    QVERIFY(!calls->visibleRegion().isEmpty());
    QVERIFY(signalsDock->visibleRegion().isEmpty());

    calls->setFloating(true);
    QCoreApplication::processEvents();
    m_window->activateWindow();
    QTRY_VERIFY(m_window->isActiveWindow());
    press(Qt::Key_F6);
    QVERIFY(!calls->isHidden());
    QTRY_VERIFY(calls->isActiveWindow());
    QVERIFY(!qobject_cast<QLineEdit *>(QApplication::focusWidget()));
    press(Qt::Key_2); // keys work in a detached panel too
    QCOMPARE(windows()->currentWindow(), int(VehiclePage));
}

void tst_BenchWindow::layoutPutsPanelsBack()
{
    find<QDockWidget>("calls")->setFloating(true);
    find<QDockWidget>("signals")->hide();
    command("layout-reset")->trigger();
    QVERIFY(!find<QDockWidget>("calls")->isFloating());
    QVERIFY(!find<QDockWidget>("signals")->isHidden());
}

void tst_BenchWindow::clickOnTheSeekBarGoesThere()
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
void tst_BenchWindow::clockGoesOnBetweenSignals()
{
    openDriveOf("sparse.jsonl", 2, 60);
    session()->drive()->setSpeed(10);
    QTRY_COMPARE(session()->signalCount(), 1);
    const QString before = find<QLineEdit>("clock")->text();
    QTRY_VERIFY(find<QLineEdit>("clock")->text() != before);
    QCOMPARE(session()->signalCount(), 1);
}

void tst_BenchWindow::typedTime_data()
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

void tst_BenchWindow::typedTime()
{
    QFETCH(QString, text);
    QTEST(TransportBar::readTime(text), "ms");
}

void tst_BenchWindow::clockTakesATime()
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

void tst_BenchWindow::speedKeys()
{
    QCOMPARE(session()->drive()->speed(), 1.0);
    press(Qt::Key_Plus);
    QCOMPARE(session()->drive()->speed(), 2.0);
    press(Qt::Key_Minus);
    press(Qt::Key_Minus);
    QCOMPARE(session()->drive()->speed(), 0.5);
}

void tst_BenchWindow::partIsRepeated()
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

void tst_BenchWindow::stepsToTheNextEvent()
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

void tst_BenchWindow::stepsBackThroughEvents()
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

void tst_BenchWindow::bookmarksAreVisited()
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
