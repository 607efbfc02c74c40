// Other programs: by a command line, and by the kind of a document.
#include <gtest/gtest.h>

#include <string>

#include "launch/programs.h"
#include "tests/fakes/fake_host.h"

namespace
{

using lines = std::vector<std::string>;
constexpr std::uint32_t TEXT = 1, EXPANDABLE_TEXT = 2, BINARY = 3;

struct programs_session : host_session {
    void associate(const std::string& type, const std::string& class_name, const std::string& command)
    {
        fake.registry["HKCR\\" + type + "|"] = {TEXT, class_name};
        fake.registry["HKCR\\" + class_name + "\\shell\\open\\command|"] = {EXPANDABLE_TEXT, command};
    }
};

std::string open_command(const char* name)
{
    char out[300] = "before";
    find_open_command(name, out);
    return out;
}

TEST(RunAndWait, WaitsForTheEnd)
{
    programs_session session;
    fake.polls_until_the_end = 2;
    run_and_wait("plot.exe \"my file\"", 1);
    EXPECT_EQ(fake.calls, (lines{"CreateProcessA [plot.exe \"my file\"] 32", "WaitForInputIdle 11 15000",
                                 "GetExitCodeProcess 11", "SleepEx 250 1", "GetExitCodeProcess 11",
                                 "SleepEx 250 1", "GetExitCodeProcess 11"}));
    EXPECT_EQ(fake.open_programs, 0);
}

TEST(RunAndWait, DoesNotWaitWhenNotAskedTo)
{
    programs_session session;
    fake.polls_until_the_end = 2;
    run_and_wait("plot.exe", 0);
    EXPECT_EQ(fake.calls, lines{"CreateProcessA [plot.exe] 32"});
    EXPECT_EQ(fake.open_programs, 0);
}

TEST(RunAndWait, ProgramThatDoesNotStartIsNotWaitedFor)
{
    programs_session session;
    fake.programs_start = false;
    run_and_wait("gone.exe", 1);
    EXPECT_EQ(fake.calls, lines{"CreateProcessA [gone.exe] 32"});
    EXPECT_EQ(session.printed, "");
}

TEST(RunAndWait, ProgramThatCannotBeAskedDoesNotHang)
{
    programs_session session;
    fake.polls_until_the_end = -1;
    run_and_wait("plot.exe", 1);
    EXPECT_EQ(fake.calls.back(), "GetExitCodeProcess 11");
    EXPECT_EQ(fake.open_programs, 0);
}

TEST(FindOpenCommand, FollowsTheClassOfTheExtension)
{
    programs_session session;
    session.associate(".pdf", "Reader.Document", "\"%ProgramFiles%\\reader.exe\" \"%1\"");
    fake.environment["ProgramFiles"] = "C:\\Programs";
    const std::string command = "\"C:\\Programs\\reader.exe\" \"%1\"";
    EXPECT_EQ(open_command(".pdf"), command);
    EXPECT_EQ(open_command("C:\\JOBS\\plan.pdf"), command);
    EXPECT_EQ(open_command("a.pdf"), command);
    EXPECT_EQ(fake.open_keys, 0);
    EXPECT_TRUE(fake.messages.empty());
}

TEST(FindOpenCommand, ExtensionHasAtMostThreeLetters)
{
    programs_session session;
    session.associate(".pl", "Short", "s.exe");
    session.associate(".b", "Last", "l.exe");
    session.associate(".xhtml", "Long", "x.exe");
    EXPECT_EQ(open_command("lots.pl"), "s.exe");
    EXPECT_EQ(open_command("x.a.b"), "l.exe") << "the last point counts";
    EXPECT_TRUE(fake.messages.empty());
    for (const char* name : {"page.xhtml", "plan.html", "plan", "", "abcd"})
        EXPECT_EQ(open_command(name), "") << name;
    EXPECT_EQ(fake.messages, lines(5, "|Unable to determine file extension|48"));
}

TEST(FindOpenCommand, AnyMissingStepLeavesItEmptyInSilence)
{
    const auto forget = [](const char* key) {
        programs_session session;
        session.associate(".pdf", "Reader", "r.exe");
        fake.registry.erase(key);
        EXPECT_EQ(open_command(".pdf"), "") << key;
        EXPECT_TRUE(fake.messages.empty());
        EXPECT_EQ(session.printed, "");
        EXPECT_EQ(fake.open_keys, 0);
    };
    forget("HKCR\\.pdf|");
    forget("HKCR\\Reader\\shell\\open\\command|");
    programs_session session;
    fake.registry["HKCR\\.pdf|Content Type"] = {TEXT, "application/pdf"}; // a key, but no default value
    EXPECT_EQ(open_command(".pdf"), "");
    session.associate(".pdf", "", "r.exe");
    EXPECT_EQ(open_command(".pdf"), "");
    session.associate(".pdf", "Reader", "r.exe");
    fake.registry["HKCR\\.pdf|"].first = BINARY;
    EXPECT_EQ(open_command(".pdf"), "");
    EXPECT_EQ(fake.open_keys, 0);
}

TEST(FindOpenCommand, SizesOfItsTexts)
{
    programs_session session;
    const std::string longest_class(99, 'c'), longest_command(254, 'x');
    session.associate(".pdf", longest_class, longest_command);
    EXPECT_EQ(open_command(".pdf"), longest_command);
    session.associate(".pdf", longest_class, longest_command + "x");
    EXPECT_EQ(open_command(".pdf"), "") << "never cut short";
    session.associate(".pdf", longest_class + "c", "r.exe");
    EXPECT_EQ(open_command(".pdf"), "");
    session.associate(".pdf", "Reader", "%LONG%\\r.exe");
    fake.environment["LONG"] = longest_command;
    EXPECT_EQ(open_command(".pdf"), "") << "counted with its variables filled in";
}

TEST(FindOpenCommand, CutsToTheCallersRoom)
{
    programs_session session;
    session.associate(".pdf", "Reader", "reader.exe");
    char out[5];
    find_open_command("a.pdf", out);
    EXPECT_STREQ(out, "read");
}

TEST(OpenPdf, PutsThePathIntoTheCommand)
{
    const std::pair<const char*, const char*> cases[] = {
        {"\"C:\\r.exe\" \"%1\"", "\"C:\\r.exe\" \"C:\\MY JOBS\\a.pdf\""},
        {"r.exe /n %1 /s %1", "r.exe /n C:\\MY JOBS\\a.pdf /s %1"},
        {"%1", "C:\\MY JOBS\\a.pdf"},
        {"r.exe", "r.exe C:\\MY JOBS\\a.pdf"},
    };
    for (const auto& [command, line] : cases) {
        programs_session session;
        session.associate(".pdf", "Reader", command);
        open_pdf("C:\\MY JOBS\\a.pdf");
        EXPECT_EQ(fake.calls, lines{std::string("CreateProcessA [") + line + "] 32"});
        EXPECT_EQ(fake.open_programs, 0);
        EXPECT_EQ(session.printed, "");
    }
}

TEST(OpenPdf, MissingAssociationIsAFailingStartWithoutAMessage)
{
    programs_session session;
    fake.programs_start = false;
    open_pdf("a.pdf");
    EXPECT_EQ(fake.calls, lines{"CreateProcessA [ a.pdf] 32"});
    EXPECT_EQ(session.printed, "");
    EXPECT_TRUE(fake.messages.empty());
}

TEST(OpenPdf, EmptyCommandLineIsTold)
{
    programs_session session;
    session.associate(".pdf", "Reader", "%1");
    open_pdf("");
    EXPECT_TRUE(fake.calls.empty());
    EXPECT_EQ(session.printed,
              "Adobe Acrobat is not installed in this system. Please re-install off the CD.\n");
}

TEST(OpenWebPage, AnswersWhetherItStarted)
{
    programs_session session;
    session.associate(".htm", "Browser", "b.exe \"%1\"");
    session.associate(".pdf", "Reader", "r.exe");
    EXPECT_EQ(open_web_page("http://x/y"), 1);
    EXPECT_EQ(fake.calls, lines{"CreateProcessA [b.exe \"http://x/y\"] 32"});
    fake.programs_start = false;
    EXPECT_EQ(open_web_page("z"), 0);
    EXPECT_EQ(session.printed, "");
    EXPECT_EQ(fake.open_programs, 0);
}

} // namespace
