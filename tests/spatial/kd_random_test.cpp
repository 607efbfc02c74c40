// The same tree and the same answers as the plain one, operation by operation.
#include <gtest/gtest.h>

#include "spatial/kd_tree.h"
#include "tests/polygon/heap.h"
#include "tests/spatial/inputs.h"
#include "tests/spatial/kd_dump.h"

namespace
{

struct pair_of_trees {
    kd_tree* tree;
    plain_tree plain;
};

void expect_same(const kd_tree* tree, const plain_tree& plain)
{
    ASSERT_EQ(tree->point_count, plain.count);
    ASSERT_EQ(tree->point_capacity, plain.capacity);
    ASSERT_EQ(dump(tree->root), dump(plain.root));
    for (int i = 0; i < plain.count; ++i) {
        ASSERT_EQ(tree->points[i].data, plain.points[i].data);
        for (int d = 0; d < 3; ++d) {
            const double a = kd_coordinate(tree, i, d), b = plain.points[i].at[d];
            ASSERT_TRUE(a == b || (a != a && b != b)) << i;
        }
    }
}

void add_or_look(pair_of_trees& both, const place& p, int data)
{
    std::int32_t found = -2;
    int plain_found = -3;
    const std::int32_t answer = kd_add(both.tree, p.x, p.y, p.z, data, &found);
    ASSERT_EQ(answer, both.plain.add(p.x, p.y, p.z, data, &plain_found));
    ASSERT_EQ(found, plain_found);
}

void ask_radius(pair_of_trees& both, const place& p, double radius)
{
    kd_tree* near = kd_radius(both.tree, p.x, p.y, p.z, radius);
    ASSERT_TRUE(near);
    expect_same(near, both.plain.radius(p.x, p.y, p.z, radius));
    EXPECT_EQ(near->dimensions, both.tree->dimensions);
    EXPECT_EQ(near->leaf_capacity, both.tree->leaf_capacity);
    EXPECT_EQ(near->id, 0);
    kd_free_list(&near);
}

void run(place_kind kind, place_order order, unsigned seed, int operations)
{
    std::mt19937 random(seed);
    const auto whole = [&](int a, int b) { return std::uniform_int_distribution<int>(a, b)(random); };
    const int capacities[] = {1, 2, 3, 5, 10, 40};
    const double radii[] = {-0.5, 0, 0.5, 1, 2, 5, 15, 1e308, INFINITY, NAN};
    const int dimensions = whole(1, 3), capacity = capacities[whole(0, 5)];
    pair_of_trees both{kd_create(5, dimensions, capacity), plain_tree(dimensions, capacity)};
    const std::vector<place> places = random_places(kind, order, operations, random);
    for (int i = 1; i <= operations; ++i) {
        const int choice = whole(0, 19);
        if (choice < 2)
            ask_radius(both, places[whole(0, operations - 1)], radii[whole(0, 9)]);
        else if (choice < 5)
            add_or_look(both, places[whole(0, operations - 1)], 0);
        else
            add_or_look(both, places[i - 1], i);
        if (testing::Test::HasFatalFailure())
            break;
    }
    expect_same(both.tree, both.plain);
    kd_free_list(&both.tree);
    EXPECT_EQ(test_heap::live_blocks(), 0);
}

// Every kind of place in every order.
void run_all(unsigned seeds, int operations)
{
    for (int kind = 0; kind < static_cast<int>(place_kind::KINDS); ++kind)
        for (int order = 0; order < static_cast<int>(place_order::ORDERS); ++order)
            for (unsigned seed = 1; seed <= seeds; ++seed) {
                run(static_cast<place_kind>(kind), static_cast<place_order>(order), seed, operations);
                ASSERT_FALSE(testing::Test::HasFailure())
                    << "kind " << kind << " order " << order << " seed " << seed;
            }
}

TEST(KdRandom, TreesAndAnswersAreThoseOfThePlainTree)
{
    run_all(150, 150);
}

TEST(KdRandom, LargeTreesAreThoseOfThePlainTree)
{
    run_all(2, 1500);
}

} // namespace
