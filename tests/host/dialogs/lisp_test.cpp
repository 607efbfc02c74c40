// Dialogs of LISP programs, and the actions that DCL files give themselves.
#include "tests/host/dialogs/dialog_session.h"

#include "host/lisp/api.h"

namespace
{

class LispDialogs : public dialog_session
{
protected:
    LispDialogs() { host::open_document(); }
    ~LispDialogs() override { host::close_all_documents(); }

    std::string evaluated(const std::string& forms, const std::string& answers)
    {
        host::answers_from_text(answers);
        return host::lisp::evaluate_text(host::current_document(), forms, "test").printed;
    }
};

TEST_F(LispDialogs, AnActionInTheFileSeesTheTile)
{
    const ads_hdlg dialog =
        made(": edit_box { key = \"e\"; action = \"(setq got (list $key $value $reason))\"; } ok_only;");
    EXPECT_EQ(run(dialog, "e=text\n!accept"), DLGOK);
    EXPECT_EQ(evaluated("got", ""), "(\"e\" \"text\" 1)");
}

TEST_F(LispDialogs, AnActionOfTheProgramGoesBeforeTheFiles)
{
    const ads_hdlg dialog = made(": edit_box { key = \"e\"; action = \"(setq got 1)\"; } ok_only;");
    ads_action_tile(dialog, "e", note);
    seen().clear();
    run(dialog, "e=text\n!accept");
    EXPECT_EQ(seen(), "e=text 1; ");
    EXPECT_EQ(evaluated("got", ""), "nil");
}

TEST_F(LispDialogs, AnErrorInAnActionOfTheFileEndsTheDialog)
{
    const ads_hdlg dialog = made(": button { key = \"b\"; action = \"(car 5)\"; } ok_only;");
    EXPECT_EQ(run(dialog, "!b\n!accept"), DLGCANCEL);
    EXPECT_NE(history.find("bad argument type"), std::string::npos) << history;
}

TEST_F(LispDialogs, AProgramRunsADialog)
{
    tmp.write(
        "p.dcl",
        "p : dialog { : edit_box { key = \"name\"; } : list_box { key = \"l\"; } : toggle { key = \"t\"; } "
        "ok_cancel; errtile; }");
    const std::string program =
        "(setq id (load_dialog \"p.dcl\")) (new_dialog \"p\" id)"
        "(start_list \"l\") (mapcar 'add_list '(\"one\" \"two\")) (end_list)"
        "(set_tile \"name\" \"start\") (mode_tile \"t\" 1)"
        "(action_tile \"l\" \"(setq line (atoi $value))\")"
        "(action_tile \"accept\" \"(setq name (get_tile \\\"name\\\")) (done_dialog 5)\")"
        "(setq ended (start_dialog)) (unload_dialog id) (list ended name line)";
    EXPECT_EQ(evaluated(program, "t=1\nl=1\nname=end\n!accept"), "(5 \"end\" 1)");
    EXPECT_EQ(history, "[dialog p]\nt=1\nThe tile 't' is switched off.\nl=1\nname=end\n!accept\n");
    EXPECT_EQ(evaluated(program, "^C"), "(0 \"end\" 1)");
}

TEST_F(LispDialogs, AnErrorInAnActionOfTheProgramEndsItsDialogs)
{
    tmp.write("p.dcl", "p : dialog { : button { key = \"b\"; } ok_cancel; }");
    evaluated("(setq id (load_dialog \"p.dcl\")) (new_dialog \"p\" id) (action_tile \"b\" \"(car 5)\") "
              "(start_dialog)",
              "!b\n!accept");
    EXPECT_NE(history.find("bad argument type"), std::string::npos) << history;
    EXPECT_EQ(host::dialogs::innermost_dialog(), nullptr);
}

} // namespace
