// trim.h: cutting a chain at a point.
#pragma once

#include "polygon/node.h"

// Cut the chain behind `point`, whose z is cleared by the first of them; what lies behind is released. The head
// stays. 1 when the point was found on the chain: at its first place, at its last place. 0 also when the heap
// is exhausted; the chain is whole then.
int pg_trim_at_first(pg_node* chain, double* point);
int pg_trim_at_last(pg_node* chain, double* point);
