// views.h: the view of the drawing, and the views that were before.
#pragma once

#include "host/commandline/answers.h"
#include "host/database/active_view.h"

namespace host::commandline
{

using view = db::active_view;
view view_of(document& doc);
bool is_view(const view& v); // false: a height that is not above zero, or what is no number
// Remembers the view before it. What is no view is not taken.
void set_view(document& doc, const view& to);
bool previous_view(document& doc); // false: there is none
// The view after what is seen at `from` has been moved to where `to` is.
view panned(view now, const point3& from, const point3& to);
// Everything in the current space, with a little room around it.
void view_all(document& doc);

} // namespace host::commandline
