// screen.h: what programs draw on the screen beside the drawing, and the view's place in pixels.
#pragma once

#include <vector>

#include "host/commandline/answers.h"

namespace host
{
class document;
}

namespace host::commandline
{

constexpr int COMPLEMENT_COLOR = -1;

struct screen_vector {
    point3 from, to;
    int color = 7; // display colour, COMPLEMENT_COLOR: the complement of what it crosses
    bool highlighted = false;
};

// The temporary vectors of a drawing, in the order of drawing. One in the complement colour that is drawn a
// second time, from either end, is gone. They lie in the drawing, not on the glass: ZOOM, PAN and DVIEW keep
// them, so that a program can still wipe its own; REDRAW, REGEN and acedRedraw of everything clear them. Each
// drawing has its own, also while another one is current.
const std::vector<screen_vector>& screen_vectors(document& doc);
void clear_screen_vectors(document& doc);

// Which of the two screens a program has called to the front; one for all drawings.
struct text_screen {
    bool is_in_front = false;
    int pages = 0; // how often a page was begun: what is older is not on the page
};
const text_screen& shown_text_screen();

} // namespace host::commandline
