#include "session/actions.h"

#include "headunit.h"
#include "session/argumentchecks.h"
#include "session/session.h"
#include "simulator/controls.h"

#include <QApplication>
#include <QMouseEvent>

#include <algorithm>

using module::Controls;
using module::Faults;

// ---- What can be done, and what is expected behind each word ------------------------------------

// Some are done at the unit, as a driver does; the others change what it is sent or what it runs
// on.
enum class Where { AtTheUnit, Elsewhere };

struct Actions::Verb
{
    const char *word;
    Where where;
    const char *form; // of the arguments, for a person
    bool (*check)(const Arguments &values, QString *error);
    bool (Actions::*perform)(const Arguments &values, QString *error);
};

// clang-format off
const Actions::Verb Actions::verbs[] = {
    {"page",     Where::AtTheUnit, "the number of a page",                             isOneNumber, &Actions::openPage},
    {"back",     Where::AtTheUnit, "nothing",                                          isNothing,   &Actions::goBack},
    {"split",    Where::AtTheUnit, "nothing",                                          isNothing,   &Actions::split},
    {"key",      Where::AtTheUnit, "the number of a key",                              isOneNumber, &Actions::pressKey},
    {"touch",    Where::AtTheUnit, "a widget, a widget and a place in it, or a place", isPlace,     &Actions::touch},
    {"press",    Where::AtTheUnit, "a widget, a widget and a place in it, or a place", isPlace,     &Actions::press},
    {"move",     Where::AtTheUnit, "a place on the screen",                            isBarePlace, &Actions::move},
    {"release",  Where::AtTheUnit, "nothing",                                          isNothing,   &Actions::release},
    {"signal",   Where::Elsewhere, "a signal and its arguments",                       isSignal,    &Actions::sendSignal},
    {"host",     Where::Elsewhere, "an object of the host, a method and its arguments", isHostCall, &Actions::callHost},
    {"invoke",   Where::Elsewhere, "a widget or 'page', a method and its arguments",   isCall,      &Actions::invoke},
    {"car",      Where::Elsewhere, "a control and its value",                          isControl,   &Actions::setControl},
    {"fault",    Where::Elsewhere, "a fault or 'none'",                                isFault,     &Actions::setFault},
    {"focus",    Where::AtTheUnit, "'granted' or 'refused'",                           isFocus,     &Actions::setFocus},
    {"seek",     Where::Elsewhere, "a time in seconds",                                isTime,      &Actions::seek},
};
// clang-format on

Actions::Actions(HeadUnit *unit, QObject *parent) : QObject(parent), m_unit(unit) {}

Actions::~Actions() = default;

void Actions::setSession(Session *session)
{
    m_session = session;
}

Session *Actions::session() const
{
    return m_session;
}

const Actions::Verb *Actions::find(const QString &word)
{
    const auto *const verb =
        std::find_if(std::begin(verbs), std::end(verbs),
                     [&word](const Verb &known) { return word == QLatin1String(known.word); });
    return verb == std::end(verbs) ? nullptr : verb;
}

QStringList Actions::words()
{
    QStringList words;
    for (const Verb &verb : verbs)
        words.append(QLatin1String(verb.word));
    return words;
}

bool Actions::check(const QString &word, const QVariantList &arguments, QString *error)
{
    const Verb *verb = find(word);
    if (verb && verb->check(arguments, error))
        return true;
    if (verb && error->isEmpty())
        *error = QStringLiteral("expected %1 behind '%2'").arg(QLatin1String(verb->form), word);
    return false;
}

bool Actions::perform(const QString &word, const QVariantList &arguments, QString *error)
{
    const Verb *verb = find(word);
    if (!verb || !m_session)
        return false;
    emit begins();
    m_session->journal()->note(m_session->nowMs(), Journal::Action, word, arguments);
    return carryOut(*verb, arguments, error);
}

bool Actions::carryOut(const Verb &verb, const QVariantList &arguments, QString *error)
{
    if (verb.where == Where::AtTheUnit)
        m_session->recordAction(QLatin1String(verb.word), arguments);
    return (this->*verb.perform)(arguments, error);
}

bool Actions::repeat(const QString &word, const QVariantList &arguments, QString *error)
{
    const Verb *verb = find(word);
    if (verb && verb->where == Where::AtTheUnit)
        return check(word, arguments, error) && carryOut(*verb, arguments, error);
    *error = QStringLiteral("expected something to be done at the unit, got '%1'").arg(word);
    return false;
}

bool Actions::act(const QString &word, const QVariantList &arguments)
{
    QString error;
    return perform(word, arguments, &error);
}

// ---- The unit's own keys ------------------------------------------------------------------------

bool Actions::openPage(const QVariantList &arguments, QString *error)
{
    const int id = arguments.value(0).toInt();
    m_unit->windows()->openWindow(id);
    if (m_unit->windows()->currentWindow() == id)
        return true;
    QStringList ids;
    for (const int known : m_unit->windows()->windowIds())
        ids.append(QString::number(known));
    *error = QStringLiteral("expected a page of the plugin (%1), got %2")
                 .arg(ids.join(QStringLiteral(", ")))
                 .arg(id);
    return false;
}

bool Actions::goBack(const QVariantList &, QString *)
{
    m_unit->windows()->back();
    return true;
}

bool Actions::split(const QVariantList &, QString *)
{
    m_unit->windows()->toggleSplit();
    return true;
}

bool Actions::pressKey(const QVariantList &arguments, QString *)
{
    m_unit->windows()->pressKey(arguments.value(0).toInt()); // a page need not use it
    return true;
}

bool Actions::setFocus(const QVariantList &arguments, QString *)
{
    m_unit->audio()->setFocusGranted(arguments.value(0).toString() == QLatin1String("granted"));
    return true;
}

// ---- Fingers ------------------------------------------------------------------------------------

static void sendMouse(QWidget *widget, QEvent::Type type, QPoint at)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButtons held =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, widget->mapTo(widget->window(), at), widget->mapToGlobal(at),
                      button, held, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

/** Where on the screen a finger goes: to the middle of a widget, a place in it, or a bare place. */
bool Actions::findPlace(const QVariantList &arguments, QPoint *place, QString *error) const
{
    const bool isNamed = arguments.value(0).userType() == QMetaType::QString;
    if (!isNamed) {
        *place = QPoint(arguments.value(0).toInt(), arguments.value(1).toInt());
        if (m_unit->screen()->rect().contains(*place))
            return true;
        *error = QStringLiteral("expected a place on the screen of %1 x %2")
                     .arg(m_unit->screen()->width())
                     .arg(m_unit->screen()->height());
        return false;
    }
    const QString name = arguments.value(0).toString();
    const QWidget *widget = m_unit->screen()->widgetNamed(name);
    if (!widget || !widget->isVisible()) {
        *error = QStringLiteral("expected '%1' on the screen, %2")
                     .arg(name, widget ? QStringLiteral("it is hidden")
                                       : QStringLiteral("found no such widget"));
        return false;
    }
    const QPoint within = arguments.size() > 2 ? QPoint(arguments[1].toInt(), arguments[2].toInt())
                                               : widget->rect().center();
    *place = widget->mapTo(m_unit->screen(), within);
    const QWidget *top = m_unit->screen()->childAt(*place);
    if (top && (top == widget || widget->isAncestorOf(top)))
        return true;
    *error = QStringLiteral("expected to reach '%1', %2 lies over it")
                 .arg(name, top ? QStringLiteral("'%1'").arg(m_unit->screen()->nameOf(top))
                                : QStringLiteral("the edge of the screen"));
    return false;
}

bool Actions::press(const QVariantList &arguments, QString *error)
{
    QPoint place;
    if (!findPlace(arguments, &place, error))
        return false;
    QWidget *top = m_unit->screen()->childAt(place);
    m_pressed = top ? top : m_unit->screen();
    m_pressedAt = m_pressed->mapFrom(m_unit->screen(), place);
    sendMouse(m_pressed, QEvent::MouseButtonPress, m_pressedAt);
    return true;
}

bool Actions::move(const QVariantList &arguments, QString *error)
{
    if (!m_pressed) {
        *error = QStringLiteral("expected a press before");
        return false;
    }
    m_pressedAt = m_pressed->mapFrom(
        m_unit->screen(), QPoint(arguments.value(0).toInt(), arguments.value(1).toInt()));
    sendMouse(m_pressed, QEvent::MouseMove, m_pressedAt);
    return true;
}

bool Actions::release(const QVariantList &, QString *error)
{
    if (!m_pressed) {
        *error = QStringLiteral("expected a press before");
        return false;
    }
    QWidget *pressed = m_pressed;
    m_pressed.clear();
    sendMouse(pressed, QEvent::MouseButtonRelease, m_pressedAt);
    return true;
}

bool Actions::touch(const QVariantList &arguments, QString *error)
{
    return press(arguments, error) && (!m_pressed || release({}, error));
}

// ---- The car and the host -----------------------------------------------------------------------

bool Actions::sendSignal(const QVariantList &arguments, QString *error)
{
    return emitSignal(arguments, error);
}

bool Actions::callHost(const QVariantList &arguments, QString *error)
{
    return callHostObject(arguments, error);
}

bool Actions::invoke(const QVariantList &arguments, QString *error)
{
    const QString name = arguments.value(0).toString();
    QWidget *widget = name == QLatin1String("page") ? m_unit->windows()->currentPage()
                                                    : m_unit->screen()->widgetNamed(name);
    if (widget)
        return callByName(widget, arguments, error);
    *error = QStringLiteral("expected a widget on the screen, found no '%1'").arg(name);
    return false;
}

bool Actions::setControl(const QVariantList &arguments, QString *error)
{
    Controls *controls = m_session->drive()->source()->controls();
    Controls::Control control = Controls::Count;
    int value = 0;
    if (!controls) {
        *error = QStringLiteral("expected the simulated car, this drive cannot be changed");
        return false;
    }
    if (!Controls::read(arguments.value(0).toString(), arguments.value(1).toString(), &control,
                        &value, error))
        return false;
    controls->set(control, value);
    return true;
}

bool Actions::setFault(const QVariantList &arguments, QString *error)
{
    const QString text = arguments.value(0).toString();
    Faults &faults = m_session->drive()->faults();
    if (text != QLatin1String("none"))
        return faults.add(text, error);
    for (int kind = 0; kind < Faults::KindCount; ++kind)
        faults.set(Faults::Kind(kind), 0);
    return true;
}

bool Actions::seek(const QVariantList &arguments, QString *)
{
    m_session->drive()->seek(qRound64(arguments.value(0).toDouble() * 1000));
    return true;
}
