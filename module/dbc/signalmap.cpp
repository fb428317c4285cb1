#include "signalmap.h"

#include "linereader.h"
#include "textfile.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace module {

static const QString entryKey = QStringLiteral("dbc2vss");

/** Names go into messages, and one that is not printable is none of a signal or a path either. */
static bool isName(const QString &text)
{
    static constexpr int longest = 200;
    return !text.isEmpty() && text.size() <= longest &&
           std::all_of(text.begin(), text.end(), [](QChar c) {
               return c.unicode() < 0x80 && (c.isLetterOrNumber() || c == '_' || c == '.');
           });
}

// ---- One entry ----------------------------------------------------------------------------------

/** Reads one entry. The first thing that is not as expected is the error. */
class MapEntryReader
{
public:
    MapEntryReader(const QString &path, const QJsonObject &json) : m_json(json)
    {
        m_entry.path = path;
    }

    bool read();
    const MapEntry &entry() const { return m_entry; }
    const QString &error() const { return m_error; }
    const QStringList &unknownKeys() const { return m_unknownKeys; }

private:
    bool readPacing();
    bool readTransform(const QJsonObject &transform);
    bool readMath(const QJsonValue &math);
    bool readMapping(const QJsonValue &mapping);
    void noteUnknown(const QJsonObject &object, const QStringList &known);
    bool fail(const QString &expected);

    QJsonObject m_json;
    MapEntry m_entry;
    QString m_error;
    QStringList m_unknownKeys;
};

bool MapEntryReader::fail(const QString &expected)
{
    m_error = QStringLiteral("expected ") + expected;
    return false;
}

void MapEntryReader::noteUnknown(const QJsonObject &object, const QStringList &known)
{
    for (const QString &key : object.keys()) {
        if (!known.contains(key))
            m_unknownKeys.append(excerpt(key.toUtf8()));
    }
}

bool MapEntryReader::read()
{
    noteUnknown(m_json, {"signal", "interval_ms", "on_change", "transform"});
    m_entry.signal = m_json.value("signal").toString();
    if (!isName(m_entry.signal))
        return fail(QStringLiteral("the name of a signal as 'signal'"));
    if (!readPacing())
        return false;
    const QJsonValue transform = m_json.value("transform");
    if (transform.isUndefined())
        return true;
    return transform.isObject() ? readTransform(transform.toObject())
                                : fail(QStringLiteral("an object as 'transform'"));
}

/** What states neither is taken once a second, what states a change only, as often as it comes. */
bool MapEntryReader::readPacing()
{
    static constexpr int usualIntervalMs = 1000;
    static constexpr double longestIntervalMs = 24 * 3600 * 1000.0;
    const QJsonValue interval = m_json.value("interval_ms");
    const QJsonValue onChange = m_json.value("on_change");
    if (!onChange.isUndefined() && !onChange.isBool())
        return fail(QStringLiteral("true or false as 'on_change'"));
    m_entry.onChange = onChange.toBool();
    const double ms = interval.toDouble(interval.isUndefined() ? 0 : -1);
    if (!(ms >= 0 && ms <= longestIntervalMs))
        return fail(QStringLiteral("milliseconds, up to a day, as 'interval_ms'"));
    m_entry.intervalMs = interval.isUndefined() && !m_entry.onChange ? usualIntervalMs : int(ms);
    return true;
}

bool MapEntryReader::readTransform(const QJsonObject &transform)
{
    noteUnknown(transform, {"math", "mapping"});
    if (transform.contains("math") == transform.contains("mapping"))
        return fail(QStringLiteral("either 'math' or 'mapping' in 'transform'"));
    return transform.contains("math") ? readMath(transform.value("math"))
                                      : readMapping(transform.value("mapping"));
}

bool MapEntryReader::readMath(const QJsonValue &math)
{
    QString error;
    if (!math.isString())
        return fail(QStringLiteral("a formula in x as 'math'"));
    m_entry.transform.math = Formula::compile(math.toString(), &error);
    return m_entry.transform.math || fail(QStringLiteral("a formula in x as 'math': ") + error);
}

bool MapEntryReader::readMapping(const QJsonValue &mapping)
{
    if (!mapping.isArray() || mapping.toArray().isEmpty())
        return fail(QStringLiteral("a list of 'from' and 'to' as 'mapping'"));
    const QJsonArray rows = mapping.toArray();
    for (int i = 0; i < rows.size(); ++i) {
        const QJsonObject row = rows.at(i).toObject();
        const QJsonValue from = row.value("from");
        const QJsonValue to = row.value("to");
        if (!from.isDouble() && !from.isString())
            return fail(
                QStringLiteral("a number or a value's name as 'from' of row %1").arg(i + 1));
        if (!to.isDouble() && !to.isBool() && !to.isString())
            return fail(
                QStringLiteral("a number, a text, true or false as 'to' of row %1").arg(i + 1));
        m_entry.transform.mapping.append({from.toVariant(), to.toVariant()});
    }
    return true;
}

// ---- The file -----------------------------------------------------------------------------------

/** Where two shapes are mixed, one path may stand twice. */
static QString duplicatePath(const QVector<MapEntry> &sorted)
{
    const auto found = std::adjacent_find(
        sorted.cbegin(), sorted.cend(),
        [](const MapEntry &left, const MapEntry &right) { return left.path == right.path; });
    return found == sorted.cend() ? QString() : found->path;
}

bool SignalMap::readNode(const QString &path, const QJsonObject &node, QString *error)
{
    if (node.contains(entryKey)) {
        if (!isName(path)) {
            *error = QStringLiteral("expected a path of letters, digits and dots, found '%1'")
                         .arg(excerpt(path.toUtf8()));
            return false;
        }
        MapEntryReader reader(path, node.value(entryKey).toObject());
        if (!reader.read()) {
            *error = QStringLiteral("%1: %2: %3").arg(path, entryKey, reader.error());
            return false;
        }
        for (const QString &key : reader.unknownKeys())
            m_remarks.append(QStringLiteral("%1: '%2' has no meaning here").arg(path, key));
        m_entries.append(reader.entry());
    }
    const QJsonObject children = node.value("children").toObject();
    for (auto it = children.constBegin(); it != children.constEnd(); ++it) {
        if (!readNode(path + QLatin1Char('.') + it.key(), it.value().toObject(), error))
            return false;
    }
    return true;
}

/** JSON errors are told by the byte; a person looks for the line. */
static QString jsonError(const QByteArray &content, const QJsonParseError &error)
{
    const int line = content.left(error.offset).count('\n') + 1;
    return QStringLiteral("line %1: expected JSON: %2").arg(line).arg(error.errorString());
}

std::optional<SignalMap> SignalMap::read(const QString &path, QString *error)
{
    const auto content = readTextFile(path, LargestFile, error);
    return content ? parse(*content, path, error) : std::nullopt;
}

std::optional<SignalMap> SignalMap::parse(const QByteArray &content, const QString &name,
                                          QString *error)
{
    QJsonParseError fault;
    QString found;
    const QJsonDocument document = QJsonDocument::fromJson(content, &fault);
    SignalMap map;
    if (fault.error != QJsonParseError::NoError)
        found = jsonError(content, fault);
    const QJsonObject root = document.object();
    for (auto it = root.constBegin(); it != root.constEnd() && found.isEmpty(); ++it)
        map.readNode(it.key(), it.value().toObject(), &found);
    std::sort(map.m_entries.begin(), map.m_entries.end(),
              [](const MapEntry &left, const MapEntry &right) { return left.path < right.path; });
    const QString twice = duplicatePath(map.m_entries);
    if (found.isEmpty() && !twice.isEmpty())
        found = twice + QStringLiteral(": expected one entry, found two");
    if (found.isEmpty() && map.m_entries.isEmpty())
        found = QStringLiteral("expected paths with '%1', as a tree or by path, found none")
                    .arg(entryKey);
    if (found.isEmpty())
        return map;
    *error = name + QStringLiteral(": ") + found;
    return std::nullopt;
}

} // namespace module
