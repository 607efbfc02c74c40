// arrow_head.h: arrow heads, drawn by the host's own dimension leader so that they look like those of the
// drawing's dimensions. Their size is DIMASZ times DIMSCALE, where a DIMSCALE of 0.0 counts as 1.0.
#pragma once

#include "drawing/vertex_chain.h"

// How the lines of leaders are curved, for curve_controls and curve_points.
constexpr double LEADER_TENSION = 2.1;
constexpr double LEADER_STEP = 0.15;

double arrow_size(); // in drawing units
// By DIMASZ, which the caller keeps. A size that isn't finite is passed over.
void set_arrow_size(double size);
// Asks for the size and sets it; an empty answer leaves it. RTCAN when the user cancels, else RTNORM.
int ask_arrow_size();

// An arrow head at the first vertex of a chain, pointing at it. A chain whose second vertex is a user's
// point is curved as a leader first and stays so. Nothing is drawn for a chain of one vertex and where a
// coordinate isn't finite. OSMODE is put back.
void draw_arrow_head(pl_vertex* chain);
