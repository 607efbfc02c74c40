// Texts made larger and smaller: the commands that are sent, what they make of the drawing, and every way in
// which a run can end.
#include "tools/text_scaling.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/growth.h"
#include "tests/tools/annotation_case.h"

namespace
{

TEST(TextJustification, EveryCellOfTheTable)
{
    const struct {
        int across, up;
        const char* code;
    } cells[] = {
        {1, 1, "BC"}, {1, 2, "MC"}, {1, 3, "TC"}, {1, 0, "C"},  {1, 4, "C"},   {1, -1, "C"}, {2, 1, "BR"},
        {2, 2, "MR"}, {2, 3, "TR"}, {2, 0, "R"},  {2, 9, "R"},  {3, 1, "A"},   {3, 2, "A"},  {3, 3, "A"},
        {3, 0, "A"},  {4, 1, "M"},  {4, 2, "M"},  {4, 3, "M"},  {4, 0, "M"},   {5, 1, "F"},  {5, 2, "F"},
        {5, 3, "F"},  {5, 0, "F"},  {0, 1, "BL"}, {0, 2, "ML"}, {0, 3, "TL"},  {0, 0, "L"},  {0, 7, "L"},
        {6, 1, "BL"}, {6, 2, "ML"}, {6, 3, "TL"}, {6, 0, "L"},  {-1, 3, "TL"}, {-7, 0, "L"}, {32767, 5, "L"},
    };
    for (const auto& cell : cells)
        EXPECT_EQ(justification_code(cell.across, cell.up), cell.code) << cell.across << " " << cell.up;
}

const std::string ASK = "\nScaling Multiplier: ";
const std::string SELECT = "\nSelect Text for Scaling.";

class TextScaling : public Annotation
{
protected:
    TextScaling()
    {
        session.lisp("(setq none (ssadd) dot '(0.0 0.0 0.0))"
                     "(defun zero (l) (mapcar '(lambda (x) (if (< (abs x) 1e-9) 0.0 x)) l))"
                     "(defun of (e g) (cdr (assoc g (entget e))))"
                     "(defun all-of (/ s i e) (setq s (ssadd) e (entnext))"
                     "  (while e (if (/= (of e 0) \"VERTEX\") (ssadd e s)) (setq e (entnext e))) s)"
                     // Texts of all objects, oldest first.
                     "(defun heights (/ e out) (setq e (entnext) out \"\")"
                     "  (while e (setq out (strcat out (if (= out \"\") \"\" \" \") (if (of e 1) (of e 1) (of "
                     "e 0)) \":\""
                     "   (if (numberp (of e 40)) (rtos (of e 40) 2 2) \"-\"))) (setq e (entnext e))) out)");
        session.printed();
    }
    // A TEXT of height 2 at 10,20,3 with more groups.
    void text(const std::string& words, const std::string& more = "")
    {
        make("(0 . \"TEXT\") (10 10.0 20.0 3.0) (11 10.0 20.0 3.0) (40 . 2.0) (1 . \"" + words + "\") " + more);
    }
    std::string commands(const std::string& call = "(cf:txtenl 1.5 (all-of))")
    {
        return only(trace_of(call), {"acedCommand", "acdbEntMod", "acdbEntUpd", "acdbEntDel"});
    }
    std::string heights() { return text_of("(heights)"); }
    std::string told_by(const std::string& call) { return run(call, ""); }
};

// ---- commands ---------------------------------------------------------------------------------------------

struct sent_case {
    const char *name, *groups, *style, *text;
};
constexpr const char* PLAIN_STYLE = "(\".style\" \"Standard\" \"\" 0.0 1.0 0.0 \"\" \"\" \"\")";

TEST_F(TextScaling, SendsEachFormOfTheTextCommand)
{
    const sent_case cases[] = {
        {"L", "", PLAIN_STYLE, "(\".text\" (10.0 20.0 3.0) 3.0 0.0 \"Ag\")"},
        {"C", "(72 . 1)", PLAIN_STYLE, "(\".text\" \"_J\" \"C\" (10.0 20.0 3.0) 3.0 0.0 \"Ag\")"},
        {"R", "(72 . 2)", PLAIN_STYLE, "(\".text\" \"_J\" \"R\" (10.0 20.0 3.0) 3.0 0.0 \"Ag\")"},
        {"M", "(72 . 4)", PLAIN_STYLE, "(\".text\" \"_J\" \"M\" (10.0 20.0 3.0) 3.0 0.0 \"Ag\")"},
        {"BL", "(73 . 1)", PLAIN_STYLE, "(\".text\" \"_J\" \"BL\" (10.0 20.0 3.0) 3.0 0.0 \"Ag\")"},
        {"BC", "(72 . 1) (73 . 1)", PLAIN_STYLE, "(\".text\" \"_J\" \"BC\" (10.0 20.0 3.0) 3.0 0.0 \"Ag\")"},
        {"BR", "(72 . 2) (73 . 1)", PLAIN_STYLE, "(\".text\" \"_J\" \"BR\" (10.0 20.0 3.0) 3.0 0.0 \"Ag\")"},
        {"ML", "(73 . 2)", PLAIN_STYLE, "(\".text\" \"_J\" \"ML\" (10.0 20.0 3.0) 3.0 0.0 \"Ag\")"},
        {"MC", "(72 . 1) (73 . 2)", PLAIN_STYLE, "(\".text\" \"_J\" \"MC\" (10.0 20.0 3.0) 3.0 0.0 \"Ag\")"},
        {"MR", "(72 . 2) (73 . 2)", PLAIN_STYLE, "(\".text\" \"_J\" \"MR\" (10.0 20.0 3.0) 3.0 0.0 \"Ag\")"},
        {"TL", "(73 . 3)", PLAIN_STYLE, "(\".text\" \"_J\" \"TL\" (10.0 20.0 3.0) 3.0 0.0 \"Ag\")"},
        {"TC", "(72 . 1) (73 . 3)", PLAIN_STYLE, "(\".text\" \"_J\" \"TC\" (10.0 20.0 3.0) 3.0 0.0 \"Ag\")"},
        {"TR", "(72 . 2) (73 . 3)", PLAIN_STYLE, "(\".text\" \"_J\" \"TR\" (10.0 20.0 3.0) 3.0 0.0 \"Ag\")"},
        {"turned", "(50 . 0.5)", PLAIN_STYLE, "(\".text\" (10.0 20.0 3.0) 3.0 0.5 \"Ag\")"},
        {"turned TR", "(50 . 0.5) (72 . 2) (73 . 3)", PLAIN_STYLE,
         "(\".text\" \"_J\" \"TR\" (10.0 20.0 3.0) 3.0 0.5 \"Ag\")"},
        {"wide, slanted", "(41 . 2.5) (51 . 0.25)",
         "(\".style\" \"Standard\" \"\" 0.0 2.5 0.25 \"\" \"\" \"\")",
         "(\".text\" (10.0 20.0 3.0) 3.0 0.0 \"Ag\")"},
        {"backwards", "(71 . 2)", PLAIN_STYLE, "(\".text\" (10.0 20.0 3.0) 3.0 0.0 \"Ag\")"},
        {"upside down", "(71 . 4)", "(\".style\" \"Standard\" \"\" 0.0 1.0 0.0 \"\" \"_Y\")",
         "(\".text\" (10.0 20.0 3.0) 3.0 0.0 \"Ag\")"},
        {"both", "(71 . 6)", PLAIN_STYLE, "(\".text\" (10.0 20.0 3.0) 3.0 0.0 \"Ag\")"},
    };
    for (const sent_case& c : cases) {
        erase_all();
        text("Ag", c.groups);
        const std::string old = text_of("(vl-prin1-to-string (entlast))");
        const bool left = std::string(c.text).find("_J") == std::string::npos;
        const std::string end = left ? "acedCommand (\".erase\" " + old + " \"\") -> RTNORM\n"
                                     : "acdbEntDel " + old + " -> RTNORM\n";
        EXPECT_EQ(commands(), "acedCommand (\".layer\" \"_S\" \"0\" \"\") -> RTNORM\nacedCommand " +
                                  std::string(c.style) + " -> RTNORM\nacedCommand " + c.text + " -> RTNORM\n" +
                                  end)
            << c.name;
        EXPECT_EQ(heights(), "Ag:3.00") << c.name;
    }
}

TEST_F(TextScaling, FitTextGoesBetweenItsPointsWithoutARotation)
{
    make("(0 . \"TEXT\") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0) (40 . 3.0) (1 . \"Ag\") (50 . 0.75) (72 . 5)");
    const std::string sent = commands("(cf:txtenl 2.0 (all-of))");
    EXPECT_NE(
        sent.find("(\".text\" \"_J\" \"F\" (0.0 0.0 0.0) (10.0 0.0 0.0) 6.0 \"Ag\") -> RTNORM\nacdbEntDel"),
        std::string::npos)
        << sent;
    // The style has the old width factor; the text its own again.
    EXPECT_EQ(session.lisp("(mapcar '(lambda (g) (of (entlast) g)) '(10 11 40 41 72))"),
              "((0.0 0.0 0.0) (10.0 0.0 0.0) 6.0 1.0 5)");
}

TEST_F(TextScaling, AlignedTextIsToldAndLeftAndNotCounted)
{
    for (const int up : {0, 1, 2, 3}) {
        erase_all();
        make("(0 . \"TEXT\") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0) (40 . 3.0) (1 . \"FRONT ST\") (72 . 3) (73 . " +
             std::to_string(up) + ")");
        text("Ag");
        const std::string before = session.lisp("(entget (entnext))");
        EXPECT_EQ(
            told_by("(cf:txtenl 2.0 (all-of))"),
            "\rTesting Entity> 1  \n\nAligned text 'FRONT ST' not changed!\n\rTesting Entity> 2  \n\nNumber of "
            "text entities changed> 1");
        EXPECT_EQ(session.lisp("(entget (entnext))"), before);
    }
}

TEST_F(TextScaling, AlignedTextStillBringsItsLayerAndStyle)
{
    make("(0 . \"TEXT\") (8 . \"NAMES\") (7 . \"ROMAN\") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0) (40 . 3.0) (1 . "
         "\"A\") "
         "(72 . 3)");
    told_by("(cf:txtenl 2.0 (all-of))");
    EXPECT_EQ(variable("CLAYER"), "NAMES");
    EXPECT_EQ(variable("TEXTSTYLE"), "ROMAN");
}

TEST_F(TextScaling, RotationInRadiansIsReadInTheDrawingsUnit)
{
    text("Ag", "(50 . 1.5)");
    told_by("(cf:txtenl 2.0 (all-of))");
    EXPECT_EQ(session.lisp("(rtos (of (entlast) 50) 2 8)"), "\"0.02617994\""); // 1.5 degrees
    erase_all();
    set("AUNITS", "3"); // radians: as it was
    text("Ag", "(50 . 1.5)");
    told_by("(cf:txtenl 2.0 (all-of))");
    EXPECT_EQ(session.lisp("(of (entlast) 50)"), "1.5");
}

TEST_F(TextScaling, LayerStyleAndPlaceStay)
{
    set("CECOLOR", "\"3\"");
    text("Ag", "(8 . \"Names\") (7 . \"ROMAN\") (41 . 0.5) (72 . 2) (73 . 3)");
    told_by("(cf:txtenl 2.0 (all-of))");
    EXPECT_EQ(session.lisp("(mapcar '(lambda (g) (of (entlast) g)) '(8 7 11 40 41 72 73 62))"),
              "(\"Names\" \"ROMAN\" (10.0 20.0 3.0) 4.0 0.5 2 3 3)");
    // Current from here on, the style without a height.
    EXPECT_EQ(variable("CLAYER"), "Names");
    EXPECT_EQ(variable("TEXTSTYLE"), "ROMAN");
}

TEST_F(TextScaling, NamesWithBlanksAndNegativeSlantsGoThrough)
{
    session.lisp("(command \"_.STYLE\" \"Two words\" \"arial.ttf\" 7.5 1.0 0.0 \"\" \"\")");
    text("Ag", "(8 . \"Row of lots\") (7 . \"Two words\") (51 . -0.25)");
    EXPECT_TRUE(told_by("(cf:txtenl 2.0 (all-of))").ends_with("changed> 1"));
    EXPECT_EQ(session.lisp("(mapcar '(lambda (g) (of (entlast) g)) '(8 7 40))"),
              "(\"Row of lots\" \"Two words\" 4.0)");
    EXPECT_EQ(session.lisp("(rtos (of (entlast) 51) 2 8)"), "\"-0.00436332\""); // a quarter of a degree
}

// The text command counts from ANGBASE, so that a level text comes back turned by it.
TEST_F(TextScaling, RotationCountsFromAngbase)
{
    set("ANGBASE", "0.5");
    text("Ag");
    told_by("(cf:txtenl 2.0 (all-of))");
    EXPECT_EQ(session.lisp("(of (entlast) 50)"), "0.5");
}

TEST_F(TextScaling, AStyleOfFixedHeightLosesIt)
{
    session.lisp("(command \"_.STYLE\" \"FIXED\" \"\" 7.5 1.0 0.0 \"\" \"\" \"\")");
    text("Ag", "(7 . \"FIXED\")");
    told_by("(cf:txtenl 2.0 (all-of))");
    EXPECT_EQ(heights(), "Ag:4.00");
    EXPECT_EQ(session.lisp("(cdr (assoc 40 (tblsearch \"STYLE\" \"FIXED\")))"), "0.0");
}

// An Enter at a question of the style command keeps what the style has.
TEST_F(TextScaling, UpsideDownStaysWithTheStyleAndBackwardsComesFromItOnly)
{
    text("last");
    text("down", "(71 . 4)");
    text("both", "(71 . 6)");
    text("back", "(71 . 2)");
    told_by("(cf:txtenl 2.0 (all-of))"); // oldest first
    EXPECT_EQ(
        session.lisp("(mapcar '(lambda (e) (list (of e 1) (of e 71))) (progn (setq e (entnext) l nil) (while e "
                     "(setq l (cons e l) e (entnext e))) (reverse l)))"),
        "((\"last\" 0) (\"down\" 4) (\"both\" 4) (\"back\" 4))");
}

TEST_F(TextScaling, TextsThatLookLikeAnswersAreDrawnAsTheyStand)
{
    for (const char* words : {"^C", ".erase", "_J", "(+ 1 2)", "!dot", "1,2", " ", "  two  ",
                              "%%uunder%%u 90%%d", "\\\\", "say \\\"so\\\"", "'", ";"}) {
        erase_all();
        text(words);
        const std::string before = session.lisp("(of (entlast) 1)");
        EXPECT_TRUE(told_by("(cf:txtenl 2.0 (all-of))").ends_with("changed> 1")) << words;
        EXPECT_EQ(session.lisp("(list (sslength (all-of)) (of (entlast) 1) (of (entlast) 40))"),
                  "(1 " + before + " 4.0)")
            << words;
    }
}

// ---- paragraphs -------------------------------------------------------------------------------------------

TEST_F(TextScaling, ParagraphsChangeInPlaceByTheirOwnHeight)
{
    const std::string part(250, 'x');
    make("(0 . \"MTEXT\") (100 . \"AcDbEntity\") (8 . \"NOTES\") (62 . 4) (100 . \"AcDbMText\") (10 1.0 2.0 "
         "0.0) "
         "(40 . 2.0) (41 . 30.0) (71 . 5) (3 . \"{\\\\fArial|b1;\\\\H2.5;" +
         part + "\") (1 . \"\\\\PEnd}\") (50 . 0.5)");
    const std::string before = session.lisp("(entget (entlast))");
    session.lisp("(command \"_.LAYER\" \"_M\" \"HERE\" \"\")");
    EXPECT_EQ(only(trace_of("(cf:txtenl 2.5 (all-of))"), {"acedCommand", "acdbEntUpd", "acdbEntDel"}),
              "acdbEntUpd " + text_of("(vl-prin1-to-string (entlast))") + " -> RTNORM\n");
    std::string expected = before;
    expected.replace(expected.find("(40 . 2.0)"), 10, "(40 . 5.0)");
    EXPECT_EQ(session.lisp("(entget (entlast))"), expected);
    EXPECT_EQ(variable("CLAYER"), "HERE");
}

// The style has another height and keeps it.
TEST_F(TextScaling, AParagraphGoesByItsOwnHeightNotByItsStyle)
{
    session.lisp("(command \"_.STYLE\" \"FIXED\" \"\" 7.5 1.0 0.0 \"\" \"\" \"\")");
    make("(0 . \"MTEXT\") (100 . \"AcDbEntity\") (100 . \"AcDbMText\") (10 1.0 2.0 0.0) (40 . 2.0) (7 . "
         "\"FIXED\") (1 . \"x\")");
    const std::string trace = trace_of("(cf:txtenl 3.0 (all-of))");
    EXPECT_LT(trace.find("acdbEntMod "), trace.find("acdbEntUpd ")) << trace;
    EXPECT_EQ(heights(), "x:6.00");
    EXPECT_EQ(session.lisp("(cdr (assoc 40 (tblsearch \"STYLE\" \"FIXED\")))"), "7.5");
}

TEST_F(TextScaling, AParagraphThatCannotChangeIsNotCounted)
{
    make("(0 . \"MTEXT\") (100 . \"AcDbEntity\") (100 . \"AcDbMText\") (10 1.0 2.0 0.0) (40 . 1e300) (1 . "
         "\"x\")");
    EXPECT_EQ(told_by("(cf:txtenl 1e300 (all-of))"),
              "\rTesting Entity> 1  \n\nNumber of text entities changed> 0");
    EXPECT_EQ(session.lisp("(of (entlast) 40)"), "1.0e+300");
}

// ---- questions --------------------------------------------------------------------------------------------

TEST_F(TextScaling, AsksForMultiplierAndTexts)
{
    text("Ag");
    make("(0 . \"MTEXT\") (100 . \"AcDbEntity\") (100 . \"AcDbMText\") (10 1.0 2.0 0.0) (40 . 2.0) (1 . "
         "\"par\")");
    make("(0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)");
    make("(0 . \"ATTDEF\") (10 0.0 0.0 0.0) (40 . 2.0) (1 . \"\") (2 . \"T\") (3 . \"\") (70 . 0)");
    const std::string told = run("(cf:txtenl)", "1.5\nall\n\n");
    EXPECT_EQ(
        told,
        "Scaling Multiplier: 1.5\n\nSelect Text for Scaling.\nSelect objects: all\n4 found\n2 were filtered "
        "out.\nSelect objects: \n\rTesting Entity> 1  \rTesting Entity> 2  \n\nNumber of text entities "
        "changed> 2");
    EXPECT_EQ(value, "nil");
    EXPECT_EQ(heights(), "par:3.00 LINE:- :2.00 Ag:3.00");
    const std::string trace = trace_of("(cf:txtenl)", "2\nall\n\n");
    EXPECT_NE(trace.find(
                  "acedInitGet 7 nil\nacedGetReal \"\\nScaling Multiplier: \" -> RTNORM\nacedSSGet nil nil nil "
                  "((-4 . \"<OR\") (0 . \"MTEXT\") (0 . \"TEXT\") (-4 . \"OR>\")) -> RTNORM\n"),
              std::string::npos)
        << trace;
}

TEST_F(TextScaling, AsksAgainForWhatIsNoMultiplier)
{
    text("Ag");
    const std::string told = run("(cf:txtenl)", "\n0\n-2\nbig\n2\nall\n\n");
    EXPECT_NE(told.find("Value must be positive and nonzero."), std::string::npos);
    EXPECT_NE(told.find("Requires numeric value."), std::string::npos);
    EXPECT_TRUE(told.ends_with("changed> 1")) << told;
    EXPECT_EQ(heights(), "Ag:4.00");
}

TEST_F(TextScaling, EndsAtEachPromptThatIsCancelled)
{
    text("Ag");
    const state before = held();
    EXPECT_EQ(run("(cf:txtenl)", "^C\n"), "Scaling Multiplier: ^C\n");
    for (const char* answers : {"2\n^C\n", "2\n\n", "2\nall\n^C\n", "2\n500,500\n\n"}) {
        const std::string told = run("(cf:txtenl)", answers);
        EXPECT_TRUE(told.ends_with("\nNo selection set created!")) << told;
        EXPECT_EQ(value, "nil");
    }
    EXPECT_EQ(heights(), "Ag:2.00");
    EXPECT_EQ(held(), before);
}

TEST_F(TextScaling, EndsWhereTheAnswersRunOut)
{
    text("Ag");
    const state before = held();
    for (const char* answers : {"", "2\n", "2\nall\n"}) {
        host::answers_from_text(answers);
        session.lisp("(vl-catch-all-apply 'cf:txtenl nil)");
        host::answers_from_text("left over\n");
        EXPECT_EQ(heights(), "Ag:2.00") << answers;
        EXPECT_EQ(held(), before) << answers;
    }
}

// ---- calls from LISP --------------------------------------------------------------------------------------

TEST_F(TextScaling, WithASetAsksNothingAndLeavesTheSetToItsOwner)
{
    text("Ag");
    session.lisp("(setq s (all-of))");
    const state before = held();
    for (const char* call : {"(cf:txtenl 2.0 s)", "(cf:txtenl 2 s)"}) {
        session.lisp("(setq s (all-of))");
        EXPECT_EQ(told_by(call), "\rTesting Entity> 1  \n\nNumber of text entities changed> 1") << call;
        EXPECT_EQ(value, "nil");
        EXPECT_EQ(session.lisp("(sslength s)"), "1") << call; // still there, with the erased text
    }
    EXPECT_EQ(heights(), "Ag:8.00");
    EXPECT_EQ(held().sets, before.sets);
}

TEST_F(TextScaling, OtherKindsInTheSetArePassedOver)
{
    make("(0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)");
    make("(0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 2.0)");
    make("(0 . \"ATTDEF\") (10 0.0 0.0 0.0) (40 . 2.0) (1 . \"x\") (2 . \"T\") (3 . \"\") (70 . 0)");
    const std::string before = heights();
    EXPECT_EQ(commands("(cf:txtenl 2.0 (all-of))"), "");
    EXPECT_EQ(told_by("(cf:txtenl 2.0 (all-of))"),
              "\rTesting Entity> 1  \rTesting Entity> 2  \rTesting Entity> 3  "
              "\n\nNumber of text entities changed> 0");
    EXPECT_EQ(heights(), before);
    EXPECT_EQ(told_by("(cf:txtenl 2.0 none)"), "\n\nNumber of text entities changed> 0");
}

TEST_F(TextScaling, AnErasedMemberIsPassedOver)
{
    text("one");
    text("two");
    session.lisp("(setq s (all-of)) (entdel (entlast))");
    EXPECT_TRUE(told_by("(cf:txtenl 2.0 s)").ends_with("changed> 1"));
    EXPECT_EQ(heights(), "one:4.00");
}

TEST_F(TextScaling, MultipliersThatAreNoneAreToldAndChangeNothing)
{
    text("Ag");
    const state before = held();
    session.lisp("(setq s (all-of))");
    for (const char* multiplier : {"0.0", "-2.0", "0", "nil", "\"2\"", "dot", "(/ 1e308 1e-308)"}) {
        EXPECT_EQ(told_by("(cf:txtenl " + std::string(multiplier) + " s)"),
                  "\nError: the multiplier must be a number above zero.")
            << multiplier;
        EXPECT_EQ(value, "nil");
    }
    EXPECT_EQ(heights(), "Ag:2.00");
    EXPECT_EQ(held().sets, before.sets + 1); // the program's
}

TEST_F(TextScaling, NamesThatAreNoSetAreTold)
{
    text("Ag");
    for (const char* call :
         {"(cf:txtenl 2.0 (entlast))", "(progn (setq gone (all-of)) (cf:zentutil \"\" 21 gone) "
                                       "(cf:txtenl 2.0 gone))"})
        EXPECT_EQ(told_by(call), "\nNo selection set created!") << call;
    EXPECT_EQ(heights(), "Ag:2.00");
}

TEST_F(TextScaling, WithoutASetBothAreAskedForWhateverElseIsGiven)
{
    text("Ag");
    for (const char* call :
         {"(cf:txtenl 7.0)", "(cf:txtenl 7.0 nil)", "(cf:txtenl nil nil)", "(cf:txtenl \"x\" 5)"}) {
        const std::string told = run(call, "2\nall\n\n");
        EXPECT_TRUE(told.starts_with("Scaling Multiplier: 2\n")) << call;
        EXPECT_TRUE(told.ends_with("changed> 1")) << call;
    }
    EXPECT_EQ(heights(), "Ag:32.00");
}

// ---- refusals ---------------------------------------------------------------------------------------------

TEST_F(TextScaling, ARefusedLayerEndsTheRun)
{
    text("fine");
    text("cold", "(8 . \"Cold\")");
    text("behind");
    session.lisp("(command \"_.LAYER\" \"_F\" \"COLD\" \"\")");
    const state before = held();
    EXPECT_EQ(told_by("(cf:txtenl 2.0 (all-of))"),
              "\rTesting Entity> 1  \rTesting Entity> 2  \nLAYER: Cannot set a frozen layer "
              "current.\n\n\nError accessing layer> COLD");
    EXPECT_EQ(heights(), "cold:2.00 behind:2.00 fine:4.00");
    EXPECT_EQ(held().blocks, before.blocks);
}

TEST_F(TextScaling, ALongLayerNameIsCutAndThenNotThere)
{
    const std::string name(32, 'N'), cut(31, 'N');
    text("Ag", "(8 . \"" + name + "\")");
    EXPECT_EQ(told_by("(cf:txtenl 2.0 (all-of))"), "\rTesting Entity> 1  \nWarning: layer name " + name +
                                                       " truncated to" + cut + "\nLAYER: Cannot find layer \"" +
                                                       cut + "\".\n\n\nError accessing layer> " + cut);
    EXPECT_EQ(heights(), "Ag:2.00");
}

TEST_F(TextScaling, ARefusedStyleEndsTheRun)
{
    text("fine");
    text("odd", "(7 . \"XREF|ROMAN\")");
    EXPECT_EQ(told_by("(cf:txtenl 2.0 (all-of))"),
              "\rTesting Entity> 1  \rTesting Entity> 2  \nSTYLE: invalid style name "
              "\"XREF|ROMAN\".\n\n\nError accessing style> XREF|ROMAN");
    EXPECT_EQ(heights(), "odd:2.00 fine:4.00");
}

TEST_F(TextScaling, ATextThatIsNotDrawnStaysAndEndsTheRun)
{
    for (const char* groups : {"", "(72 . 1)"}) {
        erase_all();
        text("fine");
        make("(0 . \"TEXT\") (10 0.0 0.0 0.0) (11 0.0 0.0 0.0) (40 . 1e300) (1 . \"huge\") " +
             std::string(groups));
        text("behind");
        EXPECT_EQ(told_by("(cf:txtenl 1e300 (all-of))"),
                  "\rTesting Entity> 1  \rTesting Entity> 2  \n\nError drawing text> \nhuge")
            << groups;
        EXPECT_EQ(session.lisp("(mapcar '(lambda (i) (of (ssname (all-of) i) 1)) '(0 1 2))"),
                  "(\"huge\" \"behind\" \"fine\")");
        EXPECT_EQ(session.lisp("(sslength (all-of))"), "3");
    }
}

TEST_F(TextScaling, ATextWithoutLettersIsNotDrawnAndStays)
{
    text("");
    EXPECT_EQ(told_by("(cf:txtenl 2.0 (all-of))"), "\rTesting Entity> 1  \n\nError drawing text> \n");
    EXPECT_EQ(heights(), ":2.00");
}

TEST_F(TextScaling, ATextThatALockedLayerKeepsIsNotThereTwice)
{
    text("kept", "(8 . \"LOCKED\")");
    session.lisp("(command \"_.LAYER\" \"_LO\" \"LOCKED\" \"\")");
    EXPECT_EQ(told_by("(cf:txtenl 2.0 (all-of))"), "\rTesting Entity> 1  \n\nError drawing text> \nkept");
    EXPECT_EQ(heights(), "kept:2.00");
}

TEST_F(TextScaling, ALockedLayerKeepsNeitherJustifiedTextsNorParagraphs)
{
    text("centred", "(8 . \"LOCKED\") (72 . 1)");
    make("(0 . \"MTEXT\") (100 . \"AcDbEntity\") (8 . \"LOCKED\") (100 . \"AcDbMText\") (10 1.0 2.0 0.0) "
         "(40 . 2.0) (1 . \"par\")");
    session.lisp("(command \"_.LAYER\" \"_LO\" \"LOCKED\" \"\")");
    EXPECT_TRUE(told_by("(cf:txtenl 2.0 (all-of))").ends_with("changed> 2"));
    EXPECT_EQ(heights(), "par:4.00 centred:4.00");
}

// ---- breaks -----------------------------------------------------------------------------------------------

TEST_F(TextScaling, ABreakKeepsWhatIsDone)
{
    for (const int at : {1, 2, 3}) {
        erase_all();
        for (const char* words : {"one", "two", "three"})
            text(words);
        const state before = held();
        press_break(at);
        std::string expected;
        for (int i = 1; i <= at; ++i)
            expected += "\rTesting Entity> " + std::to_string(i) + "  ";
        EXPECT_EQ(run("(cf:txtenl)", "2\nall\n\n")
                      .substr(std::string("Scaling Multiplier: 2\n\nSelect Text for "
                                          "Scaling.\nSelect objects: all\n3 found\nSelect "
                                          "objects: \n")
                                  .size()),
                  expected + "\nFunction cancelled at user request.");
        // "all" gives the newest first.
        EXPECT_EQ(heights(), at == 1   ? "one:2.00 two:2.00 three:2.00"
                             : at == 2 ? "one:2.00 two:2.00 three:4.00"
                                       : "one:2.00 three:4.00 two:4.00");
        EXPECT_EQ(held().sets, before.sets);
        EXPECT_EQ(held().blocks, before.blocks);
        EXPECT_TRUE(
            told_by("(cf:txtenl 1.0 (all-of))").ends_with("changed> 3")); // nothing is left of the break
    }
}

// ---- the rest ---------------------------------------------------------------------------------------------

TEST_F(TextScaling, RunsBackToTheSameHeights)
{
    text("left");
    text("middle", "(72 . 4)");
    text("TR", "(72 . 2) (73 . 3)");
    for (int i = 0; i < 5; ++i) {
        told_by("(cf:txtenl 4.0 (all-of))");
        told_by("(cf:txtenl 0.25 (all-of))");
    }
    EXPECT_EQ(heights(), "left:2.00 middle:2.00 TR:2.00");
    EXPECT_EQ(session.lisp("(list (of (entnext) 10) (of (entnext (entnext)) 11))"),
              "((10.0 20.0 3.0) (10.0 20.0 3.0))");
}

TEST_F(TextScaling, TakesTimeInProportion)
{
    session.lisp(
        "(defun many (n) (repeat n (entmake '((0 . \"TEXT\") (10 0.0 0.0 0.0) (11 0.0 0.0 0.0) (40 . 1.0) "
        "(1 . \"Ag\") (72 . 1))) (entmake '((0 . \"TEXT\") (10 0.0 0.0 0.0) (40 . 1.0) (1 . \"Ag\")))))");
    EXPECT_TRUE(grows_in_proportion(
        [&](int size) {
            erase_all();
            session.lisp("(many " + std::to_string(size / 2) + ") (cf:txtenl 2.0 (all-of))");
            EXPECT_TRUE(session.printed().ends_with("changed> " + std::to_string(size / 2 * 2)));
        },
        16000));
}

} // namespace
