#include "host/files/programs.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/core/console.h"
#include "host/core/session.h"
#include "host/core/text.h"
#include "host/files/names.h"
#include "host/files/paths.h"

extern char** environ;

namespace host
{

namespace
{

bool is_program(const std::string& file)
{
    struct stat state;
    return stat(file.c_str(), &state) == 0 && S_ISREG(state.st_mode) && access(file.c_str(), X_OK) == 0;
}

std::vector<std::string> spellings(std::string_view name)
{
    std::vector<std::string> out{std::string(name)};
    if (same_text(extension_of(name), ".exe"))
        out.emplace_back(name.substr(0, name.size() - 4));
    for (std::size_t i = 0, count = out.size(); i < count; i++)
        if (lower(out[i]) != out[i])
            out.push_back(lower(out[i]));
    return out;
}

// The directories of PATH; an empty one, which stands for the current directory, is left out: a file that lies
// beside a drawing is not to be started for the sake of its name.
std::vector<std::string> search_path()
{
    const char* path = std::getenv("PATH");
    std::string_view rest = path ? path : "/usr/local/bin:/usr/bin:/bin";
    std::vector<std::string> out;
    while (!rest.empty()) {
        const std::string_view directory = rest.substr(0, rest.find(':'));
        rest.remove_prefix(std::min(rest.size(), directory.size() + 1));
        if (!directory.empty())
            out.emplace_back(directory);
    }
    return out;
}

int status_of(int raw)
{
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
}

} // namespace

bool may_start_programs(std::string_view what)
{
    if (!run_settings().no_shell)
        return true;
    complain("other programs may not be started in this run: " + std::string(what));
    return false;
}

std::optional<std::string> find_program(std::string_view name)
{
    if (name.empty())
        return std::nullopt;
    const bool is_path = last_separator(name) != std::string_view::npos;
    for (const std::string& spelling : spellings(name)) {
        if (is_path) {
            const auto found = existing_path(spelling);
            if (found && is_program(*found))
                return absolute_path(*found);
            continue;
        }
        for (const std::string& directory : search_path()) {
            std::string file = directory + "/" + utf8_of(spelling);
            if (is_program(file))
                return absolute_path(file);
        }
    }
    return std::nullopt;
}

pid_t start_program(const std::string& file, const std::vector<std::string>& words,
                    const std::string& directory)
{
    flush_history();
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (!isatty(STDIN_FILENO))
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    if (!directory.empty())
        posix_spawn_file_actions_addchdir_np(&actions, directory.c_str());
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    pid_t program = 0;
    const int failure = posix_spawn(&program, file.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    errno = failure;
    return failure == 0 ? program : 0;
}

std::optional<int> ended_with(pid_t program)
{
    int raw = 0;
    const pid_t ended = waitpid(program, &raw, WNOHANG);
    if (ended == 0 || (ended < 0 && errno == EINTR))
        return std::nullopt;
    return ended < 0 ? -1 : status_of(raw);
}

int wait_for_end(pid_t program)
{
    int raw = 0;
    while (waitpid(program, &raw, 0) < 0)
        if (errno != EINTR)
            return -1;
    return status_of(raw);
}

void leave_program(pid_t program)
{
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before); // signals are for the main thread
    try {
        std::thread([program] { wait_for_end(program); }).detach();
    } catch (const std::system_error&) {
        // No thread to be had: its end is taken note of when the host itself ends.
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

} // namespace host
