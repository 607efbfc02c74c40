// entsel.cpp: acedEntSel and acedNEntSelP: picks of objects, and of what lies inside block references.
#include <cmath>
#include <cstring>

#include "host/commandline/pending_rules.h"
#include "host/commandline/picks.h"
#include "host/commandline/transform.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/database/entities.h"
#include "host/database/geometry.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

constexpr int NOTHING_PICKED = 7; // ERRNO
constexpr int DEEPEST_NEST = 32;  // block references that contain themselves end here

answer ask_object(const char* prompt)
{
    question what(want::object, prompt && *prompt ? prompt : "\nSelect object: ");
    apply_pending_rules(what);
    const answer given = ask_user(current_document(), what);
    note_input(given);
    return given;
}

// ERRNO and the status of a pick: an empty answer and a miss are both RTERROR.
int pick_status(const answer& given)
{
    if (given.status == RTERROR)
        db::set_errno(NOTHING_PICKED);
    return given.none() ? RTERROR : given.status;
}

// What a pick inside block references found: the object, where its coordinates lie in the drawing, and
// the references around it, the innermost first.
struct nested_pick {
    db::object_id object = 0;
    mapping to_world;
    std::vector<db::object_id> containers;
};

struct nearest {
    db::object_id id = 0;
    double distance = HUGE_VAL;
    void offer(const db::database& db, db::object_id candidate, const point3& at)
    {
        const double d = db::distance_to(db, candidate, at.x, at.y);
        if (d <= distance) {
            id = candidate;
            distance = d;
        }
    }
};

// The vertex at which the picked segment of an old-style polyline begins.
db::object_id picked_vertex(const db::database& db, db::object_id polyline, const point3& at)
{
    double best = HUGE_VAL;
    db::object_id found = 0, first = db::first_child(db, polyline);
    const bool closed = db::int_of(db.at(polyline).groups, 70, 0) & 1;
    for (db::object_id id = first; id; id = db::next_child(db, id)) {
        db::object_id next = db::next_child(db, id);
        if (!next && closed)
            next = first;
        const db::group* a = db::find(db.at(id).groups, 10);
        const db::group* b = next ? db::find(db.at(next).groups, 10) : nullptr;
        if (!a || !b)
            continue;
        const double dx = b->point[0] - a->point[0], dy = b->point[1] - a->point[1];
        const double square = dx * dx + dy * dy;
        double t = square > 0.0 ? ((at.x - a->point[0]) * dx + (at.y - a->point[1]) * dy) / square : 0.0;
        t = std::fmin(1.0, std::fmax(0.0, t));
        const double d = std::hypot(at.x - a->point[0] - t * dx, at.y - a->point[1] - t * dy);
        if (d < best) {
            best = d;
            found = id;
        }
    }
    return found ? found : first;
}

void go_inside(const db::database& db, nested_pick& pick, point3 at)
{
    for (int depth = 0; depth < DEEPEST_NEST; ++depth) {
        const db::object_id id = pick.object;
        if (db.is(id, "POLYLINE")) {
            if (const db::object_id vertex = picked_vertex(db, id, at))
                pick.object = vertex;
            return;
        }
        const std::optional<mapping> inner = db.is(id, "INSERT") ? insert_mapping(db, id) : std::nullopt;
        if (!inner)
            return;
        nearest best;
        for (db::object_id child = db::first_child(db, id); child; child = db::next_child(db, child))
            if (db.is(child, "ATTRIB"))
                best.offer(db, child, at);
        const double attribute_distance = best.distance;
        const point3 local = inner->inverse().apply(at);
        const db::object_id block = db.record("BLOCK_RECORD", db.text_of(db.at(id).groups, 2));
        best.distance = HUGE_VAL;
        nearest in_block;
        for (db::object_id e = block ? db::first_entity(db, block) : 0; e; e = db::next_entity(db, e))
            if (!db.is(e, "ATTDEF"))
                in_block.offer(db, e, local);
        const double scale = inner->scale();
        if (best.id && attribute_distance <= in_block.distance * scale) {
            pick.object = best.id;
            return;
        }
        if (!in_block.id)
            return;
        pick.containers.insert(pick.containers.begin(), id);
        pick.to_world = pick.to_world.after(*inner);
        pick.object = in_block.id;
        at = local;
    }
}

} // namespace

} // namespace host::commandline

using namespace host::commandline;
using host::trace_line;
namespace db = host::db;

extern "C" {

int acedEntSel(const char* prompt, ads_name name, ads_point picked)
{
    trace_line t("acedEntSel");
    t.text(prompt);
    const answer given = ask_object(prompt);
    if (given.ok()) {
        db::make_name(db::current_database(), given.object, name);
        std::memcpy(picked, given.point.data(), sizeof(ads_point));
    }
    return t.status(pick_status(given));
}

int acedNEntSelP(const char* prompt, ads_name name, ads_point point, int use_point, ads_matrix to_world,
                 resbuf** containers)
{
    trace_line t("acedNEntSelP");
    t.text(prompt).integer(use_point);
    if (containers)
        *containers = nullptr;
    answer given;
    if (use_point) {
        drop_pending_rules();
        given.point = point3::of(point);
        given.object = object_at(host::current_document(), given.point);
        given.status = given.object ? RTNORM : RTERROR;
    } else {
        given = ask_object(prompt);
    }
    if (!given.ok())
        return t.status(pick_status(given));
    const db::database& db = db::current_database();
    nested_pick pick;
    pick.object = given.object;
    go_inside(db, pick, given.point);
    db::make_name(db, pick.object, name);
    std::memcpy(point, given.point.data(), sizeof(ads_point));
    pick.to_world.to_matrix(to_world);
    if (containers) {
        host::list_builder list;
        for (const db::object_id id : pick.containers) {
            ads_name container;
            db::make_name(db, id, container);
            list.add(host::rb_name(RTENAME, container));
        }
        *containers = list.take();
    }
    return t.status(RTNORM);
}
}
