#pragma once

#include "rearview.h"

#include <QPainter>

/** Draws what a camera above the rear bumper sees, mirrored as drivers expect it. */
class RearScene
{
public:
    RearScene(const RearView &view, const QSize &size);

    /** The lot: ground, the marked bay, the wall and the post. */
    void drawSurroundings(QPainter *painter) const;
    /** Where the car will go with the wheels as they are, in bands of distance. */
    void drawGuides(QPainter *painter) const;

private:
    struct Place // metres from the bumper
    {
        double right;
        double behind;
        double up;
    };
    QPointF project(const Place &place) const;
    Place onLot(double right, double behind, double up = 0) const;
    Place onPath(double side, double behind) const;
    void drawGround(QPainter *painter) const;
    void drawBay(QPainter *painter) const;
    void drawWall(QPainter *painter) const;
    void drawPost(QPainter *painter) const;
    void fill(QPainter *painter, const QVector<Place> &corners, const QBrush &brush) const;

    const RearView m_view;
    const QSize m_size;
};
