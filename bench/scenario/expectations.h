#pragma once

#include <QVariant>

class HeadUnit;
class Session;

/** Whether what a scenario expects is so, of the screen, the calls, the signals and the sound. */
class Expectations
{
public:
    Expectations(const HeadUnit *unit, const Session *session);

    /** Whether an expectation can be understood. @param error  what was expected in it instead */
    static bool check(const QVariantList &words, QString *error);

    /** From here on calls, signals and sounds count: something is about to be done. */
    void mark();
    /** How many warnings came that nobody expected. */
    int unexpectedWarnings() const;
    /** @param seen  what is so instead, for a person */
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
    qint64 m_mark = 0;   // number of the journal's entry that the last deed began with
    qint64 m_cursor = 0; // behind the last call or signal that was expected
    int m_warnings = 0;  // that were expected
};
