// wizard_preference.h: the user's "don't show this again" for the start wizard.
#pragma once

// Writes use_startwiz=0 into zentrik.ini in data_dir, which the product's programs read when they start,
// and sets the LISP variable. A file that isn't there isn't made.
void wizard_switch_off();
