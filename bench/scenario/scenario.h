#pragma once

#include "session/setup.h"

#include <QString>
#include <QVariant>
#include <QVector>

/** One line of a scenario: something to do, or something to expect. */
struct ScenarioStep
{
    int line;
    qint64 ms; // of the session
    QString word;
    QVariantList arguments;
    QString text; // the line without its time
};

/** A story that the bench plays by itself: who drives, what is done, and what is to be seen then.
 */
struct Scenario
{
    QString file;
    QString title;
    Setup setup = ownSetup(); ///< what it begins with
    bool mayWarn = false;
    QVector<ScenarioStep> steps;

    /** @param error  one line that names the file, the line and what was expected there */
    bool read(const QString &path, QString *error);
    int expectations() const;

private:
    /** Without a car and as fast as it can, unless it says otherwise; always from the first page.
     */
    static Setup ownSetup();
};

/**
 * The words of a scenario's line: numbers, texts, lists and objects as JSON has them, hexadecimal
 * numbers, and bare words as texts. What follows a # is a remark.
 */
bool splitScenarioLine(const QString &line, QVariantList *words, QString *error);
/** A deed or an expectation as a scenario's line has it, without the time. */
QString scenarioLine(const QString &word, const QVariantList &arguments);
