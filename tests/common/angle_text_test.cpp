// Angles, bearings, stations and the helpers of road design. Beside the tables each operation is compared with
// a plain computation of another kind on many values of a fixed seed.
#include "common/angle_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace
{

constexpr double PI = 3.141592653589793;
constexpr double HUGE_NUMBER = std::numeric_limits<double>::max();
constexpr double ENDLESS = std::numeric_limits<double>::infinity();
const double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr int MANY = 20000;

double angle_of(int degrees, int minutes, double seconds)
{
    return degrees + minutes / 60.0 + seconds / 3600.0;
}

std::string text_of(double value, int whole_seconds = 0, int symbols = 0)
{
    char out[DMS_TEXT_SIZE];
    dms_text(value, out, whole_seconds, symbols);
    return out;
}

// ---- directions ----------------------------------------------------------------------------------

TEST(PointAngle, RunsCounterClockwiseFromTheXAxis)
{
    struct direction {
        double dx, dy, angle;
    };
    const direction cases[] = {{1, 0, 0},           {1, 1, PI / 4},      {0, 1, PI / 2},
                               {-1, 1, 3 * PI / 4}, {-1, 0, PI},         {-1, -1, 5 * PI / 4},
                               {0, -1, 3 * PI / 2}, {1, -1, 7 * PI / 4}, {1, -1e-12, 2 * PI}};
    const double starts[][2] = {{0, 0}, {640000, 5120000}};
    for (const direction& c : cases)
        for (const auto& from : starts) {
            const double to[2] = {from[0] + c.dx, from[1] + c.dy};
            const double angle = to[1] == from[1] && c.dy < 0 ? 0.0 : c.angle; // too small far out
            EXPECT_NEAR(point_angle(from, to), angle, 1e-12) << c.dx << ' ' << c.dy;
        }
}

TEST(PointAngle, OfPointsCloserThanAMillionthIsZero)
{
    const double from[2] = {0, 0};
    for (const double d : {0.0, 1e-7, 0.999e-6}) {
        const double to[2] = {-d, 0};
        EXPECT_EQ(point_angle(from, to), 0.0) << d;
    }
    const double on_it[2] = {-1e-6, 0}, outside[2] = {0, -1.001e-6};
    EXPECT_NEAR(point_angle(from, on_it), PI, 1e-12);
    EXPECT_NEAR(point_angle(from, outside), 3 * PI / 2, 1e-12);
}

TEST(PointAngle, IsTheArcTangentOfAnyPair)
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> coordinate(-1000.0, 1000.0);
    for (int i = 0; i < MANY; ++i) {
        const double from[2] = {coordinate(random), coordinate(random)};
        const double to[2] = {coordinate(random), coordinate(random)};
        double expected = std::atan2(to[1] - from[1], to[0] - from[0]);
        if (expected < 0.0)
            expected += 2 * PI;
        const double angle = point_angle(from, to);
        // The cosine says little about an angle near 0 or pi.
        EXPECT_NEAR(angle, expected, 1e-7);
        EXPECT_GE(angle, 0.0);
        EXPECT_LE(angle, 6.283185307179586);
    }
}

TEST(PointAngle, OfBoundlessCoordinatesIsNoFault)
{
    const double near[2] = {0, 0}, far[2] = {HUGE_NUMBER, HUGE_NUMBER}, none[2] = {NOT_A_NUMBER, 0};
    EXPECT_TRUE(std::isfinite(point_angle(near, far)));
    EXPECT_TRUE(std::isnan(point_angle(near, none)));
}

// ---- degrees, minutes and seconds as text -------------------------------------------------------------

struct text_case {
    double value;
    const char *plain, *symbols, *whole, *whole_symbols;
};

TEST(DmsText, WritesEachFormOfEachRow)
{
    const text_case cases[] = {
        {0.0, "0.000000000",
         "0\xB0"
         "00'00.00000\"",
         "0.0000",
         "0\xB0"
         "00'00\""},
        {-0.0, "0.000000000",
         "0\xB0"
         "00'00.00000\"",
         "0.0000",
         "0\xB0"
         "00'00\""},
        {0.5, "0.300000000",
         "0\xB0"
         "30'00.00000\"",
         "0.3000",
         "0\xB0"
         "30'00\""},
        {12.5, "12.300000000",
         "12\xB0"
         "30'00.00000\"",
         "12.3000",
         "12\xB0"
         "30'00\""},
        {12.0525, "12.030900000",
         "12\xB0"
         "03'09.00000\"",
         "12.0309",
         "12\xB0"
         "03'09\""},
        {-12.0525, "-12.030900000",
         "-12\xB0"
         "03'09.00000\"",
         "-12.0309",
         "-12\xB0"
         "03'09\""},
        {360.0, "360.000000000",
         "360\xB0"
         "00'00.00000\"",
         "360.0000",
         "360\xB0"
         "00'00\""},
        // seconds and minutes of two digits and of one
        {angle_of(12, 34, 56.25), "12.345625000",
         "12\xB0"
         "34'56.25000\"",
         "12.3456",
         "12\xB0"
         "34'56\""},
        {angle_of(12, 5, 56.25), "12.055625000",
         "12\xB0"
         "05'56.25000\"",
         "12.0556",
         "12\xB0"
         "05'56\""},
        {angle_of(12, 34, 6.25), "12.340625000",
         "12\xB0"
         "34'06.25000\"",
         "12.3406",
         "12\xB0"
         "34'06\""},
        {angle_of(12, 5, 6.25), "12.050625000",
         "12\xB0"
         "05'06.25000\"",
         "12.0506",
         "12\xB0"
         "05'06\""},
        {-angle_of(12, 34, 56.25), "-12.345625000",
         "-12\xB0"
         "34'56.25000\"",
         "-12.3456",
         "-12\xB0"
         "34'56\""},
        {-angle_of(12, 5, 56.25), "-12.055625000",
         "-12\xB0"
         "05'56.25000\"",
         "-12.0556",
         "-12\xB0"
         "05'56\""},
        {-angle_of(12, 5, 6.25), "-12.050625000",
         "-12\xB0"
         "05'06.25000\"",
         "-12.0506",
         "-12\xB0"
         "05'06\""},
        {-angle_of(0, 5, 6.25), "-0.050625000",
         "-0\xB0"
         "05'06.25000\"",
         "-0.0506",
         "-0\xB0"
         "05'06\""},
        // at 10 minutes and 10 seconds, and just below
        {angle_of(1, 10, 10), "1.101000000",
         "1\xB0"
         "10'10.00000\"",
         "1.1010",
         "1\xB0"
         "10'10\""},
        {angle_of(1, 9, 9.25), "1.090925000",
         "1\xB0"
         "09'09.25000\"",
         "1.0909",
         "1\xB0"
         "09'09\""},
        {angle_of(1, 10, 9.75), "1.100975000",
         "1\xB0"
         "10'09.75000\"",
         "1.1010",
         "1\xB0"
         "10'10\""},
    };
    for (const text_case& c : cases) {
        EXPECT_EQ(text_of(c.value, 0, 0), c.plain);
        EXPECT_EQ(text_of(c.value, 0, 1), c.symbols);
        EXPECT_EQ(text_of(c.value, 1, 0), c.whole);
        EXPECT_EQ(text_of(c.value, 1, 1), c.whole_symbols);
    }
}

TEST(DmsText, NegativeWithTwoDigitsOfMinutesAndOneOfSecondsHasNoSecondMark)
{
    EXPECT_EQ(text_of(-angle_of(12, 34, 6), 1, 1), "-12\xB0"
                                                   "34'06");
    EXPECT_EQ(text_of(-angle_of(12, 10, 0), 1, 1), "-12\xB0"
                                                   "10'00");
    EXPECT_EQ(text_of(-angle_of(12, 34, 6), 1, 0), "-12.3406");
    EXPECT_EQ(text_of(-angle_of(12, 34, 6), 0, 1), "-12\xB0"
                                                   "34'06.00000\"");
}

TEST(DmsText, FlagsCountOnlyWhenTheyAreOne)
{
    for (const int flag : {0, 2, -1, 256})
        EXPECT_EQ(text_of(12.5, flag, flag), "12.300000000") << flag;
    for (const int flag : {0, 2, -1, 257}) {
        EXPECT_EQ(text_of(12.5, 1, flag), "12.3000") << flag;
        EXPECT_EQ(text_of(12.5, flag, 1), "12\xB0"
                                          "30'00.00000\"")
            << flag;
    }
}

TEST(DmsText, CarriesSecondsAndMinutesThatRoundToSixty)
{
    const text_case cases[] = {
        // seconds that are printed as 60, with and without a carry into the degrees
        {angle_of(29, 58, 59.999999), "29.590000000",
         "29\xB0"
         "59'00.00000\"",
         "29.5900",
         "29\xB0"
         "59'00\""},
        {angle_of(29, 59, 59.999999), "30.000000000",
         "30\xB0"
         "00'00.00000\"",
         "30.0000",
         "30\xB0"
         "00'00\""},
        {angle_of(9, 8, 59.999999), "9.090000000",
         "9\xB0"
         "09'00.00000\"",
         "9.0900",
         "9\xB0"
         "09'00\""},
        // degrees that are rounded up by their own print leave a minus in front of minutes and seconds
        {29.9999999999, "30.000000000",
         "30\xB0"
         "00'00.00000\"",
         "30.0000",
         "30\xB0"
         "00'00\""},
        {-29.9999999999, "-30.000000000",
         "-30\xB0"
         "00'00.00000\"",
         "-30.0000",
         "-30\xB0"
         "00'00\""},
        // whole seconds only
        {29.9999999, "29.595999964",
         "29\xB0"
         "59'59.99964\"",
         "30.0000",
         "30\xB0"
         "00'00\""},
        {-29.9999999, "-29.595999964",
         "-29\xB0"
         "59'59.99964\"",
         "-30.0000",
         "-30\xB0"
         "00'00\""},
        {angle_of(29, 58, 59.75), "29.585975000",
         "29\xB0"
         "58'59.75000\"",
         "29.5900",
         "29\xB0"
         "59'00\""},
        {angle_of(9, 9, 59.75), "9.095975000",
         "9\xB0"
         "09'59.75000\"",
         "9.1000",
         "9\xB0"
         "10'00\""},
        {angle_of(359, 59, 59.75), "359.595975000",
         "359\xB0"
         "59'59.75000\"",
         "360.0000",
         "360\xB0"
         "00'00\""},
    };
    for (const text_case& c : cases) {
        EXPECT_EQ(text_of(c.value, 0, 0), c.plain);
        EXPECT_EQ(text_of(c.value, 0, 1), c.symbols);
        EXPECT_EQ(text_of(c.value, 1, 0), c.whole);
        EXPECT_EQ(text_of(c.value, 1, 1), c.whole_symbols);
    }
}

TEST(DmsText, FiftyNineAndAHalfSecondsArePrintedAsSixtyAndNotCarried)
{
    EXPECT_EQ(text_of(angle_of(12, 34, 59.5), 1, 0), "12.3460");
    EXPECT_EQ(text_of(-angle_of(12, 4, 59.5), 1, 1), "-12\xB0"
                                                     "04'60\"");
    EXPECT_EQ(text_of(angle_of(12, 34, 59.50001), 1, 0), "12.3500");
    EXPECT_EQ(text_of(angle_of(12, 34, 59.49999), 1, 0), "12.3459");
}

TEST(DmsText, HalfSecondsGoToTheEvenSecond)
{
    EXPECT_EQ(text_of(angle_of(12, 34, 8.5), 1, 0), "12.3408");
    EXPECT_EQ(text_of(angle_of(12, 34, 9.5), 1, 0), "12.3410");
    EXPECT_EQ(text_of(angle_of(12, 34, 10.5), 1, 0), "12.3410");
    EXPECT_EQ(text_of(angle_of(12, 34, 9.49999), 1, 0), "12.3409");
}

TEST(DmsText, AnythingFitsIntoItsRoomAndNothingIsWrittenPastABuffer)
{
    const std::string many = text_of(-HUGE_NUMBER);
    EXPECT_EQ(many.size(), 1u + 309u + 1u + 9u);
    EXPECT_EQ(many.substr(0, 9), "-17976931");
    EXPECT_EQ(many.substr(310), ".000000000");
    EXPECT_EQ(text_of(-HUGE_NUMBER, 0, 1).substr(310), "\xB0"
                                                       "00'00.00000\"");
    EXPECT_EQ(text_of(HUGE_NUMBER, 1, 0).substr(309), ".0000");
    EXPECT_EQ(text_of(3e9, 1, 0), "3000000000.0000");
    for (const double value : {HUGE_NUMBER, -HUGE_NUMBER, ENDLESS, -ENDLESS, NOT_A_NUMBER, -NOT_A_NUMBER,
                               1e-320, -1e-320, 1e15 + 0.5, 123.456})
        for (const int whole : {0, 1})
            for (const int symbols : {0, 1}) {
                const std::string whole_text = text_of(value, whole, symbols);
                EXPECT_LT(whole_text.size(), static_cast<std::size_t>(DMS_TEXT_SIZE));
                EXPECT_FALSE(whole_text.empty());
                for (const std::size_t size : {0u, 1u, 2u, 5u, 11u}) {
                    std::vector<char> out(size + 1, '#');
                    dms_text(value, {out.data(), size}, whole, symbols);
                    EXPECT_EQ(out[size], '#');
                    if (size > 0) {
                        EXPECT_EQ(out.data(), whole_text.substr(0, size - 1));
                    }
                }
            }
}

// A whole number of hundred-thousandths of a second, taken apart by integers.
struct plain_parts {
    long long degrees, minutes, seconds, fraction;
};

plain_parts parts_of(long long units)
{
    return {units / 360000000, units / 6000000 % 60, units / 100000 % 60, units % 100000};
}

std::string padded(long long number)
{
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string plain_fraction_text(long long units, bool negative, bool symbols)
{
    const plain_parts p = parts_of(units);
    const std::string fraction = std::to_string(100000 + p.fraction).substr(1);
    return (negative ? "-" : "") + std::to_string(p.degrees) + (symbols ? "\xB0" : ".") + padded(p.minutes) +
           (symbols ? "'" : "") + padded(p.seconds) + (symbols ? "." : "") + fraction + (symbols ? "\"" : "");
}

std::string plain_whole_text(long long units, bool negative, bool symbols)
{
    plain_parts p = parts_of(units);
    if (p.fraction > 50000 || (p.fraction == 50000 && p.seconds % 2 == 1)) {
        if (p.seconds == 59 && p.fraction > 50000)
            p = parts_of((units / 6000000 + 1) * 6000000);
        else
            ++p.seconds; // of 59.5 it is 60
    }
    const bool no_mark = negative && p.minutes >= 10 && p.seconds < 10;
    return (negative ? "-" : "") + std::to_string(p.degrees) + (symbols ? "\xB0" : ".") + padded(p.minutes) +
           (symbols ? "'" : "") + padded(p.seconds) + (symbols && !no_mark ? "\"" : "");
}

// Angles of every kind: anywhere, on whole seconds and halves of them, and a hair beside whole minutes.
std::vector<double> many_angles()
{
    std::mt19937_64 random(2);
    std::uniform_real_distribution<double> anywhere(-720.0, 720.0), hair(-2e-8, 2e-8);
    std::uniform_int_distribution<int> degree(0, 400), sixtieth(0, 59), half(0, 119);
    std::vector<double> angles;
    for (int i = 0; i < MANY; ++i) {
        angles.push_back(anywhere(random));
        const double minute = angle_of(degree(random), sixtieth(random), 0);
        angles.push_back(minute + hair(random));
        angles.push_back(-(minute + half(random) / 7200.0));
        angles.push_back(angle_of(degree(random), 59, 59.5) + hair(random));
    }
    return angles;
}

TEST(DmsText, IsWhatIntegersGive)
{
    int compared = 0;
    const std::vector<double> angles = many_angles();
    for (const double value : angles) {
        const double exact = std::fabs(value) * 360000000.0;
        const long long units = std::llround(exact);
        if (std::fabs(std::fabs(exact - static_cast<double>(units)) - 0.5) < 0.01)
            continue; // a tie of the last decimal: either text is right
        ++compared;
        const bool negative = value < 0.0;
        for (const bool symbols : {false, true}) {
            EXPECT_EQ(text_of(value, 0, symbols), plain_fraction_text(units, negative, symbols)) << value;
            EXPECT_EQ(text_of(value, 1, symbols), plain_whole_text(units, negative, symbols)) << value;
        }
    }
    EXPECT_GT(compared, static_cast<int>(angles.size()) * 9 / 10);
}

// ---- splitting and reading dd.mmss ---------------------------------------------------------------------

struct split_case {
    double value, degrees, minutes, seconds;
};

TEST(DmsSplit, GivesThePartsAsWritten)
{
    const split_case cases[] = {{30.1005, 30, 10, 5},
                                {0.0, 0, 0, 0},
                                {359.5959, 359, 59, 59},
                                {-30.1005, -30, -10, -5},
                                {-0.3, 0, -30, 0},
                                {10.7599, 10, 75, 99},
                                {12.34567891, 12, 34, 56.7891},
                                {30.0000004, 30, 0, 0.004},
                                {29.9999999, 30, 0, -0.001},
                                {30.109999999, 30, 11, -0.00001},
                                {1e15, 1e15, 0, 0},
                                {0.29, 0, 29, 0},
                                {1.15, 1, 15, 0}};
    for (const split_case& c : cases) {
        double degrees = -1, minutes = -1, seconds = -1;
        dms_split(c.value, &degrees, &minutes, &seconds);
        EXPECT_EQ(degrees, c.degrees) << c.value;
        EXPECT_EQ(minutes, c.minutes) << c.value;
        EXPECT_NEAR(seconds, c.seconds, 1.01e-6) << c.value;
    }
}

TEST(DmsSplit, OfWhatHasNoEndIsNoFault)
{
    double degrees = 0, minutes = 0, seconds = 0;
    dms_split(-HUGE_NUMBER, &degrees, &minutes, &seconds);
    EXPECT_EQ(degrees, -HUGE_NUMBER);
    EXPECT_EQ(minutes, 0.0);
    EXPECT_EQ(seconds, 0.0);
    for (const double value : {ENDLESS, NOT_A_NUMBER}) {
        dms_split(value, &degrees, &minutes, &seconds);
        EXPECT_TRUE(std::isnan(seconds));
    }
}

struct degrees_case {
    const char* text;
    double degrees;
};

TEST(DmsDegrees, ReadsTextAndNumber)
{
    const degrees_case cases[] = {{"30.1005", angle_of(30, 10, 5)},
                                  {"30", 30},
                                  {"30.", 30},
                                  {".3", 0.5},
                                  {"0.3036", 0.51},
                                  {"12.3456789", angle_of(12, 34, 56.789)},
                                  {"359.5959", angle_of(359, 59, 59)},
                                  {"10.7599", angle_of(10, 75, 99)},
                                  {"-0.3", -0.5},
                                  {"-30.1005", -angle_of(30, 10, 5)},
                                  {"+30.1005", angle_of(30, 10, 5)},
                                  {" 30.1005", angle_of(30, 10, 5)},
                                  {"30.1005E", angle_of(30, 10, 5)},
                                  {"", 0},
                                  {"x", 0}};
    for (const degrees_case& c : cases)
        for (const int decimals : {7, 9}) {
            EXPECT_NEAR(dms_degrees_of_text(c.text, decimals), c.degrees, 1e-12) << c.text;
            char minutes[DMS_TEXT_SIZE];
            EXPECT_NEAR(dms_degrees(std::atof(c.text), decimals, minutes), c.degrees, 1e-12) << c.text;
        }
}

TEST(DmsDegrees, MinutesAreThoseOfTheirPrint)
{
    const double rounded_up = 11 / 60.0, as_it_is = angle_of(0, 10, 99.9996);
    char minutes[DMS_TEXT_SIZE];
    EXPECT_NEAR(dms_degrees_of_text("0.10999999996", 7), rounded_up, 1e-9);
    EXPECT_NEAR(dms_degrees_of_text("0.10999999996", 9), as_it_is, 1e-6);
    EXPECT_NEAR(dms_degrees(0.10999999996, 7, minutes), rounded_up, 1e-9);
    EXPECT_STREQ(minutes, "11");
    EXPECT_NEAR(dms_degrees(0.10999999996, 9, minutes), as_it_is, 1e-6);
    EXPECT_STREQ(minutes, "10");
}

TEST(DmsDegrees, DegreesOfANumberAreThoseOfItsPrintAndOfATextThoseThatStandThere)
{
    char minutes[DMS_TEXT_SIZE];
    EXPECT_NEAR(dms_degrees(29.9999999999, 7, minutes), 30.0, 1e-6);
    EXPECT_NEAR(dms_degrees_of_text("29.9999999999", 7), 29 + 100 / 60.0, 1e-6);
    EXPECT_NEAR(dms_degrees_of_text("29.9999999999", 9), angle_of(29, 99, 99.999999), 1e-6);
}

TEST(DmsDegrees, MinutesTextIsLeftBehind)
{
    char minutes[DMS_TEXT_SIZE];
    dms_degrees(30.1005, 7, minutes);
    EXPECT_STREQ(minutes, "10");
    dms_degrees(-30.1005, 7, minutes);
    EXPECT_STREQ(minutes, "-10");
    dms_degrees(45, 7, minutes);
    EXPECT_STREQ(minutes, "0");
    char small[2] = {'#', '#'};
    dms_degrees(30.1005, 7, small);
    EXPECT_STREQ(small, "1");
}

TEST(DmsDegrees, OfWhatHasNoEndIsNoFault)
{
    char minutes[DMS_TEXT_SIZE];
    for (const double value : {ENDLESS, -ENDLESS, NOT_A_NUMBER})
        EXPECT_FALSE(std::isfinite(dms_degrees(value, 7, minutes)));
    EXPECT_EQ(dms_degrees(HUGE_NUMBER, 7, minutes), HUGE_NUMBER);
    const std::string digits(5000, '9');
    EXPECT_FALSE(std::isfinite(dms_degrees_of_text(digits.c_str(), 9)));
    EXPECT_NEAR(dms_degrees_of_text(("1." + digits).c_str(), 9), 1 + 100 / 60.0, 1e-9);
    EXPECT_EQ(dms_degrees(12.5, 5000, minutes), 12.5 + 20.0 / 60.0);
    // The degrees are cut off at the point: 1 of 1.5e300.
    EXPECT_GT(dms_degrees_of_text("1.5e300", 9), 1e300);
    EXPECT_FALSE(std::isfinite(dms_degrees_of_text("1.7e308", 9)));
}

TEST(DmsDegrees, AndSplitReadWhatIsWrittenByIntegers)
{
    std::mt19937_64 random(3);
    std::uniform_int_distribution<int> degree(0, 719), sixtieth(0, 59), fraction(0, 9999);
    for (int i = 0; i < MANY; ++i) {
        const int d = degree(random), m = sixtieth(random), s = sixtieth(random), f = fraction(random);
        char text[40], minutes_text[DMS_TEXT_SIZE];
        std::snprintf(text, sizeof text, "%d.%02d%02d%04d", d, m, s, f);
        const double number = std::atof(text), expected = angle_of(d, m, s + f / 10000.0);
        EXPECT_NEAR(dms_degrees_of_text(text, 9), expected, 1e-10) << text;
        EXPECT_NEAR(dms_degrees(number, 7, minutes_text), expected, 1e-10) << text;
        EXPECT_EQ(std::to_string(m), minutes_text) << text;
        double degrees, minutes, seconds;
        dms_split(number, &degrees, &minutes, &seconds);
        EXPECT_EQ(degrees, d) << text;
        EXPECT_EQ(minutes, m) << text;
        EXPECT_NEAR(seconds, s + f / 10000.0, 2e-6) << text;
    }
}

TEST(DmsDegrees, ReadBackWhatDmsTextWrites)
{
    for (const double value : many_angles()) {
        const std::string text = text_of(value);
        // Seconds that stand at 59.99999... are read from a text of more decimals than a double keeps.
        EXPECT_NEAR(dms_degrees_of_text(text.c_str(), 9), value, 2e-9) << text;
    }
}

// ---- quadrant bearings -----------------------------------------------------------------------------------

struct bearing_case {
    const char* text;
    int quadrant;
    double direction;
};

TEST(QuadrantBearing, HasItsDirection)
{
    const double a = angle_of(30, 10, 5);
    const bearing_case cases[] = {{"130.1005", 1, 90 - a},
                                  {"230.1005", 2, 270 + a},
                                  {"330.1005", 3, 270 - a},
                                  {"430.1005", 4, 90 + a},
                                  {"530.1005", 5, 90 - a},
                                  {"5300", 5, -210},
                                  {"10", 1, 90},
                                  {"20", 2, 270},
                                  {"30", 3, 270},
                                  {"40", 4, 90},
                                  {"50", 5, 90},
                                  {"590", 5, 0},
                                  {"630.1005", 6, a},
                                  {"730.1005", 7, a},
                                  {"830.1005", 8, a},
                                  {"930.1005", 9, a},
                                  {"030.1005", 5, 90 - a},
                                  {"x30.1005", 5, 90 - a},
                                  {"-30.1005", 5, 90 - a},
                                  {" 130.3", 5, 90 - 130.5},
                                  {".30", 5, 60},
                                  {"\xB2"
                                   "30.1005",
                                   5, 90 - a},
                                  {"1", 1, 90},
                                  {"", 5, 90}};
    for (const bearing_case& c : cases) {
        const quadrant_bearing bearing = read_quadrant_bearing(c.text);
        EXPECT_EQ(bearing.quadrant, c.quadrant) << c.text;
        EXPECT_NEAR(bearing_direction(bearing), c.direction, 1e-12) << c.text;
    }
}

TEST(QuadrantBearing, MinutesAreThoseOfNineDecimals)
{
    EXPECT_NEAR(read_quadrant_bearing("10.10999999996").angle, angle_of(0, 10, 99.9999996), 1e-9);
    EXPECT_NEAR(read_quadrant_bearing("10.1099999999996").angle, 11 / 60.0, 1e-9);
}

TEST(QuadrantBearing, AndAzimuthNameTheSameDirection)
{
    // North-east A is azimuth A, south-east 180 - A, south-west 180 + A, north-west 360 - A.
    for (int a = 0; a <= 90; ++a) {
        const double azimuths[] = {0.0 + a, 180.0 - a, 180.0 + a, 360.0 - a};
        for (int quadrant = 1; quadrant <= 4; ++quadrant) {
            const double by_quadrant = bearing_direction({quadrant, 0.0 + a});
            const double by_azimuth = bearing_direction({5, azimuths[quadrant - 1]});
            EXPECT_EQ(std::fmod(by_quadrant - by_azimuth, 360.0), 0.0) << quadrant << ' ' << a;
        }
    }
}

// ---- stations and road design -----------------------------------------------------------------------------

TEST(StationValue, DropsEveryPlus)
{
    const degrees_case cases[] = {{"12+50.25", 1250.25},
                                  {"1+00+50", 10050},
                                  {"1250.25", 1250.25},
                                  {"", 0},
                                  {"+", 0},
                                  {"+12", 12},
                                  {"12+", 12},
                                  {"++1++2++", 12},
                                  {"-1+50.5", -150.5},
                                  {"0+00.5", 0.5},
                                  {"12+50.25 LT", 1250.25},
                                  {"STA 1+00", 0},
                                  {"1e+2", 100}};
    for (const degrees_case& c : cases)
        EXPECT_EQ(station_value(c.text), c.degrees) << c.text;
    std::string zeros = "1";
    for (int i = 0; i < 100000; ++i)
        zeros += "+";
    EXPECT_EQ(station_value((zeros + "5").c_str()), 15);
}

TEST(Texts, ThatAreNullReadAsEmpty)
{
    EXPECT_EQ(dms_degrees_of_text(nullptr, 9), 0.0);
    EXPECT_EQ(read_quadrant_bearing(nullptr).quadrant, 5);
    EXPECT_EQ(read_quadrant_bearing(nullptr).angle, 0.0);
    EXPECT_EQ(station_value(nullptr), 0.0);
}

TEST(RotateAbout, TurnsClockwiseByTheArcTangentOfTheSlope)
{
    double x = 10, y = 0;
    rotate_about(x, y, 0, 0, 1);
    EXPECT_NEAR(x, std::sqrt(50.0), 1e-12);
    EXPECT_NEAR(y, -std::sqrt(50.0), 1e-12);
    rotate_about(x, y, 0, 0, -1);
    EXPECT_NEAR(x, 10, 1e-6);
    EXPECT_NEAR(y, 0, 1e-6);
}

TEST(RotateAbout, LeavesAPointAtItsCentre)
{
    for (const double d : {0.0, 0.005, 0.00999}) {
        double x = 7 + d, y = 8;
        rotate_about(x, y, 7, 8, 5);
        EXPECT_EQ(x, 7 + d);
        EXPECT_EQ(y, 8);
    }
    double x = 0.01, y = 0;
    rotate_about(x, y, 0, 0, 1);
    EXPECT_NEAR(y, -0.01 / std::sqrt(2.0), 1e-12);
}

TEST(RotateAbout, IsAProductOfComplexNumbers)
{
    std::mt19937_64 random(4);
    std::uniform_real_distribution<double> coordinate(-1000.0, 1000.0), slope(-50.0, 50.0);
    for (int i = 0; i < MANY; ++i) {
        const std::complex<double> centre(coordinate(random), coordinate(random));
        const std::complex<double> point(coordinate(random), coordinate(random));
        const double tangent = slope(random);
        const std::complex<double> turn(1.0, -tangent);
        const std::complex<double> expected = centre + (point - centre) * turn / std::abs(turn);
        double x = point.real(), y = point.imag();
        rotate_about(x, y, centre.real(), centre.imag(), tangent);
        EXPECT_NEAR(x, expected.real(), 1e-4);
        EXPECT_NEAR(y, expected.imag(), 1e-4);
    }
}

TEST(VerticalCurve, RisesAndFallsBetweenItsGrades)
{
    const auto elevation = [](double station) {
        return vertical_curve_elevation(0, 100, 500, 110, 1000, 100, 200, 200, station);
    };
    EXPECT_NEAR(elevation(300), 106, 1e-12); // start, on the grade before
    EXPECT_NEAR(elevation(400), 107.5, 1e-12);
    EXPECT_NEAR(elevation(500), 108, 1e-12); // halfway from the chord to the intersection
    EXPECT_NEAR(elevation(600), 107.5, 1e-12);
    EXPECT_NEAR(elevation(700), 106, 1e-12);
    EXPECT_NEAR(elevation(200), 103.5, 1e-12); // the parabola goes on
}

TEST(VerticalCurve, OfUnequalLengths)
{
    // Grades of 3 and -2 percent, 100 back and 300 ahead. The chord between the middles of the legs, from
    // (950, 28.5) to (1150, 27), falls by 0.75 percent and lies at 28.125 under the intersection.
    const auto elevation = [](double station) {
        return vertical_curve_elevation(0, 0, 1000, 30, 2000, 10, 100, 300, station);
    };
    EXPECT_NEAR(elevation(900), 27, 1e-12);
    EXPECT_NEAR(elevation(950), 27 + 0.03 * 50 - 0.0375 / 200 * 50 * 50, 1e-12);
    EXPECT_NEAR(elevation(1000), 28.125, 1e-12);
    EXPECT_NEAR(elevation(1150), 28.125 - 0.0075 * 150 - 0.0125 / 600 * 150 * 150, 1e-12);
    EXPECT_NEAR(elevation(1300), 24, 1e-12);
}

TEST(VerticalCurve, IsTwoParabolasThatTouchTheGradesAndEachOther)
{
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> length(50, 400), grade(-0.1, 0.1), part(0.0, 1.0);
    for (int i = 0; i < MANY; ++i) {
        const double x2 = 1000, y2 = 50, g1 = grade(random), g2 = grade(random);
        const double back = length(random), ahead = length(random);
        // Points of a quadratic through three control points, each half between the middles of its legs.
        const double middle_back[2] = {x2 - back / 2, y2 - g1 * back / 2};
        const double middle_ahead[2] = {x2 + ahead / 2, y2 + g2 * ahead / 2};
        const double t = part(random);
        const bool is_back = i % 2 == 0;
        const double u = (x2 - middle_back[0]) / (middle_ahead[0] - middle_back[0]);
        const double top = middle_back[1] + u * (middle_ahead[1] - middle_back[1]);
        const double from = is_back ? y2 - g1 * back : top;
        const double over = is_back ? middle_back[1] : middle_ahead[1];
        const double to = is_back ? top : y2 + g2 * ahead;
        const double station = is_back ? x2 - back + t * back : x2 + t * ahead;
        const double expected = (1 - t) * (1 - t) * from + 2 * t * (1 - t) * over + t * t * to;
        EXPECT_NEAR(vertical_curve_elevation(x2 - 500, y2 - g1 * 500, x2, y2, x2 + 700, y2 + g2 * 700, back,
                                             ahead, station),
                    expected, 1e-9);
    }
}

TEST(VerticalCurve, AtTheIntersectionIsOnItsForwardHalf)
{
    EXPECT_EQ(vertical_curve_elevation(0, 100, 500, 110, 1000, 100, 0, 200, 500), 110);
}

TEST(VerticalCurve, WithoutAGradeOrALengthIsNotFiniteAndNoFault)
{
    EXPECT_FALSE(std::isfinite(vertical_curve_elevation(500, 0, 500, 10, 1000, 0, 100, 100, 450)));
    EXPECT_FALSE(std::isfinite(vertical_curve_elevation(0, 0, 500, 10, 500, 0, 100, 100, 550)));
    EXPECT_FALSE(std::isfinite(vertical_curve_elevation(0, 0, 500, 10, 1000, 0, 0, 0, 500)));
}

} // namespace
