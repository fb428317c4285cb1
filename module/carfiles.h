#pragma once

#include <QString>

namespace module {

/** What explains a car's own frames: its DBC file, and a map from that to paths. */
struct CarFiles
{
    QString dbc;
    QString map;

    bool isEmpty() const { return dbc.isEmpty() && map.isEmpty(); }
};

} // namespace module
