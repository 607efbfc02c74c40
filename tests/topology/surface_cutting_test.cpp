#include <random>

#include "tests/growth.h"
#include "tests/topology/surface_fixture.h"

namespace
{

bool has_edge(const SurfaceNet& net, place p, place q)
{
    const NodeObj a(p.at[0], p.at[1], p.at[2]), b(q.at[0], q.at[1], q.at[2]);
    const EdgeKey key(net.nodes.look_around(&a), net.nodes.look_around(&b), 0);
    return net.edges.look(&key) != 0;
}

pg_node* chain_of(std::initializer_list<place> places)
{
    pg_node* chain = nullptr;
    for (const place* p = places.end(); p != places.begin();)
        chain = pg_node_push((--p)->at, chain, 0);
    return chain;
}

TEST_F(Surface, CrossingEdgesAreCutAtTheHeightOfTheFirst)
{
    SurfaceNet net;
    add_line(&net, {{0, 0, 0}}, {{2, 2, 4}});
    add_line(&net, {{0, 2, 10}}, {{2, 0, 10}});
    net.cut_crossings();
    EXPECT_EQ(live_count(net.edges), 4);
    EXPECT_EQ(net.nodes.count, 5);
    EXPECT_NEAR(net.node(5)->z, 2, 1e-12);
    for (const place& end : {place{{0, 0, 0}}, place{{2, 2, 4}}, place{{0, 2, 10}}, place{{2, 0, 10}}})
        EXPECT_TRUE(has_edge(net, end, {{1, 1, 2}}));
}

TEST_F(Surface, AnEdgeThatEndsOnAnotherCutsIt)
{
    SurfaceNet net;
    add_line(&net, {{0, 0, 0}}, {{4, 0, 0}});
    add_line(&net, {{1, 3, 0}}, {{1, 0, 0}});
    net.cut_crossings();
    EXPECT_EQ(live_count(net.edges), 3);
    EXPECT_EQ(net.nodes.count, 4);
}

TEST_F(Surface, OverlappingEdgesAreSharedPieces)
{
    for (const bool swapped : {false, true})
        for (const bool turned : {false, true}) {
            SurfaceNet net;
            const place a{{0, 0, 0}}, b{{3, 0, 0}}, c{{1, 0, 0}}, d{{5, 0, 0}};
            if (swapped)
                add_line(&net, turned ? d : c, turned ? c : d);
            add_line(&net, a, b);
            if (!swapped)
                add_line(&net, turned ? d : c, turned ? c : d);
            net.cut_crossings();
            EXPECT_EQ(live_count(net.edges), 3);
            EXPECT_TRUE(has_edge(net, a, c));
            EXPECT_TRUE(has_edge(net, c, b));
            EXPECT_TRUE(has_edge(net, b, d));
        }
}

TEST_F(Surface, AnEdgeWithinAnotherIsOneOfThreePieces)
{
    for (const bool swapped : {false, true}) {
        SurfaceNet net;
        const place a{{0, 0, 0}}, b{{1, 1, 1}}, c{{2, 2, 2}}, d{{3, 3, 3}};
        add_line(&net, swapped ? c : a, swapped ? b : d);
        add_line(&net, swapped ? a : b, swapped ? d : c);
        net.cut_crossings();
        EXPECT_EQ(live_count(net.edges), 3);
        EXPECT_TRUE(has_edge(net, a, b));
        EXPECT_TRUE(has_edge(net, b, c));
        EXPECT_TRUE(has_edge(net, c, d));
    }
}

TEST_F(Surface, NothingCrossesAfterCutting)
{
    SurfaceNet net;
    std::mt19937 random(5);
    std::uniform_int_distribution<> number(0, 12);
    for (int i = 0; i < 60; ++i)
        add_line(&net, {{1.0 * number(random), 1.0 * number(random), 0}},
                 {{1.0 * number(random), 1.0 * number(random), 0}});
    net.cut_crossings();
    const int edges = live_count(net.edges), nodes = net.nodes.count;
    net.cut_crossings();
    EXPECT_EQ(live_count(net.edges), edges);
    EXPECT_EQ(net.nodes.count, nodes);
}

// Places a little off each other, about as far as tolerances reach.
TEST_F(Surface, CuttingOfNearlyEqualLinesEnds)
{
    for (const double noise : {1e-7, 1e-6, 5e-6, 1e-4, 1e-3}) {
        for (unsigned seed = 0; seed < 60; ++seed) {
            SurfaceNet net;
            std::mt19937 random(seed);
            std::uniform_real_distribution<> off(-noise, noise);
            std::uniform_int_distribution<> number(0, 3);
            const auto somewhere = [&] {
                return place{{number(random) + off(random), number(random) + off(random), off(random)}};
            };
            for (int i = 0; i < 12; ++i)
                add_line(&net, somewhere(), somewhere());
            net.cut_crossings();
            ASSERT_LT(net.edges.count, 100000) << noise << " seed " << seed;
        }
    }
}

TEST_F(Surface, ABreakEndsTheCutting)
{
    SurfaceNet net;
    for (int i = 0; i < 300; ++i) {
        add_line(&net, {{0, 1.0 * i, 0}}, {{300, i + 0.5, 0}});
    }
    add_line(&net, {{150, -1, 0}}, {{150.1, 301, 0}});
    test_heap::break_at(1);
    net.cut_crossings();
    EXPECT_EQ(printed_text(), "\nFunction cancelled at user request.");
    EXPECT_LT(live_count(net.edges), 901);
    user_break_clear();
    net.cut_crossings();
    EXPECT_EQ(live_count(net.edges), 901);
}

TEST_F(Surface, CuttingGrowsWithTheCrossings)
{
    const auto mesh = [](int count) {
        SurfaceNet net;
        for (int i = 0; i < count; ++i) { // small crosses in a long row
            const double x = 3.0 * i;
            add_line(&net, {{x, 0, 0}}, {{x + 2, 2, 0}});
            add_line(&net, {{x, 2, 0}}, {{x + 2, 0, 0}});
        }
        net.cut_crossings();
    };
    EXPECT_TRUE(grows_in_proportion(mesh, 16000));
}

TEST_F(Surface, AMergedChainCutsEdgesAtTheirOwnHeight)
{
    SurfaceNet net;
    add_triangle(&net, {{0, 0, 0}}, {{4, 0, 4}}, {{4, 4, 8}});
    add_triangle(&net, {{0, 0, 0}}, {{4, 4, 8}}, {{0, 4, 4}});
    pg_node* chain = chain_of({{{-1, 1, 100}}, {{5, 1, 100}}});
    net.merge_chain(chain);
    // In at x 0, through the diagonal at 1, out at 4.
    ASSERT_EQ(pg_count(chain), 5);
    const double expected[5][3] = {{-1, 1, 100}, {0, 1, 1}, {1, 1, 2}, {4, 1, 5}, {5, 1, 100}};
    const pg_node* n = chain;
    for (const auto& at : expected) {
        EXPECT_NEAR(n->x, at[0], 1e-12);
        EXPECT_NEAR(n->y, at[1], 1e-12);
        EXPECT_NEAR(n->z, at[2], 1e-12);
        n = n->next;
    }
    EXPECT_TRUE(has_edge(net, {{0, 1, 1}}, {{1, 1, 2}}));
    EXPECT_TRUE(has_edge(net, {{1, 1, 2}}, {{4, 1, 5}}));
    EXPECT_FALSE(has_edge(net, {{-1, 1, 100}}, {{0, 1, 1}}));
    EXPECT_EQ(live_count(net.triangles), 0);
    net.close_faces();
    EXPECT_NEAR(whole_area(net), 16, 1e-12);
    pl_free_nodes(chain);
}

TEST_F(Surface, AVertexBetweenCrossingsParts)
{
    SurfaceNet net;
    add_line(&net, {{0, 0, 0}}, {{0, 4, 0}});
    add_line(&net, {{4, 0, 0}}, {{4, 4, 0}});
    pg_node* chain = chain_of({{{-1, 1, 0}}, {{2, 2, 0}}, {{5, 1, 0}}});
    net.merge_chain(chain);
    EXPECT_EQ(pg_count(chain), 5);
    EXPECT_EQ(live_count(net.edges), 4); // both are cut, nothing leads across
    pl_free_nodes(chain);
}

TEST_F(Surface, ACrossingAtAVertexIsNoNewVertex)
{
    SurfaceNet net;
    add_line(&net, {{0, -1, 0}}, {{0, 1, 0}});
    add_line(&net, {{1, -1, 0}}, {{1, 1, 0}});
    pg_node* chain = chain_of({{{0, 0, 0}}, {{1 + 5e-7, 0, 0}}});
    net.merge_chain(chain);
    EXPECT_EQ(pg_count(chain), 2);
    EXPECT_EQ(live_count(net.edges), 4); // but the edges are cut there
    pl_free_nodes(chain);
}

TEST_F(Surface, AChainThroughANodeGetsOneVertexThere)
{
    SurfaceNet net;
    for (const double x : {-2.0, -1.0, 0.0, 1.0, 2.0})
        add_line(&net, {{0, 0, 7}}, {{x, 2, 7}});
    pg_node* chain = chain_of({{{-3, 0, 0}}, {{3, 0, 0}}});
    net.merge_chain(chain);
    ASSERT_EQ(pg_count(chain), 3);
    EXPECT_EQ(chain->next->z, 7);
    EXPECT_EQ(live_count(net.edges), 5);
    pl_free_nodes(chain);
}

TEST_F(Surface, EdgesOutOfReachAreMarked)
{
    SurfaceNet net;
    const std::int32_t far = add_line(&net, {{0, 5, 0}}, {{1, 5, 0}});
    const std::int32_t near = add_line(&net, {{0, 1, 0}}, {{0, 2.5, 0}});
    const std::int32_t touching = add_line(&net, {{7, 3, 0}}, {{7, 0, 0}});
    net.edge(far)->mark = net.edge(near)->mark = 7;
    net.node(1)->mark = 7;
    pg_node* chain = chain_of({{{-10, 0, 0}}, {{10, 0, 0}}});
    net.merge_chain(chain);
    EXPECT_EQ(net.edge(far)->mark, 1);
    // Longer than the way from its lower end, but not than that from its upper one.
    EXPECT_EQ(net.edge(near)->mark, 1);
    EXPECT_EQ(net.edge(touching)->mark, 0); // just as long as the way
    EXPECT_EQ(net.node(1)->mark, 0);
    EXPECT_EQ(pg_count(chain), 3);
    pl_free_nodes(chain);
    net.merge_chain(nullptr);
    EXPECT_EQ(net.edge(far)->mark, 0);
}

TEST_F(Surface, ABreakEndsTheMerging)
{
    SurfaceNet net;
    for (int i = 0; i < 300; ++i)
        add_line(&net, {{1.0 * i, -1, 0}}, {{1.0 * i, 1, 0}});
    pg_node* chain = chain_of({{{-1, 0, 0}}, {{400, 0, 0}}});
    test_heap::break_at(1);
    net.merge_chain(chain);
    EXPECT_EQ(printed_text(), "\nFunction cancelled at user request.");
    EXPECT_EQ(pg_count(chain), 2);
    user_break_clear();
    net.merge_chain(chain);
    EXPECT_EQ(pg_count(chain), 302);
    pl_free_nodes(chain);
}

TEST_F(Surface, MergingGrowsWithTheSurface)
{
    const auto across = [](int count) {
        SurfaceNet net;
        pg_node* chain = nullptr;
        for (int i = 0; i < count; ++i) {
            add_line(&net, {{1.0 * i, -1, 0}}, {{i + 0.1, 1, 0}});
            const double at[3] = {i - 0.5, 0, 0};
            chain = pg_node_push(at, chain, 0);
        }
        net.merge_chain(chain);
        pl_free_nodes(chain);
    };
    EXPECT_TRUE(grows_in_proportion(across, 32000));
}

TEST_F(Surface, DrapedLinesLieOnTheSurface)
{
    SurfaceNet net;
    const auto z = [](double x, double y) { return 10 + 0.5 * x + std::floor(y); };
    add_grid(&net, 6, z);
    pg_node* first = chain_of({{{0.5, 0.25, 99}}, {{5.5, 4.75, 99}}});
    pg_node* second = chain_of({{{5.5, 0.5, 99}}, {{0.25, 5.25, 99}}, {{8, 8, 99}}});
    pg_ring* rings = pg_ring_new();
    rings->next = pg_ring_new();
    rings->nodes = first;
    rings->next->nodes = second;
    SurfaceNet* draped = net.drape(rings);
    ASSERT_TRUE(draped);
    EXPECT_NEAR(whole_area(*draped), whole_area(net), 1e-9);
    int outside = 0;
    for (std::int32_t id = net.nodes.count + 1; id <= draped->nodes.count; ++id) {
        const NodeObj* n = draped->node(id);
        const double at[3] = {n->x, n->y, 0};
        const std::int32_t triangle = net.find_triangle(at);
        if (triangle > 0)
            EXPECT_NEAR(n->z, net.triangle_elevation(triangle, at), 1e-9);
        else
            ++outside;
    }
    EXPECT_EQ(outside, 1); // (8, 8), which keeps its height
    NodeObj corner(8, 8, 99);
    EXPECT_NE(draped->find_node(&corner), 0);
    // The polylines themselves stay as they are, and so does the surface.
    EXPECT_EQ(first->z, 99);
    EXPECT_EQ(pg_count(second), 3);
    EXPECT_EQ(net.triangles.count, 72);
    delete draped;
    pg_free_rings(&rings);
}

TEST_F(Surface, DrapingNothingCopiesTheSurface)
{
    SurfaceNet net;
    add_grid(&net, 3, [](double x, double y) { return x * y; });
    SurfaceNet* draped = net.drape(nullptr);
    ASSERT_TRUE(draped);
    EXPECT_EQ(draped->nodes.count, net.nodes.count);
    EXPECT_EQ(live_count(draped->edges), live_count(net.edges));
    EXPECT_EQ(draped->triangles.count, net.triangles.count);
    delete draped;
}

} // namespace
