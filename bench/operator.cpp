#include "operator.h"

#include "audiostage.h"
#include "headunit.h"
#include "nordahost.h"
#include "screen.h"
#include "session.h"
#include "simulator/controls.h"
#include "values.h"

#include <QApplication>
#include <QMouseEvent>

#include <algorithm>

using module::Controls;
using module::Faults;

// ---- What can be done, and what is expected behind each word
// -------------------------------------

using Arguments = QVariantList;

static bool isNumber(const QVariant &value)
{
    return value.userType() == QMetaType::Double || value.userType() == QMetaType::Int;
}

static bool areNumbers(const Arguments &values, int count)
{
    return values.size() == count &&
           std::all_of(values.begin(), values.end(), [](const QVariant &v) { return isNumber(v); });
}

static bool isOneNumber(const Arguments &values, QString *)
{
    return areNumbers(values, 1);
}

static bool isNothing(const Arguments &values, QString *)
{
    return values.isEmpty();
}

static bool isPlace(const Arguments &values, QString *)
{
    const bool isNamed = values.value(0).userType() == QMetaType::QString;
    return isNamed ? values.size() == 1 || areNumbers(values.mid(1), 2) : areNumbers(values, 2);
}

static bool isBarePlace(const Arguments &values, QString *)
{
    return areNumbers(values, 2);
}

static bool isFault(const Arguments &values, QString *error)
{
    const QString text = values.value(0).toString();
    return values.size() == 1 && (text == QLatin1String("none") || Faults().add(text, error));
}

static bool isControl(const Arguments &values, QString *error)
{
    Controls::Control control = Controls::Count;
    int value = 0;
    return values.size() == 2 &&
           Controls::read(values[0].toString(), values[1].toString(), &control, &value, error);
}

static bool isFocus(const Arguments &values, QString *)
{
    return values.size() == 1 && QStringList{"granted", "refused"}.contains(values[0].toString());
}

static bool isTime(const Arguments &values, QString *)
{
    return areNumbers(values, 1) && values[0].toDouble() >= 0;
}

static bool emitSignal(const Arguments &values, bool isTrial, QString *error)
{
    const module::ModuleSignal signal = module::moduleSignal(values.value(0).toByteArray());
    QVariantList bound = values.mid(1);
    if (!signal.method.isValid()) {
        *error = QStringLiteral("expected a signal of the module, got '%1'")
                     .arg(values.value(0).toString());
        return false;
    }
    if (!module::bindArguments(signal.method, &bound, error))
        return false;
    if (!isTrial)
        module::invokeMethod(signal.emitter, signal.method, bound);
    return true;
}

static bool isSignal(const Arguments &values, QString *error)
{
    return emitSignal(values, true, error);
}

static QMetaMethod methodNamed(const QObject *object, const QByteArray &name, int arguments)
{
    const QMetaObject *meta = object->metaObject();
    for (int i = 0; i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.name() == name && method.parameterCount() == arguments &&
            method.methodType() != QMetaMethod::Signal)
            return method;
    }
    return {};
}

static bool callByName(QObject *object, const Arguments &values, bool isTrial, QString *error)
{
    const QByteArray name = values.value(1).toByteArray();
    QVariantList bound = values.mid(2);
    const QMetaMethod method = methodNamed(object, name, bound.size());
    if (!method.isValid()) {
        *error = QStringLiteral("expected a method of %1 with %2 arguments, got '%3'")
                     .arg(values.value(0).toString())
                     .arg(bound.size())
                     .arg(QString::fromLatin1(name));
        return false;
    }
    if (!module::bindArguments(method, &bound, error))
        return false;
    if (!isTrial)
        module::invokeMethod(object, method, bound);
    return true;
}

static bool callHostObject(const Arguments &values, bool isTrial, QString *error)
{
    QObject *object = nordaHostObject(values.value(0).toByteArray().constData());
    if (object)
        return callByName(object, values, isTrial, error);
    *error =
        QStringLiteral("expected an object of the host, got '%1'").arg(values.value(0).toString());
    return false;
}

static bool isHostCall(const Arguments &values, QString *error)
{
    return values.size() >= 2 && callHostObject(values, true, error);
}

static bool isCall(const Arguments &values, QString *)
{
    return values.size() >= 2;
}

struct Operator::Verb
{
    const char *word;
    const char *form; // of the arguments, for a person
    bool (*check)(const Arguments &values, QString *error);
    bool (Operator::*perform)(const Arguments &values, QString *error);
};

// clang-format off
const Operator::Verb Operator::verbs[] = {
    {"page",    "the number of a page",                             isOneNumber, &Operator::openPage},
    {"back",    "nothing",                                          isNothing,   &Operator::goBack},
    {"split",   "nothing",                                          isNothing,   &Operator::split},
    {"key",     "the number of a key",                              isOneNumber, &Operator::pressKey},
    {"touch",   "a widget, a widget and a place in it, or a place", isPlace,     &Operator::touch},
    {"press",   "a widget, a widget and a place in it, or a place", isPlace,     &Operator::press},
    {"move",    "a place on the screen",                            isBarePlace, &Operator::move},
    {"release", "nothing",                                          isNothing,   &Operator::release},
    {"signal",  "a signal and its arguments",                       isSignal,    &Operator::sendSignal},
    {"host",    "an object of the host, a method and its arguments", isHostCall, &Operator::callHost},
    {"invoke",  "a widget or 'page', a method and its arguments",   isCall,      &Operator::invoke},
    {"car",     "a control and its value",                          isControl,   &Operator::setControl},
    {"fault",   "a fault or 'none'",                                isFault,     &Operator::setFault},
    {"focus",   "'granted' or 'refused'",                           isFocus,     &Operator::setFocus},
    {"seek",    "a time in seconds",                                isTime,      &Operator::seek},
};
// clang-format on

Operator::Operator(Screen *screen, HeadUnit *unit, AudioStage *stage, QObject *parent)
    : QObject(parent), m_screen(screen), m_unit(unit), m_stage(stage)
{
}

Operator::~Operator() = default;

void Operator::setSession(Session *session)
{
    m_session = session;
}

Session *Operator::session() const
{
    return m_session;
}

const Operator::Verb *Operator::find(const QString &word)
{
    const auto *const verb =
        std::find_if(std::begin(verbs), std::end(verbs),
                     [&word](const Verb &known) { return word == QLatin1String(known.word); });
    return verb == std::end(verbs) ? nullptr : verb;
}

QStringList Operator::words()
{
    QStringList words;
    for (const Verb &verb : verbs)
        words.append(QLatin1String(verb.word));
    return words;
}

bool Operator::check(const QString &word, const QVariantList &arguments, QString *error)
{
    const Verb *verb = find(word);
    if (!verb)
        *error = QStringLiteral("expected one of %1, got '%2'")
                     .arg(words().join(QStringLiteral(", ")), word);
    else if (verb->check(arguments, error))
        return true;
    else if (error->isEmpty())
        *error = QStringLiteral("expected %1 behind '%2'").arg(QLatin1String(verb->form), word);
    return false;
}

bool Operator::perform(const QString &word, const QVariantList &arguments, QString *error)
{
    const Verb *verb = find(word);
    if (!verb || !m_session)
        return false;
    m_session->journal()->note(m_session->nowMs(), Journal::Deed, word, arguments);
    const QPointer<Operator> self = this;
    const bool isDone = (this->*verb->perform)(arguments, error);
    if (self)
        emit done(word);
    return isDone;
}

bool Operator::act(const QString &word, const QVariantList &arguments)
{
    QString error;
    return perform(word, arguments, &error);
}

// ---- The unit's own keys
// -------------------------------------------------------------------------

bool Operator::openPage(const QVariantList &arguments, QString *error)
{
    const int id = arguments.value(0).toInt();
    m_unit->openWindow(id);
    if (m_unit->currentWindow() == id)
        return true;
    QStringList ids;
    for (const int known : m_unit->windowIds())
        ids.append(QString::number(known));
    *error = QStringLiteral("expected a page of the plugin (%1), got %2")
                 .arg(ids.join(QStringLiteral(", ")))
                 .arg(id);
    return false;
}

bool Operator::goBack(const QVariantList &, QString *)
{
    m_unit->back();
    return true;
}

bool Operator::split(const QVariantList &, QString *)
{
    m_unit->toggleSplit();
    return true;
}

bool Operator::pressKey(const QVariantList &arguments, QString *error)
{
    *error = QStringLiteral("expected a key that the open page uses");
    return m_unit->pressKey(arguments.value(0).toInt());
}

bool Operator::setFocus(const QVariantList &arguments, QString *)
{
    m_stage->setFocusGranted(arguments.value(0).toString() == QLatin1String("granted"));
    return true;
}

// ---- Fingers
// -------------------------------------------------------------------------------------

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
bool Operator::findPlace(const QVariantList &arguments, QPoint *place, QString *error) const
{
    const bool isNamed = arguments.value(0).userType() == QMetaType::QString;
    if (!isNamed) {
        *place = QPoint(arguments.value(0).toInt(), arguments.value(1).toInt());
        if (m_screen->rect().contains(*place))
            return true;
        *error = QStringLiteral("expected a place on the screen of %1 x %2")
                     .arg(m_screen->width())
                     .arg(m_screen->height());
        return false;
    }
    const QString name = arguments.value(0).toString();
    const QWidget *widget = m_screen->widgetNamed(name);
    if (!widget || !widget->isVisible()) {
        *error = QStringLiteral("expected '%1' on the screen, %2")
                     .arg(name, widget ? QStringLiteral("it is hidden")
                                       : QStringLiteral("found no such widget"));
        return false;
    }
    const QPoint within = arguments.size() > 2 ? QPoint(arguments[1].toInt(), arguments[2].toInt())
                                               : widget->rect().center();
    *place = widget->mapTo(m_screen, within);
    const QWidget *top = m_screen->childAt(*place);
    if (top && (top == widget || widget->isAncestorOf(top)))
        return true;
    *error = QStringLiteral("expected to reach '%1', %2 lies over it")
                 .arg(name, top ? QStringLiteral("'%1'").arg(m_screen->nameOf(top))
                                : QStringLiteral("the edge of the screen"));
    return false;
}

bool Operator::press(const QVariantList &arguments, QString *error)
{
    QPoint place;
    if (!findPlace(arguments, &place, error))
        return false;
    QWidget *top = m_screen->childAt(place);
    m_pressed = top ? top : m_screen;
    m_pressedAt = m_pressed->mapFrom(m_screen, place);
    sendMouse(m_pressed, QEvent::MouseButtonPress, m_pressedAt);
    return true;
}

bool Operator::move(const QVariantList &arguments, QString *error)
{
    if (!m_pressed) {
        *error = QStringLiteral("expected a press before");
        return false;
    }
    m_pressedAt = m_pressed->mapFrom(
        m_screen, QPoint(arguments.value(0).toInt(), arguments.value(1).toInt()));
    sendMouse(m_pressed, QEvent::MouseMove, m_pressedAt);
    return true;
}

bool Operator::release(const QVariantList &, QString *error)
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

bool Operator::touch(const QVariantList &arguments, QString *error)
{
    return press(arguments, error) && (!m_pressed || release({}, error));
}

// ---- The car and the host
// ------------------------------------------------------------------------

bool Operator::sendSignal(const QVariantList &arguments, QString *error)
{
    return emitSignal(arguments, false, error);
}

bool Operator::callHost(const QVariantList &arguments, QString *error)
{
    return callHostObject(arguments, false, error);
}

bool Operator::invoke(const QVariantList &arguments, QString *error)
{
    const QString name = arguments.value(0).toString();
    QWidget *widget =
        name == QLatin1String("page") ? m_unit->currentPage() : m_screen->widgetNamed(name);
    if (widget)
        return callByName(widget, arguments, false, error);
    *error = QStringLiteral("expected a widget on the screen, found no '%1'").arg(name);
    return false;
}

bool Operator::setControl(const QVariantList &arguments, QString *error)
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

bool Operator::setFault(const QVariantList &arguments, QString *error)
{
    const QString text = arguments.value(0).toString();
    Faults &faults = m_session->drive()->faults();
    if (text != QLatin1String("none"))
        return faults.add(text, error);
    for (int kind = 0; kind < Faults::KindCount; ++kind)
        faults.set(Faults::Kind(kind), 0);
    return true;
}

bool Operator::seek(const QVariantList &arguments, QString *)
{
    m_session->drive()->seek(qRound64(arguments.value(0).toDouble() * 1000));
    return true;
}
