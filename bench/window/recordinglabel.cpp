#include "window/recordinglabel.h"

#include "session/session.h"

#include <QFileInfo>
#include <QLocale>

RecordingLabel::RecordingLabel(QWidget *parent) : QLabel(parent)
{
    static constexpr int tickMs = 1000;
    setObjectName(QStringLiteral("recording"));
    m_tick.setInterval(tickMs);
    connect(&m_tick, &QTimer::timeout, this, &RecordingLabel::refresh);
    hide();
}

void RecordingLabel::setSession(Session *session)
{
    m_session = session;
    refresh();
}

void RecordingLabel::refresh()
{
    const module::RecordingWriter *recording = m_session ? m_session->recording() : nullptr;
    const bool isRunning = recording && recording->isOpen();
    setVisible(isRunning);
    if (!isRunning) {
        m_tick.stop();
        return;
    }
    const qint64 seconds = (m_session->nowMs() - m_session->recordingSinceMs()) / 1000;
    setText(tr("<font color='#e5484d'>\u25CF</font> %1:%2, %3")
                .arg(seconds / 60)
                .arg(seconds % 60, 2, 10, QLatin1Char('0'))
                .arg(locale().formattedDataSize(recording->size(), 1)));
    setToolTip(tr("Recording to %1").arg(recording->path()));
    if (!m_tick.isActive())
        m_tick.start();
}
