#pragma once

#include <QObject>
#include <QVariantList>

class Actions;

/** Does again what was done at the unit when a drive was recorded, at its times. */
class Replay : public QObject
{
    Q_OBJECT
public:
    enum Extent {
        Beginning, ///< what opens the page that the recording begins on; the rest is up to a person
        Everything
    };

    /** Of the drive of the operator's session. */
    Replay(Actions *hand, Extent extent, QObject *parent = nullptr);
    ~Replay() override;

signals:
    void performed();
    /** Something could not be done again, in one line. */
    void failed(const QString &line);

private:
    void perform(const QString &word, const QVariantList &arguments);
    void stop();

    Actions *m_actions;
    Extent m_extent;
    int m_failures = 0;
};
