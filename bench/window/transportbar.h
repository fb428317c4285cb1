#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QToolButton;
class RepeatedPart;
class SeekSlider;

namespace module {
class Drive;
}

/** Plays, pauses, steps, seeks and repeats the drive, and sets its speed. */
class TransportBar : public QWidget
{
    Q_OBJECT
public:
    explicit TransportBar(QWidget *parent = nullptr);

    void setDrive(module::Drive *drive);
    void togglePlaying();
    /** Pauses, and delivers what is due next. */
    void stepToNext();
    /** To the next faster or slower speed. */
    void changeSpeed(int steps);
    /** Puts the focus into the clock, for a time to be typed. */
    void editTime();
    RepeatedPart *repeatedPart() const { return m_part; }

    /** A time as the clock takes it, "75", "1:15" or "1:01:15.5", in milliseconds; -1 for none. */
    static qint64 readTime(const QString &text);

signals:
    /** A drive time was asked for. */
    void momentRequested(qint64 ms);
    /** What was typed is no time, in one line. */
    void refused(const QString &line);
    /** The key for the event before was touched. */
    void previousRequested();

protected:
    void changeEvent(QEvent *event) override;

private:
    QToolButton *addButton(const QString &command);
    void layOut();
    void makeIcons();
    void showSpeed(double factor);
    void showPosition();
    void showPlaying();
    void showPart();
    void setSpeed(int row);
    void goToTypedTime();

    QPointer<module::Drive> m_drive;
    RepeatedPart *m_part;
    QToolButton *m_previous;
    QToolButton *m_play;
    QToolButton *m_next;
    SeekSlider *m_slider;
    QLineEdit *m_clock;
    QLabel *m_duration;
    QComboBox *m_speed;
    QTimer m_tick; // between signals that are far apart
};
