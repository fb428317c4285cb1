#pragma once

#include <QMainWindow>

#include <memory>

class AudioStage;
class HeadUnit;
class Screen;
class Session;
class SidePanel;
class TransportBar;
struct Options;

/** The bench on a desktop: the head unit's screen, the transport strip and a panel beside it. */
class BenchWindow : public QMainWindow
{
    Q_OBJECT
public:
    BenchWindow(const Options &options, Screen *screen, HeadUnit *unit, AudioStage *stage);
    ~BenchWindow() override;

    /** Drives a source from its start. */
    void start(std::unique_ptr<Session> session);
    Session *session() const { return m_session.get(); }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void makeMenus();
    void makeFaultsMenu(QMenu *menu);
    void makeAudioDock();
    void openDrive(const QString &file);
    void chooseDrive();
    void onFinished();

    const Options &m_options;
    Screen *m_screen;
    HeadUnit *m_unit;
    AudioStage *m_stage;
    TransportBar *m_transport;
    SidePanel *m_panel;
    std::unique_ptr<Session> m_session;
};
