#include "bitfield.h"
#include "dbcreader.h"

#include <algorithm>
#include <limits>

/*
 * What a DBC file states about its signals further down: names of values, floating point, and what
 * selects a signal.
 */

namespace module {

static bool isNumber(std::string_view word)
{
    return !word.empty() && word.front() >= '0' && word.front() <= '9';
}

/** A message's identifier and one of its signals; no place, with a remark, where the file lacks it.
 */
bool DbcReader::readPlace(const char *statement, DbcPlace *place)
{
    static constexpr qint64 highest = std::numeric_limits<quint32>::max();
    const int line = m_scan.line();
    qint64 id = 0;
    QString name;
    if (!m_scan.integer(0, highest, &id, "a message's identifier") ||
        !m_scan.name(&name, "a signal's name"))
        return false;
    place->message = m_byId.find(busId(id));
    place->signal = m_fields.value({place->message, name}, -1);
    if (place->signal < 0 && !m_leftOut.contains(quint32(id)))
        remark(line, QStringLiteral("%1 names %2, a signal that message %3 lacks")
                         .arg(QLatin1String(statement), name)
                         .arg(id));
    return true;
}

DbcSignal &DbcReader::signalAt(const DbcPlace &place)
{
    return m_messages[place.message].fields[place.signal];
}

bool DbcReader::readValueTable()
{
    QString name;
    QVector<DbcValue> values;
    if (!m_scan.name(&name, "a table's name") || !readValues(&values))
        return false;
    m_tables.insert(name, values);
    return true;
}

/** In order, and with the sign that a file may have left out ("32768" for the lowest of 16 bits).
 */
static QVector<DbcValue> valuesFor(const DbcSignal &signal, QVector<DbcValue> values)
{
    const quint64 mask = ~quint64(0) >> (64 - signal.length);
    for (DbcValue &value : values) {
        if (value.raw > 0 && quint64(value.raw) <= mask)
            value.raw = withSign(quint64(value.raw), signBit(signal));
    }
    std::stable_sort(values.begin(), values.end(), [](const DbcValue &left, const DbcValue &right) {
        return left.raw < right.raw;
    });
    return values;
}

/** Of a signal, or of an environment variable, which no frame carries. */
bool DbcReader::readValueNames()
{
    DbcPlace place;
    QString name;
    QVector<DbcValue> values;
    const bool isOfVariable = !isNumber(m_scan.peekWord());
    if (!(isOfVariable ? m_scan.name(&name, "a message's identifier") : readPlace("VAL_", &place)))
        return false;
    const std::string_view table = m_scan.peekWord();
    const bool isTable = !table.empty() && !isNumber(table);
    if (!(isTable ? readTableName(&values) : readValues(&values)))
        return false;
    if (place.signal >= 0)
        signalAt(place).values = valuesFor(signalAt(place), std::move(values));
    return true;
}

bool DbcReader::readTableName(QVector<DbcValue> *values)
{
    QString name;
    const int line = m_scan.line();
    if (!m_scan.name(&name, "a table's name") || !m_scan.symbol(';'))
        return false;
    if (!m_tables.contains(name))
        remark(line, QStringLiteral("VAL_ names %1, a table that the file lacks").arg(name));
    *values = m_tables.value(name);
    return true;
}

bool DbcReader::readValues(QVector<DbcValue> *values)
{
    while (!m_scan.skipIf(';')) {
        DbcValue value;
        if (!m_scan.rawValue(&value.raw) || !m_scan.text(&value.name, "a value's name in quotes"))
            return false;
        values->append(value);
    }
    return true;
}

bool DbcReader::readValueType()
{
    static constexpr struct
    {
        DbcSignal::Type type;
        int length;
    } kinds[] = {{DbcSignal::Type::Float, 32}, {DbcSignal::Type::Double, 64}};

    const int line = m_scan.line();
    DbcPlace place;
    qint64 kind = 0;
    if (!readPlace("SIG_VALTYPE_", &place))
        return false;
    m_scan.skipIf(':');
    if (!m_scan.integer(0, 2, &kind, "0 for whole numbers, 1 for float or 2 for double") ||
        !m_scan.symbol(';'))
        return false;
    if (place.signal < 0 || kind == 0)
        return true;
    DbcSignal &signal = signalAt(place);
    signal.type = kinds[kind - 1].type;
    return signal.length == kinds[kind - 1].length ||
           m_scan.failAt(line, QStringLiteral("expected %1 with %2 bits, found %3")
                                   .arg(signal.name)
                                   .arg(kinds[kind - 1].length)
                                   .arg(signal.length));
}

bool DbcReader::readMultiplexing()
{
    const int line = m_scan.line();
    DbcPlace place;
    QString name;
    QVector<DbcRange> ranges;
    if (!readPlace("SG_MUL_VAL_", &place) || !m_scan.name(&name, "a multiplexor's name") ||
        !readRanges(&ranges))
        return false;
    if (place.signal < 0)
        return true;
    DbcSignal &signal = signalAt(place);
    signal.multiplexor = m_fields.value({place.message, name}, -1);
    signal.selectedBy = ranges;
    return (signal.multiplexor >= 0 &&
            signalAt({place.message, signal.multiplexor}).isMultiplexor) ||
           m_scan.failAt(line, QStringLiteral("expected a multiplexor of %1, found %2")
                                   .arg(m_messages.at(place.message).name, name));
}

bool DbcReader::readRanges(QVector<DbcRange> *ranges)
{
    static constexpr qint64 highest = std::numeric_limits<qint64>::max();
    do {
        DbcRange range;
        if (!m_scan.integer(0, highest, &range.from, "the first value of a range") ||
            !m_scan.symbol('-') ||
            !m_scan.integer(range.from, highest, &range.to, "the last value of a range"))
            return false;
        ranges->append(range);
    } while (m_scan.skipIf(','));
    return m_scan.symbol(';');
}

} // namespace module
