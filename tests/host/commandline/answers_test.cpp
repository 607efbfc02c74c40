// What typed texts mean.
#include <numbers>

#include "tests/host/commandline/session.h"

namespace host::commandline
{

namespace
{

constexpr double PI = std::numbers::pi;

struct point_case {
    const char* text;
    bool is_point;
    double x, y, z;
};

TEST(Answers, PointsAreAbsoluteRelativeAndPolar)
{
    reading_rules rules;
    rules.last_point[0] = 100.0;
    rules.last_point[1] = 50.0;
    rules.last_point[2] = 5.0;
    rules.elevation = 7.0;
    const point_case cases[] = {
        {"12.5,40", true, 12.5, 40, 7},  {"12.5,40,3", true, 12.5, 40, 3}, {" -1 , +2 ", true, -1, 2, 7},
        {"1e2,2.5E1", true, 100, 25, 7}, {"@3,4", true, 103, 54, 5},       {"@3,4,-5", true, 103, 54, 0},
        {"@", true, 100, 50, 5},         {"@10<90", true, 100, 60, 5},     {"@10<90,2", true, 100, 60, 7},
        {"10<0", true, 10, 0, 7},        {"*3,4", true, 3, 4, 7},          {"12.5", false, 0, 0, 0},
        {"1,2,3,4", false, 0, 0, 0},     {"a,b", false, 0, 0, 0},          {"1,", false, 0, 0, 0},
        {"10<", false, 0, 0, 0},         {"<45", false, 0, 0, 0},          {"", false, 0, 0, 0},
        {"1,2x", false, 0, 0, 0},
    };
    for (const point_case& c : cases) {
        SCOPED_TRACE(c.text);
        const std::optional<point3> p = parse_point(c.text, rules);
        ASSERT_EQ(p.has_value(), c.is_point);
        if (!p)
            continue;
        EXPECT_NEAR(p->x, c.x, 1e-9);
        EXPECT_NEAR(p->y, c.y, 1e-9);
        EXPECT_NEAR(p->z, c.z, 1e-9);
    }
}

TEST(Answers, PolarAnglesFollowTheDrawingsUnits)
{
    reading_rules rules;
    rules.aunits = 2; // grads
    std::optional<point3> p = parse_point("@10<100", rules);
    ASSERT_TRUE(p);
    EXPECT_NEAR(p->x, 0, 1e-9);
    EXPECT_NEAR(p->y, 10, 1e-9);

    rules.aunits = 0;
    rules.angbase = PI / 2; // north, clockwise: an azimuth
    rules.angdir = 1;
    p = parse_point("10<90", rules);
    ASSERT_TRUE(p);
    EXPECT_NEAR(p->x, 10, 1e-9);
    EXPECT_NEAR(p->y, 0, 1e-9);
}

struct angle_case {
    int aunits;
    const char* text;
    double degrees; // below -1000: no angle
};

TEST(Answers, AnglesAreReadInEveryUnit)
{
    const angle_case cases[] = {
        {0, "45", 45},         {0, "-45", -45},
        {1, "12d30'", 12.5},   {0, "12d30'36\"", 12.51},
        {1, "12.5", 12.5},     {0, "-12d30'", -12.5},
        {0, "50g", 45},        {0, "1.5707963267948966r", 90},
        {2, "100", 90},        {3, "1.5707963267948966", 90},
        {4, "N30dE", 60},      {4, "N30d15'W", 120.25},
        {4, "S30dE", 300},     {4, "S30dW", 240},
        {4, "N", 90},          {4, "E", 0},
        {0, "abc", -2000},     {0, "", -2000},
        {0, "12d30'x", -2000}, {0, "N30d", -2000},
        {0, "d", -2000},
    };
    for (const angle_case& c : cases) {
        SCOPED_TRACE(c.text);
        reading_rules rules;
        rules.aunits = c.aunits;
        const std::optional<typed_angle> a = parse_angle(c.text, rules);
        ASSERT_EQ(a.has_value(), c.degrees > -1000);
        if (a) {
            EXPECT_NEAR(a->radians * 180 / PI, c.degrees, 1e-9);
        }
    }
}

struct word_case {
    const char* list;
    const char* text;
    const char* word; // null: none
};

TEST(Answers, KeyWordsByTheirCapitals)
{
    const word_case cases[] = {
        {"Yes No", "y", "Yes"},
        {"Yes No", "YES", "Yes"},
        {"Yes No", "ye", "Yes"},
        {"Yes No", "yess", nullptr},
        {"Yes No", "x", nullptr},
        {"Yes No", "_N", "No"},
        {"LType LAyer", "l", nullptr},
        {"LType LAyer", "la", "LAyer"},
        {"LType LAyer", "lty", "LType"},
        {"LTYPE,LT", "lt", "LTYPE"},
        {"LTYPE,LT", "ltyp", "LTYPE"},
        {"LTYPE,LT", "l", nullptr},
        {"eXit", "x", "eXit"},
        {"eXit", "exit", "eXit"},
        {"eXit", "xit", "eXit"},
        {"eXit", "e", nullptr},
        {"Color LAyer LType ltScale", "_SCALE", "ltScale"},
        {"ON OFF", "of", nullptr},
        {"ON OFF", "off", "OFF"},
        {"? Make", "?", "?"},
        {"3P 2P", "2p", "2P"},
        {"left", "l", nullptr},
        {"left", "LEFT", "left"},
        {"TLeft TCenter Mright", "tl", "TLeft"},
        {"TLeft TCenter Mright", "m", "Mright"},
        {"Ja Nein _Yes No", "j", "Yes"},
        {"Ja Nein _Yes No", "_y", "Yes"},
        {"Ja Nein _Yes No", "nein", "No"},
        {"Microstation Zentrik Dtm", "micro", "Microstation"},
        {"", "a", nullptr},
        {"Yes No", "", nullptr},
    };
    for (const word_case& c : cases) {
        SCOPED_TRACE(std::string(c.list) + " <- " + c.text);
        const std::optional<std::string> word = match_key_word(c.list, c.text);
        EXPECT_EQ(word.value_or("(none)"), c.word ? c.word : "(none)");
    }
}

TEST(Answers, FeetAndInchesWhereLengthsAreWrittenSo)
{
    reading_rules rules;
    EXPECT_FALSE(parse_length("5'6\"", rules));
    rules.lunits = 4;
    EXPECT_DOUBLE_EQ(parse_length("5'6\"", rules).value_or(-1), 66.0);
    EXPECT_DOUBLE_EQ(parse_length("5'-6-1/2\"", rules).value_or(-1), 66.5);
    EXPECT_DOUBLE_EQ(parse_length("1/2", rules).value_or(-1), 0.5);
    EXPECT_DOUBLE_EQ(parse_length("-3'", rules).value_or(-1), -36.0);
    EXPECT_FALSE(parse_length("1/0", rules));
    EXPECT_FALSE(parse_length("x'", rules));
}

} // namespace

} // namespace host::commandline
