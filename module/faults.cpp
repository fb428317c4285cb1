#include "faults.h"

#include <algorithm>
#include <climits>

namespace module {

struct FaultRow
{
    const char *name;
    double usual;
    double most;
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
    {"range",      0.1,  1,    false, "have a value beyond any range"},
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

double Faults::usualValue(Kind kind)
{
    return rows[kind].usual;
}

double Faults::greatestValue(Kind kind)
{
    return rows[kind].most;
}

Faults::Faults(quint32 seed) : m_seed(seed), m_random(seed) {}

void Faults::setSeed(quint32 seed)
{
    m_seed = seed;
    m_random.seed(seed);
}

bool Faults::add(const QString &fault, QString *error)
{
    const QString name = fault.section(QLatin1Char(':'), 0, 0);
    const auto row = std::find_if(std::begin(rows), std::end(rows), [&name](const FaultRow &known) {
        return name == QLatin1String(known.name);
    });
    if (row == std::end(rows)) {
        QStringList names;
        for (const FaultRow &known : rows)
            names.append(QLatin1String(known.name));
        *error = QStringLiteral("expected one of %1, got '%2'")
                     .arg(names.join(QStringLiteral(", ")), name);
        return false;
    }
    double value = row->usual;
    if (fault.contains(QLatin1Char(':'))) {
        const QString text = fault.section(QLatin1Char(':'), 1);
        bool isNumber = false;
        value = text.toDouble(&isNumber);
        if (!isNumber || !(value >= 0 && value <= row->most)) {
            *error = QStringLiteral("expected %1 with a number from 0 to %2, got '%3'")
                         .arg(name)
                         .arg(row->most)
                         .arg(text);
            return false;
        }
    }
    m_values[row - rows] = value;
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

Faults Faults::anew() const
{
    Faults faults(m_seed);
    std::copy(std::begin(m_values), std::end(m_values), std::begin(faults.m_values));
    return faults;
}

bool Faults::strikes(Kind kind)
{
    if (m_values[kind] <= 0)
        return false;
    const double drawn = double(m_random()) / double(std::mt19937::max());
    const bool struck = drawn <= m_values[kind];
    m_struck[kind] += struck;
    return struck;
}

bool Faults::isDown(qint64 ms) const
{
    if (double(ms) < m_values[LateStart] * 1000)
        return true;
    const auto everyMs = qint64(m_values[Restart] * 1000);
    return everyMs > 0 && ms >= everyMs && ms % everyMs < restartTakesMs;
}

static bool canBeCut(const QVariant &value)
{
    const int type = value.userType();
    return type == QMetaType::QString || type == QMetaType::QByteArray ||
           type == QMetaType::QStringList || type == QMetaType::QVariantList ||
           type == qMetaTypeId<QList<int>>();
}

void Faults::truncate(QVariant *value)
{
    const auto cut = [this](auto container) {
        if (!container.isEmpty())
            container = container.mid(0, below(container.size()));
        return container;
    };
    const int type = value->userType();
    if (type == QMetaType::QString)
        *value = cut(value->toString());
    else if (type == QMetaType::QByteArray)
        *value = cut(value->toByteArray());
    else if (type == QMetaType::QStringList)
        *value = QStringList(cut(value->toStringList()));
    else if (type == QMetaType::QVariantList)
        *value = cut(value->toList());
    else
        *value = QVariant::fromValue(cut(value->value<QList<int>>()));
}

static QVariant beyond(const QVariant &value)
{
    const int type = value.userType();
    if (type == QMetaType::UChar)
        return QVariant::fromValue(uchar(UCHAR_MAX));
    if (type == QMetaType::Int)
        return INT_MAX;
    if (type == QMetaType::QString)
        return QStringLiteral("99999999999999");
    if (type == QMetaType::QByteArray)
        return QByteArray(value.toByteArray().size(), '\xff');
    if (type == qMetaTypeId<QList<int>>()) {
        QList<int> values = value.value<QList<int>>();
        std::fill(values.begin(), values.end(), INT_MIN);
        return QVariant::fromValue(values);
    }
    return value;
}

QVector<Emission> Faults::pass(Emission emission)
{
    if (isDown(emission.atMs)) {
        m_missed.say(emission.signal, emission.arguments, emission);
        ++m_struck[double(emission.atMs) < m_values[LateStart] * 1000 ? LateStart : Restart];
        return {};
    }
    QVector<Emission> passed = m_missed.inOrder();
    m_missed.clear();
    for (Emission &missed : passed)
        missed.atMs = emission.atMs;
    if (strikes(Silence))
        return passed;

    QVariantList &arguments = emission.arguments;
    QVector<int> cuttable;
    for (int i = 0; i < arguments.size(); ++i) {
        if (canBeCut(arguments[i]))
            cuttable.append(i);
    }
    if (!cuttable.isEmpty() && strikes(Truncate))
        truncate(&arguments[cuttable[below(cuttable.size())]]);
    if (!arguments.isEmpty() && strikes(OutOfRange)) {
        QVariant &chosen = arguments[below(arguments.size())];
        chosen = beyond(chosen);
    }
    if (m_heldBack.signal.isEmpty() && strikes(Reorder)) {
        m_heldBack = emission;
        return passed;
    }
    int times = 1;
    if (strikes(Flood))
        times = burst;
    else if (strikes(Duplicate))
        times = 2;
    for (int i = 0; i < times; ++i)
        passed.append(emission);
    if (!m_heldBack.signal.isEmpty()) {
        m_heldBack.atMs = emission.atMs;
        passed.append(m_heldBack);
        m_heldBack = {};
    }
    return passed;
}

void Faults::jump(qint64 ms)
{
    m_missed.clear();
    m_heldBack = {};
    m_random.seed(m_seed ^ quint32(ms));
}

QJsonObject Faults::statistics() const
{
    QJsonObject struck;
    for (int kind = 0; kind < KindCount; ++kind) {
        if (m_values[kind] > 0 || m_struck[kind] > 0)
            struck.insert(QLatin1String(rows[kind].name), m_struck[kind]);
    }
    return struck;
}

} // namespace module
