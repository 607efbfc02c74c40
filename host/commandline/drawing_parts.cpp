// drawing_parts.cpp: records and blocks from files.
#include "host/commandline/drawing_parts.h"

#include <algorithm>
#include <cmath>

#include "host/commandline/answers.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/database/dxf.h"
#include "host/database/entities.h"
#include "host/files/paths.h"
#include "hostapi/ads.h"

namespace host::commandline
{

namespace
{

struct linetype {
    std::string name, description;
    std::vector<double> dashes; // below zero: gaps, zero: dots
};

struct standard_linetype {
    std::string_view name, dashes;
};

// The simple linetypes that every drawing office knows; each also at half and at double size.
constexpr standard_linetype STANDARD[] = {
    {"BORDER", "0.5,-0.25,0.5,-0.25,0,-0.25"},
    {"CENTER", "1.25,-0.25,0.25,-0.25"},
    {"DASHDOT", "0.5,-0.25,0,-0.25"},
    {"DASHED", "0.5,-0.25"},
    {"DIVIDE", "0.5,-0.25,0,-0.25,0,-0.25"},
    {"DOT", "0,-0.25"},
    {"HIDDEN", "0.25,-0.125"},
    {"PHANTOM", "1.25,-0.25,0.25,-0.25,0.25,-0.25"},
};

std::optional<std::vector<double>> dashes_of(std::string_view list, double size)
{
    std::vector<double> out;
    for (const std::string_view part : split_commas(list)) {
        const std::optional<double> value = parse_real(part);
        if (!value)
            return std::nullopt; // shapes and texts in linetypes are not drawn here
        out.push_back(*value * size);
    }
    return out;
}

std::vector<linetype> standard_linetypes()
{
    std::vector<linetype> out;
    const std::pair<std::string_view, double> sizes[] = {{"", 1.0}, {"2", 0.5}, {"X2", 2.0}};
    for (const standard_linetype& each : STANDARD)
        for (const auto& [suffix, size] : sizes)
            out.push_back({std::string(each.name) + std::string(suffix), std::string(each.name) + " line",
                           *dashes_of(each.dashes, size)});
    return out;
}

// "*NAME,description" and in the next line "A,dash,dash,...".
std::vector<linetype> parse_linetypes(std::string_view text)
{
    std::vector<linetype> out;
    std::string name, description;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.starts_with('*')) {
            const std::size_t comma = line.find(',');
            name = trimmed(line.substr(1, comma == std::string_view::npos ? comma : comma - 1));
            description = comma == std::string_view::npos ? "" : trimmed(line.substr(comma + 1));
        } else if (line.size() > 2 && (line[0] == 'A' || line[0] == 'a') && line[1] == ',' && !name.empty()) {
            if (std::optional<std::vector<double>> dashes = dashes_of(line.substr(2), 1.0))
                out.push_back({name, description, std::move(*dashes)});
            name.clear();
        }
    }
    return out;
}

void define(db::database& db, const linetype& type)
{
    db::object_id record = db.record("LTYPE", type.name);
    if (!record)
        record = db::add_record(db, "LTYPE", type.name);
    double length = 0.0;
    for (const double dash : type.dashes)
        length += std::abs(dash);
    const db::group description = db.text_group(3, type.description);
    db::group_list& groups = db.modify(record);
    std::erase_if(groups, [](const db::group& g) { return g.code == 49 || g.code == 74; });
    put_group(groups, description);
    put_group(groups, db::int_group(73, static_cast<int>(type.dashes.size())));
    put_group(groups, db::real_group(40, length));
    for (const double dash : type.dashes) {
        const auto end =
            std::find_if(groups.begin(), groups.end(), [](const db::group& g) { return g.code >= 1000; });
        const db::group pair[] = {db::real_group(49, dash), db::int_group(74, 0)};
        groups.insert(end, std::begin(pair), std::end(pair));
    }
}

// A group that refers to another object by handle means nothing in another drawing.
db::group_list carried_over(const db::database& from, db::database& to, const db::group_list& groups)
{
    db::group_list out;
    bool in_braces = false;
    for (const db::group& g : groups) {
        if (g.code == 102) {
            in_braces = !from.text(g.text).starts_with('}');
            continue;
        }
        if (in_braces || g.kind == db::group_kind::handle || g.code >= 1000)
            continue;
        out.push_back(g);
        if (g.kind == db::group_kind::text || g.kind == db::group_kind::binary)
            out.back().text = to.intern(from.text(g.text));
    }
    return out;
}

void carry_records(const db::database& from, db::database& to, std::string_view table)
{
    const db::object_id source = from.table(table);
    for (db::object_id id = source ? from.at(source).first : 0; id; id = from.at(id).next) {
        const std::string name(from.text_of(from.at(id).groups, 2));
        if (from.at(id).erased || name.empty() || to.record(table, name))
            continue;
        const db::object_id made = db::add_record(to, table, name);
        if (!made)
            continue;
        const db::group_list groups = carried_over(from, to, from.at(id).groups);
        db::group_list& into = to.modify(made);
        for (const db::group& g : groups)
            if (g.code != 0 && g.code != 2 && g.code != 100 && g.code != 49 && g.code != 74)
                put_group(into, g);
        for (const db::group& g : groups)
            if (g.code == 49 || g.code == 74)
                into.push_back(g);
    }
}

void carry_entities(const db::database& from, db::database& to, db::object_id source, db::object_id target)
{
    for (db::object_id id = db::first_entity(from, source); id; id = db::next_entity(from, id)) {
        const db::object_id made =
            db::append_entity(to, target, carried_over(from, to, from.at(id).groups), nullptr);
        for (db::object_id child = from.at(id).first; made && child; child = from.at(child).next)
            if (!from.at(child).erased)
                db::append_entity(to, made, carried_over(from, to, from.at(child).groups), nullptr);
    }
}

void carry_blocks(const db::database& from, db::database& to)
{
    const db::object_id table = from.table("BLOCK_RECORD");
    std::vector<std::pair<db::object_id, db::object_id>> made;
    // All records first: blocks refer to one another.
    for (db::object_id id = table ? from.at(table).first : 0; id; id = from.at(id).next) {
        const std::string name(from.text_of(from.at(id).groups, 2));
        if (!from.at(id).erased && !db::is_space(from, id) && !to.record("BLOCK_RECORD", name))
            made.emplace_back(id, db::add_block(to, name));
    }
    for (const auto& [source, target] : made) {
        const db::object_id begin = from.at(source).first, there = to.at(target).first;
        if (const db::group* base = begin ? db::find(from.at(begin).groups, 10) : nullptr; base && there)
            put_group(to.modify(there), *base);
        carry_entities(from, to, source, target);
    }
}

bool load_block(document& doc, const std::string& path, std::string_view name, std::string* error)
{
    db::dxf_error failure;
    const std::unique_ptr<db::database> from = db::read_dxf(path, doc, &failure);
    if (!from) {
        *error = failure.text();
        return false;
    }
    db::database& to = db::database_of(doc);
    for (const std::string_view table : {"LTYPE", "STYLE", "LAYER", "APPID"})
        carry_records(*from, to, table);
    carry_blocks(*from, to);
    const db::object_id block = db::add_block(to, name);
    if (const db::group_list* base = from->header_value("$INSBASE"))
        if (const db::group* g = db::find(*base, 10))
            put_group(to.modify(to.at(block).first), *g);
    carry_entities(*from, to, from->model_space(), block);
    return true;
}

} // namespace

std::vector<std::string> record_names(const db::database& db, std::string_view table)
{
    std::vector<std::string> names;
    const db::object_id owner = db.table(table);
    for (db::object_id id = owner ? db.at(owner).first : 0; id; id = db.at(id).next)
        if (!db.at(id).erased)
            names.emplace_back(db.text_of(db.at(id).groups, 2));
    return names;
}

bool is_symbol_name(std::string_view name)
{
    return !name.empty() && name.size() <= 255 &&
           name.find_first_of("<>/\\\":;?*|,=`") == std::string_view::npos;
}

void put_group(db::group_list& groups, const db::group& value)
{
    if (db::group* there = db::find(groups, value.code)) {
        *there = value;
        return;
    }
    const auto end =
        std::find_if(groups.begin(), groups.end(), [](const db::group& g) { return g.code >= 1000; });
    groups.insert(end, value);
}

std::optional<std::string> find_or_load_block(document& doc, std::string_view answer, std::string* error)
{
    db::database& db = db::database_of(doc);
    answer = trimmed(answer);
    const std::size_t equals = answer.find('=');
    std::string path(equals == std::string_view::npos ? answer : trimmed(answer.substr(equals + 1)));
    std::string name(answer.substr(0, equals));
    if (equals == std::string_view::npos) {
        name = file_name_of(name);
        if (const std::size_t dot = name.rfind('.');
            dot != std::string::npos && dot > 0 && name.size() - dot == 4)
            name.resize(dot);
    }
    if (const db::object_id block = db.record("BLOCK_RECORD", name); block && equals == std::string_view::npos)
        return std::string(db.text_of(db.at(block).groups, 2));
    if (!is_symbol_name(name)) {
        *error = "Invalid block name.";
        return std::nullopt;
    }
    if (name.size() == path.size() || !path.ends_with(".dxf"))
        path = drawing_path(path);
    std::optional<std::string> file = existing_path(path);
    if (!file)
        file = find_file(file_name_of(path));
    if (!file) {
        *error = "\"" + name + "\": cannot find a block or a drawing file of that name.";
        return std::nullopt;
    }
    if (const db::object_id old = db.record("BLOCK_RECORD", name)) {
        *error = "Block \"" + std::string(db.text_of(db.at(old).groups, 2)) + "\" is in the drawing already.";
        return std::nullopt;
    }
    if (!load_block(doc, *file, name, error))
        return std::nullopt;
    return name;
}

std::vector<std::string> load_linetypes(db::database& db, std::string_view pattern, std::string_view file)
{
    std::vector<linetype> known;
    if (const std::optional<std::string> path = file.empty() ? std::nullopt : find_file(file))
        if (const std::optional<std::string> text = read_whole(*path))
            known = parse_linetypes(*text);
    if (known.empty())
        known = standard_linetypes();
    std::vector<std::string> loaded;
    const std::string wanted = upper(pattern);
    for (const linetype& type : known)
        if (acutWcMatch(upper(type.name).c_str(), wanted.c_str()) == RTNORM) {
            define(db, type);
            loaded.push_back(type.name);
        }
    return loaded;
}

} // namespace host::commandline
