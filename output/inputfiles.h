#pragma once

#include <QPair>
#include <QString>
#include <QVector>

struct stat;

namespace output {

/**
 * The files that a run reads, which none of its outputs may replace. They are known by device and
 * inode, so another name, a link or another path of the same file is recognised.
 */
class InputFiles
{
public:
    InputFiles() = default;
    InputFiles(std::initializer_list<QString> paths);

    /** Adds a file; the name of something that is not a file is ignored. */
    void add(const QString &path);
    bool contains(const struct stat &file) const;

private:
    QVector<QPair<quint64, quint64>> m_identities; // device and inode
};

} // namespace output
