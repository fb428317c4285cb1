#include "adapter/badanswers.h"

#include <algorithm>
#include <iterator>

namespace ecu {

using Kind = BadAnswers::Kind;

// clang-format off
static constexpr BadAnswers::Row rows[] = {
    {"NO DATA",            Kind::Instead},
    {"UNABLE TO CONNECT",  Kind::Instead},
    {"BUS INIT: ...ERROR", Kind::Instead},
    {"BUS BUSY",           Kind::Instead},
    {"BUS ERROR",          Kind::Instead},
    {"CAN ERROR",          Kind::Instead},
    {"STOPPED",            Kind::Instead},
    {"?",                  Kind::Instead},
    {"SEARCHING...",       Kind::Before},
    {"<RX ERROR",          Kind::InLine},
    {"<DATA ERROR",        Kind::InLine},
    {"BUFFER FULL",        Kind::AfterLine},
    {"half line",          Kind::HalfLine},
    {"echo",               Kind::Echo},
    {"version",            Kind::Version},
};
// clang-format on

QStringList BadAnswers::names()
{
    QStringList names;
    for (const Row &row : rows)
        names.append(QLatin1String(row.text));
    return names;
}

static const BadAnswers::Row *findRow(const QString &text)
{
    const auto *const row =
        std::find_if(std::begin(rows), std::end(rows), [&text](const BadAnswers::Row &candidate) {
            return text.compare(QLatin1String(candidate.text), Qt::CaseInsensitive) == 0;
        });
    return row == std::end(rows) ? nullptr : row;
}

/** A text may hold a colon of its own. */
bool BadAnswers::add(const QString &text, QString *error)
{
    if (const Row *row = findRow(text)) {
        m_wanted.append({*row, 1});
        return true;
    }
    const Row *row = findRow(text.section(QLatin1Char(':'), 0, -2));
    bool isNumber = false;
    const double share = text.section(QLatin1Char(':'), -1).toDouble(&isNumber);
    if (row && isNumber && share >= 0 && share <= 1) {
        m_wanted.append({*row, share});
        return true;
    }
    *error = row ? QStringLiteral("a share from 0 to 1 after '%1:'").arg(QLatin1String(row->text))
                 : QStringLiteral("one of '%1'").arg(names().join(QStringLiteral("', '")));
    return false;
}

bool BadAnswers::claimsTooMuch() const
{
    return std::any_of(m_wanted.begin(), m_wanted.end(),
                       [](const Wanted &wanted) { return wanted.row.kind == Kind::Version; });
}

BadAnswers::Row BadAnswers::next()
{
    Row found = {"", Kind::None};
    for (const Wanted &wanted : qAsConst(m_wanted)) { // each draws, whatever the others do
        const bool occurs = m_chance.occurs(wanted.share);
        if (occurs && found.kind == Kind::None && wanted.row.kind != Kind::Version)
            found = wanted.row;
    }
    return found;
}

} // namespace ecu
