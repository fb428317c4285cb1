#pragma once

#include <QPixmap>
#include <QWidget>

class AudioStage;

namespace theme {
struct Colors;
}

/** The audio stage as a picture: speakers around the car, the music's level, the timeline. */
class AudioMonitor : public QWidget
{
    Q_OBJECT
public:
    explicit AudioMonitor(AudioStage *stage, QWidget *parent = nullptr);

    QSize sizeHint() const override { return drawn; }
    QSize minimumSizeHint() const override { return drawn * 0.3; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    static constexpr QSize drawn{800, 480}; // scaled to the panel's size

    const theme::Colors &colors() const;
    void drawCar(QPainter *painter) const;
    void drawSpeaker(QPainter *painter, const QPointF &place, bool voice, bool music) const;
    void drawState(QPainter *painter) const;
    void drawTimeline(QPainter *painter) const;

    AudioStage *m_stage;
    const QPixmap m_car;
};
