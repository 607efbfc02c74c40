// arguments.h: reading the values of a call in order. Each reader takes the node that `at` points to, when
// there is one, and moves on; a missing node gives the standard value.
//
// Programs pass 5 where 5.0 is meant and the other way round, and have always got what the node's
// bytes say: numbers, points and names are taken from the node whatever its type. Texts are the
// exception, since what their nodes hold is an address: a text is taken from a text node only, and
// nothing else is taken from one. What doesn't fit counts as missing.
#pragma once

#include "hostapi/adsdef.h"

const char* next_text(const resbuf** at, const char* standard);
int next_short(const resbuf** at, int standard);
double next_real(const resbuf** at, double standard);
// False, with `point` as it was, when there is none.
bool next_point(const resbuf** at, ads_point point);
// False, with `name` as it was, when there is none.
bool next_name(const resbuf** at, ads_name name);

// The 16-bit value of a node, 0 of a text.
int short_of(const resbuf& node);
