// Offsets of chains beside GEOS and Clipper, where these are installed, and their growth with the chain.
//
// GEOS makes the same thing, a curve on one side, for chords. Clipper offsets areas: it gets the zig-zag closed
// along a base line far from the teeth, and the bent polylines as bands with both sides. Arcs are flattened for
// both beforehand, to chords 0.01 off, as they round corners too.
#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <random>
#include <utility>
#include <vector>

#include "polygon/node.h"
#include "polygon/offset.h"

#ifdef ZENT_GEOS
#include <geos_c.h>
#endif
#ifdef ZENT_CLIPPER
#include <polyclipping/clipper.hpp>
#endif

namespace
{

constexpr double PI = std::numbers::pi;
constexpr double ARC_TOLERANCE = 0.01;
constexpr int RIGHT = 1, ROUNDED = 0, WITHOUT_LOOPS = 1;

struct vertex {
    double x, y, bulge;
};
using outline = std::vector<vertex>;

struct free_nodes {
    void operator()(pg_node* head) const { pl_free_nodes(head); }
};
using chain_ptr = std::unique_ptr<pg_node, free_nodes>;

chain_ptr chain_of(const outline& line)
{
    pg_node* head = nullptr;
    for (auto v = line.rbegin(); v != line.rend(); ++v) {
        const double at[3] = {v->x, v->y, 0};
        head = pg_node_push(at, head, v->bulge);
    }
    return chain_ptr(head);
}

// Teeth of uneven height, 10 wide.
outline zig_zag(long count)
{
    std::mt19937 random{17};
    std::uniform_real_distribution<double> height(5, 15);
    outline line;
    for (long i = 0; i < count; ++i)
        line.push_back({5.0 * static_cast<double>(i), i % 2 == 0 ? 0 : height(random), 0});
    return line;
}

// A road: straights and bends that follow one another smoothly, to both hands; every second segment is an arc.
outline road(long count, unsigned seed)
{
    std::mt19937 random{seed};
    std::uniform_real_distribution<double> length(5, 50), radius(8, 60), turn(0.2, 1.2);
    outline line{{0, 0, 0}};
    double heading = 0;
    while (static_cast<long>(line.size()) < count) {
        vertex at = line.back();
        const double l = length(random);
        line.push_back({at.x + l * std::cos(heading), at.y + l * std::sin(heading), 0});
        // Bends turn back to the direction of the road, so that it runs on and doesn't curl up.
        const double sweep = heading > 0 ? -turn(random) : turn(random);
        const double chord = 2 * radius(random) * std::sin(std::fabs(sweep) / 2);
        at = line.back();
        line.back().bulge = std::tan(sweep / 4);
        line.push_back(
            {at.x + chord * std::cos(heading + sweep / 2), at.y + chord * std::sin(heading + sweep / 2), 0});
        heading += sweep;
    }
    line.resize(static_cast<std::size_t>(count));
    line.back().bulge = 0;
    return line;
}

// Rings of a spiral in chords, 3 apart.
outline spiral(long count)
{
    outline line;
    double angle = 2 * PI;
    for (long i = 0; i < count; ++i) {
        const double radius = 3 * angle / (2 * PI);
        line.push_back({radius * std::cos(angle), radius * std::sin(angle), 0});
        angle += 2 / radius;
    }
    return line;
}

void offset_ours(benchmark::State& state, const std::vector<outline>& lines, double distance)
{
    std::vector<chain_ptr> chains;
    for (const outline& line : lines)
        chains.push_back(chain_of(line));
    int vertices = 0;
    for (auto _ : state) {
        vertices = 0;
        for (const chain_ptr& chain : chains) {
            const chain_ptr result(pg_offset(chain.get(), distance, RIGHT, ROUNDED, WITHOUT_LOOPS));
            vertices += pg_count(result.get());
        }
    }
    state.counters["vertices"] = vertices;
}

std::vector<outline> roads()
{
    std::vector<outline> lines;
    for (unsigned seed = 1; seed <= 1000; ++seed)
        lines.push_back(road(40, seed));
    return lines;
}

void zig_zag_ours(benchmark::State& state)
{
    offset_ours(state, {zig_zag(10000)}, 2);
}
void arcs_ours(benchmark::State& state)
{
    offset_ours(state, roads(), 4);
}
BENCHMARK(zig_zag_ours);
BENCHMARK(arcs_ours);

void growth_zig_zag(benchmark::State& state)
{
    offset_ours(state, {zig_zag(state.range(0))}, 2);
}
void growth_zig_zag_wide(benchmark::State& state)
{
    offset_ours(state, {zig_zag(state.range(0))}, 12);
}
void growth_arcs(benchmark::State& state)
{
    offset_ours(state, {road(state.range(0), 1)}, 7);
}
void growth_spiral(benchmark::State& state)
{
    offset_ours(state, {spiral(state.range(0))}, 1);
}
BENCHMARK(growth_zig_zag)->RangeMultiplier(10)->Range(1000, 100000);
BENCHMARK(growth_zig_zag_wide)->RangeMultiplier(10)->Range(1000, 100000);
BENCHMARK(growth_arcs)->RangeMultiplier(10)->Range(1000, 100000);
BENCHMARK(growth_spiral)->RangeMultiplier(10)->Range(1000, 100000);

#if defined(ZENT_GEOS) || defined(ZENT_CLIPPER)

// Chords for arcs.
outline flattened(const outline& line)
{
    outline flat;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const vertex& a = line[i];
        flat.push_back({a.x, a.y, 0});
        if (a.bulge == 0 || i + 1 == line.size())
            continue;
        const vertex& b = line[i + 1];
        const double sweep = 4 * std::atan(a.bulge), chord = std::hypot(b.x - a.x, b.y - a.y);
        const double radius = chord / 2 / std::sin(std::fabs(sweep) / 2);
        const double to_centre =
            std::atan2(b.y - a.y, b.x - a.x) + (sweep > 0 ? 1 : -1) * (PI - std::fabs(sweep)) / 2;
        const double cx = a.x + radius * std::cos(to_centre), cy = a.y + radius * std::sin(to_centre);
        const int chords = static_cast<int>(
            std::ceil(std::fabs(sweep) / (2 * std::acos(1 - std::min(1.0, ARC_TOLERANCE / radius)))));
        for (int k = 1; k < chords; ++k) {
            const double angle = to_centre + PI + sweep * k / chords;
            flat.push_back({cx + radius * std::cos(angle), cy + radius * std::sin(angle), 0});
        }
    }
    return flat;
}

#endif
#ifdef ZENT_GEOS

void offset_geos(benchmark::State& state, const std::vector<outline>& lines, double distance)
{
    const GEOSContextHandle_t geos = GEOS_init_r();
    const int quarter = static_cast<int>(std::ceil(PI / 4 / std::acos(1 - ARC_TOLERANCE / distance)));
    std::vector<GEOSGeometry*> curves;
    for (const outline& line : lines) {
        const outline flat = flattened(line);
        GEOSCoordSequence* points = GEOSCoordSeq_create_r(geos, static_cast<unsigned>(flat.size()), 2);
        for (unsigned i = 0; i < flat.size(); ++i)
            GEOSCoordSeq_setXY_r(geos, points, i, flat[i].x, flat[i].y);
        curves.push_back(GEOSGeom_createLineString_r(geos, points));
    }
    int vertices = 0;
    for (auto _ : state) {
        vertices = 0;
        for (const GEOSGeometry* curve : curves) {
            GEOSGeometry* result = GEOSOffsetCurve_r(geos, curve, -distance, quarter, GEOSBUF_JOIN_ROUND, 5);
            vertices += GEOSGetNumCoordinates_r(geos, result);
            GEOSGeom_destroy_r(geos, result);
        }
    }
    state.counters["vertices"] = vertices;
    for (GEOSGeometry* curve : curves)
        GEOSGeom_destroy_r(geos, curve);
    GEOS_finish_r(geos);
}

void zig_zag_geos(benchmark::State& state)
{
    offset_geos(state, {zig_zag(10000)}, 2);
}
void arcs_geos(benchmark::State& state)
{
    offset_geos(state, roads(), 4);
}
BENCHMARK(zig_zag_geos);
BENCHMARK(arcs_geos);

#endif
#ifdef ZENT_CLIPPER

constexpr double CLIPPER_UNITS = 10000; // its coordinates are whole numbers

void offset_clipper(benchmark::State& state, const std::vector<outline>& lines, double distance,
                    ClipperLib::EndType ends)
{
    std::vector<ClipperLib::Path> paths;
    for (const outline& line : lines) {
        ClipperLib::Path path;
        for (const vertex& v : flattened(line))
            path.emplace_back(std::llround(v.x * CLIPPER_UNITS), std::llround(v.y * CLIPPER_UNITS));
        paths.push_back(path);
    }
    std::size_t vertices = 0;
    for (auto _ : state) {
        vertices = 0;
        for (const ClipperLib::Path& path : paths) {
            ClipperLib::ClipperOffset offset(2, ARC_TOLERANCE * CLIPPER_UNITS);
            offset.AddPath(path, ClipperLib::jtRound, ends);
            ClipperLib::Paths result;
            offset.Execute(result, distance * CLIPPER_UNITS);
            for (const ClipperLib::Path& p : result)
                vertices += p.size();
        }
    }
    state.counters["vertices"] = static_cast<double>(vertices);
}

void zig_zag_clipper(benchmark::State& state)
{
    // Upright: its sweep goes by y, and would have all teeth at a time.
    outline area = zig_zag(10000);
    area.push_back({area.back().x, -100, 0});
    area.push_back({0, -100, 0});
    for (vertex& v : area)
        std::swap(v.x, v.y);
    offset_clipper(state, {area}, 2, ClipperLib::etClosedPolygon);
}
void arcs_clipper(benchmark::State& state)
{
    offset_clipper(state, roads(), 4, ClipperLib::etOpenButt);
}
BENCHMARK(zig_zag_clipper);
BENCHMARK(arcs_clipper);

#endif

} // namespace

BENCHMARK_MAIN();
