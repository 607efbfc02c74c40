// dxf_numbers.h: number texts of DXF files, and angles, which are degrees there and radians in the store.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace host::db
{

// Whole texts only, blanks around them and a leading + allowed. False: no number, or none that a
// double (an int64, a uint64) can hold. What is too small for a double is 0.
bool read_real(std::string_view text, double* value);
bool read_integer(std::string_view text, std::int64_t* value); // "7.0" too, since some programs write it so
bool read_handle(std::string_view text, std::uint64_t* value); // hexadecimal
bool read_angle(std::string_view degrees, double* radians);

// Shortest text that reads back as the same value, always with a decimal point. What is no number
// (infinite, not a number) is written as 0.0.
void append_real(std::string& out, double value);
void append_integer(std::string& out, std::int64_t value);
void append_handle(std::string& out, std::uint64_t value);
// Degrees for which read_angle gives `radians` again, as short as can be found.
void append_angle(std::string& out, double radians);

double radians_of(double degrees);
// The double nearest to the angle in degrees (binary files have no room for more digits).
double degrees_of(double radians);

// Binary chunks: pairs of hexadecimal digits. False: not such a text.
bool read_hex(std::string_view text, std::string* bytes);
void append_hex(std::string& out, std::string_view bytes);

} // namespace host::db
