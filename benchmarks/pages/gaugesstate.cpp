#include "gaugesstate.h"

template <typename State, typename Value>
static void change(State *state, Value *current, const Value &value, void (State::*changed)())
{
    if (*current == value)
        return;
    *current = value;
    (state->*changed)();
}

GaugeState::GaugeState(const char *title, QObject *parent)
    : QObject(parent), m_title(QLatin1String(title))
{
}

void GaugeState::setTitle(const QString &title)
{
    change(this, &m_title, title, &GaugeState::titleChanged);
}

void GaugeState::show(const QString &value, int position)
{
    change(this, &m_value, value, &GaugeState::valueChanged);
    change(this, &m_position, position, &GaugeState::positionChanged);
}

GaugesState::GaugesState(QObject *parent)
    : QObject(parent)
    , m_centre("Tachometer", this)
    , m_topLeft("Transmission Temp", this)
    , m_topRight("Coolant Temp", this)
    , m_bottomLeft("Intake Air Temp", this)
    , m_bottomRight("Engine Calculated Load", this)
{
}

void GaugesState::setTitles(const QStringList &titles)
{
    GaugeState *const gauges[] = {&m_centre, &m_topLeft, &m_topRight, &m_bottomLeft,
                                  &m_bottomRight};
    for (int i = 0; i < qMin(titles.size(), int(std::size(gauges))); ++i)
        gauges[i]->setTitle(titles[i]);
}

void GaugesState::setEngineSpeed(const QString &value, int position)
{
    static constexpr int highest = 10000;
    const bool isKnown = value.toInt() <= highest;
    m_centre.show(isKnown ? value + QStringLiteral(" RPM") : QStringLiteral("Error RPM"),
                  isKnown ? position : 0);
}

void GaugesState::setProperties(const QList<int> &properties)
{
    static const QString degrees = QStringLiteral(" ℉");
    GaugeState *const gauges[] = {&m_topLeft, &m_topRight, &m_bottomLeft};
    for (int i = 0; i < 3; ++i)
        gauges[i]->show(QString::number(properties[i + 2]) + degrees, properties[i + 2]);
    m_bottomRight.show(QString::number(properties[5]) + QStringLiteral(" %"), properties[5]);
}

void GaugesState::setStatus(const QString &status)
{
    change(this, &m_status, status, &GaugesState::statusChanged);
}

void GaugesState::setPeak(const QString &peak)
{
    change(this, &m_peak, peak, &GaugesState::peakChanged);
}

void GaugesState::setPeakShown(bool shown)
{
    change(this, &m_peakShown, shown, &GaugesState::peakShownChanged);
}

void GaugesState::setShifts(bool shifts)
{
    change(this, &m_shifts, shifts, &GaugesState::shiftsChanged);
}
