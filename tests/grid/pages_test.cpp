// Grids that are kept in a file: the same results as in memory, whatever is in the windows and in the pages,
// with little memory, and when the file fails.
#include <gtest/gtest.h>

#include <memory>

#include "common/user_break.h"
#include "grid/fill.h"
#include "grid/interpolate.h"
#include "hostapi/ads.h"
#include "tests/grid/memory_files.h"
#include "tests/grid/random_grids.h"
#include "tests/polygon/heap.h"

namespace
{

using random_grids::place;

struct freed {
    void operator()(grid* g) const { grid_free(&g); }
};
using held_grid = std::unique_ptr<grid, freed>;

class GridPages : public testing::Test
{
protected:
    void SetUp() override
    {
        printed_text();
        user_break_clear();
    }
    void TearDown() override
    {
        test_heap::break_at(0);
        test_heap::fail_from(0);
        user_break_clear();
        grid_fill_plane = grid_fill_quiet = 0;
        printed_text();
        EXPECT_EQ(test_heap::live_blocks(), 0);
        EXPECT_TRUE(memory_files::disk().files.empty());
        EXPECT_EQ(memory_files::disk().open_files, 0);
        memory_files::forget();
    }
    static held_grid in_file(const plain::raster& r)
    {
        return held_grid(random_grids::made_of(r, place::in_file));
    }
    // Nothing written yet.
    static held_grid new_file(const plain::raster& r)
    {
        test_heap::fail_at(2); // no memory for the rows
        held_grid g(grid_create(r.x0, r.y0, r.step_x, r.step_y, r.columns, r.rows));
        test_heap::fail_at(0);
        return g;
    }
};

// 600 by 600 intervals is the first size that is kept in a file by itself.
TEST_F(GridPages, LargeGridsAreFilledAsInMemory)
{
    const struct {
        int columns, rows;
        char mode;
        int plane;
    } cases[] = {{600, 600, 'C', 0},  {600, 600, 'P', 0}, {600, 600, 'A', 0}, {600, 600, 'C', 1},
                 {1500, 300, 'C', 0}, {90, 5000, 'P', 0}, {9000, 50, 'A', 0}};
    for (const auto& one : cases)
        for (const char way : {'m', 'c', 'p'}) { // mapped, copied, in pages
            plain::raster r = random_grids::ground(7, one.columns, one.rows, 0.1);
            const held_grid g = in_file(r);
            ASSERT_TRUE(g);
            ASSERT_EQ(g->in_memory, 0);
            r.fill_plane = grid_fill_plane = one.plane;
            EXPECT_EQ(plain::fill_nulls(r, 9, one.mode), plain::done);
            memory_files::disk().refuse_mapping = way != 'm';
            test_heap::fail_at(way == 'p' ? 1 : 0); // no memory for the whole grid
            EXPECT_EQ(grid_fill_nulls(g.get(), 9, one.mode), RTNORM);
            EXPECT_EQ(g->in_memory, 0);
            EXPECT_EQ(random_grids::first_difference(g.get(), r), -1) << one.columns << one.mode;
            EXPECT_EQ(printed_text(), r.printed);
            EXPECT_GT(r.polls, 3);
            EXPECT_EQ(memory_files::disk().mapped, memory_files::disk().unmapped);
            memory_files::disk().log.clear();
        }
}

TEST_F(GridPages, BreakAtEachPollLeavesTheSameCells)
{
    const plain::raster start = random_grids::ground(8, 620, 600, 0.1);
    int broken = 0;
    for (int n = 1;; ++n) {
        memory_files::disk().refuse_mapping = n % 3 != 0;
        plain::raster r = start;
        const held_grid g = in_file(r);
        r.break_at = n;
        user_break_clear();
        test_heap::break_at(n);
        test_heap::fail_at(n % 2);
        const int want = plain::fill_nulls(r, 9, 'C');
        ASSERT_EQ(grid_fill_nulls(g.get(), 9, 'C'), want) << n;
        ASSERT_EQ(random_grids::first_difference(g.get(), r), -1) << n;
        ASSERT_EQ(printed_text(), r.printed);
        test_heap::break_at(0);
        memory_files::disk().log.clear();
        if (want == plain::done)
            break;
        ++broken;
    }
    EXPECT_GT(broken, 3);
}

// With memory for 16 pages only, of more than 200, they come and go.
TEST_F(GridPages, FewPagesGiveTheSame)
{
    for (const int more : {1, 2, 5}) {
        plain::raster r = random_grids::ground(9, 1200, 700, 0.0002);
        r.cells[0] = {}; // estimated first, so that there is a list before memory ends
        const held_grid g = in_file(r);
        ASSERT_EQ(plain::fill_nulls(r, 9, 'C'), plain::done);
        const int pages_and_tables = 3 + 16;
        test_heap::fail_at(1); // not the whole grid
        test_heap::fail_from(pages_and_tables + 1 + more);
        EXPECT_EQ(grid_fill_nulls(g.get(), 9, 'C'), RTNORM);
        test_heap::fail_from(0);
        EXPECT_EQ(random_grids::first_difference(g.get(), r), -1) << more;
        EXPECT_GT(r.polls, 1);
        memory_files::disk().log.clear();
    }
}

TEST_F(GridPages, WithoutMemoryForPagesTheWindowsDo)
{
    for (int n = 1; n <= 19; ++n) {
        plain::raster r = random_grids::ground(9, 60, 40, 0.1);
        const held_grid g = in_file(r);
        const double point[3] = {r.x0 + 11, r.y0 + 11, 0};
        test_heap::fail_at(n);
        EXPECT_EQ(grid_interpolate_cubic(point, g.get()), plain::interpolate_cubic(r, point[0], point[1])) << n;
        test_heap::fail_at(0);
    }
}

// Cells behind the last one that was written are null.
TEST_F(GridPages, GridsWrittenInPartAreFilledToo)
{
    for (const int written : {300, 1500, 2490}) {
        plain::raster r = random_grids::ground(9, 60, 40, 0.1);
        for (std::size_t i = written; i < r.cells.size(); ++i)
            r.cells[i] = {};
        const held_grid g = new_file(r);
        for (int i = 0; i < written; ++i)
            grid_write_cell(g.get(), i, {r.cells[i].z, r.cells[i].state});
        ASSERT_EQ(plain::fill_nulls(r, 9, 'C'), plain::done);
        EXPECT_EQ(grid_fill_nulls(g.get(), 9, 'C'), RTNORM);
        EXPECT_EQ(random_grids::first_difference(g.get(), r), -1) << written;
        EXPECT_EQ(r.cells.back().state, '1');
    }
}

TEST_F(GridPages, LargeGridsWrittenInPartAreFilledWithFewTransfers)
{
    for (const int written : {1000, 200000, 621 * 601 - 3}) {
        plain::raster r = random_grids::ground(9, 620, 600, 0.1);
        for (std::size_t i = written; i < r.cells.size(); ++i)
            r.cells[i] = {};
        const held_grid g(grid_create(r.x0, r.y0, r.step_x, r.step_y, r.columns, r.rows));
        for (int i = 0; i < written; ++i)
            grid_write_cell(g.get(), i, {r.cells[i].z, r.cells[i].state});
        ASSERT_EQ(plain::fill_nulls(r, 9, 'A'), plain::done);
        const int opened = memory_files::disk().opened;
        EXPECT_EQ(grid_fill_nulls(g.get(), 9, 'A'), RTNORM);
        EXPECT_LT(memory_files::disk().opened - opened, 300);
        EXPECT_EQ(random_grids::first_difference(g.get(), r), -1) << written;
    }
}

TEST_F(GridPages, ALargeGridWithoutAnyValueIsNotBroughtIntoAFile)
{
    const held_grid g(grid_create(0, 0, 1, 1, 600, 600));
    EXPECT_EQ(grid_fill_nulls(g.get(), 9, 'C'), RTNORM);
    EXPECT_EQ(memory_files::disk().opened, 0);
    EXPECT_EQ(grid_read_cell(g.get(), 1000).state, CELL_NULL);
}

TEST_F(GridPages, AFullDiskBeforeAFillIsToldAndNothingIsLost)
{
    const held_grid g(grid_create(0, 0, 1, 1, 600, 600));
    for (std::int32_t i = 0; i < 3000; ++i)
        grid_write_cell(g.get(), i, {5.0, CELL_VALUE});
    grid_flush(g.get());
    memory_files::disk().room = 30000;
    EXPECT_EQ(grid_fill_nulls(g.get(), 9, 'A'), RTERROR);
    EXPECT_NE(printed_text().find("\nError: grid cells can't be kept"), std::string::npos);
    memory_files::disk().room = memory_files::NO_LIMIT;
    EXPECT_EQ(grid_read_cell(g.get(), 2999).z, 5);
    EXPECT_EQ(grid_read_cell(g.get(), 3000).state, CELL_NULL);
    EXPECT_EQ(grid_save(g.get(), "out"), 1);
    memory_files::disk().files.erase("out");
}

TEST_F(GridPages, InterpolationSeesWhatWasWrittenLast)
{
    std::mt19937 random(3);
    plain::raster r = random_grids::ground(10, 900, 500, 0.001);
    const held_grid g = in_file(r);
    for (int round = 0; round < 3000; ++round) {
        const int i = random_grids::below(random, grid_cell_count(g.get()));
        switch (random_grids::below(random, 4)) {
        case 0:
            r.cells[i].z = round;
            grid_write_cell(g.get(), i, {r.cells[i].z, r.cells[i].state});
            break;
        case 1:
            grid_read_cell(g.get(), i);
            break;
        case 2:
            if (random_grids::below(random, 10) == 0)
                grid_flush(g.get());
            break;
        default:
            break;
        }
        const double point[3] = {r.x(i) + random_grids::uniform(random, -3, 3),
                                 r.y(i) + random_grids::uniform(random, -3, 3), 0};
        ASSERT_TRUE(random_grids::same_bits(grid_interpolate(point, g.get()),
                                            plain::interpolate(r, point[0], point[1])));
        ASSERT_TRUE(random_grids::same_bits(grid_interpolate_cubic(point, g.get()),
                                            plain::interpolate_cubic(r, point[0], point[1])));
    }
    EXPECT_EQ(random_grids::first_difference(g.get(), r), -1);
}

TEST_F(GridPages, WhatWasReadOfAFileThatIsGoneIsForgotten)
{
    const plain::raster r = random_grids::ground(11, 620, 600, 0);
    const held_grid g = in_file(r);
    grid_flush(g.get());
    const double point[3] = {r.x0 + 1, r.y0 + 1, 0};
    EXPECT_NE(grid_interpolate(point, g.get()), NO_ELEVATION);
    memory_files::disk().files.clear();
    grid_write_cell(g.get(), grid_cell_count(g.get()) - 1, {1.0, CELL_VALUE});
    EXPECT_EQ(grid_flush(g.get()), 0);
    EXPECT_EQ(grid_interpolate(point, g.get()), NO_ELEVATION);
}

TEST_F(GridPages, CellsNeverWrittenReadAsTheStoreGivesThem)
{
    const held_grid g(grid_create(0, 0, 1, 1, 700, 600));
    for (std::int32_t i = 0; i < 3000; ++i)
        grid_write_cell(g.get(), i, {5.0, CELL_VALUE});
    const double known[3] = {10.5, 2.5, 0}, unknown[3] = {10.5, 500.5, 0};
    EXPECT_EQ(grid_interpolate(known, g.get()), 5);
    EXPECT_EQ(grid_interpolate(unknown, g.get()), NO_ELEVATION);
    grid_fill_quiet = 1;
    EXPECT_EQ(grid_fill_nulls(g.get(), 0, 'A'), RTNORM);
    EXPECT_EQ(grid_read_cell(g.get(), 3000).z, 5);
    EXPECT_EQ(grid_read_cell(g.get(), 3000).state, CELL_VALUE);
}

TEST_F(GridPages, FileThatCanNotBeReadIsToldAndLeftAlone)
{
    const plain::raster r = random_grids::ground(11, 620, 600, 0.1);
    const held_grid g = in_file(r);
    grid_flush(g.get());
    memory_files::disk().refuse_opening = true;
    EXPECT_EQ(grid_fill_nulls(g.get(), 9, 'C'), RTERROR);
    memory_files::disk().refuse_opening = false;
    EXPECT_NE(printed_text().find("\nError: grid cells can't be kept"), std::string::npos);
    EXPECT_EQ(random_grids::first_difference(g.get(), r), -1);
}

TEST_F(GridPages, AMappedFileIsNeitherReadNorWritten)
{
    plain::raster r = random_grids::ground(11, 620, 600, 0.1);
    const held_grid g = in_file(r);
    grid_flush(g.get());
    const double point[3] = {1001, 2001, 0};
    grid_interpolate(point, g.get()); // its page and the read window are older than the filled cells
    grid_read_cell(g.get(), 0);
    memory_files::disk().refuse_mapping = false;
    memory_files::disk().log.clear();
    EXPECT_EQ(grid_fill_nulls(g.get(), 9, 'C'), RTNORM);
    EXPECT_EQ(memory_files::disk().log, "");
    EXPECT_EQ(memory_files::disk().mapped, 1);
    EXPECT_EQ(memory_files::disk().unmapped, 1);
    plain::fill_nulls(r, 9, 'C');
    EXPECT_EQ(grid_interpolate(point, g.get()), plain::interpolate(r, point[0], point[1]));
    EXPECT_EQ(random_grids::first_difference(g.get(), r), -1);
}

TEST_F(GridPages, AMappedFileThatLosesBytesIsTold)
{
    const held_grid g = in_file(random_grids::ground(11, 620, 600, 0.1));
    memory_files::disk().refuse_mapping = false;
    memory_files::disk().lose_mapped = true;
    EXPECT_EQ(grid_fill_nulls(g.get(), 9, 'C'), RTERROR);
    EXPECT_NE(printed_text().find("\nError: grid cells can't be kept"), std::string::npos);
    EXPECT_EQ(g->in_memory, 0);
    EXPECT_EQ(g->faults, 1);
    memory_files::disk().lose_mapped = false;
    EXPECT_EQ(grid_fill_nulls(g.get(), 9, 'C'), RTNORM);
}

TEST_F(GridPages, ShortReadsAreToldAndWriteNothing)
{
    const plain::raster r = random_grids::ground(11, 620, 600, 0.1);
    const held_grid g = in_file(r);
    grid_flush(g.get());
    memory_files::disk().read_limit = 20000;
    EXPECT_EQ(grid_fill_nulls(g.get(), 9, 'C'), RTERROR);
    memory_files::disk().read_limit = memory_files::NO_LIMIT;
    EXPECT_EQ(random_grids::first_difference(g.get(), r), -1);
    plain::raster filled = r; // and the pages hold none of it
    plain::fill_nulls(filled, 9, 'C');
    EXPECT_EQ(grid_fill_nulls(g.get(), 9, 'C'), RTNORM);
    EXPECT_EQ(random_grids::first_difference(g.get(), filled), -1);
}

TEST_F(GridPages, FullDiskIsTold)
{
    const plain::raster r = random_grids::ground(11, 620, 600, 0.1);
    const held_grid g = in_file(r);
    grid_flush(g.get());
    memory_files::disk().room = 1000;
    EXPECT_EQ(grid_fill_nulls(g.get(), 9, 'C'), RTERROR);
    EXPECT_NE(printed_text().find("\nError: grid cells can't be kept"), std::string::npos);
    memory_files::disk().room = memory_files::NO_LIMIT;
    const double point[3] = {1001, 2001, 0};
    grid_interpolate(point, g.get());
}

} // namespace
