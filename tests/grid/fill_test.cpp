#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "common/user_break.h"
#include "grid/fill.h"
#include "hostapi/ads.h"
#include "tests/grid/memory_files.h"
#include "tests/polygon/heap.h"

namespace
{

// Grids drawn as text, the top row first; steps 1 and 2. A figure is a cell of that elevation, '.' a null one.
class GridFill : public testing::Test
{
protected:
    void draw(std::initializer_list<const char*> lines, double step_x = 1, double step_y = 2)
    {
        grid_free(&g);
        const std::int32_t columns = static_cast<std::int32_t>(std::string(*lines.begin()).size()) - 1;
        g = grid_create(0, 0, step_x, step_y, columns, static_cast<std::int32_t>(lines.size()) - 1);
        std::int32_t row = g->rows;
        for (const char* line : lines) {
            for (std::int32_t column = 0; column <= columns; ++column) {
                grid_cell cell;
                if (line[column] != '.')
                    cell = {static_cast<double>(line[column] - '0'), CELL_VALUE};
                grid_write_cell(g, grid_index(g, column, row), cell);
            }
            --row;
        }
        printed_text();
    }
    grid_cell cell(std::int32_t column, std::int32_t row)
    {
        return grid_read_cell(g, grid_index(g, column, row));
    }
    void set(std::int32_t column, std::int32_t row, const grid_cell& to)
    {
        grid_write_cell(g, grid_index(g, column, row), to);
    }
    void estimate(std::int32_t column, std::int32_t row, char mode)
    {
        grid_estimate_cell(g, grid_index(g, column, row), mode, g->step_x, g->step_y,
                           std::hypot(g->step_x, g->step_y));
    }
    int count(char state)
    {
        int cells = 0;
        for (std::int32_t i = 0; i < grid_cell_count(g); ++i)
            cells += grid_read_cell(g, i).state == state;
        return cells;
    }
    int fill(char mode) { return grid_fill_nulls(g, 7, mode); }

    void SetUp() override { user_break_clear(); }
    void TearDown() override
    {
        grid_free(&g);
        test_heap::break_at(0);
        test_heap::fail_at(0);
        test_heap::fail_from(0);
        user_break_clear();
        grid_fill_plane = grid_fill_quiet = 0;
        printed_text();
        EXPECT_EQ(test_heap::live_blocks(), 0);
        memory_files::forget();
    }

    grid* g = nullptr;
};

TEST_F(GridFill, AverageTakesTwoThirdsOfTheFirstAndAThirdOfTheSecondCell)
{
    draw({"...36"});
    estimate(2, 0, 'A');
    EXPECT_EQ(cell(2, 0).z, (2 * 3 + 6) / 3.0);
    EXPECT_EQ(cell(2, 0).state, CELL_ESTIMATED);
}

TEST_F(GridFill, EstimatesWeighByTheInverseOfTheirDistance)
{
    draw({"..3", "..9", "69."});
    estimate(2, 0, 'A'); // left 9 and 6, one step; up 9 and 3, a step of two
    EXPECT_DOUBLE_EQ(cell(2, 0).z, (8 / 1.0 + 7 / 2.0) / (1 / 1.0 + 1 / 2.0));
}

TEST_F(GridFill, EachModeTakesEachDirectionByItsOwnForm)
{
    struct {
        int column, row;           // of the direction
        int curved_x, planar_x, y; // signs of the rise
    } const directions[] = {{1, 0, -1, -1, 0},  {-1, 0, 1, 1, 0},   {0, -1, 0, 0, 1},   {0, 1, 0, 0, -1},
                            {1, 1, -1, -1, -1}, {-1, 1, 1, -1, -1}, {1, -1, -1, -1, 1}, {-1, -1, 1, -1, 1}};
    for (const char mode : {'C', 'P', 'A'})
        for (const auto& d : directions) {
            // Rises by 1 a step in x and by 3 a step in y. Only one diagonal is known, and the axis cells that
            // make it count; or one axis.
            draw({".......", ".......", ".......", ".......", ".......", ".......", "......."});
            const auto height = [](int column, int row) { return 10.0 + column + 3 * row; };
            const auto know = [&](int column, int row) {
                set(3 + column, 3 + row, {height(column, row), CELL_VALUE});
            };
            const bool diagonal = d.column != 0 && d.row != 0;
            for (int k = 1; k <= 2; ++k)
                know(k * d.column, k * d.row);
            if (diagonal)
                for (int k = 1; k <= 2; ++k)
                    know(k * d.column, 0);
            know(2 * d.column, 2 * d.row); // and triangles about the second cell
            know(2 * d.column + 1, 2 * d.row);
            know(2 * d.column, 2 * d.row + 1);
            know(2 * d.column - 1, 2 * d.row);
            estimate(3, 3, mode);

            const double f = mode == 'P' ? 0.9 : 0.6;
            const auto guess = [&](int column, int row, int sign_x, int sign_y) {
                if (mode == 'A')
                    return (2 * height(column, row) + height(2 * column, 2 * row)) / 3;
                return height(column, row) + sign_x * f * 1 + sign_y * f * 3;
            };
            double want = guess(d.column, d.row, mode == 'P' ? d.planar_x : d.curved_x, d.y);
            if (diagonal) {
                const double across = std::sqrt(5.0);
                want = (want / across + guess(d.column, 0, -d.column, 0)) / (1 / across + 1);
            }
            EXPECT_EQ(cell(3, 3).state, CELL_ESTIMATED) << mode << d.column << d.row;
            EXPECT_NEAR(cell(3, 3).z, want, 1e-12) << mode << d.column << d.row;
        }
}

TEST_F(GridFill, AverageNeedsASecondNeighbourInSomeDirection)
{
    draw({".....", "..3..", ".3.3.", "..3..", "....."});
    estimate(2, 2, 'A');
    EXPECT_EQ(cell(2, 2).state, CELL_NULL);
    set(0, 2, {3.0, CELL_VALUE});
    estimate(2, 2, 'A');
    EXPECT_EQ(cell(2, 2).z, 3);
}

TEST_F(GridFill, DiagonalsAloneJustifyNothing)
{
    for (const char mode : {'A', 'P', 'C'}) {
        draw({"4...4", ".4.4.", ".....", ".4.4.", "4...4"});
        estimate(2, 2, mode);
        EXPECT_EQ(cell(2, 2).state, CELL_NULL) << mode;
    }
}

TEST_F(GridFill, EstimatedFirstNeighboursAloneJustifyNothing)
{
    for (const char mode : {'A', 'P', 'C'}) {
        draw({"44444", "44444", "44.44", "44444", "44444"});
        for (const auto& [column, row] : {std::pair{1, 2}, {3, 2}, {2, 1}, {2, 3}})
            set(column, row, {4.0, CELL_ESTIMATED});
        estimate(2, 2, mode);
        EXPECT_EQ(cell(2, 2).state, CELL_NULL) << mode;
        set(1, 2, {4.0, CELL_VALUE});
        estimate(2, 2, mode);
        EXPECT_EQ(cell(2, 2).state, CELL_ESTIMATED) << mode;
        EXPECT_DOUBLE_EQ(cell(2, 2).z, 4) << mode;
    }
}

TEST_F(GridFill, EstimatedSecondNeighboursCountAsKnown)
{
    draw({"...3."});
    set(4, 0, {9.0, CELL_ESTIMATED});
    estimate(2, 0, 'A');
    EXPECT_EQ(cell(2, 0).z, 5);
}

TEST_F(GridFill, SlopeFormsNeedATriangle)
{
    draw({"...36"});
    for (const char mode : {'P', 'C'})
        estimate(2, 0, mode);
    EXPECT_EQ(cell(2, 0).state, CELL_NULL);
    EXPECT_EQ(grid_slope_count, 0);
}

TEST_F(GridFill, EstimateKeepsMarkAndPoints)
{
    draw({"...36"});
    grid_cell null;
    null.mark = '1';
    null.points = 5;
    set(2, 0, null);
    EXPECT_EQ(fill('A'), RTNORM);
    EXPECT_EQ(cell(2, 0).state, CELL_VALUE);
    EXPECT_EQ(cell(2, 0).mark, '1');
    EXPECT_EQ(cell(2, 0).points, 5u);
}

TEST_F(GridFill, EveryOtherModeLetterIsCurved)
{
    const auto filled = [&](char mode) {
        draw({"12345", "23.56", "34567", "45678", "56789"});
        EXPECT_EQ(fill(mode), RTNORM);
        return cell(2, 3).z;
    };
    const double curved = filled('C');
    for (const char mode : {'X', 'a', 'p', 'c', '\0', ' '})
        EXPECT_EQ(filled(mode), curved) << mode;
    EXPECT_NE(filled('P'), curved);
    EXPECT_NE(filled('A'), curved);
}

TEST_F(GridFill, TellsPassesAndWhatIsLeft)
{
    draw({"3333.....", "3333....."});
    EXPECT_EQ(fill('A'), RTNORM);
    EXPECT_EQ(printed_text(), "\nPass> 1 Null Z values left> 7"
                              "\rPass> 2 Null Z values left> 8    "
                              "\rPass> 3 Null Z values left> 6    "
                              "\rPass> 4 Null Z values left> 4    "
                              "\rPass> 5 Null Z values left> 2    "
                              "\rPass> 6 Null Z values left> 0    ");
    EXPECT_EQ(count(CELL_VALUE), 18);
}

TEST_F(GridFill, QuietEndsAfterTheSecondPass)
{
    draw({"3333.....", "3333....."});
    grid_fill_quiet = 1;
    EXPECT_EQ(fill('A'), RTNORM);
    EXPECT_EQ(printed_text(), "");
    EXPECT_EQ(count(CELL_VALUE), 12); // those that were listed are confirmed
    EXPECT_EQ(count(CELL_ESTIMATED), 0);
    EXPECT_EQ(count(CELL_NULL), 6);
}

TEST_F(GridFill, QuietOtherThanOneOnlyPrintsNothing)
{
    draw({"3333.....", "3333....."});
    grid_fill_quiet = 2;
    EXPECT_EQ(fill('A'), RTNORM);
    EXPECT_EQ(printed_text(), "");
    EXPECT_EQ(count(CELL_NULL), 0);
}

TEST_F(GridFill, NoValueAtAllEndsAfterTheFirstPass)
{
    draw({"....", "...."});
    EXPECT_EQ(fill('C'), RTNORM);
    EXPECT_EQ(printed_text(), "\nPass> 1 Null Z values left> 7");
    EXPECT_EQ(count(CELL_NULL), 8);
}

TEST_F(GridFill, NothingToFillIsLeftAlone)
{
    draw({"1234", "5678"});
    EXPECT_EQ(fill('C'), RTNORM);
    EXPECT_EQ(printed_text(), "\nPass> 1 Null Z values left> 7");
    EXPECT_EQ(cell(2, 1).z, 3);
}

TEST_F(GridFill, NullAreaOutOfReachStaysNull)
{
    draw({"55..", "...."}); // only the row has two known cells in line
    EXPECT_EQ(fill('A'), RTNORM);
    EXPECT_EQ(count(CELL_VALUE), 4);
    EXPECT_EQ(count(CELL_NULL), 4);
    EXPECT_EQ(cell(3, 1).z, 5);
}

TEST_F(GridFill, BreakIsHeardAfterEachRoundAndLeavesTheFrontEstimated)
{
    for (int n = 1; n <= 5; ++n) {
        draw({"3333.....", "3333....."});
        user_break_clear();
        test_heap::break_at(n);
        EXPECT_EQ(fill('A'), RTERROR);
        const std::string text = printed_text(), end = "\nFunction cancelled at user request.";
        EXPECT_EQ(text.substr(text.size() - end.size()), end);
        EXPECT_EQ(text.find("Pass> " + std::to_string(n + 1)), std::string::npos);
        EXPECT_EQ(count(CELL_VALUE), 8 + 2 * n);
        EXPECT_EQ(count(CELL_ESTIMATED), n < 5 ? 2 : 0);
    }
    draw({"3333.....", "3333....."});
    user_break_clear();
    test_heap::break_at(6); // there is no such round
    EXPECT_EQ(fill('A'), RTNORM);
}

TEST_F(GridFill, BreakIsToldInQuietToo)
{
    draw({"3333.....", "3333....."});
    grid_fill_quiet = 1;
    test_heap::break_at(1);
    EXPECT_EQ(fill('A'), RTERROR);
    EXPECT_EQ(printed_text(), "\nFunction cancelled at user request.");
}

TEST_F(GridFill, PlaneFollowsTheMeanSlopeFromSingleNeighbours)
{
    draw({"12345", "2345.", "345..", "45..."});
    grid_fill_plane = 1;
    EXPECT_EQ(fill('C'), RTNORM);
    EXPECT_DOUBLE_EQ(grid_slope[0], 1);
    EXPECT_DOUBLE_EQ(grid_slope[1], -0.5);
    EXPECT_DOUBLE_EQ(grid_slope[2], std::sqrt(1.25));
    for (int row = 0; row <= 3; ++row)
        for (int column = 0; column <= 4; ++column)
            EXPECT_NEAR(cell(column, row).z, 1 + column + (3 - row), 1e-12);
}

TEST_F(GridFill, PlaneWithoutATriangleIsLevel)
{
    draw({"5....", ".....", "....."});
    grid_fill_plane = 1;
    EXPECT_EQ(fill('C'), RTNORM);
    EXPECT_EQ(grid_slope[0], 0);
    EXPECT_EQ(grid_slope[1], 0);
    EXPECT_EQ(count(CELL_VALUE), 15);
    EXPECT_DOUBLE_EQ(cell(4, 0).z, 5);
}

TEST_F(GridFill, PlaneSlopeMayBeTheCallers)
{
    draw({"5."});
    grid_fill_plane = 1;
    grid_slope[0] = 2;
    estimate(1, 0, 'C');
    EXPECT_EQ(cell(1, 0).z, 7);
    EXPECT_EQ(grid_slope[0], 2);
}

TEST_F(GridFill, MeanSlopeLeavesTheCountAlone)
{
    draw({"12", "12"});
    grid_slope_count = 9;
    grid_mean_slope(g);
    EXPECT_EQ(grid_slope_count, 9);
    EXPECT_DOUBLE_EQ(grid_slope[0], 1);
    grid_slope_count = 0;
}

TEST_F(GridFill, CellNormalAddsUpToFourTriangles)
{
    draw({"123", "123", "123"});
    grid_slope_count = grid_slope[0] = grid_slope[1] = grid_slope[2] = 0;
    grid_cell_normal(g, grid_index(g, 1, 1));
    EXPECT_EQ(grid_slope_count, 4);
    EXPECT_DOUBLE_EQ(grid_slope[0], 4 * 2.0); // rise 1 a step of 1, times the area of a square
    EXPECT_DOUBLE_EQ(grid_slope[1], 0);
    EXPECT_DOUBLE_EQ(grid_slope[2], -4 * 2.0);
    grid_cell_normal(g, 0);
    EXPECT_EQ(grid_slope_count, 5);
    for (const std::int32_t none : {-1, 9, -100})
        grid_cell_normal(g, none);
    grid_cell_normal(nullptr, 0);
    EXPECT_EQ(grid_slope_count, 5);
    set(1, 2, {1.0, CELL_ESTIMATED}); // has no part in a triangle
    grid_slope_count = 0;
    grid_cell_normal(g, grid_index(g, 1, 1));
    EXPECT_EQ(grid_slope_count, 2);
    grid_slope_count = 0;
}

TEST_F(GridFill, StepOfZeroIsTold)
{
    draw({"1234", "1.34", "1234", "1234"}, 0, 2);
    EXPECT_EQ(fill('C'), RTNORM);
    EXPECT_NE(printed_text().find("Grid step error\n"), std::string::npos);
}

TEST_F(GridFill, GridsWithoutColumnsOrRowsAreFilledAlongTheirLine)
{
    draw({"3", "3", ".", "."});
    EXPECT_EQ(fill('A'), RTNORM);
    EXPECT_EQ(count(CELL_NULL), 0);
    draw({"33.."});
    EXPECT_EQ(fill('A'), RTNORM);
    EXPECT_EQ(count(CELL_NULL), 0);
    draw({"33.."}); // no triangle in a line
    EXPECT_EQ(fill('C'), RTNORM);
    EXPECT_EQ(count(CELL_NULL), 2);
}

TEST_F(GridFill, NoGridIsNothingToFill)
{
    EXPECT_EQ(grid_fill_nulls(nullptr, 3, 'C'), RTNORM);
    EXPECT_EQ(printed_text(), "");
    grid_estimate_cell(nullptr, 0, 'C', 1, 1, 1);
    grid_mean_slope(nullptr);
    draw({"3.3"});
    grid_estimate_cell(g, -1, 'A', 1, 1, 1);
    grid_estimate_cell(g, 3, 'A', 1, 1, 1);
}

TEST_F(GridFill, CellThatNoMemoryWasLeftForOnceIsReachedAgain)
{
    draw({"3333.....", "3333....."});
    test_heap::fail_at(1);
    EXPECT_EQ(fill('A'), RTNORM);
    EXPECT_EQ(count(CELL_NULL), 0);
}

// Known cells on the left, so that lists hold some thousand cells; the heap ends at the N-th piece for them.
TEST_F(GridFill, CellsThatNoMemoryIsLeftForStayNull)
{
    int before = 20000;
    for (int n = 1; before > 0; ++n) {
        grid_free(&g);
        g = grid_create(0, 0, 1, 1, 9, 1999);
        for (std::int32_t i = 0; i < grid_cell_count(g); ++i)
            grid_write_cell(g, i, {3.0, i % 10 < 2 ? CELL_VALUE : CELL_NULL});
        const int null_cells = count(CELL_NULL);
        user_break_clear();
        test_heap::fail_from(n);
        EXPECT_EQ(fill('A'), RTNORM);
        test_heap::fail_from(0);
        EXPECT_EQ(count(CELL_ESTIMATED), 0);
        const int left = count(CELL_NULL);
        EXPECT_LE(left, before);
        if (n == 1) {
            EXPECT_EQ(left, null_cells);
        } else if (left > 0) {
            EXPECT_LT(left, null_cells);
        }
        EXPECT_EQ(fill('A'), RTNORM); // the rest can be filled later
        EXPECT_EQ(count(CELL_NULL), 0);
        before = left;
        ASSERT_LT(n, 100);
    }
}

} // namespace
