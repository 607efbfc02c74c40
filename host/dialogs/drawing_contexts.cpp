// drawing_contexts.cpp: device contexts over the pixels of windows and bitmaps. What falls outside is clipped,
// whatever the numbers are: work is bounded by the size of the window.
#include "host/dialogs/drawing_contexts.h"

#include <cstring>
#include <map>

#include "host/core/trace.h"
#include "host/dialogs/windows.h"

namespace host::dialogs
{

namespace
{

constexpr COLORREF WHITE = 0xFFFFFF, BLACK = 0;
constexpr DWORD BLACKNESS = 0x00000042;
constexpr int LARGEST_BITMAP = 16'384; // pixels to a side
// What a new context holds in place of a bitmap and a font of programs.
constexpr HGDIOBJ OWN_BITMAP = 0xFFFFFF01u, OWN_FONT = 0xFFFFFF02u;

enum class object_kind { bitmap, font };

struct drawing_object {
    object_kind kind;
    surface pixels; // of a bitmap
    HDC held_by = 0;
};

struct context {
    HWND window = 0; // 0: in memory
    bool in_memory = false;
    HGDIOBJ bitmap = OWN_BITMAP, font = OWN_FONT;
    long drawn = 0; // pixels by SetPixel
};

struct held_things {
    std::map<HDC, context> contexts;
    std::map<HGDIOBJ, drawing_object> objects;
    std::uint32_t last = 0;
};

held_things& held()
{
    static held_things all;
    return all;
}

context* find_context(HDC number)
{
    const auto found = held().contexts.find(number);
    return found == held().contexts.end() ? nullptr : &found->second;
}

drawing_object* find_object(HGDIOBJ number)
{
    const auto found = held().objects.find(number);
    return found == held().objects.end() ? nullptr : &found->second;
}

// Null: the window is gone, or nothing is there to draw on.
surface* pixels_of(const context* c)
{
    if (!c)
        return nullptr;
    if (c->in_memory) {
        drawing_object* bitmap = find_object(c->bitmap);
        return bitmap ? &bitmap->pixels : nullptr;
    }
    window* found = find_window(c->window);
    return found ? &found->pixels : nullptr;
}

HDC add_context(context made)
{
    const HDC number = ++held().last;
    held().contexts.emplace(number, made);
    return number;
}

HGDIOBJ add_object(drawing_object made)
{
    const HGDIOBJ number = ++held().last;
    held().objects.emplace(number, std::move(made));
    return number;
}

void let_go(HGDIOBJ number)
{
    if (drawing_object* object = find_object(number))
        object->held_by = 0;
}

bool drop_context(HDC number, bool in_memory)
{
    const context* found = find_context(number);
    if (!found || found->in_memory != in_memory)
        return false;
    let_go(found->bitmap);
    let_go(found->font);
    held().contexts.erase(number);
    return true;
}

// Rows of whole 16-bit words, the high bit first; 1 is white.
surface picture_of(int width, int height, const void* data)
{
    surface made(width, height);
    const auto* bytes = static_cast<const unsigned char*>(data);
    const std::size_t row = (static_cast<std::size_t>(width) + 15) / 16 * 2;
    for (int y = 0; y < height; y++)
        for (int x = 0; x < width; x++) {
            const std::size_t at = static_cast<std::size_t>(y) * row + static_cast<std::size_t>(x) / 8;
            const bool is_set = bytes && (bytes[at] >> (7 - x % 8) & 1);
            made.put(x, y, is_set ? WHITE : BLACK);
        }
    return made;
}

// Where a stretch of pixels ends, or the picture does.
int end_within(int start, int size, int limit)
{
    return static_cast<int>(std::min<std::int64_t>(std::int64_t(start) + size, limit));
}

struct area {
    int x, y, width, height;
    bool is_empty() const { return width <= 0 || height <= 0; }
};

// The nearest pixel of the source stands for each of the target.
void stretch(surface& to, const area& target, const surface& from, const area& source)
{
    const auto low = [](int start) { return std::max(start, 0); };
    for (int y = low(target.y); y < end_within(target.y, target.height, to.height()); y++)
        for (int x = low(target.x); x < end_within(target.x, target.width, to.width()); x++) {
            const std::int64_t from_x = source.x + (std::int64_t(x) - target.x) * source.width / target.width;
            const std::int64_t from_y = source.y + (std::int64_t(y) - target.y) * source.height / target.height;
            if (from_x < 0 || from_y < 0 || from_x >= from.width() || from_y >= from.height())
                continue;
            const COLORREF color = from.at(static_cast<int>(from_x), static_cast<int>(from_y));
            if (color != NOT_DRAWN)
                to.put(x, y, color);
        }
}

void trace_area(host::trace_line& line, const context* c, const area& place)
{
    line.integer(c ? c->window : 0).integer(place.x).integer(place.y).integer(place.width);
    line.integer(place.height);
}

} // namespace

int context_count()
{
    return static_cast<int>(held().contexts.size());
}

int drawing_object_count()
{
    return static_cast<int>(held().objects.size());
}

} // namespace host::dialogs

using namespace host::dialogs;
using host::trace_line;

extern "C" {

HFONT CreateFontA(int, int, int, int, int, DWORD, DWORD, DWORD, DWORD, DWORD, DWORD, DWORD, DWORD, const char*)
{
    return add_object({object_kind::font, {}, 0});
}

HDC GetDC(HWND window)
{
    return find_window(window) ? add_context({window, false}) : 0;
}

int ReleaseDC(HWND window, HDC number)
{
    trace_line line("ReleaseDC");
    const context* found = find_context(number);
    line.integer(window).integer(found ? found->drawn : 0);
    const bool mine = found && found->window == window && drop_context(number, false);
    line.result(mine ? "1" : "0");
    return mine ? 1 : 0;
}

COLORREF SetPixel(HDC number, int x, int y, COLORREF color)
{
    context* found = find_context(number);
    surface* pixels = pixels_of(found);
    color &= WHITE;
    if (!pixels || !pixels->put(x, y, color))
        return NOT_DRAWN;
    found->drawn++;
    return color;
}

int PatBlt(HDC number, int x, int y, int width, int height, DWORD operation)
{
    trace_line line("PatBlt");
    const context* found = find_context(number);
    const area place{x, y, width, height};
    trace_area(line, found, place);
    line.integer(operation);
    surface* pixels = pixels_of(found);
    const bool can = pixels && (operation == WHITENESS || operation == BLACKNESS);
    if (can && !place.is_empty())
        pixels->fill({x, y, end_within(x, width, pixels->width()), end_within(y, height, pixels->height())},
                     operation == WHITENESS ? WHITE : BLACK);
    line.result(can ? "1" : "0");
    return can ? 1 : 0;
}

HBITMAP CreateBitmap(int width, int height, unsigned planes, unsigned bits, const void* data)
{
    if (width <= 0 || height <= 0 || width > LARGEST_BITMAP || height > LARGEST_BITMAP || planes != 1 ||
        bits != 1)
        return 0;
    return add_object({object_kind::bitmap, picture_of(width, height, data), 0});
}

HDC CreateCompatibleDC(HDC number)
{
    return number == 0 || find_context(number) ? add_context({0, true}) : 0;
}

int DeleteDC(HDC number)
{
    return drop_context(number, true) ? 1 : 0;
}

HGDIOBJ SelectObject(HDC number, HGDIOBJ object)
{
    context* found = find_context(number);
    drawing_object* what = find_object(object);
    if (!found || (!what && object != OWN_BITMAP && object != OWN_FONT))
        return 0;
    const bool is_bitmap = what ? what->kind == object_kind::bitmap : object == OWN_BITMAP;
    // A bitmap is in one context at a time, and only in those in memory.
    if (what && is_bitmap && (!found->in_memory || (what->held_by && what->held_by != number)))
        return 0;
    HGDIOBJ& slot = is_bitmap ? found->bitmap : found->font;
    const HGDIOBJ before = slot;
    let_go(before);
    slot = object;
    if (what)
        what->held_by = number;
    return before;
}

int DeleteObject(HGDIOBJ object)
{
    const drawing_object* found = find_object(object);
    // A context still draws with it.
    if (!found || found->held_by)
        return 0;
    held().objects.erase(object);
    return 1;
}

int StretchBlt(HDC to, int x, int y, int width, int height, HDC from, int from_x, int from_y, int from_width,
               int from_height, DWORD operation)
{
    trace_line line("StretchBlt");
    const context* target = find_context(to);
    const area place{x, y, width, height}, source{from_x, from_y, from_width, from_height};
    trace_area(line, target, place);
    line.integer(from_x).integer(from_y).integer(from_width).integer(from_height).integer(operation);
    surface* pixels = pixels_of(target);
    const surface* picture = pixels_of(find_context(from));
    const bool can = pixels && picture && operation == SRCCOPY && !place.is_empty() && !source.is_empty();
    if (can && pixels != picture)
        stretch(*pixels, place, *picture, source);
    else if (can)
        stretch(*pixels, place, surface(*picture), source);
    line.result(can ? "1" : "0");
    return can ? 1 : 0;
}
}
