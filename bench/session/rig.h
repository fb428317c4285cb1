#pragma once

#include "headunit.h"
#include "session/actions.h"
#include "session/replay.h"
#include "session/session.h"
#include "session/setup.h"

#include <memory>

/**
 * A head unit and the session that drives it, put together from a setup: what a window, a run
 * without one, a scenario and a benchmark all work with.
 */
class Rig : public QObject
{
    Q_OBJECT
public:
    explicit Rig(const Setup &setup, QObject *parent = nullptr);
    ~Rig() override;

    /**
     * Loads the plugin and opens the source and the recording of the setup.
     * @param error  one line that names the file and what was expected
     */
    bool open(const QString &plugin, QString *error);
    /** Opens the first page and binds unit and session; the drive is ready to play. */
    void begin(Replay::Extent replay);
    /** What the recording still holds is not done any more. */
    void endReplay();
    /**
     * Drives a file instead; a recording goes on with it.
     * @param error  one line that names the file; the session stays as it is then
     */
    bool openDrive(const QString &file, QString *error);

    /** What the session began with. */
    const Setup &setup() const { return m_setup; }
    HeadUnit *unit() { return &m_unit; }
    Actions *actions() { return &m_actions; }
    Session *session() const { return m_session.get(); }

signals:
    /** A session has begun, in place of the one before. */
    void sessionBegun(Session *session);
    /** Something that a person should know, in one line. */
    void noticed(const QString &line);

private:
    void bind();
    void replayActions(Replay::Extent extent);

    Setup m_setup;
    HeadUnit m_unit;
    Actions m_actions;
    std::unique_ptr<Session> m_session;
    QPointer<Replay> m_replay;
};
