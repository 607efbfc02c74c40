// hostapi/files.h: files of programs. A file that is being written is a temporary one beside its target;
// file_close puts it in the target's place; only temporary files change in place. Files that nobody closed are
// closed, in the order in which they were opened, when the host ends, as a C library would do it: what was
// written is not lost.
#include "hostapi/files.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/core/console.h"
#include "host/core/mapped_files.h"
#include "host/core/session.h"
#include "host/core/temporary_files.h"
#include "host/files/paths.h"
#include "host/files/replacement.h"

struct host_file {
    std::FILE* stream = nullptr;
    host::replacement target; // of files being written
    bool writing = false;
    bool in_place = false; // a temporary file
    bool appending = false;
    bool binary = false;
    bool failed = false;      // a write that did not go through
    bool last_was_cr = false; // of file_puts
    enum { neither, reading_now, writing_now } last = neither;
};

namespace
{

struct open_mode {
    char kind = 0; // r, w, a
    bool plus = false, binary = false;
};

bool parse_mode(const char* text, open_mode* mode)
{
    if (!text || !std::strchr("rwa", text[0]) || text[0] == '\0')
        return false;
    mode->kind = text[0];
    for (const char* c = text + 1; *c; c++) {
        if (*c == '+')
            mode->plus = true;
        else if (*c == 'b')
            mode->binary = true;
        else if (*c != 't')
            return false;
    }
    return true;
}

using open_list = std::vector<host_file*>;

// The files that are open. The list outlives everything: objects that are destroyed at the very end may
// still close their files.
open_list& all_open();

void close_what_is_left()
{
    while (!all_open().empty()) {
        host_file* file = all_open().front();
        const std::string path = file->target.target;
        if (file_close(file) != 0)
            host::complain(host::program_path(path) + ": can't be written");
    }
}

open_list& all_open()
{
    static open_list* const list = [] {
        std::atexit(close_what_is_left);
        return new open_list;
    }();
    return *list;
}

// Standard C wants a positioning call between reading and writing of one stream.
void turn_to(host_file* file, decltype(host_file::last) what)
{
    if (file->last != what && file->last != host_file::neither)
        std::fseek(file->stream, 0, SEEK_CUR);
    if (what == host_file::writing_now && file->appending)
        std::fseek(file->stream, 0, SEEK_END);
    file->last = what;
}

bool open_for_reading(host_file* file, const std::string& path)
{
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    struct stat state;
    if (fstat(descriptor, &state) == 0 && !S_ISDIR(state.st_mode))
        file->stream = fdopen(descriptor, "rb");
    if (!file->stream)
        close(descriptor);
    return file->stream != nullptr;
}

bool open_for_writing(host_file* file, const std::string& path, const open_mode& mode)
{
    if (mode.kind == 'r' && access(path.c_str(), F_OK) != 0)
        return false; // "r+" makes no file
    const int descriptor = host::begin_replacement(path, &file->target);
    if (descriptor < 0)
        return false;
    file->writing = true;
    const bool kept = mode.kind == 'w' || host::copy_target(file->target, descriptor);
    const bool in_place = file->target.temporary.empty();
    if (kept && (in_place || lseek(descriptor, 0, mode.kind == 'a' ? SEEK_END : SEEK_SET) >= 0))
        file->stream = fdopen(descriptor, in_place ? "wb" : "r+b");
    if (file->stream)
        return true;
    const int error = errno;
    host::drop_replacement(file->target, descriptor);
    errno = error;
    return false;
}

std::size_t write_bytes(host_file* file, const void* bytes, std::size_t size)
{
    if (!file->writing)
        return 0;
    turn_to(file, host_file::writing_now);
    const std::size_t written = std::fwrite(bytes, 1, size, file->stream);
    if (written != size)
        file->failed = true;
    return written;
}

// With line feeds as the user wants them. One that follows a carriage return is complete already.
std::string with_line_ends(host_file* file, std::string_view text)
{
    std::string out;
    for (const char c : text) {
        if (c == '\n' && !file->last_was_cr)
            out += '\r';
        out += c;
        file->last_was_cr = c == '\r';
    }
    return out;
}

int put_text(host_file* file, std::string_view text)
{
    if (!file->binary && host::run_settings().crlf) {
        const std::string lines = with_line_ends(file, text);
        return write_bytes(file, lines.data(), lines.size()) == lines.size() ? 0 : -1;
    }
    return write_bytes(file, text.data(), text.size()) == text.size() ? 0 : -1;
}

} // namespace

extern "C" {

host_file* file_open(const char* path, const char* mode)
{
    open_mode wanted;
    if (!path || !*path || !parse_mode(mode, &wanted)) {
        errno = EINVAL;
        return nullptr;
    }
    auto file = std::make_unique<host_file>();
    file->binary = wanted.binary;
    file->appending = wanted.kind == 'a';
    const std::string real = host::file_path(path);
    const bool opened = wanted.kind == 'r' && !wanted.plus ? open_for_reading(file.get(), real)
                                                           : open_for_writing(file.get(), real, wanted);
    if (!opened)
        return nullptr;
    all_open().push_back(file.get());
    return file.release();
}

int file_temp_name(char* name, std::size_t size)
{
    const std::string made = host::new_temporary_name();
    if (made.empty() || !name || made.size() >= size)
        return -1;
    std::memcpy(name, made.c_str(), made.size() + 1);
    return 0;
}

host_file* file_open_temp(const char* name, const char* mode)
{
    const int descriptor = name && mode ? host::open_temporary(name, mode) : -1;
    if (descriptor < 0)
        return nullptr;
    auto file = std::make_unique<host_file>();
    file->target.target = host::temporary_path(name);
    file->binary = file->in_place = true;
    file->writing = std::strcmp(mode, "rb") != 0;
    file->stream = fdopen(descriptor, file->writing ? "r+b" : "rb");
    if (!file->stream) {
        close(descriptor);
        return nullptr;
    }
    all_open().push_back(file.get());
    return file.release();
}

void* file_map_temp(const char* name, std::size_t size)
{
    return name ? host::map_temporary(name, size) : nullptr;
}

int file_unmap_temp(void* bytes)
{
    return host::unmap_temporary(bytes) ? 0 : -1;
}

int file_remove_temp(const char* name)
{
    return name && host::remove_temporary(name) ? 0 : -1;
}

int file_close(host_file* file)
{
    open_list& files = all_open();
    const auto at = std::find(files.begin(), files.end(), file);
    if (!file || at == files.end())
        return EOF; // closed before, or never a file
    files.erase(at);
    const std::unique_ptr<host_file> closing(file);
    if (!file->writing || file->in_place)
        return std::fclose(file->stream) == 0 && !file->failed ? 0 : EOF;
    const bool written = std::fflush(file->stream) == 0 && !file->failed;
    const int descriptor = dup(fileno(file->stream));
    const bool closed = std::fclose(file->stream) == 0;
    if (descriptor >= 0 && written && closed)
        return host::commit_replacement(file->target, descriptor, {}) ? 0 : EOF;
    host::drop_replacement(file->target, descriptor);
    return EOF;
}

void file_give_up(host_file* file)
{
    const open_list& files = all_open();
    if (std::find(files.begin(), files.end(), file) == files.end())
        return;
    file->failed = true;
    file_close(file);
}

char* file_gets(char* buffer, int size, host_file* file)
{
    if (!buffer || !file || size <= 0)
        return nullptr;
    turn_to(file, host_file::reading_now);
    int length = 0;
    while (length < size - 1) {
        int c = getc_unlocked(file->stream);
        if (c == EOF)
            break;
        if (c == '\r') {
            const int next = getc_unlocked(file->stream);
            if (next != '\n' && next != EOF)
                std::ungetc(next, file->stream);
            c = '\n';
        }
        buffer[length++] = static_cast<char>(c);
        if (c == '\n')
            break;
    }
    // Room for the terminator only is no end of the file.
    if (length == 0 && size > 1)
        return nullptr;
    buffer[length] = '\0';
    return buffer;
}

int file_puts(const char* text, host_file* file)
{
    if (!text || !file)
        return -1;
    return put_text(file, text);
}

int file_printf(host_file* file, const char* format, ...)
{
    if (!file || !format)
        return -1;
    va_list arguments, again;
    va_start(arguments, format);
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::string text(length < 0 ? 0 : static_cast<std::size_t>(length) + 1, '\0');
    if (length >= 0) {
        std::vsnprintf(text.data(), text.size(), format, again);
        text.pop_back();
    }
    va_end(again);
    return length < 0 || put_text(file, text) < 0 ? -1 : length;
}

std::size_t file_read(void* buffer, std::size_t size, host_file* file)
{
    if (!buffer || !file)
        return 0;
    turn_to(file, host_file::reading_now);
    return std::fread(buffer, 1, size, file->stream);
}

std::size_t file_write(const void* buffer, std::size_t size, host_file* file)
{
    if (!buffer || !file)
        return 0;
    return write_bytes(file, buffer, size);
}

int file_seek(host_file* file, long offset, int whence)
{
    if (!file)
        return -1;
    file->last = host_file::neither;
    return std::fseek(file->stream, offset, whence);
}

long file_tell(host_file* file)
{
    return file ? std::ftell(file->stream) : -1;
}
}
