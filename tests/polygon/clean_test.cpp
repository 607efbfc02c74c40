// Double nodes and spikes.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "polygon/node.h"
#include "tests/growth.h"
#include "tests/polygon/chains.h"
#include "tests/polygon/heap.h"

namespace
{

using spots = std::vector<spot>;

double dist_sq(const spot& a, const spot& b)
{
    return (b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y);
}

// The rule as it is told: full passes until nothing changes.
spots cleaned_by_full_passes(spots chain)
{
    for (bool changed = true; changed;) {
        changed = false;
        for (std::size_t i = 0; i + 1 < chain.size();) {
            if (dist_sq(chain[i], chain[i + 1]) < 1e-12) {
                chain.erase(chain.begin() + static_cast<long>(i) + 1);
                changed = true;
            } else {
                ++i;
            }
        }
        for (std::size_t i = 0; i + 2 < chain.size(); ++i) {
            if (dist_sq(chain[i], chain[i + 2]) < 1e-12) {
                chain.erase(chain.begin() + static_cast<long>(i) + 1, chain.begin() + static_cast<long>(i) + 3);
                changed = true;
            }
        }
    }
    return chain;
}

void expect_prev(const pg_node* chain)
{
    const pg_node* before = nullptr;
    for (; chain; chain = chain->next) {
        ASSERT_EQ(chain->prev, before);
        before = chain;
    }
}

// Spots by letters: a letter is a place, its position in the text is the bulge, which tells twins apart.
spots spots_of_letters(const std::string& letters)
{
    spots made;
    for (std::size_t i = 0; i < letters.size(); ++i)
        made.push_back({double(letters[i] % 16), double(letters[i] / 16), double(i)});
    return made;
}

std::string letters_of(const pg_node* chain)
{
    std::string letters;
    for (; chain; chain = chain->next)
        letters += static_cast<char>(int(chain->y) * 16 + int(chain->x));
    return letters;
}

struct clean_case {
    const char* letters;
    const char* expected;
};

TEST(Clean, TakesOutDoublesAndSpikes)
{
    const clean_case cases[] = {
        {"abc", "abc"},     {"aabbcc", "abc"}, {"aaaa", "a"},          {"aba", "a"}, {"abcba", "a"},
        {"xabcbay", "xay"}, {"abacad", "ad"},  {"abab", "ab"},         {"a", "a"},   {"abca", "abca"},
        {"xabbbax", "x"},   {"abccba", "a"},   {"abcdcbxbcdcba", "a"}, {"pqp", "p"}, {"pqprq", "prq"},
    };
    for (const clean_case& c : cases) {
        const int before = test_heap::live_blocks();
        const auto chain = make_chain(spots_of_letters(c.letters));
        pg_clean(chain.get());
        EXPECT_EQ(letters_of(chain.get()), c.expected) << c.letters;
        expect_prev(chain.get());
        EXPECT_EQ(test_heap::live_blocks(), before + pg_count(chain.get())) << c.letters;
    }
    pg_clean(nullptr);
}

TEST(Clean, HeadStaysItself)
{
    const auto chain = make_chain({{0, 0, 7}, {0, 0, 8}, {1, 0, 9}, {0, 0, 10}});
    const pg_node* head = chain.get();
    pg_clean(chain.get());
    EXPECT_EQ(chain.get(), head);
    EXPECT_EQ(spots_of(head), (spots{{0, 0, 7}}));
}

TEST(Clean, ToleranceIsAMillionthOfPlanarDistance)
{
    const auto count = [](double gap) {
        const auto chain = make_chain({{0, 0}, {gap, 0, 0, 100}});
        pg_clean(chain.get());
        return pg_count(chain.get());
    };
    EXPECT_EQ(count(0.9e-6), 1);
    EXPECT_EQ(count(1e-6), 2); // its square is the limit itself
    EXPECT_EQ(count(1.1e-6), 2);
    const auto spike = [](double gap) {
        const auto chain = make_chain({{0, 0}, {5, 5}, {gap, 0}, {9, 0}});
        pg_clean(chain.get());
        return pg_count(chain.get());
    };
    EXPECT_EQ(spike(0.9e-6), 2);
    EXPECT_EQ(spike(1e-6), 4);
    EXPECT_EQ(spike(1.1e-6), 4);
}

TEST(Clean, GivesNodeForNodeWhatFullPassesGive)
{
    std::mt19937 random(53);
    for (int round = 0; round < 20000; ++round) {
        // Few places and many steps back, so that removals run into one another.
        const int length = 1 + round % 40, places = 2 + round % 4;
        std::string letters;
        for (int i = 0; i < length; ++i) {
            const bool back = i >= 2 && random() % 2 == 0;
            letters += back ? letters[letters.size() - 2 - (random() % 3 == 0 && i >= 4 ? 2 : 0)]
                            : static_cast<char>('a' + random() % static_cast<unsigned>(places));
        }
        const spots made = spots_of_letters(letters);
        const auto chain = make_chain(made);
        pg_clean(chain.get());
        ASSERT_EQ(spots_of(chain.get()), cleaned_by_full_passes(made)) << letters;
        expect_prev(chain.get());
    }
}

TEST(Clean, GivesWhatFullPassesGiveOnTheEdgeOfTheTolerance)
{
    std::mt19937 random(59);
    std::uniform_real_distribution<double> step(-0.8e-6, 0.8e-6);
    for (int round = 0; round < 5000; ++round) {
        spots made;
        for (int i = 0; i < 30; ++i)
            made.push_back({double(random() % 2) + step(random), step(random), double(i)});
        const auto chain = make_chain(made);
        pg_clean(chain.get());
        ASSERT_EQ(spots_of(chain.get()), cleaned_by_full_passes(made)) << round;
    }
}

TEST(Clean, LongSpikeGoesInTimeInProportionToItsLength)
{
    // Out and straight back: each pass takes out one pair, so full passes would be half a million of them.
    const auto work = [](int out) {
        spots made;
        for (int i = 0; i <= 2 * out; ++i)
            made.push_back({double(i <= out ? i : 2 * out - i), 0});
        const auto chain = make_chain(made);
        pg_clean(chain.get());
        EXPECT_EQ(pg_count(chain.get()), 1);
    };
    EXPECT_TRUE(grows_in_proportion(work, 500000));
}

} // namespace
