// closing.h: the end of the session.
#pragma once

namespace host::commandline
{

// Whether the session is to end (tests begin with false).
void request_quit(bool on);

} // namespace host::commandline
