// picks.cpp: picks by point and by name.
#include "host/commandline/picks.h"

#include <cmath>
#include <cstdlib>

#include "host/commandline/screen_window.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/database/entities.h"
#include "host/database/geometry.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

const db::group_list* layer_of(const db::database& db, db::object_id id)
{
    const db::object_id layer = db.record("LAYER", db.text_of(db.at(id).groups, 8));
    return layer ? &db.at(layer).groups : nullptr;
}

// What a pick of a part takes: the polyline of a vertex, the block reference of an attribute.
db::object_id main_object(const db::database& db, db::object_id id)
{
    while (id && db.at(id).family == db::object_class::entity && db.valid(db.at(id).owner) &&
           db.at(db.at(id).owner).family == db::object_class::entity)
        id = db.at(id).owner;
    return id;
}

} // namespace

double pick_reach(document& doc)
{
    const double pixels = std::max(1, db::int_variable(doc, "PICKBOX"));
    const double height = db::real_variable(doc, "VIEWSIZE");
    const list_ptr screen = db::get_variable(doc, "SCREENSIZE");
    const double lines = screen ? screen->resval.rpoint[1] : 0.0;
    return lines > 0.0 ? pixels * height / lines : pixels * height / 600.0;
}

bool is_visible(const db::database& db, db::object_id id)
{
    if (db::int_of(db.at(id).groups, 60, 0))
        return false;
    const db::group_list* layer = layer_of(db, id);
    return !layer || (db::int_of(*layer, 62, 7) >= 0 && !(db::int_of(*layer, 70, 0) & 1));
}

bool is_on_locked_layer(const db::database& db, db::object_id id)
{
    const db::group_list* layer = layer_of(db, id);
    return layer && db::int_of(*layer, 70, 0) & 4;
}

db::object_id object_at(document& doc, const point3& point)
{
    db::database& db = db::database_of(doc);
    const double reach = pick_reach(doc);
    const screen_window window = screen_window::around(doc, point, reach);
    db::object_id best = 0;
    double best_distance = HUGE_VAL;
    for (const db::object_id id : db::near_window(db, db.current_space(), window.bounds())) {
        if (!is_visible(db, id))
            continue;
        const double distance = db::distance_to(db, id, point.x, point.y);
        const bool nearer = distance < best_distance || (distance == best_distance && id > best);
        if (nearer && (distance <= reach || window.crosses(db, id))) {
            best = id;
            best_distance = distance;
        }
    }
    return best;
}

db::object_id last_object(const db::database& db)
{
    db::object_id id = db.at(db.current_space()).last;
    while (id && (db.at(id).erased || db.is(id, "ENDBLK") || db.is(id, "BLOCK")))
        id = db.at(id).previous;
    return id;
}

db::object_id object_by_text(document& doc, std::string_view text)
{
    const db::database& db = db::database_of(doc);
    if (!text.empty() && text.front() == '#')
        text.remove_prefix(1);
    if (same_text(text, "last") || same_text(text, "l"))
        return last_object(db);
    const std::string digits(text);
    char* end = nullptr;
    const std::uint64_t handle = std::strtoull(digits.c_str(), &end, 16);
    if (digits.empty() || *end)
        return 0;
    const db::object_id id = main_object(db, db.by_handle(handle));
    const bool is_here = id && !db.at(id).erased && db.at(id).owner == db.current_space();
    return is_here && !db.is(id, "BLOCK") && !db.is(id, "ENDBLK") ? id : 0;
}

point3 some_point_on(const db::database& db, db::object_id id)
{
    for (const db::run& run : db::outline_of(db, id, 1.0))
        if (!run.empty())
            return {run[0].first, run[0].second, 0.0};
    const db::group* start = db::find(db.at(id).groups, 10);
    return start ? point3{start->point[0], start->point[1], 0.0} : point3{};
}

db::object_id object_of_name(const db::database& db, const std::int32_t* name)
{
    const db::object_id id = db::id_of_name(db, name);
    return id && db.valid(id) && !db.at(id).erased ? id : 0;
}

} // namespace host::commandline
