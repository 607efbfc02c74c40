// html_page.h: a page of HTML as blocks of plain text. Any bytes give a page; tags that aren't known count as
// nothing, tags that aren't closed end where their surroundings do.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host::dialogs
{

struct html_row {
    bool head = false; // its first cell is a heading
    std::vector<std::string> cells;
};

enum class html_kind { paragraph, heading, preformatted, rule, table };

// Text is UTF-8 without control characters, but for line feeds where the page breaks a line.
struct html_block {
    html_kind kind = html_kind::paragraph;
    int level = 0;      // of a heading: 1 to 6
    int indent = 0;     // levels of lists and quotations around it
    std::string marker; // of the first block in a list's item: "-" or "3."
    std::string text;
    std::vector<html_row> rows;
};

struct html_page {
    std::string title;
    std::vector<html_block> blocks;
    std::vector<std::string> links, anchors; // href and id as they are written
};

html_page parse_html(std::string_view bytes);
// The page for a screen of letters `width` wide: UTF-8 lines, each with its line feed. Preformatted lines and
// single words may be longer.
std::string html_text(const html_page& page, std::size_t width = 78);

} // namespace host::dialogs
