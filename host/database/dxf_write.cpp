// Writing: sections in their order, objects in the order of their sequences, so that the same drawing
// gives the same bytes each time.
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <utility>

#include "host/core/console.h"
#include "host/core/session.h"
#include "host/core/text.h"
#include "host/database/dxf.h"
#include "host/database/dxf_downgrade.h"
#include "host/database/dxf_numbers.h"
#include "host/database/dxf_texts.h"
#include "host/files/paths.h"

namespace host::db
{

namespace
{

constexpr const char* VERSIONS[] = {"AC1009", "AC1015", "AC1021"}; // as in dxf_version

// Order of the tables: what a table's records refer to stands before it.
constexpr const char* TABLES[] = {"VPORT", "LTYPE", "LAYER",    "STYLE",       "VIEW",
                                  "UCS",   "APPID", "DIMSTYLE", "BLOCK_RECORD"};

class writer
{
public:
    writer(database& db, dxf_version version) : db_(db), version_(version), down_(db) {}
    std::string text();
    std::string lost() const; // a message when something had no place in the file, else empty

private:
    bool is_r12() const { return version_ == dxf_version::r12; }
    void code(int value);
    void pair(int of, std::string_view value);
    void put(const group& each, bool is_raw = false);
    void put_point(const group& each);
    void put_groups(const group_list& groups);
    void put_variable(const std::string& name, const group_list& value);
    void begin(const char* section);
    void end() { pair(0, "ENDSEC"); }

    void header();
    void classes();
    std::vector<object_id> ordered_tables() const;
    void table(object_id id);
    void tables();
    void block(object_id record);
    void blocks();
    void entity(object_id id);
    void entities();
    void objects();
    void raw_sections();

    database& db_;
    dxf_version version_;
    downgrader down_;
    std::string out_;
    long bad_numbers_ = 0;
};

void writer::code(int value)
{
    // Right aligned in three places, as such files always are.
    if (value < 100)
        out_ += value < 10 ? "  " : " ";
    append_integer(out_, value);
    out_ += '\n';
}

void writer::pair(int of, std::string_view value)
{
    code(of);
    append_text(out_, value, version_ == dxf_version::r2007);
    out_ += '\n';
}

void writer::put_point(const group& each)
{
    for (int i = 0; i < each.dimensions; ++i) {
        code(each.code + 10 * i);
        bad_numbers_ += !std::isfinite(each.point[i]);
        append_real(out_, each.point[i]);
        out_ += '\n';
    }
}

void writer::put(const group& each, bool is_raw)
{
    if (each.kind == group_kind::point)
        return put_point(each);
    code(each.code);
    switch (each.kind) {
    case group_kind::real:
        bad_numbers_ += !std::isfinite(each.real);
        if (each.code >= 50 && each.code <= 58 && !is_raw)
            append_angle(out_, each.real);
        else
            append_real(out_, each.real);
        break;
    case group_kind::integer:
        append_integer(out_, each.integer);
        break;
    case group_kind::handle:
        append_handle(out_, each.handle);
        break;
    case group_kind::binary:
        append_hex(out_, db_.text(each.text));
        break;
    default:
        append_text(out_, db_.text(each.text), version_ == dxf_version::r2007);
    }
    out_ += '\n';
}

// In a file the head is handle, 102 lists, owner; in the store the owner stands first.
void writer::put_groups(const group_list& groups)
{
    std::size_t i = 0;
    if (groups.size() > 2 && groups[1].code == 330 && (groups[2].code == 5 || groups[2].code == 105)) {
        put(groups[0]);
        put(groups[2]);
        bool in_braces = false;
        for (i = 3; i < groups.size() && (in_braces || groups[i].code == 102); ++i) {
            if (groups[i].code == 102)
                in_braces = !db_.text(groups[i].text).starts_with('}');
            put(groups[i]);
        }
        put(groups[1]);
    }
    for (; i < groups.size(); ++i)
        put(groups[i]);
}

void writer::begin(const char* section)
{
    pair(0, "SECTION");
    pair(2, section);
}

void writer::put_variable(const std::string& name, const group_list& value)
{
    pair(9, name);
    if (name == "$ACADVER") {
        pair(1, VERSIONS[static_cast<int>(version_)]);
    } else if (name == "$HANDSEED") {
        code(5);
        append_handle(out_, is_r12() ? down_.next_handle() : db_.next_handle());
        out_ += '\n';
    } else {
        for (const group& each : value)
            put(each);
    }
}

void writer::header()
{
    begin("HEADER");
    const auto put_missing = [&](const char* name) {
        if (!db_.header_value(name))
            put_variable(name, {});
    };
    put_missing("$ACADVER");
    for (const auto& [name, value] : db_.header)
        if (!is_r12() || downgrader::has_variable(name))
            put_variable(name, value);
    put_missing("$HANDSEED");
    if (is_r12() && !db_.header_value("$HANDLING"))
        put_variable("$HANDLING", {int_group(70, 1)});
    end();
}

void writer::classes()
{
    begin("CLASSES");
    for (const group_list& each : db_.classes)
        put_groups(each);
    end();
}

std::vector<object_id> writer::ordered_tables() const
{
    std::vector<object_id> found;
    for (object_id id = 1; id < db_.size(); ++id)
        if (db_.at(id).family == object_class::table && !db_.at(id).erased)
            found.push_back(id);
    const auto rank = [this](object_id id) {
        const std::string name = upper(db_.text_of(db_.at(id).groups, 2));
        return std::find(std::begin(TABLES), std::end(TABLES), name) - std::begin(TABLES);
    };
    std::stable_sort(found.begin(), found.end(), [&](object_id a, object_id b) { return rank(a) < rank(b); });
    return found;
}

void writer::table(object_id id)
{
    std::int64_t count = 0;
    for (object_id record = db_.at(id).first; record; record = db_.at(record).next)
        count += !db_.at(record).erased;
    const std::string name = upper(db_.text_of(db_.at(id).groups, 2));
    if (is_r12()) {
        pair(0, "TABLE");
        pair(2, name);
        put(int_group(70, count));
    } else {
        group_list head = db_.at(id).groups;
        if (group* told = find(head, 70); told && told->kind == group_kind::integer)
            told->integer = std::max(told->integer, count);
        put_groups(head);
    }
    for (object_id record = db_.at(id).first; record; record = db_.at(record).next) {
        if (db_.at(record).erased)
            continue;
        if (is_r12())
            put_groups(down_.record(record));
        else
            put_groups(db_.at(record).groups);
    }
    pair(0, "ENDTAB");
}

void writer::tables()
{
    begin("TABLES");
    for (const object_id id : ordered_tables())
        if (!is_r12() || downgrader::has_table(upper(db_.text_of(db_.at(id).groups, 2))))
            table(id);
    end();
}

void writer::entity(object_id id)
{
    if (is_r12()) {
        for (const group_list& each : down_.entity(id))
            put_groups(each);
        return;
    }
    put_groups(db_.at(id).groups);
    for (object_id child = db_.at(id).first; child; child = db_.at(child).next)
        if (!db_.at(child).erased)
            entity(child);
}

bool is_space_of_entities(const database& db, object_id record)
{
    return record == db.model_space() || record == db.paper_space();
}

bool is_block_end(const database& db, object_id id)
{
    return db.is(id, "BLOCK") || db.is(id, "ENDBLK");
}

void writer::block(object_id record)
{
    object_id head = 0, tail = 0;
    for (object_id id = db_.at(record).first; id; id = db_.at(id).next) {
        if (db_.is(id, "BLOCK"))
            head = id;
        else if (db_.is(id, "ENDBLK"))
            tail = id;
    }
    if (!head || !tail)
        return; // a record that names no block
    put_groups(is_r12() ? down_.block_end(head) : db_.at(head).groups);
    // What stands in the two spaces is in section ENTITIES.
    if (!is_space_of_entities(db_, record))
        for (object_id id = db_.at(record).first; id; id = db_.at(id).next)
            if (!db_.at(id).erased && !is_block_end(db_, id))
                entity(id);
    put_groups(is_r12() ? down_.block_end(tail) : db_.at(tail).groups);
}

void writer::blocks()
{
    begin("BLOCKS");
    if (const object_id table = db_.table("BLOCK_RECORD"))
        for (object_id record = db_.at(table).first; record; record = db_.at(record).next)
            if (!db_.at(record).erased)
                block(record);
    end();
}

// Both spaces, in the order in which their entities were made.
void writer::entities()
{
    begin("ENTITIES");
    const auto live = [this](object_id id) {
        while (id && (db_.at(id).erased || is_block_end(db_, id)))
            id = db_.at(id).next;
        return id;
    };
    object_id in_model = db_.model_space() ? live(db_.at(db_.model_space()).first) : 0;
    object_id in_paper = db_.paper_space() ? live(db_.at(db_.paper_space()).first) : 0;
    while (in_model || in_paper) {
        object_id& next = in_model && (!in_paper || in_model < in_paper) ? in_model : in_paper;
        entity(next);
        next = live(db_.at(next).next);
    }
    end();
}

void writer::objects()
{
    begin("OBJECTS");
    for (object_id id = 1; id < db_.size(); ++id)
        if (db_.at(id).family == object_class::object && !db_.at(id).erased)
            put_groups(db_.at(id).groups);
    end();
}

void writer::raw_sections()
{
    for (const raw_section& section : db_.raw_sections) {
        begin(section.name.c_str());
        for (const group& each : section.groups)
            put(each, true);
        end();
    }
}

std::string writer::text()
{
    for (const std::string& comment : db_.comments)
        pair(999, comment);
    if (is_r12()) {
        // What is made anew takes handles, and the header tells the next one.
        const std::string comments = std::exchange(out_, {});
        tables();
        blocks();
        entities();
        const std::string rest = std::exchange(out_, comments);
        header();
        out_ += rest;
    } else {
        header();
        classes();
        tables();
        blocks();
        entities();
        objects();
        raw_sections();
    }
    pair(0, "EOF");
    return std::move(out_);
}

std::string writer::lost() const
{
    std::string out;
    for (const auto& [kind, count] : down_.lost())
        out += (out.empty() ? "R12 has no place for " : ", ") + std::to_string(count) + ' ' + kind;
    if (bad_numbers_)
        out += (out.empty() ? "" : "; ") + std::to_string(bad_numbers_) +
               " values that are no numbers were written as 0.0";
    return out;
}

std::string backup_of(const std::string& path)
{
    const std::size_t dot = path.find_last_of("./");
    return path.substr(0, dot != std::string::npos && path[dot] == '.' ? dot : path.size()) + ".bak";
}

std::string with_carriage_returns(const std::string& text)
{
    std::string out;
    out.reserve(text.size() + text.size() / 4);
    for (const char c : text) {
        if (c == '\n')
            out += '\r';
        out += c;
    }
    return out;
}

} // namespace

std::string dxf_text(database& db, dxf_version version)
{
    return writer(db, version).text();
}

bool write_dxf(database& db, const std::string& path, dxf_version version, bool keep_backup, dxf_error* error)
{
    writer to(db, version);
    const std::string text = run_settings().crlf ? with_carriage_returns(to.text()) : to.text();
    if (!replace_file(path, text, keep_backup ? backup_of(path) : std::string(), nullptr)) {
        if (error)
            *error = {path, 0, std::string("the file can't be written: ") + std::strerror(errno)};
        return false;
    }
    if (const std::string lost = to.lost(); !lost.empty())
        complain(path + ": " + lost);
    return true;
}

} // namespace host::db
