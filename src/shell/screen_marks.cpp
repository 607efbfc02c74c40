#include "shell/screen_marks.h"

#include "hostapi/ads.h"
#include "shell/framework.h"

namespace
{

constexpr int MARK_COUNT = 2;
constexpr int VIEWPORT = 2;
// One less than the middle of 17: a mark stands a pixel to the lower right of it.
constexpr int OFFSET = 7;
constexpr int REPAINTED = 20; // pixels to each side of where a mark was drawn

// B blue, Y yellow, C cyan, G green, K black, S silver; "." is no pixel.
// clang-format off
constexpr const char* PICTURES[MARK_COUNT][MARK_SIZE] = {
    {
        ".......BBB.......",
        "......BYYYB......",
        "......BYYYB......",
        "......BYYYB......",
        ".......BYB.......",
        "......BBYBB......",
        ".....BCCBCCB.....",
        "....BCCCBCCCB....",
        "....BCBGBGBCB....",
        "....BCBGBGBCB....",
        "....BCBGBGBCB....",
        "....BCBGBGBCB....",
        ".....BBGBGBB.....",
        "......BGBGB......",
        "......BGBGB......",
        "......BGBGB......",
        "......BBBBB......",
    },
    {
        "......BBBBB......",
        ".....BYYYYYB.....",
        "....BYYKKKYYB....",
        "...BYYYKKKYYYB...",
        "...BYYYKKKYYYB...",
        "...BYYYKKKYYYB...",
        "...BYYYYKYYYYB...",
        "...BYYYYYYYYYB...",
        "...BYYYKKKYYYB...",
        "....BYYYKYYYB....",
        ".....BYYYYYB.....",
        "......BKKKB......",
        "......BSSSB......",
        "......BKKKB......",
        "......BSSSB......",
        "......BKKKB......",
        ".......BBB.......",
    },
};
// clang-format on

struct screen_mark {
    bool filled;
    bool set;
    ads_point at;
    int x, y; // pixels, where it was drawn last
    mark_pixels pixels;
};
screen_mark marks[MARK_COUNT];

screen_mark* find_mark(int number)
{
    return number >= 1 && number <= MARK_COUNT ? &marks[number - 1] : nullptr;
}

std::int32_t color_of(char letter)
{
    switch (letter) {
    case 'B':
        return 0xFF0000;
    case 'Y':
        return 0x00FFFF;
    case 'C':
        return 0xFFFF00;
    case 'G':
        return 0x00FF00;
    case 'K':
        return 0x000000;
    case 'S':
        return 0xC0C0C0;
    default:
        return NO_PIXEL;
    }
}

void draw_pixels(const screen_mark& mark, HDC context)
{
    for (int row = 0; row < MARK_SIZE; ++row)
        for (int column = 0; column < MARK_SIZE; ++column)
            if (mark.pixels[row][column] != NO_PIXEL)
                SetPixel(context, mark.x + column - OFFSET, mark.y + row - OFFSET,
                         static_cast<COLORREF>(mark.pixels[row][column]));
}

void draw(screen_mark& mark)
{
    int x = 0, y = 0;
    if (!mark.filled || !acedCoordFromWorldToPixel(VIEWPORT, mark.at, &x, &y))
        return;
    mark.x = x;
    mark.y = y;
    const HWND window = window_of(doc_window);
    if (const HDC context = GetDC(window)) {
        draw_pixels(mark, context);
        ReleaseDC(window, context);
    }
}

} // namespace

void screen_marks_fill()
{
    for (int m = 0; m < MARK_COUNT; ++m) {
        for (int row = 0; row < MARK_SIZE; ++row)
            for (int column = 0; column < MARK_SIZE; ++column)
                marks[m].pixels[row][column] = color_of(PICTURES[m][row][column]);
        marks[m].filled = true;
    }
}

const mark_pixels* screen_mark_pixels(int number)
{
    const screen_mark* mark = find_mark(number);
    return mark && mark->filled ? &mark->pixels : nullptr;
}

void screen_mark_set(int number, double x, double y)
{
    if (screen_mark* mark = find_mark(number)) {
        mark->at[0] = x;
        mark->at[1] = y;
        mark->at[2] = 0.0;
        mark->set = true;
    }
}

void screen_mark_clear(int number)
{
    screen_mark* mark = find_mark(number);
    if (!mark || !mark->set)
        return;
    mark->set = false;
    const RECT area{mark->x - REPAINTED, mark->y - REPAINTED, mark->x + REPAINTED, mark->y + REPAINTED};
    if (const HWND window = window_of(doc_window))
        InvalidateRect(window, &area, 1);
}

void screen_marks_draw()
{
    for (screen_mark& mark : marks)
        if (mark.set)
            draw(mark);
}

void screen_marks_forget()
{
    for (screen_mark& mark : marks)
        mark = {};
}
