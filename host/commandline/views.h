// views.h: the view of the drawing, and the views that were before.
#pragma once

#include "host/commandline/answers.h"
#include "host/database/active_view.h"

namespace host::commandline
{

using view = db::active_view;
view view_of(document& doc);
// Remembers the view before it. What is no view (a height that is not above zero, no numbers) is not taken.
void set_view(document& doc, const view& to);
bool previous_view(document& doc); // false: there is none
// The view after what is seen at `from` has been moved to where `to` is.
view panned(view now, const point3& from, const point3& to);
// Everything in the current space, with a little room around it.
void view_all(document& doc);

} // namespace host::commandline
