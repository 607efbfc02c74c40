// console.h: the command-line history and the stream of answers. Inside text is Windows-1252;
// outside it is UTF-8.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace host
{

// ---- history: what the user sees ---------------------------------------------------------
void history(std::string_view text);
// A line of its own: a line feed first when the history isn't at the start of a line, and one behind.
void history_line(std::string_view text);
bool history_at_line_start();
// Collects the history in place of standard output (tests). Null: standard output again.
void capture_history(std::string* into);
void flush_history();

// ---- answers --------------------------------------------------------------------------------
// Takes answers from a file; false when it can't be read. "-" is standard input.
bool answers_from_file(const std::string& path);
// Takes answers from a text, as from a file (tests).
void answers_from_text(std::string_view utf8);
// Takes answers from a function that asks a person, a line a call; nothing at the end of input.
void answers_from(std::function<std::optional<std::string>()> next);

// The next answer line for a prompt, from text that programs have handed to the command line
// (command_queue.h) as long as there is some, with comments skipped and echoed to the history behind the
// prompt, which the caller has printed; at a terminal it stands there as it was typed. Nothing: the answers
// have run out; the first such prompt is kept for answers_ended_at, and the program is to end as soon as it
// can. A line with text that has no place in Windows-1252 is refused with a message and the next one taken.
std::optional<std::string> next_answer(std::string_view prompt);
// Puts a line back, to be the next answer.
void unread_answer(std::string line);
bool answers_ended();
const std::string& answers_ended_at();

// ---- messages of the program itself, to standard error -----------------------------------------
void complain(std::string_view text);
// Complaints so far; the program's exit status is 1 when a file could not be read or written.
void note_file_failure();
bool file_failed();

} // namespace host
