// answers.h: what a text that answers a prompt can mean: a point, a length, an angle, a key word.
#pragma once

#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host
{
class document;
}

namespace host::commandline
{

// The variables of a drawing that say how numbers are read.
struct reading_rules {
    int aunits = 0; // 0 degrees, 1 degrees-minutes-seconds, 2 grads, 3 radians, 4 surveyor's
    int angdir = 0; // 1: clockwise
    double angbase = 0.0;
    int lunits = 2;
    double elevation = 0.0;
    double last_point[3] = {0, 0, 0};
};
reading_rules reading_rules_of(document& doc);

struct point3 {
    double x = 0.0, y = 0.0, z = 0.0;
    const double* data() const { return &x; }
    static point3 of(const double* p) { return {p[0], p[1], p[2]}; }
};
inline bool is_finite(const point3& p)
{
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

// No reader below gives a number that is not finite: what is too large to hold is as little a number as "x".

// "12.5,40" "12.5,40,3" "@3,4" "@10<45" "10<45" "@"; a '*' in front is passed over. Nothing: no point.
std::optional<point3> parse_point(std::string_view text, const reading_rules& rules);
// A number, or feet, inches and fractions where the drawing's lengths are written so.
std::optional<double> parse_length(std::string_view text, const reading_rules& rules);

struct typed_angle {
    double radians = 0.0;
    bool is_bearing = false; // N 30d E: from east, counter-clockwise, whatever ANGBASE and ANGDIR
};
// In the drawing's unit, or in one that the text names: 30d15', 50g, 1.2r, N30dE.
std::optional<typed_angle> parse_angle(std::string_view text, const reading_rules& rules);
// The same angle counted from east, counter-clockwise; and from ANGBASE, counter-clockwise.
double absolute_angle(const typed_angle& angle, const reading_rules& rules);
double relative_angle(const typed_angle& angle, const reading_rules& rules);
double normal_angle(double radians); // into [0, 2 pi)

// The word of a key-word list ("Yes No", "LType,LT", "Ja Nein _Yes No") that a text stands for, spelt as
// in the list (behind "_" if there is such a part). Any case; at least the capitals, or the capitals and
// what follows them. Nothing: no such word.
std::optional<std::string> match_key_word(std::string_view list, std::string_view text);

std::vector<std::string_view> split_blanks(std::string_view text);
std::vector<std::string_view> split_commas(std::string_view text);

} // namespace host::commandline
