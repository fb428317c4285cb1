#pragma once

#include "descriptor.h"
#include "writethrough.h"

#include <QByteArray>
#include <QString>

#include <memory>

namespace output {

class InputFiles;

/**
 * The file that an output is written to before it gets its name, and the system calls for it. Each
 * step returns why it failed, without the name of the file, or an empty text.
 */
class PartFile
{
public:
    PartFile();
    ~PartFile();

    QString open(const QString &path, const InputFiles &inputs, int waitMs);
    bool isOpen() const { return m_file.isValid(); }
    qint64 size() const { return m_size; }
    QString write(const QByteArray &content);
    QString sync();
    /** From here on, what is written reaches the disk within a second. */
    void startWriteThrough();
    /** Gives the file its name, which is on the disk when this returns. */
    QString publish(const InputFiles &inputs);
    /** Gives it another one. */
    QString rename(const QString &path, const InputFiles &inputs);
    QString close();

    static QString refusal(const QString &path, const InputFiles &inputs);

private:
    enum class Attempt { Done, Busy, Failed };
    Attempt tryOpen(const InputFiles &inputs, QString *problem);
    Attempt lockTarget(QString *problem);
    QString noteChange();

    QByteArray m_target;  // with links resolved
    QByteArray m_current; // the name that the file has now
    Descriptor m_file;
    qint64 m_size = 0;
    bool m_isPublished = false;
    std::unique_ptr<WriteThrough> m_writeThrough; // null for a file that is written in one go
};

} // namespace output
