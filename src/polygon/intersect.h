// intersect.h: where straight segments and arcs meet.
//
// Each answers the number of points, 0, 1 or 2, and writes that many of out1 and out2 (three doubles
// each). Points on arcs have z 0. Arcs are as in arcs.h.
#pragma once

// Two straight segments; two points where they overlap in line, in the order of travel along the first.
// z is that of the first segment. A segment without length meets nothing, but for a point of b on a.
// Unless their heights reject them, the z of both outputs is cleared even where there is no point.
int pg_seg_intersect(const double* a1, const double* a2, const double* b1, const double* b2, double* out1,
                     double* out2);

// The straight segment from p0 to p1 with an arc; in the order of travel from p0.
int pg_line_arc_intersect(const double* p0, const double* p1, const double* centre, double radius, double start,
                          double end, double* out1, double* out2);

// Two arcs. For arcs of one circle the points are the ends of each that lie on the other.
int pg_arc_arc_intersect(const double* c1, double r1, double s1, double e1, const double* c2, double r2,
                         double s2, double e2, double* out1, double* out2);
