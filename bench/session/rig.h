#pragma once

#include "headunit.h"
#include "session/actions.h"
#include "session/replay.h"
#include "session/session.h"
#include "session/setup.h"

#include <memory>

/**
 * A head unit and the session that drives it, built from a setup. The window, the headless run,
 * scenarios and benchmarks all use it.
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
    // The same in two steps. The second one can be tried again.
    bool load(const QString &plugin, QString *error);
    bool openSource(QString *error);
    /** Opens the first page and binds unit and session; the drive is ready to play. */
    void begin(Replay::Extent replay);
    /** Stops repeating recorded actions. */
    void endReplay();
    /**
     * Drives another source instead; a recording continues with it.
     * @param source  a file, or the name of a source as on the command line
     * @param error   one line that names the file; the session is unchanged then
     */
    bool openDrive(const QString &source, QString *error);
    /**
     * Records the session from now on; a recording that runs is ended first.
     * @param error  one line that names the file
     */
    bool startRecording(const QString &file, QString *error);

    /** The setup that the session began with. */
    const Setup &setup() const { return m_setup; }
    HeadUnit *unit() { return &m_unit; }
    Actions *actions() { return &m_actions; }
    Session *session() const { return m_session.get(); }

signals:
    /** A session has begun and replaces the one before. */
    void sessionBegun(Session *session);
    /** A recorded action was done again. */
    void repeated(const QString &word, const QVariantList &arguments);
    /** A notice for the user, in one line. */
    void noticed(const QString &line);

private:
    std::unique_ptr<module::VehicleSource> makeSource(QString *error) const;
    void bind();
    void replayActions(Replay::Extent extent);
    QString nextLog() const;
    std::unique_ptr<module::VehicleSource> openNext(const QString &name, module::Trim trim,
                                                    QString *error);

    Setup m_setup;
    const QString m_firstLog; // of the frames of a car; each further car has its own
    int m_logs = 0;
    const module::Trim m_trim; // of the simulated car, when another drive was opened meanwhile
    HeadUnit m_unit;
    Actions m_actions;
    std::unique_ptr<Session> m_session;
    QPointer<Replay> m_replay;
};
