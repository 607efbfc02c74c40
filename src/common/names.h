// names.h: names that the host keeps (layers, applications), and look-ups in group lists.
#pragma once

#include "hostapi/adsdef.h"

// Characters that no name may hold.
constexpr const char* FORBIDDEN_IN_NAMES = "<>/\\\":?|,=`~*";

// Trims in place. 1 when the text is then empty or has a forbidden character, else 0.
int name_is_bad(char* text);
// Trims in place. 0 when the text is then empty; else each forbidden character becomes '_', and 1.
int name_clean(char* text);

// First node of a chain whose type is `code`, or null.
resbuf* rb_find(resbuf* list, int code);
const resbuf* rb_find(const resbuf* list, int code);

// The node with the layer (group 8) of an entity's list, or null. The name is put in upper case in
// the list, and one of 32 or more characters is cut to 31 with a warning.
resbuf* entity_layer(resbuf* entity_list);

// Registers an application for extended data unless the drawing knows it. 0 with a message when
// that fails, else 1.
int zent_regapp(const char* name);

// RTNORM when the text fits the host's wild-card pattern or equals it; RTNONE for a null argument.
int wild_match(const char* text, const char* pattern);
