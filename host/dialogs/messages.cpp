// hostapi/messages.h: windows, their messages, hooks, timers and pixels.
#include "hostapi/messages.h"

extern "C" {

HHOOK SetWindowsHookExA(int, HOOKPROC, HINSTANCE, DWORD)
{
    return 0;
}
int UnhookWindowsHookEx(HHOOK)
{
    return 0;
}
LRESULT CallNextHookEx(HHOOK, int, WPARAM, LPARAM)
{
    return 0;
}
LRESULT SendMessageA(HWND, unsigned, WPARAM, LPARAM)
{
    return 0;
}
int PostMessageA(HWND, unsigned, WPARAM, LPARAM)
{
    return 0;
}
std::uintptr_t SetTimer(HWND, std::uintptr_t, unsigned, void*)
{
    return 0;
}
int KillTimer(HWND, std::uintptr_t)
{
    return 0;
}
HWND SetFocus(HWND)
{
    return 0;
}
HWND GetDlgItem(HWND, int)
{
    return 0;
}
HWND GetWindow(HWND, unsigned)
{
    return 0;
}
int GetClassNameA(HWND, char*, int)
{
    return 0;
}
int GetClientRect(HWND, RECT*)
{
    return 0;
}
HWND CreateWindowExA(DWORD, const char*, const char*, DWORD, int, int, int, int, HWND, std::uint32_t, HINSTANCE,
                     void*)
{
    return 0;
}
int DestroyWindow(HWND)
{
    return 0;
}
int InvalidateRect(HWND, const RECT*, int)
{
    return 0;
}
HFONT CreateFontA(int, int, int, int, int, DWORD, DWORD, DWORD, DWORD, DWORD, DWORD, DWORD, DWORD, const char*)
{
    return 0;
}
HDC GetDC(HWND)
{
    return 0;
}
int ReleaseDC(HWND, HDC)
{
    return 0;
}
COLORREF SetPixel(HDC, int, int, COLORREF)
{
    return 0;
}
int PatBlt(HDC, int, int, int, int, DWORD)
{
    return 0;
}
HBITMAP CreateBitmap(int, int, unsigned, unsigned, const void*)
{
    return 0;
}
HDC CreateCompatibleDC(HDC)
{
    return 0;
}
int DeleteDC(HDC)
{
    return 0;
}
HGDIOBJ SelectObject(HDC, HGDIOBJ)
{
    return 0;
}
int DeleteObject(HGDIOBJ)
{
    return 0;
}
int StretchBlt(HDC, int, int, int, int, HDC, int, int, int, int, DWORD)
{
    return 0;
}
}
