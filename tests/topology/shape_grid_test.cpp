// Grids as shapes: squares with and without all corners, places, heights, colours, a break.
#include <algorithm>

#include "common/user_break.h"
#include "grid/grid.h"
#include "tests/topology/shape_nets.h"

namespace
{

using ShapeGrid = Collection;

grid* small_grid(const std::string& states)
{
    grid* g = grid_create(10, 20, 2, 3, 1, 1);
    for (std::int32_t i = 0; i < 4; ++i) {
        grid_cell cell;
        cell.z = i + 1;
        cell.state = states[static_cast<std::size_t>(i)];
        grid_write_cell(g, i, cell);
    }
    return g;
}

struct grid_case {
    const char *states, *edges;
    ShapeKind kind;
};

TEST_F(ShapeGrid, SquaresOfAGridAreOpenChains)
{
    const grid_case cases[] = {{"1111", "1-3 3-4 4-2", ShapeKind::CLOSED_FACE},
                               {"1110", "1-3 3-2", ShapeKind::OPEN_FACE},
                               {"0111", "1-3 3-2", ShapeKind::OPEN_FACE},
                               {"1011", "1-3 3-2", ShapeKind::OPEN_FACE},
                               {"1101", "1-3 3-2", ShapeKind::OPEN_FACE},
                               {"1001", "", ShapeKind::NONE},
                               {"0000", "", ShapeKind::NONE}};
    for (const grid_case& c : cases) {
        ShapeNet net(3);
        grid* heights = small_grid(c.states);
        grid* colors = grid_constant(heights, 5);
        net.add_grid(heights, colors, 0);
        EXPECT_EQ(edges_of(net), c.edges) << c.states;
        ASSERT_EQ(net.shapes.count, 1);
        EXPECT_EQ(net.shape(1)->kind, c.kind) << c.states;
        EXPECT_EQ(net.shape(1)->color, 5);
        EXPECT_EQ(net.shape(1)->visible, 0);
        EXPECT_EQ(net.shape(1)->closed, 1);
        EXPECT_EQ(net.nodes.count, std::count(c.states, c.states + 4, '1'));
        grid_free(&heights);
        grid_free(&colors);
    }
}

TEST_F(ShapeGrid, NodesOfAGridHaveItsPlacesAndHeights)
{
    ShapeNet net(3);
    grid* heights = small_grid("1111");
    net.add_grid(heights, nullptr, 1);
    EXPECT_EQ(net.node(4)->x, 12);
    EXPECT_EQ(net.node(4)->y, 23);
    EXPECT_EQ(net.node(4)->z, 4);
    EXPECT_EQ(net.shape(1)->color, 0);
    EXPECT_EQ(net.shape(1)->visible, 1);
    EXPECT_EQ(grid_read_cell(heights, 3).z, 4); // as it was
    grid_free(&heights);
    net.add_grid(nullptr, nullptr, 1);
    EXPECT_EQ(net.shapes.count, 1);
    EXPECT_EQ(printed_text(), "");
}

TEST_F(ShapeGrid, BreakEndsAGridWithAWord)
{
    ShapeNet net(3);
    grid* heights = grid_create(0, 0, 1, 1, 3, 1);
    for (std::int32_t i = 0; i < 8; ++i)
        grid_write_cell(heights, i, {1.0, CELL_VALUE});
    test_heap::break_at(2);
    net.add_grid(heights, nullptr, 1);
    EXPECT_EQ(printed_text(), "\nFunction cancelled at user request.");
    EXPECT_EQ(net.shapes.count, 1);
    EXPECT_EQ(net.nodes.count, 8);
    user_break_clear();
    grid_free(&heights);
}

} // namespace
