#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "grid/grid.h"
#include "tests/grid/memory_files.h"
#include "tests/polygon/heap.h"

namespace
{

class GridPoints : public testing::TestWithParam<int> // columns: in memory and in a file
{
protected:
    void SetUp() override
    {
        memory_files::forget();
        g = grid_constant_of(GetParam());
    }
    void TearDown() override
    {
        memory_files::disk().room = memory_files::NO_LIMIT;
        grid_free(&g);
        EXPECT_EQ(test_heap::live_blocks(), 0);
    }
    static grid* grid_constant_of(int columns)
    {
        grid* made = grid_create(100, 200, 2, 4, columns, 600);
        for (int i = 0; i < grid_cell_count(made); ++i)
            grid_write_cell(made, i, {1, CELL_VALUE, '1'});
        return made;
    }
    int add(double x, double y, double z)
    {
        const double point[] = {x, y, z};
        return grid_add_point(g, point);
    }
    const grid_cell_points* at(int index) { return grid_points(g, index, grid_read_cell(g, index)); }

    grid* g = nullptr;
};
INSTANTIATE_TEST_SUITE_P(Stores, GridPoints, testing::Values(6, 600));

TEST_P(GridPoints, APointIsCollectedInTheCellBelowAndLeftOfIt)
{
    EXPECT_EQ(add(100, 200, 1), 1);
    EXPECT_EQ(add(101.9, 203.9, 2), 1);
    EXPECT_EQ(add(102, 203.9, 3), 1);
    EXPECT_EQ(add(103, 209, 4), 1);
    const int above = grid_index(g, 1, 2);
    ASSERT_TRUE(at(0) && at(1) && at(above));
    EXPECT_EQ(at(0)->cell, 0);
    EXPECT_EQ(at(0)->count, 2);
    EXPECT_EQ(at(0)->items[0][0], 100);
    EXPECT_EQ(at(0)->items[0][1], 200);
    EXPECT_EQ(at(0)->items[0][2], 1);
    EXPECT_EQ(at(0)->items[1][2], 2);
    EXPECT_EQ(at(1)->count, 1);
    EXPECT_EQ(at(above)->cell, above);
    EXPECT_EQ(at(above)->items[0][2], 4);
    EXPECT_EQ(at(2), nullptr);
}

TEST_P(GridPoints, TheNewestCellStandsFirstInTheGridsList)
{
    add(101, 201, 1);
    add(105, 201, 2);
    add(101, 201, 3);
    add(103, 201, 4);
    ASSERT_TRUE(g->points && g->points->next && g->points->next->next);
    EXPECT_EQ(g->points->cell, 1);
    EXPECT_EQ(g->points->next->cell, 2);
    EXPECT_EQ(g->points->next->next->cell, 0);
    EXPECT_EQ(g->points->next->next->next, nullptr);
}

TEST_P(GridPoints, HandlesCountFromOneAndLeaveTheRestOfTheCell)
{
    add(101, 201, 1);
    add(103, 201, 1);
    for (const int i : {0, 1}) {
        const grid_cell cell = grid_read_cell(g, i);
        EXPECT_EQ(cell.points, i + 1u);
        EXPECT_TRUE(cell.z == 1 && cell.state == '1' && cell.mark == '1');
    }
}

TEST_P(GridPoints, PointsOutsideTheIntervalsAreLeftOut)
{
    const double right = 100 + 2.0 * GetParam(), top = 200 + 4.0 * 600;
    const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(add(99.999, 201, 1), 0);
    EXPECT_EQ(add(101, 199.999, 1), 0);
    EXPECT_EQ(add(right, 201, 1), 0) << "the last column of cells has no interval";
    EXPECT_EQ(add(101, top, 1), 0);
    EXPECT_EQ(add(1e300, 201, 1), 0);
    EXPECT_EQ(add(101, -1e300, 1), 0);
    EXPECT_EQ(add(nan, 201, 1), 0);
    EXPECT_EQ(add(101, nan, 1), 0);
    EXPECT_EQ(add(inf, inf, 1), 0);
    EXPECT_EQ(g->points, nullptr);
    EXPECT_EQ(add(std::nextafter(right, 0), std::nextafter(top, 0), 1), 1);
    EXPECT_EQ(g->points->cell, grid_index(g, GetParam() - 1, 599));
}

TEST_P(GridPoints, WithoutAStepNoPointIsCollected)
{
    g->step_x = 0;
    EXPECT_EQ(add(100, 201, 1), 0);
    EXPECT_EQ(add(101, 201, 1), 0);
}

TEST_P(GridPoints, NoGridAndNoPointCollectNothing)
{
    const double point[] = {0, 0, 0};
    EXPECT_EQ(grid_add_point(nullptr, point), 0);
    EXPECT_EQ(grid_add_point(g, nullptr), 0);
    EXPECT_EQ(grid_points(nullptr, 0, {}), nullptr);
}

TEST_P(GridPoints, ManyPointsInManyCellsKeepTheirOrder)
{
    for (int round = 0; round < 20; ++round)
        for (int row = 0; row < 40; ++row)
            ASSERT_EQ(add(101, 202 + 4 * row, 100 * row + round), 1);
    for (int row = 0; row < 40; ++row) {
        const grid_cell_points* points = at(grid_index(g, 0, row));
        ASSERT_TRUE(points);
        ASSERT_EQ(points->count, 20);
        for (int round = 0; round < 20; ++round)
            EXPECT_EQ(points->items[round][2], 100 * row + round);
    }
}

TEST_P(GridPoints, HandlesThatNameNoPointsOfTheCellAreNone)
{
    add(101, 201, 1);
    for (const std::uint32_t handle : {1u, 2u, 0xffffffffu}) {
        grid_cell cell = grid_read_cell(g, 3);
        cell.points = handle; // as an uncleared cell may have it
        grid_write_cell(g, 3, cell);
        EXPECT_EQ(at(3), nullptr);
    }
    EXPECT_EQ(add(107, 201, 5), 1);
    ASSERT_TRUE(at(3));
    EXPECT_EQ(at(3)->count, 1);
    EXPECT_EQ(at(0)->count, 1);
}

TEST_P(GridPoints, AnExhaustedHeapLosesThePointAlone)
{
    int lost = 0;
    for (int i = 0; i < 40; ++i) {
        for (int n = 1; n <= 4; ++n) {
            test_heap::fail_at(n);
            const bool taken = add(101, 202 + 4 * (i / 2), i) == 1;
            test_heap::fail_at(0);
            lost += !taken;
            if (taken)
                break;
        }
    }
    EXPECT_GT(lost, 10);
    int cells = 0, points = 0;
    for (const grid_cell_points* p = g->points; p; p = p->next) {
        ++cells;
        points += p->count;
        EXPECT_EQ(at(p->cell), p);
    }
    EXPECT_EQ(cells, g->point_count);
    EXPECT_GT(points, 0);
}

TEST_P(GridPoints, ACellThatCantBeKeptIsAnswered)
{
    if (g->in_memory)
        return;
    grid_flush(g);
    add(101, 201, 1);
    memory_files::disk().room = 0;
    EXPECT_EQ(add(101, 2001, 1), 0);
}

} // namespace
