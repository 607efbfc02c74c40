#include "tests/topology/surface_fixture.h"

namespace
{

TEST_F(Surface, AddedObjectsGetTheirIdAndOwner)
{
    SurfaceNet net;
    auto* node = new NodeObj(1, 2, 3);
    ASSERT_EQ(net.find_node(node), 0);
    EXPECT_EQ(net.add_node(node), 1);
    EXPECT_EQ(node->id, 1);
    EXPECT_EQ(node->owner, &net);
    const double other[3] = {4, 5, 6};
    EXPECT_EQ(net.intern_node(other), 2);
    auto* edge = new EdgeObj(1, 2, 0);
    ASSERT_EQ(net.edges.find(edge), 0);
    EXPECT_EQ(net.add_edge(edge), 1);
    EXPECT_EQ(edge->id, 1);
    EXPECT_EQ(edge->owner, &net);
    EXPECT_EQ(net.node(1)->edges.find(1), 1);
    EXPECT_EQ(net.node(2)->edges.find(1), 1);
    EXPECT_EQ(net.add_node(nullptr), 0);
    EXPECT_EQ(net.add_edge(nullptr), 0);
    EXPECT_EQ(net.add_triangle(nullptr), 0);
}

TEST_F(Surface, NodesAreInternedWithinTheTolerance)
{
    SurfaceNet net;
    const double a[3] = {1, 2, 3}, near[3] = {1 + 9e-7, 2, 3 - 9e-7}, higher[3] = {1, 2, 3.1};
    EXPECT_EQ(net.intern_node(a), 1);
    EXPECT_EQ(net.intern_node(near), 1);
    EXPECT_EQ(net.intern_node(higher), 2);
}

// Twenty nodes on each of two lines, between which their index splits at 1.
TEST_F(Surface, NodesAreInternedFromBothSidesOfASplit)
{
    SurfaceNet net;
    for (int i = 0; i < 20; ++i)
        for (const double x : {0.0, 1.0, 2.0}) {
            const double at[3] = {x * 1000, i * 0.1, 0};
            net.intern_node(at);
        }
    const int count = net.nodes.count;
    for (int i = 0; i < 20; ++i)
        for (const double off : {-1e-9, 1e-9}) {
            const double at[3] = {1000 + off, i * 0.1, 0};
            net.intern_node(at);
        }
    EXPECT_EQ(net.nodes.count, count);
}

TEST_F(Surface, AnEdgeIsOneFromBothEnds)
{
    SurfaceNet net;
    const std::int32_t id = add_line(&net, {{0, 0, 0}}, {{1, 0, 0}});
    EXPECT_EQ(net.intern_edge(2, 1, 0), id);
    EXPECT_EQ(net.edges.count, 1);
}

TEST_F(Surface, FindEdgeLooksAtTheLowerNode)
{
    SurfaceNet net;
    add_line(&net, {{0, 0, 0}}, {{1, 0, 0}});
    add_line(&net, {{1, 0, 0}}, {{2, 0, 0}});
    const EdgeKey there(2, 1, 0), missing(1, 3, 0), unknown(7, 9, 0);
    EXPECT_EQ(net.find_edge(&there), 1);
    EXPECT_EQ(net.find_edge(&missing), 0);
    EXPECT_EQ(net.find_edge(&unknown), 0);
    // The last id of a node's list can't be taken away, but is that of no edge.
    net.remove_edge(1);
    EXPECT_EQ(net.find_edge(&there), 0);
    EXPECT_EQ(net.node(1)->edges.get(1), 1);
}

TEST_F(Surface, ConnectSignsIdsByTheDirectionOfTheEdge)
{
    SurfaceNet net;
    const double p[3] = {0, 0, 0}, q[3] = {1, 0, 0};
    net.intern_node(p);
    net.intern_node(q);
    TriangleObj first, second;
    EXPECT_EQ(net.connect(1, 2, 0, nullptr, 0), 1);
    EXPECT_EQ(net.connect(2, 1, 0, nullptr, 0), 1);
    EXPECT_EQ(net.connect(1, 2, 0, &first, 5), 1);
    EXPECT_EQ(net.edge(1)->right, 5);
    EXPECT_EQ(net.edge(1)->left, 0);
    EXPECT_EQ(net.connect(2, 1, 0, &second, 6), -1);
    EXPECT_EQ(net.edge(1)->left, -6);
    EXPECT_EQ(net.edges.count, 1);
}

TEST_F(Surface, NewTriangleWalksItsEdges)
{
    SurfaceNet net;
    const std::int32_t ab = add_line(&net, {{0, 0, 0}}, {{1, 0, 0}});
    const std::int32_t bc = add_line(&net, {{1, 0, 0}}, {{1, 1, 0}});
    const std::int32_t ca = add_line(&net, {{1, 1, 0}}, {{0, 0, 0}});
    ASSERT_EQ(net.new_triangle(ab, bc, ca), 1);
    const TriangleObj* made = net.triangle(1);
    EXPECT_EQ(made->edge[0], ab);
    EXPECT_EQ(made->edge[1], bc);
    EXPECT_EQ(made->edge[2], -ca);
    EXPECT_EQ(net.edge(ab)->right, 1);
    EXPECT_EQ(net.edge(bc)->right, 1);
    EXPECT_EQ(net.edge(ca)->left, -1);
    // The other way round.
    ASSERT_EQ(net.new_triangle(ca, bc, ab), 2);
    EXPECT_EQ(net.triangle(2)->edge[0], ca);
    EXPECT_EQ(net.triangle(2)->edge[1], -bc);
    EXPECT_EQ(net.triangle(2)->edge[2], -ab);
    EXPECT_EQ(net.edge(ab)->left, -2);
    EXPECT_EQ(net.edge(ca)->right, 2);
    EXPECT_EQ(net.new_triangle(ab, bc, 99), 0);
    EXPECT_EQ(net.triangles.count, 2);
}

TEST_F(Surface, RemovingATriangleClearsItsSidesOnly)
{
    SurfaceNet net;
    add_triangle(&net, {{0, 0, 0}}, {{1, 0, 0}}, {{1, 1, 0}});
    add_triangle(&net, {{0, 0, 0}}, {{1, 1, 0}}, {{0, 1, 0}});
    const EdgeKey diagonal(1, 3, 0);
    const std::int32_t shared = net.edges.look(&diagonal);
    ASSERT_NE(shared, 0);
    EXPECT_EQ(net.edge(shared)->left, -1);
    EXPECT_EQ(net.edge(shared)->right, 2);
    net.remove_triangle(1);
    EXPECT_EQ(net.triangle(1), nullptr);
    EXPECT_EQ(net.edge(shared)->left, 0);
    EXPECT_EQ(net.edge(shared)->right, 2);
    net.remove_triangle(1);
    net.remove_triangle(77);
    EXPECT_EQ(live_count(net.triangles), 1);
}

// Two triangles laid on one side of an edge: the second took the side, and keeps it.
TEST_F(Surface, RemovingATriangleLeavesTheSideThatAnotherTook)
{
    SurfaceNet net;
    add_triangle(&net, {{0, 0, 0}}, {{1, 0, 0}}, {{1, 1, 0}});
    add_triangle(&net, {{0, 0, 0}}, {{1, 0, 0}}, {{0, 1, 0}});
    const EdgeKey base(1, 2, 0);
    const std::int32_t shared = net.edges.look(&base);
    EXPECT_EQ(net.edge(shared)->right, 2);
    net.remove_triangle(1);
    EXPECT_EQ(net.edge(shared)->right, 2);
}

TEST_F(Surface, ATriangleExistsWhenAllEdgesNameIt)
{
    SurfaceNet net;
    add_triangle(&net, {{0, 0, 0}}, {{1, 0, 0}}, {{1, 1, 0}});
    const std::int32_t apart = add_line(&net, {{1, 1, 0}}, {{0, 1, 0}});
    EXPECT_EQ(net.triangle_exists(1, 2, 3), 1);
    EXPECT_EQ(net.triangle_exists(3, 1, 2), 1);
    EXPECT_EQ(net.triangle_exists(1, 2, apart), 0);
    EXPECT_EQ(net.triangle_exists(1, 2, 99), 0);
    EXPECT_EQ(net.triangle_exists(0, 0, 0), 0);
}

TEST_F(Surface, TheSameThreePointsMakeOneTriangle)
{
    SurfaceNet net;
    EXPECT_EQ(add_triangle(&net, {{0, 0, 0}}, {{1, 0, 0}}, {{1, 1, 0}}), 1);
    EXPECT_EQ(add_triangle(&net, {{1, 1, 0}}, {{0, 0, 0}}, {{1, 0, 0}}), 1);
    EXPECT_EQ(net.triangles.count, 1);
    EXPECT_EQ(net.edges.count, 3);
    EXPECT_EQ(add_triangle(&net, {{0, 0, 0}}, {{0, 0, 0}}, {{1, 0, 0}}), 0);
    EXPECT_EQ(net.triangles.count, 1);
}

TEST_F(Surface, SplittingAnEdgeTakesItsTrianglesAway)
{
    SurfaceNet net;
    add_triangle(&net, {{0, 0, 0}}, {{2, 0, 0}}, {{2, 2, 0}});
    add_triangle(&net, {{0, 0, 0}}, {{2, 2, 0}}, {{0, 2, 0}});
    const double middle[3] = {1, 1, 0};
    const std::int32_t at = net.intern_node(middle);
    const EdgeKey diagonal(1, 3, 0);
    const std::int32_t cut = net.edges.look(&diagonal);
    EXPECT_EQ(net.split_edge(cut, 1), 0); // an end
    EXPECT_EQ(net.split_edge(99, at), 0);
    EXPECT_EQ(net.split_edge(cut, 99), 0); // no such node
    EXPECT_EQ(live_count(net.triangles), 2);
    const std::int32_t first = net.split_edge(cut, at);
    ASSERT_NE(first, 0);
    EXPECT_EQ(net.edge(first)->get(0), 1);
    EXPECT_EQ(net.edge(first)->get(1), at);
    EXPECT_EQ(net.edge(cut), nullptr);
    EXPECT_EQ(live_count(net.triangles), 0);
    for (std::int32_t id = 1; id <= net.edges.count; ++id)
        if (net.edge(id)) {
            EXPECT_EQ(net.edge(id)->left, 0);
            EXPECT_EQ(net.edge(id)->right, 0);
        }
    EXPECT_EQ(live_count(net.edges), 6);
}

TEST_F(Surface, CopiesHaveTheEdgesAndTheMarksButNoTriangles)
{
    SurfaceNet net;
    add_triangle(&net, {{0, 0, 1}}, {{1, 0, 2}}, {{1, 1, 3}});
    add_line(&net, {{5, 5, 5}}, {{6, 5, 5}});
    net.remove_edge(4);
    net.node(2)->mark = 1;
    SurfaceNet* copy = net.copy_edges();
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->nodes.count, 3);
    EXPECT_EQ(copy->edges.count, 3);
    EXPECT_EQ(copy->triangles.count, 0);
    EXPECT_EQ(copy->node(2)->mark, 1);
    EXPECT_EQ(copy->node(1)->mark, 0);
    EXPECT_EQ(copy->node(2)->z, 2);
    EXPECT_EQ(copy->node(2)->owner, copy);
    delete copy;
}

} // namespace
