#include "outputfile.h"

namespace output {

OutputFile::OutputFile(const QString &path, const InputFiles &inputs, int waitMs)
    : m_inputs(inputs), m_path(path)
{
    check(m_part.open(path, inputs, waitMs));
}

OutputFile::~OutputFile() = default;

bool OutputFile::check(const QString &problem, const QString &path)
{
    if (m_error.isEmpty() && !problem.isEmpty())
        m_error = QStringLiteral("%1: %2").arg(path.isEmpty() ? m_path : path, problem);
    return m_error.isEmpty();
}

bool OutputFile::write(const QByteArray &content)
{
    return isOpen() && check(m_part.write(content));
}

ResultFile::ResultFile(const QString &path, const InputFiles &inputs, int waitMs)
    : OutputFile(path, inputs, waitMs)
{
}

bool ResultFile::commit()
{
    return isOpen() && check(m_part.sync()) && check(m_part.publish(m_inputs)) &&
           check(m_part.close());
}

GrowingFile::GrowingFile(const QString &path, const QByteArray &start, const InputFiles &inputs)
    : OutputFile(path, inputs, 0)
{
    if (write(start) && check(m_part.sync()) && check(m_part.publish(m_inputs)))
        m_part.startWriteThrough();
}

bool GrowingFile::rename(const QString &path)
{
    return isOpen() && check(m_part.rename(path, m_inputs), path);
}

bool GrowingFile::finish()
{
    return isOpen() && check(m_part.sync()) && check(m_part.close());
}

QString refusal(const QString &path, const InputFiles &inputs)
{
    const QString problem = PartFile::refusal(path, inputs);
    return problem.isEmpty() ? QString() : QStringLiteral("%1: %2").arg(path, problem);
}

bool writeResult(const QString &path, const QByteArray &content, const InputFiles &inputs,
                 QString *error)
{
    ResultFile file(path, inputs);
    const bool isWritten = file.write(content) && file.commit();
    *error = file.error();
    return isWritten;
}

} // namespace output
