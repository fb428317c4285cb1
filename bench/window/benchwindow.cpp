#include "window/benchwindow.h"

#include "options.h"
#include "panels/audiomonitor.h"
#include "panels/callspanel.h"
#include "panels/carpanel.h"
#include "panels/drivepanel.h"
#include "panels/inspectorpanel.h"
#include "panels/signalspanel.h"
#include "panels/timelinepanel.h"
#include "panels/timerange.h"
#include "panels/warningspanel.h"
#include "plots/plotpanel.h"
#include "report/picturetrail.h"
#include "session/rewind.h"
#include "session/rig.h"
#include "session/touchrecorder.h"
#include "statuscolumn.h"
#include "tools/picturefile.h"
#include "translator.h"
#include "window/bookmarks.h"
#include "window/commands.h"
#include "window/drivecommands.h"
#include "window/filecommands.h"
#include "window/focuskeys.h"
#include "window/helpdialogs.h"
#include "window/paneldocks.h"
#include "window/recentdrives.h"
#include "window/recordinglabel.h"
#include "window/screenview.h"
#include "window/theme.h"
#include "window/transportbar.h"
#include "window/viewcommands.h"
#include "window/windowplace.h"

#include <QActionGroup>
#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLoggingCategory>
#include <QMenuBar>
#include <QMimeData>
#include <QStandardPaths>
#include <QStatusBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

BenchWindow::BenchWindow(const Options &options, Rig *rig)
    : m_options(options)
    , m_rig(rig)
    , m_actions(rig->actions())
    , m_touches(new TouchRecorder(rig->unit()->screen(), this))
    , m_rewind(new Rewind(rig->unit()->windows(), this))
    , m_view(new ScreenView(rig->unit()->screen()))
    , m_transport(new TransportBar)
    , m_theme(new Theme(this, options.theme))
    , m_recording(new RecordingLabel)
    , m_warnings(new QToolButton)
    , m_scale(new QLabel)
    , m_commands(new Commands(this))
    , m_panels(new PanelDocks(this, m_view))
    , m_trail(new PictureTrail(rig, this))
    , m_files(new FileCommands(options, rig, this))
    , m_drive(new DriveCommands(m_commands, m_actions, m_transport, m_rewind))
{
    new FocusKeys(this, m_view);
    setAcceptDrops(true);
    layOut();
    makePanels();
    m_viewCommands = new ViewCommands(m_commands, m_view, m_panels, m_theme, this);
    connectFileCommands();
    connectBookmarks();
    connectPageCommands();
    connectLanguages();
    connectDeveloperCommands();
    m_commands->on("keys", this, [this] { showKeys(this); });
    m_commands->on("about", this, [this] { showAbout(this); });

    // Actions are done live, never on a rewound screen.
    connect(m_actions, &Actions::begins, m_rewind, &Rewind::end);
    connect(m_touches, &TouchRecorder::rewoundTouched, m_rewind, &Rewind::end);
    connect(m_transport, &TransportBar::refused, this, &BenchWindow::notice);
    connect(rig, &Rig::sessionBegun, this, &BenchWindow::follow);
    connect(rig, &Rig::noticed, this, &BenchWindow::notice);
    windowplace::restore(this, m_panels);
}

/** The panels report that they hide, which needs a whole window. */
BenchWindow::~BenchWindow()
{
    hide();
}

void BenchWindow::layOut()
{
    auto *centre = new QWidget;
    auto *column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_view, 1);
    column->addWidget(m_transport);
    setCentralWidget(centre);
    statusBar()->addPermanentWidget(m_recording);
    statusBar()->addPermanentWidget(m_warnings);
    statusBar()->addPermanentWidget(m_scale);
    m_warnings->setObjectName(QStringLiteral("warning-count"));
    m_warnings->setAutoRaise(true);
    m_warnings->setFocusPolicy(Qt::TabFocus);
    m_warnings->setToolTip(commandTip(QStringLiteral("warnings")));
    m_warnings->hide();
    connect(m_warnings, &QToolButton::clicked, this,
            [this] { m_panels->show(QStringLiteral("warnings")); });
    m_scale->setToolTip(tr("Size of the unit's screen; 100 % is 1280 x 720"));
    connect(m_view, &ScreenView::factorChanged, m_scale,
            [this](double factor) { m_scale->setText(tr("%1 %").arg(qRound(factor * 100))); });
    if (m_options.scale != ScreenView::Fit)
        m_view->setFactor(m_options.scale);
}

void BenchWindow::makePanels()
{
    auto *calls = new CallsPanel;
    auto *warnings = new WarningsPanel(m_rig->unit()->windows());
    auto *range = new TimeRange(this);
    auto *timeline = new TimelinePanel(m_rewind, range);
    m_panels->add(QStringLiteral("service"), new DrivePanel(m_rig->unit()->screen()));
    m_panels->add(QStringLiteral("signals"), new SignalsPanel(m_actions));
    m_panels->add(QStringLiteral("calls"), calls);
    m_panels->add(QStringLiteral("car"), new CarPanel(m_actions));
    m_panels->add(QStringLiteral("inspector"), new InspectorPanel(m_rig->unit()->screen()));
    m_panels->add(QStringLiteral("timeline"), timeline);
    m_panels->add(QStringLiteral("plots"), new PlotPanel(m_rewind, range));
    m_panels->add(QStringLiteral("warnings"), warnings);
    m_panels->add(QStringLiteral("audio"), new AudioMonitor(m_rig->unit()->audio()));
    for (Panel *panel : findChildren<Panel *>())
        panel->setFilesInUse([this] { return m_files->filesInUse(); });
    connect(warnings, &WarningsPanel::countChanged, this, &BenchWindow::showWarnings);
    connect(warnings, &WarningsPanel::momentRequested, calls, &CallsPanel::momentRequested);
    connect(calls, &CallsPanel::momentRequested, this, [this, timeline](qint64 ms) {
        timeline->rewindTo(ms);
        m_panels->show(QStringLiteral("timeline"));
    });
}

/** In the status bar, since the panel may be closed. */
void BenchWindow::showWarnings(int count)
{
    m_warnings->setVisible(count > 0);
    m_warnings->setText(count == 1 ? tr("1 warning") : tr("%1 warnings").arg(count));
}

void BenchWindow::connectFileCommands()
{
    auto *menu = new QMenu(this);
    m_commands->action(QStringLiteral("recent"))->setMenu(menu);
    auto *recent = new RecentDrives(menu);
    connect(recent, &RecentDrives::chosen, m_files, &FileCommands::openDrive);
    connect(m_files, &FileCommands::opens, m_rewind, &Rewind::end);
    connect(m_files, &FileCommands::opened, recent, &RecentDrives::add);
    connect(m_files, &FileCommands::noticed, this, &BenchWindow::notice);
    connect(m_files, &FileCommands::recordingChanged, this, [this] {
        m_recording->refresh();
        m_commands->action(QStringLiteral("record"))
            ->setText(m_rig->session()->recording() ? tr("Stop &recording")
                                                    : tr("Start &recording..."));
    });
    m_commands->on("open", m_files, &FileCommands::chooseDrive);
    m_commands->on("simulator", this, [this] { m_files->openDrive(QStringLiteral("simulator")); });
    m_commands->on("connect", m_files, &FileCommands::chooseCar);
    m_commands->on("record", m_files, [this] {
        m_rewind->end();
        m_files->toggleRecording();
    });
    m_commands->on("save-scenario", m_files, &FileCommands::chooseScenario);
    m_commands->on("save-report", this, [this] {
        m_rewind->end(); // the report's last picture is of the present
        m_files->chooseReport(*m_trail);
    });
    m_commands->on("screenshot", m_files, [this] {
        const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
        m_files->savePicture(QDir(pictures).exists() ? pictures : QDir::homePath());
    });
    m_commands->on("quit", this, &QWidget::close);
}

void BenchWindow::connectBookmarks()
{
    auto *menu = new QMenu(this);
    m_commands->action(QStringLiteral("bookmarks"))->setMenu(menu);
    auto *bookmarks = new Bookmarks(menu);
    m_commands->on("bookmark", bookmarks, &Bookmarks::add);
    connect(m_rig, &Rig::sessionBegun, bookmarks, &Bookmarks::setSession);
    connect(bookmarks, &Bookmarks::momentRequested, m_rewind, &Rewind::show);
}

void BenchWindow::connectPageCommands()
{
    for (const Page &page : pages) {
        connect(m_commands->action(QStringLiteral("page-%1").arg(page.window)), &QAction::triggered,
                this, [this, page] { openPage(page.window); });
    }
    m_commands->on("split", m_actions, &Actions::toggleSplit);
    m_commands->on("back", m_actions, &Actions::back);
}

void BenchWindow::openPage(int id)
{
    QString error;
    if (!m_actions->openPage(id, &error))
        notice(error);
}

void BenchWindow::connectLanguages()
{
    auto *choices = new QActionGroup(this);
    const Translator *translator = Translator::instance();
    for (const QString &language : Translator::languages()) {
        QAction *choice = m_commands->action(QStringLiteral("language-") + language);
        choice->setCheckable(true);
        choice->setChecked(language == translator->language());
        choices->addAction(choice);
        connect(choice, &QAction::triggered, m_actions,
                [this, language] { m_actions->setLanguage(language); });
        connect(translator, &Translator::languageChanged, choice, [choice, translator, language] {
            choice->setChecked(language == translator->language());
        });
    }
}

/** Full screen shows the unit's screen alone; the desktop may begin and end it, too. */
void BenchWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange || isFullScreen() == m_isAlone)
        return;
    m_isAlone = isFullScreen();
    m_panels->setAllHidden(m_isAlone);
    for (QWidget *part : QList<QWidget *>{menuBar(), statusBar(), m_transport})
        part->setHidden(m_isAlone);
    m_view->setFocus();
}

void BenchWindow::connectDeveloperCommands()
{
    m_commands->on("recreate", m_rig->unit()->windows(), &WindowStack::recreateWindow);
    QAction *deny = m_commands->action(QStringLiteral("deny-focus"));
    deny->setCheckable(true);
    connect(deny, &QAction::toggled, m_actions,
            [this](bool on) { m_actions->setFocusGranted(!on); });
    QAction *trace = m_commands->action(QStringLiteral("trace"));
    trace->setCheckable(true);
    trace->setChecked(m_options.trace);
    connect(trace, &QAction::toggled, this, [](bool on) {
        QLoggingCategory::setFilterRules(on ? QString() : QStringLiteral("default.debug=false"));
    });
}

void BenchWindow::start()
{
    m_rig->begin(Replay::Beginning);
    m_rig->session()->drive()->play();
}

static StatusColumn::Source kindOf(const module::VehicleSource *source)
{
    if (source->title().startsWith(QLatin1String("Simulated")))
        return StatusColumn::Source::Simulator;
    return source->liveMs() >= 0 ? StatusColumn::Source::Live : StatusColumn::Source::Recorded;
}

/** Switches every part of the window to this session. */
void BenchWindow::follow(Session *session)
{
    module::Drive *drive = session->drive();
    connect(drive, &module::Drive::finished, this, &BenchWindow::onFinished);
    connect(session, &Session::recordingFailed, m_files, &FileCommands::stopRecording);
    m_touches->setSession(session);
    m_rewind->setSession(session);
    m_drive->setSession(session);
    for (Panel *panel : findChildren<Panel *>())
        panel->setSession(session);
    m_rig->unit()->screen()->statusColumn()->setSource(kindOf(drive->source()));
    m_recording->setSession(session);
    setWindowTitle(tr("%1 - Head unit bench").arg(drive->source()->title()));
}

void BenchWindow::notice(const QString &line)
{
    statusBar()->showMessage(line);
}

void BenchWindow::onFinished()
{
    // A drive with a given duration ends the bench; otherwise it stays open.
    if (m_options.setup.durationMs >= 0)
        QApplication::quit();
}

bool BenchWindow::saveScenario(const QString &file, QString *error) const
{
    return m_files->saveScenario(file, error);
}

void BenchWindow::openDrive(const QString &file)
{
    m_files->openDrive(file);
}

bool BenchWindow::writePictures(const QString &folder, QString *error)
{
    for (const QDockWidget *dock : m_panels->docks()) {
        m_panels->show(dock->objectName());
        QApplication::processEvents();
        const QString file =
            QDir(folder).filePath(QStringLiteral("bench-%1.png").arg(dock->objectName()));
        if (!writePicture(file, grab().toImage(), m_files->filesInUse(), error))
            return false;
    }
    return true;
}

/** The sizes of panels count once the window has its own. */
void BenchWindow::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    if (m_hasBeenShown)
        return;
    m_hasBeenShown = true;
    m_view->setFocus();
    if (!windowplace::isRemembered())
        QMetaObject::invokeMethod(m_panels, &PanelDocks::resizePanels, Qt::QueuedConnection);
}

void BenchWindow::closeEvent(QCloseEvent *event)
{
    m_rewind->end();
    m_viewCommands->leaveFullScreen();
    windowplace::save(this);
    QMainWindow::closeEvent(event);
}

/** A modifier, including the one with the desktop's logo. */
static bool isModifier(int key)
{
    static constexpr int others[] = {Qt::Key_Super_L, Qt::Key_Super_R, Qt::Key_Hyper_L,
                                     Qt::Key_Hyper_R, Qt::Key_AltGr,   Qt::Key_Mode_switch};
    return (key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock) ||
           std::find(std::begin(others), std::end(others), key) != std::end(others);
}

void BenchWindow::keyPressEvent(QKeyEvent *event)
{
    if (!isModifier(event->key()))
        m_actions->pressKey(event->key());
}

void BenchWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls() && event->mimeData()->urls().constFirst().isLocalFile())
        event->acceptProposedAction();
}

void BenchWindow::dropEvent(QDropEvent *event)
{
    openDrive(event->mimeData()->urls().constFirst().toLocalFile());
}
