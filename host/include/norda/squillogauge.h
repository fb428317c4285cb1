#pragma once

#include "nordahost_global.h"

#include <QWidget>

#include <memory>

namespace norda {

/**
 * A round gauge: a face, painted as the widget's window background, under a needle or a filling
 * arc that moves to the values it is given.
 *
 * Angles are degrees clockwise from twelve o'clock. The value 0 lies at the lower end of the
 * rotation range and the full-scale value at the upper one, whichever of the two is given first, so
 * a gauge always turns clockwise with a growing value. Values outside 0 to full scale stop at the
 * ends.
 *
 * A needle image points straight up; its pivot lies on the vertical centre line, half the image's
 * width above the lower edge. An arc image is the complete arc in the widget's own coordinates.
 */
class NORDAHOST_EXPORT SQuilloGauge : public QWidget
{
    Q_OBJECT
    /** The value that the gauge moves to. */
    Q_PROPERTY(int value READ value WRITE _setAnimationValue)
    Q_PROPERTY(bool needle READ getNeedle)
    Q_PROPERTY(int gaugeId READ gaugeId)
    Q_PROPERTY(int mixValue READ mixValue)
    Q_PROPERTY(double zeroPosition READ zeroPosition)
    Q_PROPERTY(QString imageDir READ imageDir)
    Q_PROPERTY(QString zeroImageDir READ zeroImageDir)
    /** The value that the gauge shows right now, on its way to `value`. */
    Q_PROPERTY(double shownValue READ shownValue)
public:
    explicit SQuilloGauge(QWidget *parent = nullptr);
    ~SQuilloGauge() override;

    /** Image of the needle, or of the filling arc. An empty path draws none. */
    void setImageDir(const QString &path);
    QString imageDir() const;
    /** Image that marks the zero position. An empty path draws none. */
    void setZeroImageDir(const QString &path);
    QString zeroImageDir() const;

    /** Needle style when true, arc style when false; takes effect with the next image. */
    void setNeedle(bool needle) { m_needle = needle; }
    bool getNeedle() const { return m_needle; }

    /** What the gauge calls itself in `touch()`. */
    void setGaugeId(int id);
    int gaugeId() const;

    /** The full-scale value; a gauge whose full scale is 0 or less stays at its zero. */
    void setMixValue(int value) { m_mixValue = value; }
    int mixValue() const { return m_mixValue; }

    /** Where the value 0 and the full-scale value lie, in degrees. */
    void setRotationRange(double start, double end);
    /** The pivot of needle and arc, in the widget's coordinates. */
    void setPointerXY(int x, int y);
    /** The value at which the needle rests and from which the arc fills. */
    void setZeroPosition(double value);
    double zeroPosition() const;

    /** Moves needle or arc to a value within a quarter of a second, never beyond it. */
    void _setAnimationValue(int value);
    int value() const;
    double shownValue() const;

signals:
    /** The gauge was pressed (true) or let go (false). */
    void touch(bool pressed, int id);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    class Private;

    bool m_needle = true;
    int m_mixValue = 100;
    std::unique_ptr<Private> d;
};

} // namespace norda
