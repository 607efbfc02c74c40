// commands.h: the host's commands by name, and the command line of a run without LISP.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host
{
class document;
}

namespace host::commandline
{

// Runs a command as typed by the user ("_.LINE", "zoom"): built-in, registered by a module, or C:NAME
// in LISP. Its prompts are answered by the stream of answers. Unknown names are told in one line.
void run_typed(document& doc, std::string_view name);
// The loop "Command: " of an interactive session, until QUIT or the end of the answers.
void run_session(document& doc);
// Whether QUIT or END was given.
bool quit_requested();
// To be called when a LISP expression at the top has ended: a command that it has left open is cancelled,
// and drawings that it closed go.
void expression_ended(document& doc);
std::vector<std::string> command_names();

// Drawing files: what OPEN, NEW, QSAVE, SAVEAS and the program's options do.
// False with a message in `error` ("FILE:LINE: ...").
bool open_drawing(document& doc, std::string_view path, std::string* error);
bool save_drawing(document& doc, std::string_view path, std::string* error);
document* new_drawing(std::string* error);

} // namespace host::commandline
