#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "grid/grid.h"
#include "tests/grid/memory_files.h"
#include "tests/polygon/heap.h"

namespace
{

using memory_files::disk;

class GridPairs : public testing::TestWithParam<int> // columns: in memory and in a file
{
protected:
    void SetUp() override
    {
        memory_files::forget();
        source = grid_create(10, 20, 2, 3, GetParam(), 600);
        for (int i = 0; i < grid_cell_count(source); ++i)
            grid_write_cell(source, i, {std::sin(i), "0155"[i % 4], "01"[i % 2]});
    }
    void TearDown() override
    {
        disk().room = memory_files::NO_LIMIT;
        disk().read_limit = memory_files::NO_LIMIT;
        grid_free(&source);
        EXPECT_EQ(test_heap::live_blocks(), 0);
        EXPECT_EQ(disk().open_files, 0);
        EXPECT_TRUE(disk().files.empty());
        printed_text();
    }
    bool in_file() const { return !source->in_memory; }

    grid* source = nullptr;
};
INSTANTIATE_TEST_SUITE_P(Stores, GridPairs, testing::Values(6, 600));

TEST_P(GridPairs, ACopyHasTheGeometryAndEveryCell)
{
    grid* copy = grid_copy(source);
    ASSERT_TRUE(copy);
    EXPECT_EQ(grid_match(source, copy), 1);
    EXPECT_EQ(copy->in_memory, source->in_memory);
    for (int i = 0; i < grid_cell_count(source); ++i) {
        const grid_cell a = grid_read_cell(source, i), b = grid_read_cell(copy, i);
        ASSERT_EQ(std::memcmp(&a, &b, sizeof a), 0) << i;
    }
    grid_free(&copy);
}

TEST_P(GridPairs, ACopyIsIndependent)
{
    grid* copy = grid_copy(source);
    grid_write_cell(copy, 7, {-1, CELL_VALUE});
    EXPECT_EQ(grid_read_cell(source, 7).z, std::sin(7));
    grid_write_cell(source, 8, {-2, CELL_VALUE});
    EXPECT_EQ(grid_read_cell(copy, 8).z, std::sin(8));
    grid_free(&copy);
}

TEST_P(GridPairs, ACopyHasItsOwnCollectedPoints)
{
    const double first[] = {10.5, 20.5, 1}, second[] = {11, 21, 2}, third[] = {13, 30, 3};
    grid_add_point(source, first);
    grid_add_point(source, second);
    grid_add_point(source, third);
    grid* copy = grid_copy(source);
    grid_add_point(source, first);
    const grid_cell_points* points = grid_points(copy, 0, grid_read_cell(copy, 0));
    ASSERT_TRUE(points);
    EXPECT_EQ(points->count, 2);
    EXPECT_EQ(points->items[1][2], 2);
    grid_free(&source);
    ASSERT_EQ(points->count, 2);
    EXPECT_EQ(points->items[0][0], 10.5);
    grid_add_point(copy, third);
    EXPECT_EQ(copy->points->count, 2) << "the newest cell's stand first, as in the source";
    EXPECT_EQ(copy->points->items[1][2], 3);
    grid_free(&copy);
}

TEST_P(GridPairs, AConstantGridHasTheGeometryAndOneValue)
{
    grid* made = grid_constant(source, -7.25);
    ASSERT_TRUE(made);
    EXPECT_EQ(grid_match(source, made), 1);
    for (int i = 0; i < grid_cell_count(source); ++i) {
        const grid_cell cell = grid_read_cell(made, i);
        ASSERT_TRUE(cell.z == -7.25 && cell.state == '1' && cell.mark == '0' && cell.points == 0) << i;
    }
    EXPECT_EQ(made->points, nullptr);
    grid_free(&made);
}

TEST_P(GridPairs, TakenValuesLeaveMarkAndPointsOfTheTarget)
{
    grid* target = grid_constant(source, 5);
    const double point[] = {11, 21, 2};
    grid_add_point(target, point);
    grid_cell marked = grid_read_cell(target, 1);
    marked.mark = '1';
    grid_write_cell(target, 1, marked);
    marked.mark = 'x'; // whatever it holds
    grid_write_cell(target, 2, marked);
    ASSERT_EQ(grid_take_values(source, target), 1);
    for (int i = 0; i < grid_cell_count(source); ++i) {
        const grid_cell from = grid_read_cell(source, i), to = grid_read_cell(target, i);
        ASSERT_TRUE(from.z == to.z && from.state == to.state) << i;
        ASSERT_EQ(to.mark, i == 1 ? '1' : i == 2 ? 'x' : '0') << i;
        ASSERT_EQ(to.points, i == 0 ? 1u : 0u) << i;
    }
    EXPECT_EQ(printed_text(), "");
    grid_free(&target);
}

TEST_P(GridPairs, AGridThatWasNeverWrittenTakesValuesWithFewTransfers)
{
    grid* target = grid_create(10, 20, 2, 3, GetParam(), 600);
    if (in_file()) {
        const grid_cell marked{1, CELL_VALUE, '1'};
        grid_write_cell(target, 70000, marked); // in the file in part
        grid_flush(target);
    }
    const int opened = disk().opened;
    ASSERT_EQ(grid_take_values(source, target), 1);
    EXPECT_LT(disk().opened - opened, 600);
    for (int i = 0; i < grid_cell_count(source); ++i) {
        const grid_cell from = grid_read_cell(source, i), to = grid_read_cell(target, i);
        ASSERT_TRUE(from.z == to.z && from.state == to.state) << i;
        if (i >= 70000) {
            ASSERT_EQ(to.mark, i == 70000 ? '1' : '0') << i;
        }
    }
    grid_free(&target);
}

TEST_P(GridPairs, NothingComesOfAnExhaustedHeap)
{
    const double point[] = {11, 21, 2};
    grid_add_point(source, point);
    const int blocks = test_heap::live_blocks();
    bool done = false;
    for (int n = 1; !done; ++n) {
        test_heap::fail_at(n);
        grid* copy = grid_copy(source);
        done = copy && copy->in_memory == source->in_memory;
        if (copy) {
            EXPECT_EQ(grid_read_cell(copy, 100).z, std::sin(100)) << n;
        }
        grid_free(&copy);
        EXPECT_EQ(test_heap::live_blocks(), blocks) << n;
        test_heap::fail_at(n);
        grid* made = grid_constant(source, 3);
        if (made) {
            EXPECT_EQ(grid_read_cell(made, 100).z, 3) << n;
        }
        grid_free(&made);
        EXPECT_EQ(test_heap::live_blocks(), blocks) << n;
    }
    test_heap::fail_at(0);
}

TEST_P(GridPairs, NoCopyIsMadeOnAFullDisk)
{
    if (!in_file())
        return;
    grid_flush(source);
    grid* target = grid_constant(source, 5);
    disk().room = 1000000;
    EXPECT_EQ(grid_copy(source), nullptr);
    EXPECT_EQ(printed_text(), "\nError: grid cells can't be kept in the temporary file");
    disk().room = 1000000;
    EXPECT_EQ(grid_constant(source, 1), nullptr);
    EXPECT_EQ(printed_text(), "\nError: grid cells can't be kept in the temporary file");
    disk().room = 0;
    EXPECT_EQ(grid_take_values(source, target), 0);
    EXPECT_EQ(printed_text(), "\nError: grid cells can't be kept in the temporary file");
    grid_free(&target);
}

TEST_P(GridPairs, NoCopyIsMadeOfAFileThatIsGone)
{
    if (!in_file())
        return;
    grid* target = grid_constant(source, 5);
    grid_flush(source);
    disk().files.erase(source->temp_path);
    EXPECT_EQ(grid_copy(source), nullptr);
    EXPECT_EQ(printed_text(), "\nError: grid cells can't be read from the temporary file");
    EXPECT_EQ(grid_take_values(source, target), 0);
    EXPECT_EQ(printed_text(), "\nError: grid cells can't be read from the temporary file");
    EXPECT_EQ(grid_read_cell(target, 100000).z, 5);
    grid_free(&target);
}

TEST(GridMatch, NoGridIsLikeNothing)
{
    grid g{};
    EXPECT_EQ(grid_match(nullptr, nullptr), 0);
    EXPECT_EQ(grid_match(&g, nullptr), 0);
    EXPECT_EQ(grid_match(nullptr, &g), 0);
    EXPECT_EQ(grid_copy(nullptr), nullptr);
    EXPECT_EQ(grid_constant(nullptr, 1), nullptr);
    EXPECT_EQ(grid_take_values(nullptr, &g), 0);
    EXPECT_EQ(grid_take_values(&g, nullptr), 0);
    EXPECT_EQ(printed_text(), "");
}

TEST(GridMatch, TheCodeTellsWhatDiffersFirst)
{
    grid a{};
    a.x0 = 10;
    a.y0 = 20;
    a.step_x = a.step_y = 1;
    a.columns = a.rows = 5;
    grid b = a;
    EXPECT_EQ(grid_match(&a, &b), 1);
    b.rows = 6;
    EXPECT_EQ(grid_match(&a, &b), -5);
    b = a;
    b.columns = 4;
    EXPECT_EQ(grid_match(&a, &b), -5);
    b.step_y += 2e-6;
    EXPECT_EQ(grid_match(&a, &b), -4);
    b.step_x -= 2e-6;
    EXPECT_EQ(grid_match(&a, &b), -3);
    b.y0 += 2e-6;
    EXPECT_EQ(grid_match(&a, &b), -2);
    EXPECT_EQ(grid_match(&b, &a), -2);
    b.x0 -= 2e-6;
    EXPECT_EQ(grid_match(&a, &b), -1);
}

TEST(GridMatch, AMillionthIsNoDifference)
{
    grid a{};
    a.columns = a.rows = 5;
    grid b = a;
    b.x0 = b.y0 = b.step_x = b.step_y = 1e-6;
    EXPECT_EQ(grid_match(&a, &b), 1);
    b.x0 = 1.0000001e-6;
    EXPECT_EQ(grid_match(&a, &b), -1);
}

class GridTakeValues : public testing::Test
{
protected:
    void SetUp() override
    {
        for (grid** g : {&a, &b}) {
            *g = grid_create(10, 20, 1, 1, 3, 3);
            for (int i = 0; i < 16; ++i)
                grid_write_cell(*g, i, {g == &a ? 1.0 : 2.0, CELL_VALUE});
        }
    }
    void TearDown() override
    {
        EXPECT_EQ(grid_read_cell(b, 5).z, 2);
        grid_free(&a);
        grid_free(&b);
    }
    grid *a = nullptr, *b = nullptr;
};

TEST_F(GridTakeValues, WantsExactlyTheSameOrigin)
{
    b->x0 += 1e-9;
    EXPECT_EQ(grid_match(a, b), 1);
    EXPECT_EQ(grid_take_values(a, b), 0);
    EXPECT_EQ(printed_text(), "\nError: grid locations do not match");
    b->x0 = a->x0;
    b->y0 += 1e-9;
    EXPECT_EQ(grid_take_values(a, b), 0);
    EXPECT_EQ(printed_text(), "\nError: grid locations do not match");
    b->step_x = 2; // the origin is looked at first
    EXPECT_EQ(grid_take_values(a, b), 0);
    EXPECT_EQ(printed_text(), "\nError: grid locations do not match");
}

TEST_F(GridTakeValues, WantsExactlyTheSameSteps)
{
    b->step_x += 1e-9;
    EXPECT_EQ(grid_take_values(a, b), 0);
    EXPECT_EQ(printed_text(), "\nError: grid resolutions do not match");
    b->step_x = a->step_x;
    b->step_y += 1e-9;
    EXPECT_EQ(grid_take_values(a, b), 0);
    EXPECT_EQ(printed_text(), "\nError: grid resolutions do not match");
}

TEST_F(GridTakeValues, WantsTheSameSize)
{
    for (const auto& [columns, rows] : {std::pair{3, 4}, {4, 3}, {7, 1}}) {
        grid* other = grid_create(10, 20, 1, 1, columns, rows);
        EXPECT_EQ(grid_take_values(other, b), 0);
        EXPECT_EQ(printed_text(), "\nError: grid resolutions do not match");
        grid_free(&other);
    }
}

} // namespace
