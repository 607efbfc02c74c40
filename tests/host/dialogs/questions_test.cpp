#include "tests/host/dialogs/dialog_session.h"

#include "hostapi/windows.h"

namespace
{

class Questions : public dialog_session
{
protected:
    int box(const std::string& answers, unsigned style)
    {
        history.clear();
        host::answers_from_text(answers);
        return MessageBoxA(0, "Go on?", "Title", style);
    }
    // "RTNORM path" or the status.
    std::string file(const std::string& answers, const char* offered, int flags = 0)
    {
        history.clear();
        host::answers_from_text(answers);
        resbuf result{};
        const int status = acedGetFileD("Pick", offered, "txt;*", flags, &result);
        std::string out = host::status_name(status);
        if (status == RTNORM) {
            out += " " + std::string(result.resval.rstring);
            acad_free(result.resval.rstring);
        }
        return out;
    }
};

TEST_F(Questions, AlertsArePrintedAndWantNoAnswer)
{
    host::answers_from_text("kept");
    host::history("half a line");
    EXPECT_EQ(acedAlert("Two\nlines"), RTNORM);
    acedAlert(nullptr);
    EXPECT_EQ(history, "half a line\n[alert] Two\nlines\n[alert] \n");
    EXPECT_EQ(host::next_answer(""), "kept");
}

TEST_F(Questions, MessageBoxesTakeTheButtonsWord)
{
    struct {
        unsigned style;
        const char* answers;
        int id;
    } const cases[] = {
        {MB_YESNO | MB_ICONWARNING, "yes", IDYES},
        {MB_YESNO, " NO ", IDNO},
        {MB_YESNO, "", IDNO}, // the answers have ended
        {MB_YESNO, "^C", IDNO},
        {MB_YESNO, "\n", IDYES},        // Enter presses the first button
        {MB_YESNO | 0x100, "\n", IDNO}, // or the one that is the default
        {MB_YESNO, "maybe\nno", IDNO},
        {MB_OK, "ok", IDOK},
        {MB_OK, "^C", IDOK},
        {MB_OK, "", IDOK},
        {1, "cancel", IDCANCEL},
        {1, "^C", IDCANCEL},
        {2, "retry", 4},
        {3, "no", IDNO},
        {3, "", IDCANCEL},
        {3 | 0x200, "\n", IDCANCEL},
        {5, "retry", 4},
        {0xF, "ok", IDOK}, // an unknown kind of box has OK
    };
    for (const auto& one : cases)
        EXPECT_EQ(box(one.answers, one.style), one.id) << one.style << " " << one.answers;
}

TEST_F(Questions, MessageBoxesShowTextButtonsAndAnswer)
{
    box("maybe\nno", MB_YESNO);
    EXPECT_EQ(history, "[message] Title: Go on? (yes/no) maybe\nThe message box has no button 'maybe'.\n"
                       "[message] Title: Go on? (yes/no) no\n");
    host::answers_from_text("ok");
    history.clear();
    EXPECT_EQ(MessageBoxA(0, nullptr, nullptr, MB_OK), IDOK);
    EXPECT_EQ(history, "[message] Error:  (ok) ok\n");
}

TEST_F(Questions, FileDialogsHandTheAnswerOnAsTyped)
{
    EXPECT_EQ(file("C:\\JOBS\\a b", nullptr), "RTNORM C:\\JOBS\\a b");
    EXPECT_EQ(history, "[file] Pick C:\\JOBS\\a b\n");
    EXPECT_EQ(file("missing.xyz", "x.txt", 1), "RTNORM missing.xyz") << "nothing is checked or added";
    EXPECT_EQ(file("^C", "x.txt"), "RTCAN");
    EXPECT_EQ(file("\n", "C:\\JOBS\\x.txt"), "RTNORM C:\\JOBS\\x.txt") << "Enter takes what is offered";
    EXPECT_EQ(file("\n", "C:\\JOBS\\"), "RTCAN") << "a directory is no file";
    EXPECT_EQ(file("\n", "/usr"), "RTCAN") << "with no separator behind it neither";
    EXPECT_EQ(file("\n", nullptr), "RTCAN");
    EXPECT_EQ(file("", "x.txt"), "RTCAN") << "the answers have ended";
    EXPECT_EQ(host::answers_ended_at(), "[file] Pick");
    EXPECT_EQ(acedGetFileD("Pick", nullptr, nullptr, 0, nullptr), RTERROR);
}

TEST_F(Questions, QuestionsAreTraced)
{
    host::trace_to("trace.txt");
    box("yes", MB_YESNO | MB_ICONWARNING);
    file("a.txt", nullptr, 1);
    file("^C", "d");
    host::trace_to("");
    EXPECT_EQ(tmp.read("trace.txt"), "MessageBoxA 0 \"Go on?\" \"Title\" 52 -> 6\n"
                                     "acedGetFileD \"Pick\" nil \"txt;*\" 1 -> \"a.txt\"\n"
                                     "acedGetFileD \"Pick\" \"d\" \"txt;*\" 0 -> RTCAN\n");
}

} // namespace
