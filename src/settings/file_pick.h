// file_pick.h: the file dialog of all the product, which opens where the last file of its kind was and
// remembers the choice.
#pragma once

#include "common/text_buffer.h"
#include "hostapi/adsdef.h"

// Bits of a pick's flags that are looked at; the others are the host's own (acedGetFileD).
constexpr int PICK_NEW_FILE = 1;
constexpr int PICK_NO_REPLACE_QUESTION = 32;

// Asks for a file and answers the status of the host's dialog; on RTNORM `result` holds the path in a
// new string (acad_free).
//   default_path  where the dialog opens, changed: trimmed, and put into the remembered directory when it
//                 names no file of its own
//   extensions    split by ";"; the first with a remembered directory decides
//   flags         with PICK_NEW_FILE and no PICK_NO_REPLACE_QUESTION the user is asked before an existing
//                 file is taken
int zent_get_file(const char* title, text_out default_path, const char* extensions, int flags, resbuf* result);
