#pragma once

#include "simulator/climate.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

namespace module {

class Controls;

/** One signal of the adaptor at a moment of drive time, or an action of somebody at the unit. */
struct Emission
{
    qint64 atMs = 0;
    QByteArray signal;
    QVariantList arguments;
    bool isAction = false; ///< by its word, not a signal
    bool isRepeat = false; ///< brings a page up to date in a replay: not recorded once more
};

/** The action that ends what a recording catches up with: what follows is what was recorded. */
constexpr char beginAction[] = "begin";

/** What lies behind a car, as its rear camera sees it. Metres from the bumper; x to the right. */
struct RearView
{
    double steeringDegrees = 0; ///< of the front wheels, positive to the left
    double headingDegrees = 0;  ///< of the car against the bay that it backs into
    double wall = 6;            ///< to the wall behind
    double bayX = 0;            ///< where the middle of the bay lies
    double postX = -2.2;
    double postZ = 3.5; ///< negative when the post has been passed
};

/**
 * Whatever plays the vehicle module: the simulated car or a recorded drive. A source knows drive
 * time only; how fast that runs is the business of `Drive`. Emissions come in order of time, and
 * the same source gives the same emissions in the same order however it is driven.
 */
class VehicleSource
{
public:
    virtual ~VehicleSource() = default;

    /** What is being driven, in a few words. */
    virtual QString title() const = 0;
    /** Length of the drive, -1 when it never ends. */
    virtual qint64 durationMs() const = 0;
    /** Drive time of the next emission, -1 when there is none. */
    virtual qint64 nextDueMs() const = 0;
    /** Hands out the next emission; only called while `nextDueMs()` is not -1. */
    virtual Emission take() = 0;
    /**
     * Goes to a moment of the drive. What follows are first the emissions that bring a screen up
     * to that moment (see `LastSaid`; stamped with it), then those after it.
     */
    virtual void seek(qint64 ms) = 0;
    /**
     * A command that the plugin sent to the module, in the words of the call log.
     * @return whether the source answers it, within `AnswerMs` of drive time
     */
    virtual bool command(qint64 nowMs, const QString &operation, const QVariantList &arguments)
    {
        Q_UNUSED(nowMs)
        Q_UNUSED(operation)
        Q_UNUSED(arguments)
        return false;
    }
    static constexpr qint64 AnswerMs = 50;
    /** Whether it begins with the actions that open its first page. */
    virtual bool opensPages() const { return false; }
    /** Whether what comes next only brings the unit to the moment that a recording begins at. */
    virtual bool isCatchingUp() const { return false; }
    /** What can be held in hand; null for a car that cannot be changed any more. */
    virtual Controls *controls() { return nullptr; }
    /** What the car's rear camera would show now. */
    virtual RearView rearView() const { return {}; }
    /** What was found and what was not, one line each, for a person. */
    virtual QStringList findings() const { return {}; }
    /** The same as totals: counts and ranges, for a script. */
    virtual QJsonObject statistics() const { return {}; }
};

/**
 * Opens a source by its name on the command line: "simulator", "none" for a module that says
 * nothing by itself, or the path of a recorded drive, whose kind is told from its content.
 * @param error  one line that names the file, the line and what was expected there
 * @param trim   what the simulated car is equipped with
 * @return null when the source cannot be used
 */
std::unique_ptr<VehicleSource> openSource(const QString &name, QString *error,
                                          Trim trim = Trim::Full);

} // namespace module
