// Zorro lines, against their formula worked out step by step.
#include "tools/zorro_line.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>

#include "tests/drawing/drawing_case.h"

namespace
{

using place2 = std::array<double, 2>;

// The four points of a zorro, by w, the slope of its zigzag.
std::array<place2, 4> bends_of(const place2& start, const place2& end)
{
    const double dx = end[0] - start[0], dy = end[1] - start[1];
    const double length = std::sqrt(dx * dx + dy * dy);
    const double ux = dx / length;
    double uy = dy / length;
    if (uy == 0.0)
        uy = 1e-10;
    const double w = (1.0 - 5.0 * ux) / (5.0 * uy);
    const double s = std::sqrt(w * w + 1.0);
    const double nx = 1.0 / s, ny = w / s;
    return {start,
            {start[0] + 0.58 * length * ux - 0.075 * length * nx,
             start[1] + 0.58 * length * uy - 0.075 * length * ny},
            {start[0] + 0.42 * length * ux + 0.075 * length * nx,
             start[1] + 0.42 * length * uy + 0.075 * length * ny},
            end};
}

// Controls lie at the 2.7th part of the distance to the neighbour, points at 0.08, 0.16, ...
std::vector<corner> curve_of(const std::array<place2, 4>& p)
{
    std::vector<corner> curve;
    for (std::size_t i = 0; i < 3; ++i) {
        const double chord = std::hypot(p[i + 1][0] - p[i][0], p[i + 1][1] - p[i][1]);
        const auto tangent = [&](std::size_t at, int axis) {
            if (at == 0 || at == 3)
                return 0.0;
            const double tx = p[at + 1][0] - p[at - 1][0], ty = p[at + 1][1] - p[at - 1][1];
            return (axis == 0 ? tx : ty) / std::hypot(tx, ty);
        };
        for (int step = 0; step < 13; ++step) {
            const double t = step * 0.08, u = 1.0 - t;
            double at[2];
            for (int axis = 0; axis < 2; ++axis) {
                const double p0 = p[i][static_cast<std::size_t>(axis)];
                const double p3 = p[i + 1][static_cast<std::size_t>(axis)];
                const double a = p0 + chord / 2.7 * tangent(i, axis);
                const double b = p3 - chord / 2.7 * tangent(i + 1, axis);
                at[axis] = u * u * u * p0 + 3 * t * u * u * a + 3 * t * t * u * b + t * t * t * p3;
            }
            curve.push_back({at[0], at[1]});
        }
    }
    curve.push_back({p[3][0], p[3][1]});
    return curve;
}

struct Zorro : drawing_case {
};

TEST_F(Zorro, FollowsItsFormulaInEveryDirection)
{
    const place2 start = {1200.5, -300.25};
    for (int degrees = 0; degrees < 360; degrees += 15) {
        const double angle = degrees * std::numbers::pi / 180.0;
        // Along x to the last bit, where the slope of the zigzag is as good as upright.
        const double rise = degrees % 180 == 0 ? 0.0 : 40.0 * std::sin(angle);
        const place2 end = {start[0] + 40.0 * std::cos(angle), start[1] + rise};
        const ads_point from = {start[0], start[1], 7.0}, to = {end[0], end[1], 7.0};
        zorro_line(from, to, false);
        const std::vector<corner> got = read(last()), expected = curve_of(bends_of(start, end));
        ASSERT_EQ(got.size(), expected.size()) << degrees;
        for (std::size_t i = 0; i < got.size(); ++i) {
            EXPECT_NEAR(got[i].x, expected[i].x, 1e-9) << degrees << " degrees, vertex " << i;
            EXPECT_NEAR(got[i].y, expected[i].y, 1e-9) << degrees << " degrees, vertex " << i;
            EXPECT_EQ(got[i].z, 7.0);
        }
    }
}

} // namespace
