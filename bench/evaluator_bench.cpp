// Expressions of growing length, by the library and by the plain evaluator that writes the text anew for each
// operation: the first must take time in proportion.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

#include "tests/common/plain_evaluator.h"

namespace
{

double number(const char* token)
{
    return std::strtod(token, nullptr);
}

std::string repeated(const char* piece, long times)
{
    std::string out;
    for (long i = 0; i < times; ++i)
        out += piece;
    return out;
}

std::string sum(long count)
{
    return "1" + repeated("+1", count);
}

std::string mixed(long count)
{
    return "1" + repeated("*2/2^1+0-0", count / 5);
}

std::string nested(long count)
{
    return repeated("(", count) + "1" + repeated(")", count);
}

void evaluate(benchmark::State& state, std::string (*make)(long), evaluate_fn evaluator)
{
    const std::string text = make(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(evaluator(text, number));
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK_CAPTURE(evaluate, sum, sum, library_expression)
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->Complexity();
BENCHMARK_CAPTURE(evaluate, mixed, mixed, library_expression)
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->Complexity();
BENCHMARK_CAPTURE(evaluate, nested, nested, library_expression)
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->Complexity();
BENCHMARK_CAPTURE(evaluate, plain_sum, sum, plain_expression)->RangeMultiplier(10)->Range(1000, 100000);
BENCHMARK_CAPTURE(evaluate, plain_mixed, mixed, plain_expression)->RangeMultiplier(10)->Range(1000, 100000);
BENCHMARK_CAPTURE(evaluate, plain_nested, nested, plain_expression)->RangeMultiplier(10)->Range(1000, 100000);

BENCHMARK_MAIN();
