#pragma once

#include "report/reportpage.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>

class Rig;
class Session;

/**
 * Pictures of the screen along a session: after each action and each page that opens, and at even
 * intervals of the drive. Actions in quick succession share a picture. The oldest pictures are
 * dropped.
 */
class PictureTrail : public QObject
{
    Q_OBJECT
public:
    explicit PictureTrail(Rig *rig, QObject *parent = nullptr);

    /** Those that are kept, and the screen as it is now. */
    QVector<ReportPicture> pictures() const;
    int dropped() const { return m_dropped; }

private:
    void follow(Session *session);
    void noteEntry();
    void noteAction(const QString &word, const QVariantList &arguments);
    void note(const QString &text);
    void onMoment();
    void take();
    ReportPicture grab(const QString &caption) const;

    Rig *m_rig;
    QPointer<Session> m_session;
    QTimer m_pause;        // after an action
    QStringList m_pending; // what was done since the last picture
    QVector<ReportPicture> m_pictures;
    qint64 m_intervalMs = 0;
    int m_dropped = 0;
};
