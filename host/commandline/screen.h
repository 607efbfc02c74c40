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

// The temporary vectors of a drawing, until its next redraw. One in the complement colour that is drawn a
// second time is gone.
const std::vector<screen_vector>& screen_vectors(document& doc);
void clear_screen_vectors(document& doc);

} // namespace host::commandline
