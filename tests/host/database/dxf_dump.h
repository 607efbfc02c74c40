// dxf_dump.h: a drawing as text, so that two can be compared group for group.
#pragma once

#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include "host/core/text.h"
#include "host/database/dxf.h"

namespace host::db::test
{

inline std::string sample(const std::string& name)
{
    std::ifstream in(ZENT_SOURCE_DIR "/tests/host/database/dxf/" + name, std::ios::binary);
    std::stringstream all;
    all << in.rdbuf();
    return all.str();
}

inline std::string bits(double value)
{
    std::uint64_t word = 0;
    std::memcpy(&word, &value, sizeof word);
    char text[64];
    std::snprintf(text, sizeof text, "%.17g(%016" PRIx64 ")", value, word);
    return text;
}

// Every bit of a group counts.
inline std::string dump(const database& db, const group& each)
{
    std::string out = std::to_string(each.code) + ' ';
    switch (each.kind) {
    case group_kind::real:
        return out + 'r' + bits(each.real);
    case group_kind::point:
        out += 'p';
        for (int i = 0; i < each.dimensions; ++i)
            out += bits(each.point[i]) + ' ';
        return out;
    case group_kind::integer:
        return out + 'i' + std::to_string(each.integer);
    case group_kind::handle:
        return out + 'h' + std::to_string(each.handle);
    case group_kind::text:
        return out + 't' + std::string(db.text(each.text));
    case group_kind::binary:
        return out + 'b' + std::string(db.text(each.text));
    }
    return out;
}

inline std::string dump(const database& db, const group_list& groups)
{
    std::string out;
    for (const group& each : groups)
        out += dump(db, each) + '\n';
    return out;
}

inline void dump_object(const database& db, object_id id, const std::string& indent, std::string& out)
{
    const object& each = db.at(id);
    if (each.erased)
        return;
    group_list groups = each.groups;
    if (each.family == object_class::table) // how many records there are is only a hint
        std::erase_if(groups, [](const group& g) { return g.code == 70; });
    out += indent + "#" + std::to_string(each.handle) + " of #" + std::to_string(db.at(each.owner).handle) +
           '\n' + dump(db, groups);
    for (object_id child = each.first; child; child = db.at(child).next)
        dump_object(db, child, indent + "  ", out);
}

// All but the two header variables that say how a file was written.
inline std::string dump(const database& db)
{
    std::string out;
    for (const std::string& comment : db.comments)
        out += "; " + comment + '\n';
    for (const auto& [name, value] : db.header)
        if (name != "$ACADVER" && name != "$HANDSEED")
            out += name + '\n' + dump(db, value);
    for (const group_list& each : db.classes)
        out += "class\n" + dump(db, each);
    // Tables come by name: they may stand in any order in a file.
    std::map<std::string, object_id> tables;
    for (object_id id = 1; id < db.size(); ++id)
        if (db.at(id).family == object_class::table)
            tables[upper(db.text_of(db.at(id).groups, 2))] = id;
    for (const auto& [name, id] : tables)
        dump_object(db, id, "", out);
    for (object_id id = 1; id < db.size(); ++id)
        if (db.at(id).family == object_class::object)
            dump_object(db, id, "", out);
    for (const raw_section& section : db.raw_sections)
        out += "section " + section.name + '\n' + dump(db, section.groups);
    return out;
}

// The first line in which two texts differ, with what stands before it; empty when they are the same.
inline std::string difference(const std::string& a, const std::string& b)
{
    std::istringstream in_a(a), in_b(b);
    std::string of_a, of_b, before;
    for (;;) {
        const bool has_a = static_cast<bool>(std::getline(in_a, of_a));
        const bool has_b = static_cast<bool>(std::getline(in_b, of_b));
        if (!has_a && !has_b)
            return a == b ? "" : "line ends";
        if (has_a != has_b || of_a != of_b)
            return before + "- " + (has_a ? of_a : "(end)") + "\n+ " + (has_b ? of_b : "(end)");
        before =
            before.substr(before.size() > 200 ? before.find('\n', before.size() - 200) + 1 : 0) + of_a + '\n';
    }
}

} // namespace host::db::test
