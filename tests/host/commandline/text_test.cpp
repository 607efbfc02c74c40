// TEXT with every justification, and the commands that programs send before it: STYLE and LAYER.
#include "tests/host/commandline/session.h"

#include "hostapi/ads.h"

namespace host::commandline
{

namespace
{

using texts = session;

// "Ag" at height 3 is 5 wide, its tail goes 1 below the base line. All are put at 100,200.
struct justified_case {
    const char *name, *code; // as programs send it
    const char* words;       // the same spelled out, "" for none
    const char* expected;    // 10, 11, 72, 73
};
constexpr justified_case JUSTIFIED[] = {
    {"Left", "L", "Left", "TEXT 10=100,200,0 72=0 11=0,0,0 73=0"},
    {"Center", "C", "Center", "TEXT 10=97.5,200,0 72=1 11=100,200,0 73=0"},
    {"Right", "R", "Right", "TEXT 10=95,200,0 72=2 11=100,200,0 73=0"},
    {"Middle", "M", "Middle", "TEXT 10=97.5,199,0 72=4 11=100,200,0 73=0"},
    {"TopLeft", "TL", "TLeft", "TEXT 10=100,197,0 72=0 11=100,200,0 73=3"},
    {"TopCenter", "TC", "TCenter", "TEXT 10=97.5,197,0 72=1 11=100,200,0 73=3"},
    {"TopRight", "TR", "TRight", "TEXT 10=95,197,0 72=2 11=100,200,0 73=3"},
    {"MiddleLeft", "ML", "MLeft", "TEXT 10=100,198.5,0 72=0 11=100,200,0 73=2"},
    {"MiddleCenter", "MC", "MCenter", "TEXT 10=97.5,198.5,0 72=1 11=100,200,0 73=2"},
    {"MiddleRight", "MR", "MRight", "TEXT 10=95,198.5,0 72=2 11=100,200,0 73=2"},
    {"BottomLeft", "BL", "BLeft", "TEXT 10=100,201,0 72=0 11=100,200,0 73=1"},
    {"BottomCenter", "BC", "BCenter", "TEXT 10=97.5,201,0 72=1 11=100,200,0 73=1"},
    {"BottomRight", "BR", "BRight", "TEXT 10=95,201,0 72=2 11=100,200,0 73=1"},
};

class justified_texts : public session, public testing::WithParamInterface<justified_case>
{
};
INSTANTIATE_TEST_SUITE_P(Justified, justified_texts, testing::ValuesIn(JUSTIFIED), name_of_case());

TEST_P(justified_texts, SentTypedAndSpelledOut)
{
    const justified_case& c = GetParam();
    const std::string code = c.code, rest = "|100,200|3|0|Ag";
    EXPECT_EQ(send(".text|_J|" + code + rest), RTNORM);
    EXPECT_EQ(send("TEXT|" + code + rest), RTNORM);
    EXPECT_EQ(send("TEXT|J|" + std::string(c.words) + rest), RTNORM);
    type("TEXT|J|" + code + rest + "|");
    const std::string one = c.expected;
    EXPECT_EQ(objects({10, 11, 72, 73}), one + " / " + one + " / " + one + " / " + one);
}

TEST_P(justified_texts, TurnedByARightAngle)
{
    const justified_case& c = GetParam();
    ASSERT_EQ(send(".text|_J|" + std::string(c.code) + "|0,0|3|90|Ag"), RTNORM);
    ASSERT_EQ(send(".text|_J|" + std::string(c.code) + "|0,0|3|0|Ag"), RTNORM);
    const db::group *turned = db::find(data().at(nth(0)).groups, 10),
                    *level = db::find(data().at(nth(1)).groups, 10);
    EXPECT_NEAR(turned->point[0], -level->point[1], 1e-9);
    EXPECT_NEAR(turned->point[1], level->point[0], 1e-9);
}

TEST_F(texts, BetweenTwoPoints)
{
    EXPECT_EQ(send(".text|_J|F|0,0|20,0|3|Ag"), RTNORM);
    EXPECT_EQ(send(".text|_J|A|0,0|0,20|Ag"), RTNORM);
    EXPECT_EQ(objects({10, 11, 40, 41, 50}),
              "TEXT 10=0,0,0 40=3 50=0 41=4 11=20,0,0 / TEXT 10=0,0,0 40=12 50=1.5708 41=1 11=0,20,0");
}

TEST_F(texts, LinesOfAnAlignedTextStepByTheHeightOfTheLineBefore)
{
    EXPECT_EQ(send("TEXT|A|0,0|20,0|Ag"), RTNORM);
    EXPECT_EQ(send("TEXT||A"), RTNORM);
    EXPECT_EQ(objects({10, 11, 40}), "TEXT 10=0,0,0 40=12 11=20,0,0 / TEXT 10=0,-20,0 40=30 11=20,-20,0");
}

TEST_F(texts, LinesUnderACentredTextAreCentredToo)
{
    send("TEXT|C|0,0|3|0|Ag");
    send("TEXT||A");
    EXPECT_EQ(objects({10, 11}), "TEXT 10=-2.5,0,0 11=0,0,0 / TEXT 10=-1,-5,0 11=0,-5,0");
}

TEST_F(texts, WidthFactorAndSlantOfTheStyle)
{
    send("STYLE|WIDE||0|2|15|||");
    send("");
    send("TEXT|R|0,0|3|0|Ag");
    EXPECT_EQ(objects({10, 41, 51}), "TEXT 10=-10,0,0 41=2 51=0.261799");
}

TEST_F(texts, OfAStyleOfFixedHeightAreAlignedByIt)
{
    send("STYLE|FIXED||6|1|0||||");
    EXPECT_EQ(send("TEXT|TR|0,0|0|Ag"), RTNORM);
    EXPECT_EQ(objects({10, 40, 1}), "TEXT 10=-10,-6,0 40=6 1=Ag");
}

TEST_F(texts, OutlineFontsHaveLettersOfDifferentWidth)
{
    send("STYLE|SANS|arial.ttf|0|1|0|||");
    send("TEXT|R|0,0|716|0|iW");
    EXPECT_EQ(objects({10}), "TEXT 10=-1166,0,0");
}

// ---- STYLE ------------------------------------------------------------------------------------------------

// As programs send it: 0.0 high, the width and slant as numbers, and Enter for each question behind.
int send_style(const char* name, double width, double slant, const std::vector<const char*>& behind)
{
    list_builder list;
    list.add(rb_text(RTSTR, ".style")).add(rb_text(RTSTR, name)).add(rb_text(RTSTR, ""));
    list.add(rb_real(RTREAL, 0.0)).add(rb_real(RTREAL, width)).add(rb_real(RTREAL, slant));
    for (const char* each : behind)
        list.add(rb_text(RTSTR, each));
    const list_ptr whole(list.take());
    return acedCmd(whole.get());
}

struct style_case {
    const char *name, *font;
    std::vector<const char*> behind;
    int generation;
};

TEST_F(texts, StylesThatProgramsSendLeaveNothingBehind)
{
    const style_case cases[] = {
        {"StrokeLevel", "txt", {"", "", ""}, 0},
        {"StrokeUpsideDown", "txt", {"", "_Y"}, 4},
        {"OutlineLevel", "arial.ttf", {"", "", ""}, 0},
        {"OutlineUpsideDown", "arial.ttf", {"", "_Y"}, 4},
    };
    type("LINE|0,0|1,0|"); // what a left Enter would repeat
    for (const style_case& c : cases) {
        send("STYLE|" + std::string(c.name) + "|" + c.font + "|7.5|1|0|||");
        send("");
        shown.clear();
        EXPECT_EQ(send_style(c.name, 2.5, 10.0, c.behind), RTNORM) << c.name;
        const db::group_list& groups = data().at(data().record("STYLE", c.name)).groups;
        EXPECT_EQ(data().text_of(groups, 3), c.font);
        EXPECT_EQ(db::real_of(groups, 40, -1), 0.0) << c.name;
        EXPECT_EQ(db::real_of(groups, 41, -1), 2.5) << c.name;
        EXPECT_NEAR(db::real_of(groups, 50, -1), 10 * 3.14159265358979 / 180, 1e-12) << c.name;
        EXPECT_EQ(db::int_of(groups, 71, -1), c.generation) << c.name;
        EXPECT_EQ(db::text_variable(doc(), "TEXTSTYLE"), c.name);
        // The next command is a command, whatever question waits.
        EXPECT_EQ(send(".text|0,0|3|0|Ag"), RTNORM) << c.name;
        EXPECT_FALSE(has_shown("Unknown command")) << shown;
    }
    EXPECT_EQ(objects({1, 7}), "LINE / TEXT 1=Ag 7=StrokeLevel / TEXT 1=Ag 7=StrokeUpsideDown / "
                               "TEXT 1=Ag 7=OutlineLevel / TEXT 1=Ag 7=OutlineUpsideDown");
}

TEST_F(texts, AnEnterKeepsWhatTheStyleHas)
{
    send("STYLE|S||0|1|0|Y|Y|Y");
    EXPECT_EQ(send_style("S", 1.0, 0.0, {"", "", ""}), RTNORM);
    const db::group_list& groups = data().at(data().record("STYLE", "S")).groups;
    EXPECT_EQ(db::int_of(groups, 71, -1), 6);
    EXPECT_EQ(db::int_of(groups, 70, -1) & 4, 4);
}

TEST_F(texts, AWidthThatIsNoneIsRefused)
{
    EXPECT_EQ(send_style("S", 0.0, 0.0, {"", "", ""}), RTERROR);
}

// ---- LAYER ------------------------------------------------------------------------------------------------

TEST_F(texts, LayersAreSetByProgramsOrRefused)
{
    send("LAYER|N|ROADS,COLD|F|COLD|OFF|ROADS|");
    EXPECT_EQ(send(".layer|_S|roads|"), RTNORM);
    EXPECT_EQ(db::text_variable(doc(), "CLAYER"), "ROADS");
    EXPECT_EQ(send(".layer|_S|COLD|"), RTERROR);
    EXPECT_EQ(send(".layer|_S|NOWHERE|"), RTERROR);
    EXPECT_EQ(db::text_variable(doc(), "CLAYER"), "ROADS");
    EXPECT_EQ(send("LINE|0,0|1,0|"), RTNORM); // nothing waits
    EXPECT_EQ(count(), 1);
}

} // namespace

} // namespace host::commandline
