#include "scenario/scenario.h"

#include "drive.h"
#include "session/journal.h"

#include "linereader.h"
#include "scenario/expectations.h"
#include "session/actions.h"
#include "values.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>

#include <algorithm>
#include <cmath>

// ---- Words --------------------------------------------------------------------------------------

/** Where a text, list or object that begins here ends; -1 when it does not. */
static int endOfJson(const QString &line, int begin)
{
    int depth = 0;
    bool inText = false;
    for (int i = begin; i < line.size(); ++i) {
        const QChar c = line[i];
        if (inText && c == QLatin1Char('\\'))
            ++i;
        else if (c == QLatin1Char('"'))
            inText = !inText;
        else if (!inText && (c == QLatin1Char('[') || c == QLatin1Char('{')))
            ++depth;
        else if (!inText && (c == QLatin1Char(']') || c == QLatin1Char('}')))
            --depth;
        if (!inText && depth <= 0)
            return i + 1;
    }
    return -1;
}

static bool readJson(const QString &text, QVariant *value)
{
    // A bare text is no document of its own.
    const QByteArray wrapped = '[' + text.toUtf8() + ']';
    QJsonParseError error;
    const QJsonArray array = QJsonDocument::fromJson(wrapped, &error).array();
    *value = array.at(0).toVariant();
    return error.error == QJsonParseError::NoError && array.size() == 1;
}

static QVariant readBareWord(const QString &word)
{
    bool isNumber = false;
    if (word.startsWith(QLatin1Char('+')))
        return word; // a time counted from the step before
    if (word.startsWith(QLatin1String("0x"))) {
        const int number = word.toInt(&isNumber, 16);
        return isNumber ? QVariant(double(number)) : QVariant(word);
    }
    const double number = word.toDouble(&isNumber);
    if (isNumber && std::isfinite(number))
        return number;
    if (word == QLatin1String("true") || word == QLatin1String("false"))
        return word == QLatin1String("true");
    return word == QLatin1String("null") ? QVariant::fromValue(nullptr) : QVariant(word);
}

bool splitScenarioLine(const QString &line, QVariantList *words, QString *error)
{
    int at = 0;
    while (at < line.size()) {
        const QChar c = line[at];
        if (c.isSpace()) {
            ++at;
            continue;
        }
        if (c == QLatin1Char('#'))
            break;
        int end = at;
        if (QStringLiteral("\"[{").contains(c)) {
            end = endOfJson(line, at);
            QVariant value;
            if (end < 0 || !readJson(line.mid(at, end - at), &value)) {
                *error = QStringLiteral("expected a text, list or object, got %1")
                             .arg(line.mid(at).trimmed());
                return false;
            }
            words->append(value);
        } else {
            while (end < line.size() && !line[end].isSpace())
                ++end;
            words->append(readBareWord(line.mid(at, end - at)));
        }
        at = end;
    }
    return true;
}

static QString wordText(const QVariant &value)
{
    if (value.userType() == QMetaType::QString) {
        QString text = value.toString();
        const bool isBare = !text.isEmpty() &&
                            readBareWord(text).userType() == QMetaType::QString &&
                            std::none_of(text.begin(), text.end(), [](QChar c) {
                                return c.isSpace() || QStringLiteral("\"[{#").contains(c);
                            });
        if (isBare)
            return text;
    }
    // A list or map that was read from a line goes back as it came.
    const bool isRead =
        value.userType() == QMetaType::QVariantList || value.userType() == QMetaType::QVariantMap;
    if (!isRead)
        return module::jsonText(value);
    const QJsonDocument document(QJsonArray{QJsonValue::fromVariant(value)});
    return QString::fromUtf8(document.toJson(QJsonDocument::Compact)).mid(1).chopped(1);
}

QString scenarioLine(const QString &word, const QVariantList &arguments)
{
    QString line = word;
    for (const QVariant &argument : arguments)
        line += QLatin1Char(' ') + wordText(argument);
    return line;
}

// ---- Lines --------------------------------------------------------------------------------------

/** A word that only a scenario knows; the others are the operator's. */
struct OwnWord
{
    const char *word;
    const char *form; // of what follows, for a person
    bool (*check)(const QVariant &value);
};

// clang-format off
static constexpr OwnWord ownWords[] = {
    {"wait", "up to 10 seconds",
        [](const QVariant &value) { return value.userType() == QMetaType::Double &&
                   value.toDouble() >= 0 && value.toDouble() <= 10; }},
    {"picture", "a name without a folder",
        [](const QVariant &value) { return value.userType() == QMetaType::QString &&
                   !value.toString().contains(QLatin1Char('/')); }},
};
// clang-format on

/** Reads a scenario's lines, one after the other. */
class ScenarioReader
{
public:
    explicit ScenarioReader(Scenario *scenario) : m_scenario(scenario) {}

    bool read(const QString &line, int number, QString *error)
    {
        QVariantList words;
        if (!splitScenarioLine(line, &words, error))
            return false;
        if (words.isEmpty())
            return true;
        if (words[0].userType() != QMetaType::QString || m_hasSteps || isStep(words))
            return readStep(words, number, error);
        return readHeading(words, error);
    }

private:
    static bool isStep(const QVariantList &words)
    {
        return words[0].toString().startsWith(QLatin1Char('+'));
    }

    bool readHeading(const QVariantList &words, QString *error)
    {
        const QString word = words[0].toString();
        const QString value = words.value(1).toString();
        if (word == QLatin1String("allow-warnings") && words.size() == 1) {
            m_scenario->mayWarn = true;
            return true;
        }
        if (words.size() != 2) {
            *error =
                QStringLiteral("expected a time, or scenario, source, trim, seed or fault with "
                               "a value, or allow-warnings, got '%1'")
                    .arg(word);
            return false;
        }
        if (word == QLatin1String("scenario")) {
            m_scenario->title = value;
            return true;
        }
        if (word == QLatin1String("source"))
            return readSource(value, error);
        if (word == QLatin1String("fault"))
            return m_scenario->setup.faults.add(value, error);
        if (word == QLatin1String("seed"))
            return readSeed(words[1], error);
        if (word == QLatin1String("trim")) {
            if (!module::trimFromName(value, &m_scenario->setup.trim))
                *error = QStringLiteral("expected full, no-rear or manual, got '%1'").arg(value);
            return error->isEmpty();
        }
        *error = QStringLiteral("expected scenario, source, trim, seed, fault or allow-warnings, "
                                "got '%1'")
                     .arg(word);
        return false;
    }

    bool readSource(const QString &value, QString *error)
    {
        m_scenario->setup.source = value;
        if (value == QLatin1String("none") || value == QLatin1String("simulator"))
            return true;
        m_scenario->setup.source = QFileInfo(m_scenario->file).dir().filePath(value);
        if (QFileInfo(m_scenario->setup.source).isFile())
            return true;
        *error = QStringLiteral("expected none, simulator or a recorded drive, found no file '%1'")
                     .arg(value);
        return false;
    }

    bool readSeed(const QVariant &value, QString *error)
    {
        bool isNumber = false;
        const quint32 seed = value.toUInt(&isNumber);
        if (!isNumber)
            *error = QStringLiteral("expected a seed from 0 to 4294967295, got '%1'")
                         .arg(value.toString());
        m_scenario->setup.faults.setSeed(seed);
        return isNumber;
    }

    /** A time of its own, one behind the step before it, or the same. */
    bool readTime(QVariantList *words, QString *error)
    {
        const QString text = words->constFirst().toString();
        const bool isAbsolute = words->constFirst().userType() == QMetaType::Double;
        bool isNumber = false;
        const double seconds = text.toDouble(&isNumber);
        if (!isNumber)
            return true;
        words->removeFirst();
        const double ms = seconds * 1000 + (isAbsolute ? 0 : double(m_ms));
        if (!(ms >= double(m_ms) && ms <= longestMs)) {
            *error = QStringLiteral("expected a time of %1 s or later, up to a day, got %2")
                         .arg(double(m_ms) / 1000)
                         .arg(text);
            return false;
        }
        m_ms = qRound64(ms);
        return true;
    }

    bool readStep(QVariantList words, int number, QString *error)
    {
        m_hasSteps = true;
        if (!readTime(&words, error))
            return false;
        if (words.isEmpty() || words[0].userType() != QMetaType::QString) {
            *error = QStringLiteral("expected something to do or to expect behind the time");
            return false;
        }
        const ScenarioStep step = {number, m_ms, words[0].toString(), words.mid(1),
                                   scenarioLine(words[0].toString(), words.mid(1))};
        if (!check(step, error))
            return false;
        m_scenario->steps.append(step);
        return true;
    }

    static bool check(const ScenarioStep &step, QString *error)
    {
        if (step.word == QLatin1String("expect"))
            return Expectations::check(step.arguments, error);
        for (const OwnWord &own : ownWords) {
            if (step.word != QLatin1String(own.word))
                continue;
            if (step.arguments.size() == 1 && own.check(step.arguments[0]))
                return true;
            *error = QStringLiteral("expected %1 behind '%2'")
                         .arg(QLatin1String(own.form), QLatin1String(own.word));
            return false;
        }
        if (Actions::words().contains(step.word))
            return Actions::check(step.word, step.arguments, error);
        *error = QStringLiteral("expected one of expect, wait, picture, %1, got '%2'")
                     .arg(Actions::words().join(QStringLiteral(", ")), step.word);
        return false;
    }

    static constexpr double longestMs = 24 * 3600e3;
    Scenario *m_scenario;
    qint64 m_ms = 0;
    bool m_hasSteps = false;
};

bool Scenario::read(const QString &path, QString *error)
{
    file = path;
    title = QFileInfo(path).completeBaseName();
    module::LineReader lines(path, error);
    ScenarioReader reader(this);
    QByteArray line;
    while (lines.isOpen() && lines.next(&line)) {
        QString fault;
        if (lines.wasTooLong())
            fault = QStringLiteral("expected a shorter line");
        else if (reader.read(QString::fromUtf8(line), lines.lineNumber(), &fault))
            continue;
        *error = QStringLiteral("%1: line %2: %3").arg(path).arg(lines.lineNumber()).arg(fault);
        return false;
    }
    if (!error->isEmpty())
        return false;
    if (expectations() > 0)
        return true;
    *error = QStringLiteral("%1: expected a scenario that expects something, found none").arg(path);
    return false;
}

Setup Scenario::ownSetup()
{
    Setup setup;
    setup.source = QStringLiteral("none");
    setup.isPageGiven = true;
    setup.speed = module::Drive::Unlimited;
    setup.journalLimit = Journal::usualLimit;
    return setup;
}

int Scenario::expectations() const
{
    return int(std::count_if(steps.begin(), steps.end(), [](const ScenarioStep &step) {
        return step.word == QLatin1String("expect");
    }));
}
