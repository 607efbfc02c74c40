// windows.h: plain system calls of the platform that the module was laid out for. Handles are
// 32-bit numbers given out by the host; 0 is none.
#pragma once

#include <cstdint>

using HWND = std::uint32_t;
using HKEY = std::uint32_t;
using DWORD = std::uint32_t;
using LPARAM = std::int64_t;
using WPARAM = std::uint64_t;

constexpr unsigned MB_OK = 0x0;
constexpr unsigned MB_YESNOCANCEL = 0x3;
constexpr unsigned MB_YESNO = 0x4;
constexpr unsigned MB_ICONWARNING = 0x30;
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDYES = 6;
constexpr int IDNO = 7;

constexpr HKEY HKEY_CLASSES_ROOT = 0x80000000u;
constexpr HKEY HKEY_CURRENT_USER = 0x80000001u;
constexpr HKEY HKEY_LOCAL_MACHINE = 0x80000002u;
constexpr DWORD KEY_READ = 0x20019;
constexpr DWORD REG_SZ = 1;
constexpr DWORD REG_EXPAND_SZ = 2;
constexpr DWORD REG_BINARY = 3;
constexpr DWORD REG_DWORD = 4;
constexpr long ERROR_SUCCESS = 0;
constexpr long ERROR_FILE_NOT_FOUND = 2;
constexpr long ERROR_MORE_DATA = 234;
constexpr long ERROR_NO_MORE_ITEMS = 259;

struct MEMORYSTATUS {
    DWORD dwLength;
    DWORD dwMemoryLoad;
    std::uint64_t dwTotalPhys, dwAvailPhys;
    std::uint64_t dwTotalPageFile, dwAvailPageFile;
    std::uint64_t dwTotalVirtual, dwAvailVirtual;
};

extern "C" {
// Asks in a box with the buttons that `style` names; the button's id.
int MessageBoxA(HWND owner, const char* text, const char* title, unsigned style);
int SetWindowTextA(HWND window, const char* text);
HWND GetActiveWindow();
// Frequency in hertz, duration in milliseconds.
int Beep(DWORD frequency, DWORD duration);
void GlobalMemoryStatus(MEMORYSTATUS* status);
// Runs a command line and waits; its exit status.
int host_system(const char* command);

long RegOpenKeyExA(HKEY parent, const char* path, DWORD options, DWORD access, HKEY* key);
long RegCloseKey(HKEY key);
// `size` is the room in bytes and becomes the size of the value, its terminator counted for texts.
long RegQueryValueExA(HKEY key, const char* name, DWORD* reserved, DWORD* type, unsigned char* data,
                      DWORD* size);
long RegEnumKeyExA(HKEY key, DWORD index, char* name, DWORD* name_size);
long RegEnumValueA(HKEY key, DWORD index, char* name, DWORD* name_size, DWORD* type, unsigned char* data,
                   DWORD* size);
}
