#include "common/evaluator.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

#include "common/text.h"
#include "host/core/heap.h"
#include "hostapi/ads.h"
#include "tests/fakes/fake_host.h"
#include "tests/growth.h"

namespace
{

std::string tokens; // those that a value function was asked for, each in brackets

// Numbers; a is 2, n is -4, z a zero with a sign, h 1e308.
double value_of(const char* token)
{
    tokens += std::string("[") + token + "]";
    std::string name = token;
    str_trim(name.data());
    name.resize(std::strlen(name.c_str()));
    if (name.size() == 1 && std::strchr("anzh", name[0]))
        return name == "a" ? 2.0 : name == "n" ? -4.0 : name == "z" ? -0.0 : 1e308;
    char* end = nullptr;
    const double value = std::strtod(name.c_str(), &end);
    return name.empty() || *end ? EVAL_FAILED : value;
}

const std::string MISSING = "\nWarning: Variable name or real value is missing: ";
const std::string UNMATCHED = "Parentheses do not match.\n";
const std::string NEGATIVE = "Can not evaluate the power of negative numbers.\n";
const std::string UNSET = "Evaluation function is not set\n";

struct evaluator_case {
    std::string text;
    double value;
    std::string printed, tokens; // "*": not looked at
};

void check(const evaluator_case& one)
{
    SCOPED_TRACE("'" + one.text + "'");
    host_session host;
    tokens.clear();
    const std::string before = one.text;
    const double value = eval_expression(one.text.c_str(), value_of);
    EXPECT_EQ(value, one.value);
    EXPECT_EQ(host.printed, one.printed);
    if (one.tokens != "*") {
        EXPECT_EQ(tokens, one.tokens);
    }
    EXPECT_EQ(one.text, before);
    EXPECT_TRUE(host.heap_is_as_before());
}

TEST(Evaluator, FailureIsOneExactValue)
{
    EXPECT_EQ(std::bit_cast<std::uint64_t>(EVAL_FAILED), 0x41978C29E0666666u);
    EXPECT_STREQ(EVAL_OPERATORS, "+-*/^");
}

TEST(Evaluator, OperatorsRunInTheirOrderAndFromTheLeft)
{
    const evaluator_case cases[] = {
        {"2^3^2", 64, "", "[2][3][8.000000][2][64.000000]"},
        {"1-3+2", -4, "", "[3][2][1][5.000000][-4.000000]"},
        {"8/2*4", 16, "", "[8][2][4.000000][4][16.000000]"},
        {"8*2/4", 4, "", "[2][4][8][0.500000][4.000000]"},
        {"9-3-2", 4, "", "[9][3][6.000000][2][4.000000]"},
        {"16/4/2", 2, "", "[16][4][4.000000][2][2.000000]"},
        {"1+2*3^2", 19, "", "[3][2][2][9.000000][1][18.000000][19.000000]"},
        {"2*3+4*5", 26, "", "*"},
        {"1/3*3", 0.999999, "", "[1][3][0.333333][3][0.999999]"},
        {"0.0000001+1", 1, "", "*"},
        {"0.0000001*10", 0.000001, "", "*"},
    };
    for (const auto& one : cases)
        check(one);
}

TEST(Evaluator, OneTokenGoesStraightToTheFunction)
{
    const evaluator_case cases[] = {
        {"7", 7, "", "[7]"},
        {"a", 2, "", "[a]"},
        {"n", -4, "", "[n]"},
        {" a ", 2, "", "[a]"},
        {"a \r\n", 2, "", "[a]"},
        {"x", EVAL_FAILED, "", "[x]"},
        {"98765432.1", EVAL_FAILED, "", "[98765432.1]"},
        {"", EVAL_FAILED, "", "[]"},
        {"   ", EVAL_FAILED, "", "[]"},
        {"\r\n", EVAL_FAILED, "", "[]"},
        {"1-3", -2, "", "[1][3][-2.000000]"},
    };
    for (const auto& one : cases)
        check(one);
}

TEST(Evaluator, TokensKeepTheBlanksBetweenOperators)
{
    const evaluator_case cases[] = {
        {"  1 + 2  ", 3, "", "[1 ][ 2][3.000000]"}, {"1+ \r\n2 \r\n", 3, "", "[1][ \r\n2][3.000000]"},
        {"\r\n1+2", 3, "", "[\r\n1][2][3.000000]"}, {"1+ +2", EVAL_FAILED, "", "[1][ ]"},
        {"( 1 )", 1, "", "[1][1.000000]"},          {"2 (3)", EVAL_FAILED, "", "[3][2 3.000000]"},
    };
    for (const auto& one : cases)
        check(one);
}

TEST(Evaluator, MissingOperandsFailWithTheTextAsItStands)
{
    const evaluator_case cases[] = {
        {"-5", EVAL_FAILED, MISSING + "-5", ""},
        {"+5", EVAL_FAILED, MISSING + "+5", ""},
        {"5-", EVAL_FAILED, MISSING + "5-", ""},
        {" 5* ", EVAL_FAILED, MISSING + "5*", ""},
        {"-", EVAL_FAILED, MISSING + "-", ""},
        {"2*-3", EVAL_FAILED, MISSING + "2*-3", ""},
        {"2--3", EVAL_FAILED, MISSING + "2--3", ""},
        {"1+2^", EVAL_FAILED, MISSING + "1+2^", ""},
        // The passes before have left their values in the text.
        {"2*3+4-", EVAL_FAILED, MISSING + "10.000000-", "[2][3][6.000000][4]"},
        {"-2*3", EVAL_FAILED, MISSING + "-6.000000", "[2][3]"},
        {"(1+2)*", EVAL_FAILED, MISSING + "3.000000*", "[1][2][3.000000]"},
        {"5+()", EVAL_FAILED, "", "[]"},
    };
    for (const auto& one : cases)
        check(one);
}

TEST(Evaluator, NegativeValuesInBetweenBringAnOperatorIntoTheText)
{
    const evaluator_case cases[] = {
        {"(1-3)", EVAL_FAILED, MISSING + "-2.000000", "[1][3][-2.000000]"},
        {"(n)", EVAL_FAILED, MISSING + "-4.000000", "[n]"},
        {"1-3-2", EVAL_FAILED, MISSING + "-2.000000-2", "[1][3]"},
        {"5+(1-3)", EVAL_FAILED, MISSING + "5+-2.000000", "*"},
        {"5*(1-3)", EVAL_FAILED, MISSING + "5*-2.000000", "*"},
        {"(1-3)*2", EVAL_FAILED, MISSING + "-4.000000", "[1][3][-2.000000][2.000000][2]"},
        {"n*2", EVAL_FAILED, MISSING + "-8.000000", "[n][2]"},
        {"5+n*2", EVAL_FAILED, MISSING + "5+-8.000000", "[n][2]"},
        {"5-n*2", EVAL_FAILED, MISSING + "5--8.000000", "[n][2]"},
        {"n*2*3", EVAL_FAILED, MISSING + "-24.000000", "[n][2][8.000000][3]"},
        {"n+1", EVAL_FAILED, MISSING + "-3.000000", "[n][1]"},
        {"5-n", 9, "", "[5][n][9.000000]"},
        {"5+n", 1, "", "[5][n][1.000000]"},
        // The sign in front belongs to no operand: 1 - (3*2), then the rest.
        {"1-3*2", -5, "", "[3][2][1][6.000000][-5.000000]"},
        {"z*1", EVAL_FAILED, MISSING + "-0.000000", "[z][1]"},
        {"0-0.0000001", 0, "", "[0][0.0000001][-0.000000]"},
    };
    for (const auto& one : cases)
        check(one);
}

TEST(Evaluator, PowersAndDivisionsHaveTheirOwnRules)
{
    const evaluator_case cases[] = {
        {"0^5", 1, "", "[0][5][1.000000]"},
        {"0^0", 1, "", "*"},
        {"z^3", 1, "", "*"},
        {"0^n", 1, "", "*"},
        {"2^n", 0.0625, "", "*"},
        {"4^0.5", 2, "", "*"},
        {"n^2", EVAL_FAILED, NEGATIVE, "[n][2]"},
        {"5/0", EVAL_FAILED, "", "[5][0]"},
        {"5/z", EVAL_FAILED, "", "*"},
        {"0/5", 0, "", "*"},
        {"5/0-", EVAL_FAILED, "", "*"},
    };
    for (const auto& one : cases)
        check(one);
}

TEST(Evaluator, TokensWithoutValueFailInSilenceButBothAreAskedFor)
{
    check({"x+y", EVAL_FAILED, "", "[x][y]"});
    check({"1+y+2", EVAL_FAILED, "", "[1][y]"});
    check({"(x)+1", EVAL_FAILED, "", "[x]"});
    check({"98765431.1+1", EVAL_FAILED, "", "[98765431.1][1]"});
}

TEST(Evaluator, ParenthesesAreTakenOffFromTheInside)
{
    const evaluator_case cases[] = {
        {"(1+2)*(3+4)", 21, "", "[1][2][3.000000][3][4][7.000000][3.000000][7.000000][21.000000]"},
        {"((2))", 2, "", "[2][2.000000][2.000000]"},
        {"1-(3-2)", 0, "", "*"},
        {"2)", EVAL_FAILED, UNMATCHED, ""},
        {")", EVAL_FAILED, UNMATCHED, ""},
        {")(", EVAL_FAILED, UNMATCHED, ""},
        {"(1))", EVAL_FAILED, UNMATCHED, "[1]"},
        {"(5/0))", EVAL_FAILED, "", "[5][0]"},
        {"(2", EVAL_FAILED, "", "[(2]"},
        {"1+(2", EVAL_FAILED, "", "[1][(2]"},
        {"((1)", EVAL_FAILED, "", "[1][(1.000000]"},
        {"2(3)", 23, "", "[3][23.000000]"},
        {"()", EVAL_FAILED, "", "[]"},
    };
    for (const auto& one : cases)
        check(one);
}

TEST(Evaluator, FunctionIsAskedForBeforeTheText)
{
    for (const char* text : {"1+2", "2)", "", "(1"}) {
        host_session host;
        EXPECT_EQ(eval_expression(text, nullptr), EVAL_FAILED);
        EXPECT_EQ(host.printed, UNSET);
    }
    host_session host;
    EXPECT_EQ(eval_expression(nullptr, value_of), EVAL_FAILED) << "no text is an empty one";
}

double infinite(const char* token)
{
    constexpr double inf = std::numeric_limits<double>::infinity();
    tokens += std::string("[") + token + "]";
    return std::string(token) == "i" ? inf : std::strtod(token, nullptr);
}

TEST(Evaluator, ValuesOfAnySizeAreWrittenOut)
{
    check({"h*1+0", 1e308, "", "*"});
    host_session host;
    tokens.clear();
    EXPECT_EQ(eval_expression("h+0", value_of), 1e308);
    EXPECT_EQ(tokens.size(), 2u * 3 + 2 + 309 + 7) << "309 digits, a point, six decimals";
    tokens.clear();
    EXPECT_EQ(eval_expression("1-h", value_of), -1e308);
    EXPECT_EQ(tokens.size(), 2u * 3 + 2 + 1 + 309 + 7);

    tokens.clear();
    EXPECT_EQ(eval_expression("h*10", value_of), std::numeric_limits<double>::infinity());
    EXPECT_EQ(tokens, "[h][10][inf]");
    tokens.clear();
    EXPECT_TRUE(std::isnan(eval_expression("i-i", infinite)));
    EXPECT_EQ(tokens, "[i][i][-nan]");
    EXPECT_EQ(host.printed, "");
    EXPECT_EQ(eval_expression("i/i+1", infinite), EVAL_FAILED);
    EXPECT_EQ(host.printed, MISSING + "-nan") << "the sign is no part of the operand";
}

// ---- single passes ----------------------------------------------------------------------------------------

struct pass_result {
    std::string text;
    double out = 0;
} inner;
const char* inner_text = nullptr;
const char* inner_op = nullptr;

// Runs the pass asked for from within an evaluation, while the function is set.
double run_inner(const char* token)
{
    if (std::string(token) != "run")
        return value_of(token);
    char* text = str_dup(nullptr, inner_text);
    text = inner_op ? eval_operator(text, &inner.out, inner_op) : eval_flat(text, &inner.out);
    inner.text = text;
    acad_free(text);
    return 1;
}

pass_result run_within(const char* text, const char* op)
{
    inner_text = text;
    inner_op = op;
    eval_expression("run", run_inner);
    return inner;
}

TEST(Evaluator, PassesLeaveTheOtherOperators)
{
    struct {
        const char *text, *op, *result;
        double out;
        std::string printed;
    } const cases[] = {
        {"1+2*3-4*5", "*", "1+6.000000-20.000000", 20, ""},
        {" 1+2*3 ", "*", " 1+6.000000", 6, ""},
        {"1+2", "*", "1+2", 0, ""},
        {"1-3", "-", "-2.000000", -2, ""},
        {"2*1-3", "-", "2*-2.000000", EVAL_FAILED, MISSING + "2*-2.000000"},
        {"1-3*2", "-", "-2.000000*2", EVAL_FAILED, MISSING + "-2.000000*2"},
        {"n*2+1", "*", "-8.000000+1", -8, ""},
        {"1+n*2*3+1", "*", "1+-24.000000+1", 24, ""}, // 8 * 3, the sign is no part of an operand
        {"6/3/0/7", "/", "2.000000/0/7", EVAL_FAILED, ""},
        {"1+2+", "+", "3.000000+", EVAL_FAILED, MISSING + "3.000000+"},
        {"1+2", "%", "1+2", 0, ""},
        {"1+2", "", "1+2", 0, ""},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(std::string(one.text) + " by " + one.op);
        host_session host;
        const pass_result got = run_within(one.text, one.op);
        EXPECT_EQ(got.text, one.result);
        EXPECT_EQ(got.out, one.out);
        EXPECT_EQ(host.printed, one.printed);
        EXPECT_TRUE(host.heap_is_as_before());
    }
}

TEST(Evaluator, FlatTextsEndAsOneToken)
{
    struct {
        const char *text, *result;
        double out;
        std::string printed;
    } const cases[] = {
        {"  1+2*3 \r\n", "7.000000", 7, ""},
        {" a ", "a", 0, ""},
        {"1-3", "-2.000000", -2, ""},
        {"", "", 0, ""},
        {"2*3-", "6.000000-", EVAL_FAILED, MISSING + "6.000000-"},
        {"2+3/0", "2+3/0", EVAL_FAILED, ""},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.text);
        host_session host;
        const pass_result got = run_within(one.text, nullptr);
        EXPECT_EQ(got.text, one.result);
        EXPECT_EQ(got.out, one.out);
        EXPECT_EQ(host.printed, one.printed);
        EXPECT_TRUE(host.heap_is_as_before());
    }
}

TEST(Evaluator, FunctionIsForgottenAfterEachEvaluation)
{
    for (const char* before : {"1+2", "2)", "5/0", "-1", "x", "(x)", "(5/0)"}) {
        host_session host;
        eval_expression(before, value_of);
        host.printed.clear();
        double out = 0;
        char* text = eval_flat(str_dup(nullptr, "1+2"), &out);
        EXPECT_EQ(out, EVAL_FAILED) << before;
        EXPECT_STREQ(text, "1+2");
        EXPECT_EQ(host.printed, UNSET);
        acad_free(text);
        host.printed.clear();
        text = eval_operator(str_dup(nullptr, "1+"), &out, "+");
        EXPECT_EQ(host.printed, MISSING + "1+") << "missing operands are told first";
        acad_free(text);
    }
}

double nesting(const char* token)
{
    return std::string(token) == "nest" ? eval_expression("4*5", value_of) : value_of(token);
}

TEST(Evaluator, NestedEvaluationsClearTheFunctionOfTheOuterOne)
{
    host_session host;
    EXPECT_EQ(eval_expression("nest", nesting), 20);
    EXPECT_EQ(eval_expression("nest+1", nesting), 21) << "no operation follows";
    EXPECT_EQ(eval_expression("(nest)+1", nesting), 21) << "the function is set again behind parentheses";
    EXPECT_EQ(host.printed, "");
    EXPECT_EQ(eval_expression("nest+1+1", nesting), EVAL_FAILED);
    EXPECT_EQ(host.printed, UNSET);
    EXPECT_TRUE(host.heap_is_as_before());
}

TEST(Evaluator, ExhaustedHeapsFailAndLoseNothing)
{
    for (const char* text : {"(1+2)*(3-1)^2/4", "1+2+", "2)", "(1-3)*h", "-h*h"}) {
        SCOPED_TRACE(text);
        host_session host;
        bool is_refused = true;
        int rounds = 0;
        for (long nth = 1; is_refused; ++nth, ++rounds) {
            host::heap_refuse(nth);
            const double value = eval_expression(text, value_of);
            is_refused = host::heap_refuse(0) == 0;
            if (is_refused) {
                EXPECT_EQ(value, EVAL_FAILED) << nth;
            }
            ASSERT_TRUE(host.heap_is_as_before()) << nth;
        }
        EXPECT_GT(rounds, 1);
    }
    host_session host;
    bool is_refused = true;
    for (long nth = 1; is_refused; ++nth) {
        double out = 0;
        char* text = str_dup(nullptr, "1*2");
        host::heap_refuse(nth);
        char* result = eval_operator(text, &out, "+");
        is_refused = host::heap_refuse(0) == 0;
        EXPECT_EQ(result == nullptr, is_refused);
        EXPECT_EQ(out, is_refused ? EVAL_FAILED : 0.0);
        if (result)
            acad_free(result);
        ASSERT_TRUE(host.heap_is_as_before());
    }
}

// ---- long texts ---------------------------------------------------------------------------------------------

std::string repeated(std::string_view piece, int times)
{
    std::string out;
    for (int i = 0; i < times; ++i)
        out += piece;
    return out;
}

double plain_number(const char* token)
{
    return std::strtod(token, nullptr);
}

TEST(Evaluator, LongTextsTakeTimeInProportion)
{
    struct {
        const char *name, *head, *piece, *tail, *behind; // head piece... tail behind...
        double value;
    } const cases[] = {
        {"sum", "1", "+1", "", "", 100001},
        {"differences", "200000", "-1", "", "", 100000},
        {"products", "1", "*1", "", "", 1},
        {"quotients", "1", "/1", "", "", 1},
        {"powers", "1", "^1", "", "", 1},
        {"mixed", "1", "*2/2^1+0-0", "", "", 1},
        {"nested", "", "(", "1", ")", 1},
        {"side by side", "0", "+(1)", "", "", 100000},
        {"nested sums", "", "(1+", "1", ")", 100001},
        {"unclosed", "", "(", "1", "", 0},
        {"blanks", "1", " ", "+1", " ", 2},
        {"big values", "1", "*(1e300)/1e300", "", "", 1},
        {"missing at the end", "1", "+1", "-", "", EVAL_FAILED},
        {"missing behind signs", "1", "-1", "--", "", EVAL_FAILED},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        host_session host;
        double value = 0;
        const auto work = [&](int size) {
            const std::string text =
                one.head + repeated(one.piece, size) + one.tail + repeated(one.behind, size);
            value = eval_expression(text.c_str(), plain_number);
            host.printed.clear();
        };
        const int size = 100000;
        EXPECT_TRUE(grows_in_proportion(work, size));
        EXPECT_EQ(value, one.value);
        EXPECT_TRUE(host.heap_is_as_before());
    }
}

} // namespace
