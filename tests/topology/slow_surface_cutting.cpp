#include <algorithm>
#include <cmath>
#include <cstdio>
#include <sstream>

#include "hostapi/ads.h"
#include "polygon/intersect.h"
#include "polygon/measures.h"
#include "polygon/node.h"
#include "tests/topology/slow_surface.h"
#include "tin/network.h"

namespace slow
{
namespace
{
struct crossing_places {
    int count = 0;
    place at[2];
};

crossing_places crossings(place a1, place a2, place b1, place b2)
{
    const double a[2][3] = {{a1.x, a1.y, a1.z}, {a2.x, a2.y, a2.z}};
    const double b[2][3] = {{b1.x, b1.y, b1.z}, {b2.x, b2.y, b2.z}};
    double out[2][3] = {};
    crossing_places found;
    found.count = pg_seg_intersect(a[0], a[1], b[0], b[1], out[0], out[1]);
    for (int k = 0; k < found.count; ++k)
        found.at[k] = {out[k][0], out[k][1], out[k][2]};
    return found;
}

double gap_xy(place a, place b)
{
    return (a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y);
}

bool on_frame(const tin_network& net, const tin_point* p)
{
    return std::find(net.frame, net.frame + 4, p) != net.frame + 4;
}

bool one_place(place a, place b)
{
    return std::fabs(a.x - b.x) < 1e-6 && std::fabs(a.y - b.y) < 1e-6;
}
} // namespace

double surface::gap_sq(int n1, int n2)
{
    const node *a = node_at(n1), *b = node_at(n2);
    if (!a || !b)
        return 98765432.1;
    return gap_xy(a->p, b->p) + (a->p.z - b->p.z) * (a->p.z - b->p.z);
}

bool surface::same_box(place a, place b, place c, place d) const
{
    return std::max(a.x, b.x) >= std::min(c.x, d.x) && std::max(c.x, d.x) >= std::min(a.x, b.x) &&
           std::max(a.y, b.y) >= std::min(c.y, d.y) && std::max(c.y, d.y) >= std::min(a.y, b.y);
}

int surface::split_edge(int edge_id, int node_id)
{
    const edge* e = edge_at(edge_id);
    if (!e || e->ends_at(node_id) || !node_at(node_id))
        return 0;
    const int low = e->low(), high = e->high();
    const int left = std::abs(e->left), right = std::abs(e->right);
    remove_triangle(left);
    remove_triangle(right);
    remove_edge(edge_id);
    const int first = intern_edge(low, node_id);
    intern_edge(node_id, high);
    return first;
}

// Of an edge that was split at a node the half towards the high end; of one that wasn't, itself.
int surface::second_half(int edge_id, int node_id, int first)
{
    if (first == 0)
        return edge_id;
    return find_edge(node_id, edges[edge_id - 1].high(), 0);
}

void surface::split_at_two(int edge_id, int n1, int n2)
{
    const int low = edges[edge_id - 1].low();
    if (gap_sq(low, n2) < gap_sq(low, n1))
        std::swap(n1, n2);
    const int first = split_edge(edge_id, n1);
    split_edge(second_half(edge_id, n1, first), n2);
}

void surface::cut_crossings()
{
    for (int i = 1; i <= static_cast<int>(edges.size()); ++i) {
        // Pieces made in this round don't meet edge i, with which they may be nearly in line: that can go on
        // for ever.
        for (int j = i + 1, last = static_cast<int>(edges.size()); j <= last; ++j) {
            if (!edge_at(i))
                break;
            if (!edge_at(j))
                continue;
            const node *a1 = node_at(edge_at(i)->low()), *a2 = node_at(edge_at(i)->high());
            const node *b1 = node_at(edge_at(j)->low()), *b2 = node_at(edge_at(j)->high());
            if (!a1 || !a2 || !b1 || !b2 || !same_box(a1->p, a2->p, b1->p, b2->p))
                continue;
            const crossing_places found = crossings(a1->p, a2->p, b1->p, b2->p);
            if (found.count == 0)
                continue;
            const int n1 = intern_node(found.at[0]);
            bool split = false;
            if (found.count == 1) {
                split = split_edge(i, n1) != 0;
                split_edge(j, n1);
            } else {
                const int n2 = intern_node(found.at[1]);
                const int half = split_edge(i, n2);
                const int quarter = split_edge(half ? half : i, n1);
                split = half || quarter;
                split_at_two(j, n1, n2);
            }
            if (split)
                break;
        }
    }
}

void surface::merge_chain(std::vector<vertex>* chain)
{
    for (node& n : nodes)
        n.mark = 0;
    for (edge& e : edges)
        e.mark = 0;

    std::vector<pg_node> outline(chain->size());
    for (size_t i = 0; i < chain->size(); ++i) {
        const place p = (*chain)[i].p;
        outline[i] = pg_node{};
        outline[i].x = p.x, outline[i].y = p.y, outline[i].z = p.z;
        outline[i].next = i + 1 < chain->size() ? &outline[i + 1] : nullptr;
    }
    if (chain->empty())
        return;
    for (node& n : nodes) {
        if (n.gone)
            continue;
        const double at[3] = {n.p.x, n.p.y, n.p.z};
        double foot[3];
        const double d = pg_closest(at, outline.data(), nullptr, foot);
        for (int id : n.edges.at)
            if (edge* e = edge_at(id))
                if (gap_sq(e->from, e->to) < d)
                    e->mark = 1;
    }

    // The edge comes first: a crossing has its height.
    for (size_t s = 0; s + 1 < chain->size(); ++s) {
        const place p = (*chain)[s].p, q = (*chain)[s + 1].p;
        std::vector<place> met;
        for (int id = 1, last = static_cast<int>(edges.size()); id <= last; ++id) {
            if (!edge_at(id) || edge_at(id)->mark)
                continue;
            const node *b1 = node_at(edge_at(id)->low()), *b2 = node_at(edge_at(id)->high());
            if (!b1 || !b2 || !same_box(p, q, b1->p, b2->p))
                continue;
            const crossing_places found = crossings(b1->p, b2->p, p, q);
            if (found.count == 0)
                continue;
            const int n1 = intern_node(found.at[0]);
            const int n2 = found.count == 2 ? intern_node(found.at[1]) : 0;
            const int half = n2 ? split_edge(id, n2) : 0;
            split_edge(half ? half : id, n1);
            for (int k = 0; k < found.count; ++k) {
                bool there = one_place(found.at[k], p) || one_place(found.at[k], q);
                for (const place& m : met)
                    there = there || one_place(found.at[k], m);
                if (!there)
                    met.push_back(found.at[k]);
            }
        }
        std::stable_sort(met.begin(), met.end(),
                         [&](const place& a, const place& b) { return gap_xy(p, a) < gap_xy(p, b); });
        for (const place& m : met)
            chain->insert(chain->begin() + long(++s), vertex{m, true});
    }
    for (size_t s = 0; s + 1 < chain->size(); ++s)
        if ((*chain)[s].crossing && (*chain)[s + 1].crossing)
            intern_edge(intern_node((*chain)[s].p), intern_node((*chain)[s + 1].p));
}

void surface::load_edges(const std::string& text, bool make_triangles)
{
    std::istringstream file(text);
    std::string line;
    std::getline(file, line);
    acutPrintf("\nLoading edges...\n");
    std::string first, second;
    while (std::getline(file, first) && std::getline(file, second)) {
        place p, q;
        if (std::sscanf(first.c_str(), "%*c%lf%lf%lf", &p.x, &p.y, &p.z) != 3 ||
            std::sscanf(second.c_str(), "%*c%lf%lf%lf", &q.x, &q.y, &q.z) != 3)
            continue;
        const int n1 = intern_node(p), n2 = intern_node(q);
        intern_edge(n1, n2);
    }
    acutPrintf("Loaded %ld points and %ld edges\n", long(nodes.size()), long(edges.size()));
    if (make_triangles) {
        close_faces();
        acutPrintf("Created %ld tris\n", long(triangles.size()));
    }
}

surface surface::copy_edges()
{
    surface copy;
    for (const edge& e : edges) {
        const node *a = node_at(e.from), *b = node_at(e.to);
        if (e.gone || !a || !b)
            continue;
        const int n1 = copy.intern_node(a->p), n2 = copy.intern_node(b->p);
        copy.node_at(n1)->mark = a->mark;
        copy.node_at(n2)->mark = b->mark;
        copy.intern_edge(n1, n2, e.bulge);
    }
    return copy;
}

surface surface::drape(const std::vector<std::vector<place>>& polylines, cache* recent)
{
    surface laid = copy_edges();
    const size_t before = laid.nodes.size();
    for (const std::vector<place>& line : polylines) {
        for (size_t s = 0; s + 1 < line.size(); ++s) {
            int n[2];
            for (int k = 0; k < 2; ++k) {
                place p = line[s + size_t(k)];
                const int t = find_triangle(p, recent);
                if (t > 0 && triangle_elevation(t, p) != NO_HEIGHT)
                    p.z = triangle_elevation(t, p);
                n[k] = laid.intern_node(p);
            }
            laid.intern_edge(n[0], n[1]);
        }
    }
    laid.cut_crossings();
    laid.close_faces();
    for (size_t i = before; i < laid.nodes.size(); ++i) {
        place& p = laid.nodes[i].p;
        const int t = find_triangle(p, recent);
        if (t > 0 && triangle_elevation(t, p) != NO_HEIGHT)
            p.z = triangle_elevation(t, p);
    }
    return laid;
}

void surface::fill_face(const std::vector<place>& vertices)
{
    std::vector<pg_node> outline(vertices.size());
    for (size_t i = 0; i < vertices.size(); ++i) {
        outline[i] = pg_node{};
        outline[i].x = vertices[i].x, outline[i].y = vertices[i].y, outline[i].z = vertices[i].z;
        outline[i].next = i + 1 < vertices.size() ? &outline[i + 1] : nullptr;
    }
    tin_network net;
    tin_point* list = nullptr;
    const auto offer = [&](tin_point* p) {
        tin_point* earlier = tin_add_point(&net, p);
        if (earlier) {
            acad_free(p);
            return earlier;
        }
        p->next = list;
        list = p;
        if (p->x < net.x_min)
            net.x_min = p->x;
        if (p->x > net.x_max)
            net.x_max = p->x;
        if (p->y < net.y_min)
            net.y_min = p->y;
        if (p->y > net.y_max)
            net.y_max = p->y;
        return p;
    };
    tin_point* before = nullptr;
    for (size_t i = 0; i < vertices.size(); ++i) {
        tin_point* p = tin_point_new(vertices[i].x, vertices[i].y, vertices[i].z);
        if (i == 0) {
            before = p;
            continue;
        }
        if (i == 1)
            before = offer(before);
        p = offer(p);
        if (p != before) {
            tin_barrier* barrier = static_cast<tin_barrier*>(acad_malloc(sizeof(tin_barrier)));
            *barrier = {before, p, net.barriers};
            net.barriers = barrier;
            tin_link_barrier(&net, barrier);
        }
        before = p;
    }
    if (vertices.size() == 1)
        acad_free(before);
    net.points = list;
    tin_triangulate(&net);

    for (const tin_triangle* t = net.triangles; t; t = t->next) {
        if (!t->corner[0] || !t->corner[1] || !t->corner[2])
            continue;
        int n[3];
        for (int k = 0; k < 3; ++k)
            n[k] = on_frame(net, t->corner[k])
                       ? 0 // its coordinates are the run's own, and may be those of some node
                       : find_node({t->corner[k]->x, t->corner[k]->y, t->corner[k]->z});
        for (int k = 0; k < 3; ++k) {
            const int n1 = n[k], n2 = n[(k + 1) % 3];
            if (!n1 || !n2 || n1 == n2 || find_edge(n1, n2, 0))
                continue;
            const place a = node_at(n1)->p, b = node_at(n2)->p;
            const double middle[3] = {(a.x + b.x) / 2, (a.y + b.y) / 2, (a.z + b.z) / 2};
            if (pg_point_inside(middle, outline.data()))
                intern_edge(n1, n2);
        }
    }
}
} // namespace slow
