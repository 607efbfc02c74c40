#include "host/files/associations.h"

#include <cstdlib>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/files/processes.h"
#include "host/files/programs.h"
#include "hostapi/processes.h"
#include "tests/host/files/temporary_directory.h"

namespace
{

constexpr const char* HEADING = "Windows Registry Editor Version 5.00\n\n";

// A registry of the test's own, and a directory of programs that tell their words to `told`.
class Associations : public testing::Test
{
protected:
    void SetUp() override
    {
        path_before = getenv("PATH") ? getenv("PATH") : "";
        setenv("PATH", (tmp.path + "/programs").c_str(), 1);
        host::run_settings().drives['C'] = tmp.path;
        host::run_settings().registry = tmp.path + "/test.reg";
        teller("xdg-open");
        teller("viewer");
    }
    void TearDown() override { setenv("PATH", path_before.c_str(), 1); }
    void keep(const std::string& text) const { tmp.write("test.reg", HEADING + text); }
    void teller(const std::string& name, int status = 0) const
    {
        const std::string file =
            tmp.write("programs/" + name, "#!/bin/sh\nfor word in \"${0##*/}\" \"$@\"; do\n"
                                          "printf '<%s>\\n' \"$word\"\ndone > '" +
                                              tmp.path + "/told'\nexit " + std::to_string(status) + "\n");
        chmod(file.c_str(), 0755);
    }
    // What the started program told of itself; "" when none was started.
    std::string started(const std::string& line) const
    {
        tmp.write("told", "");
        std::string text = line;
        PROCESS_INFORMATION process;
        const STARTUPINFO startup{};
        if (!CreateProcessA(nullptr, text.data(), nullptr, nullptr, 0, 32, nullptr, nullptr, &startup,
                            &process))
            return "";
        DWORD code = STILL_ACTIVE;
        while (GetExitCodeProcess(process.hProcess, &code) && code == STILL_ACTIVE)
            SleepEx(5, 1);
        CloseHandle(process.hProcess);
        CloseHandle(process.hThread);
        return tmp.read("told");
    }
    std::string told_by_system(const std::string& line, int* status) const
    {
        tmp.write("told", "");
        *status = host_system(line.c_str());
        return tmp.read("told");
    }

    temporary_directory tmp;
    std::string path_before;
};

TEST_F(Associations, DocumentsHaveAProgramWithoutAFile)
{
    for (const char* type : {".pdf", ".PDF", ".htm", ".html", ".txt", ".chm"})
        EXPECT_EQ(host::open_command(type), "xdg-open \"%1\"") << type;
    EXPECT_EQ(host::open_command(".bat"), "");
    EXPECT_EQ(host::open_command(".dwg"), "");
    EXPECT_EQ(host::open_command(""), "");
}

TEST_F(Associations, TheFilesOwnGoFirst)
{
    setenv("ZENT_VIEWER", "viewer", 1);
    keep("[HKCR\\.pdf]\n@=\"own\"\n[HKCR\\own\\shell\\open\\command]\n@=\"viewer %1 -x\"\n"
         "[HKCR\\zentrik.text\\shell\\open\\command]\n@=\"%zent_viewer%\"\n"
         "[HKCU\\Software\\Classes\\.htm]\n@=\"users\"\n"
         "[HKLM\\Software\\Classes\\users\\shell\\open\\command]\n@=hex(2):61,00,00,00\n"
         "[-HKLM\\Software\\Classes\\.chm]\n[HKCR\\.dat]\n@=dword:5\n[HKCR\\.x]\n@=\"lost\"\n");
    EXPECT_EQ(host::open_command(".pdf"), "viewer %1 -x");
    EXPECT_EQ(host::open_command(".txt"), "viewer");
    EXPECT_EQ(host::open_command(".htm"), "a");
    EXPECT_EQ(host::open_command(".html"), "xdg-open \"%1\"");
    EXPECT_EQ(host::open_command(".chm"), "") << "taken away";
    EXPECT_EQ(host::open_command(".dat"), "");
    EXPECT_EQ(host::open_command(".x"), "");
    unsetenv("ZENT_VIEWER");
}

TEST_F(Associations, AnOpenCommandGetsTheRealPathOfItsDocument)
{
    const std::string plain = tmp.write("JOB/A.PDF", ""), spaced = tmp.write("JOB/A B.PDF", ""),
                      hostile = tmp.write("JOB/$(touch made);\" x \"&.pdf", ""),
                      letter = tmp.write("JOB/H\xC3\xB6he.htm", ""),
                      foreign = tmp.write("JOB/\xE4\xB8\xAD.pdf", ""), drawing = tmp.write("JOB/site.dxf", "");
    keep("[HKCR\\.own]\n@=\"own\"\n[HKCR\\own\\shell\\open\\command]\n@=\"viewer -f %1 -x %1\"\n"
         "[HKCR\\bare\\shell\\open\\command]\n@=\"viewer --bare\"\n"
         "[HKCR\\exe\\shell\\open\\command]\n@=\"\\\"%1\\\" %*\"\n");
    struct {
        std::string line, told;
    } const cases[] = {
        {"xdg-open \"C:\\JOB\\A.PDF\"", "<xdg-open>\n<" + plain + ">\n"},
        {"xdg-open \"c:/job/a b.pdf\"", "<xdg-open>\n<" + spaced + ">\n"},
        {"xdg-open \"JOB\\A B.PDF\"", "<xdg-open>\n<" + spaced + ">\n"},
        {"xdg-open \"" + spaced + "\"", "<xdg-open>\n<" + spaced + ">\n"},
        {"xdg-open \"C:\\JOB\\$(touch made);\" x \"&.pdf\"", "<xdg-open>\n<" + hostile + ">\n"},
        {"xdg-open \"C:\\JOB\\H\xD6HE.HTM\"", "<xdg-open>\n<" + letter + ">\n"},
        {"xdg-open \"C:\\JOB\\\\U+4E2D.pdf\"", "<xdg-open>\n<" + foreign + ">\n"},
        {"viewer -f C:\\JOB\\A B.PDF -x %1", "<viewer>\n<-f>\n<" + spaced + ">\n<-x>\n<%1>\n"},
        {"viewer --bare C:\\JOB\\A B.PDF", "<viewer>\n<--bare>\n<" + spaced + ">\n"},
        {"viewer --bare C:\\JOB\\SITE.DWG", "<viewer>\n<--bare>\n<" + drawing + ">\n"},
        // No documents, or no open commands: as they stand.
        {"xdg-open \"C:\\JOB\\NONE.PDF\"", "<xdg-open>\n<C:\\JOB\\NONE.PDF>\n"},
        {"xdg-open \"http://example.org/a b?x=%41&y\"", "<xdg-open>\n<http://example.org/a b?x=%41&y>\n"},
        {"xdg-open C:\\JOB\\A.PDF", "<xdg-open>\n<C:\\JOB\\A.PDF>\n"},
        {"viewer C:\\JOB\\A.PDF", "<viewer>\n<C:\\JOB\\A.PDF>\n"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(started(one.line), one.told) << one.line;
    EXPECT_FALSE(tmp.has("made"));
    EXPECT_EQ(host::open_process_handles(), 0u);
}

TEST_F(Associations, AMissingProgramOfAnOpenCommandStartsNothing)
{
    tmp.write("A.PDF", "");
    unlink((tmp.path + "/programs/xdg-open").c_str());
    testing::internal::CaptureStderr();
    EXPECT_EQ(started("xdg-open \"C:\\A.PDF\""), "");
    EXPECT_FALSE(host::show_document("C:\\A.PDF"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(Associations, TheHostOpensDocumentsByThem)
{
    const std::string file = tmp.write("help/Book One.chm", "");
    EXPECT_TRUE(host::show_document("C:\\HELP\\BOOK ONE.CHM"));
    for (int i = 0; i < 500 && tmp.read("told").size() < 12; i++)
        usleep(10000);
    EXPECT_EQ(tmp.read("told"), "<xdg-open>\n<" + file + ">\n");
    EXPECT_FALSE(host::show_document("C:\\HELP\\NONE.CHM"));
    EXPECT_FALSE(host::show_document(tmp.write("a.xyz", "")));
    host::run_settings().no_shell = true;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(host::show_document(file));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "zentrik: other programs may not be started in this run: " + file + "\n");
}

constexpr const char* BATCH =
    "[HKEY_CLASSES_ROOT\\.bat]\n@=\"batfile\"\n[HKEY_CLASSES_ROOT\\batfile\\shell\\open\\command]\n@=";

TEST_F(Associations, BatchFilesGoToTheProgramThatTheUserHasSet)
{
    teller("dos", 5);
    keep(BATCH + std::string("\"dos -c \\\"%1\\\" %* -exit\"\n"));
    const std::string plain = tmp.write("ZTCOGO.BAT", ""), spaced = tmp.write("MY JOB/ZTCOGO.BAT", ""),
                      hostile = tmp.write("$(touch made)/`touch made`;a&b 'c.bat", ""),
                      quote = tmp.write("a\"b c/x.bat", ""), letter = tmp.write("H\xC3\xB6he/X.BAT", "");
    struct {
        std::string line, file, arguments;
    } const cases[] = {
        {"C:\\ZTCOGO.BAT", plain, ""},
        {"  c:/ztcogo.bat  ", plain, ""},
        {"ztcogo.bat", plain, ""},
        {"C:\\ZTCOGO.BAT one \"two three\" $(touch made)", plain, "<one>\n<two three>\n<$(touch>\n<made)>\n"},
        {"C:\\MY JOB\\ZTCOGO.BAT", spaced, ""},
        {"\"C:\\MY JOB\\ZTCOGO.BAT\"", spaced, ""},
        {"C:\\MY JOB\\ZTCOGO.BAT one", spaced, "<one>\n"},
        {"\"C:\\MY JOB\\ZTCOGO.BAT\" one", spaced, "<one>\n"},
        {"MY JOB\\ZTCOGO.BAT", spaced, ""},
        {tmp.path + "/my job/ztcogo.bat", spaced, ""},
        {"C:\\$(touch made)\\`touch made`;a&b 'c.bat", hostile, ""},
        {"\"C:\\$(touch made)\\`touch made`;a&b 'c.bat\"", hostile, ""},
        {tmp.path + "/$(touch made)/`touch made`;a&b 'c.bat", hostile, ""},
        {"C:\\a\"b c\\x.bat", quote, ""},
        {"C:\\H\xD6HE\\X.BAT", letter, ""},
    };
    for (const auto& one : cases) {
        const std::string told = "<dos>\n<-c>\n<" + one.file + ">\n" + one.arguments + "<-exit>\n";
        int status = 0;
        EXPECT_EQ(told_by_system(one.line, &status), told) << one.line;
        EXPECT_EQ(status, 5) << one.line;
        EXPECT_EQ(started(one.line), told) << one.line;
    }
    EXPECT_FALSE(tmp.has("made"));
}

TEST_F(Associations, BatchFilesWithoutTheirPlaceStandBehind)
{
    tmp.write("a b.bat", "");
    teller("dos", 0);
    keep(BATCH + std::string("\"dos\"\n"));
    int status = 0;
    EXPECT_EQ(told_by_system("\"a b.bat\" x y", &status), "<dos>\n<" + tmp.path + "/a b.bat>\n<x>\n<y>\n");
}

TEST_F(Associations, ABatchFileThatNothingRunsIsToldAndReachesNoShell)
{
    tmp.write("MY JOB/ZTCOGO.BAT", "touch made\n");
    chmod((tmp.path + "/MY JOB/ZTCOGO.BAT").c_str(), 0755);
    const std::string place = "no program is set for .bat files. Set one in the registry, " + tmp.path +
                              "/test.reg, with these lines:\n";
    const std::string lines = "[HKEY_CLASSES_ROOT\\.bat]\n@=\"batfile\"\n"
                              "[HKEY_CLASSES_ROOT\\batfile\\shell\\open\\command]\n@=\"PROGRAM \\\"%1\\\"\"\n";
    struct {
        const char *registry, *line;
        std::string complaint;
    } const cases[] = {
        {"", "C:\\MY JOB\\ZTCOGO.BAT", "C:\\MY JOB\\ZTCOGO.BAT: " + place + HEADING + lines},
        {"", "\"C:\\MY JOB\\ZTCOGO.BAT\" x", "C:\\MY JOB\\ZTCOGO.BAT: " + place + HEADING + lines},
        // The file is there: it has its heading.
        {"[HKCR\\.pdf]\n@=", "C:\\MY JOB\\ZTCOGO.BAT", "C:\\MY JOB\\ZTCOGO.BAT: " + place + lines},
        {BATCH, "C:\\MY JOB\\ZTCOGO.BAT",
         "C:\\MY JOB\\ZTCOGO.BAT: there is no program nowhere, which the registry names for .bat files\n"},
        {BATCH, "C:\\$(touch made)\\A.BAT", "C:\\$(touch made)\\A.BAT: there is no such batch file\n"},
        {BATCH, "/none/$(touch made)/A.BAT", "/none/$(touch made)/A.BAT: there is no such batch file\n"},
        {BATCH, "\"/none/$(touch made)/A.BAT\"", "/none/$(touch made)/A.BAT: there is no such batch file\n"},
        {BATCH, "none.bat;touch made", ""},
    };
    for (const auto& one : cases) {
        if (*one.registry)
            keep(one.registry + std::string("\"nowhere \\\"%1\\\"\"\n"));
        testing::internal::CaptureStderr();
        int status = 0;
        EXPECT_EQ(told_by_system(one.line, &status), "");
        const std::string complaint = testing::internal::GetCapturedStderr();
        if (one.complaint.empty()) {
            EXPECT_NE(status, -1) << "a line of the shell's own";
            continue;
        }
        EXPECT_EQ(status, -1) << one.line;
        EXPECT_EQ(complaint, "zentrik: " + one.complaint);
        testing::internal::CaptureStderr();
        EXPECT_EQ(started(one.line), "");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "zentrik: " + one.complaint);
        EXPECT_FALSE(tmp.has("made")) << one.line;
    }
}

TEST_F(Associations, LinesOfTheShellStayTheShells)
{
    tmp.write("a.bat", "text");
    setenv("PATH", path_before.c_str(), 1);
    for (const char* line :
         {"cp a.bat b.bat", "/bin/cp a.bat b.bat", "cat < a.bat > b.bat", "X=1; cp a.bat b.bat"}) {
        EXPECT_EQ(host_system(line), 0) << line;
        EXPECT_EQ(tmp.read("b.bat"), "text") << line;
        unlink("b.bat");
    }
}

} // namespace
