#include "host/database/units_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <string>

#include "host/core/document.h"
#include "host/database/sysvars.h"
#include "hostapi/ads.h"

namespace
{

using namespace host::db;
constexpr double DEGREE = std::numbers::pi / 180.0;

struct text_case {
    double value;
    int unit, precision, zero_suppression;
    bool as_entered;
    const char* expected;
};

std::string said(const std::optional<std::string>& text)
{
    return text.value_or("nothing");
}

TEST(UnitsText, LengthsInEachUnit)
{
    constexpr text_case CASES[] = {
        {17.5, 1, 4, 0, false, "1.7500E+01"},
        {17.5, 2, 2, 0, false, "17.50"},
        {17.5, 3, 2, 0, false, "1'-5.50\""},
        {17.5, 4, 2, 0, false, "1'-5 1/2\""},
        {17.5, 5, 2, 0, false, "17 1/2"},
        {17.5, 1, 4, 0, true, "1.7500E+01"},
        {17.5, 2, 2, 0, true, "17.50"},
        {17.5, 3, 2, 0, true, "1'5.50\""},
        {17.5, 4, 2, 0, true, "1'5-1/2\""},
        {17.5, 5, 2, 0, true, "17-1/2"},
        {-17.5, 4, 2, 0, false, "-1'-5 1/2\""},
        {-17.5, 2, 0, 0, false, "-18"},
        {6.8, 2, 3, 0, false, "6.800"},
        {85.0, 2, 8, 0, false, "85.00000000"},
        {0.00012345, 1, 3, 0, false, "1.235E-04"},
        {0.0, 1, 2, 0, false, "0.00E+00"},
        {1e-100, 1, 0, 0, false, "1E-100"},
        {9.9996, 1, 3, 0, false, "1.000E+01"},
        {17.49, 4, 0, 0, false, "1'-5\""},
        {11.999, 4, 4, 0, false, "1'"},
        {11.999, 4, 4, 1, false, "1'-0\""},
        {11.996, 3, 2, 1, false, "1'-0.00\""},
        {2.875, 5, 3, 0, false, "2 7/8"},
        {2.875, 5, 8, 0, false, "2 7/8"},
        {0.00390625, 5, 8, 0, false, "1/256"},
    };
    for (const text_case& c : CASES)
        EXPECT_EQ(said(length_text(c.value, {c.unit, c.precision, c.zero_suppression, c.as_entered})),
                  c.expected)
            << c.value << " unit " << c.unit;
}

TEST(UnitsText, FivesAreRoundedUpAsWritten)
{
    struct {
        double value;
        int precision;
        const char* expected;
    } const cases[] = {
        {2.5, 0, "3"},
        {0.5, 0, "1"},
        {0.125, 2, "0.13"},
        {1.005, 2, "1.01"},
        {0.49, 0, "0"},
        {9.995, 2, "10.00"},
        {999999.9999999, 4, "1000000.0000"},
        {0.04, 1, "0.0"},
        {0.05, 1, "0.1"},
        {640000.123456789, 8, "640000.12345679"},
        {-0.001, 2, "0.00"},
        {5120000.5, 0, "5120001"},
        {0.000000004, 8, "0.00000000"},
        {0.000000005, 8, "0.00000001"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(said(length_text(c.value, {2, c.precision, 0, false})), c.expected) << c.value;
}

TEST(UnitsText, ZerosAreLeftOutAsAsked)
{
    constexpr text_case CASES[] = {
        {0.5, 2, 4, 0, false, "0.5000"},       {0.5, 2, 4, 4, false, ".5000"},
        {0.5, 2, 4, 8, false, "0.5"},          {0.5, 2, 4, 12, false, ".5"},
        {0.0, 2, 4, 12, false, "0"},           {30.0, 2, 4, 8, false, "30"},
        {100.0, 2, 0, 8, false, "100"},        {-0.5, 2, 2, 4, false, "-.50"},
        {17.5, 1, 4, 8, false, "1.75E+01"},    {0.5, 4, 4, 0, false, "1/2\""},
        {0.5, 4, 4, 1, false, "0'-0 1/2\""},   {0.5, 4, 4, 2, false, "0'-0 1/2\""},
        {0.5, 4, 4, 3, false, "1/2\""},        {6.0, 4, 4, 0, false, "6\""},
        {6.0, 4, 4, 1, false, "0'-6\""},       {6.0, 4, 4, 2, false, "0'-6\""},
        {6.0, 4, 4, 3, false, "6\""},          {12.0, 4, 4, 0, false, "1'"},
        {12.0, 4, 4, 1, false, "1'-0\""},      {12.0, 4, 4, 2, false, "1'"},
        {12.0, 4, 4, 3, false, "1'-0\""},      {12.75, 4, 4, 0, false, "1'-0 3/4\""},
        {12.75, 4, 4, 1, false, "1'-0 3/4\""}, {12.75, 4, 4, 2, false, "1'-0 3/4\""},
        {12.75, 4, 4, 3, false, "1'-0 3/4\""}, {0.0, 4, 4, 0, false, "0\""},
        {0.0, 4, 4, 1, false, "0'-0\""},       {0.0, 4, 4, 2, false, "0'"},
        {12.5, 3, 4, 8, false, "1'-0.5\""},
    };
    for (const text_case& c : CASES)
        EXPECT_EQ(said(length_text(c.value, {c.unit, c.precision, c.zero_suppression, c.as_entered})),
                  c.expected)
            << c.value << " unit " << c.unit << " DIMZIN " << c.zero_suppression;
}

TEST(UnitsText, AnglesInEachUnit)
{
    constexpr double SOME = 0.436332;
    constexpr text_case CASES[] = {
        {0.785398, 0, 4, 0, false, "45.0000"},
        {-0.785398, 0, 4, 0, false, "315.0000"},
        {-0.785398, 4, 0, 0, false, "S 45d E"},
        {0.785398, 4, 0, 0, false, "N 45d E"},
        {0.785398, 4, 0, 0, true, "N45dE"},
        {SOME, 1, 4, 0, false, "25d0'0\""},
        {SOME, 1, 0, 0, false, "25d"},
        {SOME, 1, 2, 0, false, "25d0'"},
        {SOME, 2, 5, 0, false, "27.77776g"},
        {SOME, 3, 3, 0, false, "0.436r"},
        {SOME, 4, 4, 0, false, "N 65d0'0\" E"},
        {0.654932, 1, 3, 0, false, "37d31'29\""},
        {12.5 * DEGREE, 1, 6, 0, false, "12d30'0.00\""},
        {12.5 * DEGREE, 1, 6, 8, false, "12d30'0\""},
        {0.0, 4, 4, 0, false, "E"},
        {90 * DEGREE, 4, 4, 0, false, "N"},
        {180 * DEGREE, 4, 4, 0, false, "W"},
        {270 * DEGREE, 4, 4, 0, false, "S"},
        {100 * DEGREE, 4, 2, 0, false, "N 10d0' W"},
        {200.5 * DEGREE, 4, 2, 0, false, "S 69d30' W"},
        {359.99999 * DEGREE, 0, 2, 0, false, "0.00"},
        {-1e-17, 0, 0, 0, false, "0"},
        {-0.0, 0, 2, 0, false, "0.00"},
        {-0.0, 2, 0, 12, false, "0g"},
        {-0.0, 3, 2, 12, false, "0r"},
        {359.9999999 * DEGREE, 1, 4, 0, false, "0d0'0\""},
        {59.99999 / 60 * DEGREE, 1, 4, 0, false, "1d0'0\""},
        {45.5 * DEGREE, 0, 4, 8, false, "45.5"},
        {0.5 * DEGREE, 0, 4, 12, false, ".5"},
        {9 * std::numbers::pi, 0, 0, 0, false, "180"},
    };
    for (const text_case& c : CASES)
        EXPECT_EQ(said(angle_text(c.value, {c.unit, c.precision, c.zero_suppression, c.as_entered})),
                  c.expected)
            << c.value / DEGREE << " degrees, unit " << c.unit;
}

TEST(UnitsText, NothingForUnknownUnitsAndValuesWithoutSize)
{
    EXPECT_FALSE(length_text(1.0, {0, 2, 0, false}));
    EXPECT_FALSE(length_text(1.0, {6, 2, 0, false}));
    EXPECT_FALSE(length_text(1.0, {2, -2, 0, false}));
    EXPECT_FALSE(length_text(std::numeric_limits<double>::infinity(), {2, 2, 0, false}));
    EXPECT_FALSE(angle_text(std::nan(""), {0, 2, 0, false}));
    EXPECT_FALSE(angle_text(1.0, {5, 2, 0, false}));
}

TEST(UnitsText, HugeLengthsAreWrittenWithAnExponent)
{
    EXPECT_EQ(said(length_text(1e16, {2, 2, 0, false})), "1.00E+16");
    EXPECT_EQ(said(length_text(-1.5e300, {4, 2, 0, false})), "-1.50E+300");
}

struct reading {
    const char* text;
    int unit;
    double value; // NONE: it isn't one
};
constexpr double NONE = 98765432.1;

TEST(UnitsText, ReadsLengths)
{
    constexpr reading CASES[] = {
        {"1.7500E+01", 1, 17.5}, {"17.50", 2, 17.5},      {"1'-5.50\"", 3, 17.5}, {"1'-5 1/2\"", 4, 17.5},
        {"1'5-1/2\"", 4, 17.5},  {"1'5.50\"", 4, 17.5},   {"17 1/2", 5, 17.5},    {"17-1/2", 5, 17.5},
        {"2 7/8", 2, 2.875},     {"2-7/8", 2, 2.875},     {"2.34e1", 2, 23.4},    {"1/2\"", 4, 0.5},
        {"1'", 4, 12.0},         {"-1'-6\"", 3, -18.0},   {"1.5'", 4, 18.0},      {".5", 2, 0.5},
        {" 12 ", 2, 12.0},       {"1'-5 1/2\"", 2, NONE}, {"abc", 2, NONE},       {"", 2, NONE},
        {"1'x", 4, NONE},        {"1'-", 4, NONE},        {"1/0", 5, NONE},       {"12 13", 2, NONE},
        {"1.2.3", 2, NONE},      {"5", 0, NONE},          {"5", 6, NONE},         {"+3", 2, 3.0},
    };
    for (const reading& c : CASES)
        EXPECT_DOUBLE_EQ(parse_length(c.text, c.unit).value_or(NONE), c.value) << c.text;
}

TEST(UnitsText, ReadsAngles)
{
    constexpr reading CASES[] = {
        {"45.0000", 0, 45.0},
        {"90d30'10\"", 0, 90.0 + 30.0 / 60 + 10.0 / 3600},
        {"90d30'", 1, 90.5},
        {"90d", 1, 90.0},
        {"50", 2, 45.0},
        {"50g", 0, 45.0},
        {"-45", 0, -45.0},
        {"N 45d E", 4, 45.0},
        {"N45dW", 0, 135.0},
        {"S 45d E", 4, 315.0},
        {"s 10d30' w", 4, 259.5},
        {"N", 4, 90.0},
        {"S", 4, 270.0},
        {"E", 4, 0.0},
        {"W", 4, 180.0},
        {"12\xB0"
         "30'",
         0, 12.5},
        {"N 91d E", 4, NONE},
        {"N 45d", 4, NONE},
        {"45x", 0, NONE},
        {"", 0, NONE},
        {"45d30", 0, NONE},
        {"d", 0, NONE},
        {"45", 7, NONE},
    };
    for (const reading& c : CASES) {
        const auto read = parse_angle(c.text, c.unit);
        EXPECT_NEAR(read ? *read / DEGREE : NONE, c.value, 1e-9) << c.text;
    }
}

class UnitsTextOfDrawing : public testing::Test
{
protected:
    void SetUp() override { host::open_document(); }
    void TearDown() override { host::close_all_documents(); }
    host::document& doc() { return host::current_document(); }
    std::string angle(double value, int unit = -1, int precision = -1)
    {
        char out[ADS_TEXT_SIZE];
        return acdbAngToS(value, unit, precision, out) == RTNORM ? out : "failed";
    }
    std::string length(double value, int unit = -1, int precision = -1)
    {
        char out[ADS_TEXT_SIZE];
        return acdbRToS(value, unit, precision, out) == RTNORM ? out : "failed";
    }
};

TEST_F(UnitsTextOfDrawing, MinusOneTakesTheDrawingsUnitAndPrecision)
{
    EXPECT_EQ(length(17.5), "17.5000");
    EXPECT_EQ(angle(std::numbers::pi / 2), "90");
    set_int(doc(), "LUNITS", 4);
    set_int(doc(), "LUPREC", 2);
    set_int(doc(), "AUNITS", 1);
    set_int(doc(), "AUPREC", 4);
    EXPECT_EQ(length(17.5), "1'-5 1/2\"");
    EXPECT_EQ(angle(std::numbers::pi / 2), "90d0'0\"");
    set_int(doc(), "UNITMODE", 1);
    set_int(doc(), "DIMZIN", 1);
    EXPECT_EQ(length(6), "0'6\"");
    EXPECT_EQ(length(17.5, 9), "failed");
    EXPECT_EQ(acdbRToS(1.0, 2, 2, nullptr), RTERROR);
}

TEST_F(UnitsTextOfDrawing, AnglesAreMeasuredFromTheBaseInTheDrawingsSense)
{
    set_real(doc(), "ANGBASE", std::numbers::pi / 2);
    EXPECT_EQ(angle(std::numbers::pi, 0, 0), "90");
    set_int(doc(), "ANGDIR", 1);
    EXPECT_EQ(angle(std::numbers::pi / 4, 0, 0), "45");
    double back = 0;
    ASSERT_EQ(acdbAngToF("45", 0, &back), RTNORM);
    EXPECT_NEAR(back, std::numbers::pi / 4, 1e-15);
}

TEST_F(UnitsTextOfDrawing, ReadAnglesComeWithinOneTurn)
{
    double value = 0;
    ASSERT_EQ(acdbAngToF("45.0000", 3, &value), RTNORM);
    EXPECT_NEAR(value, 1.0177, 1e-4);
    ASSERT_EQ(acdbAngToF("-90", 0, &value), RTNORM);
    EXPECT_NEAR(value, 1.5 * std::numbers::pi, 1e-12);
    EXPECT_EQ(acdbAngToF("north", 0, &value), RTERROR);
    EXPECT_EQ(acdbAngToF(nullptr, 0, &value), RTERROR);
}

TEST_F(UnitsTextOfDrawing, WhatIsWrittenIsReadBack)
{
    for (int unit = 1; unit <= 5; ++unit)
        for (const double value : {0.0, 0.25, 6.0, 12.0, 17.5, 12345.75, -3.125}) {
            double back = -1;
            ASSERT_EQ(acdbDisToF(length(value, unit, 8).c_str(), unit, &back), RTNORM)
                << value << " unit " << unit;
            EXPECT_DOUBLE_EQ(back, value) << "unit " << unit;
        }
    for (int unit = 0; unit <= 4; ++unit)
        for (const double degrees : {0.0, 0.5, 45.0, 90.0, 135.25, 180.0, 269.0, 270.0, 359.0}) {
            double back = -1;
            ASSERT_EQ(acdbAngToF(angle(degrees * DEGREE, unit, 8).c_str(), unit, &back), RTNORM) << degrees;
            EXPECT_NEAR(back, degrees * DEGREE, 1e-8) << "unit " << unit;
        }
}

} // namespace
