// Temporary vectors, drags, pixels, and how prompts stand in the trace.
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>

#include "host/commandline/screen.h"
#include "host/core/trace.h"
#include "tests/host/commandline/session.h"
#include "tests/host/files/temporary_directory.h"

namespace host::commandline
{

namespace
{

class screens : public session
{
protected:
    temporary_directory tmp;
    std::string traced_to = tmp.path + "/trace.txt";
    std::string traced()
    {
        trace_to("");
        std::ifstream file(traced_to);
        std::stringstream all;
        all << file.rdbuf();
        return all.str();
    }
};

TEST_F(screens, DrawingTheSameInTheComplementColourWipesIt)
{
    const ads_point a = {0, 0, 0}, b = {10, 0, 0}, c = {0, 10, 0};
    acedGrDraw(a, b, -1, 0);
    acedGrDraw(a, c, -1, 0);
    EXPECT_EQ(screen_vectors(doc()).size(), 2u);
    acedGrDraw(a, b, -1, 0);
    ASSERT_EQ(screen_vectors(doc()).size(), 1u);
    EXPECT_DOUBLE_EQ(screen_vectors(doc())[0].to.y, 10);
    acedGrDraw(a, b, 1, 0);
    acedGrDraw(a, b, 1, 1);
    EXPECT_EQ(screen_vectors(doc()).size(), 3u) << "other colours stay";
    EXPECT_TRUE(screen_vectors(doc())[2].highlighted);
    acedRedraw(nullptr, 1);
    EXPECT_TRUE(screen_vectors(doc()).empty());
}

TEST_F(screens, AVectorIsWipedFromEitherEnd)
{
    const ads_point a = {0, 0, 0}, b = {10, 5, 0}, minus_zero = {-0.0, 0, 0};
    acedGrDraw(a, b, -1, 0);
    acedGrDraw(b, minus_zero, -1, 0);
    EXPECT_TRUE(screen_vectors(doc()).empty());
    acedGrDraw(b, a, -1, 0);
    EXPECT_EQ(screen_vectors(doc()).size(), 1u) << "and drawn again by the third";
}

TEST_F(screens, WhatLiesNowhereIsNotDrawn)
{
    const ads_point a = {0, 0, 0}, b = {HUGE_VAL, 0, 0}, c = {std::nan(""), 0, 0};
    EXPECT_EQ(acedGrDraw(a, b, 1, 0), RTERROR);
    EXPECT_EQ(acedGrDraw(c, a, -1, 0), RTERROR);
    EXPECT_TRUE(screen_vectors(doc()).empty());
}

// With a search of all for each of them this would take minutes.
TEST_F(screens, ManyVectorsAreWipedInAnyOrderAndTheRestKeepTheirs)
{
    constexpr int COUNT = 200000, STRIDE = 7919; // without a common divisor: each comes once
    const auto draw = [](int i) {
        const ads_point from = {double(i), 0, 0}, to = {double(i), 10, 0};
        acedGrDraw(from, to, -1, 0);
    };
    for (int i = 0; i < COUNT; ++i)
        draw(i);
    for (std::int64_t i = 0; i < COUNT; ++i)
        if (const int k = static_cast<int>(i * STRIDE % COUNT); k % 1000)
            draw(k);
    const std::vector<screen_vector>& left = screen_vectors(doc());
    ASSERT_EQ(left.size(), 200u);
    for (std::size_t i = 0; i < left.size(); ++i)
        EXPECT_EQ(left[i].from.x, 1000.0 * static_cast<double>(i));
}

TEST_F(screens, ViewChangesKeepTheVectorsAndEachDrawingHasItsOwn)
{
    const ads_point a = {0, 0, 0}, b = {10, 0, 0};
    acedGrDraw(a, b, -1, 0);
    for (const char* command : {"ZOOM|2X", "PAN|1,1|2,2", "DVIEW||TW|30|"})
        EXPECT_EQ(send(command), RTNORM) << command;
    EXPECT_EQ(screen_vectors(doc()).size(), 1u);
    document& first = doc();
    document& second = open_document();
    EXPECT_TRUE(screen_vectors(second).empty());
    acedGrDraw(a, b, 2, 0);
    acedRedraw(nullptr, 1);
    EXPECT_TRUE(screen_vectors(second).empty());
    EXPECT_EQ(screen_vectors(first).size(), 1u);
}

TEST_F(screens, RegenAndRedrawWipeTheVectors)
{
    const ads_point a = {0, 0, 0}, b = {10, 0, 0};
    for (const char* command : {"REGEN", "REDRAW", "REDRAWALL", "REGENALL"}) {
        acedGrDraw(a, b, 2, 0);
        send(command);
        EXPECT_TRUE(screen_vectors(doc()).empty()) << command;
    }
}

TEST_F(screens, PixelsFollowTheView)
{
    const list_ptr size = db::get_variable(doc(), "SCREENSIZE");
    const double width = size->resval.rpoint[0], height = size->resval.rpoint[1];
    char line[80];
    std::snprintf(line, sizeof line, "ZOOM|C|100,50|%g", height);
    send(line); // one unit a pixel
    int x = 0, y = 0;
    const ads_point middle = {100, 50, 0}, up = {110, 70, 0};
    ASSERT_EQ(acedCoordFromWorldToPixel(2, middle, &x, &y), 1);
    EXPECT_NEAR(x, width / 2, 1);
    EXPECT_NEAR(y, height / 2, 1);
    ASSERT_EQ(acedCoordFromWorldToPixel(2, up, &x, &y), 1);
    EXPECT_NEAR(x, width / 2 + 10, 1);
    EXPECT_NEAR(y, height / 2 - 20, 1);
}

ads_point followed;
int follow(ads_point point, ads_matrix matrix)
{
    std::memcpy(followed, point, sizeof followed);
    matrix[0][3] = point[0];
    return RTNORM;
}

TEST_F(screens, ADragEndsWhereThePointSays)
{
    ads_name set = {0, 0};
    ads_point at = {0, 0, 0};
    answer("12,34");
    EXPECT_EQ(acedDragGen(set, "\nWhere: ", 0, follow, at), RTNORM);
    EXPECT_DOUBLE_EQ(at[0], 12);
    EXPECT_DOUBLE_EQ(followed[1], 34);
    answer("");
    EXPECT_EQ(acedDragGen(set, "\nWhere: ", 0, follow, at), RTNONE);
    answer("^C");
    EXPECT_EQ(acedDragGen(set, "\nWhere: ", 0, follow, at), RTCAN);
}

int follow_calls = 0;
int fill_with_nothing_useful(ads_point point, ads_matrix matrix)
{
    ++follow_calls;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            matrix[i][j] = std::nan("");
    point[0] = std::nan("");
    return RTNORM;
}

int refuse_to_follow(ads_point, ads_matrix)
{
    return RTERROR;
}

TEST_F(screens, ADragIsWhereThePointerWasWhateverTheProgramMakesOfIt)
{
    ads_name set = {0, 0};
    ads_point at = {1, 2, 3};
    follow_calls = 0;
    answer("12,34");
    EXPECT_EQ(acedDragGen(set, "\nWhere: ", 0, fill_with_nothing_useful, at), RTNORM);
    EXPECT_EQ(follow_calls, 1);
    EXPECT_DOUBLE_EQ(at[0], 12);
    for (const char* ending : {"", "^C", "u"}) {
        answer(ending);
        acedInitGet(0, "Undo");
        EXPECT_NE(acedDragGen(set, "\nWhere: ", 0, fill_with_nothing_useful, at), RTNORM);
        EXPECT_EQ(follow_calls, 1) << "nothing was dragged anywhere";
        EXPECT_DOUBLE_EQ(at[0], 12);
    }
    char word[ADS_TEXT_SIZE];
    acedGetInput(word);
    EXPECT_STREQ(word, "Undo");
    answer("56,78");
    EXPECT_EQ(acedDragGen(set, "\nWhere: ", 0, refuse_to_follow, at), RTERROR);
    EXPECT_DOUBLE_EQ(at[0], 12);
    answer("56,78");
    EXPECT_EQ(acedDragGen(set, nullptr, 0, nullptr, at), RTNORM);
    EXPECT_DOUBLE_EQ(at[0], 56);
}

TEST_F(screens, PromptsAreTracedWithTheirArguments)
{
    answer("|n|3,4|5|^C|y");
    ASSERT_TRUE(trace_to(traced_to));
    char word[ADS_TEXT_SIZE];
    acedInitGet(0, "Yes No");
    acedGetKword("\nCreate a Zorro [Yes/<No>]? ", word);
    acedInitGet(0, "Yes No");
    acedGetKword("Again? ", word);
    ads_point p;
    const ads_point base = {1, 2, 0};
    acedGetPoint(base, "\nTo: ", p);
    double d = 0;
    acedGetReal(nullptr, &d);
    acedGetDist(nullptr, "\nHow far: ", &d);
    int n = 0;
    acedInitGet(6, "Yes No");
    acedGetInt("How many: ", &n);
    acedInitGet(128, nullptr);
    EXPECT_EQ(traced(), "acedInitGet 0 \"Yes No\"\n"
                        "acedGetKword \"\\nCreate a Zorro [Yes/<No>]? \" -> RTNONE\n"
                        "acedInitGet 0 \"Yes No\"\n"
                        "acedGetKword \"Again? \" -> RTNORM\n"
                        "acedGetPoint (1.0 2.0 0.0) \"\\nTo: \" -> RTNORM\n"
                        "acedGetReal nil -> RTNORM\n"
                        "acedGetDist nil \"\\nHow far: \" -> RTCAN\n"
                        "acedInitGet 6 \"Yes No\"\n"
                        "acedGetInt \"How many: \" -> RTKWORD\n"
                        "acedInitGet 128 nil\n");
}

TEST_F(screens, CommandsAndVectorsAreTracedAsTheyAreSent)
{
    ASSERT_TRUE(trace_to(traced_to));
    const ads_point a = {0, 0, 0}, b = {10, 0, 0};
    acedGrDraw(a, b, -1, 0);
    acedCommand(RTSTR, "_.LINE", RT3DPOINT, a, RT3DPOINT, b, RTSTR, "", 0);
    EXPECT_EQ(traced(), "acedGrDraw (0.0 0.0 0.0) (10.0 0.0 0.0) -1 0\n"
                        "acedCommand (\"_.LINE\" (0.0 0.0 0.0) (10.0 0.0 0.0) \"\") -> RTNORM\n");
}

TEST_F(screens, ScreensSwitchAndAreTraced)
{
    ASSERT_TRUE(trace_to(traced_to));
    EXPECT_EQ(acedTextScr(), RTNORM);
    EXPECT_EQ(acedGraphScr(), RTNORM);
    EXPECT_EQ(acedTextPage(), RTNORM);
    EXPECT_EQ(traced(), "acedTextScr\nacedGraphScr\nacedTextPage\n");
}

TEST_F(screens, TheTextScreenIsInFrontUntilTheDrawingIsCalled)
{
    acedGraphScr();
    const int pages = shown_text_screen().pages;
    EXPECT_FALSE(shown_text_screen().is_in_front);
    acedTextPage();
    EXPECT_TRUE(shown_text_screen().is_in_front);
    EXPECT_EQ(shown_text_screen().pages, pages + 1);
    // A pause: any answer goes on, and the page stays until the program calls the drawing back.
    for (const char* line : {"", "anything at all"}) {
        answer(line);
        char text[ADS_TEXT_SIZE];
        EXPECT_EQ(acedGetString(0, "", text), RTNORM);
        EXPECT_TRUE(shown_text_screen().is_in_front);
    }
    answer("^C");
    char text[ADS_TEXT_SIZE] = "left";
    EXPECT_EQ(acedGetString(0, nullptr, text), RTCAN);
    EXPECT_STREQ(text, "");
    acedGraphScr();
    EXPECT_FALSE(shown_text_screen().is_in_front);
    acedTextScr();
    EXPECT_TRUE(shown_text_screen().is_in_front);
    EXPECT_EQ(shown_text_screen().pages, pages + 1) << "the old page comes back as it was";
    acedGraphScr();
}

} // namespace

} // namespace host::commandline
