#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QStringList>
#include <QVector>

/** What became of a step of a scenario. */
struct StepResult
{
    int line;
    qint64 ms; // of the session
    QString text;
    bool isExpectation;
    QString seen;      // for an expectation: what it was compared with
    QString failure;   // empty where it did not fail
    QByteArray before; // the screen as PNG, where it failed: before the last action, and then
    QByteArray after;

    QJsonObject toJson() const;
    static StepResult fromJson(const QJsonObject &json);
};

/** The result of a scenario. */
struct ScenarioResult
{
    QString file;
    QString title;
    int expectations = 0;
    double seconds = 0;        // of real time
    QString unusable;          // why it could not be played, in one line
    QStringList failures;      // a line each
    QStringList pictures;      // of the screen at each failure, or of none
    QVector<StepResult> steps; // for a report: those that were done

    QJsonObject toJson() const;
    static ScenarioResult fromJson(const QJsonObject &json);
};
