// plain_host.h: the host's functions that geometry asks for, for programs without a CAD host: heap, printing,
// directions and crossings, LISP variables as a table, break poll, files by paths of this file system. Linked
// in place of a host, never beside it.
#pragma once

namespace host
{

// What acutPrintf prints goes there; null: standard output.
void plain_print_to(void (*print)(const char* text));
// The next break polls answer yes, until plain_break(false). May be called from a signal handler. A break that
// was seen is kept by the library until user_break_clear() (common/user_break.h): work begun before that ends
// at once.
void plain_break(bool wanted);

} // namespace host
