// Edges of a shape network cut where they cross and where nodes lie on them.
//
// Edges are compared each with each: for each edge, in the order of ids, those behind it that were there when
// its turn came. That order is what ids and nodes come from; which pairs can be left out the boxes tell.
#include <algorithm>
#include <cmath>
#include <utility>

#include "common/tolerances.h"
#include "hostapi/ads.h"
#include "topology/edge_arcs.h"
#include "topology/edge_boxes.h"
#include "topology/shape_net.h"
#include "topology/split_edge.h"
#include "topology/walk.h"

namespace
{

bool ends_at(const ShapeEdge& edge, std::int32_t node)
{
    return edge.node1 == node || edge.node2 == node;
}

// The pieces of an edge on both sides of a node.
edge_pieces intern_pieces(ShapeNet* net, ShapeEdge* edge, std::int32_t node_id)
{
    const std::int32_t node1 = edge->node1, node2 = edge->node2;
    double bulge1 = 0.0, bulge2 = 0.0;
    if (is_arc(*edge) && make_arc_ready(edge)) {
        const NodeObj& at = *net->node(node_id);
        bulge1 = arc_piece_bulge(*edge, *net->node(node1), at);
        bulge2 = arc_piece_bulge(*edge, at, *net->node(node2));
    }
    const std::int32_t first = net->intern_edge(node1, node_id, bulge1);
    return {first, net->intern_edge(node_id, node2, bulge2)};
}

// Puts a piece in a shape; false where there is no such piece. A piece may be an edge that the shape has: it
// has it once, as the lists of edges that overlap would grow without end.
bool add_piece(ShapeNet* net, std::int32_t id, std::int32_t shape_id)
{
    ShapeEdge* piece = net->edge(id);
    if (!piece)
        return false;
    if (piece->shapes.find(shape_id) != 0)
        return true;
    piece->link(shape_id);
    if (ShapeObj* shape = net->shape(shape_id))
        shape->link(id);
    return true;
}

void add_pieces(ShapeNet* net, std::int32_t shape_id, const edge_pieces& pieces)
{
    if (!add_piece(net, pieces.first, shape_id))
        acedAlert("Edge1 NULL");
    if (!add_piece(net, pieces.second, shape_id))
        acedAlert("Edge2 NULL");
    if (!net->shape(shape_id))
        acutPrintf("Shape Id %d\n", shape_id);
}

} // namespace

edge_pieces split_edge_at(ShapeNet* net, std::int32_t edge_id, std::int32_t node_id)
{
    ShapeEdge* edge = net->edge(edge_id);
    if (!edge) {
        acedAlert("EdgeObj NULL");
        return {};
    }
    if (ends_at(*edge, node_id))
        return {};
    const char* missing = !net->node(edge->node1)   ? "NodeObj1 NULL"
                          : !net->node(edge->node2) ? "NodeObj2 NULL"
                          : !net->node(node_id)     ? "NodeObj NULL"
                                                    : nullptr;
    if (missing) {
        acedAlert(missing);
        return {};
    }
    const edge_pieces pieces = intern_pieces(net, edge, node_id);
    for (std::int32_t i = first_of(edge->shapes); i != 0; i = edge->shapes.next(i))
        add_pieces(net, edge->shapes.get(i)->id, pieces);
    if (pieces.first == 0 || pieces.second == 0)
        return {}; // no memory: half an edge is no place for it
    net->remove_edge(edge_id);
    return pieces;
}

std::int32_t ShapeNet::split_edge(std::int32_t edge_id, std::int32_t node_id)
{
    return split_edge_at(this, edge_id, node_id).first;
}

namespace
{

struct crossing {
    double at[3];
    std::int32_t node;
    double along; // the second edge, in the plane
};

// Crossings on an arc come out as far beside it as its centre and radius are rounded.
double reach_of_rounding(const ShapeEdge& edge)
{
    constexpr double SHARE = 0x1p-46;
    return is_curved(edge) ? edge.radius * SHARE : 0.0;
}

bool is_near(const NodeObj& a, const NodeObj& b, double reach)
{
    return std::fabs(a.x - b.x) < reach && std::fabs(a.y - b.y) < reach && std::fabs(a.z - b.z) < reach;
}

// Whether a node lies at an end of the edge, be it another node: two nodes within the tolerance stay two where
// a plane of the index parts them, and edges that are cut at one would be cut back at the other, for ever.
bool lies_at_end(const ShapeNet& net, const ShapeEdge& edge, std::int32_t node_id, double reach)
{
    const NodeObj* at = net.node(node_id);
    const edge_ends ends = ends_of(edge);
    return !at || !ends || is_near(*at, *ends.first, reach) || is_near(*at, *ends.second, reach);
}

edge_pieces cut_at(ShapeNet* net, std::int32_t id, std::int32_t node_id, double reach)
{
    const ShapeEdge* edge = net->edge(id);
    return edge && !lies_at_end(*net, *edge, node_id, reach) ? split_edge_at(net, id, node_id) : edge_pieces{};
}

// Edges from a place to the same place, upright ones among them, have no crossings in the plane.
bool has_extent(const ShapeEdge& edge)
{
    const edge_ends ends = ends_of(edge);
    return ends && (std::fabs(ends.first->x - ends.second->x) > LENGTH_TOL ||
                    std::fabs(ends.first->y - ends.second->y) > LENGTH_TOL);
}

// Cuts an edge at two nodes, the nearer one first. An arc's positions run counter-clockwise: on one that runs
// the other way the farther node lies on the first piece. A node at an end of the edge needs no cut, and the
// angle of an arc's start may come out as a whole turn.
void cut_twice(ShapeNet* net, std::int32_t id, std::int32_t nearer, std::int32_t farther, double reach)
{
    const ShapeEdge& edge = *net->edge(id);
    const bool is_clockwise = is_curved(edge) && edge.bulge < 0,
               is_done = lies_at_end(*net, edge, farther, reach);
    const edge_pieces pieces = cut_at(net, id, nearer, reach);
    if (!is_done)
        cut_at(net, pieces.first == 0 ? id : is_clockwise ? pieces.first : pieces.second, farther, reach);
}

} // namespace

// Cuts two edges where they meet. Whether the first was cut.
bool ShapeNet::cut_pair(std::int32_t first_id, std::int32_t second_id)
{
    ShapeEdge* second = edge(second_id);
    if (!has_extent(*edge(first_id)) || !has_extent(*second))
        return false;
    crossing found[2];
    const int count = edge_crossings(edge(first_id), second, found[0].at, found[1].at);
    for (crossing* c = found; c != found + count; ++c) {
        c->node = intern_node(c->at[0], c->at[1], c->at[2]);
        const double in_plane[3] = {c->at[0], c->at[1], 0.0};
        c->along = edge_position(second, in_plane, 2);
    }
    if (count == 0)
        return false;
    const double reach = std::max({LENGTH_TOL, reach_of_rounding(*edge(first_id)), reach_of_rounding(*second)});
    if (count == 1) {
        cut_at(this, second_id, found[0].node, reach);
        return cut_at(this, first_id, found[0].node, reach).first != 0;
    }
    if (found[1].along < found[0].along)
        std::swap(found[0], found[1]);
    cut_twice(this, second_id, found[0].node, found[1].node, reach);
    if (!edge(first_id)) // it was a piece of the other, and has been cut with that
        return true;
    // Where the farther one is an end of it the nearer one still cuts; otherwise its pieces meet that again.
    return cut_at(this, first_id, found[1].node, reach).first != 0 ||
           cut_at(this, first_id, found[0].node, reach).first != 0;
}

void ShapeNet::cut_crossings()
{
    EdgeBoxes boxes(*this);
    for (std::int32_t i = first_of(edges); i != 0; i = edges.next(i)) {
        const std::int32_t last = edges.count;
        boxes.take_up_to(last);
        bool is_cut = false;
        if (boxes.look(i)) {
            boxes.drop(i);
            for (std::int32_t k = 0; k < boxes.found_count() && !is_cut; ++k) {
                is_cut = edge(boxes.found(k)) && cut_pair(i, boxes.found(k));
                if (!edge(boxes.found(k)))
                    boxes.drop(boxes.found(k));
            }
            continue;
        }
        for (std::int32_t j = edges.next(i); j != 0 && j <= last && !is_cut; j = edges.next(j))
            is_cut = cut_pair(i, j);
    }
}

namespace
{

double length_of(const double* v, std::int32_t n)
{
    double sum = 0.0;
    for (std::int32_t i = 0; i < n; ++i)
        sum += v[i] * v[i];
    return std::sqrt(sum);
}

// Whether a node lies on the chord from a to b, and between its ends. A node at one of the ends, from where the
// other lies as far away or farther, is no place to cut: the pieces would be cut back again.
bool lies_on_chord(const NodeObj& a, const NodeObj& b, const NodeObj& node, double tolerance, std::int32_t n)
{
    double ab[3] = {}, ap[3] = {}, bp[3] = {}, off[3] = {};
    double dot = 0.0, square = 0.0;
    for (std::int32_t i = 0; i < n; ++i) {
        ab[i] = b.get(i) - a.get(i);
        ap[i] = node.get(i) - a.get(i);
        bp[i] = node.get(i) - b.get(i);
        dot += ab[i] * ap[i];
        square += ab[i] * ab[i];
    }
    const double share = dot / square;
    for (std::int32_t i = 0; i < n; ++i)
        off[i] = ap[i] - share * ab[i];
    const double length = std::sqrt(square), from_a = length_of(ap, n), from_b = length_of(bp, n);
    const double away = length_of(off, n);
    return away * away < tolerance * tolerance && std::fabs(from_a + from_b - length) < LENGTH_TOL &&
           from_a < length && from_b < length;
}

} // namespace

// Cuts an edge at the first node found on it. Straight edges alone: the chord of an arc isn't the arc, and an
// arc is cut where it is met.
void ShapeNet::cut_near_node(std::int32_t edge_id)
{
    const ShapeEdge* cut = edge(edge_id);
    const NodeObj* a = node(cut->node1);
    const NodeObj* b = node(cut->node2);
    if (!a || !b || is_curved(*cut))
        return;
    const std::int32_t n = std::min(nodes.dimensions, KD_MOST_DIMENSIONS);
    const NodeObj middle((a->x + b->x) / 2, (a->y + b->y) / 2, (a->z + b->z) / 2);
    KdSet* near = nodes.within(&middle, std::sqrt(a->squared_distance(b, n)) + tolerance);
    if (!near)
        return;
    bool is_cut = false;
    for (std::int32_t i = first_of(*near); i != 0 && !is_cut; i = near->next(i)) {
        const auto* other = static_cast<const NodeObj*>(near->get(i));
        is_cut = !ends_at(*cut, other->id) && lies_on_chord(*a, *b, *other, tolerance, n) &&
                 split_edge(edge_id, other->id) != 0;
    }
    delete near;
}

void ShapeNet::cut_at_near_nodes()
{
    for (std::int32_t i = first_of(edges); i != 0; i = edges.next(i))
        cut_near_node(i);
}
