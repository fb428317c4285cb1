#pragma once

#include "nordahost_global.h"

#include <QObject>

/** What the head unit plays and shows. Reached through `EventHandler::control()`. */
class NORDAHOST_EXPORT SrcDsplCtrl : public QObject
{
    Q_OBJECT
public:
    explicit SrcDsplCtrl(QObject *parent = nullptr);

    /** Number of the current audio source; 0 at first. */
    int currentSrc() const;
    /** Number of the current display; 0 at first. */
    int currentDspl() const;

    /** For the host, benches and tests. */
    Q_INVOKABLE
    void setCurrentSrc(int source) { m_source = source; }
    Q_INVOKABLE
    void setCurrentDspl(int display) { m_display = display; }

private:
    int m_source = 0;
    int m_display = 0;
};
