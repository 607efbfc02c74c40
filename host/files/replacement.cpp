#include "host/files/replacement.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/files/paths.h"

namespace host
{

namespace
{

// The file behind symbolic links, one that isn't there yet included.
std::string behind_links(std::string path)
{
    for (int hops = 0; hops < 40; hops++) {
        struct stat state;
        if (lstat(path.c_str(), &state) != 0 || !S_ISLNK(state.st_mode))
            return path;
        char link[4096];
        const ssize_t length = readlink(path.c_str(), link, sizeof link);
        if (length <= 0)
            return path;
        const std::string next(link, static_cast<std::size_t>(length));
        path = next[0] == '/' ? next : directory_of(path) + next;
    }
    return path;
}

bool write_all(int descriptor, const char* bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t written = write(descriptor, bytes, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool copy_bytes(int from, int to)
{
    char block[65536];
    for (;;) {
        const ssize_t got = read(from, block, sizeof block);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return got == 0;
        if (!write_all(to, block, static_cast<std::size_t>(got)))
            return false;
    }
}

void flush_directory(const std::string& path)
{
    const std::string directory = directory_of(path);
    const int descriptor =
        open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor); // best effort: not every file system can do it
    close(descriptor);
}

// A new file beside `target`, with a name that no other has.
int make_beside(const std::string& target, mode_t mode, std::string* name)
{
    static unsigned count = 0;
    for (int tries = 0; tries < 100; tries++) {
        *name = directory_of(target) + ".zentrik-" + std::to_string(getpid()) + "-" + std::to_string(++count);
        const int descriptor = open(name->c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (descriptor >= 0 || errno != EEXIST)
            return descriptor;
    }
    return -1;
}

// The backup appears whole too: a second name of the file, or a copy where there are no second names.
bool keep_backup(const std::string& target, const std::string& backup)
{
    struct stat state;
    if (stat(target.c_str(), &state) != 0)
        return true;
    std::string beside;
    int copy = make_beside(backup, state.st_mode & 07777, &beside);
    if (copy < 0)
        return false;
    unlink(beside.c_str());
    close(copy);
    bool done = link(target.c_str(), beside.c_str()) == 0;
    if (!done) {
        const int from = open(target.c_str(), O_RDONLY | O_CLOEXEC);
        copy = make_beside(backup, state.st_mode & 07777, &beside);
        done = from >= 0 && copy >= 0 && copy_bytes(from, copy) && fsync(copy) == 0;
        if (from >= 0)
            close(from);
        if (copy >= 0)
            close(copy);
    }
    if (done && rename(beside.c_str(), backup.c_str()) == 0) {
        unlink(beside.c_str()); // left behind when both were names of one file already
        return true;
    }
    const int error = errno;
    unlink(beside.c_str());
    errno = error;
    return false;
}

} // namespace

int begin_replacement(const std::string& path, replacement* out)
{
    out->target = behind_links(path);
    out->temporary.clear();
    struct stat state;
    const bool there = stat(out->target.c_str(), &state) == 0;
    if (there && S_ISDIR(state.st_mode)) {
        errno = EISDIR;
        return -1;
    }
    if (there && !S_ISREG(state.st_mode))
        return open(out->target.c_str(), O_RDWR | O_APPEND | O_CLOEXEC);
    // The rename asks for no right on the old file: a file that is write-protected is to stay so.
    if (there && faccessat(AT_FDCWD, out->target.c_str(), W_OK, AT_EACCESS) != 0)
        return -1;
    const int descriptor = make_beside(out->target, 0666, &out->temporary);
    if (descriptor < 0 || !there)
        return descriptor;
    if (state.st_uid != geteuid() || state.st_gid != getegid())
        if (fchown(descriptor, state.st_uid, state.st_gid) != 0)
            errno = 0; // another's file becomes ours, as with any editor that replaces
    if (fchmod(descriptor, state.st_mode & 07777) == 0)
        return descriptor;
    const int error = errno;
    drop_replacement(*out, descriptor);
    errno = error;
    return -1;
}

bool commit_replacement(const replacement& what, int descriptor, const std::string& backup)
{
    if (what.temporary.empty())
        return close(descriptor) == 0;
    const bool flushed = fsync(descriptor) == 0;
    const int error = errno;
    const bool closed = close(descriptor) == 0;
    if (flushed && closed && (backup.empty() || keep_backup(what.target, backup)) &&
        rename(what.temporary.c_str(), what.target.c_str()) == 0) {
        flush_directory(what.target);
        return true;
    }
    const int reason = flushed ? errno : error;
    unlink(what.temporary.c_str());
    errno = reason;
    return false;
}

void drop_replacement(const replacement& what, int descriptor)
{
    close(descriptor);
    if (!what.temporary.empty())
        unlink(what.temporary.c_str());
}

bool copy_target(const replacement& what, int descriptor)
{
    if (what.temporary.empty())
        return true;
    const int from = open(what.target.c_str(), O_RDONLY | O_CLOEXEC);
    if (from < 0)
        return errno == ENOENT;
    const bool done = copy_bytes(from, descriptor);
    const int error = errno;
    close(from);
    errno = error;
    return done;
}

std::optional<std::string> read_whole(const std::string& path)
{
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return std::nullopt;
    struct stat state;
    std::string out;
    if (fstat(descriptor, &state) == 0 && S_ISREG(state.st_mode))
        out.reserve(static_cast<std::size_t>(state.st_size) + 1);
    char block[65536];
    ssize_t got = 0;
    while ((got = read(descriptor, block, sizeof block)) > 0 || (got < 0 && errno == EINTR))
        if (got > 0)
            out.append(block, static_cast<std::size_t>(got));
    const int error = errno;
    close(descriptor);
    if (got == 0)
        return out;
    errno = error;
    return std::nullopt;
}

bool replace_file(const std::string& path, std::string_view bytes, const std::string& backup,
                  std::string* error)
{
    replacement what;
    bool done = false;
    const int descriptor = begin_replacement(path, &what);
    if (descriptor >= 0) {
        if (write_all(descriptor, bytes.data(), bytes.size())) {
            done = commit_replacement(what, descriptor, backup);
        } else {
            const int reason = errno;
            drop_replacement(what, descriptor);
            errno = reason;
        }
    }
    if (!done && error)
        *error = std::strerror(errno);
    return done;
}

} // namespace host
