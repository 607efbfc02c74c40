// reader.h: text to forms. Bytes above 127 go through as they are, in strings, symbols and comments.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/lisp/value.h"

namespace host::lisp
{

class interpreter;

class reader
{
public:
    // `name` stands in messages before the line; the text must stay while the reader is used.
    reader(interpreter& l, std::string_view text, std::string name);

    // The next form; false at the end of the text. Throws lisp_error with the place: an unclosed list
    // or string is told where it begins, all else where it stands.
    bool next(value* form);
    std::uint32_t line() const { return form_line_; } // on which the last form began

private:
    [[noreturn]] void fault(const char* message, std::uint32_t line);
    void skip_blanks();
    void skip_block_comment();
    value form();
    value list();
    value quoted();
    value string();
    value token();
    char escape(std::string* out);
    bool at_end() const { return at_ >= text_.size(); }
    bool alone_dot() const;

    interpreter& l_;
    std::string_view text_;
    std::string name_;
    std::size_t at_ = 0;
    std::uint32_t line_ = 1, form_line_ = 1;
};

// An integer or real when the whole text is one, else unset.
value number_of_text(std::string_view text);

} // namespace host::lisp
