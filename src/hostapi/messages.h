// messages.h: windows as numbers, their messages, hooks, timers and pixels, by the calls of the platform
// that the module was laid out for. Main thread only.
#pragma once

#include "hostapi/processes.h"

using HHOOK = std::uint32_t;
using HDC = std::uint32_t;
using HGDIOBJ = std::uint32_t;
using HFONT = std::uint32_t;
using HBITMAP = std::uint32_t;
using LRESULT = std::int64_t;
using COLORREF = std::uint32_t; // 0x00BBGGRR

struct RECT {
    std::int32_t left, top, right, bottom;
};
struct MSG {
    HWND hwnd;
    unsigned message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    std::int32_t x, y;
};
// What a WH_CALLWNDPROC hook is shown.
struct CWPSTRUCT {
    LPARAM lParam;
    WPARAM wParam;
    unsigned message;
    HWND hwnd;
};
// Data handed to another window with WM_COPYDATA.
struct COPYDATASTRUCT {
    std::uintptr_t dwData;
    DWORD cbData;
    const void* lpData;
};

constexpr unsigned WM_DESTROY = 2;
constexpr unsigned WM_PAINT = 15;
constexpr unsigned WM_ERASEBKGND = 20;
constexpr unsigned WM_SETFONT = 48;
constexpr unsigned WM_COPYDATA = 74;
constexpr unsigned WM_KEYDOWN = 256;
constexpr unsigned WM_TIMER = 275;
constexpr WPARAM VK_F1 = 112;

constexpr int WH_MSGFILTER = -1;  // sees the MSG of a dialog's or command line's loop before it goes on
constexpr int WH_CALLWNDPROC = 4; // sees each message (CWPSTRUCT) on its way to a window
constexpr unsigned GW_HWNDNEXT = 2;
constexpr unsigned GW_CHILD = 5;
constexpr DWORD WHITENESS = 0x00FF0062;
constexpr DWORD SRCCOPY = 0x00CC0020;
constexpr int FW_NORMAL = 400;
constexpr DWORD FIXED_PITCH = 1;

using HOOKPROC = LRESULT (*)(int code, WPARAM wparam, LPARAM lparam);

extern "C" {
// Hooks of a kind are called newest first; each calls the next one with CallNextHookEx, whose answer is
// that of the last (0). CallNextHookEx takes 0 for the hook that is running. An answer other than 0 of a
// WH_MSGFILTER hook swallows the message.
HHOOK SetWindowsHookExA(int kind, HOOKPROC hook, HINSTANCE module, DWORD thread);
int UnhookWindowsHookEx(HHOOK hook);
LRESULT CallNextHookEx(HHOOK hook, int code, WPARAM wparam, LPARAM lparam);

// Sends to a window's procedure at once; posted messages wait for the next loop.
LRESULT SendMessageA(HWND window, unsigned message, WPARAM wparam, LPARAM lparam);
int PostMessageA(HWND window, unsigned message, WPARAM wparam, LPARAM lparam);
// WM_TIMER comes to the window, through the WH_MSGFILTER hooks, each time the milliseconds have passed, until
// KillTimer; or the procedure (HWND, unsigned, std::uintptr_t, DWORD) is called. The timer's number, 0: no such
// window.
std::uintptr_t SetTimer(HWND window, std::uintptr_t id, unsigned milliseconds, void* procedure);
int KillTimer(HWND window, std::uintptr_t id);

HWND SetFocus(HWND window);                 // the window that had it before
HWND GetDlgItem(HWND parent, int id);       // 0: there is no such child
HWND GetWindow(HWND window, unsigned what); // GW_CHILD: the first child; GW_HWNDNEXT: the one behind
int GetClassNameA(HWND window, char* name, int size);
int GetClientRect(HWND window, RECT* area);
// A child window of one of the platform's own classes, as "STATIC". `id` stands where a menu would.
HWND CreateWindowExA(DWORD extended_style, const char* window_class, const char* text, DWORD style, int x,
                     int y, int width, int height, HWND parent, std::uint32_t id, HINSTANCE module, void* data);
int DestroyWindow(HWND window);
// Asks for WM_PAINT of an area (null: all) at the next loop.
int InvalidateRect(HWND window, const RECT* area, int erase);

HFONT CreateFontA(int height, int width, int escapement, int orientation, int weight, DWORD italic,
                  DWORD underline, DWORD strike_out, DWORD character_set, DWORD out_precision,
                  DWORD clip_precision, DWORD quality, DWORD pitch_and_family, const char* face);
HDC GetDC(HWND window); // goes back with ReleaseDC
int ReleaseDC(HWND window, HDC context);
COLORREF SetPixel(HDC context, int x, int y, COLORREF color);
int PatBlt(HDC context, int x, int y, int width, int height, DWORD operation);
// A picture of one bit a pixel (1 white), rows of whole 16-bit words, high bit first.
HBITMAP CreateBitmap(int width, int height, unsigned planes, unsigned bits, const void* data);
HDC CreateCompatibleDC(HDC context); // holds the bitmap that SelectObject puts in
int DeleteDC(HDC context);
HGDIOBJ SelectObject(HDC context, HGDIOBJ object); // what was there before
int DeleteObject(HGDIOBJ object);
int StretchBlt(HDC to, int x, int y, int width, int height, HDC from, int from_x, int from_y, int from_width,
               int from_height, DWORD operation);
}
