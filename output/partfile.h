#pragma once

#include <QByteArray>
#include <QString>

namespace output {

class InputFiles;

/** A file descriptor that closes itself. */
class Descriptor
{
public:
    explicit Descriptor(int number = -1) : m_number(number) {}
    Descriptor(Descriptor &&other) noexcept : m_number(other.release()) {}
    Descriptor &operator=(Descriptor &&other) noexcept;
    ~Descriptor();

    int number() const { return m_number; }
    bool isValid() const { return m_number >= 0; }
    int release();

private:
    int m_number;
};

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
    /** Gives the file its name. */
    QString publish(const InputFiles &inputs);
    /** Gives it another one. */
    QString rename(const QString &path, const InputFiles &inputs);
    QString close();

    static QString refusal(const QString &path, const InputFiles &inputs);

private:
    enum class Attempt { Done, Busy, Failed };
    Attempt tryOpen(const InputFiles &inputs, QString *problem);
    Attempt lockTarget(QString *problem);

    QByteArray m_target;  // with links resolved
    QByteArray m_current; // the name that the file has now
    Descriptor m_file;
    qint64 m_size = 0;
    bool m_isPublished = false;
};

} // namespace output
