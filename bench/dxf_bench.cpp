// A drawing of 100,000 lightweight polylines of ten vertices: its file's lines merely scanned, in two
// ways, then read into a drawing, and written.
//
//     dxf_bench                       makes the file in the temporary directory
//     dxf_bench --make FILE           makes it there and ends (for other programs to read)
//     dxf_bench --file FILE           uses that one
#include <benchmark/benchmark.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <random>
#include <string>

#include "host/core/document.h"
#include "host/database/dxf.h"
#include "host/files/paths.h"

using namespace host;

namespace
{

constexpr int POLYLINES = 100000, VERTICES = 10;
std::string file;

long file_size()
{
    struct stat state {
    };
    return stat(file.c_str(), &state) == 0 ? static_cast<long>(state.st_size) : 0;
}

// Coordinates as surveyors have them: millimetres, far from the origin.
bool make_file(const std::string& path)
{
    std::mt19937 random(20260101);
    std::uniform_int_distribution<int> millimetres(0, 9999999);
    std::ofstream out(path, std::ios::binary);
    out << "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1015\n  0\nENDSEC\n  0\nSECTION\n  2\nENTITIES\n";
    char text[200];
    for (int i = 0; i < POLYLINES; ++i) {
        std::snprintf(
            text, sizeof text,
            "  0\nLWPOLYLINE\n  5\n%X\n100\nAcDbEntity\n  8\n0\n100\nAcDbPolyline\n 90\n%d\n 70\n0\n 43\n0.0\n",
            0x100u + static_cast<unsigned>(i), VERTICES);
        out << text;
        for (int v = 0; v < VERTICES; ++v) {
            std::snprintf(text, sizeof text, " 10\n%.3f\n 20\n%.3f\n", 640000 + millimetres(random) / 1000.0,
                          5120000 + millimetres(random) / 1000.0);
            out << text;
        }
    }
    out << "  0\nENDSEC\n  0\nEOF\n";
    return static_cast<bool>(out.flush());
}

void scan_with_getline(benchmark::State& state)
{
    for (auto _ : state) {
        std::ifstream in(file);
        std::string line;
        std::size_t lines = 0;
        while (std::getline(in, line))
            ++lines;
        benchmark::DoNotOptimize(lines);
    }
    state.SetBytesProcessed(state.iterations() * file_size());
}
BENCHMARK(scan_with_getline)->Unit(benchmark::kMillisecond);

void scan_with_memchr(benchmark::State& state)
{
    for (auto _ : state) {
        const std::string bytes = read_whole(file).value();
        std::size_t lines = 0;
        const char *at = bytes.data(), *const end = at + bytes.size();
        while (const void* next = std::memchr(at, '\n', static_cast<std::size_t>(end - at))) {
            at = static_cast<const char*>(next) + 1;
            ++lines;
        }
        benchmark::DoNotOptimize(lines);
    }
    state.SetBytesProcessed(state.iterations() * file_size());
}
BENCHMARK(scan_with_memchr)->Unit(benchmark::kMillisecond);

void read_drawing(benchmark::State& state)
{
    document doc(1);
    for (auto _ : state) {
        db::dxf_error error;
        const auto drawing = db::read_dxf(file, doc, &error);
        if (!drawing)
            state.SkipWithError(error.text().c_str());
        benchmark::DoNotOptimize(drawing);
    }
    state.SetBytesProcessed(state.iterations() * file_size());
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    state.counters["peak/file"] =
        static_cast<double>(used.ru_maxrss) * 1024.0 / static_cast<double>(std::max(file_size(), 1L));
}
BENCHMARK(read_drawing)->Unit(benchmark::kMillisecond);

void write_drawing(benchmark::State& state)
{
    document doc(1);
    const auto drawing = db::read_dxf(file, doc, nullptr);
    const auto version = static_cast<db::dxf_version>(state.range(0));
    std::size_t size = 0;
    for (auto _ : state)
        size = db::dxf_text(*drawing, version).size();
    state.SetBytesProcessed(state.iterations() * static_cast<long>(size));
}
BENCHMARK(write_drawing)->ArgName("version")->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3 && std::string(argv[1]) == "--make")
        return make_file(argv[2]) ? 0 : 1;
    if (argc > 2 && std::string(argv[1]) == "--file") {
        file = argv[2];
        argv[2] = argv[0];
        argv += 2;
        argc -= 2;
    }
    const bool is_own = file.empty();
    if (is_own) {
        std::string name = "/tmp/zent_dxf_bench_XXXXXX";
        const int descriptor = mkstemp(name.data());
        if (descriptor < 0)
            return 1;
        close(descriptor);
        file = name;
        if (!make_file(file))
            return 1;
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    if (is_own)
        std::remove(file.c_str());
    return 0;
}
