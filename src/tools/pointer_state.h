// pointer_state.h: what the pointer tool knows during one run, from its start to its end.
//
// The pointer stands on one end of a segment of a chain and looks along it. The chain in hand is that of
// the object in the drawing; a step changes it and draws the object anew. Each turn of a LINE, and each step
// from a place that is no end of the chain, begins a chain of its own.
#pragma once

#include <cstdint>

#include "drawing/pline_props.h"
#include "drawing/vertex_chain.h"
#include "hostapi/adsdef.h"

constexpr int MOVE_MODE = 0; // steps only move the pointer
constexpr int DRAW_MODE = 1;

// Room for a command's text: a picked distance has up to 309 digits and 14 decimals.
constexpr int COMMAND_SIZE = 352;

// A chain that was drawn on in the run. From the host's heap, as its vertices.
struct ptr_chain {
    pl_vertex* head; // with `prev` set
    ptr_chain* next;
};

struct pointer_state {
    ads_name ent_name;      // the object of the chain in hand
    bool drawn;             // it is in the drawing; not so once erased, and not of a new chain
    pline_props ent_props;  // as read at the start; C and O change its closed bit
    resbuf* name_group;     // group -1 of the object's list, in front of ent_list
    resbuf* ent_list;       // the list as it was at the start, without group -1
    std::int16_t is_line;   // 1 a LINE, 0 a polyline
    double arrow_size;      // by the view at the start
    ptr_chain* chain_entry; // the chain in hand, the last one of the list
    ptr_chain* first_chain;
    pl_vertex* cur;   // where the pointer stands; `other` is its neighbour in the chain
    pl_vertex* other; // the other end of the current segment, which runs from here to cur
    pl_vertex* tip;   // the pointer's own place: cur, or a vertex outside of the chain
    std::int16_t mode;
    char last_cmd[COMMAND_SIZE]; // the previous command; by its first character U knows what to take back
    double rel_angle;            // of the pointer against the segment, degrees
    double dist;                 // of the last step
    double aux;                  // last angle or length that a key worked out
};

// The vertices of a LINE, or of a polyline with the first one repeated behind the last when it is closed
// (pl_free_vertices). Null for other objects.
pl_vertex* read_open_chain(const ads_name name, const resbuf* list);

// A chain of the run, at the end of the list and in hand; it takes the vertices over. False, with nothing
// changed, when the heap is exhausted.
bool add_chain(pointer_state& state, pl_vertex* head);

double segment_length(const pointer_state& state);    // in the plan
double segment_direction(const pointer_state& state); // from `other` to `cur`, degrees

// Puts the tip on cur; its own vertex, if it had one, is released. Called before cur changes.
void drop_tip(pointer_state& state);
// Makes two neighbouring vertices the ends of the current segment; the tip is on cur then.
void stand_on(pointer_state& state, pl_vertex* cur, pl_vertex* other);

// Gives back all that the run holds.
void release_pointer(pointer_state& state);
