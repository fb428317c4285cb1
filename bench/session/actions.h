#pragma once

#include "drive.h"

#include <QObject>
#include <QPointer>
#include <QVariant>
#include <QWidget>

class HeadUnit;
class Session;

/**
 * Whoever works the head unit and the car: with menus, keys and panels, or from a scenario. Each
 * deed goes into the session's journal in the words of a scenario, and is then done.
 */
class Actions : public QObject
{
    Q_OBJECT
public:
    explicit Actions(HeadUnit *unit, QObject *parent = nullptr);
    ~Actions() override;

    void setSession(Session *session);
    Session *session() const;

    static QStringList words();
    /**
     * Whether one of the words can be done with these arguments, as far as that can be told
     * beforehand.
     * @param error  one line that says what was expected
     */
    static bool check(const QString &word, const QVariantList &arguments, QString *error);

    /**
     * Does something by its word in a scenario.
     * @param error  one line that says why it could not be done
     */
    bool perform(const QString &word, const QVariantList &arguments, QString *error);
    /** The same for what cannot fail, or whose failure shows. @return whether it was done */
    bool act(const QString &word, const QVariantList &arguments = {});
    /** Does again what a recording holds; the journal is for what is done in this session. */
    bool repeat(const QString &word, const QVariantList &arguments, QString *error);

signals:
    /** Something is about to be done. */
    void begins();

private:
    struct Verb;
    static const Verb verbs[];
    static const Verb *find(const QString &word);

    bool carryOut(const Verb &verb, const QVariantList &arguments, QString *error);
    bool openPage(const QVariantList &arguments, QString *error);
    bool goBack(const QVariantList &arguments, QString *error);
    bool split(const QVariantList &arguments, QString *error);
    bool pressKey(const QVariantList &arguments, QString *error);
    bool setFocus(const QVariantList &arguments, QString *error);
    bool findPlace(const QVariantList &arguments, QPoint *place, QString *error) const;
    bool touch(const QVariantList &arguments, QString *error);
    bool press(const QVariantList &arguments, QString *error);
    bool move(const QVariantList &arguments, QString *error);
    bool release(const QVariantList &arguments, QString *error);
    bool sendSignal(const QVariantList &arguments, QString *error);
    bool callHost(const QVariantList &arguments, QString *error);
    bool invoke(const QVariantList &arguments, QString *error);
    bool setControl(const QVariantList &arguments, QString *error);
    bool setFault(const QVariantList &arguments, QString *error);
    bool seek(const QVariantList &arguments, QString *error);

    HeadUnit *m_unit;
    QPointer<Session> m_session;
    QPointer<QWidget> m_pressed;
    QPoint m_pressedAt; // within it
};
