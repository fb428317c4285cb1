#pragma once

#include <QString>

class Journal;
struct Setup;

/**
 * A session by hand as a scenario: what was done at which time, and after each deed the commands
 * that the plugin sent for it and the page that was open then.
 */
QString scenarioOf(const Journal *journal, const Setup &setup, const QString &title);
