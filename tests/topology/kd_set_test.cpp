#include "topology/kd_set.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "common/tolerances.h"
#include "tests/growth.h"
#include "tests/spatial/kd_dump.h"
#include "tests/topology/collection.h"
#include "topology/objects.h"

namespace
{

using set_ptr = std::unique_ptr<KdSet>;

class KdSetTest : public Collection
{
protected:
    // As networks do it.
    int intern(TopoObject* object)
    {
        if (const int id = set->find(object)) {
            delete object;
            return id;
        }
        object->id = set->add(object);
        return object->id;
    }
    int look(double x, double y = 0, double z = 0)
    {
        NodeObj node(x, y, z);
        return set->find(&node);
    }
    std::vector<int> around(double x, double radius)
    {
        const NodeObj middle(x, 0, 0);
        const set_ptr near(set->within(&middle, radius));
        std::vector<int> ids;
        for (int i = 1; i <= near->count; ++i)
            ids.push_back(near->get(i)->id);
        return ids;
    }
    void renew(int dimensions, int leaf_capacity) { set.reset(new KdSet(dimensions, leaf_capacity)); }
    void TearDown() override
    {
        set.reset();
        Collection::TearDown();
    }

    set_ptr set{new KdSet(3, 10)};
};

using ids = std::vector<int>;

TEST_F(KdSetTest, AMemberThatMovedIsFoundWhereItLiesNow)
{
    renew(3, 2);
    for (int i = 0; i < 40; ++i)
        intern(new NodeObj(i, 0, 0));
    static_cast<NodeObj*>(set->get(3))->x = 30.5;
    const NodeObj there(30.5, 0, 0);
    EXPECT_EQ(set->look(&there), 0);
    EXPECT_TRUE(set->note_move(3));
    EXPECT_TRUE(set->note_move(3));
    EXPECT_EQ(set->look(&there), 3);
    const NodeObj before(2, 0, 0);
    EXPECT_EQ(set->look(&before), 0);
    ids near = around(30.5, 0.6);
    std::sort(near.begin(), near.end());
    EXPECT_EQ(near, ids({3, 31, 32}));
    EXPECT_EQ(intern(new NodeObj(2, 0, 0)), 41);
    EXPECT_FALSE(set->note_move(42));
}

TEST_F(KdSetTest, ObjectIsKnownAgainByItsKey)
{
    EXPECT_EQ(look(1, 2, 3), 0);
    EXPECT_EQ(intern(new NodeObj(1, 2, 3)), 1);
    EXPECT_EQ(intern(new NodeObj(4, 5, 6)), 2);
    EXPECT_EQ(intern(new NodeObj(1, 2, 3)), 1);
    EXPECT_EQ(look(4, 5, 6), 2);
    EXPECT_EQ(set->count, 2);
    EXPECT_EQ(set->dimensions, 3);
    EXPECT_EQ(set->leaf_capacity, 10);
}

TEST_F(KdSetTest, OneKeyReachesAMillionthInEachValue)
{
    intern(new NodeObj(0, 0, 0));
    EXPECT_EQ(look(1e-6, -1e-6, 1e-6), 1);
    EXPECT_EQ(look(0, 1.0000001e-6, 0), 0);
}

TEST_F(KdSetTest, LookLeavesTheNextIdInItsLeaf)
{
    EXPECT_EQ(look(5), 0);
    EXPECT_EQ(dump(set->root), "[1 ]");
    EXPECT_EQ(set->count, 0);
    EXPECT_EQ(set->get(1), nullptr);
    EXPECT_EQ(set->add(new NodeObj(5, 0, 0)), 1);
    EXPECT_EQ(dump(set->root), "[1 ]");
    EXPECT_EQ(look(5), 1);
}

TEST_F(KdSetTest, RepeatedLookFindsNothingAndLeavesOneId)
{
    EXPECT_EQ(look(5), 0);
    EXPECT_EQ(look(5), 0);
    EXPECT_EQ(look(7), 0);
    EXPECT_EQ(dump(set->root), "[1 ]");
}

TEST_F(KdSetTest, ObjectAddedWithoutALookIsNotInTheIndex)
{
    EXPECT_EQ(set->add(new NodeObj(5, 0, 0)), 1);
    EXPECT_EQ(dump(set->root), "[]");
    EXPECT_EQ(look(5), 0);
    EXPECT_EQ(around(5, 1), ids{});
    EXPECT_EQ(set->get(1)->get(0), 5);
}

TEST_F(KdSetTest, IdLeftByALookStandsForTheObjectThatIsAdded)
{
    renew(1, 2);
    for (double x : {0, 10, 1})
        intern(new NodeObj(x, 0, 0));
    EXPECT_EQ(look(9), 0); // 4, in the high leaf
    EXPECT_EQ(intern(new NodeObj(-5, 0, 0)), 4);
    EXPECT_EQ(dump(set->root), "(0 0x1.4p+2 (0 0x1p-1 [1 4 ][3 ])[2 4 ])");
    EXPECT_EQ(look(9), 0);
    EXPECT_EQ(look(-5), 4);
}

TEST_F(KdSetTest, NumberOfAnObjectIsStillFoundByTheArray)
{
    intern(new NodeObj(1, 2, 3));
    EXPECT_EQ(set->find(1), 1);
    EXPECT_EQ(set->find(2), 0);
}

TEST_F(KdSetTest, RemovedMemberIsNotFoundNorNear)
{
    intern(new NodeObj(1, 0, 0));
    intern(new NodeObj(2, 0, 0));
    set->remove(1);
    EXPECT_EQ(look(1), 0);
    EXPECT_EQ(around(1, 5), ids{2});
    EXPECT_EQ(intern(new NodeObj(1, 0, 0)), 3);
    EXPECT_EQ(look(1), 3);
    EXPECT_EQ(set->count, 3);
}

TEST_F(KdSetTest, RemovedMembersKeepTheirPartInSplits)
{
    renew(1, 2);
    intern(new NodeObj(0, 0, 0));
    intern(new NodeObj(8, 0, 0));
    set->remove(2);
    intern(new NodeObj(1, 0, 0));
    EXPECT_EQ(dump(set->root), "(0 0x1p+2 [1 3 ][2 ])");
}

TEST_F(KdSetTest, LookingForARemovedMemberItselfRevivesIt)
{
    NodeObj* node = new NodeObj(1, 0, 0);
    intern(node);
    set->remove(1);
    EXPECT_EQ(set->get(1), nullptr);
    EXPECT_EQ(set->find(node), 1);
    EXPECT_EQ(set->get(1), node);
}

TEST_F(KdSetTest, NoObjectIsNotFound)
{
    EXPECT_EQ(set->find(nullptr), 0);
    EXPECT_EQ(set->count, 0);
    const set_ptr near(set->within(nullptr, 5));
    EXPECT_EQ(near->count, 0);
}

TEST_F(KdSetTest, NullEntryBehindALookIsPassedOver)
{
    renew(1, 1);
    look(5);
    EXPECT_EQ(set->add(nullptr), 1);
    EXPECT_EQ(look(5), 0);
    EXPECT_EQ(intern(new NodeObj(6, 0, 0)), 2);
    EXPECT_EQ(look(6), 2);
    EXPECT_EQ(set->squared_distance(1, 2), NO_VALUE);
    EXPECT_EQ(around(6, 100), ids{2});
}

TEST_F(KdSetTest, SquaredDistanceIsThatOfTwoMembers)
{
    renew(2, 10);
    intern(new NodeObj(0, 0, 0));
    intern(new NodeObj(3, 4, 100));
    EXPECT_EQ(set->squared_distance(1, 2), 25);
    EXPECT_EQ(set->squared_distance(2, 2), 0);
    EXPECT_EQ(set->squared_distance(1, 3), NO_VALUE);
    EXPECT_EQ(set->squared_distance(0, 1), NO_VALUE);
    set->remove(2);
    EXPECT_EQ(set->squared_distance(1, 2), NO_VALUE);
    EXPECT_EQ(set->squared_distance(2, 1), NO_VALUE);
}

TEST_F(KdSetTest, LookFindsMembersAndLeavesNothingBehind)
{
    const NodeObj there(1, 2, 3), near(1 + 1e-7, 2, 3), elsewhere(9, 9, 9), none(NAN, 2, 3);
    EXPECT_EQ(set->look(&there), 0);
    EXPECT_EQ(dump(set->root), "[]");
    EXPECT_EQ(set->capacity, 0);
    intern(new NodeObj(1, 2, 3));
    EXPECT_EQ(set->look(&there), 1);
    EXPECT_EQ(set->look(&near), 1);
    EXPECT_EQ(set->look(&elsewhere), 0);
    EXPECT_EQ(set->look(&none), 0);
    EXPECT_EQ(set->look(nullptr), 0);
    EXPECT_EQ(dump(set->root), "[1 ]");
    set->remove(1);
    EXPECT_EQ(set->look(&there), 0);
}

// The id that is left compares as the object that is looked for, nearer than any member.
TEST_F(KdSetTest, IdLeftInALeafHidesMembersThatAreNearOnly)
{
    intern(new NodeObj(1, 0, 0));
    const NodeObj near(1 + 1e-7, 0, 0);
    EXPECT_EQ(look(5), 0);
    EXPECT_EQ(look(1 + 1e-7), 0);
    EXPECT_EQ(look(1), 1);
    EXPECT_EQ(set->look(&near), 1);
}

TEST_F(KdSetTest, EdgesAreOneFromEitherEnd)
{
    EXPECT_EQ(intern(new ShapeEdge(3, 8, 0.5)), 1);
    EXPECT_EQ(intern(new ShapeEdge(8, 3, -0.5)), 1);
    EXPECT_EQ(intern(new ShapeEdge(8, 3, 0.5)), 2);
    EXPECT_EQ(intern(new ShapeEdge(3, 8, 0)), 3);
    EXPECT_EQ(intern(new ShapeEdge(8, 3, 0)), 3);
}

TEST_F(KdSetTest, ArcsOfBulgesCloserThanAMillionthAreOne)
{
    EXPECT_EQ(intern(new EdgeObj(1, 2, 0.5)), 1);
    EXPECT_EQ(intern(new EdgeObj(1, 2, 0.5 + 0.9e-6)), 1);
    EXPECT_EQ(intern(new EdgeObj(1, 2, 0.5 + 1.1e-6)), 2);
}

TEST_F(KdSetTest, WithinLeavesOutMembersExactlyAtTheRadius)
{
    for (double x : {0, 1, 2, 3})
        intern(new NodeObj(x, 0, 0));
    EXPECT_EQ(around(0, 2), (ids{1, 2}));
    EXPECT_EQ(around(0, 2.001), (ids{1, 2, 3}));
    EXPECT_EQ(around(0, 0), ids{});
}

TEST_F(KdSetTest, WithinGivesASetThatCanBeAsked)
{
    renew(2, 3);
    for (int i = 0; i < 50; ++i)
        intern(new NodeObj(i, i % 7, 0));
    const NodeObj middle(25, 3, 0);
    const set_ptr near(set->within(&middle, 6));
    EXPECT_EQ(near->dimensions, 2);
    EXPECT_EQ(near->leaf_capacity, 3);
    EXPECT_FALSE(near->root->is_leaf);
    for (int i = 1; i <= near->count; ++i) {
        TopoObject* clone = near->get(i);
        EXPECT_NE(clone, set->get(clone->id));
        EXPECT_TRUE(clone->matches(set->get(clone->id)));
        EXPECT_EQ(near->find(clone), i);
    }
    EXPECT_GT(near->count, 5);
}

TEST_F(KdSetTest, IdLeftByALookIsNoMemberWithin)
{
    intern(new NodeObj(0, 0, 0));
    look(0.5);
    EXPECT_EQ(around(0.25, 10), ids{1});
}

TEST_F(KdSetTest, ObjectsWithoutAKeyAreAllOne)
{
    EXPECT_EQ(intern(new ShapeObj), 1);
    EXPECT_EQ(intern(new ShapeObj), 1);
}

TEST_F(KdSetTest, CapacityGrowsForALook)
{
    EXPECT_EQ(set->capacity, 0);
    look(5);
    EXPECT_EQ(set->capacity, 3);
}

TEST_F(KdSetTest, SetWithoutMemoryIsMendedByALaterLook)
{
    test_heap::fail_at(2);
    renew(3, 10);
    EXPECT_EQ(set->root, nullptr);
    test_heap::fail_at(1);
    EXPECT_EQ(look(1), 0);
    EXPECT_EQ(around(1, 5), ids{});
    EXPECT_EQ(intern(new NodeObj(1, 0, 0)), 1);
    EXPECT_EQ(look(1), 1);
}

TEST_F(KdSetTest, EachFailureOfTheHeapIsSurvived)
{
    constexpr int keys = 30;
    int refused = 0;
    for (int n = 1; n < 200; ++n) {
        renew(2, 3);
        test_heap::fail_at(n);
        for (int i = 0; i < keys; ++i) {
            NodeObj* node = new NodeObj(i % 10, i % 6, 0);
            if (node && (set->find(node) || !set->add(node))) {
                delete node;
                node = nullptr;
            }
            refused += !node;
        }
        test_heap::fail_at(0);
        for (int i = 0; i < keys; ++i) {
            const int id = intern(new NodeObj(i % 10, i % 6, 0));
            ASSERT_GT(id, 0);
            ASSERT_EQ(look(i % 10, i % 6), id);
            ASSERT_TRUE(set->get(id));
        }
    }
    EXPECT_GE(refused, keys); // the objects themselves, at least
}

TEST_F(KdSetTest, WithinWithoutMemoryGivesNoSet)
{
    for (int i = 0; i < 100; ++i)
        intern(new NodeObj(i % 10, i / 10, 0));
    const int before = test_heap::live_blocks();
    const NodeObj middle(5, 5, 0);
    int failures = 0;
    for (int n = 1; n < 200; ++n) {
        test_heap::fail_at(n);
        set_ptr near(set->within(&middle, 4));
        test_heap::fail_at(0);
        if (near)
            ASSERT_EQ(near->count, 45);
        else
            ++failures;
        near.reset();
        ASSERT_EQ(test_heap::live_blocks(), before);
    }
    EXPECT_GT(failures, 50);
}

TEST_F(KdSetTest, InterningGrowsWithTheNumberOfObjects)
{
    EXPECT_TRUE(grows_in_proportion(
        [](int size) {
            KdSet many(3, 10);
            for (int i = 0; i < size; ++i) {
                NodeObj* node = new NodeObj(i % 317, i / 317, 0);
                if (many.find(node) == 0)
                    many.add(node);
            }
        },
        60000));
}

// Edges along a line are numbered one beyond the other. Their tree is as deep as it has leaves.
TEST_F(KdSetTest, InterningEdgesInOrderGrowsWithTheirNumber)
{
    EXPECT_TRUE(grows_in_proportion(
        [](int size) {
            KdSet many(3, 10);
            for (int i = 1; i <= size; ++i) {
                TopoObject* edge = new EdgeKey(i, i + 1, 0);
                EXPECT_EQ(many.find(edge), 0);
                many.add(edge);
            }
            EdgeKey first(1, 2, 0), last(size + 1, size, 0);
            EXPECT_EQ(many.find(&first), 1);
            EXPECT_EQ(many.find(&last), size);
        },
        200000));
}

TEST_F(KdSetTest, NodesThatAreNoneDontHinderOthers)
{
    EXPECT_TRUE(grows_in_proportion(
        [](int size) {
            KdSet many(3, 10);
            for (int i = 0; i < size; ++i) {
                TopoObject* node = new NodeObj(i % 317, i / 317, i % 50 ? 0 : NAN);
                EXPECT_EQ(many.find(node), 0);
                many.add(node);
            }
        },
        60000));
}

} // namespace
