// polyline_file.h: polylines as text files, to and from the drawing.
//
// One vertex a line, in one of three formats; docs/polyline-files.md describes them.
#pragma once

#include <cstdint>

#include "drawing/vertex_chain.h"
#include "hostapi/adsdef.h"

constexpr int POLYLINE_FORMAT_MICROSTATION = 0;
constexpr int POLYLINE_FORMAT_OWN = 1;
constexpr int POLYLINE_FORMAT_DTM = 2;

// One polyline of a file, on the host's heap.
struct file_chain {
    std::int32_t color; // host colour index, 0 when the file gave none
    pl_vertex* head;    // the vertices in reverse file order; null for a header with no vertex
    file_chain* next;   // the polyline that was read before this one
};

// The file's polylines, the last one first; they belong to the caller (free_file_chains). Null when the
// file doesn't open, holds none, or is too large for the heap: a part of it would be another line.
file_chain* parse_polyline_file(const char* path, int format);
void free_file_chains(file_chain* list);

// The two commands, from the format question to "Done.". `args`: two strings, the default file name with
// its directory, and the directory of the dialog files; both may be absent. RTNORM when the work was
// done, RTCAN when the user left it, RTERROR when it could not be done, which has been told.
int write_polyline_file(const resbuf* args);
int read_polyline_file(const resbuf* args);
