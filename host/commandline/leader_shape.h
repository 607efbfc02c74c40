// leader_shape.h: where the parts of a dimension leader lie. Numbers only; drawing units and radians.
#pragma once

#include <utility>
#include <vector>

#include "host/commandline/answers.h"

namespace host::commandline
{

struct leader_sizes {
    double arrow = 0.0;       // length of the head; 0: none is drawn
    double text_gap = 0.0;    // between the leader's end and its text
    double text_height = 0.0; // of capitals
    bool line_to_tip = false; // the head leaves the line its way to the tip, as a tick does
};

struct leader_shape {
    bool has_head = false;
    double head_direction = 0.0; // from the line to the tip
    // From the tip on; the last one is the hook before the text, if it has one.
    std::vector<std::pair<point3, point3>> lines;
    point3 text_middle; // of the edge of the text that is next to the leader
    bool text_runs_left = false;
};

// `points`: at least two, each other than the one before; all at the height of the first.
leader_shape shape_of_leader(const std::vector<point3>& points, const leader_sizes& sizes, bool has_text);

// The corners of the filled triangle with its tip at `tip`: both of its back, then the tip.
struct head_corners {
    point3 left, right, tip;
};
head_corners corners_of_head(const point3& tip, double direction, double length);

} // namespace host::commandline
