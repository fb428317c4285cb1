#include "session/touchrecorder.h"

#include "norda/squillogauge.h"
#include "screen.h"
#include "session/session.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMouseEvent>

TouchRecorder::TouchRecorder(Screen *screen, QObject *parent) : QObject(parent), m_screen(screen)
{
    qApp->installEventFilter(this);
}

void TouchRecorder::setSession(Session *session)
{
    m_session = session;
}

void TouchRecorder::note(const QString &word, const QVariantList &arguments)
{
    m_session->journal()->note(m_session->nowMs(), Journal::Action, word, arguments);
}

/** What is there to be touched is known by its name; anything else is a place on the screen. */
static bool isControl(const QWidget *widget)
{
    return qobject_cast<const QAbstractButton *>(widget) ||
           qobject_cast<const norda::SQuilloGauge *>(widget);
}

/** The second of two quick taps comes as a double click. */
static bool isTouch(const QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
        return static_cast<const QMouseEvent *>(event)->button() == Qt::LeftButton;
    case QEvent::MouseMove:
        return static_cast<const QMouseEvent *>(event)->buttons() & Qt::LeftButton;
    default:
        return false;
    }
}

bool TouchRecorder::eventFilter(QObject *watched, QEvent *event)
{
    static constexpr int slip = 8; // pixels that a finger moves without meaning it
    // What the bench itself sends, as an action of a recording, is not spontaneous.
    auto *widget = isTouch(event) && event->spontaneous() && m_session
                       ? qobject_cast<QWidget *>(watched)
                       : nullptr;
    if (!widget || !m_screen->isAncestorOf(widget))
        return false;
    if (m_session->isRewound()) {
        emit rewoundTouched();
        return true;
    }
    const QPoint place = static_cast<QMouseEvent *>(event)->pos();
    const QPoint onScreen = widget->mapTo(m_screen, place);
    if (event->type() == QEvent::MouseMove) {
        if (widget == m_pressed)
            m_session->recordAction(QStringLiteral("move"), {onScreen.x(), onScreen.y()});
    } else if (event->type() != QEvent::MouseButtonRelease) {
        // A widget that does not use it passes the press to its parent, which is the same one.
        if (m_screen->childAt(onScreen) != widget)
            return false;
        m_pressed = widget;
        m_at = onScreen;
        const QVariantList where =
            isControl(widget) ? QVariantList{m_screen->nameOf(widget), place.x(), place.y()}
                              : QVariantList{onScreen.x(), onScreen.y()};
        note(QStringLiteral("press"), where);
        m_session->recordAction(QStringLiteral("press"), where);
    } else if (widget == m_pressed) {
        if ((onScreen - m_at).manhattanLength() > slip)
            note(QStringLiteral("move"), {onScreen.x(), onScreen.y()});
        note(QStringLiteral("release"), {});
        m_session->recordAction(QStringLiteral("release"), {});
        m_pressed.clear();
    }
    return false;
}
