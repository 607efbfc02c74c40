#include "common/small_dialogs.h"

#include <cstring>

#include "common/lisp_vars.h"
#include "hostapi/ads.h"
#include "hostapi/dcl.h"
#include "hostapi/windows.h"

namespace
{

constexpr std::size_t LONGEST_ALERT = 50; // characters that the alert's one line shows

// The text that zent_input_box hands out, while its dialog is open.
char* input_out = nullptr;
int input_size = 0;

struct open_dialog {
    int file;        // of the loaded DCL file
    ads_hdlg handle; // 0: it couldn't be made, nothing is loaded
};

void unload(int file)
{
    if (file >= 0)
        ads_unload_dialog(file);
}

open_dialog make_dialog(const char* directory, const char* name)
{
    char path[256];
    text_set(path, directory);
    text_add(path, "zentfile.dcl");
    open_dialog made{-1, 0};
    if (ads_load_dialog(path, &made.file) != RTNORM || made.file < 0)
        return {-1, 0};
    if (ads_new_dialog(name, made.file, nullptr, &made.handle) != RTNORM || made.handle == 0) {
        unload(made.file);
        return {-1, 0};
    }
    return made;
}

open_dialog make_dialog(const char* name)
{
    char directory[256];
    lisp_get_text(directory, "lspdir$");
    return make_dialog(directory, name);
}

void end_with_ok(ads_callback_packet* packet)
{
    ads_done_dialog(packet->dialog, DLGOK);
}

void take_input(ads_callback_packet* packet)
{
    if (input_out && input_size > 0)
        ads_get_tile(packet->dialog, "value", input_out, input_size);
    ads_done_dialog(packet->dialog, DLGOK);
}

struct button {
    const char* key;
    int answer;
};
constexpr int NO_TO_ALL = 4;
constexpr button YES_NO_ALL[] = {{"yes", 1}, {"yesall", 2}, {"no", 3}, {"noall", NO_TO_ALL}};

void press_yes_no_all(ads_callback_packet* packet)
{
    char key[32] = "";
    ads_get_attr_string(packet->tile, "key", key, sizeof key);
    for (const button& b : YES_NO_ALL)
        if (std::strcmp(b.key, key) == 0)
            ads_done_dialog(packet->dialog, b.answer);
}

} // namespace

void zent_alert_box(const char* text)
{
    if (std::strchr(text, '\n') || std::strlen(text) > LONGEST_ALERT) {
        acedAlert(text);
        return;
    }
    char directory[256];
    lisp_get_text(directory, "lspdir$");
    const open_dialog dialog = directory[0] ? make_dialog(directory, "zent_alert") : open_dialog{-1, 0};
    if (!dialog.handle) {
        acedAlert(text);
        return;
    }
    ads_set_tile(dialog.handle, "msg", text);
    ads_action_tile(dialog.handle, "ok", end_with_ok);
    int result = 0;
    ads_start_dialog(dialog.handle, &result);
    unload(dialog.file);
}

int zent_input_box(const char* prompt, const char* title, char* out, int size)
{
    const open_dialog dialog = make_dialog("zent_get_string");
    if (!dialog.handle) {
        acutPrintf("Can not load a dialog definition\n");
        return RTERROR;
    }
    input_out = out;
    input_size = size;
    ads_set_tile(dialog.handle, "prompt", prompt);
    SetWindowTextA(GetActiveWindow(), title);
    ads_action_tile(dialog.handle, "ok", take_input);
    int result = DLGCANCEL;
    ads_start_dialog(dialog.handle, &result);
    unload(dialog.file);
    input_out = nullptr;
    input_size = 0;
    return result == DLGOK ? RTNORM : RTCAN;
}

int zent_yes_no_all(const char* prompt)
{
    const open_dialog dialog = make_dialog("zent_yesnoall");
    if (!dialog.handle) {
        acutPrintf("Error loading dialog");
        return 1;
    }
    ads_set_tile(dialog.handle, "prompt", prompt);
    for (const button& b : YES_NO_ALL)
        ads_action_tile(dialog.handle, b.key, press_yes_no_all);
    int result = DLGCANCEL;
    ads_start_dialog(dialog.handle, &result);
    // Known behaviour: the file stays loaded, unlike those of the other two.
    return result == DLGCANCEL ? NO_TO_ALL : result;
}
