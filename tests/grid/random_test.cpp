// Interpolation and filling against the plain ones, to the bit, in memory and in a file.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "common/user_break.h"
#include "grid/fill.h"
#include "grid/interpolate.h"
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

class GridRandom : public testing::TestWithParam<place>
{
protected:
    void SetUp() override
    {
        before = test_heap::live_blocks();
        printed_text();
        user_break_clear();
    }
    void TearDown() override
    {
        test_heap::break_at(0);
        user_break_clear();
        grid_fill_plane = grid_fill_quiet = 0;
        EXPECT_EQ(test_heap::live_blocks(), before);
        EXPECT_TRUE(memory_files::disk().files.empty());
        memory_files::forget();
    }

    held_grid grid_of(const plain::raster& r) { return held_grid(random_grids::made_of(r, GetParam())); }
    int rounds() const { return GetParam() == place::in_memory ? 20000 : 4000; }

private:
    int before = 0;
};

// Cells, sides and edges to the last unit, and places anywhere.
double any_place(std::mt19937& random, double origin, double step, int intervals)
{
    const double node = random_grids::below(random, intervals + 1) * step + origin;
    const double far = origin + intervals * step;
    switch (random_grids::below(random, 12)) {
    case 0:
    case 1:
        return node;
    case 2:
        return std::nextafter(node, 1e300);
    case 3:
        return std::nextafter(node, -1e300);
    case 4:
        return far;
    case 5:
        return std::nextafter(far, 1e300);
    case 6:
        return std::nextafter(origin, -1e300);
    case 7:
        return node + step / 2;
    default:
        return random_grids::below(random, 200)
                   ? random_grids::uniform(random, origin - 0.1 * step, far + 0.1 * step)
                   : std::numeric_limits<double>::quiet_NaN();
    }
}

TEST_P(GridRandom, InterpolationIsThePlainOne)
{
    std::mt19937 random(11);
    int found = 0, cubics = 0;
    for (int round = 0; round < rounds() / 2; ++round) {
        plain::raster r = random_grids::any(random);
        const held_grid g = grid_of(r);
        ASSERT_TRUE(g);
        for (int k = 0; k < 60; ++k) {
            const double point[3] = {any_place(random, r.x0, r.step_x, r.columns),
                                     any_place(random, r.y0, r.step_y, r.rows), 0};
            const double plain = plain::interpolate(r, point[0], point[1]);
            const double linear = grid_interpolate(point, g.get());
            ASSERT_TRUE(random_grids::same_bits(linear, plain)) << round << " " << linear << " " << plain;
            const double plain_cubic = plain::interpolate_cubic(r, point[0], point[1]);
            const double cubic = grid_interpolate_cubic(point, g.get());
            ASSERT_TRUE(random_grids::same_bits(cubic, plain_cubic))
                << round << " " << cubic << " " << plain_cubic;
            found += linear != plain::no_height;
            cubics += cubic != linear;
        }
        ASSERT_EQ(printed_text(), r.printed) << round;
        ASSERT_EQ(random_grids::first_difference(g.get(), r), -1);
    }
    EXPECT_GT(found, rounds());
    EXPECT_GT(cubics, rounds() / 4);
}

TEST_P(GridRandom, FillingIsThePlainOne)
{
    std::mt19937 random(12);
    int filled = 0, broken = 0;
    for (int round = 0; round < rounds(); ++round) {
        plain::raster r = random_grids::any(random);
        const held_grid g = grid_of(r);
        ASSERT_TRUE(g);
        const char mode = "APCXa"[random_grids::below(random, 5)];
        r.fill_plane = grid_fill_plane = random_grids::below(random, 3) == 0;
        r.fill_quiet = grid_fill_quiet = random_grids::below(random, 4) ? 0 : random_grids::below(random, 3);
        r.break_at = random_grids::below(random, 4) ? 0 : 1 + random_grids::below(random, 4);
        r.slope = {grid_slope[0], grid_slope[1], grid_slope[2]};
        r.slope_count = grid_slope_count;
        user_break_clear();
        test_heap::break_at(r.break_at);
        const int null_count = random_grids::below(random, 1000);

        const int want = plain::fill_nulls(r, null_count, mode == 'X' || mode == 'a' ? 'C' : mode);
        ASSERT_EQ(grid_fill_nulls(g.get(), null_count, mode), want) << round;
        ASSERT_EQ(random_grids::first_difference(g.get(), r), -1) << round << " " << mode;
        ASSERT_EQ(printed_text(), r.printed) << round;
        ASSERT_TRUE(random_grids::same_bits(grid_slope[0], r.slope.x)) << round;
        ASSERT_TRUE(random_grids::same_bits(grid_slope[1], r.slope.y)) << round;
        ASSERT_TRUE(random_grids::same_bits(grid_slope[2], r.slope.z)) << round;
        ASSERT_EQ(grid_slope_count, r.slope_count) << round;
        broken += want == plain::stopped;
        filled += r.polls > 2;
    }
    EXPECT_GT(filled, rounds() / 20);
    EXPECT_GT(broken, rounds() / 40);
}

TEST_P(GridRandom, OneEstimateIsThePlainOne)
{
    std::mt19937 random(13);
    for (int round = 0; round < rounds() / 20; ++round) {
        plain::raster r = random_grids::any(random);
        const held_grid g = grid_of(r);
        r.fill_plane = grid_fill_plane = random_grids::below(random, 3) == 0;
        grid_mean_slope(g.get());
        r.slope = {1, 2, 3};
        r.slope_count = grid_slope_count;
        plain::mean_slope(r);
        for (int i = 0; i < grid_cell_count(g.get()); ++i) {
            grid_cell_normal(g.get(), i);
            plain::cell_normal(r, i);
            if (r.cells[i].state == '0') {
                const char mode = "APC"[random_grids::below(random, 3)];
                grid_estimate_cell(g.get(), i, mode, 2, 3, 4);
                plain::estimate_cell(r, i, mode, 2, 3, 4);
            }
            ASSERT_TRUE(random_grids::same_bits(grid_slope[0], r.slope.x)) << round << " " << i;
            ASSERT_TRUE(random_grids::same_bits(grid_slope[1], r.slope.y)) << round << " " << i;
            ASSERT_TRUE(random_grids::same_bits(grid_slope[2], r.slope.z)) << round << " " << i;
        }
        ASSERT_EQ(random_grids::first_difference(g.get(), r), -1) << round;
        ASSERT_EQ(printed_text(), r.printed) << round;
    }
}

INSTANTIATE_TEST_SUITE_P(Kept, GridRandom, testing::Values(place::in_memory, place::in_file),
                         [](const testing::TestParamInfo<place>& one) {
                             return one.param == place::in_memory ? "InMemory" : "InAFile";
                         });

} // namespace
