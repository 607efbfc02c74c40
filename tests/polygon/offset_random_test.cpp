// The parallel and the removal of loops on many random chains: against the plain walk, and against what a
// parallel must be whatever made it.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <iomanip>
#include <random>

#include "polygon/offset.h"
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
