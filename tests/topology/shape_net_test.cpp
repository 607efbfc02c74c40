// Shape networks: single objects, chains, crossings, splitting, faces; what they print.
#include "topology/shape_net.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "common/tolerances.h"
#include "tests/topology/shape_nets.h"
#include "topology/edge_arcs.h"

namespace
{

using ShapeNetTest = Collection;
constexpr double QUARTER = 0.41421356237309503; // bulge of a quarter circle

TEST_F(ShapeNetTest, StartsEmptyWithTheTolerance)
{
    const ShapeNet net(3);
    EXPECT_EQ(net.tolerance, 1e-6);
    EXPECT_EQ(net.nodes.dimensions, 3);
    EXPECT_EQ(net.edges.dimensions, 3);
    EXPECT_EQ(net.nodes.leaf_capacity, 10);
    EXPECT_EQ(net.edges.leaf_capacity, 10);
    EXPECT_EQ(net.shapes.count, 0);
}

TEST_F(ShapeNetTest, NodesAndEdgesAreFoundAgain)
{
    ShapeNet net(3);
    EXPECT_EQ(net.intern_node(1, 2, 3), 1);
    EXPECT_EQ(net.intern_node(4, 2, 3), 2);
    EXPECT_EQ(net.intern_node(1, 2, 3 + 5e-7), 1);
    EXPECT_EQ(net.intern_edge(1, 2, 0.5), 1);
    EXPECT_EQ(net.intern_edge(2, 1, -0.5), 1);
    EXPECT_EQ(net.intern_edge(1, 2, -0.5), 2);
    EXPECT_EQ(net.node(1)->id, 1);
    EXPECT_EQ(net.node(1)->owner, &net);
    EXPECT_EQ(net.edge(2)->owner, &net);
    EXPECT_EQ(net.node(2)->edges.count, 2);
    NodeObj there(4, 2, 3), elsewhere(9, 9, 9);
    EXPECT_EQ(net.find_node(&there), 2);
    EXPECT_EQ(net.find_node(&elsewhere), 0);
    EdgeKey key(2, 1, 0.5);
    EXPECT_EQ(net.find_edge(&key), 2);
}

TEST_F(ShapeNetTest, NetworkInThePlaneTakesAnyHeightAndBulgeAsOne)
{
    ShapeNet net(2);
    EXPECT_EQ(net.intern_node(1, 2, 3), 1);
    EXPECT_EQ(net.intern_node(1, 2, 8), 1);
    EXPECT_EQ(net.intern_node(4, 4, 0), 2);
    EXPECT_EQ(net.intern_edge(1, 2, 0), 1);
    EXPECT_EQ(net.intern_edge(1, 2, 0.5), 1);
}

TEST_F(ShapeNetTest, ShapesAndEdgesAreLinkedAndUnlinked)
{
    ShapeNet net(3);
    add_segment(&net, 0, 0, 1, 0);
    auto* shape = new ShapeObj;
    shape->link(1);
    EXPECT_EQ(net.add_shape(shape), 2);
    EXPECT_EQ(shape->id, 2);
    EXPECT_EQ(held_by(net.edge(1)->shapes), "1 2");
    net.remove_shape(2);
    EXPECT_EQ(held_by(net.edge(1)->shapes), "1");
    EXPECT_EQ(net.shape(2), nullptr);
    net.remove_shape(2);
    net.remove_edge(1);
    EXPECT_EQ(net.edge(1), nullptr);
    EXPECT_EQ(held_by(net.shape(1)->edges), "");
    net.remove_edge(1);
    net.remove_node(1);
    EXPECT_EQ(net.node(1), nullptr);
    EXPECT_EQ(net.add_shape(nullptr), 0);
    EXPECT_EQ(net.add_edge(nullptr), 0);
    EXPECT_EQ(net.add_node(nullptr), 0);
}

// ---- chains

TEST_F(ShapeNetTest, ChainIsAPolylineOfItsColour)
{
    ShapeNet net(3);
    EXPECT_EQ(add_path(&net, {{0, 0, 5, 0.25}, {4, 0, 6}, {4, 4, 7, 9}}), 1);
    EXPECT_EQ(net.shape(1)->kind, ShapeKind::POLYLINE);
    EXPECT_EQ(net.shape(1)->color, 7);
    EXPECT_EQ(net.shape(1)->closed, 0);
    EXPECT_EQ(net.shape(1)->visible, 1);
    EXPECT_EQ(net.node(2)->z, 6);
    EXPECT_EQ(edges_of(net), "1-2(0.25) 2-3");
    EXPECT_EQ(held_by(net.shape(1)->edges), "1 2");
    expect_sound(net);
}

TEST_F(ShapeNetTest, LastBulgeOfAClosedChainIsThatOfTheClosingEdge)
{
    ShapeNet net(3);
    add_path(&net, {{0, 0}, {4, 0, 0, 0.5}, {4, 4, 0, -0.75}}, true);
    EXPECT_EQ(edges_of(net), "1-2 2-3(0.5) 3-1(-0.75)");
    EXPECT_EQ(net.shape(1)->closed, 1);
}

TEST_F(ShapeNetTest, SharedStretchIsOneEdgeWithTwoShapes)
{
    ShapeNet net(3);
    add_path(&net, {{0, 0}, {4, 0}, {4, 4}}, true);
    add_path(&net, {{4, 4}, {0, 0}, {0, 4}}, true);
    EXPECT_EQ(live_edges(net), 5);
    EXPECT_EQ(held_by(net.edge(3)->shapes), "1 2");
    expect_sound(net);
}

TEST_F(ShapeNetTest, ChainGoesIntoAGivenShape)
{
    ShapeNet net(3);
    auto* shape = new ShapeObj;
    net.add_shape(shape);
    const double a[3] = {0, 0, 0}, b[3] = {1, 0, 0};
    pg_node* chain = pg_node_push(a, pg_node_push(b, nullptr, 0), 0);
    net.add_chain(shape, chain, 3, 0);
    pl_free_nodes(chain);
    EXPECT_EQ(net.shapes.count, 1);
    EXPECT_EQ(shape->color, 0); // its own
    EXPECT_EQ(held_by(shape->edges), "1");
    net.add_chain(nullptr, nullptr, 3, 1);
    EXPECT_EQ(net.shapes.count, 2);
    EXPECT_EQ(net.shape(2)->edges.count, 0);
}

// ---- crossings and positions

TEST_F(ShapeNetTest, EdgesMeetAsTheKernelSays)
{
    ShapeNet net(3);
    add_segment(&net, 0, 0, 10, 0);
    add_segment(&net, 4, -5, 4, 5);
    add_segment(&net, 6, 0, 20, 0);
    add_segment(&net, 2, 1, 8, 1, 1); // a half circle below y 1, through (5, -2)
    add_segment(&net, 2, 8, 8, 8, 1);
    add_segment(&net, 0, -30, 10, -30);
    double a[3], b[3];
    const auto count = [&](int i, int j) { return net.edge_crossings(net.edge(i), net.edge(j), a, b); };
    EXPECT_EQ(count(1, 2), 1);
    EXPECT_EQ(a[0], 4);
    EXPECT_EQ(count(1, 3), 2);
    EXPECT_EQ(a[0], 6);
    EXPECT_EQ(b[0], 10);
    EXPECT_EQ(count(1, 4), 2);
    const double first = a[0];
    EXPECT_EQ(count(4, 1), 2); // the straight one leads
    EXPECT_EQ(a[0], first);
    EXPECT_EQ(count(4, 5), 0);
    EXPECT_EQ(count(1, 6), 0);
    EXPECT_EQ(net.edge_crossings(nullptr, net.edge(1), a, b), 0);
    ShapeEdge loose(1, 2, 0);
    EXPECT_EQ(net.edge_crossings(&loose, net.edge(1), a, b), 0);
    EXPECT_EQ(net.edge_crossings(net.edge(1), &loose, a, b), 0);
    net.remove_node(1);
    EXPECT_EQ(count(1, 2), 0);
}

TEST_F(ShapeNetTest, ArcOfAnEdgeRunsCounterClockwise)
{
    ShapeNet net(3);
    add_segment(&net, 1, 0, 0, 1, QUARTER);
    add_segment(&net, 0, 1, 1, 0, -0.4);
    for (const int id : {1, 2})
        EXPECT_TRUE(make_arc_ready(net.edge(id)));
    const ShapeEdge& left = *net.edge(1);
    EXPECT_NEAR(left.radius, 1, 1e-12);
    EXPECT_NEAR(left.center[0], 0, 1e-12);
    EXPECT_NEAR(left.start_angle, 0, 1e-12);
    EXPECT_NEAR(left.end_angle, std::numbers::pi / 2, 1e-12);
    EXPECT_EQ(left.arc_ready, 1);
    EXPECT_LT(net.edge(2)->start_angle, net.edge(2)->end_angle);
}

TEST_F(ShapeNetTest, PositionsAlongEdges)
{
    ShapeNet net(3);
    add_path(&net, {{0, 0, 3}, {10, 0, 3}});
    add_segment(&net, 0, 1, 1, 0, -QUARTER); // a quarter about the origin, clockwise
    const double at[3] = {4, 0, 0}, on_arc[3] = {std::cos(0.5), std::sin(0.5), 0};
    EXPECT_EQ(net.edge_position(net.edge(1), at, 2), 4);
    EXPECT_EQ(net.edge_position(net.edge(1), at, 3), 5);
    EXPECT_NEAR(net.edge_position(net.edge(2), on_arc, 3), 0.5, 1e-12); // from its far end
    ShapeEdge loose(1, 2, 0);
    EXPECT_EQ(net.edge_position(&loose, at, 3), NO_VALUE);
    net.remove_node(1);
    EXPECT_EQ(net.edge_position(net.edge(1), at, 3), NO_VALUE);
}

// ---- splitting

TEST_F(ShapeNetTest, SplitEdgeStandsAtTheEndOfItsShapes)
{
    ShapeNet net(3);
    add_path(&net, {{0, 0}, {10, 0}, {10, 5}});
    const std::int32_t middle = net.intern_node(4, 0, 0);
    EXPECT_EQ(net.split_edge(1, middle), 3);
    EXPECT_EQ(edges_of(net), "2-3 1-4 4-2");
    EXPECT_EQ(held_by(net.shape(1)->edges), "2 3 4");
    EXPECT_EQ(net.edge(1), nullptr);
    EXPECT_EQ(net.split_edge(3, middle), 0);
    EXPECT_EQ(net.split_edge(3, 1), 0);
    EXPECT_EQ(printed_text(), "");
    expect_sound(net);
}

TEST_F(ShapeNetTest, PiecesOfAnArcKeepItsSide)
{
    for (const double side : {1.0, -1.0}) {
        ShapeNet net(3);
        add_segment(&net, 5, 0, -5, 0, side);
        const std::int32_t id = net.intern_node(0, side * 5, 0);
        EXPECT_EQ(net.split_edge(1, id), 2);
        EXPECT_NEAR(net.edge(2)->bulge, side * QUARTER, 1e-12);
        EXPECT_NEAR(net.edge(3)->bulge, side * QUARTER, 1e-12);
    }
}

TEST_F(ShapeNetTest, PieceBeyondAHalfCircleStaysThat)
{
    ShapeNet net(3);
    add_segment(&net, 5, 0, 0, -5, 1 + std::numbers::sqrt2); // three quarters about the origin
    const std::int32_t id = net.intern_node(-3, -4, 0);
    net.split_edge(1, id);
    const double swept = std::numbers::pi + std::atan2(4, 3);
    EXPECT_NEAR(net.edge(2)->bulge, std::tan(swept / 4), 1e-9);
    EXPECT_NEAR(net.edge(3)->bulge, std::tan((1.5 * std::numbers::pi - swept) / 4), 1e-9);
}

TEST_F(ShapeNetTest, WordsOfSplitting)
{
    ShapeNet net(3);
    add_segment(&net, 0, 0, 10, 0);
    EXPECT_EQ(net.split_edge(5, 1), 0);
    EXPECT_EQ(printed_text(), "[alert] EdgeObj NULL\n");
    EXPECT_EQ(net.split_edge(1, 9), 0);
    EXPECT_EQ(printed_text(), "[alert] NodeObj NULL\n");
    const std::int32_t at = net.intern_node(5, 0, 0);
    net.remove_node(2);
    EXPECT_EQ(net.split_edge(1, at), 0);
    EXPECT_EQ(printed_text(), "[alert] NodeObj2 NULL\n");
    net.remove_node(1);
    EXPECT_EQ(net.split_edge(1, at), 0);
    EXPECT_EQ(printed_text(), "[alert] NodeObj1 NULL\n");
    EXPECT_EQ(live_edges(net), 1);
}

TEST_F(ShapeNetTest, MissingShapeOfASplitEdgeIsTold)
{
    ShapeNet net(3);
    add_segment(&net, 0, 0, 10, 0);
    net.edge(1)->link(77);
    EXPECT_NE(net.split_edge(1, net.intern_node(5, 0, 0)), 0);
    EXPECT_EQ(printed_text(), "Shape Id 77\n");
}

TEST_F(ShapeNetTest, SplitWithoutMemoryKeepsTheEdge)
{
    bool has_told_first = false, has_told_second = false;
    for (int n = 1; n <= 4; ++n) {
        ShapeNet net(3);
        add_segment(&net, 0, 0, 10, 0);
        const std::int32_t at = net.intern_node(5, 0, 0);
        test_heap::fail_at(n);
        const std::int32_t split = net.split_edge(1, at);
        test_heap::fail_at(0);
        const std::string told = printed_text();
        has_told_first = has_told_first || told == "[alert] Edge1 NULL\n";
        has_told_second = has_told_second || told == "[alert] Edge2 NULL\n";
        EXPECT_EQ(split == 0, !told.empty()) << n;
        EXPECT_EQ(net.edge(1) != nullptr, split == 0) << n;
    }
    EXPECT_TRUE(has_told_first);
    EXPECT_TRUE(has_told_second);
}

// ---- cutting

TEST_F(ShapeNetTest, CrossingEdgesAreCutInFour)
{
    ShapeNet net(3);
    add_segment(&net, 0, 0, 10, 10);
    add_segment(&net, 0, 10, 10, 0);
    net.cut_crossings();
    EXPECT_EQ(edges_of(net), "3-5 5-4 1-5 5-2");
    EXPECT_EQ(held_by(net.shape(1)->edges), "5 6");
    expect_sound(net);
}

TEST_F(ShapeNetTest, OverlapInLineIsOneEdgeWithBothShapes)
{
    for (const bool is_turned : {false, true}) {
        ShapeNet net(3);
        add_segment(&net, 0, 0, 10, 0);
        is_turned ? add_segment(&net, 15, 0, 5, 0) : add_segment(&net, 5, 0, 15, 0);
        net.cut_crossings();
        EXPECT_EQ(live_edges(net), 3);
        int shared = 0;
        for (std::int32_t i = 1; i <= net.edges.count; ++i)
            shared += net.edge(i) && held_by(net.edge(i)->shapes).size() == 3;
        EXPECT_EQ(shared, 1);
        expect_sound(net);
    }
}

TEST_F(ShapeNetTest, EdgeInsideAnotherIsCutOutOfIt)
{
    ShapeNet net(3);
    add_segment(&net, 3, 0, 6, 0);
    add_segment(&net, 0, 0, 10, 0);
    net.cut_crossings();
    EXPECT_EQ(live_edges(net), 3);
    EXPECT_EQ(held_by(net.edge(1)->shapes), "1 2");
}

TEST_F(ShapeNetTest, LineThroughAnArcCutsItTwiceWhicheverWayItRuns)
{
    for (const double bulge : {1.0, -1.0}) {
        ShapeNet net(3);
        add_segment(&net, -5, 0, 5, 0, bulge);
        add_segment(&net, -9, -3 * bulge, 9, -3 * bulge);
        net.cut_crossings();
        EXPECT_EQ(live_edges(net), 6);
        for (std::int32_t i = 1; i <= net.edges.count; ++i)
            if (net.edge(i) && net.edge(i)->bulge != 0) {
                make_arc_ready(net.edge(i));
                EXPECT_NEAR(net.edge(i)->radius, 5, 1e-9);
                EXPECT_NEAR(net.edge(i)->center[0], 0, 1e-9);
                EXPECT_NEAR(net.edge(i)->center[1], 0, 1e-9);
            }
        expect_sound(net);
    }
}

// A touching end within the kernel's tolerance is a crossing; one that only the network's tolerance reaches
// isn't.
TEST_F(ShapeNetTest, TJunctionShortOfTheEdgeIsFoundByNearNodes)
{
    ShapeNet net(3);
    net.tolerance = 0.01;
    add_segment(&net, 0, 0, 1000, 0);
    add_segment(&net, 500, 0.005, 500, 50);
    net.cut_crossings();
    EXPECT_EQ(live_edges(net), 2);
    net.cut_at_near_nodes();
    EXPECT_EQ(edges_of(net), "3-4 1-3 3-2");
    expect_sound(net);
}

TEST_F(ShapeNetTest, TJunctionOnTheEdgeIsFoundByBoth)
{
    for (const bool by_nodes : {false, true}) {
        ShapeNet net(3);
        add_segment(&net, 0, 0, 10, 0);
        add_segment(&net, 5, 0, 5, 5);
        by_nodes ? net.cut_at_near_nodes() : net.cut_crossings();
        EXPECT_EQ(edges_of(net), "3-4 1-3 3-2");
    }
}

TEST_F(ShapeNetTest, NearNodesCountInSpaceOnlyInANetworkOfSpace)
{
    for (const int dimensions : {2, 3}) {
        ShapeNet net(dimensions);
        add_path(&net, {{0, 0, 0}, {10, 0, 0}});
        add_path(&net, {{5, 0, 2}, {5, 5, 2}});
        net.cut_at_near_nodes();
        EXPECT_EQ(live_edges(net), dimensions == 2 ? 3 : 2);
    }
}

TEST_F(ShapeNetTest, NodeOnTheChordOfAnArcDoesNotCutIt)
{
    ShapeNet net(3);
    add_segment(&net, -5, 0, 5, 0, 1);
    add_segment(&net, 0, 0, 0, 3);
    net.cut_at_near_nodes();
    EXPECT_EQ(live_edges(net), 2);
}

TEST_F(ShapeNetTest, OutlineWithAnArcIsCutAtItsHeight)
{
    ShapeNet net(3);
    add_path(&net, {{0, 0, 5}, {10, 0, 5, 1}, {10, 10, 5}, {0, 10, 5}}, true);
    add_path(&net, {{-5, 5, 5}, {20, 5, 5}});
    net.cut_crossings();
    EXPECT_EQ(net.nodes.count, 8); // two crossings, and none where line and arc share an end
    for (std::int32_t i = 1; i <= net.nodes.count; ++i)
        EXPECT_EQ(net.node(i)->z, 5) << i;
    expect_sound(net);
}

TEST_F(ShapeNetTest, CrossingLiesOnTheFirstEdgeAlsoWhereThatIsASlopingArc)
{
    for (const double side : {1.0, -1.0}) {
        ShapeNet net(3);
        add_path(&net, {{5, 0, 10, side}, {-5, 0, 30}});
        add_path(&net, {{0, -20, 7}, {0, 20, 7}});
        double at[3], other[3];
        ASSERT_EQ(net.edge_crossings(net.edge(1), net.edge(2), at, other), 1);
        EXPECT_NEAR(at[2], 20, 1e-9);
        ASSERT_EQ(net.edge_crossings(net.edge(2), net.edge(1), at, other), 1);
        EXPECT_EQ(at[2], 7);
    }
}

// Their centre is so far away that places on them would come out beside them, and cutting would go on and on.
TEST_F(ShapeNetTest, ArcsFlatterThanTheToleranceMeetAsTheirChordsDo)
{
    ShapeNet net(3);
    add_segment(&net, 0, 0, 10, 0, 1e-9);
    add_segment(&net, 4, -5, 4, 5, -1e-12);
    add_segment(&net, 7, 0, 7, 5, 1e-300);
    net.cut_at_near_nodes();
    EXPECT_EQ(live_edges(net), 4);
    net.cut_crossings();
    EXPECT_EQ(live_edges(net), 6);
    for (std::int32_t i = 1; i <= net.edges.count; ++i)
        if (net.edge(i)) {
            EXPECT_NE(net.edge(i)->bulge, 0); // a share of the arc's
            EXPECT_LT(std::fabs(net.edge(i)->bulge), 1e-9);
        }
    EXPECT_EQ(net.nodes.count, 7);
    EXPECT_NEAR(net.node(7)->x, 4, 1e-9);
    EXPECT_NEAR(net.node(7)->y, 0, 1e-9);
}

TEST_F(ShapeNetTest, FlatArcIsCutInTheOrderOfItsChord)
{
    for (const double bulge : {-1e-12, 1e-12, -1e-300, 1e-300}) {
        ShapeNet net(3);
        add_segment(&net, 3, 0, 6, 0, bulge);
        add_segment(&net, 0, 0, 10, 0, bulge);
        net.cut_crossings();
        std::vector<double> lengths;
        for (std::int32_t i = 1; i <= net.edges.count; ++i)
            if (const ShapeEdge* e = net.edge(i))
                lengths.push_back(net.node(e->node2)->x - net.node(e->node1)->x);
        std::sort(lengths.begin(), lengths.end());
        EXPECT_EQ(lengths, (std::vector<double>{3, 3, 4})) << bulge;
        const double at[3] = {7, 0, 0};
        EXPECT_EQ(net.edge_position(net.edge(1), at, 3), 4);
    }
}

TEST_F(ShapeNetTest, PieceOfAnArcWithoutExtentIsStraight)
{
    ShapeNet net(3);
    add_path(&net, {{5, 0, 0, 1}, {-5, 0, 0}});
    net.split_edge(1, net.intern_node(-5 + 1e-14, 0, 3));
    EXPECT_EQ(edges_of(net), "1-3(1) 3-2");
}

TEST_F(ShapeNetTest, EdgesAtManyHeightsOverOnePlaceComeToAnEnd)
{
    ShapeNet net(3);
    for (int i = 0; i < 12; ++i)
        add_path(&net, {{0, 0, i * 1.0}, {std::cos(i * 0.5) * 5, std::sin(i * 0.5) * 5, i % 3 * 2.0}});
    for (int i = 0; i < 6; ++i)
        add_path(&net, {{-3.0 + i, -9, 4.0 - i}, {3.0 - i, 9, i * 1.0, 0.3}});
    net.cut_crossings();
    net.cut_at_near_nodes();
    expect_sound(net);
}

// ---- faces

TEST_F(ShapeNetTest, InnerFacesRunCounterClockwiseAndTheOuterOneIsMarked)
{
    ShapeNet net(3);
    add_path(&net, {{0, 0}, {4, 0}, {4, 4}, {0, 4}}, true);
    EXPECT_EQ(traced_faces(&net), "! 4,0 0,0 0,4 4,4 4,0\n0,0 4,0 4,4 0,4 0,0\n");
    EXPECT_EQ(net.edge(1)->right_shape, 1);
    EXPECT_EQ(net.edge(1)->left_shape, 2);
    EXPECT_EQ(traced_faces(&net), ""); // all sides are taken
}

TEST_F(ShapeNetTest, OverlayYieldsTheFacesBetweenLines)
{
    ShapeNet net(3);
    add_path(&net, {{0, 0}, {4, 0}, {4, 4}, {0, 4}}, true);
    add_segment(&net, 2, 0, 2, 4);
    net.cut_crossings();
    const std::string faces = traced_faces(&net);
    EXPECT_EQ(std::count(faces.begin(), faces.end(), '\n'), 3);
    EXPECT_EQ(std::count(faces.begin(), faces.end(), '!'), 1);
}

TEST_F(ShapeNetTest, ArcsOfAFaceKeepTheirSide)
{
    ShapeNet net(3);
    add_path(&net, {{0, 0, 0, 0.5}, {4, 0}, {4, 4, 0, -0.25}, {0, 4}}, true);
    EXPECT_EQ(traced_faces(&net), "! 4,0(-0.5) 0,0 0,4(0.25) 4,4 4,0\n0,0(0.5) 4,0 4,4(-0.25) 0,4 0,0\n");
}

TEST_F(ShapeNetTest, WalkIntoADanglingEdgeFails)
{
    ShapeNet net(3);
    add_path(&net, {{0, 0}, {4, 0}, {4, 4}, {0, 4}}, true);
    add_segment(&net, 0, 0, 1, 1);
    ShapeObj* face = net.trace_face(2, 9, true);
    EXPECT_EQ(face, nullptr);
    for (int i = 1; i <= 4; ++i) {
        EXPECT_EQ(net.edge(i)->right_shape, 0);
        EXPECT_EQ(net.edge(i)->left_shape, 0);
    }
    EXPECT_EQ(net.trace_face(99, 9, true), nullptr);
}

TEST_F(ShapeNetTest, FaceIsTracedFromTheLowerNodeForward)
{
    ShapeNet net(3);
    add_path(&net, {{0, 0}, {4, 0}, {4, 4}}, true);
    ShapeObj* face = net.trace_face(2, 5, true);
    ASSERT_TRUE(face);
    EXPECT_EQ(held_by(face->edges), "2 3 1");
    EXPECT_EQ(net.edge(2)->right_shape, 5);
    EXPECT_EQ(net.edge(3)->left_shape, 5); // walked from node 3 to node 1
    const double inside[3] = {3, 1, 0}, outside[3] = {1, 3, 0}, beside[3] = {4 + 5e-7, 1, 0};
    EXPECT_EQ(net.point_in_face(face, inside), 1);
    EXPECT_EQ(net.point_in_face(face, outside), 0);
    EXPECT_EQ(net.point_in_face(face, beside), 2);
    EXPECT_EQ(net.point_in_face(nullptr, inside), 0);
    delete face;
    EXPECT_EQ(net.trace_face(1, 6, true), nullptr); // runs into the sides of the first
}

// A loop at the end of a stem inside a square: the stem is walked there and back.
TEST_F(ShapeNetTest, StemWithALoopIsLeftOutOfTheFaceRoundIt)
{
    ShapeNet net(3);
    add_path(&net, {{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true);
    add_segment(&net, 0, 0, 3, 3);
    add_path(&net, {{3, 3}, {6, 3}, {6, 6}, {3, 6}}, true);
    ShapeObj* face = net.trace_face(2, 1, true);
    ASSERT_TRUE(face);
    EXPECT_EQ(held_by(face->edges), "2 3 4 1");
    pg_node* chain = net.face_to_chain(face);
    EXPECT_EQ(text_of(chain), "10,0 10,10 0,10 0,0 10,0");
    pl_free_nodes(chain);
    delete face;
    EXPECT_EQ(net.edge(5)->left_shape, 0);
    EXPECT_EQ(net.edge(5)->right_shape, 0);
    EXPECT_EQ(net.edge(6)->left_shape, 0);
}

TEST_F(ShapeNetTest, DoubledVerticesDoNotStopAFace)
{
    ShapeNet net(3);
    add_path(&net, {{0, 0}, {4, 0}, {4, 0}, {4, 4}, {0, 0}}, true);
    net.cut_crossings();
    EXPECT_EQ(traced_faces(&net), "! 4,0 0,0 4,4 4,0\n0,0 4,0 4,4 0,0\n");
}

TEST_F(ShapeNetTest, FaceOfOneEdgeGivesItsTwoEnds)
{
    ShapeNet net(3);
    add_segment(&net, 0, 0, 4, 0, 0.5);
    pg_node* chain = net.face_to_chain(net.shape(1));
    EXPECT_EQ(text_of(chain), "0,0(0.5) 4,0");
    pl_free_nodes(chain);
    EXPECT_EQ(net.face_to_chain(nullptr), nullptr);
    const ShapeObj empty;
    EXPECT_EQ(net.face_to_chain(&empty), nullptr);
}

TEST_F(ShapeNetTest, FirstEdgeOfAChainIsTurnedToTheSecond)
{
    ShapeNet net(3);
    add_path(&net, {{4, 0, 0, -0.5}, {0, 0}});
    add_path(&net, {{8, 0, 0, 0.25}, {4, 0}});
    ShapeObj shape;
    shape.link(1);
    shape.link(2);
    pg_node* chain = net.face_to_chain(&shape);
    EXPECT_EQ(text_of(chain), "0,0(0.5) 4,0(-0.25) 8,0");
    pl_free_nodes(chain);
}

} // namespace
