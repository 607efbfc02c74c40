// Points into the tree, looked up and asked for by radius, beside a tree that is built at once from points that
// are all there (nanoflann, where it is installed). Points are scattered; a radius holds about 12 of them.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <random>
#include <vector>

#include "hostapi/ads.h"
#include "spatial/kd_tree.h"
#include "topology/kd_set.h"
#include "topology/objects.h"
#ifdef ZENT_NANOFLANN
#include <nanoflann.hpp>
#endif

void* acad_malloc(std::size_t size)
{
    return std::malloc(size);
}
void acad_free(void* block)
{
    std::free(block);
}
int acutPrintf(const char*, ...)
{
    return RTNORM;
}

namespace
{

constexpr int LEAF = 10;
constexpr double SIDE = 1000; // of the square in which the points lie

struct cloud {
    std::vector<double> x, y;
};

cloud scattered(long count)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> place(0, SIDE);
    cloud points;
    for (long i = 0; i < count; ++i) {
        points.x.push_back(place(random));
        points.y.push_back(place(random));
    }
    return points;
}

double radius_of(const cloud& points)
{
    return 2.0 * SIDE / std::sqrt(static_cast<double>(points.x.size()));
}

kd_tree* tree_of(const cloud& points)
{
    kd_tree* tree = kd_create(1, 2, LEAF);
    for (std::size_t i = 0; i < points.x.size(); ++i)
        kd_add(tree, points.x[i], points.y[i], 0, static_cast<std::int32_t>(i) + 1, nullptr);
    return tree;
}

void report(benchmark::State& state, std::size_t points)
{
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(points));
}

void build_ours(benchmark::State& state)
{
    const cloud points = scattered(state.range(0));
    for (auto _ : state) {
        kd_tree* tree = tree_of(points);
        state.PauseTiming();
        kd_free_list(&tree);
        state.ResumeTiming();
    }
    report(state, points.x.size());
}

void look_ours(benchmark::State& state)
{
    const cloud points = scattered(state.range(0));
    kd_tree* tree = tree_of(points);
    for (auto _ : state)
        for (std::size_t i = 0; i < points.x.size(); ++i)
            benchmark::DoNotOptimize(kd_add(tree, points.x[i], points.y[i], 0, 0, nullptr));
    report(state, points.x.size());
    kd_free_list(&tree);
}

void radius_ours(benchmark::State& state)
{
    const cloud points = scattered(state.range(0));
    const double radius = radius_of(points);
    kd_tree* tree = tree_of(points);
    long found = 0;
    for (auto _ : state)
        for (std::size_t i = 0; i < points.x.size(); ++i) {
            kd_tree* near = kd_radius(tree, points.x[i], points.y[i], 0, radius);
            found += near->point_count;
            kd_free_list(&near);
        }
    report(state, points.x.size());
    state.counters["found"] = static_cast<double>(found) / static_cast<double>(points.x.size()) /
                              static_cast<double>(state.iterations());
    kd_free_list(&tree);
}

void intern_nodes(benchmark::State& state)
{
    const cloud points = scattered(state.range(0));
    for (auto _ : state) {
        KdSet* set = new KdSet(3, LEAF);
        for (std::size_t i = 0; i < points.x.size(); ++i) {
            NodeObj* node = new NodeObj(points.x[i], points.y[i], 0);
            if (set->find(node))
                delete node;
            else
                set->add(node);
        }
        state.PauseTiming();
        delete set;
        state.ResumeTiming();
    }
    report(state, points.x.size());
}

// Edges as a line brings them, each beyond the last: a tree as deep as it has leaves.
void intern_edges(benchmark::State& state)
{
    const auto count = static_cast<std::int32_t>(state.range(0));
    for (auto _ : state) {
        KdSet* set = new KdSet(3, LEAF);
        for (std::int32_t i = 1; i <= count; ++i) {
            TopoObject* edge = new EdgeKey(i, i + 1, 0);
            if (set->find(edge))
                delete edge;
            else
                set->add(edge);
        }
        state.PauseTiming();
        delete set;
        state.ResumeTiming();
    }
    report(state, static_cast<std::size_t>(count));
}

BENCHMARK(build_ours)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(look_ours)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(radius_ours)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(intern_nodes)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(intern_edges)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

#ifdef ZENT_NANOFLANN
struct peer_points {
    const cloud& points;
    std::size_t kdtree_get_point_count() const { return points.x.size(); }
    double kdtree_get_pt(std::size_t i, std::size_t d) const { return d == 0 ? points.x[i] : points.y[i]; }
    template <class Box>
    bool kdtree_get_bbox(Box&) const
    {
        return false;
    }
};
using peer =
    nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, peer_points>, peer_points, 2>;

void build_peer(benchmark::State& state)
{
    const cloud points = scattered(state.range(0));
    const peer_points adaptor{points};
    for (auto _ : state) {
        peer* tree = new peer(2, adaptor, nanoflann::KDTreeSingleIndexAdaptorParams(LEAF));
        tree->buildIndex();
        state.PauseTiming();
        delete tree;
        state.ResumeTiming();
    }
    report(state, points.x.size());
}

void look_peer(benchmark::State& state)
{
    const cloud points = scattered(state.range(0));
    const peer_points adaptor{points};
    peer tree(2, adaptor, nanoflann::KDTreeSingleIndexAdaptorParams(LEAF));
    tree.buildIndex();
    for (auto _ : state)
        for (std::size_t i = 0; i < points.x.size(); ++i) {
            const double at[2] = {points.x[i], points.y[i]};
            std::uint32_t index = 0;
            double distance = 0;
            benchmark::DoNotOptimize(tree.knnSearch(at, 1, &index, &distance));
        }
    report(state, points.x.size());
}

void radius_peer(benchmark::State& state)
{
    const cloud points = scattered(state.range(0));
    const double radius = radius_of(points);
    const peer_points adaptor{points};
    peer tree(2, adaptor, nanoflann::KDTreeSingleIndexAdaptorParams(LEAF));
    tree.buildIndex();
    nanoflann::SearchParams unsorted;
    unsorted.sorted = false;
    for (auto _ : state)
        for (std::size_t i = 0; i < points.x.size(); ++i) {
            const double at[2] = {points.x[i], points.y[i]};
            std::vector<std::pair<std::uint32_t, double>> found;
            benchmark::DoNotOptimize(tree.radiusSearch(at, radius * radius, found, unsorted));
        }
    report(state, points.x.size());
}

BENCHMARK(build_peer)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(look_peer)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(radius_peer)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
#endif

} // namespace

BENCHMARK_MAIN();
