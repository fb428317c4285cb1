#pragma once

#include "inputfiles.h"
#include "partfile.h"

namespace output {

/**
 * A file that this program writes. Every output is one of these, which share their rules:
 *
 * - Content is written to ".NAME.part" in the same folder, which then replaces NAME in one step. A
 *   run that fails or is killed leaves the old file or the new one, never a mixture or half of one.
 * - Every step is checked. The first failure is kept as error(), one line that names the file;
 *   nothing is written after it.
 * - NAME must be a regular file or not exist yet. A folder, pipe or device is refused and not
 *   opened. So is a file that the run reads (see InputFiles).
 * - The file is locked while it is written; a second program that writes it is refused.
 *
 * A result that exists as a whole takes one line:
 * @code
 *     if (!output::writeResult(path, content, inputs, &error)) // error names the file
 * @endcode
 */
class OutputFile
{
public:
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    /** The path as it was given. */
    const QString &path() const { return m_path; }
    /** Whether it can be written: it was opened, and nothing failed since. */
    bool isOpen() const { return m_part.isOpen() && m_error.isEmpty(); }
    /** The first failure, in one line that names the file; empty for none. */
    const QString &error() const { return m_error; }
    /** What has been written, in bytes. */
    qint64 size() const { return m_part.size(); }
    /** Writes all of it, or none: after a failure the file ends with the write before. */
    bool write(const QByteArray &content);

protected:
    OutputFile(const QString &path, const InputFiles &inputs, int waitMs);
    ~OutputFile();

    /** Keeps the first problem. @param path  the file that has it, where it is not this one */
    bool check(const QString &problem, const QString &path = {});

    PartFile m_part;
    InputFiles m_inputs;

private:
    QString m_path;
    QString m_error;
};

/** A file that is complete or absent: it replaces the old one in commit(), and only there. */
class ResultFile : public OutputFile
{
public:
    /** @param waitMs  how long to wait for another program that writes the same file */
    explicit ResultFile(const QString &path, const InputFiles &inputs = {}, int waitMs = 0);

    /** @return whether the result is on the disk, under its name */
    bool commit();
};

/**
 * A file that others can read while it grows: each write is in the file when it returns, and
 * survives whatever ends the program. A power cut takes at most its last second.
 */
class GrowingFile : public OutputFile
{
public:
    /** @param start  what it begins with; an old file is replaced once this is written */
    GrowingFile(const QString &path, const QByteArray &start, const InputFiles &inputs = {});

    /** Renames the file, in place of an older one. It can still be written. */
    bool rename(const QString &path);
    /** Writes the file through to the disk and closes it. @return whether all of it is there */
    bool finish();
};

/** Why a path cannot be written, in one line; empty where it can. Nothing is created. */
QString refusal(const QString &path, const InputFiles &inputs = {});

/** Writes a result as a whole. @param error  one line that names the file */
bool writeResult(const QString &path, const QByteArray &content, const InputFiles &inputs,
                 QString *error);

} // namespace output
