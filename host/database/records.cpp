// Symbol table records and block definitions as they are made new.
#include <algorithm>
#include <charconv>

#include "host/core/text.h"
#include "host/database/entities.h"
#include "host/database/templates.h"

namespace host::db
{

namespace
{

double number_of(std::string_view text)
{
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

group point_of(int code, std::string_view text)
{
    double at[3] = {0, 0, 0};
    std::uint8_t dimensions = 0;
    while (dimensions < 3) {
        const std::size_t comma = text.find(',');
        at[dimensions++] = number_of(text.substr(0, comma));
        if (comma == std::string_view::npos)
            break;
        text.remove_prefix(comma + 1);
    }
    group made = point_group(code, at[0], at[1], at[2]);
    made.dimensions = dimensions;
    return made;
}

group group_of(const database& db, int code, std::string_view value)
{
    switch (kind_of_code(code)) {
    case group_kind::real:
        return real_group(code, number_of(value));
    case group_kind::point:
        return point_of(code, value);
    case group_kind::integer:
        return int_group(code, static_cast<std::int64_t>(number_of(value)));
    case group_kind::handle: {
        std::uint64_t handle = 0;
        std::from_chars(value.data(), value.data() + value.size(), handle, 16);
        return handle_group(code, handle);
    }
    default:
        return db.text_group(code, value);
    }
}

} // namespace

void add_groups(const database& db, group_list& groups, std::string_view text, std::string_view name)
{
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(';'), text.size());
        const std::string_view pair = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t blank = std::min(pair.find(' '), pair.size());
        const std::string_view value = pair.substr(std::min(blank + 1, pair.size()));
        groups.push_back(
            group_of(db, static_cast<int>(number_of(pair.substr(0, blank))), value == "@" ? name : value));
    }
}

namespace
{

struct record_template {
    const char* table;
    const char* groups; // behind 0, 330 and the handle
};

constexpr record_template RECORDS[] = {
    {"LAYER", "100 AcDbLayerTableRecord;2 @;70 0;62 7;6 Continuous;370 -3"},
    {"LTYPE", "100 AcDbLinetypeTableRecord;2 @;70 0;3 ;72 65;73 0;40 0"},
    {"STYLE", "100 AcDbTextStyleTableRecord;2 @;70 0;40 0;41 1;50 0;71 0;42 0.2;3 txt;4 "},
    {"VIEW", "100 AcDbViewTableRecord;2 @;70 0;40 9;10 6,4.5;41 12;11 0,0,1;12 0,0,0;42 50;43 0;44 0;50 0;71 0;"
             "281 0;72 0"},
    {"UCS", "100 AcDbUCSTableRecord;2 @;70 0;10 0,0,0;11 1,0,0;12 0,1,0;79 0;146 0"},
    {"VPORT",
     "100 AcDbViewportTableRecord;2 @;70 0;10 0,0;11 1,1;12 6,4.5;13 0,0;14 0.5,0.5;15 0.5,0.5;"
     "16 0,0,1;17 0,0,0;40 9;41 1.333333333333333;42 50;43 0;44 0;50 0;51 0;71 0;72 100;73 1;74 3;75 0;"
     "76 0;77 0;78 0;281 0;65 1;110 0,0,0;111 1,0,0;112 0,1,0;79 0;146 0"},
    {"APPID", "100 AcDbRegAppTableRecord;2 @;70 0"},
    {"DIMSTYLE",
     "100 AcDbDimStyleTableRecord;2 @;70 0;3 ;4 ;40 1;41 0.18;42 0.0625;43 0.38;44 0.18;45 0;46 0;47 0;48 0;"
     "140 0.18;141 0.09;142 0;143 25.4;144 1;145 0;146 1;147 0.09;71 0;72 0;73 1;74 1;75 0;76 0;77 0;"
     "78 0;170 0;171 2;172 0;173 0;174 0;175 0;176 0;177 0;178 0"},
    {"BLOCK_RECORD", "100 AcDbBlockTableRecord;2 @;340 0"},
};

constexpr const char* BLOCK_BEGIN =
    "0 BLOCK;330 0;5 0;100 AcDbEntity;8 0;100 AcDbBlockBegin;2 @;70 0;10 0,0,0;3 @;1 ";
constexpr const char* BLOCK_END = "0 ENDBLK;330 0;5 0;100 AcDbEntity;8 0;100 AcDbBlockEnd";

} // namespace

object_id add_record(database& db, std::string_view table, std::string_view name)
{
    const std::string kind = upper(table);
    const object_id owner = db.table(kind);
    if (!owner)
        return 0;
    for (const record_template& each : RECORDS) {
        if (kind != each.table)
            continue;
        group_list groups{db.text_group(0, kind)};
        add_groups(db, groups, kind == "DIMSTYLE" ? "330 0;105 0" : "330 0;5 0");
        add_groups(db, groups, "100 AcDbSymbolTableRecord");
        add_groups(db, groups, each.groups, name);
        return db.append(owner, object_class::record, std::move(groups));
    }
    return 0;
}

object_id add_layer(database& db, std::string_view name, int color)
{
    const object_id made = add_record(db, "LAYER", name);
    if (made)
        *find(db.modify(made), 62) = int_group(62, color);
    return made;
}

object_id add_block(database& db, std::string_view name)
{
    const object_id record = add_record(db, "BLOCK_RECORD", name);
    if (!record)
        return 0;
    for (const char* part : {BLOCK_BEGIN, BLOCK_END}) {
        group_list groups;
        add_groups(db, groups, part, name);
        db.append(record, object_class::entity, std::move(groups));
    }
    return record;
}

} // namespace host::db
