// The reader of polyline files, line by line.
#include <charconv>
#include <cmath>
#include <string_view>

#include "hostapi/ads.h"
#include "hostapi/files.h"
#include "interchange/color_codes.h"
#include "interchange/polyline_file.h"

namespace
{

constexpr int LONGEST_LINE = 112; // characters; the rest of a longer line counts as a line of its own
constexpr std::size_t LONGEST_DTM_HEADER = 2; // its line end counted

std::string_view without_leading_blanks(std::string_view text)
{
    const std::size_t start = text.find_first_not_of(" \t\r\n\v\f");
    text.remove_prefix(start == std::string_view::npos ? text.size() : start);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    return text;
}

// The number at the head of a text, as atof and atoi give it; 0 for junk and for what no number can hold.
double real_of(std::string_view text)
{
    text = without_leading_blanks(text);
    double value = 0.0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
    return end.ec == std::errc() && std::isfinite(value) ? value : 0.0;
}

int integer_of(std::string_view text)
{
    text = without_leading_blanks(text);
    int value = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
    return end.ec == std::errc() ? value : 0;
}

// The first four fields of a line; runs of separators count as one.
struct line_fields {
    std::string_view field[4];
    int count = 0;
};

line_fields cut_line(std::string_view line, char separator)
{
    line_fields fields;
    line = line.substr(0, line.find('\n'));
    while (fields.count < 4) {
        const std::size_t start = line.find_first_not_of(separator);
        if (start == std::string_view::npos)
            break;
        line.remove_prefix(start);
        const std::size_t end = line.find(separator);
        fields.field[fields.count++] = line.substr(0, end);
        if (end == std::string_view::npos)
            break;
        line.remove_prefix(end);
    }
    return fields;
}

// Polylines and their vertices go to the front of their lists.
class chain_reader
{
public:
    file_chain* list() const { return list_; }
    bool is_exhausted() const { return is_exhausted_; }

    void read_line(std::string_view line, int format)
    {
        if (format == POLYLINE_FORMAT_MICROSTATION)
            read_microstation(line);
        else if (format == POLYLINE_FORMAT_OWN)
            read_own(line);
        else
            read_dtm(line);
    }

private:
    void begin(int color)
    {
        auto* chain = static_cast<file_chain*>(acad_malloc(sizeof(file_chain)));
        if (!chain) {
            is_exhausted_ = true;
            return;
        }
        *chain = file_chain{color, nullptr, list_};
        list_ = chain;
    }

    void add(double x, double y, double z)
    {
        if (!list_)
            return;
        pl_vertex* vertex = pl_vertex_new(x, y, z);
        if (!vertex) {
            is_exhausted_ = true;
            return;
        }
        vertex->next = list_->head;
        list_->head = vertex;
    }

    void read_microstation(std::string_view line)
    {
        const line_fields f = cut_line(line, ' ');
        if (f.count < 4)
            return;
        if (!list_ || integer_of(f.field[3]) == 1)
            begin(0);
        add(real_of(f.field[0]), real_of(f.field[1]), real_of(f.field[2]));
    }

    // z is 0 when it is missing.
    void read_with_commas(std::string_view line)
    {
        const line_fields f = cut_line(line, ',');
        if (f.count >= 2)
            add(real_of(f.field[0]), real_of(f.field[1]), f.count >= 3 ? real_of(f.field[2]) : 0.0);
    }

    void read_own(std::string_view line)
    {
        if (line.find("POLYLINE") == std::string_view::npos) {
            read_with_commas(line);
            return;
        }
        const std::size_t comma = line.find(',');
        begin(comma == std::string_view::npos ? 0 : host_color_of(integer_of(line.substr(comma + 1))));
    }

    void read_dtm(std::string_view line)
    {
        if (line.size() <= LONGEST_DTM_HEADER)
            begin(0);
        else
            read_with_commas(line);
    }

    file_chain* list_ = nullptr;
    bool is_exhausted_ = false; // the list lacks what the heap had no room for
};

} // namespace

file_chain* parse_polyline_file(const char* path, int format)
{
    host_file* file = file_open(path, "r");
    if (!file)
        return nullptr;
    chain_reader reader;
    char line[LONGEST_LINE + 1];
    while (!reader.is_exhausted() && file_gets(line, sizeof line, file))
        reader.read_line(line, format);
    file_close(file);
    if (!reader.is_exhausted())
        return reader.list();
    free_file_chains(reader.list());
    return nullptr;
}

void free_file_chains(file_chain* list)
{
    while (list) {
        file_chain* next = list->next;
        pl_free_vertices(list->head);
        acad_free(list);
        list = next;
    }
}
