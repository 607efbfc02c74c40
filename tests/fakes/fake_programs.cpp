// The host's calls for other programs, libraries and help, noted in fake.calls.
#include <cstring>

#include "hostapi/ads.h"
#include "hostapi/framework.h"
#include "hostapi/messages.h"
#include "hostapi/windows.h"
#include "tests/fakes/fake_host.h"

namespace
{

constexpr HANDLE PROCESS = 11, THREAD = 12;

void note(const std::string& call)
{
    fake.calls.push_back(call);
}

bool is_zeroed(const STARTUPINFO* startup)
{
    const STARTUPINFO zeroed{};
    return startup && std::memcmp(startup, &zeroed, sizeof zeroed) == 0;
}

std::string text_of(const char* text)
{
    return text ? std::string(text) : "nil";
}

} // namespace

extern "C" {

int CreateProcessA(const char* application, char* command_line, void* process_security, void* thread_security,
                   int inherit_handles, DWORD flags, void* environment, const char* directory,
                   const STARTUPINFO* startup, PROCESS_INFORMATION* process)
{
    const bool plain = !application && !process_security && !thread_security && !inherit_handles &&
                       !environment && !directory && is_zeroed(startup);
    note("CreateProcessA [" + text_of(command_line) + "] " + std::to_string(flags) +
         (plain ? "" : " not plain"));
    if (!fake.programs_start)
        return 0;
    *process = PROCESS_INFORMATION{PROCESS, THREAD, 1, 2};
    fake.open_programs += 2;
    return 1;
}

int CloseHandle(HANDLE handle)
{
    if (handle == PROCESS || handle == THREAD)
        --fake.open_programs;
    return 1;
}

DWORD WaitForInputIdle(HANDLE process, DWORD milliseconds)
{
    note("WaitForInputIdle " + std::to_string(process) + " " + std::to_string(milliseconds));
    return 0;
}

int GetExitCodeProcess(HANDLE process, DWORD* code)
{
    note("GetExitCodeProcess " + std::to_string(process));
    if (fake.polls_until_the_end < 0) // the program can't be asked
        return 0;
    *code = fake.polls_until_the_end == 0 ? 3 : STILL_ACTIVE;
    if (fake.polls_until_the_end > 0)
        --fake.polls_until_the_end;
    return 1;
}

DWORD SleepEx(DWORD milliseconds, int alertable)
{
    note("SleepEx " + std::to_string(milliseconds) + " " + std::to_string(alertable));
    return 0;
}

DWORD GetCurrentThreadId()
{
    return 1;
}

const char* GetCommandLineA()
{
    return fake.started_as.c_str();
}

DWORD ExpandEnvironmentStringsA(const char* text, char* out, DWORD size)
{
    std::string expanded = text;
    for (const auto& [name, value] : fake.environment) {
        const std::string wanted = "%" + name + "%";
        for (std::size_t at; (at = expanded.find(wanted)) != std::string::npos;)
            expanded.replace(at, wanted.size(), value);
    }
    const DWORD needed = static_cast<DWORD>(expanded.size() + 1);
    if (needed <= size)
        std::memcpy(out, expanded.c_str(), needed);
    return needed;
}

HINSTANCE LoadLibraryA(const char* name)
{
    note("LoadLibraryA " + text_of(name));
    const auto found = fake.libraries.find(name);
    return found == fake.libraries.end()
               ? 0
               : static_cast<HINSTANCE>(std::distance(fake.libraries.begin(), found) + 1);
}

int FreeLibrary(HINSTANCE)
{
    return 1;
}

void* GetProcAddress(HINSTANCE library, const char* name)
{
    const auto ordinal = static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(name));
    note("GetProcAddress " + std::to_string(ordinal));
    auto held = fake.libraries.begin();
    std::advance(held, library - 1);
    const auto found = held->second.find(ordinal);
    return found == held->second.end() ? nullptr : found->second;
}

int host_system(const char* command)
{
    note("system " + text_of(command));
    return 0;
}

int acedHelp(const char* file, const char* topic, int command)
{
    note("acedHelp " + text_of(file) + " [" + text_of(topic) + "] " + std::to_string(command));
    return RTNORM;
}

HWND adsw_acadMainWnd()
{
    return 5;
}

LRESULT SendMessageA(HWND window, unsigned message, WPARAM, LPARAM lparam)
{
    std::string call = "SendMessageA " + std::to_string(window) + " " + std::to_string(message);
    if (message == WM_COPYDATA) {
        const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(lparam);
        call += " [" + std::string(static_cast<const char*>(data->lpData)) + "]";
        if (data->dwData == 1)
            fake.typed.push_back({static_cast<const char*>(data->lpData), data->cbData});
    }
    note(call);
    return 0;
}
}
