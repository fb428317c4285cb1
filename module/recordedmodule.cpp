#include "recordedmodule.h"

#include "adaptorlink.h"
#include "norda/vtqadaptor.h"
#include "unknownvalues.h"
#include "wire.h"

#include <algorithm>

namespace module {

RecordedModule::RecordedModule(std::unique_ptr<VehicleSource> drive, Answers answers)
    : m_drive(std::move(drive)), m_kind(answers)
{
    begin(0);
}

RecordedModule::~RecordedModule() = default;

static constexpr int noModulePage = 0; // for signals of the plugin's other pages

/** The page of the module whose request repeats a signal. */
static int pageOf(const QByteArray &signal)
{
    static const QHash<QByteArray, int> pages = {{"NordaVerInfo", wire::VersionPage},
                                                 {"TimeInfo", wire::VersionPage},
                                                 {"NordaConfigMenuTextInfo", wire::MenuPage}};
    return pages.value(signal, noModulePage);
}

/** Reports as unknown what the drive does not report within the first second. */
void RecordedModule::begin(qint64 ms)
{
    static constexpr qint64 aheadMs = 1000;
    m_ahead.clear();
    m_answers.clear();
    m_state.clear();
    QSet<QByteArray> reported;
    for (qint64 due = m_drive->nextDueMs(); due >= 0 && due <= ms + aheadMs;
         due = m_drive->nextDueMs()) {
        m_ahead.append(m_drive->take());
        reported.insert(m_ahead.constLast().signal);
    }
    const QVector<Emission> unknown = unknownValues(reported);
    for (const Emission &value : unknown)
        m_answers.add(ms, value.signal, value.arguments);
    if (!reported.contains("NordaVerInfo"))
        m_answers.add(ms, "NordaVerInfo", {versionTexts()});
}

/** Including what was read ahead of its time. */
bool RecordedModule::isCatchingUp() const
{
    return m_drive->isCatchingUp() ||
           std::any_of(m_ahead.begin(), m_ahead.end(), [](const Emission &emission) {
               return emission.isAction && emission.signal == beginAction;
           });
}

void RecordedModule::seek(qint64 ms)
{
    m_drive->seek(ms);
    begin(ms);
}

qint64 RecordedModule::nextOfDriveMs() const
{
    return m_ahead.isEmpty() ? m_drive->nextDueMs() : m_ahead.constFirst().atMs;
}

/** At the same time an answer comes first: it holds older values. */
bool RecordedModule::isAnswerDue() const
{
    const qint64 due = nextOfDriveMs();
    return !m_answers.isEmpty() && (due < 0 || m_answers.first().atMs <= due);
}

qint64 RecordedModule::nextDueMs() const
{
    return isAnswerDue() ? m_answers.first().atMs : nextOfDriveMs();
}

Emission RecordedModule::takeFromDrive()
{
    return m_ahead.isEmpty() ? m_drive->take() : m_ahead.takeFirst();
}

Emission RecordedModule::take()
{
    const bool isAnswer = isAnswerDue();
    Emission emission = isAnswer ? m_answers.take() : takeFromDrive();
    emission.isRepeat = isAnswer && m_kind == Answers::Repeats;
    remember(emission);
    return emission;
}

/** The menu answers by itself, and a prompt must not be played twice. */
void RecordedModule::remember(const Emission &emission)
{
    if (pageOf(emission.signal) != wire::MenuPage &&
        moduleSignal(emission.signal).emitter == norda::VtqAdaptor::instance())
        m_state.add(emission.signal, emission.arguments, emission);
}

/** A page may ask more than once as it opens; one answer serves. */
void RecordedModule::repeat(qint64 atMs, int page)
{
    const QVector<Emission> state = m_state.items();
    for (const Emission &emission : state) {
        if (pageOf(emission.signal) == page)
            m_answers.cancel(emission.signal);
    }
    for (const Emission &emission : state) {
        if (pageOf(emission.signal) == page)
            m_answers.add(atMs, emission.signal, emission.arguments);
    }
}

bool RecordedModule::command(qint64 nowMs, const QString &operation, const QVariantList &arguments)
{
    const QString name = adaptorCommand(operation);
    const int number = arguments.value(0).toInt();
    const bool isPage = name == QLatin1String("NordaData_Request");
    if (name.startsWith(QLatin1String("request")))
        repeat(nowMs, noModulePage);
    else if (isPage && number == wire::VersionPage)
        repeat(nowMs, wire::VersionPage);
    else if (isPage && number == wire::MenuPage)
        m_menu.back(&m_answers, nowMs);
    else if (name == QLatin1String("NordaSetSelectedLineNumber"))
        m_menu.select(&m_answers, nowMs, number);
    else
        return false;
    return true;
}

} // namespace module
