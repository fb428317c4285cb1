#pragma once

#include "idtable.h"

#include <QHash>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

namespace module {

/** A name for one raw value of a signal. */
struct DbcValue
{
    qint64 raw = 0;
    QString name;
};

/** Values of a multiplexor that select a signal, both ends included. */
struct DbcRange
{
    qint64 from = 0;
    qint64 to = 0;

    bool contains(qint64 value) const { return value >= from && value <= to; }
};

/** The name of a raw value; empty where it has none. @param values  in order of the raw values */
QString valueName(const QVector<DbcValue> &values, qint64 raw);

/** A signal: where its bits lie in a message, and what they mean. */
struct DbcSignal
{
    enum class ByteOrder : quint8 { LittleEndian, BigEndian };
    enum class Type : quint8 { Unsigned, Signed, Float, Double };

    QString name;
    QString unit;
    int startBit = 0; ///< the lowest bit, in big-endian order the highest, bytes counted by eight
    int length = 0;   ///< in bits, 1 to 64
    ByteOrder byteOrder = ByteOrder::LittleEndian;
    Type type = Type::Unsigned;
    double factor = 1;
    double offset = 0;
    double minimum = 0;
    double maximum = 0; ///< no limits are stated where both are 0

    bool isMultiplexor = false;
    int multiplexor = -1;         ///< the signal of the same message that selects this one
    QVector<DbcRange> selectedBy; ///< by which values; empty for a signal that is always there

    QVector<DbcValue> values; ///< in order of the raw values
    int line = 0;             ///< of the file
};

/** A message: a frame's identifier and the signals in its data. */
struct DbcMessage
{
    /** Set in the identifiers of 29 bits, in DBC files as in the kernel's frames. */
    static constexpr quint32 extendedFlag = 0x80000000;

    quint32 id = 0;
    QString name;
    int length = 0; ///< in bytes, 0 to 64
    QVector<DbcSignal> fields;
    int line = 0;

    /** The index of a signal; -1 when this message has none of this name. */
    int indexOf(const QString &signal) const;
};

/** A signal of a message, both by index. */
struct DbcPlace
{
    int message = -1;
    int signal = -1;
};

/** The messages on a bus, as a DBC file describes them. */
class Dbc
{
public:
    static constexpr qint64 LargestFile = 64 << 20;
    static constexpr int LongestFrame = 64;
    static constexpr int MostSignals = 4096; ///< of one message

    /**
     * Reads a file. What is wrong but leaves the rest usable is a remark.
     * @param error  one line that names file and line, when it cannot be used
     */
    static std::optional<Dbc> read(const QString &path, QString *error);
    /** The same from a file's content. @param name  stands before the line in an error */
    static std::optional<Dbc> parse(const QByteArray &content, const QString &name, QString *error);

    const QVector<DbcMessage> &messages() const { return m_messages; }
    /** What a person should know of the file: duplicates, overlaps and the like. */
    const QStringList &remarks() const { return m_remarks; }
    int signalCount() const;

    /** The index of a message; -1 for an identifier that no message has. */
    int indexOf(quint32 id) const { return m_byId.find(id); }
    /** Every place of a signal: several messages may carry one of the same name. */
    QVector<DbcPlace> places(const QString &signal) const;

private:
    Dbc(QVector<DbcMessage> messages, QStringList remarks);

    QVector<DbcMessage> m_messages;
    QStringList m_remarks;
    IdTable m_byId;
    QMultiHash<QString, QPair<int, int>> m_bySignal;
};

} // namespace module
