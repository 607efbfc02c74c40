// map_objects.h: what an affine map makes of the groups of each kind of object.
#pragma once

#include <vector>

#include "host/commandline/transform.h"
#include "host/database/database.h"

namespace host::commandline
{

// An object as its list and the lists of what it owns (VERTEX, ATTRIB), without the SEQEND.
struct whole_object {
    db::group_list groups;
    std::vector<db::group_list> children;
    bool is_sequence = false; // a SEQEND belongs behind the children, also when there are none
};
whole_object whole_object_of(const db::database& db, db::object_id id);

// The plane of an object, and where a map takes it.
struct plane_change {
    const mapping& map;
    plane_axes from, to;
    point3 u, v;  // images of the old plane's axes, in the new plane
    double scale; // of lengths in the plane
    double rise;  // of lengths along the plane's normal
    bool flips;   // left turns become right turns

    // `by_normal`: the new normal is the image of the old one, and not square to the plane's image: for lines
    // and points, whose normal is the direction of their thickness.
    plane_change(const mapping& m, const point3& extrusion, bool by_normal = false);
    point3 place(const point3& p) const; // from plane to plane
    double turn(double angle) const;     // of a direction; radians, 0 to two pi
    bool is_similar() const;             // circles stay circles
};

// Normal of an object's plane: group 210.
point3 normal_of(const db::group_list& groups);

// Whether an object is still one of its kind under the map: an ARC under unequal scales is none. Always true
// under a map that moves nothing.
bool keeps_kind(const db::database& db, const whole_object& object, const mapping& map);
// Puts the map into an object for which keeps_kind is true.
void map_object(const db::database& db, whole_object& object, const mapping& map);

} // namespace host::commandline
