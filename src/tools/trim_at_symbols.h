// trim_at_symbols.h: lines end at the outline of the point symbols that they run through.
#pragma once

// Asks for block references. Those of blocks named SPT... are exploded one by one, the lines and polylines
// through their insertion points are trimmed at their circles, ellipses and polylines, and the symbols are put
// back as they were, with attributes and extended data. A symbol that can't be exploded stays and trims
// nothing. The break key is looked at before each symbol. HIGHLIGHT is 0 meanwhile and put back. RTNORM in all
// cases.
int trim_at_symbols();
