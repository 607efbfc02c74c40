// evaluator.cpp: the rewriting of an expression, without writing the text anew for each operation.
//
// A text without parentheses is a list of pieces: a token and the operator in front of it. An operation of a
// pass is always the leftmost one of its kind, and nothing that is left of it can become one of its kind again,
// so a pass is one walk that writes the list in place, behind itself. A negative value is two pieces, an empty
// token and "-" with the digits, since that is how the next operation cuts its text.
//
// Parentheses are taken off from the inside, the first ")" first. What stands before it is kept in one buffer
// that is used as a stack: the text behind the last "(" is evaluated and gives way to its value.
#include "common/evaluator.h"

#include <cmath>
#include <cstring>
#include <string_view>

#include "common/number_text.h"
#include "common/text.h"
#include "hostapi/ads.h"

namespace
{

constexpr char PASSES[] = "^/*+-";
constexpr const char* NO_FUNCTION = "Evaluation function is not set\n";

eval_value_fn current_value_fn = nullptr;

struct piece {
    const char* text; // null: the value, without its sign
    double value;
    char op; // in front of it
};

// Arrays of the module's heap that grow; `reserve` is false when it is exhausted.
template <typename T>
struct growing {
    T* items = nullptr;
    std::size_t count = 0, room = 0;

    growing() = default;
    growing(const growing&) = delete;
    growing& operator=(const growing&) = delete;
    ~growing()
    {
        if (items)
            acad_free(items);
    }

    bool reserve(std::size_t wanted)
    {
        if (wanted <= room)
            return true;
        const std::size_t more = wanted + room; // at least twice what it was
        T* larger =
            static_cast<T*>(items ? acad_realloc(items, more * sizeof(T)) : acad_malloc(more * sizeof(T)));
        if (!larger)
            return false;
        items = larger;
        room = more;
        return true;
    }
    T* release()
    {
        T* out = items;
        items = nullptr;
        return out;
    }
};

using piece_list = growing<piece>;
using text_stack = growing<char>;

// The text stays ended by a NUL.
bool append(text_stack& to, std::string_view more)
{
    if (!to.reserve(to.count + more.size() + 1))
        return false;
    more.copy(to.items + to.count, more.size());
    to.count += more.size();
    to.items[to.count] = '\0';
    return true;
}

bool is_operator(char c)
{
    return std::string_view(EVAL_OPERATORS).find(c) != std::string_view::npos;
}

// Cuts `text` at its operators, in place.
bool split(char* text, piece_list& list)
{
    list.count = 0;
    char op = '\0';
    for (char* token = text;;) {
        char* end = token;
        while (*end && !is_operator(*end))
            ++end;
        if (!list.reserve(list.count + 1))
            return false;
        list.items[list.count++] = {token, 0.0, op};
        op = *end;
        if (op == '\0')
            return true;
        *end = '\0';
        token = end + 1;
    }
}

using number_buffer = char[NUMBER_TEXT_SIZE];

const char* token_of(const piece& from, number_buffer& number)
{
    if (from.text)
        return from.text;
    const char* text = number_text(from.value, number);
    return *text == '-' ? text + 1 : text;
}

bool join(const piece_list& list, text_stack& out)
{
    for (std::size_t i = 0; i < list.count; ++i) {
        const piece& one = list.items[i];
        number_buffer number;
        if ((i > 0 && !append(out, {&one.op, 1})) || !append(out, token_of(one, number)))
            return false;
    }
    return true;
}

void warn_missing(const piece_list& list)
{
    text_stack text;
    if (join(list, text))
        acutPrintf("\nWarning: Variable name or real value is missing: %s", text.items);
}

double power(double base, double exponent)
{
    if (base < 0.0) {
        acutPrintf("Can not evaluate the power of negative numbers.\n");
        return EVAL_FAILED;
    }
    // Of this evaluator, whatever the exponent; expressions in use rely on it.
    if (base == 0.0)
        return 1.0;
    return std::exp(std::log(base) * exponent);
}

double computed(char op, double a, double b)
{
    switch (op) {
    case '^':
        return power(a, b);
    case '/':
        return b == 0.0 ? EVAL_FAILED : a / b;
    case '*':
        return a * b;
    case '+':
        return a + b;
    default:
        return a - b;
    }
}

bool is_empty(const piece& one)
{
    return one.text && *one.text == '\0';
}

// Value of two operands, neither of which is empty.
double operation(char op, const piece& left, const piece& right)
{
    const eval_value_fn value_fn = current_value_fn;
    if (!value_fn) {
        acutPrintf("%s", NO_FUNCTION);
        return EVAL_FAILED;
    }
    number_buffer number;
    const double a = value_fn(token_of(left, number));
    const double b = value_fn(token_of(right, number));
    return a == EVAL_FAILED || b == EVAL_FAILED ? EVAL_FAILED : computed(op, a, b);
}

// The list is written up to `last` and read from `next` on: makes it one again.
void close_gap(piece_list& list, std::size_t last, std::size_t next)
{
    const std::size_t rest = list.count - next;
    std::memmove(list.items + last + 1, list.items + next, rest * sizeof(piece));
    list.count = last + 1 + rest;
}

// EVAL_FAILED, with its message told and the list as it stood, or the last value (`out` when there was none).
double run_pass(piece_list& list, char op, double out)
{
    piece* items = list.items;
    std::size_t last = 0;
    for (std::size_t next = 1; next < list.count; ++next) {
        if (items[next].op != op) {
            items[++last] = items[next];
            continue;
        }
        const bool is_missing = is_empty(items[last]) || is_empty(items[next]);
        out = is_missing ? EVAL_FAILED : operation(op, items[last], items[next]);
        if (out == EVAL_FAILED) {
            close_gap(list, last, next);
            if (is_missing)
                warn_missing(list);
            return EVAL_FAILED;
        }
        const bool stands_alone = last == 0 && next + 1 == list.count;
        number_buffer number;
        if (*number_text(out, number) == '-') {
            items[last] = {"", 0.0, items[last].op};
            items[++last] = {nullptr, out, '-'};
            // The sign is the next "-" of the text, unless nothing else is left.
            if (op == '-' && !stands_alone) {
                close_gap(list, last, next + 1);
                warn_missing(list);
                return EVAL_FAILED;
            }
        } else {
            items[last] = {nullptr, out, items[last].op};
        }
    }
    list.count = last + 1;
    return out;
}

double run_passes(piece_list& list, std::string_view passes)
{
    double out = 0.0;
    for (const char op : passes)
        if (out != EVAL_FAILED)
            out = run_pass(list, op, out);
    return out;
}

// `text` is cut on the way.
char* rewritten(char* text, double* out, std::string_view passes)
{
    piece_list list;
    text_stack result;
    const bool is_split = split(text, list);
    *out = is_split ? run_passes(list, passes) : EVAL_FAILED;
    if (is_split && join(list, result))
        return result.release();
    *out = EVAL_FAILED;
    return nullptr;
}

double value_of_flat(char* text, eval_value_fn value_fn, piece_list& list)
{
    current_value_fn = value_fn;
    str_trim(text);
    if (!split(text, list) || run_passes(list, PASSES) == EVAL_FAILED)
        return EVAL_FAILED;
    // One token; or an empty one and the digits of a negative value, which is a token with its sign now.
    const piece& token = list.items[list.count - 1];
    number_buffer number;
    return value_fn(token.text ? token.text : number_text(token.value, number));
}

double value_of(std::string_view text, eval_value_fn value_fn)
{
    text_stack done;
    piece_list list;
    for (;;) {
        const std::size_t close = text.find(')');
        if (!append(done, text.substr(0, close)))
            return EVAL_FAILED;
        if (close == text.npos)
            return value_of_flat(done.items, value_fn, list);
        const std::size_t open = std::string_view(done.items, done.count).rfind('(');
        if (open == text.npos) {
            acutPrintf("Parentheses do not match.\n");
            return EVAL_FAILED;
        }
        const double value = value_of_flat(done.items + open + 1, value_fn, list);
        if (value == EVAL_FAILED)
            return EVAL_FAILED;
        done.count = open;
        number_buffer number;
        if (!append(done, number_text(value, number)))
            return EVAL_FAILED;
        text.remove_prefix(close + 1);
    }
}

} // namespace

double eval_expression(const char* text, eval_value_fn value_fn)
{
    if (!value_fn) {
        current_value_fn = nullptr;
        acutPrintf("%s", NO_FUNCTION);
        return EVAL_FAILED;
    }
    const double value = value_of(text ? text : "", value_fn);
    current_value_fn = nullptr;
    return value;
}

char* eval_flat(char* text, double* out)
{
    str_trim(text);
    char* result = rewritten(text, out, PASSES);
    acad_free(text);
    return result;
}

char* eval_operator(char* text, double* out, const char* op)
{
    const bool is_known = std::strlen(op) == 1 && is_operator(*op);
    char* result = rewritten(text, out, is_known ? op : "");
    acad_free(text);
    return result;
}
