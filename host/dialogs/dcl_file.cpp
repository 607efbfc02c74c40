// The reader goes through the text once. A tile that is referred to is copied, so that a definition
// is whole when its closing brace is met and later definitions can't change it.
#include "host/dialogs/dcl_file.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "host/core/text.h"
#include "host/dialogs/dcl_tiles.h"
#include "host/files/names.h"
#include "host/files/paths.h"

namespace host::dialogs
{

namespace
{

// What a person writes stays far below these; a file beyond them is damaged or meant to do harm.
constexpr int DEEPEST_NESTING = 100;
constexpr int DEEPEST_INCLUDE = 20;
constexpr std::size_t MOST_TILES = 20000;

enum class token_kind { end, word, text, mark };

struct token {
    token_kind kind = token_kind::end;
    std::string text;
    int line = 1;
};

bool is_word(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '.' ||
           c == '+' || c == '-' || static_cast<unsigned char>(c) >= 0x80;
}

// Thrown nowhere: a failed reader stops by `failed` and hands the first error up.
class reader
{
public:
    reader(dcl_file& out, std::string_view text, const std::string& file, int depth, dcl_error* error)
        : out_(out), text_(text), file_(file), depth_(depth), error_(error)
    {
    }

    bool read()
    {
        advance();
        while (!failed_ && now_.kind != token_kind::end)
            if (is_mark('@'))
                read_include();
            else
                read_definition();
        return !failed_;
    }

private:
    // ---- tokens

    void fail(int line, const std::string& message)
    {
        if (!failed_ && error_)
            *error_ = {program_path(file_), line, message};
        failed_ = true;
        now_ = {};
        now_.line = line;
        at_ = text_.size();
    }

    bool is_mark(char c) const { return now_.kind == token_kind::mark && now_.text[0] == c; }

    std::string shown() const
    {
        switch (now_.kind) {
        case token_kind::end:
            return "the end of the file";
        case token_kind::text:
            return lisp_string(now_.text);
        default:
            return "'" + now_.text + "'";
        }
    }

    void expect(char c, const std::string& after)
    {
        if (failed_)
            return;
        if (!is_mark(c)) {
            // A mark that is missing at a line's end is missed on the line where it belongs.
            fail(last_line_, "'" + std::string(1, c) + "' is missing behind " + after + ", before " + shown());
            return;
        }
        advance();
    }

    void skip_blanks_and_comments()
    {
        while (at_ < text_.size() && !failed_) {
            const char c = text_[at_];
            if (text_.compare(at_, 2, "//") == 0) {
                at_ = text_.find_first_of("\r\n", at_);
                if (at_ == std::string_view::npos)
                    at_ = text_.size();
            } else if (text_.compare(at_, 2, "/*") == 0) {
                const std::size_t end = text_.find("*/", at_ + 2);
                if (end == std::string_view::npos) {
                    fail(line_, "a comment has no '*/' at its end");
                    return;
                }
                while (at_ < end + 2)
                    step();
            } else if (c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\x1A') {
                step();
            } else {
                return;
            }
        }
    }

    // Over one character; a carriage return counts as a line when no line feed follows.
    void step()
    {
        if (text_[at_] == '\n' || (text_[at_] == '\r' && text_.compare(at_, 2, "\r\n") != 0))
            line_++;
        at_++;
    }

    void advance()
    {
        last_line_ = now_.line;
        skip_blanks_and_comments();
        if (failed_)
            return;
        now_ = {token_kind::end, {}, line_};
        if (at_ >= text_.size())
            return;
        const char c = text_[at_];
        if (c == '"') {
            read_text();
        } else if (is_word(c)) {
            now_.kind = token_kind::word;
            while (at_ < text_.size() && is_word(text_[at_]))
                now_.text += text_[at_++];
        } else if (std::strchr(":;{}=@,", c)) {
            now_.kind = token_kind::mark;
            now_.text = c;
            at_++;
        } else {
            fail(line_, "'" + std::string(1, c) + "' has no meaning here");
        }
    }

    void read_text()
    {
        now_.kind = token_kind::text;
        for (at_++; at_ < text_.size() && text_[at_] != '"'; at_++) {
            if (text_[at_] == '\n' || text_[at_] == '\r')
                break;
            if (text_[at_] != '\\' || at_ + 1 >= text_.size() || escape_at(text_, at_)) {
                now_.text += text_[at_];
                continue;
            }
            switch (const char c = text_[++at_]) {
            case 'n':
                now_.text += '\n';
                break;
            case 't':
                now_.text += '\t';
                break;
            case '"':
            case '\\':
                now_.text += c;
                break;
            default: // paths are often written with single backslashes
                now_.text += '\\';
                at_--;
                break;
            }
        }
        if (at_ >= text_.size() || text_[at_] != '"') {
            fail(now_.line, "a text has no quote at its end");
            return;
        }
        at_++;
    }

    // ---- grammar

    void read_include()
    {
        advance();
        const int line = now_.line;
        if (now_.kind != token_kind::word || now_.text != "include") {
            fail(line, "'@' stands before 'include' only, not before " + shown());
            return;
        }
        advance();
        if (failed_)
            return;
        if (now_.kind != token_kind::text) {
            fail(line, "'@include' wants a file's name in quotes");
            return;
        }
        include(now_.text, line);
        if (!failed_)
            advance();
    }

    void include(std::string name, int line)
    {
        if (extension_of(name).empty())
            name += ".dcl";
        // The tiles of the language's own file are known without it.
        if (same_text(file_name_of(name), "base.dcl"))
            return;
        if (depth_ >= DEEPEST_INCLUDE) {
            fail(line, "files include each other more than " + std::to_string(DEEPEST_INCLUDE) + " deep");
            return;
        }
        auto path = existing_path(directory_of(file_) + name);
        if (!path)
            path = find_file(name);
        const auto bytes = path ? read_whole(*path) : std::nullopt;
        if (!bytes) {
            fail(line, "'" + name + "' can't be read");
            return;
        }
        const std::string inside = program_name(*bytes);
        reader below(out_, inside, *path, depth_ + 1, error_);
        failed_ = !below.read();
    }

    void read_definition()
    {
        const token name = now_;
        if (name.kind != token_kind::word) {
            fail(name.line, "a definition begins with a name, not with " + shown());
            return;
        }
        advance();
        if (!failed_ && !is_mark(':')) {
            fail(last_line_, "':' is missing behind '" + name.text + "', before " + shown());
            return;
        }
        dcl_tile tile = read_tile(0);
        if (failed_)
            return;
        tile.line = name.line;
        if (tile.count() > MOST_TILES) {
            fail(name.line, "'" + name.text + "' has more than " + std::to_string(MOST_TILES) + " tiles");
            return;
        }
        if (is_mark(';'))
            advance(); // allowed behind a definition's brace
        if (out_.tiles.insert_or_assign(name.text, std::move(tile)).second)
            out_.names.push_back(name.text);
    }

    const dcl_tile* base(const std::string& name) const
    {
        const auto found = out_.tiles.find(name);
        return found != out_.tiles.end() ? &found->second : own_tile(name);
    }

    // From the colon on: bases, then a body or a semicolon.
    dcl_tile read_tile(int depth)
    {
        dcl_tile tile;
        if (depth > DEEPEST_NESTING) {
            fail(now_.line, "tiles stand more than " + std::to_string(DEEPEST_NESTING) + " deep in each other");
            return tile;
        }
        tile.line = now_.line;
        bool first = true;
        while (!failed_ && is_mark(':')) {
            advance();
            if (failed_)
                return tile;
            const dcl_tile* from = now_.kind == token_kind::word ? base(now_.text) : nullptr;
            if (!from) {
                fail(now_.line, now_.kind == token_kind::word ? "there is no tile " + shown()
                                                              : "':' wants a tile's name, not " + shown());
                return tile;
            }
            inherit(tile, *from, first);
            first = false;
            advance();
        }
        if (is_mark(';'))
            advance();
        else
            read_body(tile, depth);
        return tile;
    }

    // The first base decides what the tile is; others add attributes and children.
    static void inherit(dcl_tile& tile, const dcl_tile& from, bool decides)
    {
        if (decides) {
            tile.kind = from.kind;
            tile.horizontal = from.horizontal;
            tile.boxed = from.boxed;
        }
        tile.attributes.insert(tile.attributes.end(), from.attributes.begin(), from.attributes.end());
        tile.children.insert(tile.children.end(), from.children.begin(), from.children.end());
    }

    void read_body(dcl_tile& tile, int depth)
    {
        const int opened = now_.line;
        expect('{', "the tile's name");
        while (!failed_ && !is_mark('}')) {
            if (now_.kind == token_kind::end) {
                fail(now_.line, "'}' is missing for the '{' of line " + std::to_string(opened));
                return;
            }
            if (is_mark(';'))
                advance(); // an empty statement
            else if (is_mark(':'))
                add_child(tile, read_tile(depth + 1));
            else
                read_statement(tile, depth);
        }
        if (!failed_)
            advance();
    }

    void add_child(dcl_tile& tile, dcl_tile child)
    {
        if (failed_)
            return;
        tiles_ += child.count();
        if (tiles_ > MOST_TILES * 10)
            fail(child.line, "the file has too many tiles");
        else
            tile.children.push_back(std::move(child));
    }

    // `attribute = value;`, `name;`, or a named tile `name : base { ... }`.
    void read_statement(dcl_tile& tile, int depth)
    {
        const token name = now_;
        if (name.kind != token_kind::word) {
            fail(name.line, "an attribute or a tile begins with a name, not with " + shown());
            return;
        }
        advance();
        if (failed_)
            return;
        if (is_mark('=')) {
            advance();
            read_value(tile, name);
        } else if (is_mark(':')) {
            add_child(tile, read_tile(depth + 1));
        } else if (!is_mark(';')) {
            fail(last_line_, "'=' or ';' is missing behind '" + name.text + "', before " + shown());
        } else if (const dcl_tile* from = base(name.text)) {
            advance();
            dcl_tile child = *from;
            child.line = name.line;
            add_child(tile, std::move(child));
        } else {
            fail(name.line, "there is no tile '" + name.text + "'");
        }
    }

    void read_value(dcl_tile& tile, const token& name)
    {
        if (failed_)
            return;
        if (now_.kind != token_kind::text && now_.kind != token_kind::word) {
            fail(name.line, "attribute '" + name.text + "' has no value");
            return;
        }
        std::string value = now_.text;
        const bool quoted = now_.kind == token_kind::text;
        advance();
        while (quoted && !failed_ && now_.kind == token_kind::text) { // long texts come in pieces
            value += now_.text;
            advance();
        }
        expect(';', "the value of '" + name.text + "'");
        tile.attributes.emplace_back(name.text, std::move(value));
    }

    dcl_file& out_;
    std::string_view text_;
    const std::string& file_;
    int depth_;
    dcl_error* error_;
    token now_;
    std::size_t at_ = 0, tiles_ = 0;
    int line_ = 1, last_line_ = 1;
    bool failed_ = false;
};

} // namespace

const std::string* dcl_tile::attribute(std::string_view name) const
{
    for (auto at = attributes.rbegin(); at != attributes.rend(); ++at)
        if (at->first == name)
            return &at->second;
    return nullptr;
}

std::string dcl_tile::text(std::string_view name) const
{
    const std::string* value = attribute(name);
    return value ? *value : std::string();
}

bool dcl_tile::flag(std::string_view name) const
{
    return flag_or(name, false);
}

bool dcl_tile::flag_or(std::string_view name, bool otherwise) const
{
    const std::string* value = attribute(name);
    return value ? same_text(*value, "true") || *value == "1" : otherwise;
}

double dcl_tile::number(std::string_view name, double otherwise) const
{
    const std::string* value = attribute(name);
    return value ? parse_real(*value).value_or(otherwise) : otherwise;
}

std::size_t dcl_tile::count() const
{
    std::size_t all = 1;
    for (const dcl_tile& child : children)
        all += child.count();
    return all;
}

std::string dcl_error::text() const
{
    return file + (line > 0 ? ":" + std::to_string(line) : "") + ": " + message;
}

std::unique_ptr<dcl_file> parse_dcl(std::string_view text, const std::string& file, dcl_error* error)
{
    auto out = std::make_unique<dcl_file>();
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    const std::string inside = program_name(text);
    return reader(*out, inside, file, 0, error).read() ? std::move(out) : nullptr;
}

std::unique_ptr<dcl_file> read_dcl(const std::string& path, dcl_error* error)
{
    if (const auto bytes = read_whole(path))
        return parse_dcl(*bytes, path, error);
    if (error)
        *error = {program_path(path), 0, std::string("can't be read: ") + std::strerror(errno)};
    return nullptr;
}

} // namespace host::dialogs
