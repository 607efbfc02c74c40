// add_arrow_tool.h: arrow heads on lines and polylines that are there.
#pragma once

// Asks for the size and puts a head on the nearer end of each segment that is picked. DIMASZ is put back.
// RTNORM in all cases.
int add_arrow_tool();
