#pragma once

#include <optional>

namespace norda {

/** The marker of the temperature bar while it is dragged. */
class TemperatureDrag
{
public:
    /** Begins a drag, if the touch lies on the marker. */
    void press(int x, int markerX, int markerWidth);
    /** @return whether the marker follows to x */
    bool move(int x);
    void release() { m_isDragging = false; }
    /** The value that the bar was dragged to last: 0 to 255 over its length, not degrees. */
    int raw() const { return m_raw; }

private:
    bool m_isDragging = false;
    int m_raw = 0;
};

/** A place on the fan meter. */
struct FanPlace
{
    int level;              ///< 0 to 7
    std::optional<int> raw; ///< none beyond the last segment, where only the image goes back
};

FanPlace fanPlace(int x);

} // namespace norda
