// tolerances.h: the fixed numbers of the polygon kernel.
#pragma once

constexpr double PG_LENGTH_TOL = 1e-6;     // two places this close are one place
constexpr double PG_LENGTH_SQ_TOL = 1e-12; // the same, for squared lengths
constexpr double PG_NO_VALUE = 98765432.1; // no distance; as a radius: an exact test
