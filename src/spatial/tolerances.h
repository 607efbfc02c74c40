// tolerances.h: the fixed numbers of the spatial index.
#pragma once

constexpr double KD_LENGTH_TOL = 1e-6; // two places that differ by no more in any coordinate are one place
constexpr double KD_NO_VALUE =
    98765432.1; // no distance; squared distances from here on are too far to be looked at
