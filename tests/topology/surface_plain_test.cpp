// Surfaces beside plain ones: the same numbers, objects and sides after each step.
#include <random>

#include "tests/topology/collection.h"
#include "tests/topology/plain_surface.h"
#include "topology/surface_net.h"

namespace
{

class SurfacePlain : public Collection
{
protected:
    void SetUp() override
    {
        Collection::SetUp();
        triangle_cache = {};
    }
};

// Lines between random places; with `grid` above 0 the places are whole numbers below it, and so many lines
// meet, touch and overlap.
struct lines {
    SurfaceNet net;
    plain::surface plain;
    std::mt19937 random;
    int grid;

    lines(unsigned seed, int count, int g) : random(seed), grid(g)
    {
        for (int i = 0; i < count; ++i) {
            double p[3], q[3];
            place(p);
            place(q);
            if (p[0] == q[0] && p[1] == q[1])
                continue;
            const int a = net.intern_node(p), b = net.intern_node(q);
            net.intern_edge(a, b, 0);
            const int pa = plain.intern_node(p), pb = plain.intern_node(q);
            plain.intern_edge(pa, pb);
        }
    }
    void place(double* at)
    {
        for (int i = 0; i < 2; ++i)
            at[i] = grid ? std::uniform_int_distribution<>(0, grid - 1)(random)
                         : std::uniform_real_distribution<>(0, 100)(random);
        at[2] = 0.1 * at[0] + 0.2 * at[1] + 10;
    }
};

pg_node* random_chain(lines* s, int count)
{
    pg_node* chain = nullptr;
    for (int i = 0; i < count; ++i) {
        double at[3];
        s->place(at);
        chain = pg_node_push(at, chain, 0);
    }
    return chain;
}

std::string text_of(const pg_node* chain)
{
    std::string text;
    for (; chain; chain = chain->next)
        text += std::to_string(chain->x) + " " + std::to_string(chain->y) + "\n";
    return text;
}

TEST_F(SurfacePlain, CutsAndFacesAreThoseOfAllPairs)
{
    for (unsigned seed = 0; seed < 1500; ++seed) {
        lines s(seed, 2 + static_cast<int>(seed % 23), seed % 3 == 0 ? 0 : 3 + static_cast<int>(seed % 7));
        s.net.cut_crossings();
        s.plain.cut_crossings();
        ASSERT_EQ(plain::text_of(s.net), plain::text_of(s.plain)) << "cut, seed " << seed;
        s.net.close_faces();
        s.plain.close_faces();
        ASSERT_EQ(plain::text_of(s.net), plain::text_of(s.plain)) << "closed, seed " << seed;
        printed_text();
    }
}

TEST_F(SurfacePlain, PointsAreFoundInTheFirstTriangle)
{
    int hits = 0, misses = 0;
    for (unsigned seed = 0; seed < 300; ++seed) {
        lines s(seed, 10 + static_cast<int>(seed % 23), seed % 2 == 0 ? 0 : 3 + static_cast<int>(seed % 5));
        s.net.cut_crossings();
        s.net.close_faces();
        s.plain.cut_crossings();
        s.plain.close_faces();
        std::uniform_real_distribution<> wide(-1e5, 1e5);
        for (int i = 0; i < 100; ++i) {
            double at[3] = {wide(s.random), wide(s.random), 0};
            if (i < 90)
                s.place(at);
            triangle_cache = {};
            const int found = s.net.find_triangle(at);
            ASSERT_EQ(found, s.plain.find_triangle(at)) << "seed " << seed;
            ++(found > 0 ? hits : misses);
        }
        printed_text();
    }
    EXPECT_GT(hits, 5000);
    EXPECT_GT(misses, 2000);
}

TEST_F(SurfacePlain, ChainsAreMergedAsByAllPairs)
{
    for (unsigned seed = 0; seed < 1500; ++seed) {
        lines s(seed, 2 + static_cast<int>(seed % 29), seed % 3 == 0 ? 0 : 3 + static_cast<int>(seed % 7));
        s.net.cut_crossings();
        s.net.close_faces();
        s.plain.cut_crossings();
        s.plain.close_faces();
        pg_node* chain = random_chain(&s, 1 + static_cast<int>(seed % 6));
        pg_node* other = pg_copy(chain);
        s.net.merge_chain(chain);
        s.plain.merge_chain(other);
        ASSERT_EQ(text_of(chain), text_of(other)) << "seed " << seed;
        ASSERT_EQ(plain::text_of(s.net), plain::text_of(s.plain)) << "seed " << seed;
        for (int id = 1; id <= s.net.edges.count; ++id)
            if (s.net.edge(id)) {
                ASSERT_EQ(s.net.edge(id)->mark != 0, s.plain.edges[id - 1].is_marked) << "seed " << seed;
            }
        pl_free_nodes(chain);
        pl_free_nodes(other);
        printed_text();
    }
}

} // namespace
