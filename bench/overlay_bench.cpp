// Overlay of segments: cut where they cross, and the faces between them traced, beside GEOS where it is
// installed.
//
// GEOS does it in the same two steps: a unary union of the lines cuts them, polygonizing gives the faces. Its
// faces are without dangling ends; ours drops a face that a dangling end hangs into. So the input is cut lines
// in which most faces close for both, and faces are counted beside the times.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "polygon/node.h"
#include "topology/shape_net.h"

#ifdef ZENT_GEOS
#include <geos_c.h>
#endif

namespace
{

struct segment {
    double x0, y0, x1, y1;
};

// Segments of uneven length in all directions, each of which crosses some others.
std::vector<segment> scattered(long count)
{
    std::mt19937 random{23};
    const double width = 10 * std::sqrt(static_cast<double>(count));
    std::uniform_real_distribution<double> place(0, width), reach(-15, 15);
    std::vector<segment> segments;
    for (long i = 0; i < count; ++i) {
        const double x = place(random), y = place(random);
        segments.push_back({x, y, x + reach(random), y + reach(random)});
    }
    return segments;
}

void fill(ShapeNet* net, const std::vector<segment>& segments)
{
    for (const segment& s : segments) {
        const double from[3] = {s.x0, s.y0, 0}, to[3] = {s.x1, s.y1, 0};
        pg_node* chain = pg_node_push(from, pg_node_push(to, nullptr, 0), 0);
        net->add_chain(nullptr, chain, 7, 0);
        pl_free_nodes(chain);
    }
}

int count_rings(const pg_ring* ring)
{
    int count = 0;
    for (; ring; ring = ring->next)
        ++count;
    return count;
}

void overlay_ours(benchmark::State& state)
{
    const std::vector<segment> segments = scattered(state.range(0));
    int faces = 0, edges = 0;
    for (auto _ : state) {
        ShapeNet net(3);
        fill(&net, segments);
        net.cut_crossings();
        pg_ring* rings = net.trace_faces();
        faces = count_rings(rings);
        edges = net.edges.count;
        pg_free_rings(&rings);
    }
    state.counters["faces"] = faces;
    state.counters["edges"] = edges;
}
BENCHMARK(overlay_ours)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

#ifdef ZENT_GEOS

void overlay_geos(benchmark::State& state)
{
    const std::vector<segment> segments = scattered(state.range(0));
    const GEOSContextHandle_t geos = GEOS_init_r();
    std::vector<GEOSGeometry*> lines;
    for (const segment& s : segments) {
        GEOSCoordSequence* points = GEOSCoordSeq_create_r(geos, 2, 2);
        GEOSCoordSeq_setXY_r(geos, points, 0, s.x0, s.y0);
        GEOSCoordSeq_setXY_r(geos, points, 1, s.x1, s.y1);
        lines.push_back(GEOSGeom_createLineString_r(geos, points));
    }
    GEOSGeometry* all = GEOSGeom_createCollection_r(geos, GEOS_MULTILINESTRING, lines.data(),
                                                    static_cast<unsigned>(lines.size()));
    int faces = 0;
    for (auto _ : state) {
        GEOSGeometry* cut = GEOSUnaryUnion_r(geos, all);
        const GEOSGeometry* parts[] = {cut};
        GEOSGeometry* polygons = GEOSPolygonize_r(geos, parts, 1);
        faces = GEOSGetNumGeometries_r(geos, polygons);
        GEOSGeom_destroy_r(geos, polygons);
        GEOSGeom_destroy_r(geos, cut);
    }
    state.counters["faces"] = faces;
    GEOSGeom_destroy_r(geos, all);
    GEOS_finish_r(geos);
}
BENCHMARK(overlay_geos)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

#endif

} // namespace

BENCHMARK_MAIN();
