#pragma once

#include <QDir>
#include <QImage>
#include <QStringList>

/**
 * Pictures in the repository that others are compared with. Those whose names begin with the same
 * word are a series, "climate", "climate-off" and so on. The one with the bare word is kept whole,
 * each other one as the pixels in which it differs from that, on transparent ground: the files stay
 * small, and a change of what a series shares changes few of them.
 */
class ReferencePictures
{
public:
    explicit ReferencePictures(const QString &folder) : m_folder(folder) {}

    /** Whether a picture is the first one of a series. */
    static bool isWhole(const QString &name) { return !name.contains(QLatin1Char('-')); }
    /** The whole picture, null for none. */
    QImage picture(const QString &name) const;
    /** Keeps a picture. @return whether it was written */
    bool accept(const QString &name, const QImage &picture) const;
    QStringList names() const;
    /** Of all files, in bytes. */
    qint64 size() const;
    void remove(const QString &name) const;

private:
    QString file(const QString &name) const;

    const QDir m_folder;
};
