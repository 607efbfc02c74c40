// Touching a page that the file has lost raises SIGBUS. While maps are there, its handler lays zeros over the
// whole map that was touched and marks it as lost; any other SIGBUS goes where it went before.
#include "host/core/mapped_files.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/core/temporary_files.h"

namespace host
{

namespace
{

constexpr std::size_t MOST_AT_ONCE = std::size_t{1} << 30; // larger maps are brought in as they are touched

// What the handler sees. It may come at any time, but only from a touch of `first`, which was set before.
struct mapped_file {
    char* volatile first;
    volatile std::size_t size;
    volatile std::sig_atomic_t lost;
    int descriptor;
};
mapped_file maps[4];
int map_count = 0;
struct sigaction action_before;

mapped_file* map_at(const void* address)
{
    for (mapped_file& map : maps)
        if (map.first && address >= map.first && address < map.first + map.size)
            return &map;
    return nullptr;
}

bool lay_zeros(const mapped_file& map)
{
    return mmap(map.first, map.size, PROT_READ | PROT_WRITE,
                MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED | MAP_NORESERVE, -1, 0) == map.first;
}

void on_bus_error(int signal, siginfo_t* info, void* /*context*/)
{
    const int error = errno;
    const bool sent = info->si_code <= 0; // by a process, not by a touch
    mapped_file* const map = sent ? nullptr : map_at(info->si_addr);
    if (map && lay_zeros(*map)) {
        map->lost = 1;
    } else {
        sigaction(SIGBUS, &action_before, nullptr); // a touch is repeated on return, and gets this then
        if (sent)
            raise(signal);
    }
    errno = error;
}

bool guard()
{
    struct sigaction action = {};
    action.sa_sigaction = on_bus_error;
    action.sa_flags = SA_SIGINFO;
    sigemptyset(&action.sa_mask);
    return map_count > 0 || sigaction(SIGBUS, &action, &action_before) == 0;
}

void unguard()
{
    if (map_count == 0)
        sigaction(SIGBUS, &action_before, nullptr);
}

bool has_bytes(int descriptor, std::size_t size)
{
    struct stat state;
    return fstat(descriptor, &state) == 0 && state.st_nlink > 0 &&
           static_cast<std::size_t>(state.st_size) >= size;
}

// All pages at once cost a fraction of each at its first touch. A system too old for that brings them in later.
bool bring_in(void* bytes, std::size_t size)
{
#ifdef MADV_POPULATE_WRITE
    return size > MOST_AT_ONCE || madvise(bytes, size, MADV_POPULATE_WRITE) == 0 || errno == EINVAL;
#else
    return true;
#endif
}

// Holes get their place on the disk first: later nobody could be told that it is full.
void* map_bytes(int descriptor, std::size_t size)
{
    if (!has_bytes(descriptor, size) || fallocate(descriptor, 0, 0, static_cast<off_t>(size)) != 0)
        return nullptr;
    void* const bytes = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    if (bytes == MAP_FAILED)
        return nullptr;
    if (bring_in(bytes, size))
        return bytes;
    munmap(bytes, size);
    return nullptr;
}

} // namespace

void* map_temporary(const std::string& name, std::size_t size)
{
    mapped_file* free_place = nullptr;
    for (mapped_file& map : maps)
        if (!map.first)
            free_place = &map;
    if (!free_place || size == 0)
        return nullptr;
    const int descriptor = open_temporary(name, "r+b");
    if (descriptor < 0)
        return nullptr;
    void* const bytes = map_bytes(descriptor, size);
    if (!bytes || !guard()) {
        if (bytes)
            munmap(bytes, size);
        close(descriptor);
        return nullptr;
    }
    free_place->size = size;
    free_place->lost = 0;
    free_place->descriptor = descriptor;
    free_place->first = static_cast<char*>(bytes);
    ++map_count;
    return bytes;
}

bool unmap_temporary(void* bytes)
{
    mapped_file* const map = map_at(bytes);
    if (!map || map->first != bytes)
        return false;
    const bool whole = !map->lost && has_bytes(map->descriptor, map->size);
    map->first = nullptr;
    --map_count;
    munmap(bytes, map->size);
    unguard();
    return close(map->descriptor) == 0 && whole;
}

} // namespace host
