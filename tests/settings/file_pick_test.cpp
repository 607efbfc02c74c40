// The file pick: where it opens, the question before a file is replaced, what is remembered.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "common/directories.h"
#include "common/text_buffer.h"
#include "hostapi/ads.h"
#include "settings/file_pick.h"
#include "tests/fakes/fake_host.h"

namespace
{

constexpr int YES = 6, NO = 7;

struct job : host_session {
    job()
    {
        text_set(data_dir, directory() + "user_");
        fake.variables = {{"DWGPREFIX", text_value(directory())}, {"DWGNAME", text_value("site.dwg")}};
        fake.lisp["tmpdir$"] = text_value("C:\\Job\\");
        settings = directory() + "site.ini";
    }
    std::string settings;
};

struct picked {
    int status;
    std::string path, default_path;
};

picked pick(const std::string& standard, const char* extensions, int flags)
{
    char path[256];
    text_set(path, standard);
    resbuf result{};
    picked out{zent_get_file("Title", path, extensions, flags, &result), "", path};
    if (out.status == RTNORM) {
        out.path = result.resval.rstring;
        acad_free(result.resval.rstring);
    }
    return out;
}

struct opened {
    const char* what;
    std::string standard;
    const char* extensions;
    std::string opens;
};

TEST(FilePick, OpensInTheRememberedDirectoryWhenTheDefaultNamesNoFile)
{
    const opened cases[] = {
        {"empty", "", "pln", "C:\\P\\"},
        {"blanks", "   ", "pln", "C:\\P\\"},
        {"directory", "C:\\JOBS\\", "pln", "C:\\P\\"},
        {"directory with a slash", "c:/jobs/", "pln", "C:\\P\\"},
        {"file elsewhere", "C:\\OTHER\\a.pln", "pln", "C:\\OTHER\\a.pln"},
        {"file elsewhere is trimmed", " C:\\OTHER\\a.pln ", "pln", "C:\\OTHER\\a.pln"},
        {"file in the job's directory", "c:\\job\\a.pln", "pln", "C:\\P\\A.PLN"},
        {"job's directory itself", "C:\\JOB\\", "pln", "C:\\P\\"},
        {"job's directory further right", "X:C:\\JOB\\a.pln", "pln", "C:\\P\\B\\A.PLN"},
        {"nothing remembered", "C:\\JOBS\\", "lf", "C:\\JOBS\\"},
        {"second extension", "", "lf;txt", "C:\\T\\"},
        {"first that answers", "", "txt;pln", "C:\\T\\"},
        {"empty extensions", "", ";;pln;", "C:\\P\\"},
        {"no extension", "", "", ""},
    };
    for (const opened& c : cases) {
        job session;
        write_text(session.settings, "PROJECT=C:\\P\\A.PLN\nPROJECT=C:\\T\\A.TXT\n");
        const picked out = pick(c.standard, c.extensions, 0);
        EXPECT_EQ(out.status, RTCAN) << c.what;
        EXPECT_EQ(fake.file_dialogs, std::vector<std::string>{"Title|" + c.opens + "|" + c.extensions + "|0"})
            << c.what;
        EXPECT_EQ(out.default_path, c.opens) << c.what;
        EXPECT_TRUE(session.heap_is_as_before()) << c.what;
    }
}

TEST(FilePick, ExistingDirectoryWithoutASeparatorNamesNoFile)
{
    job session;
    write_text(session.settings, "PROJECT=C:\\P\\A.PLN\n");
    std::filesystem::create_directory(session.directory() + "sub");
    EXPECT_EQ(pick(session.directory() + "sub", "pln", 0).default_path, "C:\\P\\");
    EXPECT_EQ(pick(session.directory() + "sub2", "pln", 0).default_path, session.directory() + "sub2");
}

TEST(FilePick, UnsetJobDirectoryPutsTheWholeDefaultBehindTheRememberedOne)
{
    job session;
    fake.lisp.erase("tmpdir$");
    write_text(session.settings, "PROJECT=C:\\P\\A.PLN\n");
    EXPECT_EQ(pick("x\\a.pln", "pln", 0).default_path, "C:\\P\\X\\A.PLN");
}

TEST(FilePick, ChoiceIsRemembered)
{
    job session;
    fake.file_answers = {"C:\\New\\b.pln"};
    const picked out = pick("", "pln", 4);
    EXPECT_EQ(out.status, RTNORM);
    EXPECT_EQ(out.path, "C:\\New\\b.pln");
    EXPECT_EQ(read_text(session.settings), "PROJECT=C:\\NEW\\B.PLN\n");
    EXPECT_EQ(fake.file_dialogs, std::vector<std::string>{"Title||pln|4"});
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(FilePick, ZeroOfDoIniRemembersNothingButUsesTheMemory)
{
    job session;
    fake.lisp["do_ini"] = short_value(0);
    write_text(session.settings, "PROJECT=C:\\P\\A.PLN\n");
    fake.file_answers = {"C:\\New\\b.pln"};
    const picked out = pick("", "pln", 0);
    EXPECT_EQ(out.default_path, "C:\\P\\");
    EXPECT_EQ(out.path, "C:\\New\\b.pln");
    EXPECT_EQ(read_text(session.settings), "PROJECT=C:\\P\\A.PLN\n");
}

TEST(FilePick, CancelRemembersNothing)
{
    job session;
    EXPECT_EQ(pick("", "pln", 1).status, RTCAN);
    EXPECT_EQ(read_text(session.settings), "<none>");
}

TEST(FilePick, NewFileThatIsNotThereAsksNothing)
{
    job session;
    const std::string chosen = session.directory() + "new.pln";
    fake.file_answers = {chosen};
    EXPECT_EQ(pick("", "pln", 1).path, chosen);
    EXPECT_TRUE(fake.messages.empty());
    EXPECT_EQ(fake.file_dialogs, std::vector<std::string>{"Title||pln|33"});
}

TEST(FilePick, ExistingFileIsReplacedOnYes)
{
    job session;
    const std::string chosen = session.directory() + "old.pln";
    write_text(chosen, "");
    fake.file_answers = {chosen};
    fake.message_answers = {YES};
    EXPECT_EQ(pick("", "pln", 1).path, chosen);
    EXPECT_EQ(fake.messages, std::vector<std::string>{"Zentrik Message|" + chosen +
                                                      " already exists.\nDo you want to replace it?|52"});
    EXPECT_EQ(fake.file_dialogs.size(), 1u);
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(FilePick, NoBringsTheDialogBackWithTheChoiceAsItsDefault)
{
    job session;
    const std::string old = session.directory() + "old.pln", fresh = session.directory() + "new.pln";
    write_text(old, "");
    fake.file_answers = {old, old, fresh};
    fake.message_answers = {NO, NO};
    const picked out = pick("", "pln", 1);
    EXPECT_EQ(out.path, fresh);
    EXPECT_EQ(fake.file_dialogs, (std::vector<std::string>{"Title||pln|33", "Title|" + old + "|pln|33",
                                                           "Title|" + old + "|pln|33"}));
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(FilePick, CancelAfterNoEndsThePick)
{
    job session;
    const std::string old = session.directory() + "old.pln";
    write_text(old, "");
    fake.file_answers = {old, ""};
    fake.message_answers = {NO};
    EXPECT_EQ(pick("", "pln", 1).status, RTCAN);
    EXPECT_EQ(read_text(session.settings), "<none>");
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(FilePick, QuestionIsAskedForNewFilesWithoutTheOtherFlagOnly)
{
    for (const int flags : {0, 4, 32, 33}) {
        job session;
        const std::string old = session.directory() + "old.pln";
        write_text(old, "");
        fake.file_answers = {old};
        EXPECT_EQ(pick("", "pln", flags).path, old);
        EXPECT_TRUE(fake.messages.empty()) << flags;
        EXPECT_EQ(fake.file_dialogs, std::vector<std::string>{"Title||pln|" + std::to_string(flags)});
    }
}

} // namespace
