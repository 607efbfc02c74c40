// clouds.h: points and breaklines for triangulations, the same each time, in the order of their insertion.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

namespace clouds
{

struct spot {
    double x, y;
};

enum kind { scattered, sorted, sections, grid };

inline double between(std::mt19937& random, double low, double high)
{
    return low + (high - low) * (static_cast<double>(random()) / 4294967296.0);
}

// Ten units from one point to the next, on average.
inline std::vector<spot> scatter(int count)
{
    std::mt19937 random(1);
    const double side = 10 * std::sqrt(count);
    std::vector<spot> out;
    for (int i = 0; i < count; ++i) {
        const double x = between(random, 0, side);
        out.push_back({x, between(random, 0, side)});
    }
    return out;
}

// Forty points across a winding axis, then the next forty, as a survey of a road is measured.
inline std::vector<spot> cross_sections(int count)
{
    std::mt19937 random(2);
    std::vector<spot> out;
    for (int i = 0; i < count; ++i) {
        const double along = i / 40 * 10.0, off = (i % 40 - 19.5) * 5 + between(random, -1, 1);
        const double turned = 0.4 * std::cos(along / 3000), x = along, y = 1200 * std::sin(along / 3000);
        out.push_back({x - off * std::sin(turned), y + off * std::cos(turned)});
    }
    return out;
}

inline std::vector<spot> rows(int count)
{
    const int columns = static_cast<int>(std::sqrt(count));
    std::vector<spot> out;
    for (int i = 0; i < count; ++i)
        out.push_back({i % columns * 10.0, i / columns * 10.0});
    return out;
}

inline std::vector<spot> cloud(int of_kind, int count)
{
    if (of_kind == sections)
        return cross_sections(count);
    if (of_kind == grid)
        return rows(count);
    std::vector<spot> out = scatter(count);
    if (of_kind == sorted)
        std::sort(out.begin(), out.end(), [](const spot& p, const spot& q) { return p.x < q.x; });
    return out;
}

// Breaklines along which the scattered points are joined: `lines` segments, each from a point to one some ten
// points' distances away, on rails that don't cross.
inline std::vector<std::array<int, 2>> breaklines(const std::vector<spot>& points, int lines)
{
    const double side = 10 * std::sqrt(static_cast<double>(points.size()));
    const int rails = static_cast<int>(std::sqrt(lines) / 2);
    std::vector<std::vector<int>> on(static_cast<std::size_t>(rails));
    const double apart = side / rails;
    for (int i = 0; i < static_cast<int>(points.size()); ++i) {
        const spot& p = points[static_cast<std::size_t>(i)];
        const int rail = std::min(static_cast<int>(p.y / apart), rails - 1);
        if (std::fabs(p.y - (rail + 0.5) * apart) < 5)
            on[static_cast<std::size_t>(rail)].push_back(i);
    }
    std::vector<std::array<int, 2>> out;
    for (auto& rail : on) {
        std::sort(rail.begin(), rail.end(), [&](int a, int b) {
            return points[static_cast<std::size_t>(a)].x < points[static_cast<std::size_t>(b)].x;
        });
        const auto wanted = static_cast<std::size_t>(lines / rails);
        const std::size_t step = std::max<std::size_t>(rail.size() / (wanted + 1), 1);
        for (std::size_t k = 0; k + step < rail.size() && k / step < wanted; k += step)
            out.push_back({rail[k], rail[k + step]});
    }
    return out;
}

} // namespace clouds
