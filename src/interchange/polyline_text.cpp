#include "interchange/polyline_text.h"

#include <charconv>
#include <string_view>

#include "interchange/polyline_file.h"

namespace
{

// As "%.Nf".
void add_number(std::string& text, double value, int decimals)
{
    char digits[400]; // the largest double has 309 before its point
    const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals);
    text.append(digits, end.ptr);
}

void add_integer(std::string& text, int value)
{
    char digits[16];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

void add_vertex(std::string& text, const line_form& form, const pl_vertex& v, std::string_view flag)
{
    const bool marked = form.format == POLYLINE_FORMAT_MICROSTATION;
    const int decimals = marked ? 6 : 2;
    const std::string_view between = marked ? "   " : ",";
    add_number(text, v.x, decimals);
    text += between;
    add_number(text, v.y, decimals);
    if (marked || form.format == POLYLINE_FORMAT_DTM || form.with_z) {
        text += between;
        add_number(text, v.z, decimals);
    }
    if (marked)
        text += flag;
    text += '\n';
}

} // namespace

void add_polyline(std::string& text, const line_form& form, const pl_vertex* head, bool closed, int file_color)
{
    if (form.format == POLYLINE_FORMAT_OWN) {
        text += "POLYLINE,";
        add_integer(text, file_color);
        text += '\n';
    } else if (form.format == POLYLINE_FORMAT_DTM) {
        text += "2\n";
    }
    bool at_start = true;
    if (closed) {
        const pl_vertex* last = head;
        while (last->next)
            last = last->next;
        // Two blanks before this flag, three before all others: files in use hold it so.
        add_vertex(text, form, *last, "  1");
        at_start = false;
    }
    for (const pl_vertex* v = head; v; v = v->next) {
        add_vertex(text, form, *v, at_start ? "   1" : "   0");
        at_start = false;
    }
    if (form.format == POLYLINE_FORMAT_DTM)
        text += "END\n";
}
