// programs.h: other programs of this machine. Text is UTF-8 here, but for names as programs write them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace host
{

// False, with a message, when this run may not start other programs. `what`: Windows-1252.
bool may_start_programs(std::string_view what);

// The file of a program. A name with a separator or a drive is a path of any form; any other is looked for in
// the directories of PATH. A name that ends in .exe is also found without that, one in capitals also in small
// letters.
std::optional<std::string> find_program(std::string_view name);

// Starts `file` with the words, the first of which is its name to itself. No shell has a part in it. It reads
// nothing unless standard input is a terminal: answers that wait there are the host's. Runs in `directory` if
// that isn't empty. 0 with errno set when it can't be started.
pid_t start_program(const std::string& file, const std::vector<std::string>& words,
                    const std::string& directory = {});

// How a program ended: its status or, as a shell tells it, 128 and the number of the signal that ended it.
// Nothing while it runs.
std::optional<int> ended_with(pid_t program);
int wait_for_end(pid_t program);
// Nobody asks after it any more; its end is still taken note of, as the system wants it.
void leave_program(pid_t program);

} // namespace host
