// Triangulation: reading points and the run, by order of the points, with and without breaklines. tin_peer does
// the same with CGAL.
#include <benchmark/benchmark.h>

#include <malloc.h>

#include <cstdlib>

#include "bench/clouds.h"
#include "hostapi/ads.h"
#include "tin/network.h"

namespace
{
std::size_t live = 0, peak = 0;
} // namespace

// The heap's own share of a block is counted too.
void* acad_malloc(std::size_t size)
{
    void* block = std::malloc(size);
    live += malloc_usable_size(block) + sizeof(std::size_t);
    peak = std::max(peak, live);
    return block;
}
void acad_free(void* block)
{
    if (block)
        live -= malloc_usable_size(block) + sizeof(std::size_t);
    std::free(block);
}
int acutPrintf(const char*, ...)
{
    return RTNORM;
}
int acedUsrBrk()
{
    return 0;
}
int acdbInters(const ads_point a, const ads_point b, const ads_point c, const ads_point d, int, ads_point)
{
    const double denominator = (b[0] - a[0]) * (d[1] - c[1]) - (b[1] - a[1]) * (d[0] - c[0]);
    if (denominator == 0)
        return RTERROR;
    const double t = ((c[0] - a[0]) * (d[1] - c[1]) - (c[1] - a[1]) * (d[0] - c[0])) / denominator;
    const double u = ((c[0] - a[0]) * (b[1] - a[1]) - (c[1] - a[1]) * (b[0] - a[0])) / denominator;
    return t >= 0 && t <= 1 && u >= 0 && u <= 1 ? RTNORM : RTERROR;
}

namespace
{

// Offers points so that they are inserted in their order: the list that is handed over is backwards.
std::vector<tin_point*> read(tin_network* network, const std::vector<clouds::spot>& spots)
{
    std::vector<tin_point*> points(spots.size());
    tin_point* list = nullptr;
    for (std::size_t i = spots.size(); i-- > 0;) {
        tin_point* p = tin_point_new(spots[i].x, spots[i].y, 0.5);
        points[i] = p;
        if (tin_add_point(network, p))
            std::abort();
        tin_keep_point(network, p, &list);
    }
    network->points = list;
    return points;
}

void add_barriers(tin_network* network, const std::vector<tin_point*>& points,
                  const std::vector<std::array<int, 2>>& lines)
{
    for (auto line = lines.rbegin(); line != lines.rend(); ++line)
        tin_add_barrier(network, points[static_cast<std::size_t>((*line)[0])],
                        points[static_cast<std::size_t>((*line)[1])]);
}

void run(benchmark::State& state, const std::vector<clouds::spot>& spots,
         const std::vector<std::array<int, 2>>& lines, int split)
{
    double bytes = 0, failed = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto* network = new tin_network;
        network->split_on_barriers = split;
        peak = live;
        const std::size_t before = live;
        add_barriers(network, read(network, spots), lines);
        state.ResumeTiming();
        tin_triangulate(network);
        state.PauseTiming();
        bytes = static_cast<double>(peak - before) / static_cast<double>(spots.size());
        failed = network->failed_barriers;
        delete network;
        state.ResumeTiming();
    }
    state.counters["bytes_a_point"] = bytes;
    state.counters["failed"] = failed;
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(spots.size()));
}

void triangulate(benchmark::State& state, int kind)
{
    run(state, clouds::cloud(kind, static_cast<int>(state.range(0))), {}, 0);
}

void with_breaklines(benchmark::State& state, int split)
{
    const auto spots = clouds::cloud(clouds::scattered, static_cast<int>(state.range(0)));
    run(state, spots, clouds::breaklines(spots, static_cast<int>(state.range(0)) / 10), split);
}

void reading(benchmark::State& state, int kind)
{
    const auto spots = clouds::cloud(kind, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        auto* network = new tin_network;
        read(network, spots);
        state.PauseTiming();
        delete network;
        state.ResumeTiming();
    }
}

BENCHMARK_CAPTURE(triangulate, scattered, clouds::scattered)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(triangulate, sorted, clouds::sorted)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(triangulate, sections, clouds::sections)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(triangulate, grid, clouds::grid)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(with_breaklines, as_they_are, 0)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(with_breaklines, split, 1)
    ->RangeMultiplier(10)
    ->Range(10000, 100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(reading, scattered, clouds::scattered)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
