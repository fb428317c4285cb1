#pragma once

#include <QString>
#include <QVariant>

/**
 * Splits a line into its words: numbers, texts, lists and objects as JSON has them, hexadecimal
 * numbers, and bare words as texts. A # starts a comment.
 */
bool splitScenarioLine(const QString &line, QVariantList *words, QString *error);
/** The line for an action or an expectation, without the time. */
QString scenarioLine(const QString &word, const QVariantList &arguments);
/** A line with its time in front, in seconds. */
QString timedLine(qint64 ms, const QString &line);
