// E: the segment is lengthened, or shortened, to where its line meets a boundary.
#include "drawing/object_list.h"
#include "drawing/picked_segment.h"
#include "drawing/selection.h"
#include "hostapi/ads.h"
#include "tools/pointer_keys.h"
#include "tools/pointer_step.h"
#include "tools/ray_hit_chain.h"

namespace
{

// Asks for the boundary; null, with a message, when there is none to go to. The types asked for leave out
// LINEs, which would do.
pl_vertex* ask_boundary()
{
    ads_name name;
    ads_point pick;
    if (pick_entity_of_types("POLYLINE LWPOLYLINE", "\nSelect boundary edge: ", name, pick) != RTNORM) {
        acutPrintf("Nothing selected.\n");
        return nullptr;
    }
    const object_list list(name);
    const bool fits = is_line_list(list.get()) || is_polyline_list(list.get());
    pl_vertex* chain = read_open_chain(name, list.get());
    if (!fits) {
        acutPrintf("\nError: selection not a LINE or POLYLINE");
    } else if (!chain || !chain->next) {
        acutPrintf("\nNo boundary edges found.");
        pl_free_vertices(chain);
        chain = nullptr;
    }
    return chain;
}

} // namespace

int extend_to_edge(pointer_state& state, const char*)
{
    state.dist = segment_length(state);
    pl_vertex* boundary = ask_boundary();
    if (!boundary)
        return RTNORM;
    pl_vertex* hit = ray_hit_chain(*state.cur, *state.other, boundary);
    pl_free_vertices(boundary);
    if (!hit) {
        acutPrintf("\nUnable to find intersection.");
        return RTNORM;
    }
    state.aux = pl_plan_distance(*state.other, *hit);
    pl_free_vertices(hit);
    state.dist = state.aux - state.dist;
    state.rel_angle = pointer_step(state, state.dist, state.rel_angle, state.mode, state.last_cmd);
    return GO_ON;
}
