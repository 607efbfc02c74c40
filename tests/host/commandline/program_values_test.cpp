// Commands as programs send them by acedCommand, each value with its type.
#include <numbers>

#include "tests/host/commandline/session.h"

namespace host::commandline
{

namespace
{

class program_values : public session
{
protected:
    void TearDown() override
    {
        db::set_int(doc(), "OSMODE", 0); // these outlive the drawing
        db::set_int(doc(), "TEXTEVAL", 0);
        session::TearDown();
    }
    static int text(const point3& at, double height, const point3& toward, const char* line)
    {
        return acedCommand(RTSTR, "_.TEXT", RT3DPOINT, at.data(), RTREAL, height, RT3DPOINT, toward.data(),
                           RTSTR, line, 0);
    }
    static int arc(const point3& a, const point3& b, const point3& c)
    {
        return acedCommand(RTSTR, "_.ARC", RT3DPOINT, a.data(), RT3DPOINT, b.data(), RT3DPOINT, c.data(),
                           RTNONE);
    }
    std::string last_text() { return std::string(data().text_of(data().at(nth(count() - 1)).groups, 1)); }
};

// ---- TEXT

TEST_F(program_values, TextByPlaceHeightPointAndLine)
{
    EXPECT_EQ(text({1, 2, 3}, 2.5, {1, 5, 0}, "A"), RTNORM);
    EXPECT_EQ(objects({10, 40, 1, 50, 72, 73, 11}), "TEXT 10=1,2,3 40=2.5 1=A 50=1.5708 72=0 11=0,0,0 73=0");
    EXPECT_EQ(shown, "");
}

// The letters of a word go one by one, whatever they are.
TEST_F(program_values, AnyLineIsATextOfItsOwn)
{
    int made = 0;
    for (const char* line : {" ", "5", "-1.5e3", "\"",           "'",     "%%d",  "%%u",     "(",
                             ")", "!", "!a",     "(+ 1 2)",      ";",     "#1F",  "\\",      "^C",
                             "U", "J", "\xB0",   "\xE4\xFC\x80", "10,20", "LINE", "_.ERASE", "*"}) {
        SCOPED_TRACE(line);
        EXPECT_EQ(text({0, 0, 0}, 1.0, {3, 0, 0}, line), RTNORM);
        EXPECT_EQ(count(), ++made);
        EXPECT_EQ(last_text(), line);
    }
    EXPECT_EQ(shown, "");
}

TEST_F(program_values, ANumberForTheLineIsText)
{
    EXPECT_EQ(acedCommand(RTSTR, "TEXT", RT3DPOINT, point3{}.data(), RTREAL, 1.0, RTREAL, 0.0, RTSHORT, 17, 0),
              RTNORM);
    EXPECT_EQ(last_text(), "17");
}

TEST_F(program_values, ABackslashIsAPauseInTextWhenTextIsEvaluated)
{
    db::set_int(doc(), "TEXTEVAL", 1);
    answer("typed by hand");
    EXPECT_EQ(text({0, 0, 0}, 1.0, {3, 0, 0}, "\\"), RTNORM);
    EXPECT_EQ(last_text(), "typed by hand");
}

TEST_F(program_values, RotationByAPointDoesNotDependOnTheAngleSettings)
{
    for (const int unit : {0, 1, 2, 3, 4})
        for (const int clockwise : {0, 1}) {
            db::set_int(doc(), "AUNITS", unit);
            db::set_int(doc(), "ANGDIR", clockwise);
            db::set_real(doc(), "ANGBASE", clockwise * 1.0);
            EXPECT_EQ(text({5, 5, 0}, 1.0, {2, 5, 0}, "x"), RTNORM);
            EXPECT_EQ(described(nth(count() - 1), {50}), "TEXT 50=3.14159");
        }
}

// The height that a program gives anyway is left out; place, direction and line stand.
TEST_F(program_values, AStyleWithAHeightKeepsItsOwnAndTheProgramsRotation)
{
    send("STYLE|FIXED||7|1|0|N|N|N");
    for (const int unit : {0, 1, 2, 3, 4}) {
        SCOPED_TRACE(unit);
        db::set_int(doc(), "AUNITS", unit);
        EXPECT_EQ(text({1, 2, 0}, 2.5, {1, 9, 0}, "A"), RTNORM);
        EXPECT_EQ(described(nth(count() - 1), {10, 40, 1, 50}), "TEXT 10=1,2,0 40=7 1=A 50=1.5708");
    }
    EXPECT_EQ(text({1, 2, 0}, 2.5, {1, 9, 0}, " "), RTNORM);
    EXPECT_EQ(last_text(), " ");
    EXPECT_EQ(count(), 6);
}

TEST_F(program_values, AStyleWithAHeightTakesARotationAndALine)
{
    send("STYLE|FIXED||7|1|0|N|N|N");
    EXPECT_EQ(acedCommand(RTSTR, "TEXT", RT3DPOINT, point3{}.data(), RT3DPOINT, point3{-1, 0, 0}.data(), RTSTR,
                          "A", 0),
              RTNORM);
    EXPECT_EQ(acedCommand(RTSTR, "TEXT", RT3DPOINT, point3{}.data(), RTREAL, 90.0, RTSTR, "12", 0), RTNORM);
    EXPECT_EQ(objects({40, 1, 50}), "TEXT 40=7 1=A 50=3.14159 / TEXT 40=7 1=12 50=1.5708");
}

TEST_F(program_values, AHeightOfZeroIsRefusedAndNothingHangs)
{
    EXPECT_EQ(text({0, 0, 0}, 0.0, {3, 0, 0}, "A"), RTERROR);
    EXPECT_EQ(text({0, 0, 0}, 2.0, {3, 0, 0}, "B"), RTNORM) << "the next call begins anew";
    EXPECT_EQ(objects({1, 40}), "TEXT 40=2 1=B");
}

// ---- ARC

TEST_F(program_values, ArcByThreePointsKeepsTheHeight)
{
    EXPECT_EQ(arc({1, 0, 5}, {0, 1, 5}, {-1, 0, 5}), RTNORM);
    EXPECT_EQ(arc({1, 0, 2}, {0, 1, 0}, {-1, 0, 9}), RTNORM);
    EXPECT_EQ(objects({10, 40}), "ARC 10=0,0,5 40=1 / ARC 10=0,0,2 40=1");
}

TEST_F(program_values, PointsInLineMakeNoArcAndDropTheRestOfTheCall)
{
    const point3 a{0, 0, 0}, b{1, 1, 0}, c{2, 2, 0};
    EXPECT_EQ(acedCommand(RTSTR, "_.ARC", RT3DPOINT, a.data(), RT3DPOINT, b.data(), RT3DPOINT, c.data(), RTSTR,
                          "POINT", RT3DPOINT, a.data(), RTNONE),
              RTERROR);
    EXPECT_EQ(shown, "Invalid arc: the points are in line.\n");
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(acedCommand(RTSTR, "POINT", RT3DPOINT, a.data(), RTNONE), RTNORM);
    EXPECT_EQ(count(), 1);
}

TEST_F(program_values, PointsInLineFarFromTheOriginMakeNoArc)
{
    for (int i = 0; i < 40; ++i) {
        const double angle = i * 0.37, length = 3.0 + i;
        const point3 a{640000.125, 5120000.3, 0};
        const point3 c{a.x + length * std::cos(angle), a.y + length * std::sin(angle), 0};
        EXPECT_EQ(arc(a, {(a.x + c.x) / 2, (a.y + c.y) / 2, 0}, c), RTERROR) << i;
    }
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(arc({640000, 5120000, 0}, {640010, 5120000.001, 0}, {640020, 5120000, 0}), RTNORM)
        << "a millimetre beside the line is an arc";
    EXPECT_EQ(described(nth(0), {40}), "ARC 40=50000");
}

TEST_F(program_values, PointsInOnePlaceMakeNoArc)
{
    EXPECT_EQ(arc({1, 1, 0}, {1, 1, 0}, {2, 2, 0}), RTERROR);
    EXPECT_EQ(arc({1, 1, 0}, {2, 2, 0}, {1, 1, 0}), RTERROR);
    EXPECT_EQ(count(), 0);
}

// ---- POINT, ERASE, LAYER

TEST_F(program_values, PointsKeepAllThatTheyAreGiven)
{
    const point3 p{640000.123456789, 5120000.987654321, 1234.5};
    EXPECT_EQ(acedCommand(RTSTR, "_.POINT", RT3DPOINT, p.data(), RTNONE), RTNORM);
    db::set_real(doc(), "ELEVATION", 50.0);
    EXPECT_EQ(acedCommand(RTSTR, "_.POINT", RTPOINT, p.data(), RTNONE), RTNORM);
    const db::group* at = db::find(data().at(nth(0)).groups, 10);
    EXPECT_EQ(at->point[0], p.x);
    EXPECT_EQ(at->point[1], p.y);
    EXPECT_EQ(at->point[2], p.z);
    EXPECT_EQ(db::find(data().at(nth(1)).groups, 10)->point[2], 50.0) << "a flat point lies at the elevation";
}

TEST_F(program_values, EraseTakesNamesAndSets)
{
    send("LINE|0,0|1,0|2,0|3,0|4,0|");
    ads_name one, set, two;
    make_name(data(), nth(0), one);
    make_name(data(), nth(1), two);
    ASSERT_EQ(acedSSAdd(two, nullptr, set), RTNORM);
    EXPECT_EQ(acedCommand(RTSTR, "_.ERASE", RTENAME, one, RTSTR, "", RTNONE), RTNORM);
    EXPECT_EQ(acedCommand(RTSTR, "_.ERASE", RTPICKS, set, RTSTR, "", RTNONE), RTNORM);
    EXPECT_EQ(objects({10}), "LINE 10=2,0,0 / LINE 10=3,0,0");
    EXPECT_NE(acedCommand(RTSTR, "_.ERASE", RTENAME, one, RTSTR, "", RTNONE), RTCAN) << "erased already";
    EXPECT_EQ(count(), 2);
    acedSSFree(set);
}

TEST_F(program_values, LayersAreMadeColouredThawedAndSet)
{
    EXPECT_EQ(acedCommand(RTSTR, "_.LAYER", RTSTR, "_M", RTSTR, "Wege", RTSTR, "_C", RTSHORT, 3, RTSTR, "Wege",
                          RTSTR, "", RTNONE),
              RTNORM);
    EXPECT_EQ(described(data().record("LAYER", "WEGE"), {2, 62, 70}), "LAYER 2=Wege 70=0 62=3");
    EXPECT_EQ(db::text_variable(doc(), "CLAYER"), "Wege");
    send("LAYER|S|0|F|Wege|");
    EXPECT_EQ(acedCommand(RTSTR, "_.LAYER", RTSTR, "_T", RTSTR, "WEGE", RTSTR, "_S", RTSTR, "WEGE", RTSTR, "",
                          RTNONE),
              RTNORM);
    EXPECT_EQ(described(data().record("LAYER", "WEGE"), {70}), "LAYER 70=0");
    EXPECT_EQ(db::text_variable(doc(), "CLAYER"), "Wege");
    EXPECT_EQ(shown, "");
}

// ---- object snaps

TEST_F(program_values, RunningObjectSnapsLeaveThePointsOfProgramsAlone)
{
    send("LINE|0,0|10,0|");
    db::set_int(doc(), "OSMODE", 1 + 2 + 32 + 512); // end, middle, crossing, nearest
    const point3 near{0.01, 0.01, 0}, other{5.01, 0.02, 0}, third{10.02, 3, 0};
    EXPECT_EQ(acedCommand(RTSTR, "_.POINT", RT3DPOINT, near.data(), RTNONE), RTNORM);
    EXPECT_EQ(arc(near, other, third), RTNORM);
    EXPECT_EQ(text(near, 1.0, {0.01, 5, 0}, "A"), RTNORM);
    EXPECT_EQ(acedCommand(RTSTR, "_.DIM1", RTSTR, "_LEADER", RT3DPOINT, near.data(), RT3DPOINT, other.data(),
                          RTSTR, "", RTSTR, " ", RTNONE),
              RTNORM);
    EXPECT_EQ(described(nth(1), {10}), "POINT 10=0.01,0.01,0");
    EXPECT_EQ(described(nth(3), {10, 50}), "TEXT 10=0.01,0.01,0 50=1.5708");
    EXPECT_EQ(described(nth(4), {12}), "SOLID 12=0.01,0.01,0");
    EXPECT_EQ(described(nth(5), {11}), "LINE 11=5.01,0.02,0");
}

// ---- names that a command looks up itself

struct unknown_name {
    const char* sent; // what follows the name would turn the object red, set a scale or draw, were it an answer
    const char* message;
};

TEST_F(program_values, ANameThatIsNoneEndsTheCommandAndDropsTheRestOfTheCall)
{
    send("LINE|0,0|5,0|");
    const unknown_name cases[] = {
        {"CHPROP|L||LA|NOSUCH|C|1|", "CHPROP: Cannot find layer \"NOSUCH\"."},
        {"CHPROP|L||C|purplish|1|", "CHPROP: A color number or standard color name is required."},
        {"CHPROP|L||LT|NOSUCH|C|1|", "CHPROP: Linetype \"NOSUCH\" not found."},
        {"COLOR|purplish|1|POINT|1,1", "COLOR: A color number or standard color name is required."},
        {"LINETYPE|S|NOSUCH|Continuous||POINT|1,1", "LINETYPE: Linetype \"NOSUCH\" not found."},
        {"LAYER|LT|NOSUCH|Continuous|0||POINT|1,1", "LAYER: Linetype \"NOSUCH\" not found."},
        {"TEXT|S|NOSUCH|1,1|2|0|POINT", "TEXT: Cannot find text style \"NOSUCH\"."},
        {"DIM1|STYLE|NOSUCH|POINT|1,1", "DIM1: Cannot find text style \"NOSUCH\"."},
        {"DIM1|ROUND|POINT|1,1", "DIM1: Unknown dimensioning command \"ROUND\"."},
        {"SETVAR|NOSUCH|PDMODE|3|POINT|1,1", "SETVAR: Unknown variable name \"NOSUCH\"."},
        {"INSERT|NOSUCH|1,1|1|1|0|POINT", "INSERT: "},
    };
    for (const int echo : {0, 1}) {
        db::set_int(doc(), "CMDECHO", echo);
        for (const unknown_name& c : cases) {
            SCOPED_TRACE(c.sent);
            shown.clear();
            EXPECT_EQ(send(c.sent), RTERROR);
            const std::size_t told = shown.find(c.message);
            EXPECT_NE(told, std::string::npos) << shown;
            EXPECT_EQ(shown.find(c.message, told + 1), std::string::npos) << "told twice:\n" << shown;
            EXPECT_EQ(objects({62}), "LINE");
            EXPECT_EQ(db::text_variable(doc(), "CECOLOR"), "BYLAYER");
            EXPECT_EQ(send("1,1"), RTERROR) << "no command is open";
        }
    }
}

TEST_F(program_values, AUserIsAskedAgainForANameThatIsNone)
{
    send("LINE|0,0|5,0|");
    type("CHPROP|L||LA|NOSUCH|0|C|purplish|1|LW|thick|0.5||");
    EXPECT_EQ(objects({62, 370}), "LINE 370=50 62=1");
    for (const char* message : {"\nCannot find layer \"NOSUCH\".\n", "\nA color number or standard color name",
                                "Requires numeric value or option keyword."})
        EXPECT_TRUE(has_shown(message)) << shown;
    EXPECT_FALSE(has_shown("CHPROP:")) << shown;
}

TEST_F(program_values, ALineweightThatIsNoneIsRefused)
{
    send("LINE|0,0|5,0|");
    send("CHPROP|L||LW|0.5|");
    EXPECT_EQ(send("CHPROP|L||LW|thick||"), RTERROR);
    EXPECT_EQ(objects({370}), "LINE 370=50");
}

TEST_F(program_values, PromptsOfTextNameThePlaceThatIsAskedFor)
{
    db::set_int(doc(), "CMDECHO", 1);
    for (const auto& [word, place] :
         {std::pair("R", "right endpoint of text baseline"), std::pair("MC", "middle-center point of text"),
          std::pair("TL", "top-left point of text"), std::pair("F", "first endpoint of text baseline")}) {
        shown.clear();
        send("TEXT|J|" + std::string(word) + "|5,5|");
        EXPECT_TRUE(has_shown("Specify " + std::string(place) + ": 5,5\n")) << shown;
        send("");
        acedCommand(RTNONE);
    }
}

TEST_F(program_values, TheQuestionForObjectsBeginsALine)
{
    db::set_int(doc(), "CMDECHO", 1);
    for (const auto& [command, prompt] : {std::pair("ERASE|", "Select objects: \n"),
                                          std::pair("DVIEW||", "Select objects or <use DVIEWBLOCK>: \n")}) {
        acutPrintf("in the middle of a line ");
        shown.clear();
        send(command);
        EXPECT_EQ(shown.find("\n" + std::string(prompt)), 0u) << shown;
    }
}

} // namespace

} // namespace host::commandline
