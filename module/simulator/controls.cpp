#include "controls.h"

#include "namedrows.h"

#include <iterator>

namespace module {

static constexpr const char *opening = "closed open";
static constexpr const char *onOrOff = "off on";
static constexpr const char *gears = "park reverse d1 d2 d3 d4 d5 d6";
static constexpr const char *degrees = "\u00B0F";
static const QString automatic = QStringLiteral("auto");

// clang-format off
static constexpr Controls::Row rows[] = {
    {"engine",                "Engine",     "Engine",              onOrOff,              0, 1,   ""},
    {"speed",                 "Engine",     "Speed",               nullptr,              0, 125, "mph"},
    {"engine-speed",          "Engine",     "Engine speed",        nullptr,              0, 8000, "rpm"},
    {"gear",                  "Engine",     "Gear",                gears,                0, 7,   ""},
    {"engine-lamp",           "Engine",     "Check-engine lamp",   "unknown fine fault", 0, 2,   ""},
    {"coolant-temperature",   "Temperatures", "Coolant",           nullptr,              -40, 300, degrees},
    {"oil-temperature",       "Temperatures", "Oil",               nullptr,              -40, 300, degrees},
    {"transmission-temperature", "Temperatures", "Transmission",   nullptr,              -40, 300, degrees},
    {"intake-temperature",    "Temperatures", "Intake air",        nullptr,              -40, 300, degrees},
    {"outside-temperature",   "Temperatures", "Outside",           nullptr,              -40, 140, degrees},
    {"hood",                  "Doors",      "Hood",                opening,              0, 1,   ""},
    {"trunk",                 "Doors",      "Trunk",               opening,              0, 1,   ""},
    {"door-front-left",       "Doors",      "Front left",          opening,              0, 1,   ""},
    {"door-front-right",      "Doors",      "Front right",         opening,              0, 1,   ""},
    {"door-rear-left",        "Doors",      "Rear left",           opening,              0, 1,   ""},
    {"door-rear-right",       "Doors",      "Rear right",          opening,              0, 1,   ""},
    {"tire-front-left",       "Tires",      "Front left",          nullptr,              0, 60,  "psi cold"},
    {"tire-front-right",      "Tires",      "Front right",         nullptr,              0, 60,  "psi cold"},
    {"tire-rear-right",       "Tires",      "Rear right",          nullptr,              0, 60,  "psi cold"},
    {"tire-rear-left",        "Tires",      "Rear left",           nullptr,              0, 60,  "psi cold"},
    {"obstacle-front-left",   "Obstacles",  "Front left",          nullptr,              0, 4,   "of 4"},
    {"obstacle-front-middle-left",  "Obstacles", "Front, middle left",  nullptr,         0, 4,   "of 4"},
    {"obstacle-front-middle-right", "Obstacles", "Front, middle right", nullptr,         0, 4,   "of 4"},
    {"obstacle-front-right",  "Obstacles",  "Front right",         nullptr,              0, 4,   "of 4"},
    {"obstacle-rear-left",    "Obstacles",  "Rear left",           nullptr,              0, 4,   "of 4"},
    {"obstacle-rear-middle-left",   "Obstacles", "Rear, middle left",   nullptr,         0, 4,   "of 4"},
    {"obstacle-rear-middle-right",  "Obstacles", "Rear, middle right",  nullptr,         0, 4,   "of 4"},
    {"obstacle-rear-right",   "Obstacles",  "Rear right",          nullptr,              0, 4,   "of 4"},
    {"blind-left",            "Obstacles",  "Left blind spot",     onOrOff,              0, 1,   ""},
    {"blind-right",           "Obstacles",  "Right blind spot",    onOrOff,              0, 1,   ""},
    {"trim",                  "Equipment",  "Climate",             "full no-rear manual", 0, 2,  ""},
    {"prompt",                "Equipment",  "Voice",               "information recognition warning", 0, 2, ""},
};
// clang-format on
static_assert(std::size(rows) == Controls::Count);

const Controls::Row &Controls::row(Control control)
{
    return rows[control];
}

QStringList Controls::words(Control control)
{
    return QString::fromLatin1(rows[control].words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

Controls::Controls() : m_values(Count, Automatic) {}

int Controls::take(Control control)
{
    const int value = m_values[control];
    m_values[control] = Automatic;
    return value;
}

static QString expectation(Controls::Control control)
{
    const Controls::Row &row = Controls::row(control);
    return row.words ? Controls::words(control).join(QStringLiteral(", "))
                     : QStringLiteral("a number from %1 to %2").arg(row.lowest).arg(row.highest);
}

static bool readValue(Controls::Control control, const QString &text, int *value)
{
    const Controls::Row &row = Controls::row(control);
    bool isNumber = true;
    if (text == automatic)
        *value = Controls::Automatic;
    else if (row.words)
        *value = Controls::words(control).indexOf(text);
    else
        *value = text.toInt(&isNumber);
    return text == automatic || (isNumber && *value >= row.lowest && *value <= row.highest);
}

bool Controls::read(const QString &name, const QString &text, Control *control, int *value,
                    QString *error)
{
    const int index = findByName(rows, name, error);
    if (index < 0)
        return false;
    *control = Control(index);
    if (readValue(*control, text, value))
        return true;
    *error = QStringLiteral("expected %1 with %2 or auto, got '%3'")
                 .arg(name, expectation(*control), text);
    return false;
}

QString Controls::textOf(Control control, int value)
{
    if (value == Automatic)
        return automatic;
    return rows[control].words ? words(control).value(value) : QString::number(value);
}

} // namespace module
