// file_request.h: what writing and reading a polyline file ask first.
#pragma once

#include "hostapi/ads.h"

// Sets data_dir and lsp_dir from the arguments of a call; the first is the default path too.
void take_directories(const resbuf* args, char (&default_path)[ADS_PATH_SIZE]);

// RTNORM, or RTCAN.
int ask_polyline_format(int* format);

// The file pick of a format; titles and extensions by format code. RTNORM, or the pick's status.
struct pick_texts {
    const char* title;
    const char* extensions;
};
int ask_polyline_path(const pick_texts& texts, char (&default_path)[ADS_PATH_SIZE], int flags,
                      char (&path)[ADS_PATH_SIZE]);
