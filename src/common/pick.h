// pick.h: picking one object of certain types.
#pragma once

#include "hostapi/adsdef.h"

// Asks until an object of one of `types` (upper-case type names split by spaces) is picked.
//   RTNORM    `name` and `point` are the object and where it was picked
//   RTNONE    the pick failed for another reason than hitting nothing (an empty answer)
//   RTERROR   the picked object has no type
// Any other status is the host's own, RTCAN for a cancel.
int entsel_of_type(const char* types, const char* prompt, ads_name name, ads_point point);
