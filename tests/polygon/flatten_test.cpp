#include "polygon/flatten.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "polygon/arcs.h"
#include "polygon/measures.h"
#include "tests/polygon/heap.h"
#include "tests/polygon/measures_plain.h"
#include "tests/polygon/random_segments.h"

namespace
{

constexpr double PI = std::numbers::pi;

TEST(Flatten, LeavesAChainOfLinesAlone)
{
    const chain_ptr chain = make_chain({{0, 0}, {5, 0}, {10, 0}});
    chain->next->keep = 0; // would be thinned
    EXPECT_EQ(pg_flatten(chain.get(), 0.1), 0);
    EXPECT_EQ(pg_count(chain.get()), 3);
    EXPECT_EQ(pg_flatten(nullptr, 0.1), 0);
}

TEST(Flatten, MakesEveryArc291ChordsWhateverItsSize)
{
    for (const double size : {1e-3, 1.0, 1e6})
        for (const double bulge : {0.01, -1.0, 5.0}) {
            const chain_ptr chain = make_chain({{0, 0, bulge, 1}, {size, 0, 0, 3}, {size, size}});
            EXPECT_EQ(pg_flatten(chain.get(), 0.0), 1);
            EXPECT_EQ(pg_count(chain.get()), 3 + 290);
            int k = 0;
            for (const pg_node* n = chain.get(); n->next; n = n->next, ++k) {
                EXPECT_EQ(n->bulge, 0.0);
                if (k <= 291) {
                    EXPECT_NEAR(n->z, 1 + 2.0 * k / 291, 1e-12);
                    EXPECT_EQ(n->keep, k == 0 || k == 291 ? 1 : 0);
                }
            }
        }
}

TEST(Flatten, DropsArcsWithoutChordAndTheirEndNodes)
{
    const int live = test_heap::live_blocks();
    {
        const chain_ptr chain = make_chain({{0, 0, 2}, {9e-7, 0, 0.5}, {5, 0}, {5, 5, -1}, {5, 5}});
        EXPECT_EQ(pg_flatten(chain.get(), 0.1), 1);
        EXPECT_EQ(spots_of(chain.get()), (std::vector<spot>{{0, 0}, {5, 0}, {5, 5}}));
    }
    EXPECT_EQ(test_heap::live_blocks(), live);
}

// The bulge of a chain's last node has no meaning, but it counts as an arc.
TEST(Flatten, BulgeOfTheLastNodeCountsAndStays)
{
    const chain_ptr chain = make_chain({{0, 0}, {5, 0}, {10, 0, 0.5}});
    chain->next->keep = 0;
    EXPECT_EQ(pg_flatten(chain.get(), 0.1), 1);
    EXPECT_EQ(spots_of(chain.get()), (std::vector<spot>{{0, 0}, {10, 0, 0.5}}));
}

TEST(Flatten, BulgesThatAreNoNumbersGiveNoChords)
{
    for (const double bulge :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        const chain_ptr chain = make_chain({{0, 0, bulge}, {5, 0}});
        EXPECT_EQ(pg_flatten(chain.get(), 0.1), 1);
        EXPECT_EQ(spots_of(chain.get()), (std::vector<spot>{{0, 0}, {5, 0}}));
    }
}

TEST(Flatten, WithoutMemoryArcsAreCoarser)
{
    for (int n = 1; n <= 294; ++n) {
        const int live = test_heap::live_blocks();
        {
            const chain_ptr chain = make_chain({{0, 0, 1}, {5, 0}});
            test_heap::fail_at(n);
            EXPECT_EQ(pg_flatten(chain.get(), 0.0), 1);
            test_heap::fail_at(0);
            EXPECT_EQ(pg_count(chain.get()), 292 - (n <= 290 ? 1 : 0));
        }
        EXPECT_EQ(test_heap::live_blocks(), live);
    }
}

// Chord points lie on the arc in order, and no chord is farther from it than the sagitta of a 291st of it.
TEST(Flatten, StaysWithinTheChordBound)
{
    for (const place& at : PLACES)
        for (unsigned seed = 1; seed <= 1000; ++seed) {
            SCOPED_TRACE(seed);
            std::mt19937 random(seed);
            std::uniform_real_distribution<double> place(-6, 6), exponent(-6, 3);
            const double bulge = (seed % 2 ? 1 : -1) * std::pow(10.0, exponent(random));
            const spot from{place(random), place(random), bulge}, to{place(random), place(random)};
            const chain_ptr chain = make_chain({from, to}, at.x, at.y);
            const double p[3] = {chain->x, chain->y, 0}, q[3] = {chain->next->x, chain->next->y, 0};
            double centre[3], start, end, radius;
            int dir;
            pg_arc_from_bulge(p, q, bulge, centre, &start, &end, &radius, &dir);
            const double length = pg_length(chain.get()), sweep = 4 * std::atan(std::fabs(bulge));
            ASSERT_EQ(pg_flatten(chain.get(), 0.0), 1);
            double before = 0;
            for (const pg_node* n = chain->next; n->next; n = n->next) {
                const double x[3] = {n->x, n->y, 0};
                ASSERT_NEAR(pg_dist(centre, x), radius, 1e-8 + 1e-14 * radius);
                if (radius > 1e6)
                    continue; // directions have too few digits
                double turned = (dir == -1 ? 1 : -1) * (pg_angle(centre, x) - pg_angle(centre, p));
                if (turned < 0)
                    turned += 2 * PI;
                ASSERT_GT(turned, before);
                ASSERT_LE(turned, sweep + 1e-9);
                before = turned;
            }
            const double chords = pg_length(chain.get()), chord_turn = sweep / 291;
            ASSERT_NEAR(chords, length * std::sin(chord_turn / 2) / (chord_turn / 2), 1e-7 * (1 + length));
        }
}

// Arcs whose centre has no digits left are flattened all the same.
TEST(Flatten, OfAllButStraightArcsStaysOnTheChord)
{
    for (const place& at : PLACES)
        for (const double bulge : {1e-7, -1e-9, 1e-12, -1e-15, 1e-100}) {
            const chain_ptr chain = make_chain({{0, 0, bulge}, {1e5, 3e4}}, at.x, at.y);
            ASSERT_EQ(pg_flatten(chain.get(), 0.0), 1);
            ASSERT_EQ(pg_count(chain.get()), 292);
            int i = 0;
            for (const pg_node* n = chain.get(); n; n = n->next, ++i) {
                ASSERT_NEAR(n->x - at.x, 1e5 * i / 291, 0.01) << bulge << ' ' << i;
                ASSERT_NEAR(n->y - at.y, 3e4 * i / 291, 0.01) << bulge << ' ' << i;
            }
        }
}

TEST(Flatten, OfAllButFullCirclesGoesRoundThem)
{
    for (const double bulge : {1e7, 1e9, -1e11, 1e13, -1e17}) {
        const double chord = 1e-5, radius = chord * std::fabs(bulge) / 4;
        const chain_ptr chain = make_chain({{0, 0, bulge}, {chord, 0}});
        ASSERT_EQ(pg_flatten(chain.get(), 0.0), 1);
        ASSERT_EQ(pg_count(chain.get()), 292);
        int i = 0;
        for (const pg_node* n = chain.get(); n; n = n->next, ++i) {
            const double turned = 2 * PI * i / 291;
            ASSERT_NEAR(std::hypot(n->x, n->y), 2 * radius * std::fabs(std::sin(turned / 2)),
                        1e-5 + 1e-6 * radius);
        }
    }
}

TEST(Weed, LeavesNothingAndLoneNodesAlone)
{
    EXPECT_EQ(pg_weed(nullptr, 0.1), nullptr);
    const chain_ptr one = make_chain({{1, 2}});
    EXPECT_EQ(pg_weed(one.get(), 0.1), one.get());
}

chain_ptr chain_of(const std::vector<spot>& spots, const std::vector<int>& keep)
{
    chain_ptr chain = make_chain(spots);
    std::size_t i = 0;
    for (pg_node* n = chain.get(); n; n = n->next)
        n->keep = keep[i++];
    return chain;
}

TEST(Weed, ComparesTheSquaredDistanceInSpace)
{
    const auto left = [](const std::vector<spot>& spots, int keep, double tolerance) {
        const chain_ptr chain = chain_of(spots, {1, keep, 1});
        return pg_count(pg_weed(chain.get(), tolerance));
    };
    EXPECT_EQ(left({{0, 0}, {1, 0.31}, {2, 0}}, 0, 0.1), 2);
    EXPECT_EQ(left({{0, 0}, {1, 0.32}, {2, 0}}, 0, 0.1), 3);
    EXPECT_EQ(left({{0, 0}, {1, 0.5}, {2, 0}}, 0, 0.25), 3); // below, not at
    EXPECT_EQ(left({{0, 0}, {1, 0, 0, 0.5}, {2, 0}}, 0, 0.1), 3);
    EXPECT_EQ(left({{0, 0}, {1, 0, 0, 0.5}, {2, 0, 0, 1}}, 0, 0.1), 2);
    EXPECT_EQ(left({{0, 0}, {1, 0.1}, {2, 0}}, 1, 0.1), 3);
    EXPECT_EQ(left({{0, 0, 0.1}, {1, 0.1}, {2, 0}}, 0, 0.1), 3);
    EXPECT_EQ(left({{0, 0}, {1, 0.1, 0.1}, {2, 0}}, 0, 0.1), 3);
    EXPECT_EQ(left({{0, 0}, {1, 0.1}, {0, 0}}, 0, 0.1), 3); // no line to lie on
    EXPECT_EQ(left({{0, 0}, {1, NAN}, {2, 0}}, 0, 0.1), 3);
}

// The node behind a removal is passed over until the next pass.
TEST(Weed, PassesOverTheNodeBehindARemoval)
{
    // Seen from its neighbours each of the three is spare. The first goes, the second is passed over, the third
    // goes; then the second has neighbours that it is too far from.
    const chain_ptr chain = chain_of({{0, 0}, {1, 0.5}, {2, 0.8}, {3, 0.5}, {4, 0}}, {1, 0, 0, 0, 1});
    pg_weed(chain.get(), 0.1);
    EXPECT_EQ(spots_of(chain.get()), (std::vector<spot>{{0, 0}, {2, 0.8}, {4, 0}}));
}

TEST(Weed, IsThatOfRepeatedPassesWithAndWithoutMemory)
{
    int removed = 0;
    for (unsigned seed = 1; seed <= 4000; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> step(-0.5, 0.5), size(0.001, 0.3);
        std::vector<spot> spots;
        std::vector<int> keep;
        const int count = 2 + static_cast<int>(random() % 60);
        for (int i = 0; i < count; ++i) {
            spots.push_back({i * 0.4 + step(random), step(random), random() % 9 ? 0.0 : 0.5, step(random) / 4});
            keep.push_back(random() % 6 ? 0 : 1);
        }
        const double tolerance = size(random);
        const auto told = plain::weeded(chain_of(spots, keep).get(), tolerance);
        removed += count - static_cast<int>(told.size());
        for (int n = 0; n <= 2; ++n) {
            const int live = test_heap::live_blocks();
            {
                const chain_ptr chain = chain_of(spots, keep);
                test_heap::fail_at(n);
                ASSERT_EQ(pg_weed(chain.get(), tolerance), chain.get());
                test_heap::fail_at(0);
                ASSERT_EQ(spots_of(chain.get()), told);
            }
            ASSERT_EQ(test_heap::live_blocks(), live);
        }
    }
    EXPECT_GT(removed, 10000);
}

} // namespace
