// Angles are taken apart by way of their printed texts: a number is printed with a fixed count of decimals
// and the text is cut at its point. So the rounding of the print decides into which minute an angle
// falls, and 29.99999999999 is 30 degrees and not 29 degrees, 59 minutes and 60 seconds.
#include "common/angle_text.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>

namespace
{

constexpr double SAME_PLACE = 1e-6;
constexpr double ONE_MINUTE = 0.016666666666666666;
constexpr double ONE_SECOND = 0.0002777777777777778;
constexpr double LAST_SECOND = 59.5;
constexpr double AT_CENTRE = 0.01;
constexpr double STATION_UNIT = 100.0;

// A number as text, split at its point.
struct number_text {
    char whole[DMS_TEXT_SIZE];
    char fraction[16];

    double value() const { return std::atof(whole); }
};

void format_number(number_text* number, double value, int decimals)
{
    text_format(number->whole, "%.*f", decimals, value);
    char* point = std::strchr(number->whole, '.'); // none in "inf" and "nan"
    text_set(number->fraction, point ? point + 1 : "");
    if (point)
        *point = '\0';
}

const char* or_empty(const char* text)
{
    return text ? text : "";
}

void drop_minus(char* text)
{
    if (*text == '-')
        std::memmove(text, text + 1, std::strlen(text));
}

template <std::size_t N>
void to_two_digits(char (&text)[N])
{
    drop_minus(text);
    if (std::strlen(text) < 2)
        text_set(text, "0" + std::string(text));
}

// Texts of the parts of an angle that isn't negative.
struct dms_parts {
    number_text degrees, minutes, seconds;
};

void split_degrees(double value, dms_parts* parts)
{
    number_text &degrees = parts->degrees, &minutes = parts->minutes, &seconds = parts->seconds;
    format_number(&degrees, value, 9);
    double whole_degrees = degrees.value();
    value -= whole_degrees;
    format_number(&minutes, value / ONE_MINUTE, 7);
    double whole_minutes = minutes.value();
    value -= whole_minutes / 60.0;
    format_number(&seconds, value / ONE_SECOND, 5);
    if (seconds.value() == 60.0) {
        text_set(seconds.whole, "00");
        text_format(minutes.whole, "%.0f", whole_minutes += 1.0);
    }
    if (whole_minutes >= 60.0) {
        text_format(minutes.whole, "%.0f", whole_minutes - 60.0);
        text_format(degrees.whole, "%.0f", whole_degrees + 1.0);
    }
    to_two_digits(seconds.whole);
    to_two_digits(minutes.whole);
}

// Formats of the degrees as a text, the minutes as an int and the seconds as a double.
constexpr const char* WHOLE_SECONDS[2][2][2][2] = {
    // [symbols][negative][seconds below 10][minutes below 10]
    {{{"%s.%d%.0f", "%s.0%d%.0f"}, {"%s.%d0%.0f", "%s.0%d0%.0f"}},
     {{"-%s.%d%.0f", "-%s.0%d%.0f"}, {"-%s.%d0%.0f", "-%s.0%d0%.0f"}}},
    {{{"%s\xB0%d'%.0f\"", "%s\xB0"
                          "0%d'%.0f\""},
      {"%s\xB0%d'0%.0f\"", "%s\xB0"
                           "0%d'0%.0f\""}},
     // No second mark in the third of these: programs and files in use have it so.
     {{"-%s\xB0%d'%.0f\"", "-%s\xB0"
                           "0%d'%.0f\""},
      {"-%s\xB0%d'0%.0f", "-%s\xB0"
                          "0%d'0%.0f\""}}}};

void write_whole_seconds(dms_parts* parts, bool negative, bool symbols, text_out out)
{
    int minutes = std::atoi(parts->minutes.whole);
    double seconds = std::atof((std::string(parts->seconds.whole) + "." + parts->seconds.fraction).c_str());
    // 59.5 itself stays, and is then printed as 60.
    if (seconds > LAST_SECOND) {
        seconds = 0.0;
        if (++minutes == 60) {
            minutes = 0;
            text_format(parts->degrees.whole, "%.0f", parts->degrees.value() + 1.0);
        }
    }
    number_text rounded;
    format_number(&rounded, seconds, 0);
    seconds = rounded.value();
    const char* format = WHOLE_SECONDS[symbols][negative][!(seconds >= 10.0)][minutes < 10];
    text_format(out, format, parts->degrees.whole, minutes, seconds);
}

void write_fraction(const dms_parts& parts, bool negative, bool symbols, text_out out)
{
    const char* format = symbols ? "%s%s\xB0%s'%s.%s\"" : "%s%s.%s%s%s";
    text_format(out, format, negative ? "-" : "", parts.degrees.whole, parts.minutes.whole, parts.seconds.whole,
                parts.seconds.fraction);
}

double add_minutes(double value, double degrees, int minute_decimals, number_text* minutes)
{
    const double in_minutes = (value - degrees) * 100.0;
    format_number(minutes, in_minutes, minute_decimals);
    const double whole_minutes = minutes->value();
    return degrees + whole_minutes / 60.0 + (in_minutes - whole_minutes) * 100.0 / 3600.0;
}

// Length along the road and elevation.
struct grade_point {
    double x, y;
};

grade_point midway(const grade_point& a, const grade_point& b)
{
    return {(a.x + b.x) / 2.0, (a.y + b.y) / 2.0};
}

double grade(const grade_point& a, const grade_point& b)
{
    return (b.y - a.y) / (b.x - a.x);
}

double elevation_at(double x, const grade_point& a, const grade_point& b)
{
    return a.y + (x - a.x) / (b.x - a.x) * (b.y - a.y);
}

// On a parabola that leaves `start` at grade g1 and has g2 after `length`.
double parabola_elevation(const grade_point& start, double g1, double g2, double length, double station)
{
    const double s = (station - start.x) / STATION_UNIT;
    const double r = (g2 * STATION_UNIT - g1 * STATION_UNIT) / length * STATION_UNIT;
    return start.y + g1 * STATION_UNIT * s + (r / 2.0) * s * s;
}

} // namespace

double point_angle(const double* from, const double* to)
{
    const double dx = to[0] - from[0], dy = to[1] - from[1];
    const double distance = std::sqrt(dx * dx + dy * dy);
    if (distance < SAME_PLACE)
        return 0.0;
    const double angle = std::acos(dx / distance);
    return dy < 0.0 ? TWO_PI - angle : angle;
}

void dms_text(double value, text_out out, int whole_seconds, int symbols)
{
    dms_parts parts;
    split_degrees(std::fabs(value), &parts);
    if (whole_seconds == 1)
        write_whole_seconds(&parts, value < 0.0, symbols == 1, out);
    else
        write_fraction(parts, value < 0.0, symbols == 1, out);
}

void dms_split(double value, double* degrees, double* minutes, double* seconds)
{
    number_text part;
    format_number(&part, value, 6);
    *degrees = part.value();
    value = (value - *degrees) * 100.0;
    format_number(&part, value, 6);
    *minutes = part.value();
    char text[DMS_TEXT_SIZE];
    text_format(text, "%.6f", (value - *minutes) * 100.0);
    *seconds = std::atof(text);
}

double dms_degrees(double value, int minute_decimals, text_out minutes_text)
{
    number_text part;
    format_number(&part, value, 9);
    const double degrees = part.value();
    const double angle = add_minutes(value, degrees, minute_decimals, &part);
    text_set(minutes_text, part.whole);
    return angle;
}

double dms_degrees_of_text(const char* text, int minute_decimals)
{
    text = or_empty(text);
    const std::string degrees(text, std::strcspn(text, "."));
    number_text minutes;
    return add_minutes(std::atof(text), std::atof(degrees.c_str()), minute_decimals, &minutes);
}

quadrant_bearing read_quadrant_bearing(const char* text)
{
    text = or_empty(text);
    const int digit = text[0] >= '1' && text[0] <= '9' ? text[0] - '0' : 5;
    return {digit, text[0] == '\0' ? 0.0 : dms_degrees_of_text(text + 1, 9)};
}

double bearing_direction(const quadrant_bearing& bearing)
{
    const double a = bearing.angle;
    switch (bearing.quadrant) {
    case 1:
        return 90.0 - a;
    case 2:
        return 270.0 + a;
    case 3:
        return 270.0 - a;
    case 4:
        return 90.0 + a;
    case 5:
        return (360.0 - a) - 270.0;
    default:
        return a;
    }
}

double station_value(const char* text)
{
    std::string digits(or_empty(text));
    digits.erase(std::remove(digits.begin(), digits.end(), '+'), digits.end());
    return std::atof(digits.c_str());
}

void rotate_about(double& x, double& y, double centre_x, double centre_y, double slope)
{
    const double centre[2] = {centre_x, centre_y}, point[2] = {x, y};
    const double dx = x - centre_x, dy = y - centre_y;
    const double distance = std::sqrt(dx * dx + dy * dy);
    if (distance < AT_CENTRE)
        return;
    const double direction = point_angle(centre, point) - std::atan(slope);
    x = centre_x + distance * std::cos(direction);
    y = centre_y + distance * std::sin(direction);
}

double vertical_curve_elevation(double x1, double y1, double x2, double y2, double x3, double y3,
                                double back_length, double ahead_length, double station)
{
    const grade_point before{x1, y1}, crossing{x2, y2}, behind{x3, y3};
    const double start_x = x2 - back_length, end_x = x2 + ahead_length;
    const grade_point start{start_x, elevation_at(start_x, before, crossing)};
    const grade_point end{end_x, elevation_at(end_x, crossing, behind)};
    const grade_point a = midway(start, crossing), b = midway(end, crossing);
    const double chord_grade = grade(a, b);
    if (station < x2)
        return parabola_elevation(start, grade(before, crossing), chord_grade, back_length, station);
    const grade_point middle{x2, elevation_at(x2, a, b)};
    return parabola_elevation(middle, chord_grade, grade(crossing, behind), ahead_length, station);
}
