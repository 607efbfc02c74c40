// What help shows. Three things may be running: a product function (lisp_active), a host command
// (cmd_active) or nothing. help.xrf maps functions to topics of the compiled help file beside it.
#include "launch/help.h"

#include <cstring>
#include <string>

#include "common/directories.h"
#include "common/lisp_vars.h"
#include "common/small_dialogs.h"
#include "common/text.h"
#include "common/tracking.h"
#include "hostapi/ads.h"
#include "hostapi/dcl.h"
#include "hostapi/files.h"
#include "hostapi/processes.h"
#include "settings/command_line.h"

html_help_control held_help_control{};
char cross_reference_help[256] = "zentr.chm";

namespace
{

constexpr const char* CROSS_REFERENCE = "help.xrf";
constexpr const char* HELP_FILE = "zentrik.chm";
constexpr const char* NOT_INSTALLED = "Zentrik Help is not installed.";
constexpr int RECORD_SIZE = 253; // 252 characters and a terminator

constexpr const char* CONTROL_KEY = "CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";
constexpr DWORD LONGEST_CONTROL_PATH = 260;
constexpr const char* CONTROL_LIBRARY = "hhctrl.ocx";
constexpr unsigned HTML_HELP_ORDINAL = 14;

constexpr int HOST_HELP_BY_PARTIAL_KEY = 261;

// What is shown; the last two are how the dialog ends.
enum help_choice { HELP_NONE = 0, HELP_PRODUCT = 2, HELP_HOST = 3 };

struct xrf_answer {
    bool installed; // the file is there
    bool found;
    std::string topic;
};

std::string looked_up_name()
{
    const bool marked = current_function[0] == '+' || current_function[0] == '-';
    return current_function + (marked ? 1 : 0);
}

// The third field of a record of `name`; empty when the record isn't one, or not its.
std::string topic_in_record(const char* record, const std::string& name)
{
    const std::string_view line = record;
    const std::size_t first = line.find('|');
    if (first == std::string_view::npos || line.substr(0, first) != name)
        return {};
    const std::size_t second = line.find('|', first + 1);
    if (second == std::string_view::npos)
        return {};
    const std::string_view rest = line.substr(second + 1);
    return std::string(rest.substr(0, rest.find('|')));
}

xrf_answer look_up(const std::string& name)
{
    xrf_answer answer{};
    host_file* file = file_open((std::string(symbol_dir) + CROSS_REFERENCE).c_str(), "r");
    if (!file)
        return answer;
    answer.installed = true;
    char record[RECORD_SIZE];
    // A name may be listed again: products add their own lines behind those of others, and the last counts.
    while (file_gets(record, sizeof record, file)) {
        str_trim(record);
        std::string topic = topic_in_record(record, name);
        if (topic.empty())
            continue;
        answer.topic = std::move(topic);
        answer.found = true;
    }
    file_close(file);
    return answer;
}

void show_product_help(const xrf_answer& answer)
{
    if (!answer.installed) {
        zent_alert_box(NOT_INSTALLED);
        return;
    }
    std::string target = std::string(symbol_dir) + HELP_FILE;
    if (answer.found)
        target += "::/" + answer.topic;
    html_help(0, target.c_str(), 0, 0);
}

void show_host_help()
{
    // From the F1 hook a command can't be typed: the dialog that F1 was pressed in is still open.
    if (help_pending != 0)
        acedHelp(nullptr, "", HOST_HELP_BY_PARTIAL_KEY);
    else
        send_to_command_line("'_.HELP\n");
}

bool tile_is_on(ads_hdlg dialog, const char* key)
{
    char value[8] = "";
    ads_get_tile(dialog, key, value, sizeof value);
    return std::strcmp(value, "1") == 0;
}

void take_choice(ads_callback_packet* packet)
{
    if (tile_is_on(packet->dialog, "zent"))
        ads_done_dialog(packet->dialog, HELP_PRODUCT);
    else if (tile_is_on(packet->dialog, "acad"))
        ads_done_dialog(packet->dialog, HELP_HOST);
}

int asked_choice()
{
    const std::string path = std::string(lsp_dir) + "zentenvr.dcl";
    int file = -1;
    if (ads_load_dialog(path.c_str(), &file) != RTNORM || file < 0)
        return HELP_NONE;
    ads_hdlg dialog = 0;
    int result = HELP_NONE;
    if (ads_new_dialog("select_help", file, nullptr, &dialog) == RTNORM && dialog != 0) {
        ads_set_tile(dialog, "zent", "1");
        ads_action_tile(dialog, "ok", take_choice);
        ads_start_dialog(dialog, &result);
    }
    ads_unload_dialog(file);
    return result;
}

HINSTANCE registered_control()
{
    HKEY key = 0;
    if (RegOpenKeyExA(HKEY_CLASSES_ROOT, CONTROL_KEY, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return 0;
    char path[LONGEST_CONTROL_PATH + 1] = ""; // values needn't come with a terminator
    DWORD type = 0, size = LONGEST_CONTROL_PATH;
    const long status =
        RegQueryValueExA(key, "", nullptr, &type, reinterpret_cast<unsigned char*>(path), &size);
    RegCloseKey(key);
    const bool is_path = status == ERROR_SUCCESS && (type == REG_SZ || type == REG_EXPAND_SZ) && path[0];
    return is_path ? LoadLibraryA(path) : 0;
}

} // namespace

HWND html_help(HWND caller, const char* file, unsigned command, std::uintptr_t data)
{
    html_help_control& control = held_help_control;
    if (control.library == 0 && !control.failed) {
        control.library = registered_control();
        if (control.library == 0)
            control.library = LoadLibraryA(CONTROL_LIBRARY);
        control.failed = control.library == 0;
    }
    if (control.library == 0)
        return 0;
    if (!control.call) {
        void* entry = GetProcAddress(control.library, LIBRARY_ORDINAL(HTML_HELP_ORDINAL));
        control.call = reinterpret_cast<decltype(control.call)>(entry);
    }
    if (!control.call) {
        control.failed = true;
        return 0;
    }
    return control.call(caller, file, command, data);
}

void help_show()
{
    if (symbol_dir[0] == '\0')
        lisp_get_text(symbol_dir, "psname");
    // Known behaviour: without the dollar sign. Where nobody sets this variable the dialog is found by its
    // bare name on the host's search path, and installations rely on that.
    lisp_get_text(lsp_dir, "lspdir");
    const xrf_answer answer = look_up(looked_up_name());
    int choice = HELP_PRODUCT;
    if (!lisp_active)
        choice = cmd_active == 1 ? static_cast<int>(HELP_HOST) : asked_choice();
    if (choice == HELP_PRODUCT)
        show_product_help(answer);
    else if (choice == HELP_HOST)
        show_host_help();
}
