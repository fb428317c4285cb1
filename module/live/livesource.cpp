#include "livesource.h"

#include "dbc/dbc.h"
#include "live/troublecodes.h"
#include "obdpids.h"

#include <QDateTime>
#include <QEventLoop>
#include <QLoggingCategory>

namespace module {

// For programs that run unattended.
Q_LOGGING_CATEGORY(connectionLog, "norda.connection", QtWarningMsg)

static constexpr qint64 nsPerUs = 1000;
static constexpr qint64 usPerMs = 1000;
static constexpr int watchMs = 200;
static constexpr int reconnectMs = 1000;
static constexpr char noConnection[] = "No connection to the car";
static constexpr char noAnswer[] = "The car does not answer";

static ObdPoller::Settings pollerSettings(const LiveSettings &settings, const BusDecoder *decoder)
{
    return {settings.asking, settings.requestsPerSecond,
            decoder ? decoder->present() : QVector<bool>()};
}

LiveSource::LiveSource(const QString &name, std::unique_ptr<ObdLink> link,
                       const LiveSettings &settings, std::unique_ptr<BusDecoder> decoder)
    : m_name(name)
    , m_link(std::move(link))
    , m_decoder(std::move(decoder))
    , m_poller(pollerSettings(settings, m_decoder.get()))
    , m_present(m_decoder ? m_decoder->present() : QVector<bool>(int(Quantity::Count), false))
    , m_mapper(m_present)
    , m_startUs(QDateTime::currentMSecsSinceEpoch() * usPerMs)
    , m_reconnects(settings.waitsForCar)
{
    if (!settings.log.isEmpty())
        m_log = std::make_unique<CanLog>(settings.log, settings.inputs);
    m_pollTimer.setSingleShot(true);
    m_pollTimer.setTimerType(Qt::PreciseTimer);
    m_reconnectTimer.setSingleShot(true);
    connect(&m_pollTimer, &QTimer::timeout, this, &LiveSource::ask);
    connect(&m_watchTimer, &QTimer::timeout, this, &LiveSource::watch);
    connect(&m_reconnectTimer, &QTimer::timeout, m_link.get(), &ObdLink::open);
    connect(m_link.get(), &ObdLink::ready, this, &LiveSource::onReady);
    connect(m_link.get(), &ObdLink::lost, this, &LiveSource::onLost);
    connect(m_link.get(), &ObdLink::answered, this, &LiveSource::onAnswered);
    connect(m_link.get(), &ObdLink::failed, this, &LiveSource::onFailed);
    connect(m_link.get(), &ObdLink::otherTesterSeen, this, &LiveSource::onOtherTester);
    connect(m_link.get(), &ObdLink::frameSeen, this, &LiveSource::onFrame);
    m_clock.start();
    append(m_mapper.opening());
}

LiveSource::~LiveSource() = default;

bool LiveSource::connectToCar(QString *error)
{
    if (m_log && !m_log->error().isEmpty()) {
        *error = m_log->error();
        return false;
    }
    if (!m_reconnects)
        return waitForCar(error);
    m_link->open();
    return true;
}

bool LiveSource::waitForCar(QString *error)
{
    static constexpr int longestMs = 15000;
    QEventLoop loop;
    connect(m_link.get(), &ObdLink::ready, &loop, &QEventLoop::quit);
    connect(m_link.get(), &ObdLink::lost, &loop, &QEventLoop::quit);
    QTimer::singleShot(longestMs, &loop, &QEventLoop::quit);
    m_lossReason.clear();
    m_link->open();
    if (!m_isConnected && m_lossReason.isEmpty())
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (m_isConnected)
        return true;
    const QString late = QStringLiteral("no connection within %1 s").arg(longestMs / 1000);
    *error = QStringLiteral("%1: %2").arg(m_name, m_lossReason.isEmpty() ? late : m_lossReason);
    return false;
}

void LiveSource::onReady()
{
    m_isConnected = true;
    m_reconnects = true;
    m_lossReason.clear();
    qCInfo(connectionLog, "%s: connected", qPrintable(m_name));
    showNotice({});
    m_poller.connected(liveMs());
    m_watchTimer.start(watchMs);
    schedulePoll();
}

void LiveSource::onLost(const QString &why)
{
    if (why != m_lossReason)
        qCInfo(connectionLog, "%s: %s; connecting again", qPrintable(m_name), qPrintable(why));
    m_losses += int(m_isConnected);
    noteLoss(why);
    if (m_reconnects)
        m_reconnectTimer.start(reconnectMs);
}

void LiveSource::noteLoss(const QString &why)
{
    m_isConnected = false;
    m_lossReason = why;
    m_poller.disconnected();
    m_pollTimer.stop();
    forget(false);
    if (m_decoder)
        m_decoder->reset();
    if (m_reconnects)
        showNotice(QLatin1String(noConnection));
}

void LiveSource::setReleased(bool isReleased)
{
    m_reconnectTimer.stop();
    if (!isReleased) {
        m_link->open();
        return;
    }
    m_link->close();
    noteLoss(QStringLiteral("released for another connection"));
}

void LiveSource::ask()
{
    const auto request = m_poller.takeRequest(liveMs());
    if (!request) {
        schedulePoll();
        return;
    }
    ++m_requests.total;
    m_link->ask(*request);
}

void LiveSource::schedulePoll()
{
    const qint64 due = m_poller.nextDueMs();
    if (due < 0)
        m_pollTimer.stop();
    else
        m_pollTimer.start(int(qBound<qint64>(0, due - liveMs(), 60000)));
}

void LiveSource::onAnswered(const QVector<ObdAnswer> &answers)
{
    ++m_answers.total;
    m_poller.answered(answers, liveMs());
    showNotice({});
    choosePages();
    add(m_poller.takeSamples(), true);
    if (const auto codes = m_poller.takeCodes()) {
        m_codes = *codes;
        append({troubleCodesText(m_codes)});
    }
    schedulePoll();
}

void LiveSource::onFailed(ObdFailure failure, const QString &why)
{
    m_poller.failed(failure, why, liveMs());
    if (m_poller.isCarSilent()) {
        forget(true);
        showNotice(QLatin1String(noAnswer));
    }
    schedulePoll();
}

void LiveSource::onOtherTester()
{
    m_poller.otherTesterSeen(liveMs());
    schedulePoll();
}

/** With the bits that a frame takes on the bus, some of them stuffed. */
void LiveSource::onFrame(const CanFrame &frame, bool isSent)
{
    static constexpr int shortFrame = 47;
    static constexpr int longFrame = 67;
    static constexpr int stuffedPerCent = 110;
    const int bits = (frame.isExtended ? longFrame : shortFrame) + 8 * frame.data.size();
    ++m_frames.total;
    m_bits.total += bits * stuffedPerCent / 100;
    if (m_log)
        m_log->add(m_startUs + m_clock.nsecsElapsed() / nsPerUs, frame);
    if (!isSent)
        readFrame(frame);
}

void LiveSource::readFrame(const CanFrame &frame)
{
    if (m_decoder) {
        const quint32 flag = frame.isExtended ? DbcMessage::extendedFlag : 0;
        add(m_decoder->decode(liveMs(), frame.id | flag, frame.data), false);
    }
    if (isObdAnswer(frame)) {
        readForeignAnswer(frame);
    } else if (!isObdRequest(frame)) {
        m_poller.carHeard(liveMs());
        if (!m_pollTimer.isActive() && !m_poller.isAsking())
            schedulePoll();
    }
}

/** What another tester is answered is worth knowing, too. */
void LiveSource::readForeignAnswer(const CanFrame &frame)
{
    static constexpr int mostBytes = 7;
    const int length = frame.data.isEmpty() ? 0 : quint8(frame.data.at(0));
    if (m_poller.isAsking() || length > mostBytes || length >= frame.data.size())
        return;
    if (const auto reading = pidReading(frame.data.mid(1, length)))
        add({{liveMs(), float(reading->value), reading->quantity}}, true);
}

void LiveSource::add(const QVector<Sample> &samples, bool isWatched)
{
    QVector<Emission> emissions;
    for (const Sample &sample : samples) {
        if (m_values.add(sample, isWatched))
            emissions += m_mapper.map(sample);
    }
    append(std::move(emissions));
}

void LiveSource::forget(bool onlyWatched)
{
    add(m_values.forget(liveMs(), onlyWatched), onlyWatched);
}

/** What a car has decides which gauge shows what. */
void LiveSource::choosePages()
{
    QVector<bool> present = m_poller.present();
    for (int i = 0; m_decoder && i < present.size(); ++i)
        present[i] |= m_decoder->present().at(i);
    if (present == m_present || !present.contains(true))
        return;
    m_present = present;
    m_mapper = PageMapper(m_present);
    append(m_mapper.opening());
    const QVector<Sample> latest = m_values.latest();
    for (const Sample &sample : latest)
        append(m_mapper.map(sample));
}

void LiveSource::showNotice(const QString &text)
{
    if (text == m_notice)
        return;
    m_notice = text;
    append(noticeTexts());
}

/** In place of what the top bars show otherwise. */
QVector<Emission> LiveSource::noticeTexts() const
{
    return {{0, "gauTopBarTextNotify", {m_notice}}, {0, "vehTopBarText", {m_notice}}};
}

/** While nobody takes them, only the state is kept. */
void LiveSource::append(QVector<Emission> emissions)
{
    static constexpr int mostPending = 2000;
    if (emissions.isEmpty())
        return;
    const qint64 nowMs = liveMs();
    for (Emission &emission : emissions)
        emission.atMs = nowMs;
    m_pending += emissions;
    if (m_pending.size() > mostPending)
        m_pending = lastOfEach(m_pending);
    if (m_wakeUp)
        m_wakeUp();
}

void LiveSource::watch()
{
    const qint64 nowMs = liveMs();
    add(m_values.missing(nowMs), true);
    while (m_decoder && m_decoder->nextExpectedMs() < nowMs)
        add(m_decoder->missing(nowMs), false);
    if (m_log)
        m_log->flush();
    if (nowMs - m_countedMs >= 1000)
        countSecond();
}

void LiveSource::countSecond()
{
    m_countedMs = liveMs();
    for (Counter *counter : {&m_frames, &m_bits, &m_requests, &m_answers})
        counter->endSecond();
}

void LiveSource::Counter::endSecond()
{
    rate = total - before;
    before = total;
}

qint64 LiveSource::nextDueMs() const
{
    return m_pending.isEmpty() ? -1 : m_pending.constFirst().atMs;
}

Emission LiveSource::take()
{
    return m_pending.takeFirst();
}

/** There is only the present. */
void LiveSource::seek(qint64 ms)
{
    m_mapper.reset();
    m_pending = m_mapper.opening() + QVector<Emission>{troubleCodesText(m_codes)};
    const QVector<Sample> latest = m_values.latest();
    for (const Sample &sample : latest)
        m_pending += m_mapper.map(sample);
    m_pending = lastOfEach(m_notice.isEmpty() ? m_pending : m_pending + noticeTexts());
    for (Emission &emission : m_pending)
        emission.atMs = ms;
}

} // namespace module
