#include "dbcreader.h"

#include "bitfield.h"
#include "dbcmultiplexing.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>

namespace module {

static constexpr int mostRemarks = 100;

struct DbcReader::Statement
{
    std::string_view word;
    bool (DbcReader::*read)();
};

bool DbcReader::readStatement()
{
    // clang-format off
    static constexpr Statement statements[] = {
        {"SG_",          &DbcReader::readSignal},
        {"BO_",          &DbcReader::readMessage},
        {"VAL_",         &DbcReader::readValueNames},
        {"VAL_TABLE_",   &DbcReader::readValueTable},
        {"SIG_VALTYPE_", &DbcReader::readValueType},
        {"SG_MUL_VAL_",  &DbcReader::readMultiplexing},
        {"NS_",          &DbcReader::skipNewSymbols},
    };
    // clang-format on
    const std::string_view word = m_scan.peekWord();
    const auto found =
        std::find_if(std::begin(statements), std::end(statements),
                     [word](const Statement &statement) { return statement.word == word; });
    if (found == std::end(statements))
        return skipStatement();
    m_scan.skipToken();
    return (this->*found->read)();
}

static bool isKeyword(std::string_view word)
{
    // clang-format off
    static constexpr std::string_view keywords[] = {
        "SG_", "BO_", "CM_", "BA_", "VAL_", "VERSION", "NS_", "BS_", "BU_", "VAL_TABLE_",
        "SIG_VALTYPE_", "SG_MUL_VAL_", "BO_TX_BU_", "BA_DEF_", "BA_DEF_DEF_", "BA_REL_",
        "BA_DEF_REL_", "BA_DEF_DEF_REL_", "BU_SG_REL_", "BU_EV_REL_", "BU_BO_REL_", "EV_",
        "EV_DATA_", "ENVVAR_DATA_", "SIG_GROUP_", "SIG_TYPE_REF_", "SIGTYPE_VALTYPE_", "SGTYPE_",
        "SGTYPE_VAL_", "BA_DEF_SGTYPE_", "BA_SGTYPE_", "CAT_DEF_", "CAT_", "FILTER", "NS_DESC_",
    };
    // clang-format on
    return std::find(std::begin(keywords), std::end(keywords), word) != std::end(keywords);
}

/** Some statements end with a semicolon, others where the next one begins. */
bool DbcReader::skipStatement()
{
    if (!isKeyword(m_scan.peekWord()))
        return m_scan.fail(QStringLiteral("a statement such as BO_, SG_ or VAL_"));
    do {
        if (!m_scan.skipToken())
            return false;
    } while (!m_scan.isAtEnd() && !m_scan.skipIf(';') &&
             !(m_scan.isAtLineStart() && isKeyword(m_scan.peekWord())));
    return true;
}

/** The list of keywords that a file may use ends where its first section begins. */
bool DbcReader::skipNewSymbols()
{
    m_scan.skipIf(':');
    const auto isListed = [](std::string_view word) {
        return !word.empty() && word != "BS_" && word != "BU_" && word != "BO_" && word != "SG_";
    };
    while (isListed(m_scan.peekWord()))
        m_scan.skipToken();
    return true;
}

DbcReader::DbcReader(const QByteArray &content) : m_scan(content) {}

bool DbcReader::read()
{
    while (!m_scan.isAtEnd()) {
        if (!readStatement())
            return false;
    }
    return finish();
}

// ---- Messages and signals -----------------------------------------------------------------------

/** The sender's name that ends the line may be absent. */
bool DbcReader::readMessageHead(qint64 *id, DbcMessage *message)
{
    static constexpr qint64 highest = std::numeric_limits<quint32>::max();
    qint64 length = 0;
    message->line = m_scan.line();
    if (!m_scan.integer(0, highest, id, "a message's identifier") ||
        !m_scan.name(&message->name, "a message's name") || !m_scan.symbol(':') ||
        !m_scan.integer(0, 65535, &length, "a length in bytes"))
        return false;
    message->length = int(length);
    return readReceivers();
}

/** Identifiers above the 11 bits of the standard have 29, which the file should mark. */
quint32 DbcReader::busId(qint64 id)
{
    static constexpr qint64 highestStandard = 0x7FF;
    return quint32(id) | (id > highestStandard ? DbcMessage::extendedFlag : 0);
}

bool DbcReader::readMessage()
{
    qint64 id = 0;
    DbcMessage message;
    if (!readMessageHead(&id, &message))
        return false;
    message.id = busId(id);
    m_hasMessage = true;
    m_isLeavingOut = !isUsable(id, message);
    if (m_isLeavingOut) {
        m_leftOut.insert(quint32(id));
        return true;
    }
    if (message.id != id)
        remark(message.line, QStringLiteral("%1 is taken as an identifier of 29 bits").arg(id));
    if (m_names.contains(message.name))
        remark(message.line, QStringLiteral("another message is called %1 too").arg(message.name));
    m_names.insert(message.name);
    m_byId.insert(message.id, m_messages.size());
    m_messages.append(message);
    return true;
}

bool DbcReader::isUsable(qint64 id, const DbcMessage &message)
{
    // Signals that belong to no message are collected under this identifier.
    static constexpr qint64 noMessage = 0xC0000000;
    static constexpr quint32 known = 0x1FFFFFFF | DbcMessage::extendedFlag;
    if (id == noMessage)
        return false;
    QString reason;
    if (message.id & ~known)
        reason = QStringLiteral("expected an identifier of at most 29 bits, found %1").arg(id);
    else if (message.length > Dbc::LongestFrame)
        reason = QStringLiteral("expected at most 64 bytes, found %1").arg(message.length);
    else if (m_byId.find(message.id) >= 0)
        reason = QStringLiteral("%1 has the identifier %2 already")
                     .arg(m_messages.at(m_byId.find(message.id)).name)
                     .arg(id);
    if (!reason.isEmpty())
        remark(message.line,
               QStringLiteral("message %1 is left out: %2").arg(message.name, reason));
    return reason.isEmpty();
}

bool DbcReader::readSignal()
{
    DbcSignal signal;
    signal.line = m_scan.line();
    if (!m_hasMessage)
        return m_scan.fail(QStringLiteral("a message (BO_) before its signals"));
    if (!m_scan.name(&signal.name, "a signal's name") || !readSelection(&signal) ||
        !m_scan.symbol(':') || !readLayout(&signal) || !readScale(&signal) ||
        !m_scan.text(&signal.unit, "a unit in quotes") || !readReceivers())
        return false;
    if (!m_isLeavingOut)
        keep(signal);
    return m_isLeavingOut || m_messages.constLast().fields.size() <= Dbc::MostSignals ||
           m_scan.failAt(
               signal.line,
               QStringLiteral("expected at most %1 signals in a message").arg(Dbc::MostSignals));
}

/** M for a multiplexor, m and a number for what one selects, m, a number and M for both. */
bool DbcReader::readSelection(DbcSignal *signal)
{
    std::string_view word = m_scan.peekWord();
    if (word.empty())
        return true;
    static constexpr char expected[] = "M, or m and a number, or ':'";
    if (word.back() == 'M') {
        signal->isMultiplexor = true;
        word.remove_suffix(1);
    }
    if (!word.empty()) {
        qint64 value = 0;
        const char *end = word.data() + word.size();
        const auto result = std::from_chars(word.data() + 1, end, value);
        if (word.front() != 'm' || result.ec != std::errc() || result.ptr != end)
            return m_scan.fail(QLatin1String(expected));
        signal->selectedBy.append({value, value});
    }
    return m_scan.skipToken();
}

bool DbcReader::readLayout(DbcSignal *signal)
{
    qint64 start = 0;
    qint64 length = 0;
    qint64 order = 0;
    if (!m_scan.integer(0, 65535, &start, "a start bit") || !m_scan.symbol('|') ||
        !m_scan.integer(1, 65535, &length, "a length of at least 1 bit") || !m_scan.symbol('@') ||
        !m_scan.integer(0, 1, &order, "a byte order, 0 or 1"))
        return false;
    signal->startBit = int(start);
    signal->length = int(length);
    signal->byteOrder =
        order == 1 ? DbcSignal::ByteOrder::LittleEndian : DbcSignal::ByteOrder::BigEndian;
    if (m_scan.skipIf('+'))
        return true;
    signal->type = DbcSignal::Type::Signed;
    return m_scan.skipIf('-') || m_scan.fail(QStringLiteral("a sign, '+' or '-'"));
}

bool DbcReader::readScale(DbcSignal *signal)
{
    return m_scan.symbol('(') && m_scan.number(&signal->factor, "a factor") && m_scan.symbol(',') &&
           m_scan.number(&signal->offset, "an offset") && m_scan.symbol(')') &&
           m_scan.symbol('[') && m_scan.number(&signal->minimum, "a lowest value") &&
           m_scan.symbol('|') && m_scan.number(&signal->maximum, "a highest value") &&
           m_scan.symbol(']');
}

/** Names to the end of the line, with or without commas. Who sends and receives does not matter. */
bool DbcReader::readReceivers()
{
    for (m_scan.skipIf(','); !m_scan.isAtEnd() && !m_scan.isAtLineStart(); m_scan.skipIf(',')) {
        std::string_view name;
        if (!m_scan.word(&name, "the name of a node"))
            return false;
    }
    return true;
}

void DbcReader::keep(const DbcSignal &signal)
{
    DbcMessage &message = m_messages.last();
    const auto leaveOut = [&](const QString &reason) {
        remark(signal.line, QStringLiteral("signal %1 of %2 is left out: %3")
                                .arg(signal.name, message.name, reason));
    };
    const QPair<int, QString> key(m_messages.size() - 1, signal.name);
    if (signal.length > 64)
        return leaveOut(QStringLiteral("expected at most 64 bits, found %1").arg(signal.length));
    if (BitField(signal).endByte() > Dbc::LongestFrame)
        return leaveOut(QStringLiteral("it lies beyond 64 bytes"));
    if (m_fields.contains(key))
        return leaveOut(QStringLiteral("the message has one of this name already"));
    if (BitField(signal).endByte() > message.length)
        remark(signal.line, QStringLiteral("signal %1 does not fit into the %2 bytes of %3")
                                .arg(signal.name)
                                .arg(message.length)
                                .arg(message.name));
    m_fields.insert(key, message.fields.size());
    message.fields.append(signal);
}

// ---- The end of the file ------------------------------------------------------------------------

bool DbcReader::finish()
{
    if (m_messages.isEmpty())
        return m_scan.fail(QStringLiteral("at least one message (BO_)"));
    for (DbcMessage &message : m_messages) {
        if (const auto fault = resolveMultiplexing(&message))
            return m_scan.failAt(fault->line, fault->text);
        for (const DbcFinding &finding : overlaps(message))
            remark(finding.line, finding.text);
    }
    return true;
}

void DbcReader::remark(int line, const QString &text)
{
    if (m_remarks.size() < mostRemarks)
        m_remarks.append(QStringLiteral("line %1: %2").arg(line).arg(text));
    else
        ++m_furtherRemarks;
}

QStringList DbcReader::takeRemarks()
{
    if (m_furtherRemarks > 0)
        m_remarks.append(QStringLiteral("%1 further remarks").arg(m_furtherRemarks));
    return std::move(m_remarks);
}

} // namespace module
