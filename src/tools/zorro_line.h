// zorro_line.h: a lightning-shaped line, an S across a straight run.
#pragma once

#include "hostapi/adsdef.h"

// Draws the line from `start` to `end` on the current layer, with an arrow head at `start` if wanted.
void zorro_line(const ads_point start, const ads_point end, bool with_arrow);
