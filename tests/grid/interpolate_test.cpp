#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "grid/interpolate.h"
#include "tests/grid/memory_files.h"
#include "tests/polygon/heap.h"

namespace
{

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

// A grid at (100, 200), steps 10 and 20, with z = column + 100 row unless told otherwise.
class GridInterpolate : public testing::Test
{
protected:
    void make(std::int32_t columns, std::int32_t rows, double step_x = 10, double step_y = 20)
    {
        grid_free(&g);
        g = grid_create(100, 200, step_x, step_y, columns, rows);
        for (std::int32_t i = 0; i < grid_cell_count(g); ++i)
            grid_write_cell(g, i, {i % (columns + 1) + 100.0 * (i / (columns + 1)), CELL_VALUE});
        printed_text();
    }
    void set(std::int32_t column, std::int32_t row, double z, char state = CELL_VALUE)
    {
        grid_write_cell(g, grid_index(g, column, row), {z, state});
    }
    double at(double x, double y) const
    {
        const double point[3] = {x, y, 5};
        return grid_interpolate(point, g);
    }
    double cubic_at(double x, double y) const
    {
        const double point[3] = {x, y, 5};
        return grid_interpolate_cubic(point, g);
    }
    void TearDown() override
    {
        grid_free(&g);
        EXPECT_EQ(test_heap::live_blocks(), 0);
    }

    grid* g = nullptr;
};

TEST_F(GridInterpolate, PointOnACellGivesItsElevation)
{
    make(4, 4);
    for (int row = 0; row <= 4; ++row)
        for (int column = 0; column <= 4; ++column)
            EXPECT_EQ(at(100 + 10 * column, 200 + 20 * row), column + 100 * row);
}

// The square at (100, 200) with corner elevations A 1, B 2, C 8, D 4.
TEST_F(GridInterpolate, PointOnASideGivesTheBlendOfThatSide)
{
    make(1, 1);
    set(0, 0, 1);
    set(1, 0, 2);
    set(1, 1, 8);
    set(0, 1, 4);
    EXPECT_DOUBLE_EQ(at(102.5, 200), 1.25);
    EXPECT_DOUBLE_EQ(at(100, 205), 1.75);
    make(2, 2); // the far sides of a square that has a next one belong to the next one
    EXPECT_DOUBLE_EQ(at(110, 205), 26);
}

TEST_F(GridInterpolate, SidesWeighByTheInverseOfTheirDistance)
{
    make(1, 1);
    set(0, 0, 1);
    set(1, 0, 2);
    set(1, 1, 8);
    set(0, 1, 4);
    // Sides at this place: south 1.25, north 5, west 1.75, east 3.5; they are 5, 15, 2.5 and 7.5 away.
    const double want =
        (1.25 / 5 + 5.0 / 15 + 3.5 / 7.5 + 1.75 / 2.5) / (1 / 5.0 + 1 / 15.0 + 1 / 7.5 + 1 / 2.5);
    EXPECT_DOUBLE_EQ(at(102.5, 205), want);
    EXPECT_DOUBLE_EQ(want,
                     1 + 0.25 + 3 * 0.25 + 3 * 0.0625); // what the two-way product gives, but for rounding
}

TEST_F(GridInterpolate, TopRowTakesTheMeanByInverseDistanceOfTheCellsThere)
{
    make(3, 2);
    EXPECT_DOUBLE_EQ(at(102.5, 240), (200 / 2.5 + 201 / 7.5) / (1 / 2.5 + 1 / 7.5));
    set(1, 2, 0, CELL_NULL);
    EXPECT_DOUBLE_EQ(at(102.5, 240), 200); // the one that is left
    set(0, 2, 9, CELL_ESTIMATED);
    EXPECT_EQ(at(102.5, 240), NO_ELEVATION);
}

TEST_F(GridInterpolate, LastColumnTakesTheMeanByInverseDistanceOfTheCellsThere)
{
    make(3, 2);
    EXPECT_DOUBLE_EQ(at(130, 205), (3 / 5.0 + 103 / 15.0) / (1 / 5.0 + 1 / 15.0));
    EXPECT_EQ(at(130, 240), 203);
    set(3, 2, 0, CELL_NULL);
    EXPECT_EQ(at(130, 240), NO_ELEVATION);
}

TEST_F(GridInterpolate, OneNullCornerGivesNoElevationAndSoDoesTheCubic)
{
    for (const auto& [column, row] : {std::pair{1, 1}, {2, 1}, {1, 2}, {2, 2}})
        for (const char state : {CELL_NULL, CELL_ESTIMATED}) {
            make(4, 4);
            set(column, row, 7, state);
            EXPECT_EQ(at(113, 227), NO_ELEVATION);
            EXPECT_EQ(cubic_at(113, 227), NO_ELEVATION);
        }
}

TEST_F(GridInterpolate, PlacesOutsideHaveNoElevation)
{
    make(3, 3);
    const double x = 130, y = 260;
    EXPECT_EQ(at(std::nextafter(100.0, 0), 210), NO_ELEVATION);
    EXPECT_EQ(at(std::nextafter(x, 1e9), 210), NO_ELEVATION);
    EXPECT_EQ(at(110, std::nextafter(200.0, 0)), NO_ELEVATION);
    EXPECT_EQ(at(110, std::nextafter(y, 1e9)), NO_ELEVATION);
    EXPECT_EQ(cubic_at(110, std::nextafter(y, 1e9)), NO_ELEVATION);
    EXPECT_NE(at(100, 200), NO_ELEVATION);
    EXPECT_NE(at(x, y), NO_ELEVATION);
    for (const double odd : {NOT_A_NUMBER, INFINITE, -INFINITE, 1e300, -1e300}) {
        EXPECT_EQ(at(odd, 210), NO_ELEVATION);
        EXPECT_EQ(at(110, odd), NO_ELEVATION);
        EXPECT_EQ(cubic_at(odd, odd), NO_ELEVATION);
    }
}

TEST_F(GridInterpolate, NoGridAndNoPointHaveNoElevation)
{
    const double point[3] = {1, 1, 1};
    EXPECT_EQ(grid_interpolate(point, nullptr), NO_ELEVATION);
    EXPECT_EQ(grid_interpolate_cubic(point, nullptr), NO_ELEVATION);
    make(1, 1);
    EXPECT_EQ(grid_interpolate(nullptr, g), NO_ELEVATION);
    EXPECT_EQ(grid_interpolate_cubic(nullptr, g), NO_ELEVATION);
}

TEST_F(GridInterpolate, CubicFollowsACubicSurface)
{
    make(7, 7);
    const auto surface = [](double x, double y) { return 3 + x * x * x - 2 * x * y * y + y * y * y - x * y; };
    for (int row = 0; row <= 7; ++row)
        for (int column = 0; column <= 7; ++column)
            set(column, row, surface(column, row));
    for (const auto& [x, y] : {std::pair{1.0, 1.0}, {1.25, 3.5}, {3.9, 2.0}, {5.5, 5.99}, {4.0, 4.0}})
        EXPECT_NEAR(cubic_at(100 + 10 * x, 200 + 20 * y), surface(x, y), 1e-9);
    EXPECT_GT(std::fabs(at(112.5, 270) - surface(1.25, 3.5)), 0.01);
}

TEST_F(GridInterpolate, CubicFallsBackWhereItsBlockDoesNotFit)
{
    make(5, 5);
    set(3, 3, 50);
    for (const auto& [x, y] : {std::pair{105.0, 250.0}, {145.0, 250.0}, {125.0, 210.0}, {125.0, 290.0}})
        EXPECT_EQ(cubic_at(x, y), at(x, y));
    EXPECT_NE(cubic_at(125, 250), at(125, 250));
}

TEST_F(GridInterpolate, CubicFallsBackOnANullCellAnywhereInItsBlock)
{
    for (int cell = 0; cell < 16; ++cell) {
        make(3, 3);
        set(1, 1, 40);
        set(cell % 4, cell / 4, 7, CELL_NULL);
        EXPECT_EQ(cubic_at(113, 227), at(113, 227)) << cell;
    }
    make(3, 3);
    set(1, 1, 40);
    EXPECT_NE(cubic_at(113, 227), at(113, 227));
}

TEST_F(GridInterpolate, GridWithoutColumnsTellsOfItsSizeAndTakesWhatIsThere)
{
    make(0, 3);
    set(0, 1, 8);
    set(0, 2, 8);
    EXPECT_EQ(at(100, 230), 8); // both cells are as far, at the place that stands for none
    EXPECT_EQ(printed_text(), "Grid size error\nGrid size error\nGrid size error\nGrid size error\n");
    EXPECT_EQ(at(100.5, 230), NO_ELEVATION);
    EXPECT_EQ(cubic_at(100, 230), 8);
}

TEST_F(GridInterpolate, GridWithoutRowsTakesTheMeanAlongItsRow)
{
    make(3, 0);
    EXPECT_DOUBLE_EQ(at(115, 200), 1.5);
    EXPECT_EQ(at(115, 201), NO_ELEVATION);
}

TEST_F(GridInterpolate, StepsOfZeroAndBackwardStepsHaveNoElevation)
{
    make(3, 3, 0, 20);
    EXPECT_EQ(at(100, 210), NO_ELEVATION);
    make(3, 3, 10, 0);
    EXPECT_EQ(at(110, 200), NO_ELEVATION);
    make(3, 3, -10, 20);
    EXPECT_EQ(at(95, 210), NO_ELEVATION);
    make(3, 3, NOT_A_NUMBER, 20);
    EXPECT_EQ(cubic_at(100, 210), NO_ELEVATION);
}

// Steps below the spacing of numbers there: a place can be counted past the last column.
TEST_F(GridInterpolate, PlacesPastTheLastColumnByRoundingHaveNoCell)
{
    g = grid_create(1e16, 0, 1, 1, 3, 3);
    for (std::int32_t i = 0; i < grid_cell_count(g); ++i)
        grid_write_cell(g, i, {1.0, CELL_VALUE});
    const double far = 1e16 + 3 * 1.0; // 4 on, as numbers go here
    EXPECT_EQ(far - 1e16, 4);
    EXPECT_EQ(at(far, 1.5), NO_ELEVATION);
    EXPECT_EQ(cubic_at(far, 1.5), NO_ELEVATION);
}

} // namespace
