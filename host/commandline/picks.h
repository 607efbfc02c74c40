// picks.h: which object a point or a handle stands for, in the current space.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "host/commandline/answers.h"
#include "host/database/database.h"

namespace host::commandline
{

// Half the side of the pick box in drawing units: PICKBOX pixels at the view's scale.
double pick_reach(document& doc);
// On a layer that is on and thawed, and not invisible itself.
bool is_visible(const db::database& db, db::object_id id);
bool is_on_locked_layer(const db::database& db, db::object_id id);
// The nearest visible object of the current space within the pick box; of equals the newest. 0: none.
db::object_id object_at(document& doc, const point3& point);
// "#1F", "#last": an object of the current space that is not erased, for a part of one (a vertex, an attribute)
// the whole; 0: none. Case doesn't count.
db::object_id object_by_text(document& doc, std::string_view text);
db::object_id last_object(const db::database& db); // newest of the current space; 0: none
// A place on the object, for picks that name no point.
point3 some_point_on(const db::database& db, db::object_id id);
// Id of an entity name of this drawing that is not erased; 0: none.
db::object_id object_of_name(const db::database& db, const std::int32_t* name);

} // namespace host::commandline
