// Operation 28: the user picks core holes and channels.
#include "tests/tools/small_tool_case.h"

namespace
{

class SelectHoles : public SmallTool
{
protected:
    SelectHoles()
    {
        session.lisp(R"((foreach name '("COREHOLE" "CHANNEL" "OTHER") (regapp name))
            (entmake '((0 . "BLOCK") (2 . "HOLE") (70 . 0) (10 0.0 0.0 0.0)))
            (entmake '((0 . "CIRCLE") (8 . "0") (10 0.0 0.0 0.0) (40 . 1.0)))
            (entmake '((0 . "ENDBLK")))
            (defun hole (x data)
              (make (append (list '(0 . "INSERT") '(2 . "HOLE") (list 10 x 0.0 0.0)) (if data (list (cons -3 data))))))
            (setq core (hole 0.0 '(("COREHOLE" (1000 . "a")))) channel (hole 10.0 '(("CHANNEL" (1070 . 1))))
                  both (hole 20.0 '(("COREHOLE" (1000 . "a")) ("CHANNEL" (1070 . 1))))
                  other (hole 30.0 '(("OTHER" (1000 . "a")))) plain (hole 40.0 nil))
            (entmake '((0 . "LINE") (10 0.0 50.0 0.0) (11 9.0 50.0 0.0) (-3 ("COREHOLE" (1000 . "a"))))))");
        session.printed();
    }
};

TEST_F(SelectHoles, TakesBlocksWithTheirExtendedDataAlone)
{
    host::answers_from_text("all\n\n");
    EXPECT_EQ(session.lisp("(setq s (cf:zentutil \"\" 28)) (list (sslength s) (if (ssmemb core s) 1)"
                           " (if (ssmemb channel s) 1) (if (ssmemb both s) 1))"),
              "(3 1 1 1)");
}

TEST_F(SelectHoles, FilterToTheLetter)
{
    host::answers_from_text("all\n\n");
    const std::string trace = session.traced("(setq s (cf:zentutil \"\" 28))");
    EXPECT_TRUE(trace.starts_with("acedSSGet nil nil nil ((0 . \"INSERT\") (-4 . \"<OR\") (-4 . \"<AND\") "))
        << trace;
    const char* parts[] = {"-3",
                           "\"COREHOLE\"",
                           "(-4 . \"AND>\")",
                           "(-4 . \"<AND\")",
                           "-3",
                           "\"CHANNEL\"",
                           "(-4 . \"AND>\")",
                           "(-4 . \"OR>\")",
                           "-> RTNORM\nacedRetName <Selection set: "};
    std::size_t at = 0;
    for (const char* part : parts) {
        at = trace.find(part, at);
        ASSERT_NE(at, std::string::npos) << part << trace;
        ++at;
    }
}

TEST_F(SelectHoles, NothingPickedIsNil)
{
    for (const char* answers : {"\n", "^C\n", "w 29,-1 41,1\n\n"}) {
        host::answers_from_text(answers);
        const std::size_t sets = host::db::live_sets();
        EXPECT_EQ(call("28"), "nil") << answers;
        EXPECT_EQ(host::db::live_sets(), sets);
    }
    host::answers_from_text("\n");
    EXPECT_NE(session.traced("(cf:zentutil \"\" 28)").find("acedRetNil"), std::string::npos);
}

TEST(SelectHolesInANewDrawing, RegistersItsApplications)
{
    module_session session;
    session.lisp("(entmake '((0 . \"LINE\") (10 0.0 50.0 0.0) (11 9.0 50.0 0.0)))");
    EXPECT_EQ(session.lisp("(tblsearch \"APPID\" \"COREHOLE\")"), "nil");
    host::answers_from_text("all\n\n");
    EXPECT_EQ(session.lisp("(cf:zentutil \"\" 28)"), "nil");
    EXPECT_NE(session.lisp("(tblsearch \"APPID\" \"COREHOLE\")"), "nil");
    EXPECT_NE(session.lisp("(tblsearch \"APPID\" \"CHANNEL\")"), "nil");
}

} // namespace
