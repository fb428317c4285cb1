#pragma once

#include <QByteArray>
#include <QString>

/** A frame as a line of a raw log. */
inline QByteArray rawLine(qint64 ms, quint32 id, const QByteArray &data)
{
    return QStringLiteral("(%1) can0 %2#")
               .arg(double(ms) / 1000.0, 0, 'f', 3)
               .arg(id, 3, 16, QLatin1Char('0'))
               .toLatin1()
               .toUpper()
               .replace("CAN0", "can0") +
           data.toHex().toUpper() + '\n';
}
