#include "settings/recent_drawings.h"

#include <cstring>
#include <string>

#include "common/text.h"
#include "hostapi/ads.h"
#include "hostapi/processes.h"

namespace
{

constexpr const char* HOST_KEY = "Software\\Autodesk\\AutoCAD\\R15.0";
constexpr short RECENT_DRAWING = 1000;
constexpr DWORD LONGEST_NAME = 256; // bytes with the terminator, names and data alike
constexpr DWORD LONGEST_DATA = 256;

// A registry key while it is looked at.
class open_key
{
public:
    open_key(HKEY parent, const std::string& path)
    {
        if (RegOpenKeyExA(parent, path.c_str(), 0, KEY_READ, &key_) != ERROR_SUCCESS)
            key_ = 0;
    }
    ~open_key()
    {
        if (key_)
            RegCloseKey(key_);
    }
    open_key(const open_key&) = delete;
    open_key& operator=(const open_key&) = delete;

    HKEY key() const { return key_; }

private:
    HKEY key_ = 0;
};

bool is_text(DWORD type)
{
    return type == REG_SZ || type == REG_EXPAND_SZ;
}

std::string upper(std::string text)
{
    str_upper(text.data());
    return text;
}

// Where the installation of this name lies; empty when it doesn't say.
std::string location_of(HKEY releases, const char* installation)
{
    const open_key key(releases, installation);
    if (!key.key())
        return {};
    char value[LONGEST_DATA + 1] = "";
    DWORD type = 0, size = LONGEST_DATA;
    if (RegQueryValueExA(key.key(), "AcadLocation", nullptr, &type, reinterpret_cast<unsigned char*>(value),
                         &size) != ERROR_SUCCESS ||
        !is_text(type))
        return {};
    return value;
}

// The installation whose program stands anywhere in the command line of this process; empty for none.
std::string running_installation()
{
    const open_key releases(HKEY_LOCAL_MACHINE, HOST_KEY);
    if (!releases.key())
        return {};
    const char* started = GetCommandLineA();
    const std::string command_line = upper(started ? started : "");
    for (DWORD index = 0;; ++index) {
        char name[LONGEST_NAME] = "";
        DWORD size = sizeof name;
        const long status = RegEnumKeyExA(releases.key(), index, name, &size);
        if (status == ERROR_MORE_DATA)
            continue;
        if (status != ERROR_SUCCESS)
            return {};
        const std::string location = location_of(releases.key(), name);
        if (!location.empty() && command_line.find(upper(location + "\\acad.exe")) != std::string::npos)
            return name;
    }
}

} // namespace

resbuf* recent_drawings()
{
    const std::string installation = running_installation();
    if (installation.empty())
        return nullptr;
    const open_key recent(HKEY_CURRENT_USER,
                          std::string(HOST_KEY) + "\\" + installation + "\\Recent File List");
    if (!recent.key())
        return nullptr;
    resbuf* first = nullptr;
    resbuf** end = &first;
    for (DWORD index = 0;; ++index) {
        char name[LONGEST_NAME] = "", data[LONGEST_DATA + 1] = "";
        DWORD name_size = sizeof name, type = 0, size = LONGEST_DATA;
        const long status = RegEnumValueA(recent.key(), index, name, &name_size, &type,
                                          reinterpret_cast<unsigned char*>(data), &size);
        // What is too long is no path that could be opened.
        if (status == ERROR_MORE_DATA)
            continue;
        if (status != ERROR_SUCCESS)
            return first;
        if (!std::strstr(name, "File") || !is_text(type))
            continue;
        *end = acutBuildList(RECENT_DRAWING, data, 0);
        if (*end)
            end = &(*end)->rbnext;
    }
}
