// A drawn step of the pointer tool (operation 1) on a lightweight polyline, from the answer that asks for it to
// the next prompt: the object is erased and made again, so time per vertex must not grow with their number.
// The peer is what any tool does that changes a polyline: reading it once and writing it once.
#include <benchmark/benchmark.h>

#include <cmath>
#include <ctime>
#include <optional>
#include <string>

#include "drawing/read.h"
#include "drawing/write.h"
#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/module.h"
#include "host/lisp/api.h"
#include "hostapi/ads.h"
#include "hostapi/editor.h"

namespace
{

constexpr int STEPS = 4; // a session; the one that goes straight on and the bend, twice

double processor_seconds()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// A traverse that wanders east, an arc in ten segments.
void draw_polyline(long count)
{
    pl_vertex* head = nullptr;
    for (long i = 0; i < count; ++i) {
        const auto along = static_cast<double>(count - i);
        pl_vertex* vertex = pl_vertex_new(640000.0 - along * 5.0, 5120000.0 + 3.0 * std::sin(along), 100.0);
        vertex->bulge = i % 10 == 3 ? 0.25 : 0.0;
        vertex->next = head;
        head = vertex;
    }
    pl_write_simple(head, "", 0, 3, 1);
    pl_free_vertices(head);
}

// A new drawing with the module and the polyline.
void new_drawing(long vertices)
{
    host::close_all_documents();
    host::open_document();
    draw_polyline(vertices);
}

// The answers of a session: the end of the polyline is picked, steps are drawn, Enter. The processor's time
// between an answer that asks for a step and the prompt behind it is added up.
class step_clock
{
public:
    std::optional<std::string> next()
    {
        const double now = processor_seconds();
        if (asked_ > 0.0)
            seconds += now - asked_;
        asked_ = 0.0;
        const int answer = answered_++;
        if (answer == 0)
            return "#last 639994.5,5120002.5";
        if (answer > STEPS)
            return "";
        asked_ = processor_seconds();
        return answer % 2 ? "1.5" : "R1.5";
    }
    double seconds = 0.0;

private:
    int answered_ = 0;
    double asked_ = 0.0;
};

void drawn_step(benchmark::State& state)
{
    std::string history;
    host::capture_history(&history);
    const host::lisp::ending done = host::lisp::ending::done;
    for (auto _ : state) {
        new_drawing(state.range(0));
        host::load_module(acrxEntryPoint, "zentutil");
        step_clock clock;
        host::answers_from([&] { return clock.next(); });
        const auto outcome =
            host::lisp::evaluate_text(host::current_document(), "(cf:zentutil \"\" 1)", "bench");
        if (outcome.how != done || host::answers_ended() || !(clock.seconds > 0.0))
            state.SkipWithError(history.c_str());
        state.SetIterationTime(clock.seconds / STEPS);
        host::unload_all_modules();
    }
    host::capture_history(nullptr);
    host::close_all_documents();
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void read_and_write(benchmark::State& state)
{
    for (auto _ : state) {
        new_drawing(state.range(0));
        ads_name name;
        if (acdbEntLast(name) != RTNORM)
            state.SkipWithError("there is no polyline");
        const double start = processor_seconds();
        const pline_props props = pl_get_props(name);
        pl_vertex* chain = pl_read_vertices(name);
        pl_write_vertices(chain, props, 0, 0, 1);
        state.SetIterationTime(processor_seconds() - start);
        pl_free_vertices(chain);
    }
    host::close_all_documents();
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(drawn_step)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond)->UseManualTime();
BENCHMARK(read_and_write)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond)->UseManualTime();

} // namespace

BENCHMARK_MAIN();
