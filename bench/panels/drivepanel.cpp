#include "panels/drivepanel.h"

#include "screen.h"
#include "session/session.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPalette>
#include <QScrollBar>
#include <QTextBrowser>
#include <QVBoxLayout>

static constexpr int liveRefreshMs = 1000;

DrivePanel::DrivePanel(Screen *screen, QWidget *parent)
    : Panel(parent), m_screen(screen), m_findings(new QTextBrowser)
{
    m_findings->setObjectName(QStringLiteral("findings"));
    m_findings->setFrameShape(QFrame::NoFrame);
    m_findings->setOpenLinks(false);
    m_findings->setMinimumHeight(2 * fontMetrics().lineSpacing());
    auto *grid = new QGridLayout;
    grid->setVerticalSpacing(0);
    m_signals = addCounter(grid, QStringLiteral("signals"), tr("Signals"));
    m_calls = addCounter(grid, QStringLiteral("calls"), tr("Calls"));
    m_beeps = addCounter(grid, QStringLiteral("beeps"), tr("Beeps"));
    m_frames = addCounter(grid, QStringLiteral("frames"), tr("Frames"));
    connect(&m_liveTimer, &QTimer::timeout, this, &DrivePanel::scheduleRefresh);
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_findings, 1);
    column->addLayout(grid);
}

QLabel *DrivePanel::addCounter(QGridLayout *grid, const QString &name, const QString &title)
{
    auto *number = new QLabel;
    number->setObjectName(QStringLiteral("count-") + name);
    number->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont bold = number->font();
    bold.setBold(true);
    number->setFont(bold);
    const int column = grid->columnCount();
    grid->addWidget(number, 0, column);
    grid->addWidget(new QLabel(title), 1, column);
    return number;
}

/** What a person calls the kind of a source. */
static QString kindText(const QString &kind)
{
    struct Kind
    {
        const char *kind;
        const char *text;
    };
    static constexpr Kind kinds[] = {
        {"simulator", QT_TRANSLATE_NOOP("DrivePanel", "Built-in trip")},
        {"none", QT_TRANSLATE_NOOP("DrivePanel", "Nothing is emitted by itself")},
        {"recording", QT_TRANSLATE_NOOP("DrivePanel", "Recording")},
        {"rawcan", QT_TRANSLATE_NOOP("DrivePanel", "Raw CAN log")},
        {"candump", QT_TRANSLATE_NOOP("DrivePanel", "OBD answers in a CAN log")},
        {"csv", QT_TRANSLATE_NOOP("DrivePanel", "OBD log")},
        {"live", QT_TRANSLATE_NOOP("DrivePanel", "A car that is connected")},
        {"module", QT_TRANSLATE_NOOP("DrivePanel", "A vehicle module in another process")},
    };
    for (const Kind &row : kinds) {
        if (kind == QLatin1String(row.kind))
            return DrivePanel::tr(row.text);
    }
    return kind;
}

static QString lengthText(qint64 ms)
{
    const qint64 seconds = ms / 1000;
    return DrivePanel::tr("%1:%2 minutes")
        .arg(seconds / 60)
        .arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

static QString listHtml(const QStringList &lines)
{
    QString html;
    for (const QString &line : lines)
        html += QStringLiteral("<li>%1</li>").arg(line.toHtmlEscaped());
    return QStringLiteral("<ul>%1</ul>").arg(html);
}

static QString findingsHtml(const module::Findings &findings)
{
    QString html;
    if (!findings.heading.isEmpty())
        html += QStringLiteral("<h4>%1</h4>").arg(findings.heading.toHtmlEscaped());
    html += listHtml(findings.present);
    if (!findings.missing.isEmpty())
        html += QStringLiteral("<p class='missing'>%1</p>")
                    .arg(QStringLiteral("%1: %2").arg(
                        findings.whyMissing.toHtmlEscaped(),
                        findings.missing.join(QStringLiteral(", ")).toHtmlEscaped()));
    return html;
}

/** Between the text and what it stands on. */
static QColor faintText(const QPalette &palette)
{
    static constexpr double share = 0.65;
    const QColor &text = palette.color(QPalette::Text);
    const QColor &base = palette.color(QPalette::Base);
    const auto mixed = [](double a, double b) { return share * a + (1 - share) * b; };
    return QColor::fromRgbF(mixed(text.redF(), base.redF()), mixed(text.greenF(), base.greenF()),
                            mixed(text.blueF(), base.blueF()));
}

void DrivePanel::showFindings()
{
    const module::VehicleSource *source = session()->drive()->source();
    QString kind = kindText(source->statistics().value(QStringLiteral("kind")).toString());
    if (source->durationMs() > 0)
        kind += QStringLiteral(", ") + lengthText(source->durationMs());
    QString html = QStringLiteral("<h3>%1</h3><p class='kind'>%2</p>")
                       .arg(source->title().toHtmlEscaped(), kind.toHtmlEscaped());
    const QVector<module::Findings> pages = source->findingsByPage();
    for (const module::Findings &page : pages)
        html += findingsHtml(page);
    m_findings->document()->setDefaultStyleSheet(
        QStringLiteral("h3 { margin: 0 } h4 { margin: 8px 0 2px 0 } p { margin: 0 }"
                       "ul { margin: 0 0 0 -24px } .kind, .missing { color: %1 }")
            .arg(faintText(palette()).name()));
    const int scrolled = m_findings->verticalScrollBar()->value();
    m_findings->setHtml(html);
    m_findings->verticalScrollBar()->setValue(scrolled);
}

/** A car that is connected says something new every second, unless somebody marks its text. */
void DrivePanel::refreshFindings()
{
    static constexpr qint64 leastMs = liveRefreshMs - 100;
    const qint64 liveMs = session()->drive()->source()->liveMs();
    const bool isDue = liveMs >= 0 && qAbs(liveMs - m_findingsMs) >= leastMs;
    if (!isDue || m_findings->textCursor().hasSelection())
        return;
    m_findingsMs = liveMs;
    showFindings();
}

void DrivePanel::setSession(Session *session)
{
    Panel::setSession(session);
    showFindings();
    m_liveTimer.stop();
    if (session->drive()->source()->liveMs() >= 0)
        m_liveTimer.start(liveRefreshMs); // values age also while nothing else happens
}

void DrivePanel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange && session())
        showFindings();
    Panel::changeEvent(event);
}

void DrivePanel::refresh()
{
    refreshFindings();
    m_signals->setNum(session()->signalCount());
    m_calls->setNum(session()->callCount());
    m_beeps->setNum(session()->beepCount());
    m_frames->setNum(m_screen->framesPainted());
}
