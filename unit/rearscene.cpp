#include "rearscene.h"

#include "palette.h"

#include <QPainterPath>
#include <QtMath>

#include <cmath>

// The camera: above the bumper, facing backwards and down.
static constexpr double cameraHeight = 0.95;
static constexpr double cameraPitch = 24;  // degrees
static constexpr double focalShare = 0.56; // of the picture's height
static constexpr double nearest = 0.12;    // metres: nothing closer is drawn

static constexpr double wheelbase = 2.7;
static constexpr double overhang = 1.0; // from the rear axle to the bumper
static constexpr double halfWidth = 0.95;

static constexpr double bayHalfWidth = 1.3;
static constexpr double wallHeight = 2.3;
static constexpr double postHeight = 1.0;
static constexpr double postHalfWidth = 0.07;

struct GuideBand
{
    double from;
    double to;
    QColor color;
};
static const GuideBand guideBands[] = {
    {0.25, 0.7, night::red}, {0.7, 1.5, night::amber}, {1.5, 3.2, QColor(0x41, 0xD9, 0x8D)}};

RearScene::RearScene(const RearView &view, const QSize &size) : m_view(view), m_size(size) {}

QPointF RearScene::project(const Place &place) const
{
    const double pitch = qDegreesToRadians(cameraPitch);
    const double below = cameraHeight - place.up;
    const double depth = qMax(nearest, place.behind * std::cos(pitch) + below * std::sin(pitch));
    const double down = below * std::cos(pitch) - place.behind * std::sin(pitch);
    const double focal = m_size.height() * focalShare;
    return {m_size.width() / 2.0 + focal * place.right / depth,
            m_size.height() / 2.0 + focal * down / depth};
}

/** A place on the lot, whose lines the car may stand at an angle to. */
RearScene::Place RearScene::onLot(double right, double behind, double up) const
{
    const double turned = qDegreesToRadians(m_view.headingDegrees);
    return {right * std::cos(turned) - behind * std::sin(turned),
            qMax(nearest, behind * std::cos(turned) + right * std::sin(turned)), up};
}

RearScene::Place RearScene::onPath(double side, double behind) const
{
    const double curvature = std::tan(qDegreesToRadians(m_view.steeringDegrees)) / wheelbase;
    const double travelled = behind + overhang;
    const double turned = curvature * travelled;
    if (qAbs(curvature) < 1e-4)
        return {side, behind, 0};
    return {side * std::cos(turned) - (1 - std::cos(turned)) / curvature,
            side * std::sin(turned) + std::sin(turned) / curvature - overhang, 0};
}

void RearScene::fill(QPainter *painter, const QVector<Place> &corners, const QBrush &brush) const
{
    QPolygonF polygon;
    for (const Place &corner : corners)
        polygon.append(project(corner));
    painter->setPen(Qt::NoPen);
    painter->setBrush(brush);
    painter->drawPolygon(polygon);
}

void RearScene::drawSurroundings(QPainter *painter) const
{
    drawGround(painter);
    drawBay(painter);
    drawWall(painter);
    drawPost(painter);
}

void RearScene::drawGround(QPainter *painter) const
{
    const double horizon = project({0, 500, 0}).y();
    QLinearGradient sky(0, 0, 0, horizon);
    sky.setColorAt(0, QColor(0x0A, 0x10, 0x18));
    sky.setColorAt(1, QColor(0x24, 0x31, 0x3E));
    painter->fillRect(QRectF(0, 0, m_size.width(), horizon), sky);
    QLinearGradient ground(0, horizon, 0, m_size.height());
    ground.setColorAt(0, QColor(0x1A, 0x20, 0x26));
    ground.setColorAt(1, QColor(0x42, 0x47, 0x4C));
    painter->fillRect(QRectF(0, horizon, m_size.width(), m_size.height() - horizon), ground);

    // The car's own lights on the ground.
    QRadialGradient lit(m_size.width() / 2.0, m_size.height() * 1.1, m_size.height() * 0.9);
    lit.setColorAt(0, QColor(255, 236, 214, 120));
    lit.setColorAt(1, QColor(255, 236, 214, 0));
    painter->fillRect(QRectF(0, horizon, m_size.width(), m_size.height() - horizon), lit);
}

void RearScene::drawBay(QPainter *painter) const
{
    static constexpr double halfLine = 0.06;
    for (const double side : {-bayHalfWidth, bayHalfWidth}) {
        const double line = m_view.bayX + side;
        fill(painter,
             {onLot(line - halfLine, nearest), onLot(line + halfLine, nearest),
              onLot(line + halfLine, m_view.wall), onLot(line - halfLine, m_view.wall)},
             QColor(0xC9, 0xD1, 0xD8, 190));
    }
}

void RearScene::drawWall(QPainter *painter) const
{
    static constexpr double halfWall = 9;
    const auto stripe = [this](double from, double to) {
        return QVector<Place>{onLot(-halfWall, m_view.wall, from),
                              onLot(halfWall, m_view.wall, from), onLot(halfWall, m_view.wall, to),
                              onLot(-halfWall, m_view.wall, to)};
    };
    const int light = qBound(0, int(60 / (0.6 + m_view.wall)), 60); // nearer is brighter
    QLinearGradient face(project(onLot(0, m_view.wall, wallHeight)),
                         project(onLot(0, m_view.wall, 0)));
    face.setColorAt(0, QColor(0x30 + light / 2, 0x38 + light / 2, 0x42 + light / 2));
    face.setColorAt(1, QColor(0x4C + light, 0x54 + light, 0x5C + light));
    fill(painter, stripe(0, wallHeight), face);
    for (double joint = -halfWall; joint <= halfWall; joint += 1.5) {
        painter->setPen(QPen(QColor(0x10, 0x14, 0x18, 110), 2));
        painter->drawLine(project(onLot(m_view.bayX + joint, m_view.wall, 0)),
                          project(onLot(m_view.bayX + joint, m_view.wall, wallHeight)));
    }
    fill(painter, stripe(1.16, 1.18), QColor(0x10, 0x14, 0x18, 110));
    fill(painter, stripe(0.55, 0.67), QColor(0xC8, 0xA2, 0x2E));
    fill(painter, stripe(0, 0.08), QColor(0x10, 0x14, 0x18, 150));
}

void RearScene::drawPost(QPainter *painter) const
{
    static constexpr int rings = 5;
    if (m_view.postZ < 0.2)
        return;
    for (int ring = 0; ring < rings; ++ring) {
        const double from = postHeight * ring / rings;
        const double to = postHeight * (ring + 1) / rings;
        const auto corner = [this](double side, double up) {
            return onLot(m_view.postX + side, m_view.postZ, up);
        };
        fill(painter,
             {corner(-postHalfWidth, from), corner(postHalfWidth, from), corner(postHalfWidth, to),
              corner(-postHalfWidth, to)},
             ring % 2 ? QColor(0x23, 0x28, 0x2D) : QColor(0xE8, 0xB4, 0x2A));
    }
}

void RearScene::drawGuides(QPainter *painter) const
{
    static constexpr int pieces = 12;
    painter->setBrush(Qt::NoBrush);
    for (const GuideBand &band : guideBands) {
        QPainterPath path;
        for (const double side : {-halfWidth, halfWidth}) {
            path.moveTo(project(onPath(side, band.from)));
            for (int i = 1; i <= pieces; ++i)
                path.lineTo(project(onPath(side, band.from + (band.to - band.from) * i / pieces)));
        }
        path.moveTo(project(onPath(-halfWidth, band.to)));
        path.lineTo(project(onPath(halfWidth, band.to)));
        for (const bool isShadow : {true, false}) {
            const QColor color = isShadow ? QColor(0, 0, 0, 110) : band.color;
            painter->setPen(
                QPen(color, isShadow ? 11 : 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter->drawPath(path);
        }
    }
}
