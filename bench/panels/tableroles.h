#pragma once

#include <Qt>

/** What a row of a panel's table has beyond its texts; the same in each column. */
enum TableRole {
    FilterRole = Qt::UserRole, ///< the text that a filter searches
    MomentRole,                ///< session time in milliseconds, invalid for none
    JsonRole,                  ///< the line that a recording would have
    ScenarioRole,              ///< the line of a scenario, with its time
};
