// arrow_pair.h: an arrow head with its line, drawn for a program.
#pragma once

#include "hostapi/adsdef.h"

// Values: two that aren't read, start and end (points; z counts as 0), size (real, 25.0 by default): the head
// at start has half of it. Answers the selection set of what was drawn. DIMASZ is put back.
int arrow_pair(const resbuf* args);
