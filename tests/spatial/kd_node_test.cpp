#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "spatial/kd_node.h"
#include "tests/polygon/heap.h"
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

TEST_F(KdNode, LeafThatNoPlanePartsHoldsMoreThanItsCapacity)
{
    spots s;
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(s.enter(7, 7));
    EXPECT_EQ(dump(s.root), "[0 1 2 3 4 ]");
    s.enter(9); // the plane comes from the items before it
    EXPECT_EQ(dump(s.root), "[0 1 2 3 4 5 ]");
    s.enter(9);
    EXPECT_EQ(dump(s.root), "(1 0x1.7555555555555p+2 [5 6 ][0 1 2 3 4 ])");
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
         leaf = kd_node_next_near(leaf, middle, INFINITY))
        seen += static_cast<std::size_t>(leaf->item_count);
    EXPECT_EQ(seen, s.all.size());
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
    for (const kd_node* leaf = kd_node_first_near(s.root, at, 3); leaf; leaf = kd_node_next_near(leaf, at, 3)) {
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
    for (int i = 0; i < 4; ++i)
        s.enter(i);
    test_heap::fail_at(1);
    EXPECT_FALSE(s.enter(4));
    test_heap::fail_at(0);
    EXPECT_EQ(dump(s.root), "[0 1 2 3 ]");
}

} // namespace
