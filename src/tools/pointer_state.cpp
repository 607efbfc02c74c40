#include "tools/pointer_state.h"

#include "common/names.h"
#include "drawing/picked_segment.h"
#include "drawing/read.h"
#include "hostapi/ads.h"
#include "tools/pointer_angles.h"

namespace
{

constexpr int FLAGS_GROUP = 70;

bool is_closed_list(const resbuf* list)
{
    const resbuf* flags = rb_find(list, FLAGS_GROUP);
    return flags && (flags->resval.rint & PLINE_CLOSED) != 0;
}

} // namespace

pl_vertex* read_open_chain(const ads_name name, const resbuf* list)
{
    if (is_line_list(list))
        return pl_read_line(list);
    pl_vertex* chain = is_polyline_list(list) ? pl_read_vertices(name) : nullptr;
    if (chain && is_closed_list(list))
        pl_last(chain)->next = pl_vertex_new(chain->x, chain->y, chain->z);
    return chain;
}

bool add_chain(pointer_state& state, pl_vertex* head)
{
    auto* entry = static_cast<ptr_chain*>(acad_malloc(sizeof(ptr_chain)));
    if (!entry)
        return false;
    *entry = {head, nullptr};
    // The chain in hand is always the last one.
    (state.chain_entry ? state.chain_entry->next : state.first_chain) = entry;
    state.chain_entry = entry;
    return true;
}

double segment_length(const pointer_state& state)
{
    return pl_plan_distance(*state.cur, *state.other);
}

double segment_direction(const pointer_state& state)
{
    return direction_degrees(*state.other, *state.cur);
}

void drop_tip(pointer_state& state)
{
    if (state.tip != state.cur)
        acad_free(state.tip);
    state.tip = state.cur;
}

void stand_on(pointer_state& state, pl_vertex* cur, pl_vertex* other)
{
    drop_tip(state);
    state.cur = cur;
    state.other = other;
    state.tip = cur;
}

void release_pointer(pointer_state& state)
{
    drop_tip(state);
    while (ptr_chain* entry = state.first_chain) {
        state.first_chain = entry->next;
        pl_free_vertices(entry->head);
        acad_free(entry);
    }
    if (state.name_group) {
        state.name_group->rbnext = state.ent_list;
        acutRelRb(state.name_group);
    }
    state = pointer_state{};
}
