// Reading: a file's pairs become groups, objects and sections.
//
// The reader always holds one pair that is not yet used. A point takes up to three pairs, so each
// `take_...` ends on the first pair that isn't its own. Groups are collected in one list that is kept
// from object to object, and copied out in the exact size.
#include <array>
#include <cstring>
#include <filesystem>

#include "host/core/console.h"
#include "host/core/text.h"
#include "host/database/dxf_numbers.h"
#include "host/database/dxf_parts.h"
#include "host/database/dxf_texts.h"
#include "host/files/paths.h"

namespace host::db
{

std::string dxf_error::text() const
{
    const std::string name = program_path(file);
    return line > 0 ? name + ':' + std::to_string(line) + ": " + message : name + ": " + message;
}

namespace
{

// Texts repeat in runs (types, markers, layers): a small table of the latest ones in front of the pool.
class text_cache
{
public:
    explicit text_cache(database& db) : db_(db) {}
    text_id id_of(std::string_view text)
    {
        std::uint64_t head = 0, tail = 0;
        const std::size_t size = text.size();
        if (size > 0) // an empty view may have no address
            std::memcpy(&head, text.data(), size < 8 ? size : 8);
        if (size > 8)
            std::memcpy(&tail, text.data() + size - 8, 8);
        const std::uint64_t mixed = (head ^ (tail * 31) ^ size) * 0x9E3779B97F4A7C15u;
        entry& place = entries_[mixed >> (64 - BITS)];
        if (place.text != text || !place.text.data()) {
            place.id = db_.intern(text);
            place.text = db_.text(place.id);
        }
        return place.id;
    }

private:
    static constexpr int BITS = 10;
    struct entry {
        std::string_view text;
        text_id id = 0;
    };
    database& db_;
    std::array<entry, 1 << BITS> entries_{};
};

class reader
{
public:
    reader(dxf_scanner& scanner, database& db, dxf_parts& parts)
        : scanner_(scanner), db_(db), parts_(parts), texts_(db)
    {
    }
    bool read();

private:
    // ---- pairs
    bool advance();
    int code() const { return scanner_.code(); }
    bool at(int wanted, std::string_view text) const
    {
        return code() == wanted && trimmed(scanner_.text()) == text;
    }
    bool fail(std::string message) { return scanner_.fail(scanner_.place(), std::move(message)); }

    // ---- groups
    enum class use { object, raw, dimstyle };
    bool take_group(use mode);
    bool take_point();
    bool take_real(use mode);
    bool take_integer();
    bool take_handle();
    bool take_chunk();
    bool push_text();
    bool push(const group& made);

    // ---- objects and sections
    bool take_object(dxf_object& made, use mode = use::object);
    bool take_trailing(const char* what);
    bool take_section();
    bool header();
    bool classes();
    bool table_section();
    bool table();
    bool blocks();
    bool block();
    bool objects(std::vector<dxf_object>& into);
    bool raw(const std::string& name);
    void note_comment();
    void note_version(const group_list& value);

    dxf_scanner& scanner_;
    database& db_;
    dxf_parts& parts_;
    text_cache texts_;
    group_list groups_; // of the object being read
    std::string room_;  // for texts that change on the way
    std::string section_;
    bool is_utf8_ = false;
    bool has_section_ = false;
};

// ---- pairs

// The next pair; the end of the data is an error, for EOF must stand before it.
bool reader::advance()
{
    if (scanner_.next())
        return true;
    if (section_.empty())
        return scanner_.fail(scanner_.value_place(), "the file ends without EOF");
    return scanner_.fail(scanner_.value_place(), "the file ends in section " + section_);
}

// ---- groups

bool reader::push(const group& made)
{
    groups_.push_back(made);
    return advance();
}

bool reader::push_text()
{
    const std::string_view value = code() == 0 ? trimmed(scanner_.text()) : scanner_.text();
    return push(text_group(code(), texts_.id_of(stored_text(value, is_utf8_, room_))));
}

bool reader::take_point()
{
    const int first = code();
    constexpr int Y = 10, Z = 20;
    constexpr int THICKNESS = 39; // is no third coordinate of a group 19
    double at[3] = {0, 0, 0};
    if (!scanner_.real(&at[0]) || !advance())
        return false;
    if (code() != first + Y) { // a plain number, in objects that use the code so
        groups_.push_back(real_group(first, at[0]));
        return true;
    }
    if (!scanner_.real(&at[1]) || !advance())
        return false;
    if (code() != first + Z || code() == THICKNESS) {
        groups_.push_back(point_group(first, at[0], at[1]));
        return true;
    }
    if (!scanner_.real(&at[2]))
        return false;
    return push(point_group(first, at[0], at[1], at[2]));
}

bool reader::take_real(use mode)
{
    double value = 0.0;
    const bool is_angle = code() >= 50 && code() <= 58 && mode != use::raw;
    return (is_angle ? scanner_.angle(&value) : scanner_.real(&value)) && push(real_group(code(), value));
}

bool reader::take_integer()
{
    std::int64_t value = 0;
    if (!dxf_knows(code()) && !scanner_.is_binary() && !read_integer(scanner_.text(), &value))
        return push_text(); // what the code means isn't known, so any text may stand there
    return scanner_.integer(&value) && push(int_group(code(), value));
}

bool reader::take_handle()
{
    std::uint64_t value = 0;
    return scanner_.handle(&value) && push(handle_group(code(), value));
}

bool reader::take_chunk()
{
    if (!scanner_.chunk(&room_))
        return push_text();
    group made = text_group(code(), texts_.id_of(room_));
    made.kind = group_kind::binary;
    return push(made);
}

bool reader::take_group(use mode)
{
    switch (dxf_kind(code())) {
    case group_kind::real:
        return take_real(mode);
    case group_kind::point:
        return take_point();
    case group_kind::integer:
        return take_integer();
    case group_kind::handle:
        return code() == 5 && mode == use::dimstyle ? push_text() : take_handle();
    case group_kind::binary:
        return take_chunk();
    case group_kind::text:
        break;
    }
    return push_text();
}

// ---- objects and sections

// From a group 0 to the next one.
bool reader::take_object(dxf_object& made, use mode)
{
    groups_.clear();
    made.place = scanner_.place();
    if (code() != 0)
        return fail("group 0 was expected, not group " + std::to_string(code()));
    if (!push_text())
        return false;
    while (code() != 0)
        if (!take_group(mode))
            return false;
    made.groups.assign(groups_.begin(), groups_.end());
    const int handle_code = mode == use::dimstyle ? 105 : 5;
    for (const group& each : made.groups) {
        if (each.code == handle_code && each.kind == group_kind::handle) {
            made.handle = each.handle;
            break;
        }
        if (each.code == 100) // an unknown object may use the code for itself
            break;
    }
    constexpr std::uint64_t LARGEST = std::uint64_t{1} << 60;
    if (made.handle > LARGEST)
        return scanner_.fail(made.place, "the handle of this object is too large");
    parts_.largest_handle = std::max(parts_.largest_handle, made.handle);
    return true;
}

// What stands between ENDTAB, ENDSEC and the next group 0: comments, which are kept, or nothing that
// means anything.
bool reader::take_trailing(const char* what)
{
    if (!at(0, what))
        return fail(std::string(what) + " was expected, not " + quoted(trimmed(scanner_.text())));
    do {
        if (!advance())
            return false;
        if (code() == 999)
            note_comment();
    } while (code() != 0);
    return true;
}

// A comment that stands outside of objects: it goes to the head of the file.
void reader::note_comment()
{
    db_.comments.emplace_back(stored_text(scanner_.text(), is_utf8_, room_));
}

void reader::note_version(const group_list& value)
{
    const std::string_view name = trimmed(db_.text_of(value, 1));
    std::int64_t number = 0;
    parts_.version = name.starts_with("AC") && read_integer(name.substr(2), &number) && number < 10000
                         ? static_cast<int>(number)
                         : VERSION_R12;
    is_utf8_ = parts_.version >= VERSION_R2007;
}

bool reader::header()
{
    while (code() != 0) {
        if (code() == 999) {
            note_comment();
            if (!advance())
                return false;
            continue;
        }
        if (code() != 9)
            return fail("a header variable (group 9) was expected, not group " + std::to_string(code()));
        const std::string name(stored_text(trimmed(scanner_.text()), is_utf8_, room_));
        groups_.clear();
        if (!advance())
            return false;
        while (code() != 0 && code() != 9 && code() != 999)
            if (!take_group(use::object))
                return false;
        if (name == "$ACADVER")
            note_version(groups_);
        db_.header.emplace_back(name, groups_);
    }
    return true;
}

bool reader::classes()
{
    while (!at(0, "ENDSEC")) {
        dxf_object made;
        if (!take_object(made))
            return false;
        db_.classes.push_back(std::move(made.groups));
    }
    return true;
}

bool reader::table()
{
    dxf_table made;
    if (!take_object(made.head))
        return false;
    made.name = upper(trimmed(db_.text_of(made.head.groups, 2)));
    if (made.name.empty())
        return scanner_.fail(made.head.place, "a table without a name");
    const use mode = made.name == "DIMSTYLE" ? use::dimstyle : use::object;
    while (!at(0, "ENDTAB")) {
        if (at(0, "ENDSEC") || at(0, "TABLE") || at(0, "EOF"))
            return fail("table " + made.name + " is not ended by ENDTAB");
        if (!take_object(made.records.emplace_back(), mode))
            return false;
    }
    parts_.tables.push_back(std::move(made));
    return take_trailing("ENDTAB");
}

bool reader::table_section()
{
    while (!at(0, "ENDSEC")) {
        if (!at(0, "TABLE"))
            return fail("TABLE was expected, not " + quoted(trimmed(scanner_.text())));
        if (!table())
            return false;
    }
    return true;
}

bool reader::block()
{
    dxf_block& made = parts_.blocks.emplace_back();
    if (!take_object(made.begin))
        return false;
    while (!at(0, "ENDBLK")) {
        if (at(0, "ENDSEC") || at(0, "BLOCK") || at(0, "EOF"))
            return fail("a block is not ended by ENDBLK");
        if (!take_object(made.entities.emplace_back()))
            return false;
    }
    return take_object(made.end);
}

bool reader::blocks()
{
    while (!at(0, "ENDSEC")) {
        if (!at(0, "BLOCK"))
            return fail("BLOCK was expected, not " + quoted(trimmed(scanner_.text())));
        if (!block())
            return false;
    }
    return true;
}

bool reader::objects(std::vector<dxf_object>& into)
{
    while (!at(0, "ENDSEC")) {
        if (at(0, "EOF") || at(0, "SECTION"))
            return fail("section " + section_ + " is not ended by ENDSEC");
        if (section_ == "ENTITIES" && (at(0, "BLOCK") || at(0, "ENDBLK")))
            return fail(std::string(trimmed(scanner_.text())) + " outside of section BLOCKS");
        if (!take_object(into.emplace_back()))
            return false;
    }
    return true;
}

bool reader::raw(const std::string& name)
{
    groups_.clear();
    while (!at(0, "ENDSEC")) {
        if (at(0, "EOF"))
            return fail("section " + section_ + " is not ended by ENDSEC");
        if (!take_group(use::raw))
            return false;
    }
    db_.raw_sections.push_back({name, groups_});
    return true;
}

bool reader::take_section()
{
    if (!advance())
        return false;
    if (code() != 2)
        return fail("the name of a section (group 2) was expected, not group " + std::to_string(code()));
    const std::string name(stored_text(trimmed(scanner_.text()), is_utf8_, room_));
    section_ = name;
    has_section_ = true;
    do {
        if (!advance())
            return false;
        if (code() == 999)
            note_comment();
    } while (code() == 999);
    const bool is_read = name == "HEADER"     ? header()
                         : name == "CLASSES"  ? classes()
                         : name == "TABLES"   ? table_section()
                         : name == "BLOCKS"   ? blocks()
                         : name == "ENTITIES" ? objects(parts_.entities)
                         : name == "OBJECTS"  ? objects(parts_.objects)
                                              : raw(name);
    if (!is_read)
        return false;
    section_.clear();
    return take_trailing("ENDSEC");
}

bool reader::read()
{
    if (!scanner_.open())
        return false;
    if (!scanner_.next())
        return scanner_.failed() ? false : scanner_.fail(0, "this is not a DXF file: nothing is in it");
    while (code() == 999) {
        note_comment();
        if (!advance())
            return false;
    }
    while (!at(0, "EOF")) {
        if (!at(0, "SECTION")) {
            const std::string found =
                "group " + std::to_string(code()) + " with " + quoted(trimmed(scanner_.text()));
            return fail(has_section_ ? "SECTION or EOF was expected, not " + found
                                     : "this is not a DXF file: it starts with " + found);
        }
        if (!take_section())
            return false;
    }
    return true;
}

} // namespace

bool read_parts(dxf_scanner& scanner, database& db, dxf_parts& parts)
{
    return reader(scanner, db, parts).read();
}

std::unique_ptr<database> parse_dxf(std::string_view bytes, const std::string& name, document& owner,
                                    dxf_error* error)
{
    dxf_scanner scanner(bytes);
    std::unique_ptr<database> made = empty_database(owner);
    dxf_parts parts;
    std::vector<std::string> remarks;
    if (!read_parts(scanner, *made, parts) || !build_drawing(parts, *made, scanner, &remarks)) {
        if (error)
            *error = {name, scanner.failed_at(),
                      scanner.message() + (scanner.is_binary() ? " (the place is a byte of the file)" : "")};
        return nullptr;
    }
    for (const std::string& remark : remarks)
        complain(name + ": " + remark);
    made->set_modified(false);
    return made;
}

std::unique_ptr<database> read_dxf(const std::string& path, document& owner, dxf_error* error)
{
    const auto refuse = [&](std::string why) {
        if (error)
            *error = {path, 0, std::move(why)};
        return nullptr;
    };
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        return refuse("this is a directory, not a file");
    const std::optional<std::string> bytes = read_whole(path);
    if (!bytes)
        return refuse(std::string("the file can't be read: ") + std::strerror(errno));
    return parse_dxf(*bytes, path, owner, error);
}

} // namespace host::db
