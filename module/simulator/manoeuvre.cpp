#include "manoeuvre.h"

#include "powertrain.h"
#include "units.h"
#include "wire.h"

#include <QByteArray>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace module {

static constexpr double dt = Powertrain::stepSeconds;
static constexpr double farAway = 99;

// The parking lot, in the car's coordinates at the start: x ahead of the rear axle, y to the left.
static constexpr double wallX = -9.2;
struct Post
{
    double x;
    double y;
};
static constexpr Post posts[] = {{-5.0, -1.35}, {6.3, 0.9}};
static constexpr double startY = -0.37; // the bay's middle is at 0

static constexpr double wheelbase = 2.7;
static constexpr double rearBumper = -1.0;

struct Sensor
{
    double x;
    double y;
    double facing; // degrees, counterclockwise from straight ahead
};

// clang-format off
// In the order of the zone codes 1 to 8.
static constexpr Sensor sensors[Manoeuvre::SensorCount] = {
    { 3.55,  0.80,   45},
    { 3.70,  0.35,   10},
    { 3.70, -0.35,  -10},
    { 3.55, -0.80,  -45},
    {-0.85,  0.80,  135},
    {-1.00,  0.35,  170},
    {-1.00, -0.35, -170},
    {-0.85, -0.80, -135},
};
static constexpr double halfBeam = 42; // degrees

struct Band
{
    double within; // metres
    int level;
};
static constexpr Band bands[] = {{0.35, 4}, {0.6, 3}, {1.0, 2}, {1.5, 1}};
static constexpr double reach = bands[std::size(bands) - 1].within;

struct Overtaker
{
    double fromSecond;
    double toSecond;
    bool left;
};
static constexpr Overtaker overtakers[] = {
    {238, 246, true}, {262, 268, true}, {272, 281, false}, {345, 353, true}, {371, 377, false},
};
// clang-format on

static constexpr qint64 beginMs = 552000;
static constexpr qint64 pullOutMs = 572000;
static constexpr qint64 endMs = 586000;
static constexpr double creepKmh = 2.8;
static constexpr double stopAtWall = 0.27;
static constexpr double pullOutX = 1.7; // where the car comes to rest

static QByteArray parkingMessage(int code, int level)
{
    return QByteArray(1, char(code)) + char(level);
}

QByteArray Manoeuvre::allClear()
{
    return parkingMessage(wire::FirstRearZone, 0);
}

bool Manoeuvre::isBackingUp(qint64 nowMs) const
{
    return nowMs >= beginMs && nowMs < pullOutMs;
}

void Manoeuvre::adjust(qint64 nowMs, DriverWish *wish) const
{
    if (nowMs < beginMs || nowMs >= endMs)
        return;
    const double left = isBackingUp(nowMs) ? wallBehind() - stopAtWall : pullOutX - m_x;
    wish->creeping = true;
    wish->reverse = isBackingUp(nowMs);
    wish->speedKmh = left < 0.02 ? 0 : std::clamp(left * 2.2, 0.3, creepKmh);
}

/** The driver swings to the middle of the bay while backing in and holds straight otherwise. */
static double steeringAt(double travelled)
{
    static constexpr double swing = 14;
    static constexpr double turn = 4; // metres
    return travelled <= 0 || travelled >= turn ? 0 : swing * std::sin(2 * M_PI * travelled / turn);
}

/** Whether an obstacle is overridden. */
static bool isBlocked(const Controls &controls)
{
    for (int sensor = 0; sensor < Manoeuvre::SensorCount; ++sensor) {
        if (controls.isOverridden(Controls::Control(Controls::Obstacle + sensor)))
            return true;
    }
    return false;
}

void Manoeuvre::step(qint64 nowMs, double speedKmh, const Controls &controls)
{
    m_controls = controls;
    m_wasActive = m_active;
    // After an override the sensors report once more, that the obstacle is gone.
    m_active = nowMs >= beginMs || isBlocked(controls) || m_blocked;
    m_blocked = isBlocked(controls);
    m_backing = isBackingUp(nowMs);
    if (nowMs < beginMs) {
        m_y = startY;
        return;
    }
    const double wanted = m_backing ? steeringAt(-m_x) : 0;
    m_steering += std::clamp(wanted - m_steering, -30 * dt, 30 * dt);
    const double metres = (m_backing ? -1 : 1) * metresPerSecond(speedKmh) * dt;
    m_heading += metres / wheelbase * std::tan(qDegreesToRadians(m_steering));
    m_x += metres * std::cos(m_heading);
    m_y += metres * std::sin(m_heading);
}

double Manoeuvre::wallBehind() const
{
    return m_x + rearBumper * std::cos(m_heading) - wallX;
}

/** What a sensor measures: the distance of a post in its beam, or at the rear of the wall. */
double Manoeuvre::distance(int sensor) const
{
    static constexpr double metres[] = {farAway, 1.25, 0.8, 0.5, 0.2}; // by level
    const int level = m_controls.value(Controls::Control(Controls::Obstacle + sensor));
    if (level != Controls::Automatic)
        return metres[level];
    const Sensor &place = sensors[sensor];
    const double x = m_x + place.x * std::cos(m_heading) - place.y * std::sin(m_heading);
    const double y = m_y + place.x * std::sin(m_heading) + place.y * std::cos(m_heading);
    double nearest = sensor < FirstRearSensor ? farAway : x - wallX;
    for (const Post &post : posts) {
        const double towards = qRadiansToDegrees(std::atan2(post.y - y, post.x - x));
        const double off = towards - place.facing - qRadiansToDegrees(m_heading);
        if (std::abs(std::remainder(off, 360)) <= halfBeam)
            nearest = std::min(nearest, std::hypot(post.x - x, post.y - y));
    }
    return nearest;
}

int Manoeuvre::level(int sensor) const
{
    if (!m_active)
        return 0;
    const double metres = distance(sensor);
    for (const Band &band : bands) {
        if (metres <= band.within)
            return band.level;
    }
    return 0;
}

RearView Manoeuvre::rearView() const
{
    RearView view;
    if (!m_active)
        return view;
    const double bumperX = m_x + rearBumper * std::cos(m_heading);
    const double bumperY = m_y + rearBumper * std::sin(m_heading);
    view.steeringDegrees = m_steering;
    view.headingDegrees = qRadiansToDegrees(m_heading);
    view.wall = wallBehind();
    view.bayX = bumperY;
    view.postX = bumperY - posts[0].y;
    view.postZ = bumperX - posts[0].x;
    return view;
}

void Manoeuvre::report(EmissionQueue *out, qint64 nowMs)
{
    reportBlindSpots(out, nowMs);
    if (!m_active && m_wasActive)
        out->add(nowMs, "parkingTopBarText", {QString()});
    if (!m_active)
        return;
    const bool isNewMessage = reportRearZone(out, nowMs);
    reportFrontZones(out, nowMs, isNewMessage);
    const double wall = wallBehind();
    const bool isNear = m_backing && wall < 3;
    out->addChange(nowMs, "parkingTopBarText",
                   {isNear ? QStringLiteral("Rear %1 ft").arg(feet(wall), 0, 'f', 1)
                           : QStringLiteral("Parking sensors on")});
}

/** Of the rear zones the module reports only the nearest, which clears all others. */
bool Manoeuvre::reportRearZone(EmissionQueue *out, qint64 nowMs)
{
    int nearest = FirstRearSensor;
    for (int sensor = FirstRearSensor; sensor < SensorCount; ++sensor) {
        if (distance(sensor) < distance(nearest))
            nearest = sensor;
    }
    const int nearestLevel = level(nearest);
    const bool isSame = m_nearest >= 0 && nearestLevel == m_nearestLevel &&
                        (nearest == m_nearest || nearestLevel == 0);
    if (isSame)
        return false;
    out->add(nowMs, "parkingDistanceRear",
             {parkingMessage(wire::FirstZone + nearest, nearestLevel)});
    m_nearest = nearest;
    m_nearestLevel = nearestLevel;
    return true;
}

void Manoeuvre::reportFrontZones(EmissionQueue *out, qint64 nowMs, bool wereCleared)
{
    static constexpr int steps = 15;
    static constexpr int unitsPerStep = 255 / steps;
    QByteArray front;
    for (int sensor = 0; sensor < FirstRearSensor; ++sensor) {
        const double nearness = std::clamp(1 - distance(sensor) / reach, 0.0, 1.0);
        front.append(char(unitsPerStep * qRound(steps * nearness)));
    }
    if (wereCleared)
        out->add(nowMs, "parkingDistanceFront", {front});
    else
        out->addChange(nowMs, "parkingDistanceFront", {front});
}

QByteArray Manoeuvre::blindSpotMessage(qint64 nowMs) const
{
    if (m_controls.value(Controls::BlindLeft) > 0)
        return parkingMessage(wire::BlindSpotLeft, wire::LastParkingLevel);
    if (m_controls.value(Controls::BlindRight) > 0)
        return parkingMessage(wire::BlindSpotRight, wire::LastParkingLevel);
    QByteArray message = parkingMessage(wire::NoBlindSpot, 0);
    for (const Overtaker &other : overtakers) {
        const double share =
            (nowMs / 1000.0 - other.fromSecond) / (other.toSecond - other.fromSecond);
        if (share >= 0 && share < 1)
            message = parkingMessage(other.left ? wire::BlindSpotLeft : wire::BlindSpotRight,
                                     qRound(4 - 6 * std::abs(share - 0.5)));
    }
    return message;
}

void Manoeuvre::reportBlindSpots(EmissionQueue *out, qint64 nowMs)
{
    const QByteArray message = blindSpotMessage(nowMs);
    m_watchesBlindSpots = m_watchesBlindSpots || message.at(0) != char(wire::NoBlindSpot);
    if (!m_active && m_watchesBlindSpots)
        out->addChange(nowMs, "parkingDistanceRear", {message});
}

} // namespace module
