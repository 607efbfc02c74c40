// hostapi/processes.h: processes and their handles.
#include "hostapi/processes.h"

#include <algorithm>
#include <map>
#include <memory>
#include <thread>

#include "host/core/console.h"
#include "host/core/session.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/files/command_line.h"
#include "host/files/paths.h"
#include "host/files/processes.h"
#include "host/files/programs.h"

namespace
{

// What the platform tells of a program that a break ended.
constexpr DWORD STATUS_CONTROL_C_EXIT = 0xC000013Au;
constexpr DWORD WAIT_FAILED = 0xFFFFFFFFu;
constexpr DWORD LONGEST_SLICE = 20; // milliseconds between two looks at the user's break

struct process {
    pid_t id = 0;
    bool ended = false;
    DWORD code = STILL_ACTIVE;

    void look()
    {
        if (ended)
            return;
        if (const auto status = host::ended_with(id)) {
            ended = true;
            code = static_cast<DWORD>(*status);
        }
    }
    process() = default;
    process(const process&) = delete;
    process& operator=(const process&) = delete;
    // A program that nobody asks after any more still has to be waited for when it ends.
    ~process()
    {
        look();
        if (!ended && id != 0)
            host::leave_program(id);
    }
};

std::map<HANDLE, std::shared_ptr<process>>& handles()
{
    static std::map<HANDLE, std::shared_ptr<process>> open;
    return open;
}

process* process_of(HANDLE handle)
{
    const auto found = handles().find(handle);
    return found == handles().end() ? nullptr : found->second.get();
}

HANDLE new_handle(const std::shared_ptr<process>& held)
{
    static HANDLE last = 0;
    last += 4; // as on the platform, multiples of four
    handles()[last] = held;
    return last;
}

} // namespace

std::size_t host::open_process_handles()
{
    return handles().size();
}

extern "C" {

int CreateProcessA(const char* application, char* command_line, void* process_security, void* thread_security,
                   int inherit_handles, DWORD flags, void* environment, const char* directory,
                   const STARTUPINFO*, PROCESS_INFORMATION* out)
{
    host::trace_line line("CreateProcessA");
    const auto given = [](const void* pointer) { return pointer ? "given" : "nil"; };
    line.text(application).text(command_line).word(given(process_security)).word(given(thread_security));
    line.integer(inherit_handles).integer(flags).word(given(environment)).text(directory);
    const auto answer = [&line](int started) {
        line.result(std::to_string(started));
        return started;
    };
    if (out)
        *out = {};
    if (!out || environment || (!application && !command_line))
        return answer(0);
    const std::string text = command_line ? command_line : application;
    if (!host::may_start_programs(text))
        return answer(0);
    const auto what = application ? host::program_for(application, text) : host::program_for_line(text);
    if (!what)
        return answer(0);
    const pid_t id = host::start_program(what->file, what->words, directory ? host::real_path(directory) : "");
    if (id == 0)
        return answer(0);
    const auto held = std::make_shared<process>();
    held->id = id;
    out->hProcess = new_handle(held);
    out->hThread = new_handle(held);
    out->dwProcessId = static_cast<DWORD>(id);
    out->dwThreadId = static_cast<DWORD>(id);
    return answer(1);
}

int CloseHandle(HANDLE handle)
{
    return handles().erase(handle) == 1 ? 1 : 0;
}

// No program of this host tells when it waits for input, so none is waited for.
DWORD WaitForInputIdle(HANDLE handle, DWORD)
{
    return process_of(handle) ? 0 : WAIT_FAILED;
}

int GetExitCodeProcess(HANDLE handle, DWORD* code)
{
    process* held = process_of(handle);
    if (!held || !code)
        return 0;
    held->look();
    *code = held->code;
    // After a break nobody waits on: the program goes its own way.
    if (!held->ended && host::break_requested())
        *code = STATUS_CONTROL_C_EXIT;
    return 1;
}

DWORD SleepEx(DWORD milliseconds, int)
{
    using namespace std::chrono;
    const auto end = steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (!host::break_requested()) {
        const auto left = ceil<std::chrono::milliseconds>(end - steady_clock::now()).count();
        if (left <= 0)
            break;
        std::this_thread::sleep_for(std::chrono::milliseconds(std::min<long long>(left, LONGEST_SLICE)));
    }
    return 0;
}

// The host has one thread that programs know of.
DWORD GetCurrentThreadId()
{
    return 1;
}
}
