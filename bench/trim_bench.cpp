// TRIM as programs send it, in drawings of two sizes: at one small edge, and with all objects as edges. Each
// must cost nearly the same in a drawing ten times as big.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

#include "host/core/document.h"
#include "host/core/session.h"
#include "host/database/entities.h"
#include "host/database/geometry.h"
#include "host/database/sysvars.h"
#include "hostapi/ads.h"

namespace
{

using namespace host;
using namespace host::db;

// Short lines, equally many on every piece of ground.
void fill(database& data, long count)
{
    std::mt19937 random{31};
    const double side = std::sqrt(static_cast<double>(count)) * 10;
    std::uniform_real_distribution<double> place(0, side), step(-5, 5);
    for (long i = 0; i < count; ++i) {
        const double x = place(random), y = place(random);
        make_entity(data,
                    {data.text_group(0, "LINE"), data.text_group(8, "FENCE"), point_group(10, x, y, 0),
                     point_group(11, x + step(random), y + step(random), 0)},
                    nullptr);
    }
}

object_id line(database& data, double x1, double y1, double x2, double y2)
{
    return make_entity(data,
                       {data.text_group(0, "LINE"), data.text_group(8, "0"), point_group(10, x1, y1, 0),
                        point_group(11, x2, y2, 0)},
                       nullptr);
}

// A line of `length` at `at` is cut near its end and put back; `all`: every object of the drawing is an edge.
void trim_and_undo(benchmark::State& state, bool all, double length)
{
    document& doc = open_document();
    database& data = database_of(doc);
    set_int(doc, "CMDECHO", 0);
    fill(data, state.range(0));
    const double middle = std::sqrt(static_cast<double>(state.range(0))) * 5;
    const object_id subject = line(data, middle, middle, middle + length, middle + 1);
    const object_id edge = line(data, middle + 2, middle - 1, middle + 2, middle + 3);
    near_window(data, data.model_space(), {{0, 0, 0}, {1, 1, 0}}); // the index is made once
    ads_name subject_name, edge_name;
    make_name(data, subject, subject_name);
    make_name(data, edge, edge_name);
    const ads_point at = {middle, middle, 0};
    for (auto _ : state) {
        const int status = all ? acedCommand(RTSTR, "_.TRIM", RTSTR, "", RTLB, RTENAME, subject_name, RT3DPOINT,
                                             at, RTLE, RTSTR, "", 0)
                               : acedCommand(RTSTR, "_.TRIM", RTENAME, edge_name, RTSTR, "", RTLB, RTENAME,
                                             subject_name, RT3DPOINT, at, RTLE, RTSTR, "", 0);
        if (status != RTNORM || find(data.at(subject).groups, 10)->point[0] == middle) {
            state.SkipWithError("nothing was cut");
            break;
        }
        data.undo_back();
    }
    close_all_documents();
}

void at_one_edge(benchmark::State& state)
{
    trim_and_undo(state, false, 5);
}
void at_all_objects(benchmark::State& state)
{
    trim_and_undo(state, true, 5);
}
void a_long_line_at_all_objects(benchmark::State& state)
{
    trim_and_undo(state, true, 500);
}

BENCHMARK(at_one_edge)->Arg(100'000)->Arg(1'000'000);
BENCHMARK(at_all_objects)->Arg(100'000)->Arg(1'000'000);
BENCHMARK(a_long_line_at_all_objects)->Arg(100'000)->Arg(1'000'000);

} // namespace

BENCHMARK_MAIN();
