#pragma once

#include "notifysocket.h"
#include "program.h"
#include "startedprogram.h"

#include <QDir>

#include <memory>

/** A place for norda-unit: its configuration, its data, and the service manager that starts it. */
class UnitPlace
{
public:
    UnitPlace() : m_manager(std::make_unique<NotifySocket>(QFile::encodeName(path("notify"))))
    {
        write("unit.conf", "module = none\n");
    }

    QString path(const char *name) const { return m_folder.filePath(QLatin1String(name)); }
    const NotifySocket &manager() const { return *m_manager; }
    /** @param name  as of a NotifySocket */
    void moveManager(const QByteArray &name) { m_manager = std::make_unique<NotifySocket>(name); }

    QString write(const char *name, const QByteArray &content) const
    {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size()
                   ? file.fileName()
                   : QString();
    }

    /** The unit's settings. @param folder  of its data */
    QString settings(const QString &folder = QStringLiteral("data")) const
    {
        QFile file(m_folder.filePath(folder + QStringLiteral("/media/flash/nvm/settings.ini")));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    /** @param settings  more of its environment, as for env */
    std::unique_ptr<StartedProgram> start(const QString &options,
                                          const QString &settings = {}) const
    {
        const QString usual =
            QStringLiteral(
                "NORDA_MODULE_BUS= NORDA_HOST_ROOT=%1 NOTIFY_SOCKET=%2 WATCHDOG_USEC=200000 ")
                .arg(path("data"), QString::fromLocal8Bit(m_manager->name()));
        return std::make_unique<StartedProgram>(
            QStringLiteral("norda-unit"),
            QStringLiteral("--config %1 -platform offscreen %2").arg(path("unit.conf"), options),
            usual + settings);
    }

    /** To its end, which it must come to by itself. */
    ProgramResult run(const QStringList &options) const
    {
        const QStringList command =
            StartedProgram::command(QStringLiteral("norda-unit")).split(' ', Qt::SkipEmptyParts);
        return runProgram(QStringList{"env", "NORDA_HOST_ROOT=" + path("data")} + command +
                          QStringList{"-platform", "offscreen"} + options);
    }

    /** Starts it, ends it, and tells which page it had opened. */
    QString openedPage(const QString &options, int endSignal) const
    {
        const std::unique_ptr<StartedProgram> unit = start(options);
        const QList<QByteArray> reports = m_manager->upTo("READY=1");
        m_manager->upTo("WATCHDOG=1"); // by then the page is kept
        unit->end(endSignal);
        m_manager->during(1);
        return reports.isEmpty()
                   ? unit->err()
                   : QString::fromUtf8(reports.last()).section("STATUS=", 1).section(", ", 0, 0);
    }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<NotifySocket> m_manager;
};

/** What it prints, without what the small display of the offscreen platform gives rise to. */
inline QString messages(const QString &err)
{
    QStringList lines = err.split('\n', Qt::SkipEmptyParts);
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const QString &line) { return line.startsWith("display: "); }),
                lines.end());
    return lines.join('\n');
}
