// geometry.h: what drawing objects look like: extents, nearest place, crossings with windows.
#pragma once

#include <optional>
#include <vector>

#include "host/database/database.h"

namespace host::db
{

struct box {
    double low[3], high[3];
    void add(double x, double y, double z);
    static box empty();
    bool is_empty() const { return low[0] > high[0]; }
};

// World coordinates, of the object with all that it owns or refers to. Empty when it has no extent.
box extents_of(const database& db, object_id id);
// Of all objects in a space.
box space_extents(const database& db, object_id block_record);
// The same, remembered until the drawing changes: programs ask for the corners one after the other.
box known_space_extents(database& db, object_id block_record);

// The object as straight pieces in the plane (arcs by their chords, `tolerance` off at most), for
// picking and crossing; closed outlines repeat their first point. Each inner list is one run.
using run = std::vector<std::pair<double, double>>;
std::vector<run> outline_of(const database& db, object_id id, double tolerance);

// Plane distance of a point from an object, and whether the object crosses or lies in a window.
double distance_to(const database& db, object_id id, double x, double y);
bool inside_window(const database& db, object_id id, const box& window);  // wholly inside
bool crosses_window(const database& db, object_id id, const box& window); // any part
bool inside_polygon(const database& db, object_id id, const run& polygon);
bool crosses_polygon(const database& db, object_id id, const run& polygon);
bool crosses_fence(const database& db, object_id id, const run& fence);

// Candidates by box out of a spatial index that follows the drawing's changes, newest first.
std::vector<object_id> near_window(database& db, object_id block_record, const box& window);

} // namespace host::db
