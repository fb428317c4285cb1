#pragma once

#include "drive.h"
#include "faults.h"
#include "session/finger.h"
#include "simulator/controls.h"

#include <QObject>
#include <QPointer>
#include <QVariant>

class HeadUnit;
class Session;

/**
 * Everything that a person can do to the head unit and the car, with menus, keys and panels or from
 * a scenario. The session's journal notes each action in the words of a scenario.
 */
class Actions : public QObject
{
    Q_OBJECT
public:
    explicit Actions(HeadUnit *unit, QObject *parent = nullptr);
    ~Actions() override;

    void setSession(Session *session);
    Session *session() const;

    // Without a session none of these does anything. One that can fail sets the error to one line.

    bool openPage(int id, QString *error);
    void back();
    void toggleSplit();
    void pressKey(int key);
    void setFocusGranted(bool granted);
    void setLanguage(const QString &language);
    void seek(qint64 ms);
    /** @param arguments  as a scenario has them */
    bool sendSignal(const QString &name, const QVariantList &arguments, QString *error);
    /** A recorded drive has no controls. */
    bool setControl(module::Controls::Control control, int value, QString *error);
    /** @param value  0 is off */
    void setFault(module::Faults::Kind kind, double value);

    /** The words of a scenario for all of these and some more. */
    static QStringList words();
    /**
     * Whether a word accepts these arguments, as far as that is known beforehand.
     * @param error  one line about what was expected
     */
    static bool check(const QString &word, const QVariantList &arguments, QString *error);
    /** Does what a word stands for; the arguments have been checked. */
    bool perform(const QString &word, const QVariantList &arguments, QString *error);
    /** Repeats an action of a recording, which the journal leaves out. */
    bool repeat(const QString &word, const QVariantList &arguments, QString *error);

signals:
    /** An action is about to be done. */
    void begins();

private:
    struct Word;
    static const Word table[];
    static const Word *find(const QString &word);

    bool begin(const char *word, const QVariantList &arguments = {});
    bool touch(const QVariantList &target, QString *error);
    bool press(const QVariantList &target, QString *error);
    bool move(const QVariantList &target, QString *error);
    bool release(QString *error);
    bool callHost(const QVariantList &arguments, QString *error);
    bool invoke(const QVariantList &arguments, QString *error);
    bool setControl(const QString &name, const QString &value, QString *error);
    bool setFault(const QString &fault, QString *error);

    HeadUnit *m_unit;
    Finger m_finger;
    QPointer<Session> m_session;
    bool m_isRepeating = false;
};
