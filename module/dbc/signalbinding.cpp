#include "signalbinding.h"

#include "linereader.h"

#include <algorithm>
#include <tuple>

namespace module {

static bool hasValue(const DbcSignal &signal, const QString &name)
{
    return std::any_of(signal.values.cbegin(), signal.values.cend(),
                       [&name](const DbcValue &value) { return value.name == name; });
}

static QStringList unknownValues(const MapEntry &entry, const DbcMessage &message,
                                 const DbcSignal &signal)
{
    QStringList remarks;
    for (const MappedValue &row : entry.transform.mapping) {
        const QString name = row.from.toString();
        if (row.from.type() == QVariant::String && !hasValue(signal, name))
            remarks.append(QStringLiteral("%1: expected a value's name of %2 in %3, found '%4'")
                               .arg(entry.path, signal.name, message.name, excerpt(name.toUtf8())));
    }
    return remarks;
}

static QString severalMessages(const MapEntry &entry, const Dbc &dbc,
                               const QVector<DbcPlace> &places)
{
    QStringList names;
    for (const DbcPlace &place : places)
        names.append(dbc.messages().at(place.message).name);
    return QStringLiteral("%1: %2 is in %3 messages, all of which are read: %4")
        .arg(entry.path, entry.signal)
        .arg(places.size())
        .arg(names.join(QStringLiteral(", ")));
}

static std::tuple<int, int, int> order(const SignalLink &link)
{
    return {link.place.message, link.place.signal, link.entry};
}

SignalBinding bindSignals(const SignalMap &map, const Dbc &dbc)
{
    SignalBinding binding;
    for (int i = 0; i < map.entries().size(); ++i) {
        const MapEntry &entry = map.entries().at(i);
        const QVector<DbcPlace> places = dbc.places(entry.signal);
        if (places.isEmpty())
            binding.missing.append(i);
        if (places.size() > 1)
            binding.remarks.append(severalMessages(entry, dbc, places));
        for (const DbcPlace &place : places) {
            const DbcMessage &message = dbc.messages().at(place.message);
            binding.remarks += unknownValues(entry, message, message.fields.at(place.signal));
            binding.links.append({i, place});
        }
    }
    std::sort(
        binding.links.begin(), binding.links.end(),
        [](const SignalLink &left, const SignalLink &right) { return order(left) < order(right); });
    return binding;
}

QString missingSignal(const MapEntry &entry)
{
    return QStringLiteral("%1: expected a signal of the DBC file, found '%2', which no message has")
        .arg(entry.path, entry.signal);
}

} // namespace module
