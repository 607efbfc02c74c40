#include "settings/config_directory.h"

#include <cstring>
#include <string>

#include "common/paths.h"
#include "hostapi/files.h"
#include "hostapi/windows.h"
#include "settings/settings_file.h"

namespace
{

// The product writes its installation directory under its version and, below that, the release of the
// host that it was installed for; this module is built for release R15.0 and looks nowhere else.
constexpr const char* INSTALLATION_KEY = "Software\\Quorvane Software\\Zentrik\\2001\\R15.0";
constexpr DWORD LONGEST_DIRECTORY = 123; // bytes as the registry counts them, the terminator among them

constexpr int DRIVE_LINE = 3;
constexpr int DIRECTORY_LINE = 4;

// With its separator; empty when it isn't known.
std::string installation_directory()
{
    HKEY key = 0;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, INSTALLATION_KEY, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return {};
    char value[LONGEST_DIRECTORY + 1] = "";
    DWORD type = 0, size = LONGEST_DIRECTORY;
    const long status =
        RegQueryValueExA(key, "PATH", nullptr, &type, reinterpret_cast<unsigned char*>(value), &size);
    RegCloseKey(key);
    if (status != ERROR_SUCCESS || type != REG_SZ)
        return {};
    std::string directory = value;
    if (!directory.empty() && directory.back() != '\\' && directory.back() != '/')
        directory += '\\';
    return directory;
}

void copy_with_directory(host_file* in, host_file* out, const std::string& path)
{
    const std::size_t colon = path.find(':');
    const bool has_drive = colon != std::string::npos;
    const std::string drive = has_drive ? path.substr(0, colon + 1) : "";
    const std::string rest = has_drive ? path.substr(colon + 1) : path;
    char line[SETTINGS_LINE_SIZE];
    for (int number = 1; file_gets(line, sizeof line, in); ++number) {
        if (number == DRIVE_LINE && has_drive)
            file_printf(out, "%s\n", drive.c_str());
        else if (number == DIRECTORY_LINE)
            file_printf(out, "%s\n", rest.c_str());
        else
            file_puts(line, out);
    }
}

} // namespace

void set_config_directory(const char* path)
{
    std::string directory = path;
    path_to_backslash(directory.data());
    const std::string installation = installation_directory();
    if (installation.empty())
        return;
    const std::string config = installation + "config.pik", scratch = installation + "zentrprt.tmp";

    host_file* in = file_open(config.c_str(), "r");
    if (!in)
        return;
    host_file* out = file_open(scratch.c_str(), "w");
    if (out)
        copy_with_directory(in, out, directory);
    file_close(in);
    // An unwritten scratch file holds somebody's report still: it must not become the configuration.
    if (!out || file_close(out) != 0)
        return;

    host_file* config_out = file_open(config.c_str(), "w");
    if (!config_out)
        return;
    append_lines(scratch.c_str(), config_out);
    file_close(config_out);
}
