#include "session/actions.h"

#include "headunit.h"
#include "session/argumentchecks.h"
#include "session/boundcall.h"
#include "session/session.h"
#include "translator.h"

#include <QScopedValueRollback>

#include <algorithm>

using module::Controls;
using module::Faults;

// A recording keeps what a driver does at the unit, and not what changes the car or the module.
enum class Where { AtTheUnit, Elsewhere };

struct Actions::Word
{
    const char *word;
    Where where;
    const char *form; // of the arguments, for a person
    bool (*check)(const Arguments &values, QString *error);
    bool (*perform)(Actions *actions, const Arguments &values, QString *error);
};

// clang-format off
const Actions::Word Actions::table[] = {
    {"page",    Where::AtTheUnit, "the number of a page", isOneNumber,
        [](Actions *a, const Arguments &v, QString *error) { return a->openPage(v.value(0).toInt(), error); }},
    {"back",    Where::AtTheUnit, "nothing", isNothing,
        [](Actions *a, const Arguments &, QString *) { a->back(); return true; }},
    {"split",   Where::AtTheUnit, "nothing", isNothing,
        [](Actions *a, const Arguments &, QString *) { a->toggleSplit(); return true; }},
    {"key",     Where::AtTheUnit, "the number of a key", isOneNumber,
        [](Actions *a, const Arguments &v, QString *) { a->pressKey(v.value(0).toInt()); return true; }},
    {"touch",   Where::AtTheUnit, "a widget, a widget and a place in it, or a place", isPlace,
        [](Actions *a, const Arguments &v, QString *error) { return a->touch(v, error); }},
    {"press",   Where::AtTheUnit, "a widget, a widget and a place in it, or a place", isPlace,
        [](Actions *a, const Arguments &v, QString *error) { return a->press(v, error); }},
    {"move",    Where::AtTheUnit, "a place on the screen", isBarePlace,
        [](Actions *a, const Arguments &v, QString *error) { return a->move(v, error); }},
    {"release", Where::AtTheUnit, "nothing", isNothing,
        [](Actions *a, const Arguments &, QString *error) { return a->release(error); }},
    {"signal",  Where::Elsewhere, "a signal and its arguments", isSignal,
        [](Actions *a, const Arguments &v, QString *error) { return a->sendSignal(v.value(0).toString(), v.mid(1), error); }},
    {"host",    Where::Elsewhere, "an object of the host, a method and its arguments", isHostCall,
        [](Actions *a, const Arguments &v, QString *error) { return a->callHost(v, error); }},
    {"invoke",  Where::Elsewhere, "a widget or 'page', a method and its arguments", isCall,
        [](Actions *a, const Arguments &v, QString *error) { return a->invoke(v, error); }},
    {"car",     Where::Elsewhere, "a control and its value", isControl,
        [](Actions *a, const Arguments &v, QString *error) { return a->setControl(v.value(0).toString(), v.value(1).toString(), error); }},
    {"fault",   Where::Elsewhere, "a fault or 'none'", isFault,
        [](Actions *a, const Arguments &v, QString *error) { return a->setFault(v.value(0).toString(), error); }},
    {"focus",   Where::AtTheUnit, "'granted' or 'refused'", isFocus,
        [](Actions *a, const Arguments &v, QString *) { a->setFocusGranted(v.value(0).toString() == QLatin1String("granted")); return true; }},
    {"language", Where::AtTheUnit, "'en', 'de', 'fr' or 'es'", isLanguage,
        [](Actions *a, const Arguments &v, QString *) { a->setLanguage(v.value(0).toString()); return true; }},
    {"seek",    Where::Elsewhere, "a time in seconds", isTime,
        [](Actions *a, const Arguments &v, QString *) { a->seek(qRound64(v.value(0).toDouble() * 1000)); return true; }},
};
// clang-format on

Actions::Actions(HeadUnit *unit, QObject *parent)
    : QObject(parent), m_unit(unit), m_finger(unit->screen())
{
}

Actions::~Actions() = default;

void Actions::setSession(Session *session)
{
    m_session = session;
}

Session *Actions::session() const
{
    return m_session;
}

const Actions::Word *Actions::find(const QString &word)
{
    const auto *const found =
        std::find_if(std::begin(table), std::end(table),
                     [&word](const Word &known) { return word == QLatin1String(known.word); });
    return found == std::end(table) ? nullptr : found;
}

QStringList Actions::words()
{
    QStringList words;
    for (const Word &row : table)
        words.append(QLatin1String(row.word));
    return words;
}

bool Actions::check(const QString &word, const QVariantList &arguments, QString *error)
{
    const Word *found = find(word);
    if (found && found->check(arguments, error))
        return true;
    if (found && error->isEmpty())
        *error = QStringLiteral("expected %1 after '%2'").arg(QLatin1String(found->form), word);
    return false;
}

bool Actions::perform(const QString &word, const QVariantList &arguments, QString *error)
{
    const Word *found = find(word);
    return found && found->perform(this, arguments, error);
}

bool Actions::repeat(const QString &word, const QVariantList &arguments, QString *error)
{
    const Word *found = find(word);
    if (found && found->where == Where::AtTheUnit) {
        const QScopedValueRollback<bool> repeating(m_isRepeating, true);
        return found->check(arguments, error) && found->perform(this, arguments, error);
    }
    *error = QStringLiteral("expected an action at the unit, got '%1'").arg(word);
    return false;
}

/** @return whether there is a session to do it in */
bool Actions::begin(const char *word, const QVariantList &arguments)
{
    if (!m_session)
        return false;
    const QString text = QLatin1String(word);
    if (!m_isRepeating) {
        emit begins();
        m_session->journal()->note(m_session->nowMs(), Journal::Action, text, arguments);
    }
    if (find(text)->where == Where::AtTheUnit)
        m_session->recordAction(text, arguments);
    return true;
}

bool Actions::openPage(int id, QString *error)
{
    if (!begin("page", {id}))
        return false;
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

void Actions::back()
{
    if (begin("back"))
        m_unit->windows()->back();
}

void Actions::toggleSplit()
{
    if (begin("split"))
        m_unit->windows()->toggleSplit();
}

void Actions::pressKey(int key)
{
    if (begin("key", {key}))
        m_unit->windows()->pressKey(key); // a page need not use it
}

void Actions::setFocusGranted(bool granted)
{
    if (begin("focus", {granted ? QStringLiteral("granted") : QStringLiteral("refused")}))
        m_unit->audio()->setFocusGranted(granted);
}

void Actions::setLanguage(const QString &language)
{
    if (begin("language", {language}))
        Translator::instance()->setLanguage(language);
}

void Actions::seek(qint64 ms)
{
    if (begin("seek", {double(ms) / 1000}))
        m_session->drive()->seek(ms);
}

bool Actions::touch(const QVariantList &target, QString *error)
{
    return begin("touch", target) && m_finger.touch(target, error);
}

bool Actions::press(const QVariantList &target, QString *error)
{
    return begin("press", target) && m_finger.press(target, error);
}

bool Actions::move(const QVariantList &target, QString *error)
{
    return begin("move", target) && m_finger.move(target, error);
}

bool Actions::release(QString *error)
{
    return begin("release") && m_finger.release(error);
}

static bool invokeBound(const std::optional<BoundCall> &call)
{
    if (call)
        call->invoke();
    return call.has_value();
}

bool Actions::sendSignal(const QString &name, const QVariantList &arguments, QString *error)
{
    const QVariantList words = QVariantList{name} + arguments;
    if (!begin("signal", words))
        return false;
    const auto signal = bindSignal(words, error);
    if (signal)
        m_session->drive()->send(signal->method.name(), signal->arguments);
    return signal.has_value();
}

bool Actions::callHost(const QVariantList &arguments, QString *error)
{
    return begin("host", arguments) && invokeBound(bindHostMethod(arguments, error));
}

bool Actions::invoke(const QVariantList &arguments, QString *error)
{
    if (!begin("invoke", arguments))
        return false;
    const QString name = arguments.value(0).toString();
    QWidget *widget = name == QLatin1String("page") ? m_unit->windows()->currentPage()
                                                    : m_unit->screen()->widgetNamed(name);
    if (widget)
        return invokeBound(bindMethod(widget, arguments, error));
    *error = QStringLiteral("expected a widget on the screen, found no '%1'").arg(name);
    return false;
}

bool Actions::setControl(Controls::Control control, int value, QString *error)
{
    return setControl(QLatin1String(Controls::row(control).name), Controls::textOf(control, value),
                      error);
}

bool Actions::setControl(const QString &name, const QString &text, QString *error)
{
    if (!begin("car", {name, text}))
        return false;
    Controls *controls = m_session->drive()->source()->controls();
    if (!controls) {
        *error = QStringLiteral("expected the simulated car, this drive cannot be changed");
        return false;
    }
    Controls::Control control = Controls::Count;
    int value = 0;
    if (!Controls::read(name, text, &control, &value, error))
        return false;
    controls->set(control, value);
    return true;
}

void Actions::setFault(Faults::Kind kind, double value)
{
    const QString name = QLatin1String(Faults::nameOf(kind));
    if (begin("fault", {QStringLiteral("%1:%2").arg(name).arg(value)}))
        m_session->drive()->faults().set(kind, value);
}

bool Actions::setFault(const QString &fault, QString *error)
{
    if (!begin("fault", {fault}))
        return false;
    Faults &faults = m_session->drive()->faults();
    if (fault != QLatin1String("none"))
        return faults.add(fault, error);
    for (int kind = 0; kind < Faults::KindCount; ++kind)
        faults.set(Faults::Kind(kind), 0);
    return true;
}
