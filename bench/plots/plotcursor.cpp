#include "plots/plotcursor.h"

#include "plots/plotarea.h"
#include "tools/themecolors.h"

#include <QPainter>

PlotCursor::PlotCursor(PlotArea *area) : QWidget(area), m_area(area)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

int PlotCursor::placeOf(qint64 ms) const
{
    const int x = ms < 0 ? -1 : m_area->xAt(ms);
    const QRect canvas = m_area->canvasRect();
    return x < canvas.left() || x > canvas.right() ? -1 : x;
}

void PlotCursor::follow()
{
    const auto moveLine = [this](int *line, int x) {
        if (*line == x)
            return;
        update(*line - 1, 0, 3, height());
        *line = x;
        update(x - 1, 0, 3, height());
    };
    moveLine(&m_pointerX, placeOf(m_area->cursorMs()));
    moveLine(&m_momentX, placeOf(m_area->momentMs()));
}

void PlotCursor::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect canvas = m_area->canvasRect();
    if (m_pointerX >= 0)
        painter.fillRect(m_pointerX, canvas.top(), 1, canvas.height(),
                         palette().color(QPalette::Text));
    if (m_momentX >= 0)
        painter.fillRect(m_momentX - 1, canvas.top(), 2, canvas.height(),
                         theme::colors(palette()).red);
}
