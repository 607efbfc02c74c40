// Operation 3: lines end at the outline of the symbols that they run through.
#include "tests/tools/small_tool_case.h"

namespace
{

const std::string PROMPT = "Select Zentrik point symbols to trim against.";

class TrimAtSymbols : public SmallTool
{
protected:
    TrimAtSymbols()
    {
        session.lisp(R"(
            (setvar "CMDECHO" 0) (setvar "HIGHLIGHT" 1)
            (defun circle (x y r) (make (list '(0 . "CIRCLE") '(8 . "0") (list 10 x y 0.0) (cons 40 r))))
            (defun begin-block (name) (entmake (list '(0 . "BLOCK") (cons 2 name) '(70 . 0) '(10 0.0 0.0 0.0))))
            (defun end-block () (entmake '((0 . "ENDBLK"))))
            (defun block-of (name pieces) (begin-block name) (foreach p pieces (entmake p)) (end-block))
            (defun circle-of (r) (list '(0 . "CIRCLE") '(8 . "0") '(10 0.0 0.0 0.0) (cons 40 r)))
            (defun symbol (name x y) (make (list '(0 . "INSERT") (cons 2 name) (list 10 x y 0.0))))
            (block-of "SPTTREE" (list (circle-of 1.0)))
            (block-of "HOLE" (list (circle-of 1.0)))
            (defun round (x) (/ (fix (+ (* 1000.0 x) (if (< x 0) -0.5 0.5))) 1000.0))
            (defun at (p) (list (round (car p)) (round (cadr p))))
            (defun points (n e) (mapcar '(lambda (g) (at (cdr g))) (vl-remove-if-not '(lambda (g) (= (car g) n)) (entget e))))
            ; Type and place of each object of the drawing in its order: ends of lines, corners of polylines.
            (defun shape (e / kind v out)
              (setq kind (of e 0))
              (cond ((= kind "LINE") (list kind (at (of e 10)) (at (of e 11))))
                    ((= kind "LWPOLYLINE") (cons kind (points 10 e)))
                    ((= kind "POLYLINE")
                     (setq v (entnext e))
                     (while (= (of v 0) "VERTEX") (setq out (cons (at (of v 10)) out) v (entnext v)))
                     (cons kind (reverse out)))
                    ((= kind "INSERT") (list kind (of e 2) (at (of e 10))))
                    (t (list kind))))
            (defun shapes (/ e out)
              (setq e (entnext))
              (while e
                (if (not (member (of e 0) '("VERTEX" "SEQEND" "ATTRIB"))) (setq out (cons (shape e) out)))
                (setq e (entnext e)))
              (reverse out)))");
        session.printed();
    }
    void TearDown() override
    {
        SmallTool::TearDown();
        EXPECT_EQ(session.lisp("(getvar \"HIGHLIGHT\")"), "1");
        EXPECT_EQ(session.lisp("(getvar \"CMDACTIVE\")"), "0");
    }
    std::string trim(const std::string& answers = "all\n\n")
    {
        const std::size_t sets = host::db::live_sets();
        EXPECT_EQ(call("3", answers), "nil");
        EXPECT_EQ(host::db::live_sets(), sets);
        return told;
    }
    std::string shapes() { return session.lisp("(shapes)"); }
    // What a symbol leaves of other objects, `forms` made first, then the symbol.
    std::string left(const std::string& forms, const std::string& symbol = "(symbol \"SPTTREE\" 0.0 0.0)")
    {
        session.lisp(forms + symbol);
        trim();
        return shapes();
    }
};

const std::string TREE = "(\"INSERT\" \"SPTTREE\" (0.0 0.0))";

struct trim_case {
    const char* name;
    const char* forms;
    std::string shapes;
};

std::ostream& operator<<(std::ostream& out, const trim_case& c)
{
    return out << c.name;
}

const trim_case CASES[] = {
    {"LineThroughASymbolBecomesTwo", "(line '(-5.0 0.0 0.0) '(7.0 0.0 0.0)) (symbol \"SPTTREE\" 0.0 0.0)",
     "((\"LINE\" (-5.0 0.0) (-1.0 0.0)) (\"LINE\" (1.0 0.0) (7.0 0.0)) " + TREE + ")"},
    {"LineThatEndsThereEndsAtTheOutline",
     "(line '(0.0 0.0 0.0) '(7.0 0.0 0.0)) (line '(0.0 -9.0 0.0) '(0.0 0.0 0.0)) (symbol \"SPTTREE\" 0.0 0.0)",
     "((\"LINE\" (1.0 0.0) (7.0 0.0)) (\"LINE\" (0.0 -9.0) (0.0 -1.0)) " + TREE + ")"},
    {"LineBesideThePointStays", "(line '(-5.0 0.02 0.0) '(7.0 0.02 0.0)) (symbol \"SPTTREE\" 0.0 0.0)",
     "((\"LINE\" (-5.0 0.02) (7.0 0.02)) " + TREE + ")"},
    {"LineThatTouchesTheWindowIsTrimmed",
     "(line '(-5.0 0.009 0.0) '(0.0 0.009 0.0)) (symbol \"SPTTREE\" 0.0 0.0)",
     "((\"LINE\" (-5.0 0.009) (-1.0 0.009)) " + TREE + ")"},
    {"LineInsideOfTheSymbolStays", "(line '(-0.5 0.0 0.0) '(0.5 0.0 0.0)) (symbol \"SPTTREE\" 0.0 0.0)",
     "((\"LINE\" (-0.5 0.0) (0.5 0.0)) " + TREE + ")"},
    {"LightweightPolyline", "(lw 0 '((-5.0 0.0 0.0) (5.0 0.0 0.0) (5.0 5.0 0.0))) (symbol \"SPTTREE\" 0.0 0.0)",
     "((\"LWPOLYLINE\" (-5.0 0.0) (-1.0 0.0)) (\"LWPOLYLINE\" (1.0 0.0) (5.0 0.0) (5.0 5.0)) " + TREE + ")"},
    {"PolylineWithItsCornerInTheSymbol",
     "(lw 0 '((-5.0 0.0 0.0) (0.0 0.0 0.0) (0.0 5.0 0.0))) (symbol \"SPTTREE\" 0.0 0.0)",
     "((\"LWPOLYLINE\" (-5.0 0.0) (-1.0 0.0)) (\"LWPOLYLINE\" (0.0 1.0) (0.0 5.0)) " + TREE + ")"},
    {"ClosedPolylineIsOpened",
     "(lw 1 '((-5.0 0.0 0.0) (5.0 0.0 0.0) (0.0 5.0 0.0))) (symbol \"SPTTREE\" 0.0 0.0)",
     "((\"LWPOLYLINE\" (1.0 0.0) (5.0 0.0) (0.0 5.0) (-5.0 0.0) (-1.0 0.0)) " + TREE + ")"},
    {"OldPolyline", "(old 0 0 '((-5.0 0.0 0.0 0.0) (5.0 0.0 0.0 0.0))) (symbol \"SPTTREE\" 0.0 0.0)",
     "((\"POLYLINE\" (-5.0 0.0) (-1.0 0.0)) (\"POLYLINE\" (1.0 0.0) (5.0 0.0)) " + TREE + ")"},
    // A half circle about (5, 0) from (0, 0): its end in the symbol is cut where the two circles meet.
    {"ArcOfAPolyline", "(lw 0 '((0.0 0.0 1.0) (10.0 0.0 0.0))) (symbol \"SPTTREE\" 0.0 0.0)",
     "((\"LWPOLYLINE\" (0.1 -0.995) (10.0 0.0)) " + TREE + ")"},
    {"ArcsAndCirclesStay",
     "(make '((0 . \"ARC\") (10 5.0 0.0 0.0) (40 . 5.0) (50 . 1.0) (51 . 5.0))) (circle 5.0 0.0 5.0)"
     "(symbol \"SPTTREE\" 0.0 0.0)",
     "((\"ARC\") (\"CIRCLE\") " + TREE + ")"},
    {"EllipseAsOutline",
     "(block-of \"SPTE\" '(((0 . \"ELLIPSE\") (8 . \"0\") (10 0.0 0.0 0.0) (11 3.0 0.0 0.0) (40 . 0.5))))"
     "(line '(-5.0 0.0 0.0) '(5.0 0.0 0.0)) (line '(0.0 0.0 0.0) '(0.0 5.0 0.0)) (symbol \"SPTE\" 0.0 0.0)",
     "((\"LINE\" (-5.0 0.0) (-3.0 0.0)) (\"LINE\" (0.0 1.5) (0.0 5.0)) (\"LINE\" (3.0 0.0) (5.0 0.0)) "
     "(\"INSERT\" \"SPTE\" (0.0 0.0)))"},
    {"LightweightPolylineAsOutline",
     "(block-of \"SPTQ\" '(((0 . \"LWPOLYLINE\") (100 . \"AcDbEntity\") (8 . \"0\") (100 . \"AcDbPolyline\") "
     "(90 . 4) (70 . 1)"
     " (10 -2.0 -2.0) (10 2.0 -2.0) (10 2.0 2.0) (10 -2.0 2.0))))"
     "(line '(-5.0 -5.0 0.0) '(5.0 5.0 0.0)) (symbol \"SPTQ\" 0.0 0.0)",
     "((\"LINE\" (-5.0 -5.0) (-2.0 -2.0)) (\"LINE\" (2.0 2.0) (5.0 5.0)) (\"INSERT\" \"SPTQ\" (0.0 0.0)))"},
    {"OldPolylineAsOutline",
     "(block-of \"SPTD\" '(((0 . \"POLYLINE\") (8 . \"0\") (66 . 1) (70 . 1) (10 0.0 0.0 0.0))"
     " ((0 . \"VERTEX\") (8 . \"0\") (10 2.0 0.0 0.0)) ((0 . \"VERTEX\") (8 . \"0\") (10 0.0 2.0 0.0))"
     " ((0 . \"VERTEX\") (8 . \"0\") (10 -2.0 0.0 0.0)) ((0 . \"VERTEX\") (8 . \"0\") (10 0.0 -2.0 0.0)) ((0 . "
     "\"SEQEND\"))))"
     "(line '(-5.0 -5.0 0.0) '(5.0 5.0 0.0)) (symbol \"SPTD\" 0.0 0.0)",
     "((\"LINE\" (-5.0 -5.0) (-1.0 -1.0)) (\"LINE\" (1.0 1.0) (5.0 5.0)) (\"INSERT\" \"SPTD\" (0.0 0.0)))"},
    {"LinesTextsAndArcsAreNoOutline",
     "(block-of \"SPTL\" '(((0 . \"LINE\") (8 . \"0\") (10 1.0 -1.0 0.0) (11 1.0 1.0 0.0)) ((0 . \"TEXT\") (8 "
     ". \"0\") (10 0.0 "
     "0.0 0.0) (40 . 1.0) (1 . \"T\")) ((0 . \"ARC\") (8 . \"0\") (10 0.0 0.0 0.0) (40 . 1.0) (50 . 4.0) (51 . "
     "3.0))))"
     "(line '(-5.0 0.0 0.0) '(5.0 0.0 0.0)) (symbol \"SPTL\" 0.0 0.0)",
     "((\"LINE\" (-5.0 0.0) (5.0 0.0)) (\"INSERT\" \"SPTL\" (0.0 0.0)))"},
    {"TextBesideTheOutlineGoesWithThePieces",
     "(block-of \"SPTT\" (list (circle-of 2.0) '((0 . \"TEXT\") (8 . \"0\") (10 0.0 0.0 0.0) (40 . 1.0) (1 . "
     "\"T\"))))"
     "(line '(-5.0 0.0 0.0) '(5.0 0.0 0.0)) (symbol \"SPTT\" 0.0 0.0)",
     "((\"LINE\" (-5.0 0.0) (-2.0 0.0)) (\"LINE\" (2.0 0.0) (5.0 0.0)) (\"INSERT\" \"SPTT\" (0.0 0.0)))"},
    {"LinesEndAtTheOutermostOfTheOutlines",
     "(block-of \"SPTO\" (list (circle-of 1.0) (circle-of 2.0))) (line '(0.0 0.0 0.0) '(5.0 0.0 0.0)) (symbol "
     "\"SPTO\" 0.0 0.0)",
     "((\"LINE\" (2.0 0.0) (5.0 0.0)) (\"INSERT\" \"SPTO\" (0.0 0.0)))"},
    {"BlocksInsideOfASymbolAreNoOutline",
     "(block-of \"SPTN\" '(((0 . \"INSERT\") (8 . \"0\") (2 . \"SPTTREE\") (10 0.0 0.0 0.0))))"
     "(line '(-5.0 0.0 0.0) '(5.0 0.0 0.0)) (symbol \"SPTN\" 0.0 0.0)",
     "((\"LINE\" (-5.0 0.0) (5.0 0.0)) (\"INSERT\" \"SPTN\" (0.0 0.0)))"},
    {"EmptySymbol", "(block-of \"SPTX\" nil) (line '(-5.0 0.0 0.0) '(5.0 0.0 0.0)) (symbol \"SPTX\" 0.0 0.0)",
     "((\"LINE\" (-5.0 0.0) (5.0 0.0)) (\"INSERT\" \"SPTX\" (0.0 0.0)))"},
    {"NameInSmallLetters",
     "(block-of \"sptsmall\" (list (circle-of 1.0))) (line '(0.0 0.0 0.0) '(5.0 0.0 0.0)) (symbol \"sptsmall\" "
     "0.0 0.0)",
     "((\"LINE\" (1.0 0.0) (5.0 0.0)) (\"INSERT\" \"sptsmall\" (0.0 0.0)))"},
    {"NameWithTheLettersBehind",
     "(block-of \"ASPT\" (list (circle-of 1.0))) (line '(0.0 0.0 0.0) '(5.0 0.0 0.0)) (symbol \"ASPT\" 0.0 "
     "0.0)",
     "((\"LINE\" (0.0 0.0) (5.0 0.0)) (\"INSERT\" \"ASPT\" (0.0 0.0)))"},
    {"OtherBlock", "(line '(0.0 0.0 0.0) '(5.0 0.0 0.0)) (symbol \"HOLE\" 0.0 0.0)",
     "((\"LINE\" (0.0 0.0) (5.0 0.0)) (\"INSERT\" \"HOLE\" (0.0 0.0)))"},
    {"SymbolsOneAfterTheOther",
     "(line '(0.0 0.0 0.0) '(10.0 0.0 0.0)) (symbol \"SPTTREE\" 0.0 0.0) (symbol \"SPTTREE\" 5.0 0.0) (symbol "
     "\"SPTTREE\" 10.0 0.0)",
     "((\"LINE\" (1.0 0.0) (4.0 0.0)) (\"INSERT\" \"SPTTREE\" (10.0 0.0)) (\"LINE\" (6.0 0.0) (9.0 0.0)) "
     "(\"INSERT\" \"SPTTREE\" (5.0 0.0)) (\"INSERT\" \"SPTTREE\" (0.0 0.0)))"},
    {"FarFromTheOrigin",
     "(line '(640000.0 5120000.0 0.0) '(640009.0 5120000.0 0.0)) (symbol \"SPTTREE\" 640005.0 5120000.0)",
     "((\"LINE\" (640000.0 5.12e+06) (640004.0 5.12e+06)) (\"LINE\" (640006.0 5.12e+06) (640009.0 5.12e+06)) "
     "(\"INSERT\" \"SPTTREE\" (640005.0 5.12e+06)))"},
};

class Trimmed : public TrimAtSymbols, public testing::WithParamInterface<trim_case>
{
};

TEST_P(Trimmed, LeavesTheseObjects)
{
    session.lisp(GetParam().forms);
    const std::string said = trim();
    EXPECT_EQ(shapes(), GetParam().shapes) << said;
    EXPECT_TRUE(said.ends_with("\nDone.")) << said;
}

INSTANTIATE_TEST_SUITE_P(Cases, Trimmed, testing::ValuesIn(CASES),
                         [](const auto& each) { return each.param.name; });

TEST_F(TrimAtSymbols, MessagesToTheLetter)
{
    session.lisp("(symbol \"SPTTREE\" 0.0 0.0)");
    host::answers_from_text("#last\n\n");
    session.lisp("(princ \"before\") (cf:zentutil \"\" 3)");
    std::string said = session.printed();
    EXPECT_TRUE(said.starts_with("before\n" + PROMPT)) << said;
    EXPECT_TRUE(said.ends_with("\nDone.")) << said;
    for (const char* answers : {"\n", "^C\n"}) {
        said = trim(answers);
        EXPECT_TRUE(said.ends_with("Nothing selected")) << said;
        EXPECT_FALSE(said.ends_with("\n\nNothing selected")) << said;
    }
}

TEST_F(TrimAtSymbols, OtherBlocksAreNotTouched)
{
    session.lisp("(setq e (symbol \"HOLE\" 0.0 0.0) d (entget e)) (line '(-5.0 0.0 0.0) '(5.0 0.0 0.0))");
    host::answers_from_text("all\n\n");
    const std::string trace = session.traced("(cf:zentutil \"\" 3)");
    EXPECT_EQ(trace.find("acedCommand"), std::string::npos) << trace;
    EXPECT_EQ(trace.find("acdbEnt"), std::string::npos) << trace;
    EXPECT_EQ(session.lisp("(equal d (entget e))"), "T");
}

TEST_F(TrimAtSymbols, HostCallsToTheLetter)
{
    session.lisp("(line '(-5.0 0.0 0.0) '(5.0 0.0 0.0)) (symbol \"SPTTREE\" 0.0 0.0)");
    host::answers_from_text("all\n\n");
    const std::string trace = session.traced("(cf:zentutil \"\" 3)");
    const char* const lines[] = {
        "acedSSGet nil nil nil ((0 . \"INSERT\")) -> RTNORM\nacedSetVar \"HIGHLIGHT\" 0 -> RTNORM\n",
        "acedSSGet \"C\" (-0.01 -0.01 0.0) (0.01 0.01 0.0) ((-4 . \"<OR\") (0 . \"LINE\") (-4 . \"<OR\") "
        "(0 . \"POLYLINE\") (0 . \"LWPOLYLINE\") (-4 . \"OR>\") (-4 . \"OR>\")) -> RTNORM\n",
        "acedCommand (\"_.EXPLODE\" <Selection set: ",
        "acedCommand (\"_.TRIM\" <Entity name: ",
        "> \"\" (<Entity name: ",
        "> (0.0 0.0 0.0)) \"\") -> RTNORM\nacdbEntDel <Entity name: ",
        "acdbEntMake ((0 . \"INSERT\")",
        "acedSSFree",
        "acedSSFree",
        "acedSSFree",
        "acedSetVar \"HIGHLIGHT\" 1 -> RTNORM\nacedSSFree"};
    std::size_t at = 0;
    for (const char* line : lines) {
        at = trace.find(line, at);
        ASSERT_NE(at, std::string::npos) << line << trace;
        ++at;
    }
    EXPECT_EQ(trace.find("(-1 ."), std::string::npos) << trace;
}

TEST_F(TrimAtSymbols, SymbolWithoutALineIsExplodedAndPutBackAll)
{
    session.lisp("(setq e (symbol \"SPTTREE\" 0.0 0.0))");
    host::answers_from_text("all\n\n");
    const std::string trace = session.traced("(cf:zentutil \"\" 3)");
    EXPECT_NE(trace.find("_.EXPLODE"), std::string::npos) << trace;
    EXPECT_EQ(trace.find("_.TRIM"), std::string::npos) << trace;
    EXPECT_EQ(shapes(), "(" + TREE + ")");
    EXPECT_EQ(session.lisp("(entget e)"), "nil");
}

TEST_F(TrimAtSymbols, SymbolKeepsAllThatItHad)
{
    session.lisp(
        "(regapp \"DATA\") (entmake '((0 . \"LAYER\") (100 . \"AcDbSymbolTableRecord\") (100 . "
        "\"AcDbLayerTableRecord\") "
        "(2 . \"TREES\") (70 . 0) (62 . 3) (6 . \"Continuous\")))"
        "(entmake '((0 . \"INSERT\") (8 . \"TREES\") (62 . 5) (66 . 1) (2 . \"SPTTREE\") (10 1.0 2.0 3.0) (41 "
        ". 2.0) (42 . 2.0) "
        "(43 . 2.0) (50 . 0.5) (-3 (\"DATA\" (1000 . \"kept\") (1040 . 2.5)))))"
        "(entmake '((0 . \"ATTRIB\") (8 . \"TREES\") (10 4.0 5.0 6.0) (40 . 0.8) (1 . \"OAK\") (2 . \"KIND\") "
        "(70 . 0) (50 . 0.25) "
        "(-3 (\"DATA\" (1000 . \"too\")))))"
        "(entmake '((0 . \"ATTRIB\") (8 . \"0\") (10 4.0 4.0 6.0) (40 . 0.5) (1 . \"12\") (2 . \"SIZE\") (70 . "
        "1)))"
        "(entmake '((0 . \"SEQEND\") (8 . \"TREES\")))"
        "(line '(-9.0 2.0 0.0) '(9.0 2.0 0.0))"
        "(defun plain (e) (vl-remove-if '(lambda (g) (member (car g) '(-1 -2 5 330))) (entget e '(\"*\"))))"
        "(defun whole (e / out) (while (and e (/= (of e 0) \"SEQEND\")) (setq out (cons (plain e) out) e "
        "(entnext e)))"
        " (cons (plain e) out))"
        "(defun tree (/ s) (setq s (ssget \"X\" '((0 . \"INSERT\")))) (if (= (sslength s) 1) (ssname s 0)))"
        "(setq e (tree) before (whole e))");
    trim();
    EXPECT_EQ(session.lisp("(eq e (tree))"), "nil");
    EXPECT_EQ(session.lisp("(equal before (whole (tree)))"), "T") << session.lisp("(whole (tree))");
    EXPECT_EQ(session.lisp("(length before)"), "4");
    EXPECT_EQ(session.lisp("(length (shapes))"), "3"); // the symbol and the two parts of the line
}

// The same from a symbol that was the last object: its own parts are what stands before the pieces.
TEST_F(TrimAtSymbols, SymbolWithAttributesAtTheEndOfTheDrawing)
{
    session.lisp(
        "(line '(-9.0 0.0 0.0) '(9.0 0.0 0.0))"
        "(entmake '((0 . \"INSERT\") (66 . 1) (2 . \"SPTTREE\") (10 0.0 0.0 0.0)))"
        "(entmake '((0 . \"ATTRIB\") (10 4.0 5.0 6.0) (40 . 0.8) (1 . \"OAK\") (2 . \"KIND\") (70 . 0)))"
        "(entmake '((0 . \"SEQEND\")))");
    trim();
    trim();
    EXPECT_EQ(shapes(), "((\"LINE\" (-9.0 0.0) (-1.0 0.0)) (\"LINE\" (1.0 0.0) (9.0 0.0)) " + TREE + ")");
    EXPECT_EQ(session.lisp("(of (entnext (entlast)) 1)"), "\"OAK\"");
}

TEST_F(TrimAtSymbols, SymbolThatCantBeExplodedStaysAsItIs)
{
    // On a locked layer; repeated in rows, which no EXPLODE takes.
    session.lisp(
        "(entmake '((0 . \"LAYER\") (100 . \"AcDbSymbolTableRecord\") (100 . \"AcDbLayerTableRecord\") "
        "(2 . \"LOCKED\") (70 . 4) (62 . 3) (6 . \"Continuous\")))"
        "(line '(-9.0 0.0 0.0) '(9.0 0.0 0.0)) (line '(20.0 0.0 0.0) '(29.0 0.0 0.0))"
        "(setq e (make '((0 . \"INSERT\") (8 . \"LOCKED\") (2 . \"SPTTREE\") (10 0.0 0.0 0.0)))"
        " m (make '((0 . \"INSERT\") (2 . \"SPTTREE\") (10 20.0 0.0 0.0) (70 . 2) (71 . 2) (44 . 9.0) (45 . "
        "9.0)))"
        " d (list (entget e) (entget m)) old (shapes)) (circle 50.0 50.0 1.0)");
    trim();
    EXPECT_EQ(session.lisp("(equal d (list (entget e) (entget m)))"), "T");
    EXPECT_EQ(session.lisp("(equal (append old '((\"CIRCLE\"))) (shapes))"), "T") << shapes();
}

// A sequence that a program has begun swallows the new block: the old one comes back.
TEST_F(TrimAtSymbols, SymbolThatCantBeMadeComesBack)
{
    session.lisp("(setq e (symbol \"SPTTREE\" 0.0 0.0)) (line '(0.0 0.0 0.0) '(9.0 0.0 0.0))"
                 "(setq d (entget e)) (entmake '((0 . \"POLYLINE\") (66 . 1) (10 0.0 0.0 0.0)))");
    trim();
    EXPECT_EQ(session.lisp("(equal d (entget e))"), "T");
    EXPECT_EQ(shapes(), "(" + TREE + " (\"LINE\" (1.0 0.0) (9.0 0.0)))");
}

TEST_F(TrimAtSymbols, BreakIsLookedAtBeforeEachSymbol)
{
    for (int nth = 1; nth <= 4; ++nth) {
        session.lisp("(while (entlast) (entdel (entlast)))"
                     "(foreach x '(0.0 10.0 20.0) (line (list x 0.0 0.0) (list (+ x 5.0) 0.0 0.0)) (symbol "
                     "\"SPTTREE\" x 0.0))");
        static long polls = 0;
        host::run_settings().break_after = polls += 1000;
        while (!acedUsrBrk()) {
        }
        host::run_settings().break_after = polls + nth;
        const std::string said = trim();
        EXPECT_TRUE(said.ends_with(nth <= 3 ? "\nFunction cancelled at user request." : "\nDone.")) << said;
        // The newest symbol is the first of the set.
        const std::string done = session.lisp("(- 15.0 (apply '+ (mapcar '(lambda (s) (if (= (car s) \"LINE\")"
                                              " (distance (cadr s) (caddr s)) 0.0)) (shapes))))");
        EXPECT_EQ(done, std::to_string(nth - 1) + ".0") << "the old ones stay done";
        EXPECT_EQ(session.lisp("(length (shapes))"), "6");
    }
    host::run_settings().break_after = 0;
}

TEST_F(TrimAtSymbols, ErasedSymbolOfThePickIsPassedOver)
{
    session.lisp("(setq e (symbol \"SPTTREE\" 0.0 0.0)) (line '(0.0 0.0 0.0) '(9.0 0.0 0.0))");
    trim("all\n(progn (entdel e) \"all\")\n\n");
    EXPECT_EQ(shapes(), "((\"LINE\" (0.0 0.0) (9.0 0.0)))");
}

TEST_F(TrimAtSymbols, HighlightOfTheUserComesBack)
{
    session.lisp("(symbol \"SPTTREE\" 0.0 0.0) (setvar \"HIGHLIGHT\" 0)");
    trim();
    EXPECT_EQ(session.lisp("(getvar \"HIGHLIGHT\")"), "0");
    session.lisp("(setvar \"HIGHLIGHT\" 1)");
}

TEST_F(TrimAtSymbols, HeapThatGivesNoMoreLosesNoSymbol)
{
    bool refused = true;
    for (long request = 1; refused && !HasFailure(); ++request) {
        SCOPED_TRACE("request " + std::to_string(request) + " refused");
        session.lisp(
            "(while (entlast) (entdel (entlast)))"
            "(entmake '((0 . \"INSERT\") (66 . 1) (2 . \"SPTTREE\") (10 0.0 0.0 0.0)))"
            "(entmake '((0 . \"ATTRIB\") (10 4.0 5.0 6.0) (40 . 0.8) (1 . \"OAK\") (2 . \"KIND\") (70 . 0)))"
            "(entmake '((0 . \"SEQEND\"))) (line '(-9.0 0.0 0.0) '(9.0 0.0 0.0))");
        const std::size_t bytes = host::heap_live_bytes(), sets = host::db::live_sets();
        host::answers_from_text("all\n\n");
        host::heap_refuse(request);
        call("3");
        refused = host::heap_refuse(0) == 0;
        EXPECT_EQ(host::heap_live_bytes(), bytes);
        EXPECT_EQ(host::db::live_sets(), sets);
        EXPECT_EQ(
            session.lisp(
                "(setq s (ssget \"X\" '((0 . \"INSERT\")))) (list (sslength s) (of (entnext (ssname s 0)) 1)"
                " (of (ssname s 0) 2))"),
            "(1 \"OAK\" \"SPTTREE\")");
        EXPECT_EQ(session.lisp("(ssget \"X\" '((0 . \"CIRCLE\")))"), "nil");
    }
}

} // namespace
