#include "tools/polyline_vertices.h"

#include "common/arguments.h"
#include "drawing/read.h"
#include "hostapi/ads.h"

namespace
{

constexpr int FIRST_OTHER_KIND = 3;

// Appends to a chain whose last vertex is `last`. False when the heap is exhausted.
bool append(pl_vertex** head, pl_vertex** last, const pg_node& node, double bulge)
{
    pl_vertex* v = pl_vertex_new(node.x, node.y, node.z);
    if (!v)
        return false;
    v->bulge = bulge;
    (*last ? (*last)->next : *head) = v;
    *last = v;
    return true;
}

// The vertices that are listed. Null, with nothing to release, of no nodes and when the heap is exhausted.
pl_vertex* listed_vertices(const pg_node* nodes, bool closed)
{
    pl_vertex *head = nullptr, *last = nullptr;
    bool whole = true;
    for (const pg_node* n = nodes; n && whole; n = n->next) {
        if (last && last->x == n->x && last->y == n->y)
            last->bulge = n->bulge;
        else
            whole = append(&head, &last, *n, n->bulge);
    }
    if (whole && closed && nodes)
        whole = append(&head, &last, *nodes, 0.0);
    if (whole)
        return head;
    pl_free_vertices(head);
    return nullptr;
}

resbuf* last_of(resbuf* list)
{
    while (list && list->rbnext)
        list = list->rbnext;
    return list;
}

// A new list with a list for each vertex; null when the heap is exhausted.
resbuf* lists_of(const pl_vertex* chain)
{
    resbuf* head = nullptr;
    resbuf* last = nullptr;
    for (const pl_vertex* v = chain; v; v = v->next) {
        resbuf* list = acutBuildList(RTLB, RTREAL, v->bulge, RTREAL, v->x, RTREAL, v->y, RTREAL, v->z, RTLE, 0);
        if (!list) {
            if (head)
                acutRelRb(head);
            return nullptr;
        }
        (last ? last->rbnext : head) = list;
        last = last_of(list);
    }
    return head;
}

void answer_lists(resbuf* lists, bool only_one)
{
    // A list alone in a chain would be taken for the value itself.
    resbuf end{nullptr, RTLE, {}};
    resbuf begin{lists, RTLB, {}};
    resbuf* last = only_one ? last_of(lists) : nullptr;
    if (last)
        last->rbnext = &end;
    acedRetList(only_one ? &begin : lists);
    if (last)
        last->rbnext = nullptr;
}

} // namespace

int polyline_vertices(const resbuf* args)
{
    acedRetNil();
    ads_name name;
    if (!next_name(&args, name))
        return RTNORM;
    const int allow_arcs = next_short(&args, 0);
    const pline_props props = pl_get_props(name);
    if (props.kind >= FIRST_OTHER_KIND) {
        acutPrintf("Error: selection not a Polyline\n");
        return RTNORM;
    }
    pg_node* nodes = pl_read_nodes(name, allow_arcs);
    pl_vertex* chain = listed_vertices(nodes, (props.flags & PLINE_CLOSED) != 0);
    pl_free_nodes(nodes);
    resbuf* lists = lists_of(chain);
    if (lists) {
        answer_lists(lists, !chain->next);
        acutRelRb(lists);
    }
    pl_free_vertices(chain);
    return RTNORM;
}
