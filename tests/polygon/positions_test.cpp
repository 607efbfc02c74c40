// Nearest point, positions, cuts and chord points against their plain form.
#include "tests/polygon/positions_plain.h"

#include <gtest/gtest.h>

#include "polygon/flatten.h"
#include "polygon/measures.h"
#include "polygon/trim.h"
#include "tests/polygon/random_segments.h"

namespace
{

constexpr double NEAR = 1e-7;
constexpr unsigned ROUNDS = 6000;

plain::point long_point(const double* p)
{
    return {p[0], p[1], p[2]};
}

// A chain and a point near it, on it, at a node or anywhere.
struct sample {
    std::vector<spot> chain;
    double x[3];
};

sample sample_of(std::mt19937& random, const place& where)
{
    std::uniform_real_distribution<double> any(-6, 6), unit(0, 1), hair(-2e-6, 2e-6);
    sample s{ordinary_chain(random, 2 + static_cast<int>(random() % 8)),
             {any(random), any(random), any(random)}};
    for (spot& n : s.chain) {
        n.x += where.x;
        n.y += where.y;
    }
    s.x[0] += where.x;
    s.x[1] += where.y;
    const std::size_t i = random() % (s.chain.size() - 1);
    const chain_ptr segment = make_chain({s.chain[i], s.chain[i + 1]});
    double direction;
    switch (random() % 6) {
    case 0:
        s.x[0] = s.chain[i].x, s.x[1] = s.chain[i].y;
        break;
    case 1:
        s.x[0] = s.chain[i + 1].x + hair(random), s.x[1] = s.chain[i + 1].y + hair(random);
        break;
    case 2: // the last node as it is
        s.x[0] = s.chain.back().x, s.x[1] = s.chain.back().y;
        break;
    case 3:
    case 4: {
        const double z = s.x[2];
        pg_point_at(segment.get(), unit(random) * pg_length(segment.get()), s.x, &direction);
        s.x[2] = z;
        const double off = random() % 3 == 0 ? 0.12 * unit(random) : hair(random);
        s.x[0] += off * std::cos(direction + 1.57), s.x[1] += off * std::sin(direction + 1.57);
        break;
    }
    default:
        break;
    }
    return s;
}

// Runs `check` on samples at the origin and far from it; it tells whether its answer was decided.
template <class Check>
void on_samples(unsigned least_decided, const Check& check)
{
    for (const place& where : PLACES) {
        unsigned decided = 0;
        for (unsigned seed = 1; seed <= ROUNDS; ++seed) {
            SCOPED_TRACE(seed);
            std::mt19937 random(seed);
            decided += check(random, sample_of(random, where)) ? 1 : 0;
            if (testing::Test::HasFatalFailure())
                return;
        }
        EXPECT_GT(decided, least_decided) << where.x;
    }
}

void expect_closest(const sample& s, const plain::closest& told)
{
    double foot_sq = -1, out[3] = {-7, -7, -7};
    const double best = pg_closest(s.x, make_chain(s.chain).get(), &foot_sq, out);
    ASSERT_NEAR(best, static_cast<double>(told.best_sq), NEAR);
    const auto told_foot_sq = static_cast<double>(told.foot_sq);
    ASSERT_NEAR(foot_sq, told_foot_sq, NEAR * (1 + told_foot_sq));
    plain::number least_off = 1;
    for (const auto& c : told.candidates)
        if (c.distance_sq - told.best_sq < NEAR)
            least_off = std::min(least_off, std::hypot(c.place[0] - out[0], c.place[1] - out[1]));
    ASSERT_LT(least_off, 1e-5);
    ASSERT_EQ(out[2], -7);
}

TEST(PlainPositions, ClosestAgrees)
{
    on_samples(ROUNDS / 2, [](std::mt19937&, const sample& s) {
        plain::judge j;
        const plain::closest told = plain::closest_of(j, s.chain, long_point(s.x));
        if (j.decided)
            expect_closest(s, told);
        return j.decided;
    });
}

TEST(PlainPositions, DistanceAlongAgrees)
{
    on_samples(ROUNDS / 2, [](std::mt19937&, const sample& s) {
        plain::judge j;
        const auto told = static_cast<double>(plain::distance_along(j, s.chain, long_point(s.x)));
        if (!j.decided || j.at_seam || std::isnan(told))
            return false;
        const double done = pg_distance_along(make_chain(s.chain).get(), s.x);
        EXPECT_NEAR(done, told, NEAR);
        return true;
    });
}

void expect_position(const sample& s, double distance, const std::optional<plain::position>& told)
{
    double out[3] = {-7, -7, -7}, direction = -7;
    ASSERT_EQ(pg_point_at(make_chain(s.chain).get(), distance, out, &direction), told ? 1 : 0);
    if (!told) {
        ASSERT_EQ(out[0], -7);
        ASSERT_EQ(direction, -7);
        return;
    }
    ASSERT_NEAR(out[0], static_cast<double>(told->place[0]), NEAR);
    ASSERT_NEAR(out[1], static_cast<double>(told->place[1]), NEAR);
    ASSERT_NEAR(out[2], told->has_z ? static_cast<double>(told->place[2]) : -7, NEAR);
    // Far from the origin the direction to a short arc's centre has lost digits.
    ASSERT_NEAR(direction, static_cast<double>(told->direction), std::fabs(s.x[0]) < 1e3 ? NEAR : 1e-4);
}

TEST(PlainPositions, PointAtAgrees)
{
    on_samples(ROUNDS / 2, [](std::mt19937& random, const sample& s) {
        plain::number sum = 0;
        for (std::size_t i = 0; i + 1 < s.chain.size(); ++i)
            sum += plain::segment_of(s.chain, i).length();
        // Before the head too: positions go on there.
        const double distance =
            std::uniform_real_distribution<double>(-0.1, 1.1)(random) * static_cast<double>(sum);
        plain::judge j;
        const auto told = plain::point_at(j, s.chain, distance);
        if (!j.decided || !std::isfinite(distance))
            return false;
        expect_position(s, distance, told);
        return true;
    });
}

using trimming = int (*)(pg_node*, double*);
using plain_trimming = plain::cut_chain (*)(plain::judge&, const std::vector<spot>&, plain::point);

void expect_cut(trimming trim, const sample& s, const plain::cut_chain& told)
{
    const chain_ptr chain = make_chain(s.chain);
    double x[3] = {s.x[0], s.x[1], s.x[2]};
    ASSERT_EQ(trim(chain.get(), x), told ? 1 : 0);
    ASSERT_EQ(x[2], trim == pg_trim_at_first ? 0.0 : s.x[2]);
    const auto left = spots_of(chain.get());
    const auto& expected = told ? *told : s.chain;
    ASSERT_EQ(left.size(), expected.size());
    const double near = std::fabs(s.x[0]) < 1e3 ? 1e-6 : 1e-3; // as short as some arcs are
    for (std::size_t i = 0; i < left.size(); ++i) {
        ASSERT_EQ(left[i].x, expected[i].x);
        ASSERT_EQ(left[i].y, expected[i].y);
        ASSERT_EQ(left[i].z, expected[i].z);
        ASSERT_NEAR(left[i].bulge, expected[i].bulge, near * (1 + std::fabs(expected[i].bulge)));
    }
}

TEST(PlainPositions, TrimsAgree)
{
    const std::pair<trimming, plain_trimming> both[] = {
        {pg_trim_at_first, plain::trimmed_at_first},
        {pg_trim_at_last, [](plain::judge& j, const std::vector<spot>& chain, plain::point x) {
             return plain::trimmed_at_last(j, chain, x);
         }}};
    for (const auto& [trim, plain_trim] : both) {
        unsigned cuts = 0;
        on_samples(ROUNDS / 2, [&, trim = trim, plain_trim = plain_trim](std::mt19937&, const sample& s) {
            plain::judge j;
            const plain::cut_chain told = plain_trim(j, s.chain, long_point(s.x));
            if (!j.decided || j.at_seam)
                return false;
            cuts += told ? 1 : 0;
            expect_cut(trim, s, told);
            return true;
        });
        EXPECT_GT(cuts, ROUNDS / 2);
    }
}

// The chord of every third arc runs along x, where the normal that leads to its centre is tilted.
TEST(PlainPositions, ChordPointsAgree)
{
    for (const place& where : PLACES)
        for (unsigned seed = 1; seed <= 600; ++seed) {
            SCOPED_TRACE(seed);
            std::mt19937 random(seed);
            std::uniform_real_distribution<double> any(-6, 6), exponent(-3, 3);
            const double bulge = (seed % 2 ? 1 : -1) * (seed % 5 ? std::pow(10.0, exponent(random)) : 1.0);
            spot from{where.x + any(random), where.y + any(random), bulge, any(random)};
            spot to{where.x + any(random), where.y + any(random), 0, any(random)};
            if (seed % 3 == 0)
                to.y = from.y;
            const auto told = plain::chord_points(from, to);
            const chain_ptr chain = make_chain({from, to});
            ASSERT_EQ(pg_flatten(chain.get(), 0.0), 1);
            ASSERT_EQ(pg_count(chain.get()), 2 + static_cast<int>(told.size()));
            const double near = where.x == 0.0 ? 2e-11 * (1 + std::fabs(bulge) + 1 / std::fabs(bulge)) : 2e-8;
            const pg_node* n = chain->next;
            for (const plain::point& p : told) {
                ASSERT_NEAR(n->x, static_cast<double>(p[0]), near);
                ASSERT_NEAR(n->y, static_cast<double>(p[1]), near);
                ASSERT_NEAR(n->z, static_cast<double>(p[2]), 1e-12);
                n = n->next;
            }
        }
}

} // namespace
