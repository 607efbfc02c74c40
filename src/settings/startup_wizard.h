// startup_wizard.h: the two pages that an unnamed drawing begins with: a recent drawing, or the scales and
// units of a new one.
#pragma once

// What the wizard's buttons reach on higher floors; set by the shell before the first run.
struct wizard_links {
    void (*help)();
    void (*tile_preview)(const char* drawing, int tile); // tiles are counted from 1
};
extern wizard_links wizard_calls;

void startup_wizard();
