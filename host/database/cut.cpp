// All lists are worked out and completed before the first is put in place, so that an object that can't be cut
// stays whole.
#include "host/database/cut.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "host/database/cut_polyline.h"
#include "host/database/entities.h"

namespace host::db
{

namespace
{

constexpr double TURN = 2 * std::numbers::pi;

bool is_polyline(const database& db, object_id id)
{
    return db.is(id, "LWPOLYLINE") || db.is(id, "POLYLINE");
}

void set_point(group_list& groups, int code, const vec& p)
{
    set_group(groups, point_group(code, p.x, p.y, p.z));
}

double in_one_turn(double angle)
{
    angle = std::fmod(angle, TURN);
    if (angle < 0)
        angle += TURN;
    return angle >= TURN ? 0 : angle;
}

// The list as one of another kind: markers are put in anew by completion.
void set_type(const database& db, group_list& groups, std::string_view type)
{
    set_group(groups, db.text_group(0, type));
    std::erase_if(groups, [&](const group& g) { return g.code == 100 && db.text(g.text) != "AcDbEntity"; });
}

group_list round_list(const database& db, const plan_curve& curve, const curve_stretch& kept)
{
    const curve_piece& piece = curve.pieces[0];
    group_list groups = db.at(curve.id).groups;
    const bool over_seam = curve.is_closed && kept.to.part <= kept.from.part;
    const double from = piece.angle(kept.from.part), to = piece.angle(kept.to.part) + (over_seam ? TURN : 0);
    if (db.is(curve.id, "ELLIPSE")) {
        const double start = in_one_turn(from);
        set_group(groups, real_group(41, start));
        set_group(groups, real_group(42, start + (to - from)));
        return groups;
    }
    if (db.is(curve.id, "CIRCLE"))
        set_type(db, groups, "ARC");
    // What isn't cut keeps its digits.
    if (!find(groups, 50) || kept.from.part > 0 || curve.is_closed)
        set_group(groups, real_group(50, in_one_turn(from)));
    if (!find(groups, 51) || kept.to.part < 1 || curve.is_closed)
        set_group(groups, real_group(51, in_one_turn(to)));
    return groups;
}

group_list straight_list(const database& db, const plan_curve& curve, const curve_stretch& kept)
{
    const curve_piece& piece = curve.pieces[0];
    group_list groups = db.at(curve.id).groups;
    const bool from_far = !std::isfinite(kept.from.part), to_far = !std::isfinite(kept.to.part);
    if (from_far || to_far) {
        if (!db.is(curve.id, "RAY"))
            set_type(db, groups, "RAY");
        set_point(groups, 10, piece.at(from_far ? kept.to.part : kept.from.part));
        set_point(groups, 11, (piece.to - piece.from) * (from_far ? -1 : 1));
        return groups;
    }
    if (!db.is(curve.id, "LINE"))
        set_type(db, groups, "LINE");
    set_point(groups, 10, piece.at(kept.from.part));
    set_point(groups, 11, piece.at(kept.to.part));
    return groups;
}

cut_lists lists_of(const database& db, const plan_curve& curve, const curve_stretch& kept)
{
    if (is_polyline(db, curve.id)) {
        const std::vector<cut_vertex> vertices = vertices_of_stretch(curve, vertices_of(db, curve.id), kept);
        return db.is(curve.id, "POLYLINE") ? polyline_lists(db, curve.id, vertices)
                                           : lightweight_lists(db, curve.id, vertices);
    }
    return {curve.pieces[0].is_arc ? round_list(db, curve, kept) : straight_list(db, curve, kept), {}};
}

// ---- putting lists in place

std::size_t head_size(const group_list& groups)
{
    std::size_t i = 0;
    while (i < groups.size() && groups[i].code != 100 && groups[i].code < 1000)
        ++i;
    return i;
}

// Handle, owner and braces of an object go with the rest of another list.
group_list with_head(const group_list& head, const group_list& rest)
{
    group_list out(head.begin(), head.begin() + static_cast<std::ptrdiff_t>(head_size(head)));
    out.insert(out.end(), rest.begin() + static_cast<std::ptrdiff_t>(head_size(rest)), rest.end());
    return out;
}

// A list for a new object: its handle and owner are filled in, what hangs on the old object isn't its own.
group_list for_new(const group_list& groups)
{
    group_list out{groups[0], handle_group(330, 0), handle_group(5, 0)};
    const group_list rest(groups.begin() + static_cast<std::ptrdiff_t>(head_size(groups)), groups.end());
    out.insert(out.end(), rest.begin(), rest.end());
    return out;
}

void replace_children(database& db, object_id id, const std::vector<group_list>& lists)
{
    std::vector<object_id> old;
    for (object_id child = first_child(db, id); child; child = next_child(db, child))
        old.push_back(child);
    for (std::size_t i = 0; i < lists.size(); ++i)
        if (i < old.size())
            db.replace(old[i], with_head(db.at(old[i]).groups, lists[i]));
        else
            db.append(id, object_class::entity, for_new(lists[i]));
    for (std::size_t i = lists.size(); i < old.size(); ++i)
        db.set_erased(old[i], true);
}

object_id make_new(database& db, object_id from, const cut_lists& lists)
{
    const object_id made = db.append(db.at(from).owner, object_class::entity, for_new(lists.main));
    if (lists.children.empty())
        return made;
    for (const group_list& each : lists.children)
        db.append(made, object_class::entity, for_new(each));
    group_list end{db.text_group(0, "SEQEND"), handle_group(330, 0), handle_group(5, 0),
                   db.text_group(100, "AcDbEntity")};
    if (const group* layer = find(lists.main, 8))
        end.push_back(*layer);
    db.append(made, object_class::entity, std::move(end));
    return made;
}

bool complete(const database& db, cut_lists& lists)
{
    bool good = complete_entity(db, lists.main, nullptr);
    for (group_list& each : lists.children)
        good = good && complete_entity(db, each, nullptr);
    return good;
}

} // namespace

bool can_be_cut(const database& db, const plan_curve& curve)
{
    constexpr std::array<std::string_view, 8> KINDS = {"ARC",        "CIRCLE",   "ELLIPSE", "LINE",
                                                       "LWPOLYLINE", "POLYLINE", "RAY",     "XLINE"};
    const bool is_kind = std::find(KINDS.begin(), KINDS.end(), db.type_of(curve.id)) != KINDS.end();
    return is_kind && std::none_of(curve.pieces.begin(), curve.pieces.end(),
                                   [](const curve_piece& piece) { return piece.is_flat; });
}

bool keep_stretches(database& db, const plan_curve& curve, const std::vector<curve_stretch>& kept,
                    std::vector<object_id>* made)
{
    if (kept.empty() || !can_be_cut(db, curve))
        return false;
    std::vector<cut_lists> all;
    for (const curve_stretch& each : kept) {
        all.push_back(lists_of(db, curve, each));
        if (!complete(db, all.back()))
            return false;
    }
    db.replace(curve.id, with_head(all[0].main, all[0].main));
    if (db.is(curve.id, "POLYLINE"))
        replace_children(db, curve.id, all[0].children);
    for (std::size_t i = 1; i < all.size(); ++i) {
        const object_id id = make_new(db, curve.id, all[i]);
        if (made)
            made->push_back(id);
    }
    return true;
}

object_image image_of(const database& db, object_id id)
{
    object_image out{id, db.at(id).groups, {}};
    for (object_id child = first_child(db, id); child; child = next_child(db, child))
        out.children.emplace_back(child, db.at(child).groups);
    return out;
}

void put_back(database& db, const object_image& image)
{
    db.replace(image.id, image.groups);
    std::size_t next = 0;
    for (object_id child = first_child(db, image.id); child;) {
        const object_id following = next_child(db, child);
        if (next < image.children.size() && image.children[next].first == child)
            ++next;
        else
            db.set_erased(child, true);
        child = following;
    }
    for (const auto& [child, groups] : image.children) {
        db.set_erased(child, false);
        db.replace(child, groups);
    }
}

} // namespace host::db
