// fake_windows.cpp: child windows, their pixels and timers.
#include <algorithm>

#include "hostapi/framework.h"
#include "tests/fakes/fake_host.h"

namespace
{

constexpr HWND FIRST_CHILD = 101;
HGDIOBJ selected = 0;
std::vector<std::string> bitmaps; // handle - 1

void note(const std::string& call)
{
    fake.calls.push_back(call);
}

std::string numbers(std::initializer_list<int> all)
{
    std::string text;
    for (const int one : all)
        text += " " + std::to_string(one);
    return text;
}

HWND child(std::size_t index)
{
    return index < fake.child_classes.size() ? FIRST_CHILD + static_cast<HWND>(index) : 0;
}

} // namespace

std::string bitmap_rows(HBITMAP bitmap)
{
    return bitmaps.at(bitmap - 1);
}

extern "C" {

HWND GetWindow(HWND window, unsigned what)
{
    return what == GW_CHILD ? (window == fake.active_window ? child(0) : 0) : child(window - FIRST_CHILD + 1);
}

int GetClassNameA(HWND window, char* name, int size)
{
    const std::string& text = fake.child_classes.at(window - FIRST_CHILD);
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(size - 1));
    text.copy(name, length);
    name[length] = '\0';
    return static_cast<int>(length);
}

int GetClientRect(HWND, RECT* area)
{
    *area = {0, 0, 120, 70};
    return 1;
}

HDC GetDC(HWND window)
{
    ++fake.open_contexts;
    return window;
}

int ReleaseDC(HWND, HDC)
{
    --fake.open_contexts;
    return 1;
}

HDC CreateCompatibleDC(HDC)
{
    ++fake.open_contexts;
    return 999;
}

int DeleteDC(HDC)
{
    --fake.open_contexts;
    return 1;
}

HGDIOBJ SelectObject(HDC, HGDIOBJ object)
{
    return std::exchange(selected, object);
}

HBITMAP CreateBitmap(int width, int height, unsigned, unsigned, const void* data)
{
    const int row_bytes = (width + 15) / 16 * 2;
    std::string rows;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int bits = static_cast<const unsigned char*>(data)[y * row_bytes + x / 8];
            rows += (bits >> (7 - x % 8) & 1) ? ' ' : '#';
        }
        rows += '\n';
    }
    bitmaps.push_back(rows);
    note("CreateBitmap" + numbers({width, height}));
    return static_cast<HBITMAP>(bitmaps.size());
}

int PatBlt(HDC context, int x, int y, int width, int height, DWORD operation)
{
    note("PatBlt " + std::to_string(context) + numbers({x, y, width, height}) +
         (operation == WHITENESS ? " white" : " other"));
    return 1;
}

int StretchBlt(HDC context, int x, int y, int width, int height, HDC, int from_x, int from_y, int from_width,
               int from_height, DWORD operation)
{
    note("StretchBlt " + std::to_string(context) + numbers({x, y, width, height}) + " <-" +
         numbers({from_x, from_y, from_width, from_height}) + (operation == SRCCOPY ? " copy " : " other ") +
         std::to_string(selected));
    return 1;
}

std::uintptr_t SetTimer(HWND window, std::uintptr_t id, unsigned milliseconds, void*)
{
    note("SetTimer" + numbers({int(window), int(id), int(milliseconds)}));
    return 1;
}

int KillTimer(HWND window, std::uintptr_t id)
{
    note("KillTimer" + numbers({int(window), int(id)}));
    return 1;
}

int acdbDisplayPreviewFromDwg(const char* path, HWND window, const COLORREF* background)
{
    note("picture " + std::string(path) + " " + std::to_string(window) + (background ? " background" : ""));
    return std::find(fake.pictures.begin(), fake.pictures.end(), path) != fake.pictures.end();
}
}
