#include "hostapi/processes.h"

#include <chrono>
#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/core/trace.h"
#include "host/files/libraries.h"
#include "host/files/processes.h"
#include "tests/host/files/temporary_directory.h"

namespace
{

class Processes : public testing::Test
{
protected:
    void SetUp() override
    {
        path_before = getenv("PATH") ? getenv("PATH") : "";
        host::clear_break();
    }
    void TearDown() override
    {
        setenv("PATH", path_before.c_str(), 1);
        host::clear_break();
        EXPECT_EQ(host::open_process_handles(), 0u);
    }
    std::string script(const std::string& name, const std::string& text) const
    {
        const std::string file = tmp.write(name, "#!/bin/sh\n" + text);
        chmod(file.c_str(), 0755);
        return file;
    }
    // A program that writes its words to `told`, one a line in brackets.
    std::string teller(const std::string& name) const
    {
        return script(name, "for word; do printf '<%s>\\n' \"$word\"; done > '" + tmp.path + "/told'\n");
    }
    static int start(const std::string& line, PROCESS_INFORMATION* out)
    {
        const STARTUPINFO startup{};
        std::string text = line;
        return CreateProcessA(nullptr, text.data(), nullptr, nullptr, 0, NORMAL_PRIORITY_CLASS, nullptr,
                              nullptr, &startup, out);
    }
    static DWORD wait(const PROCESS_INFORMATION& process)
    {
        DWORD code = STILL_ACTIVE;
        while (GetExitCodeProcess(process.hProcess, &code) && code == STILL_ACTIVE)
            SleepEx(5, 1);
        CloseHandle(process.hProcess);
        CloseHandle(process.hThread);
        return code;
    }
    // Exit code of a run to its end; -1 when it doesn't start.
    static long run(const std::string& line)
    {
        PROCESS_INFORMATION process;
        return start(line, &process) ? static_cast<long>(wait(process)) : -1;
    }

    temporary_directory tmp;
    std::string path_before;
};

TEST_F(Processes, WordsReachTheOtherProgramUnchanged)
{
    teller("tell");
    setenv("PATH", tmp.path.c_str(), 1);
    struct {
        const char *words, *told;
    } const cases[] = {
        {"", ""},
        {" \t ", ""},
        {" a b\tc  d ", "<a>\n<b>\n<c>\n<d>\n"},
        {" \"a b\" c", "<a b>\n<c>\n"},
        {" a\" b \"c", "<a b c>\n"},
        {" \"\" x \"\"", "<>\n<x>\n<>\n"},
        {" \"a \"\" b\" c", "<a \" b>\n<c>\n"},
        {" \"never closed  ", "<never closed  >\n"},
        {R"( \"a\" b)", "<\"a\">\n<b>\n"},
        {R"( "C:\A B\\" c)", "<C:\\A B\\>\n<c>\n"},
        {R"( "C:\A B\" c)", "<C:\\A B\" c>\n"},
        {R"( a\\\"b)", "<a\\\"b>\n"},
        {R"( a\\\\"b c")", "<a\\\\b c>\n"},
        {R"( C:\JOB\SITE.TXT \\server\share \)", "<C:\\JOB\\SITE.TXT>\n<\\\\server\\share>\n<\\>\n"},
        {R"( 'a b' `id` $(touch made) $HOME %PATH% * ? ~ ^&)",
         "<'a>\n<b'>\n<`id`>\n<$(touch>\n<made)>\n<$HOME>\n<%PATH%>\n<*>\n<?>\n<~>\n<^&>\n"},
        {" ; touch made&touch made|touch made >made",
         "<;>\n<touch>\n<made&touch>\n<made|touch>\n<made>\n<>made>\n"},
        {" one\ntouch made\r\nthree", "<one\ntouch>\n<made\r\nthree>\n"},
        {" H\xF6he \x80", "<H\xC3\xB6he>\n<\xE2\x82\xAC>\n"},
        {" -e --", "<-e>\n<-->\n"},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(run(std::string("tell") + one.words), 0) << one.words;
        EXPECT_EQ(tmp.read("told"), one.told) << one.words;
    }
    EXPECT_FALSE(tmp.has("made"));
}

TEST_F(Processes, AProgramIsFoundByAnyFormOfItsPathAndOnPath)
{
    teller("Bin Dir/Tell");
    teller("tool");
    host::run_settings().drives['C'] = tmp.path;
    const char* const found[] = {
        "\"C:\\BIN DIR\\TELL\" x",
        "\"C:\\bin dir\\tell.exe\" x",
        "C:\\BIN DIR\\TELL x",
        "\"bin dir/TELL\" x",
        "\"C:/Bin Dir/\"Tell x",
        "tool x",
        "TOOL.EXE x",
        "  tool\tx",
        "C:\\TOOL x",
    };
    setenv("PATH", (":/nowhere:" + tmp.path).c_str(), 1);
    for (const char* line : found) {
        tmp.write("told", "");
        EXPECT_EQ(run(line), 0) << line;
        EXPECT_EQ(tmp.read("told"), "<x>\n") << line;
    }
    tmp.write("plain", "#!/bin/sh\n");
    tmp.write("headless", "exit 0\n");
    chmod((tmp.path + "/headless").c_str(), 0755);
    const char* const lost[] = {"sk.exe",    "",           "  ",      "\"\"",       "C:\\BIN DIR", "Tell x",
                                "C:\\PLAIN", "C:\\NONE x", "plain x", "\"tool x\"", "C:\\HEADLESS"};
    for (const char* line : lost)
        EXPECT_EQ(run(line), -1) << line;
    setenv("PATH", ":", 1);
    EXPECT_EQ(run("tool x"), -1) << "the current directory is none of those of PATH";
}

TEST_F(Processes, ANamedProgramLeavesTheLineItsWords)
{
    const std::string tell = teller("tell");
    std::string line = "\"any name\" a \"b c\"";
    PROCESS_INFORMATION process;
    ASSERT_EQ(
        CreateProcessA(tell.c_str(), line.data(), nullptr, nullptr, 0, 32, nullptr, nullptr, nullptr, &process),
        1);
    EXPECT_EQ(wait(process), 0u);
    EXPECT_EQ(tmp.read("told"), "<a>\n<b c>\n");
    ASSERT_EQ(
        CreateProcessA(tell.c_str(), nullptr, nullptr, nullptr, 0, 32, nullptr, nullptr, nullptr, &process), 1);
    EXPECT_EQ(wait(process), 0u);
    EXPECT_EQ(tmp.read("told"), "");
    EXPECT_EQ(CreateProcessA(nullptr, nullptr, nullptr, nullptr, 0, 32, nullptr, nullptr, nullptr, &process),
              0);
    EXPECT_EQ(process.hProcess, 0u);
    EXPECT_EQ(
        CreateProcessA(tell.c_str(), nullptr, nullptr, nullptr, 0, 32, nullptr, nullptr, nullptr, nullptr), 0);
}

TEST_F(Processes, RunInTheDirectoryThatIsGiven)
{
    const std::string tell = script("where", "pwd > told\n");
    tmp.write("Sub Dir/x", "");
    PROCESS_INFORMATION process;
    ASSERT_EQ(
        CreateProcessA(tell.c_str(), nullptr, nullptr, nullptr, 0, 32, nullptr, "SUB DIR", nullptr, &process),
        1);
    EXPECT_EQ(wait(process), 0u);
    EXPECT_EQ(tmp.read("Sub Dir/told"), tmp.path + "/Sub Dir\n");
    EXPECT_EQ(
        CreateProcessA(tell.c_str(), nullptr, nullptr, nullptr, 0, 32, nullptr, "none", nullptr, &process), 0);
}

TEST_F(Processes, ExitCodesAreToldWhenTheyEnd)
{
    script("end", "kill -$2 $$ 2>/dev/null\nexit $1\n");
    EXPECT_EQ(run("./end 0"), 0);
    EXPECT_EQ(run("./end 3"), 3);
    EXPECT_EQ(run("./end 255"), 255);
    EXPECT_EQ(run("./end 259"), 3) << "a status has eight bits: it can't be taken for a running program";
    EXPECT_EQ(run("./end 0 9"), 128 + 9);
    EXPECT_EQ(run("./end 0 TERM"), 128 + 15);
}

TEST_F(Processes, ARunningOneIsStillActive)
{
    script("wait", "while [ ! -e go ]; do sleep 0.01; done\nexit 7\n");
    PROCESS_INFORMATION process;
    ASSERT_EQ(start("./wait", &process), 1);
    EXPECT_NE(process.hProcess, process.hThread);
    EXPECT_NE(process.dwProcessId, 0u);
    EXPECT_EQ(host::open_process_handles(), 2u);
    DWORD code = 0;
    EXPECT_EQ(WaitForInputIdle(process.hProcess, 15000), 0u);
    EXPECT_EQ(GetExitCodeProcess(process.hProcess, &code), 1);
    EXPECT_EQ(code, STILL_ACTIVE);
    tmp.write("go", "");
    EXPECT_EQ(wait(process), 7u);
    EXPECT_EQ(GetExitCodeProcess(process.hProcess, &code), 0) << "the handle was closed";
    EXPECT_EQ(CloseHandle(process.hProcess), 0);
    EXPECT_EQ(WaitForInputIdle(process.hProcess, 0), 0xFFFFFFFFu);
    EXPECT_EQ(CloseHandle(0), 0);
}

TEST_F(Processes, AreNoZombiesWhenTheirHandlesAreClosed)
{
    script("wait", "while [ ! -e go ]; do sleep 0.01; done\n");
    PROCESS_INFORMATION process;
    ASSERT_EQ(start("./wait", &process), 1);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    const auto id = static_cast<pid_t>(process.dwProcessId);
    EXPECT_EQ(kill(id, 0), 0) << "it goes on";
    tmp.write("go", "");
    for (int i = 0; i < 500 && kill(id, 0) == 0; i++)
        usleep(10000);
    EXPECT_NE(kill(id, 0), 0);
}

TEST_F(Processes, ABreakEndsTheWaitingAndLeavesTheProgram)
{
    script("wait", "while [ ! -e go ]; do sleep 0.01; done\ntouch done\n");
    PROCESS_INFORMATION process;
    ASSERT_EQ(start("./wait", &process), 1);
    host::request_break();
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(SleepEx(60000, 1), 0u);
    EXPECT_EQ(wait(process), 0xC000013Au);
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(30));
    EXPECT_TRUE(host::break_requested()) << "the LISP program is to end too";
    EXPECT_EQ(kill(static_cast<pid_t>(process.dwProcessId), 0), 0);
    tmp.write("go", "");
    for (int i = 0; i < 500 && !tmp.has("done"); i++)
        usleep(10000);
    EXPECT_TRUE(tmp.has("done"));
}

TEST_F(Processes, SleepTakesItsTime)
{
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(SleepEx(60, 1), 0u);
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(60));
}

TEST_F(Processes, LeaveTheAnswersOnStandardInputAndTheOpenFilesAlone)
{
    tmp.write("answers", "first\n");
    script("take", "cat > taken\nls /proc/self/fd > held\n");
    const int kept = dup(STDIN_FILENO);
    const int answers = open("answers", O_RDONLY);
    dup2(answers, STDIN_FILENO);
    EXPECT_EQ(run("./take"), 0);
    char byte = 0;
    EXPECT_EQ(read(STDIN_FILENO, &byte, 1), 1);
    EXPECT_EQ(byte, 'f');
    dup2(kept, STDIN_FILENO);
    close(kept);
    close(answers);
    EXPECT_EQ(tmp.read("taken"), "");
    EXPECT_EQ(tmp.read("held"), "0\n1\n2\n3\n") << "the last is the listing's own";
}

TEST_F(Processes, AreRefusedWhenTheRunForbidsThem)
{
    script("make", "touch made\n");
    host::run_settings().no_shell = true;
    testing::internal::CaptureStderr();
    EXPECT_EQ(run("./make now"), -1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "zentrik: other programs may not be started in this run: ./make now\n");
    EXPECT_FALSE(tmp.has("made"));
}

TEST_F(Processes, AreTraced)
{
    script("end", "exit 1\n");
    host::trace_to("trace.txt");
    EXPECT_EQ(run("./end \"x\""), 1);
    EXPECT_EQ(run("sk.exe"), -1);
    host::trace_to("");
    EXPECT_EQ(tmp.read("trace.txt"), "CreateProcessA nil \"./end \\\"x\\\"\" nil nil 0 32 nil nil -> 1\n"
                                     "CreateProcessA nil \"sk.exe\" nil nil 0 32 nil nil -> 0\n");
}

TEST(Environment, IsExpandedWithoutRegardToCase)
{
    setenv("ZENT_Ann", "C:\\Ann", 1);
    setenv("ZENT_LETTER", "H\xC3\xB6he", 1);
    setenv("ZENT_EMPTY", "", 1);
    unsetenv("ZENT_NONE");
    struct {
        const char *text, *expanded;
    } const cases[] = {
        {"", ""},
        {"plain", "plain"},
        {"%ZENT_Ann%\\x", "C:\\Ann\\x"},
        {"<%zent_ann%%ZENT_ANN%>", "<C:\\AnnC:\\Ann>"},
        {"%ZENT_LETTER%", "H\xF6he"},
        {"a%ZENT_EMPTY%b", "ab"},
        {"%ZENT_NONE%", "%ZENT_NONE%"},
        {"%ZENT_NONE%ZENT_ANN%", "%ZENT_NONEC:\\Ann"},
        {"xdg-open \"%1\"", "xdg-open \"%1\""},
        {"100% %% %", "100% %% %"},
    };
    for (const auto& one : cases) {
        char out[100];
        EXPECT_EQ(ExpandEnvironmentStringsA(one.text, out, sizeof out), std::strlen(one.expanded) + 1)
            << one.text;
        EXPECT_STREQ(out, one.expanded);
    }
    setenv("ZENT_ANN", "exact", 1);
    char out[6];
    EXPECT_EQ(ExpandEnvironmentStringsA("%ZENT_ANN%", out, 6), 6u);
    EXPECT_STREQ(out, "exact") << "the name as it is spelled goes first";
    EXPECT_EQ(ExpandEnvironmentStringsA("%ZENT_ANN%", out, 5), 6u);
    EXPECT_STREQ(out, "") << "nothing is cut";
    EXPECT_EQ(ExpandEnvironmentStringsA("%ZENT_ANN%", nullptr, 0), 6u);
    EXPECT_EQ(ExpandEnvironmentStringsA(nullptr, out, 6), 0u);
    unsetenv("ZENT_ANN");
    unsetenv("ZENT_Ann");
    unsetenv("ZENT_LETTER");
    unsetenv("ZENT_EMPTY");
}

int answer_one()
{
    return 1;
}
int answer_two()
{
    return 2;
}

TEST(Libraries, AreFoundByTheirFileNameAndGiveFunctions)
{
    EXPECT_EQ(LoadLibraryA("zenttest.ocx"), 0u);
    host::register_library("ZentTest.ocx", {{14, "One", reinterpret_cast<void*>(&answer_one)},
                                            {15, nullptr, reinterpret_cast<void*>(&answer_two)}});
    host::register_library("zentother.dll", {});
    const HINSTANCE held = LoadLibraryA("ZENTTEST.OCX");
    ASSERT_NE(held, 0u);
    EXPECT_EQ(LoadLibraryA("C:\\WINDOWS\\SYSTEM\\zenttest.ocx"), held);
    EXPECT_EQ(GetProcAddress(held, LIBRARY_ORDINAL(14)), reinterpret_cast<void*>(&answer_one));
    EXPECT_EQ(GetProcAddress(held, "One"), reinterpret_cast<void*>(&answer_one));
    EXPECT_EQ(GetProcAddress(held, LIBRARY_ORDINAL(15)), reinterpret_cast<void*>(&answer_two));
    EXPECT_EQ(GetProcAddress(held, LIBRARY_ORDINAL(16)), nullptr);
    EXPECT_EQ(GetProcAddress(held, "one"), nullptr) << "functions are spelled as they are";
    EXPECT_EQ(GetProcAddress(held, nullptr), nullptr);
    const HINSTANCE other = LoadLibraryA("zentother");
    EXPECT_NE(other, 0u);
    EXPECT_EQ(GetProcAddress(other, "One"), nullptr);
    EXPECT_EQ(FreeLibrary(held), 1);
    EXPECT_EQ(FreeLibrary(held), 1);
    EXPECT_EQ(FreeLibrary(held), 0) << "it was loaded twice";
    EXPECT_EQ(GetProcAddress(held, "One"), nullptr);
    EXPECT_EQ(FreeLibrary(other), 1);
    EXPECT_EQ(FreeLibrary(0), 0);
    EXPECT_EQ(LoadLibraryA(nullptr), 0u);
    EXPECT_EQ(LoadLibraryA("ocx"), 0u);
}

} // namespace
