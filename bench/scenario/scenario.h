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
