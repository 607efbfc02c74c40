#include <gtest/gtest.h>

#include "grid/grid.h"
#include "tests/grid/memory_files.h"
#include "tests/polygon/heap.h"

namespace
{

grid* of_size(std::int32_t columns, std::int32_t rows)
{
    return grid_create(100, 200, 2, 3, columns, rows);
}

TEST(GridStore, WrittenCellsAreReadBackInMemoryAndInAFile)
{
    for (const int columns : {5, 700}) {
        grid* g = of_size(columns, 600);
        const std::int32_t count = grid_cell_count(g);
        for (std::int32_t i = 0; i < count; ++i)
            ASSERT_EQ(grid_write_cell(g, i, {i * 0.5, CELL_VALUE}), 1);
        for (std::int32_t i = 0; i < count; ++i)
            ASSERT_EQ(grid_read_cell(g, i).z, i * 0.5) << i;
        for (std::int32_t i = count - 1; i >= 0; --i)
            ASSERT_EQ(grid_read_cell(g, i).z, i * 0.5) << i;
        grid_free(&g);
    }
    EXPECT_EQ(test_heap::live_blocks(), 0);
}

} // namespace
