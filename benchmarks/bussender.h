#pragma once

#include <QProcess>
#include <QVector>

#include <optional>

/** A full bus on `virtualcan`, served by a process of its own: this program, called once more. */
class BusSender
{
public:
    /** A new engine speed, when the first frame with it was written. */
    struct Step
    {
        qint64 ns;
        bool isUp;
    };
    struct Report
    {
        qint64 frames = 0;
        double seconds = 0;
        QVector<Step> steps;
    };

    BusSender();
    ~BusSender();

    /** The name of the bus's interface. */
    const QString &interface() const { return m_interface; }
    void start(int seconds);
    /** Handles events until everything is sent. @return nothing when the process has failed */
    std::optional<Report> finish();

private:
    QString m_interface;
    QProcess m_process;
};

/** The time of all processes. */
qint64 monotonicNs();

/** Sends, when this process was started for it. @return whether it was */
bool runBusSender(int *exitCode);
