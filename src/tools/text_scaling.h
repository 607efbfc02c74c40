// text_scaling.h: texts made larger or smaller where they stand.
#pragma once

#include <string_view>

#include "hostapi/adsdef.h"

// cf:txtenl. `args`: a multiplier of heights and a selection set; the set stays the caller's. Without a set
// both are asked for. What isn't a number counts as no multiplier, what isn't a name as no set. RTNORM.
int text_scaling(const resbuf* args);

// The TEXT command's word for the groups 72 and 73 of a text.
std::string_view justification_code(int across, int up);
