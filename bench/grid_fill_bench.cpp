// Elevations between the cells of a grid, and the filling of its null cells: a tenth of rolling ground, half of
// it scattered, half in round holes of up to 12 cells radius. The peer for filling is GDAL, where it is
// installed.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "grid/fill.h"
#include "grid/interpolate.h"
#include "hostapi/ads.h"
#ifdef ZENT_GDAL
#include <gdal.h>
#include <gdal_alg.h>
#endif

namespace
{

constexpr double NULL_PART = 0.1;
constexpr int PLACES = 1000000;
constexpr std::int32_t IN_MEMORY = 500; // cells along a side; more than 600 are kept in a file

struct ground {
    std::int32_t side; // cells
    std::vector<double> z;
    std::vector<bool> is_null;
    long null_cells = 0;
};

void punch(ground* out, long middle, int radius)
{
    const long side = out->side;
    for (long row = std::max(middle / side - radius, 0L); row <= std::min(middle / side + radius, side - 1);
         ++row)
        for (long column = std::max(middle % side - radius, 0L);
             column <= std::min(middle % side + radius, side - 1); ++column) {
            const long across = column - middle % side, up = row - middle / side;
            if (across * across + up * up > static_cast<long>(radius) * radius ||
                out->is_null[row * side + column])
                continue;
            out->is_null[row * side + column] = true;
            ++out->null_cells;
        }
}

ground with_holes(std::int32_t side, double null_part)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> rough(0, 0.5);
    ground out{side, {}, {}};
    const long cells = static_cast<long>(side) * side;
    out.z.resize(cells);
    out.is_null.resize(cells);
    for (long i = 0; i < cells; ++i)
        out.z[i] = std::sin(static_cast<double>(i % side) / 40) * 20 +
                   std::cos(static_cast<double>(i / side) / 70) * 11 + rough(random);
    std::uniform_int_distribution<long> any_cell(0, cells - 1);
    std::uniform_int_distribution<int> any_radius(1, 12);
    const double wanted = null_part * static_cast<double>(cells);
    while (static_cast<double>(out.null_cells) < wanted / 2)
        punch(&out, any_cell(random), 0);
    while (static_cast<double>(out.null_cells) < wanted)
        punch(&out, any_cell(random), any_radius(random));
    return out;
}

grid* grid_of(const ground& from)
{
    grid* g = grid_create(0, 0, 1, 1, from.side - 1, from.side - 1);
    for (std::int32_t i = 0; i < grid_cell_count(g); ++i)
        grid_write_cell(g, i, from.is_null[i] ? grid_cell() : grid_cell{from.z[i], CELL_VALUE});
    grid_flush(g);
    return g;
}

void interpolate(benchmark::State& state, double (*elevation)(const double*, grid*), std::int32_t side,
                 bool in_rows)
{
    grid* g = grid_of(with_holes(side, 0));
    std::mt19937 random(6);
    std::uniform_real_distribution<double> place(2, side - 4);
    std::vector<double> points;
    for (int i = 0; i < PLACES; ++i) {
        points.push_back(in_rows ? 2 + i % 1000 * ((side - 6) / 1000.0) : place(random));
        points.push_back(in_rows ? 2 + i / 1000 * ((side - 6) / 1000.0) : place(random));
    }
    for (auto _ : state)
        for (int i = 0; i < PLACES; ++i)
            benchmark::DoNotOptimize(elevation(&points[2 * i], g));
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * PLACES);
    grid_free(&g);
}

void linear(benchmark::State& state)
{
    interpolate(state, grid_interpolate, static_cast<std::int32_t>(state.range(0)), state.range(1));
}

void cubic(benchmark::State& state)
{
    interpolate(state, grid_interpolate_cubic, static_cast<std::int32_t>(state.range(0)), state.range(1));
}

void fill_ours(benchmark::State& state, char mode)
{
    const ground from = with_holes(static_cast<std::int32_t>(state.range(0)), NULL_PART);
    grid_fill_quiet = 2; // prints nothing, ends nowhere
    long left = 0;
    for (auto _ : state) {
        state.PauseTiming();
        grid* g = grid_of(from);
        state.ResumeTiming();
        if (grid_fill_nulls(g, static_cast<std::int32_t>(from.null_cells), mode) != RTNORM)
            state.SkipWithError("not filled");
        state.PauseTiming();
        for (std::int32_t i = 0; i < grid_cell_count(g); ++i)
            left += grid_read_cell(g, i).state != CELL_VALUE;
        grid_free(&g);
        state.ResumeTiming();
    }
    state.counters["nulls"] = static_cast<double>(from.null_cells);
    state.counters["left"] = static_cast<double>(left);
}

#ifdef ZENT_GDAL
// A raster by one of GDAL's drivers; holes are -9999.
GDALDatasetH raster_of(const ground& from, const char* driver, const char* path)
{
    GDALDatasetH raster =
        GDALCreate(GDALGetDriverByName(driver), path, from.side, from.side, 1, GDT_Float64, nullptr);
    GDALRasterBandH band = GDALGetRasterBand(raster, 1);
    std::vector<double> z = from.z;
    for (std::size_t i = 0; i < z.size(); ++i)
        if (from.is_null[i])
            z[i] = -9999;
    GDALSetRasterNoDataValue(band, -9999);
    if (GDALRasterIO(band, GF_Write, 0, 0, from.side, from.side, z.data(), from.side, from.side, GDT_Float64, 0,
                     0) != CE_None)
        return nullptr;
    return raster;
}

bool fill(GDALDatasetH raster)
{
    return GDALFillNodata(GDALGetRasterBand(raster, 1), nullptr, 100, 0, 0, nullptr, nullptr, nullptr) ==
           CE_None;
}

void fill_gdal(benchmark::State& state)
{
    const ground from = with_holes(static_cast<std::int32_t>(state.range(0)), NULL_PART);
    GDALAllRegister();
    for (auto _ : state) {
        state.PauseTiming();
        GDALDatasetH raster = raster_of(from, "MEM", "");
        state.ResumeTiming();
        if (!raster || !fill(raster))
            state.SkipWithError("not filled");
        state.PauseTiming();
        GDALClose(raster);
        state.ResumeTiming();
    }
}

// From a file into the file, as ours.
void fill_gdal_file(benchmark::State& state)
{
    const ground from = with_holes(static_cast<std::int32_t>(state.range(0)), NULL_PART);
    const std::string path = std::filesystem::temp_directory_path() / "grid_fill_bench.tif";
    GDALAllRegister();
    for (auto _ : state) {
        state.PauseTiming();
        GDALClose(raster_of(from, "GTiff", path.c_str()));
        state.ResumeTiming();
        GDALDatasetH raster = GDALOpen(path.c_str(), GA_Update);
        if (!raster || !fill(raster))
            state.SkipWithError("not filled");
        GDALClose(raster);
    }
    std::filesystem::remove(path);
}
#endif

} // namespace

BENCHMARK(linear)
    ->Unit(benchmark::kMillisecond)
    ->Args({IN_MEMORY, 0})
    ->Args({IN_MEMORY, 1})
    ->Args({4000, 1})
    ->Args({1000, 0});
BENCHMARK(cubic)
    ->Unit(benchmark::kMillisecond)
    ->Args({IN_MEMORY, 0})
    ->Args({IN_MEMORY, 1})
    ->Args({4000, 1})
    ->Args({1000, 0});
BENCHMARK_CAPTURE(fill_ours, curved, 'C')->Unit(benchmark::kMillisecond)->Arg(IN_MEMORY)->Arg(1000)->Arg(4000);
BENCHMARK_CAPTURE(fill_ours, planar, 'P')->Unit(benchmark::kMillisecond)->Arg(IN_MEMORY)->Arg(1000)->Arg(4000);
BENCHMARK_CAPTURE(fill_ours, average, 'A')->Unit(benchmark::kMillisecond)->Arg(IN_MEMORY)->Arg(1000)->Arg(4000);
#ifdef ZENT_GDAL
BENCHMARK(fill_gdal_file)->Unit(benchmark::kMillisecond)->Arg(1000)->Arg(4000);
BENCHMARK(fill_gdal)->Unit(benchmark::kMillisecond)->Arg(IN_MEMORY)->Arg(1000)->Arg(4000);
#endif

BENCHMARK_MAIN();
