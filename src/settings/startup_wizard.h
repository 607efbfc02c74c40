// startup_wizard.h: the two pages that an unnamed drawing begins with: a recent drawing, or the scales and
// units of a new one.
#pragma once

// What the wizard's buttons reach on higher floors; set by the shell before the first run.
struct wizard_links {
    void (*help)();
    void (*tile_preview)(const char* drawing, int tile); // tiles are counted from 1
};
extern wizard_links wizard_calls;

// Shows the page that the LISP variable is_new names (0 recent drawings, 1 new drawing) and hands the host
// the command that follows from it. Does nothing unless use_startwiz is 1 and the drawing has no name yet:
// a name with DRAWING.DWG or DRAWING1.DWG to DRAWING9.DWG anywhere in it counts as none.
void startup_wizard();
