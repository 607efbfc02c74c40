#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "spatial/kd_tree.h"
#include "tests/growth.h"
#include "tests/polygon/heap.h"
#include "tests/spatial/kd_dump.h"

namespace
{

class KdTree : public testing::Test
{
protected:
    void TearDown() override
    {
        test_heap::fail_at(0);
        kd_free_list(&tree);
        EXPECT_EQ(test_heap::live_blocks(), 0);
    }

    std::int32_t add(double x, double y, double z, std::int32_t data)
    {
        index = -2;
        return kd_add(tree, x, y, z, data, &index);
    }

    // The values of the points around a position, in their order.
    std::vector<int> around(double x, double y, double z, double radius)
    {
        std::vector<int> values;
        kd_tree* near = kd_radius(tree, x, y, z, radius);
        for (int i = 0; i < near->point_count; ++i)
            values.push_back(near->points[i].data);
        kd_free_list(&near);
        return values;
    }

    kd_tree* tree = kd_create(1, 3, 10);
    std::int32_t index = -2;
};

using values = std::vector<int>;

TEST_F(KdTree, StartsAsAnEmptyLeaf)
{
    EXPECT_EQ(tree->id, 1);
    EXPECT_EQ(tree->dimensions, 3);
    EXPECT_EQ(tree->leaf_capacity, 10);
    EXPECT_EQ(tree->point_count, 0);
    EXPECT_EQ(tree->point_capacity, 1000);
    EXPECT_EQ(tree->next, nullptr);
    EXPECT_EQ(dump(tree->root), "[]");
}

TEST_F(KdTree, AddedPointsKeepTheirIndexAndValue)
{
    EXPECT_EQ(add(1, 2, 3, 11), 11);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(add(4, 5, 6, 12), 12);
    EXPECT_EQ(index, 1);
    EXPECT_EQ(kd_add(tree, 7, 8, 9, 13, nullptr), 13);
    EXPECT_EQ(tree->point_count, 3);
    EXPECT_EQ(kd_coordinate(tree, 1, 0), 4);
    EXPECT_EQ(kd_coordinate(tree, 1, 1), 5);
    EXPECT_EQ(kd_coordinate(tree, 1, 2), 6);
    EXPECT_EQ(kd_distance_squared(tree, 0, 1), 27);
}

TEST_F(KdTree, UnknownCoordinatesAreZero)
{
    add(1, 2, 3, 11);
    EXPECT_EQ(kd_coordinate(tree, 0, 3), 0);
    EXPECT_EQ(kd_coordinate(tree, 0, -1), 0);
    EXPECT_EQ(kd_coordinate(tree, -1, 0), 0);
    EXPECT_EQ(kd_coordinate(tree, 2, 0), 0);
    EXPECT_EQ(kd_coordinate(tree, 1000000, 0), 0);
}

TEST_F(KdTree, SamePlaceGivesThePointThatStandsThere)
{
    add(1, 2, 3, 11);
    EXPECT_EQ(add(1, 2, 3, 12), 11);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(add(1, 2, 3, 0), 11);
    EXPECT_EQ(tree->point_count, 1);
}

TEST_F(KdTree, OnePlaceReachesAMillionthInEachCoordinate)
{
    add(0, 0, 0, 11);
    EXPECT_EQ(add(1e-6, -1e-6, 1e-6, 12), 11);
    EXPECT_EQ(add(0, 1.0000001e-6, 0, 13), 13);
    EXPECT_EQ(add(0, 0, -2e-6, 14), 14);
    EXPECT_EQ(tree->point_count, 3);
}

TEST_F(KdTree, OnlyTheNearestPointOfTheLeafIsLookedAt)
{
    // Of (0, 0) and the diagonal place the second is nearer to the candidate, but differs by more in x.
    add(0, 0, 0, 11);
    add(1.9e-6, 0.9e-6, 0, 12);
    EXPECT_EQ(tree->point_count, 2);
    EXPECT_EQ(add(0.85e-6, 0.95e-6, 0, 13), 13);
    EXPECT_EQ(tree->point_count, 3);
}

TEST_F(KdTree, NearPointsOnTheTwoSidesOfASplitBothStay)
{
    kd_free_list(&tree);
    tree = kd_create(1, 1, 2);
    add(0, 0, 0, 11);
    add(2, 0, 0, 12);
    add(3, 0, 0, 13);
    ASSERT_EQ(tree->root->split_value, 1);
    EXPECT_EQ(add(1, 0, 0, 14), 14);
    EXPECT_EQ(add(1 + 1e-7, 0, 0, 15), 15);
    EXPECT_EQ(add(1 - 1e-7, 0, 0, 16), 14);
    EXPECT_EQ(tree->point_count, 5);
}

TEST_F(KdTree, PointAtTheSplitGoesLow)
{
    kd_free_list(&tree);
    tree = kd_create(1, 1, 2);
    add(0, 0, 0, 11);
    add(2, 0, 0, 12);
    add(1, 0, 0, 13);
    EXPECT_EQ(dump(tree->root), "(0 0x1p+0 [0 2 ][1 ])");
}

TEST_F(KdTree, LookingForAnUnknownPlaceAddsNothing)
{
    EXPECT_EQ(add(1, 2, 3, 0), 0);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(tree->point_count, 0);
    EXPECT_EQ(add(1, 2, 3, 11), 11);
    EXPECT_EQ(tree->point_count, 1);
    EXPECT_EQ(dump(tree->root), "[0 ]");
}

TEST_F(KdTree, NumberLeftByALookStandsForTheNextPoint)
{
    kd_free_list(&tree);
    tree = kd_create(1, 1, 2);
    add(0, 0, 0, 11);
    add(10, 0, 0, 12);
    add(1, 0, 0, 13);
    EXPECT_EQ(add(9, 0, 0, 0), 0); // its number is 3, in the high leaf
    EXPECT_EQ(add(-5, 0, 0, 14), 14);
    EXPECT_EQ(index, 3);
    EXPECT_EQ(dump(tree->root), "(0 0x1.4p+2 (0 0x1p-1 [0 3 ][2 ])[1 3 ])");
}

// The number that is left compares as the candidate itself, nearer than any point.
TEST_F(KdTree, NumberLeftInALeafHidesPointsThatAreNearOnly)
{
    add(1, 0, 0, 11);
    EXPECT_EQ(add(5, 0, 0, 0), 0);
    EXPECT_EQ(add(1 + 1e-7, 0, 0, 0), 0);
    EXPECT_EQ(add(1, 0, 0, 0), 11);
    EXPECT_EQ(add(1 + 1e-7, 0, 0, 12), 12);
    EXPECT_EQ(tree->point_count, 2);
}

TEST_F(KdTree, EqualPlacesInThePlaneOfATreeAreOnePoint)
{
    kd_free_list(&tree);
    tree = kd_create(1, 2, 2);
    for (int i = 1; i <= 100; ++i)
        EXPECT_EQ(add(3, 4, i, i), 1);
    EXPECT_EQ(tree->point_count, 1);
    EXPECT_EQ(dump(tree->root), "[0 ]");
}

TEST_F(KdTree, PointsFartherThanTheNoValueMarkAreNotLookedAt)
{
    // Squared distances from 98765432.1 on don't count, and so the nearest in the leaf is none at all.
    add(0, 0, 0, 11);
    EXPECT_EQ(add(9938.08, 0, 0, 12), 12);
    EXPECT_EQ(add(0, 0, 0, 0), 11);
}

TEST_F(KdTree, TreeWithoutDimensionsHoldsOnePoint)
{
    kd_free_list(&tree);
    tree = kd_create(1, 0, 2);
    EXPECT_EQ(add(1, 2, 3, 11), 11);
    EXPECT_EQ(add(4, 5, 6, 12), 11);
}

TEST_F(KdTree, RadiusLeavesOutPointsExactlyAtIt)
{
    add(0, 0, 0, 11);
    add(3, 4, 0, 12);
    add(3, 0, 0, 13);
    EXPECT_EQ(around(0, 0, 0, 5), (values{11, 13}));
    EXPECT_EQ(around(0, 0, 0, 5.0001), (values{11, 12, 13}));
    EXPECT_EQ(around(0, 0, 100, 5), values{});
}

TEST_F(KdTree, RadiusZeroGivesAnEmptyTree)
{
    add(0, 0, 0, 11);
    kd_tree* near = kd_radius(tree, 0, 0, 0, 0);
    EXPECT_EQ(near->point_count, 0);
    EXPECT_EQ(near->id, 0);
    EXPECT_EQ(near->dimensions, 3);
    EXPECT_EQ(near->leaf_capacity, 10);
    EXPECT_EQ(near->next, nullptr);
    kd_free_list(&near);
}

TEST_F(KdTree, RadiusCountsTheDimensionsOfTheTree)
{
    kd_free_list(&tree);
    tree = kd_create(1, 2, 10);
    add(1, 1, 500, 11);
    kd_tree* near = kd_radius(tree, 0, 0, 0, 2);
    ASSERT_EQ(near->point_count, 1);
    EXPECT_EQ(near->points[0].z, 500);
    kd_free_list(&near);
}

TEST_F(KdTree, RadiusOfAnAnswerCanBeAskedAgain)
{
    for (int i = 1; i <= 100; ++i)
        add(i, 0, 0, i);
    kd_tree* near = kd_radius(tree, 50, 0, 0, 20);
    EXPECT_EQ(near->point_count, 39);
    kd_tree* nearer = kd_radius(near, 50, 0, 0, 2.5);
    EXPECT_EQ(nearer->point_count, 5);
    kd_free_list(&near);
    kd_free_list(&nearer);
}

TEST_F(KdTree, CandidateLeftByALookIsFoundAtThePositionItself)
{
    add(0, 0, 0, 11);
    EXPECT_EQ(around(0.5, 0, 0, 1), values{11});
    add(40, 0, 0, 0);
    EXPECT_EQ(around(0.5, 0, 0, 1), (values{11, 1}));
}

TEST_F(KdTree, StoreGrowsByAThousandOneSlotAhead)
{
    for (int i = 1; i <= 998; ++i)
        add(i, 0, 0, i);
    EXPECT_EQ(tree->point_capacity, 1000);
    add(999, 0, 0, 999);
    EXPECT_EQ(tree->point_capacity, 2000);
    for (int i = 1000; i <= 12345; ++i)
        ASSERT_EQ(add(i, 0, 0, i), i);
    EXPECT_EQ(tree->point_capacity, 13000);
    for (int i = 1; i <= 12345; ++i)
        ASSERT_EQ(add(i, 0, 0, 0), i);
}

TEST_F(KdTree, PointIsAddedThoughTheStoreCantGrowBehindIt)
{
    for (int i = 1; i <= 998; ++i)
        add(i, 0, 0, i);
    kd_tree* wide = kd_create(2, 3, 30000); // one leaf: nothing but the store asks for memory
    for (int i = 1; i <= 998; ++i)
        kd_add(wide, i, 0, 0, i, nullptr);
    test_heap::fail_at(1);
    EXPECT_EQ(kd_add(wide, 999, 0, 0, 999, nullptr), 0);
    EXPECT_EQ(wide->point_count, 999);
    EXPECT_EQ(wide->point_capacity, 1000);
    test_heap::fail_at(1);
    EXPECT_EQ(kd_add(wide, 1000, 0, 0, 1000, &index), 0);
    EXPECT_EQ(index, 999);
    EXPECT_EQ(wide->point_count, 999);
    EXPECT_EQ(kd_add(wide, 999, 0, 0, 0, nullptr), 999);
    EXPECT_EQ(kd_add(wide, 1000, 0, 0, 1000, nullptr), 1000);
    EXPECT_EQ(wide->point_count, 1000);
    EXPECT_EQ(wide->point_capacity, 2000);
    EXPECT_EQ(kd_add(wide, 1000, 0, 0, 0, nullptr), 1000);
    kd_free_list(&wide);
}

TEST_F(KdTree, WithoutMemoryThereIsNoTree)
{
    for (int n = 1; n <= 3; ++n) {
        test_heap::fail_at(n);
        EXPECT_EQ(kd_create(1, 3, 10), nullptr);
    }
}

TEST_F(KdTree, EachFailureOfTheHeapIsSurvived)
{
    int failures = 0;
    for (int n = 1;; ++n) {
        kd_tree* t = kd_create(1, 2, 4);
        test_heap::fail_at(n);
        int refused = 0;
        for (int i = 1; i <= 1200; ++i) {
            std::int32_t at = -2;
            const std::int32_t answer = kd_add(t, i % 37, i % 41, 0, i, &at);
            refused += answer == 0;
            ASSERT_EQ(at == -1 && answer != 0, false);
        }
        test_heap::fail_at(0);
        ASSERT_LE(refused, 1);
        for (int i = 1; i <= 1200; ++i)
            ASSERT_NE(kd_add(t, i % 37, i % 41, 0, i, nullptr), 0);
        ASSERT_EQ(t->point_count, 1200);
        kd_free_list(&t);
        if (!refused)
            break;
        ++failures;
    }
    EXPECT_GT(failures, 1000);
}

TEST_F(KdTree, RadiusWithoutMemoryGivesNoTree)
{
    for (int i = 1; i <= 2000; ++i)
        add(i % 53, i % 47, i, i);
    const int before = test_heap::live_blocks();
    int failures = 0;
    for (int n = 1;; ++n) {
        test_heap::fail_at(n);
        kd_tree* near = kd_radius(tree, 20, 20, 1000, 900);
        test_heap::fail_at(0);
        if (near) {
            EXPECT_GT(near->point_count, 1000);
            kd_free_list(&near);
            break;
        }
        ++failures;
        ASSERT_EQ(test_heap::live_blocks(), before);
    }
    EXPECT_GT(failures, 50);
}

TEST_F(KdTree, ListIsReleasedAndEmpty)
{
    for (int i = 0; i < 3; ++i) {
        kd_tree* another = kd_create(2, 2, 3);
        for (int j = 1; j < 100; ++j)
            kd_add(another, j, j * j, 0, j, nullptr);
        another->next = tree;
        tree = another;
    }
    kd_free_list(&tree);
    EXPECT_EQ(tree, nullptr);
    EXPECT_EQ(test_heap::live_blocks(), 0);
    kd_free_list(&tree);
}

TEST_F(KdTree, FirstTreeWithTheIdIsRemoved)
{
    kd_tree* second = kd_create(7, 1, 2);
    kd_tree* third = kd_create(7, 2, 2);
    tree->next = second;
    second->next = third;
    kd_remove(&tree, 9);
    EXPECT_EQ(tree->next, second);
    kd_remove(&tree, 7);
    EXPECT_EQ(tree->next, third);
    kd_remove(&tree, 1);
    EXPECT_EQ(tree, third);
    kd_remove(&tree, 7);
    EXPECT_EQ(tree, nullptr);
    kd_remove(&tree, 7);
}

TEST_F(KdTree, AddingGrowsWithTheNumberOfPoints)
{
    EXPECT_TRUE(grows_in_proportion(
        [](int size) {
            kd_tree* t = kd_create(1, 2, 10);
            std::uint32_t place = 1;
            for (int i = 1; i <= size; ++i) {
                place = place * 1664525u + 1013904223u;
                kd_add(t, place % 65536, place >> 16, 0, i, nullptr);
            }
            kd_free_list(&t);
        },
        200000));
}

// A tree of these is as deep as it has leaves.
TEST_F(KdTree, PointsInOrderGrowWithTheirNumberToo)
{
    EXPECT_TRUE(grows_in_proportion(
        [](int size) {
            kd_tree* t = kd_create(1, 2, 10);
            for (int i = 1; i <= size; ++i)
                kd_add(t, i, 0.5 * i, 0, i, nullptr);
            for (int i = 1; i <= size; i += 10) {
                kd_add(t, size - i, 0.5 * (size - i), 0, 0, nullptr);
                kd_tree* near = kd_radius(t, i, 0.5 * i, 0, 3);
                kd_free_list(&near);
            }
            kd_free_list(&t);
        },
        200000));
}

TEST_F(KdTree, OnePointThatIsNoneDoesntSlowDownTheOthers)
{
    EXPECT_TRUE(grows_in_proportion(
        [](int size) {
            kd_tree* t = kd_create(1, 2, 10);
            kd_add(t, NAN, 0, 0, 1, nullptr);
            kd_add(t, 0, INFINITY, 0, 2, nullptr);
            for (int i = 3; i <= size; ++i)
                EXPECT_EQ(kd_add(t, i % 317, i / 317, 0, i, nullptr), i);
            kd_free_list(&t);
        },
        100000));
}

// They are never known again. A leaf counts 32,767 of them, and refuses more without looking at those.
TEST_F(KdTree, PointsThatAreNoneAreRefusedBeyondTheCountOfALeaf)
{
    EXPECT_TRUE(grows_in_proportion(
        [](int size) {
            kd_tree* t = kd_create(1, 2, 10);
            for (int i = 1; i <= size; ++i)
                kd_add(t, NAN, NAN, 0, i, nullptr);
            EXPECT_EQ(t->point_count, std::min(size, 32767));
            kd_free_list(&t);
        },
        200000));
}

} // namespace
