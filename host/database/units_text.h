// units_text.h: lengths and angles as text in the drawing's unit forms, and back.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host::db
{

// How a number is to be written.
struct unit_form {
    int unit = 2;             // LUNITS 1 to 5, or AUNITS 0 to 4
    int precision = 4;        // LUPREC, AUPREC
    int zero_suppression = 0; // DIMZIN
    bool as_entered = false;  // UNITMODE 1: 1'5-1/2" in place of 1'-5 1/2"
};

constexpr int BEARINGS = 4; // of AUNITS
// Decimals that mean something; a larger precision is taken as this one.
constexpr int MAX_DECIMALS = 16;

// Nothing for a unit that doesn't exist or a value that isn't finite.
std::optional<std::string> length_text(double value, const unit_form& form);
// Radians, counter-clockwise from east, of any size.
std::optional<std::string> angle_text(double radians, const unit_form& form);

// Nothing when the whole text isn't a length. Feet are understood with the units 3 and 4.
std::optional<double> parse_length(std::string_view text, int unit);
// Radians as they were written, sign included. A text with a mark of its own (45d30', 50g, 1.2r,
// N 45d E) is of that form whatever `unit` says.
std::optional<double> parse_angle(std::string_view text, int unit);
// Whether an angle's text names a direction of the compass: such ones don't count from ANGBASE.
bool is_bearing(std::string_view text);

} // namespace host::db
