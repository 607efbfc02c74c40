// inputs.h: what triangulations are tried on: scattered and regular points, doubles, survey coordinates, and
// barriers in every position to points and to each other. The same each time.
#pragma once

#include <array>
#include <cmath>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace tin_inputs
{

struct spot {
    double x, y, z;
};

using ends = std::array<int, 2>; // numbers of the points that a barrier joins

struct input {
    std::string name;
    std::vector<spot> points;
    std::vector<ends> barriers{};
    bool split = false;
    double interval = 1.0;
    bool skip_zero = false;
    bool quiet = true;
    int break_at = 0; // the poll of the break key that is answered with yes
};

// The standard leaves the distributions to the library; this is the same everywhere.
inline double uniform(std::mt19937& random, double low, double high)
{
    return low + (high - low) * (static_cast<double>(random()) / 4294967296.0);
}

inline int below(std::mt19937& random, std::size_t count)
{
    return static_cast<int>(random() % count);
}

inline std::vector<spot> scatter(unsigned seed, int count, double size)
{
    std::mt19937 random(seed);
    std::vector<spot> out;
    for (int i = 0; i < count; ++i) {
        const double x = uniform(random, 0, size), y = uniform(random, 0, size);
        out.push_back({x, y, uniform(random, -5, 60)});
    }
    return out;
}

inline std::vector<spot> lattice(int columns, int rows, double step)
{
    std::vector<spot> out;
    for (int j = 0; j < rows; ++j)
        for (int i = 0; i < columns; ++i)
            out.push_back({i * step, j * step, static_cast<double>((i * 7 + j * 3) % 5)});
    return out;
}

inline std::vector<spot> ring(int count, double radius)
{
    std::vector<spot> out;
    for (int i = 0; i < count; ++i) {
        const double angle = 6.283185307179586 * i / count;
        out.push_back({radius + radius * std::cos(angle), radius + radius * std::sin(angle), 10.0 + i * 0.25});
    }
    return out;
}

inline std::vector<spot> straight_run(int count, double dx, double dy)
{
    std::vector<spot> out;
    for (int i = 0; i < count; ++i)
        out.push_back({i * dx, i * dy, 1.5 * i});
    return out;
}

// Stations 20 apart along a slanted axis, offsets across it, in the order in which they were measured.
inline std::vector<spot> cross_sections(unsigned seed, int stations)
{
    std::mt19937 random(seed);
    std::vector<spot> out;
    const double ux = 0.8, uy = 0.6;
    for (int s = 0; s < stations; ++s)
        for (double offset : {-25.0, -12.0, -4.0, 0.0, 4.0, 12.0, 25.0}) {
            const double along = 20.0 * s, off = offset + (offset == 0 ? 0 : uniform(random, -0.5, 0.5));
            out.push_back({along * ux - off * uy, along * uy + off * ux, 100 + uniform(random, -2, 2)});
        }
    return out;
}

// Each point a few times: exactly, 4e-7 off, just 1e-6 off, 1.5e-6 off.
inline std::vector<spot> with_doubles(std::vector<spot> points, unsigned seed)
{
    std::mt19937 random(seed);
    const std::size_t count = points.size();
    for (std::size_t i = 0; i < count; i += 2) {
        const double steps[] = {0, 4e-7, 1e-6, 1.5e-6};
        const double dx = steps[random() % 4] * (random() % 2 ? 1 : -1);
        const double dy = steps[random() % 4] * (random() % 2 ? 1 : -1);
        points.push_back({points[i].x + dx, points[i].y + dy, points[i].z + 3});
    }
    return points;
}

inline std::vector<spot> moved(std::vector<spot> points, double dx, double dy)
{
    for (spot& p : points) {
        p.x += dx;
        p.y += dy;
    }
    return points;
}

inline std::vector<spot> joined(std::vector<spot> a, const std::vector<spot>& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

inline std::vector<ends> chain(int first, int last, bool closed)
{
    std::vector<ends> out;
    for (int i = first; i < last; ++i)
        out.push_back({i, i + 1});
    if (closed)
        out.push_back({last, first});
    return out;
}

// Between points at random: they share ends, cross points and cross each other.
inline std::vector<ends> random_barriers(unsigned seed, std::size_t points, int count)
{
    std::mt19937 random(seed);
    std::vector<ends> out;
    while (static_cast<int>(out.size()) < count) {
        const int a = below(random, points), b = below(random, points);
        if (a != b)
            out.push_back({a, b});
    }
    return out;
}

// Links of neighbours only, which the network can mostly take as they are.
inline std::vector<ends> short_barriers(const std::vector<spot>& points, double reach, std::size_t every)
{
    std::vector<ends> out;
    for (std::size_t i = 0; i < points.size(); i += every)
        for (std::size_t j = i + 1; j < points.size(); ++j)
            if (std::hypot(points[i].x - points[j].x, points[i].y - points[j].y) < reach) {
                out.push_back({static_cast<int>(i), static_cast<int>(j)});
                break;
            }
    return out;
}

// A few points with many barriers, of four kinds: on a coarse lattice, at random, in columns that are upright
// but for rounding, in a narrow strip. Barriers cross, overlap, share ends and run through points.
inline input breaklines(unsigned seed)
{
    std::mt19937 random(seed);
    input in{"breaklines " + std::to_string(seed), {}};
    const int count = 4 + static_cast<int>(random() % 25);
    for (int i = 0; i < count; ++i) {
        double x, y;
        switch (seed % 4) {
        case 0:
            x = static_cast<double>(random() % 8), y = static_cast<double>(random() % 8);
            break;
        case 1:
            x = uniform(random, 0, 50), y = uniform(random, 0, 50);
            break;
        case 2:
            x = static_cast<double>(random() % 4) * 10 + uniform(random, -1e-9, 1e-9);
            y = static_cast<double>(random() % 6);
            break;
        default:
            x = uniform(random, 0, 200), y = uniform(random, 0, 2);
        }
        in.points.push_back({x, y, static_cast<double>(i) + 0.5});
    }
    in.barriers = random_barriers(seed, in.points.size(), static_cast<int>(seed % 13));
    in.split = seed % 3 == 0;
    return in;
}

inline void add_plain_points(std::vector<input>& out)
{
    for (unsigned seed = 1; seed <= 12; ++seed)
        out.push_back(
            {"scatter " + std::to_string(seed), scatter(seed, 5 + static_cast<int>(seed) * 20, 1000)});
    out.push_back({"small scatter", scatter(31, 60, 0.5)});
    out.push_back({"lattice", lattice(9, 7, 10)});
    out.push_back({"odd lattice", lattice(6, 11, 3.7)});
    out.push_back({"ring of 12", ring(12, 50)});
    out.push_back({"ring of 40", ring(40, 300)});
    out.push_back({"ring with middle", joined(ring(24, 100), {{100, 100, 3}})});
    out.push_back({"rings", joined(ring(16, 80), moved(ring(16, 40), 40, 40))});
    out.push_back({"slanted run", straight_run(15, 3, 2)});
    out.push_back({"level run", straight_run(10, 5, 0)});
    out.push_back({"upright run", straight_run(10, 0, 5)});
    out.push_back({"run and one", joined(straight_run(12, 4, 1), {{20, 40, 1}})});
    out.push_back({"sections", cross_sections(5, 12)});
    out.push_back({"doubles", with_doubles(scatter(41, 60, 100), 42)});
    out.push_back({"doubles on a lattice", with_doubles(lattice(6, 6, 5), 43)});
    out.push_back({"none", {}});
    out.push_back({"one", {{1, 2, 3}}});
    out.push_back({"two", {{1, 2, 3}, {4, 7, 5}}});
    out.push_back({"one twice", {{1, 2, 3}, {1, 2, 9}}});
}

inline void add_barriers(std::vector<input>& out)
{
    for (unsigned seed = 1; seed <= 8; ++seed) {
        const auto points = scatter(100 + seed, 30 + static_cast<int>(seed) * 10, 400);
        out.push_back({"barriers " + std::to_string(seed), points,
                       random_barriers(200 + seed, points.size(), static_cast<int>(seed) * 3)});
        out.push_back({"short barriers " + std::to_string(seed), points, short_barriers(points, 60, 3)});
    }
    const auto square = lattice(7, 7, 10);
    for (bool split : {false, true}) {
        const std::string tail = split ? ", split" : "";
        out.push_back({"diagonal of a lattice" + tail, square, {{0, 48}}, split});
        out.push_back({"both diagonals" + tail, square, {{0, 48}, {6, 42}}, split});
        out.push_back({"upright and level" + tail, square, {{3, 45}, {21, 27}}, split});
        out.push_back({"overlap" + tail, square, {{0, 4}, {2, 6}, {6, 2}, {0, 6}}, split});
        out.push_back({"border" + tail, square, {{0, 6}, {6, 48}, {48, 42}, {42, 0}}, split});
        out.push_back({"knight's moves" + tail, square, {{0, 15}, {15, 30}, {0, 9}, {9, 18}, {0, 47}}, split});
        out.push_back({"run" + tail, joined(straight_run(12, 4, 1), scatter(301, 30, 44)), {{0, 11}}, split});
        out.push_back({"fan" + tail,
                       joined(ring(15, 60), scatter(302, 25, 120)),
                       {{0, 4}, {0, 5}, {0, 6}, {0, 7}, {0, 8}, {0, 9}},
                       split});
        out.push_back({"doubles and barriers" + tail, with_doubles(scatter(303, 30, 80), 304),
                       random_barriers(305, 45, 12), split});
    }
    out.push_back({"polygon", joined(ring(20, 90), scatter(306, 40, 180)), chain(0, 19, true)});
    out.push_back({"polygon alone", ring(17, 90), chain(0, 16, true)});
    const auto sections = cross_sections(6, 10);
    std::vector<ends> axis;
    for (int s = 0; s + 1 < 10; ++s)
        for (int k : {1, 3, 5})
            axis.push_back({7 * s + k, 7 * s + k + 7});
    out.push_back({"sections with breaklines", sections, axis});
    out.push_back({"long breaklines", sections, {{3, 66}, {1, 64}, {5, 68}}, true});
}

// All inputs, then those at survey coordinates, with words, breaks and filters.
inline std::vector<input> all()
{
    std::vector<input> out;
    add_plain_points(out);
    add_barriers(out);
    const std::size_t count = out.size();
    for (std::size_t i = 0; i < count; i += 2) {
        input far = out[i];
        far.name += ", survey";
        far.points = moved(far.points, 500000, 4000000);
        out.push_back(far);
    }
    for (std::size_t i = 0; i < count; i += 3) {
        input loud = out[i];
        loud.name += ", words";
        loud.quiet = false;
        loud.interval = 0;
        loud.skip_zero = true;
        out.push_back(loud);
    }
    const auto many = scatter(401, 350, 900);
    const auto links = short_barriers(many, 60, 1);
    for (int poll = 0; poll <= 7; ++poll)
        out.push_back({"break " + std::to_string(poll), many, links, false, 0.5, true, false, poll});
    out.push_back({"break before the points", scatter(402, 40, 90), {{0, 1}}, false, 1, false, false, 1});
    return out;
}

} // namespace tin_inputs
