#include "topology/box_index.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "tests/polygon/heap.h"

namespace
{

// Beside a plain list.
struct both {
    BoxIndex index;
    std::vector<pg_box> list;
    std::vector<bool> is_dropped;

    void add(const pg_box& box)
    {
        ASSERT_TRUE(index.add(box));
        list.push_back(box);
        is_dropped.push_back(false);
    }
    void drop(int i)
    {
        index.drop(i);
        is_dropped[static_cast<std::size_t>(i)] = true;
    }
    std::vector<int> expected(const pg_box& box, int from) const
    {
        std::vector<int> found;
        for (std::size_t i = static_cast<std::size_t>(from); i < list.size(); ++i)
            if (!is_dropped[i] && pg_boxes_meet(list[i], box))
                found.push_back(static_cast<int>(i));
        return found;
    }
    std::vector<int> found(const pg_box& box, int from)
    {
        EXPECT_TRUE(index.look(box, from));
        return {index.found().begin(), index.found().end()};
    }
};

// Of uneven sizes, some without bounds and some of none; on a grid, so that borders touch.
pg_box random_box(std::mt19937* random, double origin, double step)
{
    const auto draw = [&](int most) { return std::uniform_int_distribution<int>(0, most)(*random); };
    if (const int kind = draw(200); kind < 2)
        return kind == 0 ? box_of_all() : box_of_none();
    const int largest = draw(50) == 0 ? 500 : draw(10) == 0 ? 40 : 4;
    const double x = origin + draw(1000) * step, y = -origin + draw(1000) * step;
    return {x, y, x + draw(largest) * step, y + draw(largest) * step};
}

void expect_same(double origin, double step)
{
    std::mt19937 random{7};
    both boxes;
    for (int round = 0; round < 3000; ++round) {
        boxes.add(random_box(&random, origin, step));
        const int count = boxes.index.count();
        const auto any = [&] { return std::uniform_int_distribution<int>(0, count - 1)(random); };
        if (round % 3 == 0)
            boxes.drop(any());
        if (round == 2000)
            for (int i = 0; i < 1500; ++i)
                boxes.drop(i);
        const pg_box wanted = random_box(&random, origin, step);
        const int from = round % 2 ? 0 : any();
        ASSERT_EQ(boxes.found(wanted, from), boxes.expected(wanted, from)) << round;
    }
}

TEST(BoxIndex, FindsWhatAPlainScanFinds)
{
    expect_same(0.0, 1.0);
}

TEST(BoxIndex, FindsBordersThatTouchFarFromTheOrigin)
{
    expect_same(5e6, 1e-3);
    expect_same(1e15, 0.25);
}

TEST(BoxIndex, FindsBoxesTooLargeForSinglePrecision)
{
    expect_same(0.0, 1e200);
    expect_same(1e300, 1e297);
}

TEST(BoxIndex, FindsBoxesTooSmallForSinglePrecision)
{
    expect_same(0.0, 1e-60);
}

TEST(BoxIndex, FindsNothingOnceAllIsDropped)
{
    both boxes;
    for (int i = 0; i < 500; ++i)
        boxes.add({0, 0, 1, 1});
    EXPECT_EQ(boxes.found({0, 0, 1, 1}, 0).size(), 500u);
    for (int i = 0; i < 500; ++i)
        boxes.drop(i);
    EXPECT_TRUE(boxes.found(box_of_all(), 0).empty());
    for (int i = 0; i < 100; ++i) {
        boxes.add({0, 0, 1, 1});
        boxes.drop(500 + i);
    }
    EXPECT_TRUE(boxes.found(box_of_all(), 0).empty());
    boxes.add({0, 0, 1, 1});
    EXPECT_EQ(boxes.found(box_of_all(), 0), std::vector<int>{600});
}

TEST(BoxIndex, KeepsWhatWasFoundWhileItIsDropped)
{
    both boxes;
    for (int i = 0; i < 100; ++i)
        boxes.add({0, 0, 1, 1});
    ASSERT_TRUE(boxes.index.look({0, 0, 1, 1}, 0));
    boxes.drop(0);
    boxes.drop(0);
    EXPECT_EQ(boxes.index.found().count, 100);
    EXPECT_EQ(boxes.index.found().items[0], 0);
}

// What couldn't be put in a block waits on and is found all the same.
TEST(BoxIndex, FindsTheSameWithoutMemoryAndGivesAllOfItBack)
{
    const int blocks_before = test_heap::live_blocks();
    bool has_failed = true;
    for (int n = 1; has_failed; ++n) {
        both boxes;
        std::mt19937 random{3};
        test_heap::fail_at(n);
        for (int i = 0; i < 150; ++i) {
            const pg_box box = random_box(&random, 0.0, 1.0);
            while (!boxes.index.add(box))
                ASSERT_TRUE(test_heap::has_failed());
            boxes.list.push_back(box);
            boxes.is_dropped.push_back(false);
            boxes.drop(i / 2);
            const pg_box wanted = random_box(&random, 0.0, 1.0);
            if (boxes.index.look(wanted, 0))
                ASSERT_EQ(boxes.found(wanted, 0), boxes.expected(wanted, 0)) << n;
            else
                ASSERT_TRUE(test_heap::has_failed());
        }
        has_failed = test_heap::has_failed();
        test_heap::fail_at(0);
    }
    EXPECT_EQ(test_heap::live_blocks(), blocks_before);
}

} // namespace
