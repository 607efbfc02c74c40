// associations.h: programs that the registry names for kinds of files.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/files/command_line.h"

namespace host
{

// Below a class: the key whose default value is its open command.
constexpr const char* OPEN_COMMAND_KEY = "\\shell\\open\\command";

// The open command of the file type `type` (".pdf"): that of the class which the type names, its environment
// variables expanded; empty when there is none. Windows-1252, as the functions below take text.
std::string open_command(std::string_view type);

// What opens `document`, a path of any form, by the open command of its type: the program gets the path of this
// file system, in place of the first %1 or behind the other words. Nothing when there is no such program.
std::optional<program_to_start> program_for_document(const std::string& document);

// Programs put a document's path, as they hold it, into an open command that they have read from the registry.
// A line that is such a command with a file that exists is known here, and its program gets the path of this
// file system. Nothing for any other line.
std::optional<program_to_start> program_for_opening(std::string_view line);

// Starts what opens `document` and doesn't wait. False when there is nothing, or when it can't be started.
bool show_document(const std::string& document);

// ---- batch files, which no program of this system runs by itself

struct batch_call {
    std::string file;      // as it is named
    std::string arguments; // behind it, as they stand
};
// Whether `line` runs a batch file: its first word names one, in quotes or not; or it is, or begins with, the
// name of one that exists, blanks and all; or it is a name with a root that ends as a batch file's does.
std::optional<batch_call> batch_of(std::string_view line);
// The program that the user has set for them in the registry, with the file and its arguments. Nothing, with a
// message, when the file isn't there or no program is set.
std::optional<program_to_start> program_for_batch(const batch_call& batch);

} // namespace host
