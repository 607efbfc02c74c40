#include "tin/point_tree.h"

#include "hostapi/ads.h"

namespace
{

void widen(point_tree* tree, double x, double y)
{
    tree->x0 = std::min(tree->x0, x);
    tree->x1 = std::max(tree->x1, x);
    tree->y0 = std::min(tree->y0, y);
    tree->y1 = std::max(tree->y1, y);
}

// The number of points; 0 if one has no place in an order.
std::uint32_t countable(const tin_point* points)
{
    std::uint32_t count = 0;
    for (const tin_point* p = points; p; p = p->next, ++count)
        if (!std::isfinite(p->x) || !std::isfinite(p->y) || count == 1u << 30)
            return 0;
    return count;
}

void halve(point_tree* tree, std::uint32_t node, std::uint32_t level_first, std::uint32_t level_size,
           const tree_cell& c)
{
    if (node >= tree->leaves)
        return;
    const std::uint64_t at = node - level_first, count = tree->count;
    tree_spot* first = tree->spots + count * at / level_size;
    tree_spot* last = tree->spots + count * (at + 1) / level_size;
    tree_spot* middle = tree->spots + count * (2 * at + 1) / (2 * std::uint64_t{level_size});
    tree_node& n = tree->nodes[node];
    n.by_x = c.x1 - c.x0 > c.y1 - c.y0;
    if (n.by_x)
        std::nth_element(first, middle, last, [](const tree_spot& p, const tree_spot& q) { return p.x < q.x; });
    else
        std::nth_element(first, middle, last, [](const tree_spot& p, const tree_spot& q) { return p.y < q.y; });
    n.at = n.by_x ? middle->x : middle->y;
    tree_cell low = c, high = c;
    (n.by_x ? low.x1 : low.y1) = n.at;
    (n.by_x ? high.x0 : high.y0) = n.at;
    halve(tree, 2 * node, 2 * level_first, 2 * level_size, low);
    halve(tree, 2 * node + 1, 2 * level_first, 2 * level_size, high);
}

// A triangle, counter-clockwise, and what is wanted of the points near it.
struct triangle_query {
    const point_tree& tree;
    tin_place corner[3];
    double length[3]; // of the edges
    double reach;
    void* context;
    void (*visit)(void*, std::uint32_t);
};

bool is_beside(const triangle_query& q, int edge, double x, double y)
{
    return turn(q.corner[edge], q.corner[(edge + 1) % 3], x, y) < -q.reach * q.length[edge];
}

bool is_apart(const triangle_query& q, const tree_cell& c)
{
    double x0 = q.corner[0].x, x1 = x0, y0 = q.corner[0].y, y1 = y0;
    for (const tin_place& p : q.corner) {
        x0 = std::min(x0, p.x), x1 = std::max(x1, p.x);
        y0 = std::min(y0, p.y), y1 = std::max(y1, p.y);
    }
    if (c.x0 > x1 + q.reach || c.x1 < x0 - q.reach || c.y0 > y1 + q.reach || c.y1 < y0 - q.reach)
        return true;
    for (int i = 0; i < 3; ++i)
        if (is_beside(q, i, c.x0, c.y0) && is_beside(q, i, c.x0, c.y1) && is_beside(q, i, c.x1, c.y0) &&
            is_beside(q, i, c.x1, c.y1))
            return true;
    return false;
}

void visit_near(const triangle_query& q, std::uint32_t node, const tree_cell& c)
{
    if (is_apart(q, c))
        return;
    const point_tree& tree = q.tree;
    if (node < tree.leaves) {
        const tree_node& n = tree.nodes[node];
        tree_cell low = c, high = c;
        (n.by_x ? low.x1 : low.y1) = n.at;
        (n.by_x ? high.x0 : high.y0) = n.at;
        visit_near(q, 2 * node, low);
        visit_near(q, 2 * node + 1, high);
        return;
    }
    const std::uint32_t leaf = node - tree.leaves;
    for (std::uint32_t i = first_of_leaf(tree, leaf); i < first_of_leaf(tree, leaf + 1); ++i) {
        const double x = tree.spots[i].x, y = tree.spots[i].y;
        if (!is_apart(q, {x, x, y, y}))
            q.visit(q.context, i);
    }
}

} // namespace

point_tree* point_tree_new(tin_point* list)
{
    const std::uint32_t count = countable(list);
    if (count == 0)
        return nullptr;
    std::uint32_t leaves = 1;
    while (std::uint64_t{leaves} * LEAF_POINTS < count)
        leaves *= 2;
    auto* tree = static_cast<point_tree*>(acad_malloc(sizeof(point_tree)));
    auto* spots = static_cast<tree_spot*>(acad_malloc(sizeof(tree_spot) * count));
    auto* nodes = static_cast<tree_node*>(acad_malloc(sizeof(tree_node) * 2 * leaves));
    if (!tree || !spots || !nodes) {
        acad_free(tree);
        acad_free(spots);
        acad_free(nodes);
        return nullptr;
    }
    *tree = {spots, nodes, count, leaves, list->x, list->x, list->y, list->y};
    for (tin_point* p = list; p; p = p->next) {
        *spots++ = {p->x, p->y, p};
        widen(tree, p->x, p->y);
    }
    for (std::uint32_t i = 0; i < 2 * leaves; ++i)
        nodes[i] = {};
    halve(tree, 1, 1, 1, {tree->x0, tree->x1, tree->y0, tree->y1});
    for (std::uint32_t i = 0; i < count; ++i)
        set_tree_place(tree->spots[i].point, i);
    return tree;
}

void point_tree_free(point_tree* tree)
{
    if (!tree)
        return;
    acad_free(tree->spots);
    acad_free(tree->nodes);
    acad_free(tree);
}

void near_triangle(const point_tree& tree, const tin_place (&corner)[3], double reach, void* context,
                   void (*visit)(void* context, std::uint32_t place))
{
    triangle_query q{tree, {corner[0], corner[1], corner[2]}, {}, reach, context, visit};
    if (turn(corner[0], corner[1], corner[2].x, corner[2].y) < 0)
        std::swap(q.corner[1], q.corner[2]);
    for (int i = 0; i < 3; ++i)
        q.length[i] =
            std::hypot(q.corner[(i + 1) % 3].x - q.corner[i].x, q.corner[(i + 1) % 3].y - q.corner[i].y);
    visit_near(q, 1, {tree.x0, tree.x1, tree.y0, tree.y1});
}
