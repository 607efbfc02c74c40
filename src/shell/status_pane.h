// status_pane.h: the module's pane at the right end of the host's status bar.
#pragma once

// Shows a text; an empty one or null does nothing. The first text makes the pane as wide as it needs, which
// all later ones get along with. A status bar narrower than 800 pixels has no room for a pane.
void status_text(const char* text);
// Gives the pane and its font back.
void status_pane_remove();
