// extend_arc.h: lengthening an arc along its circle, as one object or by a new arc at its end.
#pragma once

#include "hostapi/adsdef.h"

struct arc_angles {
    double start, end; // radians, counter-clockwise
};

// The part of the whole circle that a length along it makes: at most `most`, which stands for all that is
// longer than the circle. Not finite when length and radius allow no such part.
double circle_part(double length, double radius, double most);
// The arc lengthened by a part of its circle at one end; shortened by a negative one. The whole circle (1.0)
// ends 0.01 radians before the other end.
arc_angles extended_angles(const arc_angles& arc, double part, bool at_start);
// The arc with the other end kept and one end moved so that the arc is that part of its circle.
arc_angles total_angles(const arc_angles& arc, double part, bool at_start);

// Asks for an arc and extends it. RTNORM in all cases.
int extend_arc_tool();
// Extends the arc at its end nearer to `pick` until Enter or a cancel.
void extend_arc(const ads_name name, const ads_point pick);
