// startup_wizard.cpp: the run of the wizard around its pages. It opens or makes nothing itself: it ends by
// handing the host a command, which runs when the module's load, or the call, is over.
#include "settings/startup_wizard.h"

#include <cstdlib>
#include <string>

#include "common/directories.h"
#include "common/lisp_vars.h"
#include "common/paths.h"
#include "common/text.h"
#include "common/tracking.h"
#include "settings/command_line.h"
#include "settings/settings_file.h"
#include "settings/wizard_pages.h"
#include "settings/wizard_preference.h"
#include "settings/wizard_values.h"

wizard_links wizard_calls{};
char wiz_open_path[ADS_PATH_SIZE] = "";
char wiz_new_path[ADS_PATH_SIZE] = "";
int wiz_skip = 0;

namespace
{

constexpr int RECENT_PAGE = 0;
constexpr int DRAWING_PAGE = 1;

// Names that the host gives to new drawings. The test is for a part of the name: MYDRAWING5.DWG counts.
bool drawing_has_no_name()
{
    std::string name = host_text("DWGNAME");
    str_upper(name.data());
    if (name.find("DRAWING.DWG") != std::string::npos)
        return true;
    for (char number = '1'; number <= '9'; ++number)
        if (name.find(std::string("DRAWING") + number + ".DWG") != std::string::npos)
            return true;
    return false;
}

// The path goes to the command line inside quotes.
void send_open_command()
{
    path_to_slash(wiz_open_path);
    const std::string path = wiz_open_path;
    if (path.find('"') != std::string::npos)
        acutPrintf("\nUnable to open '%s'.", path.c_str());
    else
        send_to_command_line(("(c:open_dwg \"" + path + "\")\n").c_str());
}

void pick_and_open()
{
    resbuf picked{};
    if (acedGetFileD("Select File", nullptr, "dwg", 0, &picked) != RTNORM || picked.restype != RTSTR ||
        !picked.resval.rstring)
        return;
    text_set(wiz_open_path, picked.resval.rstring);
    acad_free(picked.resval.rstring);
    send_open_command();
}

int run_pages(int* page)
{
    int dialogs = -1, result = WIZARD_CANCELLED;
    ads_load_dialog((std::string(lsp_dir) + "zentproj.dcl").c_str(), &dialogs);
    if (*page == RECENT_PAGE) {
        result = wizard_recent_page(dialogs);
        if (result == WIZARD_NEW)
            *page = DRAWING_PAGE;
    }
    if (*page == DRAWING_PAGE)
        result = wizard_drawing_page(dialogs);
    if (dialogs >= 0)
        ads_unload_dialog(dialogs);
    return result;
}

void hand_over(int result, int page)
{
    if (result == WIZARD_CANCELLED)
        return;
    if (result == WIZARD_OPEN)
        pick_and_open();
    else if (page == DRAWING_PAGE)
        send_to_command_line("(c:start_wiz)\n");
    else
        send_open_command();
}

} // namespace

int tile_integer(ads_hdlg dialog, const char* key)
{
    char text[ADS_TEXT_SIZE] = "";
    ads_get_tile(dialog, key, text, sizeof text);
    return std::atoi(text);
}

double tile_real(ads_hdlg dialog, const char* key)
{
    char text[ADS_PATH_SIZE] = "";
    ads_get_tile(dialog, key, text, sizeof text);
    return std::atof(text);
}

void wizard_read_skip(ads_hdlg dialog)
{
    char text[32] = "";
    if (ads_get_tile(dialog, "skip_wiz", text, sizeof text) == RTNORM)
        wiz_skip = std::atoi(text);
}

void wizard_help(ads_callback_packet*)
{
    if (wizard_calls.help)
        wizard_calls.help();
}

void startup_wizard()
{
    if (!lisp_is_integer("use_startwiz", 1))
        return;
    wiz_open_path[0] = '\0';
    wiz_skip = 0;
    if (!drawing_has_no_name())
        return;
    lisp_get_text(lsp_dir, "lspdir$");
    lisp_get_text(data_dir, "usrdir$");
    int page = lisp_integer("is_new");
    cmd_active = 1;
    text_set(current_function, "STARTUP_WIZARD");
    const int result = run_pages(&page);
    if (wiz_skip == 1)
        wizard_switch_off();
    hand_over(result, page);
}
