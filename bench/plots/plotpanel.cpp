#include "plots/plotpanel.h"

#include "outputfile.h"
#include "panels/timerange.h"
#include "plots/curvelegend.h"
#include "plots/curvelist.h"
#include "plots/plotarea.h"
#include "plots/plotexport.h"
#include "session/rewind.h"
#include "session/session.h"
#include "tools/picturefile.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QScrollArea>
#include <QStringListModel>
#include <QToolButton>

PlotPanel::PlotPanel(Rewind *rewind, TimeRange *range, QWidget *parent)
    : Panel(parent)
    , m_rewind(rewind)
    , m_range(range)
    , m_curves(new CurveList(this))
    , m_area(new PlotArea(m_curves, range))
    , m_legend(new CurveLegend(m_curves))
    , m_search(new QLineEdit)
    , m_offered(new QStringListModel(this))
    , m_sides(new QBoxLayout(QBoxLayout::LeftToRight))
{
    setAcceptDrops(true);
    m_area->setObjectName(QStringLiteral("plotArea"));
    auto *scroll = new QScrollArea;
    scroll->setWidget(m_area);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_sides->addWidget(scroll, 1);
    m_sides->addWidget(m_legend);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(8, 4, 8, 8);
    column->addWidget(makeBar());
    column->addLayout(m_sides, 1);

    connect(m_area, &PlotArea::momentRequested, rewind, &Rewind::show);
    connect(m_area, &PlotArea::cursorMoved, this, &PlotPanel::showMoment);
    connect(m_curves, &CurveList::changed, this, &PlotPanel::onCurves, Qt::QueuedConnection);
    connect(range, &TimeRange::changed, this, &PlotPanel::redraw);
    connect(rewind, &Rewind::changed, this, &PlotPanel::redraw);
}

PlotPanel::~PlotPanel() = default;

QWidget *PlotPanel::makeBar()
{
    auto *completer = new QCompleter(m_offered, this);
    completer->setFilterMode(Qt::MatchContains);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    m_search->setPlaceholderText(tr("Add a value, for instance tire"));
    m_search->setClearButtonEnabled(true);
    m_search->setObjectName(QStringLiteral("plotSearch"));
    m_search->setCompleter(completer);
    connect(m_search, &QLineEdit::textEdited, this, &PlotPanel::offerCurves);
    connect(m_search, &QLineEdit::returnPressed, this, &PlotPanel::addSearched);
    connect(completer, qOverload<const QString &>(&QCompleter::activated), this,
            &PlotPanel::addSearched, Qt::QueuedConnection); // the completer sets the text later

    auto *remove = new QToolButton;
    remove->setObjectName(QStringLiteral("plotClear"));
    remove->setText(tr("Clear"));
    remove->setToolTip(tr("Remove all curves"));
    connect(remove, &QToolButton::clicked, m_curves, &CurveList::clear);

    auto *menu = new QMenu(this);
    menu->addAction(tr("Values as CSV..."), this, [this] {
        chooseFile(tr("Export the values"), QStringLiteral("plots.csv"), tr("CSV (*.csv)"),
                   &PlotPanel::writeCsv);
    });
    menu->addAction(tr("Picture..."), this, [this] {
        chooseFile(tr("Export a picture"), QStringLiteral("plots.png"), tr("PNG (*.png)"),
                   &PlotPanel::writePlot);
    });
    auto *exportButton = new QToolButton;
    exportButton->setObjectName(QStringLiteral("plotExport"));
    exportButton->setText(tr("Export"));
    exportButton->setMenu(menu);
    exportButton->setPopupMode(QToolButton::InstantPopup);

    auto *bar = new QWidget;
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_search, 1);
    row->addWidget(remove);
    row->addWidget(exportButton);
    return bar;
}

void PlotPanel::setSession(Session *session)
{
    m_curves->restart();
    m_area->setSession(session);
    Panel::setSession(session);
}

// ---- Curves -------------------------------------------------------------------------------------

void PlotPanel::offerCurves()
{
    if (!session())
        return;
    const QStringList names = offeredCurves(session()->journal(), session()->quantities());
    if (names != m_offered->stringList())
        m_offered->setStringList(names);
}

bool PlotPanel::add(const QString &name)
{
    const Journal *journal = session() ? session()->journal() : nullptr;
    return m_curves->add(QStringList(name) + curvesOf(name, journal));
}

void PlotPanel::addSearched()
{
    if (add(m_search->text().trimmed()))
        m_search->clear();
}

void PlotPanel::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasFormat(QLatin1String(signalMimeType)))
        event->acceptProposedAction();
}

void PlotPanel::dropEvent(QDropEvent *event)
{
    if (add(QString::fromUtf8(event->mimeData()->data(QLatin1String(signalMimeType)))))
        event->acceptProposedAction();
}

// ---- Display ------------------------------------------------------------------------------------

void PlotPanel::refresh()
{
    if (!isVisible())
        return;
    m_curves->catchUp(session());
    m_range->setNow(session()->nowMs());
    redraw();
}

void PlotPanel::onCurves()
{
    if (session())
        refresh();
}

void PlotPanel::redraw()
{
    if (!isVisible() || !session())
        return;
    m_area->setMoment(m_rewind->isActive() ? m_rewind->momentMs() : -1);
    m_area->refresh();
    showMoment();
}

/** The pointer's moment, otherwise what is on the screen. */
qint64 PlotPanel::legendMs() const
{
    if (m_area->cursorMs() >= 0)
        return m_area->cursorMs();
    return m_rewind->isActive() ? m_rewind->momentMs() : session()->nowMs();
}

void PlotPanel::showMoment()
{
    if (session())
        m_legend->showMoment(legendMs());
}

/** A narrow panel has its legend below. */
void PlotPanel::resizeEvent(QResizeEvent *)
{
    static constexpr int wideEnough = 760;
    const bool isWide = width() >= wideEnough;
    m_sides->setDirection(isWide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    m_legend->setSizePolicy(isWide ? QSizePolicy::Fixed : QSizePolicy::Expanding,
                            isWide ? QSizePolicy::Expanding : QSizePolicy::Fixed);
}

// ---- Export -------------------------------------------------------------------------------------

bool PlotPanel::writeCsv(const QString &file, QString *error)
{
    if (session())
        m_curves->catchUp(session());
    return output::writeResult(file, curvesAsCsv(*m_curves), filesInUse(), error);
}

bool PlotPanel::writePlot(const QString &file, QString *error)
{
    return writePicture(file, grab().toImage(), filesInUse(), error);
}

void PlotPanel::chooseFile(const QString &title, const QString &name, const QString &filter,
                           Writer write)
{
    const QString file = QFileDialog::getSaveFileName(this, title, name, filter);
    QString error;
    if (!file.isEmpty() && !(this->*write)(file, &error))
        QMessageBox::warning(this, title, error);
}
