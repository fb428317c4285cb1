#pragma once

#include "norda/modulecodes.h"

#include <QRect>

namespace norda {

constexpr int gaugeCount = 5;
constexpr int centreGauge = 0;

/** How a gauge looks in one style. */
struct GaugeStyle
{
    const char *background;
    const char *pointer;
    bool needle;
};

/** What is fixed for a gauge; in gauge-index order. */
struct GaugeRow
{
    int x, y, size;
    int rotationStart, rotationEnd;
    int pivot;
    int fullScale;
    const char *title;
};

const GaugeRow &gaugeRow(int index);

/** The look of a gauge for a style byte: 1 is the needle, any other byte the filling arc. */
const GaugeStyle &gaugeStyle(int index, unsigned char style);
constexpr auto needleStyle = static_cast<unsigned char>(GaugeLook::Needle);

/** Style sheet of the peak indicator for a colour code; empty for a code without a colour. */
const char *peakStyleSheet(unsigned char code);

/** Place and text size of the centre gauge's scale numbers. */
struct ScaleLayout
{
    static constexpr int Count = 11;

    int width, height, pixelSize;
    struct
    {
        int x, y;
    } positions[Count];
};

const ScaleLayout &scaleLayout(bool needle);

} // namespace norda
