// A step in draw mode: the new vertex goes to the end of the chain in hand, or begins a chain; then pieces
// without length are tidied away; then the object is drawn anew. Behind the first of these cur is an end of its
// chain, `other` the vertex next to it and the tip on cur, and all that follows keeps it so.
#include "tools/pointer_step.h"

#include <cmath>

#include "common/names.h"
#include "drawing/write.h"
#include "hostapi/ads.h"
#include "tools/drawn_objects.h"
#include "tools/pointer_angles.h"

namespace
{

constexpr int TYPE_GROUP = 0;
constexpr int START_GROUP = 10;
constexpr int END_GROUP = 11;
constexpr int LINETYPE_SCALE_GROUP = 48;
constexpr int FLAGS_GROUP = 70;
constexpr double STUBS_PER_ARROW = 500.0; // segments shorter than such a part of the arrow are leftovers

void link(pl_vertex* a, pl_vertex* b)
{
    a->next = b;
    b->prev = a;
}

bool same_place(const pl_vertex& a, const pl_vertex& b)
{
    return a.x == b.x && a.y == b.y;
}

// U finds nothing to take back behind the beginning of a chain.
void mark_beginning(text_out last_cmd)
{
    if (last_cmd.text[0] == '\0')
        text_set(last_cmd, "U");
    last_cmd.text[0] = 'U';
}

// The place `dist` ahead of the tip, on the slope of the current segment. Null, with a message, when it is out
// of all bounds.
pl_vertex* vertex_ahead(const pointer_state& state, double dist, double angle)
{
    const double direction = direction_in_circle(angle + segment_direction(state)) / DEGREES_PER_RADIAN;
    const double length = segment_length(state);
    const double slope = length == 0.0 ? 0.0 : (state.cur->z - state.other->z) / length;
    const double x = state.tip->x + dist * std::cos(direction);
    const double y = state.tip->y + dist * std::sin(direction);
    const double z = state.cur->z + dist * slope;
    if (std::isfinite(x) && std::isfinite(y) && std::isfinite(z))
        return pl_vertex_new(x, y, z);
    acutPrintf("\nError: the pointer can't go that far");
    return nullptr;
}

// ---- changes of the chain -----------------------------------------------------------------------------

void erase_drawn(pointer_state& state)
{
    // Erasing twice would bring it back.
    if (state.drawn)
        acdbEntDel(state.ent_name);
    state.drawn = false;
}

// The last drawn step was taken back to the vertex in front of it, which goes now.
void drop_met_vertex(pointer_state& state)
{
    const bool at_tail = !state.cur->next;
    pl_vertex* met = state.other;
    pl_vertex* beyond = at_tail ? met->prev : met->next;
    if (!beyond || !same_place(*state.cur, *met))
        return;
    at_tail ? link(beyond, state.cur) : link(state.cur, beyond);
    state.other = beyond;
    acad_free(met);
}

// n behind the end on which the pointer stands, or in its place for a step straight on.
void extend_chain(pointer_state& state, pl_vertex* n, bool straight)
{
    erase_drawn(state);
    drop_tip(state);
    pl_vertex* end = state.cur;
    pl_vertex* anchor = straight ? state.other : end;
    if (!end->next) {
        link(anchor, n);
    } else {
        link(n, anchor);
        state.chain_entry->head = n;
    }
    if (straight)
        acad_free(end);
    state.other = anchor;
    state.cur = state.tip = n;
    drop_met_vertex(state);
}

// A chain from the tip to n. The record's closed bit stays: a new polyline of a closed one is closed too.
// False, with nothing changed, when the heap is exhausted.
bool begin_chain(pointer_state& state, pl_vertex* n, text_out last_cmd)
{
    pl_vertex* start = pl_vertex_new(state.tip->x, state.tip->y, state.tip->z);
    if (!start || !add_chain(state, start)) {
        pl_free_vertices(start);
        return false;
    }
    if (!state.is_line)
        acutPrintf("\nNew Polyline");
    if (resbuf* flags = rb_find(state.ent_list, FLAGS_GROUP))
        flags->resval.rint = static_cast<short>(flags->resval.rint & ~PLINE_CLOSED);
    mark_beginning(last_cmd);
    link(start, n);
    stand_on(state, n, start);
    state.drawn = false; // what is in the drawing belongs to the chain before
    return true;
}

// A head that lies on the second vertex. False when the chain is nothing but that.
bool tidy_head(pointer_state& state)
{
    pl_vertex* head = state.chain_entry->head;
    pl_vertex* second = head->next;
    if (!same_place(*head, *second))
        return true;
    if (!second->next)
        return false;
    link(head, second->next);
    if (state.other == second)
        state.other = state.cur == head ? head->next : head;
    acad_free(second);
    return true;
}

// The segment behind the one just drawn is a rounding's leftover.
void drop_stub(pointer_state& state)
{
    pl_vertex* stub = state.other;
    const bool at_tail = !state.cur->next;
    pl_vertex* beyond = at_tail ? stub->prev : stub->next;
    if (!beyond)
        return;
    at_tail ? link(beyond, state.cur) : link(state.cur, beyond);
    state.other = beyond;
    acad_free(stub);
}

// ---- drawing ----------------------------------------------------------------------------------------

void set_point(resbuf* group, const pl_vertex& v)
{
    if (!group)
        return;
    group->resval.rpoint[0] = v.x;
    group->resval.rpoint[1] = v.y;
    group->resval.rpoint[2] = v.z;
}

void draw_lines(pointer_state& state)
{
    for (const pl_vertex* v = state.chain_entry->head; v && v->next; v = v->next) {
        set_point(rb_find(state.ent_list, START_GROUP), *v);
        set_point(rb_find(state.ent_list, END_GROUP), *v->next);
        acdbEntMake(state.ent_list);
    }
}

// Takes the node out of the list; null when there is none.
resbuf* take_group(resbuf** list, int code)
{
    resbuf** at = list;
    while (*at && (*at)->restype != code)
        at = &(*at)->rbnext;
    resbuf* node = *at;
    if (node) {
        *at = node->rbnext;
        node->rbnext = nullptr;
    }
    return node;
}

void put_at_end(resbuf** list, resbuf* node)
{
    while (*list)
        list = &(*list)->rbnext;
    *list = node;
}

void scale_linetype(const ads_name name, double scale)
{
    acedCommand(RTSTR, "_.CHPROP", RTENAME, name, RTSTR, "", RTSTR, "_SCALE", RTREAL, scale, RTSTR, "", 0);
}

void draw_polyline(pointer_state& state)
{
    resbuf* scale = take_group(&state.ent_list, LINETYPE_SCALE_GROUP);
    const newest_object before;
    pl_write_vertices(state.chain_entry->head, state.ent_props, 0, 0, 1);
    ads_name made;
    if (scale && scale->resval.rreal > 0.0 && before.added(made))
        scale_linetype(made, scale->resval.rreal);
    put_at_end(&state.ent_list, scale);
}

bool draw_chain(pointer_state& state)
{
    if (!rb_find(state.ent_list, TYPE_GROUP)) {
        acutPrintf("\nError 1 remaking polyline.");
        return false;
    }
    const newest_object before;
    if (state.is_line)
        draw_lines(state);
    else
        draw_polyline(state);
    // When nothing came the last object is somebody else's, not to be erased with the next step.
    state.drawn = before.added(state.ent_name);
    return true;
}

} // namespace

double pointer_step(pointer_state& state, double dist, double angle, int mode, text_out last_cmd)
{
    if (!state.chain_entry || !state.chain_entry->head || !state.chain_entry->head->next)
        return 0.0;
    const double old_length = segment_length(state);
    pl_vertex* n = vertex_ahead(state, dist, angle);
    if (!n)
        return angle;
    if (mode == MOVE_MODE) {
        drop_tip(state);
        state.tip = n;
        return angle;
    }
    const bool straight = angle == 0.0;
    bool at_pointer = state.tip == state.cur || same_place(*state.tip, *state.cur);
    if (state.is_line && !straight) { // a LINE never bends
        at_pointer = false;
        mark_beginning(last_cmd);
    }
    const bool at_end = !state.cur->next || state.cur == state.chain_entry->head;
    if (at_pointer && at_end) {
        extend_chain(state, n, straight);
    } else if (!begin_chain(state, n, last_cmd)) {
        acad_free(n);
        return angle;
    }
    if (!tidy_head(state))
        return angle;
    if (state.arrow_size / STUBS_PER_ARROW > old_length)
        drop_stub(state);
    return draw_chain(state) ? 0.0 : angle;
}
