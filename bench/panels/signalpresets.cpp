#include "panels/signalpresets.h"

#include "scenario/scenarioline.h"

struct Preset
{
    const char *signal;
    const char *title;
    const char *arguments;           // as a scenario has them
    const char *followers = nullptr; // lines of a scenario, sent after it
};

// The pressures end up white, so a soft tire is seen by its temperature and by the info text.
static constexpr const char *softRearRight =
    "tireTemperatureStatus 40 0 [\"75F\", \"75F\", \"75F\", \"88F\"]\n"
    "vehicleInfoText \"Rear right tire\" \"pressure low\"";

// clang-format off
static constexpr Preset presets[] = {
    {"centerGaugeValueNotify",        "Idling",               R"("800" "RPM" 8)"},
    {"centerGaugeValueNotify",        "Near the red line",    R"("6400" "RPM" 64)"},
    {"centerGaugeValueNotify",        "No engine speed",      R"("65535" "RPM" 0)"},
    {"gaugeTitlesNotify",             "Five temperatures",    R"(["Tachometer", "Oil Temp", "Coolant Temp", "Intake Air Temp", "Load"])"},
    {"gaugeGraphicalSettingNotify",   "Needles",              R"("0101010101" "0000000000")"},
    {"gaugeGraphicalSettingNotify",   "Arcs",                 R"("0000000000" "0000000000")"},
    {"peakIndicatorTextNotify",       "Shift",                R"("SHIFT")"},
    {"peakIndicatorNotify",           "Lit",                  "1"},
    {"peakIndicatorNotify",           "Dark",                 "0"},
    {"Properties2TextInfo",           "A warm engine",        "[0, 14, 190, 203, 98, 24, 75, 75, 75, 75]"},
    {"Properties2TextInfo",           "Out of range",         "[0, 14, 251, -1, 255, 101, 0, 0, 0, 0]"},
    {"doorStatus",                    "All closed",           "0"},
    {"doorStatus",                    "All open",             "63"},
    {"doorStatus",                    "Driver's door",        "4"},
    {"batteryVoltage",                "Charging",             R"("14.2V")"},
    {"batteryVoltage",                "Nearly empty",         R"("10.9V")"},
    {"checkEngineStatus",             "Fault",                "2"},
    {"checkEngineStatus",             "Fine",                 "1"},
    {"checkEngineStatus",             "Unknown",              "0"},
    {"tirePressureStatus",            "All right",            R"(32 0 ["34 psi", "34 psi", "33 psi", "33 psi", "0"])"},
    {"tirePressureStatus",            "Soft, rear right",     R"(40 0 ["34 psi", "34 psi", "17 psi", "33 psi", "0"])", softRearRight},
    {"tirePressureStatus",            "Texts missing",        R"(32 0 ["34 psi"])"},
    {"tireTemperatureStatus",         "Warm, front left",     R"(33 0 ["121F", "93F", "88F", "90F"])"},
    {"vehicleInfoText",               "Check engine",         R"("Check engine" "Visit a workshop")"},
    {"vehicleInfoText",               "None",                 R"("" "")"},
    {"parkingDistanceRear",           "All clear",            R"("0000")"},
    {"parkingDistanceRear",           "Near, rear left",      R"("0504")"},
    {"parkingDistanceRear",           "Blind spot, left",     R"("0904")"},
    {"parkingDistanceRear",           "Unknown zone",         R"("0b00")"},
    {"parkingDistanceRear",           "Too short",            R"("07")"},
    {"parkingDistanceFront",          "Near, left",           R"("dd400000")"},
    {"parkingTopBarText",             "Distance",             R"("Rear 1.0 ft")"},
    {"NordaClimateCtrlStatusNotify",  "Off",                  "[0, 0, 0, 4, 0, 0, 70, 70, 1, 0, 0, 0, 0]"},
    {"NordaClimateCtrlStatusNotify",  "Cooling",              "[1, 1, 252, 4, 1, 0, 50, 62, 0, 19, 18, 1, 0]"},
    {"NordaClimateCtrlStatusNotify",  "Winter",               "[1, 2, 144, 1, 0, 3, 76, 95, 1, 3, 2, 0, 1]"},
    {"NordaConfigMenuTextInfo",       "A title",              R"([1, 0, 1] ["Settings"] [])"},
    {"NordaConfigMenuTextInfo",       "A row",                R"([2, 0, 2] ["Units"] [])"},
    {"NordaVerInfo",                  "3.12.7",               R"(["V", "3", "12", "7"])"},
    {"audioInterruptNotify",          "Voice information",    "2 3"},
    {"audioInterruptNotify",          "Warning tone",         "4 19"},
    {"audioInterruptNotify",          "Over",                 "0 0"},
};
// clang-format on

static QVariantList wordsOf(const QString &line)
{
    QVariantList words;
    QString error;
    if (!splitScenarioLine(line, &words, &error))
        qFatal("%s", qPrintable(error));
    return words;
}

QVector<SignalPreset> presetsOf(const QByteArray &signal)
{
    QVector<SignalPreset> found;
    for (const Preset &preset : presets) {
        if (signal != preset.signal)
            continue;
        SignalPreset row = {
            QString::fromLatin1(preset.title), wordsOf(QString::fromLatin1(preset.arguments)), {}};
        const QStringList lines =
            QString::fromLatin1(preset.followers).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (const QString &line : lines)
            row.followers.append(wordsOf(line));
        found.append(row);
    }
    return found;
}
