// hostapi/windows.h: the bell, the memory and other programs of the machine.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/core/console.h"
#include "host/core/session.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/files/paths.h"
#include "hostapi/windows.h"

extern char** environ;

namespace
{

// An amount of /proc/meminfo in bytes, 0 when it isn't told.
std::uint64_t amount(const std::string& table, const std::string& name)
{
    const std::size_t at = table.find("\n" + name + ":");
    if (at == std::string::npos)
        return 0;
    unsigned long long kilobytes = 0;
    if (std::sscanf(table.c_str() + at + name.size() + 2, "%llu", &kilobytes) != 1)
        return 0;
    return kilobytes * 1024;
}

} // namespace

extern "C" {

int Beep(DWORD frequency, DWORD duration)
{
    host::trace_line("Beep").integer(frequency).integer(duration);
    if (isatty(STDERR_FILENO))
        std::fputc('\a', stderr);
    return 1;
}

void GlobalMemoryStatus(MEMORYSTATUS* status)
{
    if (!status)
        return;
    const std::string table = "\n" + host::read_whole("/proc/meminfo").value_or("");
    const std::uint64_t swap = amount(table, "SwapTotal"), free_swap = amount(table, "SwapFree");
    status->dwLength = sizeof *status;
    status->dwTotalPhys = amount(table, "MemTotal");
    status->dwAvailPhys = amount(table, "MemAvailable");
    status->dwMemoryLoad = status->dwTotalPhys == 0
                               ? 0
                               : static_cast<DWORD>(100 - 100 * status->dwAvailPhys / status->dwTotalPhys);
    // What can be asked for at most is memory and swap together, as the platform's page file is.
    status->dwTotalPageFile = status->dwTotalPhys + swap;
    status->dwAvailPageFile = status->dwAvailPhys + free_swap;
    status->dwTotalVirtual = status->dwTotalPageFile;
    status->dwAvailVirtual = status->dwAvailPageFile;
}

int host_system(const char* command)
{
    host::trace_line line("system");
    line.text(command);
    const auto answer = [&line](int status) {
        line.result(std::to_string(status));
        return status;
    };
    if (!command)
        return answer(-1);
    if (host::run_settings().no_shell) {
        host::complain("other programs may not be started in this run: " + std::string(command));
        return answer(-1);
    }
    host::flush_history();
    const std::string text = host::utf8_of(command);
    const char* const arguments[] = {"sh", "-c", text.c_str(), nullptr};
    pid_t child = 0;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    // Answers that are waiting are the host's: only at a terminal may a program read on.
    if (!isatty(STDIN_FILENO))
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    const int failure =
        posix_spawn(&child, "/bin/sh", &actions, nullptr, const_cast<char* const*>(arguments), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) {
        host::complain("the shell can't be started: " + std::string(std::strerror(failure)));
        return answer(-1);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            return answer(-1);
    // As a shell tells it: the number of the signal that ended the program, and 128.
    return answer(WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status));
}
}
