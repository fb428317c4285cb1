#pragma once

#include "session/setup.h"

#include <QString>
#include <QVariant>
#include <QVector>

/** One line of a scenario: an action or an expectation. */
struct ScenarioStep
{
    int line;
    qint64 ms; // of the session
    QString word;
    QVariantList arguments;
    QString text; // the line without its time
};

/** A test that the bench plays: a source, actions at their times, and expectations. */
struct Scenario
{
    QString file;
    QString title;
    Setup setup = ownSetup();
    bool mayWarn = false;
    QVector<ScenarioStep> steps;

    /** @param error  one line that names the file, the line and what was expected there */
    bool read(const QString &path, QString *error);
    int expectations() const;
    /** Unless it states otherwise: a silent module, unlimited speed, the first page, in English. */
    static Setup ownSetup();
};
