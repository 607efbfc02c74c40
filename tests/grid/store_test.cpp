#include <gtest/gtest.h>

#include <climits>

#include "grid/grid.h"
#include "tests/grid/memory_files.h"
#include "tests/polygon/heap.h"

namespace
{

class GridStore : public testing::Test
{
protected:
    void SetUp() override { memory_files::forget(); }
    void TearDown() override
    {
        EXPECT_EQ(test_heap::live_blocks(), 0);
        EXPECT_TRUE(memory_files::disk().files.empty());
    }
};

grid* of_size(std::int32_t columns, std::int32_t rows)
{
    return grid_create(100, 200, 2, 3, columns, rows);
}

int in_memory(std::int32_t columns, std::int32_t rows)
{
    grid* g = of_size(columns, rows);
    const int answer = g ? g->in_memory : -1;
    grid_free(&g);
    return answer;
}

void expect_null(const grid_cell& cell)
{
    EXPECT_EQ(cell.z, 0);
    EXPECT_EQ(cell.state, '0');
    EXPECT_EQ(cell.mark, '0');
    EXPECT_EQ(cell.unused, 0);
    EXPECT_EQ(cell.points, 0u);
}

TEST_F(GridStore, ANewGridHasItsGeometryAndEmptyWindows)
{
    for (const int columns : {7, 700}) {
        grid* g = grid_create(1.5, -2.5, 0.25, -4, columns, 800);
        ASSERT_TRUE(g);
        EXPECT_EQ(g->x0, 1.5);
        EXPECT_EQ(g->y0, -2.5);
        EXPECT_EQ(g->step_x, 0.25);
        EXPECT_EQ(g->step_y, -4);
        EXPECT_EQ(g->columns, columns);
        EXPECT_EQ(g->rows, 800);
        EXPECT_EQ(g->write_start, -1);
        EXPECT_EQ(g->read_start, -1);
        EXPECT_EQ(g->write_count, -1);
        EXPECT_EQ(g->read_count, -1);
        EXPECT_EQ(g->points, nullptr);
        EXPECT_EQ(g->file, nullptr);
        EXPECT_EQ(g->row_table != nullptr, columns == 7);
        EXPECT_EQ(g->write_buffer != nullptr, columns == 700);
        EXPECT_EQ(g->read_buffer != nullptr, columns == 700);
        EXPECT_EQ(g->temp_path[0] != '\0', columns == 700);
        grid_free(&g);
    }
}

TEST_F(GridStore, IntervalsDecideBetweenMemoryAndFile)
{
    EXPECT_EQ(in_memory(599, 600), 1);
    EXPECT_EQ(in_memory(600, 600), 0);
    EXPECT_EQ(in_memory(600, 599), 1);
    EXPECT_EQ(in_memory(359999, 1), 1);
    EXPECT_EQ(in_memory(1, 360000), 0);
    EXPECT_EQ(in_memory(0, 0), 1);
    EXPECT_EQ(in_memory(0, 500000), 1);
    EXPECT_EQ(in_memory(0, INT_MAX - 1), 0) << "a row table of this length is no help";
}

TEST_F(GridStore, ASizeThatHasNoIndicesIsRefusedAndTold)
{
    for (const auto& [columns, rows] :
         {std::pair{-1, 5}, {5, -1}, {46340, 46340}, {INT_MAX, INT_MAX}, {INT_MAX, 0}, {INT_MIN, INT_MIN}}) {
        EXPECT_EQ(in_memory(columns, rows), -1);
        EXPECT_EQ(printed_text(), "\nError: a grid of " + std::to_string(columns) + " by " +
                                      std::to_string(rows) + " intervals is out of range");
    }
    EXPECT_EQ(in_memory(46339, 46339), 0);
}

TEST_F(GridStore, WrittenCellsAreReadBackInMemoryAndInAFile)
{
    for (const int columns : {5, 700}) {
        grid* g = of_size(columns, 600);
        const std::int32_t count = grid_cell_count(g);
        for (std::int32_t i = 0; i < count; ++i)
            ASSERT_EQ(grid_write_cell(g, i, {i * 0.5, CELL_VALUE, '1', 0, 9}), 1);
        EXPECT_EQ(grid_flush(g), 1);
        for (std::int32_t i = 0; i < count; ++i)
            ASSERT_EQ(grid_read_cell(g, i).z, i * 0.5) << i;
        for (std::int32_t i = count - 1; i >= 0; --i)
            ASSERT_EQ(grid_read_cell(g, i).z, i * 0.5) << i;
        const grid_cell last = grid_read_cell(g, count - 1);
        EXPECT_EQ(last.state, '1');
        EXPECT_EQ(last.mark, '1');
        EXPECT_EQ(last.points, 9u);
        grid_free(&g);
    }
}

TEST_F(GridStore, RowsLieOneBehindTheOther)
{
    grid* g = of_size(4, 2);
    for (int i = 0; i < 15; ++i)
        grid_write_cell(g, i, {double(i), CELL_VALUE});
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 5; ++c)
            EXPECT_EQ(g->row_table[r][c].z, 5 * r + c);
    grid_free(&g);
}

TEST_F(GridStore, NoGridAndNoCellReadAsNull)
{
    expect_null(grid_read_cell(nullptr, 0));
    for (const int columns : {5, 700}) {
        grid* g = of_size(columns, 600);
        expect_null(grid_read_cell(g, -1));
        expect_null(grid_read_cell(g, INT_MIN));
        grid_free(&g);
    }
    EXPECT_EQ(printed_text(), "");
}

TEST_F(GridStore, ARowAboveTheLastIsToldInMemoryAndReadsAsNull)
{
    grid* g = of_size(4, 2);
    expect_null(grid_read_cell(g, 15));
    EXPECT_EQ(printed_text(), "Invalid row range: 3\n");
    expect_null(grid_read_cell(g, INT_MAX));
    EXPECT_EQ(printed_text(), "Invalid row range: 429496729\n");
    grid_free(&g);
    g = of_size(700, 600);
    expect_null(grid_read_cell(g, grid_cell_count(g)));
    expect_null(grid_read_cell(g, INT_MAX));
    EXPECT_EQ(printed_text(), "");
    grid_free(&g);
}

TEST_F(GridStore, AWriteWithoutACellDoesNothing)
{
    EXPECT_EQ(grid_write_cell(nullptr, 0, {}), 0);
    for (const int columns : {5, 700}) {
        grid* g = of_size(columns, 600);
        EXPECT_EQ(grid_write_cell(g, -1, {}), 0);
        EXPECT_EQ(grid_write_cell(g, grid_cell_count(g), {}), 0);
        EXPECT_EQ(grid_write_cell(g, INT_MAX, {}), 0);
        EXPECT_EQ(grid_write_cell(g, INT_MIN, {}), 0);
        EXPECT_EQ(g->write_count, -1);
        grid_free(&g);
    }
    EXPECT_EQ(printed_text(), "");
}

TEST_F(GridStore, AFlushOfNoGridIsNoneAndInMemoryThereIsNothingToDo)
{
    EXPECT_EQ(grid_flush(nullptr), 0);
    grid* g = of_size(4, 2);
    EXPECT_EQ(grid_flush(g), 1);
    EXPECT_EQ(memory_files::disk().opened, 0);
    grid_free(&g);
}

TEST_F(GridStore, FreeingNothingIsFine)
{
    grid_free(nullptr);
    grid* g = nullptr;
    grid_free(&g);
    EXPECT_EQ(g, nullptr);
}

TEST_F(GridStore, WhenRowsCantBeHadTheGridGoesToAFile)
{
    // The record, the table of rows, four rows; then the two windows.
    for (int n = 2; n <= 6; ++n) {
        test_heap::fail_at(n);
        grid* g = of_size(4, 3);
        ASSERT_TRUE(g) << n;
        EXPECT_EQ(g->in_memory, 0) << n;
        EXPECT_EQ(g->row_table, nullptr);
        for (int i = 0; i < 20; ++i)
            grid_write_cell(g, i, {double(i), CELL_VALUE});
        for (int i = 0; i < 20; ++i)
            EXPECT_EQ(grid_read_cell(g, i).z, i);
        grid_free(&g);
        EXPECT_EQ(test_heap::live_blocks(), 0) << n;
    }
}

TEST_F(GridStore, WithoutTheRecordOrAWindowThereIsNoGrid)
{
    for (int n = 1; n <= 3; ++n) {
        test_heap::fail_at(n);
        EXPECT_EQ(of_size(600, 600), nullptr) << n;
        EXPECT_EQ(test_heap::live_blocks(), 0) << n;
    }
    test_heap::fail_at(0);
}

TEST_F(GridStore, WithoutANameForItsFileThereIsNoGrid)
{
    memory_files::disk().refuse_names = true;
    EXPECT_EQ(of_size(600, 600), nullptr);
    EXPECT_EQ(in_memory(599, 600), 1);
}

} // namespace
