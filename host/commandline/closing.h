// closing.h: what waits for the end of the expression at hand.
#pragma once

namespace host::commandline
{

// Closes the drawings that CLOSE was given for while one of their expressions ran.
void close_waiting_drawings();
// Whether the session is to end (tests begin with false).
void request_quit(bool on);

} // namespace host::commandline
