#include "scenario/scenario.h"

#include "drive.h"
#include "linereader.h"
#include "scenario/expectations.h"
#include "scenario/scenarioline.h"
#include "session/actions.h"
#include "session/journal.h"
#include "translator.h"
#include "unitlanguage.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>

/** A word of scenarios only; the others are actions. */
struct OwnWord
{
    const char *word;
    const char *form; // of the argument, for a person
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
                QStringLiteral("expected a time, or scenario, source, dbc, map, trim, "
                               "language, seed or fault with a value, or allow-warnings, got '%1'")
                    .arg(word);
            return false;
        }
        if (word == QLatin1String("scenario")) {
            m_scenario->title = value;
            return true;
        }
        if (word == QLatin1String("source"))
            return readSource(value, error);
        if (word == QLatin1String("dbc"))
            return readFile(QStringLiteral("a DBC file"), value, &m_scenario->setup.car.dbc, error);
        if (word == QLatin1String("map"))
            return readFile(QStringLiteral("a map"), value, &m_scenario->setup.car.map, error);
        if (word == QLatin1String("fault"))
            return m_scenario->setup.faults.add(value, error);
        if (word == QLatin1String("seed"))
            return readSeed(words[1], error);
        if (word == QLatin1String("language"))
            return readLanguage(value, error);
        if (word == QLatin1String("trim")) {
            if (!module::trimFromName(value, &m_scenario->setup.trim))
                *error = QStringLiteral("expected full, no-rear or manual, got '%1'").arg(value);
            return error->isEmpty();
        }
        *error = QStringLiteral("expected scenario, source, dbc, map, trim, language, seed, "
                                "fault or allow-warnings, got '%1'")
                     .arg(word);
        return false;
    }

    bool readLanguage(const QString &value, QString *error)
    {
        m_scenario->setup.language = value;
        if (Translator::languages().contains(value))
            return true;
        *error = QStringLiteral("expected %1, got '%2'").arg(UnitLanguage::expected(), value);
        return false;
    }

    bool readSource(const QString &value, QString *error)
    {
        m_scenario->setup.source = value;
        if (value == QLatin1String("none") || value == QLatin1String("simulator"))
            return true;
        return readFile(QStringLiteral("none, simulator or a recorded drive"), value,
                        &m_scenario->setup.source, error);
    }

    /** Beside the scenario, where its path does not begin at the root. */
    bool readFile(const QString &what, const QString &value, QString *path, QString *error) const
    {
        *path = QFileInfo(m_scenario->file).dir().filePath(value);
        if (QFileInfo(*path).isFile())
            return true;
        *error = QStringLiteral("expected %1, found no file '%2'").arg(what, value);
        return false;
    }

    bool readSeed(const QVariant &value, QString *error)
    {
        static constexpr double highest = std::numeric_limits<quint32>::max();
        bool isNumber = false;
        const double seed = value.toDouble(&isNumber);
        if (!isNumber || !(seed >= 0 && seed <= highest) || seed != std::floor(seed)) {
            *error = QStringLiteral("expected a seed from 0 to 4294967295, got '%1'")
                         .arg(value.toString());
            return false;
        }
        m_scenario->setup.faults.setSeed(quint32(seed));
        return true;
    }

    /** An absolute time, one relative to the step before, or none for the same. */
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
            *error = QStringLiteral("expected an action or an expectation after the time");
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
            *error = QStringLiteral("expected %1 after '%2'")
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
        *error =
            QStringLiteral("%1: line %2: %3").arg(path, QString::number(lines.lineNumber()), fault);
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
    setup.language = QStringLiteral("en");
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
