#include "recordedmodule.h"

#include "adaptorlink.h"
#include "norda/vtqadaptor.h"
#include "unknownvalues.h"

#include <algorithm>

namespace module {

RecordedModule::RecordedModule(std::unique_ptr<VehicleSource> drive, Answers answers)
    : m_drive(std::move(drive)), m_kind(answers)
{
    begin(0);
}

RecordedModule::~RecordedModule() = default;

/** Which request brings a signal back. */
RecordedModule::Page RecordedModule::pageOf(const QByteArray &signal)
{
    static const QHash<QByteArray, Page> pages = {
        {"NordaVerInfo", Versions}, {"TimeInfo", Versions}, {"NordaConfigMenuTextInfo", MenuLines}};
    return pages.value(signal, Screens);
}

/** What the drive reports within a moment needs no mark before it. */
void RecordedModule::begin(qint64 ms)
{
    static constexpr qint64 momentMs = 1000;
    m_ahead.clear();
    m_answers.clear();
    m_said.clear();
    QSet<QByteArray> reported;
    for (qint64 due = m_drive->nextDueMs(); due >= 0 && due <= ms + momentMs;
         due = m_drive->nextDueMs()) {
        m_ahead.append(m_drive->take());
        reported.insert(m_ahead.constLast().signal);
    }
    const QVector<Emission> unknown = unknownValues(reported);
    for (const Emission &value : unknown)
        m_answers.say(ms, value.signal, value.arguments);
    if (!reported.contains("NordaVerInfo"))
        m_answers.say(ms, "NordaVerInfo", {versionTexts()});
}

/** The drive has been read ahead: what is still to be handed out counts. */
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

/** At the same moment an answer comes first: it holds older values. */
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

/** The menu answers by itself, and a prompt must not be heard twice. */
void RecordedModule::remember(const Emission &emission)
{
    if (pageOf(emission.signal) != MenuLines &&
        moduleSignal(emission.signal).emitter == norda::VtqAdaptor::instance())
        m_said.say(emission.signal, emission.arguments, emission);
}

/** A page may ask more than once as it opens; one answer serves. */
void RecordedModule::repeat(qint64 atMs, Page page)
{
    const QVector<Emission> said = m_said.inOrder();
    for (const Emission &emission : said) {
        if (pageOf(emission.signal) == page)
            m_answers.drop(emission.signal);
    }
    for (const Emission &emission : said) {
        if (pageOf(emission.signal) == page)
            m_answers.say(atMs, emission.signal, emission.arguments);
    }
}

bool RecordedModule::command(qint64 nowMs, const QString &operation, const QVariantList &arguments)
{
    const QString name = operation.section(QStringLiteral("norda::VtqAdaptor::"), 1);
    const int number = arguments.value(0).toInt();
    const bool isPage = name == QLatin1String("NordaData_Request");
    if (name.startsWith(QLatin1String("request")))
        repeat(nowMs, Screens);
    else if (isPage && number == Versions)
        repeat(nowMs, Versions);
    else if (isPage && number == MenuLines)
        m_menu.back(&m_answers, nowMs);
    else if (name == QLatin1String("NordaSetSelectedLineNumber"))
        m_menu.select(&m_answers, nowMs, number);
    else
        return false;
    return true;
}

} // namespace module
