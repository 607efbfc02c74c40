// Selected polylines to a text file.
#include <cstring>
#include <string>

#include "common/directories.h"
#include "common/key_word.h"
#include "common/names.h"
#include "drawing/pline_props.h"
#include "drawing/read.h"
#include "drawing/selection.h"
#include "drawing/stroke.h"
#include "hostapi/dcl.h"
#include "hostapi/files.h"
#include "interchange/color_codes.h"
#include "interchange/file_request.h"
#include "interchange/polyline_file.h"
#include "interchange/polyline_text.h"
#include "settings/file_pick.h"

namespace
{

constexpr int FLAGS_GROUP = 70;
constexpr int COLOR_GROUP = 62;
constexpr int COLOR_WITHOUT_LAYER = 7;
constexpr double STROKE_TOLERANCE = 0.1; // squared
constexpr std::size_t FLUSH_SIZE = 1 << 16;

constexpr pick_texts WRITE_TEXTS[] = {{"Polyline File to Write", "txt"},
                                      {"Polyline File to Write", "pln"},
                                      {"DTM Polyline File to Write", "lf;lfn"}};

enum class file_mode { fresh, append, cancelled };

// ---- the drawing --------------------------------------------------------------------------------

// Colours of layers; polylines of one layer tend to come together, so the last one is kept.
class layer_colors
{
public:
    int of(const char* layer)
    {
        if (!known_ || layer_ != layer) {
            known_ = true;
            layer_ = layer;
            color_ = COLOR_WITHOUT_LAYER;
            resbuf* record = acdbTblSearch("LAYER", layer, 0);
            if (const resbuf* color = rb_find(record, COLOR_GROUP))
                color_ = color->resval.rint;
            if (record)
                acutRelRb(record);
        }
        return color_;
    }

private:
    bool known_ = false;
    std::string layer_;
    int color_ = COLOR_WITHOUT_LAYER;
};

struct object_facts {
    bool closed;
    int color; // host index
};

object_facts facts_of(const ads_name name, layer_colors& layers)
{
    object_facts facts{false, 0};
    resbuf* list = acdbEntGet(name);
    if (const resbuf* flags = rb_find(list, FLAGS_GROUP))
        facts.closed = (flags->resval.rint & PLINE_CLOSED) != 0;
    if (const resbuf* color = rb_find(list, COLOR_GROUP))
        facts.color = color->resval.rint;
    const resbuf* layer = entity_layer(list);
    if (facts.color == 0)
        facts.color = layer ? layers.of(layer->resval.rstring) : COLOR_WITHOUT_LAYER;
    if (list)
        acutRelRb(list);
    return facts;
}

// False when the file could not be written.
bool write_selected(host_file* file, const line_form& form, const ads_name set)
{
    std::int32_t count = 0;
    acedSSLength(set, &count);
    layer_colors layers;
    std::string text;
    bool written = true;
    for (std::int32_t i = 0; i < count; ++i) {
        ads_name name;
        if (acedSSName(set, i, name) != RTNORM)
            continue;
        const object_facts facts = facts_of(name, layers);
        pl_vertex* chain = pl_read_vertices(name);
        if (!chain)
            continue;
        chain_stroke_arcs(chain, STROKE_TOLERANCE);
        add_polyline(text, form, chain, facts.closed, file_color_of(facts.color));
        pl_free_vertices(chain);
        if (text.size() >= FLUSH_SIZE) {
            written = file_puts(text.c_str(), file) >= 0 && written;
            text.clear();
        }
    }
    return (text.empty() || file_puts(text.c_str(), file) >= 0) && written;
}

// ---- questions ----------------------------------------------------------------------------------

struct mode_button {
    const char* key;
    int answer;
    file_mode mode;
};
constexpr mode_button MODE_BUTTONS[] = {
    {"new", 1, file_mode::fresh}, {"append", 0, file_mode::append}, {"cancel", 2, file_mode::cancelled}};

struct pressed_button {
    const mode_button* button;
    file_mode* mode;
};

void press(ads_callback_packet* packet)
{
    const auto* pressed = static_cast<const pressed_button*>(packet->client_data);
    *pressed->mode = pressed->button->mode;
    ads_done_dialog(packet->dialog, pressed->button->answer);
}

// RTNORM, or RTERROR with a message. A dialog that is closed without a button counts as cancelled.
int ask_file_mode(file_mode* mode)
{
    *mode = file_mode::cancelled;
    char path[ADS_PATH_SIZE];
    text_set(path, lsp_dir);
    text_add(path, "zentfile.dcl");
    int loaded = -1;
    ads_hdlg dialog = 0;
    const bool is_loaded = ads_load_dialog(path, &loaded) == RTNORM && loaded >= 0;
    if (!is_loaded || ads_new_dialog("zt_newappend", loaded, nullptr, &dialog) != RTNORM || dialog == 0) {
        if (is_loaded)
            ads_unload_dialog(loaded);
        acutPrintf("\nError loading dialog file: %s", path);
        return RTERROR;
    }
    ads_set_tile(dialog, "type", "File type> Polyline");
    pressed_button pressed[3];
    for (int i = 0; i < 3; ++i) {
        pressed[i] = {&MODE_BUTTONS[i], mode};
        ads_action_tile(dialog, MODE_BUTTONS[i].key, press);
        ads_client_data_tile(dialog, MODE_BUTTONS[i].key, &pressed[i]);
    }
    int result = 0;
    ads_start_dialog(dialog, &result);
    ads_unload_dialog(loaded);
    return RTNORM;
}

int ask_with_z(bool* with_z)
{
    char word[ADS_TEXT_SIZE];
    const int status = ask_key_word("Yes No", "\nInclude Z coordinate in polyline file (Yes/<No>)? ", word);
    if (status == RTCAN)
        return RTCAN;
    *with_z = std::strcmp(word, "Yes") == 0;
    return RTNORM;
}

int select_polylines(ads_name set)
{
    resbuf filter;
    pl_filter_polylines(&filter, nullptr);
    acutPrintf("\nSelect polylines to write.");
    const int status = acedSSGet(nullptr, nullptr, nullptr, &filter, set);
    acad_free(filter.resval.rstring);
    if (status == RTNORM)
        return RTNORM;
    acutPrintf("Nothing selected");
    return status == RTCAN ? RTCAN : RTERROR;
}

int write_file(const char* path, file_mode mode, const line_form& form, const ads_name set)
{
    host_file* file = file_open(path, mode == file_mode::fresh ? "w" : "a");
    if (!file) {
        acutPrintf("\nError: failed to open file> %s", path);
        return RTERROR;
    }
    const bool written = write_selected(file, form, set);
    if (file_close(file) != 0 || !written) {
        acutPrintf("\nError: failed to write file> %s", path);
        return RTERROR;
    }
    return RTNORM;
}

} // namespace

int write_polyline_file(const resbuf* args)
{
    char default_path[ADS_PATH_SIZE], path[ADS_PATH_SIZE];
    take_directories(args, default_path);
    line_form form{POLYLINE_FORMAT_OWN, true};
    if (ask_polyline_format(&form.format) != RTNORM)
        return RTCAN;
    file_mode mode;
    if (const int status = ask_file_mode(&mode); status != RTNORM)
        return status;
    if (mode == file_mode::cancelled)
        return RTCAN;
    // A file that is added to is not replaced: no question about that.
    const int flags = mode == file_mode::fresh ? PICK_NEW_FILE : PICK_NEW_FILE | PICK_NO_REPLACE_QUESTION;
    if (const int status = ask_polyline_path(WRITE_TEXTS[form.format], default_path, flags, path);
        status != RTNORM)
        return status;
    if (form.format == POLYLINE_FORMAT_OWN && ask_with_z(&form.with_z) != RTNORM)
        return RTCAN;
    ads_name set;
    if (const int status = select_polylines(set); status != RTNORM)
        return status;
    const int status = write_file(path, mode, form, set);
    acedSSFree(set);
    if (status == RTNORM)
        acutPrintf("\nDone.");
    return status;
}
