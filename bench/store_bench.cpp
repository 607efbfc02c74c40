// The drawing store: making objects, looking into small windows, changing and looking in turn. Times per
// operation at two sizes: windows and changes must cost nearly the same in a drawing ten times as big.
#include <benchmark/benchmark.h>

#include <cmath>
#include <map>
#include <memory>
#include <random>

#include "host/core/document.h"
#include "host/database/entities.h"
#include "host/database/geometry.h"

namespace
{

using namespace host;
using namespace host::db;

// The area grows with the count, so that a window of one size holds equally many.
struct drawing {
    document doc{1};
    database& data = database_of(doc);
    std::mt19937 random{31};
    double side;
    std::uniform_real_distribution<double> place, step{-5, 5};

    explicit drawing(long count) : side(std::sqrt(static_cast<double>(count)) * 10), place(0, side)
    {
        for (long i = 0; i < count; ++i)
            add();
        near(0, 0);
    }
    void add()
    {
        const double x = 640000 + place(random), y = 5120000 + place(random);
        make_entity(data,
                    {data.text_group(0, "LINE"), data.text_group(8, "FENCE"), point_group(10, x, y, 0),
                     point_group(11, x + step(random), y + step(random), 0)},
                    nullptr);
    }
    std::size_t near(double x, double y)
    {
        const box window{{640000 + x, 5120000 + y, 0}, {640050 + x, 5120050 + y, 0}};
        return near_window(data, data.model_space(), window).size();
    }
};

drawing& drawing_of(long count)
{
    static std::map<long, std::unique_ptr<drawing>> made;
    std::unique_ptr<drawing>& slot = made[count];
    if (!slot)
        slot = std::make_unique<drawing>(count);
    return *slot;
}

void make_lines(benchmark::State& state)
{
    for (auto _ : state)
        drawing all(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void look_into_windows(benchmark::State& state)
{
    drawing& all = drawing_of(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(all.near(all.place(all.random), all.place(all.random)));
}

void change_and_look(benchmark::State& state)
{
    drawing& all = drawing_of(state.range(0));
    object_id at = first_entity(all.data, all.data.model_space());
    for (auto _ : state) {
        find(all.data.modify(at), 10)->point[0] += 1;
        benchmark::DoNotOptimize(all.near(0, 0));
        if (const object_id next = next_entity(all.data, at))
            at = next;
    }
}

BENCHMARK(make_lines)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(look_into_windows)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);
BENCHMARK(change_and_look)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);

} // namespace

BENCHMARK_MAIN();
