#pragma once

#include "nordahost_global.h"

#include <QWidget>

#include <memory>

namespace norda {

/**
 * A round gauge: a face, painted as the widget's window background, under a needle or a filling
 * arc that moves to the values it is given.
 *
 * Angles are degrees clockwise from twelve o'clock. The value 0 is at the lower end of the
 * rotation range and the full-scale value at the upper one, whichever of the two is given first, so
 * a gauge always turns clockwise with a growing value. Values outside 0 to full scale stop at the
 * ends.
 *
 * A needle image points straight up; its pivot is on the vertical centre line, half the image's
 * width above the lower edge. An arc image is the complete arc in the widget's own coordinates.
 */
class NORDAHOST_EXPORT SQuilloGauge : public QWidget
{
    Q_OBJECT
    /** The value that the gauge moves to. */
    Q_PROPERTY(int value READ value WRITE _setAnimationValue)
    /** Whether it is in the needle style. */
    Q_PROPERTY(bool needle READ getNeedle)
    /** The gauge's id in `touch()`. */
    Q_PROPERTY(int gaugeId READ gaugeId)
    /** The full-scale value. */
    Q_PROPERTY(int mixValue READ mixValue)
    /** The value at which the needle rests and from which the arc fills. */
    Q_PROPERTY(double zeroPosition READ zeroPosition)
    /** Image of the needle, or of the filling arc. */
    Q_PROPERTY(QString imageDir READ imageDir)
    /** Image that marks the zero position. */
    Q_PROPERTY(QString zeroImageDir READ zeroImageDir)
    /** The value that the gauge shows right now, on its way to `value`. */
    Q_PROPERTY(double shownValue READ shownValue)
public:
    /** @param parent  the screen that holds the gauge */
    explicit SQuilloGauge(QWidget *parent = nullptr);
    ~SQuilloGauge() override;

    /** Image of the needle, or of the filling arc. An empty path draws none. */
    void setImageDir(const QString &path);
    /** The path given last; empty at first. */
    QString imageDir() const;
    /** Image that marks the zero position. An empty path draws none. */
    void setZeroImageDir(const QString &path);
    /** The path given last; empty at first. */
    QString zeroImageDir() const;

    /** Needle style when true, arc style when false; takes effect with the next image. */
    void setNeedle(bool needle) { m_needle = needle; }
    /** Whether it is in the needle style; true at first. */
    bool getNeedle() const { return m_needle; }

    /** The gauge's id in `touch()`. */
    void setGaugeId(int id);
    /** The id given last. */
    int gaugeId() const;

    /** The full-scale value; a gauge whose full scale is 0 or less stays at its zero. */
    void setMixValue(int value) { m_mixValue = value; }
    /** The full-scale value; 100 at first. */
    int mixValue() const { return m_mixValue; }

    /** The angles of the value 0 and of the full-scale value, in degrees. */
    void setRotationRange(double start, double end);
    /** The pivot of needle and arc, in the widget's coordinates. */
    void setPointerXY(int x, int y);
    /** The value at which the needle rests and from which the arc fills. */
    void setZeroPosition(double value);
    /** The value given last. */
    double zeroPosition() const;

    /** Moves needle or arc to a value within a quarter of a second, never beyond it. */
    void _setAnimationValue(int value);
    /** The value that the gauge moves to. */
    int value() const;
    /** The value that the gauge shows right now. */
    double shownValue() const;

signals:
    /** The gauge was pressed (true) or released (false). */
    void touch(bool pressed, int id);

protected:
    /** Draws the zero mark, then the needle or the filled part of the arc. */
    void paintEvent(QPaintEvent *event) override;
    /** Reports the touch. */
    void mousePressEvent(QMouseEvent *event) override;
    /** Reports the end of the touch. */
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    class Private;

    bool m_needle = true;
    int m_mixValue = 100;
    std::unique_ptr<Private> d;
};

} // namespace norda
