// Surfaces: an edge file read, faces closed, volumes of all triangles, points looked for with their elevation,
// a chain merged in. The ground is a wavy square of cells with two triangles each, or with none where faces are
// closed.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>

#include "common/tolerances.h"
#include "host/core/plain_host.h"
#include "topology/surface_net.h"

namespace
{

struct spot {
    double at[3];
};

spot ground(int column, int row)
{
    const double x = 640000 + 10.0 * column + std::sin(row), y = 5120000 + 10.0 * row + std::cos(column);
    return {{x, y, 100 + 20 * std::sin(x / 90) + 15 * std::cos(y / 70)}};
}

int side_of(long triangles)
{
    return static_cast<int>(std::lround(std::sqrt(static_cast<double>(triangles) / 2)));
}

void fill_with_triangles(SurfaceNet* net, int side)
{
    for (int r = 0; r < side; ++r)
        for (int c = 0; c < side; ++c) {
            const spot a = ground(c, r), b = ground(c + 1, r), p = ground(c + 1, r + 1), q = ground(c, r + 1);
            net->triangle_from_points(a.at, b.at, p.at);
            net->triangle_from_points(a.at, p.at, q.at);
        }
}

void fill_with_squares(SurfaceNet* net, int side)
{
    const auto line = [&](const spot& p, const spot& q) {
        const std::int32_t a = net->intern_node(p.at), b = net->intern_node(q.at);
        net->intern_edge(a, b, 0);
    };
    for (int r = 0; r <= side; ++r)
        for (int c = 0; c <= side; ++c) {
            if (c < side)
                line(ground(c, r), ground(c + 1, r));
            if (r < side)
                line(ground(c, r), ground(c, r + 1));
        }
}

void build(benchmark::State& state)
{
    for (auto _ : state) {
        SurfaceNet net;
        fill_with_triangles(&net, side_of(state.range(0)));
        benchmark::DoNotOptimize(net.triangles.count);
    }
}

void volume(benchmark::State& state)
{
    SurfaceNet net;
    fill_with_triangles(&net, side_of(state.range(0)));
    for (auto _ : state) {
        double cut = 0, fill = 0;
        for (std::int32_t id = 1; id <= net.triangles.count; ++id) {
            double above, area_above, below, area_below;
            net.triangle_volume(id, 100, &above, &area_above, &below, &area_below);
            cut += above;
            fill += below;
        }
        benchmark::DoNotOptimize(cut + fill);
    }
}

// One scattered point a pass; the index is made beforehand.
void elevation(benchmark::State& state)
{
    SurfaceNet net;
    const int side = side_of(state.range(0));
    fill_with_triangles(&net, side);
    std::mt19937 random(1);
    std::uniform_real_distribution<> place(20, 10.0 * side - 20);
    const double first[3] = {640000 + place(random), 5120000 + place(random), 0};
    triangle_cache = {}; // a hit there would leave the index to the first pass
    net.find_triangle(first);
    for (auto _ : state) {
        const double at[3] = {640000 + place(random), 5120000 + place(random), 0};
        const std::int32_t id = net.find_triangle(at);
        benchmark::DoNotOptimize(id > 0 ? net.triangle_elevation(id, at) : NO_ELEVATION);
    }
}

void close_squares(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto* net = new SurfaceNet;
        fill_with_squares(net, side_of(state.range(0)));
        state.ResumeTiming();
        net->close_faces();
        state.PauseTiming();
        if (net->triangles.count != 2 * side_of(state.range(0)) * side_of(state.range(0)))
            state.SkipWithError("faces are missing");
        delete net;
        state.ResumeTiming();
    }
}

void merge(benchmark::State& state)
{
    const int side = side_of(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto* net = new SurfaceNet;
        fill_with_triangles(net, side);
        const double p[3] = {640000 - 7, 5120000 + 3, 0},
                     q[3] = {640000 + 10.0 * side + 7, 5120000 + 9.7 * side, 0};
        pg_node* chain = pg_node_push(p, pg_node_push(q, nullptr, 0), 0);
        state.ResumeTiming();
        net->merge_chain(chain);
        state.PauseTiming();
        pl_free_nodes(chain);
        delete net;
        state.ResumeTiming();
    }
}

// The edges of all squares, as text.
void load(benchmark::State& state)
{
    const int side = side_of(state.range(0));
    const std::filesystem::path path = std::filesystem::temp_directory_path() / "surface_bench_edges.txt";
    {
        std::ofstream out(path);
        out.precision(12);
        out << "ground\n";
        const auto line = [&](const spot& p, const spot& q) {
            for (const spot* s : {&p, &q})
                out << "A " << s->at[0] << ' ' << s->at[1] << ' ' << s->at[2] << '\n';
        };
        for (int r = 0; r <= side; ++r)
            for (int c = 0; c <= side; ++c) {
                if (c < side)
                    line(ground(c, r), ground(c + 1, r));
                if (r < side)
                    line(ground(c, r), ground(c, r + 1));
            }
    }
    host::plain_print_to([](const char*) {});
    for (auto _ : state) {
        SurfaceNet net;
        if (!net.load_edges(path.c_str(), 0) || net.edges.count == 0)
            state.SkipWithError("the file was not read");
        state.counters["edges"] = net.edges.count;
    }
    std::filesystem::remove(path);
}

#define SIZES Arg(10'000)->Arg(100'000)->Arg(1'000'000)
BENCHMARK(build)->SIZES->Unit(benchmark::kMillisecond);
BENCHMARK(volume)->SIZES->Unit(benchmark::kMillisecond);
BENCHMARK(elevation)->SIZES->Unit(benchmark::kNanosecond);
BENCHMARK(close_squares)->SIZES->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(merge)->SIZES->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(load)->SIZES->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
