// processes.h: other programs and libraries, by the calls of the platform that the module was laid out for.
#pragma once

#include "hostapi/windows.h"

using HANDLE = std::uint32_t;
using HINSTANCE = std::uint32_t; // also of a loaded library

// What a program is started with. Plain callers leave it zeroed; words stand where the platform keeps
// addresses and handles.
struct STARTUPINFO {
    DWORD cb;
    std::uint32_t lpReserved, lpDesktop, lpTitle;
    DWORD dwX, dwY, dwXSize, dwYSize, dwXCountChars, dwYCountChars, dwFillAttribute, dwFlags;
    std::uint16_t wShowWindow, cbReserved2;
    std::uint32_t lpReserved2;
    HANDLE hStdInput, hStdOutput, hStdError;
};
static_assert(sizeof(STARTUPINFO) == 68);

struct PROCESS_INFORMATION {
    HANDLE hProcess, hThread;
    DWORD dwProcessId, dwThreadId;
};

constexpr DWORD NORMAL_PRIORITY_CLASS = 32;
constexpr DWORD STILL_ACTIVE = 259;

extern "C" {
// Starts a program without waiting. With `application` null the program is the first word of
// `command_line`, parted from the others by the platform's rules for blanks and quotes; no shell reads
// it. Non-zero when it started; both handles of `process` go back with CloseHandle. `environment` is null:
// a program gets that of its host.
int CreateProcessA(const char* application, char* command_line, void* process_security, void* thread_security,
                   int inherit_handles, DWORD flags, void* environment, const char* directory,
                   const STARTUPINFO* startup, PROCESS_INFORMATION* process);
int CloseHandle(HANDLE handle);
// 0 when the program waits for input, or has no windows; 258 when the time (milliseconds) was over; all bits
// for a handle that isn't open.
DWORD WaitForInputIdle(HANDLE process, DWORD milliseconds);
// STILL_ACTIVE while it runs, unless the user asks for a break: nobody is to wait on then.
int GetExitCodeProcess(HANDLE process, DWORD* code);
// Ends early at the user's break.
DWORD SleepEx(DWORD milliseconds, int alertable);
DWORD GetCurrentThreadId();
// The command line of this program.
const char* GetCommandLineA();
// Replaces each %NAME% by its value; unknown names stay. The size needed, terminator counted; 0 on failure.
DWORD ExpandEnvironmentStringsA(const char* text, char* out, DWORD size);

// Libraries by name or path; 0 when there is none.
HINSTANCE LoadLibraryA(const char* name);
int FreeLibrary(HINSTANCE library);
// A function by name, or by ordinal as LIBRARY_ORDINAL gives it. Null when the library has none.
void* GetProcAddress(HINSTANCE library, const char* name);
}
inline const char* LIBRARY_ORDINAL(unsigned number)
{
    return reinterpret_cast<const char*>(static_cast<std::uintptr_t>(number));
}
