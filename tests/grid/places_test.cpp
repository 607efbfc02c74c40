#include <gtest/gtest.h>

#include <climits>

#include "grid/grid.h"
#include "tests/polygon/heap.h"

namespace
{

// Places want no store.
grid of_size(std::int32_t columns, std::int32_t rows)
{
    grid g{};
    g.x0 = 100;
    g.y0 = 200;
    g.step_x = 2;
    g.step_y = -3;
    g.columns = columns;
    g.rows = rows;
    return g;
}

TEST(GridPlaces, AnIndexCountsAlongRows)
{
    const grid g = of_size(4, 2);
    EXPECT_EQ(grid_cell_count(&g), 15);
    EXPECT_EQ(grid_index(&g, 0, 0), 0);
    EXPECT_EQ(grid_index(&g, 4, 0), 4);
    EXPECT_EQ(grid_index(&g, 0, 1), 5);
    EXPECT_EQ(grid_index(&g, 3, 2), 13);
}

TEST(GridPlaces, AnIndexIsNotTestedAgainstTheEdges)
{
    const grid g = of_size(4, 2);
    EXPECT_EQ(grid_index(&g, 5, 0), 5);
    EXPECT_EQ(grid_index(&g, -1, 1), 4);
    EXPECT_EQ(grid_index(&g, 0, 3), 15);
}

TEST(GridPlaces, ACellLiesItsStepsFromTheOrigin)
{
    const grid g = of_size(4, 2);
    for (int r = 0; r <= 2; ++r)
        for (int c = 0; c <= 4; ++c) {
            EXPECT_EQ(grid_cell_x(&g, grid_index(&g, c, r)), 100 + 2 * c);
            EXPECT_EQ(grid_cell_y(&g, grid_index(&g, c, r)), 200 - 3 * r);
        }
    EXPECT_EQ(printed_text(), "");
}

TEST(GridPlaces, WithoutColumnsBothCoordinatesAreASizeError)
{
    grid g = of_size(0, 2);
    g.step_x = 0; // the size is looked at first
    EXPECT_EQ(grid_cell_x(&g, 0), 98765432.1);
    EXPECT_EQ(printed_text(), "Grid size error\n");
    EXPECT_EQ(grid_cell_y(&g, 0), 98765432.1);
    EXPECT_EQ(printed_text(), "Grid size error\n");
}

TEST(GridPlaces, RowsAreNoPartOfTheSizeError)
{
    const grid g = of_size(4, 0);
    EXPECT_EQ(grid_cell_x(&g, 4), 108);
    EXPECT_EQ(grid_cell_y(&g, 4), 200);
    EXPECT_EQ(printed_text(), "");
}

TEST(GridPlaces, AStepOfZeroIsAStepErrorOfItsOwnCoordinate)
{
    grid g = of_size(4, 2);
    g.step_x = 0;
    EXPECT_EQ(grid_cell_x(&g, 1), 98765432.1);
    EXPECT_EQ(printed_text(), "Grid step error\n");
    EXPECT_EQ(grid_cell_y(&g, 5), 197);
    EXPECT_EQ(printed_text(), "");
    g.step_x = 2;
    g.step_y = 0;
    EXPECT_EQ(grid_cell_x(&g, 1), 102);
    EXPECT_EQ(printed_text(), "");
    EXPECT_EQ(grid_cell_y(&g, 5), 98765432.1);
    EXPECT_EQ(printed_text(), "Grid step error\n");
}

TEST(GridPlaces, NeighboursStopAtTheEdges)
{
    const grid g = of_size(4, 2);
    for (int r = 0; r <= 2; ++r)
        for (int c = 0; c <= 4; ++c) {
            const int i = 5 * r + c;
            EXPECT_EQ(grid_right(&g, i), c == 4 ? -1 : i + 1);
            EXPECT_EQ(grid_left(&g, i), c == 0 ? -1 : i - 1);
            EXPECT_EQ(grid_up(&g, i), r == 2 ? -1 : i + 5);
            EXPECT_EQ(grid_down(&g, i), r == 0 ? -1 : i - 5);
        }
}

TEST(GridPlaces, OneCellHasNoNeighbours)
{
    const grid g = of_size(0, 0);
    EXPECT_EQ(grid_cell_count(&g), 1);
    for (const auto neighbour : {grid_right, grid_left, grid_up, grid_down})
        EXPECT_EQ(neighbour(&g, 0), -1);
}

TEST(GridPlaces, WhatIsNoCellHasNoNeighbours)
{
    const grid g = of_size(4, 2);
    for (const auto neighbour : {grid_right, grid_left, grid_up, grid_down})
        for (const int index : {-1, 15, 16, INT_MAX, INT_MIN})
            EXPECT_EQ(neighbour(&g, index), -1) << index;
}

TEST(GridPlaces, NoGridHasNoPlaces)
{
    EXPECT_EQ(grid_index(nullptr, 1, 1), -1);
    EXPECT_EQ(grid_cell_count(nullptr), -1);
    EXPECT_EQ(grid_cell_x(nullptr, 1), 98765432.1);
    EXPECT_EQ(grid_cell_y(nullptr, 1), 98765432.1);
    for (const auto neighbour : {grid_right, grid_left, grid_up, grid_down})
        EXPECT_EQ(neighbour(nullptr, 0), -1);
    EXPECT_EQ(printed_text(), "");
}

TEST(GridPlaces, TheLargestGridHasAllItsIndices)
{
    const grid g = of_size(46339, 46339);
    const std::int32_t last = 46340 * 46340 - 1;
    EXPECT_EQ(grid_cell_count(&g), last + 1);
    EXPECT_EQ(grid_index(&g, 46339, 46339), last);
    EXPECT_EQ(grid_left(&g, last), last - 1);
    EXPECT_EQ(grid_down(&g, last), last - 46340);
    EXPECT_EQ(grid_up(&g, last), -1);
    EXPECT_EQ(grid_right(&g, last), -1);
    EXPECT_EQ(grid_cell_x(&g, last), 100 + 2 * 46339);
    EXPECT_EQ(grid_cell_y(&g, last), 200 - 3 * 46339);
}

} // namespace
