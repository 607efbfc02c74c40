// Operation 15 over many polylines: selecting them, reading them out of the drawing, stroking and
// formatting them, writing the file. Time per polyline must not grow with their number.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

#include "drawing/write.h"
#include "host/core/console.h"
#include "host/core/document.h"
#include "host/lisp/api.h"
#include "hostapi/ads.h"
#include "interchange/polyline_file.h"

namespace
{

constexpr int VERTICES = 10;

// Lightweight polylines on a survey grid; one of ten has an arc.
void draw_polylines(long count)
{
    std::mt19937 random(97);
    std::uniform_real_distribution<double> step(-20, 20);
    for (long i = 0; i < count; ++i) {
        pl_vertex* head = nullptr;
        double x = 640000.0 + static_cast<double>(i % 1000) * 50,
               y = 5120000.0 + static_cast<double>(i / 1000) * 50;
        for (int k = 0; k < VERTICES; ++k) {
            pl_vertex* vertex = pl_vertex_new(x += step(random), y += step(random), 100.0);
            vertex->bulge = i % 10 == 0 && k == 3 ? 0.5 : 0.0;
            vertex->next = head;
            head = vertex;
        }
        pl_write_simple(head, "", 0, static_cast<int>(i % 8), 1);
        pl_free_vertices(head);
    }
}

void write_polylines(benchmark::State& state)
{
    host::close_all_documents();
    // Picks aren't remembered: the drawing has no directory of its own for its settings file.
    host::lisp::evaluate_text(host::open_document(), "(setq do_ini 0)", "bench");
    draw_polylines(state.range(0));
    const auto file = std::filesystem::temp_directory_path() / "zent_polyline_write_bench.lf";
    const std::string answers = "Dtm\n!new\n" + file.string() + "\nall\n\n";
    std::string history, dialogs = ZENT_DIALOGS;
    resbuf folder{nullptr, RTSTR, {}};
    folder.resval.rstring = dialogs.data();
    char no_default[] = "";
    resbuf args{&folder, RTSTR, {}};
    args.resval.rstring = no_default;
    host::capture_history(&history);
    for (auto _ : state) {
        std::filesystem::remove(file);
        host::answers_from_text(answers);
        if (write_polyline_file(&args) != RTNORM)
            state.SkipWithError(history.c_str());
    }
    host::capture_history(nullptr);
    state.counters["file_MB"] = static_cast<double>(std::filesystem::file_size(file)) / 1e6;
    state.SetItemsProcessed(state.iterations() * state.range(0));
    std::filesystem::remove(file);
    host::close_all_documents();
}
BENCHMARK(write_polylines)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
