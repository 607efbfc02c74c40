#include "polygon/trim.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "polygon/measures.h"
#include "tests/polygon/chains.h"
#include "tests/polygon/heap.h"

namespace
{

constexpr double PI = std::numbers::pi;

using trimming = int (*)(pg_node*, double*);
constexpr trimming BOTH[] = {pg_trim_at_first, pg_trim_at_last};

// The chain that is left; empty when the point isn't found. Nothing may be lost.
std::vector<spot> trimmed(trimming trim, const std::vector<spot>& spots, double x, double y, double z = 0.0)
{
    const int live = test_heap::live_blocks();
    double point[3] = {x, y, z};
    chain_ptr chain = make_chain(spots);
    const int found = trim(chain.get(), point);
    const std::vector<spot> left = spots_of(chain.get());
    EXPECT_EQ(test_heap::live_blocks(), live + static_cast<int>(left.size()));
    if (!found) {
        EXPECT_EQ(left, spots);
    }
    return found ? left : std::vector<spot>{};
}

TEST(Trim, CutsAtANodeAndMakesItStraight)
{
    const std::vector<spot> chain{{0, 0}, {5, 0, 0.5}, {5, 5}, {0, 5}};
    for (const trimming trim : BOTH)
        EXPECT_EQ(trimmed(trim, chain, 5, 0), (std::vector<spot>{{0, 0}, {5, 0}}));
    EXPECT_EQ(trimmed(pg_trim_at_first, chain, 5, 5e-7), (std::vector<spot>{{0, 0}, {5, 0}}));
    // A hair behind the node the point is on the next segment too, which for the last place counts.
    EXPECT_EQ(trimmed(pg_trim_at_last, chain, 5, 5e-7).size(), 3u);
}

TEST(Trim, CutsALine)
{
    const std::vector<spot> chain{{0, 0}, {0, 4}, {5, 4}, {5, 9, 0.5}};
    for (const trimming trim : BOTH)
        EXPECT_EQ(trimmed(trim, chain, 2, 4), (std::vector<spot>{{0, 0}, {0, 4}, {2, 4}}));
}

TEST(Trim, CutsAnArcWithItsBulge)
{
    for (const trimming trim : BOTH)
        for (const double sign : {1.0, -1.0}) {
            const auto left = trimmed(trim, {{0, 0}, {2, 0, sign}, {0, 0}, {-5, 5}}, 1, sign);
            ASSERT_EQ(left.size(), 3u);
            EXPECT_NEAR(left[1].bulge, sign * std::tan(PI / 8), 1e-12);
            EXPECT_EQ(left[2], (spot{1, sign}));
        }
}

TEST(Trim, FindsTheChainsLastNode)
{
    for (const trimming trim : BOTH) {
        EXPECT_EQ(trimmed(trim, {{0, 0}, {0, 4, 3}}, 0, 4).size(), 2u);
        EXPECT_EQ(trimmed(trim, {{0, 0}, {2, 0}, {2, 4, 1}}, 2, 4).size(), 3u);
    }
}

TEST(Trim, TakesTheFirstOrTheLastPlace)
{
    // A loop through (2, 0).
    const std::vector<spot> loop{{0, 0}, {4, 0}, {4, 3}, {2, 3}, {2, -3}};
    EXPECT_EQ(trimmed(pg_trim_at_first, loop, 2, 0), (std::vector<spot>{{0, 0}, {2, 0}}));
    EXPECT_EQ(trimmed(pg_trim_at_last, loop, 2, 0),
              (std::vector<spot>{{0, 0}, {4, 0}, {4, 3}, {2, 3}, {2, 0}}));
    // A node that is visited twice.
    const std::vector<spot> twice{{0, 0}, {0, 3}, {2, 5}, {0, 3}, {-4, 4}};
    EXPECT_EQ(trimmed(pg_trim_at_first, twice, 0, 3).size(), 2u);
    EXPECT_EQ(trimmed(pg_trim_at_last, twice, 0, 3).size(), 4u);
}

TEST(Trim, OnlyTheFirstClearsThePointsHeight)
{
    double point[3] = {2, 0, 9};
    EXPECT_EQ(pg_trim_at_last(make_chain({{0, 0}, {4, 0}}).get(), point), 1);
    EXPECT_EQ(point[2], 9);
    EXPECT_EQ(trimmed(pg_trim_at_last, {{0, 0}, {4, 0}}, 2, 0, 9)[1].z, 9);
    EXPECT_EQ(trimmed(pg_trim_at_first, {{0, 0}, {4, 0}}, 2, 0, 9)[1].z, 0);
    for (const std::vector<spot>& chain : {std::vector<spot>{}, {{0, 0}}, {{5, 5}, {6, 6}}}) {
        point[2] = 9;
        EXPECT_EQ(pg_trim_at_first(make_chain(chain).get(), point), 0);
        EXPECT_EQ(point[2], 0); // also where nothing is found
    }
}

TEST(Trim, LeavesAloneWhatDoesNotHoldThePoint)
{
    for (const trimming trim : BOTH) {
        EXPECT_TRUE(trimmed(trim, {{0, 0}, {0, 4}, {5, 4}}, 2, 2).empty());
        EXPECT_TRUE(trimmed(trim, {{2, 0, 1}, {0, 0}}, 1, 1.11).empty());
        EXPECT_FALSE(trimmed(trim, {{2, 0, 1}, {0, 0}}, 1, 1.09).empty());
        EXPECT_TRUE(trimmed(trim, {}, 0, 0).empty());
        EXPECT_TRUE(trimmed(trim, {{0, 0}}, 0, 0).empty());
        EXPECT_TRUE(trimmed(trim, {{0, 0}, {0, 4}}, NAN, 1).empty());
    }
}

// At the head the point has direction 0 from the first node, as such points have always had.
TEST(Trim, FindsTheHeadOnlyWhereTheFirstSegmentRunsEast)
{
    for (const trimming trim : BOTH) {
        EXPECT_EQ(trimmed(trim, {{0, 0}, {4, 0}, {4, 4}}, 0, 0), (std::vector<spot>{{0, 0}, {0, 0}}));
        EXPECT_TRUE(trimmed(trim, {{0, 0}, {0, 4}, {4, 4}}, 0, 0).empty());
        EXPECT_TRUE(trimmed(trim, {{0, 0, 0.5}, {4, 0}, {4, 4}}, 0, 0).empty());
    }
}

TEST(Trim, WithoutMemoryLeavesTheChainWhole)
{
    for (const trimming trim : BOTH) {
        const chain_ptr chain = make_chain({{0, 0}, {4, 0, 0.5}, {4, 4}});
        const auto before = spots_of(chain.get());
        double point[3] = {2, 0, 0};
        test_heap::fail_at(1);
        EXPECT_EQ(trim(chain.get(), point), 0);
        test_heap::fail_at(0);
        EXPECT_EQ(spots_of(chain.get()), before);
    }
}

// What lies before the point stays, and the chain ends at it.
TEST(Trim, KeepsWhatLiesBefore)
{
    for (const place& at : PLACES)
        for (unsigned seed = 1; seed <= 3000; ++seed) {
            SCOPED_TRACE(seed);
            std::mt19937 random(seed);
            std::uniform_real_distribution<double> place(-6, 6), bulge(-3, 3), share(0.01, 0.99);
            std::vector<spot> spots;
            for (int i = 0; i < 6; ++i)
                spots.push_back({place(random), place(random), random() % 2 ? bulge(random) : 0.0});
            const std::size_t on = random() % 5;
            const chain_ptr segment = make_chain({spots[on], spots[on + 1]}, at.x, at.y);
            double point[3] = {0, 0, 0}, direction;
            const double length = pg_length(segment.get());
            ASSERT_EQ(pg_point_at(segment.get(), length * share(random), point, &direction), 1);
            for (const trimming trim : BOTH) {
                const chain_ptr chain = make_chain(spots, at.x, at.y);
                const auto whole = spots_of(chain.get());
                ASSERT_EQ(trim(chain.get(), point), 1);
                const auto left = spots_of(chain.get());
                // A place on an earlier or later segment within a tenth of an arc may be taken instead.
                ASSERT_TRUE(trim == pg_trim_at_first ? left.size() <= on + 2 : left.size() >= on + 2);
                for (std::size_t i = 0; i + 1 < left.size(); ++i) {
                    ASSERT_EQ(left[i].x, whole[i].x);
                    if (i + 2 < left.size()) {
                        ASSERT_EQ(left[i], whole[i]);
                    }
                }
                ASSERT_EQ(left.back().x, point[0]);
                ASSERT_EQ(left.back().y, point[1]);
                if (left.size() != on + 2)
                    continue;
                const chain_ptr cut = make_chain({left[on], left[on + 1]});
                const double done = pg_distance_along(segment.get(), point);
                const double expected = spots[on].bulge < 0.0 ? length - done : done;
                ASSERT_NEAR(pg_length(cut.get()), expected, 1e-6 * (1 + length));
            }
        }
}

} // namespace
