#pragma once

#include "formula.h"

#include <QJsonObject>
#include <QStringList>
#include <QVariant>

namespace module {

/** One row of a map's table: the value, or the name of a value, that becomes another. */
struct MappedValue
{
    QVariant from; ///< a number or a name
    QVariant to;   ///< a number, true or false, or a text
};

/** What becomes of a signal's value: nothing, or a formula, or a table. */
struct SignalTransform
{
    std::optional<Formula> math;
    QVector<MappedValue> mapping;
};

/** A path with the signal that feeds it. */
struct MapEntry
{
    QString path;
    QString signal;
    int intervalMs = 0; ///< between two values, at least
    bool onChange = false;
    SignalTransform transform;
};

/**
 * A map from a DBC file's signals to the paths of VSS, COVESA's tree of vehicle signals: that
 * tree in JSON, or an object by path, with dbc2vss in those that a signal feeds.
 */
class SignalMap
{
public:
    static constexpr qint64 LargestFile = 64 << 20;

    /** @param error  one line that names the file and the path, when it cannot be used */
    static std::optional<SignalMap> read(const QString &path, QString *error);
    /** The same from a file's content. @param name  stands first in an error */
    static std::optional<SignalMap> parse(const QByteArray &content, const QString &name,
                                          QString *error);

    /** In order of the paths. */
    const QVector<MapEntry> &entries() const { return m_entries; }
    /** What is in the file and has no meaning here. */
    const QStringList &remarks() const { return m_remarks; }

private:
    bool readNode(const QString &path, const QJsonObject &node, QString *error);

    QVector<MapEntry> m_entries;
    QStringList m_remarks;
};

} // namespace module
