// Lists of entities brought into the stored form.
//
// A list is taken apart into its head (0, 330, 5, groups in braces), the groups common to all entities,
// the kind's own, a tail that is left as it is (what follows an unknown marker or an embedded object) and the
// extended data, and put together again in that order. Old lists have no markers; where the kind
// is known each group's place follows from its code alone, so both forms go the same way.
#include <algorithm>
#include <cmath>

#include "host/core/text.h"
#include "host/database/entities.h"
#include "host/database/kinds.h"
#include "host/database/templates.h"

namespace host::db
{

namespace
{

struct list_parts {
    group_list head, common, own, tail, extended;
    bool has_markers = false;
};

bool is_marker_of(const entity_kind* kind, std::string_view text)
{
    if (!kind)
        return false;
    return std::any_of(kind->items.begin(), kind->items.end(), [&](const kind_item& item) {
        return item.how == kind_item::need::marker && item.value == text;
    });
}

list_parts take_apart(const database& db, const entity_kind* kind, const group_list& groups)
{
    list_parts parts;
    bool in_head = true, in_braces = false, in_tail = false;
    for (const group& each : groups) {
        if (each.code >= 1000) {
            parts.extended.push_back(each);
        } else if (in_tail) {
            parts.tail.push_back(each);
        } else if (each.code == 102 && in_head) {
            in_braces = !db.text(each.text).starts_with('}');
            parts.head.push_back(each);
        } else if (in_braces) {
            parts.head.push_back(each);
        } else if (each.code == 0 || each.code == 5 || (each.code == 330 && in_head)) {
            parts.head.push_back(each);
        } else if (each.code == 100 || each.code == 101) {
            in_head = false;
            const std::string_view text = db.text(each.text);
            if (each.code == 100 && text == "AcDbEntity")
                continue;
            parts.has_markers = true;
            if (each.code == 101 || !is_marker_of(kind, text)) {
                in_tail = true;
                parts.tail.push_back(each);
            }
        } else {
            in_head = false;
            const bool is_common = is_common_code(each.code) || (!kind && !parts.has_markers);
            (is_common ? parts.common : parts.own).push_back(each);
        }
    }
    return parts;
}

// 0, 330, 5, then what stands in braces, wherever the owner stood.
void put_head(const group_list& head, group_list& out)
{
    group owner = handle_group(330, 0), own = handle_group(5, 0);
    group_list braced;
    bool inside = false;
    for (const group& each : head) {
        if (each.code == 102 || inside)
            braced.push_back(each);
        if (each.code == 102)
            inside = !inside;
        else if (each.code == 0 && !inside)
            out.push_back(each);
        else if (!inside)
            (each.code == 330 ? owner : own) = each;
    }
    out.push_back(owner);
    out.push_back(own);
    out.insert(out.end(), braced.begin(), braced.end());
}

void put_common(const database& db, const group_list& common, group_list& out)
{
    out.push_back(db.text_group(100, "AcDbEntity"));
    constexpr int FIRST[] = {67, 410, 8, 62, 6, 48, 60, 370};
    for (const int code : FIRST) {
        const group* given = find(common, code);
        if (given)
            out.push_back(*given);
        else if (code == 8)
            out.push_back(db.text_group(8, "0"));
    }
    for (const group& each : common)
        if (std::find(std::begin(FIRST), std::end(FIRST), each.code) == std::end(FIRST))
            out.push_back(each);
}

bool fits_kind(const group& each)
{
    return each.kind == kind_of_code(each.code);
}

bool tell_missing(std::string_view type, int code, std::string* error)
{
    if (error)
        *error = std::string(type) + " needs group " + std::to_string(code);
    return false;
}

// The kind's groups in their places; what has no place comes last.
bool put_own(const database& db, const entity_kind& kind, std::string_view type, group_list own,
             group_list& out, std::string* error)
{
    using need = kind_item::need;
    for (const kind_item& item : kind.items) {
        if (item.how == need::marker) {
            out.push_back(db.text_group(100, item.value));
            continue;
        }
        const std::size_t before = out.size();
        for (group& each : own)
            if (each.code == item.code && fits_kind(each)) {
                out.push_back(each);
                each.code = -1; // placed
            }
        if (out.size() > before)
            continue;
        if (item.how == need::required)
            return tell_missing(type, item.code, error);
        if (item.how == need::standard)
            add_groups(db, out, std::to_string(item.code) + ' ' + std::string(item.value));
    }
    for (const group& each : own)
        if (each.code != -1)
            out.push_back(each);
    return true;
}

bool put_own_in_order(const database& db, const entity_kind& kind, std::string_view type, const group_list& own,
                      group_list& out, std::string* error)
{
    using need = kind_item::need;
    for (const kind_item& item : kind.items) {
        if (item.how == need::marker)
            out.push_back(db.text_group(100, item.value));
        else if (const group* given = find(own, item.code); given && fits_kind(*given))
            continue;
        else if (item.how == need::required)
            return tell_missing(type, item.code, error);
        else
            add_groups(db, out, std::to_string(item.code) + ' ' + std::string(item.value));
    }
    out.insert(out.end(), own.begin(), own.end());
    return true;
}

// A lightweight polyline's own groups: 90 70 43 38 39, then 10 40 41 42 a vertex, then 210. 43, the width
// of all, is there when all widths are the same, and is what vertices without widths have.
group_list lightweight_groups(const group_list& own)
{
    const double width = real_of(own, 43, 0.0);
    group_list vertices, rest;
    std::int64_t count = 0;
    bool one_width = true;
    group_list open{real_group(40, width), real_group(41, width), real_group(42, 0.0)};
    std::optional<group> identifier;
    const auto close_vertex = [&] {
        if (count == 0)
            return;
        vertices.insert(vertices.end(), open.begin(), open.end());
        if (identifier)
            vertices.push_back(*identifier);
        one_width = one_width && open[0].real == open[1].real && open[0].real == vertices[1].real;
        open = {real_group(40, width), real_group(41, width), real_group(42, 0.0)};
        identifier.reset();
    };
    for (const group& each : own) {
        if (each.code == 10) {
            close_vertex();
            ++count;
            vertices.push_back(point_group(10, each.point[0], each.point[1]));
        } else if (each.code >= 40 && each.code <= 42 && count) {
            open[static_cast<std::size_t>(each.code - 40)] = each;
        } else if (each.code == 91 && count) {
            identifier = each;
        } else if (each.code != 90 && each.code != 70 && each.code != 43 && each.code != 38 &&
                   each.code != 39 && each.code != 210) {
            rest.push_back(each);
        }
    }
    close_vertex();
    group_list made{int_group(90, count), int_group(70, int_of(own, 70, 0))};
    if (one_width && count)
        made.push_back(real_group(43, vertices[1].real));
    made.push_back(real_group(38, real_of(own, 38, 0.0)));
    made.push_back(real_group(39, real_of(own, 39, 0.0)));
    made.insert(made.end(), vertices.begin(), vertices.end());
    const group* normal = find(own, 210);
    made.push_back(normal ? *normal : point_group(210, 0, 0, 1));
    made.insert(made.end(), rest.begin(), rest.end());
    return made;
}

// What a kind wants besides its table: points that have two coordinates, corners that repeat another.
void adjust_own(std::string_view type, group_list& own)
{
    if (type == "LWPOLYLINE") {
        own = lightweight_groups(own);
    } else if (type == "HATCH") {
        bool first = true; // the elevation point; the others lie in the hatch's plane
        for (group& each : own) {
            if (each.kind != group_kind::point || each.code > 19)
                continue;
            each.dimensions = first ? 3 : 2;
            first = false;
        }
    } else if (type == "SOLID" || type == "TRACE" || type == "3DFACE") {
        const group* third = find(own, 12);
        if (third && !find(own, 13)) {
            group fourth = *third;
            fourth.code = 13;
            own.push_back(fourth);
        }
    }
}

bool is_finite(const group& g)
{
    if (g.kind == group_kind::real)
        return std::isfinite(g.real);
    if (g.kind != group_kind::point)
        return true;
    return std::all_of(g.point, g.point + g.dimensions, [](double value) { return std::isfinite(value); });
}

} // namespace

bool check_numbers(const group_list& groups, std::string* error)
{
    for (const group& each : groups) {
        if (is_finite(each))
            continue;
        if (error)
            *error = "group " + std::to_string(each.code) + " is no finite number";
        return false;
    }
    return true;
}

bool complete_entity(const database& db, group_list& groups, std::string* error)
{
    if (!check_numbers(groups, error))
        return false;
    const group* type_group = find(groups, 0);
    if (!type_group || type_group->kind != group_kind::text || !type_group->text) {
        if (error)
            *error = "the list has no group 0";
        return false;
    }
    const std::string type = upper(db.text(type_group->text));
    find(groups, 0)->text = db.intern(type);
    const entity_kind* kind = kind_of(db, groups);
    list_parts parts = take_apart(db, kind, groups);
    if (!kind && !parts.has_markers) {
        if (error)
            *error = "unknown kind of entity: " + type;
        return false;
    }
    group_list out;
    out.reserve(groups.size() + 8);
    put_head(parts.head, out);
    put_common(db, parts.common, out);
    if (kind) {
        adjust_own(type, parts.own);
        const bool whole = kind->keeps_order ? put_own_in_order(db, *kind, type, parts.own, out, error)
                                             : put_own(db, *kind, type, std::move(parts.own), out, error);
        if (!whole)
            return false;
    } else {
        out.insert(out.end(), parts.own.begin(), parts.own.end());
    }
    out.insert(out.end(), parts.tail.begin(), parts.tail.end());
    out.insert(out.end(), parts.extended.begin(), parts.extended.end());
    groups = std::move(out);
    return true;
}

} // namespace host::db
