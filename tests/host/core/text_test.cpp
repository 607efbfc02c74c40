#include "host/core/text.h"

#include <gtest/gtest.h>

namespace
{

TEST(Text, Windows1252GoesToUtf8AndBack)
{
    std::string all;
    for (int byte = 1; byte < 256; ++byte)
        all += static_cast<char>(byte);
    EXPECT_EQ(host::cp1252_of(host::utf8_of(all)), all);
    EXPECT_EQ(host::utf8_of("12\xB0"), "12\u00B0");
    EXPECT_EQ(host::utf8_of("\x80"), "\u20AC");
}

TEST(Text, CharacterWithoutAPlaceIsRefusedOrEscaped)
{
    EXPECT_FALSE(host::cp1252_of("\u0141\u00F3d\u017A"));
    EXPECT_EQ(host::cp1252_with_escapes("\u0141d"), "\\U+0141d");
    EXPECT_EQ(host::cp1252_with_escapes("\U0001F600"), "\\U+D83D\\U+DE00");
    EXPECT_FALSE(host::cp1252_of("\xC3"));
    EXPECT_EQ(host::cp1252_with_escapes("a\xC3"), "a\xC3");
}

struct printed_real {
    double value;
    const char* text;
};
class LispReals : public testing::TestWithParam<printed_real>
{
};
TEST_P(LispReals, PrintAsLispDoes)
{
    EXPECT_EQ(host::lisp_real(GetParam().value), GetParam().text);
}
INSTANTIATE_TEST_SUITE_P(Table, LispReals,
                         testing::Values(printed_real{0, "0.0"}, printed_real{5, "5.0"},
                                         printed_real{-2.5, "-2.5"}, printed_real{1234567, "1.23457e+06"},
                                         printed_real{1e10, "1.0e+10"}, printed_real{0.1, "0.1"},
                                         printed_real{123456.78, "123457.0"}));

TEST(Text, LispStringEscapes)
{
    EXPECT_EQ(host::lisp_string("a\"b\\c\n\t\r\033\001"), "\"a\\\"b\\\\c\\n\\t\\r\\e\\001\"");
}

TEST(Text, NumbersMustBeWhole)
{
    EXPECT_EQ(host::parse_real(" 12.5 "), 12.5);
    EXPECT_EQ(host::parse_real("+3"), 3.0);
    EXPECT_EQ(host::parse_real(".5"), 0.5);
    EXPECT_EQ(host::parse_real("1e3"), 1000.0);
    for (const char* bad : {"", "x", "12x", "1,5", "inf", "nan", "1e999", "--3"})
        EXPECT_FALSE(host::parse_real(bad)) << bad;
    EXPECT_EQ(host::parse_int("-7"), -7);
    for (const char* bad : {"", "7.0", "99999999999", "7 8"})
        EXPECT_FALSE(host::parse_int(bad)) << bad;
}

TEST(Text, TrimmedTakesBlanksAtBothEnds)
{
    EXPECT_EQ(host::trimmed(" \t a b \r\n"), "a b");
    EXPECT_EQ(host::trimmed("  "), "");
}

} // namespace
