#include "shell/handlers.h"

#include <string>

#include "common/arguments.h"
#include "common/names.h"
#include "common/paths.h"
#include "hostapi/ads.h"
#include "hostapi/windows.h"
#include "interchange/polyline_file.h"
#include "settings/config_directory.h"
#include "settings/drawing_settings.h"
#include "settings/file_pick.h"
#include "settings/remembered_files.h"
#include "shell/operations.h"
#include "symbols/symbol_file.h"

namespace
{

constexpr int EXTENDED_DATA = -3;
constexpr int APPLICATION_NAME = 1001;

// Answers a set of objects that carry extended data of the application that the call names.
void select_of_application(op_call& call, const char* mode)
{
    const char* name = next_text(&call.args, nullptr);
    if (!name)
        return;
    zent_regapp(name);
    std::string text = name; // the filter's text is not const
    resbuf application{nullptr, APPLICATION_NAME, {}};
    application.resval.rstring = text.data();
    resbuf filter{&application, EXTENDED_DATA, {}};
    ads_name set;
    if (acedSSGet(mode, nullptr, nullptr, &filter, set) == RTNORM)
        acedRetName(set, RTPICKS);
}

} // namespace

void op_beep(op_call& call)
{
    if (!call.args)
        return;
    const int frequency = next_short(&call.args, 0);
    const int duration = next_short(&call.args, 0);
    Beep(static_cast<DWORD>(frequency), static_cast<DWORD>(duration));
}

// Both take data_dir and lsp_dir from their two texts.
void op_write_polylines(op_call& call)
{
    write_polyline_file(call.args);
}

void op_read_polylines(op_call& call)
{
    read_polyline_file(call.args);
}

void op_system(op_call& call)
{
    if (const char* command = next_text(&call.args, nullptr))
        host_system(command);
}

void op_select_all_of_application(op_call& call)
{
    select_of_application(call, "X");
}

void op_free_selection(op_call& call)
{
    ads_name set;
    if (next_name(&call.args, set))
        acedSSFree(set);
}

void op_select_of_application(op_call& call)
{
    select_of_application(call, nullptr);
}

void op_save_settings(op_call& call)
{
    const char* path = next_text(&call.args, "");
    if (path[0] != '\0')
        save_drawing_settings(path);
}

void op_find_symbol(op_call& call)
{
    const char* file = next_text(&call.args, "");
    const int quiet = next_short(&call.args, 0);
    char path[ADS_PATH_SIZE];
    symbol_find_file(path, file, quiet);
    acedRetStr(path);
}

void op_remember_file(op_call& call)
{
    const char* file = next_text(&call.args, "");
    if (file[0] == '\0' || next_short(&call.args, 0) == 0)
        return;
    char path[ADS_PATH_SIZE];
    text_set(path, file);
    remember_file(path);
}

void op_config_directory(op_call& call)
{
    if (const char* path = next_text(&call.args, nullptr))
        set_config_directory(path);
}

void op_pick_file(op_call& call)
{
    const char* title = next_text(&call.args, "");
    char path[ADS_PATH_SIZE];
    text_set(path, next_text(&call.args, ""));
    const char* extensions = next_text(&call.args, "");
    const int flags = next_short(&call.args, 0);
    resbuf result{};
    if (zent_get_file(title, path, extensions, flags, &result) != RTNORM || result.restype != RTSTR)
        return;
    acedRetStr(result.resval.rstring);
    acad_free(result.resval.rstring);
}

void op_compact_path(op_call& call)
{
    acedRetNil();
    const char* path = next_text(&call.args, nullptr);
    if (!path || !call.args)
        return;
    const int width = next_short(&call.args, 0);
    char compact[ADS_PATH_SIZE];
    compact_path(path, compact, width);
    acedRetStr(compact);
}

void op_check_name(op_call& call)
{
    acedRetNil();
    std::string name = next_text(&call.args, "");
    if (!name_is_bad(name.data()))
        acedRetStr(name.c_str());
}
