// From blocks to lines.
#include <algorithm>
#include <numeric>

#include "host/dialogs/html_page.h"

namespace host::dialogs
{

namespace
{

using lines = std::vector<std::string>;

constexpr std::size_t INDENT = 2;       // columns a level
constexpr std::size_t CODE_INDENT = 4;  // of preformatted text
constexpr std::size_t GAP = 2;          // between columns of a table
constexpr std::size_t NARROWEST = 6;    // column that text is wrapped in
constexpr std::size_t LEAST_WIDTH = 20; // however deep the indent

bool continues(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

std::size_t letters(std::string_view text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return !continues(c); }));
}

// Bytes of the first `count` letters.
std::size_t bytes_of(std::string_view text, std::size_t count)
{
    std::size_t at = 0;
    for (; at < text.size() && (count > 0 || continues(text[at])); ++at)
        count -= continues(text[at]) ? 0 : 1;
    return at;
}

// `cut`: words longer than the width go on in the next line.
lines wrapped(std::string_view text, std::size_t width, bool cut)
{
    lines out{""};
    std::size_t used = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(" \n"), text.size());
        std::string_view word = text.substr(0, end);
        std::size_t size = letters(word);
        if (used > 0 && used + 1 + size > width) {
            out.emplace_back();
            used = 0;
        }
        while (cut && size > width) {
            const std::size_t bytes = bytes_of(word, width);
            out.back() += word.substr(0, bytes);
            out.emplace_back();
            word.remove_prefix(bytes);
            size -= width;
        }
        if (size > 0) {
            out.back() += (used > 0 ? " " : "") + std::string(word);
            used += size + (used > 0 ? 1 : 0);
        }
        if (end < text.size() && text[end] == '\n') {
            out.emplace_back();
            used = 0;
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return out;
}

std::size_t columns_of(const html_block& table)
{
    std::size_t columns = 0;
    for (const html_row& row : table.rows)
        columns = std::max(columns, row.cells.size());
    return columns;
}

// The widest columns give way first. Empty when there are too many.
std::vector<std::size_t> column_widths(const html_block& table, std::size_t width)
{
    std::vector<std::size_t> widths(columns_of(table), 1);
    if (widths.size() * (NARROWEST + GAP) > width)
        return {};
    for (const html_row& row : table.rows)
        for (std::size_t i = 0; i < row.cells.size(); ++i)
            widths[i] = std::max(widths[i], letters(row.cells[i]));
    const std::size_t room = width - GAP * (widths.size() - 1);
    std::size_t limit = *std::max_element(widths.begin(), widths.end());
    const auto total = [&widths, &limit] {
        return std::accumulate(widths.begin(), widths.end(), std::size_t{0},
                               [&limit](std::size_t sum, std::size_t w) { return sum + std::min(w, limit); });
    };
    limit = std::min(limit, width);
    while (limit > NARROWEST && total() > room)
        --limit;
    for (std::size_t& w : widths)
        w = std::min(w, limit);
    return widths;
}

void add_line(std::string& out, std::string line)
{
    line.erase(line.find_last_not_of(' ') + 1);
    out += line + "\n";
}

void add_row(std::string& out, const html_row& row, const std::vector<std::size_t>& widths,
             const std::string& indent)
{
    std::vector<lines> cells;
    std::size_t height = 1;
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
        cells.push_back(wrapped(row.cells[i], widths[i], true));
        height = std::max(height, cells.back().size());
    }
    for (std::size_t y = 0; y < height; ++y) {
        std::string line = indent;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const std::string part = y < cells[i].size() ? cells[i][y] : "";
            line += part + std::string(widths[i] + GAP - std::min(letters(part), widths[i]), ' ');
        }
        add_line(out, line);
    }
}

void add_table(std::string& out, const html_block& table, std::size_t width, const std::string& indent)
{
    const std::vector<std::size_t> widths = column_widths(table, width);
    for (const html_row& row : table.rows) {
        if (widths.empty()) {
            std::string joined;
            for (const std::string& cell : row.cells)
                joined += (joined.empty() ? "" : " | ") + cell;
            for (const std::string& line : wrapped(joined, width, false))
                add_line(out, indent + line);
            continue;
        }
        add_row(out, row, widths, indent);
        if (!row.head || &row != &table.rows.front())
            continue;
        std::string rule = indent;
        for (const std::size_t w : widths)
            rule += std::string(w, '-') + std::string(GAP, ' ');
        add_line(out, rule);
    }
}

void add_text(std::string& out, const html_block& block, std::size_t width, const std::string& indent)
{
    const std::size_t hang = block.marker.empty() ? 0 : block.marker.size() + 1;
    bool first = true;
    for (const std::string& line : wrapped(block.text, width > hang ? width - hang : 1, false)) {
        const std::string head = first && hang ? block.marker + " " : std::string(hang, ' ');
        add_line(out, indent + head + line);
        first = false;
    }
    if (block.kind == html_kind::heading && block.level <= 2)
        add_line(out, indent + std::string(std::min(letters(block.text), width), block.level == 1 ? '=' : '-'));
}

void add_preformatted(std::string& out, const html_block& block, const std::string& indent)
{
    std::string_view text = block.text;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        add_line(out, indent + std::string(CODE_INDENT, ' ') + std::string(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

} // namespace

std::string html_text(const html_page& page, std::size_t width)
{
    std::string out;
    for (std::size_t i = 0; i < page.blocks.size(); ++i) {
        const html_block& block = page.blocks[i];
        const bool item_follows_item = i > 0 && !block.marker.empty() && !page.blocks[i - 1].marker.empty();
        if (i > 0 && !item_follows_item)
            out += "\n";
        // An item's marker stands one level out, so that further paragraphs are in line with its text.
        const bool outdented = !block.marker.empty() && block.indent > 0;
        const std::string indent(INDENT * static_cast<std::size_t>(block.indent - (outdented ? 1 : 0)), ' ');
        const std::size_t room = std::max(width - std::min(width, indent.size()), LEAST_WIDTH);
        switch (block.kind) {
        case html_kind::preformatted:
            add_preformatted(out, block, indent);
            break;
        case html_kind::rule:
            add_line(out, indent + std::string(room, '-'));
            break;
        case html_kind::table:
            add_table(out, block, room, indent);
            break;
        default:
            add_text(out, block, room, indent);
        }
    }
    return out;
}

} // namespace host::dialogs
