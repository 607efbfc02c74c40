// Following the chains of a list from a point.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "polygon/rounding.h"
#include "tests/growth.h"
#include "tests/polygon/chains.h"
#include "tests/polygon/heap.h"

namespace
{

using spots = std::vector<spot>;

pg_ring* rings_of(const std::vector<spots>& chains)
{
    pg_ring* head = nullptr;
    pg_ring** end = &head;
    for (const spots& s : chains) {
        *end = pg_ring_new();
        (*end)->nodes = make_chain(s).release();
        end = &(*end)->next;
    }
    return head;
}

// What is followed from a point; the heap must be as before but for the answer.
spots followed(const std::vector<spots>& chains, double x, double y)
{
    const int before = test_heap::live_blocks();
    pg_ring* rings = rings_of(chains);
    const double point[3] = {x, y, 7};
    const chain_ptr path(pg_follow_chains(&rings, point));
    EXPECT_EQ(rings, nullptr);
    EXPECT_EQ(test_heap::live_blocks(), before + pg_count(path.get()));
    return spots_of(path.get());
}

TEST(FollowChains, GoesFromChainToChain)
{
    EXPECT_EQ(followed({{{5, 5}, {9, 9}}, {{2, 1}, {5, 5}}, {{0, 0}, {2, 1}}}, 0, 0),
              (spots{{0, 0}, {2, 1}, {5, 5}, {9, 9}}));
}

TEST(FollowChains, BeginsAndGoesOnInTheMiddleOfAChain)
{
    EXPECT_EQ(followed({{{-9, 0}, {0, 0}, {2, 1}}, {{7, 0}, {2, 1}, {3, 3}}}, 0, 0),
              (spots{{0, 0}, {2, 1}, {3, 3}}));
}

TEST(FollowChains, TheFirstOfTheListGoesBeforeOthers)
{
    EXPECT_EQ(followed({{{0, 0}, {1, 0}}, {{0, 0}, {2, 0}}}, 0, 0), (spots{{0, 0}, {1, 0}}));
    EXPECT_EQ(followed({{{0, 0}, {2, 0}}, {{0, 0}, {1, 0}}}, 0, 0), (spots{{0, 0}, {2, 0}}));
}

TEST(FollowChains, EachChainIsUsedOnce)
{
    // Round and round would have no end.
    EXPECT_EQ(followed({{{0, 0}, {4, 0}, {4, 4}}, {{4, 4}, {0, 4}, {0, 0}}}, 0, 0),
              (spots{{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}}));
    EXPECT_EQ(followed({{{0, 0}, {4, 0}, {4, 4}, {0, 0}}}, 0, 0), (spots{{0, 0}, {4, 0}, {4, 4}, {0, 0}}));
}

TEST(FollowChains, AChainThatEndsAtThePointIsTakenBackwards)
{
    EXPECT_EQ(followed({{{8, 8}, {9, 9}}, {{8, 8}, {3, 1, 0.5}, {0, 0}}}, 0, 0),
              (spots{{0, 0, -0.5}, {3, 1, 0}, {8, 8, 0}, {9, 9}}));
}

TEST(FollowChains, NoChainIsTakenBackwardsWhenOneBeginsThere)
{
    EXPECT_EQ(followed({{{8, 8}, {0, 0}}, {{0, 0}, {1, 1}}}, 0, 0), (spots{{0, 0}, {1, 1}}));
}

TEST(FollowChains, NoChainIsTakenBackwardsFartherOn)
{
    EXPECT_EQ(followed({{{0, 0}, {1, 1}}, {{8, 8}, {1, 1}}}, 0, 0), (spots{{0, 0}, {1, 1}}));
}

TEST(FollowChains, APlaceCountsWithinTheLengthTolerance)
{
    EXPECT_EQ(followed({{{0.9e-6, -0.9e-6}, {1, 0}}, {{1, 0.9e-6}, {2, 0}}}, 0, 0).size(), 3u);
    EXPECT_EQ(followed({{{1.1e-6, 0}, {1, 0}}}, 0, 0), spots{});
    EXPECT_EQ(followed({{{0, 1.1e-6}, {1, 0}}}, 0, 0), spots{});
}

TEST(FollowChains, WhatIsFollowedIsCleaned)
{
    // Out along the first and back along the second is a spike.
    EXPECT_EQ(followed({{{0, 0}, {1, 0}, {5, 5}}, {{5, 5}, {1, 0}, {1, 9}}}, 0, 0),
              (spots{{0, 0}, {1, 0}, {1, 9}}));
}

TEST(FollowChains, NothingToFollowGivesNull)
{
    EXPECT_EQ(followed({}, 0, 0), spots{});
    EXPECT_EQ(followed({{}}, 0, 0), spots{});
    EXPECT_EQ(followed({{{0, 0}}}, 0, 0), spots{});
    EXPECT_EQ(followed({{{3, 3}, {4, 4}}}, 0, 0), spots{});
}

TEST(FollowChains, NumbersThatAreNoneAreNowhere)
{
    const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(followed({{{0, 0}, {1, 1}}}, nan, 0), spots{});
    EXPECT_EQ(followed({{{nan, 0}, {inf, 1}, {0, 0}, {1, 1}}}, 0, 0), (spots{{0, 0}, {1, 1}}));
    EXPECT_EQ(followed({{{0, 0}, {inf, nan}}}, 0, 0).size(), 2u);
}

TEST(FollowChains, CopiesCountAsVerticesOfAnInput)
{
    pg_ring* rings = rings_of({{{0, 0}, {1, 0}, {2, 0}}});
    rings->nodes->next->keep = 0;
    const double point[3] = {};
    const chain_ptr path(pg_follow_chains(&rings, point));
    EXPECT_EQ(path->next->keep, 1);
}

TEST(FollowChains, IsWholeOrNullWhenTheHeapIsExhausted)
{
    const std::vector<spots> chains{{{1, 1}, {2, 3}, {4, 4}}, {{0, 0}, {1, 1}}};
    const int before = test_heap::live_blocks();
    for (int n = 1; n <= 5; ++n) {
        pg_ring* rings = rings_of(chains);
        const double point[3] = {};
        test_heap::fail_at(n);
        EXPECT_EQ(pg_follow_chains(&rings, point), nullptr) << n;
        test_heap::fail_at(0);
        EXPECT_EQ(rings, nullptr);
        EXPECT_EQ(test_heap::live_blocks(), before);
    }
    EXPECT_EQ(followed(chains, 0, 0).size(), 4u);
}

TEST(FollowChains, TimeGrowsWithTheChains)
{
    // A staircase whose steps stand in the list from its end to its start.
    const auto staircase = [](int steps) {
        pg_ring* rings = nullptr;
        for (int i = 0; i < steps; ++i) {
            pg_ring* ring = pg_ring_new();
            ring->nodes =
                make_chain({{double(i), double(i)}, {i + 1.0, double(i)}, {i + 1.0, i + 1.0}}).release();
            ring->next = rings;
            rings = ring;
        }
        const double point[3] = {};
        const chain_ptr path(pg_follow_chains(&rings, point));
        EXPECT_EQ(pg_count(path.get()), 2 * steps + 1);
    };
    EXPECT_TRUE(grows_in_proportion(staircase, 64'000));
}

} // namespace
