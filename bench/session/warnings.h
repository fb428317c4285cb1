#pragma once

#include <QObject>
#include <QStringList>
#include <QVector>

#include <functional>

class Session;
class WindowStack;

/**
 * The warnings of the process while it exists; there is one. Messages come from any thread, and
 * all of them are forwarded. Equal texts of a drive share an entry.
 */
class Warnings : public QObject
{
    Q_OBJECT
public:
    /** Where the bench is. */
    struct Moment
    {
        qint64 ms = 0; ///< of the session; negative while it is not known
        int page = -1; ///< -1 before one is open
    };
    struct Entry
    {
        QString text;
        int drive;    ///< counted from 0; moments of an earlier one are no longer in the journal
        Moment first; ///< where it was seen first
        qint64 lastMs;
        int count;
    };
    static constexpr int mostEntries = 500;
    static constexpr int longestText = 4000;

    Warnings();
    ~Warnings() override;

    /** Null where nobody collects warnings. */
    static Warnings *instance();
    /** How many there were. */
    static int count();
    /** The first ones, for a summary. */
    static QStringList first();

    /** Begins a drive. @param moment  called in this object's thread */
    void beginDrive(const std::function<Moment()> &moment);
    /** The same, at the moments of a session and the pages of a head unit. */
    void beginDrive(const Session *session, const WindowStack *windows);
    int drive() const;
    QVector<Entry> entries() const;
    /** How many warnings are in no entry, because their texts came after the limit. */
    int notKept() const;

signals:
    /** There were more, since the event loop was entered last. */
    void changed();

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);
    Moment now() const;
    void add(const QString &text);
    void keep(const QString &text);
    void placeAndReport();

    std::function<Moment()> m_moment;
};
