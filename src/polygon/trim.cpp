#include "polygon/trim.h"

#include "polygon/arcs.h"
#include "polygon/on_segment.h"
#include "polygon/segment_pairs.h"

namespace
{

bool is_at_node(const pg_node& node, const double* point)
{
    const double place[3] = {node.x, node.y, node.z};
    return pg_is_at(place, point);
}

// Whether the chain goes on behind the segment that starts at `node`, whose end lies at the point.
bool passes_through(const pg_node& node, const double* point)
{
    return node.next->next && is_at_node(*node.next, point);
}

void end_at(pg_node* node)
{
    pl_free_nodes(node->next);
    node->next = nullptr;
    node->bulge = 0.0;
}

// Ends the chain at the point, on the segment that starts at `node`. Without memory it stays whole.
int cut_within(pg_node* node, const pg_segment& s, const double* point)
{
    pg_node* end = pg_node_new(point);
    if (!end)
        return 0;
    pl_free_nodes(node->next);
    node->next = end;
    if (pg_is_arc(s))
        node->bulge = s.bulge >= 0.0 ? -pg_arc_bulge(s.p, point, s.centre) : pg_arc_bulge(point, s.p, s.centre);
    return 1;
}

} // namespace

int pg_trim_at_first(pg_node* chain, double* point)
{
    point[2] = 0.0;
    for (; chain && chain->next; chain = chain->next) {
        if (passes_through(*chain, point)) {
            end_at(chain->next);
            return 1;
        }
        const pg_segment s = pg_segment_at(*chain);
        if (pg_is_on_segment(s, point))
            return cut_within(chain, s, point);
    }
    return 0;
}

int pg_trim_at_last(pg_node* chain, double* point)
{
    pg_node* last = nullptr;
    for (; chain && chain->next; chain = chain->next)
        if (passes_through(*chain, point) || pg_is_on_segment(pg_segment_at(*chain), point))
            last = chain;
    if (!last)
        return 0;
    if (is_at_node(*last->next, point)) {
        end_at(last->next);
        return 1;
    }
    return cut_within(last, pg_segment_at(*last), point);
}
