// The prompts of programs: every kind of answer under every rule.
#include <cstring>
#include <functional>
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
        {128, "", "40000|7", RTNORM, 7, "Requires an integer between -32768 and 32767."},
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
        {128, "", "2x", RTKWORD, 0, nullptr},
        {128 + 6, "", "0|-2|5", RTNORM, 5, "Value must be positive and nonzero."},
        {128 + 1, "", "", RTKWORD, 0, nullptr},
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
        {128 + 1, "", "", RTKWORD, "", nullptr},
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

TEST_F(inputs, APointOutsideTheLimitsIsAskedAgainWhereAnyTextIsTaken)
{
    db::set_int(doc(), "LIMCHECK", 1);
    const double low[3] = {0, 0, 0}, high[3] = {12, 9, 0};
    db::set_point(doc(), "LIMMIN", low);
    db::set_point(doc(), "LIMMAX", high);
    answer("500,4|3,4");
    acedInitGet(RSG_OTHER, nullptr);
    ads_point value = {0, 0, 0};
    EXPECT_EQ(acedGetPoint(nullptr, "\nPoint: ", value), RTNORM);
    EXPECT_DOUBLE_EQ(value[0], 3);
    EXPECT_TRUE(has_shown("**Outside limits")) << shown;
    answer("500,4");
    acedInitGet(RSG_OTHER | RSG_NOLIM, nullptr);
    EXPECT_EQ(acedGetPoint(nullptr, "\nPoint: ", value), RTNORM);
    EXPECT_DOUBLE_EQ(value[0], 500);
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

// ---- any input: a prompt whose every answer the program takes ------------------------------------------

class any_input : public inputs
{
protected:
    // Status, and what the program then gets as text.
    int ask(std::string_view lines, ads_point at, std::string* text, const char* key_words = "")
    {
        answer(lines);
        acedInitGet(RSG_OTHER, key_words);
        const ads_point base = {100, 200, 5};
        const int status = acedGetPoint(base, "\nDistance or point: ", at);
        char input[ADS_TEXT_SIZE] = "?";
        acedGetInput(input);
        *text = input;
        return status;
    }
};

struct typed_point_case {
    const char* text;
    double x, y, z;
};

TEST_F(any_input, EveryFormOfAPointIsAPoint)
{
    db::set_real(doc(), "ELEVATION", 7);
    const typed_point_case cases[] = {
        {"12.5,40", 12.5, 40, 7},
        {"12.5,40,3", 12.5, 40, 3},
        {" 12.5 , 40 ", 12.5, 40, 7},
        {"-1e2,+2.5e1", -100, 25, 7},
        {".5,-.5", 0.5, -0.5, 7},
        {"@3,4", 13, 24, 30},
        {"@3,4,1", 13, 24, 31},
        {"@", 10, 20, 30},
        {"@10<90", 10, 30, 30},
        {"10<90", 0, 10, 7},
        {"@10<100g", 10, 30, 30},
        {"@2<N30d15'E", 0, 0, 30},
        {"*3,4", 3, 4, 7},
        {"@-10<90", 10, 10, 30},
        {"(list 3 4)", 3, 4, 7},
        {"(list 3.0 4.0 5.0)", 3, 4, 5},
        {"(strcat \"3\" \",4\")", 3, 4, 7},
        {"1e308,1e308", 1e308, 1e308, 7},
    };
    for (const typed_point_case& c : cases) {
        SCOPED_TRACE(c.text);
        const double last[3] = {10, 20, 30};
        db::set_point(doc(), "LASTPOINT", last);
        ads_point at = {0, 0, 0};
        std::string text;
        ASSERT_EQ(ask(c.text, at, &text), RTNORM) << text;
        EXPECT_EQ(text, "");
        if (std::string_view(c.text) == "@2<N30d15'E") {
            EXPECT_NEAR(at[0], 10 + 2 * std::sin(30.25 * PI / 180), 1e-9);
            EXPECT_NEAR(at[1], 20 + 2 * std::cos(30.25 * PI / 180), 1e-9);
            continue;
        }
        EXPECT_NEAR(at[0], c.x, 1e-9);
        EXPECT_NEAR(at[1], c.y, 1e-9);
        EXPECT_NEAR(at[2], c.z, 1e-9);
    }
}

struct typed_turn_case {
    int aunits, angdir;
    double angbase_deg;
    const char* text;
    double x, y;
};

TEST_F(any_input, PolarPointsTurnAsTheDrawingSays)
{
    const typed_turn_case cases[] = {
        {0, 0, 90, "@10<0", 0, 10},  {0, 1, 90, "@10<90", 10, 0},      {0, 1, 0, "@10<90", 0, -10},
        {2, 0, 0, "@10<100", 0, 10}, {3, 0, 0, "@10<0", 10, 0},        {0, 1, 90, "@10<N90dE", 10, 0},
        {4, 0, 0, "@10<N", 0, 10},   {1, 0, 0, "@10<90d0'0\"", 0, 10},
    };
    for (const typed_turn_case& c : cases) {
        SCOPED_TRACE(c.text);
        db::set_int(doc(), "AUNITS", c.aunits);
        db::set_int(doc(), "ANGDIR", c.angdir);
        db::set_real(doc(), "ANGBASE", c.angbase_deg * PI / 180);
        const double last[3] = {0, 0, 0};
        db::set_point(doc(), "LASTPOINT", last);
        ads_point at = {0, 0, 0};
        std::string text;
        ASSERT_EQ(ask(c.text, at, &text), RTNORM);
        EXPECT_NEAR(at[0], c.x, 1e-9);
        EXPECT_NEAR(at[1], c.y, 1e-9);
    }
}

struct any_text_case {
    const char* line;
    const char* text;
};

TEST_F(any_input, AnyOtherTextIsHandedOnToTheLetter)
{
    const any_text_case cases[] = {
        {"12.5", "12.5"},
        {"-0", "-0"},
        {"1e999", "1e999"},
        {"nan", "nan"},
        {"inf,0", "inf,0"},
        {"1e999,0", "1e999,0"},
        {"10<", "10<"},
        {"<45", "<45"},
        {"1,2,3,4", "1,2,3,4"},
        {",", ","},
        {"b130.1005", "b130.1005"},
        {"N30d15'E", "N30d15'E"},
        {"Any  old text", "Any  old text"},
        {"  R10  ", "R10"},
        {"\tU", "U"},
        {"#1F", "#1F"},
        {"!", "!"},
        {"_Yes", "_Yes"},
        {"(strcat \"T\" \"25\")", "T25"},
        {"(+ 1 2)", "3"},
        {"(+ 0.5 12.0000000001)", "12.5000000001"},
        {"(/ 1.0 3)", "0.3333333333333333"},
        {"(list 1 2 3 4)|x", "x"}, // a list that is no point is asked about again
        {"nothing-yet|x", "nothing-yet"},
        {"!nothing_yet|x", "x"},
        {"(/ 1 0)|x", "x"},
    };
    for (const any_text_case& c : cases) {
        SCOPED_TRACE(c.line);
        ads_point at = {-1, -2, -3};
        std::string text;
        EXPECT_EQ(ask(c.line, at, &text), RTKWORD);
        EXPECT_EQ(text, c.text);
        EXPECT_EQ(at[0], -1) << "only a point is written";
    }
}

TEST_F(any_input, TextsAreCutToFitWhereverTheyAreLonger)
{
    for (const std::size_t size : {254u, 255u, 256u, 5000u}) {
        answer(std::string(size, 'q'));
        acedInitGet(RSG_OTHER, "");
        ads_point at;
        ASSERT_EQ(acedGetPoint(nullptr, "Text: ", at), RTKWORD);
        char input[ADS_TEXT_SIZE + 8];
        std::memset(input, '#', sizeof input);
        acedGetInput(input);
        EXPECT_EQ(std::strlen(input), std::min<std::size_t>(size, ADS_TEXT_SIZE - 1));
        EXPECT_EQ(input[ADS_TEXT_SIZE], '#') << "nothing is written behind the text's room";
    }
}

TEST_F(any_input, KeyWordsComeFirstAndAreSpeltAsInTheList)
{
    ads_point at;
    std::string text;
    EXPECT_EQ(ask("u", at, &text, "Undo"), RTKWORD);
    EXPECT_EQ(text, "Undo");
    EXPECT_EQ(ask("und", at, &text, "Undo"), RTKWORD);
    EXPECT_EQ(text, "Undo");
    EXPECT_EQ(ask("undoing", at, &text, "Undo"), RTKWORD);
    EXPECT_EQ(text, "undoing");
}

// A prompt that ends without a text must not leave that of an earlier one to be read.
TEST_F(any_input, NoTextOfAnEarlierPromptIsLeft)
{
    char word[ADS_TEXT_SIZE];
    ads_point at;
    ads_name name;
    double real = 0;
    const std::pair<const char*, std::function<int()>> prompts[] = {
        {"Enter", [&] { return answer(""), acedGetPoint(nullptr, "P: ", at); }},
        {"cancel", [&] { return answer("^C"), acedGetPoint(nullptr, "P: ", at); }},
        {"no more answers", [&] { return answers_from_text(""), acedGetPoint(nullptr, "P: ", at); }},
        {"a point", [&] { return answer("1,2"), acedGetPoint(nullptr, "P: ", at); }},
        {"a text", [&] { return answer("some text"), acedGetString(1, "T: ", word); }},
        {"a number", [&] { return answer("5"), acedGetReal("R: ", &real); }},
        {"a pick", [&] { return answer("1,1"), acedEntSel("E: ", name, at); }},
        {"a missing list of key words", [&] { return acedGetKword("K: ", word); }},
        {"a selection", [&] { return answer(""), acedSSGet(nullptr, nullptr, nullptr, nullptr, name); }},
    };
    for (const auto& [how, prompt] : prompts) {
        SCOPED_TRACE(how);
        std::string text;
        ASSERT_EQ(ask("Stale", at, &text), RTKWORD);
        ASSERT_EQ(text, "Stale");
        EXPECT_NE(prompt(), RTKWORD);
        char input[ADS_TEXT_SIZE] = "?";
        acedGetInput(input);
        EXPECT_STREQ(input, "");
    }
}

TEST_F(any_input, HoldsForOnePromptOnly)
{
    ads_point at = {0, 0, 0};
    std::string text;
    EXPECT_EQ(ask("R10", at, &text), RTKWORD);
    answer("R10|3,4");
    EXPECT_EQ(acedGetPoint(nullptr, "Point: ", at), RTNORM);
    EXPECT_TRUE(has_shown("Invalid point.")) << shown;
    // A prompt in an answer's expression is one of its own.
    acedInitGet(RSG_OTHER, "");
    answer("(getpoint \"inner: \")|5,6|R10");
    EXPECT_EQ(acedGetPoint(nullptr, "Point: ", at), RTNORM);
    EXPECT_DOUBLE_EQ(at[0], 5);
}

// ---- numbers that are none ------------------------------------------------------------------------------

TEST_F(inputs, NoNumberThatIsNotFiniteReachesAProgram)
{
    std::string digits(400, '9');
    // Too large by the machine's arithmetic, by hundreds of digits, by words, by a sum, by LISP.
    const std::string numbers[] = {"1e999", "-1e999",   digits,           "nan", "NaN", "-nan",
                                   "inf",   "infinity", "(* 1e200 1e200)"};
    for (const std::string& bad : numbers) {
        SCOPED_TRACE(bad.substr(0, 20));
        shown.clear();
        double real = 0;
        answer(bad + "|5");
        EXPECT_EQ(acedGetReal("Number: ", &real), RTNORM);
        EXPECT_EQ(real, 5);
        EXPECT_TRUE(has_shown("Requires numeric value.")) << shown;
        answer(bad + "|5");
        EXPECT_EQ(acedGetDist(nullptr, "Number: ", &real), RTNORM);
        EXPECT_EQ(real, 5);
        EXPECT_TRUE(has_shown("Requires numeric distance or two points.")) << shown;
        answer(bad + "|90");
        EXPECT_EQ(acedGetAngle(nullptr, "Number: ", &real), RTNORM);
        EXPECT_NEAR(real, PI / 2, 1e-9);
        EXPECT_TRUE(has_shown("Requires valid numeric angle or two points.")) << shown;
        int whole = 0;
        answer(bad + "|5");
        EXPECT_EQ(acedGetInt("Number: ", &whole), RTNORM);
        EXPECT_EQ(whole, 5);
        EXPECT_TRUE(has_shown("Requires an integer")) << shown;
    }
}

TEST_F(inputs, NoPointWithSuchACoordinateReachesAProgram)
{
    const double last[3] = {1.7e308, 0, 0};
    for (const char* bad :
         {"1e999,0", "0,-1e999", "0,0,1e999", "nan,0", "0,inf", "1e999<45", "5<nan", "@1.7e308,0", "@1.7e308<0",
          "(list 0 (* 1e200 1e200))", "(list (* 1e200 1e200) 0.0 0.0)"}) {
        SCOPED_TRACE(bad);
        db::set_point(doc(), "LASTPOINT", last);
        shown.clear();
        ads_point at = {0, 0, 0};
        answer(std::string(bad) + "|3,4");
        EXPECT_EQ(acedGetPoint(nullptr, "Point: ", at), RTNORM);
        EXPECT_DOUBLE_EQ(at[0], 3);
        EXPECT_TRUE(has_shown("Invalid point.")) << shown;
    }
}

TEST_F(inputs, TwoPointsFartherApartThanNumbersGoAreNoDistance)
{
    double real = 0;
    answer("-1.7e308,0|1.7e308,0|0,0|3,4");
    const ads_point base = {0, 0, 0};
    EXPECT_EQ(acedGetDist(nullptr, "Distance: ", &real), RTNORM);
    EXPECT_DOUBLE_EQ(real, 5);
    answer("1.7e308,1.7e308|3,4");
    EXPECT_EQ(acedGetDist(base, "Distance: ", &real), RTNORM);
    EXPECT_DOUBLE_EQ(real, 5);
    EXPECT_TRUE(has_shown("Requires numeric distance or two points.")) << shown;
}

TEST_F(inputs, SmallAndNegativeZerosAreNumbers)
{
    double real = 1;
    answer("-0");
    EXPECT_EQ(acedGetReal("Number: ", &real), RTNORM);
    EXPECT_EQ(real, 0);
    answer("1e308");
    EXPECT_EQ(acedGetReal("Number: ", &real), RTNORM);
    EXPECT_EQ(real, 1e308);
    answer("4.9e-324");
    EXPECT_EQ(acedGetReal("Number: ", &real), RTNORM);
    EXPECT_GT(real, 0);
    acedInitGet(RSG_NOZERO, nullptr);
    answer("-0|1");
    EXPECT_EQ(acedGetReal("Number: ", &real), RTNORM);
    EXPECT_EQ(real, 1);
}

TEST_F(inputs, TextsReachAProgramAsWindows1252)
{
    char text[ADS_TEXT_SIZE];
    answer("H\xC3\xB6he 12\xC2\xB0 \xE2\x82\xAC");
    EXPECT_EQ(acedGetString(1, "Text: ", text), RTNORM);
    EXPECT_STREQ(text, "H\xF6"
                       "he 12\xB0 \x80");
    ads_point at;
    answer("\xC3\x96");
    acedInitGet(RSG_OTHER, "");
    EXPECT_EQ(acedGetPoint(nullptr, "Text: ", at), RTKWORD);
    acedGetInput(text);
    EXPECT_STREQ(text, "\xD6");
}

TEST_F(inputs, ExpressionsAnswerPromptsForTexts)
{
    char text[ADS_TEXT_SIZE];
    answer("(setq label \"Lot 7\")|!label|(+ 1 2)|(+ 1 1.5)|!no_such_thing|x");
    for (const char* expected : {"Lot 7", "Lot 7", "3", "2.5", "x"}) {
        EXPECT_EQ(acedGetString(1, "Text: ", text), RTNORM);
        EXPECT_STREQ(text, expected);
    }
}

} // namespace

} // namespace host::commandline
