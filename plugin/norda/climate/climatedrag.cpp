#include "climatedrag.h"

#include <iterator>

namespace norda {

void TemperatureDrag::press(int x, int markerX, int markerWidth)
{
    if (x >= markerX && x <= markerX + markerWidth)
        m_isDragging = true;
}

bool TemperatureDrag::move(int x)
{
    static constexpr int travel = 414;
    static constexpr double fullScale = 255.0;
    if (!m_isDragging || x < 0 || x > travel)
        return false;
    m_raw = int(x * fullScale / travel);
    return true;
}

struct FanSegment
{
    int lastX;
    int raw;
};

// By level. The raw values are not those that a reported speed is drawn from.
static constexpr FanSegment fanSegments[] = {
    {0, 0}, {46, 18}, {105, 36}, {164, 72}, {223, 144}, {282, 180}, {341, 216}, {400, 255},
};

FanPlace fanPlace(int x)
{
    for (int level = 0; level < int(std::size(fanSegments)); ++level) {
        if (x <= fanSegments[level].lastX)
            return {level, fanSegments[level].raw};
    }
    return {0, std::nullopt};
}

} // namespace norda
