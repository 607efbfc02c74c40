// The first crossing is told as a scan of every segment of `a` with every segment of `b`. Only pairs whose
// boxes meet are looked at, in the same order, so that the answer is that of the scan, bit for bit.
#include "polygon/crossing.h"

#include <algorithm>
#include <cmath>

#include "hostapi/ads.h"
#include "polygon/points.h"
#include "polygon/segment_boxes.h"
#include "polygon/segment_pairs.h"
#include "polygon/tolerances.h"

namespace
{

// Of the sine of an angle between two directions: b along a or straight against it, and no side.
constexpr double LEAST_SINE = 2e-15;

struct crossing {
    bool found;
    double distance;
    double point[3];
    pg_segment other; // of b
};

// A strictly nearer point wins, so that of equals the first along b stays.
void consider(const pg_segment& a, const pg_segment& b, double tolerance, crossing* best)
{
    double points[2][3];
    const int count = pg_segment_points(a, b, points);
    for (int i = 0; i < count; ++i) {
        const double distance = pg_segment_distance(a, points[i]);
        if (!(distance < best->distance && distance >= tolerance && pg_dist(a.q, points[i]) >= tolerance))
            continue;
        best->found = true;
        best->distance = distance;
        std::copy_n(points[i], 3, best->point);
        best->other = b;
    }
}

// The segments of b with their boxes; without memory `segments` is null and the chain itself is walked.
struct indexed_chain {
    pg_segment* segments;
    pg_box_tree boxes;
    pg_box_scale scale;
};

indexed_chain index_chain(const pg_node* a, const pg_node* b)
{
    indexed_chain index{};
    const int count = pg_count(b) - 1;
    index.segments =
        static_cast<pg_segment*>(acad_malloc(static_cast<std::size_t>(count) * sizeof(pg_segment)));
    if (!index.segments)
        return index;
    index.boxes = pg_boxes_new(count);
    if (!index.boxes.nodes) {
        acad_free(index.segments);
        return {};
    }
    for (; a->next; a = a->next)
        pg_scale_add(&index.scale, pg_segment_at(*a));
    for (int i = 0; i < count; ++i, b = b->next) {
        index.segments[i] = pg_segment_at(*b);
        pg_scale_add(&index.scale, index.segments[i]);
    }
    for (int i = 0; i < count; ++i)
        pg_boxes_set(&index.boxes, i, pg_segment_box(index.segments[i], index.scale));
    return index;
}

void release(indexed_chain* index)
{
    acad_free(index->segments);
    pg_boxes_free(&index->boxes);
}

crossing first_on(const pg_segment& segment, const pg_node* b, const indexed_chain& index, double tolerance)
{
    crossing best{};
    best.distance = PG_NO_VALUE;
    if (!index.segments) {
        for (; b->next; b = b->next)
            consider(segment, pg_segment_at(*b), tolerance, &best);
        return best;
    }
    const pg_box box = pg_segment_box(segment, index.scale);
    for (int i = pg_boxes_next(index.boxes, box, 0); i >= 0; i = pg_boxes_next(index.boxes, box, i + 1))
        consider(segment, index.segments[i], tolerance, &best);
    return best;
}

} // namespace

int pg_first_crossing(const pg_node* a, const pg_node* b, double* out_distance, int* out_side,
                      double* out_point, double tolerance)
{
    if (!a || !a->next || !b || !b->next)
        return 0;
    indexed_chain index = index_chain(a, b);
    crossing first{};
    pg_segment segment{};
    for (; a->next && !first.found; a = a->next) {
        segment = pg_segment_at(*a);
        first = first_on(segment, b, index, tolerance);
    }
    release(&index);
    if (!first.found)
        return 0;
    *out_distance = first.distance;
    std::copy_n(first.point, 3, out_point);
    const double sine =
        std::sin(pg_segment_direction(segment, first.point) - pg_segment_direction(first.other, first.point));
    *out_side = sine >= -LEAST_SINE ? -1 : 1;
    return 1;
}
