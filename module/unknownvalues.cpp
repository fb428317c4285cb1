#include "unknownvalues.h"

#include "adaptorlink.h"
#include "values.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace module {

struct Unknown
{
    const char *signal;
    const char *arguments; // as a recording has them
    const char *otherForm; // of the same value; may be null
};

// Without these the pages would keep what their forms or another drive left there: a pressure, a
// voltage, a gear. The order matters: the pressures carry the engine lamp's state as their fifth
// text, so the lamp's own signal comes after them; the info text covers the top-bar text, so it is
// cleared first.
// Compass, seat belt and gear position are not drawn; climate has no payload for "unknown".
// clang-format off
static constexpr Unknown rows[] = {
    {"gaugeTitlesNotify",           R"([["Tachometer", "Transmission Temp", "Coolant Temp", "Intake Air Temp", "Engine Calculated Load"]])", nullptr},
    {"gaugeGraphicalSettingNotify", R"(["0101010101", "0000000000"])",           nullptr},
    {"centerGaugeValueNotify",      R"(["--", "", 0])",                          nullptr},
    {"gaugeTLValueNotify",          R"(["--", 0])",                              "gaugeTLValueDualNotify"},
    {"gaugeTRValueNotify",          R"(["--", 0])",                              "gaugeTRValueDualNotify"},
    {"gaugeBLValueNotify",          R"(["--", 0])",                              "gaugeBLValueDualNotify"},
    {"gaugeBRValueNotify",          R"(["--", 0])",                              "gaugeBRValueDualNotify"},
    {"peakIndicatorNotify",         R"([0])",                                    nullptr},
    {"shifterArrowIndicatorNotify", R"([0])",                                    nullptr},
    {"gauTopBarTextNotify",         R"([""])",                                   nullptr},
    {"doorStatus",                  R"([0])",                                    nullptr},
    {"batteryVoltage",              R"(["--"])",                                 nullptr},
    {"tirePressureStatus",          R"([32, 0, ["--", "--", "--", "--", "0"]])", nullptr},
    {"tireTemperatureStatus",       R"([32, 0, ["--", "--", "--", "--"]])",      nullptr},
    {"checkEngineStatus",           R"([0])",                                    nullptr},
    {"vehicleInfoText",             R"(["", ""])",                               nullptr},
    {"vehTopBarText",               R"([""])",                                   nullptr},
    {"parkingDistanceRear",         R"(["0000"])",                               nullptr},
    {"parkingTopBarText",           R"([""])",                                   nullptr},
    {"TimeInfo",                    R"([["-", "-", "-", "-", "-", "-", "-", "-", "-", "-", "-", "-"]])", nullptr},
};
// clang-format on

static QVariantList argumentsOf(const Unknown &row)
{
    const QMetaMethod method = moduleSignal(row.signal).method;
    const QJsonArray values = QJsonDocument::fromJson(row.arguments).array();
    QVariantList arguments;
    for (int i = 0; i < values.size(); ++i)
        arguments.append(fromJson(values[i], method.parameterType(i)));
    return arguments;
}

QVector<Emission> unknownValues(const QSet<QByteArray> &reported)
{
    QVector<Emission> values;
    for (const Unknown &row : rows) {
        if (!reported.contains(row.signal) && !reported.contains(row.otherForm))
            values.append({0, row.signal, argumentsOf(row)});
    }
    return values;
}

Emission unknownValue(const QByteArray &signal)
{
    for (const Unknown &row : rows) {
        if (signal == row.signal || signal == row.otherForm)
            return {0, row.signal, argumentsOf(row)};
    }
    return {};
}

} // namespace module
