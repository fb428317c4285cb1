#pragma once

#include <QPoint>
#include <QPointer>
#include <QVariant>
#include <QWidget>

class Screen;

/**
 * Touches the screen with mouse events. A target is written as in a scenario: the name of a widget,
 * a name with a place in the widget, or a place on the screen.
 */
class Finger
{
public:
    explicit Finger(Screen *screen) : m_screen(screen) {}

    // Each fails with one line about what was expected.
    bool touch(const QVariantList &target, QString *error);
    bool press(const QVariantList &target, QString *error);
    /** To a place on the screen. */
    bool move(const QVariantList &target, QString *error);
    bool release(QString *error);

private:
    bool find(const QVariantList &target, QPoint *place, QString *error) const;
    bool findOnScreen(const QPoint &wanted, QPoint *place, QString *error) const;
    bool findInWidget(const QVariantList &target, QPoint *place, QString *error) const;
    bool isPressed(QString *error) const;

    Screen *m_screen;
    QPointer<QWidget> m_pressed;
    QPoint m_place; // in that widget
};
