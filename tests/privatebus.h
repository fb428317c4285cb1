#pragma once

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

/** A message bus of the test's own, which can be restarted at the same address. */
class PrivateBus
{
public:
    /** @param policy  what the configuration allows, as XML */
    explicit PrivateBus(const QByteArray &policy = R"(<allow send_destination="*" eavesdrop="true"/>
<allow eavesdrop="true"/><allow own="*"/>)")
    {
        QFile file(configuration());
        file.open(QIODevice::WriteOnly);
        file.write("<busconfig><type>session</type><listen>" + address().toLatin1() +
                   "</listen><auth>EXTERNAL</auth><policy context=\"default\">" + policy +
                   "</policy></busconfig>\n");
        file.close();
        start();
    }

    ~PrivateBus() { stop(); }

    QString address() const { return QStringLiteral("unix:path=%1/bus").arg(m_folder.path()); }

    void start()
    {
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                        QStringLiteral("--config-file=") + configuration()});
        QVERIFY2(m_daemon.waitForReadyRead(30000), "dbus-daemon: expected it to start");
    }

    void stop()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
        m_daemon.readAll();
        QFile::remove(m_folder.filePath(QStringLiteral("bus")));
    }

private:
    QString configuration() const { return m_folder.filePath(QStringLiteral("bus.conf")); }

    QTemporaryDir m_folder;
    QProcess m_daemon;
};
