// screen_marks.h: two marks of 17 by 17 pixels at points of the drawing: 1 the rod person, 2 the lamp. They
// are drawn over the window and are no part of the drawing.
#pragma once

#include "hostapi/messages.h"

constexpr int MARK_SIZE = 17;
constexpr std::int32_t NO_PIXEL = -1;                   // the window shows through
using mark_pixels = std::int32_t[MARK_SIZE][MARK_SIZE]; // rows from the top; colours as COLORREF

// Makes the pixel tables; before that nothing is drawn.
void screen_marks_fill();
// The table of a mark; null before that.
const mark_pixels* screen_mark_pixels(int mark);

// Numbers other than 1 and 2 do nothing.
void screen_mark_set(int mark, double x, double y); // world point, z is 0
void screen_mark_clear(int mark);                   // when set; asks the host to repaint where it stood

void screen_marks_draw();   // those that are set, on the drawing's window
void screen_marks_forget(); // both, tables too, without a repaint
