#pragma once

#include <QAction>
#include <QHash>
#include <QObject>
#include <QString>
#include <QVector>

class QMainWindow;
class QMenu;

/** What the bench's window does on a menu entry or a key. */
struct CommandRow
{
    QString name; ///< the object name of its action
    QString menu; ///< with the mnemonic
    QString text; ///< with the mnemonic
    QString key;  ///< empty for none
    QString what; ///< in the imperative, for tooltips and the list of keys
};

/**
 * All commands in the order of the menus. The menus, the tooltips, the list of keys and `--help`
 * are made from it; the manual page is compared with it.
 */
const QVector<CommandRow> &commandRows();
/** The row of a name, which must exist. */
const CommandRow &commandRow(const QString &name);
/** What a command does and its key, for a tooltip. */
QString commandTip(const QString &name);
/** The keys and what they do, a line each. */
QString keysText();

/** The commands of a window, as the actions of its menus. They work without the menu bar too. */
class Commands : public QObject
{
    Q_OBJECT
public:
    explicit Commands(QMainWindow *window);

    QAction *action(const QString &name) const;
    /** The menu that has a command. */
    QMenu *menuOf(const QString &name) const;

    /** Does this on a command. The slot may take whether it is checked. */
    template <typename Receiver, typename Slot>
    void on(const char *name, Receiver *receiver, Slot slot) const
    {
        connect(action(QLatin1String(name)), &QAction::triggered, receiver, slot);
    }

private:
    QHash<QString, QAction *> m_actions;
    QHash<QString, QMenu *> m_menus;
};
