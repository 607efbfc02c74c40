// kinds.h: what the kinds of drawing entities hold, group by group. Inner header.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/database/database.h"

namespace host::db
{

struct kind_item {
    enum class need : std::uint8_t {
        marker,   // group 100
        required, // nothing is made without it
        optional, // only its place is given
        standard, // given a value when it is missing
    };
    need how;
    std::int16_t code;
    std::string_view value; // of a marker, or as in templates.h
};

// The groups behind the common ones, in their order, markers included.
struct entity_kind {
    std::string_view type;
    std::vector<kind_item> items;
    // The order of the groups means something (vertices, paths): what isn't placed before it stays as it is.
    bool keeps_order = false;
};

// By group 0 and, for POLYLINE, VERTEX, INSERT and DIMENSION, by its flags. Null: not known.
const entity_kind* kind_of(const database& db, const group_list& groups);

// Whether a group is missing that every object of the kind has.
bool lacks_standard_groups(const group_list& groups, const entity_kind& kind);
// What a missing group of the kind stands for; nothing when it stands for nothing.
std::optional<group> standard_group(const database& db, const group_list& groups, int code);

// Groups that any entity may have in front of its own.
bool is_common_code(int code);

} // namespace host::db
