// views.h: the view of the drawing: its middle and height, and the views that were before.
#pragma once

#include "host/commandline/answers.h"

namespace host::commandline
{

struct view {
    double x = 0.0, y = 0.0; // the middle
    double height = 1.0;
};
view view_of(document& doc);
// Remembers the view before it. Heights that are not above zero are not taken.
void set_view(document& doc, const view& to);
bool previous_view(document& doc); // false: there is none
// Everything in the current space, with a little room around it.
void view_all(document& doc);

} // namespace host::commandline
