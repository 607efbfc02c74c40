// angle_text.h: directions of lines, angles as surveyors write them, stations, and two small
// helpers of road design.
//
// Surveyors write an angle as one decimal number, dd.mmss: the integer part is degrees, the first two
// decimals are minutes, what follows is seconds with their fraction. 30.1005 is 30 degrees, 10 minutes,
// 5 seconds. A quadrant bearing has the digit of its quadrant in front, Qdd.mmss: 130.1005.
//
// Nothing here reports an error. Degenerate input gives what the arithmetic gives: a vertical grade
// or a curve without length an infinity or not a number, never a fault. Texts that are no numbers, and
// null, read as 0.
#pragma once

#include "common/text_buffer.h"

constexpr double TWO_PI = 6.283185307179586;

// Direction from `from` to `to`, both x and y at least: radians counter-clockwise from the x axis, 0 to
// two pi. 0.0 for points closer than 1e-6.
double point_angle(const double* from, const double* to);

// ---- degrees, minutes, seconds ---------------------------------------------------------------

// Room for the text of any double: the degrees of the largest have 309 digits.
constexpr int DMS_TEXT_SIZE = 352;

// Decimal degrees as text, a minus sign in front of the degrees only.
//   whole_seconds  1 rounds to whole seconds, any other value writes five decimals of them
//   symbols        1 writes degree, minute and second marks (the degree mark is the byte 0xB0), any
//                  other value dd.mmss, whose seconds and fraction run on without a point
// 12.5 is 12.300000000, 12.3000, 12°30'00.00000" or 12°30'00". 59.5 seconds exactly are rounded to 60
// and not carried into the minutes; a negative angle of 10 minutes or more and less than 10 whole
// seconds has no second mark.
void dms_text(double value, text_out out, int whole_seconds, int symbols);

// Splits dd.mmss: 30.1005 gives 30, 10 and 5. All three have the sign of the value. The parts are
// as written: 10.7599 gives 75 minutes, 99 seconds.
void dms_split(double value, double* degrees, double* minutes, double* seconds);

// Decimal degrees of dd.mmss: 30.3036 is 30.51. Minutes are read from the text of the number with
// `minute_decimals` decimals, so that 10.9999999999 minutes are 11. That text, cut at its point, is
// left in `minutes_text`.
double dms_degrees(double value, int minute_decimals, text_out minutes_text);

// The same of a text, whose degrees are what stands in front of its point: "30.3036" is 30.51.
double dms_degrees_of_text(const char* text, int minute_decimals);

// ---- quadrant bearings -----------------------------------------------------------------------

struct quadrant_bearing {
    int quadrant; // 1 north-east, 2 south-east, 3 south-west, 4 north-west, 5 azimuth clockwise from
                  // north; 6 to 9 belong to the tool that asks
    double angle; // decimal degrees
};

// "130.1005" is quadrant 1, 30.168055... degrees. Quadrant 5 when the first character is no digit of 1
// to 9. An empty text is quadrant 5, 0 degrees.
quadrant_bearing read_quadrant_bearing(const char* text);

// Direction of a bearing of quadrant 1 to 5: degrees counter-clockwise from the x axis, not brought
// into 0 to 360. North-east 30 degrees is 60. Of any other quadrant the angle as it is.
double bearing_direction(const quadrant_bearing& bearing);

// ---- stations and road design ----------------------------------------------------------------

// The number of a station text, every "+" dropped: "12+50.25" is 1250.25, "1+00+50" is 10050.
double station_value(const char* text);

// Turns the point (x, y) clockwise about a centre by the angle whose tangent is `slope`: with slope 1,
// (10, 0) about the origin goes to (7.07, -7.07). A point closer than 0.01 to the centre stays.
void rotate_about(double& x, double& y, double centre_x, double centre_y, double slope);

// Elevation at `station` on a vertical curve of unequal tangents. (x1, y1) is the grade point before, (x2, y2)
// the intersection of the grades, (x3, y3) the grade point behind: station as a length, and
// elevation. The curve runs from x2 - back_length to x2 + ahead_length. Grades 0,100 - 500,110 - 1000,100
// with 200 on either side: 108 at station 500. Behind the ends of the curve its parabolas
// go on.
double vertical_curve_elevation(double x1, double y1, double x2, double y2, double x3, double y3,
                                double back_length, double ahead_length, double station);
