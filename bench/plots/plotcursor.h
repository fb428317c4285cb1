#pragma once

#include <QWidget>

class PlotArea;

/** The lines of the pointer and of the rewound moment, above the lanes. */
class PlotCursor : public QWidget
{
    Q_OBJECT
public:
    explicit PlotCursor(PlotArea *area);

    /** Draws the lines where they are now. */
    void follow();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int placeOf(qint64 ms) const;

    PlotArea *m_area;
    int m_pointerX = -1;
    int m_momentX = -1;
};
