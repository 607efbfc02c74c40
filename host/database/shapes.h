// shapes.h: a drawing object as paths of straight pieces and arcs, in world coordinates. Inner header of
// geometry.cpp and shapes.cpp.
#pragma once

#include "host/database/database.h"
#include "host/database/transform.h"

namespace host::db
{

// The points centre + u cos t + v sin t for t from `start` to `end` (either may be the larger). Under any
// affine map a circle's arc stays of this form.
struct arc_piece {
    vec centre, u, v;
    double start = 0, end = 0;
    vec at(double t) const { return centre + u * std::cos(t) + v * std::sin(t); }
};

// What takes the paths. A path begins with `move`; an arc begins where the path is.
struct shape_sink {
    virtual ~shape_sink() = default;
    virtual void move(const vec& to) = 0;
    virtual void line(const vec& to) = 0;
    virtual void arc(const arc_piece& piece) = 0;
    // The paths that follow bound something filled, or no longer do (texts, solids).
    virtual void filled(bool) {}
};

// Walks an object with all that it owns and refers to. Blocks that hold themselves end there.
void trace_shape(const database& db, object_id id, shape_sink& sink);

// Lines without an end are drawn this far to each side of their base point.
constexpr double ENDLESS = 1e7;
bool is_endless(const database& db, object_id id);

// Arcs in as many chords as keep within `tolerance`.
int chord_count(const arc_piece& piece, double tolerance);

} // namespace host::db
