#include "shell/screen_marks.h"

void screen_marks_fill() {}
void screen_mark_set(int, const ads_point) {}
void screen_mark_clear(int) {}
void screen_marks_draw() {}
