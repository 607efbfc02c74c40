// edge_inputs.h: points on and beside each other's edges, where rounding decides in which triangle they lie.
#pragma once

#include <algorithm>

#include "tests/tin/inputs.h"

namespace tin_inputs
{

// Points in a square of this side; the frame's corners are then at -2 and 3 times the side.
constexpr double SIDE = 1024;

// A small distance of any size, so that each limit for "near" has points on both sides.
inline double small_step(std::mt19937& random)
{
    const double sizes[] = {0, 1e-13, 5e-13, 1e-12, 2e-12, 4e-12, 8e-12, 1e-10, 1e-9, 1e-8, 1e-6};
    return sizes[random() % 11] * SIDE / 100 * (random() % 2 ? 1 : -1);
}

inline spot beside_line(std::mt19937& random, const spot& a, const spot& b, double at)
{
    const double dx = b.x - a.x, dy = b.y - a.y, length = std::hypot(dx, dy), off = small_step(random);
    return {a.x + at * dx - off * dy / length, a.y + at * dy + off * dx / length, uniform(random, 0, 9)};
}

inline bool in_square(const spot& p)
{
    return p.x >= 0 && p.x <= SIDE && p.y >= 0 && p.y <= SIDE;
}

inline std::vector<spot> square_corners()
{
    return {{0, 0, 1}, {SIDE, SIDE, 2}, {SIDE, 0, 3}, {0, SIDE, 4}};
}

// Beside segments between earlier points.
inline std::vector<spot> beside_each_other(unsigned seed, int count)
{
    std::mt19937 random(seed);
    std::vector<spot> out = square_corners();
    while (static_cast<int>(out.size()) < count) {
        const spot a = out[random() % out.size()], b = out[random() % out.size()];
        if (random() % 3 == 0 || (a.x == b.x && a.y == b.y)) {
            const double x = uniform(random, 0, SIDE);
            out.push_back({x, uniform(random, 0, SIDE), 5});
            continue;
        }
        const spot p = beside_line(random, a, b, uniform(random, 0, 1));
        if (in_square(p))
            out.push_back(p);
    }
    return out;
}

// Beside lines from earlier points to the corners of the frame.
inline std::vector<spot> beside_frame_lines(unsigned seed, int count)
{
    std::mt19937 random(seed);
    const double low = -2 * SIDE, high = 3 * SIDE;
    const spot frame[] = {{low, high, 0}, {high, high, 0}, {high, low, 0}, {low, low, 0}};
    std::vector<spot> out = square_corners();
    while (static_cast<int>(out.size()) < count) {
        const spot a = out[random() % out.size()];
        const spot p = beside_line(random, a, frame[random() % 4], uniform(random, -0.4, 0.4));
        if (random() % 4 == 0) {
            const double x = uniform(random, 0, SIDE);
            out.push_back({x, uniform(random, 0, SIDE), 5});
        } else if (in_square(p)) {
            out.push_back(p);
        }
    }
    return out;
}

// A lattice whose points are off it by a small step.
inline std::vector<spot> shaken_lattice(unsigned seed, int columns, int rows)
{
    std::mt19937 random(seed);
    std::vector<spot> out = lattice(columns, rows, 16);
    for (spot& p : out) {
        p.x += small_step(random);
        p.y += small_step(random);
    }
    return out;
}

// Runs of points on a few lines, in steps that may be equal.
inline std::vector<spot> straight_runs(unsigned seed, int count)
{
    std::mt19937 random(seed);
    std::vector<spot> out = square_corners();
    while (static_cast<int>(out.size()) < count) {
        const spot a{uniform(random, 0, SIDE), uniform(random, 0, SIDE), 1};
        const spot b{uniform(random, 0, SIDE), random() % 3 ? uniform(random, 0, SIDE) : a.y, 1};
        const int steps = 3 + static_cast<int>(random() % 12);
        const bool exact = random() % 2;
        for (int i = 0; i <= steps; ++i) {
            const double t = static_cast<double>(i) / steps;
            spot p{a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), 2.5};
            if (!exact)
                p = beside_line(random, a, {b.x + 1, b.y, 1}, t);
            if (in_square(p))
                out.push_back(p);
        }
    }
    return out;
}

// Rings around common centres.
inline std::vector<spot> rings(unsigned seed, int count)
{
    std::mt19937 random(seed);
    std::vector<spot> out;
    while (static_cast<int>(out.size()) < count) {
        const int on = 4 + static_cast<int>(random() % 20);
        for (const spot& p : moved(ring(on, uniform(random, 5, SIDE / 4)), std::floor(uniform(random, 0, 500)),
                                   std::floor(uniform(random, 0, 500))))
            out.push_back(p);
    }
    return out;
}

inline void put_in_order(std::vector<spot>& points, unsigned order, unsigned seed)
{
    std::mt19937 random(seed);
    if (order == 0)
        std::sort(points.begin(), points.end(),
                  [](const spot& p, const spot& q) { return p.x < q.x || (p.x == q.x && p.y < q.y); });
    if (order == 1)
        for (std::size_t i = points.size(); i > 1; --i)
            std::swap(points[i - 1], points[random() % i]);
}

// A set of one of the kinds above or another, in the order that they have, a sorted one or none; with barriers
// between neighbours and across everything, or without.
inline input edge_input(unsigned seed, int count)
{
    input in{"edges " + std::to_string(seed), {}};
    const int side = static_cast<int>(std::sqrt(count));
    switch (seed % 8) {
    case 0:
        in.points = beside_each_other(seed, count);
        break;
    case 1:
        in.points = beside_frame_lines(seed, count);
        break;
    case 2:
        in.points = shaken_lattice(seed, side, side);
        break;
    case 3:
        in.points = straight_runs(seed, count);
        break;
    case 4:
        in.points = rings(seed, count);
        break;
    case 5:
        in.points = with_doubles(scatter(seed, count * 2 / 3, 100), seed);
        break;
    case 6:
        in.points = lattice(side, side, 8);
        break;
    default:
        in.points = cross_sections(seed, count / 7 + 1);
    }
    put_in_order(in.points, seed / 8 % 3, seed);
    const unsigned with = seed / 24 % 4;
    if (with == 1)
        in.barriers = random_barriers(seed, in.points.size(), count / 20);
    if (with == 2)
        in.barriers = short_barriers(in.points, SIDE / 10, 5);
    if (with == 3) {
        in.barriers = random_barriers(seed, in.points.size(), 6);
        const auto more = short_barriers(in.points, SIDE / 20, 3);
        in.barriers.insert(in.barriers.end(), more.begin(), more.end());
    }
    in.split = seed / 96 % 2;
    if (seed % 11 == 0)
        in.break_at = 1 + static_cast<int>(seed / 11 % 6);
    return in;
}

} // namespace tin_inputs
