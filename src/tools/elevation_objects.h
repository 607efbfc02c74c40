// elevation_objects.h: the elevation of one drawing object, by its kind. What can't be changed whole stays
// as it is and isn't counted.
#pragma once

#include "tools/elevation_rule.h"

// `list`: the object's own, from acdbEntGet; its elevations are changed in it too.
using elevation_changer = void (*)(const ads_name name, resbuf* list, const elevation_rule& rule,
                                   elevation_tally* tally);

// A block reference; with those that are named SRVPN... go their attributes and the elevation that they tell.
void change_insert(const ads_name name, resbuf* list, const elevation_rule& rule, elevation_tally* tally);

// A flat polyline moves as a whole, a 3D one is made again. Meshes stay, with a message.
void change_polyline(const ads_name name, resbuf* list, const elevation_rule& rule, elevation_tally* tally);

void change_line(const ads_name name, resbuf* list, const elevation_rule& rule, elevation_tally* tally);

// Any other object: all its groups 10 and 11.
void change_points(const ads_name name, resbuf* list, const elevation_rule& rule, elevation_tally* tally);
