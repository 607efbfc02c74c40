// Surfaces beside slow ones: after each step the same objects under the same ids, to the last bit, the same
// answers, the same words, the same cache.
#include <cstdio>
#include <cstdlib>
#include <random>

#include "common/user_break.h"
#include "tests/topology/collection.h"
#include "tests/topology/slow_surface.h"
#include "tests/topology/surface_host.h"
#include "topology/surface_net.h"

namespace
{
std::string node_line(int id, const double* at, int mark, const std::vector<int>& edges)
{
    char line[200];
    std::snprintf(line, sizeof line, "node %d: %a %a %a mark %d edges", id, at[0], at[1], at[2], mark);
    std::string text = line;
    for (int e : edges)
        text += " " + std::to_string(e);
    return text + "\n";
}

std::string edge_line(int id, int from, int to, double bulge, int left, int right, int mark)
{
    char line[200];
    std::snprintf(line, sizeof line, "edge %d: %d to %d bulge %a left %d right %d mark %d\n", id, from, to,
                  bulge, left, right, mark);
    return line;
}

std::string triangle_line(int id, int a, int b, int c)
{
    char line[200];
    std::snprintf(line, sizeof line, "triangle %d: %d %d %d\n", id, a, b, c);
    return line;
}

std::string text_of(const SurfaceNet& s)
{
    std::string text;
    for (int id = 1; id <= s.nodes.count; ++id) {
        const NodeObj* n = s.node(id);
        if (!n)
            continue;
        const double at[3] = {n->x, n->y, n->z};
        std::vector<int> edges;
        for (int i = 1; i <= n->edges.count; ++i)
            edges.push_back(n->edges.get(i));
        text += node_line(id, at, n->mark, edges);
    }
    for (int id = 1; id <= s.edges.count; ++id)
        if (const EdgeObj* e = s.edge(id))
            text += edge_line(id, e->node1, e->node2, e->bulge, e->left, e->right, e->mark);
    for (int id = 1; id <= s.triangles.count; ++id)
        if (const TriangleObj* t = s.triangle(id))
            text += triangle_line(id, t->edge[0], t->edge[1], t->edge[2]);
    return text + std::to_string(s.nodes.count) + " " + std::to_string(s.edges.count) + " " +
           std::to_string(s.triangles.count);
}

std::string text_of(const slow::surface& s)
{
    std::string text;
    for (size_t i = 0; i < s.nodes.size(); ++i) {
        const slow::node& n = s.nodes[i];
        const double at[3] = {n.p.x, n.p.y, n.p.z};
        if (!n.gone)
            text += node_line(int(i) + 1, at, n.mark, n.edges.at);
    }
    for (size_t i = 0; i < s.edges.size(); ++i) {
        const slow::edge& e = s.edges[i];
        if (!e.gone)
            text += edge_line(int(i) + 1, e.from, e.to, e.bulge, e.left, e.right, e.mark);
    }
    for (size_t i = 0; i < s.triangles.size(); ++i) {
        const slow::triangle& t = s.triangles[i];
        if (!t.gone)
            text += triangle_line(int(i) + 1, t.edge[0], t.edge[1], t.edge[2]);
    }
    return text + std::to_string(s.nodes.size()) + " " + std::to_string(s.edges.size()) + " " +
           std::to_string(s.triangles.size());
}

// What the places of a surface are made of.
struct ground {
    int grid;      // above 0: x and y are whole numbers below it
    bool rough;    // heights by chance, else a plane
    double origin; // of x and y
};

class SlowSurface : public Collection
{
protected:
    void SetUp() override
    {
        Collection::SetUp();
        triangle_cache = {};
        user_break_clear();
    }
};

class both
{
public:
    SurfaceNet net;
    slow::surface plain;
    slow::cache recent;
    std::mt19937 random;
    ground on;

    both(unsigned seed, const ground& g) : random(seed), on(g) { triangle_cache = {}; }

    double chance(double low, double high) { return std::uniform_real_distribution<>(low, high)(random); }
    int chance(int low, int high) { return std::uniform_int_distribution<>(low, high)(random); }

    slow::place place()
    {
        slow::place p;
        p.x = on.grid ? chance(0, on.grid - 1) : chance(0.0, 100.0);
        p.y = on.grid ? chance(0, on.grid - 1) : chance(0.0, 100.0);
        if (chance(0, 30) == 0)
            p.x += chance(-3e-6, 3e-6); // beside another one
        p.z = on.rough ? chance(0, 4) : 0.125 * p.x - 0.25 * p.y + 10;
        p.x += on.origin;
        p.y += on.origin;
        return p;
    }
    void line(const slow::place& p, const slow::place& q)
    {
        const double a[3] = {p.x, p.y, p.z}, b[3] = {q.x, q.y, q.z};
        const int n1 = net.intern_node(a), n2 = net.intern_node(b);
        net.intern_edge(n1, n2, 0);
        const int m1 = plain.intern_node(p), m2 = plain.intern_node(q);
        plain.intern_edge(m1, m2);
    }
    // The words of each must be the same.
    template <class Library, class Plain>
    void ask(const char* what, Library library, Plain slowly)
    {
        printed_text();
        library();
        const std::string said = printed_text();
        slowly();
        ASSERT_EQ(said, printed_text()) << what;
        ASSERT_EQ(std::vector<int>(triangle_cache.ids, triangle_cache.ids + triangle_cache.count), recent)
            << what;
    }
    template <class Library, class Plain>
    void step(const char* what, Library library, Plain slowly)
    {
        ask(what, library, slowly);
        ASSERT_EQ(text_of(net), text_of(plain)) << what;
    }
    void cut_and_close()
    {
        step(
            "cut", [&] { net.cut_crossings(); }, [&] { plain.cut_crossings(); });
        step(
            "close", [&] { net.close_faces(); }, [&] { plain.close_faces(); });
    }
    void look_everywhere();
    void ask_all_triangles();
    void change_something();
    void merge();
    void drape();

    std::vector<slow::place> some_places(int most)
    {
        std::vector<slow::place> places(size_t(chance(1, most)));
        for (slow::place& p : places)
            p = place();
        return places;
    }
};

pg_node* chain_of(const std::vector<slow::place>& places)
{
    pg_node* chain = nullptr;
    for (size_t i = places.size(); i-- > 0;) {
        const double at[3] = {places[i].x, places[i].y, places[i].z};
        chain = pg_node_push(at, chain, 0.0);
    }
    return chain;
}

void both::look_everywhere()
{
    for (int i = 0; i < 60; ++i) {
        slow::place p = place();
        if (i % 4 == 0)
            p.x += 0.25, p.y += 0.125;
        if (i % 20 == 19)
            p.x *= 1000;
        const double at[3] = {p.x, p.y, p.z};
        int found = 0;
        step(
            "find", [&] { found = net.find_triangle(at); },
            [&] { ASSERT_EQ(found, plain.find_triangle(p, &recent)); });
        if (testing::Test::HasFatalFailure())
            return;
    }
}

void both::ask_all_triangles()
{
    for (int id = -1; id <= net.triangles.count + 1; ++id) {
        int a = 0, b = 0, c = 0;
        int found = 0;
        step(
            "corners", [&] { found = net.triangle_corners(id, &a, &b, &c); },
            [&] {
                int d = 0, e = 0, f = 0;
                ASSERT_EQ(found, plain.triangle_corners(id, &d, &e, &f));
                ASSERT_EQ(std::vector<int>({a, b, c}), std::vector<int>({d, e, f}));
            });
        const slow::place p = place();
        const double at[3] = {p.x, p.y, p.z};
        double z = 0;
        step(
            "height", [&] { z = net.triangle_elevation(id, at); },
            [&] { ASSERT_EQ(z, plain.triangle_elevation(id, p)); });
        step(
            "inside", [&] { found = net.point_in_triangle(id, at); },
            [&] { ASSERT_EQ(found, plain.point_in_triangle(id, p)); });
        double v[4];
        const double level = chance(0, 1) ? chance(0, 4) : chance(-20.0, 30.0);
        step(
            "volume", [&] { net.triangle_volume(id, level, &v[0], &v[1], &v[2], &v[3]); },
            [&] {
                const slow::cut_volume w = plain.triangle_volume(id, level);
                ASSERT_EQ(v[0], w.volume_above);
                ASSERT_EQ(v[1], w.area_above);
                ASSERT_EQ(v[2], w.volume_below);
                ASSERT_EQ(v[3], w.area_below);
            });
        if (testing::Test::HasFatalFailure())
            return;
    }
}

void both::change_something()
{
    const int edge = chance(0, net.edges.count + 1), node = chance(0, net.nodes.count + 1),
              triangle = chance(0, net.triangles.count + 1);
    int id = 0;
    switch (chance(0, 4)) {
    case 0:
        step(
            "split", [&] { id = net.split_edge(edge, node); },
            [&] { ASSERT_EQ(id, plain.split_edge(edge, node)); });
        break;
    case 1:
        step(
            "remove triangle", [&] { net.remove_triangle(triangle); },
            [&] { plain.remove_triangle(triangle); });
        break;
    case 2:
        step(
            "remove edge", [&] { net.remove_edge(edge); }, [&] { plain.remove_edge(edge); });
        break;
    case 3: {
        const slow::place p[3] = {place(), place(), place()};
        double at[3][3];
        for (int i = 0; i < 3; ++i)
            at[i][0] = p[i].x, at[i][1] = p[i].y, at[i][2] = p[i].z;
        step(
            "triangle", [&] { id = net.triangle_from_points(at[0], at[1], at[2]); },
            [&] { ASSERT_EQ(id, plain.triangle_from_points(p[0], p[1], p[2])); });
        break;
    }
    default: {
        const int e[3] = {edge, chance(0, net.edges.count + 1), chance(0, net.edges.count + 1)};
        step(
            "exists", [&] { id = net.triangle_exists(e[0], e[1], e[2]); },
            [&] { ASSERT_EQ(id, plain.triangle_exists(e[0], e[1], e[2])); });
    }
    }
}

void both::merge()
{
    const std::vector<slow::place> places = some_places(7);
    pg_node* chain = chain_of(places);
    std::vector<slow::vertex> vertices;
    for (const slow::place& p : places)
        vertices.push_back({p, false});
    step(
        "merge", [&] { net.merge_chain(chain); }, [&] { plain.merge_chain(&vertices); });
    size_t i = 0;
    for (const pg_node* v = chain; v; v = v->next, ++i) {
        ASSERT_LT(i, vertices.size());
        ASSERT_EQ(v->x, vertices[i].p.x);
        ASSERT_EQ(v->y, vertices[i].p.y);
        ASSERT_EQ(v->z, vertices[i].p.z);
    }
    ASSERT_EQ(i, vertices.size());
    pl_free_nodes(chain);
}

void both::drape()
{
    std::vector<std::vector<slow::place>> lines;
    pg_ring *rings = nullptr, **end = &rings;
    for (int n = chance(0, 3); n > 0; --n) {
        lines.push_back(some_places(5));
        *end = pg_ring_new();
        (*end)->nodes = chain_of(lines.back());
        end = &(*end)->next;
    }
    printed_text();
    SurfaceNet* laid = net.drape(rings);
    const std::string said = printed_text();
    const slow::surface other = plain.drape(lines, &recent);
    ASSERT_EQ(said, printed_text());
    ASSERT_EQ(text_of(*laid), text_of(other));
    ASSERT_EQ(text_of(net), text_of(plain));
    ASSERT_EQ(std::vector<int>(triangle_cache.ids, triangle_cache.ids + triangle_cache.count), recent);
    for (const pg_ring* r = rings; r; r = r->next) {
        const auto& line = lines[0];
        if (r == rings) {
            ASSERT_EQ(r->nodes->z, line[0].z); // the polylines stay as they are
        }
    }
    delete laid;
    pg_free_rings(&rings);
}

// More of them: SURFACE_ROUNDS=1500.
int rounds()
{
    const char* wanted = std::getenv("SURFACE_ROUNDS");
    return wanted ? std::atoi(wanted) : 250;
}

ground ground_of(unsigned seed)
{
    static const int grids[] = {0, 3, 4, 6, 9};
    return {grids[seed % 5], seed % 2 == 1, seed % 7 == 3 ? 640000.0 : 0.0};
}

void add_lines(both* b, int count)
{
    for (int i = 0; i < count; ++i)
        b->line(b->place(), b->place());
}

TEST_F(SlowSurface, CutsFacesAndAnswersAreTheSame)
{
    for (int seed = 0; seed < rounds() / 2; ++seed) {
        SCOPED_TRACE(seed);
        both b(unsigned(seed), ground_of(unsigned(seed)));
        add_lines(&b, 2 + seed % 23);
        b.cut_and_close();
        if (!HasFatalFailure())
            b.ask_all_triangles();
        if (!HasFatalFailure())
            b.look_everywhere();
        if (HasFatalFailure())
            return;
    }
}

TEST_F(SlowSurface, FacesOfUncutLinesAreTheSame)
{
    for (int seed = 0; seed < rounds(); ++seed) {
        SCOPED_TRACE(seed);
        both b(unsigned(seed), ground_of(unsigned(seed)));
        add_lines(&b, 2 + seed % 23);
        b.step(
            "close", [&] { b.net.close_faces(); }, [&] { b.plain.close_faces(); });
        if (!HasFatalFailure())
            b.look_everywhere();
        if (HasFatalFailure())
            return;
    }
}

TEST_F(SlowSurface, ChangesInAnyOrderAreTheSame)
{
    for (int seed = 0; seed < rounds() / 8; ++seed) {
        SCOPED_TRACE(seed);
        both b(unsigned(seed), ground_of(unsigned(seed)));
        add_lines(&b, 2 + seed % 13);
        b.cut_and_close();
        for (int i = 0; i < 30 && b.net.edges.count < 400 && !HasFatalFailure(); ++i) {
            switch (b.chance(0, 9)) {
            case 0:
                b.cut_and_close();
                break;
            case 1:
                b.merge();
                break;
            case 2:
                b.look_everywhere();
                break;
            default:
                b.change_something();
            }
        }
        if (!HasFatalFailure())
            b.ask_all_triangles();
        if (HasFatalFailure())
            return;
    }
}

TEST_F(SlowSurface, MergedChainsAreTheSame)
{
    for (int seed = 0; seed < rounds(); ++seed) {
        SCOPED_TRACE(seed);
        both b(unsigned(seed), ground_of(unsigned(seed)));
        add_lines(&b, 2 + seed % 29);
        b.cut_and_close();
        for (int i = 0; i < 3 && !HasFatalFailure(); ++i)
            b.merge();
        if (HasFatalFailure())
            return;
    }
}

TEST_F(SlowSurface, DrapedSurfacesAreTheSame)
{
    for (int seed = 0; seed < rounds(); ++seed) {
        SCOPED_TRACE(seed);
        both b(unsigned(seed), ground_of(unsigned(seed)));
        add_lines(&b, 2 + seed % 19);
        b.cut_and_close();
        if (!HasFatalFailure())
            b.drape();
        if (HasFatalFailure())
            return;
    }
}
} // namespace
