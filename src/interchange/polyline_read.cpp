// Polylines of a text file into the drawing.
#include "drawing/write.h"
#include "interchange/file_request.h"
#include "interchange/polyline_file.h"

namespace
{

constexpr pick_texts READ_TEXTS[] = {{"Polyline File to Read", "txt;*"},
                                     {"Polyline File to Read", "pln"},
                                     {"DTM Polyline File to Read", "lf;lfn"}};

} // namespace

int read_polyline_file(const resbuf* args)
{
    char default_path[ADS_PATH_SIZE], path[ADS_PATH_SIZE];
    take_directories(args, default_path);
    int format = POLYLINE_FORMAT_OWN;
    if (ask_polyline_format(&format) != RTNORM)
        return RTCAN;
    if (const int status = ask_polyline_path(READ_TEXTS[format], default_path, 0, path); status != RTNORM)
        return status;
    file_chain* list = parse_polyline_file(path, format);
    for (const file_chain* chain = list; chain; chain = chain->next)
        pl_write_simple(chain->head, "", 0, chain->color, 0);
    free_file_chains(list);
    acutPrintf("\nDone.");
    return RTNORM;
}
