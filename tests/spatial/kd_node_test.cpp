#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "spatial/kd_node.h"
#include "tests/polygon/heap.h"
#include "tests/spatial/inputs.h"
#include "tests/spatial/kd_dump.h"

namespace
{

struct spot {
    double at[3];
};

double spot_coordinate(const void* store, std::int32_t item, std::int32_t dimension)
{
    return (*static_cast<const std::vector<spot>*>(store))[item].at[dimension];
}

// A tree over spots, entered in their order.
struct spots {
    std::vector<spot> all;
    kd_node* root = kd_node_new(nullptr);
    int dimensions = 2, capacity = 3;

    ~spots() { kd_node_free(root); }

    bool enter(double x, double y = 0, double z = 0)
    {
        all.push_back({{x, y, z}});
        const kd_points points{dimensions, capacity, &all, spot_coordinate};
        return kd_node_enter(kd_node_leaf(root, all.back().at), static_cast<int>(all.size()) - 1, points);
    }
};

class KdNode : public testing::Test
{
protected:
    void TearDown() override { EXPECT_EQ(test_heap::live_blocks(), 0); }
};

int depth(const kd_node* node)
{
    int most = 0;
    while (!node->is_leaf) { // down the side that grows in these tests
        node = node->high->is_leaf ? node->low : node->high;
        ++most;
    }
    return most;
}

bool has_trail(const kd_node* root)
{
    return !root->is_leaf && root->trail;
}

kd_node* plain_walk(kd_node* node, const double* position)
{
    while (!node->is_leaf)
        node = node->split_value < position[node->split_dimension] ? node->high : node->low;
    return node;
}

const kd_node* plain_around(const kd_node* node, const double* position, double radius)
{
    while (!node->is_leaf) {
        const double at = position[node->split_dimension];
        const bool low = !(at - radius > node->split_value), high = !(node->split_value > at + radius);
        if (low == high)
            return node;
        node = low ? node->low : node->high;
    }
    return node;
}

// Moves a position to the plane of the last node that it passes, or `aside` from there.
void put_on_a_plane(kd_node* root, double* position, double aside)
{
    const kd_node* last = plain_walk(root, position)->parent;
    position[last->split_dimension] = last->split_value + aside;
}

TEST_F(KdNode, FullLeafSplitsAtTheMeanOfTheGreatestRange)
{
    spots s;
    s.enter(0, 10);
    s.enter(1, 14);
    s.enter(2, 18);
    EXPECT_EQ(dump(s.root), "[0 1 2 ]");
    s.enter(9, 11);
    EXPECT_EQ(dump(s.root), "(1 0x1.cp+3 [0 1 3 ][2 ])");
}

TEST_F(KdNode, TheNewItemHasNoPartInThePlane)
{
    spots s;
    s.enter(0);
    s.enter(1);
    s.enter(2);
    s.enter(1000, 5000);
    EXPECT_EQ(dump(s.root), "(0 0x1p+0 [0 1 ][2 3 ])");
}

TEST_F(KdNode, OfEqualRangesTheFirstDimensionCounts)
{
    spots s;
    s.dimensions = 3;
    s.enter(0, 0, 0);
    s.enter(4, 4, 4);
    s.enter(4, 0, 4);
    s.enter(0, 4, 0);
    EXPECT_EQ(s.root->split_dimension, 0);
    EXPECT_DOUBLE_EQ(s.root->split_value, 8.0 / 3.0);
}

TEST_F(KdNode, DimensionsOutsideTheTreeDontCount)
{
    spots s;
    s.enter(0, 0, 0);
    s.enter(1, 0, 50);
    s.enter(2, 0, 100);
    s.enter(3, 0, 900);
    EXPECT_EQ(s.root->split_dimension, 0);
    spots many;
    many.dimensions = 1000000000; // three are all that there are
    many.enter(0, 0, 0);
    many.enter(1, 0, 50);
    many.enter(2, 0, 100);
    many.enter(3, 0, 900);
    EXPECT_EQ(many.root->split_dimension, 2);
}

TEST_F(KdNode, ItemsOnThePlaneGoLow)
{
    spots s;
    s.enter(0);
    s.enter(2);
    s.enter(1);
    s.enter(1);
    EXPECT_EQ(dump(s.root), "(0 0x1p+0 [0 2 3 ][1 ])");
    const double on[3] = {1, 0, 0};
    EXPECT_EQ(kd_node_leaf(s.root, on), s.root->low);
}

TEST_F(KdNode, EqualItemsPartAtZeroWhereThatPartsThem)
{
    spots s;
    s.enter(-1);
    s.enter(-1);
    s.enter(-1);
    s.enter(5);
    EXPECT_EQ(dump(s.root), "(0 0x0p+0 [0 1 2 ][3 ])");
}

TEST_F(KdNode, OnePlaceStaysInOneLeafBeyondItsCapacity)
{
    spots s;
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(s.enter(7, 7));
    EXPECT_EQ(dump(s.root), "[0 1 2 3 4 ]");
    s.enter(9, 7); // halfway, the new one counts
    EXPECT_EQ(dump(s.root), "(0 0x1p+3 [0 1 2 3 4 ][5 ])");
}

TEST_F(KdNode, MeanThatPartsNothingIsReplacedByThePlaneHalfway)
{
    spots s;
    s.capacity = 2;
    const double large = 1e16; // where every second number is one
    s.enter(large, 0);
    s.enter(large, -1);
    s.enter(large, -0.5);
    EXPECT_EQ(dump(s.root), "(1 -0x1p-1 [1 2 ][0 ])");
    spots narrow;
    narrow.capacity = 2;
    narrow.enter(large + 2, 0);
    narrow.enter(large + 4, 0);
    ASSERT_EQ(((large + 2) + (large + 4)) / 2, large + 4);
    narrow.enter(large + 2, 1);
    EXPECT_EQ(narrow.root->split_value, large + 2);
    EXPECT_EQ(dump(narrow.root->low) + dump(narrow.root->high), "[0 2 ][1 ]");
}

TEST_F(KdNode, WhatIsNoNumberLiesLowAndDoesntHinderSplits)
{
    spots s;
    s.dimensions = 1;
    s.enter(NAN);
    s.enter(0);
    s.enter(4);
    s.enter(8);
    EXPECT_EQ(dump(s.root), "(0 0x1p+2 [0 1 2 ][3 ])");
    s.enter(NAN);
    EXPECT_EQ(dump(s.root), "(0 0x1p+2 (0 0x1p+1 [0 1 4 ][2 ])[3 ])");
    spots two;
    two.capacity = 1;
    two.enter(-5);
    two.enter(NAN);
    EXPECT_EQ(dump(two.root), "(0 -inf [1 ][0 ])");
}

TEST_F(KdNode, InfinitePlacesDontHinderSplits)
{
    spots s;
    s.dimensions = 1;
    s.enter(INFINITY);
    s.enter(0);
    s.enter(4);
    s.enter(8);
    EXPECT_EQ(dump(s.root), "(0 0x1p+2 [1 2 ][0 3 ])");
    spots ends;
    ends.capacity = 1;
    ends.enter(-5);
    ends.enter(-INFINITY);
    EXPECT_EQ(dump(ends.root), "(0 -inf [1 ][0 ])");
    spots beyond; // whose sum is infinite
    beyond.capacity = 2;
    beyond.enter(1e308);
    beyond.enter(1.5e308);
    beyond.enter(1.25e308);
    EXPECT_EQ(dump(beyond.root->low) + dump(beyond.root->high), "[0 2 ][1 ]");
}

TEST_F(KdNode, LeafStopsWhereItsCountStops)
{
    spots s;
    s.capacity = 1000000;
    for (int i = 0; i < 32767; ++i)
        ASSERT_TRUE(s.enter(7, 7));
    EXPECT_FALSE(s.enter(7, 7));
    EXPECT_EQ(s.root->item_count, 32767);
    spots parted; // a capacity beyond the count is the count
    parted.capacity = 1000000;
    for (int i = 0; i < 32768; ++i)
        ASSERT_TRUE(parted.enter(i));
    EXPECT_FALSE(parted.root->is_leaf);
}

TEST_F(KdNode, CapacityBelowOneIsOne)
{
    spots s;
    s.capacity = -4;
    s.enter(-1);
    EXPECT_EQ(dump(s.root), "[0 ]");
    s.enter(1);
    EXPECT_EQ(dump(s.root), "(0 0x0p+0 [0 ][1 ])");
    s.enter(3); // 0 parts these no more
    EXPECT_EQ(dump(s.root), "(0 0x0p+0 [0 ](0 0x1p+1 [1 ][2 ]))");
}

// Each split cuts off the greatest only. 1,000 levels and more, without a deep stack.
TEST_F(KdNode, DeepTreesAreReleasedAndWalked)
{
    spots s;
    s.dimensions = 1;
    s.capacity = 2;
    for (double x = 1; x < 1e300; x *= 1.5)
        s.enter(x);
    EXPECT_GT(depth(s.root), 500);
    const double middle[3] = {0, 0, 0};
    std::size_t seen = 0;
    for (const kd_node* leaf = kd_node_first_near(s.root, middle, INFINITY); leaf;
         leaf = kd_node_next_near(s.root, leaf, middle, INFINITY))
        seen += static_cast<std::size_t>(leaf->item_count);
    EXPECT_EQ(seen, s.all.size());
}

// Walks with and without shortcuts, which are laid by earlier walks.
TEST_F(KdNode, WalksThroughDeepTreesEndWherePlainOnesDo)
{
    std::mt19937 random(3);
    const double strange[] = {NAN, INFINITY, -INFINITY, -0.0, 1e308};
    for (int order = 1; order < static_cast<int>(place_order::ORDERS); ++order) {
        spots s;
        s.dimensions = 3;
        s.capacity = 2;
        for (const place& p : random_places(place_kind::DIAGONAL, place_order(order), 4000, random))
            s.enter(p.x, p.y, p.z);
        ASSERT_TRUE(has_trail(s.root));
        for (int i = 0; i < 4000; ++i) {
            const place p = random_place(place_kind::DIAGONAL, random);
            double at[3] = {p.x, p.y, p.z};
            if (random() % 8 == 0)
                at[random() % 3] = strange[random() % 5];
            if (random() % 2 == 0)
                put_on_a_plane(s.root, at, 0);
            ASSERT_EQ(kd_node_leaf(s.root, at), plain_walk(s.root, at));
        }
    }
}

TEST_F(KdNode, CubesInDeepTreesLieWherePlainWalksFindThem)
{
    std::mt19937 random(4);
    for (int order = 1; order < static_cast<int>(place_order::ORDERS); ++order) {
        spots s;
        s.capacity = 2;
        for (const place& p : random_places(place_kind::DIAGONAL, place_order(order), 4000, random))
            s.enter(p.x, p.y);
        ASSERT_TRUE(has_trail(s.root));
        for (int i = 0; i < 4000; ++i) {
            const place p = random_place(place_kind::DIAGONAL, random);
            double at[3] = {p.x, p.y, 0};
            const double radius = 0.0625 * static_cast<int>(random() % 5);
            if (random() % 2 == 0)
                put_on_a_plane(s.root, at, random() % 2 ? radius : -radius);
            ASSERT_EQ(kd_node_around(s.root, at, radius), plain_around(s.root, at, radius));
        }
    }
}

TEST_F(KdNode, WalksGoOnWithoutMemoryForShortcuts)
{
    for (int n = 1; n <= 3; ++n) {
        spots s;
        s.dimensions = 1;
        s.capacity = 1;
        int refused = 0;
        for (int i = 0; i < 300; ++i) {
            const double at[3] = {i + 0.5, 0, 0};
            test_heap::fail_at(n);
            ASSERT_EQ(kd_node_leaf(s.root, at), plain_walk(s.root, at));
            test_heap::fail_at(0);
            refused += !s.enter(i);
        }
        EXPECT_EQ(refused, 0);
    }
}

// Branch after branch, each as deep as the way to it.
TEST_F(KdNode, ShortcutsLeadIntoBranches)
{
    spots s;
    s.capacity = 2;
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 400; ++x)
            s.enter(x, 1000 * y);
    for (int i = 0; i < 16000; ++i) {
        const double at[3] = {i % 400 + 0.25, 1000.0 * (i / 400), 0};
        ASSERT_EQ(kd_node_leaf(s.root, at), plain_walk(s.root, at));
    }
}

TEST_F(KdNode, CubeIsLookedForInTheLeastPartThatHoldsIt)
{
    spots s;
    s.dimensions = 1;
    s.capacity = 2;
    for (int x = 0; x < 1000; ++x)
        s.enter(x);
    const double at[3] = {900.25, 0, 0};
    EXPECT_TRUE(kd_node_around(s.root, at, 0)->is_leaf);
    const kd_node* top = kd_node_around(s.root, at, 3);
    EXPECT_FALSE(top->is_leaf);
    EXPECT_GT(top->split_value, 890);
    for (const double radius : {-1.0, double(NAN), double(INFINITY)})
        EXPECT_EQ(kd_node_around(s.root, at, radius), s.root);
    const double none[3] = {NAN, 0, 0};
    EXPECT_EQ(kd_node_around(s.root, none, 1), s.root);
}

TEST_F(KdNode, LeavesNearAPositionComeLowOnesFirst)
{
    spots s;
    s.dimensions = 1;
    s.capacity = 2;
    for (int x = 0; x < 16; ++x)
        s.enter(x);
    const double at[3] = {7, 0, 0};
    double last = -1;
    int leaves = 0;
    for (const kd_node* leaf = kd_node_first_near(s.root, at, 3); leaf;
         leaf = kd_node_next_near(s.root, leaf, at, 3)) {
        EXPECT_GT(s.all[leaf->items[0]].at[0], last);
        last = s.all[leaf->items[leaf->item_count - 1]].at[0];
        ++leaves;
    }
    EXPECT_GT(leaves, 2);
    EXPECT_LT(last, 13);
}

TEST_F(KdNode, FailedSplitLeavesTheTreeAsItWas)
{
    for (int n = 1; n <= 3; ++n) {
        spots s;
        s.enter(0);
        s.enter(1);
        s.enter(2);
        test_heap::fail_at(n);
        EXPECT_FALSE(s.enter(3));
        test_heap::fail_at(0);
        EXPECT_EQ(dump(s.root), "[0 1 2 ]");
        EXPECT_TRUE(s.enter(3));
        EXPECT_EQ(dump(s.root), "(0 0x1p+0 [0 1 ][2 4 ])");
    }
}

TEST_F(KdNode, FailedGrowthLeavesTheLeafAsItWas)
{
    spots s;
    s.capacity = 20;
    for (int i = 0; i < 16; ++i)
        s.enter(i);
    const std::string before = dump(s.root);
    test_heap::fail_at(1);
    EXPECT_FALSE(s.enter(16));
    test_heap::fail_at(0);
    EXPECT_EQ(dump(s.root), before);
    EXPECT_EQ(s.root->item_count, 16);
}

} // namespace
