// cut.h: taking parts out of drawing objects: an object keeps some stretches of its curve.
#pragma once

#include <vector>

#include "host/database/plan_curve.h"

namespace host::db
{

// From a place to one further along. In a closed curve `to` may lie before `from`: the stretch runs over the
// seam.
struct curve_stretch {
    curve_place from, to;
};

// LINE, ARC, CIRCLE, ELLIPSE, LWPOLYLINE, POLYLINE (no meshes), XLINE, RAY, if no part of it is seen from its
// edge.
bool can_be_cut(const database& db, const plan_curve& curve);

// Leaves of an object the given stretches of its curve, of which none is empty and at least one is shorter than
// the whole. The object becomes the first one and keeps its handle, layer and all that it has besides its
// shape; the others are new objects behind the last of its owner with the same properties. A closed object
// comes out open, a circle as ARC, an endless line as RAY or LINE, a curve-fit or spline-fit polyline as a
// plain one through the vertices that were drawn. Widths at a cut are those that the segment had there. The new
// objects, or false with nothing changed when the object can't be cut.
bool keep_stretches(database& db, const plan_curve& curve, const std::vector<curve_stretch>& kept,
                    std::vector<object_id>* made);

// What an object and its vertices are, to be put back if a cut is taken back. (Undo of the drawing goes on its
// own.)
struct object_image {
    object_id id = 0;
    group_list groups;
    std::vector<std::pair<object_id, group_list>> children; // those that were not erased
};
object_image image_of(const database& db, object_id id);
void put_back(database& db, const object_image& image);

} // namespace host::db
