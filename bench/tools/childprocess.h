#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

class QDeadlineTimer;
class QIODevice;

/** What became of work in a process of its own, which it may crash or never finish. */
class ChildProcess
{
public:
    enum End {
        NotStarted,
        TimedOut, ///< and was killed
        Crashed,
        Exited, ///< with any exit code
    };

    /**
     * Forks, does the work in the child and waits for its end. Call it before there is an
     * application object.
     * @param work     writes its results to the device; the child exits with 0 when it returns
     * @param limitMs  how long all of it may take
     */
    static ChildProcess run(const std::function<void(QIODevice *results)> &work, int limitMs);

    End end() const { return m_end; }
    int exitCode() const { return m_exitCode; }
    bool hasSucceeded() const { return m_end == Exited && m_exitCode == 0; }
    /** How it ended, for a person: "Segmentation fault", "exit code 1". */
    QString endInWords() const;
    /** What the work had written up to the end, whichever that was. */
    const QByteArray &results() const { return m_results; }

private:
    void readResults(int pipe, const QDeadlineTimer &deadline);
    void waitForEnd(int process, const QDeadlineTimer &deadline);

    End m_end = NotStarted;
    int m_exitCode = 0;
    int m_signal = 0;
    QByteArray m_results;
};
