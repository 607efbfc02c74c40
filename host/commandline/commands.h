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
// To be called when a LISP expression at the top has ended: commands that it has left open are cancelled,
// and drawings that it closed go.
void expression_ended();
// Runs what programs have handed to the command line (host/core/command_queue.h), as if typed: to be called
// when an expression or command at the top has ended. False: an error of LISP that nothing caught.
bool run_command_text();
// A command given in front of an answer, as 'NAME: runs it if it is transparent and tells that it may not
// run if it isn't. False: there is no such command.
bool run_transparent(document& doc, std::string_view typed);
std::vector<std::string> command_names();

// A drawing's contents from and to a file, for the program's options; no reactor hears of it.
// False with a message in `error` ("FILE:LINE: ...").
bool open_drawing(document& doc, std::string_view path, std::string* error);
bool save_drawing(document& doc, std::string_view path, std::string* error);

} // namespace host::commandline
