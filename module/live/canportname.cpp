#include "canportname.h"

#include <QRegularExpression>

namespace module {

std::optional<CanPort> canPortOf(const QString &name)
{
    static constexpr int fastest = 10000000;
    static const QRegularExpression form(QStringLiteral("^([^:]+):([^?]+)(\\?bitrate=([0-9]+))?$"));
    const QRegularExpressionMatch match = form.match(name);
    const int bitrate = match.captured(4).toInt(); // 0 where there is none, or too many digits
    const bool isSound =
        match.hasMatch() && (match.captured(3).isEmpty() || (bitrate >= 1 && bitrate <= fastest));
    if (!isSound)
        return std::nullopt;
    return CanPort{match.captured(1), match.captured(2), bitrate};
}

} // namespace module
