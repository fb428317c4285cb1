#include "troublecodes.h"

#include "obdservices.h"

namespace module {

using namespace obd;

static QString codeText(quint8 high, quint8 low)
{
    static constexpr char systems[] = "PCBU";
    return QStringLiteral("%1%2%3")
        .arg(QLatin1Char(systems[high >> 6]))
        .arg(high >> 4 & 3)
        .arg((high & 0xF) << 8 | low, 3, 16, QLatin1Char('0'))
        .toUpper();
}

/** On a CAN bus their number stands in front of them; on an older one there are three at a time. */
QStringList troubleCodes(const QByteArray &answer)
{
    if (byteAt(answer, 0) != storedCodesAnswer)
        return {};
    QStringList codes;
    for (int i = answer.size() % 2 == 0 ? 2 : 1; i + 1 < answer.size(); i += 2) {
        const bool isCode = answer.at(i) != 0 || answer.at(i + 1) != 0;
        if (isCode)
            codes.append(codeText(byteAt(answer, i), byteAt(answer, i + 1)));
    }
    return codes;
}

Emission troubleCodesText(const QStringList &codes)
{
    static constexpr int mostCodes = 6; // that fit
    const QString title =
        codes.isEmpty() ? QString() : QStringLiteral("Trouble codes: %1").arg(codes.size());
    const QString text = codes.mid(0, mostCodes).join(QStringLiteral(", "));
    return {0, "vehicleInfoText", {title, text}};
}

/** Whether a frame belongs to an answer of several frames, or is one with trouble codes. */
static bool isOfInterest(const QByteArray &data)
{
    return byteAt(data, 0) >> 4 != 0 || byteAt(data, 1) == storedCodesAnswer;
}

std::optional<QStringList> TroubleCodeReader::read(const CanFrame &frame)
{
    if (!isOfInterest(frame.data))
        return std::nullopt;
    const IsoTp::Addresses addresses = {0, frame.id, frame.isExtended};
    IsoTp &unit = m_connections.try_emplace(frame.id, addresses).first->second;
    unit.receive(frame, 0);
    unit.takeFrames(); // flow control: the tester of the log has sent its own
    unit.takeError();
    const QVector<QByteArray> messages = unit.takeMessages();
    if (messages.isEmpty())
        return std::nullopt;
    const QStringList before = all();
    for (const QByteArray &message : messages) {
        if (byteAt(message, 0) == storedCodesAnswer)
            m_codes[frame.id] = troubleCodes(message);
    }
    const QStringList now = all();
    return now == before ? std::nullopt : std::optional(now);
}

QStringList TroubleCodeReader::all() const
{
    QStringList codes;
    for (const QStringList &ofUnit : m_codes)
        codes += ofUnit;
    codes.removeDuplicates();
    return codes;
}

} // namespace module
