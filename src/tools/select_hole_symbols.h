// select_hole_symbols.h: core holes and channels, which are known by their extended data.
#pragma once

// Asks the user for blocks with extended data of COREHOLE or CHANNEL. Answers the selection set, or nil. RTNORM
// in all cases.
int select_hole_symbols();
