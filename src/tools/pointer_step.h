// pointer_step.h: one step of the pointer, moved or drawn.
#pragma once

#include "common/text_buffer.h"
#include "tools/pointer_state.h"

// Moves the pointer by `dist` in the direction of the segment turned by `angle` (degrees) and, in draw mode,
// draws: an end of the chain slides along its segment (angle 0) or the chain bends; from any other place, and
// for a LINE with a turn, a new chain begins. The object is drawn anew with all its properties.
//
// Answers the pointer's turn against the segment then: 0.0 after drawing, `angle` otherwise. Puts U
// into the first character of `last_cmd` where a new chain begins, which can't be undone. A step to no
// finite place is refused with a message. All in one pass over the chain or two.
double pointer_step(pointer_state& state, double dist, double angle, int mode, text_out last_cmd);
