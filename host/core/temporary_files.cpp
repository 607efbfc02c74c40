#include "host/core/temporary_files.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host
{

namespace
{

// Nothing that leads out of the directory.
bool is_name(const std::string& name)
{
    return !name.empty() && name[0] != '.' && name.find('/') == name.npos;
}

bool is_ours(int descriptor)
{
    struct stat state;
    return fstat(descriptor, &state) == 0 && S_ISREG(state.st_mode) && state.st_uid == geteuid();
}

// The files that were made and are still there, each with the process that made it: a child that ends leaves
// its parent's. The list outlives everything: objects that are destroyed at the very end may still remove
// theirs.
using made_list = std::map<std::string, pid_t>;

made_list& made();

void remove_what_is_left()
{
    for (const auto& [path, maker] : made())
        if (maker == getpid())
            unlink(path.c_str());
    made().clear();
}

made_list& made()
{
    static made_list* const list = [] {
        std::atexit(remove_what_is_left);
        return new made_list;
    }();
    return *list;
}

} // namespace

std::string temporary_path(const std::string& name)
{
    std::error_code none;
    const std::filesystem::path directory = std::filesystem::temp_directory_path(none);
    return none ? std::string() : (directory / name).string();
}

std::string new_temporary_name()
{
    for (int tries = 0; tries < 100; tries++) {
        unsigned char bits[10];
        if (getentropy(bits, sizeof bits) != 0)
            return {};
        std::string name = "zent-";
        for (const unsigned char b : bits)
            name += "abcdefghijklmnopqrstuvwxyz234567"[b % 32];
        const std::string path = temporary_path(name);
        struct stat state;
        if (path.empty())
            return {};
        if (lstat(path.c_str(), &state) != 0)
            return errno == ENOENT ? name : std::string();
    }
    return {};
}

int open_temporary(const std::string& name, const char* mode)
{
    int flags = 0;
    if (std::strcmp(mode, "rb") == 0)
        flags = O_RDONLY;
    else if (std::strcmp(mode, "r+b") == 0)
        flags = O_RDWR;
    else if (std::strcmp(mode, "w+b") == 0)
        flags = O_RDWR | O_CREAT | O_EXCL;
    else {
        errno = EINVAL;
        return -1;
    }
    const std::string path = is_name(name) ? temporary_path(name) : std::string();
    if (path.empty()) {
        errno = ENOENT;
        return -1;
    }
    const int descriptor = open(path.c_str(), flags | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600);
    if (descriptor >= 0 && (flags & O_CREAT))
        made()[path] = getpid();
    if (descriptor < 0 || is_ours(descriptor))
        return descriptor;
    close(descriptor);
    errno = EACCES;
    return -1;
}

bool remove_temporary(const std::string& name)
{
    const std::string path = is_name(name) ? temporary_path(name) : std::string();
    if (path.empty() || unlink(path.c_str()) != 0)
        return false;
    made().erase(path);
    return true;
}

} // namespace host
