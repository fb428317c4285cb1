#include "mainwindow.h"

#include "audiostage.h"
#include "audiostageview.h"
#include "headunit.h"
#include "options.h"
#include "screen.h"
#include "session.h"
#include "sidepanel.h"
#include "statuscolumn.h"
#include "transportbar.h"

#include <QApplication>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLoggingCategory>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QVBoxLayout>

BenchWindow::BenchWindow(const Options &options, Screen *screen, HeadUnit *unit, AudioStage *stage)
    : m_options(options)
    , m_screen(screen)
    , m_unit(unit)
    , m_stage(stage)
    , m_transport(new TransportBar)
    , m_panel(new SidePanel(screen))
{
    setWindowTitle(tr("Head unit bench"));
    setAcceptDrops(true);
    auto *centre = new QWidget;
    auto *column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(screen);
    column->addWidget(m_transport);
    column->addStretch(1);
    setCentralWidget(centre);

    auto *dock = new QDockWidget(tr("Service"));
    dock->setObjectName(QStringLiteral("service"));
    dock->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
    m_panel->setMinimumWidth(340);
    dock->setWidget(m_panel);
    addDockWidget(Qt::RightDockWidgetArea, dock);
    makeMenus();
    makeAudioDock();
}

BenchWindow::~BenchWindow()
{
    // The screen outlives the window: its pages go with the head unit.
    m_screen->setParent(nullptr);
}

void BenchWindow::makeMenus()
{
    static constexpr struct
    {
        const char *text;
        int id;
    } pages[] = {{"Gauges", 80},  {"Vehicle", 81},  {"Climate", 82},
                 {"Parking", 83}, {"Settings", 84}, {"About", 85}};

    QMenu *file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open drive..."), this, &BenchWindow::chooseDrive, QKeySequence::Open);
    file->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit);

    QMenu *view = menuBar()->addMenu(tr("&Page"));
    for (const auto &page : pages) {
        view->addAction(
            tr(page.text), m_unit, [this, page] { m_unit->openWindow(page.id); },
            QKeySequence(Qt::Key_1 + page.id - 80));
    }
    view->addSeparator();
    view->addAction(tr("&Split view"), m_unit, &HeadUnit::toggleSplit, QKeySequence(Qt::Key_S));
    view->addAction(tr("&Back"), m_unit, &HeadUnit::back, QKeySequence(Qt::Key_Escape));
    view->addAction(tr("Play or pause"), m_transport, &TransportBar::togglePlaying,
                    QKeySequence(Qt::Key_Space));

    QMenu *developer = menuBar()->addMenu(tr("&Developer"));
    developer->addAction(tr("Destroy and build the page anew"), m_unit, &HeadUnit::recreateWindow);
    makeFaultsMenu(developer->addMenu(tr("&Faults of the module")));
    QAction *trace = developer->addAction(tr("Trace lines"));
    trace->setCheckable(true);
    trace->setChecked(m_options.trace);
    connect(trace, &QAction::toggled, this, [](bool on) {
        QLoggingCategory::setFilterRules(on ? QString() : QStringLiteral("default.debug=false"));
    });
}

/** What the module does wrong, each at its usual rate unless the command line has said another. */
void BenchWindow::makeFaultsMenu(QMenu *menu)
{
    using module::Faults;
    for (int i = 0; i < Faults::KindCount; ++i) {
        const auto kind = Faults::Kind(i);
        const double stated = m_options.faults.value(kind);
        const double value = stated > 0 ? stated : Faults::usualValue(kind);
        const QString extent = Faults::isInSeconds(kind)
                                   ? tr("%1 s").arg(value)
                                   : tr("%1 % of the signals").arg(100 * value);
        QAction *fault = menu->addAction(
            QStringLiteral("%1, %2: %3")
                .arg(QLatin1String(Faults::nameOf(kind)), extent, tr(Faults::meaningOf(kind))));
        fault->setObjectName(QStringLiteral("fault-") + QLatin1String(Faults::nameOf(kind)));
        fault->setCheckable(true);
        fault->setChecked(stated > 0);
        connect(fault, &QAction::toggled, this, [this, kind, value](bool on) {
            m_session->drive()->faults().set(kind, on ? value : 0);
        });
    }
}

/** The audio stage opens on request: it needs a good part of a desktop. */
void BenchWindow::makeAudioDock()
{
    auto *dock = new QDockWidget(tr("Audio stage"));
    dock->setObjectName(QStringLiteral("audio"));
    dock->setWidget(new AudioStageView(m_stage));
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    dock->hide();

    QMenu *audio = menuBar()->addMenu(tr("&Audio"));
    QAction *show = dock->toggleViewAction();
    show->setShortcut(QKeySequence(Qt::Key_A));
    audio->addAction(show);
    QAction *refuse = audio->addAction(tr("Refuse the audio focus"));
    refuse->setCheckable(true);
    connect(refuse, &QAction::toggled, m_stage, [this](bool on) { m_stage->setFocusGranted(!on); });
}

void BenchWindow::start(std::unique_ptr<Session> session)
{
    m_session = std::move(session);
    module::Drive *drive = m_session->drive();
    connect(drive, &module::Drive::finished, this, &BenchWindow::onFinished);
    m_transport->setDrive(drive);
    m_panel->setSession(m_session.get());
    m_session->feed(m_screen->camera());
    m_session->lead(m_stage);
    const bool simulated = drive->source()->title().startsWith(QLatin1String("Simulated"));
    m_screen->statusColumn()->setSource(simulated ? tr("Simulator") : tr("Recorded"));
    drive->play();
}

void BenchWindow::onFinished()
{
    // A drive of a stated length is a run with an end; otherwise the bench stays open.
    if (m_options.durationMs >= 0)
        QApplication::quit();
}

void BenchWindow::chooseDrive()
{
    const QString file = QFileDialog::getOpenFileName(
        this, tr("Open a drive"), QString(), tr("Drives (*.csv *.log *.jsonl);;All files (*)"));
    if (!file.isEmpty())
        openDrive(file);
}

void BenchWindow::openDrive(const QString &file)
{
    QString error;
    auto source = module::openSource(file, &error);
    if (!source) {
        QMessageBox::warning(this, tr("Open a drive"), error);
        return;
    }
    auto session = std::make_unique<Session>(std::move(source));
    session->drive()->setSpeed(m_session->drive()->speed());
    session->drive()->faults() = m_session->drive()->faults();
    start(std::move(session));
}

void BenchWindow::keyPressEvent(QKeyEvent *event)
{
    if (!m_unit->pressKey(event->key()) && event->key() == Qt::Key_Backspace)
        m_unit->back();
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
