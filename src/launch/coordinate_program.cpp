// The program is of the days of short file names: it takes its directories from fixed lines of config.pik
// and must be started from the directory in which that file lies, which a batch file sees to.
#include "launch/coordinate_program.h"

#include <cstring>
#include <iterator>
#include <string>

#include "common/arguments.h"
#include "common/directories.h"
#include "common/paths.h"
#include "hostapi/ads.h"
#include "hostapi/files.h"
#include "hostapi/windows.h"
#include "settings/settings_file.h"

namespace
{

constexpr int LINE_SIZE = 122; // 121 characters and a terminator
constexpr std::size_t LONGEST_NAME = 8;
constexpr std::size_t PATH_SIZE = 512;

constexpr int FIRST_CHANGED_LINE = 3, LAST_CHANGED_LINE = 7;

// Lines 1 to 31 of a file that lacks them; 3 to 7 are written in any case. What they mean is the legacy
// program's affair.
constexpr const char* DEFAULT_LINES[] = {
    "IBME", "HPLJ", "",       "",   "",   "",  "",  "1",      "1/Y",      "6",   "20",
    "33",   "10",   "13",     "23", "23", "N", "N", "1/9600", "FZ",       "ABC", "80C",
    "Y",    "BR",   "1/9600", "15", "1",  "1", "0", "5",      "YNNYYNNN",
};
constexpr int LINE_COUNT = static_cast<int>(std::size(DEFAULT_LINES));
static_assert(LINE_COUNT == 31);

struct place {
    std::string drive; // with its colon
    std::string directory;
};

struct job {
    place data, program;
    std::string text; // line 7
};

std::string directory_of(const char* path)
{
    char directory[PATH_SIZE];
    path_directory(path, directory);
    return directory;
}

place split_directory(const std::string& directory)
{
    const std::size_t colon = directory.find(':');
    if (colon == std::string::npos)
        return {"C:", directory};
    return {directory.substr(0, colon + 1), directory.substr(colon + 1)};
}

// Without directory and extension.
std::string base_name(const char* path)
{
    char name[PATH_SIZE];
    path_file_name(path, name);
    const std::string whole = name;
    return whole.substr(0, whole.find('.'));
}

const std::string& changed_line(const job& work, int number)
{
    const std::string* lines[] = {&work.data.drive, &work.data.directory, &work.program.drive,
                                  &work.program.directory, &work.text};
    return *lines[number - FIRST_CHANGED_LINE];
}

bool is_changed(int number)
{
    return number >= FIRST_CHANGED_LINE && number <= LAST_CHANGED_LINE;
}

// `in` may be null: an empty file.
void write_base(host_file* in, host_file* out, const job& work)
{
    int number = 1;
    bool line_is_open = false;
    char line[LINE_SIZE];
    for (; number <= LINE_COUNT && in && file_gets(line, sizeof line, in); ++number) {
        line_is_open = !is_changed(number) && !std::strchr(line, '\n');
        if (is_changed(number))
            file_printf(out, "%s\n", changed_line(work, number).c_str());
        else
            file_puts(line, out);
    }
    // An old file without a line feed at its end must not swallow the line behind it.
    if (line_is_open)
        file_puts("\n", out);
    for (; number <= LINE_COUNT; ++number)
        file_printf(out, "%s\n",
                    is_changed(number) ? changed_line(work, number).c_str() : DEFAULT_LINES[number - 1]);
}

bool tell_unwritten(const std::string& path)
{
    acutPrintf("Error: unable to write %s\n", path.c_str());
    return false;
}

// Closes a file that was written; false, with a message, when the disk hasn't all of it.
bool is_whole(host_file* file, const std::string& path)
{
    return file_close(file) == 0 || tell_unwritten(path);
}

// Makes config.pik anew. False, with a message, when it or its working copy can't be kept whole: then it is as
// it was.
bool write_config(const job& work, const std::string& name)
{
    const std::string config = std::string(data_dir) + "config.pik";
    const std::string scratch = std::string(data_dir) + "temp1.txt";
    host_file* in = file_open(config.c_str(), "r");
    host_file* copy = file_open(scratch.c_str(), "w");
    if (copy)
        write_base(in, copy, work);
    if (in)
        file_close(in);
    if (copy && !is_whole(copy, scratch))
        return false;

    host_file* out = file_open(config.c_str(), "w");
    if (!out)
        return true;
    // Known behaviour: without a working copy the file is its tail alone.
    if (copy)
        append_lines(scratch.c_str(), out);
    file_printf(out, "\\\n-1\n%s\n\n\n\n", name.c_str());
    return is_whole(out, config);
}

bool can_be_read(const std::string& path)
{
    host_file* file = file_open(path.c_str(), "r");
    if (file)
        file_close(file);
    return file != nullptr;
}

// False, with a message, when it isn't whole on disk.
bool write_batch_file(const std::string& path, const std::string& program)
{
    host_file* out = file_open(path.c_str(), "w");
    if (!out)
        return tell_unwritten(path);
    const std::string directory = data_dir;
    const std::size_t colon = directory.find(':');
    if (colon != std::string::npos)
        file_printf(out, "%s\n", directory.substr(0, colon + 1).c_str());
    const std::size_t length = directory.empty() ? 0 : directory.size() - 1;
    file_printf(out, "cd %s\n%s\n", directory.substr(0, length).c_str(), program.c_str());
    return is_whole(out, path);
}

} // namespace

void coordinate_program_launch(const resbuf* first_node)
{
    const std::string program_directory = next_text(&first_node, "");
    const std::string data_file = next_text(&first_node, "");
    const job work{split_directory(directory_of(data_file.c_str())),
                   split_directory(directory_of(program_directory.c_str())), next_text(&first_node, "")};
    const std::string name = base_name(data_file.c_str());
    if (!write_config(work, name))
        return;
    if (name.size() > LONGEST_NAME) {
        const std::string message =
            "ZentCOGO does not handle long file names.\n" + name + " must be renamed to 8 characters or less.";
        acedAlert(message.c_str());
        return;
    }
    const std::string program = program_directory + "ZENT11.EXE";
    if (!can_be_read(program)) {
        acedAlert("ZENTCOGO not installed.");
        return;
    }
    const std::string batch = std::string(data_dir) + "ZTCOGO.BAT";
    // With an older configuration or batch file the program would work on another job.
    if (write_batch_file(batch, program))
        host_system(batch.c_str());
}
