#include "canlog.h"

namespace module {

static constexpr qint64 usPerSecond = 1000000;

QByteArray candumpLine(qint64 timeUs, const CanFrame &frame)
{
    static constexpr int shortDigits = 3;
    static constexpr int longDigits = 8;
    const QByteArray id = QByteArray::number(frame.id, 16)
                              .rightJustified(frame.isExtended ? longDigits : shortDigits, '0');
    const QByteArray mark = frame.data.size() > longestFrame ? "##0" : "#";
    const QByteArray micros = QByteArray::number(timeUs % usPerSecond).rightJustified(6, '0');
    return '(' + QByteArray::number(timeUs / usPerSecond) + '.' + micros + ") can0 " +
           (id + mark + frame.data.toHex()).toUpper() + '\n';
}

CanLog::CanLog(const QString &path, const output::InputFiles &inputs)
    : m_path(path), m_inputs(inputs), m_refusal(output::refusal(path, inputs))
{
}

CanLog::~CanLog()
{
    finish();
}

void CanLog::add(qint64 timeUs, const CanFrame &frame)
{
    m_lines += candumpLine(timeUs, frame);
}

void CanLog::flush()
{
    if (!m_lines.isEmpty() && !m_file)
        m_file = std::make_unique<output::GrowingFile>(m_path, m_lines, m_inputs);
    else if (!m_lines.isEmpty() && m_file->isOpen())
        m_file->write(m_lines);
    m_lines.resize(0);
}

void CanLog::finish()
{
    flush();
    if (m_file)
        m_file->finish();
}

} // namespace module
