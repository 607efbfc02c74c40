// drag_move.h: dragging a selection set along with the pointer.
#pragma once

#include "hostapi/adsdef.h"

// Values: selection set, base point, prompt. Drags the set and moves its objects by the points of their lists
// (groups 10 to 13). Any answer but a point erases them: programs throw away a preview that way. Answers 0 on a
// cancel, else 1; nil, with nothing asked, without a set and a point. RTNORM in all cases.
int drag_move(const resbuf* args);

// Values: selection set (any value: one that is no set drags nothing), base point. Sets LASTPOINT and asks for
// a second point with the set at the pointer. Answers the point or nil. Nothing is moved. RTNORM in all cases.
int second_point(const resbuf* args);
