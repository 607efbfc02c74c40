// tables.h: small operations over the symbol tables and the current space.
#pragma once

#include "common/text_buffer.h"
#include "drawing/pline_props.h"
#include "hostapi/adsdef.h"
#include "hostapi/dbobjects.h"
#include "polygon/node.h"

constexpr const char* CURRENT_LAYER = "CLAYER"; // in place of a layer's name

// Makes a layer current and usable: thawed, on, unlocked; new with `color` (by layer counts as 7) when
// the drawing lacks it. The name is trimmed, put in upper case and rid of forbidden characters in place.
// "CLAYER" and an empty name change nothing.
Acad::ErrorStatus layer_make_current(char* name, int color);

// Makes a text style current, with no fixed height; new when the drawing lacks it. An empty name and
// "CSTYLE" stand for the current style.
Acad::ErrorStatus text_style_make_current(const char* name);

// Adds a dashed linetype (0.5 on, 0.25 off) of that name when the drawing lacks one.
Acad::ErrorStatus linetype_ensure(const char* name);

// "*Model_Space" or "*Paper_Space".
const char* current_space_name();

// A LINE for each pair of neighbouring nodes.
void nodes_as_lines(const pg_node* nodes, pline_props props);

// x and y of an entity's corners; nothing is written when it doesn't open or has no extent.
void entity_extents(const ads_name name, ads_point low, ads_point high);
// The layer's name, empty when the entity doesn't open.
void entity_layer(const ads_name name, text_out layer);
// Colour index, that of the layer for by layer; 256 when the entity doesn't open.
int entity_color(const ads_name name);

// Temporary vectors along a chain.
void nodes_grdraw(const pg_node* nodes, int color);

// Makes a layer current by the host's LAYER command; a name that the host can't keep is put to the user
// in a dialog first. A new layer gets `color`.
void layer_by_command(const char* name, int color);
