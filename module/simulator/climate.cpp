#include "climate.h"

#include "units.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace module {

// The codes of the vent modes in the order of the vent key: head, feet, feet and head, windshield
// and feet.
static constexpr int ventCodes[] = {4, 2, 3, 1};

static constexpr int lowest = 60;  // below it the display shows LO
static constexpr int highest = 90; // above it the display shows HI
static constexpr int lowCode = 50;
static constexpr int highCode = 95;
static constexpr int fanStep = 36;
static constexpr int fullFan = 7;

Climate::Climate(Trim trim) : m_trim(trim), m_reported(report()) {}

struct Climate::Key
{
    int byte;
    int mask;
    const char *name;
    void (*press)(Climate &c);
};

static void toggle(bool *value)
{
    *value = !*value;
}

// clang-format off
const Climate::Key Climate::keys[] = {
    { 4, 0x80, "power", [](Climate &c) { toggle(&c.m_front.on); }},
    { 4, 0x40, "automatic", [](Climate &c) { toggle(&c.m_automatic); }},
    { 4, 0x20, "fan up", [](Climate &c) { c.stepFan(&c.m_front, 1); }},
    { 4, 0x10, "fan down", [](Climate &c) { c.stepFan(&c.m_front, -1); }},
    { 4, 0x02, "left warmer", [](Climate &c) { c.stepTemperature(&c.m_front.left, 1); }},
    { 4, 0x01, "left cooler", [](Climate &c) { c.stepTemperature(&c.m_front.left, -1); }},
    { 5, 0x80, "right warmer", [](Climate &c) { c.stepTemperature(&c.m_front.right, 1); }},
    { 5, 0x40, "right cooler", [](Climate &c) { c.stepTemperature(&c.m_front.right, -1); }},
    { 5, 0x20, "fresh or recirculated air", [](Climate &c) { toggle(&c.m_fresh); }},
    { 5, 0x10, "A/C", [](Climate &c) { toggle(&c.m_front.ac); }},
    { 5, 0x08, "max A/C", [](Climate &c) { toggle(&c.m_front.maxAc); }},
    { 5, 0x04, "rear defroster", [](Climate &c) { toggle(&c.m_rearDefroster); }},
    { 5, 0x02, "front defroster", [](Climate &c) { toggle(&c.m_frontDefroster); }},
    { 6, 0x80, "vents to windshield and feet", [](Climate &c) { c.m_front.vent = 3; }},
    { 6, 0x40, "vents to the feet", [](Climate &c) { c.m_front.vent = 1; }},
    { 6, 0x20, "vents to head and feet", [](Climate &c) { c.m_front.vent = 2; }},
    { 6, 0x10, "vents to the head", [](Climate &c) { c.m_front.vent = 0; }},
    { 6, 0x08, "left seat heating down", [](Climate &c) { heatSeat(&c.m_front.seats[0], -1); }},
    { 6, 0x04, "right seat heating down", [](Climate &c) { heatSeat(&c.m_front.seats[1], -1); }},
    { 6, 0x02, "left seat heating up", [](Climate &c) { heatSeat(&c.m_front.seats[0], 1); }},
    { 6, 0x01, "right seat heating up", [](Climate &c) { heatSeat(&c.m_front.seats[1], 1); }},
    { 7, 0x80, "left seat cooling down", [](Climate &c) { coolSeat(&c.m_front.seats[0], -1); }},
    { 7, 0x40, "left seat cooling up", [](Climate &c) { coolSeat(&c.m_front.seats[0], 1); }},
    { 7, 0x20, "right seat cooling down", [](Climate &c) { coolSeat(&c.m_front.seats[1], -1); }},
    { 7, 0x10, "right seat cooling up", [](Climate &c) { coolSeat(&c.m_front.seats[1], 1); }},
    { 7, 0x08, "steering wheel heating", [](Climate &c) { toggle(&c.m_wheel); }},
    { 7, 0x01, "dual", [](Climate &c) { toggle(&c.m_dual); }},
    { 8, 0x80, "front zone", [](Climate &c) { c.m_rearOnView = false; }},
    { 8, 0x40, "rear zone", [](Climate &c) { c.m_rearOnView = true; }},
    { 8, 0x20, "rear power", [](Climate &c) { toggle(&c.m_rear.on); }},
    { 8, 0x08, "rear fan up", [](Climate &c) { c.stepFan(&c.m_rear, 1); }},
    { 8, 0x04, "rear fan down", [](Climate &c) { c.stepFan(&c.m_rear, -1); }},
    { 8, 0x02, "rear warmer", [](Climate &c) { c.stepTemperature(&c.m_rear.left, 1); }},
    { 8, 0x01, "rear cooler", [](Climate &c) { c.stepTemperature(&c.m_rear.left, -1); }},
    { 9, 0x80, "rear A/C", [](Climate &c) { toggle(&c.m_rear.ac); }},
    { 9, 0x40, "rear max A/C", [](Climate &c) { toggle(&c.m_rear.maxAc); }},
    { 9, 0x20, "rear left seat heating up", [](Climate &c) { heatSeat(&c.m_rear.seats[0], 1); }},
    { 9, 0x10, "rear left seat heating down", [](Climate &c) { heatSeat(&c.m_rear.seats[0], -1); }},
    { 9, 0x08, "rear right seat heating up", [](Climate &c) { heatSeat(&c.m_rear.seats[1], 1); }},
    { 9, 0x04, "rear right seat heating down", [](Climate &c) { heatSeat(&c.m_rear.seats[1], -1); }},
    { 9, 0x02, "rear left seat cooling down", [](Climate &c) { coolSeat(&c.m_rear.seats[0], -1); }},
    { 9, 0x01, "rear left seat cooling up", [](Climate &c) { coolSeat(&c.m_rear.seats[0], 1); }},
    {10, 0x80, "rear right seat cooling down", [](Climate &c) { coolSeat(&c.m_rear.seats[1], -1); }},
    {10, 0x40, "rear right seat cooling up", [](Climate &c) { coolSeat(&c.m_rear.seats[1], 1); }},
    {10, 0x10, "rear vents", [](Climate &c) { c.m_rear.vent = (c.m_rear.vent + 1) % 4; }},
};
// clang-format on

QString Climate::keyName(const QMap<int, int> &bytes)
{
    QStringList names;
    for (const Key &key : keys) {
        if (bytes.value(key.byte) & key.mask)
            names.append(QLatin1String(key.name));
    }
    return names.join(QStringLiteral(" and "));
}

void Climate::press(const QMap<int, int> &bytes)
{
    static constexpr int firstRearByte = 8;
    for (const Key &key : keys) {
        const bool isThere = key.byte < firstRearByte || m_trim != Trim::NoRear;
        if (isThere && (bytes.value(key.byte) & key.mask))
            key.press(*this);
    }
}

void Climate::stepTemperature(int *degrees, int by)
{
    *degrees = std::clamp(*degrees + by, lowest - 1, highest + 1);
    // Without dual mode the passenger's side follows the driver's.
    if (degrees == &m_front.left && !m_dual)
        m_front.right = m_front.left;
    else if (degrees == &m_front.right)
        m_dual = true;
}

void Climate::stepFan(Zone *zone, int by)
{
    zone->fan = std::clamp(zone->fan + by, 0, fullFan);
    if (zone == &m_front)
        m_automatic = false;
}

void Climate::heatSeat(Seat *seat, int by)
{
    seat->cooled = false;
    seat->cool = 0;
    seat->heat = std::clamp(seat->heat + by, 0, 3);
}

void Climate::coolSeat(Seat *seat, int by)
{
    seat->cooled = true;
    seat->heat = 0;
    seat->cool = std::clamp(seat->cool + by, 0, 3);
}

void Climate::setTemperature(int raw)
{
    m_rear.left = lowest - 1 + std::clamp(raw, 0, 255) * (highest - lowest + 2) / 255;
}

static int fanFromRaw(int raw)
{
    return std::clamp((raw + fanStep - 1) / fanStep, 0, fullFan);
}

void Climate::setFan(int raw)
{
    Zone &zone = m_rearOnView ? m_rear : m_front;
    zone.fan = fanFromRaw(raw);
}

void Climate::setRearFan(int raw)
{
    m_rear.fan = fanFromRaw(raw);
}

bool Climate::step(double outsideCelsius, bool engineRunning)
{
    const double outside = fahrenheit(outsideCelsius);
    m_cabin += (outside - m_cabin) * 0.0002;
    if (m_front.on && engineRunning)
        m_cabin += (m_front.left - m_cabin) * 0.0012 * m_front.fan;
    if (m_automatic && m_front.on)
        automate();
    return report() != m_reported;
}

QList<int> Climate::takeReport()
{
    m_reported = report();
    return m_reported;
}

/** In automatic mode the fan follows the temperature difference, with some hysteresis. */
void Climate::automate()
{
    static constexpr double hysteresis = 1.5; // degrees
    const double gap = std::abs(m_front.left - m_cabin);
    if (gap > m_front.fan + hysteresis && m_front.fan < fullFan)
        ++m_front.fan;
    else if (gap < m_front.fan - hysteresis && m_front.fan > 1)
        --m_front.fan;
}

static int temperatureCode(int degrees)
{
    if (degrees < lowest)
        return lowCode;
    return degrees > highest ? highCode : degrees;
}

QList<int> Climate::report() const
{
    // A front seat whose cooling was stepped down reports cooling level 0; a rear one reports off.
    const auto frontSeat = [](const Seat &seat) {
        return seat.cooled ? 16 + seat.cool : seat.heat;
    };
    const auto rearSeat = [](const Seat &seat) { return seat.cool ? 16 + seat.cool : seat.heat; };
    const auto fan = [](const Zone &zone) { return zone.on ? zone.fan * fanStep : 0; };
    const Zone &front = m_front;
    const Zone &rear = m_rear;
    return {front.on,
            m_automatic + 2 * m_dual,
            fan(front),
            ventCodes[front.vent],
            front.ac,
            m_rearDefroster + 2 * m_wheel,
            temperatureCode(front.left),
            temperatureCode(front.right),
            m_fresh,
            frontSeat(front.seats[0]),
            frontSeat(front.seats[1]),
            front.maxAc,
            m_frontDefroster,
            0,
            rearSeat(rear.seats[0]),
            rearSeat(rear.seats[1]),
            rear.ac,
            fan(rear),
            rear.left,
            rear.on,
            ventCodes[rear.vent],
            0,
            rear.maxAc};
}

QMap<int, bool> Climate::rearFeatures(int group) const
{
    QMap<int, bool> features;
    for (int feature = 0; feature < 8; ++feature)
        features.insert(feature, m_trim != Trim::NoRear);
    if (m_trim == Trim::Manual && group == 1) {
        features[0] = false; // dual
        features[6] = false; // cooled seats
        features[7] = false; // heated seats
    }
    return features;
}

} // namespace module
