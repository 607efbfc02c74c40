// wizard_drawing_page.cpp: the page with the name, the units and the scales of a new drawing. Sizes are
// shown twice: on paper, and in the drawing's units by the horizontal scale. Metric sizes on paper are
// centimetres and their scale is a ratio, hence the factor 100; the others are inches and feet to the inch.
#include <cstring>
#include <string>

#include "common/lisp_vars.h"
#include "common/paths.h"
#include "common/small_dialogs.h"
#include "common/text.h"
#include "common/variables.h"
#include "hostapi/files.h"
#include "settings/file_pick.h"
#include "settings/settings_file.h"
#include "settings/wizard_pages.h"
#include "settings/wizard_values.h"

namespace
{

constexpr int NAME_WIDTH = 41; // characters of the new drawing's path on the page
constexpr double METRIC_FACTOR = 100.0;

void set_real_tile(ads_hdlg dialog, const char* key, double value, int decimals)
{
    char text[ADS_PATH_SIZE];
    text_format(text, "%.*f", decimals, value);
    ads_set_tile(dialog, key, text);
}

// Sizes in the drawing out of those on paper.
void wiz_recompute_paper(ads_callback_packet* packet)
{
    const ads_hdlg dialog = packet->dialog;
    const double factor = tile_integer(dialog, "metric") == 1 ? METRIC_FACTOR : 1.0;
    const double scale = tile_real(dialog, "hsc");
    const double symbols = tile_real(dialog, "syms") * scale / factor;
    const double texts = tile_real(dialog, "txts") * scale / factor;
    set_real_tile(dialog, "syms2", symbols, 3);
    set_real_tile(dialog, "txts2", texts, 3);
}

// The reverse. A scale of 0 gives infinite sizes, which show the user what is wrong.
void wiz_recompute_scaled(ads_callback_packet* packet)
{
    const ads_hdlg dialog = packet->dialog;
    const double factor = tile_integer(dialog, "metric") == 1 ? METRIC_FACTOR : 1.0;
    const double scale = tile_real(dialog, "hsc");
    const double symbols = tile_real(dialog, "syms2") / scale * factor;
    const double texts = tile_real(dialog, "txts2") / scale * factor;
    set_real_tile(dialog, "syms", symbols, 3);
    set_real_tile(dialog, "txts", texts, 3);
}

void wiz_units_changed(ads_callback_packet* packet)
{
    if (tile_integer(packet->dialog, "metric") == 1)
        ads_set_tile(packet->dialog, "tog2", "1");
    wiz_recompute_paper(packet);
}

void forget_name(ads_hdlg dialog)
{
    ads_set_tile(dialog, "filenm", "");
    wiz_new_path[0] = '\0';
}

bool is_current_drawing(const char* path)
{
    std::string wanted = path, current = host_text("DWGPREFIX") + host_text("DWGNAME");
    str_upper(wanted.data());
    str_upper(current.data());
    return wanted == current;
}

void wiz_pick_drawing(ads_callback_packet* packet)
{
    const ads_hdlg dialog = packet->dialog;
    char standard[ADS_PATH_SIZE] = "";
    resbuf picked{};
    const int status = zent_get_file("Drawing to Create", standard, "dwg", PICK_NEW_FILE, &picked);
    if (status != RTNORM || picked.restype != RTSTR || !picked.resval.rstring) {
        forget_name(dialog);
        return;
    }
    text_set(wiz_new_path, picked.resval.rstring);
    acad_free(picked.resval.rstring);
    if (is_current_drawing(wiz_new_path)) {
        zent_alert_box("Error: drawing name already active in current\nAutoCAD session. Use another name.");
        forget_name(dialog);
        return;
    }
    char shown[ADS_PATH_SIZE];
    compact_path(wiz_new_path, shown, NAME_WIDTH);
    ads_set_tile(dialog, "filenm", shown);
    ads_mode_tile(dialog, "ok", MODE_SETFOCUS);
}

void set_both(ads_hdlg dialog, const char* key, const char* lisp_name, const char* host_name)
{
    const double value = tile_real(dialog, key);
    lisp_set_real(lisp_name, value);
    if (host_name)
        variable_set_real(host_name, value);
}

// Later values don't depend on earlier ones; programs that watch the variables count on the order.
void apply_values(ads_hdlg dialog)
{
    lisp_set_text("eorm$", tile_integer(dialog, "english") == 1 ? "E" : "M");
    lisp_set_short("is_metric", tile_integer(dialog, "tog2"));
    set_both(dialog, "hsc", "sv:sm", "DIMSCALE");
    set_both(dialog, "txts", "sv:ts", "DIMTXT");
    set_both(dialog, "syms", "sv:ps", "DIMASZ");
    set_both(dialog, "txts2", "sv:sf", nullptr);
    set_both(dialog, "syms2", "sv:psf", "PDSIZE");
    wizard_read_skip(dialog);
}

void press_ok(ads_callback_packet* packet)
{
    if (wiz_new_path[0] == '\0') {
        zent_alert_box("Missing Drawing Name");
        return;
    }
    // The user has agreed to replace it; the command that makes the new one asks no more.
    file_remove(wiz_new_path);
    lisp_set_text("dwg_filenm", wiz_new_path);
    apply_values(packet->dialog);
    ads_done_dialog(packet->dialog, WIZARD_TAKEN);
}

// The values hold for the unnamed drawing too, which the user then goes on with.
void press_cancel(ads_callback_packet* packet)
{
    apply_values(packet->dialog);
    ads_done_dialog(packet->dialog, WIZARD_CANCELLED);
}

void set_tiles(ads_hdlg dialog)
{
    char units[ADS_TEXT_SIZE];
    lisp_get_text(units, "eorm$");
    set_real_tile(dialog, "hsc", lisp_real("sv:sm"), 1);
    ads_set_tile(dialog, lisp_integer("is_metric") == 1 ? "tog2" : "tog1", "1");
    ads_set_tile(dialog, units[0] == 'M' ? "metric" : "english", "1");
    set_real_tile(dialog, "txts", lisp_real("sv:ts"), 3);
    set_real_tile(dialog, "syms", lisp_real("sv:ps"), 3);
    ads_set_tile(dialog, "filenm", "");
    // Both pages have the tile; what was ticked on the first isn't lost on the second.
    if (wiz_skip == 1)
        ads_set_tile(dialog, "skip_wiz", "1");
}

struct tile_action {
    const char* key;
    ads_callback run;
};
constexpr tile_action ACTIONS[] = {
    {"hsc", wiz_recompute_paper},    {"metric", wiz_units_changed}, {"english", wiz_units_changed},
    {"txts", wiz_recompute_paper},   {"syms", wiz_recompute_paper}, {"txts2", wiz_recompute_scaled},
    {"syms2", wiz_recompute_scaled}, {"select1", wiz_pick_drawing}, {"ok", press_ok},
    {"cancel", press_cancel},        {"help", wizard_help},
};

} // namespace

int wizard_drawing_page(int dialogs)
{
    ads_hdlg dialog = 0;
    ads_new_dialog("start_wiz1", dialogs, nullptr, &dialog);
    wiz_new_path[0] = '\0';
    set_tiles(dialog);
    ads_callback_packet first{};
    first.dialog = dialog;
    wiz_recompute_paper(&first);
    for (const tile_action& action : ACTIONS)
        ads_action_tile(dialog, action.key, action.run);
    int result = WIZARD_CANCELLED;
    ads_start_dialog(dialog, &result);
    return result;
}
