#include "drawing/chain_queries.h"

#include "common/tolerances.h"
#include "drawing/segment_foot.h"

namespace
{

bool is_at(const pl_vertex& v, const ads_point point)
{
    return v.x == point[0] && v.y == point[1];
}

} // namespace

pl_vertex* chain_locate_pick(pl_vertex* chain, const ads_point pick)
{
    double best = NO_VALUE;
    pl_vertex* found = nullptr;
    for (pl_vertex* a = chain; a && a->next; a = a->next) {
        if (is_at(*a, pick))
            return a;
        if (is_at(*a->next, pick))
            return a->next;
        segment_foot foot;
        if (foot_on_segment(*a, *a->next, pick, &foot) && foot.distance <= best) {
            best = foot.distance;
            found = a;
        }
    }
    return found;
}

int chain_normal_at(const pl_vertex* chain, const ads_point point, double tolerance, double* normal)
{
    double best = tolerance;
    for (const pl_vertex* a = chain; a && a->next; a = a->next) {
        segment_foot foot;
        if (foot_on_segment(*a, *a->next, point, &foot) && foot.distance <= best) {
            best = foot.distance;
            direction_at(*a, *a->next, point, foot, normal);
        }
    }
    return best != tolerance;
}
