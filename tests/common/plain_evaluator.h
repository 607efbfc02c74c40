// plain_evaluator.h: the evaluator in its plainest form, the text written anew for each operation, step by
// step. It judges the library's: same values, messages and calls of the value function.
#pragma once

#include <string>
#include <string_view>

#include "common/evaluator.h"

double plain_expression(const std::string& text, eval_value_fn value_fn);

// Value function of the comparisons: whole texts that are numbers, and the names a to h, among them a negative,
// a huge, an infinite one and one that is not a number; anything else has no value. Each token is noted.
double noted_value(const char* token);
extern std::string noted_tokens;

// An expression, a piece of it a byte.
std::string expression_of(std::string_view bytes);

// What an evaluation gave: the value's bits, what was printed, the tokens that were asked for.
struct evaluation {
    std::string bits, printed, tokens;
    bool operator==(const evaluation&) const = default;
};
using evaluate_fn = double (*)(const std::string& text, eval_value_fn value_fn);
// `printed` is where the history is being captured.
evaluation evaluated(evaluate_fn evaluate, const std::string& text, std::string& printed);
inline double library_expression(const std::string& text, eval_value_fn value_fn)
{
    return eval_expression(text.c_str(), value_fn);
}
