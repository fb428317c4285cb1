#pragma once

#include <QObject>
#include <QStringList>

class QMenu;

/** The files and connected cars that were driven last, in a menu; they are remembered. */
class RecentDrives : public QObject
{
    Q_OBJECT
public:
    explicit RecentDrives(QMenu *menu);

    void add(const QString &file);
    /** The latest first. */
    static QStringList files();

signals:
    void chosen(const QString &file);

private:
    void fill();

    QMenu *m_menu;
};
