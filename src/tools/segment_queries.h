// segment_queries.h: what programs ask about the segment of a polyline at which the user picked.
#pragma once

#include "hostapi/adsdef.h"

// Both take an entity name and a point, and count the closing segment of a closed polyline as one of its own.
// They answer nil for any other object and for a point beside no segment. RTNORM in all cases.

// Answers the ends of the segment, a list of two points.
int segment_at_pick(const resbuf* args);
// Answers the direction of the segment towards its end that is nearer to the point, in radians; from the middle
// on that is its second end.
int angle_at_pick(const resbuf* args);
