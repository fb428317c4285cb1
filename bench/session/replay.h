#pragma once

#include <QObject>
#include <QVariantList>

class Actions;

/** Repeats the recorded actions at the unit, each at its time. */
class Replay : public QObject
{
    Q_OBJECT
public:
    enum Extent {
        Beginning, ///< only what opens the first page of the recording
        Everything
    };

    Replay(Actions *actions, Extent extent, QObject *parent = nullptr);
    ~Replay() override;

signals:
    void performed(const QString &word, const QVariantList &arguments);
    /** An action could not be repeated, in one line. */
    void failed(const QString &line);

private:
    void perform(const QString &word, const QVariantList &arguments);
    void stop();

    Actions *m_actions;
    Extent m_extent;
    int m_failures = 0;
};
