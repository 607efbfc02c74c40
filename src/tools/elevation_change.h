// elevation_change.h: the LISP function cf:chgpnts.
#pragma once

// Asks how elevations are to change and of which objects, and changes them. Answers AutoLISP the list of mode
// text and value, which a next call takes as its standards; leaves its value alone when the user ends early.
void elevation_change();
