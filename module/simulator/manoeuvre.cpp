#include "manoeuvre.h"

#include "pagesignals.h"
#include "powertrain.h"
#include "units.h"
#include "wire.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

namespace module {

static constexpr double mostDegrees = 30 * Powertrain::stepSeconds; // of steering, in a step
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

QVariantList Manoeuvre::allClear()
{
    return zoneMessage(wire::FirstRearZone, 0);
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
    m_steering += std::clamp(wanted - m_steering, -mostDegrees, mostDegrees);
    const double metres =
        (m_backing ? -1 : 1) * metresPerSecond(speedKmh) * Powertrain::stepSeconds;
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
    return m_active ? obstacleLevel(distance(sensor)) : 0;
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

void Manoeuvre::handOver(CarState *car) const
{
    for (int sensor = 0; sensor < SensorCount; ++sensor) {
        const Quantity obstacle = Quantity::ObstacleFrontLeft + sensor;
        if (m_active)
            car->set(obstacle, distance(sensor));
        else
            car->forget(obstacle);
    }
}

void Manoeuvre::report(EmissionQueue *out, qint64 nowMs, const CarState &car)
{
    reportBlindSpots(out, nowMs);
    if (!m_active && m_wasActive)
        out->add(nowMs, "parkingTopBarText", {QString()});
    if (!m_active)
        return;
    if (reportRearZone(out, nowMs, car)) // which clears the front
        out->add(nowMs, "parkingDistanceFront", frontDistances(car));
    else
        out->addChange(nowMs, "parkingDistanceFront", frontDistances(car));
    const double wall = wallBehind();
    const bool isNear = m_backing && wall < 3;
    out->addChange(nowMs, "parkingTopBarText",
                   {isNear ? QStringLiteral("Rear %1 ft").arg(feet(wall), 0, 'f', 1)
                           : QStringLiteral("Parking sensors on")});
}

/**
 * The module reports the nearest rear zone only, which clears all others. No quantity carries which
 * zone it reports as clear, nor that it does so once.
 */
bool Manoeuvre::reportRearZone(EmissionQueue *out, qint64 nowMs, const CarState &car)
{
    const RearObstacle nearest = nearestBehind(car);
    const bool isSame =
        m_zone >= 0 && nearest.level == m_level && (nearest.zone == m_zone || nearest.level == 0);
    if (isSame)
        return false;
    out->add(nowMs, "parkingDistanceRear", zoneMessage(nearest.zone, nearest.level));
    m_zone = nearest.zone;
    m_level = nearest.level;
    return true;
}

/** No quantity carries the levels in which an overtaking car comes nearer and leaves. */
QVariantList Manoeuvre::blindSpotMessage(qint64 nowMs) const
{
    if (m_controls.value(Controls::BlindLeft) > 0)
        return zoneMessage(wire::BlindSpotLeft, wire::LastParkingLevel);
    if (m_controls.value(Controls::BlindRight) > 0)
        return zoneMessage(wire::BlindSpotRight, wire::LastParkingLevel);
    for (const Overtaker &other : overtakers) {
        const double share =
            (nowMs / 1000.0 - other.fromSecond) / (other.toSecond - other.fromSecond);
        if (share >= 0 && share < 1)
            return zoneMessage(other.left ? wire::BlindSpotLeft : wire::BlindSpotRight,
                               qRound(4 - 6 * std::abs(share - 0.5)));
    }
    return zoneMessage(wire::NoBlindSpot, 0);
}

void Manoeuvre::reportBlindSpots(EmissionQueue *out, qint64 nowMs)
{
    const QVariantList message = blindSpotMessage(nowMs);
    m_watchesBlindSpots = m_watchesBlindSpots || message != zoneMessage(wire::NoBlindSpot, 0);
    if (!m_active && m_watchesBlindSpots)
        out->addChange(nowMs, "parkingDistanceRear", message);
}

} // namespace module
