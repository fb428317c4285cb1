#pragma once

#include "tools/themecolors.h"

#include <QObject>

#include <optional>

class QAction;
class QActionGroup;
class QPalette;
class QWidget;

/**
 * Makes the bench's own windows light or dark: as the desktop is, or as the user chose. The palette
 * of the application stays the unit's, so that a plugin looks as it does in a car.
 */
class Theme : public QObject
{
    Q_OBJECT
public:
    using Mode = theme::Mode;

    /**
     * @param window  the main window; its dialogs, menus and floating panels follow
     * @param mode    for this run; without one the mode that was chosen last
     */
    Theme(QWidget *window, std::optional<Mode> mode);
    ~Theme() override;

    Mode mode() const { return m_mode; }
    bool isLight() const;
    /** Chooses a mode, which later runs remember. */
    void set(Mode mode);
    /** Makes an entry of a menu choose a mode; it is checked while the mode is chosen. */
    void offer(Mode mode, QAction *choice);

    /** A desktop without colours of its own counts as dark. */
    static bool isLightDesktop(const QPalette &palette);

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void chosen(Mode mode);

private:
    void apply();
    void followDesktop();
    bool isOwnWindow(const QObject *object) const;

    QWidget *m_window;
    Mode m_mode = Mode::Auto;
    bool m_isDesktopLight = false;
    QActionGroup *m_choices;
};
