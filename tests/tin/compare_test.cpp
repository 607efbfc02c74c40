// The network of src/tin against the plain one: the same points, barriers and breaks give the same triangles in
// the same order, the same counters and the same words.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>

#include "hostapi/ads.h"
#include "tests/tin/both_texts.h"
#include "tests/tin/compare_host.h"
#include "tin/crossing.h"
#include "tin/inside.h"
#include "tin/network.h"
#include "tin/swap_test.h"

namespace
{

using tin_inputs::input;

std::string first_difference(const std::string& expected, const std::string& actual)
{
    std::istringstream a(expected), b(actual);
    std::string left, right;
    for (int line = 1; true; ++line) {
        const bool more = static_cast<bool>(std::getline(a, left)),
                   other = static_cast<bool>(std::getline(b, right));
        if (!more && !other)
            return "";
        if (!more || !other || left != right)
            return "line " + std::to_string(line) + "\n  plain   " + (more ? left : "(end)") + "\n  library " +
                   (other ? right : "(end)");
    }
}

// An input on which the order of the determinant's sum decides may come out in two ways.
void compare(const input& in, int* compared)
{
    const std::string expected = plain_text(in, false);
    if (expected != plain_text(in, true))
        return;
    ++*compared;
    EXPECT_EQ(first_difference(expected, library_text(in)), "") << in.name;
}

TEST(TinCompare, EveryInputGivesTheSameNetwork)
{
    int compared = 0;
    const auto inputs = tin_inputs::all();
    for (const input& in : inputs)
        compare(in, &compared);
    EXPECT_GT(compared, static_cast<int>(inputs.size()) * 3 / 4);
}

TEST(TinCompare, ManySmallInputsGiveTheSameNetwork)
{
    int compared = 0;
    for (unsigned seed = 0; seed < 400; ++seed) {
        std::mt19937 random(seed);
        input in{"small " + std::to_string(seed), {}};
        const int count = 4 + static_cast<int>(random() % 20);
        for (int i = 0; i < count; ++i) // every other time on a coarse lattice, where all sorts of things meet
            in.points.push_back(seed % 2 ? tin_inputs::spot{double(random() % 8), double(random() % 8), 1.5}
                                         : tin_inputs::spot{tin_inputs::uniform(random, 0, 50),
                                                            tin_inputs::uniform(random, 0, 50), 2});
        in.barriers = tin_inputs::random_barriers(seed, in.points.size(), static_cast<int>(seed % 7));
        in.split = seed % 3 == 0;
        compare(in, &compared);
    }
    EXPECT_GT(compared, 250);
}

// Out there the powers that decide are no numbers any more.
TEST(TinCompare, PointsFarOutGiveTheSameNetwork)
{
    int compared = 0, inputs = 0;
    for (const double size : {1e30, 1e59, 1e61, 1e75, 1e76, 1e77, 1e78, 1e100, 1e150})
        for (unsigned seed = 1; seed <= 20; ++seed) {
            input in{"far out " + std::to_string(seed) + ", " + exact(size),
                     tin_inputs::scatter(seed, 2 + static_cast<int>(seed) * 3, 1)};
            for (auto& p : in.points)
                p = {p.x * size, p.y * size * (seed % 4 ? 1 : 1e-6), p.z};
            in.barriers = tin_inputs::random_barriers(seed, in.points.size(), static_cast<int>(seed % 3));
            in.break_at = seed % 5 == 0;
            compare(in, &compared);
            ++inputs;
        }
    EXPECT_GT(compared, inputs / 2);
}

// Four points, half of the time on a lattice, in both kinds of record.
struct four {
    plain::point p[4];
    tin_point t[4]{};
    four(std::mt19937& random, bool coarse)
    {
        for (int i = 0; i < 4; ++i) {
            p[i].x = t[i].x = coarse ? double(random() % 6) : tin_inputs::uniform(random, 0, 9);
            p[i].y = t[i].y = coarse ? double(random() % 6) : tin_inputs::uniform(random, 0, 9);
        }
    }
};

TEST(TinCompare, CrossingsAreTheSame)
{
    library_network n;
    std::mt19937 random(71);
    int meeting = 0;
    for (int i = 0; i < 40000; ++i) {
        four f(random, i % 2);
        if (i % 5 == 0) // nearly parallel
            f.p[3].y = f.t[3].y = f.p[2].y + (f.p[1].y - f.p[0].y) + 1e-6;
        if (i % 5 == 0)
            f.p[3].x = f.t[3].x = f.p[2].x + (f.p[1].x - f.p[0].x);
        const int expected = plain::segments_cross(f.p[0], f.p[1], f.p[2], f.p[3]);
        meeting += expected;
        ASSERT_EQ(tin_segments_cross(n.net, &f.t[0], &f.t[1], &f.t[2], &f.t[3]), expected) << i;
        double here[3] = {}, there[3] = {};
        const int upright = plain::vertical_cross(f.p[0], f.p[1], f.p[2], f.p[3], here);
        ASSERT_EQ(tin_vertical_cross(&f.t[0], &f.t[1], &f.t[2], &f.t[3], there), upright) << i;
        if (upright == plain::norm) {
            ASSERT_NEAR(there[0], here[0], 1e-9);
            ASSERT_NEAR(there[1], here[1], 1e-9);
        }
    }
    EXPECT_GT(meeting, 4000);
}

TEST(TinCompare, InsideTestsAreTheSame)
{
    library_network n;
    plain::network here;
    std::mt19937 random(72);
    for (int i = 0; i < 40000; ++i) {
        four f(random, i % 2);
        plain::triangle triangle;
        tin_triangle other{};
        for (int k = 0; k < 3; ++k) {
            triangle.corner[k] = &f.p[k];
            other.corner[k] = &f.t[k];
        }
        plain::load_edges(here.edges_a, triangle);
        tin_load_edges_a(n.net, &other);
        tin_load_edges_b(n.net, &other);
        const int expected = plain::inside(here, here.edges_a, f.p[3]);
        ASSERT_EQ(tin_inside_a(n.net, &f.t[3]), expected) << i;
        ASSERT_EQ(tin_inside_b(n.net, &f.t[3]), expected) << i;
    }
}

// Quadrilaterals about a circle, so that all three regimes are met; each with neighbours beyond.
TEST(TinCompare, SwapTestsAreTheSame)
{
    library_network n;
    plain::network here, backwards;
    backwards.backwards = true;
    std::mt19937 random(73);
    int swaps = 0, order_matters = 0;
    for (int i = 0; i < 40000; ++i) {
        plain::point p[6];
        tin_point t[6]{};
        const double size = i % 3 == 0 ? 1 : i % 3 == 1 ? 30 : 0.01, jitter = i % 4 ? 1e-9 : size / 20;
        double angle = tin_inputs::uniform(random, 0, 6);
        for (int k = 0; k < 6; ++k) { // a, Ea, b, Ec, c, d
            const int slot[] = {0, 5, 1, 4, 2, 3};
            const double radius = size + tin_inputs::uniform(random, 0, jitter);
            const double x = size + radius * std::cos(angle), y = size + radius * std::sin(angle);
            p[slot[k]].x = t[slot[k]].x = i % 7 ? x : std::floor(x * 4) / 4;
            p[slot[k]].y = t[slot[k]].y = i % 7 ? y : std::floor(y * 4) / 4;
            angle += tin_inputs::uniform(random, 0.1, k < 4 ? 0.9 : 2);
        }
        plain::triangle far, nc, na;
        tin_triangle far_t{}, nc_t{}, na_t{};
        const int turn = i % 3;
        const int corners[3] = {1, 2, 0};
        for (int k = 0; k < 3; ++k) {
            far.corner[(k + turn) % 3] = &p[corners[k]];
            far_t.corner[(k + turn) % 3] = &t[corners[k]];
        }
        far.side[turn] = &nc, far_t.side[turn] = &nc_t;
        far.side[(turn + 2) % 3] = &na, far_t.side[(turn + 2) % 3] = &na_t;
        const int beyond_c[3] = {1, 4, 2}, beyond_a[3] = {0, 5, 1};
        for (int k = 0; k < 3; ++k) {
            nc.corner[k] = &p[beyond_c[k]], nc_t.corner[k] = &t[beyond_c[k]];
            na.corner[k] = &p[beyond_a[k]], na_t.corner[k] = &t[beyond_a[k]];
        }
        const int expected = plain::swap_test(here, &p[0], &p[1], &p[2], &p[3], &far);
        ASSERT_EQ(tin_cocircular_test(n.net, &t[0], &t[1], &t[2], &t[3], &far_t),
                  plain::cocircular_test(here, &p[0], &p[1], &p[2], &p[3], &far))
            << i;
        if (expected != plain::swap_test(backwards, &p[0], &p[1], &p[2], &p[3], &far)) {
            ++order_matters;
            continue;
        }
        swaps += expected;
        ASSERT_EQ(tin_swap_test(n.net, &t[0], &t[1], &t[2], &t[3], &far_t), expected) << i;
    }
    EXPECT_GT(swaps, 4000);
    EXPECT_LT(order_matters, 400);
}

} // namespace
