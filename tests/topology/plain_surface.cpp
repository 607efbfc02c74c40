#include "tests/topology/plain_surface.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>

#include "hostapi/ads.h"
#include "polygon/intersect.h"
#include "polygon/measures.h"
#include "polygon/points.h"
#include "tin/network.h"
#include "topology/surface_net.h"
#include "topology/turn_angle.h"

namespace plain
{

namespace
{

struct bounds {
    double x0, y0, x1, y1;
};

bounds bounds_of(const double* a, const double* b)
{
    return {std::min(a[0], b[0]), std::min(a[1], b[1]), std::max(a[0], b[0]), std::max(a[1], b[1])};
}

bool overlap(const bounds& a, const bounds& b)
{
    return a.x0 <= b.x1 && b.x0 <= a.x1 && a.y0 <= b.y1 && b.y0 <= a.y1;
}

double apart_sq(const double* a, const double* b)
{
    double sum = 0;
    for (int i = 0; i < 3; ++i)
        sum += (a[i] - b[i]) * (a[i] - b[i]);
    return sum;
}

double area(const double* a, const double* b, const double* c)
{
    return std::fabs(pg_tri_area(a[0], a[1], b[0], b[1], c[0], c[1]));
}

} // namespace

int surface::known_node(const double* at) const
{
    int nearest = 0;
    for (std::size_t i = 0; i < nodes.size(); ++i)
        if (nearest == 0 || apart_sq(nodes[i].at, at) < apart_sq(nodes[nearest - 1].at, at))
            nearest = static_cast<int>(i) + 1;
    for (int i = 0; i < 3 && nearest != 0; ++i)
        if (!(std::fabs(nodes[nearest - 1].at[i] - at[i]) <= 1e-6))
            nearest = 0;
    return nearest;
}

int surface::intern_node(const double* at)
{
    if (const int id = known_node(at))
        return id;
    nodes.push_back({{at[0], at[1], at[2]}, {}});
    return static_cast<int>(nodes.size());
}

int surface::known_edge(int node1, int node2) const
{
    for (std::size_t i = 0; i < edges.size(); ++i)
        if (!edges[i].is_gone && edges[i].low() == std::min(node1, node2) &&
            edges[i].high() == std::max(node1, node2))
            return static_cast<int>(i) + 1;
    return 0;
}

int surface::intern_edge(int node1, int node2)
{
    if (const int id = known_edge(node1, node2))
        return id;
    edges.push_back({node1, node2, 0, 0, false, false});
    const int id = static_cast<int>(edges.size());
    nodes[node1 - 1].edges.push_back(id);
    nodes[node2 - 1].edges.push_back(id);
    return id;
}

void surface::remove_triangle(int id)
{
    if (id == 0 || triangles[id - 1].is_gone)
        return;
    triangles[id - 1].is_gone = true;
    for (const int side : triangles[id - 1].edge) {
        edge& of = edges[std::abs(side) - 1];
        int& name = side < 0 ? of.left : of.right;
        if (std::abs(name) == id)
            name = 0;
    }
}

int surface::split_edge(int id, int at)
{
    if (id == 0 || edges[id - 1].is_gone || edges[id - 1].node1 == at || edges[id - 1].node2 == at)
        return 0;
    const edge old = edges[id - 1];
    remove_triangle(std::abs(old.left));
    remove_triangle(std::abs(old.right));
    edges[id - 1].is_gone = true;
    const int first = intern_edge(old.low(), at);
    intern_edge(at, old.high());
    return first;
}

// The second place first: what is left in front of it has the first one on it.
bool surface::split_at(int id, int first, int second)
{
    const int half = second ? split_edge(id, second) : 0;
    const int rest = split_edge(half ? half : id, first);
    return half || rest;
}

bool surface::cut_pair(int i, int j)
{
    const edge a = edges[i - 1], b = edges[j - 1];
    if (a.is_gone || b.is_gone)
        return false;
    const double *a1 = nodes[a.low() - 1].at, *a2 = nodes[a.high() - 1].at;
    const double *b1 = nodes[b.low() - 1].at, *b2 = nodes[b.high() - 1].at;
    if (!overlap(bounds_of(a1, a2), bounds_of(b1, b2)))
        return false;
    double points[2][3];
    const int count = pg_seg_intersect(a1, a2, b1, b2, points[0], points[1]);
    if (count == 0)
        return false;
    int near = intern_node(points[0]);
    int far = count == 2 ? intern_node(points[1]) : 0;
    const bool is_cut = split_at(i, near, far);
    if (far && apart_sq(nodes[b.low() - 1].at, nodes[far - 1].at) <
                   apart_sq(nodes[b.low() - 1].at, nodes[near - 1].at))
        std::swap(near, far);
    const int half = split_edge(j, near);
    if (far)
        split_edge(half ? known_edge(near, b.high()) : j, far);
    return is_cut;
}

void surface::cut_crossings()
{
    for (std::size_t i = 1; i <= edges.size(); ++i)
        for (std::size_t j = i + 1, last = edges.size(); j <= last; ++j)
            if (cut_pair(static_cast<int>(i), static_cast<int>(j)))
                break;
}

void surface::merge_chain(pg_node* chain)
{
    for (edge& e : edges)
        e.is_marked = false;
    for (const node& n : nodes)
        for (const int id : n.edges) {
            edge& e = edges[id - 1];
            double nearest[3];
            if (!e.is_gone && apart_sq(nodes[e.node1 - 1].at, nodes[e.node2 - 1].at) <
                                  pg_closest(n.at, chain, nullptr, nearest))
                e.is_marked = true;
        }
    std::map<pg_node*, bool> from_crossing;
    for (pg_node* start = chain; start->next;) {
        pg_node* const end = start->next;
        const double p[3] = {start->x, start->y, start->z}, q[3] = {end->x, end->y, end->z};
        for (std::size_t id = 1, last = edges.size(); id <= last; ++id) {
            const edge e = edges[id - 1];
            if (e.is_gone || e.is_marked)
                continue;
            const double *a = nodes[e.low() - 1].at, *b = nodes[e.high() - 1].at;
            if (!overlap(bounds_of(a, b), bounds_of(p, q)))
                continue;
            double points[2][3];
            const int count = pg_seg_intersect(a, b, p, q, points[0], points[1]);
            if (count == 0)
                continue;
            const int first = intern_node(points[0]);
            split_at(static_cast<int>(id), first, count == 2 ? intern_node(points[1]) : 0);
            for (int i = 0; i < count; ++i) {
                // Behind the last vertex that is nearer to the segment's start, unless there is one already.
                bool is_there = false;
                pg_node* before = start;
                for (pg_node* v = start;; v = v->next) {
                    is_there = is_there || (std::fabs(v->x - points[i][0]) <= 1e-6 &&
                                            std::fabs(v->y - points[i][1]) <= 1e-6);
                    const double at[2] = {v->x, v->y};
                    if (v != end && pg_dist(p, at) <= pg_dist(p, points[i]))
                        before = v;
                    if (v == end)
                        break;
                }
                if (is_there)
                    continue;
                before->next = pg_node_push(points[i], before->next, 0.0);
                from_crossing[before->next] = true;
            }
        }
        start = end;
    }
    for (pg_node* v = chain; v->next; v = v->next)
        if (from_crossing.count(v) && from_crossing.count(v->next)) {
            const double p[3] = {v->x, v->y, v->z}, q[3] = {v->next->x, v->next->y, v->next->z};
            const int from = intern_node(p);
            intern_edge(from, intern_node(q));
        }
}

void surface::new_triangle(int e1, int e2, int e3)
{
    int ids[3] = {e1, e2, e3};
    const int first = e1;
    for (int i = 0; i < 3; ++i) {
        const edge& next = edges[(i == 2 ? first : ids[i + 1]) - 1];
        const int low = edges[ids[i] - 1].low();
        if (low == next.node1 || low == next.node2)
            ids[i] = -ids[i];
    }
    triangles.push_back({{ids[0], ids[1], ids[2]}, false});
    const int id = static_cast<int>(triangles.size());
    for (const int side : ids)
        (side < 0 ? edges[-side - 1].left : edges[side - 1].right) = side < 0 ? -id : id;
}

std::vector<int> surface::trace_face(int id, bool forward, bool* found) const
{
    const edge& first = edges[id - 1];
    const int start = forward ? first.low() : first.high();
    std::vector<int> face = {id};
    int before = start, at = first.far_end(start);
    *found = true;
    for (;;) {
        int best = 0;
        double greatest = 0;
        for (const int other : nodes[at - 1].edges) {
            if (edges[other - 1].is_gone || other == face.back())
                continue;
            const NodeObj b(nodes[before - 1].at[0], nodes[before - 1].at[1], 0);
            const NodeObj h(nodes[at - 1].at[0], nodes[at - 1].at[1], 0);
            const node& next = nodes[edges[other - 1].far_end(at) - 1];
            const double turn = turn_angle(b, h, NodeObj(next.at[0], next.at[1], 0));
            if (turn > greatest) {
                greatest = turn;
                best = other;
            }
        }
        if (best == 0) {
            *found = false;
            return {};
        }
        const int next = edges[best - 1].far_end(at);
        if (next == start) {
            face.push_back(best);
            return face;
        }
        if (std::find(face.begin(), face.end(), best) != face.end())
            return face;
        face.push_back(best);
        before = at;
        at = next;
    }
}

void surface::fill_face(const pg_node* chain)
{
    tin_network network;
    tin_point* list = nullptr;
    tin_point* kept = tin_point_new(chain->x, chain->y, chain->z);
    std::map<tin_point*, std::vector<double>> origin = {{kept, {chain->x, chain->y, chain->z}}};
    const auto offer = [&](tin_point* p) {
        if (tin_point* earlier = tin_add_point(&network, p)) {
            origin.erase(p); // its place in memory may become a corner of the frame
            acad_free(p);
            return earlier;
        }
        tin_keep_point(&network, p, &list);
        return p;
    };
    tin_point* before = offer(kept);
    for (const pg_node* v = chain->next; v; v = v->next) {
        tin_point* made = tin_point_new(v->x, v->y, v->z);
        origin[made] = {v->x, v->y, v->z};
        tin_point* here = offer(made);
        if (here != before)
            tin_add_barrier(&network, before, here);
        before = here;
    }
    network.points = list;
    tin_triangulate(&network);
    for (const tin_triangle* t = network.triangles; t; t = t->next) {
        int ids[3];
        for (int i = 0; i < 3; ++i) {
            const auto found = origin.find(t->corner[i]);
            const double place[3] = {t->corner[i]->x, t->corner[i]->y, t->corner[i]->z};
            const bool is_frame = std::count(network.frame, network.frame + 4, t->corner[i]) > 0;
            ids[i] = is_frame ? 0 : known_node(found == origin.end() ? place : found->second.data());
        }
        for (int i = 0; i < 3; ++i) {
            const int a = ids[i], b = ids[(i + 1) % 3];
            if (a == 0 || b == 0 || a == b || known_edge(a, b))
                continue;
            const double middle[3] = {(nodes[a - 1].at[0] + nodes[b - 1].at[0]) / 2,
                                      (nodes[a - 1].at[1] + nodes[b - 1].at[1]) / 2,
                                      (nodes[a - 1].at[2] + nodes[b - 1].at[2]) / 2};
            if (pg_point_inside(middle, chain))
                intern_edge(a, b);
        }
    }
}

void surface::close_face(int id, bool forward)
{
    bool found;
    const std::vector<int> face = trace_face(id, forward, &found);
    if (!found)
        return;
    if (face.size() == 3) {
        new_triangle(face[0], face[1], face[2]);
        return;
    }
    // In walking order, each edge by the node that it leaves, and the first node once more.
    const edge& first = edges[face[0] - 1];
    int at = forward ? first.low() : first.high();
    std::vector<pg_node> chain;
    const auto put = [&] {
        const double* p = nodes[at - 1].at;
        chain.push_back({p[0], p[1], p[2], 0, 0.0, 0.0, 1, nullptr, nullptr});
    };
    for (const int e : face) {
        put();
        at = edges[e - 1].far_end(at);
    }
    put();
    for (std::size_t i = 1; i < chain.size(); ++i)
        chain[i - 1].next = &chain[i];
    if (pg_orientation(&chain[0]) == -1)
        fill_face(&chain[0]);
}

void surface::close_faces()
{
    for (std::size_t i = 0; i < edges.size(); ++i) {
        if (!edges[i].is_gone && edges[i].right == 0)
            close_face(static_cast<int>(i) + 1, true);
        if (!edges[i].is_gone && edges[i].left == 0)
            close_face(static_cast<int>(i) + 1, false);
    }
}

int surface::find_triangle(const double* p) const
{
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        if (triangles[i].is_gone)
            continue;
        const edge &e1 = edges[std::abs(triangles[i].edge[0]) - 1],
                   &e2 = edges[std::abs(triangles[i].edge[1]) - 1];
        const bool at_end = e1.node2 == e2.node1 || e1.node2 == e2.node2;
        const int shared = at_end ? e1.node2 : e1.node1;
        const double* a = nodes[e1.far_end(shared) - 1].at;
        const double* b = nodes[shared - 1].at;
        const double* c = nodes[e2.far_end(shared) - 1].at;
        if (std::fabs(area(a, b, c) - area(a, b, p) - area(p, b, c) - area(a, p, c)) < 1e-6)
            return static_cast<int>(i) + 1;
    }
    return -1;
}

namespace
{

std::string node_line(const double* at)
{
    char line[200];
    std::snprintf(line, sizeof line, "node %a %a %a\n", at[0], at[1], at[2]);
    return line;
}

std::string edge_line(int node1, int node2, int left, int right)
{
    char line[200];
    std::snprintf(line, sizeof line, "edge %d %d, left %d right %d\n", node1, node2, left, right);
    return line;
}

std::string triangle_line(const int* e)
{
    char line[200];
    std::snprintf(line, sizeof line, "triangle %d %d %d\n", e[0], e[1], e[2]);
    return line;
}

} // namespace

std::string text_of(const surface& s)
{
    std::string text;
    for (const node& n : s.nodes)
        text += node_line(n.at);
    for (const edge& e : s.edges)
        text += e.is_gone ? "gone\n" : edge_line(e.node1, e.node2, e.left, e.right);
    for (const triangle& t : s.triangles)
        text += t.is_gone ? "gone\n" : triangle_line(t.edge);
    return text;
}

std::string text_of(const SurfaceNet& s)
{
    std::string text;
    for (int id = 1; id <= s.nodes.count; ++id) {
        const NodeObj* n = s.node(id);
        const double at[3] = {n->x, n->y, n->z};
        text += node_line(at);
    }
    for (int id = 1; id <= s.edges.count; ++id) {
        const EdgeObj* e = s.edge(id);
        text += e ? edge_line(e->node1, e->node2, e->left, e->right) : "gone\n";
    }
    for (int id = 1; id <= s.triangles.count; ++id) {
        const TriangleObj* t = s.triangle(id);
        text += t ? triangle_line(t->edge) : "gone\n";
    }
    return text;
}

} // namespace plain
