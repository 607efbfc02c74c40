// elevation_questions.h: what the user is asked before an elevation change.
#pragma once

#include <string>

#include "tools/elevation_rule.h"

struct elevation_request {
    std::string mode_text = "Absolute"; // as programs gave it; its first letter counts, in either case
    elevation_rule rule;                // its mode is that letter, in upper case
};

// The standard answers from the values of a call: the mode text and the value, or both as one list. What is
// missing or of another type leaves the standard as it is; an integer counts as the number that it is.
void read_elevation_defaults(const resbuf* args, elevation_request* want);

// Asks, with the standards in `want`. False when the user cancels.
bool ask_elevation_request(elevation_request* want);
