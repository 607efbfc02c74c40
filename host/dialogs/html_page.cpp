// From tags to blocks. Text gathers in `text_` until a tag of a block begins or ends; then it becomes one.
#include "host/dialogs/html_page.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

#include "host/core/text.h"
#include "host/files/names.h"

namespace host::dialogs
{

namespace
{

constexpr int DEEPEST_INDENT = 12; // of what is shown; pages may nest as they like
constexpr unsigned LAST_CODE_POINT = 0x10FFFF;
constexpr std::size_t LONGEST_COMPARED_LINK = 2000; // bytes; a longer one is shown whatever the text says

constexpr std::pair<std::string_view, unsigned> ENTITIES[] = {
    {"amp", '&'},       {"apos", '\''},    {"Auml", 0xC4},    {"auml", 0xE4},    {"bull", 0x2022},
    {"copy", 0xA9},     {"deg", 0xB0},     {"divide", 0xF7},  {"eacute", 0xE9},  {"egrave", 0xE8},
    {"euro", 0x20AC},   {"frac12", 0xBD},  {"frac14", 0xBC},  {"frac34", 0xBE},  {"gt", '>'},
    {"hellip", 0x2026}, {"laquo", 0xAB},   {"ldquo", 0x201C}, {"lsquo", 0x2018}, {"lt", '<'},
    {"mdash", 0x2014},  {"micro", 0xB5},   {"middot", 0xB7},  {"nbsp", ' '},     {"ndash", 0x2013},
    {"Ouml", 0xD6},     {"ouml", 0xF6},    {"para", 0xB6},    {"plusmn", 0xB1},  {"quot", '"'},
    {"raquo", 0xBB},    {"rdquo", 0x201D}, {"reg", 0xAE},     {"rsquo", 0x2019}, {"sect", 0xA7},
    {"sup2", 0xB2},     {"sup3", 0xB3},    {"szlig", 0xDF},   {"times", 0xD7},   {"Uuml", 0xDC},
    {"uuml", 0xFC},
};

// Elements around which the text is parted into blocks, besides those that do more.
constexpr std::string_view PLAIN_BLOCKS[] = {"address", "article", "aside",    "body",   "div",
                                             "dl",      "dt",      "fieldset", "footer", "form",
                                             "header",  "main",    "nav",      "p",      "section"};
// Elements whose text isn't part of the page.
constexpr std::string_view HIDDEN[] = {"script", "style", "template", "title"};

bool is_blank(char c)
{
    return c == ' ' || c == '\n' || c == '\t' || c == '\r' || c == '\f';
}

bool is_letter(char c)
{
    return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

template <std::size_t N>
bool is_one_of(std::string_view name, const std::string_view (&names)[N])
{
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

// The length of the control character that UTF-8 text begins with; 0 when it begins with none. Terminals obey
// those of two bytes too.
std::size_t control_length(std::string_view text)
{
    if (text.empty())
        return 0;
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < ' ' || first == 0x7F)
        return 1;
    const auto second = static_cast<unsigned char>(text.size() > 1 ? text[1] : 0);
    return first == 0xC2 && second >= 0x80 && second < 0xA0 ? 2 : 0;
}

std::string without_controls(std::string_view text)
{
    std::string out;
    while (!text.empty()) {
        const std::size_t control = control_length(text);
        if (control == 0)
            out += text[0];
        text.remove_prefix(std::max<std::size_t>(control, 1));
    }
    return out;
}

// 0: no number that stands for a letter.
unsigned number_of_entity(std::string_view digits)
{
    const bool hex = !digits.empty() && (digits[0] == 'x' || digits[0] == 'X');
    if (hex)
        digits.remove_prefix(1);
    unsigned value = 0;
    for (const char c : digits) {
        const int digit = c >= '0' && c <= '9' ? c - '0' : is_letter(c) ? std::tolower(c) - 'a' + 10 : 99;
        if (digit >= (hex ? 16 : 10) || value > LAST_CODE_POINT)
            return 0;
        value = value * (hex ? 16 : 10) + static_cast<unsigned>(digit);
    }
    const bool surrogate = value >= 0xD800 && value < 0xE000;
    const bool control = value < ' ' || (value >= 0x7F && value < 0xA0);
    return value > LAST_CODE_POINT || surrogate || control ? 0 : value;
}

struct tag {
    std::string name; // lower case
    bool ends = false;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::string value(std::string_view attribute) const
    {
        for (const auto& [name_of, value_of] : attributes)
            if (name_of == attribute)
                return value_of;
        return {};
    }
};

struct list_level {
    bool ordered;
    int next = 1;
};

class page_reader
{
public:
    explicit page_reader(std::string_view bytes) : in_(bytes) {}
    html_page read();

private:
    void read_markup();
    tag read_tag();
    std::string attribute_value();
    void skip_past(std::string_view end);
    void read_entity();
    void skip_hidden(const std::string& name);

    void put(std::string_view letters);
    void put_text(char c);
    void end_block();
    void begin(const tag& t);
    void end(const std::string& name);
    void end_link();
    void begin_row();
    void begin_cell(bool head);
    void end_cell();
    void end_table();
    int indent() const;

    std::string_view in_;
    std::size_t at_ = 0;
    html_page page_;

    std::string text_;
    bool blank_ = false; // one is due before the next letter
    bool preformatted_ = false;
    int heading_ = 0;
    int quotations_ = 0;
    std::vector<list_level> lists_;
    std::string marker_;
    std::string link_;
    std::size_t link_at_ = 0;
    html_block table_;
    int tables_ = 0; // nested ones become part of the cell
    bool in_cell_ = false;
};

int page_reader::indent() const
{
    const std::size_t lists = std::min<std::size_t>(lists_.size(), DEEPEST_INDENT);
    return std::min(static_cast<int>(lists) + quotations_, DEEPEST_INDENT);
}

void page_reader::put(std::string_view letters)
{
    if (blank_ && !text_.empty() && text_.back() != '\n')
        text_ += ' ';
    blank_ = false;
    text_ += letters;
}

void page_reader::put_text(char c)
{
    if (preformatted_ && c == '\t') {
        text_ += "    ";
    } else if (preformatted_ && c == '\n') {
        if (!text_.empty()) // the line feed behind the tag doesn't count
            text_ += '\n';
    } else if (preformatted_ && c == ' ') {
        text_ += ' ';
    } else if (static_cast<unsigned char>(c) <= ' ' || c == 0x7F) {
        blank_ = blank_ || c != '\r' || !preformatted_;
    } else {
        put({&c, 1});
    }
}

// The text so far becomes a block. In a cell there are none: a blank parts what would be.
void page_reader::end_block()
{
    if (in_cell_) {
        blank_ = true;
        return;
    }
    blank_ = false;
    while (!text_.empty() && is_blank(text_.back()))
        text_.pop_back();
    if (text_.empty())
        return;
    html_block block;
    block.kind = preformatted_ ? html_kind::preformatted : heading_ ? html_kind::heading : html_kind::paragraph;
    block.level = heading_;
    block.indent = indent();
    block.marker.swap(marker_);
    block.text.swap(text_);
    page_.blocks.push_back(std::move(block));
}

void page_reader::begin_row()
{
    end_cell();
    table_.rows.emplace_back();
}

void page_reader::begin_cell(bool head)
{
    if (table_.rows.empty())
        begin_row();
    end_cell();
    if (table_.rows.back().cells.empty())
        table_.rows.back().head = head;
    in_cell_ = true;
}

// Text between cells, as that of a caption, comes in front of the table.
void page_reader::end_cell()
{
    if (!in_cell_)
        return end_block();
    std::replace(text_.begin(), text_.end(), '\n', ' ');
    table_.rows.back().cells.push_back(text_);
    text_.clear();
    blank_ = in_cell_ = false;
}

void page_reader::end_table()
{
    end_cell();
    std::erase_if(table_.rows, [](const html_row& row) { return row.cells.empty(); });
    table_.kind = html_kind::table;
    table_.indent = indent();
    if (!table_.rows.empty())
        page_.blocks.push_back(std::move(table_));
    table_ = {};
}

void page_reader::begin(const tag& t)
{
    const std::string& name = t.name;
    if (const std::string anchor = t.value("id"); !anchor.empty())
        page_.anchors.push_back(anchor);
    if (name == "a") {
        link_ = t.value("href");
        if (!link_.empty())
            page_.links.push_back(link_);
        link_at_ = text_.size();
    } else if (name == "br") {
        text_ += preformatted_ || !text_.empty() ? "\n" : "";
        blank_ = false;
    } else if (name == "hr") {
        end_block();
        if (!in_cell_)
            page_.blocks.push_back({html_kind::rule, 0, indent(), {}, {}, {}});
    } else if (name == "table") {
        end_block();
        ++tables_;
    } else if (tables_ == 1 && name == "tr") {
        begin_row();
    } else if (tables_ == 1 && (name == "td" || name == "th")) {
        begin_cell(name == "th");
    } else if (name == "ul" || name == "ol" || name == "menu") {
        end_block();
        lists_.push_back({name == "ol"});
    } else if (name == "li") {
        end_block();
        list_level* level = lists_.empty() ? nullptr : &lists_.back();
        if (!in_cell_)
            marker_ = level && level->ordered ? std::to_string(level->next++) + "." : "-";
    } else if (name == "blockquote" || name == "dd") {
        end_block();
        ++quotations_;
    } else if (name == "pre") {
        end_block();
        preformatted_ = !in_cell_;
    } else if (name.size() == 2 && name[0] == 'h' && name[1] >= '1' && name[1] <= '6') {
        end_block();
        heading_ = name[1] - '0';
    } else if (is_one_of(name, PLAIN_BLOCKS) || name == "td" || name == "tr") {
        end_block();
    }
}

// Where a link leads stands behind it, as there is nothing to press.
void page_reader::end_link()
{
    const std::string link = without_controls(link_);
    link_.clear();
    if (link.empty() || link[0] == '#' || link_at_ >= text_.size())
        return;
    const std::string_view text = std::string_view(text_).substr(link_at_);
    if (link.size() > LONGEST_COMPARED_LINK || text.find(link) == std::string_view::npos)
        text_ += " [" + link + "]";
}

void page_reader::end(const std::string& name)
{
    if (name == "a") {
        end_link();
    } else if (name == "table") {
        if (tables_ == 1)
            end_table();
        else
            end_block();
        tables_ = std::max(tables_ - 1, 0);
    } else if (tables_ == 1 && (name == "td" || name == "th" || name == "tr")) {
        end_cell();
    } else if (name == "ul" || name == "ol" || name == "menu") {
        end_block();
        if (!lists_.empty())
            lists_.pop_back();
        marker_.clear();
    } else if (name == "blockquote" || name == "dd") {
        end_block();
        quotations_ = std::max(quotations_ - 1, 0);
    } else if (name == "pre") {
        end_block();
        preformatted_ = false;
    } else if (name.size() == 2 && name[0] == 'h' && name[1] >= '1' && name[1] <= '6') {
        end_block();
        heading_ = 0;
    } else if (is_one_of(name, PLAIN_BLOCKS) || name == "li" || name == "td" || name == "tr") {
        end_block();
    }
}

void page_reader::skip_past(std::string_view end)
{
    const std::size_t found = in_.find(end, at_);
    at_ = found == std::string_view::npos ? in_.size() : found + end.size();
}

std::string page_reader::attribute_value()
{
    std::string value;
    if (at_ < in_.size() && (in_[at_] == '"' || in_[at_] == '\'')) {
        const char quote = in_[at_++];
        while (at_ < in_.size() && in_[at_] != quote)
            value += in_[at_++];
        at_ += at_ < in_.size() ? 1 : 0;
        return value;
    }
    while (at_ < in_.size() && !is_blank(in_[at_]) && in_[at_] != '>')
        value += in_[at_++];
    return value;
}

// Behind its '<', or '</'.
tag page_reader::read_tag()
{
    tag t;
    while (at_ < in_.size() && std::isalnum(static_cast<unsigned char>(in_[at_])))
        t.name += static_cast<char>(std::tolower(in_[at_++]));
    while (at_ < in_.size() && in_[at_] != '>') {
        if (is_blank(in_[at_]) || in_[at_] == '/') {
            ++at_;
            continue;
        }
        std::string name;
        while (at_ < in_.size() && !is_blank(in_[at_]) && in_[at_] != '=' && in_[at_] != '>' && in_[at_] != '/')
            name += in_[at_++];
        std::string value;
        if (at_ < in_.size() && in_[at_] == '=') {
            ++at_;
            value = attribute_value();
        }
        t.attributes.emplace_back(host::lower(name), std::move(value));
    }
    at_ += at_ < in_.size() ? 1 : 0;
    return t;
}

void page_reader::skip_hidden(const std::string& name)
{
    const std::string end = "</" + name;
    const std::size_t from = at_;
    while (at_ < in_.size() && !host::same_text(in_.substr(at_, end.size()), end))
        ++at_;
    if (name == "title" && page_.title.empty())
        page_.title = std::string(host::trimmed(in_.substr(from, at_ - from)));
}

void page_reader::read_markup()
{
    if (in_.substr(at_, 4) == "<!--")
        return skip_past("-->");
    const char next = at_ + 1 < in_.size() ? in_[at_ + 1] : ' ';
    if (next == '!' || next == '?')
        return skip_past(">");
    const bool ends = next == '/' && at_ + 2 < in_.size() && is_letter(in_[at_ + 2]);
    if (!ends && !is_letter(next)) {
        ++at_;
        return put("<");
    }
    at_ += ends ? 2 : 1;
    const tag t = read_tag();
    if (ends)
        return end(t.name);
    begin(t);
    if (is_one_of(t.name, HIDDEN))
        skip_hidden(t.name);
}

void page_reader::read_entity()
{
    constexpr std::size_t LONGEST = 10;
    const std::size_t end = in_.substr(at_, LONGEST).find(';');
    const std::string_view name = end == std::string_view::npos ? "" : in_.substr(at_ + 1, end - 1);
    unsigned code = 0;
    if (!name.empty() && name[0] == '#')
        code = number_of_entity(name.substr(1));
    for (const auto& [known, value] : ENTITIES)
        if (known == name)
            code = value;
    if (code == 0) {
        ++at_;
        return put("&");
    }
    at_ += end + 1;
    std::string letter;
    append_utf8(letter, code);
    put(letter);
}

html_page page_reader::read()
{
    while (at_ < in_.size()) {
        if (in_[at_] == '<')
            read_markup();
        else if (in_[at_] == '&')
            read_entity();
        else if (control_length(in_.substr(at_)) == 2)
            at_ += 2;
        else
            put_text(in_[at_++]);
    }
    if (tables_ > 0)
        end_table();
    end_block();
    return std::move(page_);
}

} // namespace

html_page parse_html(std::string_view bytes)
{
    constexpr std::string_view MARK = "\xEF\xBB\xBF";
    if (bytes.substr(0, MARK.size()) == MARK)
        bytes.remove_prefix(MARK.size());
    if (is_utf8(bytes))
        return page_reader(bytes).read();
    const std::string converted = utf8_of(bytes);
    return page_reader(converted).read();
}

} // namespace host::dialogs
