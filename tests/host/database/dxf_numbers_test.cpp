#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <random>

#include "host/database/dxf_numbers.h"
#include "host/database/dxf_texts.h"

namespace host::db
{
namespace
{

std::string real_text(double value)
{
    std::string out;
    append_real(out, value);
    return out;
}

std::string angle_text(double radians)
{
    std::string out;
    append_angle(out, radians);
    return out;
}

double any_double(std::mt19937_64& random)
{
    for (;;) {
        const double value = std::bit_cast<double>(random());
        if (std::isfinite(value))
            return value;
    }
}

TEST(DxfReal, HasAlwaysADecimalPoint)
{
    const struct {
        double value;
        const char* text;
    } cases[] = {{0.0, "0.0"},
                 {-0.0, "-0.0"},
                 {1.0, "1.0"},
                 {-25.0, "-25.0"},
                 {0.1, "0.1"},
                 {1e20, "1.0e+20"},
                 {1e-7, "1.0e-07"},
                 {1.5e-7, "1.5e-07"},
                 {1e300, "1.0e+300"},
                 {5120000.5, "5120000.5"},
                 {0.30000000000000004, "0.30000000000000004"},
                 {std::numeric_limits<double>::infinity(), "0.0"},
                 {std::numeric_limits<double>::quiet_NaN(), "0.0"}};
    for (const auto& each : cases)
        EXPECT_EQ(real_text(each.value), each.text);
}

TEST(DxfReal, ReadsBackAsTheSameDouble)
{
    std::mt19937_64 random(20260101);
    for (int i = 0; i < 200000; ++i) {
        const double value = i % 2 ? any_double(random) : std::ldexp(static_cast<double>(random() >> 11), -33);
        double back = 0;
        ASSERT_TRUE(read_real(real_text(value), &back)) << real_text(value);
        ASSERT_EQ(std::bit_cast<std::uint64_t>(back), std::bit_cast<std::uint64_t>(value)) << real_text(value);
    }
}

TEST(DxfReal, ShortFormsAreRoundedAsTheLibraryDoes)
{
    std::mt19937_64 random(7);
    for (int i = 0; i < 200000; ++i) {
        std::string text = std::to_string(random() % 1000000000000000u);
        text.insert(random() % (text.size() + 1), ".");
        if (text == ".")
            continue;
        double ours = 0, theirs = 0;
        ASSERT_TRUE(read_real(text, &ours)) << text;
        std::from_chars(text.data(), text.data() + text.size(), theirs);
        ASSERT_EQ(ours, theirs) << text;
    }
}

TEST(DxfReal, TakesTheFormsThatProgramsWrite)
{
    const struct {
        const char* text;
        double value;
    } cases[] = {{"  12.5", 12.5}, {"12.5  ", 12.5},
                 {"\t7", 7.0},     {"+3.5", 3.5},
                 {".5", 0.5},      {"5.", 5.0},
                 {"-.25", -0.25},  {"1E+20", 1e20},
                 {"1e-400", 0.0},  {"2.5e3", 2500.0},
                 {"-0", -0.0},     {"123456789012345678901234567890", 123456789012345678901234567890.0}};
    for (const auto& each : cases) {
        double value = 99;
        EXPECT_TRUE(read_real(each.text, &value)) << each.text;
        EXPECT_EQ(value, each.value) << each.text;
    }
    for (const char* text :
         {"", " ", "abc", "1,5", "1.5x", "--1", "+-1", "nan", "inf", "1e400", "1e", ".", "-", "0x10"}) {
        double value = 0;
        EXPECT_FALSE(read_real(text, &value)) << text;
    }
}

TEST(DxfInteger, TakesWholeNumbersOnly)
{
    const struct {
        const char* text;
        std::int64_t value;
    } cases[] = {{"0", 0},
                 {"     7", 7},
                 {"-5 ", -5},
                 {"+4", 4},
                 {"3.0", 3},
                 {"4294967295", 4294967295},
                 {"-9223372036854775808", std::numeric_limits<std::int64_t>::min()}};
    for (const auto& each : cases) {
        std::int64_t value = 99;
        EXPECT_TRUE(read_integer(each.text, &value)) << each.text;
        EXPECT_EQ(value, each.value) << each.text;
    }
    for (const char* text : {"", "x", "1.5", "9223372036854775808", "1e300", "7 8"}) {
        std::int64_t value = 0;
        EXPECT_FALSE(read_integer(text, &value)) << text;
    }
}

TEST(DxfHandle, IsHexadecimal)
{
    std::uint64_t value = 0;
    EXPECT_TRUE(read_handle(" 1fA", &value));
    EXPECT_EQ(value, 0x1FAu);
    EXPECT_TRUE(read_handle("FFFFFFFFFFFFFFFF", &value));
    for (const char* text : {"", "XYZ", "1G", "-1", "10000000000000000"})
        EXPECT_FALSE(read_handle(text, &value)) << text;
    std::string out;
    append_handle(out, 0xABCDEF);
    EXPECT_EQ(out, "ABCDEF");
}

TEST(DxfAngle, UsualDegreesComeBackAsTheyWere)
{
    for (const char* degrees : {"0.0", "90.0", "45.3", "180.0", "359.99999999999994", "12.345678901234",
                                "-30.0", "0.1", "270.25", "1.0e-07"}) {
        double radians = 0;
        ASSERT_TRUE(read_angle(degrees, &radians));
        EXPECT_EQ(angle_text(radians), degrees);
    }
    double right = 0;
    ASSERT_TRUE(read_angle("90", &right));
    EXPECT_EQ(right, 1.5707963267948966);
}

TEST(DxfAngle, EveryAngleReadsBackAsTheSameDouble)
{
    std::mt19937_64 random(4711);
    std::uniform_real_distribution<double> turn(-7.0, 7.0);
    for (int i = 0; i < 100000; ++i) {
        const double radians = turn(random);
        double back = 0;
        ASSERT_TRUE(read_angle(angle_text(radians), &back));
        ASSERT_EQ(back, radians) << angle_text(radians);
    }
}

TEST(DxfHex, GoesBothWays)
{
    std::string bytes;
    ASSERT_TRUE(read_hex("00fF10", &bytes));
    EXPECT_EQ(bytes, std::string("\x00\xFF\x10", 3));
    std::string text;
    append_hex(text, bytes);
    EXPECT_EQ(text, "00FF10");
    EXPECT_FALSE(read_hex("123", &bytes));
    EXPECT_FALSE(read_hex("zz", &bytes));
    EXPECT_FALSE(read_hex("+1", &bytes));
}

struct text_case {
    const char *file, *stored;
};

TEST(DxfText, ControlCharactersStandAsCarets)
{
    for (const text_case& each :
         {text_case{"a^Jb", "a\nb"}, text_case{"2^ 3", "2^3"}, text_case{"tab^I", "tab\t"},
          text_case{"plain", "plain"}, text_case{"", ""}}) {
        std::string room, out;
        EXPECT_EQ(stored_text(each.file, false, room), each.stored);
        append_text(out, each.stored, false);
        EXPECT_EQ(out, each.file);
    }
    std::string room;
    EXPECT_EQ(stored_text("2^3^", false, room), "2^3^");
    EXPECT_EQ(stored_text("^@", false, room), "^@");
}

TEST(DxfText, NewerFilesAreUtf8)
{
    for (const text_case& each :
         {text_case{"Caf\xC3\xA9 \xE2\x82\xAC", "Caf\xE9 \x80"}, text_case{"\xCE\xA9^J", "\\U+03A9\n"},
          text_case{"\xF0\x9F\x98\x80", "\\U+D83D\\U+DE00"}, text_case{"\\U+00E9", "\\U+00E9"},
          text_case{"\\U+03a9 \xC3\xA9", "\\U+03a9 \xE9"}, text_case{"\\U+D83D", "\\U+D83D"},
          text_case{"\\U+12", "\\U+12"}}) {
        std::string room, out;
        EXPECT_EQ(stored_text(each.file, true, room), each.stored);
        append_text(out, each.stored, true);
        EXPECT_EQ(out, each.file);
    }
}

TEST(DxfText, WhateverIsStoredComesBack)
{
    std::mt19937 random(99);
    const char* pieces[] = {"^",        " ",  "J",  "\\U+03A9", "\\U+D83D", "\\U+DE00",
                            "\\U+00e9", "\\", "U+", "\xE9",     "\x80",     "\x81",
                            "\n",       "\t", "A",  "^J",       "{",        "\x1F"};
    for (int i = 0; i < 20000; ++i) {
        std::string stored;
        for (unsigned n = random() % 8; n > 0; --n)
            stored += pieces[random() % std::size(pieces)];
        for (const bool as_utf8 : {false, true}) {
            std::string file, room;
            append_text(file, stored, as_utf8);
            ASSERT_EQ(file.find('\n'), std::string::npos);
            ASSERT_EQ(stored_text(file, as_utf8, room), stored) << file;
        }
    }
}

} // namespace
} // namespace host::db
