// side_arrow.h: an arrow along a short, bowed line, drawn for a program.
#pragma once

#include "hostapi/adsdef.h"

// Values: side (real, 1 or -1), offset (real), start and end (points), size (real, 25.0 by default), style
// (short), layer (text), a selection set, which is given back. Missing values are 0 or empty.
//   style 0  arrow head at the end, and an arc
//   style 3  the arc; the drawing's last object, whichever it is, stands in the head's place
//   style 1  two curves with a point between them
//   other    three dashes of the curve
// Answers the selection set of what was drawn. A line shorter than a quarter of the size draws nothing and
// answers nothing, and leaves DIMASZ and the layer as they were set for it; else both are put back.
int side_arrow(const resbuf* args);
