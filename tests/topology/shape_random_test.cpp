// Cutting and faces of inputs of chance: without memory, twice, and what they cost.
#include <cmath>
#include <numbers>
#include <random>

#include "tests/growth.h"
#include "tests/topology/shape_nets.h"

namespace
{

// ---- inputs

enum class net_kind { SCATTERED, ARCS, ROUGH_GRID, LINES, COLLINEAR, CHAINS, FAR_AWAY, STAR, KINDS };

void fill(ShapeNet* net, net_kind kind, unsigned seed)
{
    std::mt19937 random(seed * 8 + static_cast<unsigned>(kind));
    const auto real = [&](double a, double b) { return std::uniform_real_distribution<double>(a, b)(random); };
    const auto whole = [&](int a, int b) { return std::uniform_int_distribution<int>(a, b)(random); };
    const int count = kind == net_kind::CHAINS ? whole(1, 5) : whole(2, 16);
    for (int i = 0; i < count; ++i)
        switch (kind) {
        case net_kind::ARCS:
            add_segment(net, whole(0, 12), whole(0, 12), whole(0, 12), whole(0, 12),
                        whole(0, 3) ? real(-1.8, 1.8) : whole(-1, 1));
            break;
        case net_kind::ROUGH_GRID: // ends on whole places: T junctions, shared ends, doubles
            add_segment(net, whole(0, 4), whole(0, 4), whole(0, 4), whole(0, 4));
            break;
        case net_kind::LINES: {
            const double at = whole(0, 9), from = whole(-1, 3), to = whole(6, 10);
            i % 2 ? add_segment(net, at, from, at, to) : add_segment(net, from, at, to, at);
            break;
        }
        case net_kind::COLLINEAR: {
            const int a = whole(0, 12), b = whole(0, 12), turn = whole(0, 2);
            add_segment(net, a, turn * a * 0.5, b, turn * b * 0.5);
            break;
        }
        case net_kind::CHAINS: {
            path line;
            for (int k = whole(2, 6); k > 0; --k)
                line.push_back({whole(0, 40) * 0.25, whole(0, 40) * 0.25, 0, whole(0, 2) ? 0 : real(-1, 1)});
            add_path(net, line, whole(0, 1) != 0);
            break;
        }
        case net_kind::FAR_AWAY: {
            const double x = 640000 + real(0, 50), y = 5120000 + real(0, 50);
            add_segment(net, x, y, x + real(-30, 30), y + real(-30, 30), whole(0, 3) ? 0 : real(-1, 1));
            break;
        }
        case net_kind::STAR: {
            const double angle = whole(0, 23) * std::numbers::pi / 12, r = whole(1, 3) * 5;
            add_segment(net, -r * std::cos(angle), -r * std::sin(angle), 10 * std::cos(angle),
                        10 * std::sin(angle));
            break;
        }
        default:
            add_segment(net, real(0, 20), real(0, 20), real(0, 20), real(0, 20));
        }
}

template <class Test>
void for_all_nets(unsigned seeds, Test test)
{
    for (int kind = 0; kind < static_cast<int>(net_kind::KINDS); ++kind)
        for (unsigned seed = 1; seed <= seeds; ++seed) {
            test(static_cast<net_kind>(kind), seed);
            ASSERT_FALSE(testing::Test::HasFailure()) << "kind " << kind << " seed " << seed;
        }
}

using ShapeRandom = Collection;

TEST_F(ShapeRandom, CutsWithoutMemoryForBoxesAreTheSame)
{
    for_all_nets(40, [](net_kind kind, unsigned seed) {
        ShapeNet net(3), same(3);
        fill(&net, kind, seed);
        fill(&same, kind, seed);
        test_heap::fail_at(1); // the boxes come first
        net.cut_crossings();
        test_heap::fail_at(0);
        same.cut_crossings();
        ASSERT_EQ(dump(net), dump(same));
    });
}

TEST_F(ShapeRandom, NothingCrossesOnceItIsCut)
{
    for_all_nets(100, [](net_kind kind, unsigned seed) {
        if (kind == net_kind::ARCS || kind == net_kind::CHAINS || kind == net_kind::FAR_AWAY)
            return; // near tangents leave points just off an end
        ShapeNet net(3);
        fill(&net, kind, seed);
        net.cut_crossings();
        const std::string before = edges_of(net);
        net.cut_crossings();
        ASSERT_EQ(edges_of(net), before);
    });
}

TEST_F(ShapeRandom, EachFailureOfTheHeapIsSurvived)
{
    for (const net_kind kind : {net_kind::SCATTERED, net_kind::ARCS, net_kind::LINES})
        for (const bool for_good : {false, true})
            for (int n = 1;; n += for_good ? 7 : 1) {
                bool is_last = true;
                {
                    ShapeNet net(3);
                    (for_good ? test_heap::fail_from : test_heap::fail_at)(n);
                    fill(&net, kind, 5);
                    net.cut_crossings();
                    net.cut_at_near_nodes();
                    pg_ring* rings = net.trace_faces();
                    is_last = for_good ? n > 4000 : !test_heap::has_failed();
                    test_heap::fail_at(0);
                    test_heap::fail_from(0);
                    pg_free_rings(&rings);
                }
                ASSERT_EQ(test_heap::live_blocks(), 0) << n;
                if (is_last)
                    break;
            }
    printed_text();
}

// Radii of up to 1e12, whose crossings are rounded to more than the tolerance.
TEST_F(ShapeRandom, ArcsOfHugeRadiiAreCutToAnEnd)
{
    for (unsigned seed = 1; seed <= 60; ++seed) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> place(0, 12000), power(-9, -4);
        ShapeNet net(3);
        for (unsigned i = 0; i < 2 + seed % 17; ++i) {
            const double size = std::pow(10.0, power(random)), x = place(random), y = place(random);
            add_segment(&net, x, y, place(random), place(random), i % 2 ? size : -size);
        }
        net.cut_crossings();
        net.cut_at_near_nodes();
        expect_sound(net);
        EXPECT_LT(net.edges.count, 1000) << seed;
    }
}

// ---- cost

void lines_of_chance(int count)
{
    std::mt19937 random{3};
    const double width = 10 * std::sqrt(count);
    std::uniform_real_distribution<double> place(0, width), reach(-15, 15);
    ShapeNet net(3);
    for (int i = 0; i < count; ++i) {
        const double x = place(random), y = place(random);
        add_segment(&net, x, y, x + reach(random), y + reach(random));
    }
    net.cut_crossings();
    net.cut_at_near_nodes();
    pg_ring* rings = net.trace_faces();
    pg_free_rings(&rings);
}

TEST_F(ShapeRandom, OverlayGrowsWithTheNumberOfSegments)
{
    EXPECT_TRUE(grows_in_proportion(lines_of_chance, 32000));
}

// A comb: a long chain, cut at each tooth, with a dangling end at each.
TEST_F(ShapeRandom, OverlayOfOneLongChainGrowsWithIt)
{
    EXPECT_TRUE(grows_in_proportion(
        [](int count) {
            ShapeNet net(3);
            path chain;
            for (int i = 0; i <= count; ++i)
                chain.push_back({i * 1.0, i % 2 * 0.25});
            add_path(&net, chain);
            for (int i = 0; i < count; ++i)
                add_segment(&net, i + 0.5, -1, i + 0.5, 1);
            net.cut_crossings();
            net.cut_at_near_nodes();
            pg_ring* rings = net.trace_faces();
            pg_free_rings(&rings);
        },
        16000));
}

} // namespace
