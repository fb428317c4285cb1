#pragma once

#include <QHash>
#include <QObject>
#include <QVariant>
#include <QVector>

/**
 * The events of a session in order: signals to the plugin, its calls to the host, actions, opened
 * pages and sounds. Only marks can be set later than their time. Beyond its limit it drops the
 * oldest entries; the totals include them.
 */
class Journal : public QObject
{
    Q_OBJECT
public:
    enum Kind : uchar { Signal, Action, Call, Page, Sound, Mark };
    static constexpr int KindCount = Mark + 1;

    struct Entry
    {
        qint64 ms; // of the session
        QVariantList arguments;
        int name; // see nameOf()
        Kind kind;
    };
    /** The total over all entries of one kind and name. */
    struct Total
    {
        QString name;
        Kind kind = Signal;
        int count = 0;
        qint64 lastMs = 0;
        QVariantList last; // arguments
    };

    /** @param limit  how many entries are kept; 0 to count only */
    explicit Journal(int limit = 0, QObject *parent = nullptr);
    ~Journal() override;

    static constexpr int usualLimit = 1000 * 1000;
    void setLimit(int limit) { m_limit = limit; }
    int limit() const { return m_limit; }

    void note(qint64 ms, Kind kind, const QString &name, const QVariantList &arguments);
    /** The same for a signal, by its name in the meta-object. */
    void noteSignal(qint64 ms, const QByteArray &name, const QVariantList &arguments);

    const QVector<Entry> &entries() const { return m_entries; }
    const QString &nameOf(const Entry &entry) const { return m_totals[entry.name].name; }
    /** Which entries are of a kind, in order of their time. */
    const QVector<int> &ofKind(Kind kind) const { return m_ofKind[kind]; }
    /** How many entries were dropped; the first one kept is number `dropped()`. */
    qint64 dropped() const { return m_dropped; }
    /** How many entries there were, the dropped ones included. */
    qint64 total() const { return m_dropped + m_entries.size(); }
    int count(Kind kind) const { return m_counts[kind]; }
    const QVector<Total> &totals() const { return m_totals; }
    /** The total of a name, null when it has not occurred. */
    const Total *totalOf(Kind kind, const QString &name) const;

    /** The first entry of a kind at or after a moment, as an index into ofKind(). */
    int lowerBound(Kind kind, qint64 ms) const;
    /** The time of the oldest entry, and of the latest. Marks do not count. */
    qint64 beginMs() const;
    qint64 endMs() const;

signals:
    void noted();
    /** The first entries were dropped: indexes shift by as many. */
    void shifted(int entries);

private:
    void append(qint64 ms, Kind kind, int name, const QVariantList &arguments);
    void insertPlace(Kind kind, qint64 ms);
    int intern(Kind kind, const QString &name);
    void dropOldest();

    int m_limit;
    QVector<Entry> m_entries;
    QVector<int> m_ofKind[KindCount];
    QVector<Total> m_totals;
    QHash<QString, int> m_names[KindCount];
    QHash<QByteArray, int> m_signals;
    int m_counts[KindCount] = {};
    qint64 m_dropped = 0;
};
