// Centre lines of outlines seen whole from a point, wavy and jagged, and of convex ones, by the number of
// vertices.
#include <benchmark/benchmark.h>

#include "polygon/centre_lines.h"
#include "tests/polygon/outlines.h"

namespace
{

outlines::spots outline_of(std::int64_t kind, int count)
{
    return kind == 0 ? outlines::convex(1, count) : outlines::star(1, count, kind == 1 ? 0.9 : 0.3);
}

void centre_lines(benchmark::State& state)
{
    const chain_ptr chain = outlines::closed(outline_of(state.range(0), static_cast<int>(state.range(1))));
    for (auto _ : state) {
        pg_ring* rings = pg_centre_lines(chain.get(), 1.0, 0, 0);
        benchmark::DoNotOptimize(rings);
        pg_free_rings(&rings);
    }
}
BENCHMARK(centre_lines)->ArgsProduct({{0, 1, 2}, {1000, 10000}})->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
