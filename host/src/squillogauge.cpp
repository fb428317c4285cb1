#include "norda/squillogauge.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPixmap>
#include <QVariantAnimation>
#include <QtMath>

namespace norda {

static constexpr int animationMs = 250;

class SQuilloGauge::Private
{
public:
    explicit Private(SQuilloGauge *gauge) : q(gauge), animation(gauge)
    {
        animation.setDuration(animationMs);
        animation.setEasingCurve(QEasingCurve::OutCubic);
        animation.setStartValue(0.0);
        animation.setEndValue(1.0);
        connect(&animation, &QVariantAnimation::valueChanged, q,
                [this](const QVariant &progress) { showOnTheWay(progress.toDouble()); });
    }

    double angleOf(double value) const;
    QRect needleBounds(double value) const;
    QRect sectorBounds(double from, double to) const;
    QRegion uncovered(double from, double to) const;
    void show(double value);
    void showOnTheWay(double progress) { show((1 - progress) * departure + progress * arrival); }
    void moveTo(double value);
    void load(const QString &path, QString *current, QPixmap *pixmap);

    void drawNeedle(QPainter &painter) const;
    void drawArc(QPainter &painter) const;

    SQuilloGauge *const q;
    QString imagePath;
    QString zeroImagePath;
    QPixmap image;
    QPixmap zeroImage;
    int id = -1;
    double lowerAngle = 0.0;
    double upperAngle = 360.0;
    QPoint pivot;
    double zeroPosition = 0.0;
    int target = 0;
    bool hasValue = false;
    double shown = 0.0;
    double departure = 0.0;
    double arrival = 0.0;
    QVariantAnimation animation; // of the part of the way that is done
};

double SQuilloGauge::Private::angleOf(double value) const
{
    const double fullScale = q->mixValue();
    const double share = fullScale > 0 ? qBound(0.0, value / fullScale, 1.0) : 0.0;
    return lowerAngle + share * (upperAngle - lowerAngle);
}

static QTransform needleTransform(QPoint pivot, double angle, const QSize &needle)
{
    QTransform transform;
    transform.translate(pivot.x(), pivot.y());
    transform.rotate(angle);
    transform.translate(-needle.width() / 2.0, needle.width() / 2.0 - needle.height());
    return transform;
}

QRect SQuilloGauge::Private::needleBounds(double value) const
{
    const QSize size = image.size() / image.devicePixelRatio();
    return needleTransform(pivot, angleOf(value), size)
        .mapRect(QRectF(QPointF(), size))
        .toAlignedRect()
        .adjusted(-1, -1, 1, 1);
}

QRect SQuilloGauge::Private::sectorBounds(double from, double to) const
{
    // A chord bulges by less than the margin below while its angle stays under this.
    static constexpr double step = 10.0;
    const double radius = qMax(q->width(), q->height());
    const double first = qMin(angleOf(from), angleOf(to));
    const double last = qMax(angleOf(from), angleOf(to));

    QPolygonF sector;
    sector << QPointF(pivot);
    for (double angle = first;; angle = qMin(angle + step, last)) {
        const double radians = qDegreesToRadians(angle);
        sector << QPointF(pivot) + radius * QPointF(qSin(radians), -qCos(radians));
        if (angle >= last)
            break;
    }
    return sector.boundingRect().toAlignedRect().adjusted(-3, -3, 3, 3) & q->rect();
}

QRegion SQuilloGauge::Private::uncovered(double from, double to) const
{
    if (q->getNeedle())
        return QRegion(needleBounds(from)) + needleBounds(to);
    return sectorBounds(from, to);
}

void SQuilloGauge::Private::show(double value)
{
    if (qFuzzyCompare(1.0 + value, 1.0 + shown))
        return;
    const double before = shown;
    shown = value;
    if (q->isVisible() && !qFuzzyCompare(1000.0 + angleOf(before), 1000.0 + angleOf(value)))
        q->update(uncovered(before, value));
}

/** A needle that moves goes on from where it is: stopping and starting it anew costs far more. */
void SQuilloGauge::Private::moveTo(double value)
{
    departure = shown;
    arrival = value;
    if (animation.state() == QAbstractAnimation::Running)
        animation.setCurrentTime(0);
    else
        animation.start();
}

void SQuilloGauge::Private::load(const QString &path, QString *current, QPixmap *pixmap)
{
    if (path == *current)
        return;
    *current = path;
    *pixmap = path.isEmpty() ? QPixmap() : QPixmap(path);
    q->update();
}

void SQuilloGauge::Private::drawNeedle(QPainter &painter) const
{
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QSize size = image.size() / image.devicePixelRatio();
    painter.setTransform(needleTransform(pivot, angleOf(shown), size), true);
    painter.drawPixmap(0, 0, image);
}

void SQuilloGauge::Private::drawArc(QPainter &painter) const
{
    const double from = angleOf(zeroPosition);
    const double span = angleOf(shown) - from;
    if (qFuzzyIsNull(span))
        return;
    // The pie is wider than the widget, so that only its straight edges cut the image. Qt counts
    // sixteenths of a degree, counter-clockwise from three o'clock.
    const int radius = q->width() + q->height();
    const QRect circle(pivot.x() - radius, pivot.y() - radius, 2 * radius, 2 * radius);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(image);
    painter.drawPie(circle, qRound((90.0 - from) * 16), qRound(-span * 16));
}

SQuilloGauge::SQuilloGauge(QWidget *parent) : QWidget(parent), d(std::make_unique<Private>(this)) {}

SQuilloGauge::~SQuilloGauge() = default;

void SQuilloGauge::setImageDir(const QString &path)
{
    d->load(path, &d->imagePath, &d->image);
}

QString SQuilloGauge::imageDir() const
{
    return d->imagePath;
}

void SQuilloGauge::setZeroImageDir(const QString &path)
{
    d->load(path, &d->zeroImagePath, &d->zeroImage);
}

QString SQuilloGauge::zeroImageDir() const
{
    return d->zeroImagePath;
}

void SQuilloGauge::setGaugeId(int id)
{
    d->id = id;
}

int SQuilloGauge::gaugeId() const
{
    return d->id;
}

void SQuilloGauge::setRotationRange(double start, double end)
{
    d->lowerAngle = qMin(start, end);
    d->upperAngle = qMax(start, end);
    update();
}

void SQuilloGauge::setPointerXY(int x, int y)
{
    d->pivot = QPoint(x, y);
    update();
}

void SQuilloGauge::setZeroPosition(double value)
{
    if (qFuzzyCompare(1.0 + value, 1.0 + d->zeroPosition))
        return;
    d->zeroPosition = value;
    if (!d->hasValue)
        d->shown = value;
    update();
}

double SQuilloGauge::zeroPosition() const
{
    return d->zeroPosition;
}

void SQuilloGauge::_setAnimationValue(int value)
{
    const bool unchanged = d->hasValue && value == d->target;
    d->hasValue = true;
    d->target = value;
    if (unchanged)
        return;

    const double end = qBound(0, value, qMax(0, mixValue()));
    if (isVisible() && !qFuzzyCompare(1.0 + end, 1.0 + d->shown)) {
        d->moveTo(end);
        return;
    }
    d->animation.stop();
    d->show(end);
}

int SQuilloGauge::value() const
{
    return d->target;
}

double SQuilloGauge::shownValue() const
{
    return d->shown;
}

void SQuilloGauge::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (!d->zeroImage.isNull())
        painter.drawPixmap(0, 0, d->zeroImage);
    if (d->image.isNull())
        return;
    if (m_needle)
        d->drawNeedle(painter);
    else
        d->drawArc(painter);
}

void SQuilloGauge::mousePressEvent(QMouseEvent *event)
{
    event->accept();
    emit touch(true, d->id);
}

void SQuilloGauge::mouseReleaseEvent(QMouseEvent *event)
{
    event->accept();
    emit touch(false, d->id);
}

} // namespace norda
