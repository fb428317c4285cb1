#pragma once

#include "startedprogram.h"

#include <memory>

/** A message bus of the test's own, which can be restarted at the same address. */
class PrivateBus
{
public:
    /**
     * @param policy  what the configuration allows, as XML
     * @param more    whole policies, which come after it
     */
    explicit PrivateBus(
        const QByteArray &policy =
            R"(<allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/>)",
        const QByteArray &more = {})
    {
        QFile::setPermissions(m_folder.path(), QFile::permissions(m_folder.path()) |
                                                   QFile::ReadOther | QFile::ExeOther);
        QFile file(configuration());
        file.open(QIODevice::WriteOnly);
        file.write("<busconfig><type>session</type><listen>" + address().toLatin1() +
                   "</listen><auth>EXTERNAL</auth><policy context=\"default\">" + policy +
                   "</policy>" + more + "</busconfig>\n");
        file.close();
        start();
    }

    QString address() const { return QStringLiteral("unix:path=%1/bus").arg(m_folder.path()); }

    void start()
    {
        m_daemon = std::make_unique<StartedProgram>(
            QStringLiteral("dbus-daemon --nofork --print-address --config-file=") +
            configuration());
        if (m_daemon->lineWith(QStringLiteral("unix:")).isEmpty())
            qFatal("dbus-daemon: expected it to start, got: %s", qPrintable(m_daemon->err()));
    }

    void stop()
    {
        m_daemon.reset();
        QFile::remove(m_folder.filePath(QStringLiteral("bus")));
    }

private:
    QString configuration() const { return m_folder.filePath(QStringLiteral("bus.conf")); }

    QTemporaryDir m_folder;
    std::unique_ptr<StartedProgram> m_daemon;
};
