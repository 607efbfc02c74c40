// The measures and the two rules on them: where a line's base line begins, and which groups follow from others.
//
// Stroke letters fill the left four of a cell's six units; capitals are six units high, small letters without
// an upper part four, tails go two below. The gap behind the last letter doesn't count, so that lines end with
// their ink. Outline letters have the advance widths of the common sans serif, in thousandths of its size,
// whose capitals are 716 high.
#include "host/database/text_metrics.h"

#include <array>
#include <cmath>

#include "host/core/text.h"

namespace host::db
{

namespace
{

constexpr double CELL = 1.0, CELL_GAP = 2.0 / 6.0;
constexpr double CAPITAL = 716.0;

// From the blank on, Windows-1252.
constexpr std::array<short, 224> ADVANCES = {
    278,  278, 355, 556, 556, 889,  667,  191,  333, 333,  389, 584, 278,  333, 278, 278, // blank to /
    556,  556, 556, 556, 556, 556,  556,  556,  556, 556,  278, 278, 584,  584, 584, 556, // 0 to ?
    1015, 667, 667, 722, 722, 667,  611,  778,  722, 278,  500, 667, 556,  833, 722, 778, // @ to O
    667,  778, 722, 667, 611, 722,  667,  944,  667, 667,  611, 278, 278,  278, 469, 556, // P to _
    333,  556, 556, 500, 556, 556,  278,  556,  556, 222,  222, 500, 222,  833, 556, 556, // ` to o
    556,  556, 333, 500, 278, 556,  500,  722,  500, 500,  500, 334, 260,  334, 584, 350, // p to DEL
    556,  350, 222, 556, 333, 1000, 556,  556,  333, 1000, 667, 333, 1000, 350, 611, 350, // 80
    350,  222, 222, 333, 333, 350,  556,  1000, 333, 1000, 500, 333, 944,  350, 500, 667, // 90
    278,  333, 556, 556, 556, 556,  260,  556,  333, 737,  370, 556, 584,  333, 737, 333, // A0
    400,  584, 333, 333, 333, 556,  537,  278,  333, 333,  365, 556, 834,  834, 834, 611, // B0
    667,  667, 667, 667, 667, 667,  1000, 722,  667, 667,  667, 667, 278,  278, 278, 278, // C0
    722,  722, 778, 778, 778, 778,  778,  584,  778, 722,  722, 722, 722,  667, 667, 611, // D0
    556,  556, 556, 556, 556, 556,  889,  500,  556, 556,  556, 556, 278,  278, 278, 278, // E0
    556,  556, 556, 556, 556, 556,  556,  584,  611, 556,  556, 556, 556,  500, 556, 500, // F0
};

// Letters that don't reach from the base line to the height of capitals.
constexpr std::string_view TAILED = "gjpqy,;_\x82\x84\xB5\xC7\xE7\xFD\xFE\xFF";
constexpr std::string_view SMALL =
    "acegmnopqrsuvwxyz:;-+=<>~\x8B\x95\x96\x97\x9B\x9C\xAB\xAC\xAD\xB5\xB7\xBB\xD7\xE6\xE7\xF7\xF8";
constexpr std::string_view LOW = ".,_\x82\x84\x85";

struct measures {
    double descent, small, low;
};
constexpr measures STROKE = {2.0 / 6.0, 4.0 / 6.0, 1.0 / 6.0};
constexpr measures OUTLINE = {212.0 / CAPITAL, 519.0 / CAPITAL, 106.0 / CAPITAL};

const measures& measures_of(font_kind font)
{
    return font == font_kind::stroke ? STROKE : OUTLINE;
}

bool is_blank(char letter)
{
    return letter == ' ' || letter == '\xA0';
}

double advance_of(char letter, font_kind font)
{
    if (font == font_kind::stroke)
        return CELL;
    const auto byte = static_cast<unsigned char>(letter);
    return byte < 32 ? 0.0 : ADVANCES[byte - 32u] / CAPITAL;
}

bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

// What stands behind %%, moving `at` behind it; a code that is none of these shows its letter.
void take_percent_code(std::string_view text, std::size_t& at, std::string& out)
{
    constexpr int MOST_DIGITS = 3;
    if (is_digit(text[at])) {
        int number = 0;
        for (int i = 0; i < MOST_DIGITS && at < text.size() && is_digit(text[at]); ++i)
            number = number * 10 + (text[at++] - '0');
        out += number < 256 ? static_cast<char>(number) : '?';
        return;
    }
    const char letter = text[at++];
    switch (letter | 0x20) {
    case 'd':
        out += '\xB0';
        break;
    case 'p':
        out += '\xB1';
        break;
    case 'c':
        out += '\xD8';
        break;
    case 'u':
    case 'o':
    case 'k':
        break;
    default:
        out += letter;
        break;
    }
}

// \U+XXXX at `at`: false when it is none.
bool take_unicode(std::string_view text, std::size_t& at, std::string& out)
{
    constexpr std::size_t LENGTH = 7;
    if (!text.substr(at).starts_with("\\U+") || at + LENGTH > text.size())
        return false;
    int code = 0;
    for (const char c : text.substr(at + 3, 4)) {
        const char low = static_cast<char>(c | 0x20);
        const int digit = is_digit(c) ? c - '0' : low >= 'a' && low <= 'f' ? low - 'a' + 10 : -1;
        if (digit < 0)
            return false;
        code = code * 16 + digit;
    }
    const int byte = cp1252_byte(code);
    out += byte < 0 ? '?' : static_cast<char>(byte);
    at += LENGTH;
    return true;
}

vec point_in(const group_list& groups, int code)
{
    const group* found = find(groups, code);
    return found && found->kind == group_kind::point ? vec{found->point[0], found->point[1], found->point[2]}
                                                     : vec{};
}

void put_real(group_list& groups, int code, double value)
{
    if (group* found = find(groups, code)) {
        *found = real_group(code, value);
        return;
    }
    std::size_t end = 0; // extended data stays last
    while (end < groups.size() && groups[end].code < 1000)
        ++end;
    groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(end), real_group(code, value));
}

// Letters backwards or upside down are mirrored about the anchor; those between two points stay between them.
vec mirrored(const text_line& line, double x, double y)
{
    const double opposite = line.is_between() ? line.width() - x : -x;
    return {line.generation & 2 ? opposite : x, line.generation & 4 ? -y : y, 0};
}

bool is_same(const group& a, const group& b)
{
    if (a.kind != b.kind)
        return false;
    switch (a.kind) {
    case group_kind::real:
        return a.real == b.real;
    case group_kind::point:
        return a.point[0] == b.point[0] && a.point[1] == b.point[1] && a.point[2] == b.point[2];
    case group_kind::text:
        return a.text == b.text;
    default:
        return a.integer == b.integer;
    }
}

} // namespace

bool is_outline_font(std::string_view file)
{
    const std::string name = lower(file);
    return name.ends_with(".ttf") || name.ends_with(".ttc") || name.ends_with(".otf");
}

font_kind font_of_style(const database& db, std::string_view style)
{
    const object_id id = db.record("STYLE", style.empty() ? std::string_view("STANDARD") : style);
    return id && is_outline_font(db.text_of(db.at(id).groups, 3)) ? font_kind::outline : font_kind::stroke;
}

double descent_of(font_kind font)
{
    return measures_of(font).descent;
}

std::string shown_letters(std::string_view text)
{
    std::string out;
    for (std::size_t at = 0; at < text.size();) {
        if (text.substr(at).starts_with("%%") && at + 2 < text.size()) {
            at += 2;
            take_percent_code(text, at, out);
        } else if (!take_unicode(text, at, out)) {
            out += text[at++];
        }
    }
    return out;
}

text_room room_of_letters(std::string_view letters, font_kind font)
{
    const measures& m = measures_of(font);
    text_room room;
    for (const char letter : letters) {
        room.width += advance_of(letter, font);
        if (is_blank(letter))
            continue;
        const bool low = LOW.find(letter) != std::string_view::npos;
        const bool small = SMALL.find(letter) != std::string_view::npos;
        room.top = std::max(room.top, low ? m.low : small ? m.small : 1.0);
        if (TAILED.find(letter) != std::string_view::npos)
            room.bottom = -m.descent;
    }
    if (font == font_kind::stroke && !letters.empty())
        room.width -= CELL_GAP;
    return room;
}

text_room room_of(std::string_view text, font_kind font)
{
    return room_of_letters(shown_letters(text), font);
}

bool is_text_line(std::string_view type)
{
    return type == "TEXT" || type == "ATTRIB" || type == "ATTDEF";
}

double text_line::width() const
{
    const double between = is_between() ? std::hypot(aligned.x - start.x, aligned.y - start.y) : 0.0;
    return between > 0 ? between : room.width * height * width_factor;
}

double text_line::direction() const
{
    const double dx = aligned.x - start.x, dy = aligned.y - start.y;
    if (!is_between() || (dx == 0 && dy == 0))
        return rotation;
    constexpr double TURN = 6.283185307179586;
    const double angle = std::atan2(dy, dx);
    return angle < 0 ? angle + TURN : angle;
}

text_line line_of(const database& db, const group_list& groups)
{
    text_line line;
    line.start = point_in(groups, 10);
    line.aligned = point_in(groups, 11);
    line.height = real_of(groups, 40, 0);
    line.width_factor = real_of(groups, 41, 1);
    line.rotation = real_of(groups, 50, 0);
    line.oblique = real_of(groups, 51, 0);
    line.generation = static_cast<int>(int_of(groups, 71, 0));
    line.across = static_cast<int>(int_of(groups, 72, 0));
    const bool is_text = same_text(db.text_of(groups, 0), "TEXT");
    line.up = static_cast<int>(int_of(groups, is_text ? 73 : 74, 0));
    line.font = font_of_style(db, db.text_of(groups, 7));
    line.room = room_of(db.text_of(groups, 1), line.font);
    return line;
}

vec base_line_offset(const text_line& line)
{
    enum { CENTRE = 1, RIGHT = 2, MIDDLE = 4 };
    enum { BOTTOM = 1, HALF = 2, TOP = 3 };
    if (line.is_between() || !line.is_justified())
        return {};
    const double share = line.across == CENTRE || line.across == MIDDLE ? 0.5
                         : line.across == RIGHT                         ? 1.0
                                                                        : 0.0;
    double rise = 0; // of the anchor over the base line
    if (line.across == MIDDLE)
        rise = (line.room.bottom + line.room.top) / 2;
    else if (line.up == BOTTOM)
        rise = -descent_of(line.font);
    else if (line.up == HALF)
        rise = 0.5;
    else if (line.up == TOP)
        rise = 1.0;
    return {-share * line.width(), -rise * line.height, 0};
}

text_corners corners_of(const text_line& line)
{
    const vec start = base_line_offset(line);
    const double lean = std::tan(line.oblique), right = line.width();
    const double low = line.room.bottom * line.height, high = line.room.top * line.height;
    const auto corner = [&](double x, double y) { return mirrored(line, start.x + x + y * lean, start.y + y); };
    return {{corner(0, low), corner(right, low), corner(right, high), corner(0, high)}};
}

void settle_text(const database& db, group_list& groups)
{
    if (!is_text_line(upper(db.text_of(groups, 0))))
        return;
    group* start = find(groups, 10);
    if (!start || start->kind != group_kind::point)
        return;
    text_line line = line_of(db, groups);
    if (!line.is_justified())
        return;
    if (!line.is_between()) {
        const vec offset = base_line_offset(line), own = mirrored(line, offset.x, offset.y);
        const double c = std::cos(line.rotation), s = std::sin(line.rotation);
        *start = point_group(10, line.aligned.x + own.x * c - own.y * s, line.aligned.y + own.x * s + own.y * c,
                             line.start.z);
        return;
    }
    const double length = std::hypot(line.aligned.x - line.start.x, line.aligned.y - line.start.y);
    if (!(length > 0) || !(line.room.width > 0))
        return;
    put_real(groups, 50, line.direction());
    const bool fits = line.across == 5;
    const double other = fits ? line.height : line.width_factor;
    if (other > 0)
        put_real(groups, fits ? 41 : 40, length / (line.room.width * other));
}

bool differs_in_place(const group_list& before, const group_list& after)
{
    for (const int code : {1, 7, 10, 11, 40, 41, 50, 71, 72, 73, 74}) {
        const group *a = find(before, code), *b = find(after, code);
        if (!a != !b || (a && !is_same(*a, *b)))
            return true;
    }
    return false;
}

} // namespace host::db
