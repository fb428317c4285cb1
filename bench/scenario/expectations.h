#pragma once

#include <QVariant>

class HeadUnit;
class Session;

/** Checks what a scenario expects of the screen, the calls, the signals and the sound. */
class Expectations
{
public:
    Expectations(const HeadUnit *unit, const Session *session);

    /** Whether an expectation is well-formed. @param error  what was expected instead */
    static bool check(const QVariantList &words, QString *error);

    /** An action follows: calls, signals and sounds count from here. */
    void mark();
    /** How many warnings the scenario did not expect. */
    int unexpectedWarnings() const;
    /** @param seen  the actual state, for a person; empty where it is as expected without more */
    bool holds(const QVariantList &words, QString *seen);

private:
    struct Kind;
    static const Kind kinds[];
    static const Kind *find(const QString &text);

    bool page(const QVariantList &words, QString *seen);
    bool camera(const QVariantList &words, QString *seen);
    bool call(const QVariantList &words, QString *seen);
    bool signal(const QVariantList &words, QString *seen);
    bool sound(const QVariantList &words, QString *seen);
    bool warning(const QVariantList &words, QString *seen);
    bool no(const QVariantList &words, QString *seen);
    bool widget(const QVariantList &words, QString *seen);
    int find(int kind, const QVariantList &words, qint64 from, QString *seen) const;

    const HeadUnit *m_unit;
    const Session *m_session;
    qint64 m_mark = 0;   // number of the first journal entry of the last action
    qint64 m_cursor = 0; // after the last expected call
    int m_warnings = 0;  // that were expected
};
