// transform.h: moving, turning, scaling and mirroring of drawing objects.
#pragma once

#include <optional>

#include "host/commandline/answers.h"
#include "host/database/database.h"

namespace host::commandline
{

// An affine map of space: x' = m x + t.
struct mapping {
    double m[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    double t[3] = {0, 0, 0};

    static mapping moved(double dx, double dy, double dz);
    static mapping turned(const point3& about, double angle); // about z
    static mapping scaled(const point3& about, double factor);
    point3 apply(const point3& p) const;
    point3 direction(const point3& v) const;   // without t
    mapping after(const mapping& first) const; // this map of what `first` gives
    mapping inverse() const;                   // the identity when it has none
    double determinant() const;
    double scale() const; // cube root of the determinant's size
    bool is_move() const; // nothing is turned, scaled or mirrored
    void to_matrix(double out[4][4]) const;
};

// Applies a map under which the object stays of its kind (map_objects.h) to it and what it owns. A kind that
// can't be mapped stays where it is.
void transform_object(db::database& db, db::object_id id, const mapping& map);
void transform_alone(db::database& db, db::object_id id, const mapping& map); // without what it owns
// A copy behind the last object of the same owner, with what it owns; 0 when it can't be.
db::object_id copy_object(db::database& db, db::object_id id);
db::object_id copy_object_to(db::database& db, db::object_id id, db::object_id owner);
// From the block's coordinates to those in which the INSERT lies; nothing when its block is missing.
std::optional<mapping> insert_mapping(const db::database& db, db::object_id insert);
std::optional<mapping> insert_mapping(const db::database& db, const db::group_list& groups);

// The axes of an object's own plane for an extrusion direction: columns x, y, z.
struct plane_axes {
    point3 x, y, z;
    point3 to_world(const point3& p) const;
    point3 to_plane(const point3& p) const;
};
plane_axes axes_of(const point3& extrusion);

} // namespace host::commandline
