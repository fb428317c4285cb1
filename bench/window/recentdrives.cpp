#include "window/recentdrives.h"

#include "live/liveports.h"
#include "window/benchsettings.h"

#include <QFileInfo>
#include <QMenu>

static constexpr int mostKept = 10;
static const QString key = QStringLiteral("recentDrives");

RecentDrives::RecentDrives(QMenu *menu) : QObject(menu), m_menu(menu)
{
    connect(menu, &QMenu::aboutToShow, this, &RecentDrives::fill);
    fill();
}

QStringList RecentDrives::files()
{
    return BenchSettings().value(key).toStringList();
}

void RecentDrives::add(const QString &file)
{
    const bool isLive = module::isLiveName(file);
    if (!isLive && !QFileInfo::exists(file))
        return; // the simulated car
    const QString path = isLive ? file : QFileInfo(file).absoluteFilePath();
    QStringList all = files();
    all.removeAll(path);
    all.prepend(path);
    BenchSettings().setValue(key, QStringList(all.mid(0, mostKept)));
}

/** A file that is gone may be on a medium that comes back, so it is kept and cannot be chosen. */
void RecentDrives::fill()
{
    m_menu->clear();
    for (const QString &file : files()) {
        const bool isLive = module::isLiveName(file);
        QAction *action = m_menu->addAction(isLive ? file : QFileInfo(file).fileName(), this,
                                            [this, file] { emit chosen(file); });
        action->setToolTip(file);
        action->setEnabled(isLive || QFileInfo::exists(file));
    }
    if (m_menu->isEmpty())
        m_menu->addAction(tr("None yet"))->setEnabled(false);
}
