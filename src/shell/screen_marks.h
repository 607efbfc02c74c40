// screen_marks.h: two marks of 17 by 17 pixels at points of the drawing: 1 the rod person, 2 the lamp.
#pragma once

#include "hostapi/adsdef.h"

void screen_marks_fill(); // makes their pixel tables
void screen_mark_set(int mark, const ads_point at);
void screen_mark_clear(int mark); // asks the host to repaint where it stood
void screen_marks_draw();         // those that are set, on the document window
