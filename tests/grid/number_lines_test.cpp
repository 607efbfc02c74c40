// The fast ways of writing and reading numbers against the C library's.
#include "grid/number_lines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>

namespace
{

std::string ours(double value, int places)
{
    char line[NUMBER_TEXT_SIZE];
    return std::string(line, put_number_line(line, value, places));
}

std::string by_printf(double value, int places)
{
    char line[400];
    std::snprintf(line, sizeof line, "%.*f\n", places, value);
    return line;
}

std::uint64_t bits(double value)
{
    std::uint64_t out;
    std::memcpy(&out, &value, sizeof out);
    return out;
}

double from_bits(std::uint64_t b)
{
    double value;
    std::memcpy(&value, &b, sizeof value);
    return value;
}

bool reads_as_atof(const std::string& line)
{
    const double got = line_number(line.c_str(), line.c_str() + line.size()), wanted = std::atof(line.c_str());
    return bits(got) == bits(wanted) || (std::isnan(got) && std::isnan(wanted));
}

TEST(GridNumbers, SpecialValuesAreWrittenAsPrintfDoes)
{
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double value : {0.0,
                               0.5,
                               1.5,
                               2.5,
                               0.05,
                               0.25,
                               0.125,
                               0.00005,
                               0.00015,
                               1e-300,
                               5e-324,
                               98765432.1,
                               1e15,
                               1e22,
                               1e23,
                               1.7976931348623157e308,
                               9007199254740993.0,
                               123456.7890625,
                               0.4999999999999999,
                               inf,
                               nan})
        for (int places = 1; places <= 6; ++places) {
            EXPECT_EQ(ours(value, places), by_printf(value, places));
            EXPECT_EQ(ours(-value, places), by_printf(-value, places));
        }
    EXPECT_EQ(ours(-0.0, 4), "-0.0000\n");
    EXPECT_EQ(ours(-0.00001, 4), "-0.0000\n");
    EXPECT_EQ(ours(0.125, 2), "0.12\n") << "halves go to the even digit";
    EXPECT_EQ(ours(0.375, 2), "0.38\n");
}

TEST(GridNumbers, TheLargestNumberFitsItsRoom)
{
    EXPECT_EQ(ours(-std::numeric_limits<double>::max(), 6).size(),
              static_cast<std::size_t>(NUMBER_TEXT_SIZE - 1 + 1));
}

TEST(GridNumbers, MillionsOfValuesAreWrittenAsPrintfDoes)
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> elevation(-500, 9000);
    for (int i = 0; i < 1000000; ++i) {
        const int places = 2 + i % 5;
        const double sixteenths =
            std::ldexp(static_cast<double>(random() % 2000000) - 1000000, -static_cast<int>(random() % 8));
        for (const double value : {elevation(random), sixteenths, from_bits(random() & 0x43ffffffffffffff)})
            ASSERT_EQ(ours(value, places), by_printf(value, places));
        if (i % 100 == 0) {
            const double any = from_bits(random());
            ASSERT_EQ(ours(any, places), by_printf(any, places));
        }
    }
}

TEST(GridNumbers, LinesOfEveryKindAreReadAsAtofDoes)
{
    const char* const lines[] = {
        "",
        "\n",
        "  12.5\n",
        "\t-3\n",
        "\v\f\r 7",
        "+4.25\n",
        "+-4\n",
        "--4\n",
        "-",
        "-\n",
        ".",
        ".5\n",
        "-.5\n",
        "5.\n",
        "5.e3\n",
        "1e5\n",
        "1e+5\n",
        "1E-5\n",
        "1e\n",
        "1e+\n",
        "1e400\n",
        "-1e400\n",
        "1e-400\n",
        "1e-320\n",
        "4.9e-324",
        "2e-324",
        "0x1p4\n",
        "0X1F\n",
        "-0x.8p1\n",
        "0x\n",
        "0xg\n",
        "-0\n",
        "-0.0\n",
        "00012\n",
        "1.2.3\n",
        "12,5\n",
        "12 13\n",
        "12abc\n",
        "abc\n",
        "inf\n",
        "-inf\n",
        "infinity\n",
        "INF\n",
        "info\n",
        "nan\n",
        "-nan\n",
        "nan(12)\n",
        "nano\n",
        "1d5\n",
        "1_000\n",
        "1'000\n",
        "\xb7"
        "5\n",
        "- 5\n",
        "+ 5\n",
        "0\n",
        "0.1e1\n",
        "1e99999999999999999999\n",
        "1e-99999999999999999999\n",
        "123456789012345678901234567890\n",
        "0.1000000000000000055511151231257827021181583404541015625\n",
        "9007199254740992.99999999999999999999999999999\n",
        "2.2250738585072011e-308\n",
        "1.7976931348623158e308\n",
        "1.7976931348623159e308\n",
        "0e400\n",
        "-0e400\n",
        "0x1p-1080\n",
        "1e5e5\n",
        "98765432.1\n",
        "-98765432.1\n",
        "-98765432.10\n",
        "-98765432.1000\n",
    };
    for (const char* line : lines)
        EXPECT_TRUE(reads_as_atof(line)) << line;
}

TEST(GridNumbers, LinesOfChanceAreReadAsAtofDoes)
{
    std::mt19937_64 random(2);
    const std::string letters = "0123456789012345678900..--+eExXpaAfinN \t\n,";
    for (int i = 0; i < 2000000; ++i) {
        std::string line;
        for (std::uint64_t left = random() % 12; left > 0; --left)
            line += letters[random() % letters.size()];
        ASSERT_TRUE(reads_as_atof(line)) << line;
    }
}

TEST(GridNumbers, NumbersOfAnySizeAreReadAsAtofDoes)
{
    std::mt19937_64 random(3);
    char line[400];
    for (int i = 0; i < 500000; ++i) {
        const double value = from_bits(random());
        std::snprintf(line, sizeof line, "%.*g\n", 1 + static_cast<int>(random() % 25), value);
        ASSERT_TRUE(reads_as_atof(line)) << line;
        std::snprintf(line, sizeof line, "%.*f\n", static_cast<int>(random() % 8), std::fmod(value, 1e6));
        ASSERT_TRUE(reads_as_atof(line)) << line;
    }
}

} // namespace
