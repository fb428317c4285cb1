#pragma once

#include "dbc.h"
#include "dbcscanner.h"

#include <QHash>
#include <QPair>
#include <QSet>

namespace module {

/** Reads the messages of a DBC file, once. */
class DbcReader
{
public:
    explicit DbcReader(const QByteArray &content);

    /** @return false with an error for a file that cannot be used */
    bool read();
    /** One line, with the line of the file. */
    const QString &error() const { return m_scan.error(); }
    QVector<DbcMessage> takeMessages() { return std::move(m_messages); }
    QStringList takeRemarks();

private:
    struct Statement;

    bool readStatement();
    bool skipStatement();
    bool skipNewSymbols();

    bool readMessage();
    bool readMessageHead(qint64 *id, DbcMessage *message);
    bool isUsable(qint64 id, const DbcMessage &message);
    bool readSignal();
    bool readSelection(DbcSignal *signal);
    bool readLayout(DbcSignal *signal);
    bool readScale(DbcSignal *signal);
    bool readReceivers();
    void keep(const DbcSignal &signal);

    bool readPlace(const char *statement, DbcPlace *place);
    bool readValueTable();
    bool readValueNames();
    bool readTableName(QVector<DbcValue> *values);
    bool readValues(QVector<DbcValue> *values);
    bool readValueType();
    bool readMultiplexing();
    bool readRanges(QVector<DbcRange> *ranges);

    static quint32 busId(qint64 id);
    DbcSignal &signalAt(const DbcPlace &place);
    bool finish();
    void remark(int line, const QString &text);

    DbcScanner m_scan;
    QVector<DbcMessage> m_messages;
    bool m_hasMessage = false;
    bool m_isLeavingOut = false; // the signals of a message that is left out
    QSet<quint32> m_leftOut;     // by identifier as the file has it
    IdTable m_byId;
    QSet<QString> m_names;
    QHash<QPair<int, QString>, int> m_fields; // by message and name
    QHash<QString, QVector<DbcValue>> m_tables;
    QStringList m_remarks;
    int m_furtherRemarks = 0;
};

} // namespace module
