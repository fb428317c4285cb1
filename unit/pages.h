#pragma once

#include "touchevent.h"

#include <algorithm>
#include <iterator>

/** A page of the head unit: how it is asked for, and what the unit does for it. */
struct Page
{
    int window;
    Qx::Touch code;    // of the navigation event that opens it
    int moduleRequest; // what the module is asked for when it opens, 0 for nothing
    const char *name;
};

// In the order of the keys 1, 2, 3 and so on.
// clang-format off
inline constexpr Page pages[] = {
    {80, Qx::TouchGauges,    0, "Gauges"},
    {81, Qx::TouchVehicle,   0, "Vehicle"},
    {82, Qx::TouchClimate,   0, "Climate"},
    {83, Qx::TouchParking,   0, "Parking"},
    {84, Qx::TouchSettings, 13, "Settings"},
    {85, Qx::TouchAbout,     5, "About"},
};
// clang-format on

inline constexpr int firstPage = pages[0].window;
inline constexpr int lastPage = pages[std::size(pages) - 1].window;

/** The page with this value in a column, null when there is none. */
template <typename Value>
const Page *pageWith(Value Page::*column, Value value)
{
    const auto *const found = std::find_if(std::begin(pages), std::end(pages),
                                           [=](const Page &page) { return page.*column == value; });
    return found == std::end(pages) ? nullptr : found;
}
