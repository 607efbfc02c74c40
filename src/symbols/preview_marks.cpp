// preview_marks.cpp: each mark is two words in a frame, set from a small alphabet of 5 by 7 dots, each dot two
// pixels wide and high.
#include "symbols/preview_marks.h"

#include <array>
#include <cstring>

namespace
{

constexpr int DOT = 2;
constexpr int LETTER_COLUMNS = 5, LETTER_ROWS = 7;
constexpr int LETTER_STEP = (LETTER_COLUMNS + 1) * DOT;
constexpr int FIRST_LINE = 17, SECOND_LINE = 37; // tops, in pixels
constexpr int FRAME_MARGIN = 4;
constexpr int BYTES_A_ROW = (PREVIEW_MARK_WIDTH + 15) / 16 * 2;

struct letter {
    char character;
    unsigned char rows[LETTER_ROWS]; // the leftmost dot is the highest of five bits
};
constexpr letter ALPHABET[] = {
    {'E', {0x1F, 0x10, 0x10, 0x1E, 0x10, 0x10, 0x1F}}, {'F', {0x1F, 0x10, 0x10, 0x1E, 0x10, 0x10, 0x10}},
    {'G', {0x0E, 0x11, 0x10, 0x17, 0x11, 0x11, 0x0E}}, {'I', {0x0E, 0x04, 0x04, 0x04, 0x04, 0x04, 0x0E}},
    {'L', {0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x1F}}, {'M', {0x11, 0x1B, 0x15, 0x15, 0x11, 0x11, 0x11}},
    {'N', {0x11, 0x19, 0x15, 0x13, 0x11, 0x11, 0x11}}, {'O', {0x0E, 0x11, 0x11, 0x11, 0x11, 0x11, 0x0E}},
    {'P', {0x1E, 0x11, 0x11, 0x1E, 0x10, 0x10, 0x10}}, {'R', {0x1E, 0x11, 0x11, 0x1E, 0x14, 0x12, 0x11}},
    {'S', {0x0F, 0x10, 0x10, 0x0E, 0x01, 0x01, 0x1E}}, {'V', {0x11, 0x11, 0x11, 0x11, 0x11, 0x0A, 0x04}},
    {'W', {0x11, 0x11, 0x11, 0x15, 0x15, 0x1B, 0x11}},
};

using mark_pixels = std::array<unsigned char, static_cast<std::size_t>(BYTES_A_ROW) * PREVIEW_MARK_HEIGHT>;

void blacken(mark_pixels& pixels, int x, int y, int width, int height)
{
    for (int row = y; row < y + height; ++row)
        for (int column = x; column < x + width; ++column)
            pixels[static_cast<std::size_t>(row * BYTES_A_ROW + column / 8)] &=
                static_cast<unsigned char>(~(0x80 >> column % 8));
}

void write_letter(mark_pixels& pixels, int x, int y, char character)
{
    for (const letter& one : ALPHABET) {
        if (one.character != character)
            continue;
        for (int row = 0; row < LETTER_ROWS; ++row)
            for (int column = 0; column < LETTER_COLUMNS; ++column)
                if (one.rows[row] >> (LETTER_COLUMNS - 1 - column) & 1)
                    blacken(pixels, x + column * DOT, y + row * DOT, DOT, DOT);
    }
}

void write_line(mark_pixels& pixels, int y, const char* word)
{
    const int width = static_cast<int>(std::strlen(word)) * LETTER_STEP - DOT;
    int x = (PREVIEW_MARK_WIDTH - width) / 2;
    for (; *word; ++word, x += LETTER_STEP)
        write_letter(pixels, x, y, *word);
}

void draw_frame(mark_pixels& pixels)
{
    constexpr int WIDTH = PREVIEW_MARK_WIDTH - 2 * FRAME_MARGIN,
                  HEIGHT = PREVIEW_MARK_HEIGHT - 2 * FRAME_MARGIN;
    constexpr int RIGHT = FRAME_MARGIN + WIDTH - 1, BOTTOM = FRAME_MARGIN + HEIGHT - 1;
    blacken(pixels, FRAME_MARGIN, FRAME_MARGIN, WIDTH, 1);
    blacken(pixels, FRAME_MARGIN, BOTTOM, WIDTH, 1);
    blacken(pixels, FRAME_MARGIN, FRAME_MARGIN, 1, HEIGHT);
    blacken(pixels, RIGHT, FRAME_MARGIN, 1, HEIGHT);
}

HBITMAP mark_of(const char* first, const char* second)
{
    mark_pixels pixels;
    pixels.fill(0xFF);
    draw_frame(pixels);
    write_line(pixels, FIRST_LINE, first);
    write_line(pixels, SECOND_LINE, second);
    return CreateBitmap(PREVIEW_MARK_WIDTH, PREVIEW_MARK_HEIGHT, 1, 1, pixels.data());
}

} // namespace

HBITMAP missing_file_mark()
{
    static HBITMAP mark = 0;
    if (!mark)
        mark = mark_of("FILE", "MISSING");
    return mark;
}

HBITMAP no_preview_mark()
{
    static HBITMAP mark = 0;
    if (!mark)
        mark = mark_of("NO", "PREVIEW");
    return mark;
}
