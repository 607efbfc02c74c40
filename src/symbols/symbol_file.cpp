#include "symbols/symbol_file.h"

#include <string>
#include <string_view>

#include "common/directories.h"
#include "common/lisp_vars.h"
#include "common/text.h"
#include "hostapi/ads.h"
#include "hostapi/files.h"

void symbol_full_path(text_out out, const char* file)
{
    lisp_get_text(symbol_dir, "psname");
    std::string path = file;
    if (path.find('\\') == std::string::npos)
        path.insert(0, symbol_dir);
    str_upper(path.data());
    if (path.find(".DWG") == std::string::npos)
        path += ".DWG";
    text_set(out, path);
}

void symbol_find_file(text_out out, const char* file, int quiet)
{
    char path[ADS_PATH_SIZE];
    symbol_full_path(path, file);
    text_set(out, "");
    if (file_exists(path)) {
        const std::string_view found = path;
        text_set(out, found.substr(0, found.find(".DWG")));
    } else if (!quiet) {
        acutPrintf("\nWarning: Symbol '%s' does not exist.\n", path);
    }
}
