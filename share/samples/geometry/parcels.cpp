// parcels.cpp: parcels given as outlines, overlaid: cut where they cross, and the area of each face.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "polygon/node.h"
#include "topology/shape_net.h"

namespace
{

struct vertex {
    double x, y, bulge;
};

// A chain is built from its end: each new node stands in front of the others.
pg_node* chain_of(const std::vector<vertex>& vertices)
{
    pg_node* head = nullptr;
    for (auto v = vertices.rbegin(); v != vertices.rend(); ++v) {
        const double at[3] = {v->x, v->y, 0.0};
        head = pg_node_push(at, head, v->bulge);
    }
    return head;
}

// Of a closed chain, positive when it runs counter-clockwise. An arc of the angle a adds the circular segment
// on its chord, radius^2 (a - sin a) / 2.
double area_of(const pg_node* chain)
{
    double area = 0;
    for (const pg_node* p = chain; p && p->next; p = p->next) {
        const pg_node* q = p->next;
        area += ((p->x - chain->x) * (q->y - chain->y) - (q->x - chain->x) * (p->y - chain->y)) / 2;
        const double angle = 4 * std::atan(p->bulge);
        if (p->bulge != 0) {
            const double radius = std::hypot(q->x - p->x, q->y - p->y) / 2 / std::sin(angle / 2);
            area += radius * radius * (angle - std::sin(angle)) / 2;
        }
    }
    return area;
}

} // namespace

int main()
{
    constexpr double QUARTER = 0.41421356237309503; // the bulge of a quarter circle
    const std::vector<std::vector<vertex>> outlines = {
        // Two lots side by side. The second one has a rounded corner.
        {{0, 0, 0}, {60, 0, 0}, {60, 40, 0}, {0, 40, 0}},
        {{60, 0, 0}, {110, 0, QUARTER}, {120, 10, 0}, {120, 40, 0}, {60, 40, 0}},
        // An easement across both, and a building in the first.
        {{-10, 10, 0}, {130, 10, 0}, {130, 16, 0}, {-10, 16, 0}},
        {{20, 22, 0}, {32, 22, 0}, {32, 30, 0}, {20, 30, 0}},
    };
    ShapeNet net(2); // heights and bulges don't tell nodes and edges apart
    for (const auto& outline : outlines) {
        pg_node* chain = chain_of(outline);
        net.add_chain(nullptr, chain, 7, 1); // 1: closed by its last node
        pl_free_nodes(chain);
    }
    net.cut_crossings();

    std::vector<double> inner, outer;
    pg_ring* faces = net.trace_faces();
    for (const pg_ring* face = faces; face; face = face->next)
        (face->clockwise ? outer : inner).push_back(area_of(face->nodes));
    pg_free_rings(&faces);
    std::sort(inner.begin(), inner.end());
    std::sort(outer.begin(), outer.end());
    for (const double area : inner)
        std::printf("face %.3f\n", area);
    for (const double area : outer)
        std::printf("outside of a group %.3f\n", area);
}
