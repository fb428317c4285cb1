#pragma once

#include "carfiles.h"
#include "live/livesettings.h"
#include "quantities.h"
#include "trim.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <functional>
#include <memory>

namespace module {

class Controls;

/** A signal of the module, or a recorded action at the unit, at a moment of drive time. */
struct Emission
{
    qint64 atMs = 0;
    QByteArray signal;
    QVariantList arguments;
    bool isAction = false; ///< `signal` is the word of an action
    bool isRepeat = false; ///< brings a page up to date in a playback: not recorded again
};

/** The action that ends the catch-up at the start of a recording; what was recorded follows. */
constexpr char beginAction[] = "begin";

/** What a drive holds and lacks under one heading, for a person. */
struct Findings
{
    QString heading; ///< empty for what concerns the whole drive
    QStringList present;
    QStringList missing;
    QString whyMissing = QStringLiteral("Not in this file");
};

/** What is behind a car, as its rear camera sees it. Metres from the bumper; x to the right. */
struct RearView
{
    double steeringDegrees = 0; ///< of the front wheels, positive to the left
    double headingDegrees = 0;  ///< of the car against the bay that it backs into
    double wall = 6;            ///< distance of the wall
    double bayX = 0;            ///< of the middle of the bay
    double postX = -2.2;
    double postZ = 3.5; ///< negative when the post has been passed
};

/**
 * A vehicle module: the simulated car or a recorded drive. A source knows drive time only; `Drive`
 * decides how fast that runs. Emissions come in order of time, and a source gives the same
 * emissions in the same order at any speed.
 */
class VehicleSource
{
public:
    virtual ~VehicleSource() = default;

    /** A short name of the drive. */
    virtual QString title() const = 0;
    /** Length of the drive, -1 when it never ends. */
    virtual qint64 durationMs() const = 0;
    /**
     * The time of a drive that happens now: it passes by itself, whatever the speed and while the
     * drive is paused, and only its present can be sought. -1 for all others.
     */
    virtual qint64 liveMs() const { return -1; }
    /** What a drive that happens now calls when an emission has come. */
    virtual void setWakeUp(const std::function<void()> &wakeUp) { Q_UNUSED(wakeUp) }
    /** Frees the bus or the port of a car that is connected for another source, or takes it again.
     */
    virtual void setReleased(bool isReleased) { Q_UNUSED(isReleased) }
    /** What such a drive calls with one line for a person: what happened to its connection. */
    virtual void setNotify(const std::function<void(const QString &line)> &notify)
    {
        Q_UNUSED(notify)
    }
    /** Drive time of the next emission, -1 when there is none. */
    virtual qint64 nextDueMs() const = 0;
    /** Takes the next emission; only called while `nextDueMs()` is not -1. */
    virtual Emission take() = 0;
    /**
     * Goes to a moment of the drive. First come the emissions of its state snapshot (see
     * `Snapshot`), with the time of that moment, then those after it.
     */
    virtual void seek(qint64 ms) = 0;
    /**
     * A command that the plugin sent to the module, as in the call log.
     * @return whether the source answers it, within `LatestAnswerMs` of drive time
     */
    virtual bool command(qint64 nowMs, const QString &operation, const QVariantList &arguments)
    {
        Q_UNUSED(nowMs)
        Q_UNUSED(operation)
        Q_UNUSED(arguments)
        return false;
    }
    static constexpr qint64 LatestAnswerMs = 50;
    /**
     * Emits a signal where the module is, when that is another process; it arrives before this
     * returns. @return false for a module in this process, whose signals the drive emits
     */
    virtual bool emitSignal(qint64 nowMs, const Emission &emission)
    {
        Q_UNUSED(nowMs)
        Q_UNUSED(emission)
        return false;
    }
    /** The session has ended: what crosses the adaptor later is not part of it. */
    virtual void finish(qint64 nowMs) { Q_UNUSED(nowMs) }
    /** Whether it begins with the actions that open its first page. */
    virtual bool opensPages() const { return false; }
    /** Whether the next emissions only bring the unit to the moment where a recording begins. */
    virtual bool isCatchingUp() const { return false; }
    /** What can be overridden; null for a recorded drive. */
    virtual Controls *controls() { return nullptr; }
    /**
     * The quantities of the car after one moment of drive time and up to another, which has been
     * reached. Values that have not changed may come again.
     */
    virtual QVector<Sample> samplesOf(qint64 afterMs, qint64 untilMs) const
    {
        Q_UNUSED(afterMs)
        Q_UNUSED(untilMs)
        return {};
    }
    /** What the car's rear camera would show now. */
    virtual RearView rearView() const { return {}; }
    /** What the drive holds and what it lacks, one line each, for a person. */
    virtual QStringList findings() const { return {}; }
    /** The same by page, where the drive has pages. */
    virtual QVector<Findings> findingsByPage() const { return {{{}, findings(), {}}}; }
    /** The same as totals: counts and ranges, for a script. */
    virtual QJsonObject statistics() const { return {}; }
};

/**
 * Opens a source by its name on the command line: "simulator", "none" for a module that emits
 * nothing by itself, a car that is connected (see openLive()), the module of another process (see
 * openRemote()), or the path of a recorded drive, whose format is detected from its content.
 * @param error  one line that names the file, the line and what was expected there
 * @param trim   what the simulated car is equipped with
 * @param car    what explains the frames of a bus; a file must be a raw CAN log then
 * @param live   how a car is driven that is connected
 * @return null when the source cannot be used
 */
std::unique_ptr<VehicleSource> openSource(const QString &name, QString *error,
                                          Trim trim = Trim::Full, const CarFiles &car = {},
                                          const LiveSettings &live = {});

/** Whether a file holds frames of a bus, by its content; false for one that cannot be read. */
bool isCandumpLog(const QString &file);

} // namespace module
