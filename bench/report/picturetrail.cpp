#include "report/picturetrail.h"

#include "pages.h"
#include "panels/journaltexts.h"
#include "scenario/scenarioline.h"
#include "session/rig.h"

static constexpr int pauseMs = 300; // of real time, in which a page opens and an animation ends
static constexpr int apartMs = 1000;
static constexpr int mostKept = 40;
static constexpr int intervals = 8;

PictureTrail::PictureTrail(Rig *rig, QObject *parent) : QObject(parent), m_rig(rig)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(pauseMs);
    connect(&m_pause, &QTimer::timeout, this, &PictureTrail::take);
    connect(rig, &Rig::sessionBegun, this, &PictureTrail::follow);
    connect(rig, &Rig::repeated, this, &PictureTrail::noteAction);
}

void PictureTrail::follow(Session *session)
{
    m_session = session;
    m_pictures.clear();
    m_pending.clear();
    m_dropped = 0;
    m_intervalMs = session->drive()->durationMs() / intervals;
    const int page = m_rig->unit()->windows()->currentWindow();
    if (page >= 0)
        note(QStringLiteral("opened %1").arg(pageText(page)));
    connect(session->journal(), &Journal::noted, this, &PictureTrail::noteEntry);
    connect(session->drive(), &module::Drive::reached, this, &PictureTrail::onMoment);
}

/** The journal also notes what the module and the plugin do, many times a second. */
void PictureTrail::noteEntry()
{
    const Journal *journal = m_session->journal();
    if (journal->entries().isEmpty())
        return;
    const Journal::Entry &entry = journal->entries().constLast();
    if (entry.kind == Journal::Action)
        noteAction(journal->nameOf(entry), entry.arguments);
    else if (entry.kind == Journal::Page)
        note(QStringLiteral("opened %1").arg(entryText(journal, entry)));
}

/** A page is noted when it opens. */
void PictureTrail::noteAction(const QString &word, const QVariantList &arguments)
{
    if (word != QLatin1String("page"))
        note(scenarioLine(word, arguments));
}

/** At unlimited speed a pause would be minutes of the drive, which has a picture earlier. */
void PictureTrail::note(const QString &text)
{
    static constexpr int mostNamed = 8;
    if (m_pending.size() < mostNamed)
        m_pending.append(text);
    if (m_session->drive()->speed() != module::Drive::Unlimited && !m_pause.isActive())
        m_pause.start();
}

/** Before what happens at that moment. The end of the drive has a picture of its own. */
void PictureTrail::onMoment()
{
    const module::Drive *drive = m_session->drive();
    const qint64 sinceLast =
        m_session->nowMs() - (m_pictures.isEmpty() ? 0 : m_pictures.constLast().ms);
    const bool isLong = m_intervalMs >= apartMs && sinceLast >= m_intervalMs &&
                        drive->nowMs() != drive->durationMs();
    const bool hasAction = !m_pending.isEmpty() && sinceLast >= apartMs;
    if (isLong || hasAction)
        take();
}

void PictureTrail::take()
{
    m_pause.stop();
    if (!m_session || m_session->isRewound())
        return;
    if (m_pictures.size() == mostKept) {
        m_pictures.removeFirst();
        ++m_dropped;
    }
    m_pictures.append(grab(m_pending.join(QStringLiteral(", "))));
    m_pending.clear();
}

ReportPicture PictureTrail::grab(const QString &caption) const
{
    return {pictureForReport(m_rig->unit()->screen()->grab().toImage()), caption,
            m_session->nowMs()};
}

QVector<ReportPicture> PictureTrail::pictures() const
{
    QVector<ReportPicture> pictures = m_pictures;
    if (m_session)
        pictures.append(
            grab((m_pending + QStringList("the end of the session")).join(QStringLiteral(", "))));
    return pictures;
}
