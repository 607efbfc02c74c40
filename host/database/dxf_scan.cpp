// A pair of an ASCII file is two lines, so that its line number follows from the count of pairs. Values
// stay where they are in the bytes; a number is only read when the reader asks for one.
#include "host/database/dxf_scan.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>

#include "host/core/text.h"
#include "host/database/dxf_numbers.h"

namespace host::db
{

namespace
{

constexpr int LAST_CODE = 1071;
// The mark at the head of every binary file.
constexpr std::string_view BINARY_MARK("AutoCAD Binary DXF\r\n\x1A\0", 22);

struct code_range {
    int low, high;
};
constexpr code_range UNUSED[] = {{103, 104}, {106, 109}, {150, 159},   {180, 209},
                                 {240, 269}, {482, 998}, {1072, 32767}};

// How a value stands in a binary file.
enum class width : std::uint8_t { unknown, text, chunk, real, byte, int16, int32, int64 };
struct width_range {
    int low, high;
    width form;
};
constexpr width_range WIDTHS[] = {
    {0, 9, width::text},        {10, 59, width::real},      {60, 79, width::int16},
    {80, 99, width::int32},     {100, 109, width::text},    {110, 149, width::real},
    {160, 169, width::int64},   {170, 179, width::int16},   {210, 239, width::real},
    {270, 289, width::int16},   {290, 299, width::byte},    {300, 309, width::text},
    {310, 319, width::chunk},   {320, 369, width::text},    {370, 389, width::int16},
    {390, 399, width::text},    {400, 409, width::int16},   {410, 419, width::text},
    {420, 429, width::int32},   {430, 439, width::text},    {440, 459, width::int32},
    {460, 469, width::real},    {470, 481, width::text},    {999, 1003, width::text},
    {1004, 1004, width::chunk}, {1005, 1009, width::text},  {1010, 1059, width::real},
    {1060, 1070, width::int16}, {1071, 1071, width::int32},
};

struct code_tables {
    std::array<group_kind, LAST_CODE + 1> kinds;
    std::array<bool, LAST_CODE + 1> known;
    std::array<width, LAST_CODE + 1> widths;
    code_tables()
    {
        known.fill(true);
        widths.fill(width::unknown);
        for (int code = 0; code <= LAST_CODE; ++code)
            kinds[static_cast<std::size_t>(code)] = kind_of_code(code);
        for (const code_range& range : UNUSED)
            for (int code = range.low; code <= range.high && code <= LAST_CODE; ++code)
                known[static_cast<std::size_t>(code)] = false;
        for (const width_range& range : WIDTHS)
            for (int code = range.low; code <= range.high; ++code)
                widths[static_cast<std::size_t>(code)] = range.form;
    }
};

const code_tables& tables()
{
    static const code_tables made;
    return made;
}

template <class T>
T little_endian(const char* bytes)
{
    T value = 0;
    std::memcpy(&value, bytes, sizeof value);
    static_assert(std::endian::native == std::endian::little);
    return value;
}

bool is_blank(char c)
{
    return c == ' ' || c == '\t';
}

} // namespace

group_kind dxf_kind(int code)
{
    return code >= 0 && code <= LAST_CODE ? tables().kinds[static_cast<std::size_t>(code)]
                                          : group_kind::integer;
}

bool dxf_knows(int code)
{
    return code >= 0 && code <= LAST_CODE && tables().known[static_cast<std::size_t>(code)];
}

std::string quoted(std::string_view value)
{
    constexpr std::size_t LONGEST = 40;
    std::string out = "\"";
    for (const char c : value.substr(0, LONGEST))
        out += static_cast<unsigned char>(c) < ' ' || static_cast<unsigned char>(c) > '~' ? '?' : c;
    return out + (value.size() > LONGEST ? "...\"" : "\"");
}

bool dxf_scanner::fail(long where, std::string message)
{
    if (!failed()) {
        message_ = std::move(message);
        failed_at_ = where;
    }
    return false;
}

bool dxf_scanner::open()
{
    const std::string_view bytes(begin_, static_cast<std::size_t>(end_ - begin_));
    if (bytes.empty())
        return fail(0, "the file is empty");
    if (bytes.starts_with(BINARY_MARK)) {
        is_binary_ = true;
        at_ += BINARY_MARK.size();
        // Both forms start with a text of code 0 (or 999, after FF in the narrow form).
        wide_codes_ =
            end_ - at_ >= 2 && static_cast<unsigned char>(at_[0]) != 0xFF && (at_[1] == 0 || at_[0] != 0);
        return true;
    }
    if (bytes.starts_with("AC10") || bytes.starts_with("AC1."))
        return fail(0, "this is a DWG file, not a DXF file");
    if (bytes.starts_with("\xEF\xBB\xBF"))
        at_ += 3;
    const char* const stop = std::find_if(at_, end_, [](char c) { return c == '\n' || c == '\r'; });
    if (stop != end_ && *stop == '\r' && (stop + 1 == end_ || stop[1] != '\n'))
        line_end_ = '\r';
    return true;
}

bool dxf_scanner::next()
{
    return is_binary_ ? next_binary() : next_ascii();
}

bool dxf_scanner::bad_code()
{
    const char* const start = at_;
    if (std::all_of(start, end_, [](char c) { return is_blank(c) || c == '\r' || c == '\n' || c == '\x1A'; }))
        return false; // nothing but an empty line or two behind the last pair
    const char* const stop = std::find(start, end_, line_end_);
    std::string_view line(start, static_cast<std::size_t>(stop - start));
    if (pairs_ == 0)
        return fail(1, "this is not a DXF file: it starts with " + quoted(trimmed(line)));
    return fail(2 * pairs_ + 1, quoted(trimmed(line)) + " stands where a group code should be");
}

bool dxf_scanner::next_ascii()
{
    if (failed() || at_ == end_)
        return false;
    const char* p = at_;
    while (p != end_ && is_blank(*p))
        ++p;
    const char* const digits = p;
    int code = 0;
    for (; p != end_ && *p >= '0' && *p <= '9' && p - digits < 5; ++p)
        code = code * 10 + (*p - '0');
    if (p == digits || code > 32767)
        return bad_code();
    while (p != end_ && (is_blank(*p) || (*p == '\r' && line_end_ != '\r')))
        ++p;
    if (p == end_)
        return fail(2 * pairs_ + 1, "the file ends in the middle of a pair");
    if (*p != line_end_)
        return bad_code();
    ++p;
    if (p == end_)
        return fail(2 * pairs_ + 2, "the file ends in the middle of a pair");
    const char* stop = static_cast<const char*>(std::memchr(p, line_end_, static_cast<std::size_t>(end_ - p)));
    at_ = stop ? stop + 1 : end_;
    if (!stop)
        stop = end_;
    while (stop != p && stop[-1] == '\r')
        --stop;
    text_ = std::string_view(p, static_cast<std::size_t>(stop - p));
    code_ = code;
    ++pairs_;
    return true;
}

bool dxf_scanner::truncated()
{
    return fail(end_ - begin_, "the file ends in the middle of a pair");
}

bool dxf_scanner::binary_code()
{
    place_ = at_ - begin_;
    if (at_ == end_)
        return false;
    if (wide_codes_) {
        if (end_ - at_ < 2)
            return truncated();
        code_ = little_endian<std::uint16_t>(at_);
        at_ += 2;
        return true;
    }
    code_ = static_cast<unsigned char>(*at_++);
    if (code_ != 0xFF)
        return true;
    if (end_ - at_ < 2)
        return truncated();
    code_ = little_endian<std::uint16_t>(at_);
    at_ += 2;
    return true;
}

bool dxf_scanner::text_value()
{
    const char* const stop =
        static_cast<const char*>(std::memchr(at_, 0, static_cast<std::size_t>(end_ - at_)));
    if (!stop)
        return truncated();
    text_ = std::string_view(at_, static_cast<std::size_t>(stop - at_));
    at_ = stop + 1;
    return true;
}

template <class T>
bool dxf_scanner::number_value()
{
    constexpr auto SIZE = static_cast<std::ptrdiff_t>(sizeof(T));
    if (end_ - at_ < SIZE)
        return truncated();
    if constexpr (std::is_floating_point_v<T>) {
        real_ = little_endian<T>(at_);
        binary_kind_ = group_kind::real;
    } else {
        integer_ = little_endian<T>(at_);
        binary_kind_ = group_kind::integer;
    }
    at_ += SIZE;
    return true;
}

bool dxf_scanner::next_binary()
{
    if (failed() || !binary_code())
        return false;
    ++pairs_;
    binary_kind_ = group_kind::text;
    switch (code_ <= LAST_CODE ? tables().widths[static_cast<std::size_t>(code_)] : width::unknown) {
    case width::text:
        return text_value();
    case width::chunk: {
        const std::ptrdiff_t size = at_ == end_ ? 1 : static_cast<unsigned char>(*at_) + 1;
        if (end_ - at_ < size)
            return truncated();
        text_ = std::string_view(at_ + 1, static_cast<std::size_t>(size - 1));
        at_ += size;
        binary_kind_ = group_kind::binary;
        return true;
    }
    case width::real:
        return number_value<double>();
    case width::byte:
        return number_value<std::uint8_t>();
    case width::int16:
        return number_value<std::int16_t>();
    case width::int32:
        return number_value<std::int32_t>();
    case width::int64:
        return number_value<std::int64_t>();
    case width::unknown:
        break;
    }
    return fail(place_, std::to_string(code_) + " is no group code of a binary file");
}

bool dxf_scanner::bad_value(const char* wanted)
{
    return fail(value_place(),
                "group " + std::to_string(code_) + ": " + quoted(trimmed(text_)) + " is no " + wanted);
}

bool dxf_scanner::real(double* value)
{
    if (!is_binary_)
        return read_real(text_, value) || bad_value("number");
    *value = binary_kind_ == group_kind::integer ? static_cast<double>(integer_) : real_;
    if (binary_kind_ == group_kind::text || !std::isfinite(*value))
        return fail(place_, "group " + std::to_string(code_) + ": no number");
    return true;
}

bool dxf_scanner::angle(double* radians)
{
    if (!is_binary_)
        return read_angle(text_, radians) || bad_value("number");
    if (!real(radians))
        return false;
    *radians = radians_of(*radians);
    return true;
}

bool dxf_scanner::integer(std::int64_t* value)
{
    if (!is_binary_)
        return read_integer(text_, value) || bad_value("whole number");
    if (binary_kind_ != group_kind::integer)
        return fail(place_, "group " + std::to_string(code_) + ": no whole number");
    *value = integer_;
    return true;
}

bool dxf_scanner::handle(std::uint64_t* value)
{
    return read_handle(text_, value) || bad_value("handle (a hexadecimal number)");
}

bool dxf_scanner::chunk(std::string* bytes) const
{
    if (!is_binary_)
        return read_hex(text_, bytes);
    bytes->assign(text_);
    return true;
}

} // namespace host::db
