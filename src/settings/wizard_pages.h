// wizard_pages.h: the start wizard's pages and what they leave for its end. All of it is valid only while
// the wizard runs.
#pragma once

#include "hostapi/ads.h"
#include "hostapi/dcl.h"

// Results of the pages' dialogs.
constexpr int WIZARD_CANCELLED = 0;
constexpr int WIZARD_TAKEN = 1; // a recent drawing, or the new one
constexpr int WIZARD_OPEN = 2;  // any drawing, to be picked
constexpr int WIZARD_NEW = 3;   // page 0 leads to page 1

extern char wiz_open_path[ADS_PATH_SIZE]; // chosen on page 0
extern char wiz_new_path[ADS_PATH_SIZE];  // drawing to create
extern int wiz_skip;                      // 1: the wizard is not to come again

// Each runs its dialog out of the loaded file `dialogs` and gives its result.
int wizard_recent_page(int dialogs);
int wizard_drawing_page(int dialogs);

// ---- for the pages
// A tile's text as C reads a number out of it: what stands behind the number doesn't count, and a text that
// begins with none is 0.
int tile_integer(ads_hdlg dialog, const char* key);
double tile_real(ads_hdlg dialog, const char* key);
// Reads the tile skip_wiz into wiz_skip, which stays as it is on a page without that tile.
void wizard_read_skip(ads_hdlg dialog);
void wizard_help(ads_callback_packet* packet);
