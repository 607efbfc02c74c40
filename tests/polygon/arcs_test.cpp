// Arcs and bulges.
#include "polygon/arcs.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "polygon/points.h"
#include "polygon/tolerances.h"
#include "tests/polygon/chains.h"

namespace
{

constexpr double PI = std::numbers::pi;
const double DEG = PI / 180.0;

struct arc_facts {
    double centre[3] = {9, 9, 9}, start = 0, end = 0, radius = 0;
    int dir = 0;
};

arc_facts facts_of(const double* a, const double* b, double bulge)
{
    arc_facts f;
    pg_arc_from_bulge(a, b, bulge, f.centre, &f.start, &f.end, &f.radius, &f.dir);
    return f;
}

struct bulge_case {
    const char* name;
    double bulge, centre_y, radius, start, end;
    int dir;
};

TEST(Arcs, BulgeGivesCentreLimitsAndRadius)
{
    const double t8 = std::tan(PI / 8); // a quarter circle
    const bulge_case cases[] = {
        {"half circle", 1, 0, 1, PI, 0, -1},
        {"half circle clockwise", -1, 0, 1, 0, PI, 1},
        {"quarter", t8, 1, std::sqrt(2.0), 5 * PI / 4, 7 * PI / 4, -1},
        {"quarter clockwise", -t8, -1, std::sqrt(2.0), PI / 4, 3 * PI / 4, 1},
        {"three quarters", 1 / t8, -1, std::sqrt(2.0), 3 * PI / 4, PI / 4, -1},
        {"three quarters clockwise", -1 / t8, 1, std::sqrt(2.0), 7 * PI / 4, 5 * PI / 4, 1},
    };
    for (const place& p : PLACES) {
        const double a[3] = {p.x - 1, p.y, 3}, b[3] = {p.x + 1, p.y, 4};
        for (const bulge_case& c : cases) {
            const arc_facts f = facts_of(a, b, c.bulge);
            EXPECT_NEAR(f.centre[0], p.x, 1e-8) << c.name;
            EXPECT_NEAR(f.centre[1], p.y + c.centre_y, 1e-8) << c.name;
            EXPECT_EQ(f.centre[2], 0.0) << c.name;
            EXPECT_NEAR(f.radius, c.radius, 1e-12) << c.name;
            EXPECT_NEAR(std::remainder(f.start - c.start, 2 * PI), 0, 1e-8) << c.name;
            EXPECT_NEAR(std::remainder(f.end - c.end, 2 * PI), 0, 1e-8) << c.name;
            EXPECT_EQ(f.dir, c.dir) << c.name;
        }
    }
}

TEST(Arcs, ArcBulgeIsTheNegativeOfTheCounterClockwiseArc)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> direction(0, 2 * PI), sweep(0.01, 2 * PI - 0.01), size(0.5, 500);
    for (const place& p : PLACES)
        for (int i = 0; i < 2000; ++i) {
            const double r = size(random), from = direction(random), turn = sweep(random);
            const double c[3] = {p.x, p.y, 0};
            const double a[3] = {p.x + r * std::cos(from), p.y + r * std::sin(from), 0};
            const double b[3] = {p.x + r * std::cos(from + turn), p.y + r * std::sin(from + turn), 0};
            const double expected = -std::tan(turn / 4);
            ASSERT_NEAR(pg_arc_bulge(a, b, c), expected, 1e-5 * std::fabs(expected)) << i << " sweep " << turn;
        }
}

// The told form, which is defined wherever the arc isn't close to a half circle.
double told_arc_bulge(const double* a, const double* b, const double* centre)
{
    const double c = pg_dist(a, b), r = pg_dist(a, centre);
    const double s = r - std::sqrt(r * r - c * c / 4);
    const double a1 = pg_angle(centre, a);
    double a2 = pg_angle(centre, b);
    if (a1 >= a2)
        a2 += 2 * PI;
    const double sign = pg_tri_area(a[0], a[1], b[0], b[1], centre[0], centre[1]) > 0 ? -1 : 1;
    return a2 - a1 <= PI ? 2 * s * sign / c : -2 * sign * (2 * r - s) / c;
}

TEST(Arcs, ArcBulgeEqualsTheSagittaOverHalfTheChord)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> direction(0, 2 * PI), sweep(0.3, 2 * PI - 0.3);
    std::uniform_real_distribution<double> off(-1e-4, 1e-4); // an end that lies a little off the circle
    for (int i = 0; i < 5000; ++i) {
        const double turn = sweep(random);
        if (std::fabs(turn - PI) < 0.1)
            continue;
        const double from = direction(random), r = 10, r2 = r + off(random);
        const double c[3] = {4, 5, 0};
        const double a[3] = {4 + r * std::cos(from), 5 + r * std::sin(from), 0};
        const double b[3] = {4 + r2 * std::cos(from + turn), 5 + r2 * std::sin(from + turn), 0};
        const double told = told_arc_bulge(a, b, c);
        ASSERT_NEAR(pg_arc_bulge(a, b, c), told, 1e-11 * std::max(1.0, std::fabs(told))) << i;
    }
}

// Where a chain is cut beside its arc the end is off the circle; the arc then has the start's radius, also
// close to a half circle.
TEST(Arcs, ArcBulgeToAnEndBesideTheCircleHasTheStartsRadius)
{
    const double c[3] = {4, 5, 0}, a[3] = {14, 5, 0};
    for (const place& p : PLACES)
        for (const double off : {0.09, 1e-3, -1e-3, -0.09})
            for (double short_of = 1e-8; short_of < 1e-4; short_of *= 3) {
                const double h = 10 * std::sqrt(1 - short_of),
                             r2 = 10 + off; // half the chord to b, and its radius
                const double cosine = (100 + r2 * r2 - 4 * h * h) / (2 * 10 * r2);
                if (cosine < -1)
                    continue;
                for (const double turn : {std::acos(cosine), 2 * PI - std::acos(cosine)}) {
                    const double at[3] = {p.x + a[0], p.y + a[1], 0}, centre[3] = {p.x + c[0], p.y + c[1], 0};
                    const double b[3] = {centre[0] + r2 * std::cos(turn), centre[1] + r2 * std::sin(turn), 0};
                    const double m = 10 * std::sqrt(short_of);
                    const double told = turn < PI ? -(10 - m) / h : -(10 + m) / h;
                    ASSERT_NEAR(pg_arc_bulge(at, b, centre), told, 2e-6)
                        << off << ' ' << short_of << ' ' << turn;
                }
            }
    // No circle of the start's radius has so long a chord.
    const double beyond[3] = {4 - 10.05, 5, 0};
    EXPECT_EQ(pg_arc_bulge(a, beyond, c), -1.0);
    EXPECT_EQ(pg_arc_bulge(c, a, c), -1.0);
}

TEST(Arcs, ArcBulgeOfAHalfCircleIsMinusOneWhateverItsLastBits)
{
    for (const place& p : PLACES)
        for (int deg = 0; deg < 360; ++deg) {
            const double dx = 7 * std::cos(deg * DEG), dy = 7 * std::sin(deg * DEG);
            const double c[3] = {p.x, p.y, 0}, a[3] = {p.x + dx, p.y + dy, 0}, b[3] = {p.x - dx, p.y - dy, 0};
            ASSERT_NEAR(pg_arc_bulge(a, b, c), -1.0, 1e-8) << deg;
            ASSERT_NEAR(pg_arc_bulge(b, a, c), -1.0, 1e-8) << deg;
        }
}

TEST(Arcs, ArcBulgeGoesSteadilyThroughTheHalfCircle)
{
    const double c[3] = {}, a[3] = {10, 0, 0};
    for (const double extra : {-1e-3, -1e-6, -1e-9, -1e-12, 0.0, 1e-12, 1e-9, 1e-6, 1e-3}) {
        const double turn = PI + extra;
        const double b[3] = {10 * std::cos(turn), 10 * std::sin(turn), 0};
        EXPECT_NEAR(pg_arc_bulge(a, b, c), -std::tan(turn / 4), 1e-12) << extra;
    }
}

TEST(Arcs, PieceWhoseEndsAreOnePlaceHasNoBulge)
{
    const double centre[3] = {}, a[3] = {5, 0}, same[3] = {5, 0}, behind[3] = {5, -9e-7},
                 apart[3] = {5, 1.1e-6};
    EXPECT_EQ(pg_arc_piece_bulge(a, same, centre), 0.0);
    EXPECT_EQ(pg_arc_piece_bulge(a, behind, centre), 0.0); // nearly the whole circle by its direction
    EXPECT_EQ(pg_arc_piece_bulge(a, apart, centre), pg_arc_bulge(a, apart, centre));
}

TEST(Arcs, BulgeToArcAndBack)
{
    std::mt19937 random(17);
    std::uniform_real_distribution<double> any(-50, 50), size(0.001, 30);
    for (int i = 0; i < 5000; ++i) {
        const double a[3] = {any(random), any(random), 0}, b[3] = {any(random), any(random), 0};
        const double bulge = i % 2 ? size(random) : -size(random);
        const arc_facts f = facts_of(a, b, bulge);
        const double back = bulge > 0 ? -pg_arc_bulge(a, b, f.centre) : pg_arc_bulge(b, a, f.centre);
        ASSERT_NEAR(back, bulge, 1e-7 * std::max(1.0, std::fabs(bulge))) << i;
        ASSERT_NEAR(pg_dist(f.centre, a), f.radius, 1e-8 * f.radius) << i;
        ASSERT_NEAR(pg_dist(f.centre, b), f.radius, 1e-8 * f.radius) << i;
    }
}

struct contains_case {
    const char* name;
    double start_deg, end_deg, point_deg;
    bool with_radius, exact; // what is answered
};

TEST(Arcs, ContainsByDirection)
{
    const contains_case cases[] = {
        {"inside", 30, 120, 60, true, true},
        {"before", 30, 120, 20, false, false},
        {"behind", 30, 120, 130, false, false},
        {"at the start", 30, 120, 30, true, false},
        {"at the end", 30, 120, 120, true, false},
        {"wrapping, behind the start", 300, 40, 310, true, true},
        {"wrapping, before the end", 300, 40, 10, true, true},
        {"wrapping, outside", 300, 40, 180, false, false},
        {"wrapping, at the start", 300, 40, 300, true, false},
        {"wrapping, at the end", 300, 40, 40, true, false},
        {"limits below zero", -60, 40, 310, true, true},
        {"limits above a turn", 390, 480, 60, true, true},
        {"whole turn", 0, 360, 200, true, true},
        {"an arc of no length", 50, 50, 50, true, false},
        {"from angle zero", 0, 90, 0, true, false},
        {"to a whole turn, at its end", 270, 360, 0, true, false},
    };
    const double centre[3] = {};
    for (const contains_case& c : cases) {
        const double point[3] = {10 * std::cos(c.point_deg * DEG), 10 * std::sin(c.point_deg * DEG), 0};
        // The limits at the ends are the very directions that the points have.
        const auto limit = [&](double deg) {
            return std::fabs(deg - c.point_deg) < 1e-9 ? pg_angle(centre, point) : deg * DEG;
        };
        EXPECT_EQ(pg_arc_contains(centre, point, limit(c.start_deg), limit(c.end_deg), 10), c.with_radius)
            << c.name;
        EXPECT_EQ(pg_arc_contains(centre, point, limit(c.start_deg), limit(c.end_deg), PG_NO_VALUE), c.exact)
            << c.name;
    }
}

TEST(Arcs, ContainsLeavesOutADirectionOnTheLimitOfItsSlack)
{
    const double centre[3] = {}, point[3] = {1, 0, 0}; // direction 0, a millionth before the start
    EXPECT_FALSE(pg_arc_contains(centre, point, 1e-6, 1, 1));
    EXPECT_TRUE(pg_arc_contains(centre, point, 0.9e-6, 1, 1));
    EXPECT_FALSE(pg_arc_contains(centre, point, 1e-9, 1, PG_NO_VALUE));
}

TEST(Arcs, ContainsCountsAMillionthOfArcLengthAroundTheEnds)
{
    const double centre[3] = {};
    for (const double radius : {0.5, 10.0, 3000.0})
        for (const double start_deg : {30.0, 0.0, 200.0, 300.0}) {
            const double start = start_deg * DEG, end = start + 100 * DEG;
            const auto on_arc = [&](double angle) {
                const double point[3] = {radius * std::cos(angle), radius * std::sin(angle), 0};
                return pg_arc_contains(centre, point, start, end > 2 * PI ? end - 2 * PI : end, radius);
            };
            EXPECT_TRUE(on_arc(start - 0.99e-6 / radius)) << radius << " " << start_deg;
            EXPECT_FALSE(on_arc(start - 1.01e-6 / radius)) << radius << " " << start_deg;
            EXPECT_TRUE(on_arc(end + 0.99e-6 / radius)) << radius << " " << start_deg;
            EXPECT_FALSE(on_arc(end + 1.01e-6 / radius)) << radius << " " << start_deg;
        }
}

} // namespace
