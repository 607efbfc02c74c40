#include "tools/segment_queries.h"

#include <algorithm>

#include "common/angle_text.h"
#include "common/arguments.h"
#include "drawing/object_list.h"
#include "drawing/picked_segment.h"
#include "hostapi/ads.h"
#include "tools/pointer_state.h"

namespace
{

struct segment_call {
    ads_point point;
    picked_segment segment;
};

// False, with nothing to release, when there is no such segment.
bool read_call(const resbuf* args, segment_call* call)
{
    ads_name name;
    if (!next_name(&args, name) || !next_point(&args, call->point))
        return false;
    const object_list list(name);
    pl_vertex* chain = is_polyline_list(list.get()) ? read_open_chain(name, list.get()) : nullptr;
    pl_vertex* a = pl_nearest_segment(chain, call->point);
    if (!a) {
        pl_free_vertices(chain);
        return false;
    }
    call->segment = {chain, a, a->next};
    return true;
}

resbuf point_node(const pl_vertex& v, resbuf* next)
{
    resbuf node{next, RT3DPOINT, {}};
    const ads_point at = {v.x, v.y, v.z};
    std::copy_n(at, 3, node.resval.rpoint);
    return node;
}

} // namespace

int segment_at_pick(const resbuf* args)
{
    acedRetNil();
    segment_call call;
    if (!read_call(args, &call))
        return RTNORM;
    resbuf end = point_node(*call.segment.b, nullptr);
    const resbuf ends = point_node(*call.segment.a, &end);
    acedRetList(&ends);
    pl_free_vertices(call.segment.chain);
    return RTNORM;
}

int angle_at_pick(const resbuf* args)
{
    acedRetNil();
    segment_call call;
    if (!read_call(args, &call))
        return RTNORM;
    const double a[2] = {call.segment.a->x, call.segment.a->y};
    const double b[2] = {call.segment.b->x, call.segment.b->y};
    const bool towards_a = pick_fraction(call.segment, call.point) < 0.5;
    acedRetReal(towards_a ? point_angle(b, a) : point_angle(a, b));
    pl_free_vertices(call.segment.chain);
    return RTNORM;
}
