// arcs.h: arcs of circles and the bulges that stand for them.
//
// An arc is a centre, a radius and two directions from the centre; it runs counter-clockwise from
// `start` to `end`, both in radians.
#pragma once

// The arc of the segment from a to b. `dir` is -1 when travel from a to b is counter-clockwise (a is at
// `start`), 1 when it is clockwise (a is at `end`). The bulge must not be 0, and a and b must be apart.
void pg_arc_from_bulge(const double* a, const double* b, double bulge, double* centre, double* start,
                       double* end, double* radius, int* dir);

// The negative of the bulge of the counter-clockwise arc from a to b about `centre`. For the clockwise
// arc from a to b, call it with b and a and take the result as it stands.
double pg_arc_bulge(const double* a, const double* b, const double* centre);

// The same for a piece of an arc whose ends were worked out, and 0 where they are one place within 1e-6: from
// there the bulge is no number or, as rounding has it, that of the whole circle.
double pg_arc_piece_bulge(const double* a, const double* b, const double* centre);

// Whether the direction from the centre to `point` lies on the arc, its ends with 1e-6 of arc length
// around them counted in, also across angle 0. With PG_NO_VALUE as radius the test is exact and the ends
// are outside.
bool pg_arc_contains(const double* centre, const double* point, double start, double end, double radius);

// ---- arcs by the bulge alone, which keep their digits where a centre loses them: flat, tiny and nearly full.
// The arc's angle, 0 to 2 pi.
double pg_arc_sweep(double bulge);
// Its length; 0 when a and b coincide.
double pg_arc_length(const double* a, const double* b, double bulge);
// The place at a share of the arc's length from a, 0 at a to 1 at b; x and y only.
void pg_arc_place(const double* a, const double* b, double bulge, double share, double* out);
