#pragma once

#include "plugin_global.h"

#include <QLabel>
#include <QPixmap>
#include <QString>

#include <utility>

class QTimer;

namespace norda {

/**
 * A self-painting dial: a needle image turned about the dial's centre, one degree at a time, with a
 * value and its unit printed under the centre.
 *
 * Only a step of the needle repaints the dial; a new text, image or place shows with the next
 * repaint that the dial gets for any reason. Angles have no bounds.
 */
class NORDA_PLUGIN_EXPORT Dashboard : public QLabel
{
    Q_OBJECT
public:
    explicit Dashboard(QWidget *parent = nullptr);
    ~Dashboard() override;

    /** Loads the needle image. */
    void setPointerIcon(QString path);
    /**
     * Walks the needle to an angle, one degree every `interval` milliseconds. The angle that the
     * needle stands at changes nothing, not even a walk that is under way.
     */
    void setDegRotate(int deg, int interval);
    /** Places the centre: what is added to the dial's height, and how far the centre is lifted. */
    void setPointerPos(int heightExtension, int centreLift);
    /** The needle style, which selects the image's anchor: 0, 1 or any other. */
    void setIndex(int index) { m_index = index; }
    int getIndex() const { return m_index; }
    /** The angle at which the needle image is drawn upright. */
    void set_initial_position(int degrees) { m_initialPosition = degrees; }
    void set_value_coefficient(double coefficient) { m_valueCoefficient = coefficient; }
    /** The text box's corner, relative to the dial's centre. */
    void set_txtvalue(int x, int y);
    void set_valuetext(QString text) { m_valueText = std::move(text); }
    void set_txtunits(QString units) { m_unitsText = std::move(units); }

public slots:
    void instrument_animation();

protected:
    void paintEvent(QPaintEvent *event) override;
    void DrawPointer(QPainter &painter, int size);
    void DrawUnit(QPainter &painter, int size);

private:
    QPixmap m_pointer;
    int m_currentAngle = 0;
    int m_rising = 0;
    int m_targetAngle = 0;
    int m_index = 0;
    int m_heightExtension = 0;
    int m_centreLift = 15;
    QTimer *m_timer;
    int m_initialPosition = 100;
    double m_valueCoefficient = 1.0;
    int m_textX = -60;
    int m_textY = -30;
    QString m_valueText;
    QString m_unitsText;
};

} // namespace norda
