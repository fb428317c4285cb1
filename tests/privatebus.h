#pragma once

#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <cstdlib>

/** A message bus for one test, at an address that stays the same when it is started again. */
class PrivateBus
{
public:
    PrivateBus()
    {
        QFile config(m_folder.filePath("bus.conf"));
        if (!config.open(QIODevice::WriteOnly))
            qFatal("cannot write %s", qPrintable(config.fileName()));
        config.write("<busconfig><type>session</type><auth>EXTERNAL</auth><listen>");
        config.write(address().toUtf8());
        config.write("</listen><policy context=\"default\"><allow send_destination=\"*\"/>"
                     "<allow own=\"*\"/><allow eavesdrop=\"true\"/></policy></busconfig>\n");
        config.close();
        start();
    }
    ~PrivateBus() { stop(); }
    Q_DISABLE_COPY(PrivateBus)

    QString address() const { return "unix:path=" + m_folder.filePath("bus"); }

    /** Through the shell, since a QProcess has no place under emulation. */
    void start()
    {
        run("rm -f bus printed; dbus-daemon --nofork --print-address --config-file=bus.conf "
            ">printed 2>err </dev/null & echo $! >pid");
        for (int i = 0; i < 600 && QFile(m_folder.filePath("printed")).size() == 0; ++i)
            QThread::msleep(50);
    }
    /** Returns when it has ended. */
    void stop()
    {
        run("test -f pid || exit 0; kill $(cat pid) 2>/dev/null; "
            "while kill -0 $(cat pid) 2>/dev/null; do sleep 0.02; done; rm -f pid");
    }

private:
    void run(const char *command) const
    {
        const QString line = QStringLiteral("cd '%1' && { %2; }").arg(m_folder.path(), command);
        if (std::system(line.toLocal8Bit().constData()) != 0)
            qFatal("cannot run: %s", command);
    }

    QTemporaryDir m_folder;
};
