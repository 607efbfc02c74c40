// dxf_scan.h: a DXF file as pairs of group code and value, ASCII or binary.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/database/database.h"

namespace host::db
{

// kind_of_code by table; codes that mean nothing are `integer` as there.
group_kind dxf_kind(int code);
// Whether any version of the format uses the code.
bool dxf_knows(int code);

class dxf_scanner
{
public:
    // `bytes` outlives the scanner.
    explicit dxf_scanner(std::string_view bytes) : begin_(bytes.data()), at_(begin_), end_(at_ + bytes.size())
    {
    }

    // Looks at the first bytes. False when this can't be a DXF file.
    bool open();
    // The next pair. False at the end of the data and after an error.
    bool next();

    int code() const { return code_; }
    // ASCII: the line; binary: the bytes of a text or chunk.
    std::string_view text() const { return text_; }
    bool is_binary() const { return is_binary_; }

    // The value, taken as a kind; an error when it isn't of that kind.
    bool real(double* value);
    bool angle(double* radians);
    bool integer(std::int64_t* value);
    bool handle(std::uint64_t* value);
    // Bytes of a chunk; false, with no error, when the text isn't one.
    bool chunk(std::string* bytes) const;

    // ---- places, for messages: the line, in binary files the byte
    long place() const { return is_binary_ ? place_ : 2 * pairs_ - 1; } // of the group code
    long value_place() const { return is_binary_ ? place_ : 2 * pairs_; }

    bool failed() const { return !message_.empty(); }
    bool fail(long where, std::string message); // always false; the first error stays
    const std::string& message() const { return message_; }
    long failed_at() const { return failed_at_; }

private:
    bool next_ascii();
    bool next_binary();
    bool bad_code();
    bool bad_value(const char* wanted);
    bool text_value();
    template <class T>
    bool number_value();
    bool binary_code();
    bool truncated();

    const char *begin_, *at_, *end_;
    std::string_view text_;
    int code_ = -1;
    char line_end_ = '\n';
    bool is_binary_ = false;
    bool wide_codes_ = false; // binary: two bytes a code
    group_kind binary_kind_ = group_kind::text;
    double real_ = 0.0; // binary
    std::int64_t integer_ = 0;
    long place_ = 0, pairs_ = 0;
    std::string message_;
    long failed_at_ = 0;
};

// A value as it stands in a message: quoted, short, printable.
std::string quoted(std::string_view value);

} // namespace host::db
