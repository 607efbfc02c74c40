#include <cmath>
#include <limits>
#include <memory>

#include "common/tolerances.h"
#include "tests/topology/collection.h"
#include "tests/topology/slot.h"
#include "topology/objects.h"

namespace
{

using TopoObjects = Collection;
using object_ptr = std::unique_ptr<TopoObject>;

TEST_F(TopoObjects, BaseHasNoKeyAndNotesNothing)
{
    TopoObject object(2);
    object.set(0, 5);
    object.link(3);
    object.unlink(3);
    EXPECT_EQ(object.get(0), NO_VALUE);
    EXPECT_EQ(object.get(-1), NO_VALUE);
    EXPECT_EQ(object.id, 0);
    EXPECT_EQ(object.deleted, 0);
    const object_ptr copy(object.clone());
    EXPECT_EQ(copy->dimensions, 2);
    EXPECT_EQ(copy->get(0), NO_VALUE);
}

TEST_F(TopoObjects, SquaredDistanceCountsTheFirstValues)
{
    const NodeObj a(1, 2, 3), b(4, 6, 15);
    EXPECT_EQ(a.squared_distance(&b, 0), 0);
    EXPECT_EQ(a.squared_distance(&b, 1), 9);
    EXPECT_EQ(a.squared_distance(&b, 2), 25);
    EXPECT_EQ(a.squared_distance(&b, 3), 169);
    EXPECT_EQ(a.squared_distance(&b, 4), 169);
    EXPECT_EQ(a.squared_distance(nullptr, 3), NO_VALUE);
}

TEST_F(TopoObjects, MatchesBelowAMillionthInEachValue)
{
    const NodeObj a(0, 0, 0);
    const NodeObj near(0.9e-6, -0.9e-6, 0.9e-6), at(1e-6, 0, 0), far(0, 0, 2e-6);
    EXPECT_TRUE(a.matches(&near));
    EXPECT_FALSE(a.matches(&at));
    EXPECT_FALSE(a.matches(&far));
    EXPECT_FALSE(a.matches(nullptr));
    NodeObj flat(0, 0, 0);
    flat.dimensions = 2;
    EXPECT_TRUE(flat.matches(&far));
    EXPECT_TRUE(TriangleObj().matches(&a)); // no values, nothing that differs
}

TEST_F(TopoObjects, NodeServesItsCoordinates)
{
    NodeObj node;
    EXPECT_EQ(node.dimensions, 3);
    for (int i = -1; i <= 3; ++i)
        node.set(i, 10 + i);
    EXPECT_EQ(node.x, 10);
    EXPECT_EQ(node.y, 11);
    EXPECT_EQ(node.z, 12);
    EXPECT_EQ(node.get(0), 10);
    EXPECT_EQ(node.get(1), 11);
    EXPECT_EQ(node.get(2), 12);
    EXPECT_EQ(node.get(3), NO_VALUE);
    EXPECT_EQ(node.get(-1), NO_VALUE);
}

TEST_F(TopoObjects, NodeNotesItsEdges)
{
    NodeObj node;
    node.link(4);
    node.link(9);
    node.link(4);
    EXPECT_EQ(node.edges.count, 3);
    node.unlink(4);
    EXPECT_EQ(node.edges.get(1), 0);
    EXPECT_EQ(node.edges.get(3), 4);
    node.unlink(77);
    EXPECT_EQ(node.edges.live_count(), 2);
}

TEST_F(TopoObjects, LastEdgeOfANodeStaysNoted)
{
    NodeObj node;
    node.link(4);
    node.link(9);
    node.unlink(9);
    EXPECT_EQ(node.edges.find(9), 2);
}

TEST_F(TopoObjects, CloneOfANodeHasItsPlaceAlone)
{
    NodeObj node(1, 2, 3);
    node.id = 8;
    node.mark = 1;
    node.deleted = 1;
    node.link(4);
    const object_ptr copy(node.clone());
    EXPECT_EQ(copy->get(0), 1);
    EXPECT_EQ(copy->get(1), 2);
    EXPECT_EQ(copy->get(2), 3);
    EXPECT_EQ(copy->id, 0);
    EXPECT_EQ(copy->deleted, 0);
    const NodeObj* as_node = dynamic_cast<NodeObj*>(copy.get());
    ASSERT_TRUE(as_node);
    EXPECT_EQ(as_node->edges.count, 0);
    EXPECT_EQ(as_node->mark, 0);
}

TEST_F(TopoObjects, KeyOfAnEdgeHasNoDirection)
{
    const EdgeKey there(3, 8, 0.5), back(8, 3, -0.5);
    for (const EdgeKey* key : {&there, &back}) {
        EXPECT_EQ(key->get(0), 3);
        EXPECT_EQ(key->get(1), 8);
        EXPECT_EQ(key->get(2), 0.5);
        EXPECT_EQ(key->get(3), NO_VALUE);
        EXPECT_EQ(key->get(-1), NO_VALUE);
    }
    EXPECT_TRUE(there.matches(&back));
    EXPECT_EQ(there.squared_distance(&back, 3), 0);
}

TEST_F(TopoObjects, BulgeOfAnEdgeFromANodeToItselfIsTurned)
{
    EXPECT_EQ(EdgeKey(5, 5, 0.25).get(2), -0.25);
}

TEST_F(TopoObjects, ArcsOnBothSidesOfAChordDiffer)
{
    const EdgeKey left(1, 2, 0.5), right(1, 2, -0.5);
    EXPECT_FALSE(left.matches(&right));
}

TEST_F(TopoObjects, EdgeStoresNodesAsWholeNumbers)
{
    EdgeKey key;
    key.set(0, 9.9);
    key.set(1, -2.9);
    key.set(2, 0.75);
    key.set(3, 1);
    key.set(-1, 1);
    EXPECT_EQ(key.node1, 9);
    EXPECT_EQ(key.node2, -2);
    EXPECT_EQ(key.bulge, 0.75);
    key.set(0, 1e300);
    key.set(1, -1e300);
    EXPECT_EQ(key.node1, std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(key.node2, std::numeric_limits<std::int32_t>::min());
    key.set(0, NAN);
    EXPECT_EQ(key.node1, 0);
}

TEST_F(TopoObjects, CloneOfAnEdgeIsAPlainKey)
{
    EdgeObj edge(8, 3, 0.5);
    edge.left = 4;
    ShapeEdge shape_edge(8, 3, 0.5);
    shape_edge.link(6);
    for (const EdgeKey* original : {static_cast<EdgeKey*>(&edge), static_cast<EdgeKey*>(&shape_edge)}) {
        const object_ptr copy(original->clone());
        const EdgeKey* key = dynamic_cast<EdgeKey*>(copy.get());
        ASSERT_TRUE(key);
        EXPECT_EQ(key->node1, 8);
        EXPECT_EQ(key->node2, 3);
        EXPECT_EQ(key->bulge, 0.5);
        EXPECT_TRUE(key->matches(original));
        EXPECT_FALSE(dynamic_cast<EdgeObj*>(copy.get()) || dynamic_cast<ShapeEdge*>(copy.get()));
    }
}

TEST_F(TopoObjects, PlainKeyNotesNothing)
{
    EdgeKey key(1, 2, 0);
    key.link(5);
    key.unlink(5);
    EXPECT_EQ(key.get(0), 1);
}

TEST_F(TopoObjects, TrianglesGoToTheSideOfTheirSign)
{
    EdgeObj edge;
    edge.link(7);
    EXPECT_EQ(edge.right, 7);
    EXPECT_EQ(edge.left, 0);
    edge.link(-9);
    EXPECT_EQ(edge.left, -9);
    edge.link(1);
    EXPECT_EQ(edge.right, 1);
    edge.unlink(50); // whichever triangle it is
    EXPECT_EQ(edge.right, 0);
    EXPECT_EQ(edge.left, -9);
    edge.unlink(0);
    EXPECT_EQ(edge.left, 0);
    edge.right = 3;
    edge.link(0);
    EXPECT_EQ(edge.left, 0);
    EXPECT_EQ(edge.right, 3);
}

TEST_F(TopoObjects, EdgeNotesItsShapes)
{
    ShapeEdge edge;
    edge.link(12);
    edge.link(13);
    EXPECT_EQ(edge.shapes.count, 2);
    EXPECT_EQ(edge.shapes.get(2)->id, 13);
    EXPECT_EQ(edge.shapes.find(13), 2);
    edge.unlink(13);
    EXPECT_EQ(edge.shapes.get(2), nullptr);
    EXPECT_EQ(edge.shapes.count, 2);
    edge.unlink(99);
    EXPECT_EQ(edge.shapes.find(12), 1);
    EXPECT_EQ(printed_text(), "");
}

TEST_F(TopoObjects, NegativeShapeIsToldAndNoted)
{
    ShapeEdge edge;
    edge.link(-3);
    EXPECT_EQ(printed_text(), "Connects to -3\n");
    EXPECT_EQ(edge.shapes.find(-3), 1);
    edge.link(0);
    EXPECT_EQ(printed_text(), "");
}

TEST_F(TopoObjects, ShapeEdgeStartsUntracedWithoutArc)
{
    const ShapeEdge edge(1, 2, 0.5);
    EXPECT_EQ(edge.arc_ready, 0);
    EXPECT_EQ(edge.left_shape, 0);
    EXPECT_EQ(edge.right_shape, 0);
    EXPECT_EQ(edge.radius, 0);
    EXPECT_EQ(edge.center[2], 0);
    EXPECT_EQ(edge.owner, nullptr);
}

TEST_F(TopoObjects, ShapeIsVisibleAndNotesItsEdges)
{
    ShapeObj shape;
    EXPECT_EQ(shape.visible, 1);
    EXPECT_EQ(shape.closed, 0);
    EXPECT_EQ(shape.entity[0], 0);
    EXPECT_EQ(shape.get(0), NO_VALUE);
    shape.link(-5);
    shape.link(6);
    EXPECT_EQ(shape.edges.get(1)->id, -5);
    shape.unlink(-5);
    EXPECT_EQ(shape.edges.get(1), nullptr);
    EXPECT_EQ(shape.edges.find(6), 2);
    EXPECT_EQ(printed_text(), "");
}

TEST_F(TopoObjects, ClonesOfShapesAndTrianglesAreThoseOfTheBase)
{
    ShapeObj shape;
    shape.link(6);
    TriangleObj triangle;
    triangle.edge[0] = -4;
    const object_ptr a(shape.clone()), b(triangle.clone());
    EXPECT_FALSE(dynamic_cast<ShapeObj*>(a.get()));
    EXPECT_FALSE(dynamic_cast<TriangleObj*>(b.get()));
    EXPECT_EQ(a->get(0), NO_VALUE);
}

TEST_F(TopoObjects, LinkWithoutMemoryNotesNothing)
{
    for (int n = 1; n <= 2; ++n) {
        ShapeEdge edge;
        test_heap::fail_at(n);
        edge.link(4);
        test_heap::fail_at(0);
        EXPECT_EQ(edge.shapes.count, 0);
    }
    NodeObj node;
    test_heap::fail_at(1);
    node.link(4);
    EXPECT_EQ(node.edges.count, 0);
    test_heap::fail_at(1);
    EXPECT_EQ(node.clone(), nullptr);
}

#ifdef ZENT_SLOTS_CAN_BE_READ
TEST_F(TopoObjects, OperationsStandInTheirOrder)
{
    EXPECT_EQ(slot_of(&TopoObject::get), 1);
    EXPECT_EQ(slot_of(&TopoObject::set), 2);
    EXPECT_EQ(slot_of(&TopoObject::link), 3);
    EXPECT_EQ(slot_of(&TopoObject::unlink), 4);
    EXPECT_EQ(slot_of(&TopoObject::clone), 5);
}
#endif

} // namespace
