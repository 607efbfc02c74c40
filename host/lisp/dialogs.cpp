// dialogs.cpp: DCL dialogs. An action is the text of LISP forms, evaluated while the dialog runs; an
// error in one ends the dialog and goes on from start_dialog.
#include "host/lisp/dialogs.h"

#include <memory>

#include "host/core/document.h"
#include "host/core/text.h"
#include "host/lisp/builtins.h"
#include "host/lisp/convert.h"

namespace host::lisp
{

namespace
{

constexpr int VALUE_SIZE = 8192;

dialog_record* top(interpreter& l)
{
    return l.dialogs.empty() ? nullptr : l.dialogs.back().get();
}

dialog_record* record_of(interpreter& l, ads_hdlg handle)
{
    for (auto& d : l.dialogs)
        if (d->handle == handle)
            return d.get();
    return nullptr;
}

std::string attribute(ads_htile tile, const char* name)
{
    char text[VALUE_SIZE] = "";
    return ads_get_attr_string(tile, name, text, sizeof text) == RTNORM ? text : "";
}

std::string action_of(const dialog_record& d, const std::string& key, ads_htile tile)
{
    const auto found = d.actions.find(key);
    if (found != d.actions.end())
        return found->second;
    const std::string own = attribute(tile, "action");
    return own.empty() ? d.default_action : own;
}

void run_action(interpreter& l, const dialog_record& d, const ads_callback_packet& packet,
                const std::string& key, const std::string& action)
{
    const std::size_t mark = l.binding_mark();
    const auto data = d.data.find(key);
    l.bind(l.intern("$VALUE"), value::text(packet.value ? packet.value : ""));
    l.bind(l.intern("$KEY"), value::text(key));
    l.bind(l.intern("$REASON"), value::integer(packet.reason));
    l.bind(l.intern("$X"), value::integer(packet.x));
    l.bind(l.intern("$Y"), value::integer(packet.y));
    l.bind(l.intern("$DATA"), data == d.data.end() ? value::nil() : value::text(data->second));
    l.evaluate_forms(action, "");
    l.unbind_to(mark);
}

// Nothing may be thrown through the host's dialog loop.
void on_action(ads_callback_packet* packet)
{
    interpreter& l = interpreter_of(current_document());
    const dialog_record* d = record_of(l, packet->dialog);
    if (!d)
        return;
    const std::string key = attribute(packet->tile, "key");
    const std::string action = action_of(*d, key, packet->tile);
    if (action.empty()) { // the standard buttons end a dialog by themselves
        if (key == "accept")
            ads_done_dialog(packet->dialog, DLGOK);
        else if (key == "cancel" || attribute(packet->tile, "is_cancel") == "true")
            ads_done_dialog(packet->dialog, DLGCANCEL);
        return;
    }
    try {
        run_action(l, *d, *packet, key, action);
    } catch (const lisp_error& e) {
        l.keep_stop(e);
        ads_term_dialog();
    }
}

value load(interpreter&, arguments a)
{
    int id = -1;
    if (ads_load_dialog(a.text(0).c_str(), &id) != RTNORM && id >= 0)
        id = -1;
    return value::integer(id);
}

value unload(interpreter& l, arguments a)
{
    std::erase_if(l.dialogs, [&](const auto& d) { return !d->running && d->file == a.integer(0); });
    ads_unload_dialog(a.integer(0));
    return value::nil();
}

// (new_dialog name id [action [place]])
value make(interpreter& l, arguments a)
{
    auto made = std::make_unique<dialog_record>();
    made->file = a.integer(1);
    if (a.given(2))
        made->default_action = a.text(2);
    if (ads_new_dialog(a.text(0).c_str(), made->file, on_action, &made->handle) != RTNORM || !made->handle)
        return value::nil();
    l.dialogs.push_back(std::move(made));
    return l.t();
}

value start(interpreter& l, arguments)
{
    dialog_record* d = top(l);
    if (!d || d->running)
        return value::nil();
    d->running = true;
    const ads_hdlg handle = d->handle;
    int result = 0;
    const int status = ads_start_dialog(handle, &result);
    std::erase_if(l.dialogs, [&](const auto& each) { return each->handle == handle; });
    l.throw_kept_stop();
    l.poll();
    return status == RTNORM ? value::integer(result) : value::nil();
}

// Answers where the dialog stood, to be opened there again.
value done(interpreter& l, arguments a)
{
    dialog_record* d = top(l);
    if (!d)
        return value::nil();
    int x = -1, y = -1;
    ads_done_positioned_dialog(d->handle, a.count ? a.integer(0) : DLGOK, &x, &y);
    return cons(value::integer(x), cons(value::integer(y), value::nil()));
}

value terminate(interpreter&, arguments)
{
    ads_term_dialog();
    return value::nil();
}

value set_action(interpreter& l, arguments a)
{
    dialog_record* d = top(l);
    if (!d || ads_action_tile(d->handle, a.text(0).c_str(), on_action) != RTNORM)
        return value::nil();
    d->actions[a.text(0)] = a.text(1);
    return l.t();
}

value set_data(interpreter& l, arguments a)
{
    if (dialog_record* d = top(l))
        d->data[a.text(0)] = a.text(1);
    return value::nil();
}

value set_tile(interpreter& l, arguments a)
{
    dialog_record* d = top(l);
    return l.truth(d && ads_set_tile(d->handle, a.text(0).c_str(), a.text(1).c_str()) == RTNORM);
}

value get_tile(interpreter& l, arguments a)
{
    dialog_record* d = top(l);
    char text[VALUE_SIZE] = "";
    if (!d || ads_get_tile(d->handle, a.text(0).c_str(), text, sizeof text) != RTNORM)
        return value::nil();
    return value::text(text);
}

value get_attribute(interpreter& l, arguments a)
{
    dialog_record* d = top(l);
    char text[VALUE_SIZE] = "";
    if (!d || ads_get_attr(d->handle, a.text(0).c_str(), a.text(1).c_str(), text, sizeof text) != RTNORM)
        return value::nil();
    return value::text(text);
}

value set_mode(interpreter& l, arguments a)
{
    if (dialog_record* d = top(l))
        ads_mode_tile(d->handle, a.text(0).c_str(), a.integer(1));
    return value::nil();
}

// (start_list key [operation [index]]); a new list is the default.
value start_list(interpreter& l, arguments a)
{
    dialog_record* d = top(l);
    const int operation = a.count > 1 ? a.integer(1) : LIST_NEW;
    const int index = a.count > 2 ? a.integer(2) : 0;
    if (!d || ads_start_list(d->handle, a.text(0).c_str(), operation, index) != RTNORM)
        return value::nil();
    return a[0];
}

value add_list(interpreter&, arguments a)
{
    return ads_add_list(a.text(0).c_str()) == RTNORM ? a[0] : value::nil();
}

value end_list(interpreter&, arguments)
{
    ads_end_list();
    return value::nil();
}

value dimension(interpreter& l, arguments a, bool width)
{
    dialog_record* d = top(l);
    int size[2] = {0, 0};
    if (!d || ads_dimensions_tile(d->handle, a.text(0).c_str(), &size[0], &size[1]) != RTNORM)
        return value::nil();
    return value::integer(size[width ? 0 : 1]);
}
value width_of(interpreter& l, arguments a)
{
    return dimension(l, a, true);
}
value height_of(interpreter& l, arguments a)
{
    return dimension(l, a, false);
}

value start_image(interpreter& l, arguments a)
{
    dialog_record* d = top(l);
    return d && ads_start_image(d->handle, a.text(0).c_str()) == RTNORM ? a[0] : value::nil();
}

// Places come as numbers of either kind; a pixel is whole.
int pixel(arguments a, int i)
{
    const double n = a.number(i);
    return n > -1e6 && n < 1e6 ? static_cast<int>(n) : 0;
}

value fill_image(interpreter&, arguments a)
{
    ads_fill_image(pixel(a, 0), pixel(a, 1), pixel(a, 2), pixel(a, 3), pixel(a, 4));
    return a[4];
}

value vector_image(interpreter&, arguments a)
{
    ads_vector_image(pixel(a, 0), pixel(a, 1), pixel(a, 2), pixel(a, 3), pixel(a, 4));
    return a[4];
}

value slide_image(interpreter&, arguments a)
{
    ads_slide_image(pixel(a, 0), pixel(a, 1), pixel(a, 2), pixel(a, 3), a.text(4).c_str());
    return a[4];
}

value end_image(interpreter&, arguments)
{
    ads_end_image();
    return value::nil();
}

constexpr builtin TABLE[] = {
    {"load_dialog", load, 1, 1, "s"},
    {"unload_dialog", unload, 1, 1, "i"},
    {"new_dialog", make, 2, 4, "siS."},
    {"start_dialog", start, 0, 0, ""},
    {"done_dialog", done, 0, 1, "i"},
    {"term_dialog", terminate, 0, 0, ""},
    {"action_tile", set_action, 2, 2, "s"},
    {"client_data_tile", set_data, 2, 2, "s"},
    {"set_tile", set_tile, 2, 2, "s"},
    {"get_tile", get_tile, 1, 1, "s"},
    {"get_attr", get_attribute, 2, 2, "s"},
    {"mode_tile", set_mode, 2, 2, "si"},
    {"start_list", start_list, 1, 3, "si"},
    {"add_list", add_list, 1, 1, "s"},
    {"end_list", end_list, 0, 0, ""},
    {"dimx_tile", width_of, 1, 1, "s"},
    {"dimy_tile", height_of, 1, 1, "s"},
    {"start_image", start_image, 1, 1, "s"},
    {"fill_image", fill_image, 5, 5, "n"},
    {"vector_image", vector_image, 5, 5, "n"},
    {"slide_image", slide_image, 5, 5, "nnnns"},
    {"end_image", end_image, 0, 0, ""},
};

} // namespace

std::span<const builtin> dialog_table()
{
    return TABLE;
}

} // namespace host::lisp
