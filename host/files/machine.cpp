// hostapi/windows.h: the bell, the memory and other programs of the machine.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include <unistd.h>

#include "host/core/console.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/files/associations.h"
#include "host/files/paths.h"
#include "host/files/programs.h"
#include "hostapi/windows.h"

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

// Waits until it has ended; -1 when it can't be started.
int run_batch(const host::batch_call& batch)
{
    const auto program = host::program_for_batch(batch);
    if (!program)
        return -1;
    const pid_t started = host::start_program(program->file, program->words);
    if (started == 0) {
        host::complain(batch.file + ": " + host::program_path(program->file) +
                       " can't be started: " + std::strerror(errno));
        return -1;
    }
    return host::wait_for_end(started);
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
    if (!host::may_start_programs(command))
        return answer(-1);
    if (const auto batch = host::batch_of(command))
        return answer(run_batch(*batch));
    const pid_t shell = host::start_program("/bin/sh", {"sh", "-c", host::utf8_of(command)});
    if (shell == 0) {
        host::complain("the shell can't be started: " + std::string(std::strerror(errno)));
        return answer(-1);
    }
    return answer(host::wait_for_end(shell));
}
}
