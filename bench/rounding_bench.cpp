// Rounding a corner of a closed outline of N vertices, and beside it the centre lines of that outline, on which
// it spends most of its time.
#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>
#include <random>

#include "polygon/centre_lines.h"
#include "polygon/rounding.h"

namespace
{

// A quarter disc with a wavy rim. Its square corner at (0, 0) is its head and is rounded.
pg_node* outline(long vertices)
{
    std::mt19937 random{29};
    std::uniform_real_distribution<double> wave(-2, 2);
    pg_node* head = nullptr;
    const double radius = 100.0 * static_cast<double>(vertices);
    for (long i = vertices - 1; i > 0; --i) {
        const double direction = std::numbers::pi / 2 * static_cast<double>(i) / static_cast<double>(vertices);
        const double at[3] = {(radius + wave(random)) * std::cos(direction),
                              (radius + wave(random)) * std::sin(direction), 0};
        head = pg_node_push(at, head, 0.0);
    }
    const double corner[3] = {};
    pg_node* closed = pg_node_push(corner, head, 0.0);
    while (head->next)
        head = head->next;
    head->next = pg_node_push(corner, nullptr, 0.0);
    return closed;
}

void round_corner(benchmark::State& state)
{
    pg_node* chain = outline(state.range(0));
    const double corner[3] = {};
    for (auto _ : state) {
        pg_node* rounded = pg_round_corner(&chain, corner, 20.0);
        if (!rounded) {
            state.SkipWithError("nothing was rounded");
            break;
        }
        pl_free_nodes(rounded);
    }
    pl_free_nodes(chain);
}

void centre_lines(benchmark::State& state)
{
    pg_node* chain = outline(state.range(0));
    for (auto _ : state) {
        pg_ring* rings = pg_centre_lines(chain, 1.0, 0, 1);
        benchmark::DoNotOptimize(rings);
        pg_free_rings(&rings);
    }
    pl_free_nodes(chain);
}

BENCHMARK(round_corner)->Arg(1'000)->Arg(10'000);
BENCHMARK(centre_lines)->Arg(1'000)->Arg(10'000);

} // namespace

BENCHMARK_MAIN();
