#pragma once

#include "nordahost_global.h"

#include <QObject>

/** What the head unit plays and shows. Reached through `EventHandler::control()`. */
class NORDAHOST_EXPORT SrcDsplCtrl : public QObject
{
    Q_OBJECT
public:
    /** @param parent  owns the object; the event centre for the only one there is */
    explicit SrcDsplCtrl(QObject *parent = nullptr);

    /** Number of the current audio source; 0 at first. */
    int currentSrc() const;
    /** Number of the current display; 0 at first. */
    int currentDspl() const;

    /** Sets the number of the current audio source. For the host, benches and tests. */
    Q_INVOKABLE
    void setCurrentSrc(int source) { m_source = source; }
    /** Sets the number of the current display. For the host, benches and tests. */
    Q_INVOKABLE
    void setCurrentDspl(int display) { m_display = display; }

private:
    int m_source = 0;
    int m_display = 0;
};
