// Nodes, edges and triangles of a surface, one by one. The links between them are kept here and nowhere else.
#include "topology/surface_net.h"

#include <cstdlib>

#include "topology/box_index.h"

namespace
{

std::int32_t low_node(const EdgeKey& edge)
{
    return static_cast<std::int32_t>(edge.get(0));
}

bool ends_at(const EdgeKey& edge, std::int32_t node)
{
    return edge.node1 == node || edge.node2 == node;
}

} // namespace

SurfaceNet::~SurfaceNet()
{
    delete index_;
}

void SurfaceNet::drop_index()
{
    delete index_;
    index_ = nullptr;
}

void SurfaceNet::remove_node(std::int32_t id)
{
    drop_index(); // triangles may have lost a corner
    nodes.remove(id);
}

std::int32_t SurfaceNet::add_edge(EdgeObj* edge)
{
    return take_edge(edge);
}

void SurfaceNet::remove_edge(std::int32_t id)
{
    const EdgeObj* gone = edge(id);
    if (!gone)
        return;
    if (gone->left != 0 || gone->right != 0 || has_overlaid_)
        drop_index(); // triangles may have lost a side
    let_edge_go(*gone);
}

std::int32_t SurfaceNet::add_triangle(TriangleObj* triangle)
{
    const std::int32_t id = triangle ? triangles.add(triangle) : 0;
    if (id == 0)
        return 0;
    triangle->id = id;
    for (const std::int32_t side : triangle->edge)
        if (EdgeObj* of = edge(std::abs(side))) {
            has_overlaid_ = has_overlaid_ || (side < 0 ? of->left : of->right) != 0;
            of->link(side < 0 ? -id : id);
        }
    return id;
}

void SurfaceNet::remove_triangle(std::int32_t id)
{
    const TriangleObj* gone = triangle(id);
    if (!gone)
        return;
    for (const std::int32_t side : gone->edge) {
        EdgeObj* of = edge(std::abs(side));
        const std::int32_t name = side < 0 ? -id : id;
        // The side may be that of a triangle which was laid over this one.
        if (of && (side < 0 ? of->left : of->right) == name)
            of->unlink(name);
    }
    triangles.remove(id);
}

int SurfaceNet::find_edge(const EdgeKey* edge_key) const
{
    const NodeObj* at = edge_key ? node(low_node(*edge_key)) : nullptr;
    for (std::int32_t i = 1; at && i <= at->edges.count; ++i)
        if (const EdgeObj* other = edge(at->edges.get(i)); other && edge_key->matches(other))
            return 1;
    return 0;
}

std::int32_t SurfaceNet::intern_node(const double* point)
{
    // Crossings come out some last digits off places that are there, and where nodes lie in rows these are the
    // very places of the splits: looked at from one side alone, an edge would end beside its node.
    NodeObj wanted(point[0], point[1], point[2]);
    std::int32_t id = nodes.look_around(&wanted);
    if (id == 0)
        id = nodes.find(&wanted);
    if (id != 0)
        return id;
    auto* made = new NodeObj(point[0], point[1], point[2]);
    id = add_node(made);
    if (id == 0)
        delete made;
    return id;
}

std::int32_t SurfaceNet::intern_edge(std::int32_t node1, std::int32_t node2, double bulge)
{
    EdgeObj wanted(node1, node2, bulge);
    if (const std::int32_t id = edges.find(&wanted); id != 0)
        return id;
    auto* made = new EdgeObj(node1, node2, bulge);
    const std::int32_t id = add_edge(made);
    if (id == 0)
        delete made;
    return id;
}

std::int32_t SurfaceNet::connect(std::int32_t node1, std::int32_t node2, double bulge, TriangleObj* triangle,
                                 std::int32_t triangle_id)
{
    const std::int32_t id = intern_edge(node1, node2, bulge);
    EdgeObj* between = edge(id);
    if (!between || !triangle)
        return id;
    const bool is_backward = node1 > node2;
    between->link(is_backward ? -triangle_id : triangle_id);
    triangle->link(is_backward ? -id : id);
    return is_backward ? -id : id;
}

// The triangle on a side of the first edge that the others name too; 0: none.
std::int32_t SurfaceNet::common_triangle(std::int32_t edge1, std::int32_t edge2, std::int32_t edge3) const
{
    const EdgeObj* first = edge(std::abs(edge1));
    const EdgeObj* others[2] = {edge(std::abs(edge2)), edge(std::abs(edge3))};
    if (!first || !others[0] || !others[1])
        return 0;
    for (const std::int32_t side : {first->left, first->right}) {
        const std::int32_t id = std::abs(side);
        bool all = id != 0;
        for (const EdgeObj* other : others)
            all = all && (std::abs(other->left) == id || std::abs(other->right) == id);
        if (all)
            return id;
    }
    return 0;
}

int SurfaceNet::triangle_exists(std::int32_t edge1, std::int32_t edge2, std::int32_t edge3) const
{
    return common_triangle(edge1, edge2, edge3) != 0;
}

std::int32_t SurfaceNet::new_triangle(std::int32_t edge1, std::int32_t edge2, std::int32_t edge3)
{
    const std::int32_t ids[3] = {std::abs(edge1), std::abs(edge2), std::abs(edge3)};
    const EdgeObj* sides[3] = {edge(ids[0]), edge(ids[1]), edge(ids[2])};
    if (!sides[0] || !sides[1] || !sides[2])
        return 0;
    auto* made = new TriangleObj;
    if (!made)
        return 0;
    for (int i = 0; i < 3; ++i) {
        // Walked backward if it leads into the next one with its lower node.
        const bool is_backward = ends_at(*sides[(i + 1) % 3], low_node(*sides[i]));
        made->edge[i] = is_backward ? -ids[i] : ids[i];
    }
    const std::int32_t id = add_triangle(made);
    if (id == 0)
        delete made;
    return id;
}

std::int32_t SurfaceNet::triangle_from_points(const double* p1, const double* p2, const double* p3)
{
    const std::int32_t a = intern_node(p1), b = intern_node(p2), c = intern_node(p3);
    if (a == 0 || b == 0 || c == 0 || a == b || b == c || c == a)
        return 0;
    const std::int32_t ab = intern_edge(a, b, 0.0), bc = intern_edge(b, c, 0.0), ca = intern_edge(c, a, 0.0);
    const std::int32_t there = common_triangle(ab, bc, ca);
    return there != 0 ? there : new_triangle(ab, bc, ca);
}
