// selection.h: selecting objects: the dialogue "Select objects:", and the ways of finding objects by place.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/commandline/command_io.h"
#include "host/database/geometry.h"

namespace host::commandline
{

using object_list = std::vector<db::object_id>;

// What an object must be to get into a set.
struct selection_rules {
    const resbuf* filter = nullptr;
    bool no_locked = false; // nothing on a locked layer
    bool single = false;    // one answer, which may be several objects
    bool every = false;     // a pick takes all that the pick box touches
    bool unused = false;    // nobody looks at the set: answers are taken, but nothing is searched for
};

// How a region takes objects.
enum class region { inside, crossing };

// Visible objects of the current space, newest first. A window is a rectangle of the screen.
object_list objects_in_window(document& doc, const point3& a, const point3& b, region how);
object_list objects_in_polygon(db::database& db, const std::vector<point3>& corners, region how);
object_list objects_on_fence(db::database& db, const std::vector<point3>& points);
object_list objects_touching(document& doc, const point3& point); // the pick box
object_list all_objects(const db::database& db);                  // of the current space, on thawed layers
object_list drawing_objects(const db::database& db);              // of every space, whatever the layer
// Those that the rules let through, in their order.
object_list admitted(const db::database& db, const object_list& found, const selection_rules& rules);

// The set that "previous" means; erased objects are left out.
object_list previous_selection(document& doc);
void set_previous_selection(document& doc, const object_list& objects);

// The dialogue. In the order of picking; becomes the previous selection when there is something in it.
task<object_list> select_objects(command_io& io, selection_rules rules = {},
                                 std::string prompt = "\nSelect objects: ");
// For commands that change what is selected: what lies on locked layers is told and left out. Gives
// an empty list when nothing is left.
task<object_list> select_to_change(command_io& io, selection_rules rules = {});

} // namespace host::commandline
