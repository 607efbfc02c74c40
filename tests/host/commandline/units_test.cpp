// Lengths and angles as texts of the drawing's units, and the same texts typed at prompts.
#include <numbers>

#include "hostapi/ads.h"
#include "tests/host/commandline/session.h"

namespace host::commandline
{

namespace
{

constexpr double PI = std::numbers::pi;

class units : public session
{
protected:
    static std::string angle(double value, int unit, int precision)
    {
        char out[ADS_TEXT_SIZE];
        return acdbAngToS(value, unit, precision, out) == RTNORM ? out : "failed";
    }
    static std::string length(double value, int unit, int precision)
    {
        char out[ADS_TEXT_SIZE];
        return acdbRToS(value, unit, precision, out) == RTNORM ? out : "failed";
    }
    void set_angles(int aunits, int angdir, double angbase_deg)
    {
        db::set_int(doc(), "AUNITS", aunits);
        db::set_int(doc(), "ANGDIR", angdir);
        db::set_real(doc(), "ANGBASE", angbase_deg * PI / 180);
    }
    static double turn_between(double a, double b) { return std::fabs(std::remainder(a - b, 2 * PI)); }
};

struct form_of_texts {
    int unitmode, dimzin;
};
constexpr form_of_texts FORMS[] = {{0, 0}, {1, 0}, {0, 12}, {1, 15}};
constexpr double BASES_DEG[] = {0, 90, 30, 270, 359.5};

// What a unit can tell apart at a precision of 9, halved, and a little for the sums.
constexpr double ANGLE_STEPS[] = {1e-9 * PI / 180, 1e-5 / 3600 * PI / 180, 1e-9 * PI / 200, 1e-9,
                                  1e-5 / 3600 * PI / 180};

TEST_F(units, DirectionsComeBackFromTheirTextsInAllSettings)
{
    for (int unit = 0; unit <= 4; ++unit)
        for (const int angdir : {0, 1})
            for (const double base : BASES_DEG)
                for (const form_of_texts& form : FORMS) {
                    set_angles(unit, angdir, base);
                    db::set_int(doc(), "UNITMODE", form.unitmode);
                    db::set_int(doc(), "DIMZIN", form.dimzin);
                    for (double degrees = 0.0; degrees < 360.0; degrees += 17.123456789) {
                        const double wanted = degrees * PI / 180;
                        const std::string text = angle(wanted, -1, 9);
                        SCOPED_TRACE("AUNITS " + std::to_string(unit) + " ANGDIR " + std::to_string(angdir) +
                                     " ANGBASE " + std::to_string(base) + " \"" + text + "\"");
                        double value = -1;
                        ASSERT_EQ(acdbAngToF(text.c_str(), -1, &value), RTNORM);
                        EXPECT_LT(turn_between(value, wanted), ANGLE_STEPS[unit] + 1e-13);
                        answer(text);
                        value = -1;
                        ASSERT_EQ(acedGetOrient(nullptr, "Direction: ", &value), RTNORM);
                        EXPECT_LT(turn_between(value, wanted), ANGLE_STEPS[unit] + 1e-13);
                        answer(text);
                        ASSERT_EQ(acedGetAngle(nullptr, "Turn: ", &value), RTNORM);
                        EXPECT_LT(turn_between(value + base * PI / 180, wanted), ANGLE_STEPS[unit] + 1e-13);
                        EXPECT_EQ(angle(value + base * PI / 180, -1, 9), text);
                    }
                }
}

TEST_F(units, ExplicitUnitsNeedNotBeTheDrawings)
{
    for (int aunits = 0; aunits <= 4; ++aunits)
        for (int unit = 0; unit <= 4; ++unit) {
            set_angles(aunits, 1, 90);
            double value = -1;
            ASSERT_EQ(acdbAngToF(angle(1.234567, unit, 8).c_str(), unit, &value), RTNORM);
            EXPECT_NEAR(value, 1.234567, 1e-8) << unit;
            // What isn't degrees says what it is, so it can be typed in a drawing of any unit.
            if (unit == 0)
                continue;
            answer(angle(1.234567, unit, 8));
            ASSERT_EQ(acedGetOrient(nullptr, "Direction: ", &value), RTNORM);
            EXPECT_NEAR(value, 1.234567, 1e-8) << unit << " in a drawing of " << aunits;
        }
}

TEST_F(units, BearingsNameTheCompassWhateverTheBaseIs)
{
    for (const int angdir : {0, 1})
        for (const double base : BASES_DEG) {
            set_angles(4, angdir, base);
            EXPECT_EQ(angle(0, -1, 0), "E");
            EXPECT_EQ(angle(PI / 2, 4, 4), "N");
            EXPECT_EQ(angle(PI / 3, -1, 2), "N 30d0' E");
            double value = -1;
            ASSERT_EQ(acdbAngToF("S 30d W", 0, &value), RTNORM);
            EXPECT_NEAR(value, 240 * PI / 180, 1e-12);
        }
}

TEST_F(units, DegreesAndTheirLikeCountFromTheBaseInTheDrawingsSense)
{
    struct {
        int angdir;
        double base_deg;
        int unit, precision;
        double value_deg;
        const char* text;
    } const cases[] = {
        {0, 0, 0, 2, 45, "45.00"},   {0, 90, 0, 2, 45, "315.00"},      {1, 0, 0, 2, 45, "315.00"},
        {1, 90, 0, 2, 45, "45.00"},  {1, 90, 1, 4, 0, "90d0'0\""},     {1, 90, 2, 1, 0, "100.0g"},
        {1, 90, 3, 4, 0, "1.5708r"}, {0, 45, 0, 9, 45, "0.000000000"}, {0, 0, 2, 9, 90, "100.000000000g"},
        {1, 90, 0, 3, 450, "0.000"}, {0, 0, 0, 0, 359.6, "0"},         {1, 0, 0, 0, 359.6, "0"},
    };
    for (const auto& c : cases) {
        set_angles(0, c.angdir, c.base_deg);
        EXPECT_EQ(angle(c.value_deg * PI / 180, c.unit, c.precision), c.text);
    }
}

TEST_F(units, LengthsComeBackFromTheirTextsInAllSettings)
{
    for (int unit = 1; unit <= 5; ++unit)
        for (const form_of_texts& form : FORMS) {
            db::set_int(doc(), "LUNITS", unit);
            db::set_int(doc(), "UNITMODE", form.unitmode);
            db::set_int(doc(), "DIMZIN", form.dimzin);
            // Fractions of an inch go down to 1/256.
            for (const double wanted : {0.0, 0.25, 0.99609375, 6.0, 11.75, 12.0, 17.5, 143.99609375, 1234.5,
                                        640000.125, -3.125, -17.5, -12.0}) {
                // Nine decimals hold all of these, a mantissa of nine not.
                const double step = unit == 1 ? 1e-9 * std::fabs(wanted) : 0.0;
                const std::string text = length(wanted, -1, 9);
                SCOPED_TRACE("LUNITS " + std::to_string(unit) + " \"" + text + "\"");
                double value = -1;
                ASSERT_EQ(acdbDisToF(text.c_str(), -1, &value), RTNORM);
                EXPECT_NEAR(value, wanted, step);
                answer(text);
                value = -1;
                ASSERT_EQ(acedGetDist(nullptr, "How far: ", &value), RTNORM) << shown;
                EXPECT_NEAR(value, wanted, step);
                answer(text);
                value = -1;
                ASSERT_EQ(acedGetReal("How much: ", &value), RTNORM);
                EXPECT_NEAR(value, wanted, step);
            }
        }
}

TEST_F(units, MinusOneIsThePrecisionOfTheDrawing)
{
    for (int places = 0; places <= 8; ++places) {
        db::set_int(doc(), "LUPREC", places);
        db::set_int(doc(), "AUPREC", places);
        EXPECT_EQ(length(2.0 / 3.0, -1, -1), length(2.0 / 3.0, 2, places));
        EXPECT_EQ(angle(2.0 / 3.0, -1, -1), angle(2.0 / 3.0, 0, places));
        EXPECT_EQ(length(2.0 / 3.0, 2, -1).size(), places ? 2u + static_cast<unsigned>(places) : 1u);
    }
    EXPECT_EQ(length(2.0 / 3.0, 2, 9), "0.666666667");
    EXPECT_EQ(length(1234.5, 2, 9), "1234.500000000");
}

TEST_F(units, WhatIsNoNumberHasNoText)
{
    char out[ADS_TEXT_SIZE] = "kept";
    for (const double value : {HUGE_VAL, -HUGE_VAL, std::nan("")}) {
        EXPECT_EQ(acdbAngToS(value, -1, 9, out), RTERROR);
        EXPECT_EQ(acdbRToS(value, -1, 9, out), RTERROR);
    }
    EXPECT_EQ(acdbAngToS(1.0, 5, 9, out), RTERROR);
    EXPECT_EQ(acdbAngToS(1.0, 0, -2, out), RTERROR);
    EXPECT_STREQ(out, "kept");
    EXPECT_NE(angle(1e300, -1, 9), "failed") << "as many turns as it has";
}

} // namespace

} // namespace host::commandline
