// command_queue.h: text that programs hand to the command line. It counts as typed, character for character:
// a line feed ends an input, and so does a blank outside of parentheses and quotation marks. Escape and
// Ctrl-C drop what has been typed of an input and are one themselves, "^C". Text is Windows-1252.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host
{

// Takes text for the time when the expression at hand has ended.
void queue_command_text(std::string_view text);

// ---- for the command line
// To be called when an expression or command at the top has ended: what is queued may be read from here on,
// as a command or as an answer to a prompt. What is queued later waits for the next call.
void release_command_text();
// The next whole input of what was released. Nothing: none is left, or the last one has no end yet; that one
// is completed by the text queued next.
std::optional<std::string> take_command_input();
// What is left without an end, to be completed by a user's typing.
std::string take_unfinished_input();
void clear_command_text();

} // namespace host
