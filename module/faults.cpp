#include "faults.h"

#include "namedrows.h"
#include "valuetype.h"

#include <algorithm>

namespace module {

struct FaultRow
{
    const char *name;
    double defaultValue;
    double highest;
    bool isInSeconds;
    const char *meaning;
};

// clang-format off
static constexpr FaultRow rows[Faults::KindCount] = {
    {"late-start", 5,    3600, true,  "nothing arrives before, then all of it at once"},
    {"silence",    0.2,  1,    false, "do not arrive"},
    {"flood",      0.02, 1,    false, "arrive sixty times in one burst"},
    {"duplicate",  0.2,  1,    false, "arrive twice"},
    {"reorder",    0.2,  1,    false, "arrive after the next one"},
    {"range",      0.1,  1,    false, "have a value out of range"},
    {"truncate",   0.1,  1,    false, "have a text or list cut short"},
    {"restart",    60,   3600, true,  "the module restarts every so often"},
};
// clang-format on
static constexpr int burst = 60;
static constexpr qint64 restartTakesMs = 3000;

const char *Faults::nameOf(Kind kind)
{
    return rows[kind].name;
}

const char *Faults::meaningOf(Kind kind)
{
    return rows[kind].meaning;
}

bool Faults::isInSeconds(Kind kind)
{
    return rows[kind].isInSeconds;
}

bool Faults::isIdle() const
{
    return m_missed.isEmpty() && m_heldBack.signal.isEmpty() &&
           std::all_of(std::begin(m_values), std::end(m_values),
                       [](double value) { return value <= 0; });
}

double Faults::highestValue(Kind kind)
{
    return rows[kind].highest;
}

Faults::Faults(quint32 seed) : m_seed(seed), m_random(seed) {}

void Faults::setSeed(quint32 seed)
{
    m_seed = seed;
    m_random.seed(seed);
}

static bool readValue(const FaultRow &row, const QString &text, double *value, QString *error)
{
    bool isNumber = false;
    *value = text.toDouble(&isNumber);
    if (isNumber && *value >= 0 && *value <= row.highest)
        return true;
    *error = QStringLiteral("expected %1 with a number from 0 to %2, got '%3'")
                 .arg(QLatin1String(row.name))
                 .arg(row.highest)
                 .arg(text);
    return false;
}

bool Faults::add(const QString &fault, QString *error)
{
    static constexpr QLatin1Char colon(':');
    const int kind = findByName(rows, fault.section(colon, 0, 0), error);
    if (kind < 0)
        return false;
    double value = rows[kind].defaultValue;
    if (fault.contains(colon) && !readValue(rows[kind], fault.section(colon, 1), &value, error))
        return false;
    m_values[kind] = value;
    return true;
}

QStringList Faults::stated() const
{
    QStringList texts;
    for (int kind = 0; kind < KindCount; ++kind) {
        if (m_values[kind] > 0)
            texts.append(
                QStringLiteral("%1:%2").arg(QLatin1String(rows[kind].name)).arg(m_values[kind]));
    }
    return texts;
}

Faults Faults::forNextDrive() const
{
    Faults faults(m_seed);
    std::copy(std::begin(m_values), std::end(m_values), std::begin(faults.m_values));
    return faults;
}

/** Draws whether a fault occurs now. */
bool Faults::occurs(Kind kind)
{
    if (m_values[kind] <= 0)
        return false;
    const double drawn = double(m_random()) / double(std::mt19937::max());
    const bool isHit = drawn <= m_values[kind];
    m_counts[kind] += isHit;
    return isHit;
}

bool Faults::isRestarting(qint64 ms) const
{
    const auto everyMs = qint64(m_values[Restart] * 1000);
    return everyMs > 0 && ms >= everyMs && ms % everyMs < restartTakesMs;
}

/** What was missed while the module was down. */
QVector<Emission> Faults::catchUp(qint64 ms)
{
    QVector<Emission> missed = m_missed.items();
    m_missed.clear();
    for (Emission &emission : missed)
        emission.atMs = ms;
    return missed;
}

void Faults::damage(QVariantList *arguments)
{
    QVector<int> cuttable;
    for (int i = 0; i < arguments->size(); ++i) {
        const ValueType *type = valueType(arguments->at(i).userType());
        if (type && type->truncated)
            cuttable.append(i);
    }
    if (!cuttable.isEmpty() && occurs(Truncate)) {
        QVariant &value = (*arguments)[cuttable[below(cuttable.size())]];
        const ValueType *type = valueType(value.userType());
        if (const int length = type->length(value))
            value = type->truncated(value, below(length));
    }
    if (!arguments->isEmpty() && occurs(OutOfRange)) {
        QVariant &value = (*arguments)[below(arguments->size())];
        const ValueType *type = valueType(value.userType());
        if (type && type->outOfRange)
            value = type->outOfRange(value);
    }
}

int Faults::repetitions()
{
    if (occurs(Flood))
        return burst;
    return occurs(Duplicate) ? 2 : 1;
}

QVector<Emission> Faults::pass(Emission emission)
{
    if (isStarting(emission.atMs) || isRestarting(emission.atMs)) {
        m_missed.add(emission.signal, emission.arguments, emission);
        ++m_counts[isStarting(emission.atMs) ? LateStart : Restart];
        return {};
    }
    QVector<Emission> passed = catchUp(emission.atMs);
    if (occurs(Silence))
        return passed;
    damage(&emission.arguments);
    if (m_heldBack.signal.isEmpty() && occurs(Reorder)) {
        m_heldBack = emission;
        return passed;
    }
    passed += QVector<Emission>(repetitions(), emission);
    if (!m_heldBack.signal.isEmpty()) {
        m_heldBack.atMs = emission.atMs;
        passed.append(m_heldBack);
        m_heldBack = {};
    }
    return passed;
}

void Faults::seek(qint64 ms)
{
    m_missed.clear();
    m_heldBack = {};
    m_random.seed(m_seed ^ quint32(ms));
}

QJsonObject Faults::statistics() const
{
    QJsonObject counts;
    for (int kind = 0; kind < KindCount; ++kind) {
        if (m_values[kind] > 0 || m_counts[kind] > 0)
            counts.insert(QLatin1String(rows[kind].name), m_counts[kind]);
    }
    return counts;
}

} // namespace module
