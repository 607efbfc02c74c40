// units_text.cpp: lengths and angles as text.
//
// Numbers are rounded as people round them, a five upwards, and on their fifteen significant
// digits: 1.005 with two places is 1.01, although the nearest double lies a little below it. Feet,
// fractions, minutes and seconds are counted in whole units of the last place, so that 59.9996
// minutes never come out as 60'.
#include "host/database/units_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <numeric>

#include "host/core/document.h"
#include "host/core/text.h"
#include "host/database/dxf_numbers.h"
#include "host/database/sysvars.h"
#include "hostapi/ads.h"

namespace host::db
{

namespace
{

constexpr double PI = std::numbers::pi;
constexpr int SIGNIFICANT = 15;
// From here on a decimal text would be digits without meaning, and it is written with an exponent.
constexpr double LARGEST_PLAIN = 1e16;
constexpr int MAX_FRACTION_BITS = 8; // 1/256

// DIMZIN: the low two bits are for feet and inches, the next two for decimals.
constexpr int FEET_AND_INCHES = 3;
constexpr int NO_LEADING_ZERO = 4;
constexpr int NO_TRAILING_ZEROS = 8;

struct zero_rule {
    bool zero_feet, zero_inches; // written
};
constexpr std::array<zero_rule, 4> ZERO_RULES = {{{false, false}, {true, true}, {true, false}, {false, true}}};

// A positive number as digits with the decimal point `before` digits from the left.
struct digit_text {
    std::string digits;
    int before = 0;
};

digit_text digits_of(double value)
{
    std::array<char, 48> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::scientific, SIGNIFICANT - 1);
    const std::string_view text(buffer.data(), static_cast<std::size_t>(end.ptr - buffer.data()));
    const std::size_t mark = text.find('e');
    digit_text out;
    for (const char c : text.substr(0, mark))
        if (c != '.')
            out.digits += c;
    std::string_view exponent = text.substr(mark + 1);
    if (exponent.front() == '+')
        exponent.remove_prefix(1);
    std::from_chars(exponent.data(), exponent.data() + exponent.size(), out.before);
    ++out.before;
    return out;
}

// Keeps `count` digits, the last one rounded. A carry out of the first digit moves the point.
void round_to(digit_text& number, int count)
{
    if (count < 0) {
        number = {"0", 1};
        return;
    }
    if (count >= static_cast<int>(number.digits.size()))
        return;
    const bool up = number.digits[static_cast<std::size_t>(count)] >= '5';
    number.digits.resize(static_cast<std::size_t>(count));
    if (!up) {
        if (number.digits.empty())
            number = {"0", 1};
        return;
    }
    for (std::size_t i = number.digits.size(); i-- > 0;) {
        if (number.digits[i] != '9') {
            ++number.digits[i];
            return;
        }
        number.digits[i] = '0';
    }
    number.digits.insert(number.digits.begin(), '1');
    ++number.before;
}

std::string fixed_text(double value, int precision)
{
    digit_text number = digits_of(value);
    if (number.before + precision > SIGNIFICANT) {
        std::array<char, 64> buffer{};
        const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                       std::chars_format::fixed, precision);
        return {buffer.data(), end.ptr};
    }
    round_to(number, number.before + precision);
    std::string& digits = number.digits;
    if (number.before < 1) {
        digits.insert(0, static_cast<std::size_t>(1 - number.before), '0');
        number.before = 1;
    }
    digits.resize(static_cast<std::size_t>(number.before + precision), '0');
    if (precision > 0)
        digits.insert(static_cast<std::size_t>(number.before), 1, '.');
    return digits;
}

std::string without_zeros(std::string text, int zero_suppression)
{
    if (zero_suppression & NO_TRAILING_ZEROS && text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.')
            text.pop_back();
    }
    if (zero_suppression & NO_LEADING_ZERO && text.starts_with("0."))
        text.erase(0, 1);
    return text;
}

std::string decimal_text(double value, const unit_form& form)
{
    return without_zeros(fixed_text(value, form.precision), form.zero_suppression);
}

std::string scientific_text(double value, const unit_form& form)
{
    digit_text number = digits_of(value);
    round_to(number, form.precision + 1);
    int exponent = value == 0.0 ? 0 : number.before - 1;
    std::string text = number.digits.substr(0, 1);
    if (form.precision > 0) {
        number.digits.resize(static_cast<std::size_t>(form.precision) + 1, '0');
        text += "." + number.digits.substr(1);
    }
    text = without_zeros(text, form.zero_suppression & NO_TRAILING_ZEROS);
    text += exponent < 0 ? "E-" : "E+";
    exponent = std::abs(exponent);
    return text + (exponent < 10 ? "0" : "") + std::to_string(exponent);
}

// Whole inches and the text of the rest, put together with feet.
std::string feet_text(std::int64_t feet, const std::string& inches, bool inches_are_zero, const unit_form& form)
{
    const zero_rule rule = ZERO_RULES[static_cast<std::size_t>(form.zero_suppression & FEET_AND_INCHES)];
    const bool with_feet = feet != 0 || rule.zero_feet;
    // Something must stay: a length of nothing keeps the inches unless zero feet are written.
    const bool with_inches = !inches_are_zero || rule.zero_inches || !with_feet;
    std::string text;
    if (with_feet)
        text = std::to_string(feet) + "'";
    if (with_feet && with_inches && !form.as_entered)
        text += "-";
    if (with_inches)
        text += inches + "\"";
    return text;
}

std::string engineering_text(double value, const unit_form& form)
{
    auto feet = static_cast<std::int64_t>(value / 12.0);
    std::string inches = fixed_text(std::max(0.0, value - static_cast<double>(feet) * 12.0), form.precision);
    if (inches == fixed_text(12.0, form.precision)) {
        ++feet;
        inches = fixed_text(0.0, form.precision);
    }
    const bool is_zero = inches.find_first_not_of("0.") == std::string::npos;
    return feet_text(feet, without_zeros(inches, form.zero_suppression), is_zero, form);
}

struct fraction {
    std::int64_t whole = 0, over = 0, under = 1;
};

fraction fraction_of(double value, int bits)
{
    const std::int64_t parts = std::int64_t{1} << bits;
    const auto total = static_cast<std::int64_t>(std::floor(value * static_cast<double>(parts) + 0.5));
    fraction out{total / parts, total % parts, parts};
    const std::int64_t common = std::gcd(out.over, out.under);
    out.over /= common;
    out.under /= common;
    return out;
}

// "5 1/2", or "5-1/2" as entered; the whole part is left out when it is zero and may be.
std::string fraction_text(const fraction& value, bool keep_zero, const unit_form& form)
{
    if (value.over == 0)
        return std::to_string(value.whole);
    const std::string part = std::to_string(value.over) + "/" + std::to_string(value.under);
    if (value.whole == 0 && !keep_zero)
        return part;
    return std::to_string(value.whole) + (form.as_entered ? "-" : " ") + part;
}

std::string architectural_text(double value, const unit_form& form)
{
    fraction inches = fraction_of(value, std::min(form.precision, MAX_FRACTION_BITS));
    const std::int64_t feet = inches.whole / 12;
    inches.whole %= 12;
    const zero_rule rule = ZERO_RULES[static_cast<std::size_t>(form.zero_suppression & FEET_AND_INCHES)];
    const bool behind_feet = feet != 0 || rule.zero_feet;
    return feet_text(feet, fraction_text(inches, behind_feet, form), inches.whole == 0 && inches.over == 0,
                     form);
}

std::string fractional_text(double value, const unit_form& form)
{
    return fraction_text(fraction_of(value, std::min(form.precision, MAX_FRACTION_BITS)), false, form);
}

using text_maker = std::string (*)(double value, const unit_form& form);
constexpr std::array<text_maker, 5> LENGTH_TEXTS = {scientific_text, decimal_text, engineering_text,
                                                    architectural_text, fractional_text};

// ---- angles

// What the last place of degrees, minutes and seconds counts, in parts of a degree.
std::int64_t parts_of_degree(int precision)
{
    if (precision < 1)
        return 1;
    if (precision < 3)
        return 60;
    std::int64_t parts = 3600;
    for (int i = 4; i < std::min(precision, 12); ++i)
        parts *= 10;
    return parts;
}

std::string sexagesimal_text(std::int64_t total, std::int64_t parts, const unit_form& form)
{
    std::string text = std::to_string(total / parts) + "d";
    std::int64_t rest = total % parts;
    if (parts >= 60)
        text += std::to_string(rest / (parts / 60)) + "'";
    if (parts >= 3600) {
        rest %= parts / 60;
        const std::int64_t second = parts / 3600;
        std::string seconds = std::to_string(rest / second);
        if (second > 1) {
            const std::string decimals = std::to_string(second + rest % second);
            seconds =
                without_zeros(seconds + "." + decimals.substr(1), form.zero_suppression & NO_TRAILING_ZEROS);
        }
        text += seconds + "\"";
    }
    return text;
}

// Bearing from north or south towards east or west; the four main directions are a letter.
std::string surveyor_text(std::int64_t total, std::int64_t parts, const unit_form& form)
{
    const std::int64_t quarter = 90 * parts;
    if (total % quarter == 0)
        return std::string(1, "ENWS"[total / quarter]);
    const bool north = total < 2 * quarter;
    const bool east = total < quarter || total > 3 * quarter;
    const std::int64_t from_east_west = total % (2 * quarter);
    const std::int64_t bearing = std::abs(quarter - from_east_west);
    const char* gap = form.as_entered ? "" : " ";
    return (north ? "N" : "S") + std::string(gap) + sexagesimal_text(bearing, parts, form) + gap +
           (east ? "E" : "W");
}

// Full turns go, those too that come of rounding.
std::string plain_angle_text(double value, double full, const unit_form& form)
{
    std::string text = fixed_text(value, form.precision);
    if (text == fixed_text(full, form.precision))
        text = fixed_text(0.0, form.precision);
    return without_zeros(text, form.zero_suppression);
}

// ---- reading

struct scanner {
    std::string_view rest;
    void skip_blanks()
    {
        while (!rest.empty() && rest.front() == ' ')
            rest.remove_prefix(1);
    }
    bool take(char c)
    {
        if (rest.empty() || rest.front() != c)
            return false;
        rest.remove_prefix(1);
        return true;
    }
    bool take_letter(char c) { return take(c) || take(static_cast<char>(c + ('a' - 'A'))); }
    // A number without a sign.
    std::optional<double> number()
    {
        if (rest.empty() || (rest.front() != '.' && (rest.front() < '0' || rest.front() > '9')))
            return std::nullopt;
        double value = 0;
        const auto end = std::from_chars(rest.data(), rest.data() + rest.size(), value);
        if (end.ec != std::errc())
            return std::nullopt;
        rest.remove_prefix(static_cast<std::size_t>(end.ptr - rest.data()));
        return value;
    }
    // -1 or 1.
    double sign()
    {
        if (take('-'))
            return -1.0;
        take('+');
        return 1.0;
    }
};

// 5, 5.25, 1/2, 5 1/2 or 5-1/2.
std::optional<double> mixed_number(scanner& in)
{
    const auto first = in.number();
    if (!first)
        return std::nullopt;
    if (in.take('/')) {
        const auto under = in.number();
        if (!under || *under == 0.0)
            return std::nullopt;
        return *first / *under;
    }
    scanner ahead = in;
    if (ahead.take('-') || ahead.take(' ')) {
        ahead.skip_blanks();
        const auto over = ahead.number();
        if (over && ahead.take('/')) {
            const auto under = ahead.number();
            if (!under || *under == 0.0)
                return std::nullopt;
            in = ahead;
            return *first + *over / *under;
        }
    }
    return first;
}

bool has_feet(int unit)
{
    return unit == 3 || unit == 4;
}

// Degrees, minutes and seconds behind the degrees' mark. Minutes and seconds may be left out.
std::optional<double> minutes_and_seconds(scanner& in, double degrees)
{
    if (auto value = in.number()) {
        if (in.take('\'')) {
            degrees += *value / 60.0;
            value = in.number();
            if (!value)
                return degrees;
        }
        if (!in.take('"'))
            return std::nullopt;
        degrees += *value / 3600.0;
    }
    return degrees;
}

bool take_degree_mark(scanner& in)
{
    return in.take_letter('D') || in.take('\xB0');
}

std::optional<double> angle_part(scanner& in, int unit)
{
    const auto value = in.number();
    if (!value)
        return std::nullopt;
    if (take_degree_mark(in)) {
        const auto degrees = minutes_and_seconds(in, *value);
        return degrees ? std::optional(radians_of(*degrees)) : std::nullopt;
    }
    if (in.take_letter('G'))
        return *value * PI / 200.0;
    if (in.take_letter('R'))
        return *value;
    return unit == 2 ? *value * PI / 200.0 : unit == 3 ? *value : radians_of(*value);
}

std::optional<double> bearing(scanner& in, bool north)
{
    in.skip_blanks();
    if (in.rest.empty())
        return north ? PI / 2 : PI * 3 / 2;
    const auto turn = angle_part(in, 4);
    in.skip_blanks();
    const bool east = in.take_letter('E');
    if (!turn || *turn > PI / 2 || (!east && !in.take_letter('W')) || !in.rest.empty())
        return std::nullopt;
    const double from = north ? PI / 2 : PI * 3 / 2;
    return north == east ? from - *turn : from + *turn;
}

} // namespace

std::optional<std::string> length_text(double value, const unit_form& form)
{
    if (form.unit < 1 || form.unit > 5 || form.precision < 0 || !std::isfinite(value))
        return std::nullopt;
    unit_form used = form;
    used.precision = std::min(form.precision, MAX_DECIMALS);
    if (std::fabs(value) >= LARGEST_PLAIN)
        used.unit = 1;
    const std::string text = LENGTH_TEXTS[static_cast<std::size_t>(used.unit - 1)](std::fabs(value), used);
    const bool is_zero = text.substr(0, text.find('E')).find_first_of("123456789") == std::string::npos;
    return (value < 0 && !is_zero ? "-" : "") + text;
}

std::optional<std::string> angle_text(double radians, const unit_form& form)
{
    if (form.unit < 0 || form.unit > 4 || form.precision < 0 || !std::isfinite(radians))
        return std::nullopt;
    unit_form used = form;
    used.precision = std::min(form.precision, MAX_DECIMALS);
    double turn = std::fmod(radians, 2 * PI) + 0.0; // no negative zero
    if (turn < 0)
        turn += 2 * PI;
    switch (form.unit) {
    case 0:
        return plain_angle_text(turn * 180.0 / PI, 360.0, used);
    case 2:
        return plain_angle_text(turn * 200.0 / PI, 400.0, used) + "g";
    case 3:
        return plain_angle_text(turn, 2 * PI, used) + "r";
    default:
        break;
    }
    const std::int64_t parts = parts_of_degree(used.precision);
    const auto total =
        static_cast<std::int64_t>(std::floor(turn * 180.0 / PI * static_cast<double>(parts) + 0.5)) %
        (360 * parts);
    return form.unit == 1 ? sexagesimal_text(total, parts, used) : surveyor_text(total, parts, used);
}

std::optional<double> parse_length(std::string_view text, int unit)
{
    if (unit < 1 || unit > 5)
        return std::nullopt;
    scanner in{trimmed(text)};
    const double sign = in.sign();
    double feet = 0;
    bool some = false;
    if (has_feet(unit)) {
        scanner ahead = in;
        const auto value = ahead.number();
        if (value && ahead.take('\'')) {
            feet = *value;
            some = true;
            in = ahead;
            in.skip_blanks();
            if (in.take('-') && in.rest.empty())
                return std::nullopt;
            in.skip_blanks();
        }
    }
    double rest = 0;
    if (!some || !in.rest.empty()) {
        const auto value = mixed_number(in);
        if (!value)
            return std::nullopt;
        rest = *value;
        if (has_feet(unit))
            in.take('"');
    }
    if (!in.rest.empty())
        return std::nullopt;
    return sign * (feet * 12.0 + rest);
}

bool is_bearing(std::string_view text)
{
    const std::string_view bare = trimmed(text);
    constexpr std::string_view COMPASS = "NSEWnsew";
    return !bare.empty() && COMPASS.find(bare.front()) != std::string_view::npos;
}

std::optional<double> parse_angle(std::string_view text, int unit)
{
    if (unit < 0 || unit > 4)
        return std::nullopt;
    scanner in{trimmed(text)};
    if (in.take_letter('N'))
        return bearing(in, true);
    if (in.take_letter('S'))
        return bearing(in, false);
    if (same_text(in.rest, "E"))
        return 0.0;
    if (same_text(in.rest, "W"))
        return PI;
    const double sign = in.sign();
    const auto value = angle_part(in, unit);
    if (!value || !in.rest.empty())
        return std::nullopt;
    return sign * *value;
}

namespace
{

unit_form form_of_drawing(int unit, int precision, const char* unit_variable, const char* precision_variable)
{
    document& doc = current_document();
    unit_form form;
    form.unit = unit == -1 ? int_variable(doc, unit_variable) : unit;
    form.precision = precision == -1 ? int_variable(doc, precision_variable) : precision;
    form.zero_suppression = int_variable(doc, "DIMZIN");
    form.as_entered = int_variable(doc, "UNITMODE") == 1;
    return form;
}

int hand_over(const std::optional<std::string>& text, char* out)
{
    if (!text || text->size() >= static_cast<std::size_t>(ADS_TEXT_SIZE))
        return RTERROR;
    std::copy(text->begin(), text->end(), out);
    out[text->size()] = '\0';
    return RTNORM;
}

} // namespace

} // namespace host::db

extern "C" {

int acdbRToS(ads_real value, int unit, int precision, char* out)
{
    if (!out || !host::has_document())
        return RTERROR;
    return host::db::hand_over(
        host::db::length_text(value, host::db::form_of_drawing(unit, precision, "LUNITS", "LUPREC")), out);
}

int acdbAngToS(ads_real value, int unit, int precision, char* out)
{
    if (!out || !host::has_document())
        return RTERROR;
    host::document& doc = host::current_document();
    const host::db::unit_form form = host::db::form_of_drawing(unit, precision, "AUNITS", "AUPREC");
    // Angles are shown as they are measured: from ANGBASE, in the sense of ANGDIR. Bearings name the
    // directions of the compass, which no setting turns.
    double shown = value;
    if (form.unit != host::db::BEARINGS) {
        shown -= host::db::real_variable(doc, "ANGBASE");
        if (host::db::int_variable(doc, "ANGDIR") == 1)
            shown = -shown;
    }
    return host::db::hand_over(host::db::angle_text(shown, form), out);
}

int acdbDisToF(const char* text, int unit, ads_real* out)
{
    if (!text || !out || !host::has_document())
        return RTERROR;
    if (unit == -1)
        unit = host::db::int_variable(host::current_document(), "LUNITS");
    const auto value = host::db::parse_length(text, unit);
    if (!value)
        return RTERROR;
    *out = *value;
    return RTNORM;
}

int acdbAngToF(const char* text, int unit, ads_real* out)
{
    if (!text || !out || !host::has_document())
        return RTERROR;
    host::document& doc = host::current_document();
    if (unit == -1)
        unit = host::db::int_variable(doc, "AUNITS");
    const auto value = host::db::parse_angle(text, unit);
    if (!value)
        return RTERROR;
    double direction = *value;
    if (!host::db::is_bearing(text)) {
        const double sense = host::db::int_variable(doc, "ANGDIR") == 1 ? -1.0 : 1.0;
        direction = host::db::real_variable(doc, "ANGBASE") + sense * *value;
    }
    constexpr double FULL_TURN = 2 * std::numbers::pi;
    double angle = std::fmod(direction, FULL_TURN);
    if (angle < 0)
        angle += FULL_TURN;
    *out = angle;
    return RTNORM;
}
}
