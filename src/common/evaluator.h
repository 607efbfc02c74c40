// evaluator.h: arithmetic in texts, over numbers and names.
//
// An expression is evaluated by rewriting it: each operation that is done gives way to its value in the text,
// printed by "%f". From this follows all that is unusual here: the kinds of operators run one after the other
// over the whole text, "^", "/", "*", "+", "-", each from left to right; every value in between has six
// decimals; and a negative value brings a "-" without a left operand into the text, which fails, unless it is
// the value of a "-" and all that is left of the text. docs/expressions.md has examples.
//
// The results, messages and calls of the value function are those of the rewriting; the time is linear in the
// text's length. All memory comes from acad_malloc and is given back.
#pragma once

#include "common/fields.h"

// Told apart by exact comparison: an operation with just this result has failed.
constexpr double EVAL_FAILED = 98765432.1;

// Value of a token, a number or a name, as it stands between two operators, blanks at its ends included;
// EVAL_FAILED when it has none.
using eval_value_fn = double (*)(const char* token);

constexpr char EVAL_OPERATORS[] = "+-*/^";

// Value of an expression, EVAL_FAILED with a message when it has none. There is no message for a division by
// zero, for a token without a value and for an exhausted heap. `value_fn` is kept in one variable of the module
// up to the end of the call: when a value function itself calls eval_expression, the outer evaluation finds it
// cleared at its next operation and fails.
double eval_expression(const char* text, eval_value_fn value_fn);

// Parts of an evaluation; they use the value function of the one that is running. Both take over `text` (from
// acad_malloc) and answer the text that came out of it, which belongs to the caller; null when the heap is
// exhausted. `out` is EVAL_FAILED on failure, and the text is then as the failing operation found it. Otherwise
// it is the value of the last operation, 0.0 when there was none.

// A text without parentheses, to a single token.
char* eval_flat(char* text, double* out);
// All operations of one kind; `op` is one of the operators, with any other the text stays as it is.
char* eval_operator(char* text, double* out, const char* op);
