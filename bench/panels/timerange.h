#pragma once

#include <QObject>

/**
 * The part of the session that the timeline and the plots show, which is the same in both. It
 * follows the session until it is moved or the screen is rewound.
 */
class TimeRange : public QObject
{
    Q_OBJECT
public:
    explicit TimeRange(QObject *parent = nullptr);

    qint64 beginMs() const { return m_beginMs; }
    qint64 endMs() const { return m_beginMs + m_spanMs; }
    qint64 spanMs() const { return m_spanMs; }
    bool follows() const { return m_follows; }

    void set(qint64 beginMs, qint64 spanMs);
    void move(qint64 byMs);
    /** By steps of the wheel; the moment under the pointer stays where it is. */
    void zoom(qint64 underMs, double steps);
    /** Shows a moment, and no longer follows the session. */
    void show(qint64 ms);
    /** The present of the session, near the right edge while it is followed. */
    void setNow(qint64 ms);
    void follow();
    /** For another session. */
    void reset();

signals:
    void changed();

private:
    void place(qint64 beginMs, qint64 spanMs);
    void showNow();

    qint64 m_beginMs = 0;
    qint64 m_spanMs = 30000;
    qint64 m_nowMs = 0;
    bool m_follows = true;
};
