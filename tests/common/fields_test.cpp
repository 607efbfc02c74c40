#include "common/fields.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <string>

#include "common/evaluator.h"
#include "common/text.h"
#include "host/core/heap.h"
#include "hostapi/ads.h"
#include "tests/fakes/fake_host.h"

namespace
{

// The text of a new string, which is given back; "<null>" for none.
std::string taken(char* text)
{
    const std::string out = text ? text : "<null>";
    if (text)
        acad_free(text);
    return out;
}

TEST(Fields, TokensAreCutFromEitherEnd)
{
    struct {
        const char *text, *last, *left_of_last, *first, *right_of_first;
    } const cases[] = {
        {"1+2*3", "3", "1+2*", "1", "+2*3"},
        {"abc", "abc", "", "abc", ""},
        {"", "", "", "", ""},
        {"1+", "", "1+", "1", "+"},
        {"-5", "5", "-", "", "-5"},
        {"+", "", "+", "", "+"},
        {" a - b ", " b ", " a -", " a ", "- b "},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.text);
        host_session host;
        char* text = str_dup(nullptr, one.text);
        EXPECT_EQ(taken(cut_last_token(text, EVAL_OPERATORS)), one.last);
        EXPECT_STREQ(text, one.left_of_last);
        text = str_dup(text, one.text);
        EXPECT_EQ(taken(cut_first_token(text, EVAL_OPERATORS)), one.first);
        EXPECT_STREQ(text, one.right_of_first);
        acad_free(text);
        EXPECT_TRUE(host.heap_is_as_before());
    }
    char text[] = "a,b;c";
    EXPECT_EQ(taken(cut_last_token(text, ",")), "b;c") << "the operators are the caller's";
}

TEST(Fields, DelimitersTellWhereTheirFieldEnds)
{
    struct {
        const char* text;
        int position;
        const char* field;
    } const cases[] = {
        {"a'b'c", 1, "b"}, {"a'b'c", 3, "c"}, {"xabxc", 0, "ab"}, {"''", 0, ""}, {"a'", 1, ""},
        {"abc", 3, ""},    {"abc", 9, ""},    {"abc", -1, ""},    {"", 0, ""},
    };
    for (const auto& one : cases)
        EXPECT_EQ(taken(delimited_at(one.text, one.position)), one.field) << one.text << one.position;
}

TEST(Fields, DelimitersAreFoundByNumber)
{
    struct {
        const char *text, *delimiter;
        int n, index;
    } const cases[] = {
        {"a,b,c", ",", 1, 1},  {"a,b,c", ",", 2, 3},    {"a,b,c", ",", 3, 5},    {"a,b,c", ",", INT_MAX, 5},
        {"a,b,c", ",", 0, -1}, {"a,b,c", ",", -7, -1},  {"", ",", 1, 0},         {"", ",", 0, -1},
        {",", ",", 1, 0},      {"a--b--c", "--", 1, 2}, {"a--b--c", "--", 2, 5}, {"aaaa", "aa", 2, 3},
        {"aaa", "aa", 2, 3},   {"abc", "", 1, 3},
    };
    for (const auto& one : cases)
        EXPECT_EQ(nth_delimiter(one.text, one.delimiter, one.n), one.index)
            << one.text << " " << one.delimiter << " " << one.n;
}

TEST(Fields, DelimitersAreCountedWithoutOverlap)
{
    struct {
        const char *text, *delimiter;
        int count;
    } const cases[] = {{"a,b,c", ",", 2}, {"abc", ",", 0},  {"", ",", 0},   {",,,", ",", 3},
                       {"aaaa", "aa", 2}, {"aaa", "aa", 1}, {"abc", "", 0}, {"a,b", ",b,", 0}};
    for (const auto& one : cases)
        EXPECT_EQ(count_delimiters(one.text, one.delimiter), one.count) << one.text << " " << one.delimiter;
}

TEST(Fields, FieldsLieBetweenTheDelimitersOfTheirNumbers)
{
    struct {
        const char *text, *delimiter;
        int n;
        const char* field;
    } const cases[] = {
        {"a,bb,c", ",", 1, "a"}, {"a,bb,c", ",", 2, "bb"},
        {"a,bb,c", ",", 3, "c"}, {"a,bb,c", ",", 4, ""},
        {"a,bb,c", ",", 5, ""},  {"a,bb,c", ",", 0, ""},
        {"a,bb,c", ",", -1, ""}, {"a,bb,c", ",", INT_MIN, ""},
        {"abc", ",", 1, "abc"},  {"", ",", 1, ""},
        {"", ",", 2, ""},        {",", ",", 1, ""},
        {",", ",", 2, ""},       {",a", ",", 2, "a"},
        {"abc", "", 1, "abc"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(taken(nth_field(one.text, one.delimiter, one.n)), one.field)
            << one.text << " " << one.delimiter << " " << one.n;
}

TEST(Fields, LongDelimitersStandInTheFieldBeforeThemButForTheirEnd)
{
    EXPECT_EQ(taken(nth_field("a::b::c", "::", 1)), "a:");
    EXPECT_EQ(taken(nth_field("a::b::c", "::", 2)), "b:");
    EXPECT_EQ(taken(nth_field("a::b::c", "::", 3)), "c");
}

TEST(Fields, ValuesOfAnySizeAreJoined)
{
    EXPECT_EQ(taken(join_value("1+", 2.5, "-3")), "1+2.500000-3");
    EXPECT_EQ(taken(join_value("", -0.0, "")), "-0.000000");
    EXPECT_EQ(taken(join_value("a", 1e-7, "b")), "a0.000000b");
    EXPECT_EQ(taken(join_value("", -DBL_MAX, "")).size(), 1u + 309 + 7);
}

TEST(Fields, ExhaustedHeapsGiveNullAndChangeNothing)
{
    host_session host;
    char text[] = "1+2";
    host::heap_refuse(1);
    EXPECT_EQ(cut_last_token(text, "+"), nullptr);
    EXPECT_STREQ(text, "1+2");
    host::heap_refuse(1);
    EXPECT_EQ(cut_first_token(text, "+"), nullptr);
    EXPECT_STREQ(text, "1+2");
    host::heap_refuse(1);
    EXPECT_EQ(join_value("a", 1.0, "b"), nullptr);
    host::heap_refuse(1);
    EXPECT_EQ(delimited_at("a,b", 1), nullptr);
    host::heap_refuse(1);
    EXPECT_EQ(nth_field("a,b", ",", 1), nullptr);
    EXPECT_TRUE(host.heap_is_as_before());
}

} // namespace
