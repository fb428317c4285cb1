#pragma once

namespace norda {

/** The ids by which the host asks for windows and installs their screens. */
enum class WindowId : int {
    None = -1,
    Gauges = 80,
    Vehicle = 81,
    Climate = 82,
    Parking = 83,
    Settings = 84,
    About = 85,
};

/** The keys of the navigation bar, by their ids. */
enum class BarPage : int { Gauges, Vehicle, Climate, Parking, Settings, About };

} // namespace norda
