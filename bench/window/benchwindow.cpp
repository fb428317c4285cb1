#include "window/benchwindow.h"

#include "options.h"
#include "outputfile.h"
#include "panels/audiomonitor.h"
#include "panels/callspanel.h"
#include "panels/carpanel.h"
#include "panels/drivepanel.h"
#include "panels/inspectorpanel.h"
#include "panels/signalspanel.h"
#include "panels/timelinepanel.h"
#include "panels/timerange.h"
#include "plots/plotpanel.h"
#include "scenario/scenariowriter.h"
#include "session/rewind.h"
#include "session/rig.h"
#include "session/touchrecorder.h"
#include "statuscolumn.h"
#include "tools/picturefile.h"
#include "window/transportbar.h"

#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLoggingCategory>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QSettings>
#include <QStatusBar>
#include <QVBoxLayout>

#include <algorithm>

static const QString settingsOwner = QStringLiteral("norda");
static const QString settingsName = QStringLiteral("bench");

BenchWindow::BenchWindow(const Options &options, Rig *rig)
    : m_options(options)
    , m_rig(rig)
    , m_actions(rig->actions())
    , m_touches(new TouchRecorder(rig->unit()->screen(), this))
    , m_rewind(new Rewind(rig->unit()->windows(), this))
    , m_transport(new TransportBar)
{
    setWindowTitle(tr("Head unit bench"));
    setAcceptDrops(true);
    auto *centre = new QWidget;
    auto *column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(rig->unit()->screen());
    column->addWidget(m_transport);
    column->addStretch(1);
    setCentralWidget(centre);
    makeDocks();
    makeFileMenu();
    makePageMenu();
    makePanelsMenu();
    makeDeveloperMenu();
    connect(m_transport, &TransportBar::momentRequested, m_actions, &Actions::seek);
    // Actions are done live, never on a rewound screen.
    connect(m_actions, &Actions::begins, m_rewind, &Rewind::end);
    connect(m_touches, &TouchRecorder::rewoundTouched, m_rewind, &Rewind::end);
    connect(m_rewind, &Rewind::changed, m_transport,
            [this] { m_transport->setEnabled(!m_rewind->isActive()); });

    connect(rig, &Rig::sessionBegun, this, &BenchWindow::follow);
    connect(rig, &Rig::noticed, this,
            [this](const QString &line) { statusBar()->showMessage(line); });

    const QSettings settings(settingsOwner, settingsName);
    restoreGeometry(settings.value(QStringLiteral("geometry")).toByteArray());
    restoreState(settings.value(QStringLiteral("panels")).toByteArray());
}

BenchWindow::~BenchWindow()
{
    // The screen outlives the window: it belongs to the head unit.
    m_rig->unit()->screen()->setParent(nullptr);
}

QDockWidget *BenchWindow::addDock(const QString &name, const QString &title, QWidget *panel,
                                  Qt::DockWidgetArea area)
{
    auto *dock = new QDockWidget(title);
    dock->setObjectName(name);
    dock->setWidget(panel);
    addDockWidget(area, dock);
    m_docks.append(dock);
    return dock;
}

/** The panels are tabs beside the screen; those below it open on request. */
void BenchWindow::makeDocks()
{
    static constexpr int panelWidth = 500;
    setDockOptions(AnimatedDocks | AllowTabbedDocks | AllowNestedDocks);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    setTabPosition(Qt::RightDockWidgetArea, QTabWidget::North);
    auto *signalsPanel = new SignalsPanel(m_actions);
    auto *calls = new CallsPanel;
    auto *range = new TimeRange(this);
    auto *timeline = new TimelinePanel(m_rewind, range);
    signalsPanel->setMinimumWidth(panelWidth);
    connect(calls, &CallsPanel::momentRequested, timeline, &TimelinePanel::rewindTo);

    addDock(QStringLiteral("service"), tr("Drive"), new DrivePanel(m_rig->unit()->screen()),
            Qt::RightDockWidgetArea);
    QDockWidget *first =
        addDock(QStringLiteral("signals"), tr("Signals"), signalsPanel, Qt::RightDockWidgetArea);
    tabifyDockWidget(first,
                     addDock(QStringLiteral("calls"), tr("Calls"), calls, Qt::RightDockWidgetArea));
    tabifyDockWidget(first, addDock(QStringLiteral("car"), tr("Car"), new CarPanel(m_actions),
                                    Qt::RightDockWidgetArea));
    tabifyDockWidget(first,
                     addDock(QStringLiteral("inspector"), tr("Inspector"),
                             new InspectorPanel(m_rig->unit()->screen()), Qt::RightDockWidgetArea));
    first->raise();
    QDockWidget *line =
        addDock(QStringLiteral("timeline"), tr("Timeline"), timeline, Qt::BottomDockWidgetArea);
    QDockWidget *audio =
        addDock(QStringLiteral("audio"), tr("Audio monitor"),
                new AudioMonitor(m_rig->unit()->audio()), Qt::BottomDockWidgetArea);
    tabifyDockWidget(line, audio);
    connect(calls, &CallsPanel::momentRequested, line, [line] {
        line->show();
        line->raise();
    });
    auto *plots = new PlotPanel(m_rewind, range, [this] { return filesInUse(); });
    QDockWidget *plotDock =
        addDock(QStringLiteral("plots"), tr("Plots"), plots, Qt::BottomDockWidgetArea);
    tabifyDockWidget(line, plotDock);
    plotDock->hide();
    line->hide();
    audio->hide();
}

void BenchWindow::makeFileMenu()
{
    QMenu *file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open drive..."), this, &BenchWindow::chooseDrive, QKeySequence::Open);
    file->addAction(tr("&Save session as scenario..."), this, &BenchWindow::chooseScenario,
                    QKeySequence::Save);
    file->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit);
}

void BenchWindow::makePageMenu()
{
    QMenu *view = menuBar()->addMenu(tr("&Page"));
    for (const Page &page : pages) {
        view->addAction(
            tr(page.name), this, [this, page] { openPage(page.window); },
            QKeySequence(Qt::Key_1 + int(&page - pages)));
    }
    view->addSeparator();
    view->addAction(tr("&Split view"), m_actions, &Actions::toggleSplit, QKeySequence(Qt::Key_S));
    view->addAction(tr("&Back"), m_actions, &Actions::back, QKeySequence(Qt::Key_Escape));
    view->addAction(tr("Play or pause"), this, &BenchWindow::togglePlaying,
                    QKeySequence(Qt::Key_Space));
}

void BenchWindow::openPage(int id)
{
    QString error;
    if (!m_actions->openPage(id, &error))
        statusBar()->showMessage(error);
}

void BenchWindow::togglePlaying()
{
    if (m_rewind->isActive())
        m_rewind->end();
    else
        m_transport->togglePlaying();
}

void BenchWindow::makePanelsMenu()
{
    static constexpr int keys[] = {0,          Qt::Key_F5, Qt::Key_F6, Qt::Key_F7,
                                   Qt::Key_F8, Qt::Key_F9, Qt::Key_A, 0};
    QMenu *panels = menuBar()->addMenu(tr("Pa&nels"));
    for (int i = 0; i < m_docks.size(); ++i) {
        QAction *show = m_docks[i]->toggleViewAction();
        if (keys[i])
            show->setShortcut(QKeySequence(keys[i]));
        panels->addAction(show);
        connect(show, &QAction::triggered, m_docks[i], [this, i](bool on) {
            if (on)
                m_docks[i]->raise();
        });
    }
}

void BenchWindow::makeDeveloperMenu()
{
    QMenu *developer = menuBar()->addMenu(tr("&Developer"));
    developer->addAction(tr("Recreate page"), m_rig->unit()->windows(),
                         &WindowStack::recreateWindow);
    QAction *deny = developer->addAction(tr("Deny audio focus"));
    deny->setCheckable(true);
    connect(deny, &QAction::toggled, m_actions,
            [this](bool on) { m_actions->setFocusGranted(!on); });
    QAction *trace = developer->addAction(tr("Trace output"));
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

/** Switches every part of the window to this session. */
void BenchWindow::follow(Session *session)
{
    module::Drive *drive = session->drive();
    connect(drive, &module::Drive::finished, this, &BenchWindow::onFinished);
    m_touches->setSession(session);
    m_rewind->setSession(session);
    m_transport->setDrive(drive);
    for (Panel *panel : findChildren<Panel *>())
        panel->setSession(session);
    const bool simulated = drive->source()->title().startsWith(QLatin1String("Simulated"));
    m_rig->unit()->screen()->statusColumn()->setSource(simulated ? tr("Simulator")
                                                                 : tr("Recorded"));
}

void BenchWindow::onFinished()
{
    // A drive with a given duration ends the bench; otherwise it stays open.
    if (m_options.setup.durationMs >= 0)
        QApplication::quit();
}

void BenchWindow::chooseDrive()
{
    const QString file = QFileDialog::getOpenFileName(
        this, tr("Open a drive"), QString(), tr("Drives (*.csv *.log *.jsonl);;All files (*)"));
    if (!file.isEmpty())
        openDrive(file);
}

void BenchWindow::chooseScenario()
{
    const QString file = QFileDialog::getSaveFileName(this, tr("Save the session as a scenario"),
                                                      QStringLiteral("session.scenario"),
                                                      tr("Scenarios (*.scenario)"));
    QString error;
    if (!file.isEmpty() && !saveScenario(file, &error))
        QMessageBox::warning(this, tr("Save the session as a scenario"), error);
}

bool BenchWindow::saveScenario(const QString &file, QString *error) const
{
    const QString text =
        scenarioOf(m_rig->session()->journal(), m_rig->setup(), QFileInfo(file).completeBaseName());
    return output::writeResult(file, text.toUtf8(), filesInUse(), error);
}

/** Those of the command line, and the drive that was opened since. */
output::InputFiles BenchWindow::filesInUse() const
{
    output::InputFiles files = m_options.filesInUse();
    files.add(m_rig->setup().source);
    return files;
}

bool BenchWindow::writePictures(const QString &folder, QString *error)
{
    for (QDockWidget *dock : qAsConst(m_docks)) {
        dock->show();
        dock->raise();
        QApplication::processEvents();
        const QString file =
            QDir(folder).filePath(QStringLiteral("bench-%1.png").arg(dock->objectName()));
        if (!writePicture(file, grab().toImage(), filesInUse(), error))
            return false;
    }
    return true;
}

void BenchWindow::openDrive(const QString &file)
{
    QString error;
    m_rewind->end();
    if (m_rig->openDrive(file, &error))
        m_rig->session()->drive()->play();
    else
        QMessageBox::warning(this, tr("Open a drive"), error);
}

void BenchWindow::closeEvent(QCloseEvent *event)
{
    QSettings settings(settingsOwner, settingsName);
    settings.setValue(QStringLiteral("geometry"), saveGeometry());
    settings.setValue(QStringLiteral("panels"), saveState());
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
