// horizontal_view.h: the view is turned so that a line lies level on the screen.
#pragma once

#include "drawing/picked_segment.h"

// Twist of the view, radians, at which a picked segment runs level and its end nearer to the pick points to
// the right: two pi less the direction towards that end. Of a pick in the very middle the end counts; of a
// segment without length two pi.
double level_twist(const picked_segment& segment, const ads_point pick);

// Asks for a line or polyline and twists the view by one DVIEW command over the whole drawing. RTNORM in
// all cases; what stops it is told on the command line.
int horizontal_view_tool();
