#pragma once

#include <QObject>
#include <QPointer>

namespace module {
class Drive;
}

/** A part of the drive that is repeated, from A to B. */
class RepeatedPart : public QObject
{
    Q_OBJECT
public:
    explicit RepeatedPart(QObject *parent = nullptr);

    /** Forgets the part of the drive before. */
    void setDrive(module::Drive *drive);

    qint64 fromMs() const { return m_fromMs; }
    qint64 toMs() const { return m_toMs; }

public slots:
    /** The part begins at the drive's position; an end before it is forgotten. */
    void beginHere();
    /** It ends at the drive's position, and is repeated from now on. */
    void endHere();
    void clear();

signals:
    /** The drive has reached the end of the part. */
    void momentRequested(qint64 ms);
    void changed();

private:
    void onPosition(qint64 ms);

    QPointer<module::Drive> m_drive;
    qint64 m_fromMs = -1;
    qint64 m_toMs = -1;
};
