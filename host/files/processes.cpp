// hostapi/processes.h: other programs and libraries.
#include "hostapi/processes.h"

extern "C" {

int CreateProcessA(const char*, char*, void*, void*, int, DWORD, void*, const char*, const STARTUPINFO*,
                   PROCESS_INFORMATION*)
{
    return 0;
}
int CloseHandle(HANDLE)
{
    return 0;
}
DWORD WaitForInputIdle(HANDLE, DWORD)
{
    return 0;
}
int GetExitCodeProcess(HANDLE, DWORD*)
{
    return 0;
}
DWORD SleepEx(DWORD, int)
{
    return 0;
}
DWORD GetCurrentThreadId()
{
    return 1;
}
const char* GetCommandLineA()
{
    return "";
}
DWORD ExpandEnvironmentStringsA(const char*, char*, DWORD)
{
    return 0;
}
HINSTANCE LoadLibraryA(const char*)
{
    return 0;
}
int FreeLibrary(HINSTANCE)
{
    return 0;
}
void* GetProcAddress(HINSTANCE, const char*)
{
    return nullptr;
}
}
