#include "gaugetables.h"

#include <iterator>

namespace norda {

// clang-format off
static constexpr GaugeRow gauges[] = {
    //  x    y  size  start   end  pivot full  title
    {387,  14,  370,    90, -180,  186,  100, "Tachometer"},
    {102,  21,  224,  -105,  105,  113,  250, "Transmission Temp"},
    {825,  21,  224,  -105,  105,  113,  250, "Coolant Temp"},
    {102, 250,  224,  -105,  105,  113,  250, "Intake Air Temp"},
    {825, 250,  224,  -105,  105,  113,  100, "Engine Calculated Load"},
};

static constexpr GaugeStyle centreNeedle = {":/icon/gaugesicon/gagus_mph_1.png",
                                            ":/icon/gaugesicon/gagus_pointer_large.png", true};
static constexpr GaugeStyle cornerNeedle = {":/icon/gaugesicon/gagus_braking_2.png",
                                            ":/icon/gaugesicon/gagus_pointer_medium.png", true};
static constexpr GaugeStyle centreArc    = {":/icon/gaugesicon/gagus_mph_2.png",
                                            ":/icon/gaugesicon/gagus_arc_large.png", false};
static constexpr GaugeStyle cornerArc    = {":/icon/gaugesicon/gagus_braking_1.png",
                                            ":/icon/gaugesicon/gagus_arc_small.png", false};

// By colour code; 0 and codes beyond the table return the colour to the form's.
static constexpr const char *peakStyleSheets[] = {
    "",
    "color:rgb(224, 27, 36);\n",
    "color: rgb(28, 113, 216);\n",
    "color: rgb(255, 125, 0);\n",
    "color: rgb(229, 255, 10);\n",
    "color: rgb(38, 162, 105);\n",
};

static constexpr ScaleLayout needleScale = {40, 34, 20,
    {{308 +  64, 67 + 229}, {308 +  36, 67 + 194}, {308 +  22, 67 + 150}, {308 +  27, 67 + 101},
     {308 +  49, 67 +  58}, {308 +  82, 67 +  36}, {308 + 126, 67 +  22}, {308 + 152, 67 +  28},
     {308 + 191, 67 +  52}, {308 + 217, 67 +  82}, {308 + 229, 67 + 109}}};
static constexpr ScaleLayout arcScale = {34, 28, 16,
    {{131, 202}, { 97, 193}, { 74, 172}, { 64, 144}, { 64, 115}, { 78,  88},
     {105,  69}, {140,  66}, {173,  79}, {190, 106}, {197, 135}}};
// clang-format on

static_assert(std::size(gauges) == gaugeCount);

const GaugeRow &gaugeRow(int index)
{
    return gauges[index];
}

const GaugeStyle &gaugeStyle(int index, unsigned char style)
{
    const bool centre = index == centreGauge;
    if (style == needleStyle)
        return centre ? centreNeedle : cornerNeedle;
    return centre ? centreArc : cornerArc;
}

const char *peakStyleSheet(unsigned char code)
{
    return peakStyleSheets[code < std::size(peakStyleSheets) ? code : 0];
}

const ScaleLayout &scaleLayout(bool needle)
{
    return needle ? needleScale : arcScale;
}

} // namespace norda
