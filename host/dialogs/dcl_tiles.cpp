#include "host/dialogs/dcl_tiles.h"

namespace host::dialogs
{

const char* const ASSEMBLIES = R"(
spacer_0 : spacer { width = 0; height = 0; }
spacer_1 : spacer { width = 1; height = 1; }
text_part : text { }
default_dcl_settings : settings { audit_level = 1; }
default_button : button { is_default = true; }
retirement_button : button { width = 10; fixed_width = true; alignment = centered; }
ok_button : retirement_button { label = "OK"; key = "accept"; is_default = true; }
cancel_button : retirement_button { label = "Cancel"; key = "cancel"; is_cancel = true; }
help_button : retirement_button { label = "Help"; key = "help"; is_help = true; mnemonic = "H"; }
info_button : retirement_button { label = "Info..."; key = "info"; mnemonic = "I"; }
errtile : text { key = "error"; label = ""; width = 35; is_error_tile = true; }
edit12_box : edit_box { edit_width = 12; }
edit32_box : edit_box { edit_width = 32; }
icon_image : image { color = 0; width = 8; aspect_ratio = 1.0; fixed_width = true; fixed_height = true; }
swatch : image_button { color = 0; width = 3; height = 1; }
image_block : concatenation { }
fcf_ibut : image_button { color = 0; width = 6; aspect_ratio = 1.0; }

ok_only : row { fixed_width = true; alignment = centered; : ok_button { is_cancel = true; } }
ok_cancel : row { fixed_width = true; alignment = centered; ok_button; spacer; cancel_button; }
ok_cancel_help : row { fixed_width = true; alignment = centered;
    ok_button; spacer; cancel_button; spacer; help_button; }
ok_cancel_help_info : row { fixed_width = true; alignment = centered;
    ok_button; spacer; cancel_button; spacer; help_button; spacer; info_button; }
ok_cancel_err : column { ok_cancel; errtile; }
ok_cancel_errtile : column { ok_cancel; errtile; }
ok_cancel_help_errtile : column { ok_cancel_help; errtile; }
ok_cancel_help_info_errtile : column { ok_cancel_help_info; errtile; }
)";

namespace
{

struct own_kind {
    const char* name;
    tile_kind kind;
    bool horizontal, boxed;
};

constexpr own_kind OWN_KINDS[] = {
    {"settings", tile_kind::settings, false, false},
    {"dialog", tile_kind::dialog, false, false},
    {"tile", tile_kind::group, false, false},
    {"cluster", tile_kind::group, false, false},
    {"row", tile_kind::group, true, false},
    {"column", tile_kind::group, false, false},
    {"boxed_row", tile_kind::group, true, true},
    {"boxed_column", tile_kind::group, false, true},
    {"concatenation", tile_kind::group, true, false},
    {"paragraph", tile_kind::group, false, false},
    {"radio_cluster", tile_kind::radio_group, false, false},
    {"radio_row", tile_kind::radio_group, true, false},
    {"radio_column", tile_kind::radio_group, false, false},
    {"boxed_radio_row", tile_kind::radio_group, true, true},
    {"boxed_radio_column", tile_kind::radio_group, false, true},
    {"button", tile_kind::button, false, false},
    {"edit_box", tile_kind::edit_box, false, false},
    {"image", tile_kind::image, false, false},
    {"image_button", tile_kind::image_button, false, false},
    {"list_box", tile_kind::list_box, false, false},
    {"popup_list", tile_kind::popup_list, false, false},
    {"radio_button", tile_kind::radio_button, false, false},
    {"slider", tile_kind::slider, false, false},
    {"spacer", tile_kind::spacer, false, false},
    {"text", tile_kind::text, false, false},
    {"toggle", tile_kind::toggle, false, false},
};

std::unordered_map<std::string, dcl_tile> language()
{
    std::unordered_map<std::string, dcl_tile> out;
    for (const own_kind& own : OWN_KINDS) {
        dcl_tile tile;
        tile.kind = own.kind;
        tile.horizontal = own.horizontal;
        tile.boxed = own.boxed;
        out.emplace(own.name, std::move(tile));
    }
    return out;
}

const std::unordered_map<std::string, dcl_tile>& own_tiles()
{
    static std::unordered_map<std::string, dcl_tile> tiles = language();
    // The assemblies are read with the language in place, then they belong to it.
    static bool complete = false;
    if (!complete) {
        complete = true;
        if (auto assemblies = parse_dcl(ASSEMBLIES, "assemblies", nullptr))
            tiles.merge(assemblies->tiles);
    }
    return tiles;
}

} // namespace

const char* kind_name(tile_kind kind)
{
    for (const own_kind& own : OWN_KINDS)
        if (own.kind == kind)
            return kind == tile_kind::group         ? "group"
                   : kind == tile_kind::radio_group ? "radio_group"
                                                    : own.name;
    return "tile";
}

const dcl_tile* own_tile(const std::string& name)
{
    const auto& tiles = own_tiles();
    const auto found = tiles.find(name);
    return found == tiles.end() ? nullptr : &found->second;
}

} // namespace host::dialogs
