// cf:chgpnts over drawings of lines, points, lightweight and space polylines and survey point blocks, from the
// selection to the last change. The peer is what any tool over these objects does at least: reading the list
// of each once, those of what it owns too. `times_peer` must stay under ten and not grow with the drawing.
#include <benchmark/benchmark.h>

#include <chrono>
#include <string>

#include "drawing/write.h"
#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/resbuf.h"
#include "host/database/sysvars.h"
#include "hostapi/ads.h"
#include "tools/elevation_change.h"

namespace
{

using stop_watch = std::chrono::steady_clock;

double seconds_since(stop_watch::time_point start)
{
    return std::chrono::duration<double>(stop_watch::now() - start).count();
}

enum kind { lines, points, lightweights, space_polylines, survey_points, mixed };
constexpr const char* KIND_NAMES[] = {"lines",           "points",        "lightweights",
                                      "space polylines", "survey points", "mixed"};

void make(host::list_builder& list)
{
    const host::list_ptr groups(list.take());
    acdbEntMake(groups.get());
}

void begin(host::list_builder& list, const char* type)
{
    list.add(host::rb_text(RTDXF0, type));
}

// Two attributes, one of which tells the elevation.
void define_survey_point()
{
    const double origin[3] = {0, 0, 0}, above[3] = {1, 1, 0};
    host::list_builder block, mark, tag, end;
    begin(block, "BLOCK");
    make(block.add(host::rb_text(2, "SRVPNO1")).add(host::rb_int(70, 2)).add(host::rb_point(10, origin)));
    begin(mark, "POINT");
    make(mark.add(host::rb_point(10, origin)));
    for (const char* name : {"PT#", "ELEV2"}) {
        begin(tag, "ATTDEF");
        tag.add(host::rb_text(2, name)).add(host::rb_text(3, name)).add(host::rb_text(1, ""));
        make(tag.add(host::rb_int(70, 0)).add(host::rb_real(40, 1.0)).add(host::rb_point(10, above)));
    }
    begin(end, "ENDBLK");
    make(end);
}

void make_survey_point(const double* at)
{
    host::list_builder insert, attribute, end;
    begin(insert, "INSERT");
    make(insert.add(host::rb_int(66, 1)).add(host::rb_text(2, "SRVPNO1")).add(host::rb_point(10, at)));
    for (const char* name : {"PT#", "ELEV2"}) {
        begin(attribute, "ATTRIB");
        attribute.add(host::rb_text(2, name)).add(host::rb_text(1, "100.25")).add(host::rb_int(70, 0));
        make(attribute.add(host::rb_real(40, 1.0)).add(host::rb_point(10, at)));
    }
    begin(end, "SEQEND");
    make(end);
}

void make_polyline(const double* at, bool in_space)
{
    pl_vertex* head = nullptr;
    for (int i = 0; i < 5; ++i) {
        pl_vertex* vertex = pl_vertex_new(at[0] + i * 3.0, at[1] + i % 2, at[2] + (in_space ? i : 0));
        vertex->next = head;
        head = vertex;
    }
    pl_write_simple(head, "", 0, 3, in_space ? 0 : 1);
    pl_free_vertices(head);
}

void make_object(kind which, const double* at)
{
    host::list_builder list;
    const double end[3] = {at[0] + 5, at[1] + 5, at[2] + 1};
    switch (which) {
    case lines:
        begin(list, "LINE");
        make(list.add(host::rb_point(10, at)).add(host::rb_point(11, end)));
        break;
    case points:
        begin(list, "POINT");
        make(list.add(host::rb_point(10, at)));
        break;
    case survey_points:
        make_survey_point(at);
        break;
    default:
        make_polyline(at, which == space_polylines);
    }
}

void draw(kind which, long count)
{
    host::close_all_documents();
    host::open_document();
    host::db::set_int(host::current_document(), "CMDECHO", 0); // as the product's own command has it
    define_survey_point();
    for (long i = 0; i < count; ++i) {
        const double at[3] = {640000.0 + static_cast<double>(i % 1000) * 20,
                              5120000.0 + static_cast<double>(i / 1000) * 20, 100.0};
        make_object(which == mixed ? static_cast<kind>(i % mixed) : which, at);
    }
}

// Seconds to read every object's list, and those of what it owns.
double read_all()
{
    const auto start = stop_watch::now();
    ads_name at;
    long groups = 0;
    for (int found = acdbEntNext(nullptr, at); found == RTNORM; found = acdbEntNext(at, at)) {
        const host::list_ptr list(acdbEntGet(at));
        for (const resbuf* node = list.get(); node; node = node->rbnext)
            ++groups;
    }
    benchmark::DoNotOptimize(groups);
    return seconds_since(start);
}

void change_elevations(benchmark::State& state)
{
    const kind which = static_cast<kind>(state.range(0));
    draw(which, state.range(1));
    state.SetLabel(KIND_NAMES[which]);
    std::string history;
    host::capture_history(&history);
    double changing = 0.0, reading = 0.0;
    for (auto _ : state) {
        state.PauseTiming();
        reading += read_all();
        history.clear();
        host::answers_from_text("No\nDifferential\n1.5\nall\n\n");
        state.ResumeTiming();
        const auto start = stop_watch::now();
        elevation_change();
        changing += seconds_since(start);
        if (history.find("Tested " + std::to_string(state.range(1))) == std::string::npos)
            state.SkipWithError("not all objects were changed");
    }
    host::capture_history(nullptr);
    state.counters["times_peer"] = changing / reading;
    state.SetItemsProcessed(state.iterations() * state.range(1));
    host::close_all_documents();
}

void sizes_of_mixed(benchmark::internal::Benchmark* bench)
{
    for (const long count : {1'000L, 10'000L, 100'000L})
        bench->Args({mixed, count});
}
void each_kind(benchmark::internal::Benchmark* bench)
{
    for (const long which : {lines, points, lightweights, space_polylines, survey_points})
        bench->Args({which, 20'000L});
}
BENCHMARK(change_elevations)->Apply(sizes_of_mixed)->Apply(each_kind)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
