// The tree of src/spatial against the plain one: the same calls, the same answers, the same shape.
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>

#include "hostapi/ads.h"
#include "spatial/kd_tree.h"
#include "tests/spatial/plain_kd.h"

void* acad_malloc(std::size_t size)
{
    return std::malloc(size);
}

void acad_free(void* block)
{
    std::free(block);
}

namespace
{

std::string items(const plain::kd_node& n)
{
    std::string out;
    for (int i : n.items)
        out += " " + std::to_string(i);
    return out;
}

std::string items(const kd_node& n)
{
    std::string out;
    for (int i = 0; i < n.item_count; ++i)
        out += " " + std::to_string(n.items[i]);
    return out;
}

template <class Node>
std::string shape(const Node& n)
{
    if (n.is_leaf)
        return "(" + items(n) + " )";
    return "[" + std::to_string(static_cast<int>(n.split_dimension)) + " " + std::to_string(n.split_value) +
           shape(*n.low) + shape(*n.high) + "]";
}

void expect_same(const plain::kd_tree& here, const kd_tree& there)
{
    ASSERT_EQ(there.point_count, here.point_count);
    EXPECT_EQ(there.point_capacity, here.point_capacity);
    EXPECT_EQ(there.dimensions, here.dimensions);
    EXPECT_EQ(there.leaf_capacity, here.leaf_capacity);
    EXPECT_EQ(there.id, here.id);
    EXPECT_EQ(shape(*there.root), shape(here.root));
    for (int i = 0; i < here.point_count; ++i)
        for (int d = -1; d < 4; ++d)
            ASSERT_EQ(kd_coordinate(&there, i, d), plain::kd_coordinate(here, i, d));
}

TEST(KdCompare, RandomCallsGiveTheSameTree)
{
    for (unsigned seed = 0; seed < 60; ++seed) {
        std::mt19937 random(seed);
        const int dimensions = 1 + static_cast<int>(seed % 3), capacity = 1 + static_cast<int>(random() % 9);
        plain::kd_tree* here = plain::kd_create(3, dimensions, capacity);
        kd_tree* there = kd_create(3, dimensions, capacity);
        const int calls = seed % 10 == 0 ? 2500 : 300;
        for (int i = 0; i < calls; ++i) {
            double c[3];
            for (double& v : c) // coarse places, doubles about the tolerance, or anywhere
                v = seed % 2 ? static_cast<double>(random() % 30) + static_cast<double>(random() % 4) * 4e-7
                             : static_cast<double>(random() % 1000000) / 1000;
            const int data = random() % 4 ? i + 1 : 0;
            int here_index = -1, there_index = -1;
            const int here_data = plain::kd_add(*here, c[0], c[1], c[2], data, &here_index);
            ASSERT_EQ(kd_add(there, c[0], c[1], c[2], data, &there_index), here_data) << seed << ": " << i;
            ASSERT_EQ(there_index, here_index) << seed << ": " << i;
            if (i % 40 != 0)
                continue;
            const double radius = static_cast<double>(random() % 300) / 10;
            plain::kd_tree* here_found = plain::kd_radius(*here, c[0], c[1], c[2], radius);
            kd_tree* there_found = kd_radius(there, c[0], c[1], c[2], radius);
            expect_same(*here_found, *there_found);
            plain::kd_free_list(&here_found);
            kd_free_list(&there_found);
        }
        expect_same(*here, *there);
        plain::kd_free_list(&here);
        EXPECT_EQ(here, nullptr);
        kd_free_list(&there);
        EXPECT_EQ(there, nullptr);
    }
}

} // namespace
