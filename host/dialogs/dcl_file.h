// dcl_file.h: dialogs as DCL files describe them.
//
// A file holds definitions `name : base { ... }`. A base is one of the language's own tiles, one of the
// assemblies that every file knows (ok_cancel and its like), or a tile that was defined before in the
// same file or in one that it includes. What a definition doesn't say it has from its bases; children of
// a base stand before its own. Attributes that nobody knows are kept and do nothing.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace host::dialogs
{

enum class tile_kind {
    settings, // no tile: what a file says about itself
    dialog,
    group, // rows, columns, concatenations: they hold others
    radio_group,
    button,
    edit_box,
    image,
    image_button,
    list_box,
    popup_list,
    radio_button,
    slider,
    spacer,
    text,
    toggle,
};
const char* kind_name(tile_kind kind);

struct dcl_tile {
    tile_kind kind = tile_kind::group;
    bool horizontal = false; // of groups
    bool boxed = false;
    int line = 0; // in its file
    // Values as they stand, texts without their quotes; the last of a name counts.
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<dcl_tile> children;

    const std::string* attribute(std::string_view name) const; // null: not given
    std::string text(std::string_view name) const;             // empty when not given
    bool flag(std::string_view name) const;                    // true when given as true
    bool flag_or(std::string_view name, bool otherwise) const;
    double number(std::string_view name, double otherwise) const;
    std::size_t count() const; // itself and all below it
};

struct dcl_error {
    std::string file; // as programs hold it
    int line = 0;     // 0: the file as a whole
    std::string message;
    std::string text() const; // "FILE:LINE: message"
};

struct dcl_file {
    std::unordered_map<std::string, dcl_tile> tiles; // definitions of the file and of those that it includes
    std::vector<std::string> names;                  // in the order of the text
};

// Null with `error` filled when the text is damaged. `file` is for messages and for @include, which looks
// beside the file first.
std::unique_ptr<dcl_file> parse_dcl(std::string_view text, const std::string& file, dcl_error* error);
// The same from a file of this file system.
std::unique_ptr<dcl_file> read_dcl(const std::string& path, dcl_error* error);

// The language's own tile or assembly of that name, null when there is none.
const dcl_tile* own_tile(const std::string& name);

} // namespace host::dialogs
