#include <algorithm>
#include <random>
#include <vector>

#include "tests/growth.h"
#include "tests/topology/surface_fixture.h"

namespace
{

std::vector<std::int32_t> edges_of(const ShapeObj* shape)
{
    std::vector<std::int32_t> ids;
    for (std::int32_t i = 1; i <= shape->edges.count; ++i)
        ids.push_back(shape->edges.get(i)->id);
    return ids;
}

double area_of(const pg_node* chain)
{
    double sum = 0;
    for (const pg_node* n = chain; n; n = n->next) {
        const pg_node* to = n->next ? n->next : chain;
        sum += (n->x * to->y - to->x * n->y) / 2;
    }
    return sum;
}

// Nodes less edges plus faces is 2 for a part that hangs together, its outside being a face.
int faces_by_euler(const SurfaceNet& net)
{
    return 2 - live_count(net.nodes) + live_count(net.edges);
}

TEST_F(Surface, InnerFacesAreTracedCounterClockwiseAndTheOutsideClockwise)
{
    SurfaceNet net;
    add_ring(&net, {{{0, 0, 0}}, {{4, 0, 0}}, {{4, 4, 0}}, {{0, 4, 0}}});
    int inner = 0, outer = 0;
    for (std::int32_t id = 1; id <= 4; ++id)
        for (const bool forward : {true, false}) {
            ShapeObj* face = net.trace_face(id, forward);
            ASSERT_TRUE(face);
            EXPECT_EQ(face->edges.count, 4);
            EXPECT_EQ(edges_of(face)[0], id);
            pg_node* chain = net.face_to_chain(face);
            const int orientation = pg_orientation(chain);
            inner += orientation == -1;
            outer += orientation == 1;
            EXPECT_NEAR(area_of(chain), orientation == -1 ? 16 : -16, 1e-12);
            pl_free_nodes(chain);
            delete face;
        }
    EXPECT_EQ(inner, 4);
    EXPECT_EQ(outer, 4);
}

TEST_F(Surface, AFaceWithoutAWayOnIsNull)
{
    SurfaceNet net;
    add_line(&net, {{0, 0, 0}}, {{1, 0, 0}});
    add_line(&net, {{1, 0, 0}}, {{2, 1, 0}});
    for (const bool forward : {true, false})
        for (std::int32_t id = 0; id <= 3; ++id)
            EXPECT_EQ(net.trace_face(id, forward), nullptr);
    EXPECT_EQ(net.face_to_chain(nullptr), nullptr);
}

// From the stem the walk goes round the ring and comes back to the stem.
TEST_F(Surface, AWalkThatComesBackToItsOwnEdgeEndsThere)
{
    SurfaceNet net;
    const std::int32_t far_stem = add_line(&net, {{-2, 0, 0}}, {{-1, 0, 0}});
    const std::int32_t stem = add_line(&net, {{-1, 0, 0}}, {{0, 0, 0}});
    add_ring(&net, {{{0, 0, 0}}, {{2, -1, 0}}, {{2, 1, 0}}});
    ShapeObj* face = net.trace_face(far_stem, true);
    ASSERT_TRUE(face);
    std::vector<std::int32_t> ids = edges_of(face);
    EXPECT_EQ(ids.size(), 5u);
    std::sort(ids.begin(), ids.end());
    EXPECT_TRUE(std::unique(ids.begin(), ids.end()) == ids.end());
    delete face;
    // A node on is the first one again, and so the stem comes in twice.
    face = net.trace_face(stem, true);
    ASSERT_TRUE(face);
    EXPECT_EQ(edges_of(face).size(), 5u);
    EXPECT_EQ(edges_of(face).back(), stem);
    delete face;
}

TEST_F(Surface, ASquareIsFilledWithTwoTriangles)
{
    for (const double turn : {0.0, 0.3, 1.0, 2.0}) {
        SurfaceNet net;
        const double c = std::cos(turn), s = std::sin(turn);
        add_ring(&net, {{{c, s, 1}}, {{-s, c, 2}}, {{-c, -s, 3}}, {{s, -c, 4}}});
        net.close_faces();
        EXPECT_EQ(net.edges.count, 5);
        EXPECT_EQ(net.triangles.count, 2);
        EXPECT_NEAR(whole_area(net), 2, 1e-12);
        EXPECT_EQ(printed_text(), "");
    }
}

TEST_F(Surface, BothSidesOfALoneTriangleBecomeTriangles)
{
    SurfaceNet net;
    add_ring(&net, {{{0, 0, 0}}, {{1, 0, 0}}, {{0, 1, 0}}});
    net.close_faces();
    EXPECT_EQ(net.triangles.count, 2);
    EXPECT_NEAR(whole_area(net), 0, 1e-15);
}

// As the page on geometry advises.
TEST_F(Surface, GroundWithinThreeEdgesAnswersWithoutItsOutside)
{
    SurfaceNet net;
    const place corners[] = {{{0, 0, 0}}, {{30, 0, 0}}, {{0, 30, 0}}}, top{{10, 10, 9}};
    for (int i = 0; i < 3; ++i) {
        add_line(&net, corners[i], corners[(i + 1) % 3]);
        add_line(&net, corners[i], top);
    }
    net.close_faces();
    ASSERT_EQ(net.triangles.count, 4);
    double cut, cut_area, fill, fill_area, whole_cut = 0;
    int removed = 0;
    for (std::int32_t id = 1; id <= 4; ++id) {
        net.triangle_volume(id, -1, &cut, &cut_area, &fill, &fill_area);
        if (cut_area + fill_area < 0) {
            net.remove_triangle(id);
            ++removed;
        } else {
            whole_cut += cut;
        }
    }
    EXPECT_EQ(removed, 1);
    EXPECT_NEAR(whole_cut, 450 * (9.0 / 3 + 1), 1e-9); // a pyramid of height 9 on a slab of 1
    const double point[3] = {9, 9, 0};
    EXPECT_NEAR(net.triangle_elevation(net.find_triangle(point), point), 8.1, 1e-12);
}

TEST_F(Surface, ClosedFacesObeyEuler)
{
    SurfaceNet net;
    for (int r = 0; r <= 6; ++r)
        for (int c = 0; c <= 6; ++c) {
            const double x = c + 0.1 * std::sin(r), y = r + 0.1 * std::cos(c);
            if (c < 6)
                add_line(&net, {{x, y, 0}}, {{x + 1, r + 0.1 * std::cos(c + 1), 0}});
            if (r < 6)
                add_line(&net, {{x, y, 0}}, {{c + 0.1 * std::sin(r + 1), y + 1, 0}});
        }
    EXPECT_EQ(faces_by_euler(net), 37);
    net.close_faces();
    EXPECT_EQ(net.triangles.count, 72);
    EXPECT_EQ(faces_by_euler(net), 73);
    for (std::int32_t id = 1; id <= net.triangles.count; ++id) {
        std::int32_t a, b, c;
        ASSERT_EQ(net.triangle_corners(id, &a, &b, &c), 1);
        const NodeObj *p = net.node(a), *q = net.node(b), *r = net.node(c);
        EXPECT_GT(pg_tri_area(p->x, p->y, q->x, q->y, r->x, r->y), 0);
    }
    const int edges = net.edges.count;
    net.close_faces(); // there is nothing left to close but the outside
    EXPECT_EQ(net.triangles.count, 72);
    EXPECT_EQ(net.edges.count, edges);
}

// Stars with random points, far from convex.
TEST_F(Surface, FilledOutlinesHaveTheAreaOfTheOutline)
{
    int whole = 0;
    constexpr int TRIED = 300;
    for (unsigned seed = 0; seed < TRIED; ++seed) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<> radius(2, 10);
        const int count = 4 + static_cast<int>(seed % 40);
        SurfaceNet net;
        std::vector<place> outline;
        for (int i = 0; i < count; ++i) {
            const double angle = 2 * 3.14159265358979 * i / count, r = radius(random);
            outline.push_back({{500 + r * std::cos(angle), 700 + r * std::sin(angle), r}});
        }
        double area = 0;
        for (int i = 0; i < count; ++i) {
            const place &p = outline[i], &q = outline[(i + 1) % count];
            add_line(&net, p, q);
            area += (p.at[0] * q.at[1] - q.at[0] * p.at[1]) / 2;
        }
        net.close_faces();
        whole += net.triangles.count == count - 2 && std::fabs(whole_area(net) - area) < 1e-6;
        printed_text();
    }
    EXPECT_EQ(whole, TRIED);
}

TEST_F(Surface, AnEdgeFromANodeToItselfIsPassedOver)
{
    SurfaceNet net;
    add_ring(&net, {{{0, 0, 0}}, {{1, 0, 0}}, {{1, 1, 0}}, {{0, 1, 0}}});
    EXPECT_EQ(net.intern_edge(1, 1, 0), 5);
    net.close_faces();
    EXPECT_EQ(net.triangles.count, 2);
}

TEST_F(Surface, EdgesThatAreGoneArePassedOver)
{
    SurfaceNet net;
    add_ring(&net, {{{0, 0, 0}}, {{2, 0, 0}}, {{2, 2, 0}}, {{0, 2, 0}}});
    const std::int32_t spoke = add_line(&net, {{0, 0, 0}}, {{1, 1, 0}});
    net.remove_edge(spoke); // the last of its node, where its id stays
    net.close_faces();
    EXPECT_EQ(net.triangles.count, 2);
    EXPECT_NEAR(whole_area(net), 4, 1e-12);
}

TEST_F(Surface, AHeightOnAContourDoesNotHideANode)
{
    SurfaceNet net;
    // Nodes in rows, so that the index splits at the very heights and places.
    for (int i = 0; i < 40; ++i) {
        const double at[3] = {0.1 * (i % 5), 0.1 * (i / 5), -1.0 * (i % 3)};
        net.intern_node(at);
    }
    add_ring(&net,
             {{{0, 0, 0}}, {{0.1, 0, -1}}, {{0.2, 0, -2}}, {{0.2, 0.1, -1}}, {{0.1, 0.1, 0}}, {{0, 0.1, -2}}});
    net.close_faces();
    EXPECT_EQ(net.triangles.count, 4);
    EXPECT_NEAR(whole_area(net), 0.02, 1e-12);
}

// The corners of the network's frame lie, in its own coordinates, on nodes of the surface.
TEST_F(Surface, TheFrameIsNoPartOfTheSurface)
{
    SurfaceNet net;
    for (const double x : {-20.0, 30.0})
        for (const double y : {-20.0, 30.0}) {
            const double at[3] = {x, y, 0};
            net.intern_node(at);
        }
    add_ring(&net, {{{-30, -30, 0}}, {{-20, -30, 0}}, {{-20, -20, 0}}, {{-30, -20, 0}}});
    net.close_faces();
    EXPECT_EQ(net.edges.count, 5);
    EXPECT_EQ(net.triangles.count, 2);
}

TEST_F(Surface, ARepeatedVertexTakesTheEarlierPoint)
{
    SurfaceNet net;
    add_ring(&net, {{{0, 0, 1}}, {{2, 0, 1}}, {{2, 2, 1}}, {{0, 2, 1}}});
    pg_node* chain = nullptr;
    for (const place& p : {place{{0, 0, 1}}, place{{0, 2, 1}}, place{{2, 2, 1}}, place{{2, 2, 1}},
                           place{{2, 0, 9}}, place{{2, 0, 1}}, place{{0, 0, 1}}})
        chain = pg_node_push(p.at, chain, 0);
    tin_fill_face(&net, chain);
    EXPECT_EQ(net.edges.count, 5);
    EXPECT_EQ(printed_text(), "");
    pl_free_nodes(chain);
}

TEST_F(Surface, ChainsThatAreNoneFillNothing)
{
    SurfaceNet net;
    const double at[3] = {1, 1, 1};
    net.intern_node(at);
    tin_fill_face(&net, nullptr);
    EXPECT_EQ(printed_text(), "Unable to find points.\n");
    pg_node* one = pg_node_new(at);
    tin_fill_face(&net, one);
    EXPECT_EQ(printed_text(), "Unable to find points.\n");
    pg_node* twice = pg_node_push(at, one, 0);
    tin_fill_face(&net, twice);
    EXPECT_EQ(printed_text(), "Too few points to triangulate.\n");
    pl_free_nodes(twice);
    EXPECT_EQ(net.edges.count, 0);
}

TEST_F(Surface, ABreakEndsTheClosing)
{
    SurfaceNet net;
    for (int i = 0; i < 500; ++i) {
        const double x = 10 * i;
        add_ring(&net, {{{x, 0, 0}}, {{x + 1, 0, 0}}, {{x + 1, 1, 0}}, {{x, 1, 0}}});
    }
    test_heap::break_at(1);
    net.close_faces();
    EXPECT_EQ(printed_text(), "\nFunction cancelled at user request.");
    EXPECT_LT(net.triangles.count, 1000);
    user_break_clear();
    net.close_faces();
    EXPECT_EQ(net.triangles.count, 1000);
    EXPECT_EQ(printed_text(), "");
}

TEST_F(Surface, ClosingGrowsWithTheFaces)
{
    const auto fields = [](int count) {
        SurfaceNet net;
        const int side = static_cast<int>(std::sqrt(count));
        for (int r = 0; r < side; ++r)
            for (int c = 0; c < side; ++c) {
                const place p{{1.0 * c, 1.0 * r, 0}};
                add_line(&net, p, {{c + 1.0, 1.0 * r, 0}});
                add_line(&net, p, {{1.0 * c, r + 1.0, 0}});
            }
        net.close_faces();
    };
    EXPECT_TRUE(grows_in_proportion(fields, 40000));
}

// The outside of a strip, and a line that leads nowhere, are walked once and not from each of their edges.
TEST_F(Surface, LongOutlinesAreWalkedOnce)
{
    const auto strip = [](int count) {
        SurfaceNet net;
        for (int i = 0; i < count; ++i) {
            const double x = i;
            add_triangle(&net, {{x, 0, 0}}, {{x + 1, 0, 0}}, {{x, 1, 0}});
            add_triangle(&net, {{x + 1, 0, 0}}, {{x + 1, 1, 0}}, {{x, 1, 0}});
            add_line(&net, {{x, 10, 0}}, {{x + 1, 10 + std::sin(x), 0}});
        }
        net.close_faces();
    };
    EXPECT_TRUE(grows_in_proportion(strip, 32000));
}

// Each square that is filled gets an edge at nodes of the outside, which doesn't turn into it.
TEST_F(Surface, TheOutsideIsNotWalkedAgainAfterEachFill)
{
    const auto squares = [](int count) {
        SurfaceNet net;
        for (int i = 0; i < count; ++i) {
            const double x = i;
            add_line(&net, {{x, 0, 0}}, {{x + 1, 0, 0}});
            add_line(&net, {{x, 1, 0}}, {{x + 1, 1, 0}});
            add_line(&net, {{x, 0, 0}}, {{x, 1, 0}});
        }
        add_line(&net, {{1.0 * count, 0, 0}}, {{1.0 * count, 1, 0}});
        net.close_faces();
        EXPECT_EQ(net.triangles.count, 2 * count);
    };
    EXPECT_TRUE(grows_in_proportion(squares, 16000));
}

} // namespace
