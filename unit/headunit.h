#pragma once

#include "audiostage.h"
#include "screen.h"
#include "serviceconnection.h"
#include "unitlanguage.h"
#include "windowstack.h"

#include <QObject>

/** A head unit: its screen, the windows of the plugin on it, and its audio. */
class HeadUnit : public QObject
{
    Q_OBJECT
public:
    explicit HeadUnit(QObject *parent = nullptr);
    ~HeadUnit() override;

    /** Loads a plugin. @param error  one line that says what is wrong with the file */
    bool load(const QString &plugin, QString *error) { return m_windows.load(plugin, error); }

    /** A top-level window until it gets a parent, which must not delete it. */
    Screen *screen() { return &m_screen; }
    const Screen *screen() const { return &m_screen; }
    WindowStack *windows() { return &m_windows; }
    const WindowStack *windows() const { return &m_windows; }
    AudioStage *audio() { return &m_audio; }
    const AudioStage *audio() const { return &m_audio; }
    UnitLanguage *language() { return &m_language; }

private:
    void showLink(ServiceConnection::State state);

    UnitLanguage m_language;
    Screen m_screen;
    WindowStack m_windows;
    AudioStage m_audio;
};
