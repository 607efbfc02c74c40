// The parallel and the removal of loops on many random chains: against the plain walk, and against what a
// parallel must be whatever made it.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <iomanip>
#include <random>

#include "polygon/arcs.h"
#include "polygon/offset.h"
#include "polygon/points.h"
#include "polygon/segment_pairs.h"
#include "tests/polygon/heap.h"
#include "tests/polygon/offset_plain.h"
#include "tests/polygon/random_segments.h"

namespace
{

bool same_bits(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
           (std::isnan(a) && std::isnan(b)); // the sign of no number depends on the compiler
}

bool same_bits(const std::vector<spot>& a, const std::vector<spot>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const spot& p, const spot& q) {
        return same_bits(p.x, q.x) && same_bits(p.y, q.y) && same_bits(p.z, q.z) && same_bits(p.bulge, q.bulge);
    });
}

void move(std::vector<spot>& chain, const place& by)
{
    for (spot& s : chain) {
        s.x += by.x;
        s.y += by.y;
    }
}

// Some are closed, and some of these with the closing node a little beside the first.
void close_some(std::mt19937& random, std::vector<spot>& chain)
{
    if (chain.empty() || random() % 2 != 0)
        return;
    spot last = chain.front();
    last.bulge = random() % 4 == 0 ? chain.front().bulge : 0.0;
    last.x += random() % 4 == 0 ? 9e-7 : 0.0;
    chain.push_back(last);
}

int messages_in(const std::string& text)
{
    const std::string message = "Did not intersect\n";
    int count = 0;
    for (std::size_t i = 0; i < text.size(); i += message.size(), ++count)
        EXPECT_EQ(text.substr(i, message.size()), message);
    return count;
}

struct options {
    double distance;
    int side, corner_mode, remove_loops;
};

options random_options(std::mt19937& random)
{
    std::uniform_real_distribution<double> size(-2.0, 2.0);
    double distance = std::pow(10.0, size(random));
    if (random() % 4 == 0)
        distance = static_cast<double>(random() % 5); // as long as legs and radii, and 0
    if (random() % 16 == 0)
        distance = -distance;
    return {distance, random() % 2 != 0 ? 1 : static_cast<int>(random() % 3) - 1,
            static_cast<int>(random() % 3), random() % 2 != 0};
}

// Counts the nodes and messages that were compared.
struct tally {
    int nodes = 0, messages = 0;
};

void compare(std::vector<spot> spots, const options& o, tally* seen)
{
    const chain_ptr chain = make_chain(spots);
    pg_clean(chain.get());
    spots = spots_of(chain.get());
    const plain::parallel expected = plain::offset(spots, o.distance, o.side, o.corner_mode, o.remove_loops);
    const chain_ptr result(pg_offset(chain.get(), o.distance, o.side, o.corner_mode, o.remove_loops));
    EXPECT_EQ(messages_in(printed_text()), expected.messages);
    EXPECT_TRUE(same_bits(spots_of(chain.get()), spots)); // left alone
    EXPECT_TRUE(same_bits(spots_of(result.get()), expected.spots))
        << "distance " << o.distance << " side " << o.side << " corners " << o.corner_mode << " loops "
        << o.remove_loops;
    seen->nodes += pg_count(result.get());
    seen->messages += expected.messages;
}

TEST(OffsetRandom, OrdinaryChainsComeOutAsThePlainWalkTells)
{
    tally seen;
    for (unsigned seed = 1; seed <= 10000 && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::vector<spot> chain = ordinary_chain(random, static_cast<int>(random() % 24));
        close_some(random, chain);
        move(chain, PLACES[random() % 2]);
        compare(chain, random_options(random), &seen);
    }
    EXPECT_GT(seen.nodes, 50000);
    EXPECT_GT(seen.messages, 1000);
}

TEST(OffsetRandom, NastyChainsComeOutAsThePlainWalkTells)
{
    tally seen;
    const int live_before = test_heap::live_blocks();
    for (unsigned seed = 1; seed <= 10000 && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::vector<spot> chain = nasty_chain(random, static_cast<int>(random() % 24));
        close_some(random, chain);
        compare(chain, random_options(random), &seen);
    }
    EXPECT_EQ(test_heap::live_blocks(), live_before);
    EXPECT_GT(seen.nodes, 50000);
}

// ---- what a parallel must be

double dist_to_segment(const pg_segment& s, double x, double y)
{
    const double at[3] = {x, y, 0};
    if (pg_is_arc(s)) {
        const double ends = std::min(pg_dist(s.p, at), pg_dist(s.q, at));
        const bool beside = pg_arc_contains(s.centre, at, s.start, s.end, s.radius);
        return beside ? std::min(ends, std::fabs(pg_dist(s.centre, at) - s.radius)) : ends;
    }
    const double dx = s.q[0] - s.p[0], dy = s.q[1] - s.p[1];
    const double along = ((x - s.p[0]) * dx + (y - s.p[1]) * dy) / (dx * dx + dy * dy);
    const double t = std::clamp(along, 0.0, 1.0);
    return std::hypot(x - s.p[0] - t * dx, y - s.p[1] - t * dy);
}

double dist_to_chain(const pg_node* chain, double x, double y)
{
    double least = 1e300;
    for (; chain->next; chain = chain->next)
        least = std::min(least, dist_to_segment(pg_segment_at(*chain), x, y));
    return least;
}

// Places on a segment, by shares of its length.
std::array<double, 2> place_on(const pg_segment& s, double share)
{
    if (!pg_is_arc(s))
        return {s.p[0] + share * (s.q[0] - s.p[0]), s.p[1] + share * (s.q[1] - s.p[1])};
    const double sweep = 4 * std::atan(s.bulge);
    const double angle = (s.dir == -1 ? s.start : s.end) + share * sweep;
    return {s.centre[0] + s.radius * std::cos(angle), s.centre[1] + s.radius * std::sin(angle)};
}

// A road whose lines and arcs touch one another, with radii of 20 to 60.
std::vector<spot> smooth_road(std::mt19937& random, int segments)
{
    std::uniform_real_distribution<double> unit(0, 1);
    std::vector<spot> road{{0, 0}};
    double heading = 0;
    for (int i = 0; i < segments; ++i) {
        const double turn = (heading > 0 ? -1 : 1) * (0.2 + unit(random));
        const double sweep = random() % 3 == 0 ? 0 : turn;
        const double length =
            sweep == 0 ? 5 + 40 * unit(random) : 2 * (20 + 40 * unit(random)) * std::sin(std::fabs(sweep) / 2);
        spot& at = road.back();
        at.bulge = std::tan(sweep / 4);
        road.push_back(
            {at.x + length * std::cos(heading + sweep / 2), at.y + length * std::sin(heading + sweep / 2)});
        heading += sweep;
    }
    return road;
}

TEST(OffsetRandom, SmoothRoadsHaveTheirParallelAtTheDistance)
{
    for (unsigned seed = 1; seed <= 500; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::vector<spot> spots = smooth_road(random, 12);
        const place& at = PLACES[seed % 2];
        move(spots, at);
        const chain_ptr road = make_chain(spots);
        const double distance = 1 + seed % 15;
        const int side = static_cast<int>(random() % 2);
        const chain_ptr result(pg_offset(road.get(), distance, side, static_cast<int>(random() % 2), 0));
        EXPECT_EQ(printed_text(), "");
        // Its arcs are those of the road in their order, about the same centres.
        const pg_node* source = road.get();
        for (const pg_node* n = result.get(); n->next; n = n->next) {
            const pg_segment s = pg_segment_at(*n);
            for (const double share : {0.0, 0.3, 0.7, 1.0}) {
                const auto [x, y] = place_on(s, share);
                ASSERT_NEAR(dist_to_chain(road.get(), x, y), distance, 2e-5);
            }
            if (!pg_is_arc(s) || std::fabs(s.bulge) < 1e-4)
                continue;
            while (source->bulge == 0)
                source = source->next;
            const pg_segment arc = pg_segment_at(*source);
            EXPECT_NEAR(s.centre[0], arc.centre[0], 1e-4);
            EXPECT_NEAR(s.centre[1], arc.centre[1], 1e-4);
            EXPECT_EQ(s.dir, arc.dir);
            source = source->next;
        }
    }
}

TEST(OffsetRandom, RoundedParallelsOfLinesKeepTheirDistanceAndSense)
{
    int arcs = 0;
    for (unsigned seed = 1; seed <= 500; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> length(20, 40), turn(-1.2, 1.2);
        std::vector<spot> spots{{0, 0}};
        double heading = 0;
        for (int i = 0; i < 15; ++i) {
            heading = turn(random);
            const double l = length(random);
            spots.push_back({spots.back().x + l * std::cos(heading), spots.back().y + l * std::sin(heading)});
        }
        const chain_ptr chain = make_chain(spots);
        for (const int side : {0, 1}) {
            // Legs are longer than the inner corners take, so that there is no loop.
            const chain_ptr result(pg_offset(chain.get(), 3, side, 0, 0));
            for (const pg_node* n = result.get(); n->next; n = n->next) {
                for (const double share : {0.0, 0.5, 1.0}) {
                    const auto [x, y] = place_on(pg_segment_at(*n), share);
                    ASSERT_NEAR(dist_to_chain(chain.get(), x, y), 3, 1e-6);
                }
                arcs += n->bulge != 0;
                EXPECT_TRUE(n->bulge == 0 || (n->bulge > 0) == (side == 1));
            }
        }
    }
    EXPECT_GT(arcs, 1000);
}

TEST(LoopsRandom, ChainsComeOutAsThePlainScanTells)
{
    int cut = 0;
    for (unsigned seed = 1; seed <= 6000 && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const int nodes = static_cast<int>(random() % 60);
        std::vector<spot> chain = seed % 2 != 0 ? ordinary_chain(random, nodes) : nasty_chain(random, nodes);
        move(chain, PLACES[random() % 2]);
        const chain_ptr result(pg_remove_loops(make_chain(chain).release()));
        const std::vector<spot> expected = plain::without_loops(chain);
        EXPECT_TRUE(same_bits(spots_of(result.get()), expected));
        cut += expected.size() < chain.size();
    }
    EXPECT_GT(cut, 1000);
}

} // namespace
