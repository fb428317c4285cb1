#pragma once

#include <QObject>

class AudioStage;
class HeadUnit;
class Operator;
class Replay;
class Screen;
class Session;
struct Options;

/** A drive without a window: progress while it lasts, then gallery, summary and the exit code. */
class HeadlessRun : public QObject
{
    Q_OBJECT
public:
    HeadlessRun(const Options &options, Screen *screen, HeadUnit *unit, AudioStage *stage,
                Session *session);
    ~HeadlessRun() override;

    void start();

private:
    void showProgress(qint64 ms);
    void end();
    void endOnSignals();

    const Options &m_options;
    Screen *m_screen;
    HeadUnit *m_unit;
    AudioStage *m_stage;
    Session *m_session;
    Operator *m_hand;
    Replay *m_replay = nullptr;
    int m_lastPercent = -1;
};

/**
 * Writes what was asked for at the end of a drive, in a window or without.
 * @return false, with one line in error, when a file cannot be written
 */
bool writeResults(const Options &options, Screen *screen, HeadUnit *unit, AudioStage *stage,
                  Session *session, QString *error);
