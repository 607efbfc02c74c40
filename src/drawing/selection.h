// selection.h: asking the user for polylines and other objects.
#pragma once

#include "hostapi/adsdef.h"

// One object of the types named in `types`, as entsel_of_type.
int pick_entity_of_types(const char* types, const char* prompt, ads_name name, ads_point point);

// Fills `head` as the start of a selection filter that takes polylines of either kind and goes on with
// `tail` (null: nothing more). The text of `head` is new at each call (acad_free, not acutRelRb: the
// nodes behind it are the module's own and the same for all callers).
void pl_filter_polylines(resbuf* head, resbuf* tail);
