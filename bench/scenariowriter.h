#pragma once

#include "faults.h"
#include "pages.h"
#include "simulator/climate.h"

#include <QString>

class Journal;

/** How a session began: what a scenario has to say before its first step. */
struct SessionStart
{
    QString source = QStringLiteral("simulator");
    module::Trim trim = module::Trim::Full;
    QStringList faults; // as on the command line
    quint32 seed = 1;
    int page = firstPage;
};

/**
 * A session by hand as a scenario: what was done at which time, and after each deed the commands
 * that the plugin sent for it and the page that was open then.
 */
QString scenarioOf(const Journal *journal, const SessionStart &start, const QString &title);
