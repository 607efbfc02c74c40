// What the plain tree itself must do, by positions worked out by hand.
#include <gtest/gtest.h>

#include <random>
#include <set>

#include "tests/spatial/plain_kd.h"

namespace
{

using plain::kd_add;
using plain::kd_tree;

struct holder {
    kd_tree* tree;
    explicit holder(kd_tree* t) : tree(t) {}
    holder(int dimensions, int capacity) : tree(plain::kd_create(7, dimensions, capacity)) {}
    holder(const holder&) = delete;
    holder& operator=(const holder&) = delete;
    ~holder() { plain::kd_free_list(&tree); }
    kd_tree& operator*() const { return *tree; }
    kd_tree* operator->() const { return tree; }
};

TEST(PlainKd, APointWithinTheToleranceIsFound)
{
    const holder t(2, 4);
    int index = -1;
    EXPECT_EQ(kd_add(*t, 1, 2, 3, 50, &index), 50);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(kd_add(*t, 1 + 9e-7, 2 - 9e-7, 99, 60, &index), 50); // z is no dimension here
    EXPECT_EQ(index, 0);
    EXPECT_EQ(t->point_count, 1);
    EXPECT_EQ(kd_add(*t, 1 + 1.1e-6, 2, 3, 61, &index), 61);
    EXPECT_EQ(index, 1);
}

TEST(PlainKd, ALookUpCommitsNothing)
{
    const holder t(2, 4);
    int index = -1;
    EXPECT_EQ(kd_add(*t, 1, 1, 0, 0, &index), 0);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(t->point_count, 0);
    EXPECT_EQ(kd_add(*t, 9, 9, 0, 5, &index), 5); // takes the slot, which the leaf names already
    EXPECT_EQ(t->point_count, 1);
    EXPECT_EQ(t->root.items.size(), 1u);
    EXPECT_EQ(kd_add(*t, 1, 1, 0, 0, nullptr), 0);
    EXPECT_EQ(kd_add(*t, 9, 9, 0, 0, nullptr), 5);
}

TEST(PlainKd, TwoLeavesMayNameTheSlotOfALookUp)
{
    const holder t(1, 2);
    for (int i = 0; i < 3; ++i)
        kd_add(*t, i * 10, 0, 0, i + 1, nullptr); // split at 5: 0 | 10 20
    ASSERT_FALSE(t->root.is_leaf);
    EXPECT_EQ(t->root.split_value, 5);
    EXPECT_EQ(kd_add(*t, -3, 0, 0, 0, nullptr), 0);
    EXPECT_EQ(t->root.low->items, (std::vector<int>{0, 3}));
    EXPECT_EQ(kd_add(*t, 30, 0, 0, 9, nullptr), 9);
    EXPECT_EQ(t->point_count, 4);
    EXPECT_EQ(t->root.low->items, (std::vector<int>{0, 3}));
    const holder r(plain::kd_radius(*t, 30, 0, 0, 1));
    EXPECT_EQ(r->point_count, 1);
}

TEST(PlainKd, TheWidestDimensionIsSplitAtItsMean)
{
    const holder t(2, 3);
    kd_add(*t, 0, 0, 0, 1, nullptr);
    kd_add(*t, 1, 4, 0, 2, nullptr);
    kd_add(*t, 2, 8, 0, 3, nullptr);
    EXPECT_TRUE(t->root.is_leaf);
    kd_add(*t, 3, 4, 0, 4, nullptr);
    EXPECT_FALSE(t->root.is_leaf);
    EXPECT_EQ(t->root.split_dimension, 1);
    EXPECT_EQ(t->root.split_value, 4);
    EXPECT_EQ(t->root.low->items, (std::vector<int>{0, 1, 3})); // 4 itself is not above
    EXPECT_EQ(t->root.high->items, (std::vector<int>{2}));
}

TEST(PlainKd, OfEqualRangesTheFirstIsTaken)
{
    const holder t(3, 2);
    kd_add(*t, 0, 0, 0, 1, nullptr);
    kd_add(*t, 4, 4, 4, 2, nullptr);
    kd_add(*t, 1, 1, 9, 3, nullptr);
    EXPECT_EQ(t->root.split_dimension, 0);
    EXPECT_EQ(t->root.split_value, 2);
}

TEST(PlainKd, NearPointsOnTwoSidesOfASplitBothStay)
{
    const holder t(1, 2);
    kd_add(*t, 0, 0, 0, 1, nullptr);
    kd_add(*t, 10, 0, 0, 2, nullptr);
    kd_add(*t, 5 - 2e-7, 0, 0, 3, nullptr);
    EXPECT_EQ(kd_add(*t, 5 + 2e-7, 0, 0, 4, nullptr), 4);
    EXPECT_EQ(t->point_count, 4);
    EXPECT_EQ(kd_add(*t, 5 - 3e-7, 0, 0, 5, nullptr), 3);
}

TEST(PlainKd, OnlyTheNearestOfALeafIsAskedForTheTolerance)
{
    const holder t(2, 8);
    kd_add(*t, 0, 0, 0, 1, nullptr);
    kd_add(*t, 1.05e-6, 0, 0, 2, nullptr);
    // The diagonal one is within the tolerance though farther than 1e-6; the nearest decides.
    EXPECT_EQ(kd_add(*t, -9e-7, 9e-7, 0, 3, nullptr), 1);
    EXPECT_EQ(kd_add(*t, -1.05e-6, 0, 0, 4, nullptr), 4);
    EXPECT_EQ(kd_add(*t, -1.05e-6 - 9.5e-7, 9.5e-7, 0, 5, nullptr), 4);
    EXPECT_EQ(kd_add(*t, 2e-7, 1.1e-6, 0, 6, nullptr), 6);
}

TEST(PlainKd, EqualPlacesDoNotFillALeaf)
{
    const holder t(2, 2);
    for (int i = 0; i < 50; ++i)
        EXPECT_EQ(kd_add(*t, 3, 4, i, i + 1, nullptr), 1);
    EXPECT_TRUE(t->root.is_leaf);
    EXPECT_EQ(t->point_count, 1);
}

TEST(PlainKd, RadiusLeavesOutItsRimAndFindsNothingAtZero)
{
    const holder t(2, 2);
    for (int i = 0; i < 10; ++i)
        kd_add(*t, i, 0, 0, i + 1, nullptr);
    const holder two(plain::kd_radius(*t, 5, 0, 0, 2));
    EXPECT_EQ(two->point_count, 3);
    EXPECT_EQ(two->id, 0);
    EXPECT_EQ(two->dimensions, 2);
    EXPECT_EQ(two->leaf_capacity, 2);
    const holder none(plain::kd_radius(*t, 5, 0, 0, 0));
    EXPECT_EQ(none->point_count, 0);
    EXPECT_EQ(t->point_count, 10);
}

TEST(PlainKd, RadiusFindsWhatAScanFinds)
{
    for (int dimensions = 1; dimensions <= 3; ++dimensions) {
        std::mt19937 random(static_cast<unsigned>(dimensions));
        const auto number = [&random] { return static_cast<double>(random() % 10000) / 100; };
        const holder t(dimensions, 5);
        for (int i = 0; i < 300; ++i)
            kd_add(*t, number(), number(), number(), i + 1, nullptr);
        for (int q = 0; q < 50; ++q) {
            const double x = number(), y = number(), z = number(), radius = number() / 4;
            const holder r(plain::kd_radius(*t, x, y, z, radius));
            std::set<int> scan, found;
            for (int i = 0; i < t->point_count; ++i)
                if (plain::kd_distance_squared(*t, i, t->point_count) < radius * radius)
                    scan.insert(t->points[static_cast<std::size_t>(i)].data);
            for (int i = 0; i < r->point_count; ++i)
                found.insert(r->points[static_cast<std::size_t>(i)].data);
            EXPECT_EQ(found, scan);
        }
    }
}

TEST(PlainKd, TheStoreGrowsBeforeItsLastSlotIsTaken)
{
    const holder t(1, 10);
    for (int i = 0; i < 998; ++i)
        kd_add(*t, i, 0, 0, i + 1, nullptr);
    EXPECT_EQ(t->point_capacity, 1000);
    kd_add(*t, 998, 0, 0, 999, nullptr);
    EXPECT_EQ(t->point_capacity, 2000);
    for (int i = 0; i < 999; ++i)
        EXPECT_EQ(kd_add(*t, i, 0, 0, 0, nullptr), i + 1);
}

TEST(PlainKd, ListsAreUnlinkedById)
{
    kd_tree* head = nullptr;
    for (int id : {1, 2, 1}) {
        kd_tree* const t = plain::kd_create(id, 2, 4);
        t->next = head;
        head = t;
    }
    kd_tree* const first = head;
    plain::kd_remove(&head, 5);
    EXPECT_EQ(head, first);
    plain::kd_remove(&head, 1);
    EXPECT_EQ(head->id, 2);
    EXPECT_EQ(head->next->id, 1);
    plain::kd_free_list(&head);
    EXPECT_EQ(head, nullptr);
}

TEST(PlainKd, CoordinatesBeyondTheThirdAreZero)
{
    const holder t(3, 4);
    kd_add(*t, 1, 2, 3, 1, nullptr);
    EXPECT_EQ(plain::kd_coordinate(*t, 0, 2), 3);
    EXPECT_EQ(plain::kd_coordinate(*t, 0, 3), 0);
    EXPECT_EQ(plain::kd_coordinate(*t, 0, -1), 0);
}

} // namespace
