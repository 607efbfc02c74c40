// preview_marks.h: what is shown where a symbol's picture would be.
#pragma once

#include "hostapi/messages.h"

constexpr int PREVIEW_MARK_WIDTH = 114;
constexpr int PREVIEW_MARK_HEIGHT = 67;

// Black on white, made when first asked for and kept; 0 when the host makes none.
HBITMAP missing_file_mark();
HBITMAP no_preview_mark();
