#pragma once

#include <QPointer>
#include <QWidget>

class QComboBox;
class QLabel;
class QSlider;
class QToolButton;

namespace module {
class Drive;
}

/** Plays, pauses, seeks and sets the speed of a drive. */
class TransportBar : public QWidget
{
    Q_OBJECT
public:
    explicit TransportBar(QWidget *parent = nullptr);

    void setDrive(module::Drive *drive);

public slots:
    void togglePlaying();

signals:
    /** The user seeks in the drive. */
    void momentRequested(qint64 ms);

protected:
    void changeEvent(QEvent *event) override;

private:
    void showPosition(qint64 ms);
    void showPlaying(bool playing);
    void showSpeed(double factor);
    void setSpeed(int row);

    QPointer<module::Drive> m_drive;
    QToolButton *m_play;
    QSlider *m_slider;
    QLabel *m_time;
    QComboBox *m_speed;
};
