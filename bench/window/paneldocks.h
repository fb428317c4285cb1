#pragma once

#include <QHash>
#include <QMainWindow>
#include <QObject>

class QDockWidget;

/** How the panels are arranged around the screen. */
enum class PanelLayout { Small, Normal, Wide };

/** The panels of the bench's window, as docks beside and below the screen. */
class PanelDocks : public QObject
{
    Q_OBJECT
public:
    /** @param home  gets the focus of a panel that is closed or covered */
    PanelDocks(QMainWindow *window, QWidget *home);

    /** @param name  of the panel's command, which has its title too */
    void add(const QString &name, QWidget *panel);
    const QList<QDockWidget *> &docks() const { return m_docks; }
    QDockWidget *dock(const QString &name) const;

    /** The layout for a display with this much space. */
    static PanelLayout layoutFor(QSize space);
    /** Arranges all panels; those moved, detached or closed by hand are put back. */
    void arrange(PanelLayout layout);
    /** Gives the panels the sizes of the layout, once the window has its size. */
    void resizePanels();

    /** Brings a panel to the front, or closes the one that is there. */
    void toggle(const QString &name);
    void show(const QString &name);
    /** Whether a panel is neither closed nor behind another. */
    bool isInFront(const QString &name) const;

    /** Hides all of them until it is called again with false. */
    void setAllHidden(bool hidden);

signals:
    /** A panel came to the front, was covered or closed. */
    void changed(const QString &name);

private:
    void place(QDockWidget *dock, int spot);

    QMainWindow *m_window;
    QWidget *m_home;
    QList<QDockWidget *> m_docks;
    QHash<int, QDockWidget *> m_firstAt; // of each spot, the others are its tabs
    PanelLayout m_layout = PanelLayout::Normal;
    QByteArray m_hiddenState;
};
