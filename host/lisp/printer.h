// printer.h: values as text.
#pragma once

#include <string>

#include "host/lisp/value.h"

namespace host::lisp
{

// As prin1 prints: strings in quotes with escapes.
std::string prin1_text(const value& v);
// As princ prints: strings as they are.
std::string princ_text(const value& v);
// As prin1, cut behind about `limit` characters with "..." in place of the rest.
std::string short_text(const value& v, std::size_t limit);

} // namespace host::lisp
