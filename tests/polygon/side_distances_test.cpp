// Distances from a chain, against those of the whole chain at once.
#include "polygon/side_distances.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "polygon/measures.h"
#include "tests/growth.h"
#include "tests/polygon/heap.h"
#include "tests/polygon/random_segments.h"

namespace
{

TEST(SideDistances, AreThoseOfTheWholeChain)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> place(-8, 8);
    const int before = test_heap::live_blocks();
    for (int i = 0; i < 600; ++i) {
        SCOPED_TRACE(i);
        const auto chain =
            make_chain(i % 3 == 0 ? nasty_chain(random, 12) : ordinary_chain(random, 2 + i % 40));
        side_distances distances(chain.get());
        for (int k = 0; k < 20; ++k) {
            const double far = k % 7 == 0 ? 1e6 : 1.0;
            const double point[3] = {far * place(random), place(random), 0};
            double nearest[3] = {};
            const double whole = std::sqrt(pg_closest(point, chain.get(), nullptr, nearest));
            EXPECT_EQ(distances.from(point[0], point[1]), whole) << point[0] << ' ' << point[1];
        }
    }
    EXPECT_EQ(test_heap::live_blocks(), before);
}

TEST(SideDistances, AreTheSameWithoutRoomForBoxes)
{
    const auto chain = make_chain({{0, 0}, {10, 0}, {10, 10}});
    test_heap::fail_at(1);
    side_distances distances(chain.get());
    test_heap::fail_at(0);
    EXPECT_EQ(distances.from(4, 3), 3);
    EXPECT_EQ(distances.from(12, 8), 2);
}

TEST(SideDistances, OfALoneNode)
{
    const auto chain = make_chain({{3, 4}});
    EXPECT_EQ(side_distances(chain.get()).from(0, 0), 5);
}

TEST(SideDistances, TimeGrowsWithTheChain)
{
    // As many places beside a zigzag as it has corners.
    const auto walk = [](int corners) {
        std::vector<spot> zigzag;
        for (int i = 0; i < corners; ++i)
            zigzag.push_back({double(i), double(i % 2)});
        const auto chain = make_chain(zigzag);
        side_distances distances(chain.get());
        double sum = 0;
        for (int i = 0; i < corners; ++i)
            sum += distances.from(i, 4.0);
        EXPECT_GT(sum, 3.0 * corners - 1);
    };
    EXPECT_TRUE(grows_in_proportion(walk, 64'000));
}

} // namespace
