// Work over long chains, at sizes ten times apart: each must grow about as its input does.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <random>

#include "hostapi/ads.h"
#include "polygon/crossing.h"
#include "polygon/flatten.h"

void* acad_malloc(std::size_t size)
{
    return std::malloc(size);
}
void acad_free(void* block)
{
    std::free(block);
}

namespace
{

// A wandering line with an arc in every fourth segment, from (0, y) eastward.
pg_node* wandering(long count, double y, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> step(-0.4, 0.4);
    pg_node* head = nullptr;
    for (long i = count; i > 0; --i) {
        const double point[3] = {static_cast<double>(i), y + step(random), 0};
        head = pg_node_push(point, head, i % 4 == 0 ? step(random) : 0.0);
    }
    return head;
}

// Two lines side by side that meet at their far end alone.
void first_crossing_at_the_end(benchmark::State& state)
{
    const long count = static_cast<long>(state.range(0));
    pg_node* a = wandering(count, 0.0, 1);
    pg_node* b = wandering(count, 1.5, 2);
    pg_node* last = b;
    while (last->next)
        last = last->next;
    last->y = -5;
    double distance = 0, point[3];
    int side = 0;
    for (auto _ : state)
        if (!pg_first_crossing(a, b, &distance, &side, point, 1e-6)) {
            state.SkipWithError("no crossing");
            break;
        }
    pl_free_nodes(a);
    pl_free_nodes(b);
}

// Scattered long needles: their boxes meet everywhere, and so do they, near the first segment's start.
void first_crossing_of_needles(benchmark::State& state)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> place(0, 1000);
    pg_node* chains[2] = {};
    for (pg_node*& head : chains)
        for (long i = 0; i < static_cast<long>(state.range(0)); ++i) {
            const double point[3] = {place(random), place(random), 0};
            head = pg_node_push(point, head, 0.0);
        }
    double distance = 0, point[3];
    int side = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(pg_first_crossing(chains[0], chains[1], &distance, &side, point, 1e-6));
    for (pg_node* head : chains)
        pl_free_nodes(head);
}

// Arcs to `count` chords, thinned as finely as `tolerance` says.
void flatten_arcs(benchmark::State& state, double tolerance)
{
    for (auto _ : state) {
        state.PauseTiming();
        pg_node* chain = nullptr;
        for (long i = static_cast<long>(state.range(0)) / 291; i >= 0; --i) {
            const double point[3] = {static_cast<double>(i) * 100.0, 0, 0};
            chain = pg_node_push(point, chain, i % 2 ? 1.0 : -1.0);
        }
        state.ResumeTiming();
        pg_flatten(chain, tolerance);
        state.PauseTiming();
        pl_free_nodes(chain);
        state.ResumeTiming();
    }
}

// One chain of added nodes on a flat curve: the one that takes most passes.
void weed_one_long_curve(benchmark::State& state)
{
    const long count = static_cast<long>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        pg_node* chain = nullptr;
        for (long i = count; i >= 0; --i) {
            const double turned = 3.0 * static_cast<double>(i) / static_cast<double>(count);
            const double point[3] = {1000 * std::cos(turned), 1000 * std::sin(turned), 0};
            chain = pg_node_push(point, chain, 0.0);
            chain->keep = 0;
        }
        state.ResumeTiming();
        pg_weed(chain, 0.1);
        state.PauseTiming();
        pl_free_nodes(chain);
        state.ResumeTiming();
    }
}

BENCHMARK(first_crossing_at_the_end)->Arg(1000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(first_crossing_of_needles)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(flatten_arcs, all_chords, 0.0)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(flatten_arcs, as_in_use, 0.1)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(weed_one_long_curve)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
