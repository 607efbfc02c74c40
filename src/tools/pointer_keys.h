// pointer_keys.h: the commands of the pointer tool's prompt, by their first character in either case.
#pragma once

#include "common/text_buffer.h"
#include "tools/pointer_state.h"

// A key's answer while the tool goes on; otherwise the tool ends with RTNORM or RTCAN.
constexpr int GO_ON = 0;

// What stands behind a command's letter, from the first character on that is no blank.
const char* behind_letter(const char* text);

// Whether a command's number, for the keys that take one, is finite; a message when not.
bool command_number_is_usable(const char* text);

// Runs the key of the text's first character; any other does nothing. Draw and move, distance, R, L, T, E,
// A, B, S, N, P: what asks or changes C, O, U and the help come before.
int run_pointer_key(pointer_state& state, const char* text);

// C and O: the closed bit of the polyline, which is drawn anew. A LINE is refused with a message.
void close_polyline(pointer_state& state);
void open_polyline(pointer_state& state);

// U: does the opposite of the last command, as one key chooses by its first character. `text` is the
// command that goes on from there: another key, or "U" when all is done.
void undo_pointer(pointer_state& state, text_out text);

// ---- keys with files of their own: `text` is the command as typed ---------------------------------------

int extend_to_edge(pointer_state& state, const char* text);  // E
int turn_by_angle(pointer_state& state, const char* text);   // A, align; A#, dd.mmss clockwise
int turn_to_bearing(pointer_state& state, const char* text); // B, Qdd.mmss
