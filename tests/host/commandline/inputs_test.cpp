// The prompts of programs: every kind of answer under every rule.
#include <cstring>
#include <numbers>

#include "tests/host/commandline/session.h"

namespace host::commandline
{

namespace
{

constexpr double PI = std::numbers::pi;

class inputs : public session
{
};

struct number_case {
    int rules;
    const char* key_words;
    const char* answers;
    int status;
    double value;
    const char* message; // what is told before the right answer; null: nothing
};

void PrintTo(const number_case& c, std::ostream* out)
{
    *out << c.rules << " '" << c.key_words << "' " << c.answers;
}

TEST_F(inputs, IntegersUnderEachRule)
{
    const number_case cases[] = {
        {0, "", "12", RTNORM, 12, nullptr},
        {0, "", "-32768", RTNORM, -32768, nullptr},
        {0, "", "32768|7", RTNORM, 7, "Requires an integer between -32768 and 32767."},
        {0, "", "1.5|3", RTNORM, 3, "Requires an integer value."},
        {0, "", "x|3", RTNORM, 3, "Requires an integer value."},
        {0, "Yes", "x|3", RTNORM, 3, "Requires an integer value or option keyword."},
        {0, "", "", RTNONE, 0, nullptr},
        {1, "", "|4", RTNORM, 4, "Requires an integer value."},
        {2, "", "0|5", RTNORM, 5, "Value must be nonzero."},
        {4, "", "-1|5", RTNORM, 5, "Value must be positive."},
        {4, "", "0", RTNORM, 0, nullptr},
        {6, "", "0|-1|5", RTNORM, 5, "Value must be positive and nonzero."},
        {7, "", "|0|-1|5", RTNORM, 5, "Value must be positive and nonzero."},
        {0, "Yes No", "y", RTKWORD, 0, nullptr},
        {0, "", "^C", RTCAN, 0, nullptr},
        {128, "", "hello", RTKWORD, 0, nullptr},
    };
    for (const number_case& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c));
        answer(c.answers);
        shown.clear();
        acedInitGet(c.rules, c.key_words);
        int value = 0;
        EXPECT_EQ(acedGetInt("\nNumber: ", &value), c.status);
        EXPECT_EQ(value, c.value);
        EXPECT_TRUE(!c.message || has_shown(c.message)) << shown;
    }
}

TEST_F(inputs, RealsAndDistancesUnderEachRule)
{
    const number_case cases[] = {
        {0, "", "12.5", RTNORM, 12.5, nullptr},
        {0, "", "1e3", RTNORM, 1000, nullptr},
        {0, "", "", RTNONE, 0, nullptr},
        {1, "", "|4", RTNORM, 4, "Requires numeric"},
        {6, "", "-2|0|5", RTNORM, 5, "Value must be positive and nonzero."},
        {0, "Undo", "u", RTKWORD, 0, nullptr},
        {0, "", "12x|1", RTNORM, 1, "Requires numeric"},
        {0, "", "^C", RTCAN, 0, nullptr},
        {0, "", "(+ 1.5 2.5)", RTNORM, 4, nullptr},
    };
    for (const number_case& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c));
        for (const bool distance : {false, true}) {
            answer(c.answers);
            shown.clear();
            acedInitGet(c.rules, c.key_words);
            double value = 0;
            EXPECT_EQ(distance ? acedGetDist(nullptr, "\nHow far: ", &value)
                               : acedGetReal("\nHow far: ", &value),
                      c.status);
            EXPECT_EQ(value, c.value);
            EXPECT_TRUE(!c.message || has_shown(c.message)) << shown;
        }
    }
}

TEST_F(inputs, AnglesUnderEachRule)
{
    const number_case cases[] = {
        {2, "", "0|30", RTNORM, 30, "Value must be nonzero."},
        {4, "", "-30|30", RTNORM, 30, "Value must be positive."},
        {0, "", "-30", RTNORM, 330, nullptr},
        {1, "", "|30", RTNORM, 30, "Requires valid numeric angle or two points."},
        {0, "Reference", "x|r", RTKWORD, 0, "Requires valid numeric angle, two points, or option keyword."},
        {0, "", "", RTNONE, 0, nullptr},
    };
    for (const number_case& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c));
        answer(c.answers);
        shown.clear();
        acedInitGet(c.rules, c.key_words);
        double value = 0;
        EXPECT_EQ(acedGetAngle(nullptr, "\nAngle: ", &value), c.status);
        EXPECT_NEAR(value * 180 / PI, c.value, 1e-9);
        EXPECT_TRUE(!c.message || has_shown(c.message)) << shown;
    }
}

TEST_F(inputs, RealsReachBeyondEveryInteger)
{
    for (const double wanted : {1e300, -1e300, 4294967296.0}) {
        double value = 0;
        answer(std::to_string(wanted));
        EXPECT_EQ(acedGetReal("Factor: ", &value), RTNORM);
        EXPECT_EQ(value, wanted);
    }
}

TEST_F(inputs, DistanceByTwoPointsAndFromABase)
{
    double value = 0;
    answer("1,1|4,5");
    EXPECT_EQ(acedGetDist(nullptr, "How far: ", &value), RTNORM);
    EXPECT_DOUBLE_EQ(value, 5.0);
    EXPECT_TRUE(has_shown("Specify second point: ")) << shown;

    const ads_point base = {0, 0, 0};
    answer("3,4,12");
    EXPECT_EQ(acedGetDist(base, "How far: ", &value), RTNORM);
    EXPECT_DOUBLE_EQ(value, 13.0);

    answer("3,4,12");
    acedInitGet(RSG_2D, nullptr);
    EXPECT_EQ(acedGetDist(base, "How far: ", &value), RTNORM);
    EXPECT_DOUBLE_EQ(value, 5.0);

    // The second point must come; Enter does not give a distance.
    answer("1,1||4,5");
    EXPECT_EQ(acedGetDist(nullptr, "How far: ", &value), RTNORM);
    EXPECT_DOUBLE_EQ(value, 5.0);
}

struct turn_case {
    double angbase_deg;
    int angdir;
    const char* answers;
    double angle_deg, orientation_deg;
};

TEST_F(inputs, AnglesFromAngbaseAndOrientationsFromEast)
{
    const turn_case cases[] = {
        {0, 0, "30", 30, 30},       {90, 0, "0", 0, 90},       {90, 0, "-90", 270, 0},
        {90, 0, "180", 180, 270},   {0, 1, "90", 270, 270},    {90, 1, "90", 270, 0},
        {90, 0, "0,0|1,0", 270, 0}, {0, 0, "0,0|0,1", 90, 90}, {0, 0, "45d30'", 45.5, 45.5},
    };
    for (const turn_case& c : cases) {
        SCOPED_TRACE(c.answers);
        db::set_real(doc(), "ANGBASE", c.angbase_deg * PI / 180);
        db::set_int(doc(), "ANGDIR", c.angdir);
        double value = -1;
        answer(c.answers);
        EXPECT_EQ(acedGetAngle(nullptr, "Angle: ", &value), RTNORM);
        EXPECT_NEAR(value * 180 / PI, c.angle_deg, 1e-9);
        answer(c.answers);
        EXPECT_EQ(acedGetOrient(nullptr, "Angle: ", &value), RTNORM);
        EXPECT_NEAR(value * 180 / PI, c.orientation_deg, 1e-9);
    }
}

struct point_case {
    int rules;
    const char* key_words;
    const char* answers;
    int status;
    const char* input; // of acedGetInput
    const char* message;
};

TEST_F(inputs, PointsUnderEachRule)
{
    const point_case cases[] = {
        {0, "", "3,4", RTNORM, "", nullptr},
        {0, "", "", RTNONE, "", nullptr},
        {1, "", "|3,4", RTNORM, "", "Invalid point."},
        {0, "", "abc|3,4", RTNORM, "", "Invalid point."},
        {0, "", "12|3,4", RTNORM, "", "Invalid point."},
        {0, "Undo Close", "u", RTKWORD, "Undo", nullptr},
        {0, "Undo Close", "x|3,4", RTNORM, "", "Point or option keyword required."},
        {0, "TLeft Mright", "MR", RTKWORD, "Mright", nullptr},
        {128, "", "12.5", RTKWORD, "12.5", nullptr},
        {128, "", "Any old text", RTKWORD, "Any old text", nullptr},
        {128, "", "3,4", RTNORM, "", nullptr},
        {128, "", "", RTNONE, "", nullptr},
        {0, "", "^C", RTCAN, "", nullptr},
        {0, "", "^c", RTCAN, "", nullptr},
        {0, "", "(list 3.0 4.0)", RTNORM, "", nullptr},
        {0, "", "(list 3 4)", RTNORM, "", nullptr},
        {0, "Undo", "(strcat \"u\" \"ndo\")", RTKWORD, "Undo", nullptr},
    };
    for (const point_case& c : cases) {
        SCOPED_TRACE(std::string(c.answers) + " [" + c.key_words + "]");
        answer(c.answers);
        shown.clear();
        acedInitGet(c.rules, c.key_words);
        ads_point value = {0, 0, 0};
        EXPECT_EQ(acedGetPoint(nullptr, "\nPoint: ", value), c.status);
        if (c.status == RTNORM) {
            EXPECT_DOUBLE_EQ(value[0], 3);
            EXPECT_DOUBLE_EQ(value[1], 4);
        }
        char input[ADS_TEXT_SIZE] = "?";
        acedGetInput(input);
        EXPECT_STREQ(input, c.input);
        EXPECT_TRUE(!c.message || has_shown(c.message)) << shown;
    }
}

TEST_F(inputs, PromptAndAnswerStandOnOneLine)
{
    answer("3,4|n");
    ads_point value;
    acedGetPoint(nullptr, "\nFirst: ", value);
    acedInitGet(0, "Yes No");
    char word[ADS_TEXT_SIZE];
    acedGetKword("\nCreate a Zorro [Yes/<No>]? ", word);
    EXPECT_EQ(shown, "First: 3,4\nCreate a Zorro [Yes/<No>]? n\n");
}

TEST_F(inputs, EachPointIsTheNextOnesLastPoint)
{
    answer("10,20|@5,0|@10<90|@");
    ads_point value = {0, 0, 0};
    for (const auto& [x, y] : {std::pair{10.0, 20.0}, {15.0, 20.0}, {15.0, 30.0}, {15.0, 30.0}}) {
        ASSERT_EQ(acedGetPoint(nullptr, "Point: ", value), RTNORM);
        EXPECT_NEAR(value[0], x, 1e-9);
        EXPECT_NEAR(value[1], y, 1e-9);
    }
}

TEST_F(inputs, RulesHoldForOnePromptOnly)
{
    answer("|");
    int value = 0;
    acedInitGet(1, "Yes No");
    answer("y|");
    EXPECT_EQ(acedGetInt("A: ", &value), RTKWORD);
    answer("|");
    EXPECT_EQ(acedGetInt("A: ", &value), RTNONE);
}

TEST_F(inputs, WhereAnswersRunOutThePromptIsCancelled)
{
    answers_from_text("x\n");
    int value = 0;
    EXPECT_EQ(acedGetInt("\nHow many: ", &value), RTCAN);
    EXPECT_TRUE(answers_ended());
    EXPECT_EQ(answers_ended_at(), "How many:");
}

TEST_F(inputs, KeyWordsAndErrno)
{
    char word[ADS_TEXT_SIZE];
    answer("maybe|no");
    acedInitGet(0, "Yes No");
    EXPECT_EQ(acedGetKword("Sure? ", word), RTNORM);
    EXPECT_STREQ(word, "No");
    EXPECT_TRUE(has_shown("Invalid option keyword.")) << shown;

    answer("");
    acedInitGet(0, "Yes No");
    EXPECT_EQ(acedGetKword("Sure? ", word), RTNONE);
    EXPECT_STREQ(word, "");
    EXPECT_EQ(errno_now(), 52);

    answer("|y");
    acedInitGet(1, "Yes No");
    EXPECT_EQ(acedGetKword("Sure? ", word), RTNORM);
    EXPECT_STREQ(word, "Yes");

    answer("anything");
    acedInitGet(128, "Yes No");
    EXPECT_EQ(acedGetKword("Sure? ", word), RTNORM);
    EXPECT_STREQ(word, "anything");

    answer("y");
    EXPECT_EQ(acedGetKword("Sure? ", word), RTERROR) << "no key words: no answer could be right";
}

TEST_F(inputs, TextsWithAndWithoutBlanks)
{
    char text[ADS_TEXT_SIZE];
    answer("one two|one two||^C");
    EXPECT_EQ(acedGetString(0, "Text: ", text), RTNORM);
    EXPECT_STREQ(text, "one");
    EXPECT_EQ(acedGetString(1, "Text: ", text), RTNORM);
    EXPECT_STREQ(text, "one two");
    EXPECT_EQ(acedGetString(1, "Text: ", text), RTNORM);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(acedGetString(1, "Text: ", text), RTCAN);
}

TEST_F(inputs, ATextTooLongIsCutToFit)
{
    for (const std::size_t size : {254u, 255u, 256u, 1000u}) {
        answer(std::string(size, 'x'));
        char text[ADS_TEXT_SIZE];
        EXPECT_EQ(acedGetString(1, "Text: ", text), RTNORM);
        EXPECT_EQ(std::strlen(text), std::min<std::size_t>(size, ADS_TEXT_SIZE - 1));
    }
}

TEST_F(inputs, PointsOutsideTheLimitsAreRefusedWhileTheyAreChecked)
{
    db::set_int(doc(), "LIMCHECK", 1);
    answer("-5,0|1,1");
    ads_point value;
    EXPECT_EQ(acedGetPoint(nullptr, "Point: ", value), RTNORM);
    EXPECT_DOUBLE_EQ(value[0], 1);
    EXPECT_TRUE(has_shown("**Outside limits")) << shown;
    answer("-5,0");
    acedInitGet(RSG_NOLIM, nullptr);
    EXPECT_EQ(acedGetPoint(nullptr, "Point: ", value), RTNORM);
    EXPECT_DOUBLE_EQ(value[0], -5);
}

} // namespace

} // namespace host::commandline
