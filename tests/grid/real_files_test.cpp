// Grids of a program without a CAD host, on this machine's file system.
#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "grid/fill.h"
#include "grid/grid.h"
#include "host/core/heap.h"
#include "host/core/plain_host.h"
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

// Somebody shortens the file while the second pass is told: the fill is then at work in it.
TEST_F(GridOnDisk, AFileShortenedDuringTheFillIsTold)
{
    static std::string path, printed;
    printed.clear();
    grid* g = grid_create(0, 0, 1, 1, 620, 600);
    for (int i = 0; i < grid_cell_count(g); ++i)
        grid_write_cell(g, i, {1.0 * i, i % 9 ? CELL_VALUE : CELL_NULL});
    ASSERT_EQ(grid_flush(g), 1);
    path = tmp.path + "/" + g->temp_path;
    host::plain_print_to([](const char* text) {
        printed += text;
        if (printed.find("Pass> 2") != printed.npos)
            std::filesystem::resize_file(path, 5000);
    });
    EXPECT_EQ(grid_fill_nulls(g, 9, 'C'), RTERROR);
    EXPECT_NE(printed.find("\nError: grid cells can't be kept"), printed.npos);
    EXPECT_EQ(grid_fill_nulls(g, 9, 'C'), RTERROR) << "and so is the next";
    host::plain_print_to(nullptr);
    EXPECT_EQ(g->in_memory, 0);
    EXPECT_EQ(grid_read_cell(g, 300000).state, CELL_NULL);
    grid_free(&g);
    EXPECT_EQ(tmp.count(), 0);
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

// Both kinds of store, by the size in the file.
TEST_F(GridOnDisk, AGridIsSavedOverTheFileItCameFrom)
{
    for (const int columns : {40, 620}) {
        std::string text =
            "0\r\n0\r\n600\r\n" + std::to_string(columns) + "\r\n" + std::to_string(columns) + "\r\n600\r\n";
        for (int i = 0; i < (columns + 1) * 601; ++i)
            text += i % 9 ? std::to_string(i % 1000) + ".1250\r\n" : "N\r\n";
        tmp.write("own.grd", text);
        grid* g = grid_load("own.grd");
        ASSERT_TRUE(g);
        ASSERT_EQ(grid_save(g, "own.grd"), 1);
        const std::string saved = tmp.read("own.grd");
        EXPECT_EQ(saved.substr(0, saved.find('N')), "0.0000\n0.0000\n600.0000\n" + std::to_string(columns) +
                                                        ".0000\n" + std::to_string(columns) + ".0\n600.0\n");
        grid* again = grid_load("own.grd");
        ASSERT_TRUE(again);
        ASSERT_EQ(grid_save(again, "own.grd"), 1);
        EXPECT_EQ(tmp.read("own.grd"), saved);
        grid_free(&g);
        grid_free(&again);
        EXPECT_EQ(tmp.count(), 1);
    }
}

TEST_F(GridOnDisk, AFullDiskLeavesTheOldFile)
{
    // A limit on the size of files stands in for the full disk, in a process of its own.
    tmp.write("old.grd", "old");
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        grid* g = grid_create(0, 0, 1, 1, 100, 100);
        grid* made = grid_constant(g, 1);
        const rlimit limit = {1000, 1000};
        setrlimit(RLIMIT_FSIZE, &limit);
        _exit(made ? grid_save(made, "old.grd") : 2);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(tmp.read("old.grd"), "old");
    EXPECT_EQ(tmp.count(), 1);
}

TEST_F(GridOnDisk, AFullDiskUnderALargeGridIsToldAndOtherGridsStay)
{
    grid* other = grid_create(0, 0, 1, 1, 600, 600);
    for (int i = 0; i < 20000; ++i)
        grid_write_cell(other, i, {double(i), CELL_VALUE});
    grid_flush(other);
    const std::string bytes = tmp.read(other->temp_path);
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {100000, 100000};
        setrlimit(RLIMIT_FSIZE, &limit);
        grid* g = grid_create(0, 0, 1, 1, 600, 600);
        int refused = 0;
        for (int i = 0; i < 20000; ++i)
            refused += !grid_write_cell(g, i, {1, CELL_VALUE});
        const bool told = refused > 0 && !grid_flush(g) && !grid_constant(g, 1) && !grid_copy(other);
        grid_free(&g);
        _exit(told && tmp.count() == 1 ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(tmp.read(other->temp_path), bytes);
    grid_free(&other);
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
