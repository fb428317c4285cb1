#include "canlog.h"

#include <QDateTime>

namespace module {

static constexpr qint64 usPerMs = 1000;
static constexpr qint64 usPerSecond = 1000000;

QByteArray candumpLine(qint64 timeUs, const CanFrame &frame)
{
    static constexpr int shortDigits = 3;
    static constexpr int longDigits = 8;
    static constexpr int longest = 8; // of a frame without CAN FD
    const QByteArray id = QByteArray::number(frame.id, 16)
                              .rightJustified(frame.isExtended ? longDigits : shortDigits, '0');
    const QByteArray mark = frame.data.size() > longest ? "##0" : "#";
    const QByteArray micros = QByteArray::number(timeUs % usPerSecond).rightJustified(6, '0');
    return '(' + QByteArray::number(timeUs / usPerSecond) + '.' + micros + ") can0 " +
           (id + mark + frame.data.toHex()).toUpper() + '\n';
}

CanLog::CanLog(const QString &path, const output::InputFiles &inputs)
    : m_file(path, {}, inputs), m_startUs(QDateTime::currentMSecsSinceEpoch() * usPerMs)
{
    m_clock.start();
}

CanLog::~CanLog()
{
    flush();
    m_file.finish();
}

void CanLog::add(const CanFrame &frame)
{
    m_lines += candumpLine(m_startUs + m_clock.nsecsElapsed() / usPerMs, frame);
}

void CanLog::flush()
{
    if (!m_lines.isEmpty() && m_file.isOpen())
        m_file.write(m_lines);
    m_lines.resize(0);
}

} // namespace module
