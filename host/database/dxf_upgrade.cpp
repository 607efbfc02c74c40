// Files up to R12 have neither subclass markers nor owners. What entity kinds need is the business of
// complete_entity; here is what only old files have.
#include "host/database/dxf_upgrade.h"

#include <algorithm>

#include "host/core/text.h"
#include "host/database/entities.h"

namespace host::db
{

namespace
{

struct marked_table {
    const char *table, *marker;
};

constexpr marked_table RECORD_MARKERS[] = {
    {"LAYER", "AcDbLayerTableRecord"},
    {"LTYPE", "AcDbLinetypeTableRecord"},
    {"STYLE", "AcDbTextStyleTableRecord"},
    {"VIEW", "AcDbViewTableRecord"},
    {"UCS", "AcDbUCSTableRecord"},
    {"VPORT", "AcDbViewportTableRecord"},
    {"APPID", "AcDbRegAppTableRecord"},
    {"DIMSTYLE", "AcDbDimStyleTableRecord"},
    {"BLOCK_RECORD", "AcDbBlockTableRecord"},
};

// Entities whose points are places in space, whatever an old file gives of them.
constexpr const char* IN_SPACE[] = {"LINE",     "POINT",  "CIRCLE", "ARC",    "TRACE",    "SOLID",
                                    "3DFACE",   "TEXT",   "SHAPE",  "INSERT", "ATTRIB",   "ATTDEF",
                                    "POLYLINE", "VERTEX", "SEQEND", "BLOCK",  "VIEWPORT", "DIMENSION"};

bool is_one_of(std::string_view type, auto& list)
{
    return std::any_of(std::begin(list), std::end(list), [&](const char* each) { return type == each; });
}

// Behind the groups that stand before the first marker: type, handle, 102 lists, owner.
std::size_t head_size(const database& db, const group_list& groups)
{
    std::size_t i = 1;
    bool in_braces = false;
    for (; i < groups.size(); ++i) {
        const group& each = groups[i];
        if (each.code == 102)
            in_braces = !db.text(each.text).starts_with('}');
        else if (!in_braces && each.code != 5 && each.code != 105 && each.code != 330)
            break;
    }
    return std::min(i, groups.size());
}

// The 102 lists of a head; one that the file leaves open is closed, or it would take in the owner.
group_list braced_lists(database& db, const group_list& groups, std::size_t head)
{
    group_list out;
    bool in_braces = false;
    for (std::size_t i = 1; i < head; ++i) {
        if (groups[i].code == 102)
            in_braces = !db.text(groups[i].text).starts_with('}');
        if (in_braces || groups[i].code == 102)
            out.push_back(groups[i]);
    }
    if (in_braces)
        out.push_back(db.text_group(102, "}"));
    return out;
}

void insert_marker(database& db, group_list& groups, std::size_t at, std::string_view name)
{
    groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(at), db.text_group(100, name));
}

void erase_code(group_list& groups, int code)
{
    std::erase_if(groups, [code](const group& each) { return each.code == code; });
}

// The elevation of files before R11, and points that such files give without it.
void give_third_coordinates(group_list& groups)
{
    const double elevation = real_of(groups, 38, 0.0);
    for (group& each : groups) {
        if (each.kind != group_kind::point || each.dimensions != 2 || each.code > 18)
            continue;
        each.dimensions = 3;
        each.point[2] = elevation;
    }
    erase_code(groups, 38);
}

// Sign of a space's block name, and the name behind it.
constexpr std::string_view SPACES[] = {"Model_Space", "Paper_Space"};

std::string renamed_space(std::string_view name, char from, char to)
{
    if (!name.starts_with(from))
        return std::string(name);
    for (const std::string_view space : SPACES)
        if (same_text(name.substr(1, space.size()), space))
            return to + std::string(space) + std::string(name.substr(1 + space.size()));
    return std::string(name);
}

} // namespace

void set_head(database& db, group_list& groups, head_order order, int handle_code, std::uint64_t handle,
              std::uint64_t owner)
{
    const std::size_t size = head_size(db, groups);
    // Old files may give the handle behind other groups.
    for (std::size_t i = size; i < groups.size() && groups[i].code != 100; ++i)
        if (groups[i].code == handle_code && groups[i].kind == group_kind::handle) {
            groups.erase(groups.begin() + static_cast<std::ptrdiff_t>(i));
            break;
        }
    const group_list kept = braced_lists(db, groups, size);
    const std::size_t wanted = kept.size() + 3;
    if (wanted > size)
        groups.insert(groups.begin() + 1, wanted - size, group());
    else
        groups.erase(groups.begin() + 1, groups.begin() + 1 + static_cast<std::ptrdiff_t>(size - wanted));
    const bool owner_first = order == head_order::owner_first;
    groups[owner_first ? 2 : 1] = handle_group(handle_code, handle);
    groups[owner_first ? 1 : wanted - 1] = handle_group(330, owner);
    std::copy(kept.begin(), kept.end(), groups.begin() + (owner_first ? 3 : 2));
}

void set_table_head(database& db, group_list& groups, std::uint64_t handle)
{
    const group* given = find(groups, 2);
    const group name = text_group(2, given ? given->text : 0);
    if (given)
        groups.erase(groups.begin() + (given - groups.data()));
    set_head(db, groups, head_order::handle_first, 5, handle, 0);
    groups.insert(groups.begin() + 1, name);
}

void upgrade_table_head(database& db, dxf_table& table)
{
    group_list& groups = table.head.groups;
    if (!find(groups, 100)) {
        constexpr std::size_t BEHIND_NAME_HANDLE_OWNER = 4;
        insert_marker(db, groups, std::min(groups.size(), BEHIND_NAME_HANDLE_OWNER), "AcDbSymbolTable");
    }
    if (!find(groups, 70))
        groups.push_back(int_group(70, static_cast<std::int64_t>(table.records.size())));
}

void upgrade_record(database& db, std::string_view table, group_list& groups)
{
    if (find(groups, 100))
        return;
    const std::size_t at = head_size(db, groups);
    for (const marked_table& each : RECORD_MARKERS) {
        if (table != each.table)
            continue;
        insert_marker(db, groups, at, each.marker);
        insert_marker(db, groups, at, "AcDbSymbolTableRecord");
    }
    // Arrow blocks by name: an empty name says the same as no group.
    if (table == "DIMSTYLE")
        std::erase_if(groups, [](const group& each) { return each.code >= 5 && each.code <= 7 && !each.text; });
}

void upgrade_block_end(database& db, group_list& groups)
{
    if (find(groups, 100))
        return;
    std::size_t at = head_size(db, groups);
    insert_marker(db, groups, at++, "AcDbEntity");
    const bool is_begin = db.text(groups.front().text) == "BLOCK";
    // The layer (and paper space's mark) belong to the first part, the rest to the second.
    const auto first_part = [](const group& each) { return each.code == 8 || each.code == 67; };
    std::stable_partition(groups.begin() + static_cast<std::ptrdiff_t>(at), groups.end(), first_part);
    if (!find(groups, 8))
        groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(at), db.text_group(8, "0"));
    while (at < groups.size() && first_part(groups[at]))
        ++at;
    insert_marker(db, groups, at, is_begin ? "AcDbBlockBegin" : "AcDbBlockEnd");
    if (is_begin)
        give_third_coordinates(groups);
}

bool upgrade_entity(database& db, group_list& groups, std::string* why)
{
    if (db.text(groups.front().text) == "3DLINE")
        groups.front() = db.text_group(0, "LINE");
    if (is_one_of(db.text(groups.front().text), IN_SPACE))
        give_third_coordinates(groups);
    const group_list before = groups;
    if (complete_entity(db, groups, why))
        return true;
    groups = before;
    return false;
}

std::string modern_block_name(std::string_view name)
{
    return renamed_space(name, '$', '*');
}

std::string old_block_name(std::string_view name)
{
    return renamed_space(name, '*', '$');
}

} // namespace host::db
