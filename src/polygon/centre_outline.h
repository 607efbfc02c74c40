// centre_outline.h: an outline taken apart for its centre lines.
#pragma once

#include "polygon/centre_parts.h"
#include "polygon/node.h"

// Items and runs of the outline on whose left the centre lines are wanted. No runs when it has fewer than
// three vertices, or coordinates that are no numbers. `orientation` as for pg_centre_lines.
cl_outline cl_take_outline(const pg_node* chain, int orientation);

// The starting rays: from both ends of each side, square to it. `found` gets them in the order of the sides.
void cl_starting_rays(const cl_outline& outline, std::vector<cl_branch>* found);
