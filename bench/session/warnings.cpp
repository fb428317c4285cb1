#include "session/warnings.h"

#include "session/session.h"
#include "windowstack.h"

#include <QHash>
#include <QPair>
#include <QThread>

#include <mutex>

/** What all threads share. */
struct Collected
{
    Warnings *collector = nullptr;
    int count = 0;
    int notKept = 0;
    int drive = -1;
    QStringList first;
    QVector<Warnings::Entry> entries;
    QHash<QPair<int, QString>, int> places; // by drive and text
    bool isReportDue = false;
};

static std::mutex mutex;
static QtMessageHandler previous = nullptr;

/** To be used with the lock. */
static Collected &collected()
{
    static Collected all;
    return all;
}

void Warnings::handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        const std::lock_guard<std::mutex> lock(mutex);
        if (collected().collector)
            collected().collector->add(text);
    }
    previous(type, context, text);
}

Warnings::Warnings()
{
    const std::lock_guard<std::mutex> lock(mutex);
    collected() = Collected();
    collected().collector = this;
    previous = qInstallMessageHandler(handle);
}

Warnings::~Warnings()
{
    const std::lock_guard<std::mutex> lock(mutex);
    collected().collector = nullptr;
    qInstallMessageHandler(previous);
}

Warnings *Warnings::instance()
{
    const std::lock_guard<std::mutex> lock(mutex);
    return collected().collector;
}

int Warnings::count()
{
    const std::lock_guard<std::mutex> lock(mutex);
    return collected().count;
}

QStringList Warnings::first()
{
    const std::lock_guard<std::mutex> lock(mutex);
    return collected().first;
}

void Warnings::beginDrive(const std::function<Moment()> &moment)
{
    placeAndReport();
    const std::lock_guard<std::mutex> lock(mutex);
    m_moment = moment;
    ++collected().drive;
}

void Warnings::beginDrive(const Session *session, const WindowStack *windows)
{
    beginDrive([session = QPointer<const Session>(session),
                windows = QPointer<const WindowStack>(windows)] {
        return Moment{session ? session->nowMs() : 0, windows ? windows->currentWindow() : -1};
    });
}

int Warnings::drive() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return collected().drive;
}

QVector<Warnings::Entry> Warnings::entries() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return collected().entries;
}

int Warnings::notKept() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return collected().notKept;
}

/** Only the own thread knows. */
Warnings::Moment Warnings::now() const
{
    if (QThread::currentThread() != thread())
        return {-1, -1};
    return m_moment ? m_moment() : Moment();
}

/** Called with the lock, in the thread of the warning. */
void Warnings::add(const QString &text)
{
    static constexpr int mostFirst = 20;
    Collected &all = collected();
    ++all.count;
    if (all.first.size() < mostFirst)
        all.first.append(text);
    keep(text.left(longestText));
    if (!all.isReportDue)
        QMetaObject::invokeMethod(this, &Warnings::placeAndReport, Qt::QueuedConnection);
    all.isReportDue = true;
}

void Warnings::keep(const QString &text)
{
    Collected &all = collected();
    const Moment moment = now();
    const QPair<int, QString> key(all.drive, text);
    const auto known = all.places.constFind(key);
    if (known != all.places.constEnd()) {
        Entry &entry = all.entries[*known];
        ++entry.count;
        entry.lastMs = moment.ms;
    } else if (all.entries.size() < mostEntries) {
        all.places.insert(key, all.entries.size());
        all.entries.append({text, all.drive, moment, moment.ms, 1});
    } else {
        ++all.notKept;
    }
}

/** What came from other threads gets the moment at which it is reported. */
void Warnings::placeAndReport()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        const Moment moment = now();
        for (Entry &entry : collected().entries) {
            if (entry.first.ms < 0)
                entry.first = moment;
            if (entry.lastMs < 0)
                entry.lastMs = moment.ms;
        }
        collected().isReportDue = false;
    }
    emit changed();
}
