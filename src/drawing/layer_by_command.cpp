// A layer by the host's LAYER command, with a dialog for names that the host can't keep.
#include <cstring>
#include <string>

#include "common/directories.h"
#include "common/invoke.h"
#include "common/lisp_vars.h"
#include "common/names.h"
#include "common/text.h"
#include "drawing/tables.h"
#include "hostapi/ads.h"
#include "hostapi/dcl.h"

namespace
{

constexpr std::size_t LAYER_NAME_SIZE = 256;
constexpr int EDITED_NAME_SIZE = 79; // the dialog's edit box hands out 78 characters

void pause_for_enter()
{
    char answer[ADS_TEXT_SIZE];
    acedGetString(0, "\nPress ENTER to continue.", answer);
}

void show_bad_name(ads_hdlg dialog, const char* name, const char* offered)
{
    ads_set_tile(dialog, "badnam", (std::string("Invalid Layer Name - ") + name).c_str());
    ads_set_tile(dialog, "newnam", offered);
}

// The dialog stays until the name is one that the host can keep.
void check_new_name(ads_callback_packet* packet)
{
    char* name = static_cast<char*>(packet->client_data);
    ads_get_tile(packet->dialog, "newnam", name, EDITED_NAME_SIZE);
    if (name_is_bad(name) == 0) {
        ads_done_dialog(packet->dialog, DLGOK);
        return;
    }
    show_bad_name(packet->dialog, name, name);
    ads_mode_tile(packet->dialog, "newnam", MODE_SETFOCUS);
    ads_mode_tile(packet->dialog, "newnam", MODE_SETSEL);
}

void show_help(ads_callback_packet*)
{
    invoke_help();
}

// Puts a bad name to the user, as it was before it was trimmed. False: there is to be no layer.
bool mend_name(char (&name)[LAYER_NAME_SIZE], const char* untrimmed)
{
    char file[LAYER_NAME_SIZE];
    lisp_get_text(file, "lspdir$");
    if (file[0] == '\0')
        text_set(file, lsp_dir);
    text_add(file, "zentfile.dcl");
    int loaded = -1;
    if (ads_load_dialog(file, &loaded) != RTNORM || loaded < 0) {
        acutPrintf("\nError: Unable to open %s dialog.", file);
        pause_for_enter();
        return false;
    }
    ads_hdlg dialog = 0;
    if (ads_new_dialog("zt_badlayer", loaded, nullptr, &dialog) != RTNORM || dialog == 0) {
        acutPrintf("\nLoad Dialog Error in zentfile.dcl");
        pause_for_enter();
        ads_unload_dialog(loaded);
        return true;
    }
    char edited[EDITED_NAME_SIZE];
    text_set(edited, name);
    show_bad_name(dialog, name, untrimmed);
    ads_action_tile(dialog, "ok", check_new_name);
    ads_client_data_tile(dialog, "ok", edited);
    ads_action_tile(dialog, "help", show_help);
    int result = DLGCANCEL;
    ads_start_dialog(dialog, &result);
    ads_unload_dialog(loaded);
    text_set(name, edited);
    return result == DLGOK;
}

bool layer_exists(const char* name)
{
    resbuf* record = acdbTblSearch("LAYER", name, 0);
    acutRelRb(record);
    return record != nullptr;
}

void make_layer(const char* name, int color)
{
    resbuf regenmode{};
    const bool saved = acedGetVar("REGENMODE", &regenmode) == RTNORM;
    resbuf off{};
    off.restype = RTSHORT;
    if (saved)
        acedSetVar("REGENMODE", &off);
    acedCommand(RTSTR, "_.LAYER", RTSTR, "_M", RTSTR, name, RTSTR, "_C", RTSHORT, color, RTSTR, name, RTSTR, "",
                RTNONE);
    if (saved)
        acedSetVar("REGENMODE", &regenmode);
}

} // namespace

void layer_by_command(const char* name, int color)
{
    char layer[LAYER_NAME_SIZE];
    text_set(layer, name);
    str_upper(layer);
    if (std::strcmp(layer, CURRENT_LAYER) == 0)
        return;
    const std::string untrimmed(layer);
    if (name_is_bad(layer) != 0 && !mend_name(layer, untrimmed.c_str()))
        return;
    if (layer_exists(layer))
        acedCommand(RTSTR, "_.LAYER", RTSTR, "_T", RTSTR, layer, RTSTR, "_S", RTSTR, layer, RTSTR, "", RTNONE);
    else
        make_layer(layer, color);
}
