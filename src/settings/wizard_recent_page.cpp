// wizard_recent_page.cpp: the page with the recent drawings and a picture of the one that is chosen.
#include <cstdlib>

#include "common/paths.h"
#include "common/small_dialogs.h"
#include "settings/recent_drawings.h"
#include "settings/startup_wizard.h"
#include "settings/wizard_pages.h"

namespace
{

constexpr int LIST_WIDTH = 51; // characters of a path in the list
constexpr int WHITE = 7;
constexpr int PICTURE_TILE = 1; // the page's only image tile

resbuf* wiz_recent = nullptr;

// The drawing that a list value stands for; null when the list is shorter.
const resbuf* recent_at(const char* value)
{
    const int chosen = std::atoi(value);
    if (chosen < 0)
        return nullptr;
    const resbuf* at = wiz_recent;
    for (int i = 0; at && i < chosen; ++i)
        at = at->rbnext;
    return at;
}

void fill_list(ads_hdlg dialog)
{
    ads_start_list(dialog, "lister", LIST_NEW, 0);
    for (const resbuf* at = wiz_recent; at; at = at->rbnext) {
        char shown[ADS_PATH_SIZE];
        compact_path(at->resval.rstring, shown, LIST_WIDTH);
        ads_add_list(shown);
    }
    ads_end_list();
}

void clear_picture(ads_hdlg dialog)
{
    int width = 0, height = 0;
    ads_dimensions_tile(dialog, "image", &width, &height);
    ads_start_image(dialog, "image");
    ads_fill_image(0, 0, width, height, WHITE);
    ads_end_image();
}

void end_page(ads_hdlg dialog, int result)
{
    wizard_read_skip(dialog);
    ads_done_dialog(dialog, result);
}

void take(ads_hdlg dialog, const resbuf& drawing)
{
    text_set(wiz_open_path, drawing.resval.rstring);
    end_page(dialog, WIZARD_TAKEN);
}

void wiz_list_changed(ads_callback_packet* packet)
{
    clear_picture(packet->dialog);
    char value[32] = "";
    ads_get_tile(packet->dialog, "lister", value, sizeof value);
    const resbuf* chosen = value[0] ? recent_at(value) : nullptr;
    if (!chosen) {
        ads_mode_tile(packet->dialog, "select", MODE_DISABLE);
        return;
    }
    if (wizard_calls.tile_preview)
        wizard_calls.tile_preview(chosen->resval.rstring, PICTURE_TILE);
    ads_mode_tile(packet->dialog, "select", MODE_ENABLE);
    if (packet->reason == CBR_DOUBLE_CLICK)
        take(packet->dialog, *chosen);
}

void press_select(ads_callback_packet* packet)
{
    char value[32] = "";
    ads_get_tile(packet->dialog, "lister", value, sizeof value);
    if (value[0] == '\0')
        zent_alert_box("No File Selected");
    else if (const resbuf* chosen = recent_at(value))
        take(packet->dialog, *chosen);
    else
        zent_alert_box("Unable to match selected file");
}

void press_new(ads_callback_packet* packet)
{
    end_page(packet->dialog, WIZARD_NEW);
}

void press_open(ads_callback_packet* packet)
{
    end_page(packet->dialog, WIZARD_OPEN);
}

void press_cancel(ads_callback_packet* packet)
{
    end_page(packet->dialog, WIZARD_CANCELLED);
}

} // namespace

int wizard_recent_page(int dialogs)
{
    ads_hdlg dialog = 0;
    ads_new_dialog("start_wiz0", dialogs, nullptr, &dialog);
    wiz_recent = recent_drawings();
    fill_list(dialog);
    ads_callback_packet first{};
    first.dialog = dialog;
    wiz_list_changed(&first);
    ads_action_tile(dialog, "lister", wiz_list_changed);
    ads_action_tile(dialog, "select", press_select);
    ads_action_tile(dialog, "new", press_new);
    ads_action_tile(dialog, "open", press_open);
    ads_action_tile(dialog, "cancel", press_cancel);
    ads_action_tile(dialog, "help", wizard_help);
    int result = WIZARD_CANCELLED;
    ads_start_dialog(dialog, &result);
    if (wiz_recent)
        acutRelRb(wiz_recent);
    wiz_recent = nullptr;
    return result;
}
