#include "launch/programs.h"

#include <cstring>
#include <string>

#include "hostapi/ads.h"
#include "hostapi/processes.h"

namespace
{

constexpr DWORD LONGEST_CLASS_NAME = 100; // bytes
constexpr DWORD LONGEST_COMMAND = 255;    // bytes, environment variables filled in
constexpr DWORD COMMAND_ROOM = 512;       // for the command as the registry has it
constexpr DWORD INPUT_WAIT_MS = 15000;
constexpr DWORD END_POLL_MS = 250;

// What CreateProcessA answers. The handles of a program that has started are the caller's.
int start(std::string command_line, PROCESS_INFORMATION* process)
{
    const STARTUPINFO startup{};
    return CreateProcessA(nullptr, command_line.data(), nullptr, nullptr, 0, NORMAL_PRIORITY_CLASS, nullptr,
                          nullptr, &startup, process);
}

void let_go(const PROCESS_INFORMATION& process)
{
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

int start_and_let_go(const std::string& command_line)
{
    PROCESS_INFORMATION process{};
    const int started = start(command_line, &process);
    if (started)
        let_go(process);
    return started;
}

// A key's default value, which must be a text of fewer than `room` bytes; empty when it can't be had.
template <DWORD room>
std::string class_value(const std::string& path)
{
    HKEY key = 0;
    if (path.empty() || RegOpenKeyExA(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return {};
    char value[room + 1] = ""; // values needn't come with a terminator
    DWORD type = 0, size = room;
    const long status =
        RegQueryValueExA(key, "", nullptr, &type, reinterpret_cast<unsigned char*>(value), &size);
    RegCloseKey(key);
    if (status != ERROR_SUCCESS || (type != REG_SZ && type != REG_EXPAND_SZ))
        return {};
    return value;
}

// From the point on; empty when there is none among the last four characters.
std::string short_extension(const char* name)
{
    constexpr std::size_t LONGEST = 4;
    const std::size_t length = std::strlen(name);
    const std::string end = name + (length > LONGEST ? length - LONGEST : 0);
    const std::size_t point = end.rfind('.');
    return point == std::string::npos ? "" : end.substr(point);
}

// The command line that opens a document of a type.
std::string open_command_line(const char* type, const char* document)
{
    char found[LONGEST_COMMAND];
    find_open_command(type, found);
    const std::string command = found;
    const std::size_t place = command.find("%1");
    if (place == std::string::npos)
        return command + " " + document;
    return command.substr(0, place) + document + command.substr(place + 2);
}

} // namespace

void run_and_wait(const char* command_line, int wait)
{
    PROCESS_INFORMATION process{};
    if (!start(command_line, &process))
        return;
    if (wait) {
        WaitForInputIdle(process.hProcess, INPUT_WAIT_MS);
        DWORD code = STILL_ACTIVE;
        while (GetExitCodeProcess(process.hProcess, &code) && code == STILL_ACTIVE)
            SleepEx(END_POLL_MS, 1);
    }
    let_go(process);
}

void find_open_command(const char* name, text_out out)
{
    text_set(out, "");
    // Known behaviour: only extensions of up to three letters are seen.
    const std::string type = short_extension(name);
    if (type.empty()) {
        MessageBoxA(0, "Unable to determine file extension", "", MB_ICONWARNING);
        return;
    }
    const std::string class_name = class_value<LONGEST_CLASS_NAME>(type);
    if (class_name.empty())
        return;
    const std::string command = class_value<COMMAND_ROOM>(class_name + "\\shell\\open\\command");
    char expanded[LONGEST_COMMAND] = "";
    const DWORD needed = ExpandEnvironmentStringsA(command.c_str(), expanded, sizeof expanded);
    // A command that was cut short would start something else.
    if (needed > 0 && needed <= sizeof expanded)
        text_set(out, expanded);
}

void open_pdf(const char* path)
{
    const std::string command_line = open_command_line(".pdf", path);
    // Known behaviour: without an association the line is a blank and the path, which isn't empty, so
    // nothing is told and the start fails.
    if (command_line.empty())
        acutPrintf("Adobe Acrobat is not installed in this system. Please re-install off the CD.\n");
    else
        start_and_let_go(command_line);
}

int open_web_page(const char* address)
{
    return start_and_let_go(open_command_line(".htm", address));
}
