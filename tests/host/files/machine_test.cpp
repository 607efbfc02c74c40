#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include "host/core/trace.h"
#include "hostapi/windows.h"
#include "tests/host/files/temporary_directory.h"

namespace
{

TEST(Shell, RunsACommandAndTellsItsStatus)
{
    temporary_directory tmp;
    EXPECT_EQ(host_system("echo H\xF6he > out; exit 3"), 3);
    EXPECT_EQ(tmp.read("out"), "H\xC3\xB6he\n");
    EXPECT_EQ(host_system("kill -9 $$"), 128 + 9);
    EXPECT_EQ(host_system(nullptr), -1);
}

TEST(Shell, LeavesTheAnswersOnStandardInputAlone)
{
    temporary_directory tmp;
    tmp.write("answers", "first\nsecond\n");
    const int kept = dup(STDIN_FILENO);
    const int answers = open("answers", O_RDONLY);
    ASSERT_GE(answers, 0);
    dup2(answers, STDIN_FILENO);
    EXPECT_EQ(host_system("cat > taken"), 0);
    char byte = 0;
    EXPECT_EQ(read(STDIN_FILENO, &byte, 1), 1);
    EXPECT_EQ(byte, 'f');
    dup2(kept, STDIN_FILENO);
    close(kept);
    close(answers);
    EXPECT_EQ(tmp.read("taken"), "");
}

TEST(Shell, IsRefusedWhenTheRunForbidsIt)
{
    temporary_directory tmp;
    host::run_settings().no_shell = true;
    testing::internal::CaptureStderr();
    EXPECT_EQ(host_system("touch made"), -1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "zentrik: other programs may not be started in this run: touch made\n");
    EXPECT_FALSE(tmp.has("made"));
}

TEST(Shell, IsTracedWithTheBell)
{
    temporary_directory tmp;
    host::trace_to("trace.txt");
    host_system("exit 2");
    Beep(440, 100);
    host::trace_to("");
    EXPECT_EQ(tmp.read("trace.txt"), "system \"exit 2\" -> 2\nBeep 440 100\n");
}

TEST(Memory, IsThatOfTheMachine)
{
    MEMORYSTATUS status = {};
    GlobalMemoryStatus(&status);
    EXPECT_EQ(status.dwLength, sizeof status);
    EXPECT_GT(status.dwTotalPhys, 1u << 20);
    EXPECT_LE(status.dwAvailPhys, status.dwTotalPhys);
    EXPECT_GE(status.dwTotalVirtual, status.dwTotalPhys);
    EXPECT_LE(status.dwMemoryLoad, 100u);
    GlobalMemoryStatus(nullptr);
}

} // namespace
