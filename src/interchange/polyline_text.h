// polyline_text.h: a polyline as lines of a polyline file.
#pragma once

#include <string>

#include "drawing/vertex_chain.h"

struct line_form {
    int format;  // POLYLINE_FORMAT_
    bool with_z; // looked at in the own format only; the others always have z
};

// Puts the lines of one polyline behind `text`. A closed one comes out as an open line that begins at its
// own end. `file_color` goes into the header of the own format. The chain must have a vertex.
void add_polyline(std::string& text, const line_form& form, const pl_vertex* head, bool closed, int file_color);
