// A chain cut into a surface. Edges that can't reach the chain are marked first: a node's edge is out of the
// chain's reach if it is shorter than the way from the node to the chain. The rest is met with each segment, as
// if all pairs were tried; tried are those whose boxes overlap, in the same order.
#include <algorithm>
#include <cmath>
#include <limits>

#include "polygon/intersect.h"
#include "polygon/measures.h"
#include "polygon/points.h"
#include "polygon/tolerances.h"
#include "topology/box_index.h"
#include "topology/cut_edge.h"
#include "topology/polling.h"
#include "topology/surface_net.h"
#include "topology/walk.h"

namespace
{

// The segments of the chain by boxes; of an arc the whole circle's, and more.
struct chain_index {
    const pg_node* chain;
    BoxIndex boxes;
    HeapArray<const pg_node*> starts;
    bool stands = false; // false: no memory
};

void index_chain(const pg_node* chain, chain_index* index)
{
    index->chain = chain;
    for (const pg_node* n = chain; n; n = n->next) {
        const pg_node* to = n->next ? n->next : n; // the last node by itself
        const double p[2] = {n->x, n->y}, q[2] = {to->x, to->y};
        const double beyond = n->next ? std::fabs(n->bulge) * pg_dist(p, q) : 0.0;
        pg_box box = widened_box(box_between(p, q), beyond);
        if (!(box.x0 <= box.x1 && std::isfinite(beyond)))
            box = box_of_all();
        if (!index->boxes.add(box) || !index->starts.add(n))
            return;
    }
    index->stands = true;
}

// Squared, at most by rounding off what pg_closest gives for the whole chain; `LARGE` if that is above `limit`.
constexpr double MOST_SQ = 1e15; // the kernel knows no distances much beyond this
constexpr double LARGE = std::numeric_limits<double>::infinity();

bool near_distance(chain_index* index, const NodeObj& node, double limit, double* distance_sq)
{
    const double at[3] = {node.x, node.y, node.z};
    const double reach = std::sqrt(limit) * (1 + 1e-6) + 1e-6 + 1e-12 * (std::fabs(node.x) + std::fabs(node.y));
    if (!index->stands || !std::isfinite(reach) ||
        !index->boxes.look(widened_box(box_between(at, at), reach), 0))
        return false;
    *distance_sq = LARGE;
    for (const std::int32_t i : index->boxes.found()) {
        pg_node from = *index->starts.items[i];
        pg_node to{};
        if (from.next) {
            to = *from.next;
            to.next = nullptr;
            from.next = &to;
        }
        double nearest[3];
        *distance_sq = std::min(*distance_sq, pg_closest(at, &from, nullptr, nearest));
    }
    return true;
}

// Marks the edges of a node that are shorter than its distance to the chain.
class Reach
{
public:
    Reach(SurfaceNet* surface, chain_index* index) : surface_(surface), index_(index) {}

    void mark_edges_of(const NodeObj& node)
    {
        double longest = -1.0;
        for_unmarked(node, [&](EdgeObj&, double length_sq) { longest = std::max(longest, length_sq); });
        if (longest < 0.0)
            return;
        double near = 0.0;
        const bool is_near_known = near_distance(index_, node, longest, &near);
        double exact = -1.0; // asked for only where it matters
        for_unmarked(node, [&](EdgeObj& edge, double length_sq) {
            // Rounding of coordinates is far below this.
            const double doubt = 1e-6 * length_sq + 1e-9;
            bool is_short = length_sq < near;
            if (!is_near_known || length_sq > MOST_SQ || !(std::fabs(length_sq - near) > doubt)) {
                if (exact < 0.0)
                    exact = exact_distance(node);
                is_short = length_sq < exact;
            }
            if (is_short)
                edge.mark = 1;
        });
    }

private:
    template <class Work>
    void for_unmarked(const NodeObj& node, Work work)
    {
        for (std::int32_t i = 1; i <= node.edges.count; ++i) {
            EdgeObj* edge = surface_->edge(node.edges.get(i));
            if (edge && !edge->mark)
                work(*edge, surface_->nodes.squared_distance(edge->node1, edge->node2));
        }
    }

    double exact_distance(const NodeObj& node) const
    {
        const double at[3] = {node.x, node.y, node.z};
        double nearest[3];
        return pg_closest(at, index_->chain, nullptr, nearest);
    }

    SurfaceNet* surface_;
    chain_index* index_;
};

struct crossing {
    double at[3];
    double along; // from the segment's start
    std::int32_t number;
    bool is_kept;
};

bool same_place(const double* a, const double* b)
{
    return std::fabs(a[0] - b[0]) <= PG_LENGTH_TOL && std::fabs(a[1] - b[1]) <= PG_LENGTH_TOL;
}

bool comes_first(const crossing& a, const crossing& b)
{
    return a.along != b.along ? a.along < b.along : a.number < b.number;
}

// Of the crossings at one place the one that was met first is kept. Given are those around a place, in any
// order.
void keep_first(crossing* begin, crossing* end)
{
    std::sort(begin, end, [](const crossing& a, const crossing& b) { return a.number < b.number; });
    for (crossing* c = begin; c != end; ++c)
        c->is_kept = std::none_of(begin, c, [&](const crossing& earlier) {
            return earlier.is_kept && same_place(earlier.at, c->at);
        });
}

class Merging
{
public:
    explicit Merging(SurfaceNet* surface) : surface_(surface) {}

    // The crossings of the segment that starts there become vertices.
    void cut_by_segment(pg_node* from);
    // Edges between vertices that came from crossings and follow each other.
    void join_vertices();

private:
    void meet(std::int32_t edge_id, const double* p, const double* q);
    void put_vertices(pg_node* from);

    SurfaceNet* surface_;
    BoxIndex boxes_;
    HeapArray<crossing> met_;      // by this segment
    HeapArray<pg_node*> vertices_; // put into the chain, in its order
};

// The edge comes first, so that the crossing has its height and the surface keeps its shape.
void Merging::meet(std::int32_t edge_id, const double* p, const double* q)
{
    const EdgeObj* edge = surface_->edge(edge_id);
    const NodeObj* low = edge && !edge->mark ? surface_->node(std::min(edge->node1, edge->node2)) : nullptr;
    const NodeObj* high = low ? surface_->node(std::max(edge->node1, edge->node2)) : nullptr;
    if (!high)
        return;
    const double a[3] = {low->x, low->y, low->z}, b[3] = {high->x, high->y, high->z};
    if (!pg_boxes_meet(box_between(a, b), box_between(p, q)))
        return;
    double points[2][3];
    const int count = pg_seg_intersect(a, b, p, q, points[0], points[1]);
    if (count == 0)
        return;
    const std::int32_t first = surface_->intern_node(points[0]);
    const std::int32_t second = count == 2 ? surface_->intern_node(points[1]) : 0;
    cut_at(surface_, edge_id, first, second);
    for (int i = 0; i < count; ++i) {
        const double* at = points[i];
        if (!same_place(at, p) && !same_place(at, q))
            met_.add({{at[0], at[1], at[2]}, pg_dist(p, at), met_.count, false});
    }
}

void Merging::cut_by_segment(pg_node* from)
{
    const double p[3] = {from->x, from->y, from->z};
    const double q[3] = {from->next->x, from->next->y, from->next->z};
    met_.count = 0;
    const std::int32_t last = surface_->edges.count; // pieces made now only touch the segment
    bool indexed = true;
    while (indexed && boxes_.count() < last)
        indexed = add_edge_box(*surface_, &boxes_);
    if (indexed && boxes_.look(box_between(p, q), 0)) {
        for (const std::int32_t i : boxes_.found())
            meet(i + 1, p, q);
    } else {
        for (std::int32_t id = 1; id <= last; ++id)
            meet(id, p, q);
    }
    put_vertices(from);
}

void Merging::put_vertices(pg_node* from)
{
    std::sort(met_.begin(), met_.end(), comes_first);
    for (crossing *c = met_.begin(), *next; c != met_.end(); c = next) {
        // Crossings at one place can't be farther apart than this along the segment.
        next = c + 1;
        while (next != met_.end() && next->along - (next - 1)->along <= 4 * PG_LENGTH_TOL)
            ++next;
        keep_first(c, next);
        std::sort(c, next, comes_first);
    }
    for (const crossing& c : met_) {
        pg_node* vertex = c.is_kept ? pg_node_push(c.at, from->next, 0.0) : nullptr;
        if (!vertex)
            continue;
        vertex->mark = 1;
        from->next = vertex;
        from = vertex;
        vertices_.add(vertex);
    }
}

void Merging::join_vertices()
{
    for (std::int32_t i = 1; i < vertices_.count; ++i) {
        const pg_node *a = vertices_.items[i - 1], *b = vertices_.items[i];
        if (a->next != b)
            continue;
        const double p[3] = {a->x, a->y, a->z}, q[3] = {b->x, b->y, b->z};
        const std::int32_t from = surface_->intern_node(p), to = surface_->intern_node(q);
        if (from != 0 && to != 0)
            surface_->intern_edge(from, to, 0.0);
    }
}

} // namespace

void SurfaceNet::merge_chain(pg_node* chain)
{
    for (std::int32_t id = first_of(nodes); id != 0; id = nodes.next(id))
        node(id)->mark = 0;
    for (std::int32_t id = first_of(edges); id != 0; id = edges.next(id))
        edge(id)->mark = 0;
    if (!chain)
        return;
    BreakPoll poll;
    chain_index index{};
    index_chain(chain, &index);
    Reach reach(this, &index);
    for (std::int32_t id = first_of(nodes); id != 0; id = nodes.next(id)) {
        if (poll.is_cancelled())
            return;
        reach.mark_edges_of(*node(id));
    }
    Merging merging(this);
    for (pg_node *from = chain, *to = chain->next; to; from = to, to = to->next) {
        if (poll.is_cancelled())
            return;
        merging.cut_by_segment(from);
    }
    merging.join_vertices();
}
