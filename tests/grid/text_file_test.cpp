#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <string_view>

#include "grid/grid.h"
#include "hostapi/adsdef.h"
#include "hostapi/files.h"
#include "tests/grid/memory_files.h"
#include "tests/polygon/heap.h"

namespace
{

using memory_files::disk;

class GridText : public testing::Test
{
protected:
    void SetUp() override { memory_files::forget(); }
    void TearDown() override
    {
        grid_free(&g);
        EXPECT_EQ(test_heap::live_blocks(), 0);
        EXPECT_EQ(disk().open_files, 0);
        printed_text();
    }
    grid* load(const std::string& text)
    {
        grid_free(&g);
        disk().files["in"] = text;
        return g = grid_load("in");
    }
    std::string saved()
    {
        EXPECT_EQ(grid_save(g, "out"), 1);
        return disk().files["out"];
    }
    double z(int index) { return grid_read_cell(g, index).z; }
    char state(int index) { return grid_read_cell(g, index).state; }

    grid* g = nullptr;
};

const std::string HEADER = "20.0000\n10.0000\n26.0000\n14.0000\n2.0\n1.0\n"; // 2 by 1, steps 2 and 6

std::string lines(int count, const std::string& line)
{
    std::string out;
    while (count-- > 0)
        out += line;
    return out;
}

// ---- writing

TEST_F(GridText, AGridIsSavedLineByLine)
{
    g = grid_create(10, 20, 2, 6, 2, 1);
    for (int i = 0; i < 6; ++i)
        grid_write_cell(g, i, {i * 1.03125 - 2, CELL_VALUE});
    grid_write_cell(g, 1, {5, CELL_NULL});
    EXPECT_EQ(saved(), HEADER + "-2.0000\nN\n0.0625\n1.0938\n2.1250\n3.1562\n");
    EXPECT_EQ(printed_text(), "");
}

TEST_F(GridText, TheHeaderIsYThenXThenTheFarEndsThenTheSize)
{
    g = grid_create(-1.23456, 1e6 + 0.00005, 0.1, 1.0 / 3, 30, 20);
    const grid_cell none;
    for (int i = 0; i < grid_cell_count(g); ++i)
        grid_write_cell(g, i, none);
    EXPECT_EQ(saved(), "1000000.0001\n-1.2346\n1000006.6667\n1.7654\n30.0\n20.0\n" + lines(651, "N\n"));
}

TEST_F(GridText, OnlyAValueOfStateOneIsWrittenAsAValue)
{
    g = grid_create(10, 20, 2, 6, 2, 1);
    const grid_cell cells[] = {{1, '1'},           {2, '0'},          {3, '5'},
                               {-98765432.1, '1'}, {98765432.1, '1'}, {-0.0, '1'}};
    for (int i = 0; i < 6; ++i)
        grid_write_cell(g, i, cells[i]);
    EXPECT_EQ(saved(), HEADER + "1.0000\nN\nN\nN\n98765432.1000\n-0.0000\n");
}

TEST_F(GridText, HugeAndStrangeValuesAreWrittenInFull)
{
    g = grid_create(0, 0, 1, 1, 1, 1);
    const double inf = std::numeric_limits<double>::infinity();
    grid_write_cell(g, 0, {-std::numeric_limits<double>::max(), '1'});
    grid_write_cell(g, 1, {inf, '1'});
    grid_write_cell(g, 2, {-inf, '1'});
    grid_write_cell(g, 3, {std::nan(""), '1'});
    char huge[400];
    std::snprintf(huge, sizeof huge, "%.4f\n", -std::numeric_limits<double>::max());
    EXPECT_EQ(saved(), "0.0000\n0.0000\n1.0000\n1.0000\n1.0\n1.0\n" + std::string(huge) + "inf\n-inf\nnan\n");
}

TEST_F(GridText, ValuesHaveTheDecimalsOfTheVariable)
{
    g = grid_create(0, 0, 1, 1, 0, 0);
    grid_write_cell(g, 0, {1.23456789, CELL_VALUE});
    const struct {
        int restype;
        double value;
        int places;
        const char* line;
    } rows[] = {
        {RTSHORT, 2, 2, "1.23\n"},     {RTSHORT, 3, 3, "1.235\n"},        {RTSHORT, 4, 4, "1.2346\n"},
        {RTSHORT, 5, 5, "1.23457\n"},  {RTSHORT, 6, 6, "1.234568\n"},     {RTSHORT, 1, 2, "1.23\n"},
        {RTSHORT, 0, 2, "1.23\n"},     {RTSHORT, -32768, 2, "1.23\n"},    {RTSHORT, 7, 6, "1.234568\n"},
        {RTSHORT, 9, 6, "1.234568\n"}, {RTSHORT, 32767, 6, "1.234568\n"}, {RTREAL, 2, 4, "1.2346\n"},
        {RTLONG, 2, 4, "1.2346\n"},    {RTNIL, 2, 4, "1.2346\n"},
    };
    for (const auto& row : rows) {
        set_variable("grd_places", row.restype, row.value);
        EXPECT_EQ(grd_places(), row.places) << row.restype << " " << row.value;
        EXPECT_EQ(saved(), "0.0000\n0.0000\n0.0000\n0.0000\n0.0\n0.0\n" + std::string(row.line));
    }
    clear_variables();
    EXPECT_EQ(grd_places(), 4);
}

TEST_F(GridText, NothingHappensWithoutAGridAPathOrAFile)
{
    EXPECT_EQ(grid_save(nullptr, "out"), 0);
    g = grid_create(0, 0, 1, 1, 1, 1);
    EXPECT_EQ(grid_save(g, nullptr), 0);
    EXPECT_EQ(grid_save(g, ""), 0);
    disk().refuse_opening = true;
    EXPECT_EQ(grid_save(g, "out"), 0);
    EXPECT_TRUE(disk().files.empty());
    EXPECT_EQ(printed_text(), "");
}

TEST_F(GridText, AFullDiskIsToldAndThePreviousFileStays)
{
    disk().files["out"] = "previous";
    g = grid_create(0, 0, 1, 1, 200, 200);
    const grid_cell cell{1, CELL_VALUE};
    for (int i = 0; i < grid_cell_count(g); ++i)
        grid_write_cell(g, i, cell);
    for (const std::size_t room : {std::size_t{0}, std::size_t{20}, std::size_t{100000}}) {
        disk().room = room;
        EXPECT_EQ(grid_save(g, "out"), 0);
        EXPECT_EQ(printed_text(), "\nError: the grid file out can't be written");
        EXPECT_EQ(disk().files["out"], "previous");
    }
    disk().room = memory_files::NO_LIMIT;
    disk().refuse_closing = true;
    EXPECT_EQ(grid_save(g, "out"), 0);
    EXPECT_EQ(printed_text(), "\nError: the grid file out can't be written");
    EXPECT_EQ(disk().files["out"], "previous");
}

TEST_F(GridText, AGridWhoseTemporaryFileIsGoneOrCutIsNotSaved)
{
    disk().files["out"] = "previous";
    g = grid_create(0, 0, 1, 1, 600, 600);
    const grid_cell cell{1, CELL_VALUE};
    for (int i = 0; i < grid_cell_count(g); ++i)
        grid_write_cell(g, i, cell);
    grid_flush(g);
    std::string& bytes = disk().files[g->temp_path];
    bytes.resize(bytes.size() - 1);
    EXPECT_EQ(grid_save(g, "out"), 0);
    EXPECT_EQ(printed_text(), "\nError: grid cells can't be read from the temporary file");
    disk().files.erase(g->temp_path);
    EXPECT_EQ(grid_save(g, "out"), 0);
    EXPECT_EQ(printed_text(), "\nError: grid cells can't be read from the temporary file");
    EXPECT_EQ(disk().files["out"], "previous");
}

TEST_F(GridText, AGridWrittenInPartIsSavedAndCopiedWithFewTransfers)
{
    g = grid_create(0, 0, 1, 1, 600, 600);
    for (int i = 0; i < 3000; ++i)
        grid_write_cell(g, i, {1, CELL_VALUE});
    grid_flush(g);
    const int opened = disk().opened;
    const std::string text = saved();
    EXPECT_EQ(text, "0.0000\n0.0000\n600.0000\n600.0000\n600.0\n600.0\n" + lines(3000, "1.0000\n") +
                        lines(601 * 601 - 3000, "N\n"));
    grid* copy = grid_copy(g);
    EXPECT_EQ(grid_read_cell(copy, 2999).z, 1);
    EXPECT_EQ(grid_read_cell(copy, 3000).state, '0');
    EXPECT_EQ(grid_take_values(g, copy), 1);
    EXPECT_LT(disk().opened - opened, 1000);
    grid_free(&copy);
}

TEST_F(GridText, CellsThatCantBeReadWhileSavingAreTold)
{
    g = grid_create(0, 0, 1, 1, 600, 600);
    for (int i = 0; i < grid_cell_count(g); ++i)
        grid_write_cell(g, i, {1, CELL_VALUE});
    disk().files["out"] = "previous";
    disk().read_limit = 1600;
    EXPECT_EQ(grid_save(g, "out"), 0);
    EXPECT_EQ(printed_text(), "\nError: grid cells can't be read from the temporary file");
    EXPECT_EQ(disk().files["out"], "previous");
}

// ---- reading

TEST_F(GridText, AGridIsLoadedLineByLine)
{
    ASSERT_TRUE(load(HEADER + "1.5\nN\n-2.25\n-98765432.1\n 7 \nNone\n"));
    EXPECT_EQ(g->x0, 10);
    EXPECT_EQ(g->y0, 20);
    EXPECT_EQ(g->step_x, 2);
    EXPECT_EQ(g->step_y, 6);
    EXPECT_EQ(g->columns, 2);
    EXPECT_EQ(g->rows, 1);
    const double values[] = {1.5, 0, -2.25, -98765432.1, 7, 0};
    for (int i = 0; i < 6; ++i) {
        const grid_cell cell = grid_read_cell(g, i);
        EXPECT_EQ(cell.z, values[i]) << i;
        EXPECT_EQ(cell.state, "101010"[i]) << i;
        EXPECT_EQ(cell.mark, '0');
        EXPECT_EQ(cell.points, 0u);
    }
    EXPECT_EQ(grid_null_count, 3);
    EXPECT_EQ(printed_text(), "");
}

TEST_F(GridText, AFileThatEndsEarlyGivesNullCellsForTheRest)
{
    ASSERT_TRUE(load(HEADER + "1\n2"));
    EXPECT_EQ(z(1), 2);
    for (int i = 2; i < 6; ++i)
        EXPECT_EQ(state(i), '0');
    EXPECT_EQ(grid_null_count, 4);
    ASSERT_TRUE(load(HEADER));
    EXPECT_EQ(grid_null_count, 6);
    ASSERT_TRUE(load("0\n0\n600\n600\n600\n600\n1\n"));
    EXPECT_EQ(g->in_memory, 0);
    EXPECT_EQ(grid_null_count, 601 * 601 - 1);
    for (int i = 1; i < 601 * 601; ++i)
        ASSERT_EQ(state(i), '0');
}

TEST_F(GridText, LinesOfEveryEndAreLines)
{
    for (const std::string end : {"\n", "\r\n", "\r"}) {
        std::string text;
        for (const char* line : {"20", "10", "26", "14", "2", "1", "1.5", "N", "3", "4", "5", "6"})
            text += line + end;
        ASSERT_TRUE(load(text));
        EXPECT_EQ(saved(), HEADER + "1.5000\nN\n3.0000\n4.0000\n5.0000\n6.0000\n");
    }
}

TEST_F(GridText, WhatIsBehindTheCellsIsLeftAlone)
{
    ASSERT_TRUE(load(HEADER + "1\n2\n3\n4\n5\n6\n7\nN\n"));
    EXPECT_EQ(z(5), 6);
    EXPECT_EQ(grid_null_count, 0);
}

TEST_F(GridText, JunkReadsAsTheNumberItBeginsWith)
{
    ASSERT_TRUE(load(HEADER + "\n12abc\nabc\n n\n+1e2\n0x10\n"));
    const double values[] = {0, 12, 0, 0, 100, 16};
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(z(i), values[i]) << i;
        EXPECT_EQ(state(i), '1') << i;
    }
    ASSERT_TRUE(load(HEADER + "inf\n-inf\nnan\nNaN\n1e999\n1\n"));
    EXPECT_TRUE(std::isinf(z(0)) && z(0) > 0);
    EXPECT_TRUE(std::isinf(z(1)) && z(1) < 0);
    EXPECT_TRUE(std::isnan(z(2)));
    EXPECT_EQ(state(3), '0') << "begins with N";
    EXPECT_TRUE(std::isinf(z(4)));
    EXPECT_EQ(grid_null_count, 1);
}

TEST_F(GridText, ALineWithABinaryZeroEndsThere)
{
    ASSERT_TRUE(load(HEADER +
                     std::string("1\0"
                                 "2\n",
                                 4) +
                     "3\n"));
    EXPECT_EQ(z(0), 1);
    EXPECT_EQ(z(1), 3);
}

TEST_F(GridText, ACellLineGoesOnAsTheNextAfter127Characters)
{
    const std::string blanks(126, ' ');
    ASSERT_TRUE(load(HEADER + blanks + "12\n" + "3\n"));
    EXPECT_EQ(z(0), 1);
    EXPECT_EQ(z(1), 2);
    EXPECT_EQ(z(2), 3);
    ASSERT_TRUE(load(HEADER + blanks + "4\n" + "3\n"));
    EXPECT_EQ(z(0), 4) << "127 characters, and the line's end for the next";
    EXPECT_EQ(z(1), 0);
    EXPECT_EQ(state(1), '1');
    EXPECT_EQ(z(2), 3);
    ASSERT_TRUE(load(HEADER + std::string(127, '7') + "N\n3\n"));
    EXPECT_EQ(state(1), '0');
    EXPECT_EQ(z(2), 3);
}

TEST_F(GridText, AHeaderLineGoesOnAsTheNextAfter121Characters)
{
    // y0 20, x0 2 of a line that is cut in two.
    ASSERT_TRUE(load(std::string(119, ' ') + "202\n26\n14\n2\n1\n1\n"));
    EXPECT_EQ(g->y0, 20);
    EXPECT_EQ(g->x0, 2);
    EXPECT_EQ(g->step_x, 6);
    EXPECT_EQ(g->step_y, 6);
    EXPECT_EQ(z(0), 1);
}

TEST_F(GridText, ASizeIsCutToAWholeNumberAndTheStepIsNot)
{
    ASSERT_TRUE(load("0\n0\n5\n5\n2.5\n1.25\n"));
    EXPECT_EQ(g->columns, 2);
    EXPECT_EQ(g->rows, 1);
    EXPECT_EQ(g->step_x, 2);
    EXPECT_EQ(g->step_y, 4);
}

TEST_F(GridText, StepsMayRunBackward)
{
    ASSERT_TRUE(load("20\n10\n14\n6\n2\n1\n"));
    EXPECT_EQ(g->step_x, -2);
    EXPECT_EQ(g->step_y, -6);
}

TEST_F(GridText, NoPathAndNoFileIsNoGridWithoutAWord)
{
    EXPECT_EQ(grid_load(nullptr), nullptr);
    EXPECT_EQ(grid_load(""), nullptr);
    EXPECT_EQ(grid_load("missing"), nullptr);
    EXPECT_EQ(printed_text(), "");
}

TEST_F(GridText, AFileThatDescribesNoGridIsRefusedAndTold)
{
    const char* const texts[] = {
        "",                              // nothing
        "20\n10\n26\n14\n2\n",           // too few lines
        "20\n10\n26\n14\nabc\n1\n1\n",   // junk
        "20\n10\n26\n14\n0\n1\n1\n",     // no columns
        "20\n10\n26\n14\n2\n0\n1\n",     // no rows
        "20\n10\n26\n14\n0.9\n1\n1\n",   // less than one
        "20\n10\n26\n14\n-2\n1\n1\n",    // negative
        "20\n10\n26\n14\n2\n-1\n1\n",    //
        "20\n10\n26\n14\nnan\n1\n1\n",   // no number
        "20\n10\n26\n14\n2\nnan\n1\n",   //
        "20\n10\n26\n14\ninf\n1\n1\n",   // endless
        "20\n10\n26\n14\n1e300\n1\n1\n", // huge
        "20\n10\n26\n14\n2\n2147483648\n1\n",
        "20\n10\n26\n10\n2\n1\n1\n",        // a step of zero
        "20\n10\n20\n14\n2\n1\n1\n",        //
        "20\n10\n26\nnan\n2\n1\n1\n",       // no step
        "-inf\n10\n26\n14\n2\n1\n1\n",      //
        "-1e308\n10\n1e308\n14\n2\n1\n1\n", //
    };
    for (const char* text : texts) {
        EXPECT_EQ(load(text), nullptr) << text;
        EXPECT_EQ(printed_text(), "\nError: the grid file does not begin with two places and a size") << text;
    }
}

TEST_F(GridText, ASizeWithoutIndicesIsRefusedAndTold)
{
    EXPECT_EQ(load("0\n0\n1\n1\n2147483647\n2147483647\n1\n"), nullptr);
    EXPECT_EQ(printed_text(), "\nError: a grid of 2147483647 by 2147483647 intervals is out of range");
    EXPECT_EQ(load("0\n0\n1\n1\n46340\n46340\n1\n"), nullptr);
}

TEST_F(GridText, AFileThatOnlyClaimsToBeHugeIsRefusedAndTold)
{
    EXPECT_EQ(load("0\n0\n1\n1\n46339\n46339\n" + lines(1000, "1\n")), nullptr);
    EXPECT_EQ(printed_text(), "\nError: the grid file ends before its 2147395600 cells");
    EXPECT_EQ(disk().opened, 0);
}

TEST_F(GridText, CellsThatCantBeKeptAreTold)
{
    disk().room = 80000;
    EXPECT_EQ(load("0\n0\n1\n1\n600\n600\n" + lines(20000, "1\n")), nullptr);
    EXPECT_EQ(printed_text(), "\nError: grid cells can't be kept in the temporary file");
    disk().room = memory_files::NO_LIMIT;
    EXPECT_TRUE(load("0\n0\n1\n1\n600\n600\n"));
}

TEST_F(GridText, AnExhaustedHeapIsNoGrid)
{
    disk().files["in"] = "0\n0\n1\n1\n600\n600\n";
    for (int n = 1; n <= 3; ++n) {
        test_heap::fail_at(n);
        EXPECT_EQ(grid_load("in"), nullptr);
        EXPECT_EQ(test_heap::live_blocks(), 0);
        EXPECT_EQ(disk().open_files, 0);
    }
    test_heap::fail_at(0);
}

TEST_F(GridText, CellsAreReadFromWhereAFileStands)
{
    disk().files["in"] = "a line\n1\nN\n3\n4\n";
    host_file* stream = file_open("in", "r");
    char line[80];
    file_gets(line, sizeof line, stream);
    g = grid_read_cells(stream, 1, 1, 5, 6, 7, 8);
    ASSERT_TRUE(g);
    EXPECT_EQ(disk().open_files, 0) << "the file is closed";
    EXPECT_EQ(g->x0, 5);
    EXPECT_EQ(g->y0, 6);
    EXPECT_EQ(g->step_x, 7);
    EXPECT_EQ(g->step_y, 8);
    EXPECT_EQ(z(3), 4);
    EXPECT_EQ(grid_null_count, 1);
    EXPECT_EQ(grid_read_cells(file_open("in", "r"), -1, 1, 5, 6, 7, 8), nullptr);
    EXPECT_EQ(disk().open_files, 0);
    EXPECT_EQ(grid_null_count, 0);
    EXPECT_EQ(grid_read_cells(nullptr, 1, 1, 5, 6, 7, 8), nullptr);
}

TEST_F(GridText, DamagedFilesMakeAGridOrAMessage)
{
    std::mt19937 random(5);
    const auto below = [&](std::size_t n) {
        return std::uniform_int_distribution<std::size_t>(0, n - 1)(random);
    };
    const std::string_view letters("0123456789.-+eN\r\n \0xinf\xff", 24);
    int grids = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string text = HEADER + "1\nN\n3\n4\n5\n6\n";
        for (std::size_t left = 1 + below(4); left > 0; --left) {
            const std::size_t at = below(text.size());
            switch (below(3)) {
            case 0:
                text.erase(at, 1 + below(8));
                break;
            case 1:
                text.insert(at, 1 + below(3), letters[below(letters.size())]);
                break;
            default:
                text[at] = letters[below(letters.size())];
            }
        }
        disk().room = 100000; // no larger a temporary file
        if (load(text)) {
            ++grids;
            EXPECT_GE(g->columns, 1);
            EXPECT_GE(g->rows, 1);
            EXPECT_TRUE(std::isfinite(g->step_x) && g->step_x != 0);
            EXPECT_LE(grid_null_count, grid_cell_count(g));
        } else {
            EXPECT_NE(printed_text().find("\nError: "), std::string::npos) << text;
        }
    }
    EXPECT_GT(grids, 10000);
    EXPECT_LT(grids, 19900);
}

TEST_F(GridText, WhatIsSavedIsLoadedAgain)
{
    for (const int columns : {6, 600}) {
        grid_free(&g);
        g = grid_create(10, 20, 2, 3, columns, 600);
        const int count = grid_cell_count(g);
        for (int i = 0; i < count; ++i)
            grid_write_cell(g, i, {std::sin(i) * 1000, i % 5 ? CELL_VALUE : CELL_NULL});
        const std::string first = saved();
        ASSERT_TRUE(load(first));
        EXPECT_EQ(grid_null_count, (count + 4) / 5);
        EXPECT_EQ(saved(), first);
        for (int i = 1; i < count; i += 5)
            ASSERT_NEAR(z(i), std::sin(i) * 1000, 0.00005001);
    }
}

} // namespace
