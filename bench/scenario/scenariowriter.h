#pragma once

#include <QString>

class Journal;
struct Setup;

/**
 * Writes a session as a scenario: each action at its time, followed by the commands that the plugin
 * sent for it and the page that it opened.
 */
QString scenarioOf(const Journal *journal, const Setup &setup, const QString &title);
