#include "tests/topology/slow_surface.h"

#include <algorithm>
#include <cmath>

#include "hostapi/ads.h"
#include "polygon/node.h"
#include "polygon/points.h"

namespace slow
{
namespace
{
template <class T>
T* member(std::vector<T>& set, int id)
{
    if (id < 1 || id > static_cast<int>(set.size()) || set[id - 1].gone)
        return nullptr;
    return &set[id - 1];
}

double corner_area(place a, place b, place c)
{
    return pg_tri_area(a.x, a.y, b.x, b.y, c.x, c.y);
}

// The member that is nearest to a key of three values, if it is as good as there.
template <class T, class Key>
int nearest(const std::vector<T>& set, const double* wanted, Key key_of)
{
    int best_id = 0;
    double best = 98765432.1;
    for (size_t i = 0; i < set.size(); ++i) {
        if (set[i].gone)
            continue;
        double key[3];
        key_of(set[i], key);
        double sum = 0;
        for (int k = 0; k < 3; ++k)
            sum += (key[k] - wanted[k]) * (key[k] - wanted[k]);
        if (sum < best) {
            best = sum;
            best_id = static_cast<int>(i) + 1;
        }
    }
    if (best_id == 0)
        return 0;
    double key[3];
    key_of(set[best_id - 1], key);
    for (int k = 0; k < 3; ++k)
        if (std::fabs(key[k] - wanted[k]) > 1e-6)
            return 0;
    return best_id;
}
} // namespace

void ids::drop(int id)
{
    for (size_t i = 0; i < at.size(); ++i) {
        if (at[i] != id)
            continue;
        if (i + 1 < at.size())
            at[i] = 0;
        return;
    }
}

// ---- objects

node* surface::node_at(int id)
{
    return member(nodes, id);
}

edge* surface::edge_at(int id)
{
    return member(edges, id);
}

triangle* surface::triangle_at(int id)
{
    return member(triangles, id);
}

int surface::find_node(place p) const
{
    const double wanted[3] = {p.x, p.y, p.z};
    return nearest(nodes, wanted, [](const node& n, double* key) {
        key[0] = n.p.x;
        key[1] = n.p.y;
        key[2] = n.p.z;
    });
}

int surface::find_edge(int n1, int n2, double bulge) const
{
    edge like;
    like.from = n1;
    like.to = n2;
    like.bulge = bulge;
    const double wanted[3] = {double(like.low()), double(like.high()), like.key_bulge()};
    return nearest(edges, wanted, [](const edge& e, double* key) {
        key[0] = e.low();
        key[1] = e.high();
        key[2] = e.key_bulge();
    });
}

int surface::intern_node(place p)
{
    if (const int id = find_node(p))
        return id;
    node n;
    n.p = p;
    nodes.push_back(n);
    return static_cast<int>(nodes.size());
}

int surface::intern_edge(int n1, int n2, double bulge)
{
    if (const int id = find_edge(n1, n2, bulge))
        return id;
    edge e;
    e.from = n1;
    e.to = n2;
    e.bulge = bulge;
    edges.push_back(e);
    const int id = static_cast<int>(edges.size());
    if (node* n = node_at(n1))
        n->edges.add(id);
    if (node* n = node_at(n2))
        n->edges.add(id);
    return id;
}

void surface::remove_edge(int id)
{
    edge* e = edge_at(id);
    if (!e)
        return;
    if (node* n = node_at(e->from))
        n->edges.drop(id);
    if (node* n = node_at(e->to))
        n->edges.drop(id);
    e->gone = true;
}

void surface::remove_triangle(int id)
{
    triangle* t = triangle_at(id);
    if (!t)
        return;
    for (int signed_id : t->edge) {
        edge* e = edge_at(std::abs(signed_id));
        if (!e)
            continue;
        int& side = signed_id < 0 ? e->left : e->right;
        if (std::abs(side) == id) // it may name a triangle that came later
            side = 0;
    }
    t->gone = true;
}

int surface::new_triangle(int e1, int e2, int e3)
{
    const edge *a = edge_at(e1), *b = edge_at(e2), *c = edge_at(e3);
    if (!a || !b || !c)
        return 0;
    triangle t;
    t.edge[0] = b->ends_at(a->low()) ? -e1 : e1;
    t.edge[1] = c->ends_at(b->low()) ? -e2 : e2;
    t.edge[2] = a->ends_at(c->low()) ? -e3 : e3;
    triangles.push_back(t);
    const int id = static_cast<int>(triangles.size());
    for (int signed_id : t.edge) {
        edge* e = edge_at(std::abs(signed_id));
        if (signed_id < 0)
            e->left = -id;
        else
            e->right = id;
    }
    return id;
}

bool surface::triangle_exists(int e1, int e2, int e3)
{
    const edge *a = edge_at(std::abs(e1)), *b = edge_at(std::abs(e2)), *c = edge_at(std::abs(e3));
    if (!a || !b || !c)
        return false;
    for (int side : {a->left, a->right}) {
        const int t = std::abs(side);
        const bool in_b = t == std::abs(b->left) || t == std::abs(b->right);
        const bool in_c = t == std::abs(c->left) || t == std::abs(c->right);
        if (t != 0 && in_b && in_c)
            return true;
    }
    return false;
}

int surface::triangle_from_points(place p1, place p2, place p3)
{
    const int a = intern_node(p1), b = intern_node(p2), c = intern_node(p3);
    if (a == b || b == c || c == a)
        return 0;
    const int ab = intern_edge(a, b), bc = intern_edge(b, c), ca = intern_edge(c, a);
    if (!triangle_exists(ab, bc, ca))
        return new_triangle(ab, bc, ca);
    const edge *x = edge_at(ab), *y = edge_at(bc), *z = edge_at(ca);
    const auto named = [](const edge* e, int t) { return std::abs(e->left) == t || std::abs(e->right) == t; };
    const int left = std::abs(x->left);
    return left && named(y, left) && named(z, left) ? left : std::abs(x->right);
}

// ---- asking

bool surface::triangle_corners(int id, int* a, int* b, int* c)
{
    *a = *b = *c = 0;
    const triangle* t = triangle_at(id);
    if (!t) {
        acutPrintf("Null shape!!!\n");
        return false;
    }
    const edge *e1 = edge_at(std::abs(t->edge[0])), *e2 = edge_at(std::abs(t->edge[1]));
    if (!e1 || !e2) {
        acutPrintf("Null edges!!!\n");
        return false;
    }
    if (e1->to == e2->from) {
        *a = e1->from, *b = e1->to, *c = e2->to;
        return true;
    }
    if (e1->to == e2->to) {
        *a = e1->from, *b = e1->to, *c = e2->from;
        return true;
    }
    if (e1->from == e2->from) {
        *a = e1->to, *b = e1->from, *c = e2->to;
        return true;
    }
    if (e1->from == e2->to) {
        *a = e1->to, *b = e1->from, *c = e2->from;
        return true;
    }
    return false;
}

bool surface::point_in_triangle(int id, place p)
{
    int a, b, c;
    triangle_corners(id, &a, &b, &c);
    const node *na = node_at(a), *nb = node_at(b), *nc = node_at(c);
    if (!na || !nb || !nc) {
        acutPrintf("Null nodes!!!\n");
        return false;
    }
    const double rest = std::fabs(corner_area(na->p, nb->p, nc->p)) - std::fabs(corner_area(na->p, nb->p, p)) -
                        std::fabs(corner_area(p, nb->p, nc->p)) - std::fabs(corner_area(na->p, p, nc->p));
    return std::fabs(rest) < 1e-6;
}

int surface::find_triangle(place p, cache* recent)
{
    for (int id : *recent)
        if (triangle_at(id) && point_in_triangle(id, p))
            return id;
    for (int id = 1; id <= static_cast<int>(triangles.size()); ++id) {
        if (!triangle_at(id) || !point_in_triangle(id, p))
            continue;
        if (recent->size() == 20)
            recent->erase(recent->begin());
        recent->push_back(id);
        return id;
    }
    return -1;
}

double surface::triangle_elevation(int id, place p)
{
    int a, b, c;
    triangle_corners(id, &a, &b, &c);
    const node *na = node_at(a), *nb = node_at(b), *nc = node_at(c);
    if (!na || !nb || !nc) {
        acutPrintf("Null nodes!!!\n");
        return NO_HEIGHT;
    }
    const place p1 = na->p, p2 = nb->p, p3 = nc->p;
    const double d1x = p2.x - p1.x, d1y = p2.y - p1.y, d1z = p2.z - p1.z;
    const double d2x = p3.x - p1.x, d2y = p3.y - p1.y, d2z = p3.z - p1.z;
    if (d1x * d2y - d2x * d1y == 0)
        return NO_HEIGHT;
    return ((p.y - p1.y) * (d1x * d2z - d2x * d1z) + (p.x - p1.x) * (d2y * d1z - d1y * d2z)) /
               (d1x * d2y - d2x * d1y) +
           p1.z;
}

cut_volume surface::triangle_volume(int id, double level)
{
    cut_volume v;
    const triangle* t = triangle_at(id);
    if (!t)
        return v;
    place p[3];
    for (int k = 0; k < 3; ++k) {
        const edge* e = edge_at(std::abs(t->edge[k]));
        const node* n = e ? node_at(t->edge[k] > 0 ? e->low() : e->high()) : nullptr;
        if (!n)
            return v;
        p[k] = n->p;
    }
    const double A = 0.5 * ((p[1].x - p[0].x) * (p[2].y - p[0].y) - (p[1].y - p[0].y) * (p[2].x - p[0].x));
    double z[3] = {p[0].z, p[1].z, p[2].z};
    std::sort(z, z + 3);
    const double lo = z[0], mid = z[1], hi = z[2];
    const double U = hi > lo ? (hi - mid) * A / (hi - lo) : 0;
    const double L = hi > lo ? (mid - lo) * A / (hi - lo) : 0;
    const double Mu = (2 * mid + hi) * U / 3, Ml = (2 * mid + lo) * L / 3;
    if (!(level < hi)) {
        v.volume_below = (level - (hi + mid + lo) / 3) * A;
        v.area_below = A;
        return v;
    }
    if (!(level > lo)) {
        v.volume_above = ((hi + mid + lo) / 3 - level) * A;
        v.area_above = A;
        return v;
    }
    double moment_above, moment_below;
    if (!(level > mid)) {
        const double part = (level - lo) / (mid - lo);
        v.area_below = part * part * L;
        moment_below = (2 * level + lo) * v.area_below / 3;
        v.area_above = A - v.area_below;
        moment_above = Ml + Mu - moment_below;
    } else {
        const double part = (hi - level) / (hi - mid);
        v.area_above = part * part * U;
        moment_above = (2 * level + hi) * v.area_above / 3;
        v.area_below = A - v.area_above;
        moment_below = Ml + Mu - moment_above;
    }
    v.volume_above = std::max(0.0, moment_above - level * v.area_above);
    v.volume_below = std::max(0.0, level * v.area_below - moment_below);
    return v;
}

// ---- faces

double surface::turn(int before, int at, int after)
{
    const place b = node_at(before)->p, c = node_at(at)->p, a = node_at(after)->p;
    const auto direction = [&](place to) {
        const double dx = to.x - c.x, dy = to.y - c.y;
        if (std::fabs(dx) < 1e-6)
            return dy < 0 ? -1.5707963267948966 : 1.5707963267948966;
        return std::atan2(dy, dx);
    };
    double a1 = direction(b);
    const double a2 = direction(a);
    if (a1 < a2)
        a1 += 6.283185307179586;
    double degrees = 360 - (a1 - a2) * 180 / 3.141592653589793;
    while (degrees >= 360)
        degrees -= 360;
    while (degrees < 0)
        degrees += 360;
    return degrees;
}

std::vector<int> surface::trace_face(int edge_id, bool forward)
{
    const edge* first = edge_at(edge_id);
    if (!first || first->from == first->to)
        return {};
    const int start = forward ? first->low() : first->high();
    int before = start, at = forward ? first->high() : first->low(), walked = edge_id;
    std::vector<int> face;
    for (;;) {
        face.push_back(walked);
        double greatest = 0;
        int chosen = 0;
        for (int id : node_at(at)->edges.at) {
            const edge* e = edge_at(id);
            if (!e || id == walked || e->from == e->to || !node_at(e->other_end(at)))
                continue;
            const double degrees = turn(before, at, e->other_end(at));
            if (degrees > greatest) {
                greatest = degrees;
                chosen = id;
            }
        }
        if (greatest == 0)
            return {};
        const int far = edge_at(chosen)->other_end(at);
        if (far == start) {
            face.push_back(chosen);
            return face;
        }
        if (std::find(face.begin(), face.end(), chosen) != face.end())
            return face;
        before = at;
        at = far;
        walked = chosen;
    }
}

// In the order of the walk, with the end of the last edge: a closed face has its first node twice.
std::vector<place> surface::face_to_chain(const std::vector<int>& face)
{
    std::vector<place> chain;
    if (face.empty())
        return chain;
    const edge* e = edge_at(face[0]);
    int from = e->from, free_end = e->to;
    if (face.size() > 1 && !edge_at(face[1])->ends_at(free_end))
        std::swap(from, free_end);
    chain.push_back(node_at(from)->p);
    for (size_t i = 1; i < face.size(); ++i) {
        chain.push_back(node_at(free_end)->p);
        free_end = edge_at(face[i])->other_end(free_end);
    }
    chain.push_back(node_at(free_end)->p);
    return chain;
}

namespace
{
// A chain of the polygon kernel over the vertices.
std::vector<pg_node> kernel_chain(const std::vector<place>& vertices)
{
    std::vector<pg_node> chain(vertices.size());
    for (size_t i = 0; i < vertices.size(); ++i) {
        chain[i] = pg_node{};
        chain[i].x = vertices[i].x;
        chain[i].y = vertices[i].y;
        chain[i].z = vertices[i].z;
        chain[i].next = i + 1 < vertices.size() ? &chain[i + 1] : nullptr;
    }
    return chain;
}
} // namespace

void surface::close_faces()
{
    for (int id = 1; id <= static_cast<int>(edges.size()); ++id) {
        for (bool forward : {true, false}) {
            const edge* e = edge_at(id);
            if (!e || (forward ? e->right : e->left) != 0)
                continue;
            const std::vector<int> face = trace_face(id, forward);
            if (face.size() == 3) {
                new_triangle(face[0], face[1], face[2]);
            } else if (!face.empty()) {
                const std::vector<place> outline = face_to_chain(face);
                const std::vector<pg_node> chain = kernel_chain(outline);
                if (pg_orientation(chain.data()) == -1)
                    fill_face(outline);
            }
        }
    }
}
} // namespace slow
