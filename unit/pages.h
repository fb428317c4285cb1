#pragma once

#include "touchevent.h"

#include <QString>

#include <algorithm>
#include <iterator>

/** The window ids of the pages. */
enum PageId {
    GaugesPage = 80,
    VehiclePage,
    ClimatePage,
    ParkingPage,
    SettingsPage,
    AboutPage,
};

/** What the module is asked for. */
enum ModuleRequest { NoRequest = 0, VersionRequest = 5, SettingsRequest = 13 };

/** A page of the head unit: what opens it, and what the unit does for it. */
struct Page
{
    int window;
    Qx::Touch code;    // of the navigation event that opens it
    int moduleRequest; // sent to the module when it opens
    const char *name;
};

// In the order of the keys 1, 2, 3 and so on.
// clang-format off
inline constexpr Page pages[] = {
    {GaugesPage,   Qx::TouchGauges,   NoRequest,       "Gauges"},
    {VehiclePage,  Qx::TouchVehicle,  NoRequest,       "Vehicle"},
    {ClimatePage,  Qx::TouchClimate,  NoRequest,       "Climate"},
    {ParkingPage,  Qx::TouchParking,  NoRequest,       "Parking"},
    {SettingsPage, Qx::TouchSettings, SettingsRequest, "Settings"},
    {AboutPage,    Qx::TouchAbout,    VersionRequest,  "About"},
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

/** A page for a person: "Vehicle (81)". */
inline QString pageText(int window)
{
    const Page *page = pageWith(&Page::window, window);
    return QStringLiteral("%1 (%2)")
        .arg(page ? QLatin1String(page->name) : QLatin1String("Page"))
        .arg(window);
}
