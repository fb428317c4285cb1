#include "mapcheck.h"

#include "pagefindings.h"

#include <algorithm>

namespace module {

QVector<Quantity> shownQuantities(const SignalMap &map, const SignalBinding &binding)
{
    QVector<Quantity> quantities(map.entries().size(), Quantity::Count);
    QVector<int> ranks(int(Quantity::Count), std::numeric_limits<int>::max());
    QVector<int> best(int(Quantity::Count), -1); // entry
    for (int entry = 0; entry < map.entries().size(); ++entry) {
        const QString path = map.entries().at(entry).path;
        const Quantity quantity = quantityOf(path);
        if (quantity == Quantity::Count || binding.missing.contains(entry))
            continue;
        const int rank = pathsOf(quantity).indexOf(path);
        if (rank >= ranks.at(int(quantity)))
            continue;
        ranks[int(quantity)] = rank;
        best[int(quantity)] = entry;
    }
    for (int quantity = 0; quantity < best.size(); ++quantity) {
        if (best.at(quantity) >= 0)
            quantities[best.at(quantity)] = Quantity(quantity);
    }
    return quantities;
}

// clang-format off
/** How DBC files write a unit, in lower case. */
struct UnitAlias
{
    Unit unit;
    const char *names; // apart by blanks
};

static constexpr UnitAlias unitAliases[] = {
    {Unit::Rpm,               "rpm 1/min u/min min-1"},
    {Unit::Percent,           "% percent"},
    {Unit::Celsius,           "c \u00B0c degc celsius deg_c"},
    {Unit::KilometresPerHour, "km/h kph kmh"},
    {Unit::Volt,              "v volt volts"},
    {Unit::Kilopascal,        "kpa"},
    {Unit::LitresPerHour,     "l/h"},
    {Unit::Degrees,           "deg degrees \u00B0"},
    {Unit::Metre,             "m"},
};
// clang-format on

bool isUnitOf(Quantity quantity, const QString &dbcUnit)
{
    const Unit unit = quantityInfo(quantity).unit;
    if (dbcUnit.trimmed().isEmpty())
        return true;
    for (const UnitAlias &alias : unitAliases) {
        if (alias.unit == unit)
            return QString::fromUtf8(alias.names)
                .split(QLatin1Char(' '))
                .contains(dbcUnit.trimmed().toLower());
    }
    return false;
}

/** Where the numbers are taken as they are, units must agree. */
static QString unitRemark(const MapEntry &entry, Quantity quantity, const QString &dbcUnit)
{
    const bool isPlain = !entry.transform.math && entry.transform.mapping.isEmpty();
    if (!isPlain || isUnitOf(quantity, dbcUnit))
        return {};
    const QString wanted = unitName(quantityInfo(quantity).unit);
    return QStringLiteral("; doubtful: the signal is in '%1', the path %2")
        .arg(dbcUnit, wanted.isEmpty() ? QStringLiteral("has no unit")
                                       : QStringLiteral("in '%1'").arg(wanted));
}

/** What one path comes to. */
static QString pathLine(const MapEntry &entry, Quantity shown, const QString &dbcUnit)
{
    const QString line = QStringLiteral("%1: %2 -> ").arg(entry.path, entry.signal);
    const QString page = pageOfPath(entry.path);
    if (page.isEmpty())
        return line + QStringLiteral("shown nowhere");
    const Quantity quantity = quantityOf(entry.path);
    if (shown == Quantity::Count)
        return line + QStringLiteral("not used: the map has a better path for %1")
                          .arg(QString::fromLatin1(quantityInfo(quantity).name).toLower());
    return line + page + unitRemark(entry, quantity, dbcUnit);
}

static QString unitOf(const Dbc &dbc, const QString &signal)
{
    const QVector<DbcPlace> places = dbc.places(signal);
    if (places.isEmpty())
        return {};
    return dbc.messages().at(places[0].message).fields.at(places[0].signal).unit;
}

std::optional<QStringList> checkMap(const QString &dbcPath, const QString &mapPath, QString *error)
{
    const auto dbc = Dbc::read(dbcPath, error);
    const auto map = dbc ? SignalMap::read(mapPath, error) : std::nullopt;
    if (!map)
        return std::nullopt;
    const SignalBinding binding = bindSignals(*map, *dbc);
    const QVector<Quantity> shown = shownQuantities(*map, binding);
    QVector<bool> present(int(Quantity::Count), false);
    QStringList lines;
    for (int i = 0; i < map->entries().size(); ++i) {
        const MapEntry &entry = map->entries().at(i);
        if (shown.at(i) != Quantity::Count)
            present[int(shown.at(i))] = true;
        lines.append(binding.missing.contains(i)
                         ? missingSignal(entry)
                         : pathLine(entry, shown.at(i), unitOf(*dbc, entry.signal)));
    }
    return lines + pageFindings(present) + binding.remarks + map->remarks() + dbc->remarks();
}

} // namespace module
