// Edge files. A title line, then two lines an edge:
//
//     ground of lot 7
//     A 1000.00 2000.00 51.20
//     A 1010.00 2000.00 51.45
//
// The first character of a line is free, what follows the third number is passed over, and so are empty lines.
#include <charconv>
#include <cmath>
#include <cstring>
#include <string_view>

#include "hostapi/ads.h"
#include "hostapi/files.h"
#include "topology/polling.h"
#include "topology/surface_net.h"

namespace
{

constexpr int LINE_SIZE = 256; // 255 characters count
constexpr long MOST_TOLD = 10; // bad lines

enum class Line { END, EMPTY, TEXT };

class EdgeFile
{
public:
    EdgeFile(host_file* file, const char* path) : file_(file), path_(path) {}

    bool skip_line() { return next_line() != Line::END; }
    // The next line that isn't empty as a point. False at the end of the file.
    bool next_point(double* point, bool* is_good);
    void tell(const char* what);
    void tell_rest() const;

private:
    Line next_line();

    host_file* file_;
    const char* path_;
    char text_[LINE_SIZE];
    long number_ = 0;
    long bad_ = 0;
};

bool is_space(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// A number behind spaces; where it ends. Null if there is none, or one without bounds.
const char* read_number(const char* text, const char* end, double* value)
{
    while (text != end && is_space(*text))
        ++text;
    if (text != end && *text == '+' && end - text > 1 && text[1] != '-')
        ++text;
    const std::from_chars_result read = std::from_chars(text, end, *value);
    if (read.ec == std::errc::result_out_of_range) {
        // Too small for a double is nothing, too large is none.
        const std::string_view digits(text, static_cast<std::size_t>(read.ptr - text));
        if (digits.find("e-") == digits.npos && digits.find("E-") == digits.npos)
            return nullptr;
        *value = 0.0;
        return read.ptr;
    }
    return read.ec == std::errc() && std::isfinite(*value) ? read.ptr : nullptr;
}

bool read_point(const char* text, double* point)
{
    const char *end = text + std::strlen(text), *at = text + 1;
    for (int i = 0; at && i < 3; ++i)
        at = read_number(at, end, &point[i]);
    return at != nullptr;
}

// The end mark of old text files counts as nothing.
bool is_empty(const char* text)
{
    for (; *text; ++text)
        if (!is_space(*text) && *text != '\x1a')
            return false;
    return true;
}

// One line, whatever its length. A zero in it ends its text but not the line: so the buffer is filled with line
// feeds beforehand, and the one in front of a terminator is the line's own.
Line EdgeFile::next_line()
{
    bool is_first = true;
    char part[LINE_SIZE];
    for (;;) {
        char* buffer = is_first ? text_ : part;
        std::memset(buffer, '\n', LINE_SIZE);
        if (!file_gets(buffer, LINE_SIZE, file_))
            break;
        is_first = false;
        const auto* feed = static_cast<const char*>(std::memchr(buffer, '\n', LINE_SIZE));
        const bool is_full = !feed;
        if (!is_full)
            break;
    }
    if (is_first)
        return Line::END;
    ++number_;
    return is_empty(text_) ? Line::EMPTY : Line::TEXT;
}

bool EdgeFile::next_point(double* point, bool* is_good)
{
    Line line;
    do
        line = next_line();
    while (line == Line::EMPTY);
    if (line == Line::END)
        return false;
    *is_good = read_point(text_, point);
    if (!*is_good)
        tell("no point, edge left out");
    return true;
}

void EdgeFile::tell(const char* what)
{
    if (++bad_ <= MOST_TOLD)
        acutPrintf("File '%s' line %ld: %s\n", path_, number_, what);
}

void EdgeFile::tell_rest() const
{
    if (bad_ > MOST_TOLD)
        acutPrintf("File '%s': %ld more bad lines\n", path_, bad_ - MOST_TOLD);
}

// False when the user broke off.
bool read_edges(SurfaceNet* surface, EdgeFile* file)
{
    BreakPoll poll;
    double from[3], to[3];
    bool is_good_from, is_good_to;
    while (file->next_point(from, &is_good_from)) {
        if (poll.is_cancelled())
            return false;
        if (!file->next_point(to, &is_good_to)) {
            if (is_good_from)
                file->tell("an edge without its second point");
            break;
        }
        if (!is_good_from || !is_good_to)
            continue;
        const std::int32_t a = surface->intern_node(from), b = surface->intern_node(to);
        if (a != 0 && b != 0)
            surface->intern_edge(a, b, 0.0);
    }
    file->tell_rest();
    return true;
}

} // namespace

int SurfaceNet::load_edges(const char* path, int make_triangles)
{
    host_file* opened = file_open(path, "r");
    if (!opened) {
        acutPrintf("File '%s' not found\n", path);
        return 0;
    }
    EdgeFile file(opened, path);
    file.skip_line();
    acutPrintf("\nLoading edges...\n");
    const bool is_whole = read_edges(this, &file);
    file_close(opened);
    if (!is_whole)
        return 1;
    acutPrintf("Loaded %ld points and %ld edges\n", static_cast<long>(nodes.count),
               static_cast<long>(edges.count));
    if (make_triangles != 0) {
        close_faces();
        if (user_break() > 0)
            return 1;
        acutPrintf("Created %ld tris\n", static_cast<long>(triangles.count));
    }
    return 1;
}
