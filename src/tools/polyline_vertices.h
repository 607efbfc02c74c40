// polyline_vertices.h: the vertices of a polyline as a list for programs.
#pragma once

#include "hostapi/adsdef.h"

// Values: an entity name; 1 when arcs are allowed. Answers a list ((bulge x y z) ...). A vertex exactly above
// the one in front of it is left out and gives that one its bulge; of a closed polyline the first vertex stands
// once more at the end. Nil with a message for any other object and for arcs that aren't allowed. RTNORM in all
// cases.
int polyline_vertices(const resbuf* args);
