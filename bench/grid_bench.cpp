// Grids from and to text files, beside the ASCII grid driver of GDAL, where it is installed. Both hold
// elevations as doubles and write them with four decimals; one cell in fifty is null.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "grid/grid.h"
#ifdef ZENT_GDAL
#include <cpl_conv.h>
#include <cpl_string.h>
#include <gdal.h>
#endif

namespace
{

bool is_null(int cell)
{
    return cell % 50 == 7;
}

double elevation(int column, int row)
{
    return 250 + 120 * std::sin(column * 0.013) * std::cos(row * 0.017) +
           3 * std::sin(column * 1.7 + row * 0.9);
}

// A directory of the run's own.
const std::string& directory()
{
    struct place {
        std::string path = (std::filesystem::temp_directory_path() / "grid_bench_XXXXXX").string();
        place()
        {
            if (!mkdtemp(path.data()))
                std::abort();
        }
        ~place() { std::filesystem::remove_all(path); }
    };
    static const place made;
    return made.path;
}

grid* terrain(int side)
{
    grid* g = grid_create(1000, 2000, 2, 2, side - 1, side - 1);
    for (int i = 0; i < side * side; ++i)
        grid_write_cell(g, i, is_null(i) ? grid_cell() : grid_cell{elevation(i % side, i / side), CELL_VALUE});
    return g;
}

void rate(benchmark::State& state)
{
    state.counters["cells/s"] = benchmark::Counter(static_cast<double>(state.range(0) * state.range(0)),
                                                   benchmark::Counter::kIsIterationInvariantRate);
}

void save_ours(benchmark::State& state)
{
    grid* g = terrain(static_cast<int>(state.range(0)));
    const std::string path = directory() + "/ours";
    for (auto _ : state)
        if (!grid_save(g, path.c_str()))
            state.SkipWithError("not saved");
    rate(state);
    grid_free(&g);
}

void load_ours(benchmark::State& state)
{
    grid* g = terrain(static_cast<int>(state.range(0)));
    const std::string path = directory() + "/ours";
    grid_save(g, path.c_str());
    grid_free(&g);
    for (auto _ : state) {
        g = grid_load(path.c_str());
        if (!g)
            state.SkipWithError("not loaded");
        grid_free(&g);
    }
    rate(state);
}

#ifdef ZENT_GDAL

constexpr double GDAL_NULL = -9999;

// Everything in memory, as the driver's source when it writes and its target when it reads.
GDALDatasetH peer_terrain(std::vector<double>& values, int side)
{
    values.resize(static_cast<std::size_t>(side) * side);
    for (int i = 0; i < side * side; ++i)
        values[i] = is_null(i) ? GDAL_NULL : elevation(i % side, i / side);
    GDALAllRegister();
    GDALDatasetH made = GDALCreate(GDALGetDriverByName("MEM"), "", side, side, 1, GDT_Float64, nullptr);
    double place[] = {1000, 2, 0, 2000 + 2.0 * side, 0, -2};
    GDALSetGeoTransform(made, place);
    GDALRasterBandH band = GDALGetRasterBand(made, 1);
    GDALSetRasterNoDataValue(band, GDAL_NULL);
    if (GDALRasterIO(band, GF_Write, 0, 0, side, side, values.data(), side, side, GDT_Float64, 0, 0) != CE_None)
        std::abort();
    return made;
}

bool save_peer_file(GDALDatasetH from, const std::string& path)
{
    char** options = CSLSetNameValue(nullptr, "DECIMAL_PRECISION", "4");
    GDALDatasetH out =
        GDALCreateCopy(GDALGetDriverByName("AAIGrid"), path.c_str(), from, FALSE, options, nullptr, nullptr);
    CSLDestroy(options);
    if (!out)
        return false;
    GDALClose(out);
    return true;
}

void save_peer(benchmark::State& state)
{
    std::vector<double> values;
    GDALDatasetH from = peer_terrain(values, static_cast<int>(state.range(0)));
    const std::string path = directory() + "/peer.asc";
    for (auto _ : state)
        if (!save_peer_file(from, path))
            state.SkipWithError("not saved");
    rate(state);
    GDALClose(from);
}

void load_peer(benchmark::State& state)
{
    const int side = static_cast<int>(state.range(0));
    std::vector<double> values;
    GDALDatasetH from = peer_terrain(values, side);
    const std::string path = directory() + "/peer.asc";
    save_peer_file(from, path);
    GDALClose(from);
    CPLSetConfigOption("AAIGRID_DATATYPE", "Float64");
    for (auto _ : state) {
        GDALDatasetH in = GDALOpen(path.c_str(), GA_ReadOnly);
        if (!in || GDALRasterIO(GDALGetRasterBand(in, 1), GF_Read, 0, 0, side, side, values.data(), side, side,
                                GDT_Float64, 0, 0) != CE_None)
            state.SkipWithError("not loaded");
        GDALClose(in);
    }
    rate(state);
}

BENCHMARK(save_peer)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond);
BENCHMARK(load_peer)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond);
#endif

BENCHMARK(save_ours)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond);
BENCHMARK(load_ours)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
