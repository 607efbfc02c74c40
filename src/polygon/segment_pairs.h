// segment_pairs.h: one segment of a chain worked out, its points with another, and positions on it.
#pragma once

#include "polygon/node.h"

// A segment from p to q. An arc (bulge not 0) also has the fields that pg_arc_from_bulge gives; they are
// clear on a straight one.
struct pg_segment {
    double p[3], q[3];
    double bulge;
    double centre[3];
    double start, end, radius;
    int dir;
};

inline bool pg_is_arc(const pg_segment& s)
{
    return s.bulge != 0.0;
}

// The segment that starts at `node`, which has a next.
pg_segment pg_segment_at(const pg_node& node);

// The points that count where `a` meets `b`, 0, 1 or 2: of a straight `a` the first one alone, of an arc
// `a` both, in the order of travel along a straight `b`. Segments without length meet nothing, but for a
// point of `b` on a straight `a`.
int pg_segment_points(const pg_segment& a, const pg_segment& b, double points[2][3]);

// How far `x` lies along `a` from p: on an arc the difference of the angles of x and p times the radius, not
// brought into a turn. An arc that runs across angle 0 thus tells its places behind it as far away.
double pg_segment_distance(const pg_segment& a, const double* x);

// Direction of travel of `s` at `x`, in radians, not brought into a turn.
double pg_segment_direction(const pg_segment& s, const double* x);
