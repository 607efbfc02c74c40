// answers.cpp: reading of typed answers. Nothing here prints or asks.
#include "host/commandline/answers.h"

#include <cmath>
#include <numbers>

#include "host/core/document.h"
#include "host/core/text.h"
#include "host/database/dxf_numbers.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

constexpr double PI = std::numbers::pi;

std::vector<std::string_view> split(std::string_view text, char separator, bool keep_empty)
{
    std::vector<std::string_view> parts;
    while (true) {
        const std::size_t end = text.find(separator);
        const std::string_view part = text.substr(0, end);
        if (keep_empty || !part.empty())
            parts.push_back(part);
        if (end == std::string_view::npos)
            return parts;
        text.remove_prefix(end + 1);
    }
}

bool is_lower(char c)
{
    return c >= 'a' && c <= 'z';
}

// Takes the number in front of `text` off it. A sign is not part of it.
std::optional<double> take_number(std::string_view& text)
{
    std::size_t n = 0;
    while (n < text.size() && (text[n] == '.' || (text[n] >= '0' && text[n] <= '9')))
        ++n;
    const std::optional<double> value = parse_real(text.substr(0, n));
    if (value)
        text.remove_prefix(n);
    return value;
}

bool take(std::string_view& text, std::string_view marks)
{
    if (text.empty() || marks.find(text.front()) == std::string_view::npos)
        return false;
    text.remove_prefix(1);
    return true;
}

// 12d30'15.5" as degrees: every part may be missing, but one must be there.
std::optional<double> take_dms(std::string_view& text)
{
    struct mark {
        std::string_view letters;
        double share;
    };
    static constexpr mark marks[] = {{"dD\xB0", 1.0}, {"'", 1.0 / 60.0}, {"\"", 1.0 / 3600.0}};
    double degrees = 0.0;
    std::size_t next = 0;
    bool any = false;
    while (next < 3) {
        std::string_view rest = text;
        const std::optional<double> value = take_number(rest);
        if (!value)
            break;
        // A number without a mark goes with the next smaller unit.
        std::size_t unit = next;
        for (; unit < 3; ++unit)
            if (take(rest, marks[unit].letters))
                break;
        if (unit == 3)
            unit = next;
        degrees += *value * marks[unit].share;
        next = unit + 1;
        text = rest;
        any = true;
    }
    return any ? std::optional(degrees) : std::nullopt;
}

// N30d15'E; N, E, S and W alone too.
std::optional<double> parse_bearing(std::string_view text)
{
    static constexpr std::pair<char, double> whole[] = {{'E', 0.0}, {'N', 0.5}, {'W', 1.0}, {'S', 1.5}};
    const std::string word = upper(text);
    if (word.size() == 1)
        for (const auto& [letter, turns] : whole)
            if (word[0] == letter)
                return turns * PI;
    if (word.size() < 3 || (word.front() != 'N' && word.front() != 'S') ||
        (word.back() != 'E' && word.back() != 'W'))
        return std::nullopt;
    std::string_view middle = trimmed(text.substr(1, text.size() - 2));
    const std::optional<double> degrees = take_dms(middle);
    if (!degrees || !middle.empty() || !std::isfinite(*degrees))
        return std::nullopt;
    const double from_axis = db::radians_of(*degrees);
    const double start = word.front() == 'N' ? PI / 2 : 3 * PI / 2;
    const bool left = (word.front() == 'N') == (word.back() == 'W');
    return normal_angle(left ? start + from_axis : start - from_axis);
}

std::optional<point3> parse_polar(std::string_view text, std::size_t sign, const reading_rules& rules)
{
    std::string_view behind = text.substr(sign + 1);
    double z = 0.0;
    if (const std::size_t comma = behind.find(','); comma != std::string_view::npos) {
        const std::optional<double> height = parse_length(behind.substr(comma + 1), rules);
        if (!height)
            return std::nullopt;
        z = *height;
        behind = behind.substr(0, comma);
    }
    const std::optional<double> distance = parse_length(text.substr(0, sign), rules);
    const std::optional<typed_angle> angle = parse_angle(behind, rules);
    if (!distance || !angle)
        return std::nullopt;
    const double turn = absolute_angle(*angle, rules);
    return point3{*distance * std::cos(turn), *distance * std::sin(turn), z};
}

// Feet and inches with fractions: 5'-6 1/2", 6-1/2, 1/2.
std::optional<double> parse_feet(std::string_view text)
{
    double total = 0.0;
    if (const std::size_t feet = text.find('\''); feet != std::string_view::npos) {
        const std::optional<double> value = parse_real(text.substr(0, feet));
        if (!value)
            return std::nullopt;
        total = *value * 12.0;
        text.remove_prefix(feet + 1);
        take(text, "-");
    }
    if (!text.empty() && text.back() == '"')
        text.remove_suffix(1);
    text = trimmed(text);
    if (text.empty())
        return total;
    if (const std::size_t slash = text.find('/'); slash != std::string_view::npos) {
        std::string_view top = text.substr(0, slash);
        if (const std::size_t gap = top.find_last_of("- "); gap != std::string_view::npos && gap > 0) {
            const std::optional<double> inches = parse_real(top.substr(0, gap));
            if (!inches)
                return std::nullopt;
            total += *inches;
            top = top.substr(gap + 1);
        }
        const std::optional<double> above = parse_real(top), below = parse_real(text.substr(slash + 1));
        if (!above || !below || *below == 0.0)
            return std::nullopt;
        return total + *above / *below;
    }
    const std::optional<double> inches = parse_real(text);
    return inches ? std::optional(total + *inches) : std::nullopt;
}

// How many letters of `word`, from `start`, are its abbreviation: up to the last capital of the run.
std::pair<std::size_t, std::size_t> capitals_of(std::string_view word)
{
    std::size_t start = 0;
    while (start < word.size() && is_lower(word[start]))
        ++start;
    std::size_t end = start;
    while (end < word.size() && !is_lower(word[end]))
        ++end;
    return {start, end};
}

bool is_start_of(std::string_view word, std::string_view text)
{
    return text.size() <= word.size() && same_text(word.substr(0, text.size()), text);
}

// 2: the word or its abbreviation; 1: a part that reaches over the capitals; 0: not this word.
int fit_of(std::string_view word, std::string_view text)
{
    std::string_view abbreviation;
    if (const std::size_t comma = word.find(','); comma != std::string_view::npos && comma + 1 < word.size()) {
        abbreviation = word.substr(comma + 1);
        word = word.substr(0, comma);
    }
    if (same_text(word, text))
        return 2;
    if (!abbreviation.empty())
        return same_text(abbreviation, text)                                   ? 2
               : text.size() >= abbreviation.size() && is_start_of(word, text) ? 1
                                                                               : 0;
    const auto [start, end] = capitals_of(word);
    if (start == end)
        return 0; // no capitals: only the whole word counts
    if (same_text(word.substr(start, end - start), text))
        return 2;
    if (text.size() >= end && is_start_of(word, text))
        return 1;
    return text.size() >= end - start && is_start_of(word.substr(start), text) ? 1 : 0;
}

std::string_view without_abbreviation(std::string_view word)
{
    const std::size_t comma = word.find(',');
    return comma == std::string_view::npos || comma == 0 ? word : word.substr(0, comma);
}

} // namespace

std::vector<std::string_view> split_blanks(std::string_view text)
{
    return split(text, ' ', false);
}

std::vector<std::string_view> split_commas(std::string_view text)
{
    return split(text, ',', true);
}

reading_rules reading_rules_of(document& doc)
{
    reading_rules rules;
    rules.aunits = db::int_variable(doc, "AUNITS");
    rules.angdir = db::int_variable(doc, "ANGDIR");
    rules.angbase = db::real_variable(doc, "ANGBASE");
    rules.lunits = db::int_variable(doc, "LUNITS");
    rules.elevation = db::real_variable(doc, "ELEVATION");
    if (const list_ptr last = db::get_variable(doc, "LASTPOINT"))
        for (int i = 0; i < 3; ++i)
            rules.last_point[i] = last->resval.rpoint[i];
    return rules;
}

double normal_angle(double radians)
{
    radians = std::fmod(radians, 2 * PI);
    if (radians < 0.0)
        radians += 2 * PI;
    return radians >= 2 * PI ? 0.0 : radians;
}

std::optional<double> parse_length(std::string_view text, const reading_rules& rules)
{
    text = trimmed(text);
    if (const std::optional<double> value = parse_real(text))
        return value;
    if (rules.lunits < 3 || text.empty())
        return std::nullopt;
    const bool negative = text.front() == '-';
    const std::optional<double> value = parse_feet(negative ? text.substr(1) : text);
    if (!value || !std::isfinite(*value))
        return std::nullopt;
    return negative ? -*value : *value;
}

std::optional<typed_angle> parse_angle(std::string_view text, const reading_rules& rules)
{
    text = trimmed(text);
    if (text.empty())
        return std::nullopt;
    if (const std::optional<double> bearing = parse_bearing(text))
        return typed_angle{*bearing, true};
    if (const std::optional<double> value = parse_real(text)) {
        return typed_angle{rules.aunits == 2   ? *value * PI / 200.0
                           : rules.aunits == 3 ? *value
                                               : db::radians_of(*value),
                           false};
    }
    const double sign = text.front() == '-' ? -1.0 : 1.0;
    take(text, "+-");
    const char last = text.empty() ? '\0' : text.back();
    if (last == 'g' || last == 'G' || last == 'r' || last == 'R') {
        const std::optional<double> value = parse_real(text.substr(0, text.size() - 1));
        const double unit = last == 'g' || last == 'G' ? PI / 200.0 : 1.0;
        return value ? std::optional(typed_angle{sign * *value * unit, false}) : std::nullopt;
    }
    const std::optional<double> degrees = take_dms(text);
    if (!degrees || !text.empty() || !std::isfinite(*degrees))
        return std::nullopt;
    return typed_angle{sign * db::radians_of(*degrees), false};
}

double absolute_angle(const typed_angle& angle, const reading_rules& rules)
{
    if (angle.is_bearing)
        return angle.radians;
    return rules.angbase + (rules.angdir ? -angle.radians : angle.radians);
}

double relative_angle(const typed_angle& angle, const reading_rules& rules)
{
    return absolute_angle(angle, rules) - rules.angbase;
}

std::optional<point3> parse_point(std::string_view text, const reading_rules& rules)
{
    text = trimmed(text);
    take(text, "*");
    const bool relative = take(text, "@");
    const double* last = rules.last_point;
    if (relative && text.empty())
        return point3::of(last);
    std::optional<point3> p;
    bool has_z = true;
    if (const std::size_t sign = text.find('<'); sign != std::string_view::npos) {
        p = parse_polar(text, sign, rules);
        has_z = relative || text.find(',') != std::string_view::npos;
    } else {
        const std::vector<std::string_view> parts = split_commas(text);
        if (parts.size() != 2 && parts.size() != 3)
            return std::nullopt;
        double values[3] = {0, 0, 0};
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const std::optional<double> value = parse_length(parts[i], rules);
            if (!value)
                return std::nullopt;
            values[i] = *value;
        }
        p = point3::of(values);
        has_z = relative || parts.size() == 3;
    }
    if (!p)
        return std::nullopt;
    if (relative)
        p = point3{p->x + last[0], p->y + last[1], p->z + last[2]};
    else if (!has_z)
        p->z = rules.elevation;
    return is_finite(*p) ? p : std::nullopt;
}

std::optional<std::string> match_key_word(std::string_view list, std::string_view text)
{
    text = trimmed(text);
    std::vector<std::string_view> words = split_blanks(list), globals;
    for (std::size_t i = 0; i < words.size(); ++i)
        if (words[i].starts_with('_') && words[i].size() > 1) {
            globals.assign(words.begin() + static_cast<std::ptrdiff_t>(i), words.end());
            globals[0].remove_prefix(1);
            words.resize(i);
            break;
        }
    const bool global = text.starts_with('_');
    if (global)
        text.remove_prefix(1);
    if (text.empty())
        return std::nullopt;
    const std::vector<std::string_view>& among = global && !globals.empty() ? globals : words;
    for (const int wanted : {2, 1})
        for (std::size_t i = 0; i < among.size(); ++i)
            if (fit_of(among[i], text) == wanted) {
                const std::string_view named = i < globals.size() ? globals[i] : among[i];
                return std::string(without_abbreviation(named));
            }
    return std::nullopt;
}

} // namespace host::commandline
