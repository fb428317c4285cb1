#include "cameraview.h"

#include "palette.h"

#include <QPainter>
#include <QPainterPath>

CameraView::CameraView(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

static void drawScene(QPainter *painter, const QRect &area)
{
    const int horizon = area.top() + area.height() * 36 / 100;
    QLinearGradient sky(0, area.top(), 0, horizon);
    sky.setColorAt(0, QColor(0x12, 0x1B, 0x27));
    sky.setColorAt(1, QColor(0x2B, 0x3A, 0x4A));
    painter->fillRect(QRect(area.topLeft(), QPoint(area.right(), horizon)), sky);
    QLinearGradient road(0, horizon, 0, area.bottom());
    road.setColorAt(0, QColor(0x24, 0x2A, 0x30));
    road.setColorAt(1, QColor(0x3A, 0x40, 0x46));
    painter->fillRect(QRect(QPoint(area.left(), horizon), area.bottomRight()), road);

    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(0x3B, 0x46, 0x52)); // a garage wall
    painter->drawRect(area.left() + area.width() * 30 / 100, horizon - 90, area.width() * 40 / 100,
                      90);
    painter->setBrush(QColor(0x20, 0x28, 0x31));
    painter->drawRect(area.left() + area.width() * 40 / 100, horizon - 66, area.width() * 20 / 100,
                      66);
}

static void drawGuides(QPainter *painter, const QRect &area)
{
    const qreal centre = area.center().x();
    const qreal bottom = area.bottom() - 24;
    const struct
    {
        qreal share; // of the way to the vanishing point
        QColor color;
    } marks[] = {{0.0, night::red}, {0.32, night::amber}, {0.58, QColor(0x41, 0xD9, 0x8D)}};
    const qreal vanishing = area.top() + area.height() * 0.30;
    const auto halfWidth = [&area](qreal share) { return area.width() * 0.36 * (1 - share); };
    const auto height = [=](qreal share) { return bottom + (vanishing - bottom) * share; };

    for (int i = 0; i < 3; ++i) {
        const qreal end = i < 2 ? marks[i + 1].share : 0.72;
        QPainterPath path;
        for (const int side : {-1, 1}) {
            path.moveTo(centre + side * halfWidth(marks[i].share), height(marks[i].share));
            path.lineTo(centre + side * halfWidth(end), height(end));
        }
        path.moveTo(centre - halfWidth(end), height(end));
        path.lineTo(centre + halfWidth(end), height(end));
        painter->setBrush(Qt::NoBrush);
        painter->setPen(QPen(marks[i].color, 6 - i, Qt::SolidLine, Qt::RoundCap));
        painter->drawPath(path);
    }
}

void CameraView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawScene(&painter, rect());
    drawGuides(&painter, rect());

    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(34);
    painter.setFont(font);
    painter.setPen(night::text);
    painter.drawText(rect().adjusted(36, 24, 0, 0), Qt::AlignLeft | Qt::AlignTop,
                     QStringLiteral("Rear camera"));
}
