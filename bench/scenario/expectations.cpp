#include "scenario/expectations.h"

#include "headunit.h"
#include "pages.h"
#include "session/session.h"
#include "session/warnings.h"
#include "tools/imagenames.h"
#include "values.h"

#include <algorithm>

static QString word(const QVariantList &words, int i)
{
    return words.value(i).toString();
}

static bool isText(const QVariant &value)
{
    return value.userType() == QMetaType::QString;
}

/** A state of a widget, by its word. */
struct WidgetState
{
    const char *word;
    bool (*holds)(const QWidget *widget);
};

// clang-format off
static constexpr WidgetState states[] = {
    {"visible",   [](const QWidget *w) { return w->isVisible(); }},
    {"hidden",    [](const QWidget *w) { return !w->isVisible(); }},
    {"enabled",   [](const QWidget *w) { return w->isEnabled(); }},
    {"disabled",  [](const QWidget *w) { return !w->isEnabled(); }},
    {"checked",   [](const QWidget *w) { return w->property("checked").toBool(); }},
    {"unchecked", [](const QWidget *w) { return !w->property("checked").toBool(); }},
};
// clang-format on

static const WidgetState *stateOf(const QString &text)
{
    const auto *const found =
        std::find_if(std::begin(states), std::end(states), [&text](const WidgetState &state) {
            return text == QLatin1String(state.word);
        });
    return found == std::end(states) ? nullptr : found;
}

/** A state, or a property with what it is or contains. */
static bool isWidgetForm(const QVariantList &words)
{
    const bool contains = word(words, 2) == QLatin1String("contains");
    return isText(words.value(0)) && isText(words.value(1)) &&
           (stateOf(word(words, 1)) ? words.size() == 2 : words.size() == 3 + int(contains));
}

struct Expectations::Kind
{
    const char *word;
    const char *form; // of the arguments, for a person
    bool (*check)(const QVariantList &words);
    bool (Expectations::*holds)(const QVariantList &words, QString *seen);
};

// clang-format off
const Expectations::Kind Expectations::kinds[] = {
    {"page", "the number of a page",
        [](const QVariantList &w) { return w.size() == 2 && w[1].userType() == QMetaType::Double &&
                   w[1].toDouble() >= 0 && w[1].toDouble() < 1000; },
        &Expectations::page},
    {"camera", "shown, split or hidden",
        [](const QVariantList &w) {
            return w.size() == 2 && QStringList{"shown", "split", "hidden"}.contains(word(w, 1));
        }, &Expectations::camera},
    {"call", "an operation and, if they matter, its arguments",
        [](const QVariantList &w) { return w.size() >= 2 && isText(w[1]); }, &Expectations::call},
    {"signal", "a signal and, if they matter, its arguments",
        [](const QVariantList &w) {
            return w.size() >= 2 && module::moduleSignal(w[1].toByteArray()).method.isValid();
        }, &Expectations::signal},
    {"sound", "a part of what the audio stage notes",
        [](const QVariantList &w) { return w.size() == 2 && isText(w[1]); }, &Expectations::sound},
    {"warning", "a part of the warning's text",
        [](const QVariantList &w) { return w.size() == 2 && isText(w[1]); },
        &Expectations::warning},
    {"no", "call, signal or sound with what must not have been",
        [](const QVariantList &w) {
            return QStringList{"call", "signal", "sound"}.contains(word(w, 1)) &&
                   find(word(w, 1))->check(w.mid(1));
        }, &Expectations::no},
};
// clang-format on

const Expectations::Kind *Expectations::find(const QString &text)
{
    const auto *const found =
        std::find_if(std::begin(kinds), std::end(kinds),
                     [&text](const Kind &kind) { return text == QLatin1String(kind.word); });
    return found == std::end(kinds) ? nullptr : found;
}

bool Expectations::check(const QVariantList &words, QString *error)
{
    const Kind *kind = find(word(words, 0));
    if (kind ? kind->check(words) : isWidgetForm(words))
        return true;
    if (kind)
        *error = QStringLiteral("expected %1 after '%2'")
                     .arg(QLatin1String(kind->form), QLatin1String(kind->word));
    else
        *error = QStringLiteral("expected a widget with visible, hidden, enabled, disabled, "
                                "checked, unchecked, or a property and its value");
    return false;
}

Expectations::Expectations(const HeadUnit *unit, const Session *session)
    : m_unit(unit), m_session(session)
{
}

void Expectations::mark()
{
    m_mark = m_cursor = m_session->journal()->total();
}

bool Expectations::holds(const QVariantList &words, QString *seen)
{
    seen->clear();
    const Kind *kind = find(word(words, 0));
    return kind ? (this->*kind->holds)(words, seen) : widget(words, seen);
}

bool Expectations::page(const QVariantList &words, QString *seen)
{
    *seen = pageText(m_unit->windows()->currentWindow());
    return m_unit->windows()->currentWindow() == words[1].toInt();
}

bool Expectations::camera(const QVariantList &words, QString *seen)
{
    if (!m_unit->screen()->isCameraShown())
        *seen = QStringLiteral("hidden");
    else
        *seen = m_unit->screen()->isSplit() ? QStringLiteral("split") : QStringLiteral("shown");
    return *seen == word(words, 1);
}

/** An operation is named in full or without its class. */
static bool isNamed(const QString &name, const QString &wanted)
{
    return name == wanted || name.endsWith(QStringLiteral("::") + wanted);
}

/** A star matches any argument. */
static bool match(const QVariantList &arguments, const QVariantList &wanted)
{
    if (wanted.isEmpty())
        return true;
    return std::equal(arguments.begin(), arguments.end(), wanted.begin(), wanted.end(),
                      [](const QVariant &argument, const QVariant &other) {
                          return other == QVariant(QStringLiteral("*")) ||
                                 module::toJson(argument) == QJsonValue::fromVariant(other);
                      });
}

/** @param from  number of a journal entry. @return the index of the first match, or -1 */
int Expectations::find(int kind, const QVariantList &words, qint64 from, QString *seen) const
{
    static constexpr int mostShown = 6;
    const Journal *journal = m_session->journal();
    QStringList alike; // of the same name: likely what was meant
    QStringList others;
    const int first = int(qMax<qint64>(0, from - journal->dropped()));
    for (int i = first; i < journal->entries().size(); ++i) {
        const Journal::Entry &entry = journal->entries()[i];
        if (entry.kind != kind)
            continue;
        const QString &name = journal->nameOf(entry);
        const bool isSame = kind == Journal::Sound ? name.contains(word(words, 1))
                                                   : isNamed(name, word(words, 1)) &&
                                                         match(entry.arguments, words.mid(2));
        if (isSame) {
            *seen = (name + QLatin1Char(' ') + module::argumentsText(entry.arguments)).trimmed();
            return i;
        }
        const QString text =
            (name + QLatin1Char(' ') + module::argumentsText(entry.arguments)).trimmed();
        if (isNamed(name, word(words, 1)))
            alike.append(text);
        else if (kind != Journal::Signal)
            others.append(text);
    }
    others += alike;
    *seen = others.isEmpty() ? QStringLiteral("none")
                             : others.mid(qMax(0, others.size() - mostShown)).join(", ");
    return -1;
}

bool Expectations::call(const QVariantList &words, QString *seen)
{
    const int place = find(Journal::Call, words, m_cursor, seen);
    if (place >= 0)
        m_cursor = m_session->journal()->dropped() + place + 1;
    return place >= 0;
}

bool Expectations::signal(const QVariantList &words, QString *seen)
{
    return find(Journal::Signal, words, m_mark, seen) >= 0;
}

bool Expectations::sound(const QVariantList &words, QString *seen)
{
    return find(Journal::Sound, words, m_mark, seen) >= 0;
}

bool Expectations::warning(const QVariantList &words, QString *seen)
{
    QStringList warnings = Warnings::first().mid(m_warnings);
    *seen = warnings.isEmpty() ? QStringLiteral("none") : warnings.join(", ");
    if (warnings.isEmpty() || !warnings.constFirst().contains(word(words, 1)))
        return false;
    ++m_warnings;
    return true;
}

bool Expectations::no(const QVariantList &words, QString *seen)
{
    static const QHash<QString, Journal::Kind> kindOf = {
        {"call", Journal::Call}, {"signal", Journal::Signal}, {"sound", Journal::Sound}};
    const bool isAbsent = find(kindOf.value(word(words, 1)), words.mid(1), m_mark, seen) < 0;
    if (isAbsent)
        seen->clear(); // others of its kind
    return isAbsent;
}

bool Expectations::widget(const QVariantList &words, QString *seen)
{
    const QWidget *widget = m_unit->screen()->widgetNamed(word(words, 0));
    if (!widget) {
        *seen = QStringLiteral("no such widget");
        return false;
    }
    if (const WidgetState *state = stateOf(word(words, 1))) {
        const bool holds = state->holds(widget);
        *seen = holds ? QString() : QStringLiteral("it is not");
        return holds;
    }
    const QString property = word(words, 1);
    const bool contains = words.size() == 4;
    const QVariant &wanted = words.constLast();
    if (property == QLatin1String("image")) {
        const QStringList images = imagesShownBy(widget);
        *seen = images.isEmpty() ? QStringLiteral("none") : images.join(", ");
        return std::any_of(images.begin(), images.end(), [&](const QString &image) {
            return contains ? image.contains(wanted.toString()) : image == wanted.toString();
        });
    }
    const QVariant value = widget->property(property.toLatin1().constData());
    *seen = value.isValid() ? module::jsonText(value) : QStringLiteral("no such property");
    return contains ? value.toString().contains(wanted.toString())
                    : value.isValid() && module::toJson(value) == QJsonValue::fromVariant(wanted);
}

int Expectations::unexpectedWarnings() const
{
    return Warnings::count() - m_warnings;
}
