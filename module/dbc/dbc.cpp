#include "dbc.h"

#include "dbcreader.h"
#include "textfile.h"

#include <algorithm>
#include <numeric>

namespace module {

QString valueName(const QVector<DbcValue> &values, qint64 raw)
{
    const auto found =
        std::lower_bound(values.cbegin(), values.cend(), raw,
                         [](const DbcValue &value, qint64 wanted) { return value.raw < wanted; });
    return found != values.cend() && found->raw == raw ? found->name : QString();
}

int DbcMessage::indexOf(const QString &signal) const
{
    const auto found =
        std::find_if(fields.cbegin(), fields.cend(),
                     [&signal](const DbcSignal &field) { return field.name == signal; });
    return found == fields.cend() ? -1 : int(found - fields.cbegin());
}

Dbc::Dbc(QVector<DbcMessage> messages, QStringList remarks)
    : m_messages(std::move(messages)), m_remarks(std::move(remarks))
{
    for (int message = 0; message < m_messages.size(); ++message) {
        const DbcMessage &described = m_messages.at(message);
        m_byId.insert(described.id, message);
        for (int signal = 0; signal < described.fields.size(); ++signal)
            m_bySignal.insert(described.fields.at(signal).name, {message, signal});
    }
}

std::optional<Dbc> Dbc::read(const QString &path, QString *error)
{
    const auto content = readTextFile(path, LargestFile, error);
    return content ? parse(*content, path, error) : std::nullopt;
}

std::optional<Dbc> Dbc::parse(const QByteArray &content, const QString &name, QString *error)
{
    DbcReader reader(content);
    if (reader.read())
        return Dbc(reader.takeMessages(), reader.takeRemarks());
    *error = name + QStringLiteral(": ") + reader.error();
    return std::nullopt;
}

int Dbc::signalCount() const
{
    return std::accumulate(
        m_messages.cbegin(), m_messages.cend(), 0,
        [](int count, const DbcMessage &message) { return count + message.fields.size(); });
}

QVector<DbcPlace> Dbc::places(const QString &signal) const
{
    QVector<DbcPlace> places;
    for (auto it = m_bySignal.constFind(signal); it != m_bySignal.cend() && it.key() == signal;
         ++it)
        places.append({it->first, it->second});
    std::sort(places.begin(), places.end(), [](const DbcPlace &left, const DbcPlace &right) {
        return left.message < right.message;
    });
    return places;
}

} // namespace module
