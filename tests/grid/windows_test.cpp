// What grids in a temporary file bring over and when: one entry of the log is one transfer, "mode place
// wanted>moved;" in bytes.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "grid/grid.h"
#include "tests/grid/memory_files.h"
#include "tests/polygon/heap.h"

namespace
{

using memory_files::disk;

constexpr int LAST = 601 * 601 - 1;

class GridFile : public testing::Test
{
protected:
    void SetUp() override
    {
        memory_files::forget();
        g = grid_create(0, 0, 1, 1, 600, 600);
    }
    void TearDown() override
    {
        disk().refuse_opening = false;
        grid_free(&g);
        EXPECT_EQ(test_heap::live_blocks(), 0);
        EXPECT_EQ(disk().open_files, 0);
        EXPECT_TRUE(disk().files.empty());
    }
    int put(int index, double z) { return grid_write_cell(g, index, {z, CELL_VALUE}); }
    double z(int index) { return grid_read_cell(g, index).z; }
    char state(int index) { return grid_read_cell(g, index).state; }
    // Every cell its index.
    void fill()
    {
        for (int i = 0; i <= LAST; ++i)
            put(i, i);
        grid_flush(g);
        log();
    }
    std::string log() { return std::exchange(disk().log, {}); }

    grid* g = nullptr;
};

TEST_F(GridFile, ComesIntoBeingAtTheFirstFlushAndGoesWithTheGrid)
{
    EXPECT_NE(g->temp_path[0], '\0');
    EXPECT_TRUE(disk().files.empty());
    put(0, 1);
    EXPECT_TRUE(disk().files.empty());
    EXPECT_EQ(grid_flush(g), 1);
    EXPECT_EQ(disk().files.count(g->temp_path), 1u);
    EXPECT_EQ(log(), "w+b 0 16>16;");
    EXPECT_EQ(g->write_count, -1);
    put(0, 2);
    log();
    grid_free(&g);
    EXPECT_EQ(g, nullptr);
    EXPECT_EQ(log(), "r+b 0 16>16;");
    EXPECT_TRUE(disk().files.empty());
}

TEST_F(GridFile, HoldsRecordsOf16BytesWithTheLowestByteFirst)
{
    grid_write_cell(g, 1, {-2.5, '1', '1', 0, 0x01020304});
    grid_flush(g);
    const std::string null_cell("\0\0\0\0\0\0\0\0"
                                "00\0\0\0\0\0\0",
                                16);
    const std::string cell("\0\0\0\0\0\0\x04\xc0"
                           "11\0\0\4\3\2\1",
                           16);
    EXPECT_EQ(disk().files[g->temp_path], null_cell + cell);
}

TEST_F(GridFile, AFlushWithoutWritesDoesNothing)
{
    EXPECT_EQ(grid_flush(g), 1);
    put(0, 1);
    grid_flush(g);
    EXPECT_EQ(grid_flush(g), 1);
    EXPECT_EQ(disk().opened, 1);
}

TEST_F(GridFile, TheLastCellOfAGridThatWasNeverFlushedComesFromTheWriteWindow)
{
    put(LAST, 7);
    EXPECT_EQ(z(LAST), 7);
    EXPECT_EQ(disk().opened, 0);
}

TEST_F(GridFile, AnUnwrittenGridReadsAsNullWithoutAWord)
{
    const grid_cell cell = grid_read_cell(g, 5);
    EXPECT_EQ(cell.z, 0);
    EXPECT_EQ(cell.state, '0');
    EXPECT_EQ(cell.mark, '0');
    EXPECT_EQ(cell.points, 0u);
    EXPECT_EQ(printed_text(), "");
}

TEST_F(GridFile, AFarWriteFlushesAndFillsNoGapInTheFile)
{
    put(3, 1);
    EXPECT_EQ(log(), "");
    put(6000, 2);
    EXPECT_EQ(log(), "w+b 0 64>64;rb 56000 80000>0;");
    grid_flush(g);
    EXPECT_EQ(log(), "r+b 56000 40016>40016;");
    EXPECT_EQ(z(3), 1);
    EXPECT_EQ(z(6000), 2);
    EXPECT_EQ(state(0), '0') << "before the first written one: a null cell of the window";
    EXPECT_EQ(state(3499), '\0') << "never written: as the file has it";
    EXPECT_EQ(state(3500), '0') << "from the second window's start: null cells of the window";
}

TEST_F(GridFile, AReadTakes5000CellsBehindTheOneAskedForAndAsManyBefore)
{
    fill();
    EXPECT_EQ(z(20000), 20000);
    EXPECT_EQ(log(), "rb 240000 160000>160000;");
    EXPECT_EQ(z(15000), 15000);
    EXPECT_EQ(z(24999), 24999);
    EXPECT_EQ(log(), "");
    EXPECT_EQ(z(25000), 25000);
    EXPECT_EQ(log(), "rb 320000 160000>160000;");
    EXPECT_EQ(z(19999), 19999);
    EXPECT_EQ(log(), "rb 239984 160000>160000;");
}

TEST_F(GridFile, AReadNearTheStartTakesTheFirst10000Cells)
{
    fill();
    EXPECT_EQ(z(5000), 5000);
    EXPECT_EQ(log(), "rb 0 160000>160000;");
    EXPECT_EQ(z(10001), 10001);
    EXPECT_EQ(log(), "rb 80016 160000>160000;");
    EXPECT_EQ(z(5000), 5000);
    EXPECT_EQ(log(), "rb 0 160000>160000;");
}

TEST_F(GridFile, AWalkInOrderOfIndexReadsOnceIn5000Cells)
{
    fill();
    const int before = disk().opened;
    for (int i = 0; i <= LAST; ++i)
        ASSERT_EQ(z(i), i);
    EXPECT_EQ(disk().opened - before, 1 + (LAST - 5000) / 5000);
}

TEST_F(GridFile, TheWriteWindowIsCentredOnItsFirstCell)
{
    fill();
    put(100000, -1);
    EXPECT_EQ(log(), "rb 1560000 80000>80000;");
    EXPECT_EQ(g->write_start, 97500);
    EXPECT_EQ(g->write_count, 5000);
    put(102499, -2);
    put(97500, -3);
    EXPECT_EQ(log(), "");
    put(102500, -4);
    EXPECT_EQ(log(), "r+b 1560000 80000>80000;rb 1600000 80000>80000;");
}

TEST_F(GridFile, TheWriteWindowIsTakenFromAReadWindowThatCoversIt)
{
    fill();
    z(20000); // 15000 to 24999
    log();
    put(22499, -1); // 19999 to 24998
    EXPECT_EQ(log(), "");
    EXPECT_EQ(z(22499), -1);
    grid_flush(g);
    log();
    put(22500, -2); // 20000 to 24999
    EXPECT_EQ(log(), "");
    grid_flush(g);
    log();
    put(22501, -3); // one too far
    EXPECT_EQ(log(), "rb 320016 80000>80000;");
    for (int i = 22490; i < 22510; ++i)
        EXPECT_EQ(z(i), i < 22499 || i > 22501 ? i : 22498 - i) << i;
}

TEST_F(GridFile, AWriteIsSeenInTheReadWindowToo)
{
    fill();
    z(20000);
    put(20001, -5);
    EXPECT_EQ(z(20001), -5);
    grid_flush(g);
    EXPECT_EQ(z(20001), -5);
}

TEST_F(GridFile, WritesThatBeginInsideTheReadWindowAreLaidOverIt)
{
    fill();
    put(29000, -1); // window 26500 to 31499
    put(26500, -2);
    put(31499, -3);
    log();
    EXPECT_EQ(z(25000), 25000); // window 20000 to 29999
    EXPECT_EQ(log(), "rb 320000 160000>160000;");
    EXPECT_EQ(z(29000), -1);
    EXPECT_EQ(z(26500), -2);
    EXPECT_EQ(z(31499), -3);
    EXPECT_EQ(log(), "");
}

TEST_F(GridFile, WritesThatEndInsideTheReadWindowAreLaidOverItsStart)
{
    fill();
    put(20000, -1); // window 17500 to 22499
    put(22499, -2);
    EXPECT_EQ(z(26000), 26000); // window 21000 to 30999
    put(100000, 0);             // the write window goes, the read window answers
    log();
    EXPECT_EQ(z(22499), -2);
    EXPECT_EQ(z(21500), 21500);
    EXPECT_EQ(log(), "");
}

// Programs may have read such cells; the file as it then was is the answer.
TEST_F(GridFile, AWriteWindowThatCoversTheWholeReadWindowIsNotLaidOverIt)
{
    for (int i = 0; i < 3000; ++i)
        put(i, i);
    grid_flush(g);
    put(3500, -1); // window 1000 to 3500
    put(2500, -2);
    EXPECT_EQ(z(7000), 0); // window 2000 to 2999: the file ends
    EXPECT_EQ(z(2500), 2500);
}

TEST_F(GridFile, AWriteWindowThatEndsWithTheReadWindowIsNotLaidOverIt)
{
    for (int i = 0; i < 3000; ++i)
        put(i, i);
    grid_flush(g);
    put(3499, 0); // window 999 to 3499
    grid_flush(g);
    put(3400, -1); // window 900 to 3499
    EXPECT_EQ(z(7500), 0);
    EXPECT_EQ(g->read_start, 2500);
    EXPECT_EQ(g->read_count, 1000);
    EXPECT_EQ(z(3400), 0);
}

TEST_F(GridFile, ANearWriteFillsTheGapWithNullCells)
{
    put(0, 1);
    put(4, 5);
    EXPECT_EQ(g->write_count, 5);
    EXPECT_EQ(state(0), '1');
    for (int i = 1; i < 4; ++i)
        EXPECT_EQ(state(i), '0');
    EXPECT_EQ(z(4), 5);
    put(4999, 6);
    EXPECT_EQ(disk().opened, 0);
    EXPECT_EQ(g->write_count, 5000);
}

TEST_F(GridFile, NoFileIsOpenBetweenCalls)
{
    fill();
    for (int i = 0; i <= LAST; i += 1700) {
        put(i, 0);
        z(LAST - i);
        ASSERT_EQ(disk().open_files, 0);
        ASSERT_EQ(g->file, nullptr);
    }
}

// ---- faults

TEST_F(GridFile, AFileThatDoesntOpenReadsAsNullAndLeavesTheReadWindow)
{
    fill();
    z(20000);
    disk().refuse_opening = true;
    EXPECT_EQ(state(50000), '0');
    EXPECT_EQ(z(15000), 15000);
    disk().refuse_opening = false;
    EXPECT_EQ(z(50000), 50000);
    EXPECT_EQ(printed_text(), "");
}

TEST_F(GridFile, AWindowThatCantBeBroughtAwayStaysAndAWriteElsewhereAnswers0)
{
    fill();
    put(1000, -1);
    disk().refuse_opening = true;
    EXPECT_EQ(grid_flush(g), 0);
    EXPECT_EQ(put(1001, -2), 1);
    EXPECT_EQ(put(20000, -3), 0);
    EXPECT_EQ(put(0, -4), 1);
    disk().refuse_opening = false;
    EXPECT_EQ(grid_flush(g), 1);
    EXPECT_EQ(z(0), -4);
    EXPECT_EQ(z(1000), -1);
    EXPECT_EQ(z(1001), -2);
    EXPECT_EQ(z(20000), 20000);
}

TEST_F(GridFile, AFullDiskIsAnsweredByTheFlushOrTheWriteThatMetIt)
{
    disk().room = 16000;
    for (int i = 0; i < 2000; ++i)
        put(i, i);
    EXPECT_EQ(grid_flush(g), 0);
    disk().room = 0;
    put(0, -1);
    EXPECT_EQ(put(100000, 1), 0);
    disk().room = memory_files::NO_LIMIT;
    EXPECT_EQ(z(500), 500);
    EXPECT_EQ(state(1000), '0') << "behind what could be stored";
}

TEST_F(GridFile, AFileThatCantBeClosedIsAnswered)
{
    put(0, 1);
    disk().refuse_closing = true;
    EXPECT_EQ(grid_flush(g), 0);
    disk().refuse_closing = false;
}

TEST_F(GridFile, AFileThatCantBePositionedIsAnswered)
{
    fill();
    disk().refuse_seeking = true;
    EXPECT_EQ(state(300), '0');
    put(0, 1);
    EXPECT_EQ(grid_flush(g), 0);
    disk().refuse_seeking = false;
    EXPECT_EQ(z(300), 300);
}

TEST_F(GridFile, AVanishedFileIsAnsweredByTheNextWindowThatWantsIt)
{
    fill();
    disk().files.clear();
    EXPECT_EQ(state(200), '0');
    EXPECT_EQ(put(200, 1), 0) << "its neighbours are gone";
    EXPECT_EQ(grid_flush(g), 0) << "and so is all the rest";
    EXPECT_EQ(z(200), 1);
    EXPECT_EQ(put(201, 1), 1);
    EXPECT_EQ(grid_flush(g), 1);
}

TEST_F(GridFile, AShortReadIsAnsweredByTheWriteThatMetIt)
{
    fill();
    disk().read_limit = 1000;
    EXPECT_EQ(put(100, 1), 0);
    disk().read_limit = memory_files::NO_LIMIT;
    EXPECT_EQ(z(100), 1);
    EXPECT_EQ(state(63), '0') << "what was not read";
    EXPECT_EQ(z(61), 61);
}

TEST_F(GridFile, WhatSomebodyAppendsToTheFileIsNoPartOfTheGrid)
{
    fill();
    std::string& bytes = disk().files[g->temp_path];
    bytes += std::string(1000000, '1');
    EXPECT_EQ(state(LAST + 1), '0');
    EXPECT_EQ(z(LAST), LAST);
    put(LAST, -1);
    EXPECT_EQ(g->write_start + g->write_count, LAST + 1);
    EXPECT_EQ(grid_flush(g), 1);
    EXPECT_EQ(z(LAST), -1);
    EXPECT_EQ(z(LAST - 1), LAST - 1);
}

TEST_F(GridFile, AFaultOfOneGridLeavesOthersAlone)
{
    fill();
    grid* other = grid_create(0, 0, 1, 1, 600, 600);
    EXPECT_STRNE(g->temp_path, other->temp_path);
    grid_write_cell(other, 0, {1, CELL_VALUE});
    disk().room = 0;
    grid_write_cell(other, 50000, {2, CELL_VALUE});
    EXPECT_EQ(grid_flush(other), 0);
    disk().room = memory_files::NO_LIMIT;
    disk().files.erase(other->temp_path);
    grid_free(&other);
    for (int i = 0; i <= LAST; i += 997)
        ASSERT_EQ(z(i), i);
}

TEST_F(GridFile, AGridGoesWhenItsLastWindowCantBeBroughtAway)
{
    put(0, 1);
    disk().room = 0;
    grid_free(&g);
    EXPECT_EQ(g, nullptr);
}

} // namespace
