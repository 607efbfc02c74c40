// tolerances.h: the fixed numbers of lengths and of missing values.
#pragma once

constexpr double LENGTH_TOL = 1e-6;          // two places this close are one place
constexpr double LENGTH_SQ_TOL = 1e-12;      // the same, for squared lengths
constexpr double NO_VALUE = 98765432.1;      // a coordinate, distance or elevation that is missing
constexpr double NO_ELEVATION = -98765432.1; // a failed elevation look-up, a null cell of a grid
