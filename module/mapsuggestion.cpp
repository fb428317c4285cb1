#include "mapsuggestion.h"

#include "dbc/dbc.h"
#include "mapcheck.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace module {

// ---- Names --------------------------------------------------------------------------------------

/** Words of a signal's name: blanks part what has to occur, bars part alternatives. */
struct Hint
{
    Quantity quantity;
    const char *words; // capitals stand for themselves, small letters for both
};

// clang-format off
static constexpr Hint hints[] = {
    {Quantity::EngineSpeed,              "eng|crank speed|rpm"},
    {Quantity::EngineLoad,               "eng load"},
    {Quantity::CoolantTemperature,       "coolant|ECT temp|ECT"},
    {Quantity::IntakeTemperature,        "intake|IAT temp|IAT"},
    {Quantity::AmbientTemperature,       "ambient|outside temp"},
    {Quantity::OilTemperature,           "oil temp"},
    {Quantity::TransmissionTemperature,  "trans|gearbox temp"},
    {Quantity::VehicleSpeed,             "veh|uispeed speed"},
    {Quantity::Voltage,                  "batt volt"},
    {Quantity::HoodOpen,                 "hood|bonnet|frunk open|ajar|latchstatus"},
    {Quantity::TrunkOpen,                "trunk|liftgate|tailgate|boot open|ajar|latchstatus"},
    {Quantity::DoorFrontLeft,            "left|driver|FL front|driver|FL door|latchstatus open|ajar|stat"},
    {Quantity::DoorFrontRight,           "right|passenger|FR front|passenger|FR door|latchstatus open|ajar|stat"},
    {Quantity::DoorRearLeft,             "left|RL rear|RL door|latchstatus open|ajar|stat"},
    {Quantity::DoorRearRight,            "right|RR rear|RR door|latchstatus open|ajar|stat"},
    {Quantity::EngineLamp,               "MIL|checkengine lamp|MIL|light|warn"},
    {Quantity::TirePressureFrontLeft,    "left|FL front|FL press tire|tyre|TPMS"},
    {Quantity::TirePressureFrontRight,   "right|FR front|FR press tire|tyre|TPMS"},
    {Quantity::TirePressureRearRight,    "right|RR rear|RR press tire|tyre|TPMS"},
    {Quantity::TirePressureRearLeft,     "left|RL rear|RL press tire|tyre|TPMS"},
    {Quantity::TireTemperatureFrontLeft,  "left|FL front|FL temp tire|tyre|TPMS"},
    {Quantity::TireTemperatureFrontRight, "right|FR front|FR temp tire|tyre|TPMS"},
    {Quantity::TireTemperatureRearRight,  "right|RR rear|RR temp tire|tyre|TPMS"},
    {Quantity::TireTemperatureRearLeft,   "left|RL rear|RL temp tire|tyre|TPMS"},
    {Quantity::BeltDriver,               "driver buckle|belt"},
    {Quantity::BeltPassenger,            "passenger buckle|belt"},
    {Quantity::Heading,                  "heading veh|gps|compass"},
    {Quantity::ClimateAc,                "hvac|climate acrun|acactive|aircond"},
    {Quantity::ClimateRecirculation,     "hvac|climate recirc"},
    {Quantity::TemperatureLeft,          "hvac|climate temp set left|driver"},
    {Quantity::TemperatureRight,         "hvac|climate temp set right|passenger"},
    {Quantity::BlindSpotLeft,            "blind left"},
    {Quantity::BlindSpotRight,           "blind right"},
};
// clang-format on

static bool hasWord(const QString &name, const QString &word)
{
    const bool isCapital = word == word.toUpper();
    return name.contains(word, isCapital ? Qt::CaseSensitive : Qt::CaseInsensitive);
}

static bool fits(const QString &name, const Hint &hint)
{
    const QStringList groups = QString::fromLatin1(hint.words).split(QLatin1Char(' '));
    return std::all_of(groups.begin(), groups.end(), [&name](const QString &group) {
        const QStringList words = group.split(QLatin1Char('|'));
        return std::any_of(words.begin(), words.end(),
                           [&name](const QString &word) { return hasWord(name, word); });
    });
}

// ---- Units --------------------------------------------------------------------------------------

struct Conversion
{
    const char *from; // as DBC files write it, in lower case
    Unit to;
    const char *math;
};

static constexpr Conversion conversions[] = {
    {"bar", Unit::Kilopascal, "x * 100"},     {"psi", Unit::Kilopascal, "x * 6.894757"},
    {"f", Unit::Celsius, "(x - 32) * 5 / 9"}, {"degf", Unit::Celsius, "(x - 32) * 5 / 9"},
    {"k", Unit::Celsius, "x - 273.15"},       {"mph", Unit::KilometresPerHour, "x * 1.609344"},
    {"mv", Unit::Volt, "x / 1000"},           {"cm", Unit::Metre, "x / 100"},
    {"mm", Unit::Metre, "x / 1000"},
};

static const Conversion *conversionFor(Quantity quantity, const QString &dbcUnit)
{
    const QString unit = dbcUnit.trimmed().toLower();
    for (const Conversion &row : conversions) {
        if (row.to == quantityInfo(quantity).unit && unit == QLatin1String(row.from))
            return &row;
    }
    return nullptr;
}

// ---- Value names --------------------------------------------------------------------------------

/** Whether a value's name stands for true or false; the names for false contain those for true. */
static std::optional<bool> meaningOf(const QString &name)
{
    static const QStringList falseWords = {"UNBUCKLED", "INACTIVE", "CLOSED", "OFF",   "FALSE",
                                           "NOT_",      "NO_",      "NORMAL", "FRESH", "UNLATCHED"};
    static const QStringList trueWords = {"OPEN", "AJAR", "BUCKLED", "ACTIVE", "WARN",
                                          "TRUE", "YES",  "RECIRC",  "LOW"};
    const QString text = name.toUpper();
    const auto occurs = [&text](const QString &word) { return text.contains(word); };
    if (std::any_of(falseWords.begin(), falseWords.end(), occurs))
        return false;
    const bool isTrue = std::any_of(trueWords.begin(), trueWords.end(), occurs) ||
                        text == QLatin1String("ON") || text.endsWith(QLatin1String("_ON"));
    return isTrue ? std::optional(true) : std::nullopt;
}

static QJsonObject mappingRow(const QJsonValue &from, bool to)
{
    return {{"from", from}, {"to", to}};
}

// ---- The map ------------------------------------------------------------------------------------

/** An entry of the map, and why a person should look at it. */
struct Suggestion
{
    QString signal;
    QJsonObject transform;
    QStringList doubts;
};

static void suggestFlag(const DbcSignal &field, Suggestion *suggestion)
{
    QJsonArray rows;
    bool has[2] = {false, false};
    for (const DbcValue &value : field.values) {
        if (const auto meaning = meaningOf(value.name)) {
            rows.append(mappingRow(value.name, *meaning));
            has[*meaning] = true;
        }
    }
    if (field.values.isEmpty() || !has[0] || !has[1]) {
        rows = {mappingRow(0, false), mappingRow(1, true)};
        suggestion->doubts.append(QStringLiteral("0 is taken for false and 1 for true"));
    }
    suggestion->transform = {{"mapping", rows}};
}

static void suggestNumber(Quantity quantity, const DbcSignal &field, Suggestion *suggestion)
{
    if (const Conversion *conversion = conversionFor(quantity, field.unit))
        suggestion->transform = {{"math", QLatin1String(conversion->math)}};
    if (field.unit.trimmed().isEmpty())
        suggestion->doubts.append(QStringLiteral("the signal has no unit; %1 is taken for it")
                                      .arg(unitName(quantityInfo(quantity).unit)));
}

static Suggestion suggestionFor(Quantity quantity, const DbcSignal &field)
{
    Suggestion suggestion{field.name, {}, {}};
    if (quantityInfo(quantity).unit == Unit::Flag)
        suggestFlag(field, &suggestion);
    else
        suggestNumber(quantity, field, &suggestion);
    return suggestion;
}

static bool isCandidate(const Hint &hint, const DbcSignal &field)
{
    return fits(field.name, hint) && (isUnitOf(hint.quantity, field.unit) ||
                                      conversionFor(hint.quantity, field.unit) != nullptr);
}

/** Of several signals the one with the fewest doubts, then with the shortest name. */
static std::optional<Suggestion> bestFor(const Hint &hint, const Dbc &dbc)
{
    QVector<Suggestion> found;
    for (const DbcMessage &message : dbc.messages()) {
        for (const DbcSignal &field : message.fields) {
            if (isCandidate(hint, field))
                found.append(suggestionFor(hint.quantity, field));
        }
    }
    if (found.isEmpty())
        return std::nullopt;
    std::stable_sort(found.begin(), found.end(), [](const Suggestion &a, const Suggestion &b) {
        return std::make_pair(a.doubts.size(), a.signal.size()) <
               std::make_pair(b.doubts.size(), b.signal.size());
    });
    Suggestion best = found.constFirst();
    if (found.size() > 1)
        best.doubts.append(QStringLiteral("%1 signals have such a name, such as %2")
                               .arg(found.size())
                               .arg(found.at(1).signal));
    return best;
}

static QJsonObject entryFor(const Suggestion &suggestion)
{
    static constexpr int intervalMs = 100;
    QJsonObject rule = {{"signal", suggestion.signal}, {"interval_ms", intervalMs}};
    if (!suggestion.transform.isEmpty())
        rule.insert("transform", suggestion.transform);
    QJsonObject entry = {{"dbc2vss", rule}};
    if (!suggestion.doubts.isEmpty())
        entry.insert("comment",
                     QStringLiteral("doubtful: ") + suggestion.doubts.join(QStringLiteral("; ")));
    return entry;
}

std::optional<QStringList> suggestMap(const QString &dbcPath, QString *error)
{
    const auto dbc = Dbc::read(dbcPath, error);
    if (!dbc)
        return std::nullopt;
    QJsonObject map;
    for (const Hint &hint : hints) {
        if (const auto best = bestFor(hint, *dbc))
            map.insert(QLatin1String(quantityInfo(hint.quantity).path), entryFor(*best));
    }
    if (map.isEmpty()) {
        *error = QStringLiteral("%1: expected signals whose names and units tell what they are, "
                                "found none in %2")
                     .arg(dbcPath)
                     .arg(dbc->signalCount());
        return std::nullopt;
    }
    return QString::fromUtf8(QJsonDocument(map).toJson()).trimmed().split(QLatin1Char('\n'));
}

} // namespace module
