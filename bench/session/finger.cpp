#include "session/finger.h"

#include "screen.h"

#include <QApplication>
#include <QMouseEvent>

static void sendMouse(QWidget *widget, QEvent::Type type, QPoint place)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButtons held =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, place, widget->mapTo(widget->window(), place),
                      widget->mapToGlobal(place), button, held, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

static QPoint pointAt(const QVariantList &target, int index)
{
    return {target.value(index).toInt(), target.value(index + 1).toInt()};
}

bool Finger::find(const QVariantList &target, QPoint *place, QString *error) const
{
    const bool isNamed = target.value(0).userType() == QMetaType::QString;
    return isNamed ? findInWidget(target, place, error)
                   : findOnScreen(pointAt(target, 0), place, error);
}

bool Finger::findOnScreen(const QPoint &wanted, QPoint *place, QString *error) const
{
    *place = wanted;
    if (m_screen->rect().contains(wanted))
        return true;
    *error = QStringLiteral("expected a place on the screen of %1 x %2")
                 .arg(m_screen->width())
                 .arg(m_screen->height());
    return false;
}

bool Finger::findInWidget(const QVariantList &target, QPoint *place, QString *error) const
{
    const QString name = target.value(0).toString();
    const QWidget *widget = m_screen->widgetNamed(name);
    if (!widget || !widget->isVisible()) {
        *error = QStringLiteral("expected '%1' on the screen, %2")
                     .arg(name, widget ? QStringLiteral("it is hidden")
                                       : QStringLiteral("found no such widget"));
        return false;
    }
    const QPoint within = target.size() > 2 ? pointAt(target, 1) : widget->rect().center();
    *place = widget->mapTo(m_screen, within);
    const QWidget *top = m_screen->childAt(*place);
    if (top && (top == widget || widget->isAncestorOf(top)))
        return true;
    *error = QStringLiteral("expected to reach '%1', %2 lies over it")
                 .arg(name, top ? QStringLiteral("'%1'").arg(m_screen->nameOf(top))
                                : QStringLiteral("the edge of the screen"));
    return false;
}

bool Finger::press(const QVariantList &target, QString *error)
{
    QPoint place;
    if (!find(target, &place, error))
        return false;
    QWidget *top = m_screen->childAt(place);
    m_pressed = top ? top : m_screen;
    m_place = m_pressed->mapFrom(m_screen, place);
    sendMouse(m_pressed, QEvent::MouseButtonPress, m_place);
    return true;
}

bool Finger::isPressed(QString *error) const
{
    if (!m_pressed)
        *error = QStringLiteral("expected a press before");
    return m_pressed;
}

bool Finger::move(const QVariantList &target, QString *error)
{
    if (!isPressed(error))
        return false;
    m_place = m_pressed->mapFrom(m_screen, pointAt(target, 0));
    sendMouse(m_pressed, QEvent::MouseMove, m_place);
    return true;
}

bool Finger::release(QString *error)
{
    if (!isPressed(error))
        return false;
    QWidget *pressed = m_pressed;
    m_pressed.clear();
    sendMouse(pressed, QEvent::MouseButtonRelease, m_place);
    return true;
}

/** The press may remove the widget that it goes to. */
bool Finger::touch(const QVariantList &target, QString *error)
{
    return press(target, error) && (!m_pressed || release(error));
}
