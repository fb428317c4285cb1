#include "plots/curve.h"

#include "session/journal.h"
#include "session/quantitylog.h"

#include <algorithm>

Curve::Curve(QString text, CurveName name) : m_text(std::move(text)), m_name(std::move(name))
{
    if (m_name.isQuantity())
        m_unit = module::unitName(module::quantityInfo(m_name.quantity).unit);
}

void Curve::catchUp(const Journal *journal, const QuantityLog &quantities)
{
    if (m_name.isQuantity())
        readValues(quantities);
    else
        readSignals(journal);
}

void Curve::readValues(const QuantityLog &quantities)
{
    const QVector<QuantityLog::Value> &values = quantities.values(m_name.quantity);
    const qint64 dropped = quantities.dropped(m_name.quantity);
    for (qint64 i = qMax<qint64>(0, m_next - dropped); i < values.size(); ++i)
        m_samples.append(values[int(i)].ms, values[int(i)].value);
    m_next = dropped + values.size();
    if (dropped > 0)
        m_samples.dropBefore(values.constFirst().ms);
}

void Curve::readSignals(const Journal *journal)
{
    const Journal::Total *total = journal->totalOf(Journal::Signal, m_name.signal);
    if (total) {
        const auto signal = int(total - journal->totals().constData());
        const QVector<int> &places = journal->ofKind(Journal::Signal);
        for (auto place =
                 std::lower_bound(places.cbegin(), places.cend(), m_next - journal->dropped());
             place != places.cend(); ++place) {
            const Journal::Entry &entry = journal->entries()[*place];
            if (entry.name != signal)
                continue;
            const std::optional<Reading> reading = readingOf(m_name, entry.arguments);
            m_samples.append(entry.ms,
                             reading ? reading->value : std::numeric_limits<double>::quiet_NaN());
            if (reading && !reading->unit.isEmpty())
                m_unit = reading->unit;
        }
    }
    m_next = journal->total();
    if (journal->dropped() > 0)
        m_samples.dropBefore(journal->beginMs());
}

void Curve::clear()
{
    m_samples = Samples();
    m_next = 0;
}
