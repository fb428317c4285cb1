#include "sidepanel.h"

#include "screen.h"
#include "session.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

static constexpr int refreshMs = 200;
static constexpr int callsKept = 200;

SidePanel::SidePanel(Screen *screen, QWidget *parent)
    : QWidget(parent)
    , m_screen(screen)
    , m_counters(new QLabel)
    , m_findings(new QLabel)
    , m_calls(new QPlainTextEdit)
{
    m_findings->setWordWrap(true);
    m_findings->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_calls->setReadOnly(true);
    m_calls->setMaximumBlockCount(callsKept);
    m_calls->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_calls->setFocusPolicy(Qt::ClickFocus);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 12);
    const auto heading = [column](const QString &text) {
        auto *label = new QLabel(QStringLiteral("<b>%1</b>").arg(text));
        column->addWidget(label);
    };
    heading(tr("Drive"));
    column->addWidget(m_findings);
    column->addSpacing(8);
    heading(tr("Counts"));
    column->addWidget(m_counters);
    column->addSpacing(8);
    heading(tr("What the plugin asked of the host"));
    column->addWidget(m_calls, 1);

    // A burst of signals leads to one refresh, and no signal to none.
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(refreshMs);
    connect(&m_refresh, &QTimer::timeout, this, &SidePanel::refresh);
}

void SidePanel::setSession(Session *session)
{
    m_session = session;
    m_calls->clear();
    m_newCalls.clear();
    module::VehicleSource *source = session->drive()->source();
    m_findings->setText(source->title() + QLatin1Char('\n') +
                        source->findings().join(QLatin1Char('\n')));
    connect(session->journal(), &Journal::noted, this, [this] {
        if (!m_refresh.isActive())
            m_refresh.start();
    });
    refresh();
}

void SidePanel::noteCall(const QString &operation, const QVariantList &arguments)
{
    QStringList texts;
    for (const QVariant &argument : arguments)
        texts.append(argument.toString());
    m_newCalls.append(QStringLiteral("%1  %2(%3)")
                          .arg(double(m_session->drive()->positionMs()) / 1000.0, 8, 'f', 2)
                          .arg(operation, texts.join(QStringLiteral(", "))));
    if (m_newCalls.size() > callsKept)
        m_newCalls.removeFirst();
}

void SidePanel::refresh()
{
    if (!m_session)
        return;
    m_counters->setText(tr("Signals %1   Calls %2   Beeps %3   Frames %4")
                            .arg(m_session->signalCount())
                            .arg(m_session->callCount())
                            .arg(m_session->beepCount())
                            .arg(m_screen->framesPainted()));
    if (m_newCalls.isEmpty())
        return;
    m_calls->appendPlainText(m_newCalls.join(QLatin1Char('\n')));
    m_newCalls.clear();
}
