// Grids of a program without a CAD host, on this machine's file system.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "grid/grid.h"
#include "host/core/heap.h"
#include "hostapi/ads.h"
#include "tests/host/files/temporary_directory.h"

namespace
{

// Temporary files of the grids lie in the directory too.
class GridOnDisk : public testing::Test
{
protected:
    void SetUp() override
    {
        if (const char* set = getenv("TMPDIR"))
            before = set;
        setenv("TMPDIR", tmp.path.c_str(), 1);
    }
    void TearDown() override
    {
        if (before.empty())
            unsetenv("TMPDIR");
        else
            setenv("TMPDIR", before.c_str(), 1);
        EXPECT_EQ(host::heap_live_blocks(), blocks);
    }

    temporary_directory tmp;
    std::string before;
    std::size_t blocks = host::heap_live_blocks();
};

TEST_F(GridOnDisk, ALargeGridIsFilledReadSavedAndLoaded)
{
    grid* g = grid_create(1000, 2000, 2, 2, 700, 650);
    ASSERT_TRUE(g);
    ASSERT_FALSE(g->in_memory);
    const int count = grid_cell_count(g);
    for (int i = 0; i < count; ++i)
        ASSERT_EQ(grid_write_cell(g, i, {std::round(std::sin(i) * 1e6) / 1e3, i % 7 ? CELL_VALUE : CELL_NULL}),
                  1);
    ASSERT_EQ(grid_flush(g), 1);
    EXPECT_EQ(tmp.count(), 1);
    EXPECT_EQ(std::filesystem::file_size(tmp.path + "/" + g->temp_path), 16u * count);
    for (int i = count - 1; i >= 0; i -= 3)
        ASSERT_EQ(grid_read_cell(g, i).z, std::round(std::sin(i) * 1e6) / 1e3);

    ASSERT_EQ(grid_save(g, "large.grd"), 1);
    grid* again = grid_load("large.grd");
    ASSERT_TRUE(again);
    EXPECT_EQ(grid_match(g, again), 1);
    EXPECT_EQ(grid_null_count, (count + 6) / 7);
    for (int i = 0; i < count; ++i) {
        const grid_cell a = grid_read_cell(g, i), b = grid_read_cell(again, i);
        ASSERT_EQ(a.state, b.state);
        if (a.state == CELL_VALUE) {
            ASSERT_EQ(a.z, b.z) << i;
        }
    }
    grid_free(&g);
    grid_free(&again);
    EXPECT_EQ(tmp.count(), 1) << "the saved file alone";
}

TEST_F(GridOnDisk, AVanishedDirectoryHurtsNobody)
{
    grid* g = grid_create(0, 0, 1, 1, 600, 600);
    setenv("TMPDIR", "/nowhere-at-all", 1);
    EXPECT_EQ(grid_create(0, 0, 1, 1, 600, 600), nullptr);
    for (int i = 0; i < 20000; ++i)
        EXPECT_EQ(grid_write_cell(g, i, {1, CELL_VALUE}), i < 5000);
    EXPECT_EQ(grid_flush(g), 0);
    EXPECT_EQ(grid_read_cell(g, 100).z, 1);
    EXPECT_EQ(grid_read_cell(g, 10000).state, CELL_NULL);
    setenv("TMPDIR", tmp.path.c_str(), 1);
    EXPECT_EQ(grid_flush(g), 1);
    grid_free(&g);
    EXPECT_EQ(tmp.count(), 0);
}

TEST_F(GridOnDisk, AFullDeviceIsNoPlaceToSave)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "no such device here";
    grid* g = grid_create(0, 0, 1, 1, 100, 100);
    grid* made = grid_constant(g, 1);
    EXPECT_EQ(grid_save(made, "/dev/full"), 0);
    grid_free(&g);
    grid_free(&made);
}

TEST_F(GridOnDisk, TheHeapMayEndAtAnyAllocation)
{
    tmp.write("in.grd", "0\n0\n4\n4\n4\n4\n1\n2\nN\n");
    const double point[] = {1.5, 1.5, 7};
    const resbuf places = {nullptr, RTSHORT, {}};
    acedPutSym("grd_places", &places);
    const std::size_t held = host::heap_live_blocks();
    for (long nth = 1, left = 0; left == 0; ++nth) {
        host::heap_refuse(nth);
        grid* g = grid_load("in.grd");
        grid_add_point(g, point);
        grid* copy = grid_copy(g);
        grid_save(copy, "out.grd");
        grid_free(&g);
        grid_free(&copy);
        left = host::heap_refuse(0);
        ASSERT_EQ(host::heap_live_blocks(), held) << nth;
        ASSERT_LT(nth, 1000);
    }
    acedPutSym("grd_places", nullptr);
}

} // namespace
