#include "tests/common/plain_evaluator.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "hostapi/ads.h"

std::string noted_tokens;

namespace
{

const std::string OPERATORS = "+-*/^";
eval_value_fn function = nullptr;

std::string printed_value(double value)
{
    std::string text(400, '\0');
    text.resize(static_cast<std::size_t>(std::snprintf(text.data(), text.size(), "%f", value)));
    return text;
}

std::string trimmed(std::string text)
{
    while (!text.empty() && text.front() == ' ')
        text.erase(0, 1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\r' || text.back() == '\n'))
        text.pop_back();
    return text;
}

// Cuts off what stands behind the last operator.
std::string last_token(std::string& text)
{
    std::size_t start = text.size();
    while (start > 0 && OPERATORS.find(text[start - 1]) == std::string::npos)
        --start;
    const std::string token = text.substr(start);
    text.erase(start);
    return token;
}

// Cuts off what stands before the first operator.
std::string first_token(std::string& text)
{
    std::size_t end = 0;
    while (end < text.size() && OPERATORS.find(text[end]) == std::string::npos)
        ++end;
    const std::string token = text.substr(0, end);
    text.erase(0, end);
    return token;
}

double result_of(char op, double a, double b)
{
    if (op == '^') {
        if (a < 0) {
            acutPrintf("Can not evaluate the power of negative numbers.\n");
            return EVAL_FAILED;
        }
        return a == 0.0 ? 1.0 : std::exp(std::log(a) * b);
    }
    if (op == '/')
        return b == 0.0 ? EVAL_FAILED : a / b;
    return op == '*' ? a * b : op == '+' ? a + b : a - b;
}

std::string run_operator(std::string text, double& out, char op)
{
    while (text.find(op) != std::string::npos) {
        const std::size_t at = text.find(op);
        std::string left = text.substr(0, at), right = text.substr(at + 1);
        const std::string a = last_token(left), b = first_token(right);
        if (a.empty() || b.empty()) {
            acutPrintf("\nWarning: Variable name or real value is missing: %s", text.c_str());
            out = EVAL_FAILED;
            return text;
        }
        if (!function) {
            acutPrintf("Evaluation function is not set\n");
            out = EVAL_FAILED;
            return text;
        }
        const double first = function(a.c_str());
        const double second = function(b.c_str());
        out = first == EVAL_FAILED || second == EVAL_FAILED ? EVAL_FAILED : result_of(op, first, second);
        if (out == EVAL_FAILED)
            return text;
        text = left + printed_value(out) + right;
        left = trimmed(left);
        right = trimmed(right);
        if (left.empty() && right.empty())
            return text;
    }
    return text;
}

std::string run_flat(std::string text, double& out)
{
    text = trimmed(text);
    for (const char op : std::string("^/*+-")) {
        text = run_operator(text, out, op);
        if (out == EVAL_FAILED)
            break;
    }
    return text;
}

} // namespace

double plain_expression(const std::string& expression, eval_value_fn value_fn)
{
    function = value_fn;
    if (!function) {
        acutPrintf("Evaluation function is not set\n");
        return EVAL_FAILED;
    }
    std::string text = expression;
    for (std::size_t close; (close = text.find(')')) != std::string::npos;) {
        const std::size_t open = text.rfind('(', close);
        if (open == std::string::npos) {
            acutPrintf("Parentheses do not match.\n");
            function = nullptr;
            return EVAL_FAILED;
        }
        const std::string inside = text.substr(open + 1, close - open - 1);
        const double value = plain_expression(inside, value_fn);
        function = value_fn;
        if (value == EVAL_FAILED) {
            function = nullptr;
            return value;
        }
        text = text.substr(0, open) + printed_value(value) + text.substr(close + 1);
    }
    double out = 0;
    text = run_flat(text, out);
    if (out != EVAL_FAILED)
        out = value_fn(text.c_str());
    function = nullptr;
    return out;
}

double noted_value(const char* token)
{
    noted_tokens += "[" + std::string(token) + "]";
    const std::string name = trimmed(token);
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const double named[] = {7, -2.5, 1e308,    infinity, std::numeric_limits<double>::quiet_NaN(),
                            0, 1e-9, -infinity};
    if (name.size() == 1 && name[0] >= 'a' && name[0] <= 'h')
        return named[name[0] - 'a'];
    char* end = nullptr;
    const double value = std::strtod(name.c_str(), &end);
    return name.empty() || *end != '\0' ? EVAL_FAILED : value;
}

std::string expression_of(std::string_view bytes)
{
    // Operators and operands by turns as a rule, so that most expressions go far.
    const char* const operands[] = {"1",  "2", "3",    "0.5", "10",  "a",        "b",          "c",
                                    "d",  "e", "f",    "g",   "h",   "98765432", "98765432.1", "unknown",
                                    "12", " ", "(1+2", "a)",  " 4 ", "(5)",      "((6",        "7))"};
    const char* const others[] = {"(", ")", " ", "\r", "\n", "", "()", "-", "+", "^"};
    std::string text;
    bool operand_is_due = true;
    for (const char c : bytes) {
        const unsigned value = static_cast<unsigned char>(c);
        if (value >= 232) {
            text += others[value % std::size(others)];
            continue;
        }
        if (operand_is_due)
            text += value < 160 ? operands[value % 5] : operands[value % std::size(operands)];
        else
            text += OPERATORS[value % OPERATORS.size()];
        operand_is_due = !operand_is_due;
    }
    return text;
}

evaluation evaluated(evaluate_fn evaluate, const std::string& text, std::string& printed)
{
    noted_tokens.clear();
    const std::size_t before = printed.size();
    const auto bits = std::bit_cast<std::uint64_t>(evaluate(text, noted_value));
    return {std::to_string(bits), printed.substr(before), noted_tokens};
}
