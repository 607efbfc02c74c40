// elevation_rule.h: what an elevation change does to one elevation, and what it counts.
#pragma once

#include <cmath>
#include <cstdint>

#include "hostapi/adsdef.h"

struct elevation_rule {
    char mode = 'A';         // 'D' adds the value, 'S' multiplies by it, any other letter sets every z to it
    double value = 0.0;      // drawing units, or the factor
    bool ignore_zero = true; // elevations of exactly 0 stay

    bool leaves(double z) const { return ignore_zero && z == 0.0; }
    double applied_to(double z) const { return mode == 'D' ? z + value : mode == 'S' ? z * value : value; }
};

// What has truly been changed.
struct elevation_tally {
    std::int32_t points = 0; // elevation attributes of survey point blocks
    std::int32_t polylines = 0;
    std::int32_t others = 0;
    bool need_regen = false; // attributes are shown anew by a regeneration only
};

// Tells that an object stays as it is, since a new elevation of it is no number that a drawing can hold.
void tell_out_of_range(const char* type);

// The z of a group's point goes by the rule. False, and nothing is changed, when the new one is not finite.
bool change_z(resbuf* group, const elevation_rule& rule);
